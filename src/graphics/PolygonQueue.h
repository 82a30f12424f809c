#pragma once

#include <cstdint>
#include <vector>

namespace tarnwick {

class Polygon2D;

/// Polygons waiting to be drawn: those with the lowest GL texture name come out first, so that each texture
/// is bound once; among polygons of one texture, the one that was pushed first. Keeps its memory when it
/// empties.
class PolygonQueue {
public:
    void push(const Polygon2D& polygon);
    bool empty() const { return waiting.empty(); }
    /// The polygon to draw next. Not for an empty queue.
    const Polygon2D& top() const { return *waiting.front().polygon; }
    void pop();

private:
    struct Entry {
        const Polygon2D* polygon; ///< Not owned.
        std::uint32_t turn;       ///< How many were pushed before it since the queue was empty.
    };

    static bool comesLater(const Entry& a, const Entry& b);

    std::vector<Entry> waiting; ///< A heap.
    std::uint32_t pushed = 0;   ///< Since the queue was empty.
};

} // namespace tarnwick
