#include "graphics/loadGLTexture32.h"

#include "core/LocationStack.h"
#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"

#include <GL/gl.h>
#include <GL/glext.h>
#include <GL/glu.h>

#include <algorithm>
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
    std::vector<std::uint8_t> halfPixels;
    PixelView picture{pixels, static_cast<GLsizei>(width), static_cast<GLsizei>(height)};
    if (level == GLTextureManager::coarsestDetailLevel) {
        picture = halved(picture, halfPixels);
    }
    gluBuild2DMipmaps(GL_TEXTURE_2D, level == 0 ? GL_RGBA : coarseFormat, picture.width, picture.height,
                      GL_BGRA, GL_UNSIGNED_BYTE, picture.pixels);
    glPopClientAttrib();
}

std::uint32_t loadGLTexture32::largestSize() {
    TARNWICK_LOCATION("loadGLTexture32::largestSize");
    GLint size = 0; // stays as it is without a context
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &size);
    return static_cast<std::uint32_t>(size);
}

} // namespace tarnwick
