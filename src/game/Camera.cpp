#include "game/Camera.h"

#include "core/Comfort.h"
#include "core/ConfigFile.h"
#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/Random.h"
#include "core/ShareLeft.h"
#include "graphics/GLWindow.h"
#include "graphics/GamePad.h"
#include "graphics/KeyBindings.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

constexpr float fullZoom = 2.5f;
constexpr float normalZoom = 1.0f;
constexpr float slowedShare = 0.5f;                   ///< What reduced motion leaves of the speeds.
constexpr float largestAngle = 180.0f;                ///< Degrees.
constexpr float largestWaypointInterpolation = 0.99f; ///< At 1 the camera would never arrive.
constexpr float xBeforeLevel = -1000.0f;              ///< World units, until the level's camera start is set.

/// The middle of all the water, in which what lies near `camera` counts more, so that the view stays with the
/// main body and does not split the difference with stragglers. (0, 0) without water.
Vector2 weightedWaterCentre(Vector2 camera) {
    TARNWICK_LOCATION("Camera::weightedWaterCentre");
    float weight = 0.0f;
    Vector2 sum;
    for (const Particle& particle : ParticleManager::particles) {
        const float w = 1.0f / (distanceBetween(particle.position, camera) + 1.0f);
        weight += w;
        sum += particle.position * w;
    }
    for (const ParticleGroup& group : ParticleGroupMover::groups) {
        const auto memberCount = static_cast<float>(group.members.size());
        const float w = memberCount * 1.0f / (distanceBetween(group.centre, camera) + 1.0f);
        weight += w;
        sum += group.centre * w;
    }
    if (weight == 0.0f) { // exactly: nothing was added
        return {};
    }
    return sum / weight;
}

} // namespace

Camera::State Camera::state;

void Camera::initialise() {
    TARNWICK_LOCATION("Camera::initialise");
    readConfiguration();
    state.cameraZoom = normalZoom;
    state.cameraX = xBeforeLevel;
    state.cameraY = 0.0f;
    state.cameraState = movingToWaypoint;
    state.cameraAngle = 0.0f;
    state.cameraTurnSpeed = 0.0f;
    state.shakeTimeLeft = 0.0f;
    state.zoomTimeLeft = 0.0f;
    state.shakeOffsetX = 0.0f;
    state.shakeOffsetY = 0.0f;
    state.shakeTargetX = 0.0f;
    state.shakeTargetY = 0.0f;
    state.shaking = false;
    state.waypointTimeLeft = state.waypointWaitTime;
    rememberMouse();
}

void Camera::readConfiguration() {
    TARNWICK_LOCATION("Camera::readConfiguration");
    const ConfigFile config("cfg\\camera.cfg");
    state.rotationSmooth = std::clamp(config.getVarAsFloat("rotationSmooth"), 0.0f, 1.0f);
    state.movementInterpolateSpeed = std::clamp(config.getVarAsFloat("movementInterpolateSpeed"), 0.0f, 1.0f);
    state.maxAngle = std::min(std::abs(config.getVarAsFloat("maxAngle")), largestAngle);
    state.keyboardTurnSpeed = std::abs(config.getVarAsFloat("keyboardTurnSpeed"));
    state.mouseTurnSpeed = std::abs(config.getVarAsFloat("mouseTurnSpeed"));
    state.zoomSpeed = std::abs(config.getVarAsFloat("zoomSpeed"));
    state.zoomWait = std::abs(config.getVarAsFloat("zoomWait"));
    state.waypointInterpolateSpeed =
        std::min(std::abs(config.getVarAsFloat("waypointInterpolateSpeed")), largestWaypointInterpolation);
    state.waypointInterpolateDistance = std::abs(config.getVarAsFloat("waypointInterpolateDistance"));
    state.waypointWaitTime = std::abs(config.getVarAsFloat("waypointWaitTime"));
    state.shakeTime = std::abs(config.getVarAsFloat("shakeTime"));
    state.shakeStrenght = std::abs(config.getVarAsFloat("shakeStrenght"));
    state.shakeSpeed = std::abs(config.getVarAsFloat("shakeSpeed"));
    if (Comfort::values().reducedMotion) {
        state.keyboardTurnSpeed *= slowedShare;
        state.mouseTurnSpeed *= slowedShare;
        state.zoomSpeed *= slowedShare;
    }
}

void Camera::setState(Course newState) {
    TARNWICK_LOCATION("Camera::setState");
    if (newState < movingToWaypoint || newState > zoomingIn) {
        return;
    }
    state.cameraState = newState;
    state.waypointTimeLeft = state.waypointWaitTime;
}

bool Camera::movingTowardsWaypoint() {
    TARNWICK_LOCATION("Camera::movingTowardsWaypoint");
    return state.cameraState == movingToWaypoint;
}

void Camera::zoomOut() {
    TARNWICK_LOCATION("Camera::zoomOut");
    if (state.cameraState == holdingZoom) {
        state.zoomTimeLeft = state.zoomWait;
    } else if (state.cameraState == normal || state.cameraState == zoomingIn) {
        setState(zoomingOut);
    }
}

void Camera::shake() {
    TARNWICK_LOCATION("Camera::shake");
    if (Comfort::values().reducedMotion) {
        return;
    }
    state.shakeTimeLeft = state.shakeTime;
    if (!state.shaking) {
        state.shaking = true;
        pickShakeTarget();
    }
}

void Camera::setPosition(Vector2 place) {
    TARNWICK_LOCATION("Camera::setPosition");
    state.cameraX = place.x;
    state.cameraY = place.y;
}

