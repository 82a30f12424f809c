#include "level/SurfaceTypeManager.h"

#include "core/ConfigFile.h"
#include "core/LocationStack.h"

#include <algorithm>

namespace tarnwick {

SurfaceTypeManager::State SurfaceTypeManager::state;

void SurfaceTypeManager::initialise() {
    TARNWICK_LOCATION("SurfaceTypeManager::initialise");
    const ConfigFile config("cfg\\surfaces.cfg");
    for (std::size_t i = 0; i < SurfaceTypes::count; ++i) {
        state.frictions[i] = std::clamp(config.getVarAsFloat(SurfaceTypes::table[i].frictionKey), 0.0f, 1.0f);
    }
}

bool SurfaceTypeManager::validSurfaceType(int type) {
    TARNWICK_LOCATION("SurfaceTypeManager::validSurfaceType");
    return type >= 1 && type <= static_cast<int>(SurfaceTypes::count);
}

float SurfaceTypeManager::getSurfaceTypeFriction(int type) {
    TARNWICK_LOCATION("SurfaceTypeManager::getSurfaceTypeFriction");
    return validSurfaceType(type) ? state.frictions[static_cast<std::size_t>(type - 1)] : 1.0f;
}

} // namespace tarnwick
