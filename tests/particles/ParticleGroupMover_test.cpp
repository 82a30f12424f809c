#include "particles/ParticleGroupMover.h"

#include "console/GLConsole.h"
#include "core/Random.h"
#include "game/Camera.h"
#include "graphics/GLWindow.h"
#include "particles/ParticleManager.h"
#include "particles/ParticleMover.h"
#include "support/ConsoleAnswer.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"
#include "support/SceneAccess.h"

#include <cmath>
#include <iterator>

namespace tarnwick {

class ParticleGroupMoverTest : public ModuleTest {
protected:
    static constexpr float dt = 0.01f;

    ParticleGroupMoverTest() {
        GLWindow::createHeadless(800, 600);
        SceneAccess::configure(stillness());
        SceneAccess::placeCamera({}, {}, 0.0f, 1.0f);
    }

    static SceneSettings stillness() {
        SceneSettings settings;
        settings.gravity = 0.0f;
        settings.heatTransferRate = 0.0f;
        settings.particleGroupInterpolation = 1.0f; // members stay where they are
        settings.groupExpandSpeed = 1.0f;
        return settings;
    }
    static Particle& addParticle(Vector2 position, float temperature) {
        Particle& particle = ParticleManager::particles.emplace_back();
        particle.position = position;
        particle.temperature = temperature;
        return particle;
    }
    static void freeze() { ParticleGroupMover::doParticleGrouping(ParticleManager::particles); }
    static void tick() { ParticleGroupMover::runSimulation(dt, Camera::view(), ParticleManager::particles); }
    static ParticleGroup& group() { return ParticleGroupMover::groups.front(); }

