#include "graphics/PolygonQueue.h"

#include "core/LocationStack.h"
#include "level/Polygon2D.h"

#include <algorithm>

namespace tarnwick {

/// The order of the heap: whether `a` is drawn after `b`.
bool PolygonQueue::comesLater(const Entry& a, const Entry& b) {
    TARNWICK_LOCATION("PolygonQueue::comesLater");
    if (*a.polygon != *b.polygon) {
        return *a.polygon > *b.polygon;
    }
    return a.turn > b.turn;
}

void PolygonQueue::push(const Polygon2D& polygon) {
    TARNWICK_LOCATION("PolygonQueue::push");
    waiting.push_back({&polygon, pushed});
    ++pushed;
    std::push_heap(waiting.begin(), waiting.end(), comesLater);
}

void PolygonQueue::pop() {
    TARNWICK_LOCATION("PolygonQueue::pop");
    std::pop_heap(waiting.begin(), waiting.end(), comesLater);
    waiting.pop_back();
    if (waiting.empty()) {
        pushed = 0;
    }
}

} // namespace tarnwick
