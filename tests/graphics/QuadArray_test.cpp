#include "core/QuadArray.h"

#include "core/GLTexture.h"
#include "support/DrawingTest.h"

#include <GL/gl.h>

#include <array>

namespace tarnwick {

class QuadArrayTest : public DrawingTest {
protected:
    QuadArrayTest() { beginPicture(); }
    static void withoutTexture() { glDisable(GL_TEXTURE_2D); }
};

TEST_F(QuadArrayTest, ASquareStandsWhereItShould) {
    withoutTexture();
    QuadArray quads;
    quads.begin(1);
    quads.addSquare({20.0f, 30.0f}, 5.0f, {1.0f, 0.0f, 0.0f, 1.0f});

    quads.draw();

    EXPECT_EQ(litPixels(), 100);
    EXPECT_EQ(pixel(15, 25), red);
    EXPECT_EQ(pixel(24, 34), red);
    EXPECT_EQ(pixel(14, 25), black);
    EXPECT_EQ(pixel(25, 34), black);
}

TEST_F(QuadArrayTest, ThePartOfThePictureThatIsAskedForIsShownUpright) {
    writeSplitPicture("gfx/split.tga", red, green);
    const GLTexture texture("gfx\\split.tga");
    glBindTexture(GL_TEXTURE_2D, texture.textureId);
    QuadArray quads;
    quads.begin(2);
    quads.addRectangle({0.0f, 0.0f, 10.0f, 10.0f}, {0.1f, 0.0f, 0.4f, 1.0f}, {1.0f, 1.0f, 1.0f, 1.0f});
    quads.addRectangle({20.0f, 0.0f, 30.0f, 10.0f}, {0.6f, 0.0f, 0.9f, 1.0f}, {1.0f, 1.0f, 1.0f, 1.0f});

    quads.draw();

    EXPECT_EQ(pixel(5, 5), red);
    EXPECT_EQ(pixel(25, 5), green);
}

TEST_F(QuadArrayTest, LaterQuadsLieOverEarlierOnes) {
    withoutTexture();
    QuadArray quads;
    quads.begin(2);
    quads.addSquare({20.0f, 20.0f}, 5.0f, {1.0f, 0.0f, 0.0f, 1.0f});
    quads.addSquare({22.0f, 20.0f}, 5.0f, {0.0f, 1.0f, 0.0f, 1.0f});

    quads.draw();

    EXPECT_EQ(pixel(16, 20), red);
    EXPECT_EQ(pixel(20, 20), green);
}

TEST_F(QuadArrayTest, TheColourOfTheLastQuadStaysCurrentAndNoArrayStaysOn) {
    withoutTexture();
    QuadArray quads;
    quads.begin(2);
    quads.addSquare({20.0f, 20.0f}, 5.0f, {1.0f, 0.0f, 0.0f, 1.0f});
    quads.addSquare({40.0f, 20.0f}, 5.0f, {0.25f, 0.5f, 0.75f, 0.125f});

    quads.draw();

    std::array<float, 4> current{};
    glGetFloatv(GL_CURRENT_COLOR, current.data());
    EXPECT_EQ(current, (std::array<float, 4>{0.25f, 0.5f, 0.75f, 0.125f}));
    EXPECT_FALSE(glIsEnabled(GL_VERTEX_ARRAY));
    EXPECT_FALSE(glIsEnabled(GL_COLOR_ARRAY));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_COORD_ARRAY));
}

TEST_F(QuadArrayTest, AnEmptyArrayDrawsNothingAndLeavesTheColour) {
    withoutTexture();
    glColor4f(0.5f, 0.5f, 0.5f, 1.0f);
    QuadArray quads;
    quads.begin(10);

    quads.draw();

    std::array<float, 4> current{};
    glGetFloatv(GL_CURRENT_COLOR, current.data());
    EXPECT_EQ(litPixels(), 0);
    EXPECT_EQ(current, (std::array<float, 4>{0.5f, 0.5f, 0.5f, 1.0f}));
}

TEST_F(QuadArrayTest, BeginForgetsWhatWasDrawnBefore) {
    withoutTexture();
    QuadArray quads;
    quads.begin(2);
    quads.addSquare({20.0f, 20.0f}, 5.0f, {1.0f, 0.0f, 0.0f, 1.0f});
    quads.addSquare({40.0f, 20.0f}, 5.0f, {1.0f, 0.0f, 0.0f, 1.0f});
    quads.begin(1);
    quads.addSquare({60.0f, 20.0f}, 5.0f, {1.0f, 0.0f, 0.0f, 1.0f});

    quads.draw();

    EXPECT_EQ(quads.quadCount(), 1u);
    EXPECT_EQ(litPixels(), 100);
    EXPECT_EQ(pixel(60, 20), red);
}

} // namespace tarnwick
