#include "core/Clock.h"

#include <chrono>

namespace tarnwick {

Clock::State Clock::state;

std::uint32_t Clock::milliseconds() {
    if (state.driven) {
        return state.now;
    }
    return static_cast<std::uint32_t>(performanceCounter() / 1'000'000u);
}

void Clock::drive(std::uint32_t now) {
    state.driven = true;
    state.now = now;
}

bool Clock::driven() {
    return state.driven;
}

void Clock::release() {
    state = {};
}

std::uint64_t Clock::performanceCounter() {
    const auto sinceEpoch = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::nanoseconds>(sinceEpoch).count());
}

} // namespace tarnwick
