#include "gui/GuiLabel.h"

#include "core/LocationStack.h"

namespace tarnwick {

namespace {

constexpr float defaultFontSize = 16.0f;

} // namespace

GuiLabel::GuiLabel()
    : GuiFontGroup(defaultFontSize) {
    TARNWICK_LOCATION("GuiLabel::GuiLabel");
    setColor(opaqueBlack);
}

void GuiLabel::setText(const std::string& newText) {
    TARNWICK_LOCATION("GuiLabel::setText");
    text = newText;
}

void GuiLabel::windowRedrawing() {
    TARNWICK_LOCATION("GuiLabel::windowRedrawing");
    drawText(text, {static_cast<float>(x), static_cast<float>(y)}, fontSize, colour());
}

} // namespace tarnwick
