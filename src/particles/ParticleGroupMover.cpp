#include "particles/ParticleGroupMover.h"

#include "core/CommandRegistry.h"
#include "core/ConfigFile.h"
#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "core/ShareLeft.h"
#include "particles/CircleCollision.h"
#include "particles/FreezeField.h"
#include "particles/ParticleManager.h"
#include "particles/ParticleMover.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tarnwick {

namespace {

constexpr float viewMargin = 128.0f;   ///< World units beyond its radius at which a group is lost.
constexpr float stepPerRadius = 0.75f; ///< Share of the radius between two collision tests.
constexpr float mergeSlack = 2.0f;     ///< World units between two discs that already merge.
constexpr float pi = 3.1415927f;
static_assert(stepPerRadius < 1.0f); // or a disc could step through a wall

/// Radius of the disc that has the area of `count` particles.
float radiusOf(std::size_t count) {
    TARNWICK_LOCATION("ParticleGroupMover::radiusOf");
    // Kept: pi does not cancel to the last bit.
    return std::sqrt(static_cast<float>(count) * particleRadius * particleRadius * pi / pi);
}

/// What a melted member is in the free list: at rest in its group's motion, outside the grid.
void release(Particle& member, const ParticleGroup& group) {
    TARNWICK_LOCATION("ParticleGroupMover::release");
    member.velocity = group.velocity;
    member.previousVelocity = group.previousVelocity;
    member.pushVelocity = {};
    member.temperature = group.temperature;
    member.speed = vectorLength(member.velocity);
    member.inGrid = false;
    std::ranges::fill(member.trail, member.position);
    member.gridNext = nullptr;
    member.gridPrev = nullptr;
    member.gridCellX = 0;
    member.gridCellY = 0;
}

} // namespace

std::list<ParticleGroup> ParticleGroupMover::groups;
ParticleGroupMover::State ParticleGroupMover::state;

constexpr CommandRow ParticleGroupMover::commands[] = {
    {"ParticleGroupCount", conCmdParticleGroupCount},
    {"ParticleGroupDraw",
     CommandVariable{&state.groupDebugDraw, "ParticleGroupMover::conCmdParticleGroupDraw"}},
};

void ParticleGroupMover::initialise() {
    TARNWICK_LOCATION("ParticleGroupMover::initialise");
    shutdown();
    Log::print("\nInitialising grouped particle mover..");
    state.groupDebugDraw = false;
    CommandRegistry::add(commands);
    const ConfigFile config("cfg\\water.cfg");
    state.particleGroupInterpolation =
        std::clamp(config.getVarAsFloat("particleGroupInterpolation"), 0.0f, 1.0f);
    state.groupExpandSpeed = std::clamp(config.getVarAsFloat("groupExpandSpeed"), 0.0f, 1.0f);
    state.iceGravityStrenght = config.getVarAsFloat("iceGravityStrenght");
}

void ParticleGroupMover::shutdown() {
    TARNWICK_LOCATION("ParticleGroupMover::shutdown");
    Log::print("\nShutting down grouped particle mover..");
    groups.clear();
    state.groupDebugDraw = false;
    CommandRegistry::remove(commands);
}

void ParticleGroupMover::doParticleGrouping(ParticleList& particles) {
    TARNWICK_LOCATION("ParticleGroupMover::doParticleGrouping");
    ParticleList frozen;
    for (auto place = particles.begin(); place != particles.end();) {
        const auto next = std::next(place);
        if (place->temperature <= iceTemperature) {
            ParticleMover::removeGridParticle(*place);
            frozen.splice(frozen.end(), particles, place);
        }
        place = next;
    }
    if (frozen.empty()) {
        return;
    }
    FreezeField field(frozen, particles);
    while (!frozen.empty()) {
        ParticleGroup& group = groups.emplace_front();
        field.takeFirstFrozen(group);
        Particle& first = group.members.front();
        group.centre = first.position;
        group.velocity = first.velocity;
        group.previousVelocity = first.previousVelocity;
        group.pushVelocity = first.pushVelocity;
        group.temperature = first.temperature;
        first.speed = 0.0f;
        field.gather(first, group);
        group.targetRadius = radiusOf(group.members.size());
    }
}

void ParticleGroupMover::particleGroupRecursive(Particle& from,
                                                ParticleGroup& group,
                                                ParticleList& frozen,
                                                ParticleList& particles) {
    TARNWICK_LOCATION("ParticleGroupMover::particleGroupRecursive");
    FreezeField(frozen, particles).gather(from, group);
}

