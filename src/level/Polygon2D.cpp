#include "level/Polygon2D.h"

#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/LongWork.h"
#include "level/OutlineIndex.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

/// Dot product of two unit directions from which on they count as one direction.
constexpr float sameDirection = 0.9999f;

Vector2 unitDirection(const Polygon2D::Edge& edge) {
    TARNWICK_LOCATION("Polygon2D::unitDirection");
    Vector2 direction = edge.end - edge.start;
    normaliseVector(direction);
    return direction;
}

/// The sides of an outline from its first point to its last, without the closing one.
std::vector<Polygon2D::Edge> openChain(const std::vector<float>& pointsX, const std::vector<float>& pointsY) {
    TARNWICK_LOCATION("Polygon2D::openChain");
    std::vector<Polygon2D::Edge> edges;
    edges.reserve(pointsX.size());
    for (std::size_t i = 0; i + 1 < pointsX.size(); ++i) {
        edges.push_back({{pointsX[i], pointsY[i]}, {pointsX[i + 1], pointsY[i + 1]}});
    }
    return edges;
}

/// Cuts ears off a shrinking chain of edges.
///
/// An ear is two edges of the chain, one behind the other; whether they are one depends on these two and on
/// the reference outline alone, which never changes. So a pair that failed once fails for good, and a scan
/// from the front finds its ear at the first pair that was not tested yet: behind a cut these are the pair of
/// the edge before and the new one, and what follows. No pair is tested twice, and the ears are those of a
/// scan that starts from the front every time.
class EarClipper {
public:
    EarClipper(const std::vector<Polygon2D::Edge>& edges, bool counterClockwise)
        : reference(edges)
        , chain(edges)
        , winding(counterClockwise)
        , next(edges.size())
        , previous(edges.size()) {
        TARNWICK_LOCATION("EarClipper::EarClipper");
        for (std::size_t i = 0; i < edges.size(); ++i) {
            next[i] = i + 1;
            previous[i] = i == 0 ? none : i - 1;
        }
        next.back() = none;
    }

    /// Writes the corners of all triangles, one less than edges, in the order in which they are cut. False
    /// when some part of the chain has no ear; what was written is then worth nothing.
    bool clip(std::vector<float>& trianglesX, std::vector<float>& trianglesY) {
        TARNWICK_LOCATION("EarClipper::clip");
        std::size_t e1 = 0;
        while (next[e1] != none) {
            if (!LongWork::goesOn()) {
                return false;
            }
            const std::size_t e2 = next[e1];
            if (isEar(chain[e1], chain[e2])) {
                store(trianglesX, trianglesY, chain[e1], chain[e2]);
                chain[e1].end = chain[e2].end;
                next[e1] = next[e2];
                if (next[e1] != none) {
                    previous[next[e1]] = e1;
                }
                if (previous[e1] != none) {
                    e1 = previous[e1];
                }
            } else {
                e1 = e2;
            }
        }
        return previous[e1] == none; // a single edge is left, and not the last of some that have no ear
    }

private:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    OutlineIndex reference;
    std::vector<Polygon2D::Edge> chain; ///< Edges that are still there are linked by `next` and `previous`.
    bool winding;                       ///< True: counter-clockwise.
    std::vector<std::size_t> next;      ///< Index of the following edge; `none` behind the last.
    std::vector<std::size_t> previous;

    bool isEar(const Polygon2D::Edge& e1, const Polygon2D::Edge& e2) const {
        TARNWICK_LOCATION("EarClipper::isEar");
        const Vector2 a = e1.start;
        const Vector2 b = e1.end;
        const Vector2 c = e2.end;
        // All tests must hold, and none depends on another: the cheap ones go first.
        if (!isConvex(e1, e2) || !(dotProduct(unitDirection(e1), unitDirection(e2)) < sameDirection)) {
            return false;
        }
        const float forward[] = {a.x, a.y, b.x, b.y, c.x, c.y};
        const float backward[] = {a.x, a.y, c.x, c.y, b.x, b.y};
        return !reference.covers(winding ? forward : backward) && !reference.crosses({a, c});
    }

    /// Whether the middle of the cut lies on the inner side of both edges.
    bool isConvex(const Polygon2D::Edge& e1, const Polygon2D::Edge& e2) const {
        TARNWICK_LOCATION("EarClipper::isConvex");
        const Vector2 middle =
            Vector2{(e1.start.x + e2.end.x) * 0.5f, (e1.start.y + e2.end.y) * 0.5f} - e1.end;
        return dotProduct(middle, innerNormal(e1)) >= 0.0f && dotProduct(middle, innerNormal(e2)) >= 0.0f;
    }

    Vector2 innerNormal(const Polygon2D::Edge& edge) const {
        TARNWICK_LOCATION("EarClipper::innerNormal");
        const Vector2 direction = edge.end - edge.start;
        return winding ? Vector2{-direction.y, direction.x} : Vector2{direction.y, -direction.x};
    }

