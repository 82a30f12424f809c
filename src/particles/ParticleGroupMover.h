#pragma once

#include "core/View.h"
#include "particles/ParticleGroup.h"
#include "particles/ParticleList.h"

#include <cstdint>
#include <list>

namespace tarnwick {

struct CommandRow;

/// Turns frozen particles into solid bodies. A group is one moving circle with a mass of members laid out at
/// random inside it: the centre moves and collides like one big particle, the members follow, each toward its
/// own place in the disc. No rotation, no friction. Cold spreads by contact: who is within 12 units of a
/// frozen particle is swept into the same group, whatever its temperature. A group above 0 degrees melts at
/// once and hands its members back.
class ParticleGroupMover {
public:
    ParticleGroupMover() = delete;

    /// Newest first. Every module may walk it.
    static std::list<ParticleGroup> groups;

    /// Registers the console commands and reads `cfg\water.cfg`. Calls `shutdown` first.
    static void initialise();
    static void shutdown();

    /// Moves every particle at or below 0 degrees, and all that are within reach of one, from `particles` to
    /// new groups. Draws `randomFloat` three times for each member, in the order in which they join.
    static void doParticleGrouping(ParticleList& particles);
    /// Gathers into `group` everything within 12 units of `from`, first from `frozen`, then from `particles`,
    /// and then everything within reach of those, depth first in the order in which they were found.
    static void particleGroupRecursive(Particle& from,
                                       ParticleGroup& group,
                                       ParticleList& frozen,
                                       ParticleList& particles);
    /// Moves, warms, melts and removes the groups and merges those that touch. Melted members go to the front
    /// of `particles`, one after the other.
    static void runSimulation(float dt, const View& view, ParticleList& particles);
    /// Moves the disc along its velocity in steps of three quarters of its radius, with a collision test
    /// after each.
    static void moveGroup(ParticleGroup& group, float dt);
    /// Of two groups that touch, the one with the larger `targetRadius` takes the members of the other.
    static void doGroupMerging();
    /// Starts the fade of a group and its members; does nothing to one already dying.
    static void killGroup(ParticleGroup& group);
    /// Draws every group's circle in red, if the command asks for it.
    static void debugDraw();

    /// What of the module a `Snapshot` holds; nobody else looks inside.
    class Moment;
    static void keep(Moment& moment);
    static void putBack(const Moment& moment);

private:
    friend class ModuleReset;
    friend class SimulationState;
    friend class SceneAccess;

    struct State {
        /// 0 to 1: share of a member's way to its place left after 1 s.
        float particleGroupInterpolation = 0.0f;
        float groupExpandSpeed = 0.0f;   ///< 0 to 1: share of the radius gap left after 1 s.
        float iceGravityStrenght = 0.0f; ///< Multiplier of gravity for groups.
        bool groupDebugDraw = false;     ///< Draw each group's circle in red.
    };
    static State state;

    /// What one tick's groups share.
    struct Tick {
        float dt = 0.0f;         ///< Seconds.
        Vector2 gravity;         ///< Along the camera's down, world units per second squared.
        float warming = 0.0f;    ///< Share of the gap to room temperature closed in the tick.
        float placeLeft = 0.0f;  ///< Share of a member's way to its place that is left after the tick.
        float radiusLeft = 0.0f; ///< Share of a group's radius gap that is left after the tick.
        ViewRectangle view;
    };

    /// Moves a group and its members by one tick. False when it is lost: out of view, or at the end of its
    /// fade.
    static bool stepGroup(ParticleGroup& group, const Tick& tick);

    static const CommandRow commands[];
    static std::int32_t conCmdParticleGroupCount();
};

class ParticleGroupMover::Moment {
    friend class ParticleGroupMover;
    std::list<ParticleGroup> groups;
};

} // namespace tarnwick
