#pragma once

#include "core/Box.h"
#include "core/Vector2.h"
#include "mechanisms/TriggerHandlers.h"

#include <cstdint>
#include <span>

namespace tarnwick {

/// A row of the table of trigger types.
struct TriggerType {
    const char* name = "Null Trigger";     ///< Constant text.
    TriggerHandler handler = trigFuncNull; ///< What the trigger does.
    float cooldown = 0.0f;                 ///< Seconds of rest after firing; 0 in every row of the table.
    std::uint32_t maxFires = 0;            ///< Fires between two resets; 0: without limit.
};

/// An entity of the level that a trigger acts on.
struct TriggerTarget {
    /// There is no 2, and sound sources are no targets: they are found by the trigger's target id when they
    /// are played.
    enum class Kind : std::int32_t {
        polygon = 0, ///< `Polygon2D` of the level.
        object = 1,  ///< `LevelObject`.
        force = 3,   ///< `Force`.
        mover = 4,   ///< `Mover`.
        emitter = 5, ///< `FxParticleEmitter`.
    };

    void* entity = nullptr; ///< Not owned; stays where it is for as long as the trigger lives.
    Kind kind = Kind::polygon;
};

/// A four-cornered region of the level that does something when water enters it. Its type decides what, its
/// target id to which entities.
///
/// The region is two triangles over the diagonal between the first and the third corner, each with its
/// corners counter-clockwise, so that the normals point inward. Edges run from corner 0 to 1, 1 to 2 and 2 to
/// 0; one of no length has direction and normal 0, and so refuses no point.
struct Trigger {
    Vector2 triangleA[3]; ///< World units: corners 1, 2 and 3.
    Vector2 normalsA[3];  ///< Unit.
    Vector2 edgesA[3];    ///< Unit.
    float lengthsA[3] = {};
    Vector2 triangleB[3]; ///< Corners 3, 4 and 1.
    Vector2 normalsB[3];
    Vector2 edgesB[3];
    float lengthsB[3] = {};
    float minX = 0.0f; ///< The sides of `box`, each by its name.
    float maxX = 0.0f;
    float minY = 0.0f;
    float maxY = 0.0f;
    Box reach;                   ///< No finite point outside it is inside the region; see `LiveTriggers`.
    std::uint32_t typeId = 0;    ///< As given when it was made, also if no row has it.
    std::int32_t targetId = 0;   ///< 0: no targets.
    TriggerType* type = nullptr; ///< In the table; never null once the trigger is made.
    /// Found once, when the trigger was made. Shared with other triggers; kept by `TriggerManager`.
    std::span<const TriggerTarget> targets;
    float cooldownLeft = 0.0f;   ///< Seconds of rest left.
    float delay = 0.0f;          ///< Seconds between firing and the handler's call; 0 or less: at once.
    std::uint32_t fireCount = 0; ///< Fires since the last reset.

    /// Around the four corners.
    Box box() const { return {minX, minY, maxX, maxY}; }
    /// Whether it has fired as often as its type lets it.
    bool spent() const { return type->maxFires != 0 && fireCount >= type->maxFires; }
};

/// A handler's call that waits for the delay of its trigger.
struct DelayedTriggerEvent {
    TriggerHandler handler = nullptr;
    Trigger* trigger = nullptr; ///< Not owned; events go before their triggers do.
    float dt = 0.0f;            ///< Seconds: length of the tick in which the trigger fired.
    float timeLeft = 0.0f;      ///< Seconds.
};

} // namespace tarnwick
