#include "particles/CircleCollision.h"

#include "core/Geometry.h"
#include "level/Level.h"
#include "level/LevelBspTree.h"
#include "mechanisms/MoverManager.h"
#include "support/ModuleTest.h"
#include "support/SceneAccess.h"

#include <cmath>
#include <vector>

namespace tarnwick {

class CircleCollisionTest : public ModuleTest {
protected:
    static constexpr float friction = 0.25f;

    /// A block with its top at y = 0, from x = -100 to 100, 50 deep.
    static void buildFloor() {
        SceneAccess::addPolygon({{-100.0f, 0.0f}, {100.0f, 0.0f}, {100.0f, 50.0f}, {-100.0f, 50.0f}},
                                friction);
        SceneAccess::buildTree();
    }
};

TEST_F(CircleCollisionTest, ACircleInOpenSpaceIsNotHit) {
    buildFloor();
    Vector2 centre{0.0f, -40.0f};

    const bool hit = CircleCollision::collisionTest(centre, 2.0f);

    EXPECT_FALSE(hit);
    EXPECT_EQ(centre, (Vector2{0.0f, -40.0f}));
    EXPECT_EQ(CircleCollision::contactNormal(), Vector2{});
    EXPECT_EQ(CircleCollision::contactFriction(), 1.0f);
}

TEST_F(CircleCollisionTest, WithoutALevelNothingIsHit) {
    Vector2 centre{3.0f, 4.0f};

    EXPECT_FALSE(CircleCollision::collisionTest(centre, 2.0f));
    EXPECT_FALSE(CircleCollision::collisionTest(centre, 50.0f));
    EXPECT_EQ(CircleCollision::contactFriction(), 1.0f);
}

TEST_F(CircleCollisionTest, ACircleInAPlaneIsPutBackToItsRadius) {
    buildFloor();
    Vector2 centre{10.0f, -1.5f};

    const bool hit = CircleCollision::collisionTest(centre, 2.0f);

    EXPECT_TRUE(hit);
    EXPECT_EQ(centre, (Vector2{10.0f, -2.0f}));
    EXPECT_EQ(CircleCollision::contactNormal(), (Vector2{0.0f, 1.0f}));
    EXPECT_EQ(CircleCollision::contactFriction(), friction);
}

TEST_F(CircleCollisionTest, AtExactlyItsRadiusFromAPlaneACircleIsInContactAndDoesNotMove) {
    buildFloor();
    Vector2 centre{10.0f, -2.0f};

    const bool hit = CircleCollision::collisionTest(centre, 2.0f);

    EXPECT_TRUE(hit); // by the line: the point asks for less than the radius
    EXPECT_EQ(centre, (Vector2{10.0f, -2.0f}));
    EXPECT_EQ(CircleCollision::contactNormal(), (Vector2{0.0f, 1.0f}));
}

TEST_F(CircleCollisionTest, ABitFurtherThanItsRadiusFromAPlaneACircleIsNotInContact) {
    buildFloor();
    Vector2 centre{10.0f, std::nextafter(-2.0f, -3.0f)};

    EXPECT_FALSE(CircleCollision::collisionTest(centre, 2.0f));
    EXPECT_EQ(CircleCollision::contactFriction(), 1.0f);
}

TEST_F(CircleCollisionTest, InACornerTheMeanNormalIsShorterThanOne) {
    SceneAccess::buildBasin(-50.0f, 50.0f, 100.0f, 80.0f);
    Vector2 centre{-49.0f, 99.0f};

    const bool hit = CircleCollision::collisionTest(centre, 2.0f);

    EXPECT_TRUE(hit);
    EXPECT_GE(centre.x, -48.0f - 1e-4f); // rounding of a few moves
    EXPECT_LE(centre.y, 98.0f + 1e-4f);
    const Vector2 normal = CircleCollision::contactNormal();
    EXPECT_LT(std::hypot(normal.x, normal.y), 0.95f);
}

TEST_F(CircleCollisionTest, JustPastAnEndACircleIsPushedAwayFromTheCornerRadially) {
    buildFloor();
    Vector2 centre{101.0f, -1.0f};

    const bool hit = CircleCollision::collisionTest(centre, 2.0f);

    const float half = std::sqrt(2.0f);
    EXPECT_TRUE(hit);
    EXPECT_NEAR(centre.x, 100.0f + half, 1e-5f); // rounding of one move
    EXPECT_NEAR(centre.y, -half, 1e-5f);
}

TEST_F(CircleCollisionTest, BehindAnEdgeByLessThanTheRadiusACircleComesBackInOneMove) {
    buildFloor();
    Vector2 centre{10.0f, 1.0f};

    const bool hit = CircleCollision::collisionTest(centre, 2.0f);

    EXPECT_TRUE(hit);
    EXPECT_EQ(centre, (Vector2{10.0f, -2.0f}));
}

TEST_F(CircleCollisionTest, ASwitchedOffEdgeIsNotHit) {
    buildFloor();
    std::vector<LevelBspNode*> nodes;
    LevelBspTree::getNodeList(nodes);
    for (LevelBspNode* node : nodes) {
        node->hasEdge = false;
    }
    Vector2 centre{10.0f, -1.0f};

    EXPECT_FALSE(CircleCollision::collisionTest(centre, 2.0f));

    for (LevelBspNode* node : nodes) {
        node->hasEdge = true;
    }
    EXPECT_TRUE(CircleCollision::collisionTest(centre, 2.0f));
}

TEST_F(CircleCollisionTest, ANewLevelIsSeenAtOnce) {
    buildFloor();
    Vector2 centre{10.0f, -1.0f};
    ASSERT_TRUE(CircleCollision::collisionTest(centre, 2.0f));
    LevelBspTree::clear();
    Level::polygons.clear();

    EXPECT_FALSE(CircleCollision::collisionTest(centre, 2.0f));

    SceneAccess::addPolygon({{-9.0f, -3.0f}, {30.0f, -3.0f}, {30.0f, 9.0f}, {-9.0f, 9.0f}}, friction);
    SceneAccess::buildTree();
    EXPECT_TRUE(CircleCollision::collisionTest(centre, 2.0f));
    EXPECT_EQ(centre.y, -5.0f);
}

/// The same with one moving edge, from (0, 0) to (100, 0), with its solid side below.
class MovingEdgeCollisionTest : public CircleCollisionTest {
protected:
    static void addEdge(Vector2 start, Vector2 end) {
        LevelBspNode& edge = MoverManager::collideableNodes.emplace_back();
        edge.start = start;
        edge.end = end;
        edge.length = distanceBetween(start, end);
        edge.direction = (end - start) / edge.length;
        edge.normal = {-edge.direction.y, edge.direction.x};
        edge.friction = 0.75f;
        CircleCollision::takeMovingEdges(MoverManager::collideableNodes, {}, 500.0f);
    }
    MovingEdgeCollisionTest() { addEdge({0.0f, 0.0f}, {100.0f, 0.0f}); }
};

TEST_F(MovingEdgeCollisionTest, AMovingEdgeHoldsACircleAndAStaticTestDoesNotSeeIt) {
    Vector2 centre{50.0f, -1.5f};
    Vector2 other = centre;

    const bool hit = CircleCollision::collisionTest(centre, 2.0f);
    const float frictionOfEdge = CircleCollision::contactFriction();
    const bool hitStatic = CircleCollision::collisionTestStatic(other, 2.0f);

    EXPECT_TRUE(hit);
    EXPECT_EQ(centre, (Vector2{50.0f, -2.0f}));
    EXPECT_EQ(frictionOfEdge, 0.75f);
    EXPECT_FALSE(hitStatic);
    EXPECT_EQ(other, (Vector2{50.0f, -1.5f}));
    EXPECT_EQ(CircleCollision::contactFriction(), 1.0f);
}

TEST_F(MovingEdgeCollisionTest, ACircleExactlyItsRadiusBehindAMovingEdgeIsCaughtUnlikeBehindAFixedOne) {
    buildFloor(); // its top lies where the edge lies
    Vector2 centre{50.0f, 2.0f};
    Vector2 other = centre;

    const bool hit = CircleCollision::collisionTest(centre, 2.0f);
    const bool hitStatic = CircleCollision::collisionTestStatic(other, 2.0f);

    EXPECT_TRUE(hit);
    EXPECT_EQ(centre, (Vector2{50.0f, -2.0f}));
    EXPECT_FALSE(hitStatic);
}

TEST_F(MovingEdgeCollisionTest, EndsOfAMovingEdgePushRadially) {
    Vector2 before{-1.0f, -1.0f};
    Vector2 behind{101.0f, -1.0f};
    Vector2 beyond{102.5f, 0.0f};

    CircleCollision::collisionTest(before, 2.0f);
    CircleCollision::collisionTest(behind, 2.0f);

    const float half = std::sqrt(2.0f);
    EXPECT_NEAR(before.x, -half, 1e-5f); // rounding of one move
    EXPECT_NEAR(before.y, -half, 1e-5f);
    EXPECT_NEAR(behind.x, 100.0f + half, 1e-5f);
    EXPECT_NEAR(behind.y, -half, 1e-5f);
    EXPECT_FALSE(CircleCollision::collisionTest(beyond, 2.0f));
}

TEST_F(MovingEdgeCollisionTest, FixedEdgesAreResolvedBeforeMovingOnes) {
    MoverManager::collideableNodes.clear();
    addEdge({0.0f, 3.0f}, {100.0f, -7.0f}); // meets the floor's top at (30, 0), not quite alike
    buildFloor();
    Vector2 centre{30.0f, -1.0f};
    Vector2 floorFirst = centre;
    CircleCollision::collisionTestStatic(floorFirst, 2.0f);

    CircleCollision::collisionTest(centre, 2.0f);

    const LevelBspNode& edge = MoverManager::collideableNodes.front();
    EXPECT_EQ(floorFirst, (Vector2{30.0f, -2.0f}));
    EXPECT_NEAR(dotProduct(centre - edge.start, edge.normal), -2.0f, 1e-4f); // it had the last word
}

TEST_F(MovingEdgeCollisionTest, CirclesOfOtherRadiiAndFarFromTheViewMeetMovingEdgesToo) {
    addEdge({5000.0f, 0.0f}, {5100.0f, 0.0f});
    Vector2 large{50.0f, -7.0f};
    Vector2 far{5050.0f, -1.0f};

    EXPECT_TRUE(CircleCollision::collisionTest(large, 12.5f));
    EXPECT_EQ(large, (Vector2{50.0f, -12.5f}));
    EXPECT_TRUE(CircleCollision::collisionTest(far, 2.0f));
    EXPECT_EQ(far, (Vector2{5050.0f, -2.0f}));
}

TEST_F(CircleCollisionTest, OtherRadiiAreHeldOffByAsMuch) {
    buildFloor();
    Vector2 centre{10.0f, -7.0f};

    EXPECT_TRUE(CircleCollision::collisionTest(centre, 12.5f));
    EXPECT_EQ(centre, (Vector2{10.0f, -12.5f}));
}

TEST_F(CircleCollisionTest, AStaticTestHitsTheLevelAsWell) {
    buildFloor();
    Vector2 centre{10.0f, -1.0f};

    EXPECT_TRUE(CircleCollision::collisionTestStatic(centre, 2.0f));
    EXPECT_EQ(centre, (Vector2{10.0f, -2.0f}));
}

TEST_F(CircleCollisionTest, ACentreThatIsNoNumberTouchesNothing) {
    buildFloor();
    Vector2 centre{std::nanf(""), 1.0f};

    EXPECT_FALSE(CircleCollision::collisionTest(centre, 2.0f));
    EXPECT_FALSE(CircleCollision::collisionTest(centre, 3.0f));
}

} // namespace tarnwick
