#include "mechanisms/Mover.h"

#include "core/Geometry.h"
#include "core/LocationStack.h"

#include <algorithm>

namespace tarnwick {

namespace {

constexpr float shortestRun = 1e-7f; ///< Seconds: a mover runs at least this long in a tick.

} // namespace

void Mover::reset() {
    TARNWICK_LOCATION("Mover::reset");
    position = 0.0f;
    state = MoverIdle;
}

void Mover::setStartPoint(Vector2 point) {
    TARNWICK_LOCATION("Mover::setStartPoint");
    startPoint = point;
    measure();
}

void Mover::setEndPoint(Vector2 point) {
    TARNWICK_LOCATION("Mover::setEndPoint");
    endPoint = point;
    measure();
}

void Mover::measure() {
    TARNWICK_LOCATION("Mover::measure");
    length = distanceBetween(startPoint, endPoint);
    if (length == 0.0f) { // exactly
        direction = {};
        return;
    }
    direction = endPoint - startPoint;
    normaliseVector(direction);
}

void Mover::run(float dt) {
    TARNWICK_LOCATION("Mover::run");
    const float step = speed * std::max(dt, shortestRun);
    switch (state) {
    case MoverToEnd:
    case MoverLoopToEnd:
        position += step;
        if (position > length) {
            position = length;
            state = state == MoverToEnd ? MoverIdle : MoverLoopToStart;
        }
        break;
    case MoverToStart:
    case MoverLoopToStart:
        position -= step;
        if (position < 0.0f) {
            position = 0.0f;
            state = state == MoverToStart ? MoverIdle : MoverLoopToEnd;
        }
        break;
    default:
        break;
    }
}

} // namespace tarnwick
