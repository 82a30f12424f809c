#pragma once

#include <cstdint>

namespace tarnwick {

/// The one clock under all timers: milliseconds from an arbitrary start, as an unsigned 32-bit number that
/// wraps round after 49 days. It follows the wall until somebody drives it; the headless runner and the tests
/// do, so that nothing they do depends on the time of day or the speed of the machine.
class Clock {
public:
    Clock() = delete;

    static std::uint32_t milliseconds();

    /// From here on the clock stands at `now` until the next call.
    static void drive(std::uint32_t now);
    static bool driven();
    /// Back to the wall clock.
    static void release();

    /// A monotonic counter in nanoseconds, for measuring cost only: it never feeds the game and is never
    /// driven.
    static std::uint64_t performanceCounter();

private:
    friend class ModuleReset;

    struct State {
        bool driven = false;
        std::uint32_t now = 0; ///< Milliseconds, while driven.
    };
    static State state;
};

} // namespace tarnwick
