#include "gui/GuiDropShadow.h"

#include "core/LocationStack.h"

namespace tarnwick {

void GuiDropShadow::setDropShadowColor(Colour colour) {
    TARNWICK_LOCATION("GuiDropShadow::setDropShadowColor");
    dropShadowRed = colour.red;
    dropShadowGreen = colour.green;
    dropShadowBlue = colour.blue;
    dropShadowAlpha = colour.alpha;
}

void GuiDropShadow::setDropShadowOffset(Vector2 offset) {
    TARNWICK_LOCATION("GuiDropShadow::setDropShadowOffset");
    dropShadowOffsetX = offset.x;
    dropShadowOffsetY = offset.y;
}

} // namespace tarnwick
