#include "mechanisms/Triggers_HeatSources.h"

#include "core/ConfigFile.h"
#include "core/LocationStack.h"
#include "mechanisms/TriggerHandlers.h"
#include "particles/Particle.h"
#include "particles/ParticleGroup.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

constexpr float waterTarget = 50.0f; ///< Degrees to which `trigFuncToWater` brings a particle.

/// The temperature of the body; null for none, and for a kind that has none.
float* temperatureOf(void* body, BodyKind bodyKind) {
    TARNWICK_LOCATION("Triggers_HeatSources::temperatureOf");
    if (body != nullptr && bodyKind == BodyKind::particle) {
        return &static_cast<Particle*>(body)->temperature;
    }
    if (body != nullptr && bodyKind == BodyKind::group) {
        return &static_cast<ParticleGroup*>(body)->temperature;
    }
    return nullptr;
}

/// Degrees by which a heat trigger changes a temperature in `dt` seconds.
float changeIn(float dt) {
    TARNWICK_LOCATION("Triggers_HeatSources::changeIn");
    return Triggers_HeatSources::temperatureChangeSpeed() * dt;
}

} // namespace

Triggers_HeatSources::State Triggers_HeatSources::state;

void Triggers_HeatSources_LoadSettings() {
    TARNWICK_LOCATION("Triggers_HeatSources_LoadSettings");
    const ConfigFile config("cfg\\water.cfg");
    Triggers_HeatSources::State& state = Triggers_HeatSources::state;
    state.triggerTemperatureChangeSpeed = std::abs(config.getVarAsFloat("triggerTemperatureChangeSpeed"));
    state.triggerTemperatureChangeAmountIce =
        std::abs(config.getVarAsFloat("triggerTemperatureChangeAmountIce"));
    state.triggerTemperatureChangeAmountSteam =
        std::abs(config.getVarAsFloat("triggerTemperatureChangeAmountSteam"));
}

void trigFuncToIce(Trigger* /*trigger*/, void* body, BodyKind bodyKind, float dt) {
    TARNWICK_LOCATION("trigFuncToIce");
    if (float* const temperature = temperatureOf(body, bodyKind); temperature != nullptr) {
        *temperature =
            std::max(*temperature - changeIn(dt), -Triggers_HeatSources::temperatureChangeAmountIce());
    }
}

void trigFuncToWater(Trigger* /*trigger*/, void* body, BodyKind bodyKind, float dt) {
    TARNWICK_LOCATION("trigFuncToWater");
    float* const temperature = temperatureOf(body, bodyKind);
    if (temperature == nullptr) {
        return;
    }
    if (bodyKind == BodyKind::group) {
        *temperature += changeIn(dt); // Kept: a group does not stop at the target
    } else if (*temperature >= waterTarget) {
        *temperature = std::max(*temperature - changeIn(dt), waterTarget);
    } else {
        *temperature = std::min(*temperature + changeIn(dt), waterTarget);
    }
}

void trigFuncToSteam(Trigger* /*trigger*/, void* body, BodyKind bodyKind, float dt) {
    TARNWICK_LOCATION("trigFuncToSteam");
    float* const temperature = temperatureOf(body, bodyKind);
    if (temperature == nullptr) {
        return;
    }
    *temperature += changeIn(dt);
    if (bodyKind == BodyKind::particle) { // Kept: a group has no bound
        *temperature = std::min(*temperature, Triggers_HeatSources::temperatureChangeAmountSteam());
    }
}

} // namespace tarnwick
