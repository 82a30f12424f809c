#include "level/LevelBspTree.h"

#include "console/GLConsole.h"
#include "core/Random.h"
#include "level/Level.h"
#include "support/ConsoleAnswer.h"
#include "support/ModuleTest.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace tarnwick {

class LevelBspTreeTest : public ModuleTest {
protected:
    static constexpr const char* titleBar =
        "\n\n****************************************************************\n\n";

    static Polygon2D& add(std::initializer_list<Vector2> points) {
        Polygon2D& polygon = Level::polygons.emplace_back();
        polygon.addPoints(std::vector<Vector2>(points));
        return polygon;
    }

    /// A square of 100 by 100 at (0, 0), and its tree.
    static void createSquare() {
        add({{0, 0}, {100, 0}, {100, 100}, {0, 100}});
        LevelBspTree::create();
    }

    static const LevelBspNode* walkNode() { return LevelBspTree::state.walkNode; }
    static const std::array<Vector2, 256>& testRayStarts() { return LevelBspTree::state.testRayStarts; }
    static const std::array<Vector2, 256>& testRayEnds() { return LevelBspTree::state.testRayEnds; }
};

TEST_F(LevelBspTreeTest, BuildingTellsItsStepsAndRegistersTheCommands) {
    add({{0, 0}, {100, 0}, {100, 100}, {0, 100}});
    GLConsole::clear();

    LevelBspTree::create();

    EXPECT_EQ(GLConsole::outputText(),
              "\nCreating the level bsp tree...\nBsp Tree created in 0.000000 seconds.");
    for (const char* name : {"BSPSIZE", "BSPDEPTH", "BSPWALK", "BSPWALKDRAW", "BSPCAST", "BSPCASTDRAW",
                             "BSPSPLITDRAW", "BSPNODEDRAW"}) {
        EXPECT_TRUE(GLConsole::commands().contains(name)) << name;
    }
}

TEST_F(LevelBspTreeTest, ALevelWithoutEdgesHasAnEmptyTreeWithCommands) {
    GLConsole::clear();

    LevelBspTree::create();

    EXPECT_EQ(GLConsole::outputText(), "\nCreating the level bsp tree...");
    EXPECT_EQ(LevelBspTree::rootNode(), nullptr);
    EXPECT_EQ(answerTo("BspSize"), "\nBspSize is 0");
    EXPECT_EQ(answerTo("BspDepth"), "\nBspDepth is 0");
    EXPECT_EQ(answerTo("BspWalk LEFT"), "");
    Vector2 end{1, 1};
    EXPECT_EQ(LevelBspTree::raycast({0, 0}, end), nullptr);
}

TEST_F(LevelBspTreeTest, ALevelOfCaulkAloneHasAnEmptyTree) {
    Polygon2D& caulk = add({{0, 0}, {100, 0}, {100, 100}, {0, 100}});
    caulk.collideable = false;
    caulk.drawable = false;

    LevelBspTree::create();

    EXPECT_EQ(LevelBspTree::rootNode(), nullptr);
}

TEST_F(LevelBspTreeTest, EdgesThatAllHideOneAnotherLeaveAnEmptyTree) {
    add({{0, 0}, {100, 0}, {100, 100}, {0, 100}});
    Polygon2D& caulk = add({{0, 0}, {100, 0}, {100, 100}, {0, 100}});
    caulk.counterClockwise = false; // its edges run the other way
    caulk.collideable = false;
    caulk.drawable = false;

    LevelBspTree::create();

    EXPECT_EQ(LevelBspTree::rootNode(), nullptr);
}

TEST_F(LevelBspTreeTest, AMovingPolygonAddsNoNode) {
    add({{0, 0}, {100, 0}, {100, 100}, {0, 100}}).moveable = true;

    LevelBspTree::create();

    EXPECT_EQ(LevelBspTree::rootNode(), nullptr);
}

