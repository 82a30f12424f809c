#include "graphics/PictureHead.h"

#include "core/DataFiles.h"
#include "core/LocationStack.h"
#include "graphics/loadGLTexture32.h"

#include <algorithm>
#include <cstring>
#include <fstream>

namespace tarnwick {

namespace {

// The most pixels that a byte of a file can stand for.
/// 8 pixels a byte, and the best that deflate does.
constexpr std::uint64_t pngPixelsPerByte = 8 * std::uint64_t{1032};
constexpr std::uint64_t bmpPixelsPerByte = 128;  ///< Runs of 255 in two bytes; 8 a byte without runs.
constexpr std::uint64_t gifPixelsPerByte = 4096; ///< The longest entry of a dictionary of 12 bits.
constexpr std::uint64_t tgaPixelsPerByte = 128;  ///< With runs.

constexpr std::size_t tgaHeaderBytes = 18;
constexpr std::uint8_t tgaRunLengthBit = 8; ///< Of the image type.

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
    if (startsWith("\x89PNG")) {
        width = bigEndian(16);
        height = bigEndian(20);
        mostPixels = fileLength * pngPixelsPerByte;
    } else if (startsWith("BM")) {
        const std::uint32_t signedHeight = littleEndian(22, 4); // below 0: top row first
        width = littleEndian(18, 4);
        height = std::min(signedHeight, 0u - signedHeight);
        mostPixels = fileLength * bmpPixelsPerByte;
    } else if (startsWith("GIF")) {
        width = littleEndian(6, 2);
        height = littleEndian(8, 2);
        mostPixels = fileLength * gifPixelsPerByte;
    } else if (tga) {
        readTga();
    }
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
    return std::max(width, height) <= loadGLTexture32::largestSize() && width * height <= mostPixels;
}

bool PictureHead::startsWith(const char* mark) const {
    TARNWICK_LOCATION("PictureHead::startsWith");
    return std::memcmp(bytes.data(), mark, std::strlen(mark)) == 0;
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
