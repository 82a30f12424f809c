#include "audio/GameSfx_Steam.h"

#include "core/ConfigFile.h"
#include "core/LocationStack.h"
#include "core/ShareLeft.h"
#include "particles/ParticleManager.h"

namespace tarnwick {

namespace {

constexpr float pendingKept = 0.001f;      ///< Share of the pending evaporation that is left after 1 s.
constexpr float evaporationVolume = 0.05f; ///< Level for each particle that evaporated.
constexpr float evaporationKept = 0.25f;   ///< Share of the level of evaporation that is left after 1 s.
constexpr float ambientVolume = 0.02f;     ///< Level for each particle of steam.
constexpr float ambientKept = 0.05f;       ///< Share of the old ambient level that is left after 1 s.

} // namespace

GameSfx_Steam::State GameSfx_Steam::state;

void GameSfx_Steam::initialise() {
    TARNWICK_LOCATION("GameSfx_Steam::initialise");
    const ConfigFile config("cfg\\game_sfx.cfg");
    state.evaporate.makeSound(config.getVarAsString("steamEvaporate"));
    state.ambient.makeSound(config.getVarAsString("steamAmbient"));
    state.previousCount = 0;
    state.pendingEvaporation = 0.0f;
    state.evaporationLevel = 0.0f;
    state.ambientLevel = 0.0f;
}

void GameSfx_Steam::shutdown() {
    TARNWICK_LOCATION("GameSfx_Steam::shutdown");
    state.evaporate.deleteSound();
    state.ambient.deleteSound();
}

void GameSfx_Steam::silence() {
    TARNWICK_LOCATION("GameSfx_Steam::silence");
    state.evaporate.silence();
    state.ambient.silence();
}

void GameSfx_Steam::update(float dt, bool heard) {
    TARNWICK_LOCATION("GameSfx_Steam::update");
    const std::uint32_t count = getSteamParticleCount();
    if (count > state.previousCount) {
        state.pendingEvaporation += static_cast<float>(count - state.previousCount);
    }
    state.previousCount = count;

    const float part = (1.0f - shareLeft(pendingKept, dt)) * state.pendingEvaporation;
    state.pendingEvaporation -= part;
    state.evaporationLevel += part * evaporationVolume;
    state.evaporationLevel *= shareLeft(evaporationKept, dt);

    const float kept = shareLeft(ambientKept, dt);
    state.ambientLevel =
        (1.0f - kept) * static_cast<float>(count) * ambientVolume + kept * state.ambientLevel;

    state.evaporate.follow(state.evaporationLevel, heard);
    state.ambient.follow(state.ambientLevel, heard);
}

void GameSfx_Steam::keep(Moment& moment) {
    TARNWICK_LOCATION("GameSfx_Steam::keep");
    moment.previousCount = state.previousCount;
    moment.pendingEvaporation = state.pendingEvaporation;
    moment.evaporationLevel = state.evaporationLevel;
    moment.ambientLevel = state.ambientLevel;
}

void GameSfx_Steam::putBack(const Moment& moment) {
    TARNWICK_LOCATION("GameSfx_Steam::putBack");
    state.previousCount = moment.previousCount;
    state.pendingEvaporation = moment.pendingEvaporation;
    state.evaporationLevel = moment.evaporationLevel;
    state.ambientLevel = moment.ambientLevel;
}

std::uint32_t GameSfx_Steam::getSteamParticleCount() {
    TARNWICK_LOCATION("GameSfx_Steam::getSteamParticleCount");
    std::uint32_t count = 0;
    for (const Particle& particle : ParticleManager::particles) {
        if (particle.temperature >= steamTemperature) {
            ++count;
        }
    }
    return count;
}

} // namespace tarnwick
