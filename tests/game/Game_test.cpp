#include "game/Game.h"

#include "console/GLConsole.h"
#include "core/Clock.h"
#include "core/Random.h"
#include "core/VectorMaths2D.h"
#include "game/Camera.h"
#include "game/GameRules.h"
#include "graphics/GLWindow.h"
#include "graphics/GLWindowEventListener.h"
#include "graphics/KeyMap.h"
#include "gui/GameMenus.h"
#include "level/Level.h"
#include "level/LevelObjectsManager.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "support/Keyboard.h"
#include "support/PlayTest.h"

namespace tarnwick {

namespace {

constexpr float waterX = 100.0f;
constexpr float waterY = -40.0f;
constexpr float cameraX = -300.0f;
constexpr float cameraY = 20.0f;

/// The mean that a batch of 16 frames of `milliseconds` each gives: summed up in float, as the game does.
float batchMean(std::uint32_t milliseconds) {
    float sum = 0.0f;
    for (int i = 0; i < 16; ++i) {
        sum += static_cast<float>(milliseconds) * 0.001f;
    }
    return sum * 0.0625f;
}

} // namespace

/// An empty level in a data folder of its own, and a window of 800 by 600. Time stands unless a test moves
/// it.
class GameTest : public PlayTest {
protected:
    GameTest() {
        level.waterStart = {static_cast<std::int32_t>(waterX), static_cast<std::int32_t>(waterY)};
        level.cameraStart = {static_cast<std::int32_t>(cameraX), static_cast<std::int32_t>(cameraY)};
        writeLevel(data, level);
        data.write("cfg/water.cfg", "gravity = 700 roomTemperature = 20 particleKillTime = 0.5");
        data.write("cfg/camera.cfg",
                   "movementInterpolateSpeed = 0.25 waypointInterpolateSpeed = 0.25 maxAngle = 90 "
                   "keyboardTurnSpeed = 60");
    }

    static constexpr const char* levelName = "maps\\scene.rivl";

    /// Starts the level with the camera on its way to the water.
    void startFlying() const { PlayTest::start(); }
    /// Starts the level with the camera on the water, so that the simulation runs.
    void start() const { play({waterX, waterY}); }
    /// One frame, `milliseconds` after the last.
    void frame(std::uint32_t milliseconds) {
        now += milliseconds;
        Clock::drive(now);
        Game::gameLoop();
    }
    /// How far the newest particle has fallen since the level began; each tick of it is told by the speed.
    static float fallSpeed() { return ParticleManager::particles.front().velocity.y; }
    static Game::State& state() { return Game::state; }

