#pragma once

#include "level/LevelFile.h"
#include "support/LevelFileBuilder.h"

#include <cstdint>

namespace tarnwick {

/// A rectangle of stone.
inline LevelFile::PolygonRecord
block(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom, std::int32_t id = 0) {
    return polygonRecord({{left, top}, {left, bottom}, {right, bottom}, {right, top}}, id);
}

/// A trigger over a rectangle.
inline LevelFile::TriggerRecord region(std::int32_t type,
                                       std::int32_t left,
                                       std::int32_t top,
                                       std::int32_t right,
                                       std::int32_t bottom,
                                       std::int32_t target = 0) {
    LevelFile::TriggerRecord record;
    record.triggerType = type;
    record.targetId = target;
    record.corners[0] = {left, top};
    record.corners[1] = {left, bottom};
    record.corners[2] = {right, bottom};
    record.corners[3] = {right, top};
    return record;
}

/// A closed room, 500 units wide and 160 high, with the water at its left end and the finish at its right
/// one: the floor is level, so the water gets there only if the world is turned.
inline LevelFile room() {
    constexpr std::int32_t endOfLevel = 801;
    LevelFile level;
    level.polygons = {block(-60, 160, 560, 220), block(-60, -60, 560, 0), block(-60, 0, 0, 160),
                      block(500, 0, 560, 160)};
    level.triggers = {region(endOfLevel, 420, 0, 500, 160)};
    level.waterStart = {60, 120};
    level.cameraStart = {60, 100};
    return level;
}

/// The same with a wall from floor to ceiling across it.
inline LevelFile roomWithWall(std::int32_t id = 0) {
    LevelFile level = room();
    level.polygons.push_back(block(240, 0, 270, 160, id));
    return level;
}

} // namespace tarnwick
