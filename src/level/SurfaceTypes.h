#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace tarnwick {

/// The one table of the materials of polygons, for the game, the tools that make levels, and the test of
/// their documents. A new material is a row of it.
class SurfaceTypes {
public:
    SurfaceTypes() = delete;

    struct Row {
        std::int32_t number;     ///< As the level file has it.
        const char* name;        ///< In the words of a level maker.
        const char* frictionKey; ///< In `cfg\surfaces.cfg`.
    };

    /// By number, which runs on from 1.
    static constexpr Row table[] = {
        {1, "metal", "surfaceFriction_metal"}, {2, "wood", "surfaceFriction_wood"},
        {3, "stone", "surfaceFriction_stone"}, {4, "cloth", "surfaceFriction_cloth"},
        {5, "sand", "surfaceFriction_sand"},
    };

    static constexpr std::size_t count = std::size(table);

    static constexpr bool numbersRunOn() {
        for (std::size_t i = 0; i < count; ++i) {
            if (table[i].number != static_cast<std::int32_t>(i) + 1) {
                return false;
            }
        }
        return true;
    }
};
static_assert(SurfaceTypes::numbersRunOn());

} // namespace tarnwick
