#include "gui/GuiScoreLabel.h"

#include "core/Clock.h"
#include "game/Camera.h"
#include "game/GameRules.h"
#include "gui/GuiLevelTimeDisplay.h"
#include "gui/GuiWaterLevel.h"
#include "particles/ParticleManager.h"
#include "support/DrawingTest.h"

namespace tarnwick {

namespace {

std::uint32_t hundred() {
    return 100;
}

} // namespace

/// The displays of the finish. Their letters are white blocks: how many are drawn tells how long the text is.
/// The number 100 has three from its middle on, two between 10 and 99, and one below.
class GuiScoreLabelTest : public DrawingTest {
protected:
    GuiScoreLabelTest()
        : DrawingTest(100, 140) {
        writePicture("gfx/font.tga", 64, [](std::int32_t x, std::int32_t y) {
            // A cell of 4 by 4 pixels for each character; of the digits only that of "0" is black.
            const bool zero = x / 4 == 0 && y / 4 == 3;
            return Texel{zero ? black : white};
        });
    }

    void dress(GuiScoreLabel& label) const {
        label.setFont("gfx\\font.tga");
        label.setFontSize(4.0f);
        label.setColor(1.0f, 1.0f, 1.0f, 1.0f);
    }
    /// Draws at `milliseconds` of the clock, on black.
    static void drawAt(std::uint32_t milliseconds, GuiWidget& widget) {
        Clock::drive(milliseconds);
        beginPicture();
        widget.windowRedrawing();
    }
    static void addWater(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            ParticleManager::particles.emplace_back();
        }
    }
    /// Lets a level last so long, and stop there.
    static void playFor(std::uint32_t milliseconds) {
        Clock::drive(0);
        GameRules::initialise();
        Camera::setState(Camera::normal);
        ParticleManager::particles.emplace_back();
        Clock::drive(milliseconds);
        GameRules::update(0.0f);
        Clock::drive(0);
    }
};

TEST_F(GuiScoreLabelTest, ANewLabelRampsForFourSecondsAndIsDone) {
    const GuiScoreLabel label;

    EXPECT_EQ(label.rampUpTime, 4.0f);
    EXPECT_EQ(label.rampUpRemaining, 0.0f);
    EXPECT_EQ(label.red, 0.0f);
    EXPECT_EQ(label.fontSize, 16.0f);
}

TEST_F(GuiScoreLabelTest, TheTimeIsAtLeastAHundredthOfASecond) {
    GuiScoreLabel label;

    label.setRampUpTime(-3.0f);
    const float shortest = label.rampUpTime;
    label.setRampUpTime(2.5f);

    EXPECT_EQ(shortest, 0.01f);
    EXPECT_EQ(label.rampUpTime, 2.5f);
    EXPECT_EQ(label.rampUpRemaining, 2.5f);
}

TEST_F(GuiScoreLabelTest, TheNumberCountsUpOverItsTime) {
    GuiScoreLabel label;
    dress(label);
    label.valueFunction = hundred;
    label.setRampUpTime(2.0f);
    label.reset();

    drawAt(100, label);
    const std::int32_t early = litInRow(1);
    drawAt(1300, label);
    const std::int32_t later = litInRow(1);
    drawAt(2000, label);
    const std::int32_t end = litInRow(1);

    EXPECT_EQ(early, 4) << "5";
    EXPECT_EQ(later, 8) << "65";
    EXPECT_EQ(end, 4) << "100, of which the zeros are black";
    EXPECT_TRUE(label.rampUpDone());
}

TEST_F(GuiScoreLabelTest, HalvesAreRoundedToEven) {
    GuiScoreLabel label;
    dress(label);
    label.valueFunction = [] { return std::uint32_t{1}; };
    label.setRampUpTime(2.0f);
    label.reset();

    drawAt(1000, label); // 0.5

    EXPECT_EQ(litInRow(1), 0) << "0";
}

TEST_F(GuiScoreLabelTest, WithoutAFunctionTheNumberIsZero) {
    GuiScoreLabel label;
    dress(label);
    label.reset();

    drawAt(5000, label);

    EXPECT_EQ(litInRow(1), 0);
}

TEST_F(GuiScoreLabelTest, ALabelWaitsForTheOneBefore) {
    GuiScoreLabel first;
    GuiScoreLabel second;
    dress(second);
    second.valueFunction = [] { return std::uint32_t{9}; };
    second.previousScoreLabel = &first;
    first.setRampUpTime(1.0f);
    second.setRampUpTime(1.0f);
    first.reset();
    second.reset();

    drawAt(900, second);
    const std::int32_t waiting = litInRow(1);
    const float waitingFor = second.rampUpRemaining;
    drawAt(1000, first);
    drawAt(1500, second);

    EXPECT_EQ(waiting, 0);
    EXPECT_EQ(waitingFor, 1.0f) << "the wait takes nothing of its time";
    EXPECT_EQ(litInRow(1), 4);
    EXPECT_LT(second.rampUpRemaining, 1.0f);
}

