#pragma once

#include "core/Vector2.h"
#include "core/View.h"
#include "particles/ClusterSweep.h"
#include "particles/Particle.h"
#include "particles/ParticleList.h"

#include <array>
#include <cstdint>
#include <list>

namespace tarnwick {

/// Gives the water its feel: the grid of cells that makes neighbours known, the short-range pass in which a
/// particle pushes out of its neighbours and shares velocity and temperature with them, and the long-range
/// pass that pulls each cluster of particles toward its own middle.
///
/// The grid's origin follows the camera, so cell numbers mean something only within one tick;
/// `ParticleManager` rebuilds it at the start of each. During a tick particles move but stay in the cell they
/// had at its start.
class ParticleMover {
public:
    ParticleMover() = delete;

    static constexpr std::uint32_t gridSize = 1024; ///< Cells on a side; a cell is 2 by 2 world units.
    /// First particle of each cell, null when empty; cell (column, row) is entry column * 1024 + row. The
    /// newest particle of a cell is the head of its chain. Not owned: these are nodes of the free list.
    static Particle* particleGrid[gridSize * gridSize];

    static void initialise();
    static void shutdown();
    /// Empties the grid and clears `inGrid` on every free particle; for a level's restart.
    static void clearParticleGrid();
    /// Recomputes the decay of a tick of `dt` seconds, which nothing reads.
    static void updateSimulationVars(float dt);

    /// Links a particle that is not in the grid at the head of the cell under its position. Outside the grid
    /// it stays unlinked and keeps the cell numbers it had.
    static void addGridParticle(Particle& particle);
    /// Unlinks a particle that is in the grid; its cell numbers stay.
    static void removeGridParticle(Particle& particle);

    /// One meeting: below 4 units apart, adds the unit vector from `b` to `a` to `direction`, the overlap to
    /// `amount` and 1 to `count`, and lets both take the mean of their push velocity, velocity and
    /// temperature. On one spot they only take the means.
    static void
    particleRepulse(Particle& a, Particle& b, Vector2& direction, float& amount, std::uint32_t& count);
    /// `particle` meets everyone in its own cell and the three cells in each neighbouring column: the column
    /// to the left first, in each the rows y, y + 1, y - 1. The cells above and below its own are not
    /// visited. Gives the unit `direction` of the push and its mean `amount`, or zeros without a neighbour in
    /// reach.
    static void doParticleRepulsions(Particle& particle, Vector2& direction, float& amount);
    /// One step of `dt` seconds: along its velocity in moves of at most 1.7 units and 15 in all, then out of
    /// its neighbours, with a collision test after each move. A particle at rest does none of it.
    static void moveParticle(Particle& particle, float dt);

    /// Moves every entry of `rest` that lies within `distance` units of a member to the end of `group`, in
    /// one sweep: who joins late draws in nobody that was passed before.
    static void groupParticles(std::list<Particle*>& group, std::list<Particle*>& rest, float distance);
    /// The mean position; an empty group leaves `centre` as it was.
    static void getGroupCenter(const std::list<Particle*>& group, Vector2& centre);
    /// Pulls every cluster of free particles toward its middle. Draws `randomInt` once a particle, in list
    /// order, and then `randomFloat` twice for each particle that is not on its cluster's middle, in cluster
    /// order.
    static void runParticleAttractions(float dt);

    /// The parts of `moveParticle` about its meetings with the neighbours.
    /// Walks a particle along its velocity, with a collision test after each move, and takes the contact's
    /// share out of `velocity`. False for one at rest, which does nothing.
    static bool travel(Vector2& position, Vector2& velocity, const Vector2& pushVelocity, float dt);
    /// Moves a particle out of its neighbours, by what a tick of `dt` seconds gives of the mean overlap
    /// `amount`.
    static void pushOut(Vector2& position, const Vector2& direction, float amount, float dt);
    /// Links every particle anew, in list order, as `removeGridParticle` and `addGridParticle` of each would.
    /// The grid lies about the view's middle until the next call.
    static void rebuildGrid(ParticleList& particles, const View& view);
    /// Takes all of `particles` out of the grid.
    static void unlink(ParticleList& particles);
    /// Links each of `particles` that is marked as in the grid at the head of the cell that its numbers name,
    /// in list order. It need not be the cell under it: the grid's window has followed the camera since.
    static void linkAgain(ParticleList& particles);

private:
    friend class ModuleReset;
    friend class SimulationState;
    friend class SceneAccess;

    /// A power that was taken before.
    struct KeptSpeed {
        float friction = 1.0f;
        float dt = 0.0f;
        float kept = 1.0f;
    };
    static constexpr std::uint32_t keptSpeedBits = 6;
    /// World units the grid reaches left of and above the middle of the view; kept lopsided.
    static constexpr float gridReach = 512.0f;

    struct State {
        Vector2 gridOrigin{-gridReach, -gridReach}; ///< World units: the corner of cell (0, 0).
        float decayBase = 0.5f;                     ///< Share left after 1 s.
        float simulationDecay = 0.0f; ///< Share lost in a tick. Kept: computed each tick, read by nothing.
        std::array<KeptSpeed, 1u << keptSpeedBits> keptSpeeds{}; ///< By a hash of the friction.
        ClusterSweep sweep;                                      ///< Filled only within an attraction pass.
    };
    static State state;

    static void link(Particle& particle, const Vector2& origin);

    /// Share of speed left after `dt` seconds on a surface of `friction`.
    static float speedKept(float friction, float dt);
    /// Pulls a particle toward its cluster's middle.
    static void attract(Vector2& position, const Vector2& centre, float dt);
};

} // namespace tarnwick
