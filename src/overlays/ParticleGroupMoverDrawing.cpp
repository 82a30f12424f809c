#include "core/LocationStack.h"
#include "graphics/GLWindow.h"
#include "particles/ParticleGroupMover.h"

#include <GL/gl.h>

namespace tarnwick {

namespace {

constexpr std::uint32_t circleSegments = 64;

} // namespace

void ParticleGroupMover::debugDraw() {
    TARNWICK_LOCATION("ParticleGroupMover::debugDraw");
    if (!state.groupDebugDraw) {
        return;
    }
    glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_BLEND);
    glColor3f(1.0f, 0.0f, 0.0f);
    for (const ParticleGroup& group : groups) {
        GLWindow::glCircle(group.centre, group.radius, circleSegments);
    }
    glPopAttrib();
}

} // namespace tarnwick
