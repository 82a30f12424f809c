// Movers where a level and the game hold them.

#include "console/GLConsole.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"
#include "gui/GameMenus.h"
#include "level/Level.h"
#include "level/LevelLoader.h"
#include "level/LevelObjectsManager.h"
#include "mechanisms/MoverManager.h"
#include "particles/ParticleManager.h"
#include "support/ConsoleAnswer.h"
#include "support/GameSceneTest.h"
#include "support/LevelFileBuilder.h"
#include "support/PlayTest.h"

#include <string>

namespace tarnwick {

/// A lift of id 7 and a floor of id 8, in a headless window.
class MoversInPlayTest : public PlayTest {
protected:
    MoversInPlayTest() {
        data.write("cfg/water.cfg", "gravity = 700 roomTemperature = 20 particleKillTime = 0.5");
        level.polygons = {polygonRecord({{0, 0}, {40, 0}, {40, 10}, {0, 10}}, 7),
                          polygonRecord({{-100, 100}, {100, 100}, {100, 120}, {-100, 120}}, 8)};
        level.objects = {{7, "gfx\\wheel.tga", 2, {20, 5}, 0}};
        level.movers = {{7, 60.0f, {10, 20}, {10, -80}}, {9, -2.5f, {0, 0}, {0, 0}}};
    }
};

TEST_F(MoversInPlayTest, ALevelHandsItsMoversOver) {
    load();

    ASSERT_EQ(MoverManager::movers.size(), 2u);
    const Mover& lift = MoverManager::movers.front();
    EXPECT_EQ(lift.id, 7);
    EXPECT_EQ(lift.speed, 60.0f);
    EXPECT_EQ(lift.startPoint, (Vector2{10.0f, 20.0f}));
    EXPECT_EQ(lift.endPoint, (Vector2{10.0f, -80.0f}));
    EXPECT_EQ(lift.length, 100.0f);
    EXPECT_EQ(lift.direction, (Vector2{0.0f, -1.0f}));
    EXPECT_EQ(lift.position, 0.0f);
    EXPECT_EQ(lift.state, MoverIdle);
    EXPECT_EQ(MoverManager::movers.back().direction, Vector2{});
}

TEST_F(MoversInPlayTest, WhatAMoverCarriesIsMoveableAndNotInTheTree) {
    load();

    const Polygon2D& lift = Level::polygons.front();
    const Polygon2D& floor = Level::polygons.back();
    EXPECT_TRUE(lift.moveable);
    EXPECT_FALSE(floor.moveable);
    EXPECT_EQ(Level::nodesOf(lift), nullptr);
    ASSERT_NE(Level::nodesOf(floor), nullptr);
    EXPECT_EQ(Level::nodesOf(floor)->size(), 4u);
}

TEST_F(MoversInPlayTest, MoversComeAfterForcesAndBeforeEmitters) {
    load();
    GLConsole::clear();

    load();

    const std::string printed = GLConsole::outputText();
    const std::size_t cleared = printed.find("\nClearing level data...");
    const std::size_t renderer = printed.find("\nShuttrng down dynamic polygon renderer..");
    const std::size_t ended = printed.find("\nShutting down mover manager..");
    const std::size_t movers = printed.find("\nInitialising down mover manager..");
    EXPECT_LT(cleared, renderer);
    EXPECT_LT(renderer, ended);
    EXPECT_LT(printed.find("\nInitialising force manager."), movers);
    EXPECT_LT(movers, printed.find("\nInitialising FX particle manager.."));
    EXPECT_NE(movers, std::string::npos);
    EXPECT_EQ(MoverManager::movers.size(), 2u);
}

TEST_F(MoversInPlayTest, ClearingTheLevelEndsThem) {
    load();

    Level::clear();

    EXPECT_TRUE(MoverManager::movers.empty());
    EXPECT_FALSE(GLConsole::commands().contains("MOVERCOUNT"));
}

TEST_F(MoversInPlayTest, ABadFileLeavesTheMoversOfTheOldLevel) {
    load();
    const std::string whole = LevelFileBuilder::write(level);
    data.write("maps/bad.rivl", whole.substr(0, whole.size() - 3));

    EXPECT_FALSE(LevelLoader::loadLevel("maps\\bad.rivl"));

    EXPECT_EQ(MoverManager::movers.size(), 2u);
    EXPECT_EQ(answerTo("MoverCount"), "\nMoverCount is 2");
}

TEST_F(MoversInPlayTest, ATickMovesPolygonAndObjectByTheCappedStep) {
    play();
    MoverManager::movers.front().state = MoverToEnd;

    Game::tick(1.0f);

    const float way = 60.0f * Game::longestStep;
    EXPECT_EQ(Level::polygons.front().offsetY, -way);
    EXPECT_EQ(LevelObjectsManager::staticObjects.front().offsetY, -way);
    EXPECT_EQ(Level::polygons.back().offsetY, 0.0f);
}

TEST_F(MoversInPlayTest, AMoverRunsWithoutATriggerNever) {
    play();

    Game::tick(0.025f);

    EXPECT_EQ(MoverManager::movers.front().position, 0.0f);
    EXPECT_EQ(Level::polygons.front().offsetY, 0.0f);
}

TEST_F(MoversInPlayTest, WaterLiesOnALiftAndRises) {
    play();
    ParticleManager::particles.clear();
    Particle& particle = ParticleManager::particles.emplace_front();
    particle.position = {20.0f, -2.5f};
    particle.temperature = 20.0f;
    MoverManager::movers.front().state = MoverToEnd;

    for (int tick = 0; tick < 40; ++tick) {
        Game::tick(0.0125f);
    }

    const float top = Level::polygons.front().offsetY;
    EXPECT_LT(top, -29.0f);
    ASSERT_EQ(ParticleManager::particles.size(), 1u);
    EXPECT_LT(particle.position.y, top - 1.0f);
    EXPECT_FALSE(particle.dying);
}

TEST_F(MoversInPlayTest, ARestartPutsAllBackAndThePolygonDoesNotPushOnItsWay) {
    play();
    MoverManager::movers.front().state = MoverLoopToEnd;
    Game::tick(0.025f);
    answerTo("MoverDraw true");

    Game::resetLevel();

    EXPECT_EQ(MoverManager::movers.front().position, 0.0f);
    EXPECT_EQ(MoverManager::movers.front().state, MoverIdle);
    EXPECT_EQ(Level::polygons.front().offsetY, 0.0f);
    EXPECT_EQ(Level::polygons.front().previousOffsetY, 0.0f);
    EXPECT_EQ(LevelObjectsManager::staticObjects.front().offsetY, 0.0f);
    EXPECT_EQ(answerTo("MoverDraw"), "\nMoverDraw is false");
}

TEST_F(MoversInPlayTest, APausedGameHoldsThem) {
    play();
    MoverManager::movers.front().state = MoverToEnd;
    GLConsole::runLine("Pause true");

    Game::tick(0.025f);

    EXPECT_EQ(MoverManager::movers.front().position, 0.0f);
}

TEST_F(MoversInPlayTest, APolygonTakesTheMoversOfAnOldLevelNotAlong) {
    load();
    level.movers.clear();

    load();

    EXPECT_FALSE(Level::polygons.front().moveable);
    EXPECT_NE(Level::nodesOf(Level::polygons.front()), nullptr);
}

/// The same in the picture of the game.
class MoversInPictureTest : public GameSceneTest {};

TEST_F(MoversInPictureTest, APolygonIsDrawnWhereItsMoverHasItAndTheTracksOverEverything) {
    addSquare(100, 100, 100, "red", 4);
    level.polygons.back().polygonId = 5;
    level.movers = {{5, 100.0f, {150, 50}, {350, 50}}};
    play();
    MoverManager::movers.front().position = 100.0f;
    MoverManager::runMovers(0.01f, Camera::view());
    GLConsole::runLine("MoverDraw true");

    Game::drawPicture();

    EXPECT_EQ(shownAt(150, 150), black);
    EXPECT_EQ(shownAt(250, 150), red);
    EXPECT_EQ(shownAt(340, 50), yellow);
}

} // namespace tarnwick
