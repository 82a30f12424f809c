#include "gui/GuiWidget.h"

#include "graphics/KeyMap.h"
#include "support/ModuleTest.h"

namespace tarnwick {

class GuiWidgetTest : public ModuleTest {};

TEST_F(GuiWidgetTest, ANewWidgetIsWhiteAndVisible) {
    const GuiWidget widget;

    EXPECT_EQ(widget.red, 1.0f);
    EXPECT_EQ(widget.alpha, 1.0f);
    EXPECT_EQ(widget.width, 100);
    EXPECT_EQ(widget.height, 20);
    EXPECT_TRUE(widget.visible);
    EXPECT_TRUE(widget.enabled);
    EXPECT_FALSE(widget.hasFocus);
}

TEST_F(GuiWidgetTest, ColoursAreLimited) {
    GuiWidget widget;

    widget.setColor(-1.0f, 2.0f, 0.5f, 1.5f);

    EXPECT_EQ(widget.red, 0.0f);
    EXPECT_EQ(widget.green, 1.0f);
    EXPECT_EQ(widget.blue, 0.5f);
    EXPECT_EQ(widget.alpha, 1.0f);
}

TEST_F(GuiWidgetTest, NegativeSizesBecomeZero) {
    GuiWidget widget;

    widget.setSize(-5, 7);
    widget.setPosition(-3, 4);

    EXPECT_EQ(widget.width, 0);
    EXPECT_EQ(widget.height, 7);
    EXPECT_EQ(widget.x, -3);
    EXPECT_EQ(widget.y, 4);
}

TEST_F(GuiWidgetTest, WithoutAScreenAKeyLeadsNowhere) {
    GuiWidget widget;
    GuiWidget other;
    widget.addFocusTraversal(key::tab, &other);

    widget.doFocusTraversal(key::tab);

    EXPECT_FALSE(other.hasFocus);
}

} // namespace tarnwick
