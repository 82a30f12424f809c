#pragma once

#include "core/Vector2.h"
#include "mechanisms/Force.h"

#include <cstdint>
#include <list>
#include <string>
#include <vector>

namespace tarnwick {

struct CommandRow;

/// Owns the forces of the level. They have no tick and no region: the handlers of triggers read them and push
/// what lies inside the trigger. A force switched off by a trigger stays off when the level starts again;
/// only loading the level anew brings it back.
class ForceManager {
public:
    ForceManager() = delete;

    /// In order of creation. A node stays where it is until `shutdown`, so triggers keep pointers to forces.
    static std::list<Force> forces;

    /// Registers the console commands. Calls `shutdown` first, so that it can run again for a new level.
    static void initialise();
    static void shutdown();

    /// Appends an enabled force. The direction is made unit length; (0, 0) becomes (1, 0). Triggers already
    /// there do not pick it up: they look for their targets when they are made.
    static void addForce(std::int32_t id, Vector2 position, Vector2 direction, float strength);
    static void addForce(std::int32_t id, float x, float y, float dirX, float dirY, float strength) {
        addForce(id, {x, y}, {dirX, dirY}, strength);
    }

    /// Draws every force with its id and strength, if the command asks for it: green while it is enabled,
    /// else red. Leaves the GL as it was.
    static void debugDraw();

    /// What of the module a `Snapshot` holds; nobody else looks inside.
    class Moment;
    static void keep(Moment& moment);
    /// With as many forces as there were.
    static void putBack(const Moment& moment);

private:
    friend class ModuleReset;

    struct State {
        bool forceDraw = false; ///< Draw the forces.
    };
    static State state;

    static const CommandRow commands[];
    static std::int32_t conCmdForceCount();
    static void conCmdForceCreate(const std::string& typed);
};

class ForceManager::Moment {
    friend class ForceManager;
    std::vector<bool> enabled; ///< In the order of `forces`.
};

} // namespace tarnwick
