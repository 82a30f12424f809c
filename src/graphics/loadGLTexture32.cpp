#include "graphics/loadGLTexture32.h"

#include "core/LocationStack.h"
#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"

#include <GL/gl.h>
#include <GL/glext.h>
#include <GL/glu.h>

#include <algorithm>
#include <array>
#include <vector>

namespace tarnwick {

namespace {

/// A picture whose pixels somebody else owns.
struct PixelView {
    const std::uint8_t* pixels;
    GLsizei width;
    GLsizei height;
};

/// The picture at half its size in each direction, at least 1 by 1, in `halfPixels`.
PixelView halved(const PixelView& picture, std::vector<std::uint8_t>& halfPixels) {
    TARNWICK_LOCATION("loadGLTexture32::halved");
    const GLsizei width = std::max(picture.width >> 1, 1);
    const GLsizei height = std::max(picture.height >> 1, 1);
    halfPixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
    gluScaleImage(GL_BGRA, picture.width, picture.height, GL_UNSIGNED_BYTE, picture.pixels, width, height,
                  GL_UNSIGNED_BYTE, halfPixels.data());
    return {halfPixels.data(), width, height};
}

/// Pixels in each direction that the GL takes.
GLsizei largestSide() {
    TARNWICK_LOCATION("loadGLTexture32::largestSide");
    GLint size = 1;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &size);
    return std::max(size, 1);
}

/// The mean of the pixels from `left`, `top` on, `across` by `down` or as far as the picture goes.
std::array<std::uint8_t, 4>
meanOf(const PixelView& picture, GLsizei left, GLsizei top, GLsizei across, GLsizei down) {
    TARNWICK_LOCATION("loadGLTexture32::meanOf");
    const GLsizei right = std::min(left + across, picture.width);
    const GLsizei bottom = std::min(top + down, picture.height);
    std::array<std::uint32_t, 4> sums{};
    for (GLsizei y = top; y < bottom; ++y) {
        const std::uint8_t* pixel =
            picture.pixels + (static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                              static_cast<std::size_t>(left)) *
                                 4;
        for (GLsizei x = left; x < right; ++x) {
            for (std::uint32_t& sum : sums) {
                sum += *pixel++;
            }
        }
    }
    const auto count = static_cast<std::uint32_t>((right - left) * (bottom - top));
    std::array<std::uint8_t, 4> mean{};
    std::transform(sums.begin(), sums.end(), mean.begin(),
                   [&](std::uint32_t sum) { return static_cast<std::uint8_t>((sum + count / 2) / count); });
    return mean;
}

/// The picture with each side divided by the least whole number that makes the GL take it, in `fewerPixels`.
/// Not by GLU, which darkens pictures as large as these.
PixelView fitted(const PixelView& picture, std::vector<std::uint8_t>& fewerPixels) {
    TARNWICK_LOCATION("loadGLTexture32::fitted");
    const GLsizei largest = largestSide();
    const GLsizei across = (picture.width - 1) / largest + 1;
    const GLsizei down = (picture.height - 1) / largest + 1;
    if (across == 1 && down == 1) {
        return picture;
    }
    const GLsizei width = (picture.width - 1) / across + 1;
    const GLsizei height = (picture.height - 1) / down + 1;
    fewerPixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
    for (GLsizei y = 0; y < height; ++y) {
        for (GLsizei x = 0; x < width; ++x) {
            const std::array<std::uint8_t, 4> pixel = meanOf(picture, x * across, y * down, across, down);
            fewerPixels.insert(fewerPixels.end(), pixel.begin(), pixel.end());
        }
    }
    return {fewerPixels.data(), width, height};
}

} // namespace

void loadGLTexture32::load(std::uint32_t textureId,
                           const std::uint8_t* pixels,
                           std::uint32_t width,
                           std::uint32_t height) {
    TARNWICK_LOCATION("loadGLTexture32::load");
    if (width == 0 || height == 0 || !GLWindow::contextCurrent()) { // GLU crashes without a context
        return;
    }
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_PACK_ALIGNMENT, 4); // `gluScaleImage` packs what it makes
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    glBindTexture(GL_TEXTURE_2D, textureId);
    if (GLTextureManager::anisotropicFilteringAvailable()) {
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_ANISOTROPY_EXT,
                        static_cast<GLint>(GLTextureManager::getAnisotropicFilteringLevel()));
    }
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);

    const std::uint32_t level = GLTextureManager::getTextureDetailLevel();
    const GLint coarseFormat = GLTextureManager::compressionAvailable() ? GL_COMPRESSED_RGBA_ARB : GL_RGBA4;
    std::vector<std::uint8_t> fewerPixels;
    std::vector<std::uint8_t> halfPixels;
    PixelView picture =
        fitted({pixels, static_cast<GLsizei>(width), static_cast<GLsizei>(height)}, fewerPixels);
    if (level == GLTextureManager::coarsestDetailLevel) {
        picture = halved(picture, halfPixels);
    }
    gluBuild2DMipmaps(GL_TEXTURE_2D, level == 0 ? GL_RGBA : coarseFormat, picture.width, picture.height,
                      GL_BGRA, GL_UNSIGNED_BYTE, picture.pixels);
    glPopClientAttrib();
}

} // namespace tarnwick