TEST_F(LevelBspTreeTest, TheGenerationChangesWithEveryBuildingAndClearing) {
    const std::uint32_t before = LevelBspTree::generation();
    createSquare();
    const std::uint32_t built = LevelBspTree::generation();
    LevelBspTree::clear();
    const std::uint32_t cleared = LevelBspTree::generation();

    LevelBspTree::create();

    EXPECT_NE(built, before);
    EXPECT_NE(cleared, built);
    EXPECT_NE(LevelBspTree::generation(), cleared);
}

TEST_F(LevelBspTreeTest, TheNodeListGoesFromWhatIsBehindOverTheNodeToWhatIsInFront) {
    for (float x = 0.0f; x < 500.0f; x += 100.0f) {
        add({{x, x}, {x + 50, x}, {x + 25, x + 70}});
    }
    LevelBspTree::create();
    std::vector<LevelBspNode*> expected;
    const auto walk = [&expected](const auto& self, LevelBspNode* node) -> void {
        if (node != nullptr) {
            self(self, node->behind);
            expected.push_back(node);
            self(self, node->inFront);
        }
    };
    walk(walk, LevelBspTree::rootNode());
    std::vector<LevelBspNode*> nodes{nullptr};

    LevelBspTree::getNodeList(nodes);

    EXPECT_EQ(nodes.front(), nullptr); // what was there stays
    EXPECT_EQ(std::vector<LevelBspNode*>(nodes.begin() + 1, nodes.end()), expected);
    EXPECT_GE(expected.size(), 15u);
}

TEST_F(LevelBspTreeTest, ResettingSwitchesEveryEdgeOn) {
    createSquare();
    std::vector<LevelBspNode*> nodes;
    LevelBspTree::getNodeList(nodes);
    for (LevelBspNode* node : nodes) {
        node->hasEdge = false;
    }
    answerTo("BspNodeDraw true");

    LevelBspTree::resetTree();

    for (const LevelBspNode* node : nodes) {
        EXPECT_TRUE(node->hasEdge);
    }
    EXPECT_EQ(answerTo("BspNodeDraw"), "\nBspNodeDraw is false");
}

TEST_F(LevelBspTreeTest, ARayEndsWhereItFirstMeetsTheLevel) {
    createSquare();
    Vector2 end{300, 50};

    const LevelBspNode* hit = LevelBspTree::raycast({-100, 50}, end);

    ASSERT_NE(hit, nullptr);
    EXPECT_EQ(end, (Vector2{0, 50}));
    EXPECT_EQ(hit->normal, (Vector2{1, 0}));
}

TEST_F(LevelBspTreeTest, ARayThatMeetsNothingKeepsItsEnd) {
    createSquare();
    Vector2 end{300, -50};

    const LevelBspNode* hit = LevelBspTree::raycast({-100, -50}, end);

    EXPECT_EQ(hit, nullptr);
    EXPECT_EQ(end, (Vector2{300, -50}));
}

TEST_F(LevelBspTreeTest, ARayOfNoLengthMeetsNothing) {
    createSquare();
    Vector2 end{50, 0};

    EXPECT_EQ(LevelBspTree::raycast({50, 0}, end), nullptr);
}

TEST_F(LevelBspTreeTest, ASwitchedOffEdgeLetsRaysThrough) {
    createSquare();
    Vector2 end{300, 50};
    Vector2 first = end;
    LevelBspTree::raycast({-100, 50}, first)->hasEdge = false;

    const LevelBspNode* hit = LevelBspTree::raycast({-100, 50}, end);

    ASSERT_NE(hit, nullptr);
    EXPECT_EQ(end, (Vector2{100, 50}));
}

TEST_F(LevelBspTreeTest, ARayThatStartsOnASwitchedOffNodeReportsItAllTheSame) {
    createSquare();
    Vector2 end{50, 200};
    Vector2 edge{50, 50};
    LevelBspNode* top = LevelBspTree::raycast({50, -50}, edge);
    top->hasEdge = false;

    const LevelBspNode* hit = LevelBspTree::raycast({50, 0}, end);

    EXPECT_EQ(hit, top);
    EXPECT_EQ(end, (Vector2{50, 0}));
}

