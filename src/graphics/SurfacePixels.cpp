#include "graphics/SurfacePixels.h"

#include "core/LocationStack.h"

#include <SDL_surface.h>

#include <array>
#include <bit>
#include <cstring>

namespace tarnwick {

namespace {

static_assert(std::endian::native == std::endian::little); // words are stored as blue, green, red, alpha

constexpr std::uint32_t opaque = 0xFF000000u;
constexpr std::uint32_t smallestDepth = 8; ///< Bits a pixel.

const std::uint8_t* rowOf(const SDL_Surface& surface, int y) {
    TARNWICK_LOCATION("SurfacePixels::rowOf");
    return static_cast<const std::uint8_t*>(surface.pixels) + static_cast<std::ptrdiff_t>(surface.pitch) * y;
}

} // namespace

SurfacePixels::SurfacePixels(const SDL_Surface& surface)
    : pixels(static_cast<std::size_t>(surface.w) * static_cast<std::size_t>(surface.h) * 4) {
    TARNWICK_LOCATION("SurfacePixels::SurfacePixels");
    if (surface.format->BitsPerPixel < smallestDepth) {
        return;
    }
    // Whole bytes: a picture of 5 bits a channel counts as 16 bits a pixel, and one of 8 bits a channel in
    // four bytes as 32.
    bytesPerPixel = surface.format->BytesPerPixel;
    if (bytesPerPixel == 1) {
        convertPalette(surface);
    } else {
        convertMasks(surface);
    }
}

void SurfacePixels::convertPalette(const SDL_Surface& surface) {
    TARNWICK_LOCATION("SurfacePixels::convertPalette");
    const SDL_Palette* const palette = surface.format->palette;
    if (palette == nullptr) {
        return;
    }
    std::uint32_t colourKey = 0;
    hasAlpha = SDL_GetColorKey(const_cast<SDL_Surface*>(&surface), &colourKey) == 0;
    std::array<std::uint32_t, 256> words{};
    for (std::size_t i = 0; i < words.size() && i < static_cast<std::size_t>(palette->ncolors); ++i) {
        const SDL_Color colour = palette->colors[i];
        const std::uint32_t alpha = hasAlpha && i == colourKey ? 0 : opaque;
        words[i] = alpha | static_cast<std::uint32_t>(colour.r) << 16 |
                   static_cast<std::uint32_t>(colour.g) << 8 | colour.b;
    }
    std::size_t index = 0;
    for (int y = 0; y < surface.h; ++y) {
        const std::uint8_t* const row = rowOf(surface, y);
        for (int x = 0; x < surface.w; ++x, ++index) {
            std::memcpy(pixels.data() + index * 4, &words[row[x]], 4);
        }
    }
}

void SurfacePixels::convertMasks(const SDL_Surface& surface) {
    TARNWICK_LOCATION("SurfacePixels::convertMasks");
    const SDL_PixelFormat& format = *surface.format;
    hasAlpha = bytesPerPixel == 4;
    std::size_t index = 0;
    for (int y = 0; y < surface.h; ++y) {
        const std::uint8_t* source = rowOf(surface, y);
        for (int x = 0; x < surface.w; ++x, ++index, source += bytesPerPixel) {
            std::uint32_t pixel = 0;
            std::memcpy(&pixel, source, bytesPerPixel);
            const std::uint32_t red = (pixel & format.Rmask) >> format.Rshift << format.Rloss;
            const std::uint32_t green = (pixel & format.Gmask) >> format.Gshift << format.Gloss;
            const std::uint32_t blue = (pixel & format.Bmask) >> format.Bshift << format.Bloss;
            const std::uint32_t misplacedAlpha = (pixel & format.Amask) >> format.Ashift << format.Aloss;
            const std::uint32_t word =
                (bytesPerPixel == 4 ? misplacedAlpha : opaque) | red << 16 | green << 8 | blue;
            std::memcpy(pixels.data() + index * 4, &word, 4);
        }
    }
}

} // namespace tarnwick
