#include "particles/ParticleManager.h"

#include "core/CommandArguments.h"
#include "core/CommandRegistry.h"
#include "core/ConfigFile.h"
#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "core/Random.h"
#include "core/ShareLeft.h"
#include "particles/CircleCollision.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleMover.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tarnwick {

namespace {

constexpr float viewMargin = 130.0f;        ///< World units outside the view at which a particle is lost.
constexpr float wholeTurn = 6.2831855f;     ///< Radians.
constexpr float shortestKillTime = 0.0001f; ///< Seconds: the drawing divides by the kill time.
/// Free and frozen, up to which `ParticleCreate` makes more: a tick of many more would take minutes.
constexpr std::uint64_t mostParticlesMade = 65'536;

std::uint64_t particlesInAll() {
    TARNWICK_LOCATION("ParticleManager::particlesInAll");
    std::uint64_t count = ParticleManager::particles.size();
    for (const ParticleGroup& group : ParticleGroupMover::groups) {
        count += group.members.size();
    }
    return count;
}

} // namespace

ParticleList ParticleManager::particles;
ParticleManager::State ParticleManager::state;

constexpr CommandRow ParticleManager::commands[] = {
    // As typed: unlike in the file, a negative gravity is allowed here.
    {"Gravity", CommandVariable{&state.gravity, "ParticleManager::conCmdGravity"}},
    {"RoomTemperature", CommandVariable{&state.roomTemperature, "ParticleManager::conCmdRoomTemperature"}},
    {"HeatTransferRate", conCmdHeatTransferRate},
    {"SteamRiseRate", CommandVariable{&state.steamRiseRate, "ParticleManager::conCmdSteamRiseRate"}},
    {"SteamScatterRate", CommandVariable{&state.steamScatterRate, "ParticleManager::conCmdSteamScatterRate"}},
    {"ParticleCreate", conCmdParticleCreate},
    {"ParticleCount", conCmdParticleCount},
};

void ParticleManager::initialise() {
    TARNWICK_LOCATION("ParticleManager::initialise");
    shutdown();
    Log::print("\nInitialising particle manager..");
    ParticleMover::initialise();
    ParticleGroupMover::initialise();
    CircleCollision::prepare(); // now, and not in the level's first tick
    CommandRegistry::add(commands);
    const ConfigFile config("cfg\\water.cfg");
    state.gravity = std::abs(config.getVarAsFloat("gravity"));
    state.roomTemperature = config.getVarAsFloat("roomTemperature");
    state.heatTransferRate = std::clamp(config.getVarAsFloat("heatTransferRate"), 0.0f, 1.0f);
    state.steamRiseRate = config.getVarAsFloat("steamRiseRate");
    state.steamScatterRate = config.getVarAsFloat("steamScatterRate");
    state.particleKillTime = std::max(config.getVarAsFloat("particleKillTime"), shortestKillTime);
}

void ParticleManager::shutdown() {
    TARNWICK_LOCATION("ParticleManager::shutdown");
    Log::print("\nShutting down particle manager..");
    particles.clear();
    ParticleMover::shutdown();
    ParticleGroupMover::shutdown();
    CommandRegistry::remove(commands);
}

void ParticleManager::runSimulation(float dt, const View& view) {
    TARNWICK_LOCATION("ParticleManager::runSimulation");
    ParticleMover::updateSimulationVars(dt);
    const Tick tick{
        .dt = dt,
        .gravityStep = view.down() * dt * state.gravity,
        .heatKept = shareLeft(1.0f - state.heatTransferRate, dt),
        .view = view.rectangle(),
    };
    ParticleMover::rebuildGrid(particles, view);
    NeighbourField& field = state.field;
    field.load(particles);
    std::size_t index = 0;
    for (auto place = particles.begin(); place != particles.end(); ++index) {
        if (stepParticle(*place, field.slotOf(index), tick)) {
            ++place;
        } else {
            field.drop(index);
            place = removeParticle(place);
        }
    }
    field.unload(particles);
    ParticleMover::runParticleAttractions(dt);
    ParticleGroupMover::doParticleGrouping(particles);
    ParticleGroupMover::runSimulation(dt, view, particles);
}

