#include "mechanisms/FxParticleManager.h"

#include "console/GLConsole.h"
#include "core/Geometry.h"
#include "core/Random.h"
#include "game/Camera.h"
#include "graphics/GLWindow.h"
#include "support/ConsoleAnswer.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"
#include "support/SceneAccess.h"

#include <string>

namespace tarnwick {

/// A view of 800 by 600 units about the origin.
class FxParticleManagerTest : public ModuleTest {
protected:
    FxParticleManagerTest() {
        GLWindow::createHeadless(800, 600);
        GLConsole::initialise();
        SceneAccess::configure({.gravity = 700.0f});
        SceneAccess::placeCamera({0.0f, 0.0f}, {0.0f, 0.0f}, 0.0f, 1.0f);
        data.write("fx/steady.cfg", "frequency = 0.01 texture1 = gfx\\a.tga");
    }
    ~FxParticleManagerTest() override { GLWindow::close(); }

    /// A particle at rest at the origin with `timeLeft` seconds to live.
    static FxParticle& addParticle(float timeLeft = 1.0f) {
        FxParticle particle;
        particle.lifeTime = timeLeft;
        particle.timeLeft = timeLeft;
        FxParticleManager::addParticle(particle);
        return FxParticleManager::particles.back();
    }
    static FxParticleEmitter& addEmitter(Vector2 position) {
        FxParticleEmitter emitter;
        emitter.position = position;
        emitter.loadEmitterSettings("fx\\steady.cfg");
        FxParticleManager::addEmitter(emitter);
        return FxParticleManager::emitters.back();
    }
    /// Whether an emitter there runs in a tick.
    static bool runsAt(Vector2 position) {
        FxParticleManager::initalise();
        addEmitter(position);
        FxParticleManager::run(0.01f, Camera::view());
        return !FxParticleManager::particles.empty();
    }

    static constexpr const char* usage =
        "\nUSAGE: Emitter create < x : number > < y : number > < dir_x : number > < dir_y : number > "
        "< id : integer > < emitter settings : fileName > ";

