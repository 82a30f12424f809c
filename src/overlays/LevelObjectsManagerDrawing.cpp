#include "console/GLConsole.h"
#include "core/LocationStack.h"
#include "graphics/GLFont.h"
#include "level/LevelObjectsManager.h"

#include <cstdio>

namespace tarnwick {

namespace {

constexpr float idTextSize = 8.0f;    ///< World units.
constexpr float idTextOffset = 12.0f; ///< World units: an id stands this much above its object.

void drawIds(const GLFont& font, const std::list<LevelObject>& objects) {
    TARNWICK_LOCATION("LevelObjectsManager::drawIds");
    for (const LevelObject& object : objects) {
        const GLTexture* const picture = object.frame();
        if (picture == nullptr) {
            continue;
        }
        char text[32];
        std::snprintf(text, sizeof text, "OBJ ID: %1i", static_cast<std::int32_t>(object.id));
        const float left = object.x - static_cast<float>(picture->width) / 2.0f;
        const float top = object.y - static_cast<float>(picture->height) / 2.0f;
        font.drawString(text, {left, top - idTextOffset}, idTextSize, opaqueWhite);
    }
}

} // namespace

void LevelObjectsManager::debugDraw() {
    TARNWICK_LOCATION("LevelObjectsManager::debugDraw");
    if (!state.objectsDrawIds) {
        return;
    }
    const GLFont font(GLConsole::getFontTexture());
    drawIds(font, staticObjects);
    drawIds(font, animatedObjects);
}

} // namespace tarnwick
