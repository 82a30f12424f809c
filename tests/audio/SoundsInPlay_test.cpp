#include "audio/SoundManager.h"
#include "audio/SoundSourceManager.h"
#include "audio/SoundSystem.h"
#include "console/GLConsole.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"
#include "gui/GameMenus.h"
#include "level/SurfaceTypeManager.h"
#include "particles/ParticleManager.h"
#include "support/Loudness.h"
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

    /// What is heard in so many ticks: left, right.
    static std::vector<float> run(int ticks) {
        std::vector<float> heard;
        for (int tick = 0; tick < ticks; ++tick) {
            Game::tick(Game::tickThreshold);
            const std::vector<float> now = SoundSystem::renderLoopback(framesInTick);
            heard.insert(heard.end(), now.begin(), now.end());
        }
        return heard;
    }
    static float peakOf(const std::vector<float>& samples) {
        return std::abs(
            *std::ranges::max_element(samples, {}, [](float sample) { return std::abs(sample); }));
    }
    static double loudnessOf(const std::vector<float>& samples) {
        return Loudness::integrated(samples, 2, 44'100.0);
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

TEST_F(SoundsInPlayTest, MenusAndPlayAreAboutAsLoudAsTheMusicAndNothingClips) {
    constexpr double music = -20.0; // LUFS
    constexpr double alike = 3.0;   // LU
    const std::vector<float> menu = run(10 * ticksInSecond);
    GameMenus::setCurrentMenu(menu::none);
    const std::vector<float> play = run(20 * ticksInSecond);

    EXPECT_NEAR(loudnessOf(menu), music, alike);
    EXPECT_NEAR(loudnessOf(play), music, alike);
    EXPECT_LT(peakOf(menu), 0.5f);
    EXPECT_LT(peakOf(play), 1.0f);
}

TEST_F(SoundsInPlayTest, APauseIsSilentOnceTheLastSplashHasEnded) {
    GameMenus::setCurrentMenu(menu::none);
    run(3 * ticksInSecond);

    Game::keyboardPressed(key::pause);
    run(3 * ticksInSecond);
    const std::vector<float> paused = run(ticksInSecond);
    Game::keyboardPressed(key::pause);
    const std::vector<float> after = run(ticksInSecond);

    EXPECT_EQ(peakOf(paused), 0.0f);
    EXPECT_GT(loudnessOf(after), -40.0);
}

TEST_F(SoundsInPlayTest, ALevelRingsItsCheckPointOnce) {
    Game::initialise("maps\\sluices.rivl");
    GameMenus::setCurrentMenu(menu::none);
    Camera::setState(Camera::normal);
    ParticleManager::particles.clear();
    std::list<SoundSource*> bells;
    SoundSourceManager::getSoundSources(13, bells);
    ASSERT_EQ(bells.size(), 1u);
    const Sound& bell = bells.front()->sound;

    run(2);
    EXPECT_FALSE(bell.isPlaying());
    ParticleManager::createParticles(750.0f, 477.0f, 4.0f, 1); // in the trigger of the check point
    int ticks = 0;
    for (; ticks < 10 * ticksInSecond && !bell.isPlaying(); ++ticks) {
        run(1); // until the camera is there: a trigger out of view sleeps
    }

    EXPECT_LT(ticks, 10 * ticksInSecond);
    EXPECT_FALSE(bell.isLooping());
    run(3 * ticksInSecond);
    EXPECT_FALSE(bell.isPlaying()) << "it rings once";
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
