#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarnwick {

/// Writes AVI files of uncompressed pictures, with headers that tell the truth or do not.
struct AviFile {
    std::int32_t width = 4; ///< As the header claims.
    std::int32_t height = 4;
    std::uint32_t frameCount = 0; ///< As the header claims.
    std::uint32_t scale = 1;      ///< `rate` / `scale` pictures a second.
    std::uint32_t rate = 25;
    std::string streamType = "vids";
    std::string codec = std::string(4, '\0'); ///< Uncompressed.
    std::vector<std::string> frames = {};

    /// One colour, 3 bytes a pixel, rows padded to whole words; `topBlue` is that of the top row.
    static std::string
    flatFrame(std::int32_t width, std::int32_t height, std::uint8_t blue, std::uint8_t topBlue) {
        const std::size_t rowBytes = (static_cast<std::size_t>(width) * 3 + 3) / 4 * 4;
        std::string pixels;
        for (std::int32_t y = 0; y < height; ++y) { // the bottom row first
            std::string row(rowBytes, '\0');
            for (std::int32_t x = 0; x < width; ++x) {
                row[static_cast<std::size_t>(x) * 3] = static_cast<char>(y == height - 1 ? topBlue : blue);
            }
            pixels += row;
        }
        return pixels;
    }

    /// Adds a picture of one colour that fits the header; the count in the header follows.
    void addFrame(std::uint8_t blue) {
        frames.push_back(flatFrame(width, height, blue, blue));
        frameCount = static_cast<std::uint32_t>(frames.size());
    }

    std::string bytes() const {
        std::string pictures;
        std::string index;
        for (const std::string& frame : frames) {
            index += "00db" + number(0x10) + number(static_cast<std::uint32_t>(pictures.size()) + 4) +
                     number(static_cast<std::uint32_t>(frame.size()));
            pictures += chunk("00db", frame);
        }
        const std::string header =
            list("hdrl", chunk("avih", mainHeader()) +
                             list("strl", chunk("strh", streamHeader()) + chunk("strf", pictureHeader())));
        const std::string body = "AVI " + header + list("movi", pictures) + chunk("idx1", index);
        return "RIFF" + number(static_cast<std::uint32_t>(body.size())) + body;
    }

private:
    static std::string number(std::uint32_t value) {
        std::string text;
        for (int shift = 0; shift < 32; shift += 8) {
            text += static_cast<char>(value >> shift & 0xFF);
        }
        return text;
    }
    static std::string chunk(const std::string& name, const std::string& content) {
        return name + number(static_cast<std::uint32_t>(content.size())) + content +
               std::string(content.size() % 2, '\0');
    }
    static std::string list(const std::string& name, const std::string& content) {
        return chunk("LIST", name + content);
    }
    std::string mainHeader() const {
        const std::uint32_t microseconds = rate != 0 ? 1'000'000u / rate : 0;
        return number(microseconds) + number(0) + number(0) + number(0x10) + number(frameCount) + number(0) +
               number(1) + number(0) + number(static_cast<std::uint32_t>(width)) +
               number(static_cast<std::uint32_t>(height)) + std::string(16, '\0');
    }
    std::string streamHeader() const {
        return streamType + codec + std::string(12, '\0') + number(scale) + number(rate) + number(0) +
               number(frameCount) + std::string(20, '\0');
    }
    std::string pictureHeader() const {
        return number(40) + number(static_cast<std::uint32_t>(width)) +
               number(static_cast<std::uint32_t>(height)) + std::string("\x01\0\x18\0", 4) + codec +
               std::string(20, '\0');
    }
};

} // namespace tarnwick
