#include "console/GLConsole.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "mechanisms/TriggerManager.h"
#include "support/DrawingTest.h"
#include "support/GameSceneTest.h"
#include "support/SceneAccess.h"

#include <GL/gl.h>

namespace tarnwick {

/// A font that is white all over, so that a letter is a square.
class TriggerManagerDrawingTest : public DrawingTest {
protected:
    TriggerManagerDrawingTest() {
        writeFlatPicture("gfx/font.tga", white);
        data.write("cfg/console.cfg", "fontTextureName = gfx\\font.tga fontSize = 8");
        GLConsole::initialise();
        TriggerManager::initialise();
        SceneAccess::placeCamera({}, {}, 0.0f, 1.0f);
    }

    static void addSquare() {
        TriggerManager::addTrigger(0, 7, 0.0f, {10.5f, 10.5f}, {50.5f, 10.5f}, {50.5f, 50.5f},
                                   {10.5f, 50.5f});
    }
    static void draw() {
        beginPicture();
        TriggerManager::debugDraw(Camera::view());
    }

    static constexpr FramePicture::Pixel grey{128, 128, 128};
};

TEST_F(TriggerManagerDrawingTest, NothingIsDrawnUnasked) {
    addSquare();

    draw();

    EXPECT_EQ(litPixels(), 0);
}

TEST_F(TriggerManagerDrawingTest, BothTrianglesAreOutlinedWithTheirNormals) {
    addSquare();
    GLConsole::runLine("TriggerDraw true");

    draw();

    EXPECT_EQ(pixel(20, 10), green); // the upper side
    EXPECT_EQ(pixel(50, 20), green); // the right one
    EXPECT_EQ(pixel(10, 40), green); // the left one
    EXPECT_EQ(pixel(20, 20), green); // the diagonal
    EXPECT_EQ(pixel(30, 16), green); // the normal of the upper side points inward
    EXPECT_EQ(pixel(30, 8), black);
    EXPECT_EQ(pixel(14, 30), green); // that of the left side
    EXPECT_EQ(pixel(40, 25), black);
}

TEST_F(TriggerManagerDrawingTest, ATriggerFarFromTheViewIsGrey) {
    addSquare();
    GLConsole::runLine("TriggerDraw true");
    SceneAccess::placeCamera({600.0f, 0.0f}, {}, 0.0f, 1.0f);

    draw();

    EXPECT_PRED2(alike, pixel(20, 10), grey);
}

TEST_F(TriggerManagerDrawingTest, TheLabelStandsInTheMiddle) {
    addSquare();
    GLConsole::runLine("TriggerDraw true");

    draw();

    // The middles of the six edges have their mean at (30.5, 30.5); letters of 8 reach down from there.
    EXPECT_EQ(pixel(60, 34), white);
    EXPECT_EQ(pixel(60, 28), black);
    EXPECT_EQ(pixel(60, 40), black);
}

TEST_F(TriggerManagerDrawingTest, TheGLIsLeftAsItWas) {
    addSquare();
    GLConsole::runLine("TriggerDraw true");
    beginPicture();
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE);

    TriggerManager::debugDraw(Camera::view());

    GLint destination = 0;
    GLfloat colour[4] = {};
    glGetIntegerv(GL_BLEND_DST, &destination);
    glGetFloatv(GL_CURRENT_COLOR, colour);
    EXPECT_EQ(destination, GL_ONE);
    EXPECT_EQ(colour[0], 1.0f);
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

/// The same in the picture of the game.
class TriggersInPictureTest : public GameSceneTest {};

TEST_F(TriggersInPictureTest, TriggersAreDrawnOverTheLevel) {
    addSquare(100, 100, 200, "red", 4);
    level.triggers.push_back({0, 0, 0.0f, {{120, 121}, {280, 121}, {280, 281}, {120, 281}}});
    play();
    GLConsole::runLine("TriggerDraw true");

    Game::drawPicture();

    EXPECT_EQ(shownAt(220, 121), green);
    EXPECT_EQ(shownAt(220, 110), red);
}

} // namespace tarnwick
