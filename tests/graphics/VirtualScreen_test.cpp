#include "graphics/VirtualScreen.h"

#include "core/Comfort.h"
#include "graphics/GLWindow.h"
#include "support/GLTest.h"

namespace tarnwick {

class VirtualScreenTest : public GLTest {
protected:
    void keepProportions() {
        data.write("cfg/comfort.cfg", "keepProportions = TRUE");
        Comfort::initialise();
    }
    static float depthScale() {
        float matrix[16] = {};
        glGetFloatv(GL_MODELVIEW_MATRIX, matrix);
        return matrix[10];
    }
};

TEST_F(VirtualScreenTest, FillsTheWindowWhateverItsSize) {
    VirtualScreen::begin(1.0f);

    glColor3f(1.0f, 1.0f, 1.0f);
    glRectf(400.0f, 300.0f, VirtualScreen::width, VirtualScreen::height);

    EXPECT_EQ(pixelAt(side / 2, side / 2), white);
    EXPECT_EQ(pixelAt(side - 1, side - 1), white);
    EXPECT_EQ(pixelAt(side / 2 - 1, side / 2), black);
    EXPECT_EQ(pixelAt(side / 2, side / 2 - 1), black);
}

TEST_F(VirtualScreenTest, KeepsOrFlattensDepthAsAsked) {
    VirtualScreen::begin(1.0f);
    EXPECT_EQ(depthScale(), 1.0f);

    VirtualScreen::begin(0.0f);
    EXPECT_EQ(depthScale(), 0.0f);
}

TEST_F(VirtualScreenTest, AClientPixelIsASixtyFourthOfTheScreen) {
    EXPECT_EQ(VirtualScreen::at(1, 2), (Vector2{800.0f / 64.0f, 2.0f * (600.0f / 64.0f)}));
}

TEST_F(VirtualScreenTest, AClientAreaWithoutSizeCountsAsOnePixel) {
    GLWindow::close();

    EXPECT_EQ(VirtualScreen::at(1, 1), (Vector2{VirtualScreen::width, VirtualScreen::height}));
}

/// Finds a screen that is stretched, or lies at the side, in windows of other shapes.
TEST_F(VirtualScreenTest, KeepsItsShapeInTheMiddleOfAWideWindow) {
    keepProportions();
    GLWindow::setClientSize(128, 48); // the screen is 64 pixels wide, with 32 on either side
    GLWindow::clearScreen(0.0f, 0.0f, 0.0f);

    VirtualScreen::begin(1.0f);
    glColor3f(1.0f, 1.0f, 1.0f);
    glRectf(0.0f, 0.0f, VirtualScreen::width, VirtualScreen::height);

    EXPECT_EQ(pixelAt(32, 0), white);
    EXPECT_EQ(pixelAt(95, 47), white);
    EXPECT_EQ(pixelAt(31, 24), black);
    EXPECT_EQ(pixelAt(96, 24), black);
}

TEST_F(VirtualScreenTest, KeepsItsShapeInTheMiddleOfAnUprightWindow) {
    keepProportions();
    GLWindow::setClientSize(64, 96); // 48 of 96 rows, from row 24
    GLWindow::clearScreen(0.0f, 0.0f, 0.0f);

    VirtualScreen::begin(1.0f);
    glColor3f(1.0f, 1.0f, 1.0f);
    glRectf(0.0f, 0.0f, VirtualScreen::width, VirtualScreen::height);

    EXPECT_EQ(pixelAt(0, 24), white);
    EXPECT_EQ(pixelAt(63, 71), white);
    EXPECT_EQ(pixelAt(32, 23), black);
    EXPECT_EQ(pixelAt(32, 72), black);
}

/// Finds a pointer that clicks beside what it points at.
TEST_F(VirtualScreenTest, PositionsFollowTheScreenIntoTheMiddle) {
    keepProportions();
    GLWindow::setClientSize(128, 48);

    EXPECT_EQ(VirtualScreen::at(32, 0), (Vector2{0.0f, 0.0f}));
    EXPECT_EQ(VirtualScreen::at(96, 48), (Vector2{VirtualScreen::width, VirtualScreen::height}));
    EXPECT_EQ(VirtualScreen::at(0, 24), (Vector2{-400.0f, 300.0f}));
    const Box window = VirtualScreen::window();
    EXPECT_EQ(window.minX, -400.0f);
    EXPECT_EQ(window.maxX, 1200.0f);
    EXPECT_EQ(window.minY, 0.0f);
    EXPECT_EQ(window.maxY, 600.0f);
}

} // namespace tarnwick
