#include "level/LevelFile.h"

#include "core/LocationStack.h"
#include "level/SurfaceTypeManager.h"

#include <algorithm>
#include <array>
#include <bit>
#include <istream>
#include <limits>

namespace tarnwick {

namespace {

constexpr const char* unableToRead = "Unable to read file";

constexpr std::uint64_t smallestPolygon = 24;     ///< Bytes: no name, no points.
constexpr std::uint64_t smallestObject = 21;      ///< Bytes: no name.
constexpr std::uint64_t forceSize = 24;           ///< Bytes.
constexpr std::uint64_t moverSize = 24;           ///< Bytes.
constexpr std::uint64_t triggerSize = 44;         ///< Bytes.
constexpr std::uint64_t smallestSoundSource = 21; ///< Bytes: no name.
constexpr std::uint64_t smallestEmitter = 24;     ///< Bytes: no name.
constexpr std::uint64_t pointSize = 8;            ///< Bytes.

/// Reads the values of a level file one after the other. A read that fails or meets the end of the file
/// throws `unableToRead`.
class LevelFileStream {
public:
    explicit LevelFileStream(std::istream& stream)
        : file(stream)
        , bytesLeft(countBytesLeft(stream)) {
        TARNWICK_LOCATION("LevelFileStream::LevelFileStream");
    }

    std::uint8_t readU8() {
        TARNWICK_LOCATION("LevelFileStream::readU8");
        std::array<char, 1> bytes{};
        readBytes(bytes.data(), bytes.size());
        return static_cast<std::uint8_t>(bytes[0]);
    }

    std::uint32_t readU32() {
        TARNWICK_LOCATION("LevelFileStream::readU32");
        std::array<char, 4> bytes{};
        readBytes(bytes.data(), bytes.size());
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            value |= std::uint32_t{static_cast<std::uint8_t>(bytes[i])} << (8 * i);
        }
        return value;
    }

    std::int32_t readI32() {
        TARNWICK_LOCATION("LevelFileStream::readI32");
        return static_cast<std::int32_t>(readU32());
    }

    float readF32() {
        TARNWICK_LOCATION("LevelFileStream::readF32");
        return std::bit_cast<float>(readU32());
    }

    Vector2 readVector() {
        TARNWICK_LOCATION("LevelFileStream::readVector");
        const float x = readF32();
        return {x, readF32()};
    }

    LevelFile::Point readPoint() {
        TARNWICK_LOCATION("LevelFileStream::readPoint");
        const std::int32_t x = readI32();
        return {x, readI32()};
    }

    /// Reads a number and refuses one above `largest` with `reason`.
    std::uint32_t readLimited(std::uint32_t largest, const char* reason) {
        TARNWICK_LOCATION("LevelFileStream::readLimited");
        const std::uint32_t value = readU32();
        if (value > largest) {
            throw reason;
        }
        return value;
    }

    /// Reads a length-prefixed name.
    std::string readName(std::uint32_t longest, const char* reason) {
        TARNWICK_LOCATION("LevelFileStream::readName");
        const std::uint32_t length = readLimited(longest, reason);
        requireBytes(length);
        std::string name(length, '\0');
        readBytes(name.data(), length);
        return name;
    }

    /// Fails unless the rest of the file holds `bytes`: called before memory is taken for them.
    void requireBytes(std::uint64_t bytes) const {
        TARNWICK_LOCATION("LevelFileStream::requireBytes");
        if (bytes > bytesLeft) {
            throw unableToRead;
        }
    }

    /// How many of `count` records of at least `recordSize` bytes the rest of the file can hold: for them
    /// memory is taken ahead. A count above this is no fault yet; the first bad record, or the end of the
    /// file, is.
    std::size_t recordsThatFit(std::uint32_t count, std::uint64_t recordSize) const {
        TARNWICK_LOCATION("LevelFileStream::recordsThatFit");
        return static_cast<std::size_t>(std::min<std::uint64_t>(count, bytesLeft / recordSize));
    }

private:
    std::istream& file;
    std::uint64_t bytesLeft; ///< Of the file; no limit for a stream that cannot seek.

