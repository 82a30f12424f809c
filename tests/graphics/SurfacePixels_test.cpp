#include "graphics/SurfacePixels.h"

#include "support/ModuleTest.h"

#include <SDL_surface.h>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <vector>

namespace tarnwick {

namespace {

struct FreeSurface {
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
using Surface = std::unique_ptr<SDL_Surface, FreeSurface>;
using Bytes = std::vector<std::uint8_t>;

/// A surface of `format` with these bytes in its first row and `lastRow` in its last.
Surface surfaceOf(int width, int height, Uint32 format, const Bytes& firstRow, const Bytes& lastRow = {}) {
    Surface surface(SDL_CreateRGBSurfaceWithFormat(0, width, height, 0, format));
    auto* const pixels = static_cast<std::uint8_t*>(surface->pixels);
    std::copy(firstRow.begin(), firstRow.end(), pixels);
    std::copy(lastRow.begin(), lastRow.end(), pixels + (height - 1) * surface->pitch);
    return surface;
}

/// A palette in which entry i is red i, green 2 i, blue 3 i.
void setPalette(const Surface& surface) {
    std::vector<SDL_Color> colours;
    for (int i = 0; i < 80; ++i) {
        colours.push_back({static_cast<Uint8>(i), static_cast<Uint8>(2 * i), static_cast<Uint8>(3 * i), 255});
    }
    SDL_SetPaletteColors(surface->format->palette, colours.data(), 0, static_cast<int>(colours.size()));
}

} // namespace

class SurfacePixelsTest : public ModuleTest {};

TEST_F(SurfacePixelsTest, PaletteEntriesAreOpaque) {
    const Surface surface = surfaceOf(3, 2, SDL_PIXELFORMAT_INDEX8, {1, 2, 3}, {4, 5, 6}); // rows of 4 bytes
    setPalette(surface);

    const SurfacePixels converted(*surface);

    EXPECT_EQ(converted.bytesPerPixel, 1u);
    EXPECT_FALSE(converted.hasAlpha);
    EXPECT_EQ(converted.pixels, (Bytes{3,  2, 1, 255, 6,  4,  2, 255, 9,  6,  3, 255,
                                       12, 8, 4, 255, 15, 10, 5, 255, 18, 12, 6, 255}));
}

TEST_F(SurfacePixelsTest, TheColourKeyIsTransparentAndKeepsItsColour) {
    const Surface surface = surfaceOf(2, 1, SDL_PIXELFORMAT_INDEX8, {1, 2});
    setPalette(surface);
    SDL_SetColorKey(surface.get(), SDL_TRUE, 2);

    const SurfacePixels converted(*surface);

    EXPECT_TRUE(converted.hasAlpha);
    EXPECT_EQ(converted.pixels, (Bytes{3, 2, 1, 255, 6, 4, 2, 0}));
}

TEST_F(SurfacePixelsTest, SixteenBitsAreSpreadByTheirMasksAndOpaque) {
    const Surface surface =
        surfaceOf(3, 2, SDL_PIXELFORMAT_RGB565, {0x1F, 0x00, 0xE0, 0x07, 0x00, 0xF8}, {0xFF, 0xFF});

    const SurfacePixels converted(*surface);

    EXPECT_EQ(converted.bytesPerPixel, 2u);
    EXPECT_FALSE(converted.hasAlpha);
    EXPECT_EQ(converted.pixels, (Bytes{0xF8, 0,    0,    255, 0, 0xFC, 0, 255, 0, 0, 0xF8, 255,
                                       0xF8, 0xFC, 0xF8, 255, 0, 0,    0, 255, 0, 0, 0,    255}));
}

TEST_F(SurfacePixelsTest, FiveBitsAChannelCountAsSixteenBitsAPixel) {
    const Surface surface = surfaceOf(1, 1, SDL_PIXELFORMAT_RGB555, {0xFF, 0x7F});

    const SurfacePixels converted(*surface);

    EXPECT_EQ(converted.bytesPerPixel, 2u);
    EXPECT_EQ(converted.pixels, (Bytes{0xF8, 0xF8, 0xF8, 255}));
}

TEST_F(SurfacePixelsTest, TwentyFourBitsComeInEitherOrderAndOpaque) {
    const Surface redFirst = surfaceOf(1, 2, SDL_PIXELFORMAT_RGB24, {1, 2, 3}, {4, 5, 6});
    const Surface blueFirst = surfaceOf(1, 2, SDL_PIXELFORMAT_BGR24, {1, 2, 3}, {4, 5, 6});

    EXPECT_EQ(SurfacePixels(*redFirst).pixels, (Bytes{3, 2, 1, 255, 6, 5, 4, 255}));
    EXPECT_EQ(SurfacePixels(*blueFirst).pixels, (Bytes{1, 2, 3, 255, 4, 5, 6, 255}));
    EXPECT_EQ(SurfacePixels(*redFirst).bytesPerPixel, 3u);
    EXPECT_FALSE(SurfacePixels(*redFirst).hasAlpha);
}

TEST_F(SurfacePixelsTest, AnAlphaChannelFallsOnBlue) {
    const Surface surface = surfaceOf(1, 1, SDL_PIXELFORMAT_ARGB8888, {0x01, 0x20, 0x30, 0xC4});

    const SurfacePixels converted(*surface);

    EXPECT_EQ(converted.bytesPerPixel, 4u);
    EXPECT_TRUE(converted.hasAlpha);
    EXPECT_EQ(converted.pixels, (Bytes{0xC5, 0x20, 0x30, 0})); // 0x01 | 0xC4
}

TEST_F(SurfacePixelsTest, FourBytesWithoutAlphaCountAsThirtyTwoBits) {
    const Surface surface = surfaceOf(1, 1, SDL_PIXELFORMAT_RGB888, {1, 2, 3, 99});

    const SurfacePixels converted(*surface);

    EXPECT_EQ(converted.bytesPerPixel, 4u);
    EXPECT_TRUE(converted.hasAlpha);
    EXPECT_EQ(converted.pixels, (Bytes{1, 2, 3, 0}));
}

TEST_F(SurfacePixelsTest, DepthsBelowEightBitsStayAtZero) {
    const Surface surface = surfaceOf(8, 1, SDL_PIXELFORMAT_INDEX1MSB, {0xFF});

    const SurfacePixels converted(*surface);

    EXPECT_EQ(converted.bytesPerPixel, 0u);
    EXPECT_EQ(converted.pixels, Bytes(32, 0));
}

} // namespace tarnwick
