// Triggers where a level and the game hold them.

#include "console/GLConsole.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "game/GameRules.h"
#include "graphics/GLWindow.h"
#include "gui/GameMenus.h"
#include "level/Level.h"
#include "level/LevelBspNode.h"
#include "level/LevelBspTree.h"
#include "level/LevelObjectsManager.h"
#include "mechanisms/ForceManager.h"
#include "mechanisms/FxParticleManager.h"
#include "mechanisms/TriggerManager.h"
#include "mechanisms/Triggers_HeatSources.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "support/LevelFileBuilder.h"
#include "support/PlayTest.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <string>
#include <vector>

namespace tarnwick {

/// A headless game without gravity, so that water stays where it is put.
class TriggersInPlayTest : public PlayTest {
protected:
    TriggersInPlayTest() {
        data.write("cfg/water.cfg",
                   "roomTemperature = 20 particleKillTime = 0.5 "
                   "triggerTemperatureChangeSpeed = 100 triggerTemperatureChangeAmountIce = 30 "
                   "triggerTemperatureChangeAmountSteam = 130");
        data.write("cfg/game.cfg", "finishWaterVolume = 0.5 finishAnimationTime = 0.5");
    }

    static constexpr float dt = 0.0125f;

    /// A trigger on the square of 40 units about (x, y).
    void
    addTrigger(std::int32_t type, std::int32_t target, std::int32_t x, std::int32_t y, float delay = 0.0f) {
        level.triggers.push_back(
            {target, type, delay, {{x - 20, y - 20}, {x + 20, y - 20}, {x + 20, y + 20}, {x - 20, y + 20}}});
    }
    void addGate(std::int32_t id, std::int32_t x) {
        level.polygons.push_back(polygonRecord({{x, -50}, {x + 10, -50}, {x + 10, 50}, {x, 50}}, id));
    }
    /// Plays the level without water.
    void play() {
        PlayTest::play();
        ParticleManager::particles.clear();
    }
    static Particle& addWater(float x, float y) {
        Particle& particle = ParticleManager::particles.emplace_back();
        particle.position = {x, y};
        particle.temperature = 20.0f;
        return particle;
    }
    static Trigger& trigger(std::ptrdiff_t index) {
        return *std::next(TriggerManager::triggers.begin(), index);
    }
    static Polygon2D& polygon(std::ptrdiff_t index) { return *std::next(Level::polygons.begin(), index); }
    static bool edgesOn(const Polygon2D& gate) {
        return std::ranges::all_of(*Level::nodesOf(gate),
                                   [](const LevelBspNode* node) { return node->hasEdge; });
    }
};

TEST_F(TriggersInPlayTest, ALevelHandsItsTriggersOverWithAllThatTheyAimAt) {
    level.triggers = {{7, 402, 1.5f, {{1, 2}, {30, 4}, {50, 60}, {7, 80}}},
                      {-8, -3, -2.0f, {{0, 0}, {9, 0}, {9, 9}, {0, 9}}}};
    level.forces = {{7, {0, 0}, {1.0f, 0.0f}, 1.0f}};
    level.movers = {{7, 10.0f, {0, 0}, {10, 0}}};
    level.emitters = {{7, {0, 0}, {1.0f, 0.0f}, ""}};
    addGate(7, 0);

    load();

    ASSERT_EQ(TriggerManager::triggers.size(), 2u);
    EXPECT_EQ(trigger(0).typeId, 4294967293u); // newest first
    EXPECT_EQ(trigger(0).targetId, -8);
    const Trigger& first = trigger(1);
    EXPECT_EQ(first.typeId, 402u);
    EXPECT_EQ(first.delay, 1.5f);
    EXPECT_EQ(first.triangleA[0], (Vector2{1.0f, 2.0f}));
    EXPECT_EQ(first.triangleB[1], (Vector2{7.0f, 80.0f}));
    EXPECT_EQ(first.targets.size(), 4u);
}

TEST_F(TriggersInPlayTest, ADelayIsTakenBitForBitButNotForHeat) {
    addTrigger(0, 0, 0, 0, 5.0f);
    addTrigger(300, 0, 0, 0, std::bit_cast<float>(0x7FC00001u)); // no number

    load();

    EXPECT_EQ(std::bit_cast<std::uint32_t>(trigger(0).delay), 0x7FC00001u);
    EXPECT_EQ(trigger(1).delay, 0.0f);
}

TEST_F(TriggersInPlayTest, TriggersComeAfterEverythingElseAndTheOldOnesGoWithTheirLevel) {
    load();
    GLConsole::clear();

    load();

    const std::string printed = GLConsole::outputText();
    const std::size_t cleared = printed.find("\nClearing level data...");
    const std::size_t ended = printed.find("\nShutting down trigger manager..");
    const std::size_t emitters = printed.find("\nInitialising FX particle manager..");
    const std::size_t triggers = printed.find("\nInitialising down trigger manager..");
    EXPECT_LT(cleared, printed.find("\nShutting down force manager."));
    EXPECT_LT(printed.find("\nShutting down force manager."), ended);
    EXPECT_LT(ended, emitters);
    EXPECT_LT(emitters, triggers);
    EXPECT_NE(triggers, std::string::npos);
}

TEST_F(TriggersInPlayTest, PolygonsThatATriggerRemovesOrAddsAreDestructable) {
    addGate(1, 0);
    addGate(2, 100);
    addGate(3, 200);
    addGate(4, 300);
    addTrigger(300, 1, 0, 0);
    addTrigger(301, 2, 0, 0);
    addTrigger(3, 3, 0, 0);

    load();

    EXPECT_TRUE(polygon(0).destructable);
    EXPECT_TRUE(polygon(1).destructable);
    EXPECT_FALSE(polygon(2).destructable);
    EXPECT_FALSE(polygon(3).destructable);
}

TEST_F(TriggersInPlayTest, ARemoverWithoutTargetMarksThePolygonsOfIdZeroAndTakesNone) {
    addGate(0, 0);
    addTrigger(300, 0, -200, 0);
    play();
    addWater(-200.0f, 0.0f);

    Game::tick(dt);

    EXPECT_TRUE(polygon(0).destructable);
    EXPECT_EQ(trigger(0).fireCount, 1u);
    EXPECT_TRUE(polygon(0).visible);
}

TEST_F(TriggersInPlayTest, AGateOpensToTheWaterAndIsShutAgainByARestart) {
    addGate(1, 0);
    addTrigger(300, 1, -200, 0);
    play();
    addWater(-200.0f, 0.0f);

    Game::tick(dt);
    const bool open = !polygon(0).visible && !polygon(0).collideable && !edgesOn(polygon(0));
    Game::resetLevel();

    EXPECT_TRUE(open);
    EXPECT_TRUE(polygon(0).visible);
    EXPECT_TRUE(edgesOn(polygon(0)));
    EXPECT_FALSE(polygon(0).collideable); // until a trigger adds it
    EXPECT_EQ(trigger(0).fireCount, 0u);
}

TEST_F(TriggersInPlayTest, APolygonOfAMoverAndARemoverIsBothAndHasNoEdgesInTheTree) {
    addGate(1, 0);
    level.movers = {{1, 10.0f, {0, 0}, {10, 0}}};
    addTrigger(300, 1, -200, 0);

    load();

    EXPECT_TRUE(polygon(0).destructable);
    EXPECT_TRUE(polygon(0).moveable);
    EXPECT_EQ(Level::nodesOf(polygon(0)), nullptr);
}

TEST_F(TriggersInPlayTest, AMoverRunsFromTheTickAfterItsTriggerFired) {
    addGate(1, 0);
    level.movers = {{1, 80.0f, {0, 0}, {10, 0}}};
    addTrigger(402, 1, -200, 0);
    play();
    addWater(-200.0f, 0.0f);

    Game::tick(dt);
    const float first = polygon(0).offsetX;
    Game::tick(dt);

    EXPECT_EQ(first, 0.0f);
    EXPECT_EQ(polygon(0).offsetX, 1.0f);
}

TEST_F(TriggersInPlayTest, WaterGoesThroughAnOpenedGate) {
    addGate(1, 0);
    addTrigger(300, 1, -200, 200);
    play();
    addWater(-10.0f, 0.0f).velocity = {150.0f, 0.0f};
    for (int tick = 0; tick < 20; ++tick) {
        Game::tick(dt);
    }
    const float held = ParticleManager::particles.front().position.x;
    addWater(-200.0f, 200.0f); // opens it

    Game::tick(dt);
    ParticleManager::particles.front().velocity = {150.0f, 0.0f};
    for (int tick = 0; tick < 20; ++tick) {
        Game::tick(dt);
    }

    EXPECT_LT(held, 0.0f);
    EXPECT_GT(ParticleManager::particles.front().position.x, 10.0f);
}

TEST_F(TriggersInPlayTest, TriggersComeAfterTheWaterHasMoved) {
    addTrigger(-1, 0, 0, 0);
    play();
    addWater(-21.0f, 0.0f).velocity = {100.0f, 0.0f}; // enters within the tick

    Game::tick(dt);

    EXPECT_EQ(trigger(0).fireCount, 1u);
}

TEST_F(TriggersInPlayTest, AnAnimationRunsInTheTickInWhichItsTriggerFires) {
    data.write("cfg/animation.cfg", "animationSpeeds = 10");
    data.write("gfx/fan_frame0.tga", "");
    data.write("gfx/fan_frame1.tga", "");
    level.objects = {{9, "gfx\\fan_frame0.tga", 2, {0, 0}, 0}};
    addTrigger(3, 9, 0, 0);
    play();
    addWater(0.0f, 0.0f);
    ASSERT_EQ(LevelObjectsManager::animatedObjects.size(), 1u);
    const LevelObject& fan = LevelObjectsManager::animatedObjects.front();
    const bool stoodStill = fan.paused;

    Game::tick(dt);

    EXPECT_TRUE(stoodStill);
    EXPECT_EQ(fan.frameTime, dt);
}

TEST_F(TriggersInPlayTest, APausedGameFiresNothing) {
    addTrigger(-1, 0, 0, 0);
    play();
    addWater(0.0f, 0.0f);
    GLConsole::runLine("Pause true");

    Game::tick(dt);

    EXPECT_EQ(trigger(0).fireCount, 0u);
}

TEST_F(TriggersInPlayTest, ColdWaterFreezesAndHotWaterBecomesSteam) {
    addTrigger(0, 0, -100, 0);
    addTrigger(2, 0, 100, 0);
    play();
    addWater(-100.0f, 0.0f);
    addWater(100.0f, 0.0f);

    for (int tick = 0; tick < 100; ++tick) {
        Game::tick(dt);
    }

    ASSERT_EQ(ParticleGroupMover::groups.size(), 1u);
    EXPECT_EQ(ParticleGroupMover::groups.front().temperature, -30.0f);
    ASSERT_EQ(ParticleManager::particles.size(), 1u);
    EXPECT_EQ(ParticleManager::particles.front().temperature, 130.0f);
}

TEST_F(TriggersInPlayTest, TheHeatSettingsAreReadAtTheStartOfEachLevel) {
    play();

    EXPECT_EQ(Triggers_HeatSources::temperatureChangeSpeed(), 100.0f);
}

TEST_F(TriggersInPlayTest, EventsOfALevelThatIsReplacedNeverHappen) {
    level.forces = {{1, {0, 0}, {1.0f, 0.0f}, 1.0f}};
    addTrigger(300, 1, 0, 0, 2.0f * dt);
    play();
    addWater(0.0f, 0.0f);
    Game::tick(dt);
    level.triggers.clear();

    play();
    for (int tick = 0; tick < 5; ++tick) {
        addWater(0.0f, 0.0f);
        Game::tick(dt);
    }

    EXPECT_TRUE(ForceManager::forces.front().enabled);
}

TEST_F(TriggersInPlayTest, EventsGoOnWhenAnotherLevelCannotBeLoaded) {
    level.forces = {{1, {0, 0}, {1.0f, 0.0f}, 1.0f}};
    addTrigger(300, 1, 0, 0, 2.5f * dt);
    play();
    addWater(0.0f, 0.0f);
    Game::tick(dt);

    Game::map("maps\\missing.rivl");
    Game::serveRequests();
    GameMenus::setCurrentMenu(menu::none); // the main menu came up over the level that stayed
    for (int tick = 0; tick < 3; ++tick) {
        Game::tick(dt);
    }

    EXPECT_FALSE(ForceManager::forces.front().enabled);
}

TEST_F(TriggersInPlayTest, EventsPendingAtARestartNeverHappen) {
    level.forces = {{1, {0, 0}, {1.0f, 0.0f}, 1.0f}};
    addTrigger(300, 1, 0, 0, 2.0f * dt);
    play();
    addWater(0.0f, 0.0f);
    Game::tick(dt);

    Game::resetLevel();
    ParticleManager::particles.clear();
    TriggerManager::runTriggers(1.0f, Camera::view());

    EXPECT_TRUE(ForceManager::forces.front().enabled);
}

TEST_F(TriggersInPlayTest, AForceSwitchedOffStaysOffOverARestart) {
    level.forces = {{1, {0, 0}, {1.0f, 0.0f}, 1.0f}};
    addTrigger(300, 1, 0, 0);
    play();
    addWater(0.0f, 0.0f);
    Game::tick(dt);

    Game::resetLevel();

    EXPECT_FALSE(ForceManager::forces.front().enabled);
}

TEST_F(TriggersInPlayTest, HalfOfTheWaterInTheEndInOneTickEndsTheLevel) {
    addTrigger(801, 0, 0, 0);
    play();
    addWater(200.0f, 0.0f);
    addWater(200.0f, 100.0f);
    addWater(200.0f, 200.0f);
    addWater(-5.0f, 0.0f);
    for (int tick = 0; tick < 60; ++tick) { // a quarter is in it, tick for tick
        Game::tick(dt);
    }
    const bool finishedEarly = GameRules::gameIsFinished();
    ParticleManager::particles.front().position = {15.0f, 0.0f};

    for (int tick = 0; tick < 60; ++tick) {
        Game::tick(dt);
    }

    EXPECT_FALSE(finishedEarly);
    EXPECT_TRUE(GameRules::gameIsFinished());
}

TEST_F(TriggersInPlayTest, TheMembersOfAnIceGroupCountTowardTheEnd) {
    addTrigger(801, 0, 0, 0);
    play();
    addWater(200.0f, 0.0f);
    addWater(200.0f, 100.0f);
    ParticleGroup& group = ParticleGroupMover::groups.emplace_back();
    group.temperature = -10.0f;
    group.members.resize(2);

    for (int tick = 0; tick < 60; ++tick) {
        Game::tick(dt);
    }

    EXPECT_TRUE(GameRules::gameIsFinished());
}

TEST_F(TriggersInPlayTest, LostWaterComesBackInTheMiddleOfTheCheckPoint) {
    level.triggers.push_back({0, 901, 0.0f, {{100, 100}, {220, 100}, {220, 160}, {100, 160}}});
    play();
    for (int i = 0; i < 7; ++i) {
        addWater(150.0f, 110.0f + static_cast<float>(i));
    }
    Game::tick(dt);
    ParticleManager::particles.clear();

    Game::tick(dt);

    ASSERT_EQ(ParticleManager::particles.size(), 7u);
    const Vector2 middle{(100.0f + 220.0f + 220.0f + 220.0f + 100.0f + 100.0f) / 6.0f,
                         (100.0f + 100.0f + 160.0f + 160.0f + 160.0f + 100.0f) / 6.0f};
    for (const Particle& particle : ParticleManager::particles) {
        EXPECT_LE(
            std::max(std::abs(particle.position.x - middle.x), std::abs(particle.position.y - middle.y)),
            10.0f);
    }
}

} // namespace tarnwick
