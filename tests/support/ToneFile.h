#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace tarnwick {

/// The bytes of a WAV file of `frames` frames at 44,100 hertz, mono, 16 bits: a square wave of 441 hertz at
/// half of full scale.
inline std::string toneFile(std::size_t frames) {
    const auto put = [](std::string& bytes, auto value) {
        char raw[sizeof value];
        std::memcpy(raw, &value, sizeof value);
        bytes.append(raw, sizeof value);
    };
    constexpr std::size_t halfPeriod = 50;
    constexpr std::int16_t amplitude = 16'384;
    const auto size = static_cast<std::uint32_t>(frames * 2);
    std::string bytes = "RIFF";
    put(bytes, size + 36);
    bytes += "WAVEfmt ";
    put(bytes, std::uint32_t{16});
    put(bytes, std::uint16_t{1}); // PCM
    put(bytes, std::uint16_t{1}); // channels
    put(bytes, std::uint32_t{44'100});
    put(bytes, std::uint32_t{88'200});
    put(bytes, std::uint16_t{2});
    put(bytes, std::uint16_t{16});
    bytes += "data";
    put(bytes, size);
    for (std::size_t i = 0; i < frames; ++i) {
        put(bytes, i / halfPeriod % 2 == 0 ? amplitude : static_cast<std::int16_t>(-amplitude));
    }
    return bytes;
}

} // namespace tarnwick
