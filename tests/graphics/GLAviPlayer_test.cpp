#include "graphics/GLAviPlayer.h"

#include "console/GLConsole.h"
#include "core/Comfort.h"
#include "graphics/GLWindow.h"
#include "support/AviFile.h"
#include "support/DrawingTest.h"

#include <GL/gl.h>

namespace tarnwick {

class GLAviPlayerTest : public DrawingTest {
protected:
    /// Writes a video of `width` by `height` whose pictures have the shades of blue given, 25 a second.
    void writeVideo(std::int32_t width, std::int32_t height, const std::vector<std::uint8_t>& blues) const {
        AviFile file{.width = width, .height = height};
        for (const std::uint8_t shade : blues) {
            file.addFrame(shade);
        }
        data.write("vid/a.avi", file.bytes());
    }
    /// What the console has to say when a video cannot be opened.
    static bool refusalTold() {
        return GLConsole::outputText().find("\nUnable to open AVI file 'vid\\a.avi'") != std::string::npos;
    }
    /// Lets `milliseconds` pass and the video play on.
    void playAfter(GLAviPlayer& player, std::uint32_t milliseconds) {
        now += milliseconds;
        Clock::drive(now);
        player.play();
    }
    /// The texel at column `x` of row `y`, counted from where the texture begins.
    static FramePicture::Pixel texel(const GLAviPlayer& player, std::uint32_t x, std::uint32_t y) {
        std::vector<std::uint8_t> texels(std::size_t{player.textureWidth()} * player.textureHeight() * 3);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glBindTexture(GL_TEXTURE_2D, player.textureId());
        glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_UNSIGNED_BYTE, texels.data());
        const std::uint8_t* const found = &texels[(std::size_t{y} * player.textureWidth() + x) * 3];
        return {found[0], found[1], found[2]};
    }

    std::uint32_t now = 0; ///< Milliseconds.
};

TEST_F(GLAviPlayerTest, TheTextureIsTheFrameRoundedUpToPowersOfTwo) {
    writeVideo(640, 480, {200});

    const GLAviPlayer player("vid\\a.avi");

    EXPECT_TRUE(player.loaded());
    EXPECT_EQ(player.textureWidth(), 1024u);
    EXPECT_EQ(player.textureHeight(), 512u);
    EXPECT_EQ(texel(player, 639, 479), (FramePicture::Pixel{0, 0, 200}));
    EXPECT_EQ(texel(player, 640, 479), black);
    EXPECT_EQ(texel(player, 639, 480), black);
}

TEST_F(GLAviPlayerTest, AnExactPowerOfTwoStays) {
    writeVideo(64, 32, {200});

    const GLAviPlayer player("vid\\a.avi");

    EXPECT_EQ(player.textureWidth(), 64u);
    EXPECT_EQ(player.textureHeight(), 32u);
}

TEST_F(GLAviPlayerTest, APictureShowsForLongerThanItsDuration) {
    writeVideo(8, 8, {10, 20, 30});
    GLAviPlayer player("vid\\a.avi");

    playAfter(player, 40); // 40 ms is not above the duration
    EXPECT_EQ(player.currentFrame(), 0u);
    playAfter(player, 1);
    EXPECT_EQ(player.currentFrame(), 1u);
    EXPECT_EQ(texel(player, 0, 0), (FramePicture::Pixel{0, 0, 20}));
}

TEST_F(GLAviPlayerTest, NoPictureIsSkippedHoweverLateThePass) {
    writeVideo(8, 8, {10, 20, 30});
    GLAviPlayer player("vid\\a.avi");

    playAfter(player, 5000);
    EXPECT_EQ(player.currentFrame(), 1u);
    playAfter(player, 20); // what was left of the 5 seconds is dropped
    EXPECT_EQ(player.currentFrame(), 1u);
}

TEST_F(GLAviPlayerTest, AfterTheLastPictureItIsFinishedAndThatPictureStays) {
    writeVideo(8, 8, {10, 20});
    GLAviPlayer player("vid\\a.avi");

    playAfter(player, 41);
    EXPECT_FALSE(player.finished());
    playAfter(player, 41);

    EXPECT_TRUE(player.finished());
    EXPECT_TRUE(player.loaded());
    EXPECT_EQ(texel(player, 0, 0), (FramePicture::Pixel{0, 0, 20}));
    playAfter(player, 41);
    EXPECT_EQ(player.currentFrame(), 2u);
}

TEST_F(GLAviPlayerTest, RewindingStartsAgain) {
    writeVideo(8, 8, {10, 20});
    GLAviPlayer player("vid\\a.avi");
    playAfter(player, 41);
    playAfter(player, 41);

    now += 1000; // the timer starts anew as well
    Clock::drive(now);
    player.rewind();
    playAfter(player, 40);

    EXPECT_EQ(player.currentFrame(), 0u);
    EXPECT_EQ(texel(player, 0, 0), (FramePicture::Pixel{0, 0, 10}));
}

TEST_F(GLAviPlayerTest, AClosedPlayerIsFinishedAndDoesNothing) {
    GLAviPlayer player;

    player.rewind();
    player.play();
    player.draw();

    EXPECT_FALSE(player.loaded());
    EXPECT_TRUE(player.finished());
    EXPECT_EQ(player.textureId(), 0u);
}

