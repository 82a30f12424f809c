#include "gui/GuiWaterLevel.h"

#include "core/LocationStack.h"
#include "game/GameRules.h"

#include <GL/gl.h>

#include <algorithm>

namespace tarnwick {

namespace {

constexpr float fullMark = 128.0f;      ///< Particles that fill the widget: those of a level's start.
constexpr float shortestRise = 0.0001f; ///< Seconds.

} // namespace

void GuiWaterLevel::setRampUpTimePerParticle(float seconds) {
    TARNWICK_LOCATION("GuiWaterLevel::setRampUpTimePerParticle");
    rampUpTime = std::max(seconds, shortestRise);
    rampUpRemaining = 0.0f;
}

void GuiWaterLevel::reset() {
    TARNWICK_LOCATION("GuiWaterLevel::reset");
    restartRampUp();
}

void GuiWaterLevel::windowRedrawing() {
    TARNWICK_LOCATION("GuiWaterLevel::windowRedrawing");
    frameTimer.update();
    const float progress = runRampUp();
    const float share = static_cast<float>(GameRules::getParticleCount()) / fullMark * progress;
    const auto left = static_cast<float>(x);
    const float right = left + static_cast<float>(width);
    const float surface = static_cast<float>(y) + static_cast<float>(height) * (1.0f - share);
    const float bottom = static_cast<float>(y) + static_cast<float>(height);
    glPushAttrib(GL_LIGHTING_BIT);
    glShadeModel(GL_SMOOTH); // two colours in one quad; the screen shades flat
    glDisable(GL_BLEND);
    glDisable(GL_TEXTURE_2D);
    glBegin(GL_QUADS);
    glColor3f(0.8f, 0.85f, 1.0f);
    glVertex2f(left, surface);
    glVertex2f(right, surface);
    glColor3f(0.7f, 0.75f, 1.0f);
    glVertex2f(right, bottom);
    glVertex2f(left, bottom);
    glEnd();
    glPopAttrib();
}

} // namespace tarnwick