    static std::uint64_t countBytesLeft(std::istream& stream) {
        TARNWICK_LOCATION("LevelFileStream::countBytesLeft");
        const std::istream::pos_type here = stream.tellg();
        stream.seekg(0, std::ios::end);
        const std::istream::pos_type end = stream.tellg();
        if (here == std::istream::pos_type(-1) || end == std::istream::pos_type(-1)) {
            stream.clear(); // a pipe, for one: reading goes on where it stands
            return std::numeric_limits<std::uint64_t>::max();
        }
        stream.seekg(here);
        return static_cast<std::uint64_t>(end - here);
    }

    void readBytes(char* bytes, std::size_t count) {
        TARNWICK_LOCATION("LevelFileStream::readBytes");
        file.read(bytes, static_cast<std::streamsize>(count));
        if (file.eof() || file.fail()) {
            throw unableToRead;
        }
        bytesLeft -= std::min<std::uint64_t>(bytesLeft, count);
    }
};

void readHeader(LevelFileStream& file, LevelFile::Reader& reader) {
    TARNWICK_LOCATION("LevelFile::readHeader");
    if (file.readU32() != LevelFile::magic) {
        throw "Not a RVL level file.";
    }
    const std::uint32_t version = file.readU32();
    if (version != LevelFile::version) {
        reader.wrongVersion(version);
        throw "Invalid level file version.";
    }
}

LevelFile::PolygonRecord readPolygon(LevelFileStream& file) {
    TARNWICK_LOCATION("LevelFile::readPolygon");
    LevelFile::PolygonRecord polygon;
    polygon.polygonId = file.readI32();
    polygon.textureName = file.readName(LevelFile::longestName, "\nPolygon texture name too long.");
    polygon.surfaceType = file.readI32();
    if (!SurfaceTypeManager::validSurfaceType(polygon.surfaceType)) {
        throw "Invalid surface type encountered.";
    }
    polygon.polygonMode = file.readI32();
    polygon.layer = file.readLimited(LevelFile::highestLayer, "Invalid polygon layer.");
    const std::uint32_t pointCount = file.readLimited(LevelFile::largestCount, "Too many polygon points.");
    file.requireBytes(pointCount * pointSize);
    polygon.points.reserve(pointCount);
    for (std::uint32_t i = 0; i < pointCount; ++i) {
        polygon.points.push_back(file.readPoint());
    }
    return polygon;
}

void readPolygons(LevelFileStream& file, LevelFile& level, LevelFile::Reader& reader) {
    TARNWICK_LOCATION("LevelFile::readPolygons");
    const std::uint32_t count = file.readLimited(LevelFile::largestCount, "Too many polygons in level.");
    level.polygons.reserve(file.recordsThatFit(count, smallestPolygon));
    for (std::uint32_t i = 0; i < count; ++i) {
        level.polygons.push_back(readPolygon(file));
        reader.polygonRead(level.polygons.back());
    }
}

void readObjects(LevelFileStream& file, LevelFile& level, LevelFile::Reader& reader) {
    TARNWICK_LOCATION("LevelFile::readObjects");
    const std::uint32_t count = file.readLimited(LevelFile::largestCount, "Too many objects in level");
    level.objects.reserve(file.recordsThatFit(count, smallestObject));
    for (std::uint32_t i = 0; i < count; ++i) {
        LevelFile::ObjectRecord object;
        object.objectId = file.readU32();
        object.textureName =
            file.readName(LevelFile::longestObjectTextureName, "Object texture name too long.");
        // Objects share the polygons' message.
        object.layer = file.readLimited(LevelFile::highestLayer, "Invalid polygon layer.");
        object.position = file.readPoint();
        object.mirrored = file.readU8();
        level.objects.push_back(std::move(object));
        reader.objectRead(level.objects.back());
    }
}

void readForces(LevelFileStream& file, LevelFile& level) {
    TARNWICK_LOCATION("LevelFile::readForces");
    const std::uint32_t count = file.readLimited(LevelFile::largestCount, "Too many forces in level.");
    level.forces.reserve(file.recordsThatFit(count, forceSize));
    for (std::uint32_t i = 0; i < count; ++i) {
        LevelFile::ForceRecord force;
        force.forceId = file.readU32();
        force.position = file.readPoint();
        force.direction = file.readVector();
        force.strength = file.readF32();
        level.forces.push_back(force);
    }
}

void readMovers(LevelFileStream& file, LevelFile& level) {
    TARNWICK_LOCATION("LevelFile::readMovers");
    const std::uint32_t count = file.readLimited(LevelFile::largestCount, "Too many movers in level.");
    file.requireBytes(count * moverSize);
    level.movers.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        LevelFile::MoverRecord mover;
        mover.moverId = file.readI32();
        mover.speed = file.readF32();
        mover.start = file.readPoint();
        mover.end = file.readPoint();
        level.movers.push_back(mover);
    }
}

