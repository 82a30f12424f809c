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
};

/// The same for a decorative object.
struct ObjectDefaults {
    static constexpr const char* texture = "";
    static constexpr int id = 0;
    static constexpr bool mirrored = false;
};

/// Makes the records of a level file out of a Tiled map, as `docs/level-making.md` tells it: polygons and
/// decorative objects in the order of layers and objects, the two start points, coordinates rounded to whole
/// units (halves away from zero). Equal maps give equal records.
///
/// What was changed or left out on the way goes to `warnings`, one line each. Throws `ToolError` with the
/// object's number and name for whatever a level file cannot hold.
LevelFile compileLevel(const TiledMap& map, std::vector<std::string>& warnings);

} // namespace tarnwick