TEST_F(GuiScoreLabelTest, AResetStartsAnew) {
    GuiScoreLabel label;
    label.setRampUpTime(1.0f);
    drawAt(5000, label);

    label.reset();

    EXPECT_EQ(label.rampUpRemaining, 1.0f);
    drawAt(5500, label);
    EXPECT_EQ(label.rampUpRemaining, 0.5f) << "counted from the reset on";
}

TEST_F(GuiScoreLabelTest, AShadowLiesBelowTheNumber) {
    GuiScoreLabel label;
    dress(label);
    label.valueFunction = [] { return std::uint32_t{7}; };
    label.setPosition(10, 10);
    label.dropShadowEnabled = true;
    label.setDropShadowOffset(1.0f, 2.0f);
    label.setDropShadowColor(1.0f, 0.0f, 0.0f, 1.0f);

    drawAt(5000, label);

    EXPECT_EQ(pixel(13, 13), white);
    EXPECT_EQ(pixel(14, 15), red);
}

TEST_F(GuiScoreLabelTest, AnHourIsShownAsNothingSinceHoursAreDropped) {
    playFor(3'600'000);
    GuiScoreLabel first;
    GuiLevelTimeDisplay display;
    display.previousScoreLabel = &first;
    display.setFont("gfx\\font.tga");
    display.setFontSize(4.0f);
    display.setSize(100, 10);

    drawAt(5000, display);

    EXPECT_EQ(litInRow(4), 8) << "00:00:00 with the two colons lit";
}

TEST_F(GuiScoreLabelTest, TheTimeCountsUpBehindItsLabel) {
    playFor(7000);
    GuiScoreLabel first;
    first.setRampUpTime(1.0f);
    GuiLevelTimeDisplay display;
    display.previousScoreLabel = &first;
    display.setRampUpTime(1.0f);
    display.setFont("gfx\\font.tga");
    display.setFontSize(4.0f);
    display.setSize(100, 10);
    first.reset();
    display.reset();

    drawAt(500, display);
    const std::int32_t waiting = litInRow(4);
    drawAt(1000, first);
    drawAt(1500, display);
    drawAt(3000, display);

    EXPECT_EQ(waiting, 8) << "00:00:00 with the two colons lit";
    EXPECT_EQ(litInRow(4), 12) << "00:07:00";
}

TEST_F(GuiScoreLabelTest, WithoutALabelBeforeItTheTimeStaysAtZero) {
    playFor(7000);
    GuiLevelTimeDisplay display;
    display.setRampUpTime(1.0f);
    display.setFont("gfx\\font.tga");
    display.setFontSize(4.0f);
    display.setSize(100, 10);
    display.reset();

    drawAt(5000, display);

    EXPECT_EQ(litInRow(4), 8);
    EXPECT_EQ(display.rampUpRemaining, 1.0f);
}

TEST_F(GuiScoreLabelTest, TheTimeIsCentredWithItsShadow) {
    GuiLevelTimeDisplay display;
    writeFlatPicture("gfx/block.tga", white);
    display.setFont("gfx\\block.tga");
    display.setFontSize(4.0f);
    display.setPosition(10, 20);
    display.setSize(80, 10);
    display.dropShadowEnabled = true;
    display.setDropShadowOffset(2.0f, 3.0f);
    display.setDropShadowColor(0.0f, 1.0f, 0.0f, 1.0f);

    drawAt(0, display);

    EXPECT_EQ(pixel(34, 23), white) << "eight characters of 4 about (50, 25)";
    EXPECT_EQ(pixel(65, 26), white);
    EXPECT_EQ(pixel(67, 29), green);
    EXPECT_EQ(pixel(33, 23), black);
}

TEST_F(GuiScoreLabelTest, TheColumnRisesToTheShareOfTheWater) {
    addWater(64);
    GuiWaterLevel column;
    column.setPosition(10, 10);
    column.setSize(20, 128);
    column.setRampUpTimePerParticle(1.0f);
    column.reset();

    drawAt(500, column);
    const FramePicture halfWay = picture();
    drawAt(1000, column);
    const FramePicture full = picture();

    EXPECT_EQ(halfWay.at(20, 105), black);
    EXPECT_PRED2(alike, halfWay.at(20, 106), (FramePicture::Pixel{204, 217, 255}));
    EXPECT_EQ(full.at(20, 73), black);
    EXPECT_PRED2(alike, full.at(20, 74), (FramePicture::Pixel{204, 217, 255}));
    EXPECT_PRED2(alike, full.at(20, 137), (FramePicture::Pixel{179, 191, 255}));
    EXPECT_EQ(full.at(9, 100), black);
    EXPECT_EQ(full.at(30, 100), black);
    EXPECT_EQ(full.at(20, 138), black);
}

TEST_F(GuiScoreLabelTest, MoreThanTheFullMarkRisesOutOfTheTop) {
    addWater(132);
    GuiWaterLevel column;
    column.setPosition(10, 10);
    column.setSize(20, 128);
    column.setRampUpTimePerParticle(-1.0f);

    drawAt(1000, column);

    EXPECT_EQ(column.rampUpTime, 0.0001f);
    EXPECT_EQ(pixel(20, 5), black);
    EXPECT_NE(pixel(20, 6), black);
}

} // namespace tarnwick
