#include "particles/CircleCollision.h"

#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "level/LevelBspNode.h"
#include "level/LevelBspTree.h"
#include "particles/Particle.h"

#include <cmath>

namespace tarnwick {

namespace {

/// A circle that is pushed out of everything is free in the first pass or two; one wedged in a narrow place
/// is not worth more.
constexpr int largestPassCount = 3;

} // namespace

CircleCollision::State CircleCollision::state;

void CircleCollision::prepare() {
    TARNWICK_LOCATION("CircleCollision::prepare");
    if (state.fieldGeneration == LevelBspTree::generation()) {
        return;
    }
    std::vector<LevelBspNode*> nodes;
    LevelBspTree::getNodeList(nodes);
    state.treeSize = nodes.size();
    makeRoom();
    state.field.build(LevelBspTree::rootNode());
    state.fieldGeneration = LevelBspTree::generation();
}

void CircleCollision::takeMovingEdges(const std::vector<LevelBspNode>& edges, Vector2 middle, float reach) {
    TARNWICK_LOCATION("CircleCollision::takeMovingEdges");
    state.edges = &edges;
    makeRoom();
    state.movingEdges.build(edges, middle, reach);
}

void CircleCollision::makeRoom() {
    TARNWICK_LOCATION("CircleCollision::makeRoom");
    const std::size_t edgeCount = state.treeSize + (state.edges != nullptr ? state.edges->size() : 0);
    state.collisionPoints.resize(edgeCount);
    state.collisionNodes.resize(edgeCount);
}

bool CircleCollision::collisionTest(Vector2& centre, float radius) {
    TARNWICK_LOCATION("CircleCollision::collisionTest");
    state.pointCount = 0;
    state.nodeCount = 0;
    if (state.edges != nullptr && !state.edges->empty()) {
        buildDynamicPointsAndNodesList(centre, radius);
    }
    return testAgainstTree(centre, radius);
}

bool CircleCollision::collisionTestStatic(Vector2& centre, float radius) {
    TARNWICK_LOCATION("CircleCollision::collisionTestStatic");
    state.pointCount = 0;
    state.nodeCount = 0;
    return testAgainstTree(centre, radius);
}

/// Goes on with the test of a circle, whose candidates among the moving edges stand in the lists already.
inline bool CircleCollision::testAgainstTree(Vector2& centre, float radius) {
    TARNWICK_LOCATION("CircleCollision::testAgainstTree");
    state.contactCount = 0;
    state.contactNormal = {};
    state.contactFriction = 1.0f;
    buildPointsAndNodesList(centre, radius);
    return state.pointCount > 0 &&
           resolveCollisions(centre, radius); // without a point there is no edge either
}

void CircleCollision::buildDynamicPointsAndNodesList(const Vector2& collisionCentre, float collisionRadius) {
    TARNWICK_LOCATION("CircleCollision::buildDynamicPointsAndNodesList");
    const auto consider = [&](const LevelBspNode& edge) {
        const Vector2 fromStart = collisionCentre - edge.start;
        const float d = dotProduct(fromStart, edge.normal);
        if (!(d >= -collisionRadius && d <= collisionRadius)) {
            return;
        }
        const float t = dotProduct(fromStart, edge.direction);
        if (t >= 0.0f && t <= edge.length) {
            state.collisionNodes[state.nodeCount++] = &edge;
            state.collisionPoints[state.pointCount++] = {edge.start + edge.direction * t, edge.friction};
        } else if (t >= -collisionRadius && t <= edge.length + collisionRadius) {
            const Vector2 corner = t >= 0.0f ? edge.start + edge.direction * edge.length : edge.start;
            state.collisionPoints[state.pointCount++] = {corner, edge.friction};
        }
    };
    const std::vector<LevelBspNode>& edges = *state.edges;
    if (collisionRadius == particleRadius && state.movingEdges.covers(collisionCentre)) { // exactly
        for (const std::uint32_t edge : state.movingEdges.edgesAt(collisionCentre)) {
            consider(edges[edge]);
        }
    } else {
        for (const LevelBspNode& edge : edges) {
            consider(edge);
        }
    }
}

void CircleCollision::buildPointsAndNodesList(const Vector2& collisionCentre, float collisionRadius) {
    TARNWICK_LOCATION("CircleCollision::buildPointsAndNodesList");
    if (state.fieldGeneration != LevelBspTree::generation()) {
        prepare();
    }
    const CollisionField::Start start =
        collisionRadius == particleRadius // exactly: the field was made for this one
            ? state.field.startAt(collisionCentre)
            : CollisionField::Start{LevelBspTree::rootNode()};
    const LevelBspNode* node = start.node;
    while (node != nullptr) {
        const Vector2 fromStart = collisionCentre - node->start;
        const float d = dotProduct(fromStart, node->normal);
        const LevelBspNode* next = node->behind;
        if (d >= collisionRadius) {
            next = node->inFront;
        } else if (!(d < -collisionRadius)) {
            const float t = dotProduct(fromStart, node->direction);
            if (node->hasEdge && t >= 0.0f && t <= node->length) {
                state.collisionNodes[state.nodeCount++] = node;
                state.collisionPoints[state.pointCount++] = {node->start + node->direction * t,
                                                             node->friction};
            } else if (node->hasEdge && t >= -collisionRadius && t <= node->length + collisionRadius) {
                // Past an end: only that can be hit.
                const Vector2 corner = t > 0.0f ? node->start + node->direction * node->length : node->start;
                state.collisionPoints[state.pointCount++] = {corner, node->friction};
            }
            if (!start.alone && node->inFront != nullptr) {
                state.openNodes.push_back(node->inFront); // after all that is behind
            }
        }
        if (start.alone) {
            return;
        }
        if (next == nullptr && !state.openNodes.empty()) {
            next = state.openNodes.back();
            state.openNodes.pop_back();
        }
        node = next;
    }
}

// One function, and so a long one: the two resolvers and the passes share the centre and the sums in
// registers. NOLINTNEXTLINE(readability-function-size)
bool CircleCollision::resolveCollisions(Vector2& collisionCentre, float collisionRadius) {
    TARNWICK_LOCATION("CircleCollision::resolveCollisions");
    const float radius = collisionRadius;
    const float radiusSquared = radius * radius;
    const CollisionPoint* const points = state.collisionPoints.data();
    const CollisionNode* const* const nodes = state.collisionNodes.data();
    const std::size_t pointCount = state.pointCount;
    const std::size_t nodeCount = state.nodeCount;
    Vector2 centre = collisionCentre;
    Vector2 normalSum;
    float frictionSum = 0.0f;
    std::uint32_t count = 0;
    const auto addContact = [&](const Vector2& normal, float friction) {
        normalSum += normal;
        frictionSum += friction;
        ++count;
    };

    const auto resolvePointCollisions = [&] {
        for (std::size_t i = pointCount; i-- > 0;) {
            const Vector2 toPoint = points[i].position - centre;
            const float distanceSquared = dotProduct(toPoint, toPoint);
            if (distanceSquared >= radiusSquared) {
                continue; // its root cannot round to less than the radius: spares most roots
            }
            const float distance = std::sqrt(distanceSquared);
            if (distance > 0.0f && distance < radius) { // on the point itself there is no way out
                const Vector2 normal = toPoint / distance;
                centre -= normal * (radius - distance);
                addContact(normal, points[i].friction);
            }
        }
    };
    const auto resolveLineCollisions = [&] {
        for (std::size_t i = nodeCount; i-- > 0;) {
            const CollisionNode& edge = *nodes[i];
            const float d = dotProduct(centre - edge.start, edge.normal);
            if (d >= -radius) { // no upper bound: an edge in the list catches a centre however deep
                const float depth = radius + d;
                // A zero move changes nothing, save the sign of a zero. To leave it out spares a wait: what
                // rests on a surface is at its radius from it, and the next pass starts from there.
                if (depth != 0.0f || centre.x == 0.0f || centre.y == 0.0f) {
                    centre -= edge.normal * depth;
                }
                addContact(edge.normal, edge.friction);
            }
        }
    };

    std::uint32_t countBefore = 0;
    for (int pass = 0; pass < largestPassCount; ++pass) {
        resolvePointCollisions();
        resolveLineCollisions();
        if (count == countBefore) {
            break; // a pass without a contact
        }
        countBefore = count;
    }
    if (count == 0) {
        return false;
    }
    const float share = 1.0f / static_cast<float>(count);
    collisionCentre = centre;
    state.contactCount = count;
    state.contactNormal = normalSum * share;
    state.contactFriction = frictionSum * share;
    return true;
}

} // namespace tarnwick
