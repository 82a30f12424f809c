#pragma once

#include "audio/GameSfx_Disturbance.h"
#include "audio/GameSfx_Loop.h"

#include <cstdint>

namespace tarnwick {

/// The sound of the water as a whole: a loop that grows with the water there is, and splashes when the body
/// of it suddenly loses speed. No sound is tied to any particle or place.
///
/// `update` draws random numbers in every tick, also when nothing can be heard.
class GameSfx_Water {
public:
    GameSfx_Water() = delete;

    static constexpr float smallBody = 128.0f; ///< Particles: a share is a count divided by this.

    /// Reads `cfg\game_sfx.cfg`, makes the sounds on the first call, and forgets the speed, so that a restart
    /// is no splash. A missing key reads as 0, or as a sound that is inert.
    static void initialise();
    /// Deletes the sounds.
    static void shutdown();

    /// Once a tick of `dt` seconds, which it has no use for. Draws `randomInt` once, then `randomFloat`
    /// twice.
    static void update(float dt, bool heard);
    /// Stops the loop; what was struck rings out. For the finish, after which no tick follows. Draws nothing.
    static void silence();

    /// Free particles that are neither frozen nor steam.
    static std::uint32_t getWaterParticleCount();
    /// Sets `average` to the mean length of their `velocity`, in the order of the list; to 0 without any.
    static void getAverageWaterVelocity(float& average);

    /// What of the module a `Snapshot` holds; nobody else looks inside.
    class Moment;
    static void keep(Moment& moment);
    /// What sounds goes on; the next update takes it up from here.
    static void putBack(const Moment& moment);

private:
    friend class ModuleReset;
    friend class GameRows; // tools: dump and restore
    friend class GameSfxTest;
    friend class GameSfxSoundsTest;

    struct State {
        GameSfx_Disturbance disturbance;
        GameSfx_Loop ambient;
        float ambientVolume = 0.0f;        ///< Level of the loop at a share of 1.
        float previousAverageSpeed = 0.0f; ///< Of the last tick, world units per second.
        float ambientLevel = 0.0f;         ///< Of this tick.
    };
    static State state;
};

class GameSfx_Water::Moment {
    friend class GameSfx_Water;
    float previousAverageSpeed = 0.0f;
    float ambientLevel = 0.0f;
};

} // namespace tarnwick