    DataFolder data;
};

TEST_F(FxParticleManagerTest, StartAndEndAreTold) {
    GLConsole::clear();

    FxParticleManager::initalise();

    EXPECT_EQ(GLConsole::outputText(),
              "\nShutting down FX particle manager..\nInitialising FX particle manager..");
}

TEST_F(FxParticleManagerTest, AnewStartEmptiesEverything) {
    FxParticleManager::initalise();
    addEmitter({});
    FxParticleManager::run(0.01f, Camera::view());
    GLConsole::runLine("FxEmitterDraw true");

    FxParticleManager::initalise();

    EXPECT_EQ(answerTo("FxEmitterCount"), "\nFxEmitterCount is 0");
    EXPECT_EQ(answerTo("FxParticleCount"), "\nFxParticleCount is 0");
    EXPECT_EQ(answerTo("FxEmitterDraw"), "\nFxEmitterDraw is false");
}

TEST_F(FxParticleManagerTest, AfterShutdownTheCommandsAreGone) {
    FxParticleManager::initalise();
    addEmitter({});
    addParticle();

    FxParticleManager::shutdown();

    EXPECT_TRUE(FxParticleManager::emitters.empty());
    EXPECT_TRUE(FxParticleManager::particles.empty());
    for (const char* const command :
         {"FXEMITTERCREATE", "FXEMITTERDRAW", "FXEMITTERCOUNT", "FXPARTICLECOUNT"}) {
        EXPECT_FALSE(GLConsole::commands().contains(command)) << command;
    }
}

TEST_F(FxParticleManagerTest, TheCommandCountsWhatIsThere) {
    FxParticleManager::initalise();
    addEmitter({});
    addParticle();
    addParticle();

    EXPECT_EQ(answerTo("FxEmitterCount"), "\nFxEmitterCount is 1");
    EXPECT_EQ(answerTo("FxParticleCount"), "\nFxParticleCount is 2");
    EXPECT_EQ(answerTo("FxEmitterDraw true"), "\nFxEmitterDraw is now true");
    EXPECT_EQ(answerTo("FxEmitterDraw"), "\nFxEmitterDraw is true");
}

TEST_F(FxParticleManagerTest, AnEmitterIsMadeAtTheConsole) {
    FxParticleManager::initalise();

    const std::string answer = answerTo("FxEmitterCreate 1.5 -2 0 -3 -7 fx\\steady.cfg");

    EXPECT_EQ(answer, "");
    ASSERT_EQ(FxParticleManager::emitters.size(), 1u);
    const FxParticleEmitter& emitter = FxParticleManager::emitters.front();
    EXPECT_EQ(emitter.position, (Vector2{1.5f, -2.0f}));
    EXPECT_EQ(emitter.direction, (Vector2{0.0f, -1.0f}));
    EXPECT_EQ(emitter.id, -7);
    EXPECT_EQ(emitter.frequency, 0.01f);
    EXPECT_EQ(emitter.textures.size(), 1u);
}

TEST_F(FxParticleManagerTest, WrongArgumentsPrintTheUsageAndMakeNothing) {
    FxParticleManager::initalise();

    EXPECT_EQ(answerTo("FxEmitterCreate"), usage);
    EXPECT_EQ(answerTo("FxEmitterCreate 1 2 0 1 5"), usage);
    EXPECT_EQ(answerTo("FxEmitterCreate 1 2 0 1 5 a.cfg b"), usage);
    EXPECT_EQ(answerTo("FxEmitterCreate x 2 0 1 5 a.cfg"), usage);
    EXPECT_EQ(answerTo("FxEmitterCreate 1 2 0 up 5 a.cfg"), usage);
    EXPECT_EQ(answerTo("FxEmitterCreate 1 2 0 1 5.5 a.cfg"), usage);
    EXPECT_TRUE(FxParticleManager::emitters.empty());
}

TEST_F(FxParticleManagerTest, AnEmitterOnTheEdgeOfTheViewSquareStillRuns) {
    EXPECT_TRUE(runsAt({400.0f, 0.0f}));
    EXPECT_TRUE(runsAt({-400.0f, 0.0f}));
    EXPECT_TRUE(runsAt({0.0f, 400.0f})); // a square: the height of the view does not count
    EXPECT_TRUE(runsAt({-400.0f, -400.0f}));
    EXPECT_FALSE(runsAt({400.1f, 0.0f}));
    EXPECT_FALSE(runsAt({-400.1f, 0.0f}));
    EXPECT_FALSE(runsAt({0.0f, 400.1f}));
    EXPECT_FALSE(runsAt({0.0f, -400.1f}));
}

TEST_F(FxParticleManagerTest, TheViewSquareFollowsPlaceShakeAndZoomOfTheCamera) {
    SceneAccess::placeCamera({1000.0f, 0.0f}, {16.0f, -8.0f}, 45.0f, 2.0f);

    EXPECT_TRUE(runsAt({1816.0f, 792.0f}));
    EXPECT_FALSE(runsAt({1817.0f, 0.0f}));
    EXPECT_FALSE(runsAt({1016.0f, 793.0f}));
    EXPECT_TRUE(runsAt({216.0f, -808.0f}));
    EXPECT_FALSE(runsAt({215.0f, 0.0f}));
}

TEST_F(FxParticleManagerTest, OffTheViewNoTimeIsGathered) {
    FxParticleManager::initalise();
    const FxParticleEmitter& emitter = addEmitter({500.0f, 0.0f});

    FxParticleManager::run(0.005f, Camera::view());

    EXPECT_EQ(emitter.timer, 0.0f);
}

TEST_F(FxParticleManagerTest, NewParticlesFlyInTheTickThatMakesThem) {
    FxParticleManager::initalise();
    addEmitter({10.0f, 20.0f});

    FxParticleManager::run(0.01f, Camera::view());

    ASSERT_EQ(FxParticleManager::particles.size(), 1u);
    EXPECT_EQ(FxParticleManager::particles.front().timeLeft, 1.0f - 0.01f);
}

TEST_F(FxParticleManagerTest, AParticleWithoutGravityFliesStraight) {
    FxParticle& particle = addParticle();
    particle.velocity = {64.0f, -32.0f};

    FxParticleManager::run(0.03125f, Camera::view());
    FxParticleManager::run(0.03125f, Camera::view());

    EXPECT_EQ(particle.position, (Vector2{4.0f, -2.0f}));
    EXPECT_EQ(particle.velocity, (Vector2{64.0f, -32.0f}));
}

TEST_F(FxParticleManagerTest, ItMovesFirstAndThenFalls) {
    FxParticle& particle = addParticle();
    particle.gravity = 2.0f;

    FxParticleManager::run(0.02f, Camera::view());

    EXPECT_EQ(particle.position, (Vector2{0.0f, 0.0f}));
    // The tick's length enters twice.
    EXPECT_EQ(particle.velocity, (Vector2{0.0f, 1.0f * 700.0f * 0.02f * 2.0f * 0.02f}));
}

TEST_F(FxParticleManagerTest, NegativeGravityRises) {
    FxParticle& particle = addParticle();
    particle.gravity = -1.0f;

    FxParticleManager::run(0.02f, Camera::view());

    EXPECT_LT(particle.velocity.y, 0.0f);
}

TEST_F(FxParticleManagerTest, TheCameraTurnsTheFallOfParticlesInFlight) {
    FxParticle& particle = addParticle();
    particle.gravity = 1.0f;
    Vector2 down{0.0f, 1.0f};
    rotateVector(down, 90.0f * 0.017453292f);
    SceneAccess::placeCamera({}, {}, 90.0f, 1.0f);

    FxParticleManager::run(0.02f, Camera::view());

    EXPECT_EQ(particle.velocity, down * 700.0f * 0.02f * 1.0f * 0.02f);
    EXPECT_LT(particle.velocity.x, 0.0f);
}

TEST_F(FxParticleManagerTest, AParticleEndsWhenNoTimeIsLeft) {
    addParticle(0.03f);
    const FxParticle& longest = addParticle(0.5f);
    addParticle(0.02f);

    FxParticleManager::run(0.02f, Camera::view()); // none left exactly ends it too
    FxParticleManager::run(0.02f, Camera::view());

    ASSERT_EQ(FxParticleManager::particles.size(), 1u);
    EXPECT_EQ(&FxParticleManager::particles.front(), &longest);
}

TEST_F(FxParticleManagerTest, ParticlesOffTheViewFlyOn) {
    FxParticle& particle = addParticle();
    particle.position = {90'000.0f, 0.0f};
    particle.velocity = {128.0f, 0.0f};

    FxParticleManager::run(0.03125f, Camera::view());

    EXPECT_EQ(particle.position.x, 90'004.0f);
}

TEST_F(FxParticleManagerTest, ParticlesDrawNoRandomNumbersInFlight) {
    addParticle();
    seedRandom(17);

    FxParticleManager::run(0.02f, Camera::view());

    EXPECT_EQ(getRandomState(), 17u);
}

} // namespace tarnwick