    DataFolder data;
};

TEST_F(ParticleGroupMoverTest, InitialiseReadsAndClampsAndRegistersItsCommands) {
    data.write("cfg/water.cfg",
               "particleGroupInterpolation = 2 groupExpandSpeed = -1 iceGravityStrenght = -3");

    ParticleGroupMover::initialise();

    EXPECT_EQ(GLConsole::outputText(),
              "\nShutting down grouped particle mover..\nInitialising grouped particle mover..");
    EXPECT_EQ(answerTo("ParticleGroupCount"), "\nParticleGroupCount is 0");
    EXPECT_EQ(answerTo("ParticleGroupDraw"), "\nParticleGroupDraw is false");
    EXPECT_EQ(answerTo("ParticleGroupDraw TRUE"), "\nParticleGroupDraw is now true");
    ParticleGroupMover::shutdown();
    EXPECT_TRUE(GLConsole::commands().empty());
}

TEST_F(ParticleGroupMoverTest, ASingleFrozenParticleBecomesAGroupOfOne) {
    Particle& particle = addParticle({3.0f, 4.0f}, 0.0f);
    particle.velocity = {5.0f, 6.0f};
    particle.previousVelocity = {1.0f, 2.0f};
    particle.pushVelocity = {7.0f, 8.0f};
    particle.speed = 9.0f;
    ParticleMover::addGridParticle(particle);

    freeze();

    ASSERT_EQ(ParticleGroupMover::groups.size(), 1u);
    EXPECT_EQ(group().targetRadius, 2.0f);
    EXPECT_EQ(group().radius, 2.0f);
    EXPECT_EQ(group().centre, (Vector2{3.0f, 4.0f}));
    EXPECT_EQ(group().velocity, (Vector2{5.0f, 6.0f}));
    EXPECT_EQ(group().previousVelocity, (Vector2{1.0f, 2.0f}));
    EXPECT_EQ(group().pushVelocity, (Vector2{7.0f, 8.0f}));
    const Particle& member = group().members.front();
    EXPECT_EQ(member.speed, 0.0f);
    EXPECT_FALSE(member.inGrid);
    EXPECT_NEAR(std::hypot(member.groupDirection.x, member.groupDirection.y), 1.0f, 1e-6f);
    EXPECT_EQ(ParticleMover::particleGrid[257 * ParticleMover::gridSize + 258], nullptr);
}

TEST_F(ParticleGroupMoverTest, TheSharesOfIceAreHeldBetweenNothingAndAllAndItsGravityIsFree) {
    const auto read = [this](const char* settings) {
        data.write("cfg/water.cfg", settings);
        ParticleGroupMover::initialise();
        return SceneAccess::iceSettings();
    };

    const SceneSettings high =
        read("particleGroupInterpolation = 1.5 groupExpandSpeed = 7 iceGravityStrenght = 3");
    const SceneSettings low =
        read("particleGroupInterpolation = -1 groupExpandSpeed = -0.1 iceGravityStrenght = -2");
    const SceneSettings between = read("particleGroupInterpolation = 0.25 groupExpandSpeed = 0.75");

    EXPECT_EQ(high.particleGroupInterpolation, 1.0f);
    EXPECT_EQ(high.groupExpandSpeed, 1.0f);
    EXPECT_EQ(high.iceGravityStrenght, 3.0f);
    EXPECT_EQ(low.particleGroupInterpolation, 0.0f);
    EXPECT_EQ(low.groupExpandSpeed, 0.0f);
    EXPECT_EQ(low.iceGravityStrenght, -2.0f);
    EXPECT_EQ(between.particleGroupInterpolation, 0.25f);
    EXPECT_EQ(between.groupExpandSpeed, 0.75f);
    EXPECT_EQ(between.iceGravityStrenght, 0.0f);
}

TEST_F(ParticleGroupMoverTest, ColdRunsThroughAWholeBodyOfWater) {
    for (int i = 0; i < 10; ++i) {
        addParticle({12.0f * static_cast<float>(i), 0.0f}, i == 4 ? -5.0f : 150.0f); // exactly 12 units apart
    }
    addParticle({12.5f * 10.0f, 0.0f}, 20.0f); // 17 from the last

    freeze();

    ASSERT_EQ(ParticleGroupMover::groups.size(), 1u);
    EXPECT_EQ(group().members.size(), 10u);
    EXPECT_EQ(group().temperature, -5.0f);
    EXPECT_EQ(ParticleManager::particles.size(), 1u);
    EXPECT_FLOAT_EQ(group().targetRadius, 2.0f * std::sqrt(10.0f));
    EXPECT_EQ(group().members.back().temperature, -5.0f); // the first to freeze stands last
    const std::uint32_t after = getRandomState();
    seedRandom(0);
    for (int draw = 0; draw < 30; ++draw) {
        randomFloat();
    }
    EXPECT_EQ(getRandomState(), after);
}

TEST_F(ParticleGroupMoverTest, FrozenOnesAreGatheredBeforeWarmOnesAndEachFindIsFollowedToItsEnd) {
    addParticle({0.0f, 0.0f}, -1.0f);
    addParticle({10.0f, 0.0f}, 20.0f); // warm, in reach of the first
    addParticle({0.0f, 10.0f}, -2.0f); // cold, in reach of the first
    addParticle({0.0f, 20.0f}, 30.0f); // in reach of the second cold one only
    addParticle({20.0f, 0.0f}, 40.0f); // in reach of the warm one only

    freeze();

    ASSERT_EQ(group().members.size(), 5u);
    const float order[] = {40.0f, 30.0f, 20.0f, -2.0f, -1.0f}; // newest first
    auto member = group().members.begin();
    for (const float temperature : order) {
        EXPECT_EQ((member++)->temperature, temperature);
    }
}

TEST_F(ParticleGroupMoverTest, AChainOfManyThousandsFreezesAtOnce) {
    constexpr int count = 20000;
    for (int i = 0; i < count; ++i) {
        addParticle({11.0f * static_cast<float>(i), 0.0f}, i == 0 ? -1.0f : 20.0f);
    }

    freeze();

    EXPECT_EQ(group().members.size(), static_cast<std::size_t>(count));
    EXPECT_TRUE(ParticleManager::particles.empty());
}

TEST_F(ParticleGroupMoverTest, TheNewestGroupStandsFirst) {
    addParticle({0.0f, 0.0f}, -1.0f);
    addParticle({100.0f, 0.0f}, -1.0f);

    freeze();

    ASSERT_EQ(ParticleGroupMover::groups.size(), 2u);
    EXPECT_EQ(group().centre.x, 100.0f);
}

TEST_F(ParticleGroupMoverTest, AtExactlyZeroAGroupHoldsAndAboveItMeltsEntirely) {
    addParticle({0.0f, 0.0f}, -1.0f);
    addParticle({5.0f, 0.0f}, 30.0f);
    freeze();
    group().temperature = 0.0f;
    tick();
    ASSERT_EQ(ParticleGroupMover::groups.size(), 1u);

    group().temperature = 1e-30f;
    group().velocity = {3.0f, 4.0f};
    tick();

    EXPECT_TRUE(ParticleGroupMover::groups.empty());
    ASSERT_EQ(ParticleManager::particles.size(), 2u);
    for (const Particle& particle : ParticleManager::particles) {
        EXPECT_EQ(particle.temperature, 1e-30f); // the group's, not the member's own
        EXPECT_EQ(particle.velocity, (Vector2{3.0f, 4.0f}));
        EXPECT_EQ(particle.speed, 5.0f);
        EXPECT_EQ(particle.trail[1], particle.position);
        EXPECT_FALSE(particle.inGrid);
        EXPECT_EQ(particle.gridCellX, 0u);
    }
}

TEST_F(ParticleGroupMoverTest, MeltedMembersGoToTheFrontOneAfterTheOther) {
    addParticle({0.0f, 0.0f}, -1.0f);
    addParticle({5.0f, 0.0f}, 30.0f);
    freeze();
    addParticle({300.0f, 0.0f}, 20.0f);
    const float firstMember = group().members.front().position.x;
    const float lastMember = group().members.back().position.x;
    group().temperature = 1.0f;

    tick();

    ASSERT_EQ(ParticleManager::particles.size(), 3u);
    auto particle = ParticleManager::particles.begin();
    EXPECT_EQ((particle++)->position.x, lastMember);
    EXPECT_EQ((particle++)->position.x, firstMember);
    EXPECT_EQ(particle->position.x, 300.0f);
}

TEST_F(ParticleGroupMoverTest, GravityColdAndGrowthWorkOnTheGroup) {
    SceneSettings settings = stillness();
    settings.gravity = 100.0f;
    settings.iceGravityStrenght = 0.5f;
    settings.heatTransferRate = 0.5f;
    settings.groupExpandSpeed = 0.25f;
    SceneAccess::configure(settings);
    addParticle({0.0f, 0.0f}, -60.0f);
    freeze();
    group().targetRadius = 10.0f;

    ParticleGroupMover::runSimulation(0.5f, Camera::view(), ParticleManager::particles);

    EXPECT_FLOAT_EQ(group().velocity.y, 25.0f);
    EXPECT_FLOAT_EQ(group().temperature, 20.0f - 80.0f * std::sqrt(0.5f));
    EXPECT_FLOAT_EQ(group().radius, 0.5f * 10.0f + 0.5f * 2.0f);
    EXPECT_FLOAT_EQ(group().centre.y, 12.5f);
    EXPECT_EQ(group().previousVelocity, Vector2{});
}

TEST_F(ParticleGroupMoverTest, MembersFollowTheCentreAndSettleTowardTheirPlaces) {
    SceneSettings settings = stillness();
    settings.particleGroupInterpolation = 0.0f; // at once
    SceneAccess::configure(settings);
    addParticle({10.0f, 10.0f}, -1.0f);
    freeze();
    group().velocity = {100.0f, 0.0f};
    Particle& member = group().members.front();
    member.temperature = 50.0f;
    member.groupDirection = {0.0f, 1.0f};
    member.groupFraction = 0.5f;

    tick();

    EXPECT_FLOAT_EQ(member.position.x, 11.0f);
    EXPECT_FLOAT_EQ(member.position.y, 11.0f);
    EXPECT_EQ(member.temperature, -1.0f);
}

TEST_F(ParticleGroupMoverTest, AGroupIsLostBeyondItsRadiusPlus128UnitsWithAllItsMembers) {
    addParticle({0.0f, 0.0f}, -1.0f);
    freeze();
    group().radius = 20.0f;
    group().targetRadius = 20.0f;
    group().centre = {-400.0f - 148.0f, 0.0f};
    tick();
    ASSERT_EQ(ParticleGroupMover::groups.size(), 1u);

    group().centre.x = std::nextafter(-548.0f, -600.0f);
    tick();

    EXPECT_TRUE(ParticleGroupMover::groups.empty());
    EXPECT_TRUE(ParticleManager::particles.empty());
}

TEST_F(ParticleGroupMoverTest, AKilledGroupFadesWithItsMembersAndGoes) {
    SceneSettings settings = stillness();
    settings.particleKillTime = 0.015f;
    SceneAccess::configure(settings);
    addParticle({0.0f, 0.0f}, -1.0f);
    addParticle({3.0f, 0.0f}, -1.0f);
    freeze();

    ParticleGroupMover::killGroup(group());
    tick();
    for (const Particle& member : group().members) {
        EXPECT_TRUE(member.dying);
        EXPECT_EQ(member.killTimer, group().killTimer);
    }
    group().killTimer = 0.012f;
    ParticleGroupMover::killGroup(group());
    EXPECT_EQ(group().killTimer, 0.012f); // not restarted
    tick();
    ASSERT_EQ(ParticleGroupMover::groups.size(), 1u);
    tick();

    EXPECT_TRUE(ParticleGroupMover::groups.empty());
    EXPECT_TRUE(ParticleManager::particles.empty());
}

TEST_F(ParticleGroupMoverTest, ADiscIsStoppedByTheLevelAndSlidesWithoutFriction) {
    SceneAccess::addPolygon({{-300.0f, 50.0f}, {300.0f, 50.0f}, {300.0f, 90.0f}, {-300.0f, 90.0f}}, 0.0f);
    SceneAccess::buildTree();
    ParticleGroup disc;
    disc.radius = 10.0f;
    disc.centre = {0.0f, 38.0f};
    disc.velocity = {300.0f, 400.0f};

    ParticleGroupMover::moveGroup(disc, 0.02f);

    EXPECT_TRUE(disc.colliding);
    EXPECT_NEAR(disc.centre.y, 40.0f, 1e-4f); // rounding of the push
    EXPECT_EQ(disc.velocity.x, 300.0f);
    EXPECT_NEAR(disc.velocity.y, 0.0f, 1e-3f);
}

TEST_F(ParticleGroupMoverTest, ADiscTravelsAnyDistanceInATick) {
    ParticleGroup disc;
    disc.velocity = {4000.0f, 0.0f};

    ParticleGroupMover::moveGroup(disc, 0.02f);

    EXPECT_NEAR(disc.centre.x, 80.0f, 1e-3f); // the sum of 54 moves
    EXPECT_FALSE(disc.colliding);
}

TEST_F(ParticleGroupMoverTest, TheBiggerOfTwoGroupsTakesAllAndTheEmptiedOneGoesInTheNextTick) {
    addParticle({0.0f, 0.0f}, -1.0f);
    addParticle({100.0f, 0.0f}, -1.0f);
    addParticle({101.0f, 0.0f}, -1.0f);
    freeze();
    ASSERT_EQ(ParticleGroupMover::groups.size(), 2u);
    ParticleGroup& big = group(); // the newer one
    ParticleGroup& small = ParticleGroupMover::groups.back();
    small.centre = {95.0f, 0.0f};
    small.velocity = {9.0f, 0.0f};
    const float smallMember = small.members.front().position.x;

    ParticleGroupMover::doGroupMerging();

    ASSERT_EQ(ParticleGroupMover::groups.size(), 2u);
    EXPECT_TRUE(small.members.empty());
    EXPECT_EQ(small.targetRadius, 2.0f);
    EXPECT_EQ(big.members.size(), 3u);
    EXPECT_EQ(big.members.back().position.x, smallMember);
    EXPECT_FLOAT_EQ(big.targetRadius, 2.0f * std::sqrt(3.0f));
    EXPECT_EQ(big.velocity, Vector2{});
    tick();
    EXPECT_EQ(ParticleGroupMover::groups.size(), 1u);
}

TEST_F(ParticleGroupMoverTest, OfTwoEqualGroupsTheLaterInTheListTakesAll) {
    ParticleGroup& a = ParticleGroupMover::groups.emplace_back();
    ParticleGroup& b = ParticleGroupMover::groups.emplace_back();
    a.members.emplace_back();
    b.members.emplace_back();
    b.centre = {5.9f, 0.0f}; // less than both radii and two units more

    ParticleGroupMover::doGroupMerging();

    EXPECT_TRUE(a.members.empty());
    EXPECT_EQ(b.members.size(), 2u);
}

TEST_F(ParticleGroupMoverTest, ExactlyTwoUnitsBetweenTheDiscsIsTooFarToMerge) {
    ParticleGroup& a = ParticleGroupMover::groups.emplace_back();
    ParticleGroup& b = ParticleGroupMover::groups.emplace_back();
    a.members.emplace_back();
    b.members.emplace_back();
    b.centre = {6.0f, 0.0f};

    ParticleGroupMover::doGroupMerging();

    EXPECT_EQ(a.members.size(), 1u);
}

TEST_F(ParticleGroupMoverTest, AnEmptiedGroupStillTakesPartWithTheReachItHad) {
    ParticleGroup& a = ParticleGroupMover::groups.emplace_back();
    ParticleGroup& b = ParticleGroupMover::groups.emplace_back();
    ParticleGroup& c = ParticleGroupMover::groups.emplace_back();
    a.targetRadius = 4.0f;
    a.members.resize(4);
    b.centre = {9.0f, 0.0f};
    b.targetRadius = 6.0f;
    b.members.resize(9);
    c.centre = {-7.0f, 0.0f}; // in reach of a, not of b
    c.members.resize(1);

    ParticleGroupMover::doGroupMerging(); // a goes to b; then the emptied a, still the larger, takes c

    EXPECT_EQ(a.members.size(), 1u);
    EXPECT_EQ(b.members.size(), 13u);
    EXPECT_TRUE(c.members.empty());
    EXPECT_EQ(a.targetRadius, 2.0f);
}

} // namespace tarnwick
