#include "level/Level.h"

#include "core/LocationStack.h"
#include "level/LevelBspNode.h"
#include "level/LevelBspTree.h"

namespace tarnwick {

std::list<Polygon2D> Level::polygons;
Level::State Level::state;

void Level::setPolygonCollideable(Polygon2D& polygon, bool collideable) {
    TARNWICK_LOCATION("Level::setPolygonCollideable");
    if (const std::vector<LevelBspNode*>* nodes = nodesOf(polygon); nodes != nullptr) {
        for (LevelBspNode* node : *nodes) {
            node->hasEdge = collideable;
        }
    }
    polygon.collideable = collideable;
}

void Level::setStartPoints(Vector2 waterStart, Vector2 cameraStart) {
    TARNWICK_LOCATION("Level::setStartPoints");
    state.waterStart = waterStart;
    state.cameraStart = cameraStart;
}

const std::vector<LevelBspNode*>* Level::nodesOf(const Polygon2D& polygon) {
    TARNWICK_LOCATION("Level::nodesOf");
    const auto entry = state.polygonNodes.find(&polygon);
    return entry != state.polygonNodes.end() ? &entry->second : nullptr;
}

void Level::buildPolyNodeMap() {
    TARNWICK_LOCATION("Level::buildPolyNodeMap");
    std::vector<LevelBspNode*> nodes;
    LevelBspTree::getNodeList(nodes);
    for (LevelBspNode* node : nodes) {
        state.polygonNodes[node->polygon].push_back(node);
    }
}

} // namespace tarnwick
