#include "audio/SoundSourceManager.h"
#include "console/GLConsole.h"
#include "core/LocationStack.h"
#include "graphics/GLFont.h"
#include "graphics/GLWindow.h"

#include <GL/gl.h>

namespace tarnwick {

namespace {

constexpr float pointSize = 4.0f; ///< Pixels.
constexpr std::int32_t circleSegments = 64;
constexpr float labelOffset = 4.0f; ///< World units below the source.
constexpr float labelHeight = 8.0f; ///< World units.

} // namespace

void SoundSourceManager::debugDraw() {
    TARNWICK_LOCATION("SoundSourceManager::debugDraw");
    if (!state.soundSourceDraw) {
        return;
    }
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT | GL_POINT_BIT | GL_COLOR_BUFFER_BIT | GL_TEXTURE_BIT);
    glPointSize(pointSize);
    drawSources(state.onceSources);
    drawSources(state.loopingSources);
    glPopAttrib();
}

void SoundSourceManager::drawSources(const Sources& sources) {
    TARNWICK_LOCATION("SoundSourceManager::drawSources");
    const GLFont font(GLConsole::getFontTexture());
    for (const auto& [id, ofId] : sources) {
        for (const SoundSource& source : ofId) {
            glDisable(GL_TEXTURE_2D);
            glDisable(GL_BLEND);
            if (source.stopped) {
                glColor3f(0.5f, 0.5f, 0.5f);
            } else {
                glColor3f(source.looping ? 0.0f : 1.0f, 1.0f, 0.0f);
            }
            glBegin(GL_POINTS);
            glVertex2f(source.x, source.y);
            glEnd();
            GLWindow::glCircle({source.x, source.y}, source.strenght, circleSegments);
            const std::string text = "id: " + std::to_string(id) + " sound: " + source.sound.getName();
            font.drawString(text, {source.x, source.y + labelOffset}, labelHeight, opaqueWhite);
        }
    }
}

} // namespace tarnwick