bool ParticleManager::stepParticle(Particle& particle, std::uint32_t slot, const Tick& tick) {
    TARNWICK_LOCATION("ParticleManager::stepParticle");
    Body body = state.field.body(slot);
    if (tick.view.isBeyond(body.position, viewMargin)) {
        ParticleMover::removeGridParticle(particle);
        return false;
    }
    bool gone = false;
    if (particle.dying) {
        particle.killTimer -= tick.dt;
        if (particle.killTimer <= 0.0f) {
            ParticleMover::removeGridParticle(particle); // nobody meets it any more, but it finishes its step
            gone = true;
        }
    }
    state.field.hide(slot);
    particle.previousVelocity = body.velocity;
    applyGravity(body.velocity, body.temperature, tick.gravityStep);
    body.temperature = body.temperature * tick.heatKept + state.roomTemperature * (1.0f - tick.heatKept);
    particle.trail[2] = particle.trail[1];
    particle.trail[1] = particle.trail[0];
    particle.trail[0] = body.position;
    if (ParticleMover::travel(body.position, body.velocity, body.pushVelocity, tick.dt)) {
        const Overlap overlap = state.field.meetNeighbours(particle.gridCellX, particle.gridCellY, body);
        ParticleMover::pushOut(body.position, overlap.direction, overlap.amount, tick.dt);
    }
    particle.speed = vectorLength(body.velocity + body.pushVelocity);
    body.pushVelocity = {};
    state.field.put(slot, body);
    return !gone;
}

void ParticleManager::applyGravity(Vector2& velocity, float temperature, const Vector2& gravityStep) {
    TARNWICK_LOCATION("ParticleManager::applyGravity");
    if (temperature >= steamTemperature) {
        velocity -= gravityStep * state.steamRiseRate;
        Vector2 scatter = gravityStep * state.steamScatterRate;
        rotateVector(scatter, randomFloat() * wholeTurn);
        velocity += scatter;
    } else {
        velocity += gravityStep;
    }
}

void ParticleManager::createParticles(Vector2 middle, float radius, std::int32_t count) {
    TARNWICK_LOCATION("ParticleManager::createParticles");
    for (std::int32_t i = 0; i < count; ++i) {
        const float r = randomFloat() * radius;
        Vector2 direction;
        direction.x = randomFloat() - 0.5f;
        direction.y = randomFloat() - 0.5f;
        normaliseVector(direction);
        Particle& particle = particles.emplace_front();
        particle.position = middle + direction * r;
        std::ranges::fill(particle.trail, particle.position);
        particle.temperature = state.roomTemperature;
    }
}

void ParticleManager::killParticle(Particle& particle) {
    TARNWICK_LOCATION("ParticleManager::killParticle");
    if (!particle.dying) {
        particle.dying = true;
        particle.killTimer = state.particleKillTime;
    }
}

ParticleList::iterator ParticleManager::removeParticle(ParticleList::iterator place) {
    TARNWICK_LOCATION("ParticleManager::removeParticle");
    return particles.erase(place);
}

void ParticleManager::keep(Moment& moment) {
    TARNWICK_LOCATION("ParticleManager::keep");
    moment.gravity = state.gravity;
    moment.roomTemperature = state.roomTemperature;
    moment.heatTransferRate = state.heatTransferRate;
    moment.steamRiseRate = state.steamRiseRate;
    moment.steamScatterRate = state.steamScatterRate;
    moment.particles.assign(particles.begin(), particles.end());
}

void ParticleManager::putBack(const Moment& moment) {
    TARNWICK_LOCATION("ParticleManager::putBack");
    state.gravity = moment.gravity;
    state.roomTemperature = moment.roomTemperature;
    state.heatTransferRate = moment.heatTransferRate;
    state.steamRiseRate = moment.steamRiseRate;
    state.steamScatterRate = moment.steamScatterRate;
    ParticleMover::unlink(particles);
    particles.assign(moment.particles.begin(), moment.particles.end());
    ParticleMover::linkAgain(particles);
}

float ParticleManager::conCmdHeatTransferRate(float value, bool set) {
    TARNWICK_LOCATION("ParticleManager::conCmdHeatTransferRate");
    if (set) {
        state.heatTransferRate = std::clamp(value, 0.0f, 1.0f);
    }
    return state.heatTransferRate;
}

void ParticleManager::conCmdParticleCreate(const std::string& typed) {
    TARNWICK_LOCATION("ParticleManager::conCmdParticleCreate");
    const CommandArguments arguments(typed, "\nUsage: ParticleCreate < x : number > < y : number > "
                                            "< radius : number > < amount : integer number > ");
    if (!arguments.fit()) {
        return;
    }
    const std::int32_t amount = arguments.integer(3);
    if (amount <= 0) {
        Log::print("\nInvalid number of particles to make");
        return;
    }
    if (static_cast<std::uint64_t>(amount) + particlesInAll() > mostParticlesMade) {
        Log::print("\nToo many particles: the command makes no more than 65536 in all");
        return;
    }
    const Vector2 centre{arguments.number(0), arguments.number(1)};
    createParticles(centre.x, centre.y, arguments.number(2), amount);
    if (state.lookAt != nullptr) {
        state.lookAt(centre);
    }
}

std::int32_t ParticleManager::conCmdParticleCount() {
    TARNWICK_LOCATION("ParticleManager::conCmdParticleCount");
    return static_cast<std::int32_t>(particles.size());
}

} // namespace tarnwick
