#include "game/Camera.h"
#include "mechanisms/MoverTest.h"
#include "particles/CircleCollision.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"

#include <cmath>
#include <limits>

namespace tarnwick {

/// A square from (0, 0) to (40, 40), which a mover carries.
class MoverPushTest : public MoverTest {
protected:
    static constexpr float dt = 0.0625f; ///< Seconds: a power of two, so that velocities come out exact.

    /// The square, on a track from the origin to `end`.
    static Polygon2D& addPusher(Vector2 end) {
        Polygon2D& square = addSquare(3, 0.0f, 0.0f, 40.0f);
        addMover(3, end);
        return square;
    }
    /// Puts every mover `distance` along its track, and pushes.
    static void moveBy(float distance, float seconds = dt) {
        for (Mover& mover : MoverManager::movers) {
            mover.position += distance;
        }
        MoverManager::runMovers(seconds, Camera::view());
    }
    /// Behind those that are there.
    static Particle& addParticle(float x, float y) {
        Particle& particle = ParticleManager::particles.emplace_back();
        particle.position = {x, y};
        particle.temperature = 20.0f;
        return particle;
    }
    static ParticleGroup& addGroup(float x, float y, float radius) {
        ParticleGroup& group = ParticleGroupMover::groups.emplace_back();
        group.centre = {x, y};
        group.radius = radius;
        group.members.emplace_back().position = {x + 1.0f, y};
        return group;
    }
};

TEST_F(MoverPushTest, ATouchingParticleMovesAlongAndTakesTheVelocity) {
    addPusher({100.0f, 0.0f});
    const Particle& particle = addParticle(41.0f, 20.0f);

    moveBy(1.0f);

    EXPECT_EQ(particle.position, (Vector2{42.0f, 20.0f}));
    EXPECT_EQ(particle.pushVelocity, (Vector2{1.0f / dt, 0.0f}));
    EXPECT_EQ(particle.velocity, Vector2{});
}

TEST_F(MoverPushTest, SteamIsPushedToo) {
    addPusher({100.0f, 0.0f});
    Particle& particle = addParticle(41.0f, 20.0f);
    particle.temperature = 150.0f;

    moveBy(1.0f);

    EXPECT_EQ(particle.position.x, 42.0f);
}

TEST_F(MoverPushTest, AParticleTouchesWithinItsRadiusAndAQuarterOnEitherSideOfAnEdge) {
    addPusher({100.0f, 0.0f});
    const Particle& outside = addParticle(42.25f, 10.0f);
    const Particle& beyond = addParticle(std::nextafter(42.25f, 50.0f), 30.0f);
    const Particle& within = addParticle(37.75f, 20.0f);
    const Particle& middle = addParticle(20.0f, 20.0f);

    moveBy(0.0625f);

    EXPECT_EQ(outside.position.x, 42.3125f);
    EXPECT_EQ(within.position.x, 37.8125f);
    EXPECT_EQ(beyond.position.x, std::nextafter(42.25f, 50.0f)); // found after the step
    EXPECT_EQ(middle.position.x, 20.0f);
}

TEST_F(MoverPushTest, ALongWayIsGoneInStepsAndEachAddsTheVelocity) {
    addPusher({100.0f, 0.0f});
    const Particle& particle = addParticle(41.0f, 20.0f);

    moveBy(4.0f); // 1.7, 1.7, 0.6

    EXPECT_NEAR(particle.position.x, 45.0f, 1e-5f); // rounding of three steps
    EXPECT_EQ(particle.pushVelocity.x, 3.0f * 4.0f / dt);
}

TEST_F(MoverPushTest, WhoeverIsMetOnTheWayMovesFromTheNextStepOn) {
    addPusher({100.0f, 0.0f});
    const Particle& particle = addParticle(43.0f, 20.0f);

    moveBy(2.7f); // meets it after 1.7

    EXPECT_NEAR(particle.position.x, 44.0f, 1e-5f);
    EXPECT_EQ(particle.pushVelocity.x, 2.0f * (2.7f / dt));
}

TEST_F(MoverPushTest, ThePushIsHandedOnByOneHopAStep) {
    addPusher({100.0f, 0.0f});
    addParticle(41.0f, 20.0f);
    const Particle& first = addParticle(48.0f, 20.0f);  // 6 from where the touching one is after a step
    const Particle& second = addParticle(54.0f, 20.0f); // 6 from the first
    const Particle& third = addParticle(62.0f, 20.0f);

    moveBy(1.0f);

    EXPECT_EQ(first.position.x, 48.0f);
    EXPECT_EQ(first.pushVelocity.x, 1.0f / dt);
    EXPECT_EQ(second.pushVelocity.x, 0.0f);
    EXPECT_EQ(third.pushVelocity.x, 0.0f);
}

TEST_F(MoverPushTest, AHopReachesExactlySixUnits) {
    addPusher({100.0f, 0.0f});
    addParticle(41.0f, 20.0f);
    const Particle& reached = addParticle(48.0f, 20.0f);
    const Particle& beyond = addParticle(std::nextafter(48.0f, 50.0f), 20.0f);

    moveBy(1.0f);

    EXPECT_EQ(reached.pushVelocity.x, 1.0f / dt);
    EXPECT_EQ(beyond.pushVelocity.x, 0.0f);
}

TEST_F(MoverPushTest, APolygonThatStandsStillShovesNothing) {
    addPusher({100.0f, 0.0f});
    const Particle& particle = addParticle(41.0f, 20.0f);

    moveBy(0.0f);

    EXPECT_EQ(particle.position, (Vector2{41.0f, 20.0f}));
    EXPECT_EQ(particle.pushVelocity, Vector2{});
}

TEST_F(MoverPushTest, ASwitchedOffPolygonShovesNothingAndDoesNotMakeUpForItLater) {
    Polygon2D& square = addPusher({100.0f, 0.0f});
    const Particle& particle = addParticle(48.0f, 20.0f);
    Level::setPolygonCollideable(square, false);
    moveBy(7.0f);
    Level::setPolygonCollideable(square, true);

    moveBy(1.0f);

    EXPECT_EQ(square.offsetX, 8.0f);
    EXPECT_EQ(particle.position.x, 49.0f); // the last unit alone
    EXPECT_EQ(particle.pushVelocity.x, 1.0f / dt);
}

TEST_F(MoverPushTest, APolygonFarFromTheViewShovesNothing) {
    const float reach = 800.0f * 0.65f;
    Polygon2D& square = addPusher({100.0f, 0.0f});
    const Particle& particle = addParticle(41.0f, 20.0f);
    SceneAccess::placeCamera({41.0f + reach + 0.5f, 0.0f}, {}, 0.0f, 1.0f);
    moveBy(1.0f);
    const Vector2 unmoved = particle.position;
    SceneAccess::placeCamera({42.0f + reach, 0.0f}, {}, 0.0f, 1.0f);

    moveBy(1.0f);

    EXPECT_EQ(unmoved, (Vector2{41.0f, 20.0f}));
    EXPECT_EQ(square.previousOffsetX, 2.0f);
    EXPECT_EQ(particle.position.x, 42.0f); // the box where the polygon is going ends at the border
}

TEST_F(MoverPushTest, AParticleDrivenIntoAWallEndsUpInsideThePolygonAndIsKilled) {
    addPusher({100.0f, 0.0f});
    SceneAccess::addPolygon({{44.0f, -50.0f}, {90.0f, -50.0f}, {90.0f, 90.0f}, {44.0f, 90.0f}}, 0.5f);
    Level::findMoveablePolygons();
    SceneAccess::buildTree();
    const Particle& particle = addParticle(41.0f, 20.0f);

    moveBy(3.0f);

    EXPECT_EQ(particle.position.x, 42.0f); // the wall holds it off by its radius
    EXPECT_TRUE(particle.dying);
    EXPECT_EQ(particle.killTimer, ParticleManager::particleKillTime());
    EXPECT_EQ(particle.pushVelocity.x, 2.0f * 3.0f / dt); // pushed on all the same
}

TEST_F(MoverPushTest, AParticleOnAnEdgeIsNotInside) {
    addPusher({100.0f, 0.0f});
    const Particle& particle = addParticle(39.0f, 20.0f);
    const Particle& onEdge = addParticle(40.0f, 10.0f);

    moveBy(1.0f);

    EXPECT_TRUE(particle.dying);
    EXPECT_FALSE(onEdge.dying);
}

TEST_F(MoverPushTest, WhoIsKilledIsLookedForWhereThePolygonWillBe) {
    addPusher({100.0f, 0.0f});
    const Particle& particle = addParticle(41.5f, 20.0f);

    moveBy(3.4f); // in the first of two steps at 43.2, with the edge at 41.7 on its way to 43.4

    EXPECT_TRUE(particle.dying);
    EXPECT_GT(particle.position.x, 44.0f);
}

TEST_F(MoverPushTest, ADyingParticleIsPushedAndItsFadeGoesOn) {
    addPusher({100.0f, 0.0f});
    Particle& particle = addParticle(39.0f, 20.0f);
    particle.dying = true;
    particle.killTimer = 0.125f;

    moveBy(1.0f);

    EXPECT_EQ(particle.position.x, 40.0f);
    EXPECT_EQ(particle.killTimer, 0.125f);
}

TEST_F(MoverPushTest, WhomOnePolygonHasPushedNoOtherOnePushesInTheTick) {
    addPusher({100.0f, 0.0f});
    addSquare(4, 0.0f, 0.0f, 40.0f);
    addMover(4, {0.0f, 100.0f});
    const Particle& particle = addParticle(41.0f, 20.0f);

    moveBy(1.0f);
    const Particle first = particle;
    moveBy(1.0f);

    EXPECT_EQ(first.position, (Vector2{41.0f, 21.0f})); // by the polygon that was added last
    EXPECT_EQ(first.pushVelocity, (Vector2{0.0f, 1.0f / dt}));
    EXPECT_EQ(particle.position, (Vector2{41.0f, 22.0f}));
}

TEST_F(MoverPushTest, InATickOfNoTimeThePushDividesByIt) {
    addPusher({100.0f, 0.0f});
    Mover& mover = MoverManager::movers.front();
    mover.speed = 2e6f;
    mover.state = MoverToEnd;
    const Particle& particle = addParticle(41.0f, 20.0f);

    MoverManager::runMovers(0.0f, Camera::view());

    EXPECT_EQ(mover.position, 2e6f * 1e-7f);
    EXPECT_EQ(particle.position.x, 41.0f + 0.2f);
    EXPECT_EQ(particle.pushVelocity.x, std::numeric_limits<float>::infinity());
}

TEST_F(MoverPushTest, IceIsCarriedWithItsMembersAndNeitherStoppedNorHurried) {
    addPusher({100.0f, 0.0f});
    SceneAccess::addPolygon({{44.0f, -50.0f}, {90.0f, -50.0f}, {90.0f, 90.0f}, {44.0f, 90.0f}}, 0.5f);
    Level::findMoveablePolygons();
    SceneAccess::buildTree();
    const ParticleGroup& group = addGroup(48.0f, 20.0f, 8.0f);

    moveBy(1.0f);

    EXPECT_EQ(group.centre, (Vector2{49.0f, 20.0f}));
    EXPECT_EQ(group.members.front().position, (Vector2{50.0f, 20.0f}));
    EXPECT_EQ(group.pushVelocity, Vector2{});
    EXPECT_FALSE(group.dying);
}

TEST_F(MoverPushTest, IceTouchesWithinItsRadiusAndAQuarter) {
    addPusher({100.0f, 0.0f});
    const ParticleGroup& touching = addGroup(48.25f, 10.0f, 8.0f);
    const ParticleGroup& beyond = addGroup(std::nextafter(48.25f, 50.0f), 30.0f, 8.0f);

    moveBy(0.0625f);

    EXPECT_EQ(touching.centre.x, 48.3125f);
    EXPECT_EQ(beyond.centre.x, std::nextafter(48.25f, 50.0f));
}

// The first side of the outline, here the one on top, is the last edge of the list.

TEST_F(MoverPushTest, WhoTouchesTheLastEdgeMakesTheLookStepOverTheNext) {
    addPusher({0.0f, -100.0f});
    const Particle& first = addParticle(5.0f, -1.0f);
    const Particle& second = addParticle(15.0f, -1.0f);
    const Particle& third = addParticle(25.0f, 20.0f); // touches nothing

    moveBy(1.0f);

    EXPECT_EQ(first.position.y, -2.0f);
    EXPECT_EQ(second.position.y, -1.0f); // found after the step, in time for the velocity
    EXPECT_EQ(second.pushVelocity.y, -1.0f / dt);
    EXPECT_EQ(third.pushVelocity.y, 0.0f);
}

TEST_F(MoverPushTest, WhoTouchesTheLastEdgeAsTheLastOfAllMakesTheLookStartAgain) {
    addPusher({0.0f, -100.0f});
    const Particle& first = addParticle(5.0f, -1.0f);
    const Particle& second = addParticle(15.0f, -1.0f); // stepped over at first
    const Particle& third = addParticle(25.0f, -1.0f);

    moveBy(1.0f);

    EXPECT_EQ(first.position.y, -2.0f);
    EXPECT_EQ(second.position.y, -2.0f);
    EXPECT_EQ(third.position.y, -2.0f);
}

TEST_F(MoverPushTest, WhoTouchesAnotherEdgeDoesNotMakeTheLookStepOver) {
    addPusher({100.0f, 0.0f});
    const Particle& first = addParticle(41.0f, 5.0f);
    const Particle& second = addParticle(41.0f, 15.0f);

    moveBy(1.0f);

    EXPECT_EQ(first.position.x, 42.0f);
    EXPECT_EQ(second.position.x, 42.0f);
}

TEST_F(MoverPushTest, TheOneSteppedOverNeedNotBeNearThePolygon) {
    addPusher({0.0f, -100.0f});
    const Particle& first = addParticle(5.0f, -1.0f);
    addParticle(-300.0f, -200.0f);
    const Particle& third = addParticle(15.0f, -1.0f);

    moveBy(1.0f);

    EXPECT_EQ(first.position.y, -2.0f);
    EXPECT_EQ(third.position.y, -2.0f);
}

TEST_F(MoverPushTest, IceIsSteppedOverInTheSameWay) {
    addPusher({0.0f, -100.0f});
    const ParticleGroup& first = addGroup(5.0f, -2.0f, 3.0f);
    const ParticleGroup& second = addGroup(20.0f, -2.0f, 3.0f);
    const ParticleGroup& third = addGroup(20.0f, 200.0f, 3.0f);

    moveBy(1.0f);

    EXPECT_EQ(first.centre.y, -3.0f);
    EXPECT_EQ(second.centre.y, -2.0f);
    EXPECT_EQ(third.centre.y, 200.0f);
}

TEST_F(MoverPushTest, IceAsTheLastOfAllMakesTheLookStartAgain) {
    addPusher({0.0f, -100.0f});
    const ParticleGroup& first = addGroup(5.0f, -2.0f, 3.0f);
    const ParticleGroup& second = addGroup(20.0f, -2.0f, 3.0f);
    const ParticleGroup& third = addGroup(35.0f, -2.0f, 3.0f);

    moveBy(1.0f);

    EXPECT_EQ(first.centre.y, -3.0f);
    EXPECT_EQ(second.centre.y, -3.0f);
    EXPECT_EQ(third.centre.y, -3.0f);
}

// Hostile levels

TEST_F(MoverPushTest, AWayThatNoStepShortensEnds) {
    addPusher({2e9f, 0.0f});
    const Particle& particle = addParticle(41.0f, 20.0f);
    SceneAccess::placeCamera({2e9f, 0.0f}, {}, 0.0f, 1.0f);

    moveBy(2e9f);

    EXPECT_EQ(Level::polygons.front().previousOffsetX, 2e9f);
    EXPECT_GT(particle.position.x, 41.0f);
}

TEST_F(MoverPushTest, AWayOfTwoMillionStepsBringsThePolygonToItsPlace) {
    addPusher({3e6f, 0.0f});
    const Particle& particle = addParticle(0.0f, 500.0f); // meets nothing
    SceneAccess::placeCamera({3e6f, 0.0f}, {}, 0.0f, 1.0f);

    moveBy(3e6f);

    EXPECT_EQ(Level::polygons.front().previousOffsetX, 3e6f);
    EXPECT_EQ(particle.position, (Vector2{0.0f, 500.0f}));
}

TEST_F(MoverPushTest, WhatIsNoNumberOrFarOffIsLeftAlone) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    addPusher({100.0f, 0.0f});
    addParticle(std::nanf(""), 20.0f);
    const Particle& endless = addParticle(-infinity, infinity);
    const Particle& far = addParticle(1e30f, -1e30f);
    const Particle& near = addParticle(41.0f, 20.0f);

    moveBy(1.0f);

    EXPECT_EQ(endless.position, (Vector2{-infinity, infinity}));
    EXPECT_EQ(far.position, (Vector2{1e30f, -1e30f}));
    EXPECT_EQ(near.position.x, 42.0f);
    EXPECT_TRUE(std::isnan(ParticleManager::particles.front().position.x));
}

TEST_F(MoverPushTest, AMoverWhoseSpeedIsNoNumberShovesNothing) {
    addPusher({100.0f, 0.0f});
    MoverManager::movers.front().speed = std::nanf("");
    MoverManager::movers.front().state = MoverLoopToEnd;
    const Particle& particle = addParticle(41.0f, 20.0f);

    MoverManager::updateCollideableNodes(Camera::view());
    MoverManager::runMovers(dt, Camera::view());
    MoverManager::updateCollideableNodes(Camera::view());
    Vector2 centre{41.0f, 20.0f};
    CircleCollision::collisionTest(centre, 2.0f);

    EXPECT_EQ(particle.position, (Vector2{41.0f, 20.0f}));
    EXPECT_TRUE(MoverManager::collideableNodes.empty()); // it is nowhere near the view
    EXPECT_EQ(centre, (Vector2{41.0f, 20.0f}));
}

} // namespace tarnwick
