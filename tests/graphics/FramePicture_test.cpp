#include "graphics/FramePicture.h"

#include "support/DrawingTest.h"

#include <GL/gl.h>

#include <filesystem>

namespace tarnwick {

/// A window whose rows do not end at a multiple of four bytes.
class FramePictureTest : public DrawingTest {
protected:
    FramePictureTest()
        : DrawingTest(77, 31) {}

    /// Red in the top left corner, green in the bottom right one.
    static FramePicture drawn() {
        beginPicture();
        glDisable(GL_TEXTURE_2D);
        glColor4f(1.0f, 0.0f, 0.0f, 1.0f);
        glRectf(0.0f, 0.0f, 2.0f, 1.0f);
        glColor4f(0.0f, 1.0f, 0.0f, 1.0f);
        glRectf(76.0f, 30.0f, 77.0f, 31.0f);
        return FramePicture::ofBackBuffer();
    }
};

// The fault: a picture upside down, or one that is sheared because its rows have odd lengths.
TEST_F(FramePictureTest, TheTopRowComesFirstAndRowsFollowEachOtherWithoutAGap) {
    const FramePicture shown = drawn();

    EXPECT_EQ(shown.width, 77);
    EXPECT_EQ(shown.height, 31);
    EXPECT_EQ(shown.at(0, 0), red);
    EXPECT_EQ(shown.at(1, 0), red);
    EXPECT_EQ(shown.at(2, 0), black);
    EXPECT_EQ(shown.at(0, 1), black);
    EXPECT_EQ(shown.at(76, 30), green);
    EXPECT_EQ(shown.at(75, 30), black);
    EXPECT_EQ(shown.at(76, 29), black);
}

// The fault: what reads pictures after it gets rows of another length.
TEST_F(FramePictureTest, TheWayPixelsAreStoredStaysAsItWas) {
    glPixelStorei(GL_PACK_ALIGNMENT, 8);

    drawn();

    GLint alignment = 0;
    glGetIntegerv(GL_PACK_ALIGNMENT, &alignment);
    EXPECT_EQ(alignment, 8);
}

TEST_F(FramePictureTest, ASavedPictureIsReadAsItWas) {
    const FramePicture shown = drawn();

    ASSERT_TRUE(shown.savePng("a.png"));
    const FramePicture read = FramePicture::load("a.png");

    EXPECT_EQ(read.width, shown.width);
    EXPECT_EQ(read.height, shown.height);
    EXPECT_TRUE(read.pixels == shown.pixels);
}

TEST_F(FramePictureTest, WhatCannotBeWrittenOrReadIsToldOf) {
    EXPECT_FALSE(drawn().savePng("missing/a.png"));
    EXPECT_EQ(FramePicture::load("missing.png").width, 0);
    EXPECT_TRUE(FramePicture::load("missing.png").pixels.empty());
}

} // namespace tarnwick
