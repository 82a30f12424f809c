#pragma once

#include "tools/sim/HeldKeys.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarnwick {

/// Keys that finish a level, and what their run comes to.
struct Witness {
    using Change = HeldKeys::Change;
    std::vector<Change> changes; ///< By tick; nothing is held before the first.
    std::uint64_t ticks = 0;     ///< Until the finish is over.
    std::uint32_t water = 0;     ///< Particles that are left.
    std::int32_t time = 0;       ///< Milliseconds of play.
    std::uint32_t score = 0;

    /// Appends a change, unless it changes nothing.
    void hold(std::uint64_t tick, Held held);
    /// The file that `tarnwick-sim --input` reads: `head`, what the run comes to, and the keys.
    std::string text(const std::string& head) const;
};

} // namespace tarnwick
