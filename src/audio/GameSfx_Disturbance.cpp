#include "audio/GameSfx_Disturbance.h"

#include "core/ConfigFile.h"
#include "core/LocationStack.h"
#include "core/Random.h"

#include <algorithm>
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

void GameSfx_Disturbance::makeSounds(const ConfigFile& config, const std::string& prefix) {
    TARNWICK_LOCATION("GameSfx_Disturbance::makeSounds");
    for (std::size_t level = 0; level < levelCount; ++level) {
        for (std::size_t variant = 0; variant < variantCount; ++variant) {
            std::unique_ptr<Sound>& sound = sounds[level][variant];
            if (sound == nullptr) {
                sound = std::make_unique<Sound>(config.getVarAsString(prefix + std::to_string(level + 1) +
                                                                      "_" + std::to_string(variant + 1)));
            }
        }
    }
}

void GameSfx_Disturbance::deleteSounds() {
    TARNWICK_LOCATION("GameSfx_Disturbance::deleteSounds");
    for (Variants& variants : sounds) {
        std::ranges::fill(variants, nullptr);
    }
}

void GameSfx_Disturbance::playDisturbanceSounds(float fall, float share) {
    TARNWICK_LOCATION("GameSfx_Disturbance::playDisturbanceSounds");
    const Hit hit = choose(settings, fall, share);
    if (hit.level == 0) {
        return;
    }
    const Variants& variants = sounds[hit.level - 1];
    const bool sounding = std::ranges::any_of(
        variants, [](const auto& sound) { return sound != nullptr && sound->isPlaying(); });
    Sound* const sound = variants[hit.variant].get();
    if (sound == nullptr || sounding) {
        return;
    }
    sound->setVolume(hit.volume);
    sound->setFrequency(hit.pitch);
    sound->rewind();
    sound->play();
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