void Camera::doMovements(bool turningEnabled, float dt) {
    TARNWICK_LOCATION("Camera::doMovements");
    doMovement(dt);
    doZooming(dt);
    doShaking(dt);
    if (turningEnabled) {
        doTurning(dt);
    }
    rememberMouse();
}

void Camera::doMovement(float dt) {
    TARNWICK_LOCATION("Camera::doMovement");
    const Vector2 target = weightedWaterCentre(position());
    if (state.cameraState == movingToWaypoint) {
        moveToWaypoint(target, dt);
        return;
    }
    const float kept = shareLeft(state.movementInterpolateSpeed, dt);
    followTarget(target, kept);
}

void Camera::followTarget(Vector2 target, float kept) {
    TARNWICK_LOCATION("Camera::followTarget");
    state.cameraX = state.cameraX * kept + target.x * (1.0f - kept);
    state.cameraY = state.cameraY * kept + target.y * (1.0f - kept);
}

void Camera::moveToWaypoint(Vector2 waypoint, float dt) {
    TARNWICK_LOCATION("Camera::moveToWaypoint");
    const Vector2 before = position();
    followTarget(waypoint, shareLeft(state.waypointInterpolateSpeed, dt));
    if (distanceBetween(before, waypoint) <= state.waypointInterpolateDistance) {
        setState(normal);
    }
}

void Camera::doZooming(float dt) {
    TARNWICK_LOCATION("Camera::doZooming");
    switch (state.cameraState) {
    case zoomingOut:
        state.cameraZoom += dt * state.zoomSpeed;
        if (state.cameraZoom >= fullZoom) {
            state.cameraZoom = fullZoom;
            state.zoomTimeLeft = state.zoomWait;
            setState(holdingZoom);
        }
        break;
    case holdingZoom:
        state.zoomTimeLeft -= dt;
        if (state.zoomTimeLeft <= 0.0f) {
            state.zoomTimeLeft = 0.0f;
            setState(zoomingIn);
        }
        break;
    case zoomingIn:
        state.cameraZoom -= dt * state.zoomSpeed;
        if (state.cameraZoom <= normalZoom) {
            state.cameraZoom = normalZoom;
            setState(normal);
        }
        break;
    default:
        break;
    }
}

void Camera::doShaking(float dt) {
    TARNWICK_LOCATION("Camera::doShaking");
    const float step = dt * state.shakeSpeed;
    if (state.shaking) {
        state.shakeTimeLeft -= dt;
        if (state.shakeTimeLeft <= 0.0f) {
            state.shakeTimeLeft = 0.0f;
            state.shaking = false;
        }
        const Vector2 away = shakeOffset() - Vector2{state.shakeTargetX, state.shakeTargetY};
        const float distance = vectorLength(away);
        if (distance <= step) {
            setShakeOffset({state.shakeTargetX, state.shakeTargetY});
            pickShakeTarget();
        } else {
            setShakeOffset(shakeOffset() - away / distance * step);
        }
        return;
    }
    const float distance = vectorLength(shakeOffset());
    if (distance < step || distance == 0.0f) { // exactly at rest: nothing to do, and no direction to go
        setShakeOffset({});
    } else {
        setShakeOffset(shakeOffset() - shakeOffset() / distance * step);
    }
}

void Camera::setShakeOffset(Vector2 offset) {
    TARNWICK_LOCATION("Camera::setShakeOffset");
    state.shakeOffsetX = offset.x;
    state.shakeOffsetY = offset.y;
}

void Camera::doTurning(float dt) {
    TARNWICK_LOCATION("Camera::doTurning");
    const float kept = shareLeft(state.rotationSmooth, dt);
    float turn = 0.0f;
    if (KeyBindings::isHeld(GameKey::turnLeft)) {
        turn += state.keyboardTurnSpeed;
    }
    if (KeyBindings::isHeld(GameKey::turnRight)) {
        turn -= state.keyboardTurnSpeed;
    }
    if (const float padTurn = GamePad::turn(); padTurn != 0.0f) { // exactly: at rest
        turn -= padTurn * state.keyboardTurnSpeed;
    }
    if (GLWindow::hasFocus() && GLWindow::mouseInClientArea()) {
        const std::int32_t moved = GLWindow::getMouseScreenX() - GLWindow::getClientCenterX();
        turn -= static_cast<float>(moved) * state.mouseTurnSpeed;
        GLWindow::centerMouse(); // the pointer is held in the middle: only movement counts
    }
    state.cameraTurnSpeed = kept * state.cameraTurnSpeed + (1.0f - kept) * turn;
    state.cameraAngle += dt * state.cameraTurnSpeed;
    if (state.cameraAngle < -state.maxAngle || state.cameraAngle > state.maxAngle) {
        state.cameraAngle = std::clamp(state.cameraAngle, -state.maxAngle, state.maxAngle);
        state.cameraTurnSpeed = 0.0f;
    }
}

void Camera::keep(Moment& moment) {
    TARNWICK_LOCATION("Camera::keep");
    moment.state = state;
}

void Camera::putBack(const Moment& moment) {
    TARNWICK_LOCATION("Camera::putBack");
    state = moment.state;
}

void Camera::pickShakeTarget() {
    TARNWICK_LOCATION("Camera::pickShakeTarget");
    Vector2 direction;
    direction.x = randomFloat() - 0.5f;
    direction.y = randomFloat() - 0.5f;
    normaliseVector(direction);
    state.shakeTargetX = direction.x * state.shakeStrenght;
    state.shakeTargetY = direction.y * state.shakeStrenght;
}

void Camera::rememberMouse() {
    TARNWICK_LOCATION("Camera::rememberMouse");
    state.lastMouseX = GLWindow::getMouseScreenX();
    state.lastMouseY = GLWindow::getMouseScreenY();
}

} // namespace tarnwick
