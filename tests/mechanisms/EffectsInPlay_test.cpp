// Forces and effect particles where a level and the game hold them.

#include "console/GLConsole.h"
#include "core/DataFiles.h"
#include "core/GLTexture.h"
#include "core/Geometry.h"
#include "core/Random.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"
#include "gui/GameMenus.h"
#include "level/Level.h"
#include "level/LevelLoader.h"
#include "mechanisms/ForceManager.h"
#include "mechanisms/FxParticleManager.h"
#include "support/GameSceneTest.h"
#include "support/LevelFileBuilder.h"
#include "support/PlayTest.h"

#include <filesystem>
#include <iterator>
#include <string>

namespace tarnwick {

/// An empty level with two forces and three emitters, in a headless window.
class EffectsInPlayTest : public PlayTest {
protected:
    EffectsInPlayTest() {
        data.write("cfg/water.cfg", "gravity = 700 roomTemperature = 20 particleKillTime = 0.5");
        data.write("fx/steady.cfg", "frequency = 0.01 texture1 = gfx\\a.tga");
        level.forces = {{8, {10, -20}, {3.0f, 7.0f}, 3.25f}, {0xFFFFFFFFu, {1, 2}, {0.0f, 0.0f}, -1.0f}};
        level.emitters = {{11, {0, -9}, {0.0f, 2.0f}, "fx\\steady.cfg"},
                          {-12, {5, 6}, {0.0f, 0.0f}, "fx\\missing.cfg"},
                          {13, {7, 8}, {-0.0f, 0.0f}, ""}};
    }

