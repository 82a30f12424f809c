#include "core/Geometry.h"

#include <bit>
#include <utility>

namespace tarnwick {

namespace {

/// A point that is not yet rounded to float.
struct PrecisePoint {
    double x = 0.0;
    double y = 0.0;
};

/// Intersection of two infinite lines. False when they are parallel.
///
/// In double: with coordinates in the thousands the cross products have some 24 bits already, and their
/// differences in float would miss by whole units. In double a point with whole coordinates comes out
/// exactly.
bool intersectLines(Vector2 a, Vector2 b, Vector2 c, Vector2 d, PrecisePoint& point) {
    const auto ax = static_cast<double>(a.x);
    const auto ay = static_cast<double>(a.y);
    const auto bx = static_cast<double>(b.x);
    const auto by = static_cast<double>(b.y);
    const auto cx = static_cast<double>(c.x);
    const auto cy = static_cast<double>(c.y);
    const auto dx = static_cast<double>(d.x);
    const auto dy = static_cast<double>(d.y);
    const double denominator = (ax - bx) * (cy - dy) - (cx - dx) * (ay - by);
    if (denominator == 0.0) { // exactly: parallel
        return false;
    }
    const double crossAb = ax * by - ay * bx;
    const double crossCd = cx * dy - cy * dx;
    point.x = (crossAb * (cx - dx) - (ax - bx) * crossCd) / denominator;
    point.y = (crossAb * (cy - dy) - (ay - by) * crossCd) / denominator;
    return true;
}

/// Whether `value`, which lies on the line from `start` to `end`, lies between them, both included.
bool liesBetween(double value, float start, float end) {
    const auto from = static_cast<double>(start);
    const double parameter = (value - from) / (static_cast<double>(end) - from);
    return parameter >= 0.0 && parameter <= 1.0;
}

/// Positive when `point` lies to the left of the line from p to q, counter-clockwise of it; 0 on the line.
float sideOf(Vector2 p, Vector2 q, Vector2 point) {
    return (q.x - p.x) * (point.y - p.y) - (q.y - p.y) * (point.x - p.x);
}

} // namespace

bool segmentsCross(Vector2 a, Vector2 b, Vector2 c, Vector2 d) {
    if (a == c || a == d || b == c || b == d || a == b || c == d) {
        return false;
    }
    PrecisePoint meeting;
    if (!intersectLines(a, b, c, d, meeting)) {
        return false;
    }
    // The longer extent of each segment measures the parameter; of equal ones x, by either rule. Kept as two
    // rules.
    const bool firstAlongX = std::abs(b.y - a.y) <= std::abs(b.x - a.x);
    const bool onFirst = firstAlongX ? liesBetween(meeting.x, a.x, b.x) : liesBetween(meeting.y, a.y, b.y);
    if (!onFirst) {
        return false;
    }
    const bool secondAlongY = std::abs(d.x - c.x) < std::abs(d.y - c.y);
    return secondAlongY ? liesBetween(meeting.y, c.y, d.y) : liesBetween(meeting.x, c.x, d.x);
}

void lineIntersection(Vector2 a, Vector2 b, Vector2 c, Vector2 d, Vector2& out) {
    PrecisePoint meeting;
    if (intersectLines(a, b, c, d, meeting)) {
        out = {static_cast<float>(meeting.x), static_cast<float>(meeting.y)};
    }
}

bool pointInConvexPolygon(Vector2 point, const float* points, std::uint32_t count) {
    const float* start = points;
    for (std::uint32_t i = 0; i < count; ++i) {
        const float* end = i + 1 == count ? points : start + 2;
        if (sideOf({start[0], start[1]}, {end[0], end[1]}, point) < 0.0f) {
            return false;
        }
        start = end;
    }
    return true;
}

void fixTriangleWinding(float* points) {
    float* a = points;
    float* b = points + 2;
    float* c = points + 4;
    const Vector2 middle{(a[0] + c[0]) * 0.5f, (a[1] + c[1]) * 0.5f};
    const bool rightOfAb = sideOf({a[0], a[1]}, {b[0], b[1]}, middle) < 0.0f;
    const bool rightOfBc = sideOf({b[0], b[1]}, {c[0], c[1]}, middle) < 0.0f;
    if (rightOfAb && rightOfBc) {
        std::swap(b[0], c[0]);
        std::swap(b[1], c[1]);
    }
}

float truncateDecimals(float x, std::int32_t decimals) {
    const float scale = static_cast<float>(std::pow(10.0, decimals));
    return x * scale / scale;
}

std::uint32_t nextPowerOfTwo(std::uint32_t n) {
    constexpr std::uint32_t largest = 0x80000000u;
    return n == 0 || n > largest ? 0 : std::bit_ceil(n);
}

std::uint32_t previousPowerOfTwo(std::uint32_t n) {
    return std::bit_floor(n);
}

} // namespace tarnwick
