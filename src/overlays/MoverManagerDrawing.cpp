#include "console/GLConsole.h"
#include "core/LocationStack.h"
#include "graphics/GLFont.h"
#include "graphics/GLWindow.h"
#include "level/Polygon2D.h"
#include "mechanisms/MoverManager.h"

#include <GL/gl.h>

#include <cstdio>

namespace tarnwick {

namespace {

constexpr float pointSize = 3.0f;    ///< Pixels.
constexpr float labelOffset = 8.0f;  ///< World units before the start of the track.
constexpr float labelHeight = 8.0f;  ///< World units.
constexpr float normalLength = 8.0f; ///< World units.

/// A line with its ends marked in white.
void drawMarkedLine(Vector2 from, Vector2 to) {
    TARNWICK_LOCATION("MoverManager::drawMarkedLine");
    glBegin(GL_LINES);
    glVertex2f(from.x, from.y);
    glVertex2f(to.x, to.y);
    glEnd();
    glColor3f(1.0f, 1.0f, 1.0f);
    glBegin(GL_POINTS);
    glVertex2f(from.x, from.y);
    glVertex2f(to.x, to.y);
    glEnd();
}

} // namespace

void MoverManager::debugDraw() {
    TARNWICK_LOCATION("MoverManager::debugDraw");
    if (!state.moverDraw && !state.dynamicNodeDraw) {
        return;
    }
    GLWindow::glPushState();
    glDisable(GL_BLEND);
    glPointSize(pointSize);
    if (state.moverDraw) {
        drawTracks();
    }
    if (state.dynamicNodeDraw) {
        drawDynamicNodes();
    }
    GLWindow::glPopState();
}

/// Every track in yellow, with the mover's id and speed before its start.
void MoverManager::drawTracks() {
    TARNWICK_LOCATION("MoverManager::drawTracks");
    const GLFont font(GLConsole::getFontTexture());
    for (const Mover& mover : movers) {
        glDisable(GL_TEXTURE_2D);
        glColor3f(1.0f, 1.0f, 0.0f);
        drawMarkedLine(mover.startPoint, mover.endPoint);
        char text[128];
        std::snprintf(text, sizeof text, "Id: %1i Speed: %2f", static_cast<int>(mover.id),
                      static_cast<double>(mover.speed));
        const Vector2 label = mover.startPoint - mover.direction * labelOffset;
        font.drawString(text, label, labelHeight, opaqueWhite);
    }
}

/// Every edge of a moving polygon where it is now, green while it collides, else red, with its normal in
/// blue.
void MoverManager::drawDynamicNodes() {
    TARNWICK_LOCATION("MoverManager::drawDynamicNodes");
    glDisable(GL_TEXTURE_2D);
    for (const DynamicPolygon& dynamic : state.dynamicPolygons) {
        const Vector2 offset{dynamic.polygon->offsetX, dynamic.polygon->offsetY};
        const bool collides = dynamic.polygon->collideable;
        for (const LevelBspNode& edge : dynamic.edges) {
            const Vector2 start = edge.start + offset;
            const Vector2 end = edge.end + offset;
            const Vector2 middle = (start + end) * 0.5f;
            const Vector2 tip = middle + edge.normal * normalLength;
            glColor3f(0.0f, 0.0f, 1.0f);
            glBegin(GL_LINES);
            glVertex2f(middle.x, middle.y);
            glVertex2f(tip.x, tip.y);
            glEnd();
            glColor3f(collides ? 0.0f : 1.0f, collides ? 1.0f : 0.0f, 0.0f);
            drawMarkedLine(start, end);
        }
    }
}

} // namespace tarnwick
