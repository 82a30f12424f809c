#include "console/GLConsole.h"
#include "particles/ParticleGroupMover.h"
#include "support/DrawingTest.h"

#include <GL/gl.h>

namespace tarnwick {

class ParticleGroupMoverDrawingTest : public DrawingTest {
protected:
    ParticleGroupMoverDrawingTest() {
        ParticleGroupMover::initialise();
        ParticleGroup& group = ParticleGroupMover::groups.emplace_back();
        group.centre = {40.0f, 30.0f};
        group.radius = 20.0f;
        beginPicture();
    }
};

TEST_F(ParticleGroupMoverDrawingTest, NoCircleIsDrawnUnlessAskedFor) {
    ParticleGroupMover::debugDraw();

    EXPECT_EQ(litPixels(), 0);
}

TEST_F(ParticleGroupMoverDrawingTest, ARedCircleShowsEachGroupsRadius) {
    GLConsole::runLine("ParticleGroupDraw true");

    ParticleGroupMover::debugDraw();

    EXPECT_EQ(pixel(40, 30), black);
    EXPECT_TRUE(pixel(60, 30) == red || pixel(59, 30) == red);
    EXPECT_TRUE(pixel(20, 30) == red || pixel(19, 30) == red);
    EXPECT_GT(litPixels(), 80);
    EXPECT_LT(litPixels(), 260);
}

TEST_F(ParticleGroupMoverDrawingTest, TheGLIsLeftAsItWas) {
    GLConsole::runLine("ParticleGroupDraw true");
    glEnable(GL_BLEND);

    ParticleGroupMover::debugDraw();

    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
}

} // namespace tarnwick
