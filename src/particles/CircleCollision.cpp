#include "particles/CircleCollision.h"

#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "level/LevelBspNode.h"
#include "level/LevelBspTree.h"
#include "particles/Particle.h"

#include <cmath>
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
    state.contactCount = 0;
    state.contactNormal = {};
    state.contactFriction = 1.0f;
    if (state.fieldGeneration != LevelBspTree::generation()) {
        state.field.build(LevelBspTree::rootNode());
        state.fieldGeneration = LevelBspTree::generation();
    }
    const CollisionField::Start start = radius == particleRadius
                                            ? state.field.startAt(centre)
                                            : CollisionField::Start{LevelBspTree::rootNode()};
    if (start.node == nullptr) {
        return false;
    }
    state.collisionCentre = &centre;
    state.collisionRadius = radius;
    buildPointsAndNodesList(start.node, start.alone);
    return !state.collisionPoints.empty() && resolveCollisions(); // without a point there is no edge either
}

void CircleCollision::buildPointsAndNodesList(const LevelBspNode* node, bool alone) {
    TARNWICK_LOCATION("CircleCollision::buildPointsAndNodesList");
    const Vector2 centre = *state.collisionCentre;
    const float radius = state.collisionRadius;
    for (;;) {
        const Vector2 fromStart = centre - node->start;
        const float d = dotProduct(fromStart, node->normal);
        const LevelBspNode* next = nullptr;
        if (d >= radius) {
            next = node->inFront;
        } else if (d < -radius) {
            next = node->behind;
        } else {
            if (node->hasEdge) {
                const float t = dotProduct(fromStart, node->direction);
                if (t >= 0.0f && t <= node->length) {
                    state.collisionNodes.push_back(node);
                    state.collisionPoints.push_back({node->start + node->direction * t, node->friction});
                } else if (t >= -radius && t <= node->length + radius) { // past an end: only that can be hit
                    const Vector2 corner =
                        t > 0.0f ? node->start + node->direction * node->length : node->start;
                    state.collisionPoints.push_back({corner, node->friction});
                }
            }
            next = node->behind;
            if (!alone && node->inFront != nullptr) {
                state.openNodes.push_back(node->inFront); // after all that is behind
            }
        }
        if (alone) {
            return;
        }
        if (next == nullptr) {
            if (state.openNodes.empty()) {
                return;
            }
            next = state.openNodes.back();
            state.openNodes.pop_back();
        }
        node = next;
    }
}

bool CircleCollision::resolveCollisions() {
    TARNWICK_LOCATION("CircleCollision::resolveCollisions");
    const float radius = state.collisionRadius;
    const float radiusSquared = radius * radius;
    Vector2 centre = *state.collisionCentre;
    Vector2 normalSum;
    float frictionSum = 0.0f;
    std::uint32_t count = 0;

    const auto resolvePointCollisions = [&] {
        bool moved = false;
        for (const CollisionPoint& point : std::views::reverse(state.collisionPoints)) {
            const Vector2 toPoint = point.position - centre;
            const float distanceSquared = dotProduct(toPoint, toPoint);
            if (distanceSquared >= radiusSquared) {
                continue; // its root cannot round to less than the radius: spares most roots
            }
            const float distance = std::sqrt(distanceSquared);
            if (distance > 0.0f && distance < radius) { // on the point itself there is no way out
                const Vector2 normal = toPoint / distance;
                centre -= normal * (radius - distance);
                normalSum += normal;
                frictionSum += point.friction;
                ++count;
                moved = true;
            }
        }
        return moved;
    };
    const auto resolveLineCollisions = [&] {
        bool moved = false;
        for (const CollisionNode* edge : std::views::reverse(state.collisionNodes)) {
            const float d = dotProduct(centre - edge->start, edge->normal);
            if (d >= -radius) { // no upper bound: an edge in the list catches a centre however deep
                centre -= edge->normal * (radius + d);
                normalSum += edge->normal;
                frictionSum += edge->friction;
                ++count;
                moved = true;
            }
        }
        return moved;
    };

    bool anyMoved = false;
    for (int pass = 0; pass < largestPassCount; ++pass) {
        const bool pointMoved = resolvePointCollisions();
        const bool lineMoved = resolveLineCollisions();
        if (!pointMoved && !lineMoved) {
            break;
        }
        anyMoved = true;
    }
    if (count > 0) {
        const float share = 1.0f / static_cast<float>(count);
        *state.collisionCentre = centre;
        state.contactCount = count;
        state.contactNormal = normalSum * share;
        state.contactFriction = frictionSum * share;
    }
    state.collisionPoints.clear();
    state.collisionNodes.clear();
    return anyMoved;
}

} // namespace tarnwick
