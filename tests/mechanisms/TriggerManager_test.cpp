#include "mechanisms/TriggerManager.h"

#include "console/GLConsole.h"
#include "core/Random.h"
#include "game/Camera.h"
#include "graphics/GLWindow.h"
#include "level/Level.h"
#include "level/LevelObjectsManager.h"
#include "mechanisms/ForceManager.h"
#include "mechanisms/FxParticleManager.h"
#include "mechanisms/MoverManager.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "support/ConsoleAnswer.h"
#include "support/ModuleTest.h"
#include "support/SceneAccess.h"

#include <cmath>
#include <iterator>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

constexpr float dt = 0.0125f;
constexpr std::int32_t killType = 701;      ///< Without a limit.
constexpr std::int32_t stopForceType = 300; ///< One shot.

} // namespace

/// An 800 by 600 view about (0, 0), so that triggers within 440 units are near.
class TriggerManagerTest : public ModuleTest {
protected:
    TriggerManagerTest() {
        GLWindow::createHeadless(800, 600);
        GLConsole::initialise();
        SceneAccess::configure({});
        SceneAccess::placeCamera({}, {}, 0.0f, 1.0f);
        TriggerManager::initialise();
    }
    ~TriggerManagerTest() override { GLWindow::close(); }

    static Trigger& add(std::int32_t type,
                        std::int32_t target,
                        float delay,
                        Vector2 a = {0.0f, 0.0f},
                        Vector2 b = {10.0f, 0.0f},
                        Vector2 c = {10.0f, 10.0f},
                        Vector2 d = {0.0f, 10.0f}) {
        TriggerManager::addTrigger(type, target, delay, a, b, c, d);
        return TriggerManager::triggers.front();
    }
    static Particle& addWater(float x, float y) {
        Particle& particle = ParticleManager::particles.emplace_back();
        particle.position = {x, y};
        particle.temperature = 20.0f;
        return particle;
    }
    static ParticleGroup& addIce(float x, float y) {
        ParticleGroup& group = ParticleGroupMover::groups.emplace_back();
        group.centre = {x, y};
        group.members.emplace_back().position = {x, y};
        return group;
    }
    static Force& addForce(std::int32_t id) {
        ForceManager::addForce(id, 0.0f, 0.0f, 1.0f, 0.0f, 8.0f);
        return ForceManager::forces.back();
    }
    static std::vector<DelayedTriggerEvent>& events() { return TriggerManager::state.delayedEvents; }
    static const std::map<std::int32_t, TriggerType>& types() { return TriggerManager::state.triggerTypes; }
    static TriggerType& typeOf(std::int32_t id) { return TriggerManager::state.triggerTypes.at(id); }
};

// The region

TEST_F(TriggerManagerTest, TheRegionIsTwoTrianglesOverTheDiagonal) {
    const Trigger& trigger = add(-1, 0, 0.0f, {0.0f, 0.0f}, {30.0f, 0.0f}, {30.0f, 40.0f}, {0.0f, 40.0f});

    EXPECT_EQ(trigger.triangleA[0], (Vector2{0.0f, 0.0f}));
    EXPECT_EQ(trigger.triangleA[1], (Vector2{30.0f, 0.0f}));
    EXPECT_EQ(trigger.triangleA[2], (Vector2{30.0f, 40.0f}));
    EXPECT_EQ(trigger.triangleB[0], (Vector2{30.0f, 40.0f}));
    EXPECT_EQ(trigger.triangleB[1], (Vector2{0.0f, 40.0f}));
    EXPECT_EQ(trigger.triangleB[2], (Vector2{0.0f, 0.0f}));
    EXPECT_EQ(trigger.edgesA[0], (Vector2{1.0f, 0.0f}));
    EXPECT_EQ(trigger.edgesA[2], (Vector2{-30.0f / 50.0f, -40.0f / 50.0f}));
    EXPECT_EQ(trigger.normalsA[0], (Vector2{0.0f, 1.0f}));
    EXPECT_EQ(trigger.normalsA[2], (Vector2{40.0f / 50.0f, -30.0f / 50.0f}));
    EXPECT_EQ(trigger.lengthsA[2], 50.0f);
    EXPECT_EQ(trigger.lengthsB[0], 30.0f);
    EXPECT_EQ(trigger.minX, 0.0f);
    EXPECT_EQ(trigger.maxX, 30.0f);
    EXPECT_EQ(trigger.minY, 0.0f);
    EXPECT_EQ(trigger.maxY, 40.0f);
}

