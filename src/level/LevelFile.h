#pragma once

#include "core/Vector2.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace tarnwick {

/// A level file (`*.rivl`) as plain records, every section in file order.
///
/// The file is one sequence of little-endian sections without tags or padding: header, polygons, objects,
/// forces, movers, triggers, sound sources, emitters, start points; each but the first and last is a 32-bit
/// count and that many records. A name is a 32-bit length and that many bytes. Bytes after the start points
/// are ignored. The values here are those of the file; what the loader makes of them (scaled strengths, unit
/// directions, friction) is its own affair.
struct LevelFile {
    static constexpr std::uint32_t magic = 0x008F1397;   ///< First word of every level file.
    static constexpr std::uint32_t version = 12;         ///< Second word: the only version read.
    static constexpr std::uint32_t largestCount = 65535; ///< Records of a section, points of a polygon.
    static constexpr std::uint32_t longestName = 65535;  ///< Bytes of a texture, sound or settings name.
    static constexpr std::uint32_t longestObjectTextureName = 65534; ///< Bytes: one fewer, for objects alone.

    static constexpr std::uint32_t highestLayer = 4; ///< Of a polygon or object.

    /// A point in whole world units.
    struct Point {
        std::int32_t x = 0;
        std::int32_t y = 0;

        friend bool operator==(const Point&, const Point&) = default;
    };

    struct PolygonRecord {
        std::int32_t polygonId = 0;
        std::string textureName;      ///< Empty: no texture.
        std::int32_t surfaceType = 1; ///< A number of `SurfaceTypes.h`, 1 to 5.
        std::int32_t polygonMode = 0; ///< 0 solid and seen, 1 seen, 2 solid, 3 neither (caulk); others as 0.
        std::uint32_t layer = 0;      ///< 0 to 4.
        std::vector<Point> points;

        friend bool operator==(const PolygonRecord&, const PolygonRecord&) = default;
    };

    struct ObjectRecord {
        std::uint32_t objectId = 0;
        std::string textureName;
        std::uint32_t layer = 0;   ///< 0 to 4.
        Point position;            ///< Centre.
        std::uint8_t mirrored = 0; ///< Not 0: flipped left to right.

        friend bool operator==(const ObjectRecord&, const ObjectRecord&) = default;
    };

    struct ForceRecord {
        std::uint32_t forceId = 0;
        Point position;
        Vector2 direction;     ///< Any length.
        float strength = 0.0f; ///< As stored: a tenth of the magnitude.

        friend bool operator==(const ForceRecord&, const ForceRecord&) = default;
    };

    struct MoverRecord {
        std::int32_t moverId = 0;
        float speed = 0.0f; ///< World units per second.
        Point start;
        Point end;

        friend bool operator==(const MoverRecord&, const MoverRecord&) = default;
    };

    struct TriggerRecord {
        std::int32_t targetId = 0;
        std::int32_t triggerType = 0; ///< Action code.
        float delay = 0.0f;           ///< Seconds, taken bit for bit.
        Point corners[4];             ///< In order around the quadrilateral.

        friend bool operator==(const TriggerRecord&, const TriggerRecord&) = default;
    };

    struct SoundSourceRecord {
        std::int32_t soundId = 0;
        Point position;
        std::int32_t strenght = 0; ///< Reach in world units, not negative.
        std::uint8_t looping = 0;  ///< Not 0: started as it is added.
        std::string soundName;

        friend bool operator==(const SoundSourceRecord&, const SoundSourceRecord&) = default;
    };

    struct EmitterRecord {
        std::int32_t emitterId = 0;
        Point position;
        Vector2 direction; ///< (0, 0): a random one is picked.
        std::string settingsName;

        friend bool operator==(const EmitterRecord&, const EmitterRecord&) = default;
    };

    /// Follows a read record by record, so that resources load, and the window lives, while the file is read.
    class Reader {
    public:
        /// The file is of another version; the read fails right after.
        virtual void wrongVersion(std::uint32_t /*found*/) {}
        virtual void polygonRead(const PolygonRecord& /*record*/) {}
        virtual void objectRead(const ObjectRecord& /*record*/) {}
        virtual void soundSourceRead(const SoundSourceRecord& /*record*/) {}
        virtual void emitterRead(const EmitterRecord& /*record*/) {}

    protected:
        virtual ~Reader() = default;
    };

    std::vector<PolygonRecord> polygons;
    std::vector<ObjectRecord> objects;
    std::vector<ForceRecord> forces;
    std::vector<MoverRecord> movers;
    std::vector<TriggerRecord> triggers;
    std::vector<SoundSourceRecord> soundSources;
    std::vector<EmitterRecord> emitters;
    Point waterStart;
    Point cameraStart;

    /// Reads a whole level file from a stream opened in binary mode, front to back, and tests it on the way.
    /// Returns null when all is well, else the reason in the words of the console, and `level` holds what
    /// came before the fault. No count takes memory that the rest of the file does not back. Prints nothing.
    static const char* read(std::istream& file, LevelFile& level, Reader* reader = nullptr);

    friend bool operator==(const LevelFile&, const LevelFile&) = default;
};

} // namespace tarnwick
