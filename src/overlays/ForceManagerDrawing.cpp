#include "console/GLConsole.h"
#include "core/LocationStack.h"
#include "graphics/GLFont.h"
#include "mechanisms/ForceManager.h"

#include <GL/gl.h>

#include <cstdio>

namespace tarnwick {

namespace {

constexpr float pointSize = 3.0f;    ///< Pixels.
constexpr float arrowLength = 32.0f; ///< World units from the force to the tip.
constexpr float headLength = 8.0f;   ///< World units along each axis from the tip to an end of the head.
constexpr float labelOffset = 40.0f; ///< World units below the force.
constexpr float labelHeight = 8.0f;  ///< World units.

void drawArrow(const Force& force) {
    TARNWICK_LOCATION("ForceManager::drawArrow");
    const Vector2 direction = force.direction;
    const Vector2 tip = force.position + direction * arrowLength;
    // The direction turned by 45 degrees either way, longer by the square root of 2.
    const Vector2 left = tip - Vector2{direction.x - direction.y, direction.y + direction.x} * headLength;
    const Vector2 right = tip - Vector2{direction.x + direction.y, direction.y - direction.x} * headLength;
    glBegin(GL_LINES);
    for (const Vector2 end : {force.position, left, right}) {
        glVertex2f(end.x, end.y);
        glVertex2f(tip.x, tip.y);
    }
    glEnd();
}

void drawLabel(const GLFont& font, const Force& force) {
    TARNWICK_LOCATION("ForceManager::drawLabel");
    char text[128];
    std::snprintf(text, sizeof text, "Id: %1i , Strenght: %1f", static_cast<int>(force.id),
                  static_cast<double>(force.strength));
    font.drawString(text, force.position + Vector2{0.0f, labelOffset}, labelHeight, opaqueWhite);
}

} // namespace

void ForceManager::debugDraw() {
    TARNWICK_LOCATION("ForceManager::debugDraw");
    if (!state.forceDraw) {
        return;
    }
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_POINT_BIT | GL_COLOR_BUFFER_BIT | GL_TEXTURE_BIT);
    glPointSize(pointSize);
    const GLFont font(GLConsole::getFontTexture());
    for (const Force& force : forces) {
        glDisable(GL_TEXTURE_2D);
        glDisable(GL_BLEND);
        glColor3f(force.enabled ? 0.0f : 1.0f, force.enabled ? 1.0f : 0.0f, 0.0f);
        glBegin(GL_POINTS);
        glVertex2f(force.position.x, force.position.y);
        glEnd();
        drawArrow(force);
        drawLabel(font, force);
    }
    glPopAttrib();
}

} // namespace tarnwick
