#include "mechanisms/TriggerHandlers.h"

#include "core/Random.h"
#include "game/Camera.h"
#include "graphics/GLWindow.h"
#include "level/Level.h"
#include "level/LevelBspNode.h"
#include "level/LevelBspTree.h"
#include "level/LevelObject.h"
#include "mechanisms/Force.h"
#include "mechanisms/FxParticleManager.h"
#include "mechanisms/Mover.h"
#include "mechanisms/Trigger.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "support/ModuleTest.h"
#include "support/SceneAccess.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace tarnwick {

/// A trigger whose targets are put together by hand.
class TriggerHandlersTest : public ModuleTest {
protected:
    TriggerHandlersTest() {
        SceneAccess::configure({});
        trigger.type = &type;
    }

    static constexpr float dt = 0.25f;

    void target(LevelObject& object) { addTarget(&object, TriggerTarget::Kind::object); }
    void target(Force& force) { addTarget(&force, TriggerTarget::Kind::force); }
    void target(Mover& mover) { addTarget(&mover, TriggerTarget::Kind::mover); }
    void target(Polygon2D& polygon) { addTarget(&polygon, TriggerTarget::Kind::polygon); }
    void target(FxParticleEmitter& emitter) { addTarget(&emitter, TriggerTarget::Kind::emitter); }

    void call(TriggerHandler handler) { handler(&trigger, nullptr, BodyKind::particle, dt); }
    void call(TriggerHandler handler, Particle& body) { handler(&trigger, &body, BodyKind::particle, dt); }
    void call(TriggerHandler handler, ParticleGroup& body) { handler(&trigger, &body, BodyKind::group, dt); }

    static Force along(Vector2 direction, float strength, bool enabled = true) {
        Force force;
        force.enabled = enabled;
        force.direction = direction;
        force.strength = strength;
        return force;
    }
    static Force at(Vector2 position, float strength) {
        Force force = along({1.0f, 0.0f}, strength);
        force.position = position;
        return force;
    }

    static bool edgesOn(const Polygon2D& polygon) {
        const std::vector<LevelBspNode*>* const nodes = Level::nodesOf(polygon);
        return nodes != nullptr &&
               std::ranges::all_of(*nodes, [](const LevelBspNode* node) { return node->hasEdge; });
    }

    void addTarget(void* entity, TriggerTarget::Kind kind) {
        targets.push_back({entity, kind});
        trigger.targets = targets;
    }

    TriggerType type;
    Trigger trigger;
    std::vector<TriggerTarget> targets;
    Particle particle;
    ParticleGroup group;
};

// Animations

TEST_F(TriggerHandlersTest, PlayingALoopGoesOnFromThePresentFrame) {
    LevelObject object;
    object.currentFrame = 3;
    object.loopCount = 1;
    object.loopsDone = 2;
    target(object);

    call(trigFuncAnimPlayLoop);

    EXPECT_FALSE(object.paused);
    EXPECT_EQ(object.loopCount, 0);
    EXPECT_EQ(object.currentFrame, 3u);
    EXPECT_EQ(object.loopsDone, 2);
}

TEST_F(TriggerHandlersTest, PlayingOnceBeginsAtTheFirstFrame) {
    LevelObject object;
    object.currentFrame = 3;
    object.frameTime = 0.5f;
    object.loopsDone = 2;
    target(object);

    call(trigFuncAnimPlayOnce);

    EXPECT_FALSE(object.paused);
    EXPECT_EQ(object.loopCount, 1);
    EXPECT_EQ(object.currentFrame, 0u);
    EXPECT_EQ(object.frameTime, 0.0f);
    EXPECT_EQ(object.loopsDone, 0);
}

TEST_F(TriggerHandlersTest, StoppingHoldsTheAnimationWhereItIs) {
    LevelObject object;
    object.paused = false;
    object.currentFrame = 3;
    target(object);

    call(trigFuncAnimStop);

    EXPECT_TRUE(object.paused);
    EXPECT_EQ(object.currentFrame, 3u);
}

// Forces

TEST_F(TriggerHandlersTest, DirectionalForcesAddUpAndADisabledOneAddsNothing) {
    Force right = along({1.0f, 0.0f}, 8.0f);
    Force down = along({0.0f, 1.0f}, 16.0f);
    Force off = along({0.0f, 1.0f}, 1000.0f, false);
    target(right);
    target(off);
    target(down);
    particle.velocity = {1.0f, 1.0f};
    group.velocity = {-1.0f, 0.0f};

    call(trigFuncForceDirectional, particle);
    call(trigFuncForceDirectional, group);

    EXPECT_EQ(particle.velocity, (Vector2{3.0f, 5.0f}));
    EXPECT_EQ(group.velocity, (Vector2{1.0f, 4.0f}));
}

