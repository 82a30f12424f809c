#include "game/Camera.h"

#include "core/Comfort.h"
#include "core/Geometry.h"
#include "core/Random.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "support/DataFolder.h"
#include "support/Keyboard.h"
#include "support/ModuleTest.h"

#include <cmath>

namespace tarnwick {

namespace {

constexpr float tickLength = 0.013333334f;

} // namespace

/// Works in a data folder of its own, with a camera that turns, zooms and shakes at round speeds.
class CameraTest : public ModuleTest {
protected:
    CameraTest() {
        data.write("cfg/camera.cfg", settings);
        GLWindow::createHeadless(800, 600);
    }

    void initialiseWith(const std::string& moreSettings) {
        data.write("cfg/camera.cfg", settings + moreSettings);
        Camera::initialise();
    }

    static Particle& addWater(float x, float y) {
        Particle& particle = ParticleManager::particles.emplace_front();
        particle.position = {x, y};
        return particle;
    }

    static Camera::State& state() { return Camera::state; }

    /// Later lines win over earlier ones.
    const std::string settings =
        "rotationSmooth = 0\nmovementInterpolateSpeed = 0.25\nmaxAngle = 90\n"
        "keyboardTurnSpeed = 60\nmouseTurnSpeed = 2\nzoomSpeed = 1.5\nzoomWait = 0.5\n"
        "waypointInterpolateSpeed = 0.25\nwaypointInterpolateDistance = 5\n"
        "waypointWaitTime = 3\nshakeTime = 0.5\nshakeStrenght = 10\nshakeSpeed = 100\n";
    DataFolder data;
};

TEST_F(CameraTest, InitialisingPutsEverythingAtItsStart) {
    state().cameraState = Camera::holdingZoom;
    state().cameraX = state().cameraY = state().cameraAngle = state().cameraTurnSpeed = 5.0f;
    state().cameraZoom = 1.25f;
    state().shakeOffsetX = state().shakeOffsetY = 3.0f;
    state().shaking = true;
    state().shakeTimeLeft = state().zoomTimeLeft = 2.0f;

    Camera::initialise();
    Camera::setState(Camera::normal);
    Camera::setPosition({50.0f, 60.0f});
    Camera::zoomOut();
    Camera::shake();
    pressKey(SDL_SCANCODE_LEFT, SDLK_LEFT);
    GLWindow::run();
    Camera::doMovements(true, 0.01f); // turns, zooms and shakes now
    state().zoomTimeLeft = 0.25f;
    state().waypointTimeLeft = 0.0f;
    moveMouse(123, 456);
    GLWindow::run();
    ASSERT_NE(Camera::shakeOffset(), Vector2{});
    ASSERT_NE(Camera::zoom(), 1.0f);
    ASSERT_NE(state().cameraTurnSpeed, 0.0f);

    Camera::initialise();

    EXPECT_EQ(Camera::position(), (Vector2{-1000.0f, 0.0f}));
    EXPECT_EQ(Camera::zoom(), 1.0f);
    EXPECT_EQ(Camera::angle(), 0.0f);
    EXPECT_EQ(state().cameraTurnSpeed, 0.0f);
    EXPECT_EQ(Camera::shakeOffset(), Vector2{});
    EXPECT_FALSE(state().shaking);
    EXPECT_TRUE(Camera::movingTowardsWaypoint());
    EXPECT_EQ(Camera::shakeOffset(), Vector2{});
    EXPECT_EQ(state().shakeTargetX, 0.0f);
    EXPECT_EQ(state().shakeTargetY, 0.0f);
    EXPECT_FALSE(state().shaking);
    EXPECT_EQ(state().shakeTimeLeft, 0.0f);
    EXPECT_EQ(state().zoomTimeLeft, 0.0f);
    EXPECT_EQ(state().cameraTurnSpeed, 0.0f);
    EXPECT_EQ(state().waypointTimeLeft, 3.0f);
    EXPECT_EQ(state().lastMouseX, 123);
    EXPECT_EQ(state().lastMouseY, 456);
}

TEST_F(CameraTest, SettingsAreClamped) {
    initialiseWith("maxAngle = -200\nwaypointInterpolateSpeed = 1.0\nrotationSmooth = 1.5\n"
                   "movementInterpolateSpeed = -1\nkeyboardTurnSpeed = -60\nshakeStrenght = -10\n");

    EXPECT_EQ(state().maxAngle, 180.0f);
    EXPECT_EQ(state().waypointInterpolateSpeed, 0.99f); // at 1 the camera would never arrive
    EXPECT_EQ(state().rotationSmooth, 1.0f);
    EXPECT_EQ(state().movementInterpolateSpeed, 0.0f);
    EXPECT_EQ(state().keyboardTurnSpeed, 60.0f);
    EXPECT_EQ(state().shakeStrenght, 10.0f);
}

TEST_F(CameraTest, AStateBeyondTheFiveIsIgnored) {
    Camera::initialise();
    state().waypointTimeLeft = 0.0f;

    Camera::setState(7);
    Camera::setState(-1);

    EXPECT_EQ(Camera::getState(), Camera::movingToWaypoint);
    EXPECT_EQ(state().waypointTimeLeft, 0.0f);
}

TEST_F(CameraTest, ItFliesToTheWaterAndArrives) {
    Camera::initialise();
    Camera::setPosition({0.0f, 0.0f});
    addWater(100.0f, 0.0f);

    Camera::doMovements(false, 1.0f);
    const Vector2 afterOneSecond = Camera::position();
    Camera::setPosition({95.5f, 0.0f}); // the distance from the old position counts, and 5 is near enough
    Camera::doMovements(false, tickLength);

    EXPECT_EQ(afterOneSecond, (Vector2{75.0f, 0.0f})); // a quarter of the way is left after a second
    EXPECT_EQ(Camera::getState(), Camera::normal);
}

TEST_F(CameraTest, JustBeyondTheArrivalDistanceItFliesOn) {
    Camera::initialise();
    Camera::setPosition({94.5f, 0.0f});
    addWater(100.0f, 0.0f);

    Camera::doMovements(false, 1.0f);

    EXPECT_EQ(Camera::getState(), Camera::movingToWaypoint);
}

TEST_F(CameraTest, NearWaterCountsMoreThanFarWater) {
    initialiseWith("movementInterpolateSpeed = 0\n");
    Camera::setState(Camera::normal);
    Camera::setPosition({0.0f, 0.0f});
    addWater(9.0f, 0.0f);   // weight 1 / 10
    addWater(-99.0f, 0.0f); // weight 1 / 100

    Camera::doMovements(false, 1.0f);

    const float near = 1.0f / 10.0f;
    const float far = 1.0f / 100.0f;
    EXPECT_EQ(Camera::position().x, (-99.0f * far + 9.0f * near) / (far + near)); // newest first
}

TEST_F(CameraTest, AGroupCountsWithAllItsMembers) {
    initialiseWith("movementInterpolateSpeed = 0\n");
    Camera::setState(Camera::normal);
    Camera::setPosition({0.0f, 0.0f});
    addWater(-9.0f, 0.0f);
    ParticleGroup& group = ParticleGroupMover::groups.emplace_front();
    group.centre = {9.0f, 0.0f};
    group.members.resize(3);

    Camera::doMovements(false, 1.0f);

    const float one = 1.0f / 10.0f;
    const float three = 3.0f * 1.0f / 10.0f;
    EXPECT_EQ(Camera::position().x, (-9.0f * one + 9.0f * three) / (one + three));
}

TEST_F(CameraTest, WithoutWaterItGoesToTheMiddleOfTheWorld) {
    initialiseWith("movementInterpolateSpeed = 0\n");
    Camera::setState(Camera::normal);
    Camera::setPosition({50.0f, -20.0f});

    Camera::doMovements(false, 1.0f);

    EXPECT_EQ(Camera::position(), (Vector2{0.0f, 0.0f}));
}

TEST_F(CameraTest, ZoomingGoesOutHoldsAndComesBack) {
    Camera::initialise();
    Camera::setState(Camera::normal);

    Camera::zoomOut();
    Camera::doMovements(false, 1.0f); // 1 + 1.5 is full zoom
    const Camera::Course held = Camera::getState();
    const float zoomHeld = Camera::zoom();
    Camera::doMovements(false, 0.5f); // the wait
    const Camera::Course comingBack = Camera::getState();
    Camera::doMovements(false, 1.0f);

    EXPECT_EQ(held, Camera::holdingZoom);
    EXPECT_EQ(zoomHeld, 2.5f);
    EXPECT_EQ(comingBack, Camera::zoomingIn);
    EXPECT_EQ(Camera::getState(), Camera::normal);
    EXPECT_EQ(Camera::zoom(), 1.0f);
}

TEST_F(CameraTest, AZoomRequestWhileZoomingOutDoesNothing) {
    Camera::initialise();
    Camera::setState(Camera::normal);
    Camera::zoomOut();
    Camera::doMovements(false, 0.2f);
    const float zoomBefore = Camera::zoom();

    Camera::zoomOut();

    EXPECT_EQ(Camera::getState(), Camera::zoomingOut);
    EXPECT_EQ(Camera::zoom(), zoomBefore);
}

TEST_F(CameraTest, AZoomRequestWhileHoldingProlongsTheWait) {
    Camera::initialise();
    Camera::setState(Camera::holdingZoom);
    state().zoomTimeLeft = 0.1f;

    Camera::zoomOut();

    EXPECT_EQ(Camera::getState(), Camera::holdingZoom);
    EXPECT_EQ(state().zoomTimeLeft, 0.5f);
}

TEST_F(CameraTest, AZoomRequestWhileZoomingInTurnsItRoundWhereItIs) {
    Camera::initialise();
    Camera::setState(Camera::zoomingIn);
    state().cameraZoom = 1.75f;

    Camera::zoomOut();
    Camera::doMovements(false, 0.1f);

    EXPECT_EQ(Camera::getState(), Camera::zoomingOut);
    EXPECT_EQ(Camera::zoom(), 1.75f + 0.1f * 1.5f);
}

TEST_F(CameraTest, AZoomRequestDuringTheFlightDoesNothing) {
    Camera::initialise();

    Camera::zoomOut();

    EXPECT_TRUE(Camera::movingTowardsWaypoint());
}

TEST_F(CameraTest, ArrowKeysTurnAndReleasingThemStops) {
    Camera::initialise(); // rotationSmooth 0: the turning rate follows at once
    pressKey(SDL_SCANCODE_LEFT, SDLK_LEFT);
    GLWindow::run();

    Camera::doMovements(true, 0.5f);
    const float turned = Camera::angle();
    releaseKey(SDL_SCANCODE_LEFT, SDLK_LEFT);
    GLWindow::run();
    Camera::doMovements(true, 0.5f);

    EXPECT_EQ(turned, 30.0f);
    EXPECT_EQ(Camera::angle(), 30.0f);
}

TEST_F(CameraTest, BothArrowKeysCancelOut) {
    Camera::initialise();
    pressKey(SDL_SCANCODE_LEFT, SDLK_LEFT);
    pressKey(SDL_SCANCODE_RIGHT, SDLK_RIGHT);
    GLWindow::run();

    Camera::doMovements(true, 0.5f);

    EXPECT_EQ(Camera::angle(), 0.0f);
}

TEST_F(CameraTest, TheTurningRateIsSmoothed) {
    initialiseWith("rotationSmooth = 0.25\n");
    pressKey(SDL_SCANCODE_RIGHT, SDLK_RIGHT);
    GLWindow::run();

    Camera::doMovements(true, 1.0f);

    EXPECT_EQ(state().cameraTurnSpeed, 0.25f * 0.0f + 0.75f * -60.0f);
}

TEST_F(CameraTest, AtTheLimitTheTurningRateDropsToZero) {
    Camera::initialise();
    pressKey(SDL_SCANCODE_RIGHT, SDLK_RIGHT);
    GLWindow::run();

    Camera::doMovements(true, 2.0f);

    EXPECT_EQ(Camera::angle(), -90.0f);
    EXPECT_EQ(state().cameraTurnSpeed, 0.0f);
}

TEST_F(CameraTest, WithTurningDisabledItStillFollowsTheWater) {
    initialiseWith("movementInterpolateSpeed = 0\n");
    Camera::setState(Camera::normal);
    addWater(10.0f, 0.0f);
    pressKey(SDL_SCANCODE_LEFT, SDLK_LEFT);
    GLWindow::run();

    Camera::doMovements(false, 1.0f);

    EXPECT_EQ(Camera::angle(), 0.0f);
    EXPECT_EQ(Camera::position(), (Vector2{10.0f, 0.0f}));
}

TEST_F(CameraTest, OnlyMouseMovementTurnsAndThePointerIsHeldInTheMiddle) {
    Camera::initialise();
    sendWindowEvent(SDL_WINDOWEVENT_FOCUS_GAINED);
    moveMouse(GLWindow::getClientCenterX() + 10, 300);
    GLWindow::run();

    Camera::doMovements(true, 0.5f);
    const float turned = Camera::angle();
    Camera::doMovements(true, 0.5f);

    EXPECT_EQ(turned, -10.0f); // 10 pixels at 2 degrees per second each, half a second
    EXPECT_EQ(Camera::angle(), -10.0f);
}

TEST_F(CameraTest, WithoutTheFocusTheMouseDoesNothing) {
    Camera::initialise();
    moveMouse(700, 300);
    GLWindow::run();

    Camera::doMovements(true, 0.5f);

    EXPECT_EQ(Camera::angle(), 0.0f);
    EXPECT_EQ(GLWindow::getMouseScreenX(), 700);
}

TEST_F(CameraTest, AShakeRunsToTargetsOnACircleAndComesHomeAfterwards) {
    initialiseWith("movementInterpolateSpeed = 1\n");
    Camera::shake();
    float farthest = 0.0f;
    for (int i = 0; i < 40; ++i) { // longer than the half second of the shake
        Camera::doMovements(false, tickLength);
        farthest = std::max(farthest, vectorLength(Camera::shakeOffset()));
    }
    const bool shakingAfter = state().shaking;
    for (int i = 0; i < 20; ++i) {
        Camera::doMovements(false, tickLength);
    }

    constexpr float rounding = 0.001f; // the targets are unit vectors times 10
    EXPECT_GT(farthest, 1.0f);
    EXPECT_LE(farthest, 10.0f + rounding);
    EXPECT_FALSE(shakingAfter);
    EXPECT_EQ(Camera::shakeOffset(), (Vector2{0.0f, 0.0f}));
}

TEST_F(CameraTest, AShakeThatIsOnIsProlongedWithoutANewTarget) {
    Camera::initialise();
    Camera::shake();
    const std::uint32_t randomBefore = getRandomState();
    state().shakeTimeLeft = 0.1f;

    Camera::shake();

    EXPECT_EQ(state().shakeTimeLeft, 0.5f);
    EXPECT_EQ(getRandomState(), randomBefore);
}

TEST_F(CameraTest, AtRestWithoutAShakeTheOffsetStays) {
    initialiseWith("shakeSpeed = 0\n");

    Camera::doMovements(false, tickLength);

    EXPECT_EQ(Camera::shakeOffset(), (Vector2{0.0f, 0.0f})); // no direction from a length of zero
}

/// Finds a view that shakes or turns at full speed for a player who cannot bear it.
TEST_F(CameraTest, ReducedMotionShakesNothingAndHalvesTheSpeeds) {
    data.write("cfg/comfort.cfg", "reducedMotion = TRUE");
    Comfort::initialise();
    Camera::initialise();

    Camera::shake();
    Camera::setState(Camera::normal);
    Camera::zoomOut();
    Camera::doMovements(true, 0.1f);

    EXPECT_EQ(Camera::shakeOffset(), Vector2{});
    EXPECT_EQ(Camera::zoom(), 1.0f + 0.1f * (1.5f * 0.5f));
    EXPECT_EQ(state().keyboardTurnSpeed, 30.0f);
    EXPECT_EQ(state().mouseTurnSpeed, 1.0f);
}

} // namespace tarnwick
