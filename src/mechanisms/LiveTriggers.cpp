#include "mechanisms/LiveTriggers.h"

#include "core/LocationStack.h"
#include "mechanisms/Trigger.h"

#include <algorithm>
#include <limits>

namespace tarnwick {

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr Box everywhere{-infinity, -infinity, infinity, infinity};

constexpr float smallestSine = 0x1p-10f; ///< Of an angle of a triangle with a margin.
constexpr float marginShare = 0x1p-8f;   ///< Of the diameter, at least: twice what is needed.
constexpr float shortestEdge = 0x1p-20f; ///< World units: far from where squares lose their precision,
constexpr float longestEdge = 0x1p60f;   ///< or overflow.

float crossProduct(Vector2 a, Vector2 b) {
    TARNWICK_LOCATION("LiveTriggers::crossProduct");
    return a.x * b.y - a.y * b.x;
}

/// Whether the derivation of the margin holds for a triangle; false also if anything is no number.
bool hasMargin(const Vector2 (&edges)[3], const float (&lengths)[3]) {
    TARNWICK_LOCATION("LiveTriggers::hasMargin");
    for (int i = 0; i < 3; ++i) {
        const bool turnsLeft = crossProduct(edges[i], edges[(i + 1) % 3]) >= smallestSine;
        if (!turnsLeft || !(lengths[i] >= shortestEdge) || !(lengths[i] <= longestEdge)) {
            return false;
        }
    }
    return true;
}

Box grownBox(const Vector2 (&corners)[3]) {
    TARNWICK_LOCATION("LiveTriggers::grownBox");
    Box box = Box::around(corners[0], corners[1]);
    box.add(Box::around(corners[1], corners[2]));
    const float margin = ((box.maxX - box.minX) + (box.maxY - box.minY)) * marginShare;
    return box.grown(margin);
}

} // namespace

Box LiveTriggers::reachOf(const Trigger& trigger) {
    TARNWICK_LOCATION("LiveTriggers::reachOf");
    if (!hasMargin(trigger.edgesA, trigger.lengthsA) || !hasMargin(trigger.edgesB, trigger.lengthsB)) {
        return everywhere;
    }
    Box reach = grownBox(trigger.triangleA);
    reach.add(grownBox(trigger.triangleB));
    return reach;
}

void LiveTriggers::clear() {
    TARNWICK_LOCATION("LiveTriggers::clear");
    triggers.clear();
    blocks.clear();
}

void LiveTriggers::add(Trigger& trigger) {
    TARNWICK_LOCATION("LiveTriggers::add");
    const std::size_t lane = triggers.size() % 4;
    if (lane == 0) {
        Reaches& block = blocks.emplace_back();
        std::ranges::fill(block.minX, infinity);
        std::ranges::fill(block.minY, infinity);
        std::ranges::fill(block.maxX, -infinity);
        std::ranges::fill(block.maxY, -infinity);
    }
    triggers.push_back(&trigger);
    Reaches& block = blocks.back();
    block.minX[lane] = trigger.reach.minX;
    block.minY[lane] = trigger.reach.minY;
    block.maxX[lane] = trigger.reach.maxX;
    block.maxY[lane] = trigger.reach.maxY;
}

} // namespace tarnwick
