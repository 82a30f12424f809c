#pragma once

#include <cmath>

namespace tarnwick {

/// What is left after `dt` seconds of something of which `share`, 0 to 1, is left after one second: `share`
/// to the power of `dt`. So the decay of a second is the same whatever the length of the ticks it is cut
/// into.
///
/// Taken in double and rounded once, which is part of the result of a tick.
inline float shareLeft(float share, float dt) {
    return static_cast<float>(std::pow(static_cast<double>(share), static_cast<double>(dt)));
}

} // namespace tarnwick
