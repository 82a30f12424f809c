#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace tarnwick {

/// A picture in plain memory: what the back buffer shows, or what a file holds. For screenshots and films of
/// the game, and for the tests that compare pictures.
struct FramePicture {
    /// One pixel; the layout of the memory and of the file.
    struct Pixel {
        std::uint8_t red = 0;
        std::uint8_t green = 0;
        std::uint8_t blue = 0;

        friend bool operator==(const Pixel&, const Pixel&) = default;
    };

    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<Pixel> pixels; ///< Row by row, the top one first.

    /// Pixel (x, y) counted from the top left; must lie inside.
    const Pixel& at(std::int32_t x, std::int32_t y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }

    /// The client area of the window as it stands in the back buffer; before it is presented, for what it
    /// holds afterwards is undefined. Black without a GL context.
    static FramePicture ofBackBuffer();

    /// Writes a PNG file; false if it cannot be written.
    bool savePng(const std::filesystem::path& file) const;
    /// Reads a picture of any kind; an empty one if it cannot be read.
    static FramePicture load(const std::filesystem::path& file);
};

} // namespace tarnwick
