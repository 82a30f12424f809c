#pragma once

#include "core/Vector2.h"
#include "core/View.h"
#include "particles/NeighbourField.h"
#include "particles/ParticleList.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarnwick {

struct CommandRow;

/// Owns the free particles (water and steam), the parameters of the simulation and its tick. Ice is not here:
/// a particle cold enough moves to a group of `ParticleGroupMover`. Every module may walk `particles`.
class ParticleManager {
public:
    ParticleManager() = delete;

    /// Free particles, newest first. The order of the walk decides the result of a tick.
    static ParticleList particles;

    /// Registers the console commands and reads `cfg\water.cfg`. Calls `shutdown` first, so that it can run
    /// again for a new level. A missing key reads as 0 and is then clamped.
    static void initialise();
    static void shutdown();

    /// Runs one tick of `dt` seconds, already capped at 1/30. Water falls toward the view's down and is lost
    /// well outside of the view.
    static void runSimulation(float dt, const View& view);

    /// Adds `count` particles at rest, at room temperature, in a disc of `radius` world units about (x, y),
    /// each at the head of the list. Draws `randomFloat` three times for each: its share of the radius, then
    /// its direction. They enter the grid at the next tick.
    static void createParticles(Vector2 middle, float radius, std::int32_t count);
    static void createParticles(float x, float y, float radius, std::int32_t count) {
        createParticles(Vector2{x, y}, radius, count);
    }
    /// Starts the fade of a particle; does nothing to one already dying.
    static void killParticle(Particle& particle);
    /// Erases a particle at once and gives the next place in the list. The caller unlinks it from the grid
    /// first.
    static ParticleList::iterator removeParticle(ParticleList::iterator place);

    /// What the command `ParticleCreate` shows its particles with: it turns the view to a point, world units.
    /// Null for nothing.
    static void setLookAt(void (*lookAt)(Vector2 point)) { state.lookAt = lookAt; }

    static float gravity() { return state.gravity; }
    static float roomTemperature() { return state.roomTemperature; }
    static float heatTransferRate() { return state.heatTransferRate; }
    static float particleKillTime() { return state.particleKillTime; }

    /// What of the module a `Snapshot` holds; nobody else looks inside.
    class Moment;
    static void keep(Moment& moment);
    static void putBack(const Moment& moment);

private:
    friend class ModuleReset;
    friend class SimulationState;
    friend class SceneAccess;

    struct State {
        float gravity = 0.0f;          ///< World units per second squared, along the camera's down.
        float roomTemperature = 0.0f;  ///< Degrees to which everything relaxes, and at which particles start.
        float heatTransferRate = 0.0f; ///< 0 to 1: share of the gap to room temperature closed in 1 s.
        float steamRiseRate = 0.0f;    ///< Multiplier of gravity, upwards, for steam.
        float steamScatterRate = 0.0f; ///< Multiplier of gravity, in a random direction, for steam.
        float particleKillTime = 0.0f; ///< Seconds of a fade, at least 0.0001 once read; for groups too.
        NeighbourField field;          ///< Filled only within a tick.
        void (*lookAt)(Vector2 point) = nullptr; ///< Of `setLookAt`.
    };
    static State state;

    /// What one tick's particles share.
    struct Tick {
        float dt = 0.0f;       ///< Seconds.
        Vector2 gravityStep;   ///< Velocity that gravity adds in the tick, world units per second.
        float heatKept = 0.0f; ///< Share of the gap to room temperature left after the tick.
        ViewRectangle view;
    };

    /// Moves one particle by one tick. False when it is gone, out of view or at the end of its fade: unlinked
    /// from the grid, and to be erased.
    static bool stepParticle(Particle& particle, std::uint32_t slot, const Tick& tick);
    /// Water falls; steam rises, and scatters in a direction for which it draws `randomFloat` once.
    static void applyGravity(Vector2& velocity, float temperature, const Vector2& gravityStep);

    static const CommandRow commands[];
    static float conCmdHeatTransferRate(float value, bool set);
    static void conCmdParticleCreate(const std::string& typed);
    static std::int32_t conCmdParticleCount();
};

class ParticleManager::Moment {
    friend class ParticleManager;
    float gravity = 0.0f;
    float roomTemperature = 0.0f;
    float heatTransferRate = 0.0f;
    float steamRiseRate = 0.0f;
    float steamScatterRate = 0.0f;
    std::vector<Particle> particles; ///< Their links into the grid mean nothing.
};

} // namespace tarnwick