    static void store(std::vector<float>& trianglesX,
                      std::vector<float>& trianglesY,
                      const Polygon2D::Edge& e1,
                      const Polygon2D::Edge& e2) {
        TARNWICK_LOCATION("EarClipper::store");
        for (const Vector2 corner : {e1.start, e1.end, e2.end}) {
            trianglesX.push_back(corner.x);
            trianglesY.push_back(corner.y);
        }
    }
};

/// For each of `points`, whether it equals one that stands before it, in `points` itself or in the outline.
std::vector<bool> findDuplicates(const std::vector<float>& pointsX,
                                 const std::vector<float>& pointsY,
                                 std::span<const Vector2> points) {
    TARNWICK_LOCATION("Polygon2D::findDuplicates");
    struct Entry {
        Vector2 point;
        std::size_t order; ///< Place in the outline, then in `points`.
    };
    const std::size_t held = pointsX.size();
    std::vector<Entry> entries;
    entries.reserve(held + points.size());
    const auto addEntry = [&entries](Vector2 point, std::size_t order) {
        if (point == point) { // a point that is not a number equals nothing, and has no place in an order
            entries.push_back({point, order});
        }
    };
    for (std::size_t i = 0; i < held; ++i) {
        addEntry({pointsX[i], pointsY[i]}, i);
    }
    for (std::size_t i = 0; i < points.size(); ++i) {
        addEntry(points[i], held + i);
    }
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        if (a.point.x != b.point.x) {
            return a.point.x < b.point.x;
        }
        return a.point.y != b.point.y ? a.point.y < b.point.y : a.order < b.order;
    });
    std::vector<bool> duplicate(points.size(), false);
    for (std::size_t i = 1; i < entries.size(); ++i) {
        if (entries[i].point == entries[i - 1].point && entries[i].order >= held) {
            duplicate[entries[i].order - held] = true;
        }
    }
    return duplicate;
}

} // namespace

void Polygon2D::addPoint(Vector2 point) {
    TARNWICK_LOCATION("Polygon2D::addPoint");
    for (std::size_t i = pointsX.size(); i-- > 0;) {
        if (pointsX[i] == point.x && pointsY[i] == point.y) { // exactly
            return;
        }
    }
    pointsX.push_back(point.x);
    pointsY.push_back(point.y);
    triangulate(true);
}

/// What a triangulation leaves depends on the outline alone, but for `counterClockwise` when the outline
/// crosses itself: that is then as the last outline on the way that did not cross itself has left it.
void Polygon2D::addPoints(std::span<const Vector2> points) {
    TARNWICK_LOCATION("Polygon2D::addPoints");
    const std::size_t held = pointsX.size();
    const std::vector<bool> duplicate = findDuplicates(pointsX, pointsY, points);
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!duplicate[i]) {
            pointsX.push_back(points[i].x);
            pointsY.push_back(points[i].y);
        }
    }
    if (pointsX.size() == held) {
        return;
    }
    clearTriangles();
    if (pointsX.size() < 3) {
        return;
    }
    const std::vector<Edge> chain = openChain(pointsX, pointsY);
    const OutlineIndex index(chain);
    if (!index.crossesItself()) {
        cutUp(chain, true);
        return;
    }
    if (const std::size_t prefix = index.longestSimplePrefix(); prefix > held) {
        cutUp({chain.begin(), chain.begin() + static_cast<std::ptrdiff_t>(prefix - 1)}, true);
        clearTriangles();
    }
}

void Polygon2D::triangulate(bool counterClockwiseFirst) {
    TARNWICK_LOCATION("Polygon2D::triangulate");
    clearTriangles();
    if (!isDegenerate()) {
        cutUp(openChain(pointsX, pointsY), counterClockwiseFirst);
    }
}

bool Polygon2D::isDegenerate() const {
    TARNWICK_LOCATION("Polygon2D::isDegenerate");
    if (pointsX.size() < 3) {
        return true;
    }
    const std::vector<Edge> chain = openChain(pointsX, pointsY);
    return OutlineIndex(chain).crossesItself();
}

/// Triangulates an outline that is not degenerate, given as its open chain.
void Polygon2D::cutUp(std::vector<Edge> chain, bool counterClockwiseFirst) {
    TARNWICK_LOCATION("Polygon2D::cutUp");
    counterClockwise = counterClockwiseFirst;
    removeColinearEdges(chain);
    if (chain.size() < 2) {
        return;
    }
    if (!clipEars(chain) && counterClockwise) {
        counterClockwise = false;
        clipEars(chain);
    }
    calculateNormals();
}

/// Cuts the chain up in the winding of `counterClockwise`. Leaves no triangles when that fails.
bool Polygon2D::clipEars(const std::vector<Edge>& chain) {
    TARNWICK_LOCATION("Polygon2D::clipEars");
    const std::size_t count = chain.size() - 1;
    trianglesX.reserve(count * 3);
    trianglesY.reserve(count * 3);
    if (!EarClipper(chain, counterClockwise).clip(trianglesX, trianglesY)) {
        clearTriangles();
        return false;
    }
    triangleCount = static_cast<std::uint32_t>(count);
    return true;
}

