#include "console/GLConsole.h"
#include "level/Level.h"
#include "mechanisms/MoverManager.h"
#include "support/DrawingTest.h"
#include "support/SceneAccess.h"

#include <GL/gl.h>

namespace tarnwick {

/// A square on a track of its own, with a font that is white all over, so that a letter is a square.
class MoverDrawingTest : public DrawingTest {
protected:
    MoverDrawingTest() {
        writeFlatPicture("gfx/font.tga", white);
        data.write("cfg/console.cfg", "fontTextureName = gfx\\font.tga fontSize = 8");
        GLConsole::initialise();
        MoverManager::initialise();
        SceneAccess::addPolygon({{40.5f, 10.5f}, {70.5f, 10.5f}, {70.5f, 40.5f}, {40.5f, 40.5f}}, 0.5f);
        Level::polygons.back().id = 4;
        Mover mover;
        mover.id = 4;
        mover.setStartPoint(10.5f, 10.5f);
        mover.setEndPoint(10.5f, 40.5f);
        MoverManager::addMover(mover);
    }

    static void draw() {
        beginPicture();
        MoverManager::debugDraw();
    }
};

TEST_F(MoverDrawingTest, NothingIsDrawnUnasked) {
    draw();

    EXPECT_EQ(litPixels(), 0);
}

TEST_F(MoverDrawingTest, ATrackIsALineWithItsEndsMarked) {
    GLConsole::runLine("MoverDraw true");

    draw();

    EXPECT_EQ(pixel(10, 25), yellow);
    EXPECT_EQ(pixel(10, 40), white);
    EXPECT_EQ(pixel(11, 41), white);
    EXPECT_EQ(pixel(10, 44), black);
    EXPECT_EQ(pixel(70, 25), black); // the polygon's edges are not asked for
}

TEST_F(MoverDrawingTest, TheLabelStandsBeforeTheStart) {
    GLConsole::runLine("MoverDraw true");

    draw();

    EXPECT_EQ(pixel(30, 0), black);
    EXPECT_EQ(pixel(30, 6), white); // 8 before the start along the track, in letters of 8
    EXPECT_EQ(pixel(30, 12), black);
}

TEST_F(MoverDrawingTest, EdgesAreDrawnWhereThePolygonIsWithTheirNormals) {
    GLConsole::runLine("DynamicNodeDraw true");
    Level::polygons.front().offsetX = -20.0f;

    draw();

    EXPECT_EQ(pixel(30, 10), green);
    EXPECT_EQ(pixel(20, 10), white);
    EXPECT_EQ(pixel(35, 14), blue); // the normal in the middle of the upper side
    EXPECT_EQ(pixel(35, 22), black);
    EXPECT_EQ(pixel(60, 10), black);
    EXPECT_EQ(pixel(10, 25), black); // the track is not asked for
}

TEST_F(MoverDrawingTest, EdgesThatAreSwitchedOffShowInTheOtherColour) {
    GLConsole::runLine("DynamicNodeDraw true");
    Level::polygons.front().collideable = false;

    draw();

    EXPECT_EQ(pixel(50, 10), red);
}

TEST_F(MoverDrawingTest, TheGLIsLeftAsItWas) {
    GLConsole::runLine("MoverDraw true");
    GLConsole::runLine("DynamicNodeDraw true");
    draw();
    GLfloat size = 0.0f;

    glGetFloatv(GL_POINT_SIZE, &size);

    EXPECT_EQ(size, 1.0f);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

} // namespace tarnwick
