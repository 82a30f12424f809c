#include "game/Game.h"

#include "audio/GameSfx_Ice.h"
#include "audio/GameSfx_Steam.h"
#include "audio/GameSfx_Water.h"
#include "audio/MusicSystem.h"
#include "audio/SoundSourceManager.h"
#include "audio/SoundSystem.h"
#include "console/GLConsole.h"
#include "core/Clock.h"
#include "core/CommandRegistry.h"
#include "core/ConfigFile.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "game/Camera.h"
#include "game/GameRules.h"
#include "game/KeptSettings.h"
#include "graphics/GLWindow.h"
#include "graphics/GLWindowEventListener.h"
#include "graphics/GamePad.h"
#include "graphics/KeyBindings.h"
#include "graphics/KeyMap.h"
#include "graphics/ParticleRenderer.h"
#include "gui/GameMenus.h"
#include "gui/SplashScreen.h"
#include "level/Level.h"
#include "level/LevelObjectsManager.h"
#include "level/SurfaceTypeManager.h"
#include "mechanisms/FxParticleManager.h"
#include "mechanisms/MoverManager.h"
#include "mechanisms/TriggerManager.h"
#include "mechanisms/Triggers_HeatSources.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "particles/ParticleMover.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace tarnwick {

namespace {

constexpr float startRadius = 10.0f;         ///< World units: the disc in which a level's water is made.
constexpr std::int32_t startParticles = 128; ///< Of a level.
constexpr std::uint32_t menuButton = 2;      ///< Of the mouse, the right one: opens the menu in play.

constexpr float rumbleOfADrop = 0.15f; ///< Share of a motor's strength for each drop that is lost in a tick.

/// What the window hands to the game while `Game::run` is at work.
class GameListener final : public GLWindowEventListener {
public:
    void mouseMoved(std::uint32_t x, std::uint32_t y) override {
        TARNWICK_LOCATION("GameListener::mouseMoved");
        GameMenus::sendMenuEvent_mouseMoved(x, y);
    }
    void mousePressed(std::uint32_t x, std::uint32_t y, std::uint32_t button) override {
        TARNWICK_LOCATION("GameListener::mousePressed");
        Game::mousePressed(x, y, button);
    }
    void mouseReleased(std::uint32_t x, std::uint32_t y, std::uint32_t button) override {
        TARNWICK_LOCATION("GameListener::mouseReleased");
        GameMenus::sendMenuEvent_mouseReleased(x, y, button);
    }
    void keyboardPressed(std::uint32_t key) override {
        TARNWICK_LOCATION("GameListener::keyboardPressed");
        Game::keyboardPressed(key);
    }
    void keyboardReleased(std::uint32_t key) override {
        TARNWICK_LOCATION("GameListener::keyboardReleased");
        GameMenus::sendMenuEvent_keyboardReleased(key);
    }
    void windowClosing() override {
        TARNWICK_LOCATION("GameListener::windowClosing");
        GLWindow::close();
    }
    void windowFocusLost() override {
        TARNWICK_LOCATION("GameListener::windowFocusLost");
        Game::windowFocusLost();
    }
};

} // namespace

Game::State Game::state;

constexpr CommandRow Game::commands[] = {
    {"ShowGameSpeeds", CommandVariable{&state.frameTime.shown, "Game::conCmdShowGameSpeeds"}},
    {"ShowDrawSpeeds", CommandVariable{&state.drawTicks.shown, "Game::conCmdShowDrawSpeeds"}},
    {"ShowSimSpeeds", CommandVariable{&state.simTicks.shown, "Game::conCmdShowSimSpeeds"}},
    {"FreeCamera", CommandVariable{&state.freeCamera.enabled, "Game::conCmdFreeCamera"}},
    {"ZoomCamera", conCmdZoomCamera},
    {"ShakeCamera", conCmdShakeCamera},
    {"Restart", conCmdRestart},
    {"Pause", conCmdPause},
};

