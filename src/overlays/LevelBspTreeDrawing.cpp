#include "core/LocationStack.h"
#include "graphics/GLWindow.h"
#include "level/LevelBspTree.h"

#include <GL/gl.h>

namespace tarnwick {

namespace {

constexpr float normalLength = 8.0f;     ///< World units: how long a drawn normal is.
constexpr float splitterReach = 9999.0f; ///< Lengths of its edge by which a splitter's line runs on.
constexpr float nodePointSize = 2.0f;    ///< Pixels.

/// One line of `width` pixels in the current colour.
void drawLine(Vector2 from, Vector2 to, float width) {
    TARNWICK_LOCATION("LevelBspTree::drawLine");
    glLineWidth(width);
    glBegin(GL_LINES);
    glVertex2f(from.x, from.y);
    glVertex2f(to.x, to.y);
    glEnd();
}

/// The normal of an edge, from its middle.
void drawNormal(const LevelBspNode& node, float width) {
    TARNWICK_LOCATION("LevelBspTree::drawNormal");
    const Vector2 middle = (node.start + node.end) * 0.5f;
    drawLine(middle, middle + node.normal * normalLength, width);
}

/// The edges of a subtree with the lines along which they split the plane, those in front first.
void drawSplits(const LevelBspNode* node) {
    TARNWICK_LOCATION("LevelBspTree::drawSplits");
    if (node == nullptr) {
        return;
    }
    drawSplits(node->inFront);
    glColor3f(0.0f, 0.0f, 0.0f);
    drawLine(node->start, node->end, 2.0f);
    glColor3f(1.0f, 0.0f, 0.0f);
    drawNormal(*node, 2.0f);
    const Vector2 edge = node->end - node->start;
    glColor3f(0.0f, 0.0f, 0.0f);
    drawLine(node->start - edge * splitterReach, node->start + edge * splitterReach, 1.0f);
    drawSplits(node->behind);
}

/// The edges of a subtree, green when they can be hit and red when they are switched off, those in front
/// first.
void drawNodes(const LevelBspNode* node) {
    TARNWICK_LOCATION("LevelBspTree::drawNodes");
    if (node == nullptr) {
        return;
    }
    drawNodes(node->inFront);
    if (node->hasEdge) {
        glColor3f(0.0f, 1.0f, 0.0f);
    } else {
        glColor3f(1.0f, 0.0f, 0.0f);
    }
    drawLine(node->start, node->end, 1.0f);
    glColor3f(0.0f, 0.0f, 1.0f);
    drawNormal(*node, 1.0f);
    glColor3f(1.0f, 1.0f, 1.0f);
    glPointSize(nodePointSize);
    glBegin(GL_POINTS);
    glVertex2f(node->start.x, node->start.y);
    glVertex2f(node->end.x, node->end.y);
    glEnd();
    drawNodes(node->behind);
}

} // namespace

void LevelBspTree::debugDraw() {
    TARNWICK_LOCATION("LevelBspTree::debugDraw");
    GLWindow::glPushState();
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    if (state.splitDraw) {
        drawSplits(state.rootNode);
    }
    if (state.walkDraw && state.walkNode != nullptr) {
        glColor3f(1.0f, 1.0f, 0.0f);
        drawLine(state.walkNode->start, state.walkNode->end, 3.0f);
        glColor3f(0.0f, 0.0f, 1.0f);
        drawNormal(*state.walkNode, 4.0f);
    }
    if (state.castDraw) {
        drawTestRays();
    }
    if (state.nodeDraw) {
        drawNodes(state.rootNode);
    }
    GLWindow::glPopState();
}

/// The rays of the last pass of `BspCast`.
void LevelBspTree::drawTestRays() {
    TARNWICK_LOCATION("LevelBspTree::drawTestRays");
    glColor3f(1.0f, 1.0f, 0.0f);
    for (std::size_t ray = 0; ray < testRayCount; ++ray) {
        drawLine(state.testRayStarts[ray], state.testRayEnds[ray], 1.0f);
    }
}

} // namespace tarnwick
