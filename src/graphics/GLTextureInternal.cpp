#include "graphics/GLTextureInternal.h"

#include "core/DataFiles.h"
#include "core/LocationStack.h"
#include "core/Strings.h"
#include "graphics/GLTga32Loader.h"
#include "graphics/GLWindow.h"
#include "graphics/SurfacePixels.h"
#include "graphics/loadGLTexture32.h"

#include <SDL_image.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <memory>

namespace tarnwick {

namespace {

constexpr std::uint32_t defaultImageSide = 16; ///< Pixels.
constexpr std::size_t pictureHeadBytes = 26;   ///< As many as tell the size of the formats looked at.

using PictureHead = std::array<std::uint8_t, pictureHeadBytes>;

struct FreeSurface {
    void operator()(SDL_Surface* surface) const {
        TARNWICK_LOCATION("FreeSurface::operator()");
        SDL_FreeSurface(surface);
    }
};

struct PictureSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

std::uint32_t littleEndian(const PictureHead& head, std::size_t at, std::size_t bytes) {
    TARNWICK_LOCATION("GLTextureInternal::littleEndian");
    std::uint32_t value = 0;
    for (std::size_t i = bytes; i > 0; --i) {
        value = value << 8 | head[at + i - 1];
    }
    return value;
}

std::uint32_t bigEndian(const PictureHead& head, std::size_t at) {
    TARNWICK_LOCATION("GLTextureInternal::bigEndian");
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value = value << 8 | head[at + i];
    }
    return value;
}

/// The size that a picture's head promises; 0 by 0 for a format whose head is not looked at. A head that
/// promises more than the GL can take is refused before SDL_image takes memory for it.
PictureSize promisedSize(const std::string& path, bool tga) {
    TARNWICK_LOCATION("GLTextureInternal::promisedSize");
    PictureHead head{};
    std::ifstream file = DataFiles::open(path);
    file.read(reinterpret_cast<char*>(head.data()), pictureHeadBytes);
    if (head[0] == 0x89 && head[1] == 'P' && head[2] == 'N' && head[3] == 'G') {
        return {bigEndian(head, 16), bigEndian(head, 20)};
    }
    if (head[0] == 'B' && head[1] == 'M') {
        const auto height = static_cast<std::int32_t>(littleEndian(head, 22, 4)); // below 0: top row first
        return {littleEndian(head, 18, 4),
                height < 0 ? 0u - static_cast<std::uint32_t>(height) : static_cast<std::uint32_t>(height)};
    }
    if (head[0] == 'G' && head[1] == 'I' && head[2] == 'F') {
        return {littleEndian(head, 6, 2), littleEndian(head, 8, 2)};
    }
    return tga ? PictureSize{littleEndian(head, 12, 2), littleEndian(head, 14, 2)} : PictureSize{};
}

bool tooLarge(const PictureSize& size) {
    TARNWICK_LOCATION("GLTextureInternal::tooLarge");
    const std::uint32_t largest = loadGLTexture32::largestSize();
    return size.width > largest || size.height > largest;
}

} // namespace

GLTextureInternal::GLTextureInternal(const std::string& fileName, std::uint32_t glName)
    : textureId(glName)
    , name(fileName)
    , ownerThread(std::this_thread::get_id()) {
    TARNWICK_LOCATION("GLTextureInternal::GLTextureInternal");
}

void GLTextureInternal::load() {
    TARNWICK_LOCATION("GLTextureInternal::load");
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
    if (tooLarge(promisedSize(path, tga)) || !loadOther(path)) {
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
    const PictureSize size{static_cast<std::uint32_t>(surface->w), static_cast<std::uint32_t>(surface->h)};
    if (tooLarge(size)) {
        return false;
    }
    const SurfacePixels converted(*surface);
    loadGLTexture32::load(textureId, converted.pixels.data(), size.width, size.height);
    width = size.width;
    height = size.height;
    bytesPerPixel = converted.bytesPerPixel;
    hasAlpha = converted.hasAlpha;
    return true;
}

void GLTextureInternal::defaultImage() {
    TARNWICK_LOCATION("GLTextureInternal::defaultImage");
    std::array<std::uint8_t, defaultImageSide * defaultImageSide * 4> pixels{};
    for (std::uint32_t i = 0; i < defaultImageSide * defaultImageSide; ++i) {
        const bool white = (i % defaultImageSide + i / defaultImageSide) % 2 == 0;
        const std::uint8_t shade = white ? 255 : 0;
        const std::array<std::uint8_t, 4> pixel = {shade, shade, shade, 255};
        std::copy(pixel.begin(), pixel.end(), pixels.begin() + i * 4);
    }
    loaded = false;
    width = defaultImageSide;
    height = defaultImageSide;
    bytesPerPixel = 4;
    hasAlpha = false;
    loadGLTexture32::load(textureId, pixels.data(), width, height);
}

} // namespace tarnwick
