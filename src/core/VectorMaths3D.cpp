#include "core/VectorMaths3D.h"

#include <cmath>
#include <cstddef>
#include <utility>

namespace tarnwick {

namespace {

/// `b` becomes `a` times `b`, for matrices of any size.
template <std::size_t Size>
void multiplyRows(const float (&a)[Size][Size], float (&b)[Size][Size]) {
    for (std::size_t column = 0; column < Size; ++column) {
        float product[Size] = {};
        for (std::size_t row = 0; row < Size; ++row) {
            for (std::size_t i = 0; i < Size; ++i) {
                product[row] += a[row][i] * b[i][column];
            }
        }
        for (std::size_t row = 0; row < Size; ++row) {
            b[row][column] = product[row];
        }
    }
}

template <std::size_t Size>
void transposeRows(float (&rows)[Size][Size]) {
    for (std::size_t row = 0; row < Size; ++row) {
        for (std::size_t column = row + 1; column < Size; ++column) {
            std::swap(rows[row][column], rows[column][row]);
        }
    }
}

Vector3 columnOf(const Matrix3& matrix, std::size_t column) {
    return {matrix.rows[0][column], matrix.rows[1][column], matrix.rows[2][column]};
}

void setColumn(Matrix3& matrix, std::size_t column, Vector3 v) {
    matrix.rows[0][column] = v.x;
    matrix.rows[1][column] = v.y;
    matrix.rows[2][column] = v.z;
}

} // namespace

float dotProduct(Vector3 a, Vector3 b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Vector3 crossProduct(Vector3 a, Vector3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

void scaleVector(Vector3& v, float scale) {
    v = v * scale;
}

void addVector(Vector3& a, Vector3 b) {
    a = a + b;
}

void normaliseVector(Vector3& v) {
    float length = vectorLength(v);
    if (length < shortestSafeLength) {
        if (v == Vector3{}) { // exactly
            v = {1.0f, 0.0f, 0.0f};
            return;
        }
        v = v * liftOfShortVectors;
        length = vectorLength(v);
    }
    v = v / length;
}

float vectorLength(Vector3 v) {
    return std::sqrt(vectorLengthSquared(v));
}

float vectorLengthSquared(Vector3 v) {
    return dotProduct(v, v);
}

float distanceBetween(Vector3 a, Vector3 b) {
    return vectorLength(a - b);
}

float distanceSquaredBetween(Vector3 a, Vector3 b) {
    return vectorLengthSquared(a - b);
}

void rotateVectorAboutX(Vector3& v, float angle) {
    Vector2 turned{v.y, v.z};
    rotateVector(turned, angle);
    v = {v.x, turned.x, turned.y};
}

void rotateVectorAboutY(Vector3& v, float angle) {
    Vector2 turned{v.z, v.x};
    rotateVector(turned, angle);
    v = {turned.y, v.y, turned.x};
}

void rotateVectorAboutZ(Vector3& v, float angle) {
    Vector2 turned{v.x, v.y};
    rotateVector(turned, angle);
    v = {turned.x, turned.y, v.z};
}

Vector3 reflectVector(Vector3 v, Vector3 normal) {
    return v - normal * (2.0f * dotProduct(v, normal));
}

float distanceToLine(Vector3 p, Vector3 a, Vector3 b) {
    return std::sqrt(distanceSquaredToLine(p, a, b));
}

float distanceSquaredToLine(Vector3 p, Vector3 a, Vector3 b) {
    const Vector3 along = b - a;
    const float lengthSquared = vectorLengthSquared(along);
    if (lengthSquared == 0.0f) { // exactly: no line
        return distanceSquaredBetween(p, a);
    }
    return vectorLengthSquared(crossProduct(p - a, along)) / lengthSquared;
}

void multiplyMatrix(const Matrix3& a, Matrix3& b) {
    multiplyRows(a.rows, b.rows);
}

void multiplyMatrix(const Matrix4& a, Matrix4& b) {
    multiplyRows(a.rows, b.rows);
}

void transposeMatrix(Matrix3& matrix) {
    transposeRows(matrix.rows);
}

void transposeMatrix(Matrix4& matrix) {
    transposeRows(matrix.rows);
}

Vector3 multiplyVector(Vector3 v, const Matrix3& matrix) {
    const auto& [first, second, third] = matrix.rows;
    return {v.x * first[0] + v.y * second[0] + v.z * third[0],
            v.x * first[1] + v.y * second[1] + v.z * third[1],
            v.x * first[2] + v.y * second[2] + v.z * third[2]};
}

Vector4 multiplyVector(Vector4 v, const Matrix4& matrix) {
    const auto& [first, second, third, fourth] = matrix.rows;
    return {v.x * first[0] + v.y * second[0] + v.z * third[0] + v.w * fourth[0],
            v.x * first[1] + v.y * second[1] + v.z * third[1] + v.w * fourth[1],
            v.x * first[2] + v.y * second[2] + v.z * third[2] + v.w * fourth[2],
            v.x * first[3] + v.y * second[3] + v.z * third[3] + v.w * fourth[3]};
}

void orthonormaliseMatrix(Matrix3& matrix) {
    const Vector3 first = columnOf(matrix, 0);
    const Vector3 second = crossProduct(columnOf(matrix, 2), first);
    setColumn(matrix, 1, second);
    setColumn(matrix, 2, crossProduct(first, second));
}

void normaliseMatrixColumns(Matrix3& matrix) {
    for (std::size_t column = 0; column < 3; ++column) {
        Vector3 v = columnOf(matrix, column);
        normaliseVector(v);
        setColumn(matrix, column, v);
    }
}

float signedDistance(const Plane& plane, Vector3 p) {
    return dotProduct(plane.normal, p - plane.point);
}

float distanceSquared(const Plane& plane, Vector3 p) {
    const float distance = signedDistance(plane, p);
    return distance * distance;
}

bool isInFront(const Plane& plane, Vector3 p) {
    return signedDistance(plane, p) > 0.0f;
}

bool isInFront(const Plane& plane, Vector3 p, float radius) {
    return signedDistance(plane, p) > -radius;
}

float rayToPlane(Vector3 origin, Vector3 direction, const Plane& plane) {
    constexpr float leastNearing = 1e-07f;
    const float nearing = dotProduct(plane.normal, direction);
    return -signedDistance(plane, origin) /
           (nearing == 0.0f ? leastNearing : nearing); // exactly along the plane
}

bool pointWithinRadius(Vector3 p, Vector3 centre, float radius) {
    return distanceBetween(p, centre) <= radius;
}

} // namespace tarnwick