TEST_F(LevelBspTreeTest, ARayThatStartsAtTheEndOfAnEdgeIsMovedOntoIt) {
    add({{0, 0}, {100, 0}, {50, -100}});
    LevelBspTree::create();
    Vector2 end{0, 500};

    const LevelBspNode* hit = LevelBspTree::raycast({0.01f, 0.01f}, end);

    ASSERT_NE(hit, nullptr);
    EXPECT_NE(end, (Vector2{0.01f, 0.01f}));
    const Vector2 moved = end - hit->start;
    EXPECT_NEAR(moved.x * hit->direction.x + moved.y * hit->direction.y, 0.025f, 1e-5f);
}

TEST_F(LevelBspTreeTest, ARayThatEndsOnAnEdgeHitsItFromTheFreeSideAlone) {
    createSquare();
    Vector2 fromOutside{50, 0};
    Vector2 fromInside{50, 0};

    const LevelBspNode* outsideHit = LevelBspTree::raycast({50, -80}, fromOutside);
    const LevelBspNode* insideHit = LevelBspTree::raycast({50, 40}, fromInside);

    EXPECT_NE(outsideHit, nullptr);
    EXPECT_EQ(fromOutside, (Vector2{50, 0}));
    EXPECT_EQ(insideHit, nullptr);
    EXPECT_EQ(fromInside, (Vector2{50, 0}));
}

TEST_F(LevelBspTreeTest, ARayPassesBesideTheEndOfAnEdge) {
    add({{0, 0}, {100, 0}, {100, 100}});
    LevelBspTree::create();
    Vector2 beside{-0.5f, 100};
    Vector2 at{0, 100};

    EXPECT_EQ(LevelBspTree::raycast({-0.5f, -100}, beside), nullptr);
    EXPECT_NE(LevelBspTree::raycast({0, -100}, at), nullptr);
}

TEST_F(LevelBspTreeTest, TheCommandsTellSizeAndDepth) {
    createSquare();

    EXPECT_EQ(answerTo("BspSize"), "\nBspSize is 4");
    EXPECT_EQ(answerTo("BspDepth"), "\nBspDepth is 4"); // all others lie in front of each side
    EXPECT_EQ(answerTo("BspSize 3"), "\nUSAGE: BspSize < nothing >");
}

TEST_F(LevelBspTreeTest, AWalkMovesAndTellsWhereItCanGo) {
    createSquare();

    EXPECT_EQ(walkNode(), LevelBspTree::rootNode());
    EXPECT_EQ(answerTo("BspWalk right"), "\nWalk options for current node: ROOT PARENT RIGHT ");
    EXPECT_EQ(walkNode(), LevelBspTree::rootNode()->inFront);
    EXPECT_EQ(answerTo("BspWalk LEFT"),
              "\nNo left child node at current node.\nWalk options for current node: ROOT PARENT RIGHT ");
    EXPECT_EQ(answerTo("BspWalk Parent"), "\nWalk options for current node: RIGHT ");
    EXPECT_EQ(answerTo("BspWalk PARENT"),
              "\nNo parent node at current node.\nWalk options for current node: RIGHT ");
    EXPECT_EQ(answerTo("BspWalk ROOT"), "\nAlready at root node.\nWalk options for current node: RIGHT ");
    answerTo("BspWalk RIGHT");
    answerTo("BspWalk RIGHT");
    EXPECT_EQ(answerTo("BspWalk RIGHT"), "\nWalk options for current node: ROOT PARENT ");
    EXPECT_EQ(answerTo("BspWalk RIGHT"),
              "\nNo right child node at current node.\nWalk options for current node: ROOT PARENT ");
    EXPECT_EQ(answerTo("BspWalk ROOT"), "\nWalk options for current node: RIGHT ");
}

