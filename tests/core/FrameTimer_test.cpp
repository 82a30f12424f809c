#include "core/FrameTimer.h"

#include "support/ModuleTest.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

class FrameTimerTest : public ModuleTest {};

TEST_F(FrameTimerTest, AFreshTimerHasMeasuredNothing) {
    Clock::drive(1000);

    const FrameTimer timer;

    EXPECT_EQ(timer.getClocks(), 0);
    EXPECT_EQ(timer.getSeconds(), 0.0f);
}

TEST_F(FrameTimerTest, AnUpdateGivesTheTimeSinceTheLast) {
    FrameTimer timer;
    Clock::drive(16);
    timer.update();
    Clock::drive(266);

    timer.update();

    EXPECT_EQ(timer.getClocks(), 250);
    EXPECT_EQ(timer.getSeconds(), 250.0f * 0.001f);
}

TEST_F(FrameTimerTest, TwoUpdatesAtOnceGiveATimeThatCanBeDividedBy) {
    FrameTimer timer;
    timer.update();

    timer.update();

    EXPECT_EQ(timer.getClocks(), 0);
    EXPECT_EQ(timer.getSeconds(), 1e-08f);
}

TEST_F(FrameTimerTest, AClockThatWrapsRoundIsMeasuredRightly) {
    Clock::drive(0xFFFFFFF0u);
    FrameTimer timer;
    Clock::drive(0x10);

    timer.update();

    EXPECT_EQ(timer.getClocks(), 32);
}

TEST_F(FrameTimerTest, AClockSetBackGivesTheShortestTime) {
    Clock::drive(500);
    FrameTimer timer;
    Clock::drive(400);

    timer.update();

    EXPECT_EQ(timer.getSeconds(), FrameTimer::shortestSeconds);
}

TEST_F(FrameTimerTest, ResettingForgetsTheMeasurement) {
    FrameTimer timer;
    Clock::drive(100);
    timer.update();
    Clock::drive(300);

    timer.reset();

    EXPECT_EQ(timer.getClocks(), 0);
    EXPECT_EQ(timer.getSeconds(), 0.0f);
    Clock::drive(310);
    timer.update();
    EXPECT_EQ(timer.getClocks(), 10);
}

} // namespace
} // namespace tarnwick