TEST_F(TriggerManagerTest, CornersInEitherSenseGiveTheSameRegion) {
    const Vector2 corners[4] = {{-3.0f, 1.0f}, {9.0f, -2.0f}, {12.0f, 8.0f}, {1.0f, 11.0f}};
    const Trigger& one = add(-1, 0, 0.0f, corners[0], corners[1], corners[2], corners[3]);
    const Trigger& other = add(-1, 0, 0.0f, corners[0], corners[3], corners[2], corners[1]);

    int inside = 0;
    for (float x = -5.0f; x < 14.0f; x += 0.5f) {
        for (float y = -4.0f; y < 13.0f; y += 0.5f) {
            const bool isInside = TriggerManager::pointInTrigger({x, y}, one);
            EXPECT_EQ(TriggerManager::pointInTrigger({x, y}, other), isInside) << x << ", " << y;
            inside += isInside ? 1 : 0;
        }
    }
    EXPECT_GT(inside, 300);
}

TEST_F(TriggerManagerTest, APointOnTheDiagonalOrOnAnyEdgeIsInside) {
    const Trigger& trigger = add(-1, 0, 0.0f);

    for (const Vector2 point :
         {Vector2{5.0f, 5.0f}, Vector2{0.0f, 0.0f}, Vector2{10.0f, 10.0f}, Vector2{4.0f, 0.0f},
          Vector2{10.0f, 7.0f}, Vector2{3.0f, 10.0f}, Vector2{0.0f, 10.0f}, Vector2{10.0f, 0.0f}}) {
        EXPECT_TRUE(TriggerManager::pointInTrigger(point, trigger)) << point.x << ", " << point.y;
    }
    EXPECT_FALSE(TriggerManager::pointInTrigger({std::nextafter(0.0f, -1.0f), 5.0f}, trigger));
    EXPECT_FALSE(TriggerManager::pointInTrigger({5.0f, std::nextafter(10.0f, 11.0f)}, trigger));
}

TEST_F(TriggerManagerTest, ARegionOfOnePointHoldsEveryPointWhileItIsNear) {
    const Vector2 point{5.0f, 5.0f};
    add(killType, 0, 0.0f, point, point, point, point);
    const Particle& far = addWater(-300.0f, 200.0f);

    TriggerManager::runTriggers(dt, Camera::view());

    EXPECT_TRUE(far.dying);
}

TEST_F(TriggerManagerTest, ARegionWithoutWidthIsAllOfItsLine) {
    GLConsole::runLine("TriggerCreate 701 0 8 0 0 10");
    const Particle& above = addWater(8.0f, -200.0f);
    const Particle& beside = addWater(8.5f, 5.0f);

    TriggerManager::runTriggers(dt, Camera::view());

    EXPECT_TRUE(above.dying);
    EXPECT_FALSE(beside.dying);
}

TEST_F(TriggerManagerTest, ARegionThatCrossesItselfIsTheUnionOfItsTriangles) {
    const Trigger& bowTie = add(-1, 0, 0.0f, {0.0f, 0.0f}, {10.0f, 0.0f}, {0.0f, 10.0f}, {10.0f, 10.0f});

    EXPECT_TRUE(TriggerManager::pointInTrigger({2.0f, 2.0f}, bowTie)); // (0, 0), (10, 0), (0, 10)
    EXPECT_TRUE(TriggerManager::pointInTrigger({4.0f, 9.0f}, bowTie)); // (0, 10), (10, 10), (0, 0)
    EXPECT_FALSE(TriggerManager::pointInTrigger({9.0f, 5.0f}, bowTie));
}

TEST_F(TriggerManagerTest, ARegionOfNoNumbersIsNeverNear) {
    const float endless = std::numeric_limits<float>::infinity();
    const Trigger& trigger = add(killType, 0, 0.0f, {endless, 0.0f}, {-endless, endless}, {endless, endless},
                                 {std::nanf(""), std::nanf("")});
    addWater(0.0f, 0.0f);

    TriggerManager::runTriggers(dt, Camera::view());

    EXPECT_LE(trigger.fireCount, 1u); // whatever such a box meets, the walk goes through
}

