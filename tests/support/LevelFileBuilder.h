#pragma once

#include "level/LevelFile.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

/// Writes the bytes of a level file, value by value, so that a test can also write what no level file may
/// hold.
class LevelFileBuilder {
public:
    LevelFileBuilder& u8(std::uint8_t value);
    LevelFileBuilder& u32(std::uint32_t value);
    LevelFileBuilder& i32(std::int32_t value);
    LevelFileBuilder& f32(float value);
    LevelFileBuilder& point(LevelFile::Point value);
    LevelFileBuilder& vector(Vector2 value);
    /// Length and bytes.
    LevelFileBuilder& name(std::string_view value);

    /// The two words that every level file starts with.
    LevelFileBuilder& header();
    /// `count` counts of 0.
    LevelFileBuilder& emptySections(int count);
    LevelFileBuilder& startPoints(LevelFile::Point waterStart, LevelFile::Point cameraStart);

    LevelFileBuilder& add(const LevelFile::PolygonRecord& polygon);
    LevelFileBuilder& add(const LevelFile::ObjectRecord& object);
    LevelFileBuilder& add(const LevelFile::ForceRecord& force);
    LevelFileBuilder& add(const LevelFile::MoverRecord& mover);
    LevelFileBuilder& add(const LevelFile::TriggerRecord& trigger);
    LevelFileBuilder& add(const LevelFile::SoundSourceRecord& source);
    LevelFileBuilder& add(const LevelFile::EmitterRecord& emitter);

    /// A count and that many records.
    template <typename Record>
    LevelFileBuilder& section(const std::vector<Record>& records) {
        u32(static_cast<std::uint32_t>(records.size()));
        for (const Record& record : records) {
            add(record);
        }
        return *this;
    }

    const std::string& bytes() const { return content; }

    /// A whole file.
    static std::string write(const LevelFile& level);

private:
    std::string content;
};

/// A small level with a record of every kind, two of most.
LevelFile smallLevel();

/// A record of a solid, seen polygon of stone.
LevelFile::PolygonRecord polygonRecord(std::vector<LevelFile::Point> points, std::int32_t polygonId = 0);

} // namespace tarnwick
