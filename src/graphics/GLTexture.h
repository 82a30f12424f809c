#pragma once

#include <compare>
#include <cstdint>
#include <string>

namespace tarnwick {

/// A picture: a value handle on a shared, counted entry of `GLTextureManager`. Copying takes a new reference.
///
/// A handle never fails: a file that cannot be read shows as a checkerboard of 16 by 16 pixels. It finds its
/// entry by name and holds no pointer, so it stays valid when all textures are loaded anew. `width`, `height`
/// and `hasAlpha` are those of the moment at which the reference was taken.
///
/// Texture coordinate t = 0 is the top of the picture.
class GLTexture {
public:
    std::uint32_t width = 0;     ///< Pixels, at full detail.
    std::uint32_t height = 0;    ///< Pixels, at full detail.
    std::uint32_t textureId = 0; ///< GL texture name, for `glBindTexture`.
    bool hasAlpha = false;       ///< The picture has an alpha channel or a transparent colour.
    std::string name;            ///< File name in upper case: the key of the reference.

    /// A reference to "gfx\default.tga".
    GLTexture();
    explicit GLTexture(const std::string& fileName);
    /// Null reads as an empty name, which no file has.
    explicit GLTexture(const char* fileName);
    GLTexture(const GLTexture& other);
    ~GLTexture();

    GLTexture& operator=(const GLTexture& other);
    /// Upper-cases `fileName` in place. Loads and frees nothing when the handle has that name already.
    GLTexture& operator=(std::string& fileName);
    GLTexture& operator=(const std::string& fileName);
    GLTexture& operator=(const char* fileName);

    /// Compare the GL names, the order ones as unsigned numbers.
    friend bool operator==(const GLTexture& a, const GLTexture& b) { return a.textureId == b.textureId; }
    friend std::strong_ordering operator<=>(const GLTexture& a, const GLTexture& b) {
        return a.textureId <=> b.textureId;
    }

private:
    void takeReference();
};

} // namespace tarnwick
