#include "particles/MovingEdgeField.h"

#include "core/Geometry.h"
#include "level/LevelBspNode.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace tarnwick {

class MovingEdgeFieldTest : public testing::Test {
protected:
    static LevelBspNode edge(Vector2 start, Vector2 end) {
        LevelBspNode node;
        node.start = start;
        node.end = end;
        node.length = distanceBetween(start, end);
        node.direction = end - start;
        normaliseVector(node.direction);
        node.normal = {-node.direction.y, node.direction.x};
        return node;
    }
    /// Whether a particle at `place` has anything to do with the edge.
    static bool matters(const LevelBspNode& node, Vector2 place) {
        const Vector2 fromStart = place - node.start;
        const float d = dotProduct(fromStart, node.normal);
        const float t = dotProduct(fromStart, node.direction);
        return d >= -2.0f && d <= 2.0f && t >= -2.0f && t <= node.length + 2.0f;
    }

    std::vector<LevelBspNode> edges;
    MovingEdgeField field;
};

TEST_F(MovingEdgeFieldTest, BeforeItIsBuiltAndWithoutEdgesItCoversNothing) {
    const bool before = field.covers({0.0f, 0.0f});

    field.build(edges, {0.0f, 0.0f}, 500.0f);

    EXPECT_FALSE(before);
    EXPECT_FALSE(field.covers({0.0f, 0.0f}));
}

TEST_F(MovingEdgeFieldTest, ItCoversTheSquareAroundTheViewAndNoMore) {
    edges.push_back(edge({0.0f, 0.0f}, {10.0f, 0.0f}));
    field.build(edges, {1000.0f, -2000.0f}, 500.0f);

    EXPECT_TRUE(field.covers({1000.0f, -2000.0f}));
    EXPECT_TRUE(field.covers({500.0f, -2600.0f}));
    EXPECT_FALSE(field.covers({0.0f, 0.0f}));
    EXPECT_FALSE(field.covers({1000.0f, 1e30f}));
    EXPECT_FALSE(field.covers({std::nanf(""), -2000.0f}));
    EXPECT_TRUE(field.edgesAt({1000.0f, -2000.0f}).empty()); // the edge lies outside
}

TEST_F(MovingEdgeFieldTest, EveryEdgeThatMattersIsAtEveryPlaceInOrder) {
    std::mt19937 engine(1);
    std::uniform_real_distribution<float> place(-800.0f, 800.0f);
    std::uniform_real_distribution<float> length(-60.0f, 60.0f);
    for (int i = 0; i < 300; ++i) {
        const Vector2 start{place(engine), place(engine)};
        const float scale = i % 20 == 0 ? 20.0f : 1.0f;
        edges.push_back(edge(start, start + Vector2{length(engine), length(engine)} * scale));
    }
    field.build(edges, {0.0f, 0.0f}, 560.0f);
    std::size_t matter = 0;
    for (int i = 0; i < 20000; ++i) {
        Vector2 middle{place(engine), place(engine)};
        if (i % 2 == 0) { // at the very reach of an edge
            const LevelBspNode& node = edges[static_cast<std::size_t>(i) % edges.size()];
            middle = node.start - node.direction * 2.0f + node.normal * 2.0f;
        }
        if (!field.covers(middle)) {
            continue;
        }
        const auto kept = field.edgesAt(middle);
        ASSERT_TRUE(std::ranges::is_sorted(kept));
        for (std::uint32_t number = 0; number < edges.size(); ++number) {
            if (matters(edges[number], middle)) {
                ASSERT_TRUE(std::ranges::binary_search(kept, number)) << middle.x << ", " << middle.y;
                ++matter;
            }
        }
    }
    EXPECT_GT(matter, 1000u);
}

TEST_F(MovingEdgeFieldTest, TooManyLongEdgesAreLeftToAPlainWalk) {
    for (int i = 0; i < 50; ++i) {
        edges.push_back(edge({-600.0f, -600.0f}, {600.0f, 600.0f}));
    }

    field.build(edges, {0.0f, 0.0f}, 560.0f);

    EXPECT_FALSE(field.covers({0.0f, 0.0f}));
}

TEST_F(MovingEdgeFieldTest, EdgesThatAreNowhereAreNoTrouble) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    edges.push_back(edge({nan, nan}, {nan, nan}));
    edges.push_back(edge({-infinity, 0.0f}, {infinity, 0.0f}));
    edges.push_back(edge({0.0f, 0.0f}, {10.0f, 0.0f}));

    field.build(edges, {0.0f, 0.0f}, 560.0f);

    ASSERT_TRUE(field.covers({5.0f, 0.0f}));
    EXPECT_TRUE(std::ranges::binary_search(field.edgesAt({5.0f, 0.0f}), 2u));
}

} // namespace tarnwick
