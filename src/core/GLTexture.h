#pragma once

#include <compare>
#include <cstdint>
#include <string>

namespace tarnwick {

/// A picture: a value handle on a shared, counted entry of a cache, `GLTextureManager` in the game. Copying
/// takes a new reference. The handle itself knows no GL, so that what stands in a level can have pictures
/// without one; in a program without a cache it has its name and a size, and nothing to show.
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

    /// Where the pictures are kept.
    struct Cache {
        /// Takes one reference to the picture of `handle.name` and fills the handle.
        void (*take)(GLTexture& handle) = nullptr;
        /// Gives one back.
        void (*giveBack)(const std::string& fileName) = nullptr;
    };
    /// Called once, before the first handle is made.
    static void setCache(Cache pictures) { cache = pictures; }

private:
    static Cache cache; ///< None until it is set.

    void takeReference();
    static void giveBack(const std::string& fileName);
};

} // namespace tarnwick
