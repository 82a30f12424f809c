#include "level/LevelBspBuilder.h"

#include "level/Level.h"
#include "level/Polygon2D.h"
#include "support/ModuleTest.h"
#include "support/RandomLevels.h"

#include <algorithm>
#include <initializer_list>
#include <list>
#include <string>
#include <vector>

namespace tarnwick {

class LevelBspBuilderTest : public ModuleTest {
protected:
    std::list<Polygon2D> polygons;

    Polygon2D& add(std::initializer_list<Vector2> points) {
        Polygon2D& polygon = polygons.emplace_back();
        polygon.addPoints(std::vector<Vector2>(points));
        return polygon;
    }

    Polygon2D& addRectangle(float left, float top, float right, float bottom) {
        return add({{left, top}, {right, top}, {right, bottom}, {left, bottom}});
    }

    static void makeCaulk(Polygon2D& polygon) {
        polygon.collideable = false;
        polygon.drawable = false;
    }

    std::vector<LevelBspNode> initialEdges() { return LevelBspBuilder::buildInitialNodeList(polygons); }

    /// The edges that would be divided into the tree.
    std::vector<LevelBspNode> edges() {
        std::vector<LevelBspNode> list = initialEdges();
        LevelBspBuilder::optimiseInitialNodeList(list);
        LevelBspBuilder::removeCaulkNodes(list);
        return list;
    }

    static bool contains(const std::vector<LevelBspNode>& list, Vector2 start, Vector2 end) {
        return std::any_of(list.begin(), list.end(), [start, end](const LevelBspNode& edge) {
            return edge.start == start && edge.end == end;
        });
    }

