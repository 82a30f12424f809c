#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace tarnwick {

/// The samples of a WAV file and how to read them, as the file states it. Whether a platform can play such
/// samples is for the platform to say.
struct WavFile {
    static constexpr std::uint16_t pcm = 1; ///< The only format tag read.

    std::uint16_t channels = 0;            ///< 1 or 2.
    std::uint32_t sampleRate = 0;          ///< Hertz, not 0.
    std::uint32_t byteRate = 0;            ///< As stated, not 0.
    std::uint16_t blockAlign = 0;          ///< Bytes a frame as stated, not 0.
    std::uint16_t bitsPerSample = 0;       ///< Not 0.
    std::span<const std::uint8_t> samples; ///< The whole of the "data" chunk, not empty; bytes of the file.

    /// Reads the `size` bytes of a file into `wav`, whose samples lie in them. False, and `wav` unusable, for
    /// anything that is not PCM in one or two channels, for a rate, alignment or depth of 0, an empty "data"
    /// chunk, and a chunk that runs past the end of the file. The size that the file states of itself is not
    /// looked at, and neither is what stands behind the "data" chunk.
    ///
    /// Kept: a chunk of an odd size is skipped by just that size, without the byte that pads it.
    static bool read(const std::uint8_t* bytes, std::size_t size, WavFile& wav);
};

} // namespace tarnwick
