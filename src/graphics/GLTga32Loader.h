#pragma once

#include <cstdint>
#include <string>

namespace tarnwick {

class MemoryFile;

/// Reads the game's own kind of picture, the 32-bit TGA with alpha, straight into a GL texture.
///
/// Takes image types 2 (plain) and 10 (run-length encoded) of at least 4 by 4 pixels, rows top or bottom
/// first. Everything else it refuses, and SDL_image has to try.
class GLTga32Loader {
public:
    GLTga32Loader() = delete;

    /// Fills the GL texture `textureId` with the picture of `fileName`; false if the file is not one for this
    /// loader. `width` and `height` are the picture's in pixels; 0 after a refusal.
    ///
    /// A run-length picture that ends too early is no failure: what could be decoded shows. Refused are a
    /// plain one that ends too early, one larger than `PictureHead::largestPicture`, and one that promises
    /// more pixels than the file could possibly hold.
    static bool
    load(const std::string& fileName, std::uint32_t textureId, std::uint32_t& width, std::uint32_t& height);
};

} // namespace tarnwick
