#include "particles/ViewRectangle.h"

#include "graphics/GLWindow.h"
#include "support/ModuleTest.h"
#include "support/SceneAccess.h"

namespace tarnwick {

class ViewRectangleTest : public ModuleTest {
protected:
    ViewRectangleTest() { GLWindow::createHeadless(800, 600); }
};

TEST_F(ViewRectangleTest, ItIsTheViewAreaAboutTheCamera) {
    SceneAccess::placeCamera({1000.0f, 500.0f}, {10.0f, -5.0f}, 0.0f, 2.0f);

    const ViewRectangle view = ViewRectangle::ofCamera();

    EXPECT_EQ(view.corners[0], (Vector2{210.0f, -105.0f}));
    EXPECT_EQ(view.corners[2], (Vector2{1810.0f, 1095.0f}));
    EXPECT_EQ(view.inwardNormals[0], (Vector2{0.0f, 1.0f}));
}

TEST_F(ViewRectangleTest, ItTurnsWithTheCamera) {
    SceneAccess::placeCamera({}, {}, 90.0f, 1.0f);

    const ViewRectangle view = ViewRectangle::ofCamera();

    EXPECT_FALSE(view.isBeyond({0.0f, 390.0f}, 0.0f)); // now the long side
    EXPECT_TRUE(view.isBeyond({310.0f, 0.0f}, 0.0f));
}

TEST_F(ViewRectangleTest, ExactlyTheMarginOutsideIsNotBeyond) {
    SceneAccess::placeCamera({}, {}, 0.0f, 1.0f);
    const ViewRectangle view = ViewRectangle::ofCamera();

    EXPECT_FALSE(view.isBeyond({400.0f + 130.0f, 0.0f}, 130.0f));
    EXPECT_TRUE(view.isBeyond({400.0f + 130.1f, 0.0f}, 130.0f));
}

} // namespace tarnwick
