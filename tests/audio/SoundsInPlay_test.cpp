#include "audio/SoundManager.h"
#include "audio/SoundSystem.h"
#include "console/GLConsole.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"
#include "gui/GameMenus.h"
#include "level/SurfaceTypeManager.h"
#include "support/ModuleTest.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <list>
#include <string>
#include <vector>

namespace tarnwick {

/// The game with its own data, heard: ticks of 1/75 second, and what they sound like.
class SoundsInPlayTest : public ModuleTest {
protected:
    static constexpr std::size_t framesInTick = 588; ///< 44,100 / 75.
    static constexpr int ticksInSecond = 75;

    SoundsInPlayTest()
        : before(std::filesystem::current_path()) {
        std::filesystem::current_path(TARNWICK_SOURCE_DIR "/data");
        GLConsole::initialise();
        SoundSystem::initialiseLoopback();
        SoundManager::initialise();
        GLWindow::createHeadless(800, 600);
        SurfaceTypeManager::initialise();
        Game::initialise("maps\\testLevel.rivl");
    }
    ~SoundsInPlayTest() override {
        Game::shutdown();
        std::filesystem::current_path(before);
    }

    struct Loudness {
        float peak = 0.0f; ///< Of full scale.
        float root = 0.0f; ///< Mean, as the root of the squares.
    };
    static Loudness run(int ticks) {
        Loudness result;
        double squares = 0.0;
        for (int tick = 0; tick < ticks; ++tick) {
            Game::tick(Game::tickThreshold);
            for (const float sample : SoundSystem::renderLoopback(framesInTick)) {
                result.peak = std::max(result.peak, std::abs(sample));
                squares += static_cast<double>(sample) * static_cast<double>(sample);
            }
        }
        result.root = static_cast<float>(std::sqrt(squares / (2.0 * framesInTick * ticks)));
        return result;
    }

    const std::filesystem::path before;
};

TEST_F(SoundsInPlayTest, EveryFileOfTheGameIsFound) {
    std::list<std::string> files;
    SoundManager::getSoundList(files);

    EXPECT_GT(files.size(), 30u);
    for (const std::string& line : files) {
        EXPECT_EQ(line.find("failed"), std::string::npos) << line;
    }
}

TEST_F(SoundsInPlayTest, TheMenuIsQuieterThanThePlayAndNothingClips) {
    const Loudness menu = run(2 * ticksInSecond);
    GameMenus::setCurrentMenu(menu::none);
    const Loudness play = run(10 * ticksInSecond);

    EXPECT_GT(menu.root, 0.001f);
    EXPECT_LT(menu.peak, 0.2f);
    EXPECT_GT(play.root, 1.3f * menu.root); // 4 dB were measured
    EXPECT_LT(play.peak, 1.0f);
}

TEST_F(SoundsInPlayTest, APauseIsSilentOnceTheLastSplashHasEnded) {
    GameMenus::setCurrentMenu(menu::none);
    run(3 * ticksInSecond);

    Game::keyboardPressed(key::pause);
    run(3 * ticksInSecond);
    const Loudness paused = run(ticksInSecond);
    Game::keyboardPressed(key::pause);
    const Loudness after = run(ticksInSecond);

    EXPECT_EQ(paused.peak, 0.0f);
    EXPECT_GT(after.root, 0.001f);
}

TEST_F(SoundsInPlayTest, ARestartAndAChangeOfLevelLeaveNoVoiceBehind) {
    GameMenus::setCurrentMenu(menu::none);
    for (int round = 0; round < 3; ++round) {
        run(ticksInSecond);
        Game::resetLevel();
        run(ticksInSecond);
        Game::initialise("maps\\testLevel.rivl");
        GameMenus::setCurrentMenu(menu::none);
        EXPECT_LT(SoundSystem::voicesInUse(), 16u);
    }
}

} // namespace tarnwick
