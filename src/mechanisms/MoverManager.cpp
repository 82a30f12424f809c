#include "mechanisms/MoverManager.h"

#include "core/CommandRegistry.h"
#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "level/Level.h"
#include "level/LevelObject.h"
#include "level/LevelObjectsManager.h"
#include "particles/CircleCollision.h"

#include <algorithm>

namespace tarnwick {

namespace {

constexpr float shortestEdge = 0.01f; ///< World units: an edge must be longer to be kept.

/// Adds a side of `polygon` that runs from `start` to `end`, unless it is too short.
void addEdge(std::vector<LevelBspNode>& edges, Polygon2D& polygon, Vector2 start, Vector2 end) {
    TARNWICK_LOCATION("MoverManager::addEdge");
    LevelBspNode edge;
    edge.start = start;
    edge.end = end;
    edge.length = distanceBetween(start, end);
    if (edge.length <= shortestEdge) {
        return;
    }
    edge.direction = end - start;
    normaliseVector(edge.direction);
    edge.normal = {-edge.direction.y, edge.direction.x};
    edge.friction = polygon.frictionLevel;
    edge.polygon = &polygon;
    edges.push_back(edge);
}

} // namespace

std::list<Mover> MoverManager::movers;
std::vector<LevelBspNode> MoverManager::collideableNodes;
MoverManager::State MoverManager::state;

constexpr CommandRow MoverManager::commands[] = {
    {"MoverCount", conCmdMoverCount},
    {"MoverDraw", CommandVariable{&state.moverDraw, "MoverManager::conCmdMoverDraw"}},
    {"DynamicNodeDraw", CommandVariable{&state.dynamicNodeDraw, "MoverManager::conCmdDynamicNodeDraw"}},
};

void MoverManager::initialise() {
    TARNWICK_LOCATION("MoverManager::initialise");
    shutdown();
    state.moverDraw = false;
    state.dynamicNodeDraw = false;
    Log::print("\nInitialising down mover manager.."); // Kept: the line has always said so
    CommandRegistry::add(commands);
}

void MoverManager::shutdown() {
    TARNWICK_LOCATION("MoverManager::shutdown");
    Log::print("\nShutting down mover manager..");
    movers.clear();
    state.cargoOfMover.clear();
    state.cargoes.clear();
    state.unclaimed.clear();
    state.gatheredCount = 0;
    state.dynamicPolygons.clear();
    CommandRegistry::remove(commands);
}

void MoverManager::resetMovers() {
    TARNWICK_LOCATION("MoverManager::resetMovers");
    state.moverDraw = false;
    state.dynamicNodeDraw = false;
    for (Mover& mover : movers) {
        mover.reset();
    }
}

void MoverManager::addMover(const Mover& mover) {
    TARNWICK_LOCATION("MoverManager::addMover");
    gatherCargoes();
    movers.push_back(mover);
    state.cargoOfMover.push_back(&claimCargo(mover.id));
}

/// Looks once through the level, however many movers it has, and again only when it has grown.
void MoverManager::gatherCargoes() {
    TARNWICK_LOCATION("MoverManager::gatherCargoes");
    const std::size_t count = Level::polygons.size() + LevelObjectsManager::staticObjects.size() +
                              LevelObjectsManager::animatedObjects.size();
    if (count == state.gatheredCount) {
        return;
    }
    state.gatheredCount = count;
    state.unclaimed.clear();
    for (std::list<LevelObject>* const objects :
         {&LevelObjectsManager::staticObjects, &LevelObjectsManager::animatedObjects}) {
        for (LevelObject& object : *objects) {
            state.unclaimed[static_cast<std::int32_t>(object.id)].objects.push_back(&object);
        }
    }
    for (Polygon2D& polygon : Level::polygons) {
        state.unclaimed[polygon.id].polygons.push_back(&polygon);
    }
}

/// What a mover of this id carries. The first one to ask gives its polygons their collision form.
MoverManager::Cargo& MoverManager::claimCargo(std::int32_t id) {
    TARNWICK_LOCATION("MoverManager::claimCargo");
    if (const auto claimed = state.cargoes.find(id); claimed != state.cargoes.end()) {
        return claimed->second;
    }
    auto node = state.unclaimed.extract(id);
    if (node.empty()) {
        return state.cargoes[id]; // a mover that carries nothing
    }
    Cargo& cargo = state.cargoes.insert(std::move(node)).position->second;
    for (Polygon2D* const polygon : cargo.polygons) {
        if (polygon->collideable) {
            addDynamicPolygon(*polygon);
        }
    }
    return cargo;
}

void MoverManager::addDynamicPolygon(Polygon2D& polygon) {
    TARNWICK_LOCATION("MoverManager::addDynamicPolygon");
    const std::size_t count = polygon.pointsX.size();
    if (polygon.triangleCount == 0 || count < 2) { // an outline that crosses itself has no triangles either
        return;
    }
    DynamicPolygon& dynamic = state.dynamicPolygons.emplace_front();
    dynamic.polygon = &polygon;
    dynamic.minX = dynamic.maxX = polygon.pointsX[0];
    dynamic.minY = dynamic.maxY = polygon.pointsX[1];
    for (std::size_t i = 0; i < count; ++i) {
        const Vector2 point{polygon.pointsX[i], polygon.pointsY[i]};
        const std::size_t next = (i + 1) % count;
        const Vector2 nextPoint{polygon.pointsX[next], polygon.pointsY[next]};
        if (polygon.counterClockwise) {
            addEdge(dynamic.edges, polygon, point, nextPoint);
        } else {
            addEdge(dynamic.edges, polygon, nextPoint, point);
        }
        dynamic.outline.add(Box::around(point, point));
        if (i > 0) {
            dynamic.minX = std::min(dynamic.minX, point.x);
            dynamic.maxX = std::max(dynamic.maxX, point.x);
            dynamic.minY = std::min(dynamic.minY, point.y);
            dynamic.maxY = std::max(dynamic.maxY, point.y);
        }
    }
    std::ranges::reverse(dynamic.edges); // each new one goes before the others
}

void MoverManager::updateCollideableNodes(const View& view) {
    TARNWICK_LOCATION("MoverManager::updateCollideableNodes");
    collideableNodes.clear();
    const Box near = view.solidSquare(); // Kept: but nothing is too high up in the level
    for (const DynamicPolygon& dynamic : state.dynamicPolygons) {
        const Vector2 offset{dynamic.polygon->offsetX, dynamic.polygon->offsetY};
        const Box box = dynamic.boxAt(offset);
        if (!dynamic.polygon->collideable || !(box.minX <= near.maxX) || !(box.maxX >= near.minX) ||
            !(box.minY <= near.maxY) || !(box.maxY >= offset.y)) {
            continue;
        }
        for (const LevelBspNode& edge : dynamic.edges) {
            LevelBspNode& node = collideableNodes.emplace_back(edge);
            node.start += offset;
            node.end += offset;
        }
    }
    std::ranges::reverse(collideableNodes); // each new one goes before the others
    CircleCollision::takeMovingEdges(collideableNodes, view.centre(), view.solidReach());
}

void MoverManager::runMovers(float dt, const View& view) {
    TARNWICK_LOCATION("MoverManager::runMovers");
    for (Mover& mover : movers) {
        mover.run(dt);
    }
    sumDisplacements();
    moveMoverObjects();
    moveMoverPolygons();
    pushPolygonParticles(dt, view);
}

void MoverManager::sumDisplacements() {
    TARNWICK_LOCATION("MoverManager::sumDisplacements");
    for (auto& [id, cargo] : state.cargoes) {
        cargo.displacement = {};
    }
    auto cargo = state.cargoOfMover.begin();
    for (const Mover& mover : movers) {
        (*cargo++)->displacement += mover.direction * mover.position;
    }
}

void MoverManager::moveMoverObjects() {
    TARNWICK_LOCATION("MoverManager::moveMoverObjects");
    for (const auto& [id, cargo] : state.cargoes) {
        for (LevelObject* const object : cargo.objects) {
            object->offsetX = cargo.displacement.x;
            object->offsetY = cargo.displacement.y;
        }
    }
}

void MoverManager::moveMoverPolygons() {
    TARNWICK_LOCATION("MoverManager::moveMoverPolygons");
    for (const auto& [id, cargo] : state.cargoes) {
        for (Polygon2D* const polygon : cargo.polygons) {
            polygon->offsetX = cargo.displacement.x;
            polygon->offsetY = cargo.displacement.y;
        }
    }
}

void MoverManager::keep(Moment& moment) {
    TARNWICK_LOCATION("MoverManager::keep");
    moment.movers.clear();
    for (const Mover& mover : movers) {
        moment.movers.push_back({.position = mover.position, .state = mover.state});
    }
}

void MoverManager::putBack(const Moment& moment) {
    TARNWICK_LOCATION("MoverManager::putBack");
    auto then = moment.movers.begin();
    for (Mover& mover : movers) {
        mover.position = then->position;
        mover.state = then->state;
        ++then;
    }
}

std::int32_t MoverManager::conCmdMoverCount() {
    TARNWICK_LOCATION("MoverManager::conCmdMoverCount");
    return static_cast<std::int32_t>(movers.size());
}

} // namespace tarnwick
