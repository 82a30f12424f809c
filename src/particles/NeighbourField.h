#pragma once

#include "core/Vector2.h"
#include "particles/Particle.h"
#include "particles/ParticleList.h"

#include <cstdint>
#include <limits>
#include <vector>

namespace tarnwick {

/// What a step and its neighbours read and write of a particle.
struct Body {
    Vector2 position;
    Vector2 velocity;
    Vector2 pushVelocity;
    float temperature = 0.0f;
};

/// The push that a particle gets from its neighbours.
struct Overlap {
    Vector2 direction;   ///< Unit, away from them; zero without any.
    float amount = 0.0f; ///< Mean of the overlaps, world units.
};

/// The bodies of all free particles for the length of one tick, laid out for the one thing that costs time:
/// the visit of a particle to everybody in the seven cells about it, in order, with the exchange of velocity
/// and temperature.
///
/// The rule is `ParticleMover::doParticleRepulsions`, and this gives its results to the last bit. What is
/// different is where the data lie. The bodies of a cell stand in a row, in the order of the cell's chain,
/// and the rows are found by one look-up; so positions are compared four at a time, and no pointer is
/// followed: in the field's words a cell list, the bodies a structure of arrays filled by a counting sort.
/// During a visit nobody's position changes: all distances can be taken ahead. Only the exchange
/// must go one by one, since each meeting starts from what the one before left.
class NeighbourField {
public:
    NeighbourField() = default;
    ~NeighbourField() { clear(); }
    NeighbourField(const NeighbourField&) = default;
    NeighbourField& operator=(const NeighbourField&) = default;

    /// Takes over the bodies of `particles`, whose grid cells must be those of this tick.
    void load(const ParticleList& particles);
    /// Gives the bodies back to their particles, and forgets them. `particles` has lost those that were
    /// dropped.
    void unload(ParticleList& particles);
    /// Forgets the bodies.
    void clear();

    /// Number of the body of the particle at `index` in the list that was loaded.
    std::uint32_t slotOf(std::size_t index) const { return slots[index]; }

    /// Leaves the body of a particle that is erased from the list out of account.
    // no location: two stores
    void drop(std::size_t index) {
        hide(slots[index]);
        slots[index] = dropped;
    }

    Body body(std::uint32_t slot) const {
        return {{x[slot], y[slot]},
                {shares[slot].numbers[0], shares[slot].numbers[1]},
                pushes[slot],
                shares[slot].numbers[2]};
    }
    /// Makes a body one that nobody meets: for its own visit, and for a particle that is gone.
    void hide(std::uint32_t slot) { x[slot] = std::numeric_limits<float>::infinity(); }
    /// Puts a body back, changed, and visible.
    // no location: a few stores, for every particle of a tick
    void put(std::uint32_t slot, const Body& body) {
        x[slot] = body.position.x;
        y[slot] = body.position.y;
        shares[slot] = {{body.velocity.x, body.velocity.y, body.temperature, 0.0f}};
        pushes[slot] = body.pushVelocity;
    }
    /// Lets a hidden body in the cell (column, row) meet all neighbours. Changes its velocities and
    /// temperature, and theirs.
    Overlap meetNeighbours(std::uint32_t column, std::uint32_t row, Body& body);

private:
    /// What neighbours share, for one exchange of four floats: velocity x and y, temperature, and 0.
    struct alignas(16) Share {
        float numbers[4];
    };

    /// What the neighbours' pushes add up to.
    struct OverlapSum {
        Vector2 direction;
        float amount = 0.0f;
        std::uint32_t count = 0;
    };

    /// Bodies in a row: those of one cell.
    struct Row {
        std::uint32_t begin = 0;
        std::uint32_t end = 0;
    };

    /// A column of cells with a border of empty ones, so that a visit tests no limits. It is a little longer
    /// than a power of two: columns side by side would fall on the same few lines of the cache.
    static constexpr std::uint32_t columnLength = 1024 + 2 + 14;
    static constexpr std::uint32_t columnCount = 1024 + 2;
    /// The rows of all cells, by column and row. One field is loaded at a time; between two ticks all are
    /// empty.
    static Row rows[columnCount * columnLength];

    static constexpr std::uint32_t cellAt(std::uint32_t column, std::uint32_t row) {
        return (column + 1) * columnLength + row + 1;
    }

    static constexpr std::uint32_t dropped = ~0u; ///< Slot of a particle that is gone.

    /// Fills `inReach` for a body at `position`, and gives its length; behind it stand four slots of no
    /// meaning.
    std::uint32_t gatherInReach(std::uint32_t column, std::uint32_t row, const Vector2& position);
    /// Lets `body` meet the first `count` of `inReach`, one after the other.
    template <bool WithPush>
    OverlapSum meet(std::uint32_t count, Body& body);

    std::vector<float> x;
    std::vector<float> y;
    std::vector<Share> shares;
    std::vector<Vector2> pushes; ///< Push velocities, which neighbours share too.
    /// Not all of them are zero. Hardly ever so: then they are left out of the exchange.
    bool anyPush = false;
    std::vector<std::uint32_t> slots;   ///< By index in the list.
    std::vector<const Particle*> nodes; ///< By index in the list; only while loading.
    std::vector<std::uint32_t> touched; ///< Cells that hold bodies.
    std::vector<std::uint32_t> inReach; ///< Slots of the neighbours of the visit that runs, in order.
};

} // namespace tarnwick
