#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace tarnwick {

/// The first bytes of a picture file, and whether the file can keep what they promise.
///
/// The size that a head promises is what a reader takes memory for. A head of a few bytes may promise
/// gigabytes; such a file is refused before anybody believes it. Looks at PNG, BMP, GIF and TGA; any other
/// file passes.
class PictureHead {
public:
    /// Reads the head of the file at `path`. TGA files have no mark of their own: `tga` tells one.
    PictureHead(const std::string& path, bool tga);

    /// False if the picture is larger than a GL texture can be, or has more pixels than a file of this length
    /// can hold.
    bool plausible() const;

private:
    static constexpr std::size_t length = 26; ///< Bytes looked at.

    std::array<std::uint8_t, length> bytes{}; ///< Zeros behind the end of a shorter file.
    std::uint64_t fileLength = 0;             ///< Bytes.
    std::uint64_t width = 0;                  ///< Pixels; 0 for a format that is not looked at.
    std::uint64_t height = 0;
    std::uint64_t mostPixels = 0; ///< That a file of this length can hold.

    bool startsWith(const char* mark) const;
    std::uint32_t littleEndian(std::size_t at, std::size_t count) const;
    std::uint32_t bigEndian(std::size_t at) const;
    void readTga();
};

} // namespace tarnwick