void Polygon2D::removeColinearEdges(std::vector<Edge>& edges) {
    TARNWICK_LOCATION("Polygon2D::removeColinearEdges");
    if (edges.empty()) {
        return;
    }
    std::size_t kept = 0; // the edge that the ones behind it may continue
    for (std::size_t i = 1; i < edges.size(); ++i) {
        if (dotProduct(unitDirection(edges[kept]), unitDirection(edges[i])) >= sameDirection) {
            edges[kept].end = edges[i].end;
        } else {
            edges[++kept] = edges[i];
        }
    }
    edges.resize(kept + 1);
    if (edges.size() > 1) {
        const Edge last = edges.back();
        const Vector2 closing = unitDirection({last.end, edges.front().start});
        if (dotProduct(unitDirection(edges.front()), closing) >= sameDirection &&
            dotProduct(unitDirection(last), closing) >= sameDirection) {
            // Kept: the first edge becomes a copy of the last and loses its own end; levels are drawn for
            // this.
            edges.pop_back();
            edges.front() = last;
        }
    }
}

bool Polygon2D::edgeCrossesEdges(const Edge& edge, const std::vector<Edge>& edges) {
    TARNWICK_LOCATION("Polygon2D::edgeCrossesEdges");
    return std::any_of(edges.begin(), edges.end(),
                       [&edge](const Edge& other) {
                           return segmentsCross(edge.start, edge.end, other.start, other.end);
                       }) ||
           segmentsCross(edge.start, edge.end, edges.back().end, edges.front().start);
}

bool Polygon2D::edgeCrossesPolygonEdges(const Vector2& start, const Vector2& end) const {
    TARNWICK_LOCATION("Polygon2D::edgeCrossesPolygonEdges");
    const std::vector<Edge> chain = openChain(pointsX, pointsY);
    return !chain.empty() && edgeCrossesEdges({start, end}, chain);
}

bool Polygon2D::triangleCoversPolyPoint(const float* triangle, const std::vector<Edge>& edges) {
    TARNWICK_LOCATION("Polygon2D::triangleCoversPolyPoint");
    if (triangle == nullptr || edges.empty()) {
        return false;
    }
    const auto covers = [triangle](Vector2 point) {
        for (std::size_t corner = 0; corner < 6; corner += 2) {
            if (point.x == triangle[corner] && point.y == triangle[corner + 1]) {
                return false;
            }
        }
        return pointInConvexPolygon(point, triangle, 3);
    };
    return std::any_of(edges.begin(), edges.end(),
                       [&covers](const Edge& edge) { return covers(edge.start); }) ||
           covers(edges.back().end);
}

void Polygon2D::calculateNormals() {
    TARNWICK_LOCATION("Polygon2D::calculateNormals");
    clearNormals();
    normalsX.reserve(trianglesX.size());
    normalsY.reserve(trianglesY.size());
    for (std::size_t corner = 0; corner < trianglesX.size(); ++corner) {
        const std::size_t following = corner % 3 == 2 ? corner - 2 : corner + 1;
        const Vector2 start{trianglesX[corner], trianglesY[corner]};
        Vector2 direction = Vector2{trianglesX[following], trianglesY[following]} - start;
        if (const float length = vectorLength(direction); length > 0.0f) {
            direction = direction / length;
        }
        normalsX.push_back(-direction.y);
        normalsY.push_back(direction.x);
    }
}

void Polygon2D::clearNormals() {
    TARNWICK_LOCATION("Polygon2D::clearNormals");
    normalsX.clear();
    normalsY.clear();
}

void Polygon2D::clearTriangles() {
    TARNWICK_LOCATION("Polygon2D::clearTriangles");
    triangleCount = 0;
    trianglesX.clear();
    trianglesY.clear();
    clearNormals();
}

void Polygon2D::expand(float distance) {
    TARNWICK_LOCATION("Polygon2D::expand");
    if (pointsX.size() < 3 || triangleCount == 0) {
        return;
    }
    const std::vector<float> oldX = pointsX;
    const std::vector<float> oldY = pointsY;
    const auto outward = [this, distance](const Edge& edge) {
        const Vector2 direction = edge.end - edge.start;
        Vector2 normal =
            counterClockwise ? Vector2{direction.y, -direction.x} : Vector2{-direction.y, direction.x};
        normaliseVector(normal);
        return Edge{edge.start + normal * distance, edge.end + normal * distance};
    };
    const std::size_t count = pointsX.size();
    Vector2 corner; // of the point before, where two sides are parallel
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t previous = i == 0 ? count - 1 : i - 1;
        const std::size_t next = i + 1 == count ? 0 : i + 1;
        const Vector2 point{oldX[i], oldY[i]};
        const Edge before = outward({{oldX[previous], oldY[previous]}, point});
        const Edge behind = outward({point, {oldX[next], oldY[next]}});
        lineIntersection(before.start, before.end, behind.start, behind.end, corner);
        pointsX[i] = corner.x;
        pointsY[i] = corner.y;
    }
    triangulate(true);
}

void Polygon2D::setFrictionLevel(float friction) {
    TARNWICK_LOCATION("Polygon2D::setFrictionLevel");
    frictionLevel = std::clamp(friction, 0.0f, 1.0f);
}

} // namespace tarnwick
