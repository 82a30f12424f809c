#include "core/LongTimer.h"

#include "support/ModuleTest.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

class LongTimerTest : public ModuleTest {};

TEST_F(LongTimerTest, UpdatesAddUp) {
    LongTimer timer;
    Clock::drive(100);
    timer.update();
    Clock::drive(150);

    timer.update();

    EXPECT_EQ(timer.getTotalClocks(), 150);
}

TEST_F(LongTimerTest, AStretchThatEndsWithUnpauseDoesNotCount) {
    LongTimer timer;
    Clock::drive(100);
    timer.update();
    Clock::drive(5000);

    timer.unpause();

    EXPECT_EQ(timer.getTotalClocks(), 100);
    Clock::drive(5020);
    timer.update();
    EXPECT_EQ(timer.getTotalClocks(), 120);
}

TEST_F(LongTimerTest, ResettingStartsAtZeroFromNow) {
    LongTimer timer;
    Clock::drive(100);
    timer.update();
    Clock::drive(200);

    timer.reset();

    EXPECT_EQ(timer.getTotalClocks(), 0);
    Clock::drive(207);
    timer.update();
    EXPECT_EQ(timer.getTotalClocks(), 7);
}

TEST_F(LongTimerTest, AClockThatWrapsRoundIsMeasuredRightly) {
    Clock::drive(0xFFFFFFF0u);
    LongTimer timer;
    Clock::drive(0x10);

    timer.update();

    EXPECT_EQ(timer.getTotalClocks(), 32);
}

} // namespace
} // namespace tarnwick
