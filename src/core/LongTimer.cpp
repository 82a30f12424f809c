#include "core/LongTimer.h"

#include "core/Clock.h"
#include "core/LocationStack.h"

namespace tarnwick {

LongTimer::LongTimer() {
    TARNWICK_LOCATION("LongTimer::LongTimer");
    reset();
}

void LongTimer::reset() {
    TARNWICK_LOCATION("LongTimer::reset");
    totalClocks = 0;
    lastClock = Clock::milliseconds();
}

void LongTimer::update() {
    TARNWICK_LOCATION("LongTimer::update");
    const std::uint32_t now = Clock::milliseconds();
    // Unsigned, so that the sum may wrap round.
    totalClocks = static_cast<std::int32_t>(static_cast<std::uint32_t>(totalClocks) + (now - lastClock));
    lastClock = now;
}

void LongTimer::unpause() {
    TARNWICK_LOCATION("LongTimer::unpause");
    lastClock = Clock::milliseconds();
}

} // namespace tarnwick
