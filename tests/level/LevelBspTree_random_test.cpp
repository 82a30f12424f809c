#include "core/LongWork.h"
#include "level/Level.h"
#include "level/LevelBspBuilder.h"
#include "level/LevelBspTree.h"
#include "reference/PlainBspTree.h"
#include "support/ModuleTest.h"
#include "support/RandomLevels.h"

#include <bit>
#include <cstdint>
#include <cstdlib>
#include <list>
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

        compareTrees(Level::polygons);
    }
    /// The tree that is there and that of the plain reading.
    static void compareTrees(std::list<Polygon2D>& polygons) {
        const PlainBspTree plain(polygons);
        expectSame(LevelBspTree::rootNode(), plain.root);
    }

    static std::uint32_t longRun(std::uint32_t whole, std::uint32_t brief) {
        return std::getenv("TARNWICK_LONG_TESTS") != nullptr ? whole : brief;
    }

    static constexpr std::uint32_t mostWatchedCalls = 4000; ///< Each stands for 256 steps of a load.
    static std::uint32_t watchedCalls;
};

std::uint32_t LevelBspTreeRandomTest::watchedCalls = 0;

/// Would catch a rule that ends endless cutting and changes what ended before: the pass without such a rule
/// gives the same edges.
TEST_F(LevelBspTreeRandomTest, LevelsThatEndedBeforeKeepTheirEdges) {
    const std::uint32_t levels = longRun(10'000, 400);
    std::uint32_t ended = 0;
    for (std::uint32_t seed = 1; seed <= levels && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Level::polygons.clear();
        if (seed % 2 == 0) {
            RandomLevels(seed).make(1 + seed % 40);
        } else {
            RandomLevels(seed).makeHuge(2 + seed % 6);
        }
        PlainBspTree::NodeList before = PlainBspTree::buildInitialNodeList(Level::polygons);
        std::vector<LevelBspNode> edges = LevelBspBuilder::buildInitialNodeList(Level::polygons);

        const bool endedBefore = PlainBspTree::optimiseWithoutEnd(before, 20'000);
        LevelBspBuilder::optimiseInitialNodeList(edges);

        if (endedBefore) {
            ++ended;
            ASSERT_EQ(edges.size(), before.size());
            auto edge = edges.begin();
            for (const LevelBspNode* const node : before) {
                ASSERT_EQ(bitsOf(*edge++), bitsOf(*node));
            }
        }
        for (const LevelBspNode* const node : before) {
            delete node;
        }
    }
    EXPECT_GT(ended, levels / 2);
    RecordProperty("ended", static_cast<int>(ended));
}

/// Would catch a level that is cut up without end, wherever its points lie.
TEST_F(LevelBspTreeRandomTest, EveryLevelOfTheWholeRangeEnds) {
    const std::uint32_t levels = longRun(100'000, 500);
    for (std::uint32_t seed = 1; seed <= levels && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Level::polygons.clear();
        RandomLevels(seed).makeHuge(2 + seed % 6);
        watchedCalls = 0;
        LongWork::setWatch([](LongWork::Kind) { return ++watchedCalls < mostWatchedCalls; });

        LevelBspTree::create();

        ASSERT_LT(watchedCalls, mostWatchedCalls) << "it would go on without end";
        if (seed % 5 == 0) {
            compareTrees(Level::polygons);
        }
    }
    LongWork::setWatch(nullptr);
}

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
