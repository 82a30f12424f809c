#include "core/FrameTimer.h"

#include "core/Clock.h"
#include "core/LocationStack.h"

#include <algorithm>

namespace tarnwick {

namespace {

constexpr float secondsPerClock = 0.001f;

} // namespace

FrameTimer::FrameTimer() {
    TARNWICK_LOCATION("FrameTimer::FrameTimer");
    reset();
}

void FrameTimer::reset() {
    TARNWICK_LOCATION("FrameTimer::reset");
    lastClock = Clock::milliseconds();
    elapsedClocks = 0;
    elapsedSeconds = 0.0f;
}

void FrameTimer::update() {
    TARNWICK_LOCATION("FrameTimer::update");
    const std::uint32_t now = Clock::milliseconds();
    elapsedClocks = static_cast<std::int32_t>(now - lastClock);
    lastClock = now;
    elapsedSeconds = std::max(static_cast<float>(elapsedClocks) * secondsPerClock, shortestSeconds);
}

} // namespace tarnwick