void readTriggers(LevelFileStream& file, LevelFile& level) {
    TARNWICK_LOCATION("LevelFile::readTriggers");
    const std::uint32_t count = file.readLimited(LevelFile::largestCount, "Too many triggers in level.");
    file.requireBytes(count * triggerSize);
    level.triggers.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        LevelFile::TriggerRecord trigger;
        trigger.targetId = file.readI32();
        trigger.triggerType = file.readI32();
        trigger.delay = file.readF32();
        for (LevelFile::Point& corner : trigger.corners) {
            corner = file.readPoint();
        }
        level.triggers.push_back(trigger);
    }
}

void readSoundSources(LevelFileStream& file, LevelFile& level, LevelFile::Reader& reader) {
    TARNWICK_LOCATION("LevelFile::readSoundSources");
    const std::uint32_t count = file.readLimited(LevelFile::largestCount, "Too many sounds in level.");
    level.soundSources.reserve(file.recordsThatFit(count, smallestSoundSource));
    for (std::uint32_t i = 0; i < count; ++i) {
        LevelFile::SoundSourceRecord source;
        source.soundId = file.readI32();
        source.position = file.readPoint();
        source.strenght = file.readI32();
        if (source.strenght < 0) {
            throw "Invalid sound source strenght.";
        }
        source.looping = file.readU8();
        source.soundName = file.readName(LevelFile::longestName, "Sound source sound name too long.");
        level.soundSources.push_back(std::move(source));
        reader.soundSourceRead(level.soundSources.back());
    }
}

void readEmitters(LevelFileStream& file, LevelFile& level, LevelFile::Reader& reader) {
    TARNWICK_LOCATION("LevelFile::readEmitters");
    const std::uint32_t count = file.readLimited(LevelFile::largestCount, "Too many emitters in level.");
    level.emitters.reserve(file.recordsThatFit(count, smallestEmitter));
    for (std::uint32_t i = 0; i < count; ++i) {
        LevelFile::EmitterRecord emitter;
        emitter.emitterId = file.readI32();
        emitter.position = file.readPoint();
        emitter.direction = file.readVector();
        emitter.settingsName = file.readName(LevelFile::longestName, "Emitter settings file name too long.");
        level.emitters.push_back(std::move(emitter));
        reader.emitterRead(level.emitters.back());
    }
}

/// Reads a file for its records alone.
class SilentReader final : public LevelFile::Reader {};

} // namespace

const char* LevelFile::read(std::istream& stream, LevelFile& level, Reader* reader) {
    TARNWICK_LOCATION("LevelFile::read");
    SilentReader silent;
    Reader& follower = reader != nullptr ? *reader : silent;
    level = {};
    try {
        LevelFileStream file(stream);
        readHeader(file, follower);
        readPolygons(file, level, follower);
        readObjects(file, level, follower);
        readForces(file, level);
        readMovers(file, level);
        readTriggers(file, level);
        readSoundSources(file, level, follower);
        readEmitters(file, level, follower);
        level.waterStart = file.readPoint();
        level.cameraStart = file.readPoint();
    } catch (const char* reason) {
        return reason;
    }
    return nullptr;
}

} // namespace tarnwick
