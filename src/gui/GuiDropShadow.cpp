#include "gui/GuiDropShadow.h"

#include "core/LocationStack.h"

namespace tarnwick {

void GuiDropShadow::setDropShadowColor(float red, float green, float blue, float alpha) {
    TARNWICK_LOCATION("GuiDropShadow::setDropShadowColor");
    dropShadowRed = red;
    dropShadowGreen = green;
    dropShadowBlue = blue;
    dropShadowAlpha = alpha;
}

void GuiDropShadow::setDropShadowOffset(float x, float y) {
    TARNWICK_LOCATION("GuiDropShadow::setDropShadowOffset");
    dropShadowOffsetX = x;
    dropShadowOffsetY = y;
}

} // namespace tarnwick
