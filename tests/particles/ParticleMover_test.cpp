#include "particles/ParticleMover.h"

#include "console/GLConsole.h"
#include "core/Random.h"
#include "game/Camera.h"
#include "particles/ParticleManager.h"
#include "support/ModuleTest.h"
#include "support/SceneAccess.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <list>
#include <vector>

namespace tarnwick {

class ParticleMoverTest : public ModuleTest {
protected:
    static Particle& addParticle(Vector2 position) {
        Particle& particle = ParticleManager::particles.emplace_front();
        particle.position = position;
        return particle;
    }
    static Particle* cell(std::uint32_t column, std::uint32_t row) {
        return ParticleMover::particleGrid[column * ParticleMover::gridSize + row];
    }
    static std::vector<std::uint32_t> cellOf(Vector2 position) {
        Particle& particle = addParticle(position);
        ParticleMover::addGridParticle(particle);
        if (!particle.inGrid) {
            return {};
        }
        return {particle.gridCellX, particle.gridCellY};
    }
};

TEST_F(ParticleMoverTest, InitialiseAndShutdownPrintALineAndEmptyTheGrid) {
    Particle& particle = addParticle({});
    ParticleMover::addGridParticle(particle);

    ParticleMover::initialise();
    const Particle* const afterInitialise = cell(256, 256);
    ParticleMover::particleGrid[5] = &particle;
    ParticleMover::shutdown();

    EXPECT_EQ(afterInitialise, nullptr);
    EXPECT_EQ(ParticleMover::particleGrid[5], nullptr);
    EXPECT_EQ(GLConsole::outputText(), "\nInitialising particle mover..\nShutting down particle mover..");
}

TEST_F(ParticleMoverTest, ClearingTheGridUnlinksEveryFreeParticleAndNoneOfThemIsStuck) {
    Particle& particle = addParticle({});
    Particle& other = addParticle({-512.0f, 1535.0f}); // in the last row
    ParticleMover::addGridParticle(particle);
    ParticleMover::addGridParticle(other);
    ASSERT_EQ(cell(256, 256), &particle);
    ASSERT_EQ(cell(0, 1023), &other);

    ParticleMover::clearParticleGrid();

    EXPECT_TRUE(std::ranges::all_of(ParticleMover::particleGrid, [](auto* head) { return head == nullptr; }));
    EXPECT_FALSE(particle.inGrid);
    EXPECT_FALSE(other.inGrid);
    ParticleMover::addGridParticle(particle);
    EXPECT_EQ(cell(256, 256), &particle);
}

TEST_F(ParticleMoverTest, TheGridReachesFurtherRightAndDownThanLeftAndUp) {
    SceneAccess::placeCamera({1000.0f, 500.0f}, {3.0f, -2.0f}, 0.0f, 1.0f);
    ParticleMover::rebuildGrid(ParticleManager::particles, Camera::view());
    const Vector2 origin{1000.0f + 3.0f - 512.0f, 500.0f - 2.0f - 512.0f};

    EXPECT_EQ(cellOf(origin), (std::vector<std::uint32_t>{0, 0}));
    EXPECT_EQ(cellOf(origin + Vector2{2047.5f, 2047.5f}), (std::vector<std::uint32_t>{1023, 1023}));
    EXPECT_EQ(cellOf(origin + Vector2{3.9f, 4.0f}), (std::vector<std::uint32_t>{1, 2}));
}

TEST_F(ParticleMoverTest, UpToOneUnitBeforeTheOriginCountsAsInside) {
    const Vector2 origin{-512.0f, -512.0f};

    EXPECT_EQ(cellOf(origin - Vector2{0.9f, 0.5f}), (std::vector<std::uint32_t>{0, 0}));
    EXPECT_EQ(cellOf(origin - Vector2{1.0f, 0.0f}), std::vector<std::uint32_t>{});
    EXPECT_EQ(cellOf(origin - Vector2{0.0f, 1.0f}), std::vector<std::uint32_t>{});
}

TEST_F(ParticleMoverTest, BeyondTheGridAParticleStaysUnlinkedAndKeepsItsCellNumbers) {
    Particle& particle = addParticle({1536.0f, 0.0f});
    particle.gridCellX = 7;
    particle.gridCellY = 9;

    ParticleMover::addGridParticle(particle);

    EXPECT_FALSE(particle.inGrid);
    EXPECT_EQ(particle.gridCellX, 7u);
    EXPECT_EQ(particle.gridCellY, 9u);
    for (const float wild : {1e30f, -1e30f, std::nanf(""), std::numeric_limits<float>::infinity()}) {
        EXPECT_EQ(cellOf({wild, 0.0f}), std::vector<std::uint32_t>{});
        EXPECT_EQ(cellOf({0.0f, wild}), std::vector<std::uint32_t>{});
    }
}

TEST_F(ParticleMoverTest, TheNewestOfACellIsTheHeadOfItsChain) {
    Particle& first = addParticle({0.5f, 0.5f});
    Particle& second = addParticle({1.5f, 0.5f});
    Particle& third = addParticle({0.5f, 1.5f});

    for (Particle* particle : {&first, &second, &third}) {
        ParticleMover::addGridParticle(*particle);
    }

    EXPECT_EQ(cell(256, 256), &third);
    EXPECT_EQ(third.gridPrev, nullptr);
    EXPECT_EQ(third.gridNext, &second);
    EXPECT_EQ(second.gridPrev, &third);
    EXPECT_EQ(second.gridNext, &first);
    EXPECT_EQ(first.gridNext, nullptr);
}

TEST_F(ParticleMoverTest, AddingTwiceLinksOnce) {
    Particle& particle = addParticle({});
    ParticleMover::addGridParticle(particle);
    particle.position = {50.0f, 50.0f};

    ParticleMover::addGridParticle(particle);

    EXPECT_EQ(cell(256, 256), &particle);
    EXPECT_EQ(particle.gridNext, nullptr);
    EXPECT_EQ(particle.gridCellX, 256u);
}

TEST_F(ParticleMoverTest, RemovingMendsTheChainAtHeadMiddleAndEnd) {
    Particle& last = addParticle({});
    Particle& middle = addParticle({});
    Particle& head = addParticle({});
    for (Particle* particle : {&last, &middle, &head}) {
        ParticleMover::addGridParticle(*particle);
    }

    ParticleMover::removeGridParticle(middle);
    EXPECT_EQ(head.gridNext, &last);
    EXPECT_EQ(last.gridPrev, &head);
    EXPECT_FALSE(middle.inGrid);
    EXPECT_EQ(middle.gridNext, nullptr);
    EXPECT_EQ(middle.gridPrev, nullptr);
    EXPECT_EQ(middle.gridCellX, 256u); // stays

    ParticleMover::removeGridParticle(head);
    EXPECT_EQ(cell(256, 256), &last);
    EXPECT_EQ(last.gridPrev, nullptr);

    ParticleMover::removeGridParticle(last);
    ParticleMover::removeGridParticle(last);
    EXPECT_EQ(cell(256, 256), nullptr);
}

TEST_F(ParticleMoverTest, RebuildingIsRemovingAndAddingEachParticleInListOrder) {
    Particle& older = addParticle({0.5f, 0.5f});
    Particle& newer = addParticle({1.0f, 1.0f});
    ParticleMover::rebuildGrid(ParticleManager::particles, Camera::view());
    SceneAccess::placeCamera({10.0f, 0.0f}, {}, 0.0f, 1.0f);

    ParticleMover::rebuildGrid(ParticleManager::particles, Camera::view());

    EXPECT_EQ(cell(256, 256), nullptr);
    EXPECT_EQ(cell(251, 256), &older); // linked last: the list begins with the newer one
    EXPECT_EQ(older.gridNext, &newer);
    EXPECT_EQ(newer.gridPrev, &older);
}

TEST_F(ParticleMoverTest, NeighboursPushApartAndShareWhatTheyHave) {
    Particle& a = addParticle({0.0f, 0.0f});
    Particle& b = addParticle({3.0f, 0.0f});
    a.velocity = {10.0f, 20.0f};
    b.velocity = {30.0f, -20.0f};
    a.pushVelocity = {4.0f, 0.0f};
    b.temperature = 50.0f;
    Vector2 direction;
    float amount = 0.0f;
    std::uint32_t count = 0;

    ParticleMover::particleRepulse(a, b, direction, amount, count);

    EXPECT_EQ(direction, (Vector2{-1.0f, 0.0f}));
    EXPECT_EQ(amount, 1.0f);
    EXPECT_EQ(count, 1u);
    for (const Particle* particle : {&a, &b}) {
        EXPECT_EQ(particle->velocity, (Vector2{20.0f, 0.0f}));
        EXPECT_EQ(particle->pushVelocity, (Vector2{2.0f, 0.0f}));
        EXPECT_EQ(particle->temperature, 25.0f);
    }
}

TEST_F(ParticleMoverTest, TwoOnOneSpotShareButDoNotPush) {
    Particle& a = addParticle({5.0f, 5.0f});
    Particle& b = addParticle({5.0f, 5.0f});
    b.velocity = {8.0f, 0.0f};
    Vector2 direction;
    float amount = 0.0f;
    std::uint32_t count = 0;

    ParticleMover::particleRepulse(a, b, direction, amount, count);

    EXPECT_EQ(direction, Vector2{});
    EXPECT_EQ(amount, 0.0f);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(a.velocity, (Vector2{4.0f, 0.0f}));
}

TEST_F(ParticleMoverTest, AtFourUnitsNothingHappens) {
    Particle& a = addParticle({0.0f, 0.0f});
    Particle& b = addParticle({4.0f, 0.0f});
    b.velocity = {8.0f, 0.0f};
    Vector2 direction;
    float amount = 0.0f;
    std::uint32_t count = 0;

    ParticleMover::particleRepulse(a, b, direction, amount, count);
    ParticleMover::particleRepulse(b, b, direction, amount, count);

    EXPECT_EQ(count, 0u);
    EXPECT_EQ(a.velocity, Vector2{});
}

TEST_F(ParticleMoverTest, OnlySevenCellsAreVisited) {
    Particle& particle = addParticle({1.0f, 1.0f}); // the middle of cell (256, 256)
    const Vector2 visited[] = {{1.1f, 1.0f}, {-1.0f, 1.0f}, {-1.0f, 3.0f}, {-1.0f, -1.0f},
                               {3.0f, 1.0f}, {3.0f, 3.0f},  {3.0f, -1.0f}};
    const Vector2 passedOver[] = {{1.0f, 3.0f}, {1.0f, -1.0f}, {4.5f, 1.0f}, {-2.5f, 1.0f}};
    std::list<Particle*> seen;
    std::list<Particle*> unseen;
    for (const Vector2 position : visited) {
        seen.push_back(&addParticle(position));
    }
    for (const Vector2 position : passedOver) {
        unseen.push_back(&addParticle(position));
    }
    ParticleMover::rebuildGrid(ParticleManager::particles, Camera::view());
    particle.temperature = 1000.0f;
    Vector2 direction;
    float amount = 0.0f;

    ParticleMover::doParticleRepulsions(particle, direction, amount);

    for (const Particle* other : seen) {
        EXPECT_GT(other->temperature, 0.0f) << other->position.x << " " << other->position.y;
    }
    for (const Particle* other : unseen) {
        EXPECT_EQ(other->temperature, 0.0f) << other->position.x << " " << other->position.y;
    }
}

TEST_F(ParticleMoverTest, TheVisitGoesLeftThenRightAndInEachColumnMiddleBelowAbove) {
    Particle& particle = addParticle({1.0f, 1.0f});
    const Vector2 inOrder[] = {{1.1f, 1.0f}, {-1.0f, 1.0f}, {-1.0f, 3.0f}, {-1.0f, -1.0f},
                               {3.0f, 1.0f}, {3.0f, 3.0f},  {3.0f, -1.0f}};
    std::list<Particle*> others;
    for (const Vector2 position : inOrder) {
        others.push_back(&addParticle(position));
    }
    ParticleMover::rebuildGrid(ParticleManager::particles, Camera::view());
    particle.temperature = 1024.0f;
    Vector2 direction;
    float amount = 0.0f;

    ParticleMover::doParticleRepulsions(particle, direction, amount);

    float expected = 1024.0f; // halves at every meeting with a cold one
    for (const Particle* other : others) {
        expected *= 0.5f;
        EXPECT_EQ(other->temperature, expected) << other->position.x << " " << other->position.y;
    }
    EXPECT_EQ(particle.temperature, expected);
}

TEST_F(ParticleMoverTest, AtTheGridsEdgesTheCellsBeyondAreLeftOut) {
    Particle& corner = addParticle({-511.5f, -511.5f});
    Particle& neighbour = addParticle({-509.5f, -511.5f});
    Particle& farCorner = addParticle({1535.5f, 1535.5f});
    ParticleMover::rebuildGrid(ParticleManager::particles, Camera::view());
    neighbour.temperature = 64.0f;
    Vector2 direction;
    float amount = 0.0f;

    ParticleMover::doParticleRepulsions(corner, direction, amount);
    EXPECT_EQ(corner.temperature, 32.0f);
    EXPECT_EQ(direction, (Vector2{-1.0f, 0.0f}));

    ParticleMover::doParticleRepulsions(farCorner, direction, amount);
    EXPECT_EQ(amount, 0.0f);
}

TEST_F(ParticleMoverTest, AParticleAtRestSkipsItsStep) {
    Particle& particle = addParticle({1.0f, 1.0f});
    Particle& other = addParticle({2.0f, 1.0f});
    ParticleMover::rebuildGrid(ParticleManager::particles, Camera::view());
    other.velocity = {40.0f, 0.0f};

    ParticleMover::moveParticle(particle, 0.02f);

    EXPECT_EQ(particle.position, (Vector2{1.0f, 1.0f}));
    EXPECT_EQ(other.velocity, (Vector2{40.0f, 0.0f}));
}

TEST_F(ParticleMoverTest, NobodyTravelsFurtherThanFifteenUnitsInATick) {
    Particle& particle = addParticle({});
    particle.velocity = {4000.0f, 0.0f};

    ParticleMover::moveParticle(particle, 0.01f); // 40 units

    EXPECT_NEAR(particle.position.x, 15.0f, 1e-5f); // the sum of nine moves
    EXPECT_EQ(particle.velocity, (Vector2{4000.0f, 0.0f}));
}

TEST_F(ParticleMoverTest, OnlyTheLastMovesContactDampsTheVelocity) {
    // A ledge is touched on the way, but not at the end of it.
    SceneAccess::addPolygon({{-20.0f, 1.9f}, {4.0f, 1.9f}, {4.0f, 30.0f}, {-20.0f, 30.0f}}, 0.1f);
    SceneAccess::buildTree();
    Particle& particle = addParticle({});
    particle.velocity = {1200.0f, 0.0f};

    ParticleMover::moveParticle(particle, 0.01f);

    EXPECT_LT(particle.position.y, 0.0f); // pushed up by the ledge
    EXPECT_EQ(particle.velocity, (Vector2{1200.0f, 0.0f}));
}

TEST_F(ParticleMoverTest, AContactTakesTheNormalPartAndTheFrictionsShareOfTheRest) {
    SceneAccess::addPolygon({{-90.0f, 2.0f}, {90.0f, 2.0f}, {90.0f, 30.0f}, {-90.0f, 30.0f}}, 0.25f);
    SceneAccess::buildTree();
    Particle& particle = addParticle({});
    particle.velocity = {64.0f, 50.0f};

    ParticleMover::moveParticle(particle, 0.02f);

    EXPECT_FLOAT_EQ(particle.velocity.x,
                    64.0f * static_cast<float>(std::pow(0.25, static_cast<double>(0.02f))));
    EXPECT_NEAR(particle.velocity.y, 0.0f, 1e-3f); // the normal is a rounded mean
}

TEST_F(ParticleMoverTest, APushIsHalvedInATickOfAHundredthAndWholeInOneOfAFiftieth) {
    const auto pushed = [](float dt) {
        ParticleManager::particles.clear();
        ParticleMover::initialise();
        Particle& still = addParticle({3.0f, 1.0f});
        Particle& particle = addParticle({1.0f, 1.0f});
        still.velocity = {};
        particle.velocity = {0.0f, 1e-10f}; // not at rest, but nearly
        ParticleMover::rebuildGrid(ParticleManager::particles, Camera::view());
        ParticleMover::moveParticle(particle, dt);
        return 1.0f - particle.position.x;
    };

    EXPECT_NEAR(pushed(0.02f), 1.7f, 1e-6f); // 2 units of overlap, capped
    EXPECT_NEAR(pushed(0.03f), 1.7f, 1e-6f);
    EXPECT_NEAR(pushed(0.01f), 1.0f, 1e-6f);
}

TEST_F(ParticleMoverTest, TheDecayIsComputedAndHasNoEffect) {
    ParticleMover::updateSimulationVars(1.0f);
    EXPECT_EQ(SceneAccess::simulationDecay(), 0.5f);
    ParticleMover::updateSimulationVars(2.0f);
    EXPECT_EQ(SceneAccess::simulationDecay(), 0.75f);
}

TEST_F(ParticleMoverTest, GroupingIsOneSweepThatDrawsNobodyInWhoWasPassed) {
    Particle& seed = addParticle({0.0f, 0.0f});
    Particle& passed = addParticle({80.0f, 0.0f}); // in reach of the later one only
    Particle& later = addParticle({40.0f, 0.0f});
    std::list<Particle*> group{&seed};
    std::list<Particle*> rest{&passed, &later};

    ParticleMover::groupParticles(group, rest, 40.0f);

    EXPECT_EQ(group, (std::list<Particle*>{&seed, &later})); // exactly 40 units joins
    EXPECT_EQ(rest, (std::list<Particle*>{&passed}));
}

TEST_F(ParticleMoverTest, TheCentreOfAGroupIsItsMeanAndOfNoneIsLeftAlone) {
    Particle& a = addParticle({1.0f, 2.0f});
    Particle& b = addParticle({3.0f, 8.0f});
    Vector2 centre{7.0f, 7.0f};

    ParticleMover::getGroupCenter({}, centre);
    EXPECT_EQ(centre, (Vector2{7.0f, 7.0f}));
    ParticleMover::getGroupCenter({&a, &b}, centre);
    EXPECT_EQ(centre, (Vector2{2.0f, 5.0f}));
}

TEST_F(ParticleMoverTest, ALoneParticleIsItsOwnClusterAndStays) {
    const Particle& particle = addParticle({5.0f, 6.0f});

    ParticleMover::runParticleAttractions(0.02f);

    EXPECT_EQ(particle.position, (Vector2{5.0f, 6.0f}));
    randomInt(); // one draw for the shuffle, and none for a jitter
    const std::uint32_t afterTwo = getRandomState();
    seedRandom(0);
    randomInt();
    randomInt();
    EXPECT_EQ(getRandomState(), afterTwo);
}

TEST_F(ParticleMoverTest, TwoFarApartInOneClusterDrawTogether) {
    const Particle& left = addParticle({-15.0f, 0.0f});
    const Particle& right = addParticle({15.0f, 0.0f});

    ParticleMover::runParticleAttractions(0.03f);

    const float pull = 11.0f * (0.03f / 0.75f);
    EXPECT_NEAR(left.position.x, -15.0f + pull, 0.06f); // half the jitter's width, and rounding
    EXPECT_NEAR(right.position.x, 15.0f - pull, 0.06f);
}

TEST_F(ParticleMoverTest, ThePullIsAtMostOneAndAHalfUnitsATick) {
    const Particle& left = addParticle({-19.0f, 0.0f});
    addParticle({19.0f, 0.0f});

    ParticleMover::runParticleAttractions(0.75f);

    EXPECT_NEAR(left.position.x, -17.5f, 0.06f);
}

TEST_F(ParticleMoverTest, WithinFourUnitsOfTheMiddleThereIsNoPullButTheJitterIsDrawn) {
    const Particle& left = addParticle({-4.0f, 0.0f});
    addParticle({4.0f, 0.0f});

    ParticleMover::runParticleAttractions(0.02f);

    EXPECT_EQ(left.position, (Vector2{-4.0f, 0.0f}));
    const std::uint32_t after = getRandomState();
    seedRandom(0);
    for (int draw = 0; draw < 2 + 4; ++draw) {
        randomInt();
    }
    EXPECT_EQ(getRandomState(), after);
}

TEST_F(ParticleMoverTest, ClustersOfParticlesBeyondAllMeasureAreStillClusters) {
    const Particle& near = addParticle({-15.0f, 0.0f});
    addParticle({15.0f, 0.0f});
    const Particle& far = addParticle({3e7f, 0.0f});
    const Particle& nowhere = addParticle({std::nanf(""), 0.0f});

    ParticleMover::runParticleAttractions(0.03f);

    EXPECT_GT(near.position.x, -15.0f);
    EXPECT_EQ(far.position.x, 3e7f);
    EXPECT_TRUE(std::isnan(nowhere.position.x));
}

} // namespace tarnwick
