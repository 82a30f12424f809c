#include "audio/GameSfx_Ice.h"

#include "core/ConfigFile.h"
#include "core/LocationStack.h"
#include "core/ShareLeft.h"
#include "core/VectorMaths2D.h"
#include "particles/ParticleGroupMover.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

GameSfx_Ice::State GameSfx_Ice::state;

void GameSfx_Ice::initialise() {
    TARNWICK_LOCATION("GameSfx_Ice::initialise");
    const ConfigFile config("cfg\\game_sfx.cfg");
    const auto share = [&](const char* key) { return std::clamp(config.getVarAsFloat(key), 0.0f, 1.0f); };
    state.disturbance.settings = GameSfx_Disturbance::readSettings(config, "ice_disturbance");
    state.frictionChangeRate = share("ice_frictionChangeRate");
    state.frictionSpeed = config.getVarAsFloat("ice_frictionSpeed");
    state.freezeEffectSpeed = share("ice_freezeEffectSpeed");
    state.freezeVolume = config.getVarAsFloat("ice_freezeVolume");
    state.freezeVolumeFadeRate = share("ice_freezeVolumeFadeRate");
    state.freeze.makeSound(config.getVarAsString("iceSound_freeze"));
    state.friction.makeSound(config.getVarAsString("iceSound_friction"));
    state.disturbance.makeSounds(config, "iceSound_disturbance_Level_");
    state.previousAverageSpeed = 0.0f;
    state.previousCount = 0;
    state.pendingFreeze = 0.0f;
    state.freezeLevel = 0.0f;
    state.frictionLevel = 0.0f;
}

void GameSfx_Ice::shutdown() {
    TARNWICK_LOCATION("GameSfx_Ice::shutdown");
    state.freeze.deleteSound();
    state.friction.deleteSound();
    state.disturbance.deleteSounds();
}

void GameSfx_Ice::silence() {
    TARNWICK_LOCATION("GameSfx_Ice::silence");
    state.freeze.silence();
    state.friction.silence();
}

void GameSfx_Ice::update(float dt, bool heard) {
    TARNWICK_LOCATION("GameSfx_Ice::update");
    const std::uint32_t count = getIceParticleCount();
    if (count > state.previousCount) {
        state.pendingFreeze += static_cast<float>(count - state.previousCount);
    }
    state.previousCount = count;

    float speed = 0.0f;
    getAverageIceVelocity(speed);
    const float fall = state.previousAverageSpeed - speed; // above 0 when the ice has hit something
    state.previousAverageSpeed = speed;

    const float part = (1.0f - shareLeft(state.freezeEffectSpeed, dt)) * state.pendingFreeze;
    state.pendingFreeze -= part;
    state.freezeLevel += part * state.freezeVolume;
    state.freezeLevel *= shareLeft(state.freezeVolumeFadeRate, dt);

    state.disturbance.playDisturbanceSounds(fall, static_cast<float>(count) / smallBody);
    calculateFrictionLevel(dt);
    state.freeze.follow(state.freezeLevel, heard);
    state.friction.follow(state.frictionLevel, heard);
}

void GameSfx_Ice::keep(Moment& moment) {
    TARNWICK_LOCATION("GameSfx_Ice::keep");
    moment.previousAverageSpeed = state.previousAverageSpeed;
    moment.previousCount = state.previousCount;
    moment.pendingFreeze = state.pendingFreeze;
    moment.freezeLevel = state.freezeLevel;
    moment.frictionLevel = state.frictionLevel;
}

void GameSfx_Ice::putBack(const Moment& moment) {
    TARNWICK_LOCATION("GameSfx_Ice::putBack");
    state.previousAverageSpeed = moment.previousAverageSpeed;
    state.previousCount = moment.previousCount;
    state.pendingFreeze = moment.pendingFreeze;
    state.freezeLevel = moment.freezeLevel;
    state.frictionLevel = moment.frictionLevel;
}

std::uint32_t GameSfx_Ice::getIceParticleCount() {
    TARNWICK_LOCATION("GameSfx_Ice::getIceParticleCount");
    std::size_t count = 0;
    for (const ParticleGroup& group : ParticleGroupMover::groups) {
        count += group.members.size();
    }
    return static_cast<std::uint32_t>(count);
}

void GameSfx_Ice::getAverageIceVelocity(float& average) {
    TARNWICK_LOCATION("GameSfx_Ice::getAverageIceVelocity");
    float sum = 0.0f;
    for (const ParticleGroup& group : ParticleGroupMover::groups) {
        sum += static_cast<float>(group.members.size()) * vectorLength(group.velocity);
    }
    const std::uint32_t count = getIceParticleCount();
    average = count == 0 ? 0.0f : sum / static_cast<float>(count);
}

void GameSfx_Ice::calculateFrictionLevel(float dt) {
    TARNWICK_LOCATION("GameSfx_Ice::calculateFrictionLevel");
    float target = 0.0f; // a group in free fall rubs on nothing
    for (const ParticleGroup& group : ParticleGroupMover::groups) {
        if (group.colliding) {
            const float share = static_cast<float>(group.members.size()) / smallBody;
            target += vectorLength(group.velocity) * state.frictionSpeed * std::sqrt(share);
        }
    }
    const float kept = shareLeft(state.frictionChangeRate, dt);
    state.frictionLevel = (1.0f - kept) * target + kept * state.frictionLevel;
}

} // namespace tarnwick
