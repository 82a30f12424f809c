#include "core/LocationStack.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"

#include <GL/gl.h>

namespace tarnwick {

View Camera::view() {
    TARNWICK_LOCATION("Camera::view");
    return {.position = position(),
            .shakeOffset = shakeOffset(),
            .angle = state.cameraAngle,
            .zoom = state.cameraZoom,
            .areaX = Game::getViewAreaX(),
            .areaY = Game::getViewAreaY()};
}

void Camera::viewFrom() {
    TARNWICK_LOCATION("Camera::viewFrom");
    const float viewX = Game::getViewAreaX();
    const float viewY = Game::getViewAreaY();
    glLoadIdentity();
    // Depth is flattened: the level's fixed polygons carry their layer as depth, far outside what is not
    // clipped.
    glScalef(static_cast<float>(GLWindow::getClientWidth()) / viewX,
             static_cast<float>(GLWindow::getClientHeight()) / viewY, 0.0f);
    glTranslatef(viewX / 2.0f, viewY / 2.0f, 0.0f);
    glScalef(1.0f / state.cameraZoom, 1.0f / state.cameraZoom, 1.0f);
    glRotatef(-state.cameraAngle, 0.0f, 0.0f, 1.0f);
    glTranslatef(-(state.cameraX + state.shakeOffsetX), -(state.cameraY + state.shakeOffsetY), 0.0f);
}

} // namespace tarnwick
