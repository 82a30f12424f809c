#include "support/LevelFileBuilder.h"

#include <bit>
#include <utility>

namespace tarnwick {

LevelFileBuilder& LevelFileBuilder::u8(std::uint8_t value) {
    content.push_back(static_cast<char>(value));
    return *this;
}

LevelFileBuilder& LevelFileBuilder::u32(std::uint32_t value) {
    for (unsigned shift = 0; shift < 32; shift += 8) {
        u8(static_cast<std::uint8_t>(value >> shift & 0xFFu));
    }
    return *this;
}

LevelFileBuilder& LevelFileBuilder::i32(std::int32_t value) {
    return u32(static_cast<std::uint32_t>(value));
}

LevelFileBuilder& LevelFileBuilder::f32(float value) {
    return u32(std::bit_cast<std::uint32_t>(value));
}

LevelFileBuilder& LevelFileBuilder::point(LevelFile::Point value) {
    return i32(value.x).i32(value.y);
}

LevelFileBuilder& LevelFileBuilder::vector(Vector2 value) {
    return f32(value.x).f32(value.y);
}

LevelFileBuilder& LevelFileBuilder::name(std::string_view value) {
    u32(static_cast<std::uint32_t>(value.size()));
    content += value;
    return *this;
}

LevelFileBuilder& LevelFileBuilder::header() {
    return u32(0x008F1397u).u32(12);
}

LevelFileBuilder& LevelFileBuilder::emptySections(int count) {
    for (; count > 0; --count) {
        u32(0);
    }
    return *this;
}

LevelFileBuilder& LevelFileBuilder::startPoints(LevelFile::Point waterStart, LevelFile::Point cameraStart) {
    return point(waterStart).point(cameraStart);
}

LevelFileBuilder& LevelFileBuilder::add(const LevelFile::PolygonRecord& polygon) {
    i32(polygon.polygonId).name(polygon.textureName).i32(polygon.surfaceType).i32(polygon.polygonMode);
    u32(polygon.layer).u32(static_cast<std::uint32_t>(polygon.points.size()));
    for (const LevelFile::Point corner : polygon.points) {
        point(corner);
    }
    return *this;
}

LevelFileBuilder& LevelFileBuilder::add(const LevelFile::ObjectRecord& object) {
    return u32(object.objectId)
        .name(object.textureName)
        .u32(object.layer)
        .point(object.position)
        .u8(object.mirrored);
}

LevelFileBuilder& LevelFileBuilder::add(const LevelFile::ForceRecord& force) {
    return u32(force.forceId).point(force.position).vector(force.direction).f32(force.strength);
}

LevelFileBuilder& LevelFileBuilder::add(const LevelFile::MoverRecord& mover) {
    return i32(mover.moverId).f32(mover.speed).point(mover.start).point(mover.end);
}

LevelFileBuilder& LevelFileBuilder::add(const LevelFile::TriggerRecord& trigger) {
    i32(trigger.targetId).i32(trigger.triggerType).f32(trigger.delay);
    for (const LevelFile::Point corner : trigger.corners) {
        point(corner);
    }
    return *this;
}

LevelFileBuilder& LevelFileBuilder::add(const LevelFile::SoundSourceRecord& source) {
    return i32(source.soundId)
        .point(source.position)
        .i32(source.strenght)
        .u8(source.looping)
        .name(source.soundName);
}

LevelFileBuilder& LevelFileBuilder::add(const LevelFile::EmitterRecord& emitter) {
    return i32(emitter.emitterId)
        .point(emitter.position)
        .vector(emitter.direction)
        .name(emitter.settingsName);
}

std::string LevelFileBuilder::write(const LevelFile& level) {
    return LevelFileBuilder()
        .header()
        .section(level.polygons)
        .section(level.objects)
        .section(level.forces)
        .section(level.movers)
        .section(level.triggers)
        .section(level.soundSources)
        .section(level.emitters)
        .startPoints(level.waterStart, level.cameraStart)
        .bytes();
}

LevelFile smallLevel() {
    LevelFile level;
    level.polygons = {polygonRecord({{0, 0}, {100, 0}, {100, 50}, {0, 50}}, 7), polygonRecord({{-5, 9}}, -3)};
    level.polygons[0].textureName = "gfx\\stone.tga";
    level.polygons[1].layer = 4;
    level.objects = {{5, "gfx\\lamp_FRAME0.tga", 3, {-20, 30}, 1}, {6, "", 0, {1, 2}, 0}};
    level.forces = {{8, {10, -20}, {0.5f, -2.0f}, 3.25f}};
    level.movers = {{7, 40.5f, {0, 0}, {100, -100}}, {-7, -1.0f, {1, 2}, {3, 4}}};
    level.triggers = {{7, 300, 1.5f, {{0, 0}, {10, 0}, {10, 10}, {0, 10}}}};
    level.soundSources = {{9, {4, 5}, 300, 1, "snd\\drip.wav"}, {10, {6, 7}, 0, 0, ""}};
    level.emitters = {{11, {-8, -9}, {0.0f, 1.0f}, "fx\\steam.cfg"}};
    level.waterStart = {50, -60};
    level.cameraStart = {-70, 80};
    return level;
}

LevelFile::PolygonRecord polygonRecord(std::vector<LevelFile::Point> points, std::int32_t polygonId) {
    LevelFile::PolygonRecord record;
    record.polygonId = polygonId;
    record.surfaceType = 3;
    record.points = std::move(points);
    return record;
}

} // namespace tarnwick
