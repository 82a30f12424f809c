#include "tools/level/LevelGeometry.h"

#include "level/LevelFile.h"
#include "support/ModuleTest.h"

namespace tarnwick {

class LevelGeometryTest : public ModuleTest {
protected:
    static LevelFile::PolygonRecord square(std::int32_t left, std::int32_t top, std::int32_t mode = 0) {
        LevelFile::PolygonRecord record;
        record.polygonMode = mode;
        record.points = {{left, top}, {left + 10, top}, {left + 10, top + 10}, {left, top + 10}};
        return record;
    }
};

TEST_F(LevelGeometryTest, PolygonsAreBuiltAsTheGameBuildsThem) {
    LevelFile level;
    level.polygons = {square(0, 0), square(50, 0, 1), square(100, 0, 2), square(150, 0, 3),
                      square(200, 0, 7)};
    level.polygons[0].points.push_back({0, 0}); // the game keeps the first only
    level.polygons[1].layer = 3;

    const std::list<Polygon2D> polygons = buildPolygons(level);

    const std::vector<Polygon2D> built(polygons.begin(), polygons.end());
    ASSERT_EQ(built.size(), 5U);
    EXPECT_EQ(built[0].pointCount(), 4U);
    EXPECT_EQ(built[0].triangleCount, 2U);
    EXPECT_EQ(built[1].layer, 3U);
    const std::vector<bool> solid = {true, false, true, false, true};
    const std::vector<bool> seen = {true, true, false, false, true};
    for (std::size_t i = 0; i < built.size(); ++i) {
        EXPECT_EQ(built[i].collideable, solid[i]) << i;
        EXPECT_EQ(built[i].drawable, seen[i]) << i;
    }
}

TEST_F(LevelGeometryTest, MoversAndRemovingTriggersMarkTheirPolygons) {
    LevelFile level;
    level.polygons = {square(0, 0), square(50, 0), square(100, 0), square(150, 0)};
    for (std::int32_t id = 1; id <= 4; ++id) {
        level.polygons[static_cast<std::size_t>(id - 1)].polygonId = id;
    }
    level.movers.push_back({1, 1.0f, {}, {}});
    level.triggers.resize(3);
    level.triggers[0].targetId = 2;
    level.triggers[0].triggerType = 300;
    level.triggers[1].targetId = 3;
    level.triggers[1].triggerType = 301;
    level.triggers[2].targetId = 4;
    level.triggers[2].triggerType = 302;

    const std::list<Polygon2D> polygons = buildPolygons(level);

    const std::vector<Polygon2D> built(polygons.begin(), polygons.end());
    EXPECT_TRUE(built[0].moveable);
    EXPECT_FALSE(built[0].destructable);
    EXPECT_TRUE(built[1].destructable);
    EXPECT_TRUE(built[2].destructable);
    EXPECT_FALSE(built[3].moveable || built[3].destructable);
}

TEST_F(LevelGeometryTest, TheTreeOfNothingHasNoEdgesAndNoDepth) {
    const TreeSize size = measureTree({});

    EXPECT_EQ(size.edges, 0U);
    EXPECT_EQ(size.depth, 0U);
}

TEST_F(LevelGeometryTest, TheTreeOfASquareHasFourEdgesInLine) {
    LevelFile level;
    level.polygons = {square(0, 0)};

    const TreeSize size = measureTree(buildPolygons(level));

    EXPECT_EQ(size.edges, 4U);
    EXPECT_EQ(size.depth, 4U); // each side has all others on its solid side
}

TEST_F(LevelGeometryTest, ASharedSideIsNoEdge) {
    LevelFile level;
    level.polygons = {square(0, 0), square(10, 0)};

    const TreeSize size = measureTree(buildPolygons(level));

    EXPECT_LT(size.edges, 7U); // two squares apart have eight
}

} // namespace tarnwick
