#include "core/Geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tarnwick {
namespace {

TEST(GeometryTest, DotProductAddsTheProductsOfTheComponents) {
    EXPECT_EQ(dotProduct({2.0f, 3.0f}, {5.0f, -7.0f}), -11.0f);
}

TEST(GeometryTest, LengthAndDistanceAreThoseOfARightTriangle) {
    EXPECT_EQ(vectorLength({3.0f, -4.0f}), 5.0f);
    EXPECT_EQ(distanceBetween({1.0f, 1.0f}, {4.0f, 5.0f}), 5.0f);
}

TEST(GeometryTest, NormalisingMakesUnitLengthAndKeepsTheDirection) {
    Vector2 v{3.0f, -4.0f};

    normaliseVector(v);

    EXPECT_EQ(v, (Vector2{0.6f, -0.8f}));
}

TEST(GeometryTest, TheZeroVectorNormalisesToTheXAxis) {
    Vector2 zero{0.0f, -0.0f};

    normaliseVector(zero);

    EXPECT_EQ(zero, (Vector2{1.0f, 0.0f}));
}

TEST(GeometryTest, TheShortestVectorsNormaliseToTheirOwnDirection) {
    Vector2 shortest{0.0f, -std::numeric_limits<float>::denorm_min()};
    Vector2 slanted{-3e-30f, 4e-30f};

    normaliseVector(shortest);
    normaliseVector(slanted);

    EXPECT_EQ(shortest, (Vector2{0.0f, -1.0f}));
    EXPECT_FLOAT_EQ(slanted.x, -0.6f);
    EXPECT_FLOAT_EQ(slanted.y, 0.8f);
}

TEST(GeometryTest, TheRescueOfShortVectorsChangesNoBitWhereItIsNotNeeded) {
    const Vector2 justBelow{shortestSafeLength * 0.3f, shortestSafeLength * 0.7f};
    Vector2 v = justBelow;

    normaliseVector(v);

    EXPECT_EQ(v, justBelow / vectorLength(justBelow));
}

TEST(GeometryTest, RotationUsesTheOldXForTheNewY) {
    Vector2 v{1.0f, 2.0f};
    const float angle = 0.75f;
    const Vector2 expected{1.0f * std::cos(angle) - 2.0f * std::sin(angle),
                           1.0f * std::sin(angle) + 2.0f * std::cos(angle)};

    rotateVector(v, angle);

    EXPECT_EQ(v, expected);
}

TEST(GeometryTest, SegmentsThatShareAnEndPointDoNotCross) {
    const Vector2 a{0.0f, 0.0f};
    const Vector2 b{10.0f, 0.0f};

    EXPECT_FALSE(segmentsCross(a, b, a, {5.0f, 5.0f}));
    EXPECT_FALSE(segmentsCross(a, b, {5.0f, 5.0f}, a));
    EXPECT_FALSE(segmentsCross(a, b, b, {5.0f, 5.0f}));
    EXPECT_FALSE(segmentsCross(a, b, {5.0f, 5.0f}, b));
}

TEST(GeometryTest, ASegmentWithoutLengthCrossesNothing) {
    const Vector2 middle{5.0f, 0.0f};

    EXPECT_FALSE(segmentsCross({0.0f, 0.0f}, {10.0f, 0.0f}, middle, middle));
    EXPECT_FALSE(segmentsCross(middle, middle, {0.0f, 0.0f}, {10.0f, 0.0f}));
}

TEST(GeometryTest, ParallelSegmentsDoNotCrossEvenWhenTheyOverlap) {
    EXPECT_FALSE(segmentsCross({0.0f, 0.0f}, {10.0f, 10.0f}, {1.0f, 0.0f}, {11.0f, 10.0f}));
    EXPECT_FALSE(segmentsCross({0.0f, 0.0f}, {10.0f, 0.0f}, {4.0f, 0.0f}, {14.0f, 0.0f}));
}

TEST(GeometryTest, SegmentsThatMeetInTheirMiddlesCross) {
    EXPECT_TRUE(segmentsCross({0.0f, 0.0f}, {10.0f, 10.0f}, {0.0f, 10.0f}, {10.0f, 0.0f}));
    EXPECT_TRUE(segmentsCross({0.0f, 0.0f}, {0.0f, 10.0f}, {-5.0f, 3.0f}, {5.0f, 4.0f}));
}

TEST(GeometryTest, SegmentsWhoseLinesMeetOutsideThemDoNotCross) {
    EXPECT_FALSE(segmentsCross({0.0f, 0.0f}, {10.0f, 0.0f}, {5.0f, 1.0f}, {5.0f, 9.0f}));
    EXPECT_FALSE(segmentsCross({0.0f, 0.0f}, {10.0f, 0.0f}, {11.0f, -1.0f}, {11.0f, 1.0f}));
}

TEST(GeometryTest, AnEndThatLiesOnTheOtherSegmentCrossesIt) {
    EXPECT_TRUE(segmentsCross({0.0f, 0.0f}, {10.0f, 0.0f}, {5.0f, 0.0f}, {5.0f, 9.0f}));
    EXPECT_TRUE(segmentsCross({5.0f, 9.0f}, {5.0f, 0.0f}, {0.0f, 0.0f}, {10.0f, 0.0f}));
}

TEST(GeometryTest, ATJointCrossesAtCoordinatesInTheThousands) {
    const Vector2 a{-4096.0f, 3071.0f};
    const Vector2 step{97.0f, -53.0f};
    for (int i = 1; i < 60; ++i) {
        const Vector2 joint = a + step * static_cast<float>(i);

        EXPECT_TRUE(segmentsCross(a, a + step * 60.0f, joint, {5003.0f, 7919.0f})) << i;
        EXPECT_TRUE(segmentsCross({5003.0f, 7919.0f}, joint, a, a + step * 60.0f)) << i;
    }
}

TEST(GeometryTest, SegmentsOfEqualExtentsAreMeasuredAlongX) {
    // Both run at 45 degrees; they meet at (5, 5), an end of the second.
    EXPECT_TRUE(segmentsCross({0.0f, 0.0f}, {10.0f, 10.0f}, {5.0f, 5.0f}, {9.0f, 1.0f}));
    EXPECT_FALSE(segmentsCross({0.0f, 0.0f}, {10.0f, 10.0f}, {5.5f, 4.5f}, {9.0f, 1.0f}));
}

TEST(GeometryTest, LinesMeetAlsoOutsideTheGivenPoints) {
    Vector2 meeting;

    lineIntersection({0.0f, 0.0f}, {1.0f, 0.0f}, {5000.0f, 1.0f}, {5000.0f, 2.0f}, meeting);

    EXPECT_EQ(meeting, (Vector2{5000.0f, 0.0f}));
}

TEST(GeometryTest, ParallelLinesLeaveTheResultUntouched) {
    Vector2 meeting{7.0f, 8.0f};

    lineIntersection({0.0f, 0.0f}, {1.0f, 1.0f}, {1.0f, 0.0f}, {2.0f, 1.0f}, meeting);

    EXPECT_EQ(meeting, (Vector2{7.0f, 8.0f}));
}

TEST(GeometryTest, APointInsideOrOnAnEdgeIsInTheConvexPolygon) {
    const float square[] = {0.0f, 0.0f, 10.0f, 0.0f, 10.0f, 10.0f, 0.0f, 10.0f};

    EXPECT_TRUE(pointInConvexPolygon(5.0f, 5.0f, square, 4));
    EXPECT_TRUE(pointInConvexPolygon(10.0f, 5.0f, square, 4));
    EXPECT_TRUE(pointInConvexPolygon(0.0f, 0.0f, square, 4));
    EXPECT_FALSE(pointInConvexPolygon(10.001f, 5.0f, square, 4));
    EXPECT_FALSE(pointInConvexPolygon(-0.001f, 5.0f, square, 4)); // beyond the closing edge
}

TEST(GeometryTest, AClockwisePolygonHoldsNoPointOfItsInside) {
    const float square[] = {0.0f, 10.0f, 10.0f, 10.0f, 10.0f, 0.0f, 0.0f, 0.0f};

    EXPECT_FALSE(pointInConvexPolygon(5.0f, 5.0f, square, 4));
}

TEST(GeometryTest, AClockwiseTriangleIsTurnedByItsLastTwoCorners) {
    float triangle[] = {0.0f, 0.0f, 0.0f, 10.0f, 10.0f, 0.0f};
    const float turned[] = {0.0f, 0.0f, 10.0f, 0.0f, 0.0f, 10.0f};

    fixTriangleWinding(triangle);

    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(triangle[i], turned[i]) << i;
    }
}

