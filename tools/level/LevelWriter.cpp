#include "tools/level/LevelWriter.h"

#include "level/LevelFile.h"

#include <bit>
#include <cassert>
#include <cstdint>
#include <limits>

namespace tarnwick {

namespace {

/// Appends the fields of a level file, little-endian, one after the other.
class ByteWriter {
public:
    void u8(std::uint8_t value) { bytes.push_back(static_cast<char>(value)); }
    void u32(std::uint32_t value) {
        for (unsigned shift = 0; shift < 32; shift += 8) {
            u8(static_cast<std::uint8_t>((value >> shift) & 0xFFU));
        }
    }
    void i32(std::int32_t value) { u32(std::bit_cast<std::uint32_t>(value)); }
    void f32(float value) { u32(std::bit_cast<std::uint32_t>(value)); }
    void point(const LevelFile::Point& value) {
        i32(value.x);
        i32(value.y);
    }
    void vector(const Vector2& value) {
        f32(value.x);
        f32(value.y);
    }
    void count(std::size_t value) {
        assert(value <= std::numeric_limits<std::uint32_t>::max());
        u32(static_cast<std::uint32_t>(value));
    }
    void name(const std::string& value) {
        count(value.size());
        bytes += value;
    }

    std::string take() { return std::move(bytes); }

private:
    std::string bytes;
};

void write(ByteWriter& file, const LevelFile::PolygonRecord& record) {
    file.i32(record.polygonId);
    file.name(record.textureName);
    file.i32(record.surfaceType);
    file.i32(record.polygonMode);
    file.u32(record.layer);
    file.count(record.points.size());
    for (const LevelFile::Point& point : record.points) {
        file.point(point);
    }
}

void write(ByteWriter& file, const LevelFile::ObjectRecord& record) {
    file.u32(record.objectId);
    file.name(record.textureName);
    file.u32(record.layer);
    file.point(record.position);
    file.u8(record.mirrored);
}

void write(ByteWriter& file, const LevelFile::ForceRecord& record) {
    file.u32(record.forceId);
    file.point(record.position);
    file.vector(record.direction);
    file.f32(record.strength);
}

void write(ByteWriter& file, const LevelFile::MoverRecord& record) {
    file.i32(record.moverId);
    file.f32(record.speed);
    file.point(record.start);
    file.point(record.end);
}

void write(ByteWriter& file, const LevelFile::TriggerRecord& record) {
    file.i32(record.targetId);
    file.i32(record.triggerType);
    file.f32(record.delay);
    for (const LevelFile::Point& corner : record.corners) {
        file.point(corner);
    }
}

void write(ByteWriter& file, const LevelFile::SoundSourceRecord& record) {
    file.i32(record.soundId);
    file.point(record.position);
    file.i32(record.strenght);
    file.u8(record.looping);
    file.name(record.soundName);
}

void write(ByteWriter& file, const LevelFile::EmitterRecord& record) {
    file.i32(record.emitterId);
    file.point(record.position);
    file.vector(record.direction);
    file.name(record.settingsName);
}

template <typename Record>
void writeSection(ByteWriter& file, const std::vector<Record>& records) {
    file.count(records.size());
    for (const Record& record : records) {
        write(file, record);
    }
}

} // namespace

std::string writeLevel(const LevelFile& level) {
    ByteWriter file;
    file.u32(LevelFile::magic);
    file.u32(LevelFile::version);
    writeSection(file, level.polygons);
    writeSection(file, level.objects);
    writeSection(file, level.forces);
    writeSection(file, level.movers);
    writeSection(file, level.triggers);
    writeSection(file, level.soundSources);
    writeSection(file, level.emitters);
    file.point(level.waterStart);
    file.point(level.cameraStart);
    return file.take();
}

} // namespace tarnwick
