#pragma once

namespace tarnwick {

/// The friction of the five materials that a level's polygons are made of: 1 metal, 2 wood, 3 stone, 4 cloth,
/// 5 sand. The material's number stands only in the level file; a polygon keeps nothing but the friction.
class SurfaceTypeManager {
public:
    SurfaceTypeManager() = delete;

    /// Reads `cfg\surfaces.cfg`, once at program start and before any level. A missing key, or a missing
    /// file, sets its friction to 0. Values are clamped into 0 to 1.
    static void initialise();

    /// True for 1 to 5.
    static bool validSurfaceType(int type);
    /// 0 to 1; 1 for a number that names no material, and for every number before `initialise`.
    static float getSurfaceTypeFriction(int type);

private:
    friend class ModuleReset;

    struct State {
        float metalFriction = 1.0f; ///< All five: 0 to 1.
        float woodFriction = 1.0f;
        float stoneFriction = 1.0f;
        float clothFriction = 1.0f;
        float sandFriction = 1.0f;
    };
    static State state;
};

} // namespace tarnwick
