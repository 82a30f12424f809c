#pragma once

#include "support/WavText.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tarnwick {

/// The bytes of a WAV file of `frames` frames at 44,100 hertz: a square wave of 441 hertz at half of full
/// scale.
inline std::string toneFile(std::size_t frames) {
    constexpr std::size_t halfPeriod = 50;
    constexpr std::int16_t amplitude = 16'384;
    std::vector<std::int16_t> samples(frames);
    for (std::size_t i = 0; i < frames; ++i) {
        samples[i] = i / halfPeriod % 2 == 0 ? amplitude : static_cast<std::int16_t>(-amplitude);
    }
    return monoWav(samples);
}

} // namespace tarnwick
