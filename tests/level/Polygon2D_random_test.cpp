#include "level/Polygon2D.h"
#include "reference/PlainPolygon.h"
#include "support/ModuleTest.h"
#include "support/RandomOutlines.h"

#include <bit>
#include <cstdint>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

std::vector<std::uint32_t> bitsOf(const std::vector<float>& values) {
    std::vector<std::uint32_t> bits;
    for (const float value : values) {
        bits.push_back(std::bit_cast<std::uint32_t>(value));
    }
    return bits;
}

/// Every field that a triangulation touches, to the last bit.
template <typename Left, typename Right>
void expectSame(const Left& polygon, const Right& plain) {
    EXPECT_EQ(polygon.counterClockwise, plain.counterClockwise);
    EXPECT_EQ(polygon.triangleCount, plain.triangleCount);
    EXPECT_EQ(bitsOf(polygon.pointsX), bitsOf(plain.pointsX));
    EXPECT_EQ(bitsOf(polygon.pointsY), bitsOf(plain.pointsY));
    EXPECT_EQ(bitsOf(polygon.trianglesX), bitsOf(plain.trianglesX));
    EXPECT_EQ(bitsOf(polygon.trianglesY), bitsOf(plain.trianglesY));
    EXPECT_EQ(bitsOf(polygon.normalsX), bitsOf(plain.normalsX));
    EXPECT_EQ(bitsOf(polygon.normalsY), bitsOf(plain.normalsY));
}

} // namespace

class Polygon2DRandomTest : public ModuleTest {};

TEST_F(Polygon2DRandomTest, SmallOutlinesAreCutUpAsByThePlainReadingPointByPoint) {
    for (std::uint32_t seed = 1; seed <= 600 && !HasFailure(); ++seed) {
        const std::vector<Vector2> points = RandomOutlines(seed).any(14);
        SCOPED_TRACE("seed " + std::to_string(seed) + ": " + describe(points));
        PlainPolygon plain;
        Polygon2D oneByOne;
        Polygon2D atOnce;

        for (const Vector2 point : points) {
            plain.addPoint(point.x, point.y);
            oneByOne.addPoint(point.x, point.y);
            expectSame(oneByOne, plain);
        }
        atOnce.addPoints(points);

        expectSame(atOnce, plain);
    }
}

TEST_F(Polygon2DRandomTest, LargeOutlinesAreCutUpAsByThePlainReading) {
    for (std::uint32_t seed = 1; seed <= 150 && !HasFailure(); ++seed) {
        const std::vector<Vector2> points = RandomOutlines(seed).any(90);
        SCOPED_TRACE("seed " + std::to_string(seed) + ": " + describe(points));
        PlainPolygon plain;
        Polygon2D polygon;

        for (const Vector2 point : points) {
            plain.addPoint(point.x, point.y);
        }
        polygon.addPoints(points);

        expectSame(polygon, plain);
    }
}

TEST_F(Polygon2DRandomTest, PointsAddedInSeveralGoesEndAsIfAddedOneByOne) {
    for (std::uint32_t seed = 1; seed <= 200 && !HasFailure(); ++seed) {
        RandomOutlines random(seed);
        const std::vector<Vector2> points = random.any(30);
        SCOPED_TRACE("seed " + std::to_string(seed) + ": " + describe(points));
        Polygon2D oneByOne;
        Polygon2D inGoes;

        for (std::size_t added = 0; added < points.size();) {
            const std::size_t count = std::min<std::size_t>(random.below(6), points.size() - added);
            inGoes.addPoints(std::span(points).subspan(added, count));
            for (std::size_t i = 0; i < count; ++i) {
                oneByOne.addPoint(points[added + i].x, points[added + i].y);
            }
            added += count;
            expectSame(inGoes, oneByOne);
        }
    }
}

TEST_F(Polygon2DRandomTest, ExpandedOutlinesAreThoseOfThePlainReading) {
    for (std::uint32_t seed = 1; seed <= 200 && !HasFailure(); ++seed) {
        RandomOutlines random(seed);
        const std::vector<Vector2> points = random.any(24);
        SCOPED_TRACE("seed " + std::to_string(seed) + ": " + describe(points));
        const float distance = static_cast<float>(random.below(9)) - 4.0f;
        PlainPolygon plain;
        Polygon2D polygon;
        for (const Vector2 point : points) {
            plain.addPoint(point.x, point.y);
        }
        polygon.addPoints(points);

        plain.expand(distance);
        polygon.expand(distance);

        expectSame(polygon, plain);
    }
}

TEST_F(Polygon2DRandomTest, TheScenesHoldEveryOutcome) {
    std::uint32_t counterClockwise = 0;
    std::uint32_t clockwise = 0;
    std::uint32_t failedBothWays = 0;
    std::uint32_t large = 0;
    for (std::uint32_t seed = 1; seed <= 150; ++seed) {
        Polygon2D polygon;

        polygon.addPoints(RandomOutlines(seed).any(90));

        counterClockwise += polygon.triangleCount > 0 && polygon.counterClockwise ? 1 : 0;
        clockwise += polygon.triangleCount > 0 && !polygon.counterClockwise ? 1 : 0;
        failedBothWays += polygon.triangleCount == 0 && !polygon.counterClockwise ? 1 : 0;
        large += polygon.triangleCount > 50 ? 1 : 0;
    }
    EXPECT_GT(counterClockwise, 10u);
    EXPECT_GT(clockwise, 10u);
    EXPECT_GT(failedBothWays, 2u);
    EXPECT_GT(large, 10u);
}

} // namespace tarnwick
