#include "game/GameRules.h"

#include "console/GLConsole.h"
#include "core/Clock.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"
#include "gui/GameMenus.h"
#include "level/Level.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "support/ConsoleAnswer.h"
#include "support/PlayTest.h"

#include <cmath>

namespace tarnwick {

/// A level without anything whose water starts at (100, -40), with the camera on its water and the clock at
/// 0. Half of the water is needed at the end, and the finish takes two seconds.
class GameRulesTest : public PlayTest {
protected:
    GameRulesTest() {
        level.waterStart = {100, -40};
        configure("finishWaterVolume = 0.5 finishAnimationTime = 2");
        play();
    }

    void configure(const std::string& settings) const { data.write("cfg/game.cfg", settings); }
    static void setWater(std::size_t particles) { ParticleManager::particles.resize(particles); }
    static void setTime(std::uint32_t milliseconds) {
        GameRules::initialise(); // so that the time counts from 0
        Clock::drive(Clock::milliseconds() + milliseconds);
        GameRules::update(0.01f);
    }
    /// One tick in which `particles` stand in the end.
    static void reachEndWith(std::int32_t particles) {
        GameRules::incrementEndOfLevelTriggerParticleCount(particles);
        GameRules::update(0.01f);
    }
    static GameRules::State& state() { return GameRules::state; }
    /// How far the farthest particle is from (x, y).
    static float reachAround(float x, float y) {
        float reach = 0.0f;
        for (const Particle& particle : ParticleManager::particles) {
            reach = std::max(reach, std::hypot(particle.position.x - x, particle.position.y - y));
        }
        return reach;
    }
};

TEST_F(GameRulesTest, ALevelStartsWithItsCheckPointAtTheWater) {
    EXPECT_EQ(state().checkPointX, 100.0f);
    EXPECT_EQ(state().checkPointY, -40.0f);
    EXPECT_EQ(state().checkPointParticleCount, 128u);
    EXPECT_EQ(GameRules::getLevelTime(), 0);
    EXPECT_FALSE(GameRules::gameIsFinished());
    EXPECT_EQ(state().finishTimeLeft, 2.0f);
}

TEST_F(GameRulesTest, AFinishTakesAtLeastAMillisecond) {
    configure("finishAnimationTime = -3");

    GameRules::initialise();

    EXPECT_EQ(state().finishAnimationTime, 0.001f);
}

TEST_F(GameRulesTest, ARestartPutsEverythingBack) {
    GameRules::setCheckPoint(1.0f, 2.0f);
    reachEndWith(128);
    GameRules::update(2.0f);
    GLConsole::runLine("TimePrint true");
    GameRules::incrementEndOfLevelTriggerParticleCount(100);
    Clock::drive(5000);

    Game::resetLevel();

    EXPECT_EQ(state().checkPointX, 100.0f);
    EXPECT_EQ(state().checkPointParticleCount, 128u);
    EXPECT_FALSE(GameRules::gameIsFinished());
    EXPECT_FALSE(state().levelEnding);
    EXPECT_FALSE(state().timePrintEnabled);
    EXPECT_EQ(state().endOfLevelParticleCount, 0u);
    EXPECT_EQ(GameRules::getLevelTime(), 0);
}

TEST_F(GameRulesTest, ARestartPutsTheTimeToZeroAndCountsFromThere) {
    Clock::drive(4000);
    GameRules::update(0.01f);
    const std::int32_t before = GameRules::getLevelTime();
    Clock::drive(5000);

    Game::resetLevel();
    Camera::setState(Camera::normal);
    const std::int32_t after = GameRules::getLevelTime();
    Clock::drive(5250);
    GameRules::update(0.01f);

    EXPECT_EQ(before, 4000);
    EXPECT_EQ(after, 0);
    EXPECT_EQ(GameRules::getLevelTime(), 250);
}

TEST_F(GameRulesTest, TheTimeIsThatOfTheTicks) {
    Clock::drive(400);
    GameRules::update(0.4f);
    Clock::drive(1000);
    GameRules::update(0.6f);

    EXPECT_EQ(GameRules::getLevelTime(), 1000);
}

TEST_F(GameRulesTest, TheTimeDoesNotRunDuringTheFlight) {
    Camera::setState(Camera::movingToWaypoint);
    Clock::drive(400);
    GameRules::update(0.4f);
    Camera::setState(Camera::normal);
    Clock::drive(500);
    GameRules::update(0.1f);

    EXPECT_EQ(GameRules::getLevelTime(), 100);
}

TEST_F(GameRulesTest, ATickWithoutTheRulesIsNotCounted) {
    Clock::drive(400);
    GameRules::unpauseLevelTimer();
    Clock::drive(500);
    GameRules::update(0.1f);

    EXPECT_EQ(GameRules::getLevelTime(), 100);
}

TEST_F(GameRulesTest, TheGameCountsNeitherPausesNorFlights) {
    Game::tick(0.01f);
    Clock::drive(100);
    Game::tick(0.01f);
    GLConsole::runLine("Pause true");
    Clock::drive(1100);
    Game::tick(0.01f);
    GLConsole::runLine("Pause false");
    Clock::drive(1150);
    Game::tick(0.01f);
    Camera::setState(Camera::movingToWaypoint);
    Camera::setPosition({-5000.0f, 0.0f});
    Clock::drive(2150);
    Game::tick(0.01f);

    EXPECT_EQ(GameRules::getLevelTime(), 150);
}

TEST_F(GameRulesTest, AllParticlesCountFreeOnesAndIce) {
    setWater(7);
    ParticleGroupMover::groups.emplace_back().members.resize(3);
    ParticleGroupMover::groups.emplace_back().members.resize(2);

    EXPECT_EQ(GameRules::getParticleCount(), 12u);
}

TEST_F(GameRulesTest, WaterLostAtTheStartComesBackAtTheStart) {
    setWater(0);

    GameRules::update(0.01f);

    EXPECT_EQ(ParticleManager::particles.size(), 128u);
    EXPECT_LE(reachAround(100.0f, -40.0f), 10.001f); // rounding at the rim of the disc
    EXPECT_TRUE(Camera::movingTowardsWaypoint());
}

TEST_F(GameRulesTest, LostWaterComesBackAsMuchAsTheCheckPointSaw) {
    setWater(30);
    ParticleGroupMover::groups.emplace_back().members.resize(10);
    GameRules::setCheckPoint(-500.0f, 300.0f);
    setWater(0);
    ParticleGroupMover::groups.clear();

    GameRules::update(0.01f);

    EXPECT_EQ(ParticleManager::particles.size(), 40u);
    EXPECT_LE(reachAround(-500.0f, 300.0f), 10.001f);
}

TEST_F(GameRulesTest, ACheckPointCanBeTakenAnyNumberOfTimes) {
    GameRules::setCheckPoint(1.0f, 2.0f);
    setWater(100);
    GameRules::setCheckPoint(3.0f, 4.0f);

    EXPECT_EQ(state().checkPointX, 3.0f);
    EXPECT_EQ(state().checkPointY, 4.0f);
    EXPECT_EQ(state().checkPointParticleCount, 100u);
}

TEST_F(GameRulesTest, IceAloneIsNotLost) {
    setWater(0);
    ParticleGroupMover::groups.emplace_back().members.resize(1);

    GameRules::update(0.01f);

    EXPECT_TRUE(ParticleManager::particles.empty());
    EXPECT_FALSE(Camera::movingTowardsWaypoint());
}

TEST_F(GameRulesTest, ALossDoesNotResetTheTime) {
    Clock::drive(3000);
    setWater(0);

    GameRules::update(0.01f);

    EXPECT_EQ(GameRules::getLevelTime(), 3000);
}

TEST_F(GameRulesTest, EnoughWaterInTheEndBeginsTheFinish) {
    reachEndWith(63);
    const bool tooEarly = state().levelEnding;
    reachEndWith(64);

    EXPECT_FALSE(tooEarly);
    EXPECT_TRUE(state().levelEnding);
    EXPECT_EQ(state().finishTimeLeft, 2.0f); // begun and not yet running
    EXPECT_FALSE(GameRules::gameIsFinished());
    EXPECT_EQ(state().endOfLevelParticleCount, 0u);
}

TEST_F(GameRulesTest, WaterMustStandInTheEndInOneTick) {
    for (int i = 0; i < 10; ++i) {
        reachEndWith(32);
    }

    EXPECT_FALSE(state().levelEnding);
}

TEST_F(GameRulesTest, TheShareIsCutToAWholeNumberButNeverZero) {
    configure("finishWaterVolume = 0.05");
    GameRules::initialise();
    setWater(10);

    reachEndWith(0);
    const bool withoutAny = state().levelEnding;
    reachEndWith(1);

    EXPECT_FALSE(withoutAny);
    EXPECT_TRUE(state().levelEnding);
}

TEST_F(GameRulesTest, AShareAboveAllWaterIsNeverReached) {
    configure("finishWaterVolume = 99999999999");
    GameRules::initialise();

    reachEndWith(128);

    EXPECT_FALSE(state().levelEnding);
}

TEST_F(GameRulesTest, ANegativeShareNeedsOneParticle) {
    configure("finishWaterVolume = -1");
    GameRules::initialise();

    reachEndWith(1);

    EXPECT_TRUE(state().levelEnding);
}

TEST_F(GameRulesTest, TheFinishRunsWithTheTimeStanding) {
    Clock::drive(1000);
    reachEndWith(128);
    Clock::drive(2000);
    GameRules::update(1.0f);
    const bool halfway = GameRules::gameIsFinished();
    Clock::drive(3000);
    GameRules::update(1.0f);

    EXPECT_FALSE(halfway);
    EXPECT_TRUE(GameRules::gameIsFinished());
    EXPECT_EQ(GameRules::getLevelTime(), 1000);
}

TEST_F(GameRulesTest, WaterLostDuringTheFinishComesBackToo) {
    reachEndWith(128);
    setWater(0);

    GameRules::update(0.5f);

    EXPECT_EQ(ParticleManager::particles.size(), 128u);
    EXPECT_TRUE(Camera::movingTowardsWaypoint());
    EXPECT_EQ(state().finishTimeLeft, 1.5f);
}

TEST_F(GameRulesTest, TheSimulationRunsDuringTheFinishAndStandsAfterIt) {
    data.write("cfg/water.cfg", "gravity = 700 roomTemperature = 20");
    play();
    GameRules::incrementEndOfLevelTriggerParticleCount(128);
    Game::tick(0.01f);
    const Vector2 atTheFinish = ParticleManager::particles.front().position;
    Game::tick(1.0f);
    const Vector2 during = ParticleManager::particles.front().position;
    GameRules::update(2.0f);
    Game::tick(1.0f);

    EXPECT_NE(during, atTheFinish);
    EXPECT_TRUE(GameRules::gameIsFinished());
    EXPECT_EQ(ParticleManager::particles.front().position, during);
}

TEST_F(GameRulesTest, AGoodTimeHasTheFullScore) {
    setTime(160'000);
    EXPECT_EQ(GameRules::getTimeScore(), 436'000u);
    setTime(0);
    EXPECT_EQ(GameRules::getTimeScore(), 436'000u);
}

TEST_F(GameRulesTest, ABadTimeHasTheSmallestScore) {
    setTime(480'000);
    EXPECT_EQ(GameRules::getTimeScore(), 1000u);
    setTime(2'000'000'000);
    EXPECT_EQ(GameRules::getTimeScore(), 1000u);
}

TEST_F(GameRulesTest, TheTimeScoreFallsInProportion) {
    setTime(320'000);

    EXPECT_EQ(GameRules::getTimeScore(), 218'500u);
}

TEST_F(GameRulesTest, ATimeThatWrappedRoundCountsAsGood) {
    setTime(3'000'000'000);

    EXPECT_LT(GameRules::getLevelTime(), 0);
    EXPECT_EQ(GameRules::getTimeScore(), 436'000u);
}

TEST_F(GameRulesTest, EachParticleScores500WithoutALimit) {
    setWater(1);
    EXPECT_EQ(GameRules::getWaterScore(), 500u);
    setWater(128);
    EXPECT_EQ(GameRules::getWaterScore(), 64'000u);
    setWater(4096);
    EXPECT_EQ(GameRules::getWaterScore(), 2'048'000u);
}

TEST_F(GameRulesTest, TheTotalIsTheSum) {
    EXPECT_EQ(GameRules::getTotalScore(), 436'000u + 64'000u);
}

TEST_F(GameRulesTest, TimePrintPrintsOnEveryFrameAlsoUnseen) {
    Clock::drive(3'723'450);
    GameRules::update(0.01f);
    EXPECT_EQ(answerTo("TimePrint true"), "\nTimePrint is now true");
    GLConsole::clear();

    GameRules::draw();
    GameRules::draw();

    EXPECT_EQ(GLConsole::outputText(), "\n1:: 2::  3.  45\n1:: 2::  3.  45");
}

TEST_F(GameRulesTest, ShutdownRemovesTheCommandAndTheCount) {
    GameRules::incrementEndOfLevelTriggerParticleCount(9);

    GameRules::shutdown();

    EXPECT_EQ(GLConsole::commands().count("TIMEPRINT"), 0u);
    EXPECT_EQ(state().endOfLevelParticleCount, 0u);
}

} // namespace tarnwick
