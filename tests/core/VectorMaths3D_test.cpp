#include "core/VectorMaths3D.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

namespace tarnwick {
namespace {

constexpr float quarterTurn = std::numbers::pi_v<float> / 2.0f;
constexpr float roundingOfATurn = 1e-6f; ///< Sine and cosine of a quarter turn are not exactly 1 and 0.

const Vector3 xAxis{1.0f, 0.0f, 0.0f};
const Vector3 yAxis{0.0f, 1.0f, 0.0f};
const Vector3 zAxis{0.0f, 0.0f, 1.0f};

void expectNear(Vector3 actual, Vector3 expected) {
    EXPECT_NEAR(actual.x, expected.x, roundingOfATurn);
    EXPECT_NEAR(actual.y, expected.y, roundingOfATurn);
    EXPECT_NEAR(actual.z, expected.z, roundingOfATurn);
}

TEST(VectorMaths3DTest, ProductsFollowTheRightHand) {
    EXPECT_EQ(dotProduct(Vector3{1.0f, 2.0f, 3.0f}, Vector3{4.0f, 5.0f, 6.0f}), 32.0f);
    EXPECT_EQ(crossProduct(xAxis, yAxis), zAxis);
    EXPECT_EQ(crossProduct(yAxis, zAxis), xAxis);
    EXPECT_EQ(crossProduct(zAxis, xAxis), yAxis);
}

TEST(VectorMaths3DTest, ScalingAndAddingWorkInPlace) {
    Vector3 v{1.0f, 2.0f, 3.0f};

    scaleVector(v, 2.0f);
    addVector(v, {10.0f, 20.0f, 30.0f});

    EXPECT_EQ(v, (Vector3{12.0f, 24.0f, 36.0f}));
}

TEST(VectorMaths3DTest, LengthsAndDistancesCountAllComponents) {
    const Vector3 v{2.0f, 3.0f, 6.0f};

    EXPECT_EQ(vectorLength(v), 7.0f);
    EXPECT_EQ(vectorLengthSquared(v), 49.0f);
    EXPECT_EQ(distanceBetween(v + xAxis, xAxis), 7.0f);
    EXPECT_EQ(distanceSquaredBetween(v + xAxis, xAxis), 49.0f);
}

TEST(VectorMaths3DTest, NormalisingMakesUnitLength) {
    Vector3 v{0.0f, 3.0f, -4.0f};
    Vector3 shortest{0.0f, 0.0f, -std::numeric_limits<float>::denorm_min()};
    Vector3 zero;

    normaliseVector(v);
    normaliseVector(shortest);
    normaliseVector(zero);

    EXPECT_EQ(v, (Vector3{0.0f, 0.6f, -0.8f}));
    EXPECT_EQ(shortest, (Vector3{0.0f, 0.0f, -1.0f}));
    EXPECT_EQ(zero, xAxis);
}

TEST(VectorMaths3DTest, AQuarterTurnTakesOneAxisToTheNext) {
    Vector3 aboutX = yAxis;
    Vector3 aboutY = zAxis;
    Vector3 aboutZ = xAxis;

    rotateVectorAboutX(aboutX, quarterTurn);
    rotateVectorAboutY(aboutY, quarterTurn);
    rotateVectorAboutZ(aboutZ, quarterTurn);

    expectNear(aboutX, zAxis);
    expectNear(aboutY, xAxis);
    expectNear(aboutZ, yAxis);
}

TEST(VectorMaths3DTest, ReflectionTurnsThePartAlongTheNormal) {
    EXPECT_EQ(reflectVector({3.0f, -4.0f, 5.0f}, yAxis), (Vector3{3.0f, 4.0f, 5.0f}));
}

TEST(VectorMaths3DTest, TheDistanceToALineIsMeasuredSquareToIt) {
    const Vector3 p{7.0f, 3.0f, 4.0f};

    EXPECT_EQ(distanceToLine(p, {}, xAxis * 2.0f), 5.0f);
    EXPECT_EQ(distanceSquaredToLine(p, {}, xAxis * 2.0f), 25.0f);
    EXPECT_EQ(distanceToLine(p, {7.0f, 0.0f, 0.0f}, {7.0f, 0.0f, 0.0f}), 5.0f); // no line: from the point
}

TEST(VectorMaths3DTest, MatricesMultiplyIntoTheSecond) {
    const Matrix3 a{{{1.0f, 2.0f, 0.0f}, {0.0f, 1.0f, 0.0f}, {0.0f, 0.0f, 1.0f}}};
    Matrix3 b{{{1.0f, 2.0f, 3.0f}, {4.0f, 5.0f, 6.0f}, {7.0f, 8.0f, 9.0f}}};
    const Matrix3 product{{{9.0f, 12.0f, 15.0f}, {4.0f, 5.0f, 6.0f}, {7.0f, 8.0f, 9.0f}}};

    multiplyMatrix(a, b);

    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            EXPECT_EQ(b.rows[row][column], product.rows[row][column]) << row << column;
        }
    }
}

TEST(VectorMaths3DTest, AMatrixOfFourTimesTheIdentityIsItself) {
    Matrix4 matrix;
    Matrix4 identity;
    for (int i = 0; i < 16; ++i) {
        matrix.rows[i / 4][i % 4] = static_cast<float>(i);
        identity.rows[i / 4][i % 4] = i / 4 == i % 4 ? 1.0f : 0.0f;
    }

    multiplyMatrix(matrix, identity);

    for (int i = 0; i < 16; ++i) {
        EXPECT_EQ(identity.rows[i / 4][i % 4], static_cast<float>(i)) << i;
    }
}

