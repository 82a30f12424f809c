#include "console/GLConsole.h"
#include "core/LocationStack.h"
#include "graphics/GLFont.h"
#include "mechanisms/TriggerManager.h"

#include <GL/gl.h>

#include <cstdio>

namespace tarnwick {

namespace {

constexpr float normalLength = 8.0f; ///< World units.
constexpr float labelHeight = 8.0f;  ///< World units.

Vector2 edgeMiddle(const Vector2 (&corners)[3], std::size_t edge) {
    TARNWICK_LOCATION("TriggerManager::edgeMiddle");
    return (corners[edge] + corners[(edge + 1) % 3]) * 0.5f;
}

void drawTriangle(const Vector2 (&corners)[3], const Vector2 (&normals)[3]) {
    TARNWICK_LOCATION("TriggerManager::drawTriangle");
    glBegin(GL_LINE_LOOP);
    for (const Vector2 corner : corners) {
        glVertex2f(corner.x, corner.y);
    }
    glEnd();
    glBegin(GL_LINES);
    for (std::size_t edge = 0; edge < 3; ++edge) {
        const Vector2 middle = edgeMiddle(corners, edge);
        const Vector2 tip = middle + normals[edge] * normalLength;
        glVertex2f(middle.x, middle.y);
        glVertex2f(tip.x, tip.y);
    }
    glEnd();
}

void drawLabel(const GLFont& font, const Trigger& trigger) {
    TARNWICK_LOCATION("TriggerManager::drawLabel");
    Vector2 place;
    for (std::size_t edge = 0; edge < 3; ++edge) {
        place += edgeMiddle(trigger.triangleA, edge);
        place += edgeMiddle(trigger.triangleB, edge);
    }
    place = place / 6.0f;
    char text[128];
    std::snprintf(text, sizeof text, "id: %1i name: %2s", static_cast<int>(trigger.targetId),
                  trigger.type->name);
    font.drawString(text, place, labelHeight, opaqueWhite);
}

} // namespace

void TriggerManager::debugDraw(const View& view) {
    TARNWICK_LOCATION("TriggerManager::debugDraw");
    if (!state.triggerDraw) {
        return;
    }
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_COLOR_BUFFER_BIT | GL_TEXTURE_BIT);
    const GLFont font(GLConsole::getFontTexture());
    const Box square = view.triggerSquare();
    for (const Trigger& trigger : triggers) {
        const bool near = trigger.box().touches(square);
        glDisable(GL_TEXTURE_2D);
        glDisable(GL_BLEND);
        glColor3f(near ? 0.0f : 0.5f, near ? 1.0f : 0.5f, near ? 0.0f : 0.5f);
        drawTriangle(trigger.triangleA, trigger.normalsA);
        drawTriangle(trigger.triangleB, trigger.normalsB);
        drawLabel(font, trigger);
    }
    glPopAttrib();
}

} // namespace tarnwick
