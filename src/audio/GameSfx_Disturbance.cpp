#include "audio/GameSfx_Disturbance.h"

#include "core/ConfigFile.h"
#include "core/LocationStack.h"
#include "core/Random.h"

#include <cmath>

namespace tarnwick {

GameSfx_Disturbance::Settings GameSfx_Disturbance::readSettings(const ConfigFile& config,
                                                                const std::string& prefix) {
    TARNWICK_LOCATION("GameSfx_Disturbance::readSettings");
    Settings settings;
    settings.levelSpeeds[0] = config.getVarAsFloat(prefix + "_level1_speed");
    settings.levelSpeeds[1] = config.getVarAsFloat(prefix + "_level2_speed");
    settings.levelSpeeds[2] = config.getVarAsFloat(prefix + "_level3_speed");
    settings.randomnessPitch = config.getVarAsFloat(prefix + "_randomness_pitch");
    settings.randomnessVolume = config.getVarAsFloat(prefix + "_randomness_volume");
    return settings;
}

GameSfx_Disturbance::Hit GameSfx_Disturbance::choose(const Settings& settings, float fall, float share) {
    TARNWICK_LOCATION("GameSfx_Disturbance::choose");
    Hit hit;
    hit.variant = randomInt() % variantCount;
    hit.volume = share - randomFloat() * settings.randomnessVolume;
    if (hit.volume > 0.0f) {
        hit.volume = std::sqrt(hit.volume);
    }
    hit.pitch = (randomFloat() - 0.5f) * settings.randomnessPitch;
    if (fall < settings.levelSpeeds[0]) {
        hit.level = 0;
    } else if (fall >= settings.levelSpeeds[2]) {
        hit.level = 3;
    } else {
        hit.level = fall >= settings.levelSpeeds[1] ? 2 : 1;
    }
    return hit;
}

} // namespace tarnwick
