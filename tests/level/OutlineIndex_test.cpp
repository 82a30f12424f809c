#include "level/OutlineIndex.h"

#include "support/ModuleTest.h"
#include "support/RandomOutlines.h"

#include <string>
#include <vector>

namespace tarnwick {

namespace {

std::vector<Polygon2D::Edge> chainOf(const std::vector<Vector2>& points) {
    std::vector<Polygon2D::Edge> chain;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        chain.push_back({points[i], points[i + 1]});
    }
    return chain;
}

/// The longest of the shorter outlines that do not cross themselves, by trying them all.
std::size_t longestSimplePrefix(const std::vector<Vector2>& points) {
    for (std::size_t count = points.size() - 1; count >= 3; --count) {
        Polygon2D polygon;
        for (std::size_t i = 0; i < count; ++i) {
            polygon.pointsX.push_back(points[i].x);
            polygon.pointsY.push_back(points[i].y);
        }
        if (!polygon.isDegenerate()) {
            return count;
        }
    }
    return 0;
}

} // namespace

class OutlineIndexTest : public ModuleTest {};

TEST_F(OutlineIndexTest, SegmentsBetweenCornersCrossWhatTheyCrossWhenEveryEdgeIsLookedAt) {
    for (std::uint32_t seed = 1; seed <= 200; ++seed) {
        RandomOutlines random(seed);
        const std::vector<Vector2> points = random.any(80);
        const std::vector<Polygon2D::Edge> chain = chainOf(points);
        const OutlineIndex index(chain);
        for (int i = 0; i < 100; ++i) {
            const auto count = static_cast<std::uint32_t>(points.size());
            const Polygon2D::Edge edge{points[random.below(count)], points[random.below(count)]};

            EXPECT_EQ(index.crosses(edge), Polygon2D::edgeCrossesEdges(edge, chain)) << "seed " << seed;
        }
    }
}

TEST_F(OutlineIndexTest, TrianglesOfAnyShapeCoverWhatTheyCoverWhenEveryCornerIsLookedAt) {
    for (std::uint32_t seed = 1; seed <= 200; ++seed) {
        RandomOutlines random(seed);
        const std::vector<Vector2> points = random.any(80);
        const std::vector<Polygon2D::Edge> chain = chainOf(points);
        const OutlineIndex index(chain);
        for (int i = 0; i < 100; ++i) { // clockwise, flat and single-point triangles too
            const auto count = static_cast<std::uint32_t>(points.size());
            const Vector2 a = points[random.below(count)];
            const Vector2 b = points[random.below(count)];
            const Vector2 c = points[random.below(count)];
            const float triangle[] = {a.x, a.y, b.x, b.y, c.x, c.y};

            EXPECT_EQ(index.covers(triangle), Polygon2D::triangleCoversPolyPoint(triangle, chain))
                << "seed " << seed;
        }
    }
}

TEST_F(OutlineIndexTest, TheLongestSimplePrefixIsTheOneFoundByTryingThemAll) {
    std::size_t found = 0;
    for (std::uint32_t seed = 1; seed <= 300; ++seed) {
        const std::vector<Vector2> points = RandomOutlines(seed).any(60);
        if (points.size() < 4) {
            continue;
        }
        const std::vector<Polygon2D::Edge> chain = chainOf(points);

        const std::size_t prefix = OutlineIndex(chain).longestSimplePrefix();

        EXPECT_EQ(prefix, longestSimplePrefix(points)) << "seed " << seed << ": " << describe(points);
        found += prefix > 0 ? 1 : 0;
    }
    EXPECT_GT(found, 100u);
}

} // namespace tarnwick
