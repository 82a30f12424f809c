#pragma once

#include "level/LevelFile.h"

#include <string>
#include <vector>

namespace tarnwick {

struct TiledMap;

/// What a polygon of a Tiled map is when a property is missing. The Tiled project shows the same values, and
/// Tiled writes a property into the map only when it differs from what the project shows.
struct PolygonDefaults {
    static constexpr const char* surface = "stone";
    static constexpr const char* mode = "solid";
    static constexpr const char* texture = "";
    static constexpr int id = 0;
    static constexpr bool dressed = false;
};

/// The same for a decorative object.
struct ObjectDefaults {
    static constexpr const char* texture = "";
    static constexpr int id = 0;
    static constexpr bool mirrored = false;
};

/// The same for what moves, sounds and reacts. Names of files, and a trigger's type, must be given.
struct EntityDefaults {
    static constexpr int id = 0;
    static constexpr float speed = 40.0f;   ///< Of a mover, world units per second.
    static constexpr int target = 0;        ///< Of a trigger; 0: none.
    static constexpr float delay = 0.0f;    ///< Of a trigger, seconds.
    static constexpr float strength = 1.0f; ///< Of a force, a tenth of what acts.
    static constexpr int reach = 400;       ///< Of a sound without a circle, world units.
    static constexpr bool looping = true;   ///< Of a sound.
};

/// Makes the records of a level file out of a Tiled map, as `docs/level-making.md` tells it: polygons and
/// decorative objects, movers, triggers, forces, emitters and sounds in the order of layers and objects, the
/// finish of the dressed polygons behind all other polygons, the two start points, coordinates rounded to
/// whole units (halves away from zero). What overlaps goes to layers that tell what lies on top, and a level
/// that shows several of the ordered pictures on a layer begins with their list (`PictureOrder.h`). Equal
/// maps give equal records.
///
/// What was changed or left out on the way goes to `warnings`, one line each. Throws `ToolError` with the
/// object's number and name for whatever a level file cannot hold.
LevelFile compileLevel(const TiledMap& map, std::vector<std::string>& warnings);

} // namespace tarnwick
