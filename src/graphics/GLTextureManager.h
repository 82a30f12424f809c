#pragma once

#include "graphics/GLTextureInternal.h"

#include <cstdint>
#include <list>
#include <map>
#include <string>

namespace tarnwick {

/// The cache of all pictures: one GL texture a file name, counted by its handles (`GLTexture`).
///
/// Names are compared without regard to case, and a path is part of the name: `gfx\a.tga` and `GFX\A.TGA` are
/// one texture, `gfx/a.tga` is another. A file that cannot be read is no error: a checkerboard stands in, and
/// `getTextureList` marks it. Every texture can be rebuilt at any time, which is what a change of the detail
/// level or a new GL context needs.
///
/// An entry belongs to the thread that made it; on any other thread counting and reloading it do nothing.
///
/// Without a GL context on the calling thread (the headless runner, the tools) entries are made and counted
/// as ever, but no file is read: each shows the checkerboard's 16 by 16 pixels until `reloadAllTextures` runs
/// with a context.
class GLTextureManager {
public:
    GLTextureManager() = delete;

    static constexpr std::uint32_t coarsestDetailLevel = 2;

    /// Drops all entries, goes back to full detail and no anisotropy, and asks the GL what it can do. Needs
    /// the window.
    static void initialise();
    /// Deletes every texture and every entry. Handles that outlive it free nothing.
    static void shutdown();

    /// The entry for `fileName`, made and loaded if there is none yet; takes one reference.
    static const GLTextureInternal& loadTexture(const std::string& fileName);
    /// Gives one reference back; the last one deletes the texture. An unknown name does nothing.
    static void freeTexture(const std::string& fileName);
    /// Loads every entry of the calling thread anew, under its present GL name.
    static void reloadAllTextures();

    /// 0: as the file. 1: compressed where the GL can, else 4 bits a channel. 2: the same at half the size in
    /// each direction. A change reloads all textures; a level above 2 does nothing.
    static void setTextureDetailLevel(std::uint32_t level);
    static std::uint32_t getTextureDetailLevel() { return state.textureDetailLevel; }

    /// Limited to what the GL offers; 0 becomes 1. Holds for all textures at once. Does nothing where the GL
    /// has no anisotropic filtering.
    static void setAnisotropicFilteringLevel(std::uint32_t level);
    static std::uint32_t getAnisotropicFilteringLevel() { return state.anisotropy; }
    static bool anisotropicFilteringAvailable() { return state.anisotropyAvailable; }
    static bool compressionAvailable() { return state.compressionAvailable; }

    /// Bytes at full detail, 4 a pixel, without mipmaps.
    static std::uint32_t getTextureBytesUsed();
    /// Appends a line an entry, in the order of their names: the name, " (loading failed) " if a checkerboard
    /// stands in, and the bits a pixel of the source.
    static void getTextureList(std::list<std::string>& list);

private:
    friend class ModuleReset;

    struct State {
        std::map<std::string, GLTextureInternal> textures; ///< By upper-cased name; entries stay put.
        std::uint32_t textureDetailLevel = 0;              ///< 0, 1 or 2.
        bool compressionAvailable = false;
        bool anisotropyAvailable = false;
        std::uint32_t maxAnisotropy = 1;
        std::uint32_t anisotropy = 1; ///< At least 1.
    };
    /// Never destroyed: handles in the static lists of other modules may go after every other static object.
    static State& state;

    static bool nameInUse(std::uint32_t glName);
    static std::uint32_t newGlName();
    static void deleteAllTextures();
    static void applyCompressionHint();
};

} // namespace tarnwick
