#include "core/Clock.h"

#include <gtest/gtest.h>

#include <chrono>

namespace tarnwick {
namespace {

std::uint64_t steadyNanoseconds() {
    return static_cast<std::uint64_t>(
        std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count());
}

class ClockTest : public testing::Test {
protected:
    ~ClockTest() override { Clock::release(); }
};

// The fault: another unit than milliseconds, and a game that runs a thousand times too fast or too slow.
TEST_F(ClockTest, TheWallClockCountsMilliseconds) {
    const std::uint64_t before = steadyNanoseconds();
    const std::uint32_t told = Clock::milliseconds();
    const std::uint64_t after = steadyNanoseconds();

    const auto first = static_cast<std::uint32_t>(before / 1'000'000);
    EXPECT_LE(told - first, static_cast<std::uint32_t>(after / 1'000'000) - first); // also round 2^32
}

TEST_F(ClockTest, TheCounterOfCostsCountsNanosecondsAlsoWhileTheClockIsDriven) {
    Clock::drive(5);
    const std::uint64_t before = steadyNanoseconds();
    const std::uint64_t told = Clock::performanceCounter();

    EXPECT_GE(told, before);
    EXPECT_LE(told, steadyNanoseconds());
}

TEST_F(ClockTest, ADrivenClockStandsUntilItIsReleased) {
    Clock::drive(5);
    const bool driven = Clock::driven();
    const std::uint32_t told = Clock::milliseconds();
    Clock::release();

    EXPECT_TRUE(driven);
    EXPECT_EQ(told, 5u);
    EXPECT_FALSE(Clock::driven());
    EXPECT_NE(Clock::milliseconds(), 5u);
}

} // namespace
} // namespace tarnwick
