#pragma once

#include <cstdint>
#include <string>

namespace tarnwick {

/// The bytes of a TGA file: a header and whatever pixel data a test wants.
struct TgaFile {
    std::uint8_t identificationLength = 0;
    std::uint8_t colourMapType = 0;
    std::uint8_t imageType = 2; ///< 2: plain, 10: run-length encoded.
    std::uint32_t width = 4;
    std::uint32_t height = 4;
    std::uint8_t bitsPerPixel = 32;
    std::uint8_t descriptor = 0x28; ///< Bit 5: top row first; the low four bits: bits of alpha.
    std::string data = {};          ///< Everything behind the header.

    std::string bytes() const {
        std::string header(18, '\0');
        const auto put = [&](std::size_t at, std::uint32_t value) {
            header[at] = static_cast<char>(value & 255);
        };
        put(0, identificationLength);
        put(1, colourMapType);
        put(2, imageType);
        put(12, width);
        put(13, width >> 8);
        put(14, height);
        put(15, height >> 8);
        put(16, bitsPerPixel);
        put(17, descriptor);
        return header + data;
    }

    /// One pixel of 32 bits: blue, green, red, alpha.
    static std::string
    pixel(std::uint32_t blue, std::uint32_t green, std::uint32_t red, std::uint32_t alpha) {
        return {static_cast<char>(blue), static_cast<char>(green), static_cast<char>(red),
                static_cast<char>(alpha)};
    }
};

} // namespace tarnwick
