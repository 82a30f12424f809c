#pragma once

#include "core/Vector2.h"

#include <cstdint>

namespace tarnwick {

/// What a mover does; triggers write it. With any other number the mover stands still.
enum class MoverState : std::int32_t {
    MoverIdle = 0,        ///< Stands still where it is.
    MoverToEnd = 1,       ///< Runs towards the end, then turns idle.
    MoverToStart = 2,     ///< Runs towards the start, then turns idle.
    MoverLoopToStart = 3, ///< Runs towards the start, then turns to `MoverLoopToEnd`.
    MoverLoopToEnd = 4,   ///< Runs towards the end, then turns to `MoverLoopToStart`.
};
using enum MoverState;

/// A straight track between two points along which something travels at a fixed speed. What travels is told
/// by the id: polygons and objects of the same id are displaced by `direction` times `position`.
struct Mover {
    std::int32_t id = 0;   ///< Of the level file; not unique, and no value is special.
    Vector2 startPoint;    ///< World units.
    Vector2 endPoint;      ///< World units.
    Vector2 direction;     ///< Unit vector from start to end; (0, 0) for a track of no length.
    float length = 0.0f;   ///< World units from start to end.
    float speed = 0.0f;    ///< World units per second, as the level file has it.
    float position = 0.0f; ///< World units from the start along the track, 0 to `length`.
    MoverState state = MoverIdle;

    /// Back to the start of the track, idle.
    void reset();
    /// Both measure the track anew.
    void setStartPoint(Vector2 point);
    void setStartPoint(float x, float y) { setStartPoint({x, y}); }
    void setEndPoint(Vector2 point);
    void setEndPoint(float x, float y) { setEndPoint({x, y}); }

    /// One tick of `dt` seconds; a shorter one than a ten millionth counts as that. What is left of the way
    /// at an end is dropped. To land exactly on an end is not to pass it: the mover turns a tick later.
    void run(float dt);

private:
    void measure();
};

} // namespace tarnwick
