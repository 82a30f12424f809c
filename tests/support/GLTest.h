#pragma once

#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <GL/gl.h>

#include <cstdint>
#include <ostream>
#include <vector>

namespace tarnwick {

/// One pixel of the back buffer.
struct PixelColour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend bool operator==(const PixelColour&, const PixelColour&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const PixelColour& colour) {
        return stream << '(' << int{colour.red} << ", " << int{colour.green} << ", " << int{colour.blue}
                      << ')';
    }
};

/// A test with a real GL context, off screen and `side` by `side` pixels large, in an empty data folder.
class GLTest : public ModuleTest {
protected:
    static constexpr std::int32_t side = 64;
    static constexpr PixelColour black{0, 0, 0};
    static constexpr PixelColour white{255, 255, 255};

    GLTest() {
        GLWindow::createOffscreen(side, side);
        GLTextureManager::initialise();
        GLWindow::clearScreen(0.0f, 0.0f, 0.0f);
        GLWindow::glBeginDraw2d();
    }
    ~GLTest() override {
        GLWindow::setEventListener(nullptr); // a test's own is gone by now
        GLTextureManager::shutdown();
        GLWindow::close();
    }

    /// The pixel in client coordinates, y downwards.
    static PixelColour pixelAt(std::int32_t x, std::int32_t y) {
        std::uint8_t bytes[4] = {};
        glReadBuffer(GL_BACK);
        glReadPixels(x, GLWindow::getClientHeight() - 1 - y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, bytes);
        return {bytes[0], bytes[1], bytes[2]};
    }

    /// Every pixel of the back buffer, three bytes each, bottom row first.
    static std::vector<std::uint8_t> allPixels() {
        const std::int32_t width = GLWindow::getClientWidth();
        const std::int32_t height = GLWindow::getClientHeight();
        std::vector<std::uint8_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                                         3);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glReadBuffer(GL_BACK);
        glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
        glPixelStorei(GL_PACK_ALIGNMENT, 4);
        return pixels;
    }

    DataFolder data;
};

} // namespace tarnwick
