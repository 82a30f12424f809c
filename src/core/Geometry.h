#pragma once

#include "core/Vector2.h"

#include <cmath>
#include <cstdint>

namespace tarnwick {

/// Lengths below this are measured again after scaling up: their squares leave the normal range of a float.
constexpr float shortestSafeLength = 0x1p-62f;
constexpr float liftOfShortVectors = 0x1p100f; ///< A power of two: scales exactly.

inline float dotProduct(Vector2 a, Vector2 b) {
    return a.x * b.x + a.y * b.y;
}

inline float vectorLength(Vector2 v) {
    return std::sqrt(v.x * v.x + v.y * v.y);
}

inline float distanceBetween(Vector2 a, Vector2 b) {
    return vectorLength(a - b);
}

/// Makes `v` unit length. The zero vector becomes (1, 0); it is told exactly, without a tolerance, so that
/// the shortest vector keeps its direction.
inline void normaliseVector(Vector2& v) {
    float length = vectorLength(v);
    if (length < shortestSafeLength) {
        if (v.x == 0.0f && v.y == 0.0f) {
            v = {1.0f, 0.0f};
            return;
        }
        v *= liftOfShortVectors;
        length = vectorLength(v);
    }
    v = v / length;
}

/// Turns `v` by `angle` radians, from the x axis towards the y axis.
inline void rotateVector(Vector2& v, float angle) {
    const float cosine = std::cos(angle);
    const float sine = std::sin(angle);
    v = {v.x * cosine - v.y * sine, v.x * sine + v.y * cosine};
}

/// True when segment `a`, `b` and segment `c`, `d` properly meet. Segments that share an end point exactly do
/// not, nor do parallel ones or a segment without length; an end that lies on the other segment does.
bool segmentsCross(Vector2 a, Vector2 b, Vector2 c, Vector2 d);

/// Writes to `out` where the infinite line through `a` and `b` meets the one through `c` and `d`. Parallel
/// lines leave `out` untouched. Computed in double and rounded once.
void lineIntersection(Vector2 a, Vector2 b, Vector2 c, Vector2 d, Vector2& out);

/// True when `point` lies in the convex polygon of `count` x, y pairs, counter-clockwise; a point on an edge
/// is inside.
bool pointInConvexPolygon(Vector2 point, const float* points, std::uint32_t count);
inline bool pointInConvexPolygon(float x, float y, const float* points, std::uint32_t count) {
    return pointInConvexPolygon({x, y}, points, count);
}

/// Makes the triangle of three x, y pairs counter-clockwise by exchanging its second and third corner if need
/// be.
void fixTriangleWinding(float* points);

/// The nearest whole number; halves go away from zero. Hides the C library's `round` inside this namespace.
inline float round(float x) {
    return std::round(x);
}

/// (`x` times 10 to the `decimals`) divided by 10 to the `decimals`.
/// Kept: nothing is rounded in between, so `x` comes back but for the rounding of the two operations.
float truncateDecimals(float x, std::int32_t decimals);

/// `n` itself if it is a power of two, else the next higher. 0 for 0, and above 2^31.
std::uint32_t nextPowerOfTwo(std::uint32_t n);

/// `n` itself if it is a power of two, else the next lower; 0 for 0.
std::uint32_t previousPowerOfTwo(std::uint32_t n);

} // namespace tarnwick
