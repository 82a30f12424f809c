#include "level/LevelBspPartition.h"

#include "core/Geometry.h"
#include "support/ModuleTest.h"

#include <initializer_list>
#include <utility>
#include <vector>

namespace tarnwick {

class LevelBspPartitionTest : public ModuleTest {
protected:
    static LevelBspNode edge(Vector2 start, Vector2 end) {
        LevelBspNode result;
        result.start = start;
        result.end = end;
        result.length = distanceBetween(start, end);
        result.direction = end - start;
        normaliseVector(result.direction);
        result.normal = {-result.direction.y, result.direction.x};
        return result;
    }

    static std::vector<LevelBspNode> divide(const std::vector<LevelBspNode>& edges) {
        return LevelBspPartition(edges).build();
    }
};

TEST_F(LevelBspPartitionTest, ALoneEdgeIsTheRoot) {
    const std::vector<LevelBspNode> nodes = divide({edge({0, 0}, {10, 0})});

    ASSERT_EQ(nodes.size(), 1u);
    EXPECT_EQ(nodes[0].parent, nullptr);
    EXPECT_EQ(nodes[0].behind, nullptr);
    EXPECT_EQ(nodes[0].inFront, nullptr);
}

TEST_F(LevelBspPartitionTest, OfEqualCandidatesTheFirstInTheListIsPicked) {
    const std::vector<LevelBspNode> nodes =
        divide({edge({500, 0}, {510, 0}), edge({0, 20}, {10, 20}), edge({-90, 40}, {-80, 40})});

    ASSERT_EQ(nodes.size(), 3u);
    EXPECT_EQ(nodes[0].start, (Vector2{0, 20})); // one edge on either side; the others have both on one side
    EXPECT_EQ(nodes[1].start, (Vector2{500, 0}));
    EXPECT_EQ(nodes[2].start, (Vector2{-90, 40}));
    const std::vector<LevelBspNode> equals = divide({edge({500, 0}, {510, 0}), edge({0, 20}, {10, 20})});
    EXPECT_EQ(equals[0].start, (Vector2{500, 0}));
}

TEST_F(LevelBspPartitionTest, ANodeIsFollowedByWhatIsBehindAndThenByWhatIsInFront) {
    const std::vector<LevelBspNode> nodes =
        divide({edge({0, 0}, {10, 0}), edge({0, 20}, {10, 20}), edge({0, 40}, {10, 40})});

    ASSERT_EQ(nodes.size(), 3u);
    EXPECT_EQ(nodes[0].behind, &nodes[1]);
    EXPECT_EQ(nodes[0].inFront, &nodes[2]);
    EXPECT_EQ(nodes[1].parent, &nodes[0]);
    EXPECT_EQ(nodes[1].start.y, 0.0f);
    EXPECT_EQ(nodes[2].start.y, 40.0f);
}

TEST_F(LevelBspPartitionTest, AnEdgeThatOnlyTouchesTheLineIsNotSplit) {
    // The first edge splits both others, barely: as far as that counts as no split, it is not one.
    const std::vector<LevelBspNode> nodes =
        divide({edge({0, 0}, {100, 0}), edge({10, 20}, {10, -0.1f}), edge({20, -20}, {20, 0.09f})});

    ASSERT_EQ(nodes.size(), 3u);
    for (const LevelBspNode& node : nodes) {
        EXPECT_GT(node.length, 20.0f);
    }
}

TEST_F(LevelBspPartitionTest, AnEdgeAcrossTheLineIsSplitThere) {
    LevelBspNode across = edge({10, -30}, {10, 50});
    across.friction = 0.5f;
    across.hasEdge = false;
    // Of equal candidates the first is picked: both others come before the edge that they split.
    const std::vector<LevelBspNode> nodes = divide({edge({0, 0}, {100, 0}), edge({0, 1}, {100, 1}), across});

    float length = 0.0f;
    std::size_t pieces = 0;
    for (const LevelBspNode& node : nodes) {
        if (node.start.x == 10.0f) {
            length += node.length;
            ++pieces;
            EXPECT_EQ(node.direction, (Vector2{0, 1}));
            EXPECT_EQ(node.normal, (Vector2{-1, 0}));
            EXPECT_EQ(node.friction, 0.5f);
            EXPECT_FALSE(node.hasEdge);
        }
    }
    EXPECT_EQ(pieces, 3u);
    EXPECT_EQ(length, 80.0f);
}

TEST_F(LevelBspPartitionTest, ADeepTreeIsBuiltWithoutRecursion) {
    // A ring seen from inside: whatever edge is picked, all others lie in front of it.
    std::vector<LevelBspNode> edges;
    constexpr int corners = 700;
    Vector2 before{1e6f, 0.0f};
    for (int i = 1; i <= corners; ++i) {
        Vector2 corner{1e6f, 0.0f};
        rotateVector(corner, 6.2831853f * static_cast<float>(i) / static_cast<float>(corners));
        edges.push_back(edge(before, corner));
        before = corner;
    }

    const std::vector<LevelBspNode> nodes = divide(edges);

    std::size_t depth = 0;
    for (const LevelBspNode* node = &nodes.back(); node != nullptr; node = node->parent) {
        ++depth;
    }
    EXPECT_GE(nodes.size(), static_cast<std::size_t>(corners));
    EXPECT_GT(depth, 300u);
}

} // namespace tarnwick
