#include "graphics/GLTga32Loader.h"

#include "core/LocationStack.h"
#include "core/MemoryFile.h"
#include "graphics/PictureHead.h"
#include "graphics/loadGLTexture32.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

namespace tarnwick {

namespace {

constexpr std::size_t headerBytes = 18;
constexpr std::size_t bytesPerPixel = 4;
constexpr std::uint32_t smallestSide = 4; ///< Pixels.
constexpr std::uint8_t plainType = 2;
constexpr std::uint8_t runLengthType = 10;
constexpr std::uint8_t topFirstBit = 0x20;
constexpr std::size_t longestRun = 128; ///< Pixels of one run-length packet.

/// What the header tells about a picture.
struct Header {
    std::uint8_t identificationLength = 0;
    std::uint8_t colourMapType = 0;
    std::uint8_t imageType = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint8_t bitsPerPixel = 0;
    std::uint8_t descriptor = 0;
};

std::size_t imageBytes(const Header& header) {
    TARNWICK_LOCATION("GLTga32Loader::imageBytes");
    return std::size_t{header.width} * header.height * bytesPerPixel;
}

bool topFirst(const Header& header) {
    TARNWICK_LOCATION("GLTga32Loader::topFirst");
    return (header.descriptor & topFirstBit) != 0;
}

using Pixels = std::unique_ptr<std::uint8_t[]>;

/// False if the file is too short for a header.
bool readHeader(MemoryFile& file, Header& header) {
    TARNWICK_LOCATION("GLTga32Loader::readHeader");
    std::uint8_t bytes[headerBytes] = {};
    file.read(bytes, headerBytes);
    if (file.error()) {
        return false;
    }
    header.identificationLength = bytes[0];
    header.colourMapType = bytes[1];
    header.imageType = bytes[2];
    header.width = bytes[12] + 256u * bytes[13];
    header.height = bytes[14] + 256u * bytes[15];
    header.bitsPerPixel = bytes[16];
    header.descriptor = bytes[17];
    return true;
}

bool isOurs(const Header& header) {
    TARNWICK_LOCATION("GLTga32Loader::isOurs");
    return header.width >= smallestSide && header.height >= smallestSide && header.colourMapType != 1 &&
           header.bitsPerPixel == 32 && (header.descriptor & 1) == 0 &&
           (header.imageType == plainType || header.imageType == runLengthType);
}

std::size_t bytesAhead(const MemoryFile& file) {
    TARNWICK_LOCATION("GLTga32Loader::bytesAhead");
    return static_cast<std::size_t>(file.size()) - static_cast<std::size_t>(file.tell());
}

/// Zeros, so that what a file does not tell is transparent; null without memory.
Pixels newPixels(const Header& header) {
    TARNWICK_LOCATION("GLTga32Loader::newPixels");
    return Pixels(new (std::nothrow) std::uint8_t[imageBytes(header)]());
}

/// The start of the file's row number `row` in a buffer that is top row first.
std::uint8_t* rowStart(const Header& header, const Pixels& pixels, std::uint32_t row) {
    TARNWICK_LOCATION("GLTga32Loader::rowStart");
    const std::uint32_t fromTop = topFirst(header) ? row : header.height - 1 - row;
    return pixels.get() + std::size_t{fromTop} * header.width * bytesPerPixel;
}

/// Top row first: the file's bytes are the texture's.
bool loadUncompressed(const MemoryFile& file, std::uint32_t textureId, const Header& header) {
    TARNWICK_LOCATION("GLTga32Loader::loadUncompressed");
    const auto* const pixels = file.getDataAhead();
    loadGLTexture32::load(textureId, pixels, header.width, header.height);
    return true;
}

bool loadUncompressedFlipped(MemoryFile& file, std::uint32_t textureId, const Header& header) {
    TARNWICK_LOCATION("GLTga32Loader::loadUncompressedFlipped");
    const Pixels pixels = newPixels(header);
    if (pixels == nullptr) {
        return false;
    }
    for (std::uint32_t row = 0; row < header.height; ++row) {
        file.read(rowStart(header, pixels, row), header.width * bytesPerPixel);
    }
    loadGLTexture32::load(textureId, pixels.get(), header.width, header.height);
    return true;
}

/// The packets of one row. Packets are taken to end with their row: what is too much of a run is dropped, and
/// a new control byte comes first in the next row. `control` is read one ahead. Past the end of the file
/// nothing is read, and the values stay as they were.
void decodeRow(
    MemoryFile& file, std::uint8_t* row, std::uint32_t width, std::uint8_t& control, std::uint8_t* pixel) {
    TARNWICK_LOCATION("GLTga32Loader::decodeRow");
    std::uint32_t written = 0;
    while (written < width) {
        const bool run = control >= 128;
        const std::uint32_t packet = run ? control - 127u : control + 1u;
        const std::uint32_t count = std::min(packet, width - written);
        std::uint8_t* const target = row + std::size_t{written} * bytesPerPixel;
        if (run) {
            file.read(pixel, bytesPerPixel);
            for (std::uint32_t i = 0; i < count; ++i) {
                std::memcpy(target + std::size_t{i} * bytesPerPixel, pixel, bytesPerPixel);
            }
        } else {
            file.read(target, count * bytesPerPixel);
        }
        written += count;
        file.read(&control, 1);
    }
}

/// Both row orders: the buffer is top row first in either case.
bool loadCompressed(MemoryFile& file, std::uint32_t textureId, const Header& header) {
    TARNWICK_LOCATION("GLTga32Loader::loadCompressed");
    const Pixels pixels = newPixels(header);
    if (pixels == nullptr) {
        return false;
    }
    std::uint8_t control = 0;
    std::uint8_t pixel[bytesPerPixel] = {};
    file.read(&control, 1);
    for (std::uint32_t row = 0; row < header.height; ++row) {
        decodeRow(file, rowStart(header, pixels, row), header.width, control, pixel);
    }
    loadGLTexture32::load(textureId, pixels.get(), header.width, header.height);
    return true;
}

bool loadPixels(MemoryFile& file, std::uint32_t textureId, const Header& header) {
    TARNWICK_LOCATION("GLTga32Loader::loadPixels");
    if (header.imageType == runLengthType) {
        const std::size_t pixels = std::size_t{header.width} * header.height;
        return pixels <= bytesAhead(file) * longestRun && loadCompressed(file, textureId, header);
    }
    if (imageBytes(header) > bytesAhead(file)) {
        return false;
    }
    return topFirst(header) ? loadUncompressed(file, textureId, header)
                            : loadUncompressedFlipped(file, textureId, header);
}

} // namespace

bool GLTga32Loader::load(const std::string& fileName,
                         std::uint32_t textureId,
                         std::uint32_t& width,
                         std::uint32_t& height) {
    TARNWICK_LOCATION("GLTga32Loader::load");
    width = 0;
    height = 0;
    MemoryFile file(fileName);
    Header header;
    if (!file.is_open() || !readHeader(file, header) || !isOurs(header)) {
        return false;
    }
    if (std::uint64_t{header.width} * header.height > PictureHead::largestPicture) {
        return false;
    }

    file.seek(header.identificationLength, MemoryFile::fromCursor);
    if (!loadPixels(file, textureId, header)) {
        return false;
    }
    width = header.width;
    height = header.height;
    return true;
}

} // namespace tarnwick