// Making one

TEST_F(TriggerManagerTest, TheNewestTriggerStandsInFront) {
    add(-1, 1, 0.0f);
    add(-1, 2, 0.0f);

    EXPECT_EQ(TriggerManager::triggers.front().targetId, 2);
    EXPECT_EQ(TriggerManager::triggers.back().targetId, 1);
}

TEST_F(TriggerManagerTest, TypesThatNeedTheBodyTakeNoDelay) {
    for (const std::int32_t type : {0, 1, 2, 200, 201, 202, 203, 701}) {
        EXPECT_EQ(add(type, 0, 5.0f).delay, 0.0f) << type;
    }
    for (const std::int32_t type : {-1, 3, 199, 204, 300, 702, 801, 9999}) {
        EXPECT_EQ(add(type, 0, 5.0f).delay, 5.0f) << type;
    }
}

TEST_F(TriggerManagerTest, AnUnknownTypeFiresCountsAndDoesNothing) {
    const Trigger& trigger = add(4711, 3, 0.0f);
    const Force& force = addForce(3);
    const Particle water = addWater(5.0f, 5.0f);

    TriggerManager::runTriggers(dt, Camera::view());
    TriggerManager::runTriggers(dt, Camera::view());

    EXPECT_EQ(trigger.typeId, 4711u);
    EXPECT_STREQ(trigger.type->name, "Null_a");
    EXPECT_EQ(trigger.fireCount, 2u);
    EXPECT_TRUE(force.enabled);
    EXPECT_EQ(ParticleManager::particles.front().velocity, water.velocity);
    EXPECT_EQ(ParticleManager::particles.front().temperature, water.temperature);
}

TEST_F(TriggerManagerTest, WithoutATableTheTypeIsTheEmptyOne) {
    TriggerManager::shutdown();

    const Trigger& trigger = add(701, 0, 0.0f);

    ASSERT_NE(trigger.type, nullptr);
    EXPECT_STREQ(trigger.type->name, "Null Trigger");
    EXPECT_EQ(trigger.type->handler, trigFuncNull);
    EXPECT_EQ(trigger.type->maxFires, 0u);
}

TEST_F(TriggerManagerTest, TargetsAreTheEntitiesOfTheIdInTheirOrder) {
    LevelObject still;
    still.id = 0xFFFFFFF9u; // -7
    still.frames.resize(1);
    LevelObject animated = still;
    animated.frames.resize(2);
    animated.frameCount = 2;
    LevelObjectsManager::addObject(still);
    LevelObjectsManager::addObject(animated);
    Level::polygons.emplace_back().id = -7;
    Level::polygons.emplace_back().id = 7;
    Level::polygons.emplace_back().id = -7;
    addForce(-7);
    Mover mover;
    mover.id = -7;
    MoverManager::addMover(mover);
    FxParticleEmitter emitter;
    emitter.id = -7;
    FxParticleManager::addEmitter(emitter);

    const Trigger& trigger = add(-1, -7, 0.0f);

    ASSERT_EQ(trigger.targets.size(), 7u);
    EXPECT_EQ(trigger.targets[0].entity, &LevelObjectsManager::animatedObjects.front());
    EXPECT_EQ(trigger.targets[1].entity, &LevelObjectsManager::staticObjects.front());
    EXPECT_EQ(trigger.targets[2].entity, &ForceManager::forces.front());
    EXPECT_EQ(trigger.targets[3].entity, &Level::polygons.front());
    EXPECT_EQ(trigger.targets[4].entity, &Level::polygons.back());
    EXPECT_EQ(trigger.targets[5].entity, &MoverManager::movers.front());
    EXPECT_EQ(trigger.targets[6].entity, &FxParticleManager::emitters.front());
    const std::int32_t kinds[] = {1, 1, 3, 0, 0, 4, 5};
    for (std::size_t i = 0; i < 7; ++i) {
        EXPECT_EQ(static_cast<std::int32_t>(trigger.targets[i].kind), kinds[i]) << i;
    }
}

TEST_F(TriggerManagerTest, TargetZeroIsNoTargetAndAnIdOfNobodyGivesNone) {
    addForce(0);

    EXPECT_TRUE(add(-1, 0, 0.0f).targets.empty());
    EXPECT_TRUE(add(-1, 12, 0.0f).targets.empty());
}

