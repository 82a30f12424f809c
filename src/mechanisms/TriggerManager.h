#pragma once

#include "core/View.h"
#include "mechanisms/LiveTriggers.h"
#include "mechanisms/Trigger.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <string>
#include <vector>

namespace tarnwick {

struct CommandRow;

/// Owns the triggers of the level: decides once a tick which of them are live, tests every particle and ice
/// group against those, and calls the handler of the type, at once or after the trigger's delay.
///
/// Only triggers near the view are live, so water off the screen fires nothing. A trigger that is live stays
/// live for the whole tick: one without a limit fires once for every body inside, in every tick. Targets are
/// found when a trigger is made; what comes into the level later it does not know. What the types are and do
/// stands in `TriggerTypes.h`.
class TriggerManager {
public:
    TriggerManager() = delete;

    /// Type ids that other modules look for.
    static constexpr std::uint32_t soundPlayType = 100;
    static constexpr std::uint32_t entityRemoveType = 300;
    static constexpr std::uint32_t entityAddType = 301;

    /// Newest first. A node stays where it is until `shutdown`.
    static std::list<Trigger> triggers;

    /// Registers the console commands and builds the table of types. Calls `shutdown` first, so that it can
    /// run again for a new level. All entities of the level come before it, the triggers after.
    static void initialise();
    /// Drops types, triggers and pending events.
    static void shutdown();

    /// Makes a trigger of the region between four corners, given in order around it in either sense. A type
    /// that the table does not have is no error: such a trigger fires, counts and does nothing. Types whose
    /// handlers need the body act at once, whatever `delay` (seconds) says.
    static void addTrigger(std::int32_t typeId,
                           std::int32_t targetId,
                           float delay,
                           Vector2 corner1,
                           Vector2 corner2,
                           Vector2 corner3,
                           Vector2 corner4);

    /// Whether a point lies in one of the two triangles; one on an edge is inside. An edge without length
    /// refuses no point, so a region that is a single point holds every point, and one that is a line all of
    /// that line.
    static bool pointInTrigger(Vector2 point, const Trigger& trigger);
    /// Gives the trigger every entity of its target id: animated objects, static objects, forces, polygons,
    /// movers, emitters, each list from its front. Nothing for target id 0. Entities may have come into the
    /// level since `initialise`, but none may have left it.
    static void findTargets(Trigger& trigger);

    /// One tick of `dt` seconds: the pending events, then every particle and then every ice group, in the
    /// order of their lists, against the live triggers in the order of their creation. A group is tested by
    /// its centre. Dying bodies fire as well.
    static void runTriggers(float dt, const View& view);
    /// Calls the handlers whose delay is over, oldest event first, with the tick length of the moment of
    /// firing and without a body.
    static void checkDelayedTriggerEvents(float dt);

    /// Back to the level's start: no fires, no rest, nothing pending.
    static void resetTriggers();

    /// Draws the triangles of every trigger, with normals, target id and type, if the command asks for it:
    /// green near the view, where it can fire, else grey. Leaves the GL as it was.
    static void debugDraw(const View& view);

    /// What of the module a `Snapshot` holds; nobody else looks inside.
    class Moment;
    static void keep(Moment& moment);
    /// With the triggers that there were: events point to them.
    static void putBack(const Moment& moment);

private:
    friend class ModuleReset;
    friend class TriggerRows;
    friend class TriggerManagerTest;

    /// All entities that a trigger may aim at, by their ids. Triggers share the lists: a level in which
    /// thousands of triggers name thousands of entities of one id would not fit into memory otherwise.
    struct TargetIndex {
        std::array<std::size_t, 6> entityCounts{}; ///< Of the six lists, when it was made.
        std::map<std::int32_t, std::vector<TriggerTarget>> targets;
    };

    struct State {
        std::map<std::int32_t, TriggerType> triggerTypes; ///< By type id.
        /// The last one is of the entities that are there now; those before it belong to triggers that were
        /// made before the console made more.
        std::list<TargetIndex> targetIndexes;
        std::vector<DelayedTriggerEvent> delayedEvents; ///< Oldest first.
        LiveTriggers liveTriggers;                      ///< Filled only within a tick; kept for its memory.
        bool triggerDraw = false;                       ///< Draw the triggers.
    };
    static State state;

    static void createTriggerTypeMap();
    static const TargetIndex& targetIndex();
    static void gatherLiveTriggers(float dt, const View& view);
    static void fireAt(Vector2 place, void* body, BodyKind bodyKind, float dt);
    static void fire(Trigger& trigger, void* body, BodyKind bodyKind, float dt);

    static const CommandRow commands[];
    static void conCmdTriggerTypeList();
    static void conCmdTriggerCreate(const std::string& typed);
    static std::int32_t conCmdTriggerCount();
};

class TriggerManager::Moment {
    friend class TriggerManager;
    struct TriggerMoment {
        float cooldownLeft = 0.0f;
        std::uint32_t fireCount = 0;
    };
    std::vector<TriggerMoment> triggers; ///< In the order of their list.
    std::vector<DelayedTriggerEvent> delayedEvents;
};

} // namespace tarnwick
