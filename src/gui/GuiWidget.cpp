#include "gui/GuiWidget.h"

#include "core/LocationStack.h"
#include "gui/GuiScreen.h"

#include <algorithm>

namespace tarnwick {

void GuiWidget::setColor(Colour newColour) {
    TARNWICK_LOCATION("GuiWidget::setColor");
    red = std::clamp(newColour.red, 0.0f, 1.0f);
    green = std::clamp(newColour.green, 0.0f, 1.0f);
    blue = std::clamp(newColour.blue, 0.0f, 1.0f);
    alpha = std::clamp(newColour.alpha, 0.0f, 1.0f);
}

void GuiWidget::setPosition(std::int32_t newX, std::int32_t newY) {
    TARNWICK_LOCATION("GuiWidget::setPosition");
    x = newX;
    y = newY;
}

void GuiWidget::setSize(std::int32_t newWidth, std::int32_t newHeight) {
    TARNWICK_LOCATION("GuiWidget::setSize");
    width = std::max(newWidth, 0);
    height = std::max(newHeight, 0);
}

void GuiWidget::addFocusTraversal(std::uint32_t key, GuiWidget* widget) {
    TARNWICK_LOCATION("GuiWidget::addFocusTraversal");
    focusTraversal[key] = widget;
}

void GuiWidget::doFocusTraversal(std::uint32_t key) {
    TARNWICK_LOCATION("GuiWidget::doFocusTraversal");
    const auto way = focusTraversal.find(key);
    if (parentScreen != nullptr && way != focusTraversal.end()) {
        parentScreen->setFocusedWidget(way->second);
    }
}

} // namespace tarnwick
