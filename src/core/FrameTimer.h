#pragma once

#include <cstdint>

namespace tarnwick {

/// Measures the time between two calls of `update`, on the one `Clock`.
class FrameTimer {
public:
    /// Least result of `getSeconds` after an update: it can be divided by.
    static constexpr float shortestSeconds = 1e-08f;

    /// Starts now, with both results 0.
    FrameTimer();
    void reset();

    void update();
    /// As if all had happened `milliseconds` later.
    void shift(std::uint32_t milliseconds) { lastClock += milliseconds; }
    /// Seconds between the last two updates, at least `shortestSeconds`; 0 before the first.
    float getSeconds() const { return elapsedSeconds; }
    /// The same in milliseconds, and down to 0.
    std::int32_t getClocks() const { return elapsedClocks; }

private:
    friend class SimulationState;

    std::uint32_t lastClock = 0;    ///< Clock at the last update, milliseconds.
    std::int32_t elapsedClocks = 0; ///< Milliseconds; right across the clock's wrap.
    float elapsedSeconds = 0.0f;
};

} // namespace tarnwick