TEST(GeometryTest, ACounterClockwiseOrFlatTriangleStays) {
    float left[] = {0.0f, 0.0f, 10.0f, 0.0f, 0.0f, 10.0f};
    float flat[] = {0.0f, 0.0f, 5.0f, 5.0f, 10.0f, 10.0f};

    fixTriangleWinding(left);
    fixTriangleWinding(flat);

    EXPECT_EQ(left[2], 10.0f);
    EXPECT_EQ(flat[2], 5.0f);
}

TEST(GeometryTest, HalvesRoundAwayFromZero) {
    EXPECT_EQ(round(2.5f), 3.0f);
    EXPECT_EQ(round(-2.5f), -3.0f);
    EXPECT_EQ(round(-0.4f), 0.0f);
    EXPECT_EQ(round(0.49999997f), 0.0f); // the float below one half
}

TEST(GeometryTest, TruncatingDecimalsGivesTheNumberBack) {
    EXPECT_FLOAT_EQ(truncateDecimals(1.23456f, 2), 1.23456f);
    EXPECT_FLOAT_EQ(truncateDecimals(-7.75f, 0), -7.75f);
}

TEST(GeometryTest, PowersOfTwoAreTheirOwnNeighbours) {
    for (std::uint32_t power = 1; power != 0; power <<= 1) {
        EXPECT_EQ(nextPowerOfTwo(power), power);
        EXPECT_EQ(previousPowerOfTwo(power), power);
    }
}

TEST(GeometryTest, OtherNumbersGoToThePowerOfTwoAboveOrBelow) {
    EXPECT_EQ(nextPowerOfTwo(5), 8u);
    EXPECT_EQ(nextPowerOfTwo(8), 8u);
    EXPECT_EQ(nextPowerOfTwo(0x7FFFFFFF), 0x80000000u);
    EXPECT_EQ(previousPowerOfTwo(5), 4u);
    EXPECT_EQ(previousPowerOfTwo(0xFFFFFFFF), 0x80000000u);
}

TEST(GeometryTest, NoPowerOfTwoIsZero) {
    EXPECT_EQ(nextPowerOfTwo(0), 0u);
    EXPECT_EQ(nextPowerOfTwo(0x80000001u), 0u);
    EXPECT_EQ(nextPowerOfTwo(0xFFFFFFFFu), 0u);
    EXPECT_EQ(previousPowerOfTwo(0), 0u);
}

} // namespace
} // namespace tarnwick
