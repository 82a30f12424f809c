#pragma once

#include "core/FrameTimer.h"

#include <cstdint>
#include <string>

namespace tarnwick {

/// The conductor: runs the frame loop, decides when a tick happens and how long it is, and calls every module's
/// function of a tick in a fixed order. Requests from listeners, menus and commands are flags, acted on at the end
/// of the frame.
class Game {
public:
    Game() = delete;

    static constexpr float tickThreshold = 0.013333334f; ///< Seconds, 1/75: gathered time at which a tick runs.
    static constexpr float longestStep = 0.033333335f;   ///< Seconds, 1/30: the simulation is never given more.
    static constexpr std::int32_t levelStartParticles = 128;
    static constexpr float levelStartRadius = 10.0f; ///< World units: the disc in which they are made.

    /// Runs a game on `levelFile` until the window goes away or the loop is told to end. Does nothing without a
    /// window, or when a game runs already.
    static void run(const std::string& levelFile);
    /// Asks the loop to end after this frame.
    static void stop();
    /// Asks for another level at the end of the frame.
    static void map(const std::string& levelFile);
    /// Asks for a restart of the level at the end of the frame.
    static void restart();
    static bool running() { return state.gameRunning; }
    static bool paused() { return state.paused; }
    static const std::string& currentMap() { return state.currentMapName; }

    /// Visible world size at zoom 1, world units: 800 by 600 in a 4:3 window; a wider window shows more to the
    /// sides, a taller one more above and below.
    static float getViewAreaX();
    static float getViewAreaY();

    /// Loads a level and starts it: false when the level file could not be loaded.
    static bool initialise(const std::string& levelFile);
    static void shutdown();
    /// Starts the loaded level again, without reading its file.
    static void resetLevel();
    /// One frame: the frame average, a tick when it is due, and the requests.
    static void gameLoop();
    /// One tick of `dt` seconds: simulation, sound, camera, rules. The headless runner calls it too.
    static void tick(float dt);

private:
    friend class ModuleReset;
    friend class SimulationState;
    friend class GameTest;

    struct State {
        bool gameRunning = false;
    };
    static State state;
};

} // namespace tarnwick
