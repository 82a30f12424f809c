#include "audio/GameSfx_Water.h"

#include "core/ConfigFile.h"
#include "core/LocationStack.h"
#include "core/VectorMaths2D.h"
#include "particles/ParticleManager.h"

#include <cmath>

namespace tarnwick {

GameSfx_Water::State GameSfx_Water::state;

void GameSfx_Water::initialise() {
    TARNWICK_LOCATION("GameSfx_Water::initialise");
    const ConfigFile config("cfg\\game_sfx.cfg");
    state.disturbance = GameSfx_Disturbance::readSettings(config, "water_disturbance");
    for (float& speed : state.disturbance.levelSpeeds) {
        speed = std::abs(speed);
    }
    state.disturbance.randomnessPitch = std::abs(state.disturbance.randomnessPitch);
    state.disturbance.randomnessVolume = std::abs(state.disturbance.randomnessVolume);
    state.ambientVolume = std::abs(config.getVarAsFloat("waterSound_ambient_volume"));
    state.previousAverageSpeed = 0.0f;
    state.ambientLevel = 0.0f;
}

void GameSfx_Water::update(float /*dt*/) {
    TARNWICK_LOCATION("GameSfx_Water::update");
    float speed = 0.0f;
    getAverageWaterVelocity(speed);
    const float fall = state.previousAverageSpeed - speed; // above 0 when the water has hit something
    state.previousAverageSpeed = speed;
    const float share = static_cast<float>(getWaterParticleCount()) / smallBody;
    state.ambientLevel = std::sqrt(share) * state.ambientVolume;
    GameSfx_Disturbance::choose(state.disturbance, fall, share);
}

std::uint32_t GameSfx_Water::getWaterParticleCount() {
    TARNWICK_LOCATION("GameSfx_Water::getWaterParticleCount");
    std::uint32_t count = 0;
    for (const Particle& particle : ParticleManager::particles) {
        if (particle.temperature > iceTemperature && particle.temperature < steamTemperature) {
            ++count;
        }
    }
    return count;
}

void GameSfx_Water::getAverageWaterVelocity(float& average) {
    TARNWICK_LOCATION("GameSfx_Water::getAverageWaterVelocity");
    float sum = 0.0f;
    std::uint32_t count = 0;
    for (const Particle& particle : ParticleManager::particles) {
        if (particle.temperature > iceTemperature && particle.temperature < steamTemperature) {
            sum += vectorLength(particle.velocity);
            ++count;
        }
    }
    average = count == 0 ? 0.0f : sum / static_cast<float>(count);
}

} // namespace tarnwick
