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

void Level::keep(Moment& moment) {
    TARNWICK_LOCATION("Level::keep");
    moment.polygons.clear();
    for (const Polygon2D& polygon : polygons) {
        moment.polygons.push_back({.visible = polygon.visible,
                                   .collideable = polygon.collideable,
                                   .edgesOn = edgesOn(polygon),
                                   .offset = {polygon.offsetX, polygon.offsetY},
                                   .previousOffset = {polygon.previousOffsetX, polygon.previousOffsetY}});
    }
}

void Level::putBack(const Moment& moment) {
    TARNWICK_LOCATION("Level::putBack");
    auto then = moment.polygons.begin();
    for (Polygon2D& polygon : polygons) {
        if (edgesOn(polygon) != then->edgesOn) {
            setPolygonCollideable(polygon, then->edgesOn);
        }
        polygon.collideable = then->collideable;
        polygon.visible = then->visible;
        polygon.offsetX = then->offset.x;
        polygon.offsetY = then->offset.y;
        polygon.previousOffsetX = then->previousOffset.x;
        polygon.previousOffsetY = then->previousOffset.y;
        ++then;
    }
}

/// The edges of a polygon are switched all together.
bool Level::edgesOn(const Polygon2D& polygon) {
    TARNWICK_LOCATION("Level::edgesOn");
    const std::vector<LevelBspNode*>* const nodes = nodesOf(polygon);
    return nodes == nullptr || nodes->front()->hasEdge;
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
