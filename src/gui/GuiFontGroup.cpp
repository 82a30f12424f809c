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

void GuiFontGroup::drawText(std::string_view text, Vector2 place, float size, Colour colour) const {
    TARNWICK_LOCATION("GuiFontGroup::drawText");
    if (dropShadowEnabled) {
        font.drawString(text, place + dropShadowOffset(), size, dropShadowColour());
    }
    font.drawString(text, place, size, colour);
}

} // namespace tarnwick
