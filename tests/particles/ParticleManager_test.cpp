#include "particles/ParticleManager.h"

#include "console/GLConsole.h"
#include "core/Random.h"
#include "game/Camera.h"
#include "graphics/GLWindow.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleMover.h"
#include "support/ConsoleAnswer.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"
#include "support/SceneAccess.h"

#include <cmath>
#include <vector>

namespace tarnwick {

class ParticleManagerTest : public ModuleTest {
protected:
    static constexpr float dt = 0.01f;

    ParticleManagerTest() { GLWindow::createHeadless(800, 600); } // the view is 800 by 600 units

    static void configure(SceneSettings settings) {
        SceneAccess::configure(settings);
        SceneAccess::placeCamera({}, {}, 0.0f, 1.0f);
    }
    /// Nothing moves by itself, and heat stays where it is.
    static SceneSettings stillness() {
        SceneSettings settings;
        settings.gravity = 0.0f;
        settings.heatTransferRate = 0.0f;
        return settings;
    }
    static Particle& addParticle(Vector2 position) {
        Particle& particle = ParticleManager::particles.emplace_front();
        particle.position = position;
        particle.temperature = 20.0f;
        return particle;
    }

    /// Of thirty particles, after ten ticks of ordinary gravity. Leaves none behind.
    static std::vector<Vector2> placesAfterAFall() {
        SceneSettings settings = stillness();
        settings.gravity = 700.0f;
        configure(settings);
        seedRandom(1);
        ParticleManager::createParticles(0.0f, 50.0f, 20.0f, 30);
        for (int tick = 0; tick < 10; ++tick) {
            ParticleManager::runSimulation(dt, Camera::view());
        }
        std::vector<Vector2> places;
        for (const Particle& particle : ParticleManager::particles) {
            places.push_back(particle.position);
        }
        ParticleManager::particles.clear();
        ParticleMover::clearParticleGrid();
        return places;
    }

