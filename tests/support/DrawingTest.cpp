#include "support/DrawingTest.h"

#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"

#include <GL/gl.h>

#include <algorithm>
#include <cstdlib>
#include <ostream>

namespace tarnwick {

namespace {

constexpr std::int32_t smallestSide = 4; ///< The smallest picture that the game's own loader takes.

/// The header of an uncompressed 32-bit TGA, top row first; the side is below 256.
std::string tgaHeader(std::int32_t side) {
    std::string header(18, '\0');
    header[2] = 2;
    header[12] = static_cast<char>(side);
    header[14] = static_cast<char>(side);
    header[16] = 32;
    header[17] = 0x28;
    return header;
}

} // namespace

DrawingTest::DrawingTest(std::int32_t width, std::int32_t height) {
    GLWindow::createOffscreen(width, height);
    GLTextureManager::initialise();
}

void DrawingTest::writePicture(const std::string& name,
                               std::int32_t side,
                               const std::function<Texel(std::int32_t x, std::int32_t y)>& texelAt) const {
    std::string file = tgaHeader(side);
    for (std::int32_t y = 0; y < side; ++y) {
        for (std::int32_t x = 0; x < side; ++x) {
            const auto [colour, alpha] = texelAt(x, y);
            for (const std::uint8_t channel : {colour.blue, colour.green, colour.red, alpha}) {
                file += static_cast<char>(channel);
            }
        }
    }
    data.write(name, file);
}

void DrawingTest::writeFlatPicture(const std::string& name, FramePicture::Pixel colour) const {
    writePicture(name, smallestSide, [&](std::int32_t, std::int32_t) { return Texel{colour}; });
}

void DrawingTest::writeSplitPicture(const std::string& name,
                                    FramePicture::Pixel left,
                                    FramePicture::Pixel right) const {
    writePicture(name, smallestSide,
                 [&](std::int32_t x, std::int32_t) { return Texel{x < smallestSide / 2 ? left : right}; });
}

void DrawingTest::beginPicture() {
    GLWindow::glBeginDraw2d();
    GLWindow::clearScreen(0.0f, 0.0f, 0.0f);
    glScalef(1.0f, 1.0f, 0.0f);
    glEnable(GL_TEXTURE_2D);
    glDisable(GL_DEPTH_TEST);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
}

std::int32_t DrawingTest::litInRow(std::int32_t y) {
    const FramePicture shown = picture();
    std::int32_t lit = 0;
    for (std::int32_t x = 0; x < shown.width; ++x) {
        lit += shown.at(x, y) != black ? 1 : 0;
    }
    return lit;
}

std::int32_t DrawingTest::litPixels() {
    const FramePicture shown = picture();
    return static_cast<std::int32_t>(std::count_if(shown.pixels.begin(), shown.pixels.end(),
                                                   [](FramePicture::Pixel shade) { return shade != black; }));
}

bool alike(FramePicture::Pixel a, FramePicture::Pixel b) {
    return std::abs(a.red - b.red) <= blendTolerance && std::abs(a.green - b.green) <= blendTolerance &&
           std::abs(a.blue - b.blue) <= blendTolerance;
}

void PrintTo(const FramePicture::Pixel& pixel, std::ostream* stream) {
    *stream << '(' << int{pixel.red} << ", " << int{pixel.green} << ", " << int{pixel.blue} << ')';
}

} // namespace tarnwick
