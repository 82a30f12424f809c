#include "graphics/FramePicture.h"

#include "core/LocationStack.h"
#include "graphics/GLWindow.h"

#include <GL/gl.h>
#include <SDL_image.h>

#include <algorithm>
#include <cstring>
#include <memory>

namespace tarnwick {

namespace {

constexpr int bitsPerPixel = 24;

/// An SDL surface, freed at the end of its life.
struct FreeSurface {
    void operator()(SDL_Surface* surface) const {
        TARNWICK_LOCATION("FreeSurface::operator()");
        SDL_FreeSurface(surface);
    }
};
using Surface = std::unique_ptr<SDL_Surface, FreeSurface>;

} // namespace

FramePicture FramePicture::ofBackBuffer() {
    TARNWICK_LOCATION("FramePicture::ofBackBuffer");
    FramePicture picture;
    picture.width = GLWindow::getClientWidth();
    picture.height = GLWindow::getClientHeight();
    const auto rowLength = static_cast<std::size_t>(picture.width);
    picture.pixels.resize(rowLength * static_cast<std::size_t>(picture.height));
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadBuffer(GL_BACK);
    glReadPixels(0, 0, picture.width, picture.height, GL_RGB, GL_UNSIGNED_BYTE, picture.pixels.data());
    glPopClientAttrib();
    for (auto top = picture.pixels.begin(), bottom = picture.pixels.end(); // the GL's first row is the lowest
         bottom - top >= 2 * picture.width; top += picture.width) {
        bottom -= picture.width;
        std::swap_ranges(top, top + picture.width, bottom);
    }
    return picture;
}

bool FramePicture::savePng(const std::filesystem::path& file) const {
    TARNWICK_LOCATION("FramePicture::savePng");
    const Surface surface(
        SDL_CreateRGBSurfaceWithFormat(0, width, height, bitsPerPixel, SDL_PIXELFORMAT_RGB24));
    if (surface == nullptr) {
        return false;
    }
    for (std::int32_t y = 0; y < height; ++y) {
        std::memcpy(static_cast<std::uint8_t*>(surface->pixels) + std::ptrdiff_t{y} * surface->pitch,
                    &at(0, y), static_cast<std::size_t>(width) * sizeof(Pixel));
    }
    return IMG_SavePNG(surface.get(), file.c_str()) == 0;
}

FramePicture FramePicture::load(const std::filesystem::path& file) {
    TARNWICK_LOCATION("FramePicture::load");
    const Surface read(IMG_Load(file.c_str()));
    if (read == nullptr) {
        return {};
    }
    const Surface surface(SDL_ConvertSurfaceFormat(read.get(), SDL_PIXELFORMAT_RGB24, 0));
    if (surface == nullptr) {
        return {};
    }
    FramePicture picture;
    picture.width = surface->w;
    picture.height = surface->h;
    picture.pixels.resize(static_cast<std::size_t>(surface->w) * static_cast<std::size_t>(surface->h));
    for (std::int32_t y = 0; y < picture.height; ++y) {
        std::memcpy(picture.pixels.data() + std::ptrdiff_t{y} * picture.width,
                    static_cast<const std::uint8_t*>(surface->pixels) + std::ptrdiff_t{y} * surface->pitch,
                    static_cast<std::size_t>(picture.width) * sizeof(Pixel));
    }
    return picture;
}

} // namespace tarnwick