TEST_F(TriggerHandlersTest, TheLastInstantaneousForceTakesThePlaceOfTheVelocity) {
    Force first = along({1.0f, 0.0f}, 8.0f);
    Force last = along({0.0f, -1.0f}, 16.0f);
    target(first);
    target(last);
    particle.velocity = {100.0f, 100.0f};
    group.velocity = {100.0f, 100.0f};

    call(trigFuncForceInstantenous, particle);
    call(trigFuncForceInstantenous, group);

    EXPECT_EQ(particle.velocity, (Vector2{0.0f, -16.0f}));
    EXPECT_EQ(group.velocity, (Vector2{0.0f, -16.0f}));
}

TEST_F(TriggerHandlersTest, ADisabledInstantaneousForceLeavesTheVelocityAlone) {
    Force force = along({1.0f, 0.0f}, 8.0f, false);
    target(force);
    particle.velocity = {3.0f, 4.0f};

    call(trigFuncForceInstantenous, particle);

    EXPECT_EQ(particle.velocity, (Vector2{3.0f, 4.0f}));
}

TEST_F(TriggerHandlersTest, AnInstantaneousForceWithoutStrengthStopsTheBody) {
    Force force = along({1.0f, 0.0f}, 0.0f);
    target(force);
    particle.velocity = {3.0f, 4.0f};

    call(trigFuncForceInstantenous, particle);

    EXPECT_EQ(particle.velocity, (Vector2{}));
}

TEST_F(TriggerHandlersTest, ARadialForceFallsOffWithTheRootOfTheDistance) {
    Force force = at({10.0f, 10.0f}, 80.0f);
    target(force);
    particle.position = {10.0f, 109.0f}; // 99 units out: a tenth
    group.centre = {18.0f, 10.0f};       // 8 units out: a third

    call(trigFuncForceMultiDirPush, particle);
    call(trigFuncForceMultiDirPull, group);

    EXPECT_EQ(particle.velocity, (Vector2{0.0f, dt * 80.0f * std::sqrt(1.0f / 100.0f)}));
    EXPECT_EQ(group.velocity, (Vector2{-(dt * 80.0f * std::sqrt(1.0f / 9.0f)), 0.0f}));
}

TEST_F(TriggerHandlersTest, ABodyOnThePointOfARadialForceFeelsNothing) {
    Force force = at({10.0f, 10.0f}, 80.0f);
    target(force);
    particle.position = {10.0f, 10.0f};
    particle.velocity = {3.0f, 4.0f};

    call(trigFuncForceMultiDirPush, particle);
    call(trigFuncForceMultiDirPull, particle);

    EXPECT_EQ(particle.velocity, (Vector2{3.0f, 4.0f}));
}

TEST_F(TriggerHandlersTest, VeryNearThePointTheOffsetItselfIsTheDirection) {
    Force force = at({}, 80.0f);
    target(force);
    particle.position = {0.0001f, 0.0f}; // not above the limit

    call(trigFuncForceMultiDirPush, particle);

    EXPECT_EQ(particle.velocity.x, 0.0001f * (dt * 80.0f * std::sqrt(1.0f / (0.0001f + 1.0f))));
}

TEST_F(TriggerHandlersTest, ForcesWithoutABodyDoNothing) {
    Force force = along({1.0f, 0.0f}, 8.0f);
    target(force);

    for (const TriggerHandler handler : {trigFuncForceDirectional, trigFuncForceInstantenous,
                                         trigFuncForceMultiDirPull, trigFuncForceMultiDirPush}) {
        call(handler);
        handler(&trigger, &particle, static_cast<BodyKind>(2), dt);
    }

    EXPECT_EQ(particle.velocity, (Vector2{}));
}

// Entities

TEST_F(TriggerHandlersTest, RemovingAndAddingAPolygonSwitchesItsEdgesAndItsPictureInOneGo) {
    SceneAccess::addPolygon({{0.0f, 0.0f}, {50.0f, 0.0f}, {50.0f, 50.0f}, {0.0f, 50.0f}}, 0.5f);
    SceneAccess::buildTree();
    Level::buildPolyNodeMap();
    Polygon2D& polygon = Level::polygons.front();
    target(polygon);

    call(trigFuncEntityRemove);
    const bool gone = !polygon.visible && !polygon.collideable && !edgesOn(polygon);
    call(trigFuncEntityAdd);

    EXPECT_TRUE(gone);
    EXPECT_TRUE(polygon.visible);
    EXPECT_TRUE(polygon.collideable);
    EXPECT_TRUE(edgesOn(polygon));
}

TEST_F(TriggerHandlersTest, RemovingSwitchesObjectsAndForcesOffAndLeavesEmitters) {
    LevelObject object;
    Force force;
    FxParticleEmitter emitter;
    target(object);
    target(force);
    target(emitter);

    call(trigFuncEntityRemove);
    const bool off = !object.enabled && !force.enabled;
    const bool emitting = emitter.active;
    call(trigFuncEntityAdd);

    EXPECT_TRUE(off);
    EXPECT_TRUE(emitting);
    EXPECT_TRUE(object.enabled);
    EXPECT_TRUE(force.enabled);
}