void ParticleGroupMover::runSimulation(float dt, const View& view, ParticleList& particles) {
    TARNWICK_LOCATION("ParticleGroupMover::runSimulation");
    const Tick tick{
        .dt = dt,
        .gravity = view.down() * ParticleManager::gravity(),
        .warming = 1.0f - shareLeft(1.0f - ParticleManager::heatTransferRate(), dt),
        .placeLeft = shareLeft(state.particleGroupInterpolation, dt),
        .radiusLeft = shareLeft(state.groupExpandSpeed, dt),
        .view = view.rectangle(),
    };
    for (auto group = groups.begin(); group != groups.end();) {
        if (!stepGroup(*group, tick)) {
            group = groups.erase(group); // its members go with it
        } else if (group->temperature > iceTemperature || group->members.empty()) {
            for (Particle& member : group->members) {
                release(member, *group);
            }
            group->members.reverse(); // one after the other to the front: the last member comes first
            particles.splice(particles.begin(), group->members);
            group = groups.erase(group);
        } else {
            ++group;
        }
    }
    doGroupMerging();
}

bool ParticleGroupMover::stepGroup(ParticleGroup& group, const Tick& tick) {
    TARNWICK_LOCATION("ParticleGroupMover::stepGroup");
    const Vector2 oldCentre = group.centre;
    group.previousVelocity = group.velocity;
    group.colliding = false;
    if (tick.view.isBeyond(group.centre, group.radius + viewMargin)) {
        return false;
    }
    if (group.dying) {
        group.killTimer -= tick.dt;
        if (group.killTimer <= 0.0f) {
            return false;
        }
    }
    group.velocity += tick.gravity * tick.dt * state.iceGravityStrenght;
    group.temperature =
        tick.warming * ParticleManager::roomTemperature() + (1.0f - tick.warming) * group.temperature;
    group.radius = (1.0f - tick.radiusLeft) * group.targetRadius + tick.radiusLeft * group.radius;
    moveGroup(group, tick.dt);
    const Vector2 moved = group.centre - oldCentre;
    for (Particle& member : group.members) {
        member.position += moved;
        member.dying = group.dying;
        member.killTimer = group.killTimer;
        const Vector2 place = group.centre + member.groupDirection * member.groupFraction * group.radius;
        member.position = member.position * tick.placeLeft + place * (1.0f - tick.placeLeft);
        member.temperature =
            (1.0f - tick.placeLeft) * group.temperature + tick.placeLeft * member.temperature;
        member.pushVelocity = group.pushVelocity;
    }
    group.pushVelocity = {};
    return true;
}

void ParticleGroupMover::moveGroup(ParticleGroup& group, float dt) {
    TARNWICK_LOCATION("ParticleGroupMover::moveGroup");
    const Vector2 v = group.velocity + group.pushVelocity;
    if (v == Vector2{}) { // exactly at rest
        return;
    }
    const Vector2 path = v * dt;
    const float length = vectorLength(path);
    const float step = group.radius * stepPerRadius;
    if (length <= step) {
        group.centre += path;
        group.colliding |= CircleCollision::collisionTest(group.centre, group.radius);
    } else {
        const Vector2 along = path / length;
        float left = length;
        while (left > 0.0f) {
            const float part = left > step ? step : left;
            group.centre += along * part;
            group.colliding |= CircleCollision::collisionTest(group.centre, group.radius);
            if (left - part == left) {
                break; // so absurdly far that no step shortens the way: it would never end
            }
            left -= part; // exactly 0 after the last
        }
    }
    const Vector2 normal = CircleCollision::contactNormal(); // of the last step only, and not of unit length
    group.velocity -= normal * dotProduct(group.velocity, normal);
}

void ParticleGroupMover::doGroupMerging() {
    TARNWICK_LOCATION("ParticleGroupMover::doGroupMerging");
    for (auto a = groups.begin(); a != groups.end(); ++a) {
        for (auto b = std::next(a); b != groups.end(); ++b) {
            if (!(distanceBetween(a->centre, b->centre) < a->targetRadius + b->targetRadius + mergeSlack)) {
                continue;
            }
            // Kept: an emptied group stays until its next step, with the reach it had, and can even receive
            // members.
            ParticleGroup& taker = a->targetRadius <= b->targetRadius ? *b : *a;
            ParticleGroup& giver = &taker == &*b ? *a : *b;
            taker.members.splice(taker.members.end(), giver.members);
            taker.targetRadius = radiusOf(taker.members.size());
        }
    }
}

void ParticleGroupMover::keep(Moment& moment) {
    TARNWICK_LOCATION("ParticleGroupMover::keep");
    moment.groups = groups;
}

void ParticleGroupMover::putBack(const Moment& moment) {
    TARNWICK_LOCATION("ParticleGroupMover::putBack");
    groups = moment.groups;
}

void ParticleGroupMover::killGroup(ParticleGroup& group) {
    TARNWICK_LOCATION("ParticleGroupMover::killGroup");
    if (!group.dying) {
        group.dying = true;
        group.killTimer = ParticleManager::particleKillTime();
    }
}

std::int32_t ParticleGroupMover::conCmdParticleGroupCount() {
    TARNWICK_LOCATION("ParticleGroupMover::conCmdParticleGroupCount");
    return static_cast<std::int32_t>(groups.size());
}

} // namespace tarnwick
