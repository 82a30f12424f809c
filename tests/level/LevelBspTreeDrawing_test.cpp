#include "console/GLConsole.h"
#include "level/Level.h"
#include "level/LevelBspTree.h"
#include "support/LevelDrawingTest.h"

#include <GL/gl.h>

namespace tarnwick {

/// A solid square from (30, 20) to (50, 40), and its tree of four edges.
class LevelBspTreeDrawingTest : public LevelDrawingTest {
protected:
    LevelBspTreeDrawingTest() {
        addSquare(30.0f, 20.0f, 20.0f, "red");
        LevelBspTree::create();
        Level::buildPolyNodeMap();
    }

    static void castRays(Vector2 from, Vector2 to) {
        LevelBspTree::state.testRayStarts.fill(from);
        LevelBspTree::state.testRayEnds.fill(to);
    }

    static void draw() {
        beginPicture();
        glClearColor(0.5f, 0.5f, 0.5f, 1.0f); // black is one of the colours drawn
        glClear(GL_COLOR_BUFFER_BIT);
        Level::debugDraw();
    }
    /// Pixels of a colour in the whole picture.
    static std::int32_t count(FramePicture::Pixel colour) {
        const FramePicture shown = picture();
        std::int32_t pixels = 0;
        for (const FramePicture::Pixel shade : shown.pixels) {
            pixels += shade == colour ? 1 : 0;
        }
        return pixels;
    }
    static bool nothingDrawn() {
        const FramePicture shown = picture();
        for (const FramePicture::Pixel shade : shown.pixels) {
            if (shade != shown.at(0, 0)) {
                return false;
            }
        }
        return true;
    }
};

TEST_F(LevelBspTreeDrawingTest, NothingIsDrawnUnlessAskedFor) {
    draw();

    EXPECT_TRUE(nothingDrawn());
}

TEST_F(LevelBspTreeDrawingTest, NodesAreGreenWithBlueNormalsAndWhiteEnds) {
    GLConsole::runLine("BspNodeDraw true");

    draw();

    EXPECT_GT(count(green), 40);
    EXPECT_GT(count(blue), 4 * 5);
    EXPECT_GE(count(white), 4 * 2);
    EXPECT_EQ(count(red), 0);
}

TEST_F(LevelBspTreeDrawingTest, SwitchedOffNodesAreRed) {
    GLConsole::runLine("BspNodeDraw true");
    Level::setPolygonCollideable(Level::polygons.front(), false);

    draw();

    EXPECT_GT(count(red), 40);
    EXPECT_EQ(count(green), 0);
}

TEST_F(LevelBspTreeDrawingTest, SplittersRunAcrossTheWholePicture) {
    GLConsole::runLine("BspSplitDraw true");

    draw();

    EXPECT_GT(count(black), 80 + 60) << "at least one line each way";
    EXPECT_GT(count(red), 4 * 5);
}

TEST_F(LevelBspTreeDrawingTest, TheWalkedNodeIsYellowWithABlueNormal) {
    GLConsole::runLine("BspWalkDraw true");

    draw();

    EXPECT_GT(count(yellow), 20);
    EXPECT_LT(count(yellow), 20 * 6);
    EXPECT_GT(count(blue), 8);
}

TEST_F(LevelBspTreeDrawingTest, WithoutATreeNothingIsDrawn) {
    LevelBspTree::clear();
    Level::polygons.clear();
    LevelBspTree::create();
    for (const char* command : {"BspNodeDraw true", "BspSplitDraw true", "BspWalkDraw true"}) {
        GLConsole::runLine(command);
    }

    draw();

    EXPECT_TRUE(nothingDrawn());
}

TEST_F(LevelBspTreeDrawingTest, TheRaysOfTheLastPassAreYellow) {
    GLConsole::runLine("BspCastDraw true");
    castRays({40.0f, 5.0f}, {40.0f, 19.0f});

    draw();

    EXPECT_GT(count(yellow), 10);
}

} // namespace tarnwick