    /// A random direction as a level draws it.
    static Vector2 drawDirection() {
        Vector2 direction;
        direction.x = randomFloat() - 0.5f;
        direction.y = randomFloat() - 0.5f;
        normaliseVector(direction);
        return direction;
    }
};

TEST_F(EffectsInPlayTest, ALevelHandsItsForcesOver) {
    Vector2 direction{3.0f, 7.0f};
    normaliseVector(direction);
    normaliseVector(direction); // when it is read, and when it is added

    load();

    ASSERT_EQ(ForceManager::forces.size(), 2u);
    const Force& force = ForceManager::forces.front();
    EXPECT_EQ(force.id, 8);
    EXPECT_EQ(force.position, (Vector2{10.0f, -20.0f}));
    EXPECT_EQ(force.direction, direction);
    EXPECT_EQ(force.strength, 32.5f); // ten times what the file says
    EXPECT_EQ(ForceManager::forces.back().id, -1);
    EXPECT_EQ(ForceManager::forces.back().direction, (Vector2{1.0f, 0.0f}));
}

TEST_F(EffectsInPlayTest, ALevelHandsItsEmittersOver) {
    load();

    ASSERT_EQ(FxParticleManager::emitters.size(), 3u);
    const FxParticleEmitter& emitter = FxParticleManager::emitters.front();
    EXPECT_EQ(emitter.id, 11);
    EXPECT_EQ(emitter.position, (Vector2{0.0f, -9.0f}));
    EXPECT_EQ(emitter.direction, (Vector2{0.0f, 1.0f}));
    EXPECT_EQ(emitter.frequency, 0.01f);
    EXPECT_EQ(FxParticleManager::emitters.back().id, 13);
    EXPECT_EQ(FxParticleManager::emitters.back().frequency, 1.0f);
}

TEST_F(EffectsInPlayTest, RandomDirectionsAreDrawnWhileTheFileIsRead) {
    seedRandom(0);
    const Vector2 second = drawDirection();
    const Vector2 third = drawDirection();
    const std::uint32_t stateAfter = getRandomState();
    seedRandom(0);

    load();

    EXPECT_EQ(std::next(FxParticleManager::emitters.begin())->direction, second);
    EXPECT_EQ(FxParticleManager::emitters.back().direction, third);
    EXPECT_EQ(getRandomState(), stateAfter);
}

TEST_F(EffectsInPlayTest, ForcesComeBeforeEmittersAndBothAfterTheOldLevelWent) {
    load();
    GLConsole::clear();

    load();

    const std::string printed = GLConsole::outputText();
    const std::size_t cleared = printed.find("\nClearing level data...");
    const std::size_t forces = printed.find("\nInitialising force manager.");
    const std::size_t emitters = printed.find("\nInitialising FX particle manager..");
    EXPECT_LT(cleared, printed.find("\nShutting down force manager."));
    EXPECT_LT(cleared, forces);
    EXPECT_LT(forces, emitters);
    EXPECT_NE(emitters, std::string::npos);
    EXPECT_EQ(ForceManager::forces.size(), 2u);
    EXPECT_EQ(FxParticleManager::emitters.size(), 3u);
}

TEST_F(EffectsInPlayTest, ClearingTheLevelEndsForcesAndLeavesEmitters) {
    load();

    Level::clear();

    EXPECT_TRUE(ForceManager::forces.empty());
    EXPECT_FALSE(GLConsole::commands().contains("FORCECREATE"));
    EXPECT_EQ(FxParticleManager::emitters.size(), 3u);
}

TEST_F(EffectsInPlayTest, ABadFileLeavesForcesAndEmittersOfTheOldLevel) {
    load();
    const std::string whole = LevelFileBuilder::write(level);
    data.write("maps/bad.rivl", whole.substr(0, whole.size() - 3));

    EXPECT_FALSE(LevelLoader::loadLevel("maps\\bad.rivl"));

    EXPECT_EQ(ForceManager::forces.size(), 2u);
    EXPECT_EQ(FxParticleManager::emitters.size(), 3u);
}

TEST_F(EffectsInPlayTest, AForceStaysDisabledWhenTheLevelStartsAgain) {
    load();
    ForceManager::forces.front().enabled = false;

    Level::reset();

    EXPECT_FALSE(ForceManager::forces.front().enabled);
}

TEST_F(EffectsInPlayTest, ARestartTakesParticlesOutOfFlightAndLeavesEmitters) {
    play();
    Game::tick(0.025f);
    ASSERT_EQ(FxParticleManager::particles.size(), 2u);
    FxParticleEmitter& emitter = FxParticleManager::emitters.front();
    emitter.active = false;
    const float timer = emitter.timer;

    Game::resetLevel();

    EXPECT_TRUE(FxParticleManager::particles.empty());
    EXPECT_FALSE(emitter.active);
    EXPECT_EQ(emitter.timer, timer);
    EXPECT_NE(timer, 0.0f);
}

TEST_F(EffectsInPlayTest, ATickGivesThemTheCappedStepBeforeTheWaterMoves) {
    play();
    FxParticleManager::emitters.front().size1 = 1.0f; // the size is the fifth share drawn
    seedRandom(5);
    float share = 0.0f;
    for (int i = 0; i < 5; ++i) {
        share = randomFloat();
    }
    seedRandom(5);

    Game::tick(1.0f);

    ASSERT_EQ(FxParticleManager::particles.size(), 3u);          // 1/30 second
    EXPECT_EQ(FxParticleManager::particles.front().size, share); // the first draws of the tick are theirs
    EXPECT_EQ(FxParticleManager::particles.front().timeLeft, 1.0f - Game::longestStep);
}

TEST_F(EffectsInPlayTest, TheSettingsOfTheGameGiveParticles) {
    const std::filesystem::path gameData = std::filesystem::path(TARNWICK_SOURCE_DIR) / "data";
    for (const char* const name : {"drip", "fountain", "dust", "sparks"}) {
        SCOPED_TRACE(name);
        FxParticleManager::initalise();
        FxParticleEmitter emitter;
        emitter.loadEmitterSettings((gameData / "fx" / (std::string(name) + ".cfg")).string());
        for (const GLTexture& texture : emitter.textures) {
            std::filesystem::current_path(gameData);
            EXPECT_TRUE(std::filesystem::exists(DataFiles::find(texture.name))) << texture.name;
            std::filesystem::current_path(data.path());
        }

        emitter.createBurst();

        EXPECT_EQ(FxParticleManager::particles.size(), emitter.burstSize);
        EXPECT_EQ(emitter.active, std::string(name) != "sparks");
        FxParticleManager::particles.clear(); // before their emitter goes
    }
}

TEST_F(EffectsInPlayTest, APausedGameHoldsThem) {
    play();
    GLConsole::runLine("Pause true");

    Game::tick(0.025f);

    EXPECT_TRUE(FxParticleManager::particles.empty());
}

/// The same in the picture of the game.
class EffectsInPictureTest : public GameSceneTest {};

TEST_F(EffectsInPictureTest, EffectParticlesLieInFrontOfAllLayers) {
    addSquare(100, 100, 100, "red", 4);
    play();
    const GLTexture texture("gfx\\green.tga");
    FxParticle particle;
    particle.position = {150.0f, 150.0f};
    particle.size = 20.0f;
    particle.color = {1.0f, 1.0f, 1.0f, 1.0f};
    particle.texture = &texture;
    FxParticleManager::addParticle(particle);

    Game::drawPicture();

    EXPECT_EQ(shownAt(150, 150), green);
    EXPECT_EQ(shownAt(120, 150), red);
    FxParticleManager::particles.clear(); // before the picture goes
}

TEST_F(EffectsInPictureTest, ForcesAreDrawnOverEverything) {
    addSquare(100, 100, 100, "red", 4);
    play();
    ForceManager::addForce(1, 150.0f, 150.0f, 1.0f, 0.0f, 1.0f);
    GLConsole::runLine("ForceDraw true");

    Game::drawPicture();

    EXPECT_EQ(shownAt(150, 150), green);
}

} // namespace tarnwick
