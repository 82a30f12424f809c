#include "gui/SplashPicture.h"

#include "core/Comfort.h"
#include "graphics/GLWindow.h"
#include "support/DrawingTest.h"

#include <string>

namespace tarnwick {

class SplashPictureTest : public DrawingTest {
protected:
    static constexpr std::int32_t wide = 800;
    static constexpr std::int32_t high = 600;

    SplashPictureTest()
        : DrawingTest(wide, high) {
        writeSplitPicture("gfx/back.tga", blue, yellow);
        writeFlatPicture("gfx/wheel_frame1.tga", red);
        writeFlatPicture("gfx/wheel_frame2.tga", green);
    }
    /// An animation of 4 by 4 pixels in the middle, at `speed` frames a second, on a background of which
    /// `shown` of its 4 pixels show each way.
    void writeSettings(const std::string& speed, const std::string& shown = "4") const {
        data.write(
            "cfg/splashScreen.cfg",
            "splashBackground = gfx\\back.tga splashBackgroundW = " + shown +
                " splashBackgroundH = " + shown +
                " splashAnimation = gfx\\wheel_frame1.tga splashAnimationX = 400 splashAnimationY = 300"
                " splashAnimationSpeed = " +
                speed);
    }
    static FramePicture
    drawn(const SplashPicture& splash, std::int32_t width = wide, std::int32_t height = high) {
        GLWindow::clearScreen(0.0f, 0.0f, 0.0f);
        splash.draw(width, height);
        return picture();
    }
};

TEST_F(SplashPictureTest, TheBackgroundFillsTheWindow) {
    writeSettings("10");

    const FramePicture shown = drawn(SplashPicture());

    EXPECT_EQ(shown.at(150, 5), blue);
    EXPECT_EQ(shown.at(150, 594), blue);
    EXPECT_EQ(shown.at(650, 5), yellow);
    EXPECT_EQ(shown.at(650, 594), yellow);
}

TEST_F(SplashPictureTest, OnlyThePartAskedForShowsCentred) {
    writeSettings("10", "4");
    const FramePicture whole = drawn(SplashPicture());

    writeSettings("10", "2");
    const FramePicture part = drawn(SplashPicture());

    EXPECT_TRUE(alike(part.at(100, 5), whole.at(250, 5))); // twice as large about the middle
    EXPECT_TRUE(alike(part.at(700, 5), whole.at(550, 5)));
}

TEST_F(SplashPictureTest, TheAnimationStandsOnItsShadow) {
    writeSettings("10");

    const FramePicture shown = drawn(SplashPicture());

    EXPECT_EQ(shown.at(398, 298), red);
    EXPECT_EQ(shown.at(401, 301), red);
    EXPECT_EQ(shown.at(402, 302), black);
    EXPECT_NE(shown.at(397, 300), red);
    EXPECT_NE(shown.at(403, 303), black);
}

TEST_F(SplashPictureTest, ItIsScaledToTheClientArea) {
    writeSettings("10");

    const FramePicture shown = drawn(SplashPicture(), 400, 300);

    EXPECT_EQ(shown.at(200, 599 - 150), red); // a viewport lies at the bottom of the window
    EXPECT_EQ(shown.at(100, 595), blue);
    EXPECT_EQ(shown.at(410, 595), black);
    EXPECT_EQ(shown.at(100, 295), black);
}

TEST_F(SplashPictureTest, ASizeOfNothingIsDrawnAsOnePixel) {
    writeSettings("10");

    const FramePicture shown = drawn(SplashPicture(), 0, -5);

    EXPECT_NE(shown.at(0, 599), black);
    EXPECT_EQ(shown.at(1, 599), black);
}

TEST_F(SplashPictureTest, FramesFollowOneAnotherRoundAndRound) {
    writeSettings("10");
    SplashPicture splash;

    splash.advance(0.0625f);
    EXPECT_EQ(drawn(splash).at(399, 299), red);
    splash.advance(0.0625f); // above a tenth of a second
    EXPECT_EQ(drawn(splash).at(399, 299), green);
    splash.advance(5.0f); // a late pass is one frame all the same
    EXPECT_EQ(drawn(splash).at(399, 299), red);
}

TEST_F(SplashPictureTest, WithoutSpeedTheFirstFrameStays) {
    for (const char* const speed : {"0", "-3", "nothing"}) {
        writeSettings(speed);
        SplashPicture splash;

        splash.advance(900000.0f); // ten days

        EXPECT_EQ(drawn(splash).at(399, 299), red) << speed;
    }
}

TEST_F(SplashPictureTest, WithoutSettingsThereIsACheckerboard) {
    SplashPicture splash;

    splash.advance(1.0f);
    const FramePicture shown = drawn(splash);

    // No part of the background is asked for: its middle alone, where two white and two black squares meet.
    const FramePicture::Pixel middle{128, 128, 128};
    EXPECT_PRED2(alike, shown.at(10, 10), middle);
    EXPECT_PRED2(alike, shown.at(700, 500), middle);
    EXPECT_PRED2(alike, shown.at(40, 580), middle);
}

/// Finds a splash that is stretched, or bare beside its middle, in a window of another shape.
TEST_F(SplashPictureTest, WithKeptProportionsItKeepsItsShapeBetweenDimWings) {
    writeSettings("10");
    data.write("cfg/comfort.cfg", "keepProportions = TRUE");
    Comfort::initialise();

    const FramePicture shown = drawn(SplashPicture(), 800, 300); // the picture is 400 wide

    constexpr std::int32_t top = 300; // the window's lowest rows are drawn
    EXPECT_EQ(shown.at(275, top + 50), blue);
    EXPECT_EQ(shown.at(525, top + 50), yellow);
    EXPECT_EQ(shown.at(400, top + 150), red);
    EXPECT_TRUE(alike(shown.at(150, top + 50), {0, 0, 64}));
    EXPECT_TRUE(alike(shown.at(650, top + 250), {64, 64, 0}));
}

} // namespace tarnwick
