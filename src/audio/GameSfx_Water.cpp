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
    state.disturbance.settings = GameSfx_Disturbance::readSettings(config, "water_disturbance");
    GameSfx_Disturbance::Settings& settings = state.disturbance.settings;
    for (float& speed : settings.levelSpeeds) {
        speed = std::abs(speed);
    }
    settings.randomnessPitch = std::abs(settings.randomnessPitch);
    settings.randomnessVolume = std::abs(settings.randomnessVolume);
    state.ambientVolume = std::abs(config.getVarAsFloat("waterSound_ambient_volume"));
    state.ambient.makeSound(config.getVarAsString("waterSound_ambient"));
    state.disturbance.makeSounds(config, "waterSound_disturbance_level_");
    state.previousAverageSpeed = 0.0f;
    state.ambientLevel = 0.0f;
}

void GameSfx_Water::shutdown() {
    TARNWICK_LOCATION("GameSfx_Water::shutdown");
    state.ambient.deleteSound();
    state.disturbance.deleteSounds();
}

void GameSfx_Water::silence() {
    TARNWICK_LOCATION("GameSfx_Water::silence");
    state.ambient.silence();
}

void GameSfx_Water::update(float /*dt*/, bool heard) {
    TARNWICK_LOCATION("GameSfx_Water::update");
    float speed = 0.0f;
    getAverageWaterVelocity(speed);
    const float fall = state.previousAverageSpeed - speed; // above 0 when the water has hit something
    state.previousAverageSpeed = speed;
    const float share = static_cast<float>(getWaterParticleCount()) / smallBody;
    state.ambientLevel = std::sqrt(share) * state.ambientVolume;
    state.ambient.follow(state.ambientLevel, heard, GameSfx_Loop::Order::startFirst);
    state.disturbance.playDisturbanceSounds(fall, share);
}

void GameSfx_Water::keep(Moment& moment) {
    TARNWICK_LOCATION("GameSfx_Water::keep");
    moment.previousAverageSpeed = state.previousAverageSpeed;
    moment.ambientLevel = state.ambientLevel;
}

void GameSfx_Water::putBack(const Moment& moment) {
    TARNWICK_LOCATION("GameSfx_Water::putBack");
    state.previousAverageSpeed = moment.previousAverageSpeed;
    state.ambientLevel = moment.ambientLevel;
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
