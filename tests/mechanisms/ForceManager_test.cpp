#include "mechanisms/ForceManager.h"

#include "console/GLConsole.h"
#include "core/Random.h"
#include "game/Camera.h"
#include "graphics/GLWindow.h"
#include "particles/ParticleManager.h"
#include "particles/ParticleMover.h"
#include "support/ConsoleAnswer.h"
#include "support/DrawingTest.h"
#include "support/ModuleTest.h"
#include "support/SceneAccess.h"

#include <GL/gl.h>

#include <string>

namespace tarnwick {

class ForceManagerTest : public ModuleTest {
protected:
    ForceManagerTest() { GLConsole::initialise(); }

    static constexpr const char* usage =
        "\nUSAGE: MoveForceCreate  < id : integer > < x : number > < y : number > < dir_x : number >"
        " < dir_y : number > < strenght : number >";
};

TEST_F(ForceManagerTest, ForcesStandInTheOrderOfCreation) {
    ForceManager::initialise();
    ForceManager::addForce(7, 10.0f, -20.0f, 3.0f, 4.0f, 2.5f);
    ForceManager::addForce(-1, 0.0f, 0.0f, 0.0f, -0.5f, -3.0f);

    ASSERT_EQ(ForceManager::forces.size(), 2u);
    const Force& first = ForceManager::forces.front();
    EXPECT_TRUE(first.enabled);
    EXPECT_EQ(first.id, 7);
    EXPECT_EQ(first.position, (Vector2{10.0f, -20.0f}));
    EXPECT_EQ(first.direction, (Vector2{3.0f / 5.0f, 4.0f / 5.0f}));
    EXPECT_EQ(first.strength, 2.5f);
    EXPECT_EQ(ForceManager::forces.back().id, -1);
    EXPECT_EQ(ForceManager::forces.back().direction, (Vector2{0.0f, -1.0f}));
    EXPECT_EQ(ForceManager::forces.back().strength, -3.0f);
}

TEST_F(ForceManagerTest, StartAndEndAreTold) {
    GLConsole::clear();

    ForceManager::initialise();

    EXPECT_EQ(GLConsole::outputText(), "\nShutting down force manager.\nInitialising force manager.");
}

TEST_F(ForceManagerTest, AnewStartEmptiesTheListAndSwitchesTheDrawingOff) {
    ForceManager::initialise();
    ForceManager::addForce(1, 0.0f, 0.0f, 1.0f, 0.0f, 1.0f);
    GLConsole::runLine("ForceDraw true");

    ForceManager::initialise();

    EXPECT_EQ(answerTo("ForceCount"), "\nForceCount is 0");
    EXPECT_EQ(answerTo("ForceDraw"), "\nForceDraw is false");
}

TEST_F(ForceManagerTest, AfterShutdownForcesAndCommandsAreGone) {
    ForceManager::initialise();
    ForceManager::addForce(1, 0.0f, 0.0f, 1.0f, 0.0f, 1.0f);

    ForceManager::shutdown();

    EXPECT_TRUE(ForceManager::forces.empty());
    for (const char* const command : {"FORCECOUNT", "FORCEDRAW", "FORCECREATE"}) {
        EXPECT_FALSE(GLConsole::commands().contains(command)) << command;
    }
}

TEST_F(ForceManagerTest, AForceWithoutDirectionPointsRight) {
    ForceManager::initialise();

    const std::string answer = answerTo("ForceCreate 1 0 0 0 0 5");

    EXPECT_EQ(answer, "");
    ASSERT_EQ(ForceManager::forces.size(), 1u);
    EXPECT_EQ(ForceManager::forces.front().direction, (Vector2{1.0f, 0.0f}));
    EXPECT_EQ(ForceManager::forces.front().strength, 5.0f); // as typed, unlike that of a level file
}

TEST_F(ForceManagerTest, TheCommandTakesNumbersAndAWholeId) {
    ForceManager::initialise();

    GLConsole::runLine("forcecreate -3 1.5 -2.5 0 -2 -0.5");

    ASSERT_EQ(ForceManager::forces.size(), 1u);
    const Force& force = ForceManager::forces.front();
    EXPECT_EQ(force.id, -3);
    EXPECT_EQ(force.position, (Vector2{1.5f, -2.5f}));
    EXPECT_EQ(force.direction, (Vector2{0.0f, -1.0f}));
    EXPECT_EQ(force.strength, -0.5f);
    EXPECT_EQ(answerTo("ForceCount"), "\nForceCount is 1");
}

TEST_F(ForceManagerTest, WrongArgumentsPrintTheUsageAndMakeNothing) {
    ForceManager::initialise();

    EXPECT_EQ(answerTo("ForceCreate 1 0 0 0 0"), usage);
    EXPECT_EQ(answerTo("ForceCreate 1 0 0 0 0 5 6"), usage);
    EXPECT_EQ(answerTo("ForceCreate 1.5 0 0 0 0 5"), usage);
    EXPECT_EQ(answerTo("ForceCreate one 0 0 0 0 5"), usage);
    EXPECT_EQ(answerTo("ForceCreate 1 0 0 0 east 5"), usage);
    EXPECT_EQ(answerTo("ForceCreate 1 0 0 0 0 1e5"), usage);
    EXPECT_TRUE(ForceManager::forces.empty());
}

TEST_F(ForceManagerTest, TheDrawingIsSwitchedByItsCommand) {
    ForceManager::initialise();

    EXPECT_EQ(answerTo("ForceDraw"), "\nForceDraw is false");
    EXPECT_EQ(answerTo("ForceDraw true"), "\nForceDraw is now true");
    EXPECT_EQ(answerTo("ForceDraw"), "\nForceDraw is true");
}

TEST_F(ForceManagerTest, AForceThatNoTriggerTargetsHasNoEffect) {
    GLWindow::createHeadless(800, 600);
    SceneAccess::configure({});
    const auto fall = [] {
        ParticleManager::particles.clear();
        ParticleMover::clearParticleGrid();
        ParticleManager::createParticles(0.0f, 0.0f, 10.0f, 16);
        seedRandom(3);
        ParticleManager::runSimulation(0.01f, Camera::view());
        return ParticleManager::particles.back();
    };
    seedRandom(1);
    const Particle free = fall();
    ForceManager::addForce(0, 0.0f, 0.0f, 1.0f, 0.0f, 5000.0f);
    seedRandom(1);

    const Particle besideForce = fall();

    EXPECT_EQ(besideForce.position, free.position);
    EXPECT_EQ(besideForce.velocity, free.velocity);
}

/// The same in a picture: a font that is white all over, so that a letter is a square.
class ForceDrawingTest : public DrawingTest {
protected:
    ForceDrawingTest() {
        writeFlatPicture("gfx/font.tga", white);
        data.write("cfg/console.cfg", "fontTextureName = gfx\\font.tga fontSize = 8");
        GLConsole::initialise();
        ForceManager::initialise();
        ForceManager::addForce(4, 20.5f, 10.5f, 1.0f, 0.0f, 2.0f);
    }

