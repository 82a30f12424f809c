#pragma once

#include <cstdint>
#include <vector>

struct SDL_Surface;

namespace tarnwick {

/// The pixels of a picture that SDL_image read, converted to what the GL is given: 4 bytes a pixel, blue,
/// green, red, alpha, top row first.
class SurfacePixels {
public:
    std::vector<std::uint8_t> pixels;
    std::uint32_t bytesPerPixel = 0; ///< Of the source: 1 to 4; 0 for a depth that is not converted.
    bool hasAlpha = false;

    /// By the bytes a pixel of `surface`: 1 is a palette, whose colour key becomes transparent; 2 and 3 are
    /// opaque. A depth below 8 bits leaves the pixels at zero.
    ///
    /// Kept: with 4 bytes a pixel the alpha value is not moved to its place; it falls on the low byte, over
    /// blue, and alpha comes out as 0. Transparent pictures of the game are 32-bit TGA files, which do not
    /// come this way.
    explicit SurfacePixels(const SDL_Surface& surface);

private:
    void convertPalette(const SDL_Surface& surface);
    void convertMasks(const SDL_Surface& surface);
};

} // namespace tarnwick
