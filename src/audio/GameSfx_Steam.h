#pragma once

#include <cstdint>

namespace tarnwick {

/// The sound of all steam together: a swell where water evaporates, and a loop that grows with the steam
/// there is. Its constants are fixed. It draws no random numbers.
class GameSfx_Steam {
public:
    GameSfx_Steam() = delete;

    /// Zeroes count and levels, so that a restart makes no sound.
    static void initialise();

    /// Once a tick of `dt` seconds.
    static void update(float dt);

    /// Free particles of 100 degrees and more.
    static std::uint32_t getSteamParticleCount();

private:
    friend class ModuleReset;
    friend class GameRows; // tools: dump and restore
    friend class GameSfxTest;

    struct State {
        std::uint32_t previousCount = 0; ///< Particles at the last tick.
        float pendingEvaporation = 0.0f; ///< Particles that evaporated and are not heard yet.
        float evaporationLevel = 0.0f;
        float ambientLevel = 0.0f;
    };
    static State state;
};

} // namespace tarnwick
