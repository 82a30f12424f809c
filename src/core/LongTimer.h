#pragma once

#include <cstdint>

namespace tarnwick {

/// Adds up time over many updates, on the one `Clock`. A pause is a stretch without `update` that ends with
/// `unpause`.
class LongTimer {
public:
    /// Starts now, at 0.
    LongTimer();
    void reset();

    /// Adds the time since the last `update`, `unpause` or `reset`.
    void update();
    /// Counts from now on, and adds nothing.
    void unpause();
    /// As if all had happened `milliseconds` later.
    void shift(std::uint32_t milliseconds) { lastClock += milliseconds; }
    /// Milliseconds.
    std::int32_t getTotalClocks() const { return totalClocks; }

private:
    friend class GameRows; // tools: dump and restore

    std::int32_t totalClocks = 0; ///< Running sum, milliseconds; wraps round after 24 days.
    std::uint32_t lastClock = 0;  ///< Milliseconds.
};

} // namespace tarnwick
