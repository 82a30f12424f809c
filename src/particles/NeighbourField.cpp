#include "particles/NeighbourField.h"

#include "core/Float4.h"
#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "particles/ParticleMover.h"

#include <algorithm>
#include <array>
#include <bit>

namespace tarnwick {

namespace {

constexpr std::uint32_t lanes = 4;
constexpr float reach = 4.0f; ///< World units: two radii.
/// A root below 4 belongs to a float below 16, and no other does.
constexpr float reachSquared = reach * reach;
constexpr float onOneSpot = 1e-05f; ///< World units: below this two particles have no direction apart.

/// For each set of lanes: their numbers, packed to the front, and how many they are.
struct LanePacking {
    std::array<std::array<std::uint32_t, lanes>, 16> numbers{};
    std::array<std::uint32_t, 16> count{};
};
constexpr LanePacking makeLanePacking() {
    LanePacking packing;
    for (std::uint32_t mask = 0; mask < 16; ++mask) {
        for (std::uint32_t lane = 0; lane < lanes; ++lane) {
            if ((mask >> lane & 1u) != 0) {
                packing.numbers[mask][packing.count[mask]] = lane;
                ++packing.count[mask];
            }
        }
    }
    return packing;
}
constexpr LanePacking lanePacking = makeLanePacking();

/// Whether a push velocity is anything but +0 in both parts; the meetings of those that are change nothing.
constexpr bool isPush(Vector2 push) {
    return std::bit_cast<std::uint64_t>(push) != 0;
}

constexpr std::uint32_t lowestLanes(std::uint32_t count) {
    return (1u << count) - 1u;
}

// no location: four loads, for every four neighbours
Float4 gather(const float* from, const std::uint32_t* slots) {
    return Float4::of(from[slots[0]], from[slots[1]], from[slots[2]], from[slots[3]]);
}

} // namespace

NeighbourField::Row NeighbourField::rows[columnCount * columnLength];

void NeighbourField::load(const ParticleList& particles) {
    TARNWICK_LOCATION("NeighbourField::load");
    static_assert(columnCount == ParticleMover::gridSize + 2);
    clear();
    const std::size_t count = particles.size();
    x.resize(count + lanes); // a visit reads up to three bodies past the end of a row
    y.resize(count + lanes);
    shares.resize(count + lanes);
    pushes.resize(count + lanes);
    slots.resize(count);
    inReach.resize(count + lanes);
    touched.clear();
    nodes.clear();
    anyPush = false;
    for (const Particle& particle : particles) {
        nodes.push_back(&particle);
        anyPush |= isPush(particle.pushVelocity);
        if (!particle.inGrid) {
            continue;
        }
        const std::uint32_t cell = cellAt(particle.gridCellX, particle.gridCellY);
        if (rows[cell].end == 0) {
            touched.push_back(cell);
        }
        ++rows[cell].end;
    }
    std::uint32_t next = 0;
    for (const std::uint32_t cell : touched) {
        const std::uint32_t length = rows[cell].end;
        rows[cell] = {next, next};
        next += length;
    }
    // A chain holds its newest particle first, and the grid was filled in list order.
    for (std::size_t index = count; index-- > 0;) {
        const Particle& particle = *nodes[index];
        const std::uint32_t slot =
            particle.inGrid ? rows[cellAt(particle.gridCellX, particle.gridCellY)].end++ : next++;
        slots[index] = slot;
        put(slot, {particle.position, particle.velocity, particle.pushVelocity, particle.temperature});
    }
}

void NeighbourField::unload(ParticleList& particles) {
    TARNWICK_LOCATION("NeighbourField::unload");
    std::size_t index = 0;
    for (Particle& particle : particles) {
        while (slots[index] == dropped) {
            ++index;
        }
        const Body last = body(slots[index]);
        particle.position = last.position;
        particle.velocity = last.velocity;
        particle.pushVelocity = last.pushVelocity;
        particle.temperature = last.temperature;
        ++index;
    }
    clear();
}

void NeighbourField::clear() {
    TARNWICK_LOCATION("NeighbourField::clear");
    for (const std::uint32_t cell : touched) {
        rows[cell] = {};
    }
    touched.clear();
}

std::uint32_t
NeighbourField::gatherInReach(std::uint32_t column, std::uint32_t row, const Vector2& position) {
    TARNWICK_LOCATION("NeighbourField::gatherInReach");
    // Kept: not the cells above and below its own, nor any further off. It sets how stiff the water is on
    // each axis.
    constexpr std::uint32_t here = 0;
    constexpr std::uint32_t left = 0u - columnLength;
    constexpr std::uint32_t right = columnLength;
    constexpr std::uint32_t visits[] = {here, left, left + 1, left - 1, right, right + 1, right - 1};
    const std::uint32_t cell = cellAt(column, row);
    const Float4 centreX = Float4::all(position.x);
    const Float4 centreY = Float4::all(position.y);
    const Float4 limit = Float4::all(reachSquared);
    const float* const positionsX = x.data();
    const float* const positionsY = y.data();
    std::uint32_t* const found = inReach.data();
    std::uint32_t count = 0;
    const auto compareFour = [&](std::uint32_t slot, std::uint32_t wanted) {
        const Float4 dx = centreX - Float4::load(positionsX + slot);
        const Float4 dy = centreY - Float4::load(positionsY + slot);
        const std::uint32_t mask = notGreaterOrEqual(dx * dx + dy * dy, limit) & wanted;
        storeShifted(found + count, lanePacking.numbers[mask].data(), slot);
        count += lanePacking.count[mask];
    };
    for (const std::uint32_t visit : visits) {
        const Row bodies = rows[cell + visit];
        std::uint32_t slot = bodies.begin;
        for (; slot + lanes < bodies.end; slot += lanes) {
            compareFour(slot, lowestLanes(lanes));
        }
        compareFour(
            slot, lowestLanes(bodies.end - slot)); // also of none: whether a row is empty is hard to foretell
    }
    storeShifted(found + count, lanePacking.numbers[0].data(), 0); // valid slots: the last four may be fewer
    return count;
}

Overlap NeighbourField::meetNeighbours(std::uint32_t column, std::uint32_t row, Body& body) {
    TARNWICK_LOCATION("NeighbourField::meetNeighbours");
    const std::uint32_t count = gatherInReach(column, row, body.position);
    const OverlapSum sum = anyPush ? meet<true>(count, body) : meet<false>(count, body);
    if (sum.count == 0) {
        return {};
    }
    Overlap overlap{sum.direction / static_cast<float>(sum.count),
                    sum.amount / static_cast<float>(sum.count)};
    normaliseVector(overlap.direction);
    return overlap;
}

template <bool WithPush>
NeighbourField::OverlapSum NeighbourField::meet(std::uint32_t count, Body& body) {
    TARNWICK_LOCATION("NeighbourField::meet");
    const std::uint32_t* const others = inReach.data();
    // The arrays' addresses, in registers: to the compiler each store below might have moved them.
    const float* const positionsX = x.data();
    const float* const positionsY = y.data();
    float* const otherShares = shares.data()->numbers;
    Vector2* const otherPushes = pushes.data();
    const Float4 centreX = Float4::all(body.position.x);
    const Float4 centreY = Float4::all(body.position.y);
    const Float4 spot = Float4::all(onOneSpot);
    const Float4 half = Float4::all(0.5f);
    Float4 share = Float4::of(body.velocity.x, body.velocity.y, body.temperature, 0.0f);
    Vector2 push = body.pushVelocity;
    Vector2 direction;
    float amount = 0.0f;
    std::uint32_t pushCount = 0;
    float apartX[lanes];
    float apartY[lanes];
    float overlap[lanes];
    const auto meetOne = [&](std::uint32_t other, std::uint32_t lane) {
        direction.x += apartX[lane];
        direction.y += apartY[lane];
        amount += overlap[lane];
        float* const otherShare = otherShares + std::size_t{lanes} * other;
        share = (share + Float4::load(otherShare)) * half;
        share.store(otherShare);
        if constexpr (WithPush) {
            push = (push + otherPushes[other]) * 0.5f;
            otherPushes[other] = push;
        }
    };
    for (std::uint32_t first = 0; first < count; first += lanes) {
        const std::uint32_t present = std::min(count - first, lanes);
        const std::uint32_t* const four = others + first;
        const Float4 dx = centreX - gather(positionsX, four);
        const Float4 dy = centreY - gather(positionsY, four);
        const Float4 r = squareRoot(dx * dx + dy * dy);
        // Zero for two on one spot: a sum that began at zero stays as it is.
        whereGreater(r, spot, dx / r).store(apartX);
        whereGreater(r, spot, dy / r).store(apartY);
        whereGreater(r, spot, Float4::all(reach) - r).store(overlap);
        pushCount += lanePacking.count[greater(r, spot) & lowestLanes(present)];
        if (present == lanes) {
            meetOne(four[0], 0);
            meetOne(four[1], 1);
            meetOne(four[2], 2);
            meetOne(four[3], 3);
        } else {
            for (std::uint32_t lane = 0; lane < present; ++lane) {
                meetOne(four[lane], lane);
            }
        }
    }
    float numbers[lanes];
    share.store(numbers);
    body.velocity = {numbers[0], numbers[1]};
    body.temperature = numbers[2];
    body.pushVelocity = push;
    return {direction, amount, pushCount};
}

} // namespace tarnwick
