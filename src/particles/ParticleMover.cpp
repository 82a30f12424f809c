#include "particles/ParticleMover.h"

#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "core/Random.h"
#include "core/ShareLeft.h"
#include "particles/CircleCollision.h"
#include "particles/ParticleManager.h"

#include <algorithm>
#include <bit>

namespace tarnwick {

namespace {

constexpr float interactionDistance = 4.0f; ///< World units: two radii, the reach of repulsion and exchange.
constexpr float onOneSpot = 1e-05f;        ///< World units: below this two particles have no direction apart.
constexpr float largestStep = 1.7f;        ///< World units between two collision tests, and the largest push.
constexpr float largestPath = 15.0f;       ///< World units in one tick.
constexpr float repulsionTimeBase = 0.02f; ///< Seconds: a tick this long pushes by the whole overlap.
constexpr float attractionRest = 4.0f;     ///< World units from its cluster's middle where the pull ends.
constexpr float attractionTimeBase = 0.75f; ///< Seconds.
constexpr float largestAttraction = 1.5f;   ///< World units in one tick.
constexpr float attractionJitter = 0.1f;    ///< World units: full width of the random offset on each axis.
constexpr float onTheMiddle = 0.0001f;      ///< World units: below this there is no direction to the middle.
/// 2^32 by the golden ratio: spreads the bits of a float.
constexpr std::uint32_t keptSpeedHash = 0x9E3779B1u;
static_assert(interactionDistance == 2.0f * particleRadius);
static_assert(largestStep < particleRadius); // or a particle could step through a wall

} // namespace

Particle* ParticleMover::particleGrid[gridSize * gridSize];
ParticleMover::State ParticleMover::state;

void ParticleMover::initialise() {
    TARNWICK_LOCATION("ParticleMover::initialise");
    Log::print("\nInitialising particle mover..");
    std::ranges::fill(particleGrid, nullptr);
}

void ParticleMover::shutdown() {
    TARNWICK_LOCATION("ParticleMover::shutdown");
    Log::print("\nShutting down particle mover..");
    std::ranges::fill(particleGrid, nullptr);
}

void ParticleMover::clearParticleGrid() {
    TARNWICK_LOCATION("ParticleMover::clearParticleGrid");
    std::ranges::fill(particleGrid, nullptr);
    for (Particle& particle : ParticleManager::particles) {
        particle.inGrid = false;
    }
}

void ParticleMover::updateSimulationVars(float dt) {
    TARNWICK_LOCATION("ParticleMover::updateSimulationVars");
    state.simulationDecay = 1.0f - shareLeft(state.decayBase, dt);
}

void ParticleMover::addGridParticle(Particle& particle) {
    TARNWICK_LOCATION("ParticleMover::addGridParticle");
    if (particle.inGrid) {
        return;
    }
    link(particle, state.gridOrigin);
}

void ParticleMover::link(Particle& particle, const Vector2& origin) {
    TARNWICK_LOCATION("ParticleMover::link");
    // The cut goes toward zero: up to a unit before the origin counts as inside. Whatever else lies outside,
    // no number at all included, gets a number that no cell has.
    const auto cellUnder = [](float offset) {
        const bool inside = offset > -1.0f && offset < 2.0f * static_cast<float>(gridSize);
        return inside ? static_cast<std::uint32_t>(static_cast<std::int32_t>(offset)) >> 1u : gridSize;
    };
    const std::uint32_t column = cellUnder(particle.position.x - origin.x);
    const std::uint32_t row = cellUnder(particle.position.y - origin.y);
    if (column >= gridSize || row >= gridSize) {
        return;
    }
    particle.gridCellX = column;
    particle.gridCellY = row;
    particle.inGrid = true;
    Particle*& head = particleGrid[column * gridSize + row];
    particle.gridPrev = nullptr;
    particle.gridNext = head;
    if (head != nullptr) {
        head->gridPrev = &particle;
    }
    head = &particle;
}

void ParticleMover::removeGridParticle(Particle& particle) {
    TARNWICK_LOCATION("ParticleMover::removeGridParticle");
    if (!particle.inGrid) {
        return;
    }
    if (particle.gridPrev == nullptr) {
        particleGrid[particle.gridCellX * gridSize + particle.gridCellY] = particle.gridNext;
    } else {
        particle.gridPrev->gridNext = particle.gridNext;
    }
    if (particle.gridNext != nullptr) {
        particle.gridNext->gridPrev = particle.gridPrev;
    }
    particle.gridNext = nullptr;
    particle.gridPrev = nullptr;
    particle.inGrid = false;
}

void ParticleMover::rebuildGrid(ParticleList& particles, const View& view) {
    TARNWICK_LOCATION("ParticleMover::rebuildGrid");
    // Nobody stays where he is: instead of mending the chains one particle at a time, all are dropped first.
    unlink(particles);
    const Vector2 origin = view.centre() - Vector2{gridReach, gridReach};
    state.gridOrigin = origin;
    for (Particle& particle : particles) {
        link(particle, origin);
    }
}

void ParticleMover::unlink(ParticleList& particles) {
    TARNWICK_LOCATION("ParticleMover::unlink");
    for (Particle& particle : particles) {
        if (particle.inGrid) {
            particleGrid[particle.gridCellX * gridSize + particle.gridCellY] = nullptr;
        }
        particle.gridNext = nullptr;
        particle.gridPrev = nullptr;
        particle.inGrid = false;
    }
}

void ParticleMover::linkAgain(ParticleList& particles) {
    TARNWICK_LOCATION("ParticleMover::linkAgain");
    for (Particle& particle : particles) {
        particle.gridNext = nullptr;
        particle.gridPrev = nullptr;
        if (!particle.inGrid) {
            continue;
        }
        Particle*& head = particleGrid[particle.gridCellX * gridSize + particle.gridCellY];
        particle.gridNext = head;
        if (head != nullptr) {
            head->gridPrev = &particle;
        }
        head = &particle;
    }
}

void ParticleMover::particleRepulse(
    Particle& a, Particle& b, Vector2& direction, float& amount, std::uint32_t& count) {
    TARNWICK_LOCATION("ParticleMover::particleRepulse");
    if (&a == &b) {
        return;
    }
    const Vector2 apart = a.position - b.position;
    const float r = vectorLength(apart);
    if (r >= interactionDistance) {
        return;
    }
    if (r > onOneSpot) {
        direction += apart / r;
        amount += interactionDistance - r;
        ++count;
    }
    a.pushVelocity = b.pushVelocity = (a.pushVelocity + b.pushVelocity) * 0.5f;
    a.velocity = b.velocity = (a.velocity + b.velocity) * 0.5f;
    a.temperature = b.temperature = (a.temperature + b.temperature) * 0.5f;
}

void ParticleMover::doParticleRepulsions(Particle& particle, Vector2& direction, float& amount) {
    TARNWICK_LOCATION("ParticleMover::doParticleRepulsions");
    direction = {};
    amount = 0.0f;
    std::uint32_t count = 0;
    const auto meetCell = [&](std::uint32_t column, std::uint32_t row) {
        for (Particle* other = particleGrid[column * gridSize + row]; other != nullptr;
             other = other->gridNext) {
            particleRepulse(particle, *other, direction, amount, count);
        }
    };
    const std::uint32_t x = particle.gridCellX;
    const std::uint32_t y = particle.gridCellY;
    const auto meetColumn = [&](std::uint32_t column) {
        meetCell(column, y);
        if (y < gridSize - 1) {
            meetCell(column, y + 1);
        }
        if (y > 0) {
            meetCell(column, y - 1);
        }
    };
    // Kept: not the cells above and below its own, nor any further off. It sets how stiff the water is on
    // each axis.
    meetCell(x, y);
    if (x > 0) {
        meetColumn(x - 1);
    }
    if (x < gridSize - 1) {
        meetColumn(x + 1);
    }
    if (count > 0) {
        direction = direction / static_cast<float>(count);
        amount = amount / static_cast<float>(count);
        normaliseVector(direction);
    }
}

void ParticleMover::moveParticle(Particle& particle, float dt) {
    TARNWICK_LOCATION("ParticleMover::moveParticle");
    if (!travel(particle.position, particle.velocity, particle.pushVelocity, dt)) {
        return;
    }
    Vector2 direction;
    float amount = 0.0f;
    doParticleRepulsions(particle, direction, amount);
    pushOut(particle.position, direction, amount, dt);
}

bool ParticleMover::travel(Vector2& position, Vector2& velocity, const Vector2& pushVelocity, float dt) {
    TARNWICK_LOCATION("ParticleMover::travel");
    const Vector2 v = velocity + pushVelocity;
    if (v == Vector2{}) { // exactly at rest
        return false;
    }
    const Vector2 path = v * dt;
    const float length = vectorLength(path);
    if (length <= largestStep) {
        position += path;
        CircleCollision::collisionTest(position, particleRadius);
    } else {
        const Vector2 along = path / length;
        float left = std::min(length, largestPath);
        while (left > 0.0f) {
            const float step = left > largestStep ? largestStep : left;
            position += along * step;
            CircleCollision::collisionTest(position, particleRadius);
            left -= step; // exactly 0 after the last
        }
    }
    const Vector2 normal = CircleCollision::contactNormal(); // of the last step only, and not of unit length
    velocity -= normal * dotProduct(velocity, normal);
    velocity *= speedKept(CircleCollision::contactFriction(), dt);
    return true;
}

void ParticleMover::pushOut(Vector2& position, const Vector2& direction, float amount, float dt) {
    TARNWICK_LOCATION("ParticleMover::pushOut");
    amount *= std::min(dt / repulsionTimeBase, 1.0f);
    if (amount > 0.0f) {
        position += direction * std::min(amount, largestStep);
        CircleCollision::collisionTest(position, particleRadius);
    }
}

float ParticleMover::speedKept(float friction, float dt) {
    TARNWICK_LOCATION("ParticleMover::speedKept");
    if (friction == 1.0f) { // exactly: no contact, or perfectly smooth
        return 1.0f;
    }
    // A tick meets few frictions, but each of them thousands of times.
    const auto bits = std::bit_cast<std::uint32_t>(friction);
    KeptSpeed& entry = state.keptSpeeds[(bits * keptSpeedHash) >> (32u - keptSpeedBits)];
    if (entry.friction != friction || entry.dt != dt) {
        entry = {friction, dt, shareLeft(friction, dt)};
    }
    return entry.kept;
}

void ParticleMover::groupParticles(std::list<Particle*>& group, std::list<Particle*>& rest, float distance) {
    TARNWICK_LOCATION("ParticleMover::groupParticles");
    const float reach = distance * distance;
    for (auto candidate = rest.begin(); candidate != rest.end();) {
        const auto next = std::next(candidate);
        const bool joins = std::ranges::any_of(group, [&](const Particle* member) {
            const Vector2 apart = (*candidate)->position - member->position;
            return dotProduct(apart, apart) <= reach;
        });
        if (joins) {
            group.splice(group.end(), rest, candidate);
        }
        candidate = next;
    }
}

void ParticleMover::getGroupCenter(const std::list<Particle*>& group, Vector2& centre) {
    TARNWICK_LOCATION("ParticleMover::getGroupCenter");
    if (group.empty()) {
        return;
    }
    Vector2 sum;
    for (const Particle* particle : group) {
        sum += particle->position;
    }
    centre = sum / static_cast<float>(group.size());
}

void ParticleMover::runParticleAttractions(float dt) {
    TARNWICK_LOCATION("ParticleMover::runParticleAttractions");
    ClusterSweep& sweep = state.sweep;
    sweep.start(ParticleManager::particles);
    for (auto cluster = sweep.nextCluster(); !cluster.empty(); cluster = sweep.nextCluster()) {
        Vector2 sum;
        for (const ClusterSweep::Entry& member : cluster) {
            sum += member.position;
        }
        const Vector2 centre = sum / static_cast<float>(cluster.size());
        for (const ClusterSweep::Entry& member : cluster) {
            attract(member.particle->position, centre, dt);
        }
    }
}

void ParticleMover::attract(Vector2& position, const Vector2& centre, float dt) {
    TARNWICK_LOCATION("ParticleMover::attract");
    const Vector2 toCentre = centre - position;
    const float r = vectorLength(toCentre);
    if (!(r > onTheMiddle)) {
        return;
    }
    const Vector2 along = toCentre / r;
    const float pull = std::min((r - attractionRest) * (dt / attractionTimeBase), largestAttraction);
    const float jitterX = attractionJitter * (randomFloat() - 0.5f); // drawn even when no move follows
    const float jitterY = attractionJitter * (randomFloat() - 0.5f);
    if (pull > 0.0f) {
        position += along * pull + Vector2{jitterX, jitterY};
        CircleCollision::collisionTest(position, particleRadius);
    }
}

} // namespace tarnwick
