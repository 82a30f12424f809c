#include "graphics/GLTextureInternal.h"

#include "core/CrashReport.h"
#include "core/DataFiles.h"
#include "core/LocationStack.h"
#include "core/Strings.h"
#include "graphics/GLTga32Loader.h"
#include "graphics/GLWindow.h"
#include "graphics/PictureHead.h"
#include "graphics/SurfacePixels.h"
#include "graphics/loadGLTexture32.h"

#include <SDL_image.h>

#include <algorithm>
#include <array>
#include <memory>

namespace tarnwick {

namespace {

constexpr std::size_t defaultImageSide = 16; ///< Pixels.

struct FreeSurface {
    void operator()(SDL_Surface* surface) const {
        TARNWICK_LOCATION("FreeSurface::operator()");
        SDL_FreeSurface(surface);
    }
};

} // namespace

GLTextureInternal::GLTextureInternal(const std::string& fileName, std::uint32_t glName)
    : textureId(glName)
    , name(fileName)
    , ownerThread(std::this_thread::get_id()) {
    TARNWICK_LOCATION("GLTextureInternal::GLTextureInternal");
}

void GLTextureInternal::load() {
    TARNWICK_LOCATION("GLTextureInternal::load");
    CrashReport::endIfAsked(); // many pictures take their time, and no event is looked at meanwhile
    width = 0;
    height = 0;
    bytesPerPixel = 0;
    hasAlpha = false;
    loaded = true;
    slStringUpper(name);
    if (!GLWindow::contextCurrent()) {
        defaultImage();
        return;
    }
    const bool tga = name.ends_with(".TGA");
    const std::string path = DataFiles::find(name);
    if (tga && loadTga(path)) {
        return;
    }
    if (!PictureHead(path, tga).plausible() || !loadOther(path)) {
        defaultImage();
    }
}

void GLTextureInternal::reload() {
    TARNWICK_LOCATION("GLTextureInternal::reload");
    if (ownerThread == std::this_thread::get_id()) {
        load();
    }
}

bool GLTextureInternal::loadTga(const std::string& path) {
    TARNWICK_LOCATION("GLTextureInternal::loadTga");
    if (!GLTga32Loader::load(path, textureId, width, height)) {
        return false;
    }
    bytesPerPixel = 4;
    hasAlpha = true;
    return true;
}

bool GLTextureInternal::loadOther(const std::string& path) {
    TARNWICK_LOCATION("GLTextureInternal::loadOther");
    const std::unique_ptr<SDL_Surface, FreeSurface> surface(IMG_Load(path.c_str()));
    if (surface == nullptr || surface->w < 1 || surface->h < 1) {
        return false;
    }
    const auto surfaceWidth = static_cast<std::uint32_t>(surface->w);
    const auto surfaceHeight = static_cast<std::uint32_t>(surface->h);
    const SurfacePixels converted(*surface);
    loadGLTexture32::load(textureId, converted.pixels.data(), surfaceWidth, surfaceHeight);
    width = surfaceWidth;
    height = surfaceHeight;
    bytesPerPixel = converted.bytesPerPixel;
    hasAlpha = converted.hasAlpha;
    return true;
}

void GLTextureInternal::defaultImage() {
    TARNWICK_LOCATION("GLTextureInternal::defaultImage");
    std::array<std::uint8_t, defaultImageSide * defaultImageSide * 4> pixels{};
    for (std::size_t i = 0; i < defaultImageSide * defaultImageSide; ++i) {
        const bool white = (i % defaultImageSide + i / defaultImageSide) % 2 == 0;
        const std::uint8_t shade = white ? 255 : 0;
        const std::array<std::uint8_t, 4> pixel = {shade, shade, shade, 255};
        std::copy(pixel.begin(), pixel.end(), pixels.begin() + static_cast<std::ptrdiff_t>(i * 4));
    }
    loaded = false;
    width = defaultImageSide;
    height = defaultImageSide;
    bytesPerPixel = 4;
    hasAlpha = false;
    loadGLTexture32::load(textureId, pixels.data(), width, height);
}

} // namespace tarnwick
