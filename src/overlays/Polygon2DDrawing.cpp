#include "core/LocationStack.h"
#include "graphics/GLWindow.h"
#include "level/Polygon2D.h"

#include <GL/gl.h>

namespace tarnwick {

namespace {

constexpr float outlineWidth = 2.0f;  ///< Pixels.
constexpr float triangleWidth = 1.0f; ///< Pixels.

/// Lines over everything: neither pictures, light nor depth. Between `glPushState` and `glPopState`.
void prepareLines(float width) {
    TARNWICK_LOCATION("Polygon2D::prepareLines");
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_LIGHTING);
    glDisable(GL_CULL_FACE);
    glDisable(GL_BLEND);
    glDisable(GL_DEPTH_TEST);
    glDepthMask(GL_FALSE);
    glLineWidth(width);
}

} // namespace

void Polygon2D::drawOutline() const {
    TARNWICK_LOCATION("Polygon2D::drawOutline");
    GLWindow::glPushState();
    prepareLines(outlineWidth);
    glColor3f(1.0f, 1.0f, 1.0f);
    glBegin(GL_LINE_LOOP);
    for (std::size_t point = pointsX.size(); point > 0; --point) {
        glVertex2f(pointsX[point - 1], pointsY[point - 1]); // Kept: without the offset, unlike the triangles
    }
    glEnd();
    GLWindow::glPopState();
}

void Polygon2D::drawTrianglesOutline() const {
    TARNWICK_LOCATION("Polygon2D::drawTrianglesOutline");
    GLWindow::glPushState();
    prepareLines(triangleWidth);
    glColor3f(1.0f, 0.0f, 0.0f);
    glBegin(GL_LINES);
    for (std::size_t first = 0; first < std::size_t{triangleCount} * 3; first += 3) {
        for (std::size_t side = 0; side < 3; ++side) {
            const std::size_t from = first + side;
            const std::size_t to = first + (side + 1) % 3;
            glVertex2f(trianglesX[from] + offsetX, trianglesY[from] + offsetY);
            glVertex2f(trianglesX[to] + offsetX, trianglesY[to] + offsetY);
        }
    }
    glEnd();
    GLWindow::glPopState();
}

} // namespace tarnwick
