#pragma once

#include "audio/GameSfx_Disturbance.h"
#include "audio/GameSfx_Loop.h"

#include <cstdint>

namespace tarnwick {

/// The sound of all ice together: a swell where water freezes, rubbing where ice slides, and cracks when it
/// suddenly loses speed.
///
/// What freezes goes into `pendingFreeze`, drains from there into `freezeLevel`, and that decays. Only a rise
/// of the whole count is a freeze: groups that merge make no sound. `update` draws random numbers in every
/// tick, also when nothing can be heard.
class GameSfx_Ice {
public:
    GameSfx_Ice() = delete;

    static constexpr float smallBody = 128.0f; ///< Particles: a share is a count divided by this.

    /// Reads `cfg\game_sfx.cfg`, makes the sounds on the first call, and zeroes count, speed and levels, so
    /// that a restart makes no sound. A missing key reads as 0, or as a sound that is inert.
    static void initialise();
    /// Deletes the sounds.
    static void shutdown();

    /// Once a tick of `dt` seconds. Draws `randomInt` once, then `randomFloat` twice.
    static void update(float dt, bool heard);
    /// Stops the loops; what was struck rings out. For the finish, after which no tick follows. Draws
    /// nothing.
    static void silence();

    /// Members of all groups.
    static std::uint32_t getIceParticleCount();
    /// Sets `average` to the mean speed of the groups, each weighing as many as its members, in the order of
    /// the list; to 0 without any.
    static void getAverageIceVelocity(float& average);
    /// Moves the level of friction toward what the groups give that touch something: the sum of their speeds,
    /// each times the root of its share.
    static void calculateFrictionLevel(float dt);

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
        GameSfx_Loop freeze;
        GameSfx_Loop friction;
        float frictionChangeRate = 0.0f;   ///< 0 to 1: share of the old friction level left after 1 s.
        float frictionSpeed = 0.0f;        ///< Friction level per unit of speed.
        float freezeEffectSpeed = 0.0f;    ///< 0 to 1: share of the pending freeze left after 1 s.
        float freezeVolume = 0.0f;         ///< Freeze level per frozen particle.
        float freezeVolumeFadeRate = 0.0f; ///< 0 to 1: share of the freeze level left after 1 s.

        float previousAverageSpeed = 0.0f; ///< Of the last tick, world units per second.
        std::uint32_t previousCount = 0;   ///< Members at the last tick.
        float pendingFreeze = 0.0f;        ///< Particles that froze and are not heard yet.
        float freezeLevel = 0.0f;
        float frictionLevel = 0.0f;
    };
    static State state;
};

class GameSfx_Ice::Moment {
    friend class GameSfx_Ice;
    float previousAverageSpeed = 0.0f;
    std::uint32_t previousCount = 0;
    float pendingFreeze = 0.0f;
    float freezeLevel = 0.0f;
    float frictionLevel = 0.0f;
};

} // namespace tarnwick