    std::uint32_t now = 0;
};

TEST_F(GameTest, TheViewOfAFourToThreeWindowIs800By600) {
    EXPECT_EQ(Game::getViewAreaX(), 800.0f);
    EXPECT_EQ(Game::getViewAreaY(), 600.0f);
}

TEST_F(GameTest, AWideWindowShowsMoreToTheSides) {
    GLWindow::close();
    GLWindow::createHeadless(1920, 1080);

    EXPECT_EQ(Game::getViewAreaX(), 600.0f / 1080.0f * 1920.0f);
    EXPECT_EQ(Game::getViewAreaY(), 600.0f);
}

TEST_F(GameTest, ASquareOrTallWindowShowsMoreAboveAndBelow) {
    GLWindow::close();
    GLWindow::createHeadless(600, 600);

    EXPECT_EQ(Game::getViewAreaX(), 800.0f);
    EXPECT_EQ(Game::getViewAreaY(), 600.0f * (800.0f / 600.0f));
}

TEST_F(GameTest, ALevelStartsWithItsWaterAndTheCameraOnItsWay) {
    const bool loaded = Game::initialise(levelName);

    EXPECT_TRUE(loaded);
    EXPECT_EQ(ParticleManager::particles.size(), 128u);
    EXPECT_EQ(Camera::position(), (Vector2{cameraX, cameraY}));
    EXPECT_TRUE(Camera::movingTowardsWaypoint());
    EXPECT_EQ(Game::currentMap(), levelName);
    EXPECT_TRUE(Game::running());
}

TEST_F(GameTest, ALevelThatCannotBeLoadedLeavesTheLoopRunningOverNothing) {
    const bool loaded = Game::initialise("maps\\missing.rivl");

    EXPECT_FALSE(loaded);
    EXPECT_TRUE(Game::running());
    EXPECT_TRUE(ParticleManager::particles.empty());
    EXPECT_EQ(Game::currentMap(), "");
}

TEST_F(GameTest, WithoutAWindowNothingRuns) {
    GLWindow::close();

    Game::run(levelName);

    EXPECT_FALSE(Game::running());
    EXPECT_TRUE(ParticleManager::particles.empty());
}

TEST_F(GameTest, ARunEndsWithTheWindowAndGivesTheListenerBack) {
    struct Listener final : GLWindowEventListener {
    } before;
    GLWindow::setEventListener(&before);
    sendWindowEvent(SDL_WINDOWEVENT_CLOSE);

    Game::run(levelName);

    EXPECT_EQ(GLWindow::getEventListener(), &before);
    GLWindow::setEventListener(nullptr);
    EXPECT_FALSE(GLWindow::exists());
    EXPECT_FALSE(Game::running());
    EXPECT_TRUE(ParticleManager::particles.empty());
}

TEST_F(GameTest, AGameThatRunsIsNotRunAgain) {
    start();
    ParticleManager::particles.resize(3);
    sendWindowEvent(SDL_WINDOWEVENT_CLOSE); // would end the second loop

    Game::run(levelName);
    const bool open = GLWindow::exists();
    GLWindow::run();

    EXPECT_TRUE(open);
    EXPECT_TRUE(Game::running());
    EXPECT_EQ(ParticleManager::particles.size(), 3u);
}

TEST_F(GameTest, TheFirstFrameTicksAndTheNextFifteenDoNot) {
    start();
    frame(10);
    const float afterFirst = fallSpeed();
    for (int i = 0; i < 15; ++i) {
        frame(10);
    }

    EXPECT_GT(afterFirst, 0.0f);
    EXPECT_EQ(fallSpeed(), afterFirst);
    EXPECT_EQ(state().frameTime.average(), batchMean(10)); // the batch is complete now
}

TEST_F(GameTest, At200FramesASecondEveryThirdFrameTicksWith15Milliseconds) {
    start();
    for (int i = 0; i < 16; ++i) {
        frame(5);
    }
    const float before = fallSpeed(); // the 16th frame has put 5 ms into the accumulator
    frame(5);
    const float afterSecond = fallSpeed();
    const float gathered = state().tickAccumulator;
    frame(5);

    EXPECT_EQ(afterSecond, before);
    EXPECT_EQ(gathered, batchMean(5) + batchMean(5));
    EXPECT_GT(fallSpeed(), before);
    EXPECT_EQ(state().tickAccumulator, 0.0f);
}

TEST_F(GameTest, At20FramesASecondTheSimulationSlowsDownAndTheCameraDoesNot) {
    start();
    data.write("cfg/camera.cfg", "keyboardTurnSpeed = 60 maxAngle = 90");
    Camera::initialise();
    Camera::setState(Camera::normal);
    Camera::setPosition({waterX, waterY});
    pressKey(SDL_SCANCODE_LEFT, SDLK_LEFT);
    GLWindow::run();
    ParticleManager::particles.resize(1); // alone: nobody to share its speed with
    const float before = fallSpeed();

    Game::tick(0.05f);

    EXPECT_EQ(fallSpeed() - before, 0.033333335f * 700.0f);
    EXPECT_EQ(Camera::angle(), 0.05f * 60.0f);
}

TEST_F(GameTest, TheFinishIsNotSlowedDownWithTheSimulation) {
    data.write("cfg/game.cfg", "finishAnimationTime = 0.09");
    start();
    GameRules::incrementEndOfLevelTriggerParticleCount(128);
    GameRules::update(0.01f);

    Game::tick(0.05f);
    const bool halfway = GameRules::gameIsFinished();
    Game::tick(0.05f);

    EXPECT_FALSE(halfway);
    EXPECT_TRUE(GameRules::gameIsFinished());
}

TEST_F(GameTest, AnimationsRunWithTheSimulationAndAreSlowedDownWithIt) {
    data.write("cfg/animation.cfg", "animationSpeeds = 10");
    data.write("gfx/fan_frame0.tga", "");
    data.write("gfx/fan_frame1.tga", "");
    start();
    LevelObject fan;
    fan.setTexture("gfx\\fan_frame0.tga");
    fan.paused = false;
    LevelObjectsManager::addObject(fan);

    Game::tick(0.05f);
    const float afterTick = LevelObjectsManager::animatedObjects.front().frameTime;
    state().paused = true;
    Game::tick(0.05f);

    EXPECT_EQ(afterTick, 0.033333335f);
    EXPECT_EQ(LevelObjectsManager::animatedObjects.front().frameTime, afterTick);
}

TEST_F(GameTest, WhileTheCameraFliesTheWaterStandsStill) {
    startFlying();

    Game::tick(Game::tickThreshold);

    EXPECT_EQ(fallSpeed(), 0.0f);
    EXPECT_NE(Camera::position(), (Vector2{cameraX, cameraY}));
}

TEST_F(GameTest, InTheTickInWhichTheCameraArrivesTheRulesHoldAlready) {
    data.write("cfg/camera.cfg", "waypointInterpolateDistance = 50");
    startFlying();
    Camera::setPosition({waterX, waterY});
    GameRules::incrementEndOfLevelTriggerParticleCount(128);

    Game::tick(Game::tickThreshold);
    const bool arrived = !Camera::movingTowardsWaypoint();
    const float fallen = fallSpeed();
    GameRules::update(0.1f);

    EXPECT_TRUE(arrived);
    EXPECT_EQ(fallen, 0.0f); // the simulation was asked before the camera moved
    EXPECT_TRUE(GameRules::gameIsFinished()) << "the finish, of a millisecond, did not begin in the tick";
}

TEST_F(GameTest, WhilePausedTheCameraStillMovesAndTurns) {
    start();
    Camera::setPosition({waterX + 50.0f, waterY});
    GLConsole::runLine("Pause true");
    pressKey(SDL_SCANCODE_LEFT, SDLK_LEFT);
    GLWindow::run();

    Game::tick(Game::tickThreshold);

    EXPECT_EQ(fallSpeed(), 0.0f);
    EXPECT_LT(Camera::position().x, waterX + 50.0f);
    EXPECT_GT(Camera::angle(), 0.0f);
}

TEST_F(GameTest, WhileTheConsoleIsOpenTheWaterFallsAndTheCameraDoesNotTurn) {
    start();
    Game::keyboardPressed(key::console);
    pressKey(SDL_SCANCODE_LEFT, SDLK_LEFT);
    GLWindow::run();

    Game::tick(Game::tickThreshold);

    EXPECT_GT(fallSpeed(), 0.0f);
    EXPECT_EQ(Camera::angle(), 0.0f);
}

TEST_F(GameTest, TheConsoleKeyOpensAndClosesAndOtherKeysGoToIt) {
    Game::keyboardPressed(key::console);
    Game::keyboardPressed('P'); // typed, not pause
    const bool pausedWhileOpen = Game::paused();
    Game::keyboardPressed(key::console);
    Game::keyboardPressed('P');

    EXPECT_FALSE(pausedWhileOpen);
    EXPECT_TRUE(Game::paused());
}

TEST_F(GameTest, ThePauseKeyToggles) {
    Game::keyboardPressed(key::pause);
    const bool afterFirst = Game::paused();
    Game::keyboardPressed(key::pause);

    EXPECT_TRUE(afterFirst);
    EXPECT_FALSE(Game::paused());
}

TEST_F(GameTest, LosingTheFocusPauses) {
    Game::windowFocusLost();

    EXPECT_TRUE(Game::paused());
}

TEST_F(GameTest, AMinimisedWindowIsNotDrawnAndTicksGoOn) {
    start();
    const float before = fallSpeed();
    GLWindow::minimize();
    frame(10);
    const float whileMinimised = fallSpeed();
    const std::int32_t picturesMeanwhile = state().drawTicks.runs();
    GLWindow::restore();
    frame(10);

    EXPECT_GT(whileMinimised, before);
    EXPECT_EQ(picturesMeanwhile, 0);
    EXPECT_EQ(state().drawTicks.runs(), 1);
}

TEST_F(GameTest, AStopComesBeforeAChangeOfLevel) {
    start();
    Game::map("maps\\other.rivl");
    Game::stop();

    frame(10);

    EXPECT_FALSE(Game::running());
    EXPECT_EQ(Game::currentMap(), levelName);
}

TEST_F(GameTest, AChangeOfLevelComesAtTheEndOfTheFrame) {
    writeLevel(data, level, "other");
    start();
    Game::map("maps\\other.rivl");
    const std::string before = Game::currentMap();

    frame(10);

    EXPECT_EQ(before, levelName);
    EXPECT_EQ(Game::currentMap(), "maps\\other.rivl");
    EXPECT_TRUE(Camera::movingTowardsWaypoint());
}

TEST_F(GameTest, ARestartPutsTheWaterBackWithoutReadingTheFile) {
    start();
    ParticleManager::particles.resize(3);
    ParticleGroupMover::groups.emplace_back();
    std::filesystem::remove(data.path() / "maps/scene.rivl");

    GLConsole::runLine("Restart");
    frame(10);

    EXPECT_EQ(ParticleManager::particles.size(), 128u);
    EXPECT_TRUE(ParticleGroupMover::groups.empty());
    EXPECT_EQ(Camera::position(), (Vector2{cameraX, cameraY}));
    EXPECT_TRUE(Camera::movingTowardsWaypoint());
}

TEST_F(GameTest, ARestartPutsTheCameraBack) {
    start();
    pressKey(SDL_SCANCODE_LEFT, SDLK_LEFT);
    GLWindow::run();
    Camera::zoomOut();
    Camera::shake();
    Game::tick(0.5f);
    ASSERT_NE(Camera::angle(), 0.0f);

    Game::resetLevel();
    releaseKey(SDL_SCANCODE_LEFT, SDLK_LEFT);
    GLWindow::run();
    const float angle = Camera::angle();
    Camera::doMovements(true, 0.0f); // nothing of the turn goes on

    EXPECT_EQ(angle, 0.0f);
    EXPECT_EQ(Camera::angle(), 0.0f);
    EXPECT_EQ(Camera::zoom(), 1.0f);
    EXPECT_EQ(Camera::shakeOffset(), Vector2{});
}

TEST_F(GameTest, ZoomCameraShowsMoreAndComesBack) {
    data.write("cfg/camera.cfg", "zoomSpeed = 1.5 zoomWait = 0.5 movementInterpolateSpeed = 1");
    start();

    GLConsole::runLine("ZoomCamera");
    Game::tick(0.5f);
    const float onTheWay = Camera::zoom();
    for (int i = 0; i < 6; ++i) {
        Game::tick(0.5f);
    }

    EXPECT_EQ(onTheWay, 1.0f + 0.5f * 1.5f);
    EXPECT_EQ(Camera::zoom(), 1.0f);
    EXPECT_EQ(Camera::getState(), Camera::normal);
}

TEST_F(GameTest, ShakeCameraMovesTheViewAndNotTheCamera) {
    data.write("cfg/camera.cfg",
               "shakeTime = 1 shakeStrenght = 10 shakeSpeed = 100 movementInterpolateSpeed = 1");
    start();
    const Vector2 before = Camera::position();
    Game::tick(0.01f);
    const Vector2 unshaken = Camera::shakeOffset();

    GLConsole::runLine("ShakeCamera");
    Game::tick(0.01f);

    constexpr float rounding = 1e-5f;
    EXPECT_EQ(unshaken, Vector2{});
    EXPECT_NEAR(vectorLength(Camera::shakeOffset()), 1.0f, rounding); // 100 units a second
    EXPECT_EQ(Camera::position(), before);
}

TEST_F(GameTest, AStartOfTheLevelForgetsWhatWasAskedFor) {
    start();
    Game::stop();
    Game::restart();

    Game::resetLevel();
    Camera::setState(Camera::normal);
    frame(10);

    EXPECT_TRUE(Game::running());
    EXPECT_FALSE(Camera::movingTowardsWaypoint()); // not started once more
}

TEST_F(GameTest, ShutdownTakesTheCommandsAndTheLevelAway) {
    start();

    Game::shutdown();

    GLConsole::clear();
    GLConsole::runLine("Pause");
    EXPECT_EQ(GLConsole::outputText(),
              "\nPause\nUNKNOWN COMMAND. USE 'COMMANDS' FOR A LIST OF AVAILABLE COMMANDS.");
    EXPECT_FALSE(Game::running());
}

TEST_F(GameTest, PauseAnswersWhatHolds) {
    start();
    GLConsole::clear();

    GLConsole::runLine("pause true");
    GLConsole::runLine("Pause");

    EXPECT_EQ(GLConsole::outputText(), "\npause true\nPause is now true\nPause\nPause is true");
}

TEST_F(GameTest, TheFrameSpeedIsPrintedOnceThereIsOne) {
    start();
    GLConsole::runLine("ShowGameSpeeds true");
    GLConsole::clear();
    for (int i = 0; i < 15; ++i) {
        frame(10);
    }
    const std::string beforeFirstBatch = GLConsole::outputText();

    frame(10);

    EXPECT_EQ(beforeFirstBatch, "");
    EXPECT_EQ(GLConsole::outputText(), "\nGame - fps: " + std::to_string(1.0f / batchMean(10)));
}

TEST_F(GameTest, TheCostOfTheSimulationIsPrintedAfterEach32Runs) {
    start();
    GLConsole::runLine("ShowSimSpeeds true");
    GLConsole::clear();
    for (int i = 0; i < 31; ++i) {
        Game::tick(Game::tickThreshold);
    }
    const std::string before = GLConsole::outputText();

    Game::tick(Game::tickThreshold);

    EXPECT_EQ(before, "");
    EXPECT_EQ(GLConsole::outputText().rfind("\nSimulation - clock tics: ", 0), 0u);
}

TEST_F(GameTest, TheFreeCameraMovesByKeysAndTheGameCameraDoesNotTurn) {
    start();
    for (int i = 0; i < 16; ++i) {
        frame(20);
    }
    GLConsole::runLine("FreeCamera true");
    pressKey(SDL_SCANCODE_RIGHT, SDLK_RIGHT);
    pressKey(SDL_SCANCODE_UP, SDLK_UP);
    GLWindow::run();

    Game::tick(Game::tickThreshold); // of its own length; the flight takes the mean of the frames

    const float step = 500.0f / 1.0f * batchMean(20);
    EXPECT_EQ(state().freeCamera.position, (Vector2{step, -step}));
    EXPECT_EQ(Camera::angle(), 0.0f);
}

TEST_F(GameTest, TheFreeCameraStandsStillWhileTheConsoleHasTheKeysAndUnderAMenu) {
    start();
    for (int i = 0; i < 16; ++i) {
        frame(20);
    }
    GLConsole::runLine("FreeCamera true");
    pressKey(SDL_SCANCODE_RIGHT, SDLK_RIGHT);
    GLWindow::run();

    Game::keyboardPressed(key::console);
    Game::tick(Game::tickThreshold);
    const Vector2 withConsole = state().freeCamera.position;
    Game::keyboardPressed(key::console);
    GameMenus::setCurrentMenu(menu::inGame);
    Game::tick(Game::tickThreshold);

    EXPECT_EQ(withConsole, Vector2{});
    EXPECT_EQ(state().freeCamera.position, Vector2{});
}

TEST_F(GameTest, ANewLevelPutsTheFreeCameraAndTheSwitchesBack) {
    start();
    GLConsole::runLine("FreeCamera true");
    GLConsole::runLine("ShowGameSpeeds true");
    GLConsole::runLine("ShowDrawSpeeds true");
    GLConsole::runLine("ShowSimSpeeds true");
    state().freeCamera.position = {5.0f, 6.0f};
    state().freeCamera.zoom = 2.0f;

    Game::resetLevel();

    EXPECT_FALSE(state().freeCamera.enabled);
    EXPECT_EQ(state().freeCamera.position, Vector2{});
    EXPECT_EQ(state().freeCamera.zoom, 1.0f);
    EXPECT_FALSE(state().frameTime.shown);
    EXPECT_FALSE(state().drawTicks.shown);
    EXPECT_FALSE(state().simTicks.shown);
}

/// Recorded keys depend on it.
TEST_F(GameTest, EveryTickDrawsSixNumbersForTheSoundsAlsoWhenNothingMoves) {
    const auto drawsOfATick = [] {
        const std::uint32_t before = getRandomState();
        Game::tick(0.01f);
        std::uint32_t state = before;
        int draws = 0;
        while (state != getRandomState() && draws < 100) {
            state = Random::nextState(state);
            ++draws;
        }
        return draws;
    };
    Game::initialise(levelName); // the camera flies
    const int inFlight = drawsOfATick();
    start();
    GLConsole::runLine("Pause true");
    const int paused = drawsOfATick();
    GameRules::incrementEndOfLevelTriggerParticleCount(128);
    GameRules::update(0.1f);
    GameRules::update(0.1f);
    const int finished = drawsOfATick();

    EXPECT_EQ(inFlight, 6);
    EXPECT_EQ(paused, 6);
    EXPECT_TRUE(GameRules::gameIsFinished());
    EXPECT_EQ(finished, 0);
}

} // namespace tarnwick
