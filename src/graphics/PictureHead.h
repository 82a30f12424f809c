#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

namespace tarnwick {

/// The first bytes of a picture file: of which kind it is, and whether the file can keep what they promise.
///
/// The game takes TGA, PNG, JPEG, BMP and GIF; any other kind that a library could read is refused before it
/// is decoded. The size that a head promises is what a reader takes memory for. A head of a few bytes may
/// promise gigabytes; such a file is refused before anybody believes it.
class PictureHead {
public:
    /// Pixels of the largest picture that is read: 1 GiB. One with a side that the GL cannot take is scaled.
    static constexpr std::uint64_t largestPicture = std::uint64_t{16384} * 16384;

    /// Reads the head of the file at `path`. TGA files have no mark of their own: `tga` tells one.
    PictureHead(const std::string& path, bool tga);

    /// False if the file is no plain file, or of no kind that is taken, or if it promises nothing, more than
    /// `largestPicture`, or more pixels than a file of this length can hold.
    bool plausible() const;

private:
    static constexpr std::size_t length = 26; ///< Bytes looked at.

    std::array<std::uint8_t, length> bytes{}; ///< Zeros behind the end of a shorter file.
    std::uint64_t fileLength = 0;             ///< Bytes.
    std::uint64_t width = 0;                  ///< Pixels; 0 for a kind that is not taken.
    std::uint64_t height = 0;
    std::uint64_t mostPixels = 0; ///< That a file of this length can hold.

    bool startsWith(std::string_view mark) const;
    std::uint32_t littleEndian(std::size_t at, std::size_t count) const;
    std::uint32_t bigEndian(std::size_t at) const;
    void readTga();
    void readPng();
    void readJpeg(std::istream& file);
    void readBmp();
    void readGif(std::istream& file);
};

} // namespace tarnwick
