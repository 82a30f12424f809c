#include "core/View.h"

#include <gtest/gtest.h>

namespace tarnwick {

namespace {

View viewAt(Vector2 position, Vector2 shakeOffset, float angle, float zoom) {
    return {.position = position, .shakeOffset = shakeOffset, .angle = angle, .zoom = zoom};
}

} // namespace

TEST(ViewRectangleTest, ItIsTheViewAreaAboutTheCamera) {
    const ViewRectangle view = viewAt({1000.0f, 500.0f}, {10.0f, -5.0f}, 0.0f, 2.0f).rectangle();

    EXPECT_EQ(view.corners[0], (Vector2{210.0f, -105.0f}));
    EXPECT_EQ(view.corners[2], (Vector2{1810.0f, 1095.0f}));
    EXPECT_EQ(view.inwardNormals[0], (Vector2{0.0f, 1.0f}));
}

TEST(ViewRectangleTest, ItTurnsWithTheCamera) {
    const ViewRectangle view = viewAt({}, {}, 90.0f, 1.0f).rectangle();

    EXPECT_FALSE(view.isBeyond({0.0f, 390.0f}, 0.0f)); // now the long side
    EXPECT_TRUE(view.isBeyond({310.0f, 0.0f}, 0.0f));
}

TEST(ViewRectangleTest, ExactlyTheMarginOutsideIsNotBeyond) {
    const ViewRectangle view = viewAt({}, {}, 0.0f, 1.0f).rectangle();

    EXPECT_FALSE(view.isBeyond({400.0f + 130.0f, 0.0f}, 130.0f));
    EXPECT_TRUE(view.isBeyond({400.0f + 130.1f, 0.0f}, 130.0f));
}

TEST(ViewTest, DownTurnsWithIt) {
    const Vector2 level = viewAt({}, {}, 0.0f, 1.0f).down();
    const Vector2 turned = viewAt({}, {}, 90.0f, 1.0f).down();

    EXPECT_EQ(level, (Vector2{0.0f, 1.0f}));
    EXPECT_NEAR(turned.x, -1.0f, 1e-6f);
    EXPECT_NEAR(turned.y, 0.0f, 1e-6f);
}

TEST(ViewTest, SquaresLieAboutTheShakenMiddle) {
    const Box square = viewAt({100.0f, 50.0f}, {1.0f, 2.0f}, 30.0f, 1.0f).emitterSquare();

    EXPECT_EQ(square.minX, 101.0f - 400.0f);
    EXPECT_EQ(square.maxX, 101.0f + 400.0f);
    EXPECT_EQ(square.minY, 52.0f - 400.0f);
    EXPECT_EQ(square.maxY, 52.0f + 400.0f);
}

TEST(ViewTest, EachSquareHasASizeOfItsOwn) {
    View view = viewAt({}, {}, 0.0f, 2.0f);
    view.areaX = 1000.0f;
    view.areaY = 1200.0f;

    EXPECT_EQ(view.emitterSquare().maxX, 1000.0f * 0.5f * 2.0f);
    EXPECT_EQ(view.solidSquare().maxX, 1000.0f * 0.7f * 2.0f);
    EXPECT_EQ(view.pushSquare().maxX, 800.0f * 0.65f * 2.0f);
    EXPECT_EQ(view.triggerSquare().maxX, 0.55f * 1200.0f);
    EXPECT_EQ(view.objectSquare().maxX, 1000.0f * 0.65f * 2.0f);
    EXPECT_EQ(view.polygonSquare().maxX, 1200.0f * 0.65f * 2.0f);
}

} // namespace tarnwick
