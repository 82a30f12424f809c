#include "gui/GuiFontGroup.h"

#include "core/LocationStack.h"

namespace tarnwick {

void GuiFontGroup::setFont(const std::string& fileName) {
    TARNWICK_LOCATION("GuiFontGroup::setFont");
    font = fileName;
}

void GuiFontGroup::setFontSize(float size) {
    TARNWICK_LOCATION("GuiFontGroup::setFontSize");
    fontSize = size;
}

void GuiFontGroup::drawText(const std::string& text, float x, float y, float size, Colour colour) const {
    TARNWICK_LOCATION("GuiFontGroup::drawText");
    if (dropShadowEnabled) {
        font.drawString(text.c_str(), x + dropShadowOffsetX, y + dropShadowOffsetY, size, dropShadowRed,
                        dropShadowGreen, dropShadowBlue, dropShadowAlpha);
    }
    font.drawString(text.c_str(), x, y, size, colour.red, colour.green, colour.blue, colour.alpha);
}

} // namespace tarnwick