    DataFolder data;
};

TEST_F(ParticleManagerTest, InitialiseClampsWhatItReads) {
    data.write("cfg/water.cfg",
               "gravity = -700 roomTemperature = -5 heatTransferRate = 1.5 steamRiseRate = -2 "
               "steamScatterRate = 3 particleKillTime = 0");

    ParticleManager::initialise();

    EXPECT_EQ(ParticleManager::gravity(), 700.0f);
    EXPECT_EQ(ParticleManager::roomTemperature(), -5.0f);
    EXPECT_EQ(ParticleManager::heatTransferRate(), 1.0f);
    EXPECT_EQ(ParticleManager::particleKillTime(), 0.0001f);
    EXPECT_EQ(answerTo("SteamRiseRate"), "\nSteamRiseRate is -2.000000");
    EXPECT_EQ(answerTo("SteamScatterRate"), "\nSteamScatterRate is 3.000000");
}

TEST_F(ParticleManagerTest, AMissingFileGivesZerosAndTheShortestFade) {
    ParticleManager::initialise();

    EXPECT_EQ(ParticleManager::gravity(), 0.0f);
    EXPECT_EQ(ParticleManager::heatTransferRate(), 0.0f);
    EXPECT_EQ(ParticleManager::particleKillTime(), 0.0001f);
}

TEST_F(ParticleManagerTest, InitialiseShutsDownFirstAndBringsTheOtherTwoModulesUp) {
    data.write("cfg/water.cfg", "gravity = 1");
    addParticle({});

    ParticleManager::initialise();

    EXPECT_TRUE(ParticleManager::particles.empty());
    EXPECT_EQ(GLConsole::outputText(), "\nShutting down particle manager.."
                                       "\nShutting down particle mover.."
                                       "\nShutting down grouped particle mover.."
                                       "\nInitialising particle manager.."
                                       "\nInitialising particle mover.."
                                       "\nShutting down grouped particle mover.."
                                       "\nInitialising grouped particle mover..");
}

TEST_F(ParticleManagerTest, ShutdownRemovesTheSevenCommands) {
    ParticleManager::initialise();
    ASSERT_EQ(GLConsole::commands().size(), 9u); // two are the groups'

    ParticleManager::shutdown();

    EXPECT_TRUE(GLConsole::commands().empty());
}

TEST_F(ParticleManagerTest, TheCommandsReadAndSet) {
    ParticleManager::initialise();

    EXPECT_EQ(answerTo("Gravity -12.5"), "\nGravity is now -12.500000"); // unlike in the file, as it stands
    EXPECT_EQ(ParticleManager::gravity(), -12.5f);
    EXPECT_EQ(answerTo("RoomTemperature 30"), "\nRoomTemperature is now 30.000000");
    EXPECT_EQ(answerTo("HeatTransferRate 7"), "\nHeatTransferRate is now 1.000000");
    EXPECT_EQ(answerTo("HeatTransferRate -7"), "\nHeatTransferRate is now 0.000000");
    EXPECT_EQ(answerTo("SteamRiseRate 2"), "\nSteamRiseRate is now 2.000000");
    EXPECT_EQ(answerTo("SteamScatterRate 4"), "\nSteamScatterRate is now 4.000000");
    EXPECT_EQ(answerTo("ParticleCount"), "\nParticleCount is 0");
}

TEST_F(ParticleManagerTest, ParticleCreateMakesWaterAndLooksAtIt) {
    ParticleManager::initialise();
    ParticleManager::setLookAt([](Vector2 point) { Camera::setPosition(point); });

    EXPECT_EQ(answerTo("ParticleCreate 120 -40.5 5 3"), "");

    EXPECT_EQ(ParticleManager::particles.size(), 3u);
    EXPECT_EQ(Camera::position(), (Vector2{120.0f, -40.5f}));
    EXPECT_EQ(answerTo("ParticleCount"), "\nParticleCount is 3");
}

TEST_F(ParticleManagerTest, ParticleCreateRefusesWhatItCannotUse) {
    ParticleManager::initialise();
    const std::string usage = "\nUsage: ParticleCreate < x : number > < y : number > < radius : number > "
                              "< amount : integer number > ";

    EXPECT_EQ(answerTo("ParticleCreate 100 100 5"), usage);
    EXPECT_EQ(answerTo("ParticleCreate 100 100 5 2 9"), usage);
    EXPECT_EQ(answerTo("ParticleCreate 100 here 5 2"), usage);
    EXPECT_EQ(answerTo("ParticleCreate 100 100 5 2.5"), usage);
    EXPECT_EQ(answerTo("ParticleCreate 100 100 5 0"), "\nInvalid number of particles to make");
    EXPECT_EQ(answerTo("ParticleCreate 100 100 5 -4"), "\nInvalid number of particles to make");
    EXPECT_TRUE(ParticleManager::particles.empty());
    EXPECT_EQ(Camera::position(), Vector2{});
}

TEST_F(ParticleManagerTest, CreatedParticlesRestInTheDiscAtRoomTemperature) {
    configure(stillness());

    ParticleManager::createParticles(10.0f, 20.0f, 5.0f, 50);

    EXPECT_EQ(ParticleManager::particles.size(), 50u);
    for (const Particle& particle : ParticleManager::particles) {
        EXPECT_LE(std::hypot(particle.position.x - 10.0f, particle.position.y - 20.0f), 5.001f);
        EXPECT_EQ(particle.trail[2], particle.position);
        EXPECT_EQ(particle.velocity, Vector2{});
        EXPECT_EQ(particle.temperature, 20.0f);
        EXPECT_FALSE(particle.inGrid);
    }
}

TEST_F(ParticleManagerTest, ANewParticleStandsFirstAndTakesThreeDraws) {
    configure(stillness());
    ParticleManager::createParticles(0.0f, 0.0f, 5.0f, 1);
    const Vector2 first = ParticleManager::particles.front().position;

    ParticleManager::createParticles(0.0f, 0.0f, 5.0f, 1);

    EXPECT_EQ(ParticleManager::particles.back().position, first);
    const std::uint32_t after = getRandomState();
    seedRandom(0);
    for (int draw = 0; draw < 6; ++draw) {
        randomFloat();
    }
    EXPECT_EQ(getRandomState(), after);
}

TEST_F(ParticleManagerTest, AnEmptyListTicks) {
    configure(stillness());

    ParticleManager::runSimulation(dt, Camera::view());

    EXPECT_TRUE(ParticleManager::particles.empty());
    EXPECT_EQ(getRandomState(), 0u);
}

TEST_F(ParticleManagerTest, WaterFallsAlongTheCamerasDown) {
    SceneSettings settings = stillness();
    settings.gravity = 100.0f;
    configure(settings);
    const Particle& particle = addParticle({});

    ParticleManager::runSimulation(dt, Camera::view());
    EXPECT_EQ(particle.velocity.x, 0.0f);
    EXPECT_FLOAT_EQ(particle.velocity.y, 1.0f);
    EXPECT_EQ(particle.previousVelocity, Vector2{});
    EXPECT_FLOAT_EQ(particle.speed, 1.0f);

    SceneAccess::placeCamera({}, {}, 90.0f, 1.0f);
    ParticleManager::runSimulation(dt, Camera::view());
    EXPECT_FLOAT_EQ(particle.velocity.x, -1.0f);
    EXPECT_NEAR(particle.velocity.y, 1.0f, 1e-6f); // the cosine of a right angle is not quite 0
}

TEST_F(ParticleManagerTest, ExactlyAHundredDegreesIsSteamWhichRisesAndScatters) {
    SceneSettings settings = stillness();
    settings.gravity = 100.0f;
    settings.steamRiseRate = 2.0f;
    settings.steamScatterRate = 0.5f;
    configure(settings);
    Particle& particle = addParticle({});
    particle.temperature = 100.0f;

    ParticleManager::runSimulation(dt, Camera::view());

    const Vector2 scatter = particle.velocity - Vector2{0.0f, -2.0f};
    EXPECT_NEAR(std::hypot(scatter.x, scatter.y), 0.5f, 1e-5f);
}

TEST_F(ParticleManagerTest, TheTrailHoldsTheLastThreePlaces) {
    SceneSettings settings = stillness();
    settings.gravity = 100.0f;
    configure(settings);
    const Particle& particle = addParticle({1.0f, 1.0f});
    Vector2 starts[3];

    for (Vector2& start : starts) {
        start = particle.position;
        ParticleManager::runSimulation(dt, Camera::view());
    }

    EXPECT_EQ(particle.trail[0], starts[2]);
    EXPECT_EQ(particle.trail[1], starts[1]);
    EXPECT_EQ(particle.trail[2], starts[0]);
}

TEST_F(ParticleManagerTest, APushMovesForOneTickOnly) {
    configure(stillness());
    Particle& particle = addParticle({});
    particle.pushVelocity = {100.0f, 0.0f};

    ParticleManager::runSimulation(dt, Camera::view());

    EXPECT_FLOAT_EQ(particle.position.x, 1.0f);
    EXPECT_EQ(particle.pushVelocity, Vector2{});
    EXPECT_EQ(particle.velocity, Vector2{});
    EXPECT_EQ(particle.speed, 100.0f);
}

TEST_F(ParticleManagerTest, ExactlyAHundredAndThirtyUnitsOutsideAParticleStays) {
    configure(stillness());
    addParticle({-530.0f, 0.0f});
    addParticle({0.0f, 430.0f});

    ParticleManager::runSimulation(dt, Camera::view());
    EXPECT_EQ(ParticleManager::particles.size(), 2u);

    ParticleManager::particles.front().position.y = std::nextafter(430.0f, 500.0f);
    ParticleManager::particles.back().position.x = std::nextafter(-530.0f, -600.0f);
    ParticleManager::runSimulation(dt, Camera::view());
    EXPECT_TRUE(ParticleManager::particles.empty());
}

TEST_F(ParticleManagerTest, TheViewGrowsWithTheZoomAndGoesWithTheShake) {
    configure(stillness());
    SceneAccess::placeCamera({1000.0f, 0.0f}, {10.0f, 0.0f}, 0.0f, 2.0f);
    addParticle({1010.0f + 800.0f + 130.0f, 0.0f});
    addParticle({1010.0f + 800.0f + 130.5f, 0.0f});

    ParticleManager::runSimulation(dt, Camera::view());

    EXPECT_EQ(ParticleManager::particles.size(), 1u);
}

TEST_F(ParticleManagerTest, HeatRateZeroKeepsEveryTemperatureAndOneTakesTheRooms) {
    SceneSettings settings = stillness();
    settings.gravity = 1.0f;
    configure(settings);
    Particle& particle = addParticle({});
    particle.temperature = 77.0f;
    ParticleManager::runSimulation(dt, Camera::view());
    EXPECT_EQ(particle.temperature, 77.0f);

    settings.heatTransferRate = 1.0f;
    configure(settings);
    ParticleManager::runSimulation(dt, Camera::view());
    EXPECT_EQ(particle.temperature, 20.0f);
}

TEST_F(ParticleManagerTest, AKilledParticleFadesAndGoes) {
    SceneSettings settings = stillness();
    settings.particleKillTime = 0.025f;
    configure(settings);
    Particle& particle = addParticle({});

    ParticleManager::killParticle(particle);
    ParticleManager::runSimulation(dt, Camera::view());
    ParticleManager::runSimulation(dt, Camera::view());
    EXPECT_EQ(ParticleManager::particles.size(), 1u);
    ParticleManager::runSimulation(dt, Camera::view());

    EXPECT_TRUE(ParticleManager::particles.empty());
    EXPECT_EQ(ParticleMover::particleGrid[256 * ParticleMover::gridSize + 256], nullptr);
}

TEST_F(ParticleManagerTest, KillingADyingParticleDoesNotRestartItsFade) {
    configure(stillness());
    Particle& particle = addParticle({});
    ParticleManager::killParticle(particle);
    particle.killTimer = 0.00005f;

    ParticleManager::killParticle(particle);

    EXPECT_EQ(particle.killTimer, 0.00005f); // exact: the timer was not touched
}

TEST_F(ParticleManagerTest, AParticleWhoseFadeEndsStillGivesItsHeatButIsMetByNobody) {
    configure(stillness());
    Particle& later = addParticle({1.0f, 0.0f});
    Particle& dying = addParticle({0.0f, 0.0f});
    later.velocity = {0.0f, 1e-9f}; // each moves, so that it meets the other
    dying.velocity = {0.0f, 1e-9f};
    dying.temperature = 60.0f;
    dying.dying = true;
    dying.killTimer = 0.005f;

    ParticleManager::runSimulation(dt, Camera::view());

    EXPECT_EQ(ParticleManager::particles.size(), 1u);
    EXPECT_EQ(later.temperature, 40.0f); // shared once, by the dying one's own step
    EXPECT_EQ(later.position.x, 1.0f);   // and not pushed in its own
}

TEST_F(ParticleManagerTest, BelowZeroAParticleLeavesTheListInTheSameTick) {
    configure(stillness());
    addParticle({}).temperature = 0.0f;

    ParticleManager::runSimulation(dt, Camera::view());

    EXPECT_TRUE(ParticleManager::particles.empty());
    ASSERT_EQ(ParticleGroupMover::groups.size(), 1u);
    EXPECT_EQ(ParticleGroupMover::groups.front().members.size(), 1u);
}

TEST_F(ParticleManagerTest, BeyondTheGridAParticleMovesAndIsAttractedButMeetsNobody) {
    SceneSettings settings = stillness();
    settings.gravity = 100.0f;
    configure(settings);
    SceneAccess::placeCamera({}, {}, 0.0f, 2.5f); // the view reaches further left than the grid
    const Particle& first = addParticle({-600.0f, 0.0f});
    const Particle& second = addParticle({-598.0f, 0.0f});
    ParticleManager::particles.front().temperature = 90.0f;

    ParticleManager::runSimulation(dt, Camera::view());

    EXPECT_FALSE(first.inGrid);
    EXPECT_GT(first.position.y, 0.0f);
    EXPECT_EQ(first.position.x, -600.0f);
    EXPECT_EQ(second.temperature, 90.0f);
}

TEST_F(ParticleManagerTest, AbsurdGravityDoesNoHarm) {
    SceneAccess::buildBasin(-60.0f, 60.0f, 100.0f, 90.0f);
    const std::vector<Vector2> before = placesAfterAFall();
    for (const float gravity : {1e30f, 3e38f, -3e38f}) {
        SceneSettings settings = stillness();
        settings.gravity = gravity;
        settings.steamRiseRate = 1e10f;
        configure(settings);
        ParticleManager::createParticles(0.0f, 50.0f, 20.0f, 100);
        ParticleManager::particles.front().temperature = 150.0f;
        for (int tick = 0; tick < 20; ++tick) {
            ParticleManager::runSimulation(dt, Camera::view());
        }
        ParticleManager::particles.back().temperature = -1.0f;
        ParticleManager::runSimulation(dt, Camera::view());
        EXPECT_LE(ParticleManager::particles.size(), 100u);
        ParticleManager::particles.clear();
        ParticleGroupMover::groups.clear();
        ParticleMover::clearParticleGrid();
    }

    EXPECT_EQ(placesAfterAFall(), before); // nothing of it is left behind
}

TEST_F(ParticleManagerTest, WithoutGravityAParticleAtRestStaysWhereItIs) {
    SceneAccess::buildBasin(-60.0f, 60.0f, 100.0f, 90.0f);
    SceneSettings settings = stillness();
    settings.gravity = 0.0f;
    configure(settings);
    Particle& particle = ParticleManager::particles.emplace_front();
    particle.position = {3.0f, 50.0f};
    particle.temperature = 20.0f;

    for (int tick = 0; tick < 20; ++tick) {
        ParticleManager::runSimulation(dt, Camera::view());
    }

    EXPECT_EQ(particle.position, (Vector2{3.0f, 50.0f}));
    EXPECT_EQ(particle.velocity, Vector2{});
    EXPECT_EQ(particle.speed, 0.0f);
    EXPECT_EQ(particle.trail[2], (Vector2{3.0f, 50.0f}));
}

TEST_F(ParticleManagerTest, ParticleCreateMakesNoMoreThan65536InAll) {
    ParticleManager::initialise();
    ParticleGroupMover::groups.emplace_back().members.resize(6);
    ParticleManager::particles.resize(30);
    const char* const refusal = "\nToo many particles: the command makes no more than 65536 in all";

    EXPECT_EQ(answerTo("ParticleCreate 1 2 5 65501"), refusal);
    EXPECT_EQ(answerTo("ParticleCreate 1 2 5 2147483647"), refusal);
    EXPECT_EQ(ParticleManager::particles.size(), 30u);
    EXPECT_EQ(answerTo("ParticleCreate 1 2 5 65500"), "");
    EXPECT_EQ(ParticleManager::particles.size(), 65530u);
}

} // namespace tarnwick
