#include "core/VectorMaths2D.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace tarnwick {
namespace {

constexpr float pi = std::numbers::pi_v<float>;

TEST(VectorMaths2DTest, SwappingExchangesBothComponents) {
    Vector2 a{1.0f, 2.0f};
    Vector2 b{3.0f, 4.0f};

    swapVectors(a, b);

    EXPECT_EQ(a, (Vector2{3.0f, 4.0f}));
    EXPECT_EQ(b, (Vector2{1.0f, 2.0f}));
}

TEST(VectorMaths2DTest, ScalingMultipliesBothComponents) {
    Vector2 v{1.0f, -2.0f};

    scaleVector(v, 2.5f);

    EXPECT_EQ(v, (Vector2{2.5f, -5.0f}));
    EXPECT_EQ(vectorLengthSquared(v), 31.25f);
}

TEST(VectorMaths2DTest, TheAngleRunsFromZeroToTwoPi) {
    EXPECT_FLOAT_EQ(vectorAngle({2.0f, 0.0f}), 0.0f);
    EXPECT_FLOAT_EQ(vectorAngle({1.0f, 1.0f}), pi / 4.0f);
    EXPECT_FLOAT_EQ(vectorAngle({0.0f, 3.0f}), pi / 2.0f);
    EXPECT_FLOAT_EQ(vectorAngle({-1.0f, 1.0f}), pi * 3.0f / 4.0f);
    EXPECT_FLOAT_EQ(vectorAngle({-2.0f, 0.0f}), pi);
    EXPECT_FLOAT_EQ(vectorAngle({-1.0f, -1.0f}), pi * 5.0f / 4.0f);
    EXPECT_FLOAT_EQ(vectorAngle({0.0f, -3.0f}), pi * 3.0f / 2.0f);
    EXPECT_FLOAT_EQ(vectorAngle({1.0f, -1.0f}), pi * 7.0f / 4.0f);
}

TEST(VectorMaths2DTest, TurningBackUndoesTurning) {
    Vector2 v{3.0f, 4.0f};

    rotateVector(v, 1.1f);
    rotateVectorBack(v, 1.1f);

    EXPECT_FLOAT_EQ(v.x, 3.0f);
    EXPECT_FLOAT_EQ(v.y, 4.0f);
}

TEST(VectorMaths2DTest, AddingDoublesXInPlaceOfAddingIt) {
    Vector2 a{3.0f, 4.0f};

    addVector(a, {10.0f, 20.0f});

    EXPECT_EQ(a, (Vector2{6.0f, 24.0f}));
}

TEST(VectorMaths2DTest, APointNearTheMiddleOfASegmentIsPushedStraightOut) {
    Vector2 p{5.0f, 1.0f};

    EXPECT_TRUE(pushPointFromSegment(p, 3.0f, Vector2{0.0f, 0.0f}, Vector2{10.0f, 0.0f}));

    EXPECT_EQ(p, (Vector2{5.0f, 3.0f}));
}

TEST(VectorMaths2DTest, APointBeyondAnEndIsPushedFromThatEnd) {
    Vector2 beyond{13.0f, 4.0f};
    Vector2 before{-0.6f, -0.8f};

    EXPECT_TRUE(pushPointFromSegment(beyond, 10.0f, Vector2{0.0f, 0.0f}, Vector2{10.0f, 0.0f}));
    EXPECT_TRUE(pushPointFromSegment(before, 5.0f, Vector2{0.0f, 0.0f}, Vector2{10.0f, 0.0f}));

    EXPECT_FLOAT_EQ(beyond.x, 16.0f);
    EXPECT_FLOAT_EQ(beyond.y, 8.0f);
    EXPECT_FLOAT_EQ(before.x, -3.0f);
    EXPECT_FLOAT_EQ(before.y, -4.0f);
}

TEST(VectorMaths2DTest, APointFarEnoughOrExactlyOnTheSegmentStays) {
    Vector2 far{5.0f, 3.0f};
    Vector2 on{5.0f, 0.0f};

    EXPECT_FALSE(pushPointFromSegment(far, 3.0f, Vector2{0.0f, 0.0f}, Vector2{10.0f, 0.0f}));
    EXPECT_FALSE(pushPointFromSegment(on, 3.0f, Vector2{0.0f, 0.0f}, Vector2{10.0f, 0.0f}));

    EXPECT_EQ(far, (Vector2{5.0f, 3.0f}));
    EXPECT_EQ(on, (Vector2{5.0f, 0.0f}));
}

TEST(VectorMaths2DTest, ASegmentWithoutLengthPushesAsAPointDoes) {
    Vector2 p{1.0f, 3.0f};

    EXPECT_TRUE(pushPointFromSegment(p, 4.0f, Vector2{1.0f, 1.0f}, Vector2{1.0f, 1.0f}));

    EXPECT_EQ(p, (Vector2{1.0f, 5.0f}));
}

} // namespace
} // namespace tarnwick