TEST_F(TriggerManagerTest, TriggersOfOneIdShareTheirTargets) {
    addForce(3);

    const Trigger& one = add(-1, 3, 0.0f);
    const Trigger& other = add(200, 3, 0.0f);

    EXPECT_EQ(one.targets.data(), other.targets.data());
}

TEST_F(TriggerManagerTest, ATriggerMadeLaterHasWhatCameInBetween) {
    addForce(3);
    const Trigger& early = add(-1, 3, 0.0f);
    addForce(3);

    const Trigger& late = add(-1, 3, 0.0f);

    ASSERT_EQ(early.targets.size(), 1u);
    ASSERT_EQ(late.targets.size(), 2u);
    EXPECT_EQ(early.targets[0].entity, &ForceManager::forces.front());
    EXPECT_EQ(late.targets[1].entity, &ForceManager::forces.back());
}

TEST_F(TriggerManagerTest, ThousandsOfTriggersOnThousandsOfEntitiesAreMadeInNoTime) {
    constexpr int count = 65535; // the most of each that a level has
    for (int i = 0; i < count; ++i) {
        addForce(3);
    }

    for (int i = 0; i < count; ++i) {
        add(-1, 3, 0.0f);
    }

    EXPECT_EQ(TriggerManager::triggers.front().targets.size(), 65535u); // one by one: 70 gigabytes
}

TEST_F(TriggerManagerTest, WhatComesLaterIsNoTarget) {
    const Trigger& trigger = add(stopForceType, 3, 0.0f);
    GLConsole::runLine("ForceCreate 3 0 0 1 0 5");
    addWater(5.0f, 5.0f);

    TriggerManager::runTriggers(dt, Camera::view());

    EXPECT_TRUE(trigger.targets.empty());
}

// Firing

TEST_F(TriggerManagerTest, ATriggerWithoutLimitFiresForEveryBodyInEveryTick) {
    const Trigger& trigger = add(-1, 0, 0.0f);
    addWater(1.0f, 1.0f);
    addWater(2.0f, 2.0f);
    addWater(20.0f, 2.0f);
    addIce(5.0f, 5.0f);

    TriggerManager::runTriggers(dt, Camera::view());
    TriggerManager::runTriggers(dt, Camera::view());

    EXPECT_EQ(trigger.fireCount, 6u);
}

TEST_F(TriggerManagerTest, AOneShotFiresOnTheFirstBodyAlone) {
    Force& force = addForce(3);
    const Trigger& trigger = add(stopForceType, 3, 0.0f);
    addWater(1.0f, 1.0f);
    addWater(2.0f, 2.0f);
    TriggerManager::runTriggers(dt, Camera::view());
    force.enabled = true;

    TriggerManager::runTriggers(dt, Camera::view());

    EXPECT_EQ(trigger.fireCount, 1u);
    EXPECT_TRUE(force.enabled); // it was not called again
}

TEST_F(TriggerManagerTest, AnIceGroupIsTestedByItsCentreAndNotByItsMembers) {
    const Trigger& trigger = add(-1, 0, 0.0f);
    addIce(-50.0f, -50.0f).members.front().position = {5.0f, 5.0f};
    addIce(5.0f, 5.0f).members.front().position = {-50.0f, -50.0f};

    TriggerManager::runTriggers(dt, Camera::view());

    EXPECT_EQ(trigger.fireCount, 1u);
}

TEST_F(TriggerManagerTest, TriggersAreAskedInTheOrderOfTheirCreation) {
    addForce(1).direction = {0.0f, 1.0f};
    addForce(2).direction = {1.0f, 0.0f};
    add(201, 1, 0.0f);
    add(201, 2, 0.0f);
    const Particle& water = addWater(5.0f, 5.0f);

    TriggerManager::runTriggers(dt, Camera::view());

    EXPECT_EQ(water.velocity, (Vector2{8.0f, 0.0f})); // the last one holds
}

TEST_F(TriggerManagerTest, ADyingParticleStillFires) {
    const Trigger& trigger = add(-1, 0, 0.0f);
    addWater(5.0f, 5.0f).dying = true;

    TriggerManager::runTriggers(dt, Camera::view());

    EXPECT_EQ(trigger.fireCount, 1u);
}

