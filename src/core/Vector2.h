#pragma once

namespace tarnwick {

/// Two 32-bit floats: a position or displacement in world units, a velocity in world units per second, or a
/// direction. y points down the screen at camera angle 0.
///
/// The operators work component by component and round each operation once, in the order written.
struct Vector2 {
    float x = 0.0f;
    float y = 0.0f;

    friend constexpr Vector2 operator+(Vector2 a, Vector2 b) { return {a.x + b.x, a.y + b.y}; }
    friend constexpr Vector2 operator-(Vector2 a, Vector2 b) { return {a.x - b.x, a.y - b.y}; }
    friend constexpr Vector2 operator-(Vector2 a) { return {-a.x, -a.y}; }
    friend constexpr Vector2 operator*(Vector2 a, float scale) { return {a.x * scale, a.y * scale}; }
    /// Divides both components; never a multiplication by the reciprocal, which rounds otherwise.
    friend constexpr Vector2 operator/(Vector2 a, float divisor) { return {a.x / divisor, a.y / divisor}; }
    constexpr Vector2& operator+=(Vector2 b) { return *this = *this + b; }
    constexpr Vector2& operator-=(Vector2 b) { return *this = *this - b; }
    constexpr Vector2& operator*=(float scale) { return *this = *this * scale; }
    /// Exact comparison: -0 equals 0, NaN equals nothing.
    friend constexpr bool operator==(Vector2 a, Vector2 b) { return a.x == b.x && a.y == b.y; }
};

} // namespace tarnwick
