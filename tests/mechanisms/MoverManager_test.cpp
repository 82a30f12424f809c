#include "mechanisms/MoverManager.h"

#include "console/GLConsole.h"
#include "game/Camera.h"
#include "level/Level.h"
#include "mechanisms/MoverTest.h"
#include "particles/CircleCollision.h"
#include "support/ConsoleAnswer.h"

namespace tarnwick {

class MoverManagerTest : public MoverTest {};

TEST_F(MoverManagerTest, StartAndEndAreTold) {
    GLConsole::clear();

    MoverManager::initialise();

    EXPECT_EQ(GLConsole::outputText(), "\nShutting down mover manager..\nInitialising down mover manager..");
}

TEST_F(MoverManagerTest, TheCommandsTellAndSwitch) {
    addMover(1, {1.0f, 0.0f});
    addMover(1, {1.0f, 0.0f});

    EXPECT_EQ(answerTo("MoverCount"), "\nMoverCount is 2");
    EXPECT_EQ(answerTo("MoverDraw"), "\nMoverDraw is false");
    EXPECT_EQ(answerTo("moverdraw true"), "\nMoverDraw is now true");
    EXPECT_EQ(answerTo("DynamicNodeDraw true"), "\nDynamicNodeDraw is now true");
    EXPECT_EQ(answerTo("DynamicNodeDraw"), "\nDynamicNodeDraw is true");
}

TEST_F(MoverManagerTest, AnewStartEmptiesAllAndSwitchesTheDrawingOff) {
    addSquare(1, 0.0f, 0.0f, 10.0f);
    addMover(1, {1.0f, 0.0f});
    answerTo("MoverDraw true");
    answerTo("DynamicNodeDraw true");

    MoverManager::initialise();

    EXPECT_EQ(answerTo("MoverCount"), "\nMoverCount is 0");
    EXPECT_EQ(answerTo("MoverDraw"), "\nMoverDraw is false");
    EXPECT_EQ(answerTo("DynamicNodeDraw"), "\nDynamicNodeDraw is false");
    EXPECT_EQ(nodesNow(), 0u);
}

TEST_F(MoverManagerTest, AfterShutdownTheCommandsAreGoneAndTheEdgesStandUntilTheNextTick) {
    addSquare(1, 0.0f, 0.0f, 10.0f);
    addMover(1, {1.0f, 0.0f});
    nodesNow();

    MoverManager::shutdown();

    EXPECT_TRUE(MoverManager::movers.empty());
    for (const char* const command : {"MOVERCOUNT", "MOVERDRAW", "DYNAMICNODEDRAW"}) {
        EXPECT_FALSE(GLConsole::commands().contains(command)) << command;
    }
    EXPECT_EQ(MoverManager::collideableNodes.size(), 4u);
    EXPECT_EQ(nodesNow(), 0u);
}

TEST_F(MoverManagerTest, ResettingPutsMoversBackAndSwitchesTheDrawingOff) {
    Mover& mover = addMover(1, {10.0f, 0.0f}, 4.0f);
    mover.state = MoverLoopToEnd;
    answerTo("MoverDraw true");
    answerTo("DynamicNodeDraw true");

    MoverManager::resetMovers();

    EXPECT_EQ(mover.position, 0.0f);
    EXPECT_EQ(mover.state, MoverIdle);
    EXPECT_EQ(answerTo("MoverDraw"), "\nMoverDraw is false");
    EXPECT_EQ(answerTo("DynamicNodeDraw"), "\nDynamicNodeDraw is false");
}

// What is carried

TEST_F(MoverManagerTest, AMoverCarriesEverythingOfItsIdAndNothingElse) {
    Polygon2D& own = addSquare(3, 0.0f, 0.0f, 10.0f);
    Polygon2D& other = addSquare(4, 0.0f, 0.0f, 10.0f);
    other.offsetX = 77.0f;
    LevelObject& picture = addObject(3, false);
    LevelObject& animation = addObject(3, true);
    LevelObject& otherPicture = addObject(4, false);
    otherPicture.offsetY = 77.0f;
    addMover(3, {30.0f, -40.0f}, 25.0f);

    MoverManager::runMovers(0.01f, Camera::view());

    const Vector2 displacement = Vector2{30.0f / 50.0f, -40.0f / 50.0f} * 25.0f;
    EXPECT_EQ(offsetOf(own), displacement);
    EXPECT_EQ((Vector2{picture.offsetX, picture.offsetY}), displacement);
    EXPECT_EQ((Vector2{animation.offsetX, animation.offsetY}), displacement);
    EXPECT_EQ(other.offsetX, 77.0f);
    EXPECT_EQ(otherPicture.offsetY, 77.0f);
}

TEST_F(MoverManagerTest, NoIdIsSpecial) {
    Polygon2D& zero = addSquare(0, 0.0f, 0.0f, 10.0f);
    Polygon2D& negative = addSquare(-1, 0.0f, 0.0f, 10.0f);
    LevelObject& object = addObject(0xFFFFFFFFu, false);
    addMover(0, {10.0f, 0.0f}, 1.0f);
    addMover(-1, {10.0f, 0.0f}, 2.0f);

    MoverManager::runMovers(0.01f, Camera::view());

    EXPECT_EQ(zero.offsetX, 1.0f);
    EXPECT_EQ(negative.offsetX, 2.0f);
    EXPECT_EQ(object.offsetX, 2.0f);
}

TEST_F(MoverManagerTest, TheDisplacementsOfTwoMoversOfOneIdAddUp) {
    Polygon2D& polygon = addSquare(3, 0.0f, 0.0f, 10.0f);
    LevelObject& object = addObject(3, false);
    addMover(3, {10.0f, 0.0f}, 0.1f);
    addMover(9, {10.0f, 0.0f}, 5.0f);
    addMover(3, {0.0f, 10.0f}, 4.0f);
    addMover(3, {10.0f, 0.0f}, 0.7f);

    MoverManager::runMovers(0.01f, Camera::view());

    EXPECT_EQ(offsetOf(polygon), (Vector2{0.1f + 0.7f, 4.0f}));
    EXPECT_EQ(object.offsetX, 0.1f + 0.7f);
    EXPECT_EQ(nodesNow(), 4u); // one collision form all the same
}

TEST_F(MoverManagerTest, ATickRunsTheMoversBeforeItMovesWhatTheyCarry) {
    Polygon2D& polygon = addSquare(3, 0.0f, 0.0f, 10.0f);
    Mover& mover = addMover(3, {10.0f, 0.0f});
    mover.speed = 4.0f;
    mover.state = MoverToEnd;

    MoverManager::runMovers(0.5f, Camera::view());

    EXPECT_EQ(polygon.offsetX, 2.0f);
    EXPECT_EQ(polygon.previousOffsetX, 2.0f);
}

TEST_F(MoverManagerTest, AMoverWithoutLengthDisplacesNothing) {
    Polygon2D& polygon = addSquare(3, 0.0f, 0.0f, 10.0f);
    Mover& mover = addMover(3, {});
    mover.speed = 4.0f;
    mover.state = MoverToEnd;

    MoverManager::runMovers(0.5f, Camera::view());

    EXPECT_EQ(offsetOf(polygon), Vector2{});
    EXPECT_EQ(mover.state, MoverIdle);
}

TEST_F(MoverManagerTest, AMoverWhoseIdMatchesNothingRunsAllTheSame) {
    Mover& mover = addMover(3, {10.0f, 0.0f});
    mover.speed = 4.0f;
    mover.state = MoverToEnd;

    MoverManager::runMovers(0.5f, Camera::view());

    EXPECT_EQ(mover.position, 2.0f);
}

// The moving edges

TEST_F(MoverManagerTest, AnEdgeIsThereForEachSideWithTheNormalInward) {
    Polygon2D& square = addSquare(3, 10.0f, 20.0f, 8.0f);
    addMover(3, {10.0f, 0.0f});

    nodesNow();

    ASSERT_EQ(MoverManager::collideableNodes.size(), 4u);
    // The sides go to the front of the polygon's list, and that list's to the front of this one.
    const LevelBspNode& top = MoverManager::collideableNodes.front();
    EXPECT_EQ(top.polygon, &square);
    EXPECT_EQ(top.start.y, 20.0f);
    EXPECT_EQ(top.end.y, 20.0f);
    EXPECT_EQ(top.length, 8.0f);
    EXPECT_EQ(top.friction, 0.25f);
    EXPECT_TRUE(top.hasEdge);
    EXPECT_EQ(top.parent, nullptr);
    EXPECT_EQ(top.behind, nullptr);
    EXPECT_EQ(top.inFront, nullptr);
    for (const LevelBspNode& edge : MoverManager::collideableNodes) {
        const Vector2 inward = (edge.start + edge.end) * 0.5f + edge.normal * 4.0f;
        EXPECT_EQ(inward, (Vector2{14.0f, 24.0f})); // the middle of the square
        EXPECT_EQ(edge.direction * edge.length, edge.end - edge.start);
    }
}

TEST_F(MoverManagerTest, OutlinesOfEitherWindingHaveTheirNormalsInward) {
    addPolygon(3, {{10.0f, 20.0f}, {10.0f, 28.0f}, {18.0f, 28.0f}, {18.0f, 20.0f}});
    addMover(3, {10.0f, 0.0f});

    nodesNow();

    ASSERT_EQ(MoverManager::collideableNodes.size(), 4u);
    for (const LevelBspNode& edge : MoverManager::collideableNodes) {
        EXPECT_EQ((edge.start + edge.end) * 0.5f + edge.normal * 4.0f, (Vector2{14.0f, 24.0f}));
    }
}

TEST_F(MoverManagerTest, ATinySideHasNoEdge) {
    addPolygon(3, {{0.0f, 0.0f}, {8.0f, 0.0f}, {8.0f, 8.0f}, {0.009f, 8.0f}, {0.0f, 8.0f}});
    addMover(3, {10.0f, 0.0f});

    EXPECT_EQ(nodesNow(), 4u);
}

TEST_F(MoverManagerTest, EdgesStandWhereTheirPolygonStoodAsTheTickBegan) {
    Polygon2D& square = addSquare(3, 10.0f, 20.0f, 8.0f);
    Mover& mover = addMover(3, {10.0f, 0.0f});
    mover.speed = 4.0f;
    mover.state = MoverToEnd;
    MoverManager::runMovers(0.5f, Camera::view());

    nodesNow();
    MoverManager::runMovers(0.5f, Camera::view());

    EXPECT_EQ(square.offsetX, 4.0f);
    EXPECT_EQ(MoverManager::collideableNodes.front().start.x + MoverManager::collideableNodes.front().end.x,
              2.0f * (14.0f + 2.0f));
}

TEST_F(MoverManagerTest, PolygonsUnfitForCollisionAreCarriedAndHaveNoEdges) {
    Polygon2D& line = addPolygon(3, {{0.0f, 0.0f}, {8.0f, 0.0f}});
    Polygon2D& bow = addPolygon(3, {{0.0f, 0.0f}, {8.0f, 8.0f}, {8.0f, 0.0f}, {0.0f, 8.0f}});
    Polygon2D& empty = addPolygon(3, {});
    addMover(3, {10.0f, 0.0f}, 6.0f);

    MoverManager::runMovers(0.01f, Camera::view());

    EXPECT_EQ(line.offsetX, 6.0f);
    EXPECT_EQ(bow.offsetX, 6.0f);
    EXPECT_EQ(empty.offsetX, 6.0f);
    EXPECT_EQ(nodesNow(), 0u);
}

TEST_F(MoverManagerTest, APolygonThatIsNotSolidWhenItsMoverComesNeverHasEdges) {
    Polygon2D& polygon = addSquare(3, 0.0f, 0.0f, 8.0f);
    polygon.collideable = false;
    addMover(3, {10.0f, 0.0f}, 6.0f);
    polygon.collideable = true;

    MoverManager::runMovers(0.01f, Camera::view());

    EXPECT_EQ(polygon.offsetX, 6.0f);
    EXPECT_EQ(nodesNow(), 0u);
}

TEST_F(MoverManagerTest, ASwitchedOffPolygonMovesWithoutEdgesAndDoesNotLeapWhenItIsSwitchedOn) {
    Polygon2D& polygon = addSquare(3, 0.0f, 0.0f, 8.0f);
    addMover(3, {10.0f, 0.0f}, 6.0f);
    Level::setPolygonCollideable(polygon, false);

    MoverManager::runMovers(0.01f, Camera::view());

    EXPECT_EQ(polygon.offsetX, 6.0f);
    EXPECT_EQ(polygon.previousOffsetX, 6.0f);
    EXPECT_EQ(nodesNow(), 0u);
    Level::setPolygonCollideable(polygon, true);
    EXPECT_EQ(nodesNow(), 4u);
}

TEST_F(MoverManagerTest, OnlyPolygonsNearTheViewHaveEdges) {
    Polygon2D& square = addSquare(3, 0.0f, 0.0f, 8.0f);
    addMover(3, {10.0f, 0.0f});
    const auto edgesWith = [&](float x, float y) {
        square.offsetX = x;
        square.offsetY = y;
        return nodesNow();
    };
    const float reach = 800.0f * 0.7f; // of a view of 800 by 600

    EXPECT_EQ(edgesWith(reach, 0.0f), 4u);
    EXPECT_EQ(edgesWith(reach + 0.01f, 0.0f), 0u);
    EXPECT_EQ(edgesWith(-reach - 8.0f, 0.0f), 4u);
    EXPECT_EQ(edgesWith(-reach - 8.01f, 0.0f), 0u);
    EXPECT_EQ(edgesWith(0.0f, reach), 4u);
    EXPECT_EQ(edgesWith(0.0f, reach + 0.01f), 0u);
    EXPECT_EQ(edgesWith(0.0f, -100000.0f), 4u); // nothing is too high up
}

TEST_F(MoverManagerTest, TheViewThatCountsFollowsTheCameraWithItsShakeAndZoom) {
    Polygon2D& square = addSquare(3, 0.0f, 0.0f, 8.0f);
    addMover(3, {10.0f, 0.0f});
    square.offsetX = 800.0f * 0.7f + 100.0f;
    const std::size_t before = nodesNow();

    SceneAccess::placeCamera({95.0f, 0.0f}, {5.0f, 0.0f}, 0.0f, 1.0f);
    const std::size_t moved = nodesNow();
    SceneAccess::placeCamera({}, {}, 0.0f, 1.25f);
    const std::size_t zoomed = nodesNow();

    EXPECT_EQ(before, 0u);
    EXPECT_EQ(moved, 4u);
    EXPECT_EQ(zoomed, 4u);
}

TEST_F(MoverManagerTest, ABoxThatLiesAboveTheOriginOfItsPolygonHasNoEdges) {
    // The second point's x counts as a y of the box, so here it is below.
    addPolygon(3, {{-20.0f, -20.0f}, {-10.0f, -20.0f}, {-10.0f, -10.0f}, {-20.0f, -10.0f}});
    addMover(3, {10.0f, 0.0f});

    EXPECT_EQ(nodesNow(), 0u);
}

TEST_F(MoverManagerTest, TheXOfTheSecondPointReachesDownForTheBox) {
    addPolygon(3, {{-20.0f, -20.0f}, {5.0f, -20.0f}, {-10.0f, -10.0f}});
    addMover(3, {10.0f, 0.0f});

    EXPECT_EQ(nodesNow(), 4u - 1u);
}

TEST_F(MoverManagerTest, AMovingEdgeHoldsAParticle) {
    addSquare(3, 10.0f, 20.0f, 40.0f);
    addMover(3, {10.0f, 0.0f});
    nodesNow();
    Vector2 centre{30.0f, 19.0f};
    Vector2 fixed = centre;

    const bool hit = CircleCollision::collisionTest(centre, 2.0f);
    const Vector2 normal = CircleCollision::contactNormal();
    const bool hitStatic = CircleCollision::collisionTestStatic(fixed, 2.0f);

    EXPECT_TRUE(hit);
    EXPECT_EQ(centre, (Vector2{30.0f, 18.0f}));
    EXPECT_EQ(normal, (Vector2{0.0f, 1.0f}));
    EXPECT_FALSE(hitStatic); // who is pushed by a polygon is not stopped by it
    EXPECT_EQ(fixed, (Vector2{30.0f, 19.0f}));
}

} // namespace tarnwick
