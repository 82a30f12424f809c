#include "mechanisms/FxParticleManager.h"

#include "core/CommandArguments.h"
#include "core/CommandRegistry.h"
#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "particles/ParticleManager.h"

namespace tarnwick {

std::list<FxParticleEmitter> FxParticleManager::emitters;
std::list<FxParticle> FxParticleManager::particles;
FxParticleManager::State FxParticleManager::state;

constexpr CommandRow FxParticleManager::commands[] = {
    {"FxEmitterCreate", conCmdFxEmitterCreate},
    {"FxEmitterDraw", CommandVariable{&state.fxEmitterDraw, "FxParticleManager::conCmdFxEmitterDraw"}},
    {"FxEmitterCount", conCmdFxEmitterCount},
    {"FxParticleCount", conCmdFxParticleCount},
};

void FxParticleManager::initalise() {
    TARNWICK_LOCATION("FxParticleManager::initalise");
    shutdown();
    state.fxEmitterDraw = false;
    Log::print("\nInitialising FX particle manager..");
    CommandRegistry::add(commands);
}

void FxParticleManager::shutdown() {
    TARNWICK_LOCATION("FxParticleManager::shutdown");
    Log::print("\nShutting down FX particle manager..");
    particles.clear(); // first: they point into the emitters
    emitters.clear();
    CommandRegistry::remove(commands);
}

void FxParticleManager::addEmitter(const FxParticleEmitter& emitter) {
    TARNWICK_LOCATION("FxParticleManager::addEmitter");
    emitters.push_back(emitter);
}

void FxParticleManager::addParticle(const FxParticle& particle) {
    TARNWICK_LOCATION("FxParticleManager::addParticle");
    particles.push_back(particle);
}

void FxParticleManager::run(float dt, const View& view) {
    TARNWICK_LOCATION("FxParticleManager::run");
    runEmitters(dt, view);
    runParticles(dt, view);
}

void FxParticleManager::runEmitters(float dt, const View& view) {
    TARNWICK_LOCATION("FxParticleManager::runEmitters");
    const Box near = view.emitterSquare();
    for (FxParticleEmitter& emitter : emitters) {
        if (near.holds(emitter.position)) {
            emitter.run(dt);
        }
    }
}

void FxParticleManager::runParticles(float dt, const View& view) {
    TARNWICK_LOCATION("FxParticleManager::runParticles");
    const Vector2 gravityStep =
        view.down() * ParticleManager::gravity() * dt; // falls the way the water falls
    for (auto place = particles.begin(); place != particles.end();) {
        FxParticle& particle = *place;
        particle.timeLeft -= dt;
        if (!(particle.timeLeft > 0.0f)) {
            place = particles.erase(place);
            continue;
        }
        particle.position += particle.velocity * dt;
        // Kept: `dt` enters twice, here and in the step, so the effective acceleration falls with the tick.
        particle.velocity += gravityStep * particle.gravity * dt;
        ++place;
    }
}

void FxParticleManager::keep(Moment& moment) {
    TARNWICK_LOCATION("FxParticleManager::keep");
    moment.emitters.clear();
    for (const FxParticleEmitter& emitter : emitters) {
        moment.emitters.push_back({.active = emitter.active, .timer = emitter.timer});
    }
    moment.particles.assign(particles.begin(), particles.end());
}

void FxParticleManager::putBack(const Moment& moment) {
    TARNWICK_LOCATION("FxParticleManager::putBack");
    auto then = moment.emitters.begin();
    for (FxParticleEmitter& emitter : emitters) {
        emitter.active = then->active;
        emitter.timer = then->timer;
        ++then;
    }
    particles.assign(moment.particles.begin(), moment.particles.end());
}

void FxParticleManager::debugDraw() {
    TARNWICK_LOCATION("FxParticleManager::debugDraw");
}

void FxParticleManager::conCmdFxEmitterCreate(const std::string& typed) {
    TARNWICK_LOCATION("FxParticleManager::conCmdFxEmitterCreate");
    const CommandArguments arguments( // Kept: the usage calls the command so
        typed, "\nUSAGE: Emitter create < x : number > < y : number > < dir_x : number > < dir_y : number > "
               "< id : integer > < emitter settings : fileName > ");
    if (!arguments.fit()) {
        return;
    }
    FxParticleEmitter emitter;
    emitter.position = {arguments.number(0), arguments.number(1)};
    emitter.id = arguments.integer(4);
    emitter.setDirection(arguments.number(2), arguments.number(3));
    emitter.loadEmitterSettings(arguments.text(5));
    addEmitter(emitter);
}

std::int32_t FxParticleManager::conCmdFxEmitterCount() {
    TARNWICK_LOCATION("FxParticleManager::conCmdFxEmitterCount");
    return static_cast<std::int32_t>(emitters.size());
}

std::int32_t FxParticleManager::conCmdFxParticleCount() {
    TARNWICK_LOCATION("FxParticleManager::conCmdFxParticleCount");
    return static_cast<std::int32_t>(particles.size());
}

} // namespace tarnwick
