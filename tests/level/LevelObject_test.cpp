#include "level/LevelObject.h"

#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <string>
#include <vector>

namespace tarnwick {

class LevelObjectTest : public ModuleTest {
protected:
    DataFolder data; ///< Names of frames are looked up on disk; without a window no picture is read.

    void writeFrames(const std::vector<std::string>& names) const {
        for (const std::string& name : names) {
            data.write(name, "");
        }
    }

    static std::vector<std::string> namesOf(const LevelObject& object) {
        std::vector<std::string> names;
        for (const GLTexture& frame : object.frames) {
            names.push_back(frame.name);
        }
        return names;
    }

    /// An object that plays three frames.
    LevelObject threeFrames() const {
        writeFrames({"gfx/fan_frame0.tga", "gfx/fan_frame1.tga", "gfx/fan_frame2.tga"});
        LevelObject object;
        object.setTexture("gfx\\fan_frame0.tga");
        object.paused = false;
        return object;
    }

    static constexpr float speed = 10.0f;       ///< Frames per second,
    static constexpr float wholeFrame = 0.125f; ///< and seconds that are enough for one.

    /// The frame that shows after each of `count` steps of one frame's time.
    static std::vector<std::uint32_t> play(LevelObject& object, int count) {
        std::vector<std::uint32_t> shown;
        for (int i = 0; i < count; ++i) {
            object.runAnimation(wholeFrame, speed);
            shown.push_back(object.currentFrame);
        }
        return shown;
    }
};

using Names = std::vector<std::string>;
using Shown = std::vector<std::uint32_t>;

TEST_F(LevelObjectTest, ANewObjectHasNoPictureAndIsSeenOnceItHas) {
    const LevelObject object;

    EXPECT_TRUE(object.enabled);
    EXPECT_TRUE(object.paused);
    EXPECT_TRUE(object.frames.empty());
    EXPECT_EQ(object.frameCount, 1u);
    EXPECT_EQ(object.frame(), nullptr);
}

TEST_F(LevelObjectTest, APlainNameIsOnePictureInUpperCase) {
    LevelObject object;

    object.setTexture("gfx\\lamp.tga");

    EXPECT_EQ(namesOf(object), Names{"GFX\\LAMP.TGA"});
    EXPECT_EQ(object.frameCount, 1u);
    EXPECT_EQ(object.frame(), &object.frames[0]);
}

TEST_F(LevelObjectTest, AnEmptyNameIsOnePictureOfThatName) {
    LevelObject object;

    object.setTexture("");

    EXPECT_EQ(namesOf(object), Names{""});
    EXPECT_EQ(object.frameCount, 1u);
}

TEST_F(LevelObjectTest, AFrameStandsForAllFramesInTheOrderOfTheirNames) {
    writeFrames({"gfx/fan_frame2.tga", "gfx/Fan_Frame1.TGA", "gfx/fan_frame0.tga", "gfx/fan_frame1.png",
                 "gfx/fan.tga", "gfx/a_fan_frame0.tga", "fan_frame7.tga"});
    LevelObject object;

    object.setTexture("gfx\\fan_frame1.tga");

    EXPECT_EQ(namesOf(object), (Names{"GFX\\FAN_FRAME0.TGA", "GFX\\FAN_FRAME1.TGA", "GFX\\FAN_FRAME2.TGA"}));
    EXPECT_EQ(object.frameCount, 3u);
    EXPECT_EQ(object.currentFrame, 0u);
}

TEST_F(LevelObjectTest, WhateverFollowsTheMarkIsAFrame) {
    writeFrames({"fan_frame.tga", "fan_framework.tga"});
    LevelObject object;

    object.setTexture("fan_frame5.tga"); // which is not there itself

    EXPECT_EQ(namesOf(object), (Names{"FAN_FRAME.TGA", "FAN_FRAMEWORK.TGA"}));
}

TEST_F(LevelObjectTest, TheLastMarkCounts) {
    writeFrames({"old_frame_frame0.tga", "old_frame_frame1.tga", "old_frame0.tga"});
    LevelObject object;

    object.setTexture("old_frame_frame0.tga");

    EXPECT_EQ(namesOf(object), (Names{"OLD_FRAME_FRAME0.TGA", "OLD_FRAME_FRAME1.TGA"}));
}

TEST_F(LevelObjectTest, ANameWithoutAnEndingTakesEveryEnding) {
    writeFrames({"fan_frame0.tga", "fan_frame1", "fan_frame2.png"});
    LevelObject object;

    object.setTexture("fan_frame0");

    EXPECT_EQ(namesOf(object), (Names{"FAN_FRAME0.TGA", "FAN_FRAME1", "FAN_FRAME2.PNG"}));
}

TEST_F(LevelObjectTest, AMarkWithoutAMatchingFileIsOnePictureOfTheNameItself) {
    LevelObject object;

    object.setTexture("gfx\\gone_frame01.tga");

    EXPECT_EQ(namesOf(object), Names{"GFX\\GONE_FRAME01.TGA"});
    EXPECT_EQ(object.frameCount, 1u);
}

TEST_F(LevelObjectTest, ANewPictureTakesThePlaceOfTheFrames) {
    LevelObject object = threeFrames();
    object.currentFrame = 2;

    object.setTexture("gfx\\lamp.tga");

    EXPECT_EQ(namesOf(object), Names{"GFX\\LAMP.TGA"});
    EXPECT_EQ(object.currentFrame, 2u);
    EXPECT_EQ(object.frame(), nullptr) << "the frame stays, and there is no such picture";
}

TEST_F(LevelObjectTest, ACopyHasPicturesOfItsOwn) {
    LevelObject object = threeFrames();

    const LevelObject copy = object;
    object.setTexture("gfx\\lamp.tga");

    EXPECT_EQ(copy.frames.size(), 3u);
    EXPECT_EQ(copy.frame(), &copy.frames[0]);
}

TEST_F(LevelObjectTest, AFrameStandsUntilItsTimeIsUp) {
    LevelObject object = threeFrames();

    object.runAnimation(0.0625f, speed);
    const std::uint32_t before = object.currentFrame;
    const float gathered = object.frameTime;
    object.runAnimation(0.0625f, speed);

    EXPECT_EQ(before, 0u);
    EXPECT_EQ(gathered, 0.0625f); // exact: powers of two
    EXPECT_EQ(object.currentFrame, 1u);
    EXPECT_EQ(object.frameTime, 0.0f); // what was left over is dropped
}

TEST_F(LevelObjectTest, AVeryLongTimeAdvancesOneFrame) {
    LevelObject object = threeFrames();

    object.runAnimation(1000.0f, speed);

    EXPECT_EQ(object.currentFrame, 1u);
    EXPECT_EQ(object.frameTime, 0.0f);
}

TEST_F(LevelObjectTest, AFrameIsOverExactlyAfterItsTime) {
    LevelObject object = threeFrames();

    object.runAnimation(0.125f, 8.0f);

    EXPECT_EQ(object.currentFrame, 1u);
}

TEST_F(LevelObjectTest, NothingMovesWhilePausedOrWithoutASpeed) {
    LevelObject object = threeFrames();

    object.runAnimation(wholeFrame, 0.0f);
    object.runAnimation(wholeFrame, -1.0f);
    object.paused = true;
    object.runAnimation(wholeFrame, speed);

    EXPECT_EQ(object.currentFrame, 0u);
    EXPECT_EQ(object.frameTime, 0.0f);
}

TEST_F(LevelObjectTest, WithoutALoopCountTheFramesRepeatWithoutEnd) {
    LevelObject object = threeFrames();

    EXPECT_EQ(play(object, 7), (Shown{1, 2, 0, 1, 2, 0, 1}));
    EXPECT_FALSE(object.paused);
    EXPECT_EQ(object.loopsDone, 0);
}

TEST_F(LevelObjectTest, TwoLoopsShowTheFramesTwiceAndStopOnTheLast) {
    LevelObject object = threeFrames();
    object.loopCount = 2;

    const Shown first = play(object, 3);
    const std::int32_t doneBetween = object.loopsDone;
    const Shown second = play(object, 4);

    EXPECT_EQ(first, (Shown{1, 2, 0}));
    EXPECT_EQ(doneBetween, 1);
    EXPECT_EQ(second, (Shown{1, 2, 2, 2}));
    EXPECT_TRUE(object.paused);
    EXPECT_EQ(object.loopsDone, 0);
}

TEST_F(LevelObjectTest, ANegativeLoopCountIsOneLoop) {
    LevelObject object = threeFrames();
    object.loopCount = -5;

    EXPECT_EQ(play(object, 4), (Shown{1, 2, 2, 2}));
    EXPECT_TRUE(object.paused);
}

TEST_F(LevelObjectTest, AResetGoesBackToTheFirstFrameAndLeavesThePause) {
    LevelObject object = threeFrames();
    object.loopCount = 3;
    play(object, 4);
    object.runAnimation(0.0625f, speed);

    object.resetAnimation();

    EXPECT_EQ(object.currentFrame, 0u);
    EXPECT_EQ(object.frameTime, 0.0f);
    EXPECT_EQ(object.loopsDone, 0);
    EXPECT_EQ(object.loopCount, 3);
    EXPECT_FALSE(object.paused);
}

} // namespace tarnwick
