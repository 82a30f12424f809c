#include "graphics/VirtualScreen.h"

#include "graphics/GLWindow.h"
#include "support/GLTest.h"

namespace tarnwick {

class VirtualScreenTest : public GLTest {
protected:
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
    EXPECT_EQ(VirtualScreen::unitsPerPixelX(), 800.0f / 64.0f);
    EXPECT_EQ(VirtualScreen::unitsPerPixelY(), 600.0f / 64.0f);
}

TEST_F(VirtualScreenTest, AClientAreaWithoutSizeCountsAsOnePixel) {
    GLWindow::close();

    EXPECT_EQ(VirtualScreen::unitsPerPixelX(), VirtualScreen::width);
    EXPECT_EQ(VirtualScreen::unitsPerPixelY(), VirtualScreen::height);
}

} // namespace tarnwick