TEST_F(TriggerManagerTest, KillsLeaveTheBodiesInTheirLists) {
    add(killType, 0, 0.0f, {-400.0f, -400.0f}, {400.0f, -400.0f}, {400.0f, 400.0f}, {-400.0f, 400.0f});
    for (int i = 0; i < 100; ++i) {
        addWater(static_cast<float>(i), 0.0f);
        addIce(static_cast<float>(i), 20.0f);
    }

    TriggerManager::runTriggers(dt, Camera::view());

    EXPECT_EQ(ParticleManager::particles.size(), 100u);
    EXPECT_EQ(ParticleGroupMover::groups.size(), 100u);
    EXPECT_TRUE(ParticleManager::particles.back().dying);
    EXPECT_TRUE(ParticleGroupMover::groups.back().dying);
}

// The view

TEST_F(TriggerManagerTest, ATriggerOutsideTheViewSquareDoesNotFireNorRest) {
    Trigger& trigger = add(-1, 0, 0.0f, {440.5f, 0.0f}, {450.0f, 0.0f}, {450.0f, 10.0f}, {440.5f, 10.0f});
    trigger.cooldownLeft = 1.0f;
    addWater(445.0f, 5.0f);

    TriggerManager::runTriggers(dt, Camera::view());

    EXPECT_EQ(trigger.fireCount, 0u);
    EXPECT_EQ(trigger.cooldownLeft, 1.0f);
}

TEST_F(TriggerManagerTest, ABoxThatOnlyTouchesTheViewSquareIsNear) {
    const float reach = 0.55f * 800.0f;
    const Trigger& trigger = add(-1, 0, 0.0f, {reach, 0.0f}, {450.0f, 0.0f}, {450.0f, 10.0f}, {reach, 10.0f});
    addWater(445.0f, 5.0f);

    TriggerManager::runTriggers(dt, Camera::view());

    EXPECT_EQ(trigger.fireCount, 1u);
}

TEST_F(TriggerManagerTest, TheSquareIsAsHighAsWideAndFollowsTheShakeButNotTheZoom) {
    SceneAccess::placeCamera({100.0f, -200.0f}, {3.0f, -4.0f}, 45.0f, 2.5f);
    const float x = 103.0f - 0.55f * 800.0f;
    const float y = -204.0f + 0.55f * 800.0f;
    const Trigger& near = add(-1, 0, 0.0f, {x - 5.0f, y}, {x, y}, {x, y + 5.0f}, {x - 5.0f, y + 5.0f});
    const Trigger& far =
        add(-1, 0, 0.0f, {x - 5.0f, y}, {x - 0.5f, y}, {x - 0.5f, y + 5.0f}, {x - 5.0f, y + 5.0f});
    addWater(x - 1.0f, y + 1.0f);

    TriggerManager::runTriggers(dt, Camera::view());

    EXPECT_EQ(near.fireCount, 1u);
    EXPECT_EQ(far.fireCount, 0u);
}

// Rest

TEST_F(TriggerManagerTest, ATriggerWithACooldownRestsFromTheNextTickOn) {
    typeOf(-1).cooldown = 2.0f * dt;
    const Trigger& trigger = add(-1, 0, 0.0f);
    addWater(1.0f, 1.0f);
    addWater(2.0f, 2.0f);

    TriggerManager::runTriggers(dt, Camera::view());
    const std::uint32_t afterFirst = trigger.fireCount;
    TriggerManager::runTriggers(dt, Camera::view());
    TriggerManager::runTriggers(dt, Camera::view());
    const std::uint32_t atRest = trigger.fireCount;
    TriggerManager::runTriggers(dt, Camera::view());

    EXPECT_EQ(afterFirst, 2u); // live for the whole tick
    EXPECT_EQ(atRest, 2u);
    EXPECT_EQ(trigger.fireCount, 4u);
}

// Delay

