#include "audio/WavFile.h"

#include "core/LocationStack.h"

#include <cstring>

namespace tarnwick {

namespace {

constexpr std::size_t tagSize = 4;
constexpr std::size_t sizeFieldSize = 4;
constexpr std::size_t formatSize = 16; ///< Bytes of the format that are known; a file may hold more.

/// Walks through the bytes of a file. A step past the end is refused and leaves the place.
struct ByteWalk {
    ByteWalk(const std::uint8_t* bytes, std::size_t size)
        : place(bytes)
        , left(size) {
        TARNWICK_LOCATION("ByteWalk::ByteWalk");
    }

    bool skip(std::size_t count) {
        TARNWICK_LOCATION("ByteWalk::skip");
        if (count > left) {
            return false;
        }
        place += count;
        left -= count;
        return true;
    }

    bool startsWith(const char* tag) const {
        TARNWICK_LOCATION("ByteWalk::startsWith");
        return left >= tagSize && std::memcmp(place, tag, tagSize) == 0;
    }

    /// The number of `count` bytes at `offset`, smallest first. Only for bytes that are there.
    std::uint32_t number(std::size_t offset, std::size_t count) const {
        TARNWICK_LOCATION("ByteWalk::number");
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < count; ++i) {
            value |= std::uint32_t{place[offset + i]} << (8 * i);
        }
        return value;
    }

    const std::uint8_t* place;
    std::size_t left; ///< Bytes from the place to the end.
};

std::uint16_t shortNumber(const ByteWalk& walk, std::size_t offset) {
    TARNWICK_LOCATION("WavFile::shortNumber");
    return static_cast<std::uint16_t>(walk.number(offset, 2));
}

/// From the start of the file to the first chunk behind the format.
bool readFormat(ByteWalk& walk, WavFile& wav) {
    TARNWICK_LOCATION("WavFile::readFormat");
    if (!walk.startsWith("RIFF") || !walk.skip(tagSize + sizeFieldSize) || !walk.startsWith("WAVE") ||
        !walk.skip(tagSize) || !walk.startsWith("fmt ") || !walk.skip(tagSize) ||
        walk.left < sizeFieldSize + formatSize) {
        return false;
    }
    const std::uint32_t chunkSize = walk.number(0, sizeFieldSize);
    walk.skip(sizeFieldSize);
    const std::uint16_t formatTag = shortNumber(walk, 0);
    wav.channels = shortNumber(walk, 2);
    wav.sampleRate = walk.number(4, 4);
    wav.byteRate = walk.number(8, 4);
    wav.blockAlign = shortNumber(walk, 12);
    wav.bitsPerSample = shortNumber(walk, 14);
    walk.skip(formatSize);
    return formatTag == WavFile::pcm && (wav.channels == 1 || wav.channels == 2) && wav.sampleRate != 0 &&
           wav.byteRate != 0 && wav.blockAlign != 0 && wav.bitsPerSample != 0 &&
           walk.skip(chunkSize > formatSize ? chunkSize - formatSize : 0);
}

} // namespace

bool WavFile::read(const std::uint8_t* bytes, std::size_t size, WavFile& wav) {
    TARNWICK_LOCATION("WavFile::read");
    ByteWalk walk(bytes, size);
    if (!readFormat(walk, wav)) {
        return false;
    }
    while (walk.left >= tagSize + sizeFieldSize) {
        const bool isData = walk.startsWith("data");
        const std::uint32_t chunkSize = walk.number(tagSize, sizeFieldSize);
        walk.skip(tagSize + sizeFieldSize);
        if (isData) {
            if (chunkSize == 0 || chunkSize > walk.left) {
                return false;
            }
            wav.samples = {walk.place, chunkSize};
            return true;
        }
        if (!walk.skip(chunkSize)) {
            return false;
        }
    }
    return false;
}

} // namespace tarnwick
