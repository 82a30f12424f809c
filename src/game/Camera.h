#pragma once

#include "core/Vector2.h"
#include "core/View.h"

#include <cstdint>

namespace tarnwick {

/// More than a view: turning the camera turns the world's down, the player's one control of the water. The
/// camera follows the water by itself, turns within limits, zooms out for an overview, and shakes. The
/// particle grid, the loss of particles and the view rectangle depend on its position, shake offset, angle
/// and zoom.
class Camera {
public:
    Camera() = delete;

    enum class Course : std::int32_t {
        movingToWaypoint = 0, ///< Flies to the water; simulation and timer are held.
        normal = 1,
        zoomingOut = 2,
        holdingZoom = 3,
        zoomingIn = 4,
    };
    using enum Course;

    /// Reads `cfg\camera.cfg` and puts everything at its start: zoom 1, position (-1000, 0), state 0.
    static void initialise();

    /// Sets one of the five states from any other; ignores all other numbers.
    static void setState(Course newState);
    static void setState(std::int32_t newState) { setState(static_cast<Course>(newState)); }
    static Course getState() { return state.cameraState; }
    static bool movingTowardsWaypoint();
    /// Starts or prolongs the overview: from state 1 or 4 to 2, in state 3 the wait starts again.
    static void zoomOut();
    /// Starts a shake, or prolongs the one that is on.
    static void shake();

    /// One camera step of `dt` seconds; called once a tick unless a menu is up. Draws random numbers for new
    /// shake targets only.
    static void doMovements(bool turningEnabled, float dt);

    /// Sets the GL's modelview to the world as the camera sees it, in client pixels.
    static void viewFrom();

    /// World units, without the shake.
    static Vector2 position() { return {state.cameraX, state.cameraY}; }
    static void setPosition(Vector2 place);
    /// World units, added to the position in all view calculations.
    static Vector2 shakeOffset() { return {state.shakeOffsetX, state.shakeOffsetY}; }
    /// Degrees; 0 at level start.
    static float angle() { return state.cameraAngle; }
    /// 1 is normal, larger shows more: the view's world size is multiplied by it.
    static float zoom() { return state.cameraZoom; }
    /// What is seen at this moment, with the view area of the window: what the simulation, the sounds and the
    /// drawing take.
    static View view();

    /// What of the module a `Snapshot` holds; nobody else looks inside.
    class Moment;
    static void keep(Moment& moment);
    static void putBack(const Moment& moment);

private:
    friend class ModuleReset;
    friend class SimulationState;
    friend class CameraTest;
    friend class CameraViewTest;
    friend class SceneAccess;

    struct State {
        Course cameraState = movingToWaypoint;
        float cameraX = 0.0f; ///< World units.
        float cameraY = 0.0f;
        float cameraAngle = 0.0f;     ///< Degrees.
        float cameraTurnSpeed = 0.0f; ///< Degrees per second, smoothed.
        float cameraZoom = 1.0f;
        float shakeOffsetX = 0.0f; ///< World units.
        float shakeOffsetY = 0.0f;
        float shakeTargetX = 0.0f; ///< Point toward which the offset runs.
        float shakeTargetY = 0.0f;
        bool shaking = false;          ///< A shake is on.
        float shakeTimeLeft = 0.0f;    ///< Seconds.
        float zoomTimeLeft = 0.0f;     ///< Seconds of waiting at full zoom.
        float waypointTimeLeft = 0.0f; ///< Takes "waypointWaitTime" at each state change; nothing reads it.
        std::int32_t lastMouseX = 0;   ///< Screen pixels, at the end of the last step.
        std::int32_t lastMouseY = 0;

        float rotationSmooth = 0.0f;           ///< Share of the old turning rate left after 1 s, 0 to 1.
        float movementInterpolateSpeed = 0.0f; ///< Share of the distance to the water left after 1 s, 0 to 1.
        float maxAngle = 0.0f;                 ///< Degrees on either side, at most 180.
        float keyboardTurnSpeed = 0.0f;        ///< Degrees per second.
        float mouseTurnSpeed = 0.0f;           ///< Degrees per second per pixel.
        float zoomSpeed = 0.0f;                ///< Zoom units per second.
        float zoomWait = 0.0f;                 ///< Seconds held at full zoom.
        /// Share of the distance left after 1 s in state 0, 0 to 0.99.
        float waypointInterpolateSpeed = 0.0f;
        float waypointInterpolateDistance = 0.0f; ///< Arrival distance, world units.
        float waypointWaitTime = 0.0f;            ///< Seconds; without effect.
        float shakeTime = 0.0f;                   ///< Seconds.
        float shakeStrenght = 0.0f;               ///< Distance of shake targets from rest, world units.
        float shakeSpeed = 0.0f;                  ///< World units per second.
    };
    static State state;

    static void doMovement(float dt);
    static void moveToWaypoint(Vector2 waypoint, float dt);
    static void moveToWaypoint(float x, float y, float dt) { moveToWaypoint({x, y}, dt); }
    static void followTarget(Vector2 target, float kept);
    static void setShakeOffset(Vector2 offset);
    static void doZooming(float dt);
    static void doShaking(float dt);
    static void doTurning(float dt);
    static void pickShakeTarget();
    static void readConfiguration();
    static void rememberMouse();
};

class Camera::Moment {
    friend class Camera;
    State state;
};

} // namespace tarnwick
