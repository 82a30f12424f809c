#include "mechanisms/ForceManager.h"

#include "core/CommandArguments.h"
#include "core/CommandRegistry.h"
#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/Log.h"

namespace tarnwick {

std::list<Force> ForceManager::forces;
ForceManager::State ForceManager::state;

constexpr CommandRow ForceManager::commands[] = {
    {"ForceCount", conCmdForceCount},
    {"ForceDraw", CommandVariable{&state.forceDraw, "ForceManager::conCmdForceDraw"}},
    {"ForceCreate", conCmdForceCreate},
};

void ForceManager::initialise() {
    TARNWICK_LOCATION("ForceManager::initialise");
    shutdown();
    state.forceDraw = false;
    Log::print("\nInitialising force manager.");
    CommandRegistry::add(commands);
}

void ForceManager::shutdown() {
    TARNWICK_LOCATION("ForceManager::shutdown");
    Log::print("\nShutting down force manager.");
    forces.clear();
    CommandRegistry::remove(commands);
}

void ForceManager::addForce(std::int32_t id, Vector2 position, Vector2 direction, float strength) {
    TARNWICK_LOCATION("ForceManager::addForce");
    normaliseVector(direction);
    forces.push_back({.id = id, .position = position, .direction = direction, .strength = strength});
}

void ForceManager::keep(Moment& moment) {
    TARNWICK_LOCATION("ForceManager::keep");
    moment.enabled.clear();
    for (const Force& force : forces) {
        moment.enabled.push_back(force.enabled);
    }
}

void ForceManager::putBack(const Moment& moment) {
    TARNWICK_LOCATION("ForceManager::putBack");
    auto then = moment.enabled.begin();
    for (Force& force : forces) {
        force.enabled = *then++;
    }
}

std::int32_t ForceManager::conCmdForceCount() {
    TARNWICK_LOCATION("ForceManager::conCmdForceCount");
    return static_cast<std::int32_t>(forces.size());
}

void ForceManager::conCmdForceCreate(const std::string& typed) {
    TARNWICK_LOCATION("ForceManager::conCmdForceCreate");
    const CommandArguments arguments( // Kept: the usage calls the command so
        typed, "\nUSAGE: MoveForceCreate  < id : integer > < x : number > < y : number > < dir_x : number > "
               "< dir_y : number > < strenght : number >");
    if (!arguments.fit()) {
        return;
    }
    addForce(arguments.integer(0), arguments.number(1), arguments.number(2), arguments.number(3),
             arguments.number(4), arguments.number(5));
}

} // namespace tarnwick
