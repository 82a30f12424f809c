#include "level/SurfaceTypeManager.h"

#include "core/ConfigFile.h"
#include "core/LocationStack.h"

#include <algorithm>

namespace tarnwick {

SurfaceTypeManager::State SurfaceTypeManager::state;

void SurfaceTypeManager::initialise() {
    TARNWICK_LOCATION("SurfaceTypeManager::initialise");
    const ConfigFile config("cfg\\surfaces.cfg");
    state.metalFriction = std::clamp(config.getVarAsFloat("surfaceFriction_metal"), 0.0f, 1.0f);
    state.woodFriction = std::clamp(config.getVarAsFloat("surfaceFriction_wood"), 0.0f, 1.0f);
    state.stoneFriction = std::clamp(config.getVarAsFloat("surfaceFriction_stone"), 0.0f, 1.0f);
    state.clothFriction = std::clamp(config.getVarAsFloat("surfaceFriction_cloth"), 0.0f, 1.0f);
    state.sandFriction = std::clamp(config.getVarAsFloat("surfaceFriction_sand"), 0.0f, 1.0f);
}

bool SurfaceTypeManager::validSurfaceType(int type) {
    TARNWICK_LOCATION("SurfaceTypeManager::validSurfaceType");
    return type >= 1 && type <= 5;
}

float SurfaceTypeManager::getSurfaceTypeFriction(int type) {
    TARNWICK_LOCATION("SurfaceTypeManager::getSurfaceTypeFriction");
    switch (type) {
    case 1:
        return state.metalFriction;
    case 2:
        return state.woodFriction;
    case 3:
        return state.stoneFriction;
    case 4:
        return state.clothFriction;
    case 5:
        return state.sandFriction;
    default:
        return 1.0f;
    }
}

} // namespace tarnwick
