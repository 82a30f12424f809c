#pragma once

#include "level/SurfaceTypes.h"

#include <array>

namespace tarnwick {

/// The friction of the materials that a level's polygons are made of; `SurfaceTypes.h` lists them. The
/// material's number stands only in the level file; a polygon keeps nothing but the friction.
class SurfaceTypeManager {
public:
    SurfaceTypeManager() = delete;

    /// Reads `cfg\surfaces.cfg`, once at program start and before any level. A missing key, or a missing
    /// file, sets its friction to 0. Values are clamped into 0 to 1.
    static void initialise();

    /// True for the number of a row of the table, so for 1 to 5.
    static bool validSurfaceType(int type);
    /// 0 to 1; 1 for a number that names no material, and for every number before `initialise`.
    static float getSurfaceTypeFriction(int type);

private:
    friend class ModuleReset;

    /// By row of the table, 0 to 1.
    using Frictions = std::array<float, SurfaceTypes::count>;

    static constexpr Frictions fullSpeed() {
        Frictions frictions{};
        frictions.fill(1.0f);
        return frictions;
    }

    struct State {
        Frictions frictions = fullSpeed();
    };
    static State state;
};

} // namespace tarnwick