TEST_F(TriggerManagerTest, ADelayedTriggerActsWhenItsTimeIsOver) {
    const Force& force = addForce(3);
    add(stopForceType, 3, 2.5f * dt);
    addWater(5.0f, 5.0f);

    TriggerManager::runTriggers(dt, Camera::view()); // fires; the delay runs from the next tick on
    TriggerManager::runTriggers(dt, Camera::view());
    TriggerManager::runTriggers(dt, Camera::view());
    const bool before = force.enabled;
    TriggerManager::runTriggers(dt, Camera::view());

    EXPECT_TRUE(before);
    EXPECT_FALSE(force.enabled);
    EXPECT_TRUE(events().empty());
}

TEST_F(TriggerManagerTest, ATimeLeftOfExactlyZeroIsOver) {
    const Force& force = addForce(3);
    add(stopForceType, 3, dt);
    addWater(5.0f, 5.0f);

    TriggerManager::runTriggers(dt, Camera::view());
    TriggerManager::runTriggers(dt, Camera::view());

    EXPECT_FALSE(force.enabled);
}

TEST_F(TriggerManagerTest, DelaysThatAreNotAboveZeroActAtOnce) {
    for (const float delay : {0.0f, -5.0f, std::nanf("")}) {
        ForceManager::forces.clear();
        TriggerManager::initialise();
        const Force& force = addForce(3);
        add(stopForceType, 3, delay);
        addWater(5.0f, 5.0f);

        TriggerManager::runTriggers(dt, Camera::view());

        EXPECT_FALSE(force.enabled) << delay;
    }
}

TEST_F(TriggerManagerTest, ADelayedTriggerWithoutLimitPilesUpAnEventForEachBodyInEachTick) {
    const Trigger& trigger = add(-1, 0, 1.0f);
    addWater(1.0f, 1.0f);
    addWater(2.0f, 2.0f);

    TriggerManager::runTriggers(dt, Camera::view());
    TriggerManager::runTriggers(0.02f, Camera::view());

    ASSERT_EQ(events().size(), 4u);
    EXPECT_EQ(events()[0].trigger, &trigger);
    EXPECT_EQ(events()[0].handler, trigFuncNull);
    EXPECT_EQ(events()[0].dt, dt); // of the moment of firing
    EXPECT_EQ(events()[0].timeLeft, 1.0f - 0.02f);
    EXPECT_EQ(events()[3].dt, 0.02f);
    EXPECT_EQ(events()[3].timeLeft, 1.0f);
}

TEST_F(TriggerManagerTest, EventsThatStayKeepTheirOrder) {
    add(-1, 1, 1.0f, {100.0f, 0.0f}, {110.0f, 0.0f}, {110.0f, 10.0f}, {100.0f, 10.0f});
    add(-1, 2, dt);
    add(-1, 3, 1.0f);
    addWater(105.0f, 5.0f);
    addWater(5.0f, 5.0f);
    TriggerManager::runTriggers(dt, Camera::view());

    TriggerManager::checkDelayedTriggerEvents(dt);

    ASSERT_EQ(events().size(), 2u);
    EXPECT_EQ(events()[0].trigger->targetId, 1);
    EXPECT_EQ(events()[1].trigger->targetId, 3);
}

TEST_F(TriggerManagerTest, ADelayedRandomKillGetsNoBodyAndKillsNothing) {
    add(702, 0, dt);
    const Particle& water = addWater(5.0f, 5.0f);
    TriggerManager::runTriggers(10.0f, Camera::view()); // a tick so long that every draw kills
    seedRandom(0);
    randomFloat();
    const std::uint32_t afterOneDraw = getRandomState();
    seedRandom(0);

    TriggerManager::checkDelayedTriggerEvents(10.0f);

    EXPECT_FALSE(water.dying);
    EXPECT_EQ(getRandomState(), afterOneDraw);
}

TEST_F(TriggerManagerTest, AResetDropsWhatIsPendingAndLetsOneShotsFireAgain) {
    const Force& force = addForce(3);
    Trigger& trigger = add(stopForceType, 3, 2.0f * dt);
    addWater(5.0f, 5.0f);
    TriggerManager::runTriggers(dt, Camera::view());
    trigger.cooldownLeft = 5.0f;

    TriggerManager::resetTriggers();
    const bool pending = !events().empty();
    const std::uint32_t fires = trigger.fireCount;
    ParticleManager::particles.clear();
    TriggerManager::runTriggers(1.0f, Camera::view());

    EXPECT_FALSE(pending);
    EXPECT_EQ(fires, 0u);
    EXPECT_EQ(trigger.cooldownLeft, 0.0f);
    EXPECT_TRUE(force.enabled); // set off just before the restart: no effect after it
}

