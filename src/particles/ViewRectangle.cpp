#include "particles/ViewRectangle.h"

#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "game/Camera.h"
#include "game/Game.h"

namespace tarnwick {

ViewRectangle ViewRectangle::ofCamera() {
    TARNWICK_LOCATION("ViewRectangle::ofCamera");
    const float halfX = Game::getViewAreaX() * Camera::zoom() * 0.5f;
    const float halfY = Game::getViewAreaY() * Camera::zoom() * 0.5f;
    ViewRectangle view{{{-halfX, -halfY}, {halfX, -halfY}, {halfX, halfY}, {-halfX, halfY}},
                       {{0.0f, 1.0f}, {-1.0f, 0.0f}, {0.0f, -1.0f}, {1.0f, 0.0f}}};
    const float angle = Camera::angle() * radiansPerDegree;
    const Vector2 centre = Camera::position() + Camera::shakeOffset();
    for (int i = 0; i < edgeCount; ++i) {
        rotateVector(view.corners[i], angle);
        rotateVector(view.inwardNormals[i], angle);
        view.corners[i] += centre;
    }
    return view;
}

} // namespace tarnwick
