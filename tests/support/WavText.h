#pragma once

#include <cmath>
#include <cstdint>
#include <numbers>
#include <string>
#include <vector>

namespace tarnwick {

/// The bytes of a WAV file, field by field, so that a test can also write what no WAV file may hold.
struct WavText {
    std::string riff = "RIFF";
    std::uint32_t fileSize = 0; ///< Nobody looks at it.
    std::string wave = "WAVE";
    std::string fmt = "fmt ";
    std::uint32_t formatSize = 16;
    std::uint32_t formatTag = 1;
    std::uint32_t channels = 1;
    std::uint32_t sampleRate = 44'100;
    std::uint32_t byteRate = 88'200;
    std::uint32_t blockAlign = 2;
    std::uint32_t bitsPerSample = 16;
    std::string formatExtra;  ///< Bytes behind the known part of the format.
    std::string chunksBefore; ///< Whole chunks between the format and the samples.
    std::string samples;
    std::int64_t dataSize = -1; ///< What the "data" chunk says of itself; -1: the truth.
    std::string behind;         ///< Bytes behind the samples.

    /// A number of `count` bytes, smallest first.
    static std::string number(std::uint32_t value, int count) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += static_cast<char>((value >> (8 * i)) & 0xFFu);
        }
        return text;
    }
    static std::string chunk(const std::string& tag, const std::string& content) {
        return tag + number(static_cast<std::uint32_t>(content.size()), 4) + content;
    }

    std::string bytes() const {
        const auto stated =
            static_cast<std::uint32_t>(dataSize < 0 ? static_cast<std::int64_t>(samples.size()) : dataSize);
        return riff + number(fileSize, 4) + wave + fmt + number(formatSize, 4) + number(formatTag, 2) +
               number(channels, 2) + number(sampleRate, 4) + number(byteRate, 4) + number(blockAlign, 2) +
               number(bitsPerSample, 2) + formatExtra + chunksBefore + "data" + number(stated, 4) + samples +
               behind;
    }
};

/// 16 bit samples as they stand in a file.
inline std::string samples16(const std::vector<std::int16_t>& values) {
    std::string text;
    for (const std::int16_t value : values) {
        text += WavText::number(static_cast<std::uint16_t>(value), 2);
    }
    return text;
}

/// A file of one channel and 16 bits.
inline std::string monoWav(const std::vector<std::int16_t>& values, std::uint32_t sampleRate = 44'100) {
    WavText wav;
    wav.sampleRate = sampleRate;
    wav.byteRate = sampleRate * 2;
    wav.samples = samples16(values);
    return wav.bytes();
}

/// `count` samples of one value.
inline std::vector<std::int16_t> steadySamples(std::size_t count, std::int16_t value) {
    return std::vector<std::int16_t>(count, value);
}

/// `periods` whole waves in `count` samples, at half of full scale: they loop without a seam.
inline std::vector<std::int16_t> waveSamples(std::size_t count, std::size_t periods) {
    std::vector<std::int16_t> values(count);
    for (std::size_t i = 0; i < count; ++i) {
        const double turn =
            2.0 * std::numbers::pi * static_cast<double>(i * periods) / static_cast<double>(count);
        values[i] = static_cast<std::int16_t>(std::lround(16384.0 * std::sin(turn)));
    }
    return values;
}

} // namespace tarnwick
