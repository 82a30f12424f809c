#include "level/Level.h"
#include "level/LevelBspTree.h"
#include "reference/PlainBspTree.h"
#include "support/ModuleTest.h"
#include "support/RandomLevels.h"

#include <bit>
#include <cstdint>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

using Bits = std::vector<std::uint32_t>;

void append(Bits& bits, float value) {
    bits.push_back(std::bit_cast<std::uint32_t>(value));
}

void append(Bits& bits, Vector2 vector) {
    append(bits, vector.x);
    append(bits, vector.y);
}

/// The numbers of a node, to the last bit.
Bits bitsOf(const LevelBspNode& node) {
    Bits bits;
    append(bits, node.start);
    append(bits, node.end);
    append(bits, node.normal);
    append(bits, node.direction);
    append(bits, node.length);
    append(bits, node.friction);
    return bits;
}

/// Two nodes and all below them.
void expectSame(const LevelBspNode* node, const LevelBspNode* plain) {
    ASSERT_EQ(node == nullptr, plain == nullptr);
    if (node == nullptr) {
        return;
    }
    ASSERT_EQ(bitsOf(*node), bitsOf(*plain));
    ASSERT_EQ(node->hasEdge, plain->hasEdge);
    ASSERT_EQ(node->caulk, plain->caulk);
    ASSERT_EQ(node->polygon, plain->polygon);
    ASSERT_EQ(node->parent == nullptr, plain->parent == nullptr);
    ASSERT_TRUE(node->behind == nullptr || node->behind->parent == node);
    ASSERT_TRUE(node->inFront == nullptr || node->inFront->parent == node);
    ASSERT_NO_FATAL_FAILURE(expectSame(node->behind, plain->behind));
    ASSERT_NO_FATAL_FAILURE(expectSame(node->inFront, plain->inFront));
}

} // namespace

class LevelBspTreeRandomTest : public ModuleTest {
protected:
    /// A level, its tree, and the tree of the plain reading.
    static void compareTrees(std::uint32_t seed, std::size_t polygons) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Level::polygons.clear();
        RandomLevels(seed).make(polygons);

        LevelBspTree::create();

        const PlainBspTree plain(Level::polygons);
        expectSame(LevelBspTree::rootNode(), plain.root);
    }
};

TEST_F(LevelBspTreeRandomTest, TheTreesOfSmallLevelsAreThoseOfThePlainReading) {
    for (std::uint32_t seed = 1; seed <= 600 && !HasFailure(); ++seed) {
        compareTrees(seed, 1 + seed % 9);
    }
}

TEST_F(LevelBspTreeRandomTest, TheTreesOfLargeLevelsAreThoseOfThePlainReading) {
    for (std::uint32_t seed = 1; seed <= 60 && !HasFailure(); ++seed) {
        compareTrees(seed, 100);
    }
}

TEST_F(LevelBspTreeRandomTest, RaysHitWhatTheyHitInThePlainReading) {
    for (std::uint32_t seed = 1; seed <= 60 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Level::polygons.clear();
        RandomLevels(seed).make(30);
        LevelBspTree::create();
        const PlainBspTree plain(Level::polygons);
        RandomOutlines random(seed);
        std::uint32_t hits = 0;
        for (const Vector2 start : random.scribble(300, 40)) {
            const Vector2 target = start + random.scribble(1, 60).front() - Vector2{300.0f, 300.0f};
            Vector2 end = target;
            Vector2 plainEnd = target;

            const LevelBspNode* hit = LevelBspTree::raycast(start, end);
            const LevelBspNode* plainHit = plain.raycast(start, plainEnd);

            ASSERT_EQ(hit == nullptr, plainHit == nullptr);
            ASSERT_EQ(std::bit_cast<std::uint64_t>(end), std::bit_cast<std::uint64_t>(plainEnd));
            if (hit != nullptr) {
                ASSERT_EQ(bitsOf(*hit), bitsOf(*plainHit));
                ++hits;
            } else {
                ASSERT_EQ(std::bit_cast<std::uint64_t>(end), std::bit_cast<std::uint64_t>(target));
            }
        }
        static_cast<void>(hits);
    }
}

TEST_F(LevelBspTreeRandomTest, TheNodesLieInTheOrderOfAWalk) {
    RandomLevels(8).make(100);

    LevelBspTree::create();

    std::vector<const LevelBspNode*> walked;
    std::vector<const LevelBspNode*> waiting{LevelBspTree::rootNode()};
    while (!waiting.empty()) {
        const LevelBspNode* node = waiting.back();
        waiting.pop_back();
        if (node != nullptr) {
            walked.push_back(node);
            waiting.push_back(node->inFront);
            waiting.push_back(node->behind);
        }
    }
    ASSERT_GT(walked.size(), 50u);
    for (std::size_t i = 0; i < walked.size(); ++i) {
        EXPECT_EQ(walked[i], LevelBspTree::rootNode() + i);
    }
}

} // namespace tarnwick
