#include "reference/PlainPolygon.h"

#include "core/Geometry.h"

#include <iterator>

namespace tarnwick {

namespace {

Vector2 directionOf(const PlainPolygon::Edge& edge) {
    Vector2 direction = edge.end - edge.start;
    normaliseVector(direction);
    return direction;
}

} // namespace

void PlainPolygon::addPoint(float x, float y) {
    for (std::size_t i = pointsX.size(); i > 0; --i) {
        if (pointsX[i - 1] == x && pointsY[i - 1] == y) {
            return;
        }
    }
    pointsX.push_back(x);
    pointsY.push_back(y);
    triangulate(true);
}

void PlainPolygon::triangulate(bool winding) {
    clearTriangles();
    if (isDegenerate()) {
        return;
    }
    counterClockwise = winding;
    std::list<Edge> working;
    for (std::size_t i = 0; i + 1 < pointsX.size(); ++i) {
        working.push_back({{pointsX[i], pointsY[i]}, {pointsX[i + 1], pointsY[i + 1]}});
    }
    removeColinearEdges(working);
    if (working.size() < 2) {
        return;
    }
    triangleCount = static_cast<std::uint32_t>(working.size() - 1);
    const std::list<Edge> reference = working;
    while (working.size() >= 2) {
        if (!cutOneEar(working, reference, winding)) {
            clearTriangles();
            if (winding) {
                triangulate(false);
            }
            break;
        }
    }
    calculateNormals();
}

bool PlainPolygon::cutOneEar(std::list<Edge>& working, const std::list<Edge>& reference, bool winding) {
    for (auto e1 = working.begin(); std::next(e1) != working.end(); ++e1) {
        const auto e2 = std::next(e1);
        if (!isEar(*e1, *e2, reference, winding)) {
            continue;
        }
        for (const Vector2 corner : {e1->start, e1->end, e2->end}) {
            trianglesX.push_back(corner.x);
            trianglesY.push_back(corner.y);
        }
        working.insert(e1, {e1->start, e2->end});
        working.erase(e1);
        working.erase(e2);
        return true;
    }
    return false;
}

bool PlainPolygon::isEar(const Edge& e1, const Edge& e2, const std::list<Edge>& reference, bool winding) {
    const Vector2 a = e1.start;
    const Vector2 b = e1.end;
    const Vector2 c = e2.end;
    if (!(dotProduct(directionOf(e1), directionOf(e2)) < 0.9999f)) {
        return false;
    }
    if (edgeCrossesEdges({a, c}, reference)) {
        return false;
    }
    const Vector2 m{(a.x + c.x) / 2.0f - b.x, (a.y + c.y) / 2.0f - b.y};
    const Vector2 d1 = e1.end - e1.start;
    const Vector2 d2 = e2.end - e2.start;
    const Vector2 n1 = winding ? Vector2{-d1.y, d1.x} : Vector2{d1.y, -d1.x};
    const Vector2 n2 = winding ? Vector2{-d2.y, d2.x} : Vector2{d2.y, -d2.x};
    if (!(dotProduct(m, n1) >= 0.0f && dotProduct(m, n2) >= 0.0f)) {
        return false;
    }
    const float forward[] = {a.x, a.y, b.x, b.y, c.x, c.y};
    const float backward[] = {a.x, a.y, c.x, c.y, b.x, b.y};
    return !triangleCoversPolyPoint(winding ? forward : backward, reference);
}

bool PlainPolygon::isDegenerate() const {
    if (pointsX.size() < 3) {
        return true;
    }
    for (std::size_t i = 0; i + 1 < pointsX.size(); ++i) {
        if (edgeCrossesPolygonEdges({pointsX[i], pointsY[i]}, {pointsX[i + 1], pointsY[i + 1]})) {
            return true;
        }
    }
    return false;
}

bool PlainPolygon::edgeCrossesPolygonEdges(Vector2 start, Vector2 end) const {
    const std::size_t count = pointsX.size();
    for (std::size_t i = 0; i + 1 < count; ++i) {
        if (segmentsCross(start, end, {pointsX[i], pointsY[i]}, {pointsX[i + 1], pointsY[i + 1]})) {
            return true;
        }
    }
    return segmentsCross(start, end, {pointsX[count - 1], pointsY[count - 1]}, {pointsX[0], pointsY[0]});
}

bool PlainPolygon::edgeCrossesEdges(const Edge& edge, const std::list<Edge>& edges) {
    for (const Edge& other : edges) {
        if (segmentsCross(edge.start, edge.end, other.start, other.end)) {
            return true;
        }
    }
    return segmentsCross(edge.start, edge.end, edges.back().end, edges.front().start);
}

bool PlainPolygon::triangleCoversPolyPoint(const float* triangle, const std::list<Edge>& edges) {
    std::list<Vector2> points;
    for (const Edge& edge : edges) {
        points.push_back(edge.start);
    }
    points.push_back(edges.back().end);
    for (const Vector2 point : points) {
        const bool isCorner = (point.x == triangle[0] && point.y == triangle[1]) ||
                              (point.x == triangle[2] && point.y == triangle[3]) ||
                              (point.x == triangle[4] && point.y == triangle[5]);
        if (!isCorner && pointInConvexPolygon(point.x, point.y, triangle, 3)) {
            return true;
        }
    }
    return false;
}

void PlainPolygon::removeColinearEdges(std::list<Edge>& edges) {
    for (auto first = edges.begin(); first != edges.end(); ++first) {
        auto second = std::next(first);
        while (second != edges.end() && dotProduct(directionOf(*first), directionOf(*second)) >= 0.9999f) {
            first->end = second->end;
            second = edges.erase(second);
        }
    }
    if (edges.size() > 1) {
        const Vector2 f = directionOf(edges.front());
        const Vector2 l = directionOf(edges.back());
        const Vector2 c = directionOf({edges.back().end, edges.front().start});
        if (dotProduct(f, c) >= 0.9999f && dotProduct(l, c) >= 0.9999f) {
            const Edge removed = edges.back();
            edges.pop_back();
            edges.front() = removed;
        }
    }
}

void PlainPolygon::calculateNormals() {
    normalsX.clear();
    normalsY.clear();
    for (std::uint32_t triangle = 0; triangle < triangleCount; ++triangle) {
        for (std::uint32_t side = 0; side < 3; ++side) {
            const std::size_t from = triangle * 3 + side;
            const std::size_t to = triangle * 3 + (side + 1) % 3;
            float dx = trianglesX[to] - trianglesX[from];
            float dy = trianglesY[to] - trianglesY[from];
            const float length = vectorLength({dx, dy});
            if (length > 0.0f) {
                dx /= length;
                dy /= length;
            }
            normalsX.push_back(-dy);
            normalsY.push_back(dx);
        }
    }
}

void PlainPolygon::clearTriangles() {
    triangleCount = 0;
    trianglesX.clear();
    trianglesY.clear();
    normalsX.clear();
    normalsY.clear();
}

void PlainPolygon::expand(float distance) {
    if (pointsX.size() < 3 || triangleCount == 0) {
        return;
    }
    const std::vector<float> x = pointsX;
    const std::vector<float> y = pointsY;
    const std::size_t count = x.size();
    Vector2 corner;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t prev = (i + count - 1) % count;
        const std::size_t next = (i + 1) % count;
        const Vector2 d1{x[i] - x[prev], y[i] - y[prev]};
        const Vector2 d2{x[next] - x[i], y[next] - y[i]};
        Vector2 n1 = counterClockwise ? Vector2{d1.y, -d1.x} : Vector2{-d1.y, d1.x};
        Vector2 n2 = counterClockwise ? Vector2{d2.y, -d2.x} : Vector2{-d2.y, d2.x};
        normaliseVector(n1);
        normaliseVector(n2);
        const Vector2 shift1{n1.x * distance, n1.y * distance};
        const Vector2 shift2{n2.x * distance, n2.y * distance};
        lineIntersection(Vector2{x[prev], y[prev]} + shift1, Vector2{x[i], y[i]} + shift1,
                         Vector2{x[i], y[i]} + shift2, Vector2{x[next], y[next]} + shift2, corner);
        pointsX[i] = corner.x;
        pointsY[i] = corner.y;
    }
    triangulate(true);
}

} // namespace tarnwick