TEST(VectorMaths3DTest, TransposingExchangesRowsAndColumns) {
    Matrix3 three;
    Matrix4 four;
    three.rows[0][2] = 5.0f;
    four.rows[3][1] = 7.0f;

    transposeMatrix(three);
    transposeMatrix(four);

    EXPECT_EQ(three.rows[2][0], 5.0f);
    EXPECT_EQ(three.rows[0][2], 0.0f);
    EXPECT_EQ(four.rows[1][3], 7.0f);
    EXPECT_EQ(four.rows[3][1], 0.0f);
}

TEST(VectorMaths3DTest, AVectorIsARowBeforeTheMatrix) {
    const Matrix3 three{{{1.0f, 2.0f, 3.0f}, {4.0f, 5.0f, 6.0f}, {7.0f, 8.0f, 9.0f}}};
    Matrix4 four;
    four.rows[3][0] = 10.0f; // moves by 10 along x
    four.rows[0][0] = 1.0f;
    four.rows[3][3] = 1.0f;

    EXPECT_EQ(multiplyVector({1.0f, 10.0f, 100.0f}, three), (Vector3{741.0f, 852.0f, 963.0f}));
    EXPECT_EQ(multiplyVector({5.0f, 0.0f, 0.0f, 1.0f}, four), (Vector4{15.0f, 0.0f, 0.0f, 1.0f}));
}

TEST(VectorMaths3DTest, OrthonormalisingSquaresTheColumnsWithTheFirst) {
    // Columns x, something between x and y, z.
    Matrix3 matrix{{{1.0f, 0.6f, 0.0f}, {0.0f, 0.8f, 0.0f}, {0.0f, 0.0f, 1.0f}}};

    orthonormaliseMatrix(matrix);

    EXPECT_EQ((Vector3{matrix.rows[0][1], matrix.rows[1][1], matrix.rows[2][1]}), yAxis);
    EXPECT_EQ((Vector3{matrix.rows[0][2], matrix.rows[1][2], matrix.rows[2][2]}), zAxis);
}

TEST(VectorMaths3DTest, NormalisingColumnsMakesAZeroColumnTheXAxis) {
    Matrix3 matrix{{{0.0f, 3.0f, 0.0f}, {5.0f, 0.0f, 0.0f}, {0.0f, 4.0f, 0.0f}}};

    normaliseMatrixColumns(matrix);

    EXPECT_EQ(matrix.rows[1][0], 1.0f);
    EXPECT_EQ(matrix.rows[0][1], 0.6f);
    EXPECT_EQ(matrix.rows[2][1], 0.8f);
    EXPECT_EQ(matrix.rows[0][2], 1.0f);
}

TEST(VectorMaths3DTest, APlaneTellsItsFrontFromItsBack) {
    const Plane ground{{0.0f, 2.0f, 0.0f}, yAxis};

    EXPECT_EQ(signedDistance(ground, {9.0f, 5.0f, 9.0f}), 3.0f);
    EXPECT_EQ(signedDistance(ground, {9.0f, 0.0f, 9.0f}), -2.0f);
    EXPECT_EQ(distanceSquared(ground, {9.0f, 0.0f, 9.0f}), 4.0f);
    EXPECT_TRUE(isInFront(ground, {0.0f, 2.5f, 0.0f}));
    EXPECT_FALSE(isInFront(ground, {0.0f, 2.0f, 0.0f}));
    EXPECT_TRUE(isInFront(ground, {0.0f, 1.0f, 0.0f}, 1.5f));
    EXPECT_FALSE(isInFront(ground, {0.0f, 0.0f, 0.0f}, 1.5f));
}

TEST(VectorMaths3DTest, ARayMeetsThePlaneAfterItsNumberOfLengths) {
    const Plane ground{{0.0f, 2.0f, 0.0f}, yAxis};

    EXPECT_EQ(rayToPlane({0.0f, 10.0f, 0.0f}, {0.0f, -2.0f, 0.0f}, ground), 4.0f);
    EXPECT_EQ(rayToPlane({0.0f, 10.0f, 0.0f}, {0.0f, 2.0f, 0.0f}, ground), -4.0f);
}

TEST(VectorMaths3DTest, ARayAlongThePlaneHasAFiniteAnswer) {
    const Plane ground{{0.0f, 0.0f, 0.0f}, yAxis};

    EXPECT_FLOAT_EQ(rayToPlane({0.0f, 1.0f, 0.0f}, xAxis, ground), -1e7f);
}

TEST(VectorMaths3DTest, PointsArePushedFromSegmentsAsInThePlane) {
    Vector3 p{5.0f, 0.0f, 1.0f};

    EXPECT_TRUE(pushPointFromSegment(p, 3.0f, Vector3{}, Vector3{10.0f, 0.0f, 0.0f}));

    EXPECT_EQ(p, (Vector3{5.0f, 0.0f, 3.0f}));
    EXPECT_FALSE(pushPointFromSegment(p, 3.0f, Vector3{}, Vector3{10.0f, 0.0f, 0.0f}));
}

TEST(VectorMaths3DTest, APointAtExactlyTheRadiusIsWithinIt) {
    EXPECT_TRUE(pointWithinRadius({2.0f, 3.0f, 6.0f}, {}, 7.0f));
    EXPECT_FALSE(pointWithinRadius({2.0f, 3.0f, 6.01f}, {}, 7.0f));
}

} // namespace
} // namespace tarnwick
