#pragma once

#include "graphics/FramePicture.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <cstdint>
#include <functional>
#include <string>

namespace tarnwick {

/// A test that draws: an off-screen window, a data folder of the test's own, and a look at the picture.
class DrawingTest : public ModuleTest {
protected:
    static constexpr std::int32_t windowWidth = 80; ///< Client pixels, unless a test asks for others.
    static constexpr std::int32_t windowHeight = 60;

    explicit DrawingTest(std::int32_t width = windowWidth, std::int32_t height = windowHeight);

    /// One point of a picture that a test makes up.
    struct Texel {
        FramePicture::Pixel colour;
        std::uint8_t alpha = 255;
    };
    /// Writes a square picture of `side` pixels a side, at least 4; `name` is relative, with slashes.
    void writePicture(const std::string& name,
                      std::int32_t side,
                      const std::function<Texel(std::int32_t x, std::int32_t y)>& texelAt) const;
    /// A picture of one colour.
    void writeFlatPicture(const std::string& name, FramePicture::Pixel colour) const;
    /// A picture with one colour in its left half and another in its right one.
    void
    writeSplitPicture(const std::string& name, FramePicture::Pixel left, FramePicture::Pixel right) const;

    /// A black picture in client pixels, y downwards, with depth flattened as in the camera's view.
    static void beginPicture();
    /// What was drawn so far.
    static FramePicture picture() { return FramePicture::ofBackBuffer(); }
    /// One pixel of it.
    static FramePicture::Pixel pixel(std::int32_t x, std::int32_t y) { return picture().at(x, y); }
    /// Pixels of row `y` that are not black.
    static std::int32_t litInRow(std::int32_t y);
    /// Pixels of the whole picture that are not black.
    static std::int32_t litPixels();

    DataFolder data;
};

constexpr FramePicture::Pixel black{0, 0, 0};
constexpr FramePicture::Pixel white{255, 255, 255};
constexpr FramePicture::Pixel red{255, 0, 0};
constexpr FramePicture::Pixel green{0, 255, 0};
constexpr FramePicture::Pixel blue{0, 0, 255};
constexpr FramePicture::Pixel yellow{255, 255, 0};

/// Colours are compared with this much room a channel: what drivers round differently when they blend.
constexpr int blendTolerance = 2;

/// Whether two colours are the same but for a driver's rounding.
bool alike(FramePicture::Pixel a, FramePicture::Pixel b);

/// For messages of failed tests.
void PrintTo(const FramePicture::Pixel& pixel, std::ostream* stream);

} // namespace tarnwick
