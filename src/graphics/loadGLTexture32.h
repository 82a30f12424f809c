#pragma once

#include <cstdint>

namespace tarnwick {

/// The one place where pixels become a GL texture.
class loadGLTexture32 { // NOLINT(readability-identifier-naming): the operation's own name
public:
    loadGLTexture32() = delete;

    /// Fills the GL texture `textureId` with `width` by `height` pixels, 4 bytes each (blue, green, red,
    /// alpha), top row first, and with mipmaps, at the present detail level and anisotropy. A picture larger
    /// than the GL takes is scaled down until it does. Does nothing for a size of 0 and without a GL context
    /// on the calling thread.
    static void
    load(std::uint32_t textureId, const std::uint8_t* pixels, std::uint32_t width, std::uint32_t height);
};

} // namespace tarnwick
