#include "console/GLConsole.h"
#include "support/LevelDrawingTest.h"

#include <GL/gl.h>

namespace tarnwick {

class Polygon2DDrawingTest : public LevelDrawingTest {
protected:
    /// Whether the colour is within two pixels of (x, y): lines are not placed to the pixel.
    static bool near(std::int32_t x, std::int32_t y, FramePicture::Pixel colour) {
        const FramePicture shown = picture();
        for (std::int32_t row = y - 2; row <= y + 2; ++row) {
            for (std::int32_t column = x - 2; column <= x + 2; ++column) {
                if (shown.at(column, row) == colour) {
                    return true;
                }
            }
        }
        return false;
    }
};

TEST_F(Polygon2DDrawingTest, TheOutlineIsWhiteAndClosedAndStaysWhereTheLevelHasIt) {
    Polygon2D& polygon = addSquare(10.0f, 10.0f, 20.0f, "red");
    polygon.offsetX = 40.0f;
    beginPicture();

    polygon.drawOutline();

    EXPECT_TRUE(near(10, 20, white));
    EXPECT_TRUE(near(20, 10, white));
    EXPECT_TRUE(near(30, 20, white));
    EXPECT_TRUE(near(20, 30, white));
    EXPECT_FALSE(near(20, 20, white));
    EXPECT_FALSE(near(60, 10, white));
}

TEST_F(Polygon2DDrawingTest, TheTrianglesAreRedAndTravelWithTheOffset) {
    Polygon2D& polygon = addSquare(10.0f, 10.0f, 20.0f, "red");
    polygon.offsetX = 40.0f;
    beginPicture();

    polygon.drawTrianglesOutline();

    EXPECT_TRUE(near(50, 20, red));
    EXPECT_TRUE(near(60, 20, red)) << "the diagonal";
    EXPECT_FALSE(near(20, 10, red));
}

TEST_F(Polygon2DDrawingTest, TheGLIsLeftAsItWas) {
    Polygon2D& polygon = addSquare(10.0f, 10.0f, 20.0f, "red");
    beginPicture();
    glLineWidth(1.0f);
    glEnable(GL_BLEND);

    polygon.drawOutline();
    polygon.drawTrianglesOutline();

    float width = 0.0f;
    glGetFloatv(GL_LINE_WIDTH, &width);
    EXPECT_EQ(width, 1.0f);
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
}

TEST_F(Polygon2DDrawingTest, AnEmptyPolygonDrawsNothing) {
    const Polygon2D polygon;
    beginPicture();

    polygon.drawOutline();
    polygon.drawTrianglesOutline();

    EXPECT_EQ(litPixels(), 0);
}

} // namespace tarnwick
