#pragma once

#include <cstdint>
#include <string>
#include <thread>

namespace tarnwick {

/// One cached file of `GLTextureManager`: what the handles share.
class GLTextureInternal {
public:
    std::uint32_t width = 0; ///< Pixels of the source picture; 16 for the default image.
    std::uint32_t height = 0;
    std::uint32_t bytesPerPixel = 0; ///< 1 to 4, by source format; 0 for a depth that is not converted.
    std::uint32_t textureId = 0; ///< GL texture name. Kept for life, also when the GL context is replaced.
    bool hasAlpha = false;
    bool loaded = false; ///< False if the default image stands in for a file that could not be read.
    std::uint32_t referenceCount = 0; ///< Handles.
    std::string name;                 ///< File name in upper case.
    std::thread::id ownerThread;      ///< The thread that made the entry: only it counts and reloads.

    /// An entry of the calling thread, with nothing in it yet.
    GLTextureInternal(const std::string& fileName, std::uint32_t glName);

    /// Reads the file and fills the GL texture, or puts the default image there. Without a GL context on the
    /// calling thread no file is read: nothing could show it, and the default image stands in.
    void load();
    /// `load` on the owner thread; nothing on any other.
    void reload();

private:
    /// A checkerboard of 16 by 16 pixels, opaque white and black.
    void defaultImage();
    bool loadTga(const std::string& path);
    bool loadOther(const std::string& path);
};

} // namespace tarnwick