TEST_F(GLAviPlayerTest, ThePictureStandsUprightAtFullHeightBetweenBlackBars) {
    AviFile file{.width = 8, .height = 8, .frameCount = 1};
    file.frames.push_back(AviFile::flatFrame(8, 8, 100, 250));
    data.write("vid/a.avi", file.bytes());
    GLAviPlayer player("vid\\a.avi");

    player.draw(); // 80 by 60: the square covers columns 10 to 69
    const FramePicture shown = picture();

    EXPECT_EQ(shown.at(8, 30), black);
    EXPECT_EQ(shown.at(71, 30), black);
    EXPECT_EQ(shown.at(15, 54), (FramePicture::Pixel{0, 0, 100}));
    EXPECT_EQ(shown.at(64, 54), (FramePicture::Pixel{0, 0, 100}));
    EXPECT_GT(shown.at(40, 3).blue, 200);
}

TEST_F(GLAviPlayerTest, ClosingGivesTheTextureBack) {
    writeVideo(8, 8, {10});
    GLAviPlayer player("vid\\a.avi");
    const std::uint32_t texture = player.textureId();
    EXPECT_EQ(glIsTexture(texture), GL_TRUE);

    player.close();

    EXPECT_EQ(glIsTexture(texture), GL_FALSE);
    EXPECT_EQ(player.frameCount(), 0u);
    EXPECT_TRUE(player.finished());
}

TEST_F(GLAviPlayerTest, FilesThatCannotBePlayedAreToldOnTheConsole) {
    AviFile none{};
    AviFile many{.frameCount = 65536};
    many.frames.push_back(AviFile::flatFrame(4, 4, 1, 1));
    AviFile fast = many;
    fast.frameCount = 1;
    fast.rate = 2000; // no whole millisecond
    AviFile large = many;
    large.frameCount = 1;
    large.width = 5000;
    for (const std::string& bytes :
         {std::string("not a video"), none.bytes(), many.bytes(), fast.bytes(), large.bytes()}) {
        GLConsole::initialise();
        data.write("vid/a.avi", bytes);

        const GLAviPlayer player("vid\\a.avi");

        EXPECT_TRUE(player.finished());
        EXPECT_TRUE(refusalTold()) << GLConsole::outputText();
    }
}

TEST_F(GLAviPlayerTest, AsManyPicturesAsCanBeCountedAreTaken) {
    AviFile file{.frameCount = 65535};
    file.frames.push_back(AviFile::flatFrame(4, 4, 1, 1));
    data.write("vid/a.avi", file.bytes());

    const GLAviPlayer player("vid\\a.avi");

    EXPECT_TRUE(player.loaded());
    EXPECT_EQ(player.frameCount(), 65535u);
}

TEST_F(GLAviPlayerTest, PicturesWithoutASizeAreNotToldOf) {
    AviFile file{.width = 0, .frameCount = 1};
    file.frames.emplace_back(16, 'x');
    data.write("vid/a.avi", file.bytes());

    const GLAviPlayer player("vid\\a.avi");

    EXPECT_TRUE(player.finished());
    EXPECT_FALSE(refusalTold());
}

TEST_F(GLAviPlayerTest, AFileThatBreaksOffEndsThereWithoutAMessage) {
    writeVideo(8, 8, {10, 20, 30});
    AviFile file{.width = 8, .height = 8};
    file.addFrame(10);
    file.frameCount = 3; // the header counts on
    data.write("vid/a.avi", file.bytes());
    GLAviPlayer player("vid\\a.avi");

    playAfter(player, 41);

    EXPECT_TRUE(player.finished());
    EXPECT_FALSE(player.loaded());
    EXPECT_EQ(player.textureId(), 0u);
    EXPECT_FALSE(refusalTold());
}

TEST_F(GLAviPlayerTest, OpeningAnotherFileClosesTheFirst) {
    writeVideo(8, 8, {10, 20});
    GLAviPlayer player("vid\\a.avi");
    playAfter(player, 41);
    writeVideo(16, 16, {30});

    player.open("vid\\a.avi");

    EXPECT_EQ(player.currentFrame(), 0u);
    EXPECT_EQ(player.textureWidth(), 16u);
}

/// Finds an opening film whose sides are cut off in an upright window.
TEST_F(GLAviPlayerTest, WithKeptProportionsAllOfItIsSeenInAnUprightWindow) {
    writeVideo(64, 32, {200});
    data.write("cfg/comfort.cfg", "keepProportions = TRUE");
    Comfort::initialise();
    GLWindow::setClientSize(40, 60); // the picture covers rows 20 to 39
    GLAviPlayer player("vid\\a.avi");

    player.draw();

    EXPECT_TRUE(alike(pixel(20, 30), {0, 0, 200}));
    EXPECT_TRUE(alike(pixel(1, 22), {0, 0, 200}));
    EXPECT_EQ(pixel(20, 18), black);
    EXPECT_EQ(pixel(20, 42), black);
}

} // namespace tarnwick
