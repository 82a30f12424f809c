#include "gui/GuiOptionChooser.h"

#include "graphics/KeyMap.h"
#include "support/DrawingTest.h"

namespace tarnwick {

/// A chooser in a window of 100 by 20, its text in white squares of 4 pixels about (50, 10), its arrows red
/// out of focus, green in focus and blue clicked, 4 pixels a side.
class GuiOptionChooserTest : public DrawingTest {
protected:
    GuiOptionChooserTest()
        : DrawingTest(100, 20) {
        writeFlatPicture("gfx/font.tga", white);
        writeFlatPicture("gfx/out.tga", red);
        writeFlatPicture("gfx/in.tga", green);
        writeFlatPicture("gfx/click.tga", blue);
        chooser = std::make_unique<GuiOptionChooser>();
        chooser->setLeftButtonFramesOutOfFocus("gfx\\out.tga");
        chooser->setLeftButtonFramesInFocus("gfx\\in.tga");
        chooser->setLeftButtonFramesClicked("gfx\\click.tga");
        chooser->setRightButtonFramesOutOfFocus("gfx\\out.tga");
        chooser->setRightButtonFramesInFocus("gfx\\in.tga");
        chooser->setRightButtonFramesClicked("gfx\\click.tga");
        chooser->setFont("gfx\\font.tga");
        chooser->setFontSize(4.0f);
        chooser->setColor(1.0f, 1.0f, 1.0f, 1.0f);
        chooser->setSize(100, 20);
    }
    void addThree() {
        chooser->addOption("ab");
        chooser->addOption("cdef");
        chooser->addOption("gh");
    }
    FramePicture draw() {
        beginPicture();
        chooser->windowRedrawing();
        return picture();
    }

    std::unique_ptr<GuiOptionChooser> chooser;
    static constexpr FramePicture::Pixel dimRed{64, 0, 0}; ///< At a quarter over black.
};

TEST_F(GuiOptionChooserTest, ANewChooserIsBlackAndEmpty) {
    const GuiOptionChooser fresh;

    EXPECT_EQ(fresh.red, 0.0f);
    EXPECT_EQ(fresh.alpha, 1.0f);
    EXPECT_EQ(fresh.fontSize, 16.0f);
    EXPECT_EQ(fresh.getCurrentOption(), 0u);
    EXPECT_EQ(fresh.getCurrentText(), "");
}

TEST_F(GuiOptionChooserTest, AnOptionPastTheEndIsTheLast) {
    chooser->setCurrentOption(100);
    const std::uint32_t withoutOptions = chooser->getCurrentOption();
    addThree();

    chooser->setCurrentOption(100);

    EXPECT_EQ(withoutOptions, 0u);
    EXPECT_EQ(chooser->getCurrentOption(), 2u);
    EXPECT_EQ(chooser->getCurrentText(), "gh");
}

TEST_F(GuiOptionChooserTest, LeftAndRightGoThroughTheOptionsWithoutWrapping) {
    addThree();
    std::vector<std::uint32_t> seen;

    for (const std::uint32_t key :
         {key::left, key::right, key::right, key::right, key::left, key::up, key::enter, key::left}) {
        chooser->keyboardPressed(key);
        seen.push_back(chooser->getCurrentOption());
    }

    EXPECT_EQ(seen, (std::vector<std::uint32_t>{0, 1, 2, 2, 1, 1, 1, 0}));
}

TEST_F(GuiOptionChooserTest, AClickGoesBackOnTheMiddleAndLeftOfItAndElseForward) {
    addThree();
    chooser->setPosition(10, 0);
    std::vector<std::uint32_t> seen;

    for (const std::uint32_t x : {61u, 61u, 61u, 60u, 5u, 0u}) {
        chooser->mousePressed(x, 500, 2);
        seen.push_back(chooser->getCurrentOption());
    }

    EXPECT_EQ(seen, (std::vector<std::uint32_t>{1, 2, 2, 1, 0, 0}));
}

TEST_F(GuiOptionChooserTest, WithoutOptionsNothingMoves) {
    chooser->keyboardPressed(key::right);
    chooser->keyboardPressed(key::left);
    chooser->mousePressed(90, 5, 1);

    EXPECT_EQ(chooser->getCurrentOption(), 0u);
}

TEST_F(GuiOptionChooserTest, TheTextIsCentredBetweenTheArrowsAndTheLeftOneIsDimAtTheFirstOption) {
    addThree();

    const FramePicture shown = draw();

    // Two characters: 46 to 54. Arrows on both sides, their middle on the text's.
    EXPECT_EQ(shown.at(46, 8), white);
    EXPECT_EQ(shown.at(53, 11), white);
    EXPECT_PRED2(alike, shown.at(42, 8), dimRed);
    EXPECT_PRED2(alike, shown.at(45, 11), dimRed);
    EXPECT_EQ(shown.at(54, 8), red);
    EXPECT_EQ(shown.at(57, 11), red);
    EXPECT_EQ(shown.at(41, 9), black);
    EXPECT_EQ(shown.at(58, 9), black);
    EXPECT_EQ(shown.at(50, 12), black);
}

TEST_F(GuiOptionChooserTest, TheRightArrowIsDimAtTheLastOptionAndNoneInBetween) {
    addThree();

    chooser->setCurrentOption(1);
    const FramePicture between = draw();
    chooser->setCurrentOption(2);
    const FramePicture last = draw();

    EXPECT_EQ(between.at(39, 9), red) << "four characters: 42 to 58";
    EXPECT_EQ(between.at(60, 9), red);
    EXPECT_EQ(last.at(43, 9), red);
    EXPECT_PRED2(alike, last.at(55, 9), dimRed);
}

TEST_F(GuiOptionChooserTest, ASingleOptionHasBothArrowsDim) {
    chooser->addOption("ab");

    const FramePicture shown = draw();

    EXPECT_PRED2(alike, shown.at(43, 9), dimRed);
    EXPECT_PRED2(alike, shown.at(55, 9), dimRed);
}

TEST_F(GuiOptionChooserTest, TheArrowsTakePartInTheFocusAndInAReset) {
    addThree();
    chooser->setCurrentOption(1);

    chooser->gainedFocus();
    const FramePicture focused = draw();
    chooser->setButtonStates(GuiAnimatedButton::clicked);
    const FramePicture clicked = draw();
    chooser->reset();
    const FramePicture reset = draw();

    EXPECT_EQ(focused.at(39, 9), green);
    EXPECT_EQ(focused.at(60, 9), green);
    EXPECT_EQ(clicked.at(39, 9), blue);
    EXPECT_EQ(reset.at(60, 9), red);
}

TEST_F(GuiOptionChooserTest, WhenTheFocusGoesTheArrowsPlayBack) {
    addThree();
    chooser->setCurrentOption(1);
    chooser->gainedFocus();

    chooser->lostFocus();
    Clock::drive(200);
    const FramePicture shown = draw();

    EXPECT_EQ(shown.at(39, 9), red);
}

} // namespace tarnwick