// Movers

TEST_F(TriggerHandlersTest, MoversTakeTheStateOfTheirTrigger) {
    Mover mover;
    target(mover);
    const std::pair<TriggerHandler, std::int32_t> states[] = {{trigFuncMoverGotoEnd, 1},
                                                              {trigFuncMoverGotoStart, 2},
                                                              {trigFuncMoverGotoStartLoop, 3},
                                                              {trigFuncMoverGotoEndLoop, 4},
                                                              {trigFuncMoverStop, 0}};
    for (const auto& [handler, state] : states) {
        call(handler);

        EXPECT_EQ(static_cast<std::int32_t>(mover.state), state);
    }
}

TEST_F(TriggerHandlersTest, RemovingLeavesMoversAsTheyAre) {
    Mover mover;
    mover.state = MoverToEnd;
    target(mover);

    call(trigFuncEntityRemove);

    EXPECT_EQ(mover.state, MoverToEnd);
}

// Emitters

TEST_F(TriggerHandlersTest, EmittersBurstStartAndStop) {
    FxParticleEmitter emitter;
    emitter.burstSize = 5;
    emitter.active = false;
    emitter.addTexture("gfx\\none.tga");
    target(emitter);

    call(trigFuncEmitterCreateBurst);
    const std::size_t burst = FxParticleManager::particles.size();
    const bool activeAfterBurst = emitter.active;
    call(trigFuncEmitterStart);
    const bool started = emitter.active;
    call(trigFuncEmitterStop);

    EXPECT_EQ(burst, 5u);
    EXPECT_FALSE(activeAfterBurst);
    EXPECT_TRUE(started);
    EXPECT_FALSE(emitter.active);
    FxParticleManager::particles.clear(); // before their emitter goes
}

TEST_F(TriggerHandlersTest, AHandlerActsOnlyOnTheKindsThatItKnows) {
    LevelObject object;
    Force force;
    FxParticleEmitter emitter;
    target(object);
    target(force);
    target(emitter);

    call(trigFuncEmitterStop);
    call(trigFuncAnimPlayLoop);

    EXPECT_FALSE(emitter.active);
    EXPECT_FALSE(object.paused);
    EXPECT_TRUE(object.enabled);
    EXPECT_TRUE(force.enabled);
}

// The camera

TEST_F(TriggerHandlersTest, TheCameraZoomsOutAndShakes) {
    Camera::setState(Camera::normal);

    call(trigFuncCameraZoom);
    call(trigFuncCameraShake);
    Camera::doMovements(false, dt); // draws a target for the shake

    EXPECT_EQ(Camera::getState(), Camera::zoomingOut);
    EXPECT_NE(getRandomState(), 0u);
}

// Kills

TEST_F(TriggerHandlersTest, AKillStartsTheFadeOfParticleAndGroup) {
    call(trigFuncParticleKill, particle);
    call(trigFuncParticleKill, group);
    call(trigFuncParticleKill);

    EXPECT_TRUE(particle.dying);
    EXPECT_EQ(particle.killTimer, 0.5f);
    EXPECT_TRUE(group.dying);
    EXPECT_EQ(group.killTimer, 0.5f);
}

TEST_F(TriggerHandlersTest, ARandomKillTakesAboutHalfOfThemInASecond) {
    constexpr int trials = 20000;
    constexpr float shortTick = 0.01f;
    seedRandom(11);
    int killed = 0;
    for (int trial = 0; trial < trials; ++trial) {
        Particle victim;

        trigFuncParticleKillRandom(&trigger, &victim, BodyKind::particle, shortTick);

        killed += victim.dying ? 1 : 0;
    }

    EXPECT_NEAR(killed, 100, 40); // a chance of 0.005 each: four standard deviations
}

TEST_F(TriggerHandlersTest, ARandomKillDrawsOnceForABodyAndNeverForAnotherKind) {
    seedRandom(5);
    randomFloat();
    const std::uint32_t afterOne = getRandomState();
    seedRandom(5);

    trigFuncParticleKillRandom(&trigger, &particle, static_cast<BodyKind>(2), 100.0f);
    const std::uint32_t afterOther = getRandomState();
    trigFuncParticleKillRandom(&trigger, &group, BodyKind::group, 100.0f);

    EXPECT_EQ(afterOther, 5u);
    EXPECT_EQ(getRandomState(), afterOne);
    EXPECT_TRUE(group.dying);
    EXPECT_FALSE(particle.dying);
}

TEST_F(TriggerHandlersTest, TheNullHandlerDoesNothing) {
    call(trigFuncNull);
    call(trigFuncNull, particle);

    EXPECT_EQ(particle.velocity, (Vector2{}));
    EXPECT_EQ(getRandomState(), 0u);
}

} // namespace tarnwick
