#include "level/OutlineIndex.h"

#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/LongWork.h"

#include <cmath>

namespace tarnwick {

namespace {

constexpr std::size_t shortestIndexed = 16; ///< Edges: below this, looking at all of them is as fast.

bool isWhole(float coordinate) {
    TARNWICK_LOCATION("OutlineIndex::isWhole");
    return std::abs(coordinate) <= OutlineIndex::largestExact && std::trunc(coordinate) == coordinate;
}

bool isWhole(Vector2 point) {
    TARNWICK_LOCATION("OutlineIndex::isWhole");
    return isWhole(point.x) && isWhole(point.y);
}

} // namespace

OutlineIndex::OutlineIndex(const std::vector<Polygon2D::Edge>& edges)
    : chain(edges) {
    TARNWICK_LOCATION("OutlineIndex::OutlineIndex");
    if (chain.size() < shortestIndexed) {
        return;
    }
    exact = std::all_of(chain.begin(), chain.end(),
                        [](const Polygon2D::Edge& edge) { return isWhole(edge.start) && isWhole(edge.end); });
    if (exact) {
        for (const Polygon2D::Edge& edge : chain) {
            row.append(Box::around(edge.start, edge.end));
        }
    }
}

/// False proves that `segmentsCross` says no, in either order of the two.
///
/// With whole coordinates up to `largestExact` every cross product there is a whole number below 2^53 and so
/// exact. The point of intersection and the parameter are each off by one rounding, a relative 2^-53; for the
/// parameter to come out within 0 to 1 the point must lie within 2^-30 units of the segment, and so of its
/// box, for both segments. Boxes with whole corners that do not touch are a whole unit apart.
bool OutlineIndex::mayCross(const Polygon2D::Edge& edge, const Polygon2D::Edge& other) const {
    TARNWICK_LOCATION("OutlineIndex::mayCross");
    return !exact || Box::around(edge.start, edge.end).touches(Box::around(other.start, other.end));
}

/// The first edge at or behind `index` whose block touches `box`.
std::size_t OutlineIndex::nextNear(std::size_t index, const Box& box) const {
    TARNWICK_LOCATION("OutlineIndex::nextNear");
    if (row.size() == 0) {
        return index;
    }
    return row.next(index, [&box](const Box& block, std::size_t) { return block.touches(box); });
}

bool OutlineIndex::crosses(const Polygon2D::Edge& edge) const {
    TARNWICK_LOCATION("OutlineIndex::crosses");
    const Box box = Box::around(edge.start, edge.end);
    for (std::size_t i = nextNear(0, box); i < chain.size(); i = nextNear(i + 1, box)) {
        const Polygon2D::Edge& other = chain[i];
        if (mayCross(edge, other) && segmentsCross(edge.start, edge.end, other.start, other.end)) {
            return true;
        }
    }
    return segmentsCross(edge.start, edge.end, chain.back().end, chain.front().start);
}

bool OutlineIndex::covers(const float* triangle) const {
    TARNWICK_LOCATION("OutlineIndex::covers");
    const Vector2 a{triangle[0], triangle[1]};
    const Vector2 b{triangle[2], triangle[3]};
    const Vector2 c{triangle[4], triangle[5]};
    const auto coversPoint = [&](Vector2 point) {
        return !(point == a || point == b || point == c) && pointInConvexPolygon(point, triangle, 3);
    };
    // The largest value that the test of `pointInConvexPolygon` takes in a box, for the side from p to q: a
    // point with a negative one is outside. Every float operation rounds monotonically, so the test as a
    // whole, rounding included, only grows or only falls along either axis, and one corner of the box has its
    // largest value.
    const auto largestIn = [](const Box& box, Vector2 p, Vector2 q) {
        const float dx = q.x - p.x;
        const float dy = q.y - p.y;
        return dx * ((dx >= 0.0f ? box.maxY : box.minY) - p.y) -
               dy * ((dy >= 0.0f ? box.minX : box.maxX) - p.x);
    };
    const auto mayHoldPoint = [&](const Box& box, std::size_t) {
        return largestIn(box, a, b) >= 0.0f && largestIn(box, b, c) >= 0.0f && largestIn(box, c, a) >= 0.0f;
    };
    const auto next = [&](std::size_t index) {
        return row.size() == 0 ? index : row.next(index, mayHoldPoint);
    };
    for (std::size_t i = next(0); i < chain.size(); i = next(i + 1)) {
        if (coversPoint(chain[i].start)) {
            return true;
        }
    }
    return coversPoint(chain.back().end);
}

bool OutlineIndex::crossesItself() const {
    TARNWICK_LOCATION("OutlineIndex::crossesItself");
    return std::any_of(chain.begin(), chain.end(),
                       [this](const Polygon2D::Edge& edge) { return crosses(edge) || !LongWork::goesOn(); });
}

/// The number of edges at the front of the open chain of which none crosses another.
std::size_t OutlineIndex::edgesBeforeFirstCrossing() const {
    TARNWICK_LOCATION("OutlineIndex::edgesBeforeFirstCrossing");
    for (std::size_t last = 1; last < chain.size() && LongWork::goesOn(); ++last) {
        const Polygon2D::Edge& edge = chain[last];
        const Box box = Box::around(edge.start, edge.end);
        for (std::size_t i = nextNear(0, box); i < last; i = nextNear(i + 1, box)) {
            const Polygon2D::Edge& other = chain[i];
            if (mayCross(edge, other) && (segmentsCross(edge.start, edge.end, other.start, other.end) ||
                                          segmentsCross(other.start, other.end, edge.start, edge.end))) {
                return last;
            }
        }
    }
    return chain.size();
}

std::size_t OutlineIndex::longestSimplePrefix() const {
    TARNWICK_LOCATION("OutlineIndex::longestSimplePrefix");
    // Edges of a prefix are edges of every longer one; only the closing edge is its own.
    for (std::size_t edges = std::min(edgesBeforeFirstCrossing(), chain.size() - 1);
         edges >= 2 && LongWork::goesOn(); --edges) {
        const Polygon2D::Edge closing{chain[edges - 1].end, chain.front().start};
        const Box box = Box::around(closing.start, closing.end);
        bool crossed = false;
        for (std::size_t i = nextNear(0, box); i < edges && !crossed; i = nextNear(i + 1, box)) {
            const Polygon2D::Edge& other = chain[i];
            crossed =
                mayCross(other, closing) && segmentsCross(other.start, other.end, closing.start, closing.end);
        }
        if (!crossed) {
            return edges + 1;
        }
    }
    return 0;
}

} // namespace tarnwick
