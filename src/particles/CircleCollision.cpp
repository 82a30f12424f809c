#include "particles/CircleCollision.h"

#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "level/LevelBspNode.h"
#include "level/LevelBspTree.h"

#include <ranges>

namespace tarnwick {

namespace {

/// A circle that is pushed out of everything is free in the first pass or two; one wedged in a narrow place
/// is not worth more.
constexpr int largestPassCount = 3;

} // namespace

CircleCollision::State CircleCollision::state;

bool CircleCollision::collisionTest(Vector2& centre, float radius) {
    TARNWICK_LOCATION("CircleCollision::collisionTest");
    return collisionTestStatic(centre, radius);
}

bool CircleCollision::collisionTestStatic(Vector2& centre, float radius) {
    TARNWICK_LOCATION("CircleCollision::collisionTestStatic");
    state.collisionCentre = &centre;
    state.collisionRadius = radius;
    buildPointsAndNodesListRecursive(LevelBspTree::rootNode());
    return resolve();
}

void CircleCollision::buildPointsAndNodesListRecursive(const LevelBspNode* node) {
    TARNWICK_LOCATION("CircleCollision::buildPointsAndNodesListRecursive");
    const Vector2 centre = *state.collisionCentre;
    const float radius = state.collisionRadius;
    while (node != nullptr) { // the last recursion of a node is the next turn of the loop
        const Vector2 fromStart = centre - node->start;
        const float d = dotProduct(fromStart, node->normal);
        if (d >= radius) {
            node = node->inFront;
        } else if (d < -radius) {
            node = node->behind;
        } else {
            if (node->hasEdge) {
                const float t = dotProduct(fromStart, node->direction);
                addCandidates(*node, t, t > 0.0f);
            }
            buildPointsAndNodesListRecursive(node->behind);
            node = node->inFront;
        }
    }
}

void CircleCollision::addCandidates(const CollisionNode& edge, float t, bool pastFarEnd) {
    TARNWICK_LOCATION("CircleCollision::addCandidates");
    if (t >= 0.0f && t <= edge.length) {
        state.collisionNodes.push_back(&edge);
        state.collisionPoints.push_back({edge.start + edge.direction * t, edge.friction});
    } else if (t >= -state.collisionRadius && t <= edge.length + state.collisionRadius) {
        const Vector2 corner = pastFarEnd ? edge.start + edge.direction * edge.length : edge.start;
        state.collisionPoints.push_back({corner, edge.friction});
    }
}

bool CircleCollision::resolve() {
    TARNWICK_LOCATION("CircleCollision::resolve");
    state.contactCount = 0;
    state.contactNormal = {};
    state.contactFriction = 0.0f;
    bool anyMoved = false;
    for (int pass = 0; pass < largestPassCount; ++pass) {
        const bool pointMoved = resolvePointCollisions();
        const bool lineMoved = resolveLineCollisions();
        if (!pointMoved && !lineMoved) {
            break;
        }
        anyMoved = true;
    }
    if (state.contactCount == 0) {
        state.contactFriction = 1.0f;
    } else {
        const float share = 1.0f / static_cast<float>(state.contactCount);
        state.contactNormal *= share;
        state.contactFriction *= share;
    }
    state.collisionPoints.clear();
    state.collisionNodes.clear();
    return anyMoved;
}

bool CircleCollision::resolvePointCollisions() {
    TARNWICK_LOCATION("CircleCollision::resolvePointCollisions");
    Vector2& centre = *state.collisionCentre;
    bool moved = false;
    for (const CollisionPoint& point : std::views::reverse(state.collisionPoints)) {
        const Vector2 toPoint = point.position - centre;
        const float distance = vectorLength(toPoint);
        if (distance > 0.0f && distance < state.collisionRadius) { // on the point itself there is no way out
            const Vector2 normal = toPoint / distance;
            centre -= normal * (state.collisionRadius - distance);
            state.contactNormal += normal;
            state.contactFriction += point.friction;
            ++state.contactCount;
            moved = true;
        }
    }
    return moved;
}

bool CircleCollision::resolveLineCollisions() {
    TARNWICK_LOCATION("CircleCollision::resolveLineCollisions");
    Vector2& centre = *state.collisionCentre;
    bool moved = false;
    for (const CollisionNode* edge : std::views::reverse(state.collisionNodes)) {
        const float d = dotProduct(centre - edge->start, edge->normal);
        if (d >=
            -state.collisionRadius) { // no upper bound: an edge in the list catches a centre however deep
            centre -= edge->normal * (state.collisionRadius + d);
            state.contactNormal += edge->normal;
            state.contactFriction += edge->friction;
            ++state.contactCount;
            moved = true;
        }
    }
    return moved;
}

} // namespace tarnwick
