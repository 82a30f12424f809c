#pragma once

#include "core/Geometry.h"
#include "core/Vector2.h"

namespace tarnwick {

constexpr float radiansPerDegree = 0.017453292f;

/// The rectangle of the world that the camera sees, turned with it. What lies outside by more than a margin
/// is lost.
struct ViewRectangle {
    static constexpr int edgeCount = 4;

    Vector2 corners[edgeCount];       ///< World units; corner i lies on edges i and i - 1.
    Vector2 inwardNormals[edgeCount]; ///< Unit; normal i belongs to the edge from corner i to corner i + 1.

    /// The rectangle of `Game`'s view area under the camera's position, shake, angle and zoom of this moment.
    static ViewRectangle ofCamera();

    /// True when the signed inward distance of `point` to any of the four edges is strictly below `-margin`.
    /// A point exactly `margin` outside is not beyond.
    bool isBeyond(Vector2 point, float margin) const {
        return distance(point, 0) < -margin || distance(point, 1) < -margin || distance(point, 2) < -margin ||
               distance(point, 3) < -margin;
    }

private:
    float distance(Vector2 point, int edge) const {
        return dotProduct(point - corners[edge], inwardNormals[edge]);
    }
};

} // namespace tarnwick
