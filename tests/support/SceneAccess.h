#pragma once

#include "core/Vector2.h"

#include <initializer_list>

namespace tarnwick {

/// Configuration of the water as it stands after the clamps; the values are those of a quiet scene.
struct SceneSettings {
    float gravity = 710.0f;
    float roomTemperature = 20.0f;
    float heatTransferRate = 0.05f;
    float steamRiseRate = 0.6f;
    float steamScatterRate = 1.5f;
    float particleKillTime = 0.5f;
    float particleGroupInterpolation = 0.1f;
    float groupExpandSpeed = 0.1f;
    float iceGravityStrenght = 0.8f;
};

/// Puts a scene together without files: for tests and benchmarks, which set what the game would read or reach
/// only in the course of play.
class SceneAccess {
public:
    static void configure(const SceneSettings& settings);
    /// World units, units, degrees, factor.
    static void placeCamera(Vector2 position, Vector2 shakeOffset, float angle, float zoom);
    /// One polygon of the level more, counter-clockwise as the level draws it. `buildTree` makes it solid.
    static void addPolygon(std::initializer_list<Vector2> outline, float friction);
    static void buildTree();
    /// A floor from `left` to `right` with its top at y = `floor`, and walls of `height` on both sides.
    static void buildBasin(float left, float right, float floor, float height);
    /// Two slopes that meet at (0, `bottom`), each `width` wide and rising by `slope` units a unit.
    static void buildBowl(float width, float bottom, float slope);
    static float simulationDecay();
    /// Of the settings that ice has; the others are those of a new `SceneSettings`.
    static SceneSettings iceSettings();
};

} // namespace tarnwick
