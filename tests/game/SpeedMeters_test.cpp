#include "game/SpeedMeters.h"

#include "console/GLConsole.h"
#include "support/ModuleTest.h"

namespace tarnwick {

class SpeedMetersTest : public ModuleTest {
protected:
    SpeedMetersTest() {
        GLConsole::initialise();
        GLConsole::clear();
    }

    void frames(int count, std::uint32_t milliseconds) {
        for (int i = 0; i < count; ++i) {
            now += milliseconds;
            Clock::drive(now);
            frameMeter.update();
        }
    }
    void runs(int count, std::uint64_t ticks) {
        for (int i = 0; i < count; ++i) {
            costMeter.add(ticks);
        }
    }

    FrameMeter frameMeter;
    CostMeter costMeter{"Sorting"};
    std::uint32_t now = 0;
};

TEST_F(SpeedMetersTest, AFrameHasNoMeanBeforeTheSixteenth) {
    frames(15, 125);
    const float before = frameMeter.average();

    frames(1, 125);

    EXPECT_EQ(before, 0.0f);
    EXPECT_EQ(frameMeter.average(), 0.125f);
}

TEST_F(SpeedMetersTest, TheMeanIsThatOfTheLastWholeBatch) {
    frames(16, 125);
    frames(15, 250);
    const float during = frameMeter.average();

    frames(1, 250);

    EXPECT_EQ(during, 0.125f);
    EXPECT_EQ(frameMeter.average(), 0.25f);
}

TEST_F(SpeedMetersTest, WhatPassedBeforeAResetDoesNotCountAndTheBatchGoesOn) {
    frames(8, 125);
    Clock::drive(now += 60'000);
    frameMeter.reset();

    frames(8, 125);

    EXPECT_EQ(frameMeter.average(), 0.125f);
}

TEST_F(SpeedMetersTest, FramesOfASecondArePrintedAfterEachFrameOnceThereIsAMean) {
    frameMeter.shown = true;
    frames(15, 125);
    const std::string before = GLConsole::outputText();

    frames(3, 125);

    EXPECT_EQ(before, "");
    EXPECT_EQ(GLConsole::outputText(), "\nGame - fps: 8.000000\nGame - fps: 8.000000\nGame - fps: 8.000000");
}

TEST_F(SpeedMetersTest, TheCostIsTheMeanOfThirtyTwoRunsCutToAWholeNumber) {
    costMeter.shown = true;
    runs(31, 10);
    const std::string before = GLConsole::outputText();

    runs(1, 41); // (310 + 41) / 32 = 10.97

    EXPECT_EQ(before, "");
    EXPECT_EQ(GLConsole::outputText(), "\nSorting - clock tics: 10");
}

TEST_F(SpeedMetersTest, EachBatchOfCostsStandsAlone) {
    runs(32, 1'000'000);
    costMeter.shown = true;

    runs(32, 7);

    EXPECT_EQ(GLConsole::outputText(), "\nSorting - clock tics: 7");
    EXPECT_EQ(costMeter.runs(), 0);
}

TEST_F(SpeedMetersTest, OfACostTheLowHalfCounts) {
    costMeter.shown = true;

    runs(32, (std::uint64_t{5} << 32) + 7);

    EXPECT_EQ(GLConsole::outputText(), "\nSorting - clock tics: 7");
}

TEST_F(SpeedMetersTest, UnaskedNothingIsPrinted) {
    frames(40, 125);
    runs(40, 7);

    EXPECT_EQ(GLConsole::outputText(), "");
}

} // namespace tarnwick