    static void draw() {
        beginPicture();
        ForceManager::debugDraw();
    }
};

TEST_F(ForceDrawingTest, NothingIsDrawnUnasked) {
    draw();

    EXPECT_EQ(litPixels(), 0);
}

TEST_F(ForceDrawingTest, AnEnabledForceIsAGreenPointWithAnArrow) {
    GLConsole::runLine("ForceDraw true");

    draw();

    EXPECT_EQ(pixel(19, 9), green); // a point of 3 pixels
    EXPECT_EQ(pixel(21, 11), green);
    EXPECT_EQ(pixel(18, 8), black);
    EXPECT_EQ(pixel(40, 10), green); // the line to the tip at 52.5
    EXPECT_EQ(pixel(54, 10), black);
    EXPECT_EQ(pixel(48, 6), green); // the two lines of the head go back by 8 and out by 8
    EXPECT_EQ(pixel(48, 14), green);
    EXPECT_EQ(pixel(43, 10), green);
    EXPECT_EQ(pixel(43, 4), black);
}

TEST_F(ForceDrawingTest, ADisabledForceShowsInTheOtherColour) {
    GLConsole::runLine("ForceDraw true");
    ForceManager::forces.front().enabled = false;

    draw();

    EXPECT_EQ(pixel(20, 10), red);
    EXPECT_EQ(pixel(40, 10), red);
}

TEST_F(ForceDrawingTest, TheLabelStandsBelow) {
    GLConsole::runLine("ForceDraw true");

    draw();

    EXPECT_EQ(pixel(30, 48), black);
    EXPECT_EQ(pixel(30, 54), white); // 40 below, in letters of 8
    EXPECT_EQ(pixel(18, 54), black);
    EXPECT_EQ(pixel(30, 59), black);
}

TEST_F(ForceDrawingTest, TheGLIsLeftAsItWas) {
    GLConsole::runLine("ForceDraw true");
    draw();
    GLfloat size = 0.0f;

    glGetFloatv(GL_POINT_SIZE, &size);

    EXPECT_EQ(size, 1.0f);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

} // namespace tarnwick
