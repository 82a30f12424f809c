#include "core/View.h"

namespace tarnwick {

Vector2 View::down() const {
    Vector2 down{0.0f, 1.0f};
    rotateVector(down, angle * radiansPerDegree);
    return down;
}

ViewRectangle View::rectangle() const {
    const float halfX = areaX * zoom * 0.5f;
    const float halfY = areaY * zoom * 0.5f;
    ViewRectangle seen{{{-halfX, -halfY}, {halfX, -halfY}, {halfX, halfY}, {-halfX, halfY}},
                       {{0.0f, 1.0f}, {-1.0f, 0.0f}, {0.0f, -1.0f}, {1.0f, 0.0f}}};
    const Vector2 middle = centre();
    for (int i = 0; i < ViewRectangle::edgeCount; ++i) {
        rotateVector(seen.corners[i], angle * radiansPerDegree);
        rotateVector(seen.inwardNormals[i], angle * radiansPerDegree);
        seen.corners[i] += middle;
    }
    return seen;
}

} // namespace tarnwick
