#include "particles/CollisionField.h"

#include "core/Random.h"
#include "level/LevelBspTree.h"
#include "particles/CircleCollision.h"
#include "reference/PlainCollision.h"
#include "support/ModuleTest.h"
#include "support/SceneAccess.h"

#include <cmath>

namespace tarnwick {

class CollisionFieldTest : public ModuleTest {
protected:
    CollisionFieldTest() {
        SceneAccess::addPolygon({{0.0f, 0.0f}, {200.0f, 30.0f}, {190.0f, 90.0f}, {20.0f, 80.0f}}, 0.5f);
        SceneAccess::addPolygon({{210.0f, 0.0f}, {260.0f, 0.0f}, {230.0f, 60.0f}}, 0.25f);
        SceneAccess::buildTree();
        field.build(LevelBspTree::rootNode());
    }

    CollisionField field;
};

TEST_F(CollisionFieldTest, FarFromAllEdgesThereIsNothingToWalk) {
    EXPECT_EQ(field.startAt({100.0f, 60.0f}).node, nullptr); // deep inside
    EXPECT_EQ(field.startAt({-50.0f, 0.0f}).node, nullptr);
    EXPECT_EQ(field.startAt({1e30f, 0.0f}).node, nullptr);
    EXPECT_EQ(field.startAt({std::nanf(""), 0.0f}).node, nullptr);
}

TEST_F(CollisionFieldTest, NearALoneEdgeTheWalkIsThatEdge) {
    const CollisionField::Start start = field.startAt({100.0f, 14.0f});

    ASSERT_NE(start.node, nullptr);
    EXPECT_TRUE(start.alone);
    EXPECT_EQ(start.node->friction, 0.5f);
}

TEST_F(CollisionFieldTest, WithoutALevelEveryPlaceIsEmpty) {
    field.build(nullptr);

    EXPECT_EQ(field.startAt({0.0f, 0.0f}).node, nullptr);
}

TEST_F(CollisionFieldTest, ATestFromTheFieldIsThatFromTheRootToTheLastBit) {
    PlainCollision plain;
    plain.root = LevelBspTree::rootNode();
    for (int i = 0; i < 20000; ++i) {
        Vector2 centre{randomFloat() * 300.0f - 20.0f, randomFloat() * 130.0f - 20.0f};
        Vector2 twin = centre;

        const bool hit = CircleCollision::collisionTest(centre, 2.0f);
        const bool twinHit = plain.test(twin, 2.0f);

        ASSERT_EQ(hit, twinHit);
        ASSERT_EQ(centre, twin);
        ASSERT_EQ(CircleCollision::contactNormal(), plain.contactNormal);
        ASSERT_EQ(CircleCollision::contactFriction(), plain.contactFriction);
    }
}

} // namespace tarnwick
