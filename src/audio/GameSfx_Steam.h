#pragma once

#include "audio/GameSfx_Loop.h"

#include <cstdint>

namespace tarnwick {

/// The sound of all steam together: a swell where water evaporates, and a loop that grows with the steam
/// there is. Its constants are fixed. It draws no random numbers.
class GameSfx_Steam {
public:
    GameSfx_Steam() = delete;

    /// Makes the sounds that `cfg\game_sfx.cfg` names on the first call, and zeroes count and levels, so that
    /// a restart makes no sound.
    static void initialise();
    /// Deletes the sounds.
    static void shutdown();

    /// Once a tick of `dt` seconds.
    static void update(float dt, bool heard);
    /// Stops the loops. For the finish, after which no tick follows. Draws nothing.
    static void silence();

    /// Free particles of 100 degrees and more.
    static std::uint32_t getSteamParticleCount();

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
        GameSfx_Loop evaporate;
        GameSfx_Loop ambient;
        std::uint32_t previousCount = 0; ///< Particles at the last tick.
        float pendingEvaporation = 0.0f; ///< Particles that evaporated and are not heard yet.
        float evaporationLevel = 0.0f;
        float ambientLevel = 0.0f;
    };
    static State state;
};

class GameSfx_Steam::Moment {
    friend class GameSfx_Steam;
    std::uint32_t previousCount = 0;
    float pendingEvaporation = 0.0f;
    float evaporationLevel = 0.0f;
    float ambientLevel = 0.0f;
};

} // namespace tarnwick
