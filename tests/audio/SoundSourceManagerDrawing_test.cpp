#include "audio/SoundSourceManager.h"
#include "console/GLConsole.h"
#include "graphics/GLWindow.h"
#include "support/DrawingTest.h"

namespace tarnwick {

/// Sources at places of their own in a window of 80 by 60.
class SoundSourceManagerDrawingTest : public DrawingTest {
protected:
    SoundSourceManagerDrawingTest() {
        GLConsole::initialise();
        SoundSourceManager::initialise();
        beginPicture();
    }

    static void add(float x, bool looping, bool stopped) {
        SoundSource source(Sound("snd\\a.wav"), x, 20.0f, looping, 1, 12.0f);
        source.stopped = stopped;
        SoundSourceManager::addSoundSource(source);
    }
};

TEST_F(SoundSourceManagerDrawingTest, NothingIsDrawnUnlessAskedFor) {
    add(20.0f, true, false);

    SoundSourceManager::debugDraw();

    EXPECT_EQ(litPixels(), 0);
}

TEST_F(SoundSourceManagerDrawingTest, KindAndStopShowInTheColourOfPointAndCircle) {
    add(15.0f, true, false);
    add(42.0f, false, false);
    add(66.0f, true, true);
    GLConsole::runLine("SoundSourceDraw true");

    SoundSourceManager::debugDraw();

    EXPECT_EQ(pixel(15, 20), green);
    EXPECT_EQ(pixel(42, 20), yellow);
    EXPECT_TRUE(alike(pixel(66, 20), {128, 128, 128}));
    EXPECT_EQ(pixel(15, 10), black); // inside the circle
    const FramePicture::Pixel onCircle = pixel(15, 8) == black ? pixel(15, 7) : pixel(15, 8);
    EXPECT_EQ(onCircle, green);
}

TEST_F(SoundSourceManagerDrawingTest, TheLabelStandsFourUnitsBelow) {
    writeFlatPicture("gfx/font.tga", red);
    GLConsole::setFontTexture(GLTexture("gfx\\font.tga"));
    add(20.0f, true, false);
    GLConsole::runLine("SoundSourceDraw true");

    SoundSourceManager::debugDraw();

    EXPECT_EQ(pixel(70, 23), black);
    EXPECT_EQ(pixel(70, 25), red);
    EXPECT_EQ(pixel(70, 31), red);
    EXPECT_EQ(pixel(70, 33), black);
}

} // namespace tarnwick