// Life

TEST_F(TriggerManagerTest, StartAndEndAreTold) {
    GLConsole::clear();

    TriggerManager::initialise();

    EXPECT_EQ(GLConsole::outputText(),
              "\nShutting down trigger manager..\nInitialising down trigger manager..");
}

TEST_F(TriggerManagerTest, AfterShutdownEverythingIsGone) {
    add(-1, 0, 1.0f);
    addWater(5.0f, 5.0f);
    TriggerManager::runTriggers(dt, Camera::view());

    TriggerManager::shutdown();

    EXPECT_TRUE(TriggerManager::triggers.empty());
    EXPECT_TRUE(events().empty());
    for (const char* const command : {"TRIGGERTYPELIST", "TRIGGERCREATE", "TRIGGERCOUNT", "TRIGGERDRAW"}) {
        EXPECT_FALSE(GLConsole::commands().contains(command)) << command;
    }
    TriggerManager::runTriggers(dt, Camera::view()); // nothing left to do, and nothing to fall over
}

// Commands

TEST_F(TriggerManagerTest, TheCommandMakesARectangle) {
    const std::string answer = answerTo("triggercreate 701 -5 10.5 -20 30 40");

    EXPECT_EQ(answer, "");
    ASSERT_EQ(TriggerManager::triggers.size(), 1u);
    const Trigger& trigger = TriggerManager::triggers.front();
    EXPECT_EQ(trigger.typeId, 701u);
    EXPECT_EQ(trigger.targetId, -5);
    EXPECT_EQ(trigger.delay, 0.0f);
    EXPECT_EQ(trigger.minX, 10.5f);
    EXPECT_EQ(trigger.maxX, 40.5f);
    EXPECT_EQ(trigger.minY, -20.0f);
    EXPECT_EQ(trigger.maxY, 20.0f);
    EXPECT_TRUE(TriggerManager::pointInTrigger({11.0f, 19.0f}, trigger));
    EXPECT_EQ(answerTo("TriggerCount"), "\nTriggerCount is 1");
}

TEST_F(TriggerManagerTest, NegativeSizesMarkTheOtherSide) {
    GLConsole::runLine("TriggerCreate -1 0 10 10 -20 -30");
    const Trigger& trigger = TriggerManager::triggers.front();

    EXPECT_EQ(trigger.minX, -10.0f);
    EXPECT_EQ(trigger.minY, -20.0f);
    EXPECT_TRUE(TriggerManager::pointInTrigger({-9.0f, -19.0f}, trigger));
    EXPECT_TRUE(TriggerManager::pointInTrigger({9.0f, 9.0f}, trigger));
    EXPECT_FALSE(TriggerManager::pointInTrigger({11.0f, 9.0f}, trigger));
    EXPECT_EQ(trigger.typeId, 4294967295u);
    EXPECT_STREQ(trigger.type->name, "Null_a");
}

TEST_F(TriggerManagerTest, WrongArgumentsPrintTheUsageAndMakeNothing) {
    const std::string usage =
        "\nUSAGE: TriggerCreate < id : integer > < target id : integer > < x : number > "
        "< y : number > < w : number > < h : number > ";

    EXPECT_EQ(answerTo("TriggerCreate 1 0 0 0 5"), usage);
    EXPECT_EQ(answerTo("TriggerCreate 1 0 0 0 5 5 5"), usage);
    EXPECT_EQ(answerTo("TriggerCreate 1.5 0 0 0 5 5"), usage);
    EXPECT_EQ(answerTo("TriggerCreate 1 x 0 0 5 5"), usage);
    EXPECT_EQ(answerTo("TriggerCreate 1 0 0 0 5 1e3"), usage);
    EXPECT_TRUE(TriggerManager::triggers.empty());
}

TEST_F(TriggerManagerTest, TheTypesAreListedInTheOrderOfTheirIds) {
    const std::string list = answerTo("TriggerTypeList");

    const std::size_t first = list.find("\nTrigger id: -1\t\tTrigger name:   Null_a"
                                        "\nTrigger id: 0\t\tTrigger name:   To_ice_a");
    const std::size_t last = list.find("\nTrigger id: 901\t\tTrigger name:   Checkpoint_1");
    EXPECT_NE(list.find("Trigger types"), std::string::npos);
    EXPECT_NE(first, std::string::npos);
    EXPECT_NE(last, std::string::npos);
    EXPECT_LT(first, last);
}