void Game::run(const std::string& levelFile) {
    TARNWICK_LOCATION("Game::run");
    if (!GLWindow::exists() || state.gameRunning) {
        return;
    }
    SurfaceTypeManager::initialise();
    initialise(levelFile);
    GameListener listener;
    GLWindowEventListener* const previousListener = GLWindow::getEventListener();
    GLWindow::setEventListener(&listener);
    state.frameTime.reset();
    while (GLWindow::exists() && state.gameRunning) {
        GLWindow::run();
        gameLoop();
        if (GLWindow::isMinimised()) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    GLWindow::setEventListener(previousListener);
    shutdown();
}

void Game::stop() {
    TARNWICK_LOCATION("Game::stop");
    state.stopRequested = true;
}

void Game::map(const std::string& levelFile) {
    TARNWICK_LOCATION("Game::map");
    state.nextMapName = levelFile;
    state.mapChangeRequested = true;
}

void Game::restart() {
    TARNWICK_LOCATION("Game::restart");
    state.restartRequested = true;
}

float Game::getViewAreaX() {
    TARNWICK_LOCATION("Game::getViewAreaX");
    const auto width = static_cast<float>(GLWindow::getClientWidth());
    const auto height = static_cast<float>(GLWindow::getClientHeight());
    return width > height ? 600.0f / height * width : 800.0f;
}

float Game::getViewAreaY() {
    TARNWICK_LOCATION("Game::getViewAreaY");
    const auto width = static_cast<float>(GLWindow::getClientWidth());
    const auto height = static_cast<float>(GLWindow::getClientHeight());
    return width > height ? 600.0f : height * (800.0f / width);
}

bool Game::initialise(const std::string& levelFile) {
    TARNWICK_LOCATION("Game::initialise");
    state.begun = true;
    state.gameRunning = true;
    clearRequests();
    SplashScreen::run();
    GameMenus::initialise();
    GameMenus::setCurrentMenu(menu::main);
    const bool loaded = load(levelFile);
    SplashScreen::stop();
    return loaded;
}

/// What the splash covers. A level that cannot be loaded changes nothing.
bool Game::load(const std::string& levelFile) {
    TARNWICK_LOCATION("Game::load");
    if (!Level::load(levelFile)) {
        return false;
    }
    state.currentMapName = levelFile;
    state.tickAccumulator = tickThreshold; // so that the very first frame ticks
    putSwitchesBack();
    CommandRegistry::add(commands);
    Log::printTitle("Game initialisation");
    Triggers_HeatSources_LoadSettings();
    ParticleManager::initialise();
    ParticleManager::setLookAt(Camera::setPosition);
    ParticleRenderer::initialise();
    Camera::initialise();
    startLevel();
    const ConfigFile config("cfg\\game.cfg");
    readBackground(config);
    state.musicFileName = config.getVarAsString("music");
    state.frameTime.reset();
    if (state.cursorTexture == nullptr) {
        state.cursorTexture = std::make_unique<GLTexture>(config.getVarAsString("cursor"));
    }
    if (state.gameFont == nullptr) {
        state.gameFont = std::make_unique<GLFont>(config.getVarAsString("font"));
    }
    startRules();
    return true;
}

void Game::readBackground(const ConfigFile& config) {
    TARNWICK_LOCATION("Game::readBackground");
    state.backgroundRed = config.getVarAsFloat("background_r");
    state.backgroundGreen = config.getVarAsFloat("background_g");
    state.backgroundBlue = config.getVarAsFloat("background_b");
}

/// Water at its start, the camera at its own, flying to the water.
void Game::startLevel() {
    TARNWICK_LOCATION("Game::startLevel");
    const Vector2 water = Level::waterStart();
    ParticleManager::createParticles(water, startRadius, startParticles);
    const Vector2 camera = Level::cameraStart();
    Camera::setPosition(camera);
    Camera::setState(Camera::movingToWaypoint);
}

/// What listens to the level and what judges it.
void Game::startRules() {
    TARNWICK_LOCATION("Game::startRules");
    GameSfx_Ice::initialise();
    GameSfx_Water::initialise();
    GameSfx_Steam::initialise();
    GameRules::initialise();
}

void Game::shutdown() {
    TARNWICK_LOCATION("Game::shutdown");
    Log::printTitle("Game shutdown");
    CommandRegistry::remove(commands);
    Level::clear();
    ParticleManager::shutdown();
    ParticleRenderer::shutdown();
    GameSfx_Water::shutdown();
    GameMenus::shutdown();
    state.begun = false;
    state.gameRunning = false;
    state.cursorTexture.reset();
    state.gameFont.reset();
}

void Game::resetLevel() {
    TARNWICK_LOCATION("Game::resetLevel");
    state.gameRunning = true;
    clearRequests();
    putSwitchesBack();
    ParticleManager::particles.clear();
    ParticleGroupMover::groups.clear();
    ParticleMover::clearParticleGrid();
    FxParticleManager::particles.clear();
    Level::reset();
    Camera::initialise();
    startLevel();
    startRules();
}

/// What was switched on to look at a level ends with it.
void Game::putSwitchesBack() {
    TARNWICK_LOCATION("Game::putSwitchesBack");
    state.freeCamera = FreeCamera();
    state.frameTime.shown = false;
    state.drawTicks.shown = false;
    state.simTicks.shown = false;
}

void Game::clearRequests() {
    TARNWICK_LOCATION("Game::clearRequests");
    state.stopRequested = false;
    state.mapChangeRequested = false;
    state.restartRequested = false;
}

void Game::gameLoop() {
    TARNWICK_LOCATION("Game::gameLoop");
    updateFrameSpeed();
    if (GLWindow::mouseInClientArea()) {
        // a paint with the mouse outside has put the arrow there for good
        GLWindow::setCursor(GLWindow::Cursor::none);
    }
    // The average and not this frame's own time: a single slow frame does not make the next tick long.
    state.tickAccumulator += state.frameTime.average();
    if (state.tickAccumulator >= tickThreshold) {
        tick(state.tickAccumulator);
        state.tickAccumulator = 0.0f; // the remainder is not carried over
    }
    if (!GLWindow::isMinimised()) {
        draw();
    }
    serveRequests();
    KeptSettings::noteWindow();
}

void Game::serveRequests() {
    TARNWICK_LOCATION("Game::serveRequests");
    if (state.stopRequested) {
        state.gameRunning = false;
    } else if (state.mapChangeRequested) {
        initialise(state.nextMapName);
    } else if (state.restartRequested) {
        resetLevel();
    }
    if (state.fullscreenRequested) {
        changeFullscreen();
    }
}

void Game::changeFullscreen() {
    TARNWICK_LOCATION("Game::changeFullscreen");
    state.fullscreenRequested = false;
    if (GLWindow::isFullscreen()) {
        const KeptSettings::Window window = KeptSettings::leavingFullscreen();
        GLWindow::setFullscreen(false, window.width, window.height);
    } else {
        GLWindow::setFullscreen(true, GLWindow::getScreenWidth(), GLWindow::getScreenHeight());
    }
}

void Game::tick(float dt) {
    TARNWICK_LOCATION("Game::tick");
    if (!menuUp() && !Camera::movingTowardsWaypoint() && !GameRules::gameIsFinished() && !state.paused) {
        runSimulation(dt);
    }
    if (!GameRules::gameIsFinished()) {
        soundUpdate(dt);
    }
    watchMouse();
    if (!menuUp() && state.freeCamera.enabled) {
        Camera::doMovements(false, dt);
        checkFreeCameraInput();
    } else if (!menuUp()) {
        Camera::doMovements(!state.consoleOpen, dt);
    }
    // Asked again: the camera may have arrived.
    if (!menuUp() && !GameRules::gameIsFinished() && !Camera::movingTowardsWaypoint() && !state.paused) {
        GameRules::update(dt);
    } else {
        GameRules::unpauseLevelTimer();
    }
}

/// Where the pointer stood while it steered nothing is no movement: it is centred before it steers.
void Game::watchMouse() {
    TARNWICK_LOCATION("Game::watchMouse");
    Mouse now = Mouse::free;
    if (!menuUp() && !state.consoleOpen && !state.freeCamera.enabled && GLWindow::hasFocus()) {
        now = state.paused ? Mouse::steers : Mouse::plays;
    }
    if (now > state.mouse) {
        GLWindow::centerMouse();
    }
    state.mouse = now;
}

bool Game::levelIsHeard() {
    TARNWICK_LOCATION("Game::levelIsHeard");
    return !state.paused && !GameRules::gameIsFinished() && !menuUp();
}

bool Game::menuUp() {
    TARNWICK_LOCATION("Game::menuUp");
    return GameMenus::getCurrentMenu() != menu::none;
}

void Game::updateFrameSpeed() {
    TARNWICK_LOCATION("Game::updateFrameSpeed");
    state.frameTime.update();
}

void Game::runSimulation(float dt) {
    TARNWICK_LOCATION("Game::runSimulation");
    const std::uint64_t before = Clock::performanceCounter();
    const float step = std::min(dt, longestStep);
    const std::uint32_t water = GameRules::getParticleCount();
    const View view = Camera::view();           // of the whole simulation: the camera moves later
    MoverManager::updateCollideableNodes(view); // the edges that every later collision of the tick reads
    MoverManager::runMovers(step, view);
    FxParticleManager::run(step, view);
    ParticleManager::runSimulation(step, view);
    TriggerManager::runTriggers(step, view); // after the water has moved
    LevelObjectsManager::runAnimations(step);
    if (const std::uint32_t left = GameRules::getParticleCount(); left < water) {
        GamePad::rumble(static_cast<float>(water - left) * rumbleOfADrop);
    }
    state.simTicks.add(Clock::performanceCounter() - before);
}

/// Also while the simulation stands still. Draws random numbers in every tick.
void Game::soundUpdate(float dt) {
    TARNWICK_LOCATION("Game::soundUpdate");
    SoundSystem::mendLoss();
    const bool heard = levelIsHeard();
    SoundSourceManager::updateAllSounds(Camera::view(), heard);
    GameSfx_Ice::update(dt, heard);
    GameSfx_Water::update(dt, heard);
    GameSfx_Steam::update(dt, heard);
}

/// While the console has the keyboard, its keys are typed.
void Game::checkFreeCameraInput() {
    TARNWICK_LOCATION("Game::checkFreeCameraInput");
    if (!state.consoleOpen) {
        state.freeCamera.steer(state.frameTime.average());
    }
}

void Game::keyboardPressed(std::uint32_t key) {
    TARNWICK_LOCATION("Game::keyboardPressed");
    if (keyOfTheWindow(key)) {
        return;
    }
    if (KeyBindings::is(GameKey::console, key)) {
        state.consoleOpen = !state.consoleOpen;
    } else if (state.consoleOpen) {
        GLConsole::keyPressed(key);
    } else if (!menuUp()) {
        keyPressedInPlay(key);
    } else if (leavesMenu(key)) {
        escapeFromMenu();
    } else {
        GameMenus::sendMenuEvent_keyboardPressed(key);
    }
}

/// Keys that are the same whatever is up. True if it was one.
bool Game::keyOfTheWindow(std::uint32_t key) {
    TARNWICK_LOCATION("Game::keyOfTheWindow");
    const bool picture = KeyBindings::is(GameKey::screenshot, key);
    const bool screen = key == key::altEnter || KeyBindings::is(GameKey::fullscreen, key);
    if (!GLWindow::pressRepeats()) {
        state.screenshotRequested = state.screenshotRequested || picture;
        // The options have a choice of their own for it, which would take it back.
        const bool options = GameMenus::getCurrentMenu() == menu::options;
        state.fullscreenRequested = state.fullscreenRequested || (screen && !options);
    }
    return picture || screen;
}

/// Escape, a game pad's way back, and the key that opened the menu, unless the menus need it themselves.
bool Game::leavesMenu(std::uint32_t key) {
    TARNWICK_LOCATION("Game::leavesMenu");
    constexpr std::uint32_t keysOfMenus[] = {key::enter, key::space, key::tab, key::left,
                                             key::right, key::up,    key::down};
    const std::uint32_t menuKey = GamePad::asMenuKey(key);
    return menuKey == key::escape || (KeyBindings::is(GameKey::menu, key) &&
                                      std::ranges::find(keysOfMenus, menuKey) == std::end(keysOfMenus));
}

void Game::keyPressedInPlay(std::uint32_t key) {
    TARNWICK_LOCATION("Game::keyPressedInPlay");
    if (KeyBindings::is(GameKey::menu, key) || key == key::padMenu) {
        GameMenus::setCurrentMenu(menu::inGame);
    } else if (KeyBindings::is(GameKey::pause, key)) {
        setPaused(!state.paused);
    } else if (KeyBindings::is(GameKey::restart, key)) {
        restart();
        unpause();
    }
}

/// One menu back; from the main menu to the question whether to quit, and from the scores nowhere.
void Game::escapeFromMenu() {
    TARNWICK_LOCATION("Game::escapeFromMenu");
    const std::uint32_t current = GameMenus::getCurrentMenu();
    if (current == menu::main) {
        GameMenus::setCurrentMenu(menu::quitGame);
    } else if (current != menu::levelFinished) {
        GameMenus::setCurrentMenu(GameMenus::getLastMenu());
    }
}

void Game::mousePressed(std::uint32_t x, std::uint32_t y, std::uint32_t button) {
    TARNWICK_LOCATION("Game::mousePressed");
    if (menuUp()) {
        GameMenus::sendMenuEvent_mousePressed(x, y, button);
    } else if (button == menuButton && !GameRules::gameIsFinished()) {
        GameMenus::setCurrentMenu(menu::inGame);
    }
}

void Game::windowFocusLost() {
    TARNWICK_LOCATION("Game::windowFocusLost");
    if (!menuUp()) {
        setPaused(true);
    }
}

void Game::unpause() {
    TARNWICK_LOCATION("Game::unpause");
    setPaused(false);
}

void Game::setPaused(bool paused) {
    TARNWICK_LOCATION("Game::setPaused");
    if (paused == state.paused) {
        return; // a second pause would keep a position of its own
    }
    state.paused = paused;
    if (paused) {
        MusicSystem::pause();
    } else {
        MusicSystem::resume();
    }
}

void Game::keep(Moment& moment) {
    TARNWICK_LOCATION("Game::keep");
    moment.paused = state.paused;
    moment.consoleOpen = state.consoleOpen;
    moment.mouse = state.mouse;
    moment.tickAccumulator = state.tickAccumulator;
    moment.freeCamera = state.freeCamera;
}

void Game::putBack(const Moment& moment) {
    TARNWICK_LOCATION("Game::putBack");
    setPaused(moment.paused);
    state.consoleOpen = moment.consoleOpen;
    state.mouse = moment.mouse;
    state.tickAccumulator = moment.tickAccumulator;
    state.freeCamera = moment.freeCamera;
}

void Game::conCmdZoomCamera() {
    TARNWICK_LOCATION("Game::conCmdZoomCamera");
    Camera::zoomOut();
}

void Game::conCmdShakeCamera() {
    TARNWICK_LOCATION("Game::conCmdShakeCamera");
    Camera::shake();
}

void Game::conCmdRestart() {
    TARNWICK_LOCATION("Game::conCmdRestart");
    restart();
}

bool Game::conCmdPause(bool value, bool set) {
    TARNWICK_LOCATION("Game::conCmdPause");
    if (set) {
        setPaused(value);
    }
    return state.paused;
}

} // namespace tarnwick
