#include "game/FreeCamera.h"

#include "console/GLConsole.h"
#include "core/LocationStack.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "graphics/GLFont.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"

#include <GL/gl.h>

#include <algorithm>
#include <cstdio>

namespace tarnwick {

namespace {

constexpr float speed = 500.0f;  ///< World units per second at zoom 1.
constexpr float zoomRate = 5.0f; ///< Share of the zoom per second.
// Kept: only Page Up tests the floor and only Page Down the ceiling, so neither bounds its own way.
constexpr float smallestZoom = 0.01f;
constexpr float largestZoom = 100.0f;

constexpr float markArm = 4.0f;         ///< Pixels at zoom 1: arm of the cross.
constexpr float markTextOffset = 16.0f; ///< The same: the coordinates stand this much below it.
constexpr float markTextSize = 8.0f;

/// The outline of what the camera of play sees, in the world.
void drawCameraFrame() {
    TARNWICK_LOCATION("FreeCamera::drawCameraFrame");
    const View view = Camera::view();
    const Vector2 centre = view.centre();
    const float halfX = view.areaX * view.zoom / 2.0f;
    const float halfY = view.areaY * view.zoom / 2.0f;
    glColor3f(0.0f, 1.0f, 0.0f);
    glPushMatrix();
    glTranslatef(centre.x, centre.y, 0.0f);
    glRotatef(view.angle, 0.0f, 0.0f, 1.0f);
    glBegin(GL_LINE_LOOP);
    glVertex2f(-halfX, -halfY);
    glVertex2f(halfX, -halfY);
    glVertex2f(halfX, halfY);
    glVertex2f(-halfX, halfY);
    glEnd();
    glPopMatrix();
}

} // namespace

void FreeCamera::steer(float seconds) {
    TARNWICK_LOCATION("FreeCamera::steer");
    const float step = speed / zoom * seconds;
    if (GLWindow::keyboardKeyPressed(key::up)) {
        position.y -= step;
    }
    if (GLWindow::keyboardKeyPressed(key::down)) {
        position.y += step;
    }
    if (GLWindow::keyboardKeyPressed(key::left)) {
        position.x -= step;
    }
    if (GLWindow::keyboardKeyPressed(key::right)) {
        position.x += step;
    }
    const float factor = seconds * zoomRate + 1.0f;
    if (GLWindow::keyboardKeyPressed(key::pageUp)) {
        zoom = std::max(zoom * factor, smallestZoom);
    }
    if (GLWindow::keyboardKeyPressed(key::pageDown)) {
        zoom = std::min(zoom / factor, largestZoom);
    }
}

void FreeCamera::viewFrom() const {
    TARNWICK_LOCATION("FreeCamera::viewFrom");
    const float viewX = Game::getViewAreaX();
    const float viewY = Game::getViewAreaY();
    // Depth is flattened, as in the camera's own view.
    glScalef(static_cast<float>(GLWindow::getClientWidth()) / viewX,
             static_cast<float>(GLWindow::getClientHeight()) / viewY, 0.0f);
    glTranslatef(viewX / 2.0f, viewY / 2.0f, 0.0f);
    glScalef(zoom, zoom, 1.0f);
    glTranslatef(-position.x, -position.y, 0.0f);
}

void FreeCamera::draw() const {
    TARNWICK_LOCATION("FreeCamera::draw");
    const auto [x, y] = position;
    const float arm = markArm / zoom;
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glColor3f(1.0f, 1.0f, 1.0f);
    glBegin(GL_LINES);
    glVertex2f(x - arm, y);
    glVertex2f(x + arm, y);
    glVertex2f(x, y - arm);
    glVertex2f(x, y + arm);
    glEnd();
    drawCameraFrame();
    glPopAttrib();

    char text[128];
    std::snprintf(text, sizeof text, "%1f , %2f", static_cast<double>(x), static_cast<double>(y));
    GLFont(GLConsole::getFontTexture())
        .drawString(text, {x, y + markTextOffset / zoom}, markTextSize / zoom, opaqueWhite);
}

} // namespace tarnwick