TEST_F(TriggerManagerTest, EveryTypeHasItsNumberNameAndHandler) {
    struct Row {
        std::int32_t id;
        const char* name;
        TriggerHandler handler;
    };
    const Row rows[] = {
        {-1, "Null_a", trigFuncNull},
        {0, "To_ice_a", trigFuncToIce},
        {1, "To_water_a", trigFuncToWater},
        {2, "To_steam_a", trigFuncToSteam},
        {3, "Anim_play_loop_1", trigFuncAnimPlayLoop},
        {4, "Anim_play_once_1", trigFuncAnimPlayOnce},
        {5, "Anim_stop_1", trigFuncAnimStop},
        {100, "Sound_play_1", trigFuncSoundPlay},
        {101, "Sound_stop_1", trigFuncSoundStop},
        {200, "Force_directional_a", trigFuncForceDirectional},
        {201, "Force_instantenous_a", trigFuncForceInstantenous},
        {202, "Force_multi_dir_pull_a", trigFuncForceMultiDirPull},
        {203, "Force_multi_dir_push_a", trigFuncForceMultiDirPush},
        {300, "Entity_remove_1", trigFuncEntityRemove},
        {301, "Entity_add_1", trigFuncEntityAdd},
        {401, "Mover_goto_start_1", trigFuncMoverGotoStart},
        {402, "Mover_goto_end_1", trigFuncMoverGotoEnd},
        {403, "Mover_stop_1", trigFuncMoverStop},
        {404, "Mover_goto_start_a", trigFuncMoverGotoStart},
        {405, "Mover_goto_end_a", trigFuncMoverGotoEnd},
        {406, "Mover_stop_a", trigFuncMoverStop},
        {407, "Mover_goto_start_loop_1", trigFuncMoverGotoStartLoop},
        {408, "Mover_goto_end_loop_1", trigFuncMoverGotoEndLoop},
        {409, "Mover_goto_start_loop_a", trigFuncMoverGotoStartLoop},
        {410, "Mover_goto_end_loop_a", trigFuncMoverGotoEndLoop},
        {501, "Emitter_create_burst_1", trigFuncEmitterCreateBurst},
        {502, "Emitter_start_1", trigFuncEmitterStart},
        {503, "Emitter_stop_1", trigFuncEmitterStop},
        {601, "Camera_zoom_1", trigFuncCameraZoom},
        {602, "Camera_zoom_a", trigFuncCameraZoom},
        {603, "Camera_shake_1", trigFuncCameraShake},
        {604, "Camera_shake_a", trigFuncCameraShake},
        {701, "Particle_kill_a", trigFuncParticleKill},
        {702, "Particle_kill_random_a", trigFuncParticleKillRandom},
        {801, "Level_end_a", trigFuncLevelEnd},
        {901, "Checkpoint_1", trigFuncCheckPoint},
    };

    EXPECT_EQ(types().size(), std::size(rows));
    for (const Row& row : rows) {
        EXPECT_STREQ(typeOf(row.id).name, row.name);
        EXPECT_EQ(typeOf(row.id).handler, row.handler) << row.name;
    }
}

TEST_F(TriggerManagerTest, TheNamesTellWhetherATypeHasALimit) {
    for (const auto& [id, type] : types()) {
        const std::string name = type.name;
        EXPECT_EQ(type.maxFires, name.ends_with("_1") ? 1u : 0u) << name;
        EXPECT_TRUE(name.ends_with("_1") || name.ends_with("_a")) << name;
        EXPECT_EQ(type.cooldown, 0.0f) << name;
    }
}

TEST_F(TriggerManagerTest, TheDrawingIsSwitchedByItsCommand) {
    EXPECT_EQ(answerTo("TriggerDraw"), "\nTriggerDraw is false");
    EXPECT_EQ(answerTo("TriggerDraw true"), "\nTriggerDraw is now true");

    TriggerManager::initialise();

    EXPECT_EQ(answerTo("TriggerDraw"), "\nTriggerDraw is false");
}

} // namespace tarnwick
