#include "gui/MenuLayout.h"

#include "gui/GuiAnimatedButton.h"
#include "gui/GuiImage.h"
#include "gui/GuiLabel.h"
#include "gui/GuiOptionChooser.h"
#include "gui/GuiTextBox.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

namespace tarnwick {

class MenuLayoutTest : public ModuleTest {
protected:
    MenuLayoutTest() {
        data.write("cfg/menu_general.cfg",
                   "menuFont = gfx\\letters.tga menuFontColor_r = 0.5 menuFontColor_a = 1 "
                   "textDropShadowOffset_x = 2 textDropShadowOffset_y = 3 textDropShadowColor_g = 0.25 "
                   "textDropShadowColor_a = 0.75 labelFontSizes = 20 buttonDropShadowOffset_x = 4 "
                   "buttonDropShadowColor_b = 0.5 buttonDropShadowColor_a = 1 menuAnimationSpeeds = 14 "
                   "optionChooserFontSizes = 18");
    }

    /// The last widget that was added.
    GuiWidget& last() { return *screen.getWidgets().back(); }
    static void act(GuiWidget& button) { button.alpha = 0.0f; }

    DataFolder data;
    GuiScreen screen;
};

TEST_F(MenuLayoutTest, AButtonTakesItsPlaceItsShadowAndItsTwoCallbacks) {
    data.write("cfg/own.cfg", "a_x = 10.9 a_y = -10.9 a_w = 30 a_h = 40");
    const MenuLayout layout("cfg\\own.cfg");

    const GuiAnimatedButton& button = layout.addButton<act>(screen, "a");

    EXPECT_EQ(&last(), &button);
    EXPECT_EQ(button.x, 10) << "cut toward zero";
    EXPECT_EQ(button.y, -10);
    EXPECT_EQ(button.width, 30);
    EXPECT_EQ(button.height, 40);
    EXPECT_TRUE(button.enabled);
    EXPECT_TRUE(button.dropShadowEnabled);
    EXPECT_EQ(button.dropShadowOffsetX, 4.0f);
    EXPECT_EQ(button.dropShadowBlue, 0.5f);
    EXPECT_EQ(button.framesPerSecond, 14.0f);
    EXPECT_EQ(button.mousePressedDelay, 0.8f);
    EXPECT_EQ(button.keyboardPressedDelay, 0.8f);
}

TEST_F(MenuLayoutTest, TheKeyCallbackActsOnEnterAndSpaceOnlyAndTheMouseCallbackAlways) {
    const MenuLayout layout("cfg\\missing.cfg");
    GuiAnimatedButton& button = layout.addButton<act>(screen, "a");

    const bool other = button.onKeyboardPressed(button, 'X');
    const float afterOther = button.alpha;
    const bool enter = button.onKeyboardPressed(button, 13);
    const float afterEnter = button.alpha;
    const bool space = button.onKeyboardPressed(button, 32);
    const bool mouse = button.onMousePressed(button, 0, 0, 4);

    EXPECT_FALSE(other);
    EXPECT_EQ(afterOther, 1.0f);
    EXPECT_TRUE(enter);
    EXPECT_EQ(afterEnter, 0.0f);
    EXPECT_TRUE(space);
    EXPECT_TRUE(mouse);
}

TEST_F(MenuLayoutTest, TextsTakeTheCommonLetters) {
    data.write("cfg/own.cfg", "a_x = 1 b_fontSize = 12");
    const MenuLayout layout("cfg\\own.cfg");

    const GuiLabel& label = layout.addLabel(screen, "a", "Music");
    const GuiLabel& sized = layout.addSizedLabel(screen, "b", "Sure?");
    const GuiOptionChooser& chooser = layout.addChooser(screen, "c");

    EXPECT_EQ(label.text, "Music");
    EXPECT_EQ(label.font.name, "GFX\\LETTERS.TGA");
    EXPECT_EQ(label.fontSize, 20.0f);
    EXPECT_EQ(label.red, 0.5f);
    EXPECT_EQ(label.green, 0.0f);
    EXPECT_TRUE(label.dropShadowEnabled);
    EXPECT_EQ(label.dropShadowOffsetY, 3.0f);
    EXPECT_EQ(label.dropShadowAlpha, 0.75f);
    EXPECT_FALSE(label.enabled) << "it does not take the mouse";
    EXPECT_EQ(sized.fontSize, 12.0f);
    EXPECT_EQ(chooser.fontSize, 18.0f);
    EXPECT_TRUE(chooser.enabled);
}

TEST_F(MenuLayoutTest, ATextBoxBreaksItsTextInItsWidthAndNoBreakSpacesHoldWordsTogether) {
    data.write("cfg/own.cfg", "a_w = 80 a_fontSize = 8 a_text = The\xA0water");
    const MenuLayout layout("cfg\\own.cfg");

    layout.addTextBox(screen, "a");
    const auto& box = dynamic_cast<const GuiTextBox&>(last());

    EXPECT_EQ(box.lines, std::vector<std::string>{"The\xA0water"});
    EXPECT_TRUE(box.centered);
    EXPECT_FALSE(box.enabled);
}

TEST_F(MenuLayoutTest, ALogoLiesAboutItsPlaceInItsOwnSize) {
    data.write("cfg/own.cfg", "logo = gfx\\missing.tga logo_x = 400 logo_y = 300");
    const MenuLayout layout("cfg\\own.cfg");

    layout.addLogo(screen);

    EXPECT_EQ(last().x, 392) << "the checkerboard is 16 pixels a side";
    EXPECT_EQ(last().y, 292);
    EXPECT_EQ(last().width, 16);
    EXPECT_FALSE(last().enabled);
}

TEST_F(MenuLayoutTest, NumbersBeyondEveryScreenAreHeld) {
    data.write("cfg/own.cfg",
               "a_x = 99999999999999999999 a_y = -99999999999999999999 a_w = 99999999999999999999 a_h = -5");
    const MenuLayout layout("cfg\\own.cfg");

    const GuiAnimatedButton& button = layout.addButton<act>(screen, "a");

    EXPECT_EQ(button.x, 1'000'000);
    EXPECT_EQ(button.y, -1'000'000);
    EXPECT_EQ(button.width, 1'000'000);
    EXPECT_EQ(button.height, 0);
}

TEST_F(MenuLayoutTest, WithoutFilesEverythingIsThereAtTheOrigin) {
    std::filesystem::remove(data.path() / "cfg/menu_general.cfg");
    const MenuLayout layout("cfg\\missing.cfg");

    layout.addLogo(screen);
    layout.addTextBox(screen, "a");
    const GuiAnimatedButton& button = layout.addButton<act>(screen, "b");
    screen.swapBuffers = false;
    screen.windowRedrawing();

    EXPECT_EQ(screen.getWidgets().size(), 3u);
    EXPECT_EQ(button.x, 0);
    EXPECT_EQ(button.width, 0);
}

} // namespace tarnwick
