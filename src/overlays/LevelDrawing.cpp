#include "core/LocationStack.h"
#include "level/Level.h"
#include "level/LevelBspTree.h"

namespace tarnwick {

void Level::debugDraw() {
    TARNWICK_LOCATION("Level::debugDraw");
    LevelBspTree::debugDraw();
    if (state.drawTriangles) {
        for (const Polygon2D& polygon : polygons) {
            polygon.drawTrianglesOutline();
        }
    }
}

} // namespace tarnwick
