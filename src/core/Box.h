#pragma once

#include "core/Vector2.h"

#include <algorithm>
#include <limits>

namespace tarnwick {

/// The smallest upright rectangle around some points, world units unless told otherwise. Without points it is
/// inside out, holds none and touches nothing.
struct Box {
    float minX = std::numeric_limits<float>::infinity();
    float minY = std::numeric_limits<float>::infinity();
    float maxX = -std::numeric_limits<float>::infinity();
    float maxY = -std::numeric_limits<float>::infinity();

    static Box around(Vector2 a, Vector2 b) {
        return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
    }

    void add(const Box& other) {
        minX = std::min(minX, other.minX);
        minY = std::min(minY, other.minY);
        maxX = std::max(maxX, other.maxX);
        maxY = std::max(maxY, other.maxY);
    }

    Box shifted(Vector2 offset) const {
        return {minX + offset.x, minY + offset.y, maxX + offset.x, maxY + offset.y};
    }
    /// Larger by `margin` on every side.
    Box grown(float margin) const { return {minX - margin, minY - margin, maxX + margin, maxY + margin}; }

    /// A point on the border is inside.
    bool holds(Vector2 point) const {
        return minX <= point.x && point.x <= maxX && minY <= point.y && point.y <= maxY;
    }
    /// Rectangles that share no more than a border touch.
    bool touches(const Box& other) const {
        return minX <= other.maxX && other.minX <= maxX && minY <= other.maxY && other.minY <= maxY;
    }
};

} // namespace tarnwick
