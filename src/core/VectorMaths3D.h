#pragma once

#include "core/VectorMaths2D.h"

namespace tarnwick {

/// Vectors, matrices and planes in three dimensions. A set kept complete: nothing in the game calls it so
/// far.

struct Vector3 {
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;

    friend constexpr Vector3 operator+(Vector3 a, Vector3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
    friend constexpr Vector3 operator-(Vector3 a, Vector3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
    friend constexpr Vector3 operator*(Vector3 v, float scale) {
        return {v.x * scale, v.y * scale, v.z * scale};
    }
    friend constexpr Vector3 operator/(Vector3 v, float divisor) {
        return {v.x / divisor, v.y / divisor, v.z / divisor};
    }
    /// Exact comparison: -0 equals 0, NaN equals nothing.
    friend constexpr bool operator==(Vector3 a, Vector3 b) { return a.x == b.x && a.y == b.y && a.z == b.z; }
};

/// A row of a 4x4 matrix's size.
struct Vector4 {
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
    float w = 0.0f;

    friend constexpr bool operator==(Vector4 a, Vector4 b) {
        return a.x == b.x && a.y == b.y && a.z == b.z && a.w == b.w;
    }
};

/// Row major: `rows[r][c]`.
struct Matrix3 {
    float rows[3][3] = {};
};

/// Row major: `rows[r][c]`.
struct Matrix4 {
    float rows[4][4] = {};
};

/// All points p with (p - `point`) at a right angle to `normal`.
struct Plane {
    Vector3 point;
    Vector3 normal; ///< Unit length, or distances come out multiplied by its length.
};

float dotProduct(Vector3 a, Vector3 b);
/// At a right angle to both; length: area of the parallelogram. x cross y is z.
Vector3 crossProduct(Vector3 a, Vector3 b);
void scaleVector(Vector3& v, float scale);
/// Adds `b` to `a`, all three components.
void addVector(Vector3& a, Vector3 b);
/// Makes `v` unit length; the zero vector, told exactly, becomes (1, 0, 0).
void normaliseVector(Vector3& v);
float vectorLength(Vector3 v);
float vectorLengthSquared(Vector3 v);
float distanceBetween(Vector3 a, Vector3 b);
float distanceSquaredBetween(Vector3 a, Vector3 b);

/// Turns `v` about one axis by `angle` radians: about x from y towards z, about y from z towards x, about z
/// from x towards y.
void rotateVectorAboutX(Vector3& v, float angle);
void rotateVectorAboutY(Vector3& v, float angle);
void rotateVectorAboutZ(Vector3& v, float angle);

/// `v` mirrored at the plane of `normal`, which is unit length: v - 2 (v . n) n.
Vector3 reflectVector(Vector3 v, Vector3 normal);

/// Distance of `p` from the infinite line through `a` and `b`; from `a` if they are the same point.
float distanceToLine(Vector3 p, Vector3 a, Vector3 b);
float distanceSquaredToLine(Vector3 p, Vector3 a, Vector3 b);

/// `b` becomes `a` times `b`.
void multiplyMatrix(const Matrix3& a, Matrix3& b);
void multiplyMatrix(const Matrix4& a, Matrix4& b);
/// Rows become columns.
void transposeMatrix(Matrix3& matrix);
void transposeMatrix(Matrix4& matrix);
/// The row `v` times `matrix`.
Vector3 multiplyVector(Vector3 v, const Matrix3& matrix);
Vector4 multiplyVector(Vector4 v, const Matrix4& matrix);

/// Rebuilds the second column as the cross product of the third and the first, then the third as that of the
/// first and the second: the columns end at right angles to each other. Their lengths are 1 only if they were
/// before and the first and third were at a right angle; otherwise `normaliseMatrixColumns` follows.
void orthonormaliseMatrix(Matrix3& matrix);
/// Makes each column unit length; a zero column becomes (1, 0, 0).
void normaliseMatrixColumns(Matrix3& matrix);

/// Positive in front, on the side that the normal points to.
float signedDistance(const Plane& plane, Vector3 p);
float distanceSquared(const Plane& plane, Vector3 p);
/// Whether `p` lies in front; a point on the plane does not.
bool isInFront(const Plane& plane, Vector3 p);
/// Whether any part of the sphere about `p` lies in front.
bool isInFront(const Plane& plane, Vector3 p, float radius);
/// How many lengths of `direction` it is from `origin` to the plane, negative backwards. A ray along the
/// plane counts as one that nears it by 1e-07 a length.
float rayToPlane(Vector3 origin, Vector3 direction, const Plane& plane);

/// Whether `p` is at most `radius` from `centre`.
bool pointWithinRadius(Vector3 p, Vector3 centre, float radius);

// `nearestPointOnSegment` and `pushPointFromSegment` take `Vector3` as they take `Vector2`.

} // namespace tarnwick
