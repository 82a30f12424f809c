#include "graphics/PictureHead.h"

#include "core/DataFiles.h"
#include "core/LocationStack.h"

#include <algorithm>
#include <fstream>

namespace tarnwick {

namespace {

// The most pixels that a byte of a file can stand for.
/// 8 pixels a byte, and the best that deflate does.
constexpr std::uint64_t pngPixelsPerByte = 8 * std::uint64_t{1032};
/// One bit for each of a progressive picture's blocks of 64 pixels, and all the rest for nothing.
constexpr std::uint64_t jpegPixelsPerByte = 512;
constexpr std::uint64_t bmpPixelsPerByte = 128;  ///< Runs of 255 in two bytes; 8 a byte without runs.
constexpr std::uint64_t gifPixelsPerByte = 4096; ///< The longest entry of a dictionary of 12 bits.
constexpr std::uint64_t tgaPixelsPerByte = 128;  ///< With runs.

constexpr std::uint32_t oldBmpHeaderBytes = 12; ///< Its sizes have 16 bits.

constexpr std::size_t tgaHeaderBytes = 18;
constexpr std::uint8_t tgaRunLengthBit = 8; ///< Of the image type.

/// The next byte; 0 at the end of the file, of which the stream tells then.
std::uint8_t nextByte(std::istream& file) {
    TARNWICK_LOCATION("PictureHead::nextByte");
    const int byte = file.get();
    return byte < 0 ? std::uint8_t{0} : static_cast<std::uint8_t>(byte);
}

/// Low byte first, as in GIF files.
std::uint32_t nextWord(std::istream& file) {
    TARNWICK_LOCATION("PictureHead::nextWord");
    const std::uint32_t low = nextByte(file);
    return low | static_cast<std::uint32_t>(nextByte(file)) << 8;
}

/// High byte first, as in JPEG files.
std::uint32_t nextBigWord(std::istream& file) {
    TARNWICK_LOCATION("PictureHead::nextBigWord");
    const std::uint32_t high = nextByte(file);
    return high << 8 | nextByte(file);
}

/// Whether a segment of a JPEG file tells the picture's size.
bool isFrameHeader(std::uint8_t marker) {
    TARNWICK_LOCATION("PictureHead::isFrameHeader");
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

/// Bytes of a GIF file's table of colours, by the flags that stand before it.
std::streamoff gifTableBytes(std::uint8_t flags) {
    TARNWICK_LOCATION("PictureHead::gifTableBytes");
    return (flags & 0x80) != 0 ? std::streamoff{3} << ((flags & 7) + 1) : 0;
}

} // namespace

PictureHead::PictureHead(const std::string& path, bool tga) {
    TARNWICK_LOCATION("PictureHead::PictureHead");
    std::ifstream file = DataFiles::open(path);
    if (!file.is_open()) {
        return;
    }
    file.read(reinterpret_cast<char*>(bytes.data()), length);
    file.clear();
    file.seekg(0, std::ios::end);
    fileLength = static_cast<std::uint64_t>(file.tellg());
    file.seekg(0);
    if (tga) {
        readTga();
    } else if (startsWith("\x89PNG")) {
        readPng();
    } else if (startsWith("\xFF\xD8\xFF")) {
        readJpeg(file);
    } else if (startsWith("BM")) {
        readBmp();
    } else if (startsWith("GIF")) {
        readGif(file);
    }
}

void PictureHead::readPng() {
    TARNWICK_LOCATION("PictureHead::readPng");
    width = bigEndian(16);
    height = bigEndian(20);
    mostPixels = fileLength * pngPixelsPerByte;
}

/// The size stands in one of the segments, each of which tells its own length.
void PictureHead::readJpeg(std::istream& file) {
    TARNWICK_LOCATION("PictureHead::readJpeg");
    file.seekg(2);
    while (file && nextByte(file) == 0xFF) {
        std::uint8_t marker = nextByte(file);
        while (file && marker == 0xFF) {
            marker = nextByte(file);
        }
        const std::uint32_t segment = nextBigWord(file);
        if (isFrameHeader(marker)) {
            nextByte(file); // bits of a sample
            height = nextBigWord(file);
            width = nextBigWord(file);
            mostPixels = fileLength * jpegPixelsPerByte;
            return;
        }
        file.seekg(static_cast<std::streamoff>(segment) - 2, std::ios::cur);
    }
}

void PictureHead::readBmp() {
    TARNWICK_LOCATION("PictureHead::readBmp");
    if (littleEndian(14, 4) == oldBmpHeaderBytes) {
        width = littleEndian(18, 2);
        height = littleEndian(20, 2);
    } else {
        const std::uint32_t signedHeight = littleEndian(22, 4); // below 0: top row first
        width = littleEndian(18, 4);
        height = std::min(signedHeight, 0u - signedHeight);
    }
    mostPixels = fileLength * bmpPixelsPerByte;
}

/// A reader takes memory for the first picture, whose size need not be the screen's.
void PictureHead::readGif(std::istream& file) {
    TARNWICK_LOCATION("PictureHead::readGif");
    file.seekg(13 + gifTableBytes(bytes[10]));
    std::uint8_t block = nextByte(file);
    while (file && block == '!') { // an extension: its kind, and parts up to one without bytes
        nextByte(file);
        for (std::uint8_t part = nextByte(file); file && part != 0; part = nextByte(file)) {
            file.seekg(part, std::ios::cur);
        }
        block = nextByte(file);
    }
    if (block != ',') {
        return; // no picture in it
    }
    file.seekg(4, std::ios::cur); // its place on the screen
    width = nextWord(file);
    height = nextWord(file);
    mostPixels = fileLength * gifPixelsPerByte;
}

void PictureHead::readTga() {
    TARNWICK_LOCATION("PictureHead::readTga");
    width = littleEndian(12, 2);
    height = littleEndian(14, 2);
    const bool runs = (bytes[2] & tgaRunLengthBit) != 0;
    const std::uint64_t pixelBytes = std::max((bytes[16] + 7u) / 8u, 1u);
    const std::uint64_t dataBytes =
        fileLength - std::min<std::uint64_t>(fileLength, tgaHeaderBytes + bytes[0]);
    mostPixels = runs ? dataBytes * tgaPixelsPerByte : dataBytes / pixelBytes;
}

bool PictureHead::plausible() const {
    TARNWICK_LOCATION("PictureHead::plausible");
    const std::uint64_t pixels = width * height; // of 32 bits each
    return pixels > 0 && pixels <= std::min(mostPixels, largestPicture);
}

bool PictureHead::startsWith(std::string_view mark) const {
    TARNWICK_LOCATION("PictureHead::startsWith");
    return std::equal(mark.begin(), mark.end(), bytes.begin(), [](char wanted, std::uint8_t found) {
        return static_cast<std::uint8_t>(wanted) == found;
    });
}

std::uint32_t PictureHead::littleEndian(std::size_t at, std::size_t count) const {
    TARNWICK_LOCATION("PictureHead::littleEndian");
    std::uint32_t value = 0;
    for (std::size_t i = count; i > 0; --i) {
        value = value << 8 | bytes[at + i - 1];
    }
    return value;
}

std::uint32_t PictureHead::bigEndian(std::size_t at) const {
    TARNWICK_LOCATION("PictureHead::bigEndian");
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value = value << 8 | bytes[at + i];
    }
    return value;
}

} // namespace tarnwick
