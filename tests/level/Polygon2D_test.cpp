#include "level/Polygon2D.h"

#include "support/ModuleTest.h"

#include <cmath>
#include <initializer_list>
#include <limits>
#include <vector>

namespace tarnwick {

class Polygon2DTest : public ModuleTest {
protected:
    static Polygon2D polygonOf(std::initializer_list<Vector2> points) {
        Polygon2D polygon;
        for (const Vector2 point : points) {
            polygon.addPoint(point.x, point.y);
        }
        return polygon;
    }

    /// The area that the triangles cover together, if none covers another.
    static float areaOf(const Polygon2D& polygon) {
        float area = 0.0f;
        for (std::size_t i = 0; i < polygon.trianglesX.size(); i += 3) {
            const std::vector<float>& x = polygon.trianglesX;
            const std::vector<float>& y = polygon.trianglesY;
            const float cross = (x[i + 1] - x[i]) * (y[i + 2] - y[i]) - (y[i + 1] - y[i]) * (x[i + 2] - x[i]);
            area += std::abs(cross) * 0.5f;
        }
        return area;
    }
};

TEST_F(Polygon2DTest, ANewPolygonIsSolidAndSeenAndHasNoTriangles) {
    const Polygon2D polygon;

    EXPECT_TRUE(polygon.collideable);
    EXPECT_TRUE(polygon.visible);
    EXPECT_TRUE(polygon.drawable);
    EXPECT_FALSE(polygon.moveable);
    EXPECT_FALSE(polygon.destructable);
    EXPECT_TRUE(polygon.counterClockwise);
    EXPECT_EQ(polygon.triangleCount, 0u);
    EXPECT_EQ(polygon.frictionLevel, 1.0f);
    EXPECT_EQ(polygon.offsetX, 0.0f);
    EXPECT_EQ(polygon.offsetY, 0.0f);
    EXPECT_EQ(polygon.previousOffsetX, 0.0f);
    EXPECT_EQ(polygon.previousOffsetY, 0.0f);
    EXPECT_TRUE(polygon.pointsX.empty());
}

TEST_F(Polygon2DTest, TwoPointsGiveNoTrianglesAndTheThirdGivesOne) {
    Polygon2D polygon = polygonOf({{0, 0}, {10, 0}});
    const std::uint32_t before = polygon.triangleCount;

    polygon.addPoint(0, 10);

    EXPECT_EQ(before, 0u);
    EXPECT_EQ(polygon.triangleCount, 1u);
    EXPECT_EQ(polygon.trianglesX, (std::vector<float>{0, 10, 0}));
    EXPECT_EQ(polygon.trianglesY, (std::vector<float>{0, 0, 10}));
}

TEST_F(Polygon2DTest, APointThatIsThereAlreadyChangesNothing) {
    Polygon2D polygon = polygonOf({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    polygon.trianglesX[0] = 77.0f; // a new triangulation would write over it

    polygon.addPoint(10, 0);

    EXPECT_EQ(polygon.pointCount(), 4u);
    EXPECT_EQ(polygon.trianglesX[0], 77.0f);
}

TEST_F(Polygon2DTest, NegativeZeroIsTheSamePointAsZero) {
    Polygon2D polygon = polygonOf({{0, 0}, {10, 0}});

    polygon.addPoint(-0.0f, -0.0f);
    polygon.addPoints(std::vector<Vector2>{{-0.0f, 0.0f}});

    EXPECT_EQ(polygon.pointCount(), 2u);
}

TEST_F(Polygon2DTest, ASquareCounterClockwiseIsCutFromTheFront) {
    const Polygon2D polygon = polygonOf({{0, 0}, {10, 0}, {10, 10}, {0, 10}});

    EXPECT_TRUE(polygon.counterClockwise);
    EXPECT_EQ(polygon.triangleCount, 2u);
    EXPECT_EQ(polygon.trianglesX, (std::vector<float>{0, 10, 10, 0, 10, 0}));
    EXPECT_EQ(polygon.trianglesY, (std::vector<float>{0, 0, 10, 0, 10, 10}));
}

TEST_F(Polygon2DTest, ASquareGivenClockwiseEndsClockwiseWithTwoTriangles) {
    const Polygon2D polygon = polygonOf({{0, 0}, {0, 10}, {10, 10}, {10, 0}});

    EXPECT_FALSE(polygon.counterClockwise);
    EXPECT_EQ(polygon.triangleCount, 2u);
    EXPECT_EQ(areaOf(polygon), 100.0f);
}

TEST_F(Polygon2DTest, AnOutlineThatCrossesItselfHasNoTriangles) {
    const Polygon2D polygon = polygonOf({{0, 0}, {10, 10}, {10, 0}, {0, 10}});

    EXPECT_TRUE(polygon.isDegenerate());
    EXPECT_EQ(polygon.triangleCount, 0u);
    EXPECT_TRUE(polygon.trianglesX.empty());
    EXPECT_TRUE(polygon.normalsX.empty());
}

TEST_F(Polygon2DTest, AnOutlineThatCrossesItselfKeepsTheWindingOfTheOutlineBefore) {
    Polygon2D clockwise = polygonOf({{0, 0}, {0, 10}, {10, 10}});
    Polygon2D atOnce;

    clockwise.addPoint(-5, 5);
    atOnce.addPoints(std::vector<Vector2>{{0, 0}, {0, 10}, {10, 10}, {-5, 5}});

    EXPECT_EQ(clockwise.triangleCount, 0u);
    EXPECT_FALSE(clockwise.counterClockwise);
    EXPECT_EQ(atOnce.triangleCount, 0u);
    EXPECT_FALSE(atOnce.counterClockwise);
}

TEST_F(Polygon2DTest, AnOutlineThatUncrossesItselfIsTriangulatedInTheEnd) {
    Polygon2D polygon = polygonOf({{0, 0}, {10, 0}, {10, 10}, {5, -5}});
    const std::uint32_t crossing = polygon.triangleCount;
    Polygon2D other = polygonOf({{0, 0}, {10, 0}, {10, 10}, {4, 5}});

    other.addPoint(0, 10);

    EXPECT_EQ(crossing, 0u);
    EXPECT_EQ(other.triangleCount, 3u);
}

TEST_F(Polygon2DTest, ThreePointsInOneLineGiveNoTriangles) {
    const Polygon2D polygon = polygonOf({{0, 0}, {5, 0}, {10, 0}});

    EXPECT_FALSE(polygon.isDegenerate());
    EXPECT_EQ(polygon.triangleCount, 0u);
    EXPECT_TRUE(polygon.counterClockwise);
}

TEST_F(Polygon2DTest, PointsInLineOnSidesThatDoNotCloseAreMergedAway) {
    const Polygon2D polygon = polygonOf({{0, 0}, {5, 0}, {10, 0}, {10, 5}, {10, 10}, {3, 10}, {0, 10}});

    EXPECT_EQ(polygon.pointCount(), 7u);
    EXPECT_EQ(polygon.triangleCount, 2u);
    EXPECT_EQ(areaOf(polygon), 100.0f);
}

TEST_F(Polygon2DTest, APointOnTheClosingSideStays) {
    const Polygon2D polygon = polygonOf({{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 5}});

    EXPECT_EQ(polygon.triangleCount, 3u);
    EXPECT_EQ(areaOf(polygon), 100.0f);
}

TEST_F(Polygon2DTest, TheClosingJointMakesTheFirstEdgeACopyOfTheLast) {
    std::vector<Polygon2D::Edge> edges{
        {{5, 0}, {10, 0}}, {{10, 0}, {10, 10}}, {{10, 10}, {0, 0}}, {{0, 0}, {3, 0}}};

    Polygon2D::removeColinearEdges(edges);

    ASSERT_EQ(edges.size(), 3u);
    EXPECT_EQ(edges[0].start, (Vector2{0, 0}));
    EXPECT_EQ(edges[0].end, (Vector2{3, 0}));
    EXPECT_EQ(edges[1].start, (Vector2{10, 0}));
}

TEST_F(Polygon2DTest, EdgesThatRunOnInLineBecomeOneHoweverMany) {
    std::vector<Polygon2D::Edge> edges{
        {{0, 0}, {1, 0}}, {{1, 0}, {2, 0}}, {{2, 0}, {9, 0}}, {{9, 0}, {9, 9}}};
    std::vector<Polygon2D::Edge> none;

    Polygon2D::removeColinearEdges(edges);
    Polygon2D::removeColinearEdges(none);

    ASSERT_EQ(edges.size(), 2u);
    EXPECT_EQ(edges[0].end, (Vector2{9, 0}));
    EXPECT_TRUE(none.empty());
}

TEST_F(Polygon2DTest, NormalsStandAtTheLeftOfEverySide) {
    const Polygon2D polygon = polygonOf({{0, 0}, {8, 0}, {0, 6}});

    EXPECT_EQ(polygon.normalsX, (std::vector<float>{-0.0f, -0.6f, 1.0f}));
    EXPECT_EQ(polygon.normalsY, (std::vector<float>{1.0f, -0.8f, 0.0f}));
}

TEST_F(Polygon2DTest, ASideOfNoLengthHasNoNormal) {
    Polygon2D polygon = polygonOf({{0, 0}, {8, 0}, {0, 6}});
    polygon.trianglesX = {0, 0, 5};
    polygon.trianglesY = {0, 0, 0};

    polygon.calculateNormals();

    EXPECT_EQ(polygon.normalsX[0], 0.0f);
    EXPECT_EQ(polygon.normalsY[0], 0.0f);
}

TEST_F(Polygon2DTest, ClearingTrianglesTakesTheNormalsToo) {
    Polygon2D polygon = polygonOf({{0, 0}, {8, 0}, {0, 6}});

    polygon.clearTriangles();

    EXPECT_EQ(polygon.triangleCount, 0u);
    EXPECT_TRUE(polygon.trianglesX.empty());
    EXPECT_TRUE(polygon.normalsY.empty());
}

TEST_F(Polygon2DTest, ACornerOnTheCutIsCoveredAndCornersOfTheTriangleAreNot) {
    const std::vector<Polygon2D::Edge> edges{{{0, 0}, {10, 0}}, {{10, 0}, {5, 5}}, {{5, 5}, {0, 10}}};
    const float touched[] = {0, 0, 10, 0, 0, 10};
    const float apart[] = {0, 0, 10, 0, 5, 5};

    EXPECT_TRUE(Polygon2D::triangleCoversPolyPoint(touched, edges));
    EXPECT_FALSE(Polygon2D::triangleCoversPolyPoint(apart, edges));
    EXPECT_FALSE(Polygon2D::triangleCoversPolyPoint(nullptr, edges));
    EXPECT_FALSE(Polygon2D::triangleCoversPolyPoint(touched, {}));
}

TEST_F(Polygon2DTest, TheSideThatClosesTheOutlineIsCrossedToo) {
    const Polygon2D polygon = polygonOf({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    const std::vector<Polygon2D::Edge> chain{{{0, 0}, {10, 0}}, {{10, 0}, {10, 10}}, {{10, 10}, {0, 10}}};

    EXPECT_TRUE(polygon.edgeCrossesPolygonEdges({-5, 5}, {5, 5}));
    EXPECT_TRUE(Polygon2D::edgeCrossesEdges({{-5, 5}, {5, 5}}, chain));
    EXPECT_FALSE(polygon.edgeCrossesPolygonEdges({2, 5}, {5, 5}));
    EXPECT_FALSE(Polygon2D().edgeCrossesPolygonEdges({2, 5}, {5, 5}));
}

TEST_F(Polygon2DTest, AConcaveOutlineIsCoveredOnceByItsTriangles) {
    const Polygon2D polygon =
        polygonOf({{0, 0}, {30, 0}, {30, 30}, {20, 30}, {20, 10}, {10, 10}, {10, 30}, {0, 30}});

    EXPECT_EQ(polygon.triangleCount, 6u);
    EXPECT_EQ(areaOf(polygon), 700.0f);
}

TEST_F(Polygon2DTest, ExpandingMovesEverySideOutward) {
    Polygon2D counterClockwise = polygonOf({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    Polygon2D clockwise = polygonOf({{0, 0}, {0, 10}, {10, 10}, {10, 0}});

    counterClockwise.expand(2.0f);
    clockwise.expand(2.0f);

    EXPECT_EQ(counterClockwise.pointsX, (std::vector<float>{-2, 12, 12, -2}));
    EXPECT_EQ(counterClockwise.pointsY, (std::vector<float>{-2, -2, 12, 12}));
    EXPECT_EQ(areaOf(counterClockwise), 196.0f);
    EXPECT_EQ(clockwise.pointsX, (std::vector<float>{-2, -2, 12, 12}));
    EXPECT_EQ(clockwise.pointsY, (std::vector<float>{-2, 12, 12, -2}));
}

TEST_F(Polygon2DTest, ExpandingGivesACornerInAStraightRunThePlaceOfTheCornerBefore) {
    Polygon2D polygon = polygonOf({{0, 0}, {5, 0}, {10, 0}, {10, 10}, {0, 10}});

    polygon.expand(2.0f);

    EXPECT_EQ(polygon.pointsX, (std::vector<float>{-2, -2, 12, 12, -2}));
    EXPECT_EQ(polygon.pointsY, (std::vector<float>{-2, -2, -2, 12, 12}));
}

TEST_F(Polygon2DTest, ExpandingAPolygonWithoutTrianglesDoesNothing) {
    Polygon2D line = polygonOf({{0, 0}, {10, 0}});
    Polygon2D crossing = polygonOf({{0, 0}, {10, 10}, {10, 0}, {0, 10}});

    line.expand(2.0f);
    crossing.expand(2.0f);

    EXPECT_EQ(line.pointsX, (std::vector<float>{0, 10}));
    EXPECT_EQ(crossing.pointsX, (std::vector<float>{0, 10, 10, 0}));
}

TEST_F(Polygon2DTest, FrictionIsClampedIntoZeroToOne) {
    Polygon2D polygon;

    polygon.setFrictionLevel(-1.0f);
    const float low = polygon.frictionLevel;
    polygon.setFrictionLevel(2.0f);
    const float high = polygon.frictionLevel;
    polygon.setFrictionLevel(0.25f);

    EXPECT_EQ(low, 0.0f);
    EXPECT_EQ(high, 1.0f);
    EXPECT_EQ(polygon.frictionLevel, 0.25f);
}

TEST_F(Polygon2DTest, ACopyHasArraysOfItsOwn) {
    const Polygon2D original = polygonOf({{0, 0}, {8, 0}, {0, 6}});
    Polygon2D copy = original;
    Polygon2D assigned = polygonOf({{0, 0}, {0, 1}, {1, 1}, {1, 0}});
    assigned = original;

    copy.trianglesX[0] = 99.0f;
    assigned.addPoint(3, 30);

    EXPECT_EQ(original.trianglesX[0], 0.0f);
    EXPECT_EQ(original.triangleCount, 1u);
    EXPECT_EQ(copy.triangleCount, 1u);
    EXPECT_EQ(assigned.pointCount(), 4u);
}

TEST_F(Polygon2DTest, CoordinatesThatAreNoNumbersHarmNothing) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float infinity = std::numeric_limits<float>::infinity();
    Polygon2D polygon = polygonOf({{0, 0}, {nan, 0}, {nan, 0}, {infinity, 5}, {-infinity, nan}, {3, 4}});
    std::vector<Vector2> many;
    for (int i = 0; i < 40; ++i) {
        many.push_back({nan, static_cast<float>(i)});
        many.push_back({3e38f, static_cast<float>(i)});
    }

    polygon.addPoints(many);

    EXPECT_EQ(polygon.pointCount(), 86u);
    EXPECT_EQ(polygon.triangleCount, 0u);
}

} // namespace tarnwick