    static std::ptrdiff_t countOf(const std::vector<LevelBspNode>& list, const Polygon2D& polygon) {
        return std::count_if(list.begin(), list.end(),
                             [&polygon](const LevelBspNode& edge) { return edge.polygon == &polygon; });
    }
};

TEST_F(LevelBspBuilderTest, EdgesStandInReverseOrderOfCreation) {
    add({{0, 0}, {10, 0}, {0, 10}});
    add({{20, 0}, {30, 0}, {20, 10}});

    const std::vector<LevelBspNode> list = initialEdges();

    ASSERT_EQ(list.size(), 6u);
    EXPECT_EQ(list[0].start, (Vector2{20, 10}));
    EXPECT_EQ(list[0].end, (Vector2{20, 0}));
    EXPECT_EQ(list[5].start, (Vector2{0, 0}));
    EXPECT_EQ(list[5].end, (Vector2{10, 0}));
}

TEST_F(LevelBspBuilderTest, EveryFieldOfAnEdgeIsFilled) {
    Polygon2D& polygon = add({{0, 0}, {8, 0}, {0, 6}});
    polygon.frictionLevel = 0.25f;

    const LevelBspNode edge = initialEdges()[1];

    EXPECT_EQ(edge.start, (Vector2{8, 0}));
    EXPECT_EQ(edge.end, (Vector2{0, 6}));
    EXPECT_EQ(edge.direction, (Vector2{-0.8f, 0.6f}));
    EXPECT_EQ(edge.normal, (Vector2{-0.6f, -0.8f}));
    EXPECT_EQ(edge.length, 10.0f);
    EXPECT_EQ(edge.friction, 0.25f);
    EXPECT_TRUE(edge.hasEdge);
    EXPECT_FALSE(edge.caulk);
    EXPECT_EQ(edge.polygon, &polygon);
}

TEST_F(LevelBspBuilderTest, NormalsPointIntoThePolygonInEitherWinding) {
    add({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    add({{0, 0}, {0, 10}, {10, 10}, {10, 0}});

    for (const LevelBspNode& edge : initialEdges()) {
        const Vector2 inward = Vector2{5, 5} - edge.start;
        EXPECT_EQ(inward.x * edge.normal.x + inward.y * edge.normal.y, 5.0f);
    }
}

TEST_F(LevelBspBuilderTest, OnlySolidPolygonsThatStandStillAndCaulkGiveEdges) {
    addRectangle(0, 0, 10, 10).collideable = false; // seen only
    addRectangle(20, 0, 30, 10).drawable = false;   // solid only
    addRectangle(40, 0, 50, 10).moveable = true;
    makeCaulk(addRectangle(60, 0, 70, 10));
    add({{80, 0}, {90, 0}});
    add({{80, 0}, {90, 10}, {90, 0}, {80, 10}}); // crosses itself

    const std::vector<LevelBspNode> list = initialEdges();

    EXPECT_EQ(list.size(), 8u);
    EXPECT_TRUE(list.front().caulk);
    EXPECT_FALSE(list.back().caulk);
    EXPECT_EQ(list.back().polygon, &*std::next(polygons.begin()));
}

TEST_F(LevelBspBuilderTest, AMovingCaulkPolygonStillHides) {
    Polygon2D& caulk = addRectangle(0, 0, 10, 10);
    makeCaulk(caulk);
    caulk.moveable = true;

    EXPECT_EQ(initialEdges().size(), 4u);
}

TEST_F(LevelBspBuilderTest, EdgesOfAHundredthAndLessAreLeftOut) {
    add({{0, 0}, {10, 0}, {10, 0.009765625f}, {0, 10}});

    EXPECT_EQ(initialEdges().size(), 3u);
}

TEST_F(LevelBspBuilderTest, TwoSquaresWithOneSideInCommonLoseItBoth) {
    const Polygon2D& left = addRectangle(0, 0, 10, 10);
    const Polygon2D& right = addRectangle(10, 0, 20, 10);
    right.pointCount();

    const std::vector<LevelBspNode> list = edges();

    EXPECT_FALSE(contains(list, {10, 0}, {10, 10}));
    EXPECT_FALSE(contains(list, {10, 10}, {10, 0}));
    EXPECT_GT(countOf(list, left) + countOf(list, right), 0);
    EXPECT_TRUE(contains(list, {0, 10}, {0, 0}));
    EXPECT_TRUE(contains(list, {20, 0}, {20, 10}));
}

TEST_F(LevelBspBuilderTest, ASmallerSquareTakesItsStretchOutOfTheLargerSide) {
    addRectangle(0, 0, 100, 100);
    const Polygon2D& smaller = addRectangle(100, 40, 120, 60);

    const std::vector<LevelBspNode> list = edges();

    EXPECT_TRUE(contains(list, {100, 0}, {100, 40}));
    EXPECT_TRUE(contains(list, {100, 60}, {100, 100}));
    EXPECT_FALSE(contains(list, {100, 0}, {100, 100}));
    EXPECT_FALSE(contains(list, {100, 60}, {100, 40}));
    EXPECT_EQ(countOf(list, smaller), 3);
    EXPECT_EQ(list.size(), 8u);
}

TEST_F(LevelBspBuilderTest, PiecesKeepTheRecordOfTheirEdgeAndMeasureTheirLength) {
    Polygon2D& larger = addRectangle(0, 0, 100, 100);
    larger.frictionLevel = 0.5f;
    addRectangle(100, 40, 120, 60);

    for (const LevelBspNode& edge : edges()) {
        if (edge.start == Vector2{100, 0}) {
            EXPECT_EQ(edge.length, 40.0f);
            EXPECT_EQ(edge.direction, (Vector2{0, 1}));
            EXPECT_EQ(edge.friction, 0.5f);
            EXPECT_EQ(edge.polygon, &larger);
        }
    }
}

TEST_F(LevelBspBuilderTest, EdgesThatOverlapInPartLeaveWhatSticksOut) {
    addRectangle(0, 0, 10, 30);
    addRectangle(10, 20, 20, 50);

    const std::vector<LevelBspNode> list = edges();

    EXPECT_TRUE(contains(list, {10, 0}, {10, 20}));
    EXPECT_TRUE(contains(list, {10, 50}, {10, 30}));
    EXPECT_EQ(list.size(), 8u);
}

TEST_F(LevelBspBuilderTest, AWallWhoseSeamFitsTheOrderBecomesOneEdge) {
    // The edge in front in the list is that of the polygon created later. Its end meets the start of the
    // earlier polygon's edge at the top, so there the later one is merged into the earlier.
    const Polygon2D& right = addRectangle(10, 0, 20, 10);
    addRectangle(0, 0, 10, 10);

    const std::vector<LevelBspNode> list = edges();

    EXPECT_TRUE(contains(list, {0, 0}, {20, 0}));
    for (const LevelBspNode& edge : list) {
        if (edge.start == Vector2{0, 0} && edge.end == Vector2{20, 0}) {
            EXPECT_EQ(edge.length, 20.0f);
            EXPECT_EQ(edge.polygon, &right);
        }
    }
}

TEST_F(LevelBspBuilderTest, ASeamThatDoesNotFitTheOrderStays) {
    // At the bottom the edges run the other way: there it is the edge behind in the list that would have to
    // go.
    addRectangle(10, 0, 20, 10);
    addRectangle(0, 0, 10, 10);

    const std::vector<LevelBspNode> list = edges();

    EXPECT_TRUE(contains(list, {20, 10}, {10, 10}));
    EXPECT_TRUE(contains(list, {10, 10}, {0, 10}));
    EXPECT_EQ(list.size(), 5u);
}

TEST_F(LevelBspBuilderTest, EdgesAgainstADestructablePolygonAreKeptOnBothSides) {
    addRectangle(0, 0, 10, 10).destructable = true;
    addRectangle(10, 0, 20, 10);

    const std::vector<LevelBspNode> list = edges();

    EXPECT_EQ(list.size(), 8u);
    EXPECT_TRUE(contains(list, {10, 0}, {10, 10}));
    EXPECT_TRUE(contains(list, {10, 10}, {10, 0}));
}

TEST_F(LevelBspBuilderTest, CaulkTakesItsStretchAwayAndLeavesNoEdge) {
    addRectangle(0, 0, 100, 100);
    Polygon2D& caulk = addRectangle(100, 40, 120, 60);
    makeCaulk(caulk);

    const std::vector<LevelBspNode> list = edges();

    EXPECT_EQ(countOf(list, caulk), 0);
    EXPECT_TRUE(contains(list, {100, 0}, {100, 40}));
    EXPECT_TRUE(contains(list, {100, 60}, {100, 100}));
    EXPECT_EQ(list.size(), 5u);
}

TEST_F(LevelBspBuilderTest, EmptyListsStayEmpty) {
    std::vector<LevelBspNode> list = initialEdges();

    LevelBspBuilder::optimiseInitialNodeList(list);
    LevelBspBuilder::removeCaulkNodes(list);

    EXPECT_TRUE(list.empty());
    EXPECT_TRUE(LevelBspBuilder::buildTree(list).empty());
}

TEST_F(LevelBspBuilderTest, TwoLongEdgesOfWhichACutWouldLeaveTheSameTwoStayAsTheyAre) {
    // On edges beyond 65,536 units rounding puts the end of one inside the other.
    const Polygon2D& first = add({{0, 0}, {61406, -22941}, {30000, 40000}});
    const Polygon2D& second = add({{0, 0}, {61406, -22941}, {30000, 40000}});

    const std::vector<LevelBspNode> list = edges();

    EXPECT_TRUE(contains(list, {0, 0}, {61406, -22941}));
    EXPECT_EQ(countOf(list, first), countOf(list, second));
    EXPECT_LE(list.size(), 6u);
}

/// Would catch edges that are left half cut: then there would be thousands of them.
TEST_F(LevelBspBuilderTest, EdgesThatCannotBeCutApartStayWhole) {
    std::uint32_t whole = 0;
    for (std::uint32_t seed = 1; seed <= 500; ++seed) {
        Level::polygons.clear();
        RandomLevels(seed).makeHuge(2 + seed % 6);
        std::vector<LevelBspNode> list = LevelBspBuilder::buildInitialNodeList(Level::polygons);
        const std::size_t before = list.size();

        if (!LevelBspBuilder::optimiseInitialNodeList(list)) {
            ++whole;
            EXPECT_LE(list.size(), before) << "seed " << seed;
        }
    }
    EXPECT_GT(whole, 0u);
    EXPECT_LT(whole, 50u);
}

} // namespace tarnwick