TEST_F(LevelBspTreeTest, AWalkToTheLeftGoesBehind) {
    add({{0, 0}, {100, 0}, {100, 100}, {0, 100}});
    add({{300, 300}, {400, 300}, {400, 400}, {300, 400}});
    add({{600, 0}, {700, 0}, {700, 100}, {600, 100}});
    LevelBspTree::create();
    ASSERT_NE(LevelBspTree::rootNode()->behind, nullptr);

    answerTo("BspWalk LEFT");

    EXPECT_EQ(walkNode(), LevelBspTree::rootNode()->behind);
}

TEST_F(LevelBspTreeTest, AnUnknownWalkPrintsTheWordsItKnows) {
    createSquare();

    EXPECT_EQ(answerTo("BspWalk up"),
              "\nUnrecognised tree walk command. Valid commands are: \n\nBspTreeWalk LEFT\nBspTreeWalk RIGHT"
              "\nBspTreeWalk PARENT\nBspTreeWalk ROOT\n\nWalk options for current node: RIGHT ");
}

TEST_F(LevelBspTreeTest, TheDrawSwitchesAreOffAfterBuilding) {
    createSquare();
    for (const std::string name : {"BspWalkDraw", "BspCastDraw", "BspSplitDraw", "BspNodeDraw"}) {
        EXPECT_EQ(answerTo(name), "\n" + name + " is false");
        EXPECT_EQ(answerTo(name + " true"), "\n" + name + " is now true");
    }

    LevelBspTree::create();

    for (const std::string name : {"BspWalkDraw", "BspCastDraw", "BspSplitDraw", "BspNodeDraw"}) {
        EXPECT_EQ(answerTo(name), "\n" + name + " is false");
    }
}

TEST_F(LevelBspTreeTest, TheRayTestCastsRaysToAllSidesAndMeasures) {
    seedRandom(0);
    createSquare();

    const std::string answer = answerTo("BspCast 50 50");

    EXPECT_EQ(answer, std::string(titleBar) + "Test ray cast results" + titleBar +
                          "\nTest cast rays:              256"
                          "\nTest cast iterations:        2048"
                          "\nTotal rays cast:             524288"
                          "\nSeconds taken:               0.000000"
                          "\nClocks taken:                0"
                          "\nRays per second (average):   52428800000000.000000");
    for (std::size_t ray = 0; ray < testRayStarts().size(); ++ray) {
        EXPECT_EQ(testRayStarts()[ray], (Vector2{50, 50}));
        EXPECT_GE(testRayEnds()[ray].x, 0.0f); // stopped by the square from within
        EXPECT_LE(testRayEnds()[ray].x, 100.0f);
        EXPECT_GE(testRayEnds()[ray].y, 0.0f);
        EXPECT_LE(testRayEnds()[ray].y, 100.0f);
    }
}

TEST_F(LevelBspTreeTest, TheRayTestDrawsTheEndsXAndThenItsY) {
    LevelBspTree::create(); // empty: rays keep their ends
    seedRandom(0);
    answerTo("BspCast 10 -20");
    seedRandom(0);
    for (int draw = 0; draw < 2 * 2047 * 256; ++draw) {
        randomFloat();
    }

    const float x = (randomFloat() - 0.5f) * 100000.0f;
    const float y = (randomFloat() - 0.5f) * 100000.0f;

    EXPECT_EQ(testRayEnds()[0], (Vector2{10.0f + x, -20.0f + y}));
}

TEST_F(LevelBspTreeTest, TheRayTestWantsTwoNumbers) {
    createSquare();

    for (const char* line : {"BspCast", "BspCast 1", "BspCast 1 2 3", "BspCast 1 b", "BspCast a 2"}) {
        EXPECT_EQ(answerTo(line), "\nUSAGE: BspCast < number > < number >") << line;
    }
}

} // namespace tarnwick
