#pragma once

#include "game/FreeCamera.h"
#include "game/SpeedMeters.h"
#include "graphics/GLFont.h"

#include <cstdint>
#include <memory>
#include <string>

namespace tarnwick {

struct CommandRow;
class ConfigFile;

/// The conductor: runs the frame loop, decides when a tick happens and how long it is, and calls every
/// module's function of a tick in a fixed order.
///
/// Window messages are pumped between frames, so listeners and console commands never run inside a frame;
/// what they want of the game is a request flag, acted on at the frame's end. There is at most one tick a
/// frame and no catch-up: a tick is as long as the time gathered, and only the simulation is never given more
/// than 1/30 second.
class Game {
public:
    Game() = delete;

    /// Seconds, 1/75: gathered time at which a tick runs.
    static constexpr float tickThreshold = 0.013333334f;
    static constexpr float longestStep = 0.033333335f; ///< Seconds, 1/30: most that one simulation step gets.

    /// Runs a game on `levelFile` until the window goes away or the loop is told to end. Does nothing without
    /// a window, or when a game runs already.
    static void run(const std::string& levelFile);
    /// Asks the loop to end after this frame.
    static void stop();
    /// Asks for another level at the end of the frame.
    static void map(const std::string& levelFile);
    /// Asks for the start of the level at the end of the frame.
    static void restart();
    static bool running() { return state.gameRunning; }
    /// From `initialise` to `shutdown`, also when the loop was told to end.
    static bool begun() { return state.begun; }
    static bool paused() { return state.paused; }
    /// Goes on, and the music with it, if it is paused.
    static void unpause();
    /// Whether what sounds for ever in a level may be heard: not in menus, in pauses and after the finish.
    static bool levelIsHeard();
    /// The level file now loaded, as it was asked for.
    static const std::string& currentMap() { return state.currentMapName; }
    /// The music of play, which the menus start together with a level. Empty before the first level.
    static const std::string& musicFileName() { return state.musicFileName; }

    /// Visible world size at zoom 1, world units: 800 by 600 in a 4:3 window; a wider window shows more to
    /// the sides, a taller one more above and below.
    static float getViewAreaX();
    static float getViewAreaY();

    /// Loads a level and starts it; on a running game this is the change of level. A level that cannot be
    /// loaded leaves the loop running over whatever level was there, with nothing else set. False then.
    static bool initialise(const std::string& levelFile);
    static void shutdown();
    /// Starts the loaded level again, without reading its file.
    static void resetLevel();
    /// One frame: the frame average, a tick when it is due, the picture, then the requests.
    static void gameLoop();
    /// One tick of `dt` seconds, in the order simulation, sound, camera, rules. The headless runner calls it
    /// too.
    static void tick(float dt);
    /// Acts on what was asked for since the last frame: the end of the game before a change of level before a
    /// restart. The headless runner calls it after each tick.
    static void serveRequests();

    /// Draws the picture of this moment and presents it. Touches nothing of the simulation.
    static void draw();
    /// The same without presenting it: the picture stands in the back buffer, for who wants to read it.
    static void drawPicture();

    /// The listener's half: what keys, presses of the mouse and the loss of focus do. The console comes
    /// before the menus, and the menus before the play. Positions are client pixels.
    static void keyboardPressed(std::uint32_t key);
    static void mousePressed(std::uint32_t x, std::uint32_t y, std::uint32_t button);
    static void windowFocusLost();

    /// What of the module a `Snapshot` holds; nobody else looks inside.
    class Moment;
    static void keep(Moment& moment);
    static void putBack(const Moment& moment);

private:
    /// What the pointer does to the view. More than before, in a tick, is play taking the mouse back.
    enum class Mouse : std::uint8_t {
        free,   ///< Nothing: a menu, the console, the free camera or another program has it.
        steers, ///< Turns the view of a paused game.
        plays,  ///< Turns the world.
    };

    friend class ModuleReset;
    friend class SimulationState; // tools: dump and restore
    friend class GameTest;

    struct State {
        bool gameRunning = false;        ///< The frame loop goes on while it is set.
        bool begun = false;              ///< There is something to shut down.
        bool stopRequested = false;      ///< Requests: each takes effect at the end of the frame.
        bool mapChangeRequested = false; ///< Loads `nextMapName`.
        bool restartRequested = false;
        bool screenshotRequested = false;
        bool fullscreenRequested = false;
        bool paused = false;
        bool consoleOpen = false; ///< The console has the keyboard.
        Mouse mouse = Mouse::plays;
        std::string currentMapName;
        std::string nextMapName;
        std::string musicFileName;  ///< Of play.
        float backgroundRed = 0.0f; ///< What the picture is cleared to, 0 to 1.
        float backgroundGreen = 0.0f;
        float backgroundBlue = 0.0f;
        std::unique_ptr<GLTexture> cursorTexture; ///< Of the menus. Null until the first level is loaded.
        std::unique_ptr<GLFont> gameFont;         ///< Null until the first level is loaded.

        FrameMeter frameTime; ///< Feeds the ticks.
        CostMeter simTicks{"Simulation"};
        CostMeter drawTicks{"Drawing"};
        float tickAccumulator = 0.0f; ///< Seconds gathered toward the next tick.
        FreeCamera freeCamera;
    };
    static State state;

    static bool load(const std::string& levelFile);
    static void startLevel();
    static void startRules();
    static void clearRequests();
    static bool menuUp();
    static void watchMouse();
    static bool keyOfTheWindow(std::uint32_t key);
    static void keyPressedInPlay(std::uint32_t key);
    static bool leavesMenu(std::uint32_t key);
    static void escapeFromMenu();
    static void changeFullscreen();
    static void updateFrameSpeed();
    static void runSimulation(float dt);
    static void soundUpdate(float dt);
    static void putSwitchesBack();
    /// Holds or goes on, and the music with it. Does nothing if that is so already.
    static void setPaused(bool paused);
    static void readBackground(const ConfigFile& config);
    static void drawLevel();
    static void drawPausedText();
    static void drawMenu();
    static void drawCursor(float offset, float shade);
    static void checkFreeCameraInput();
    static const CommandRow commands[];
    static void conCmdZoomCamera();
    static void conCmdShakeCamera();
    static void conCmdRestart();
    static bool conCmdPause(bool value, bool set);
};

class Game::Moment {
    friend class Game;
    bool paused = false;
    bool consoleOpen = false;
    Mouse mouse = Mouse::plays;
    float tickAccumulator = 0.0f;
    FreeCamera freeCamera;
};

} // namespace tarnwick
