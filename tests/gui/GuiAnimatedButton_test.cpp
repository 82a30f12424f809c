#include "gui/GuiAnimatedButton.h"

#include "core/Clock.h"
#include "graphics/KeyMap.h"
#include "gui/GuiOptionChooser.h"
#include "gui/GuiScreen.h"
#include "support/DrawingTest.h"

namespace tarnwick {

/// Buttons with three pictures a state: red, green and blue out of focus, yellow, white and red in focus,
/// white, blue and green clicked.
class GuiAnimatedButtonTest : public DrawingTest {
protected:
    GuiAnimatedButtonTest() {
        writeFlatPicture("gfx/out_frame0.tga", red);
        writeFlatPicture("gfx/out_frame1.tga", green);
        writeFlatPicture("gfx/out_frame2.tga", blue);
        writeFlatPicture("gfx/in_frame0.tga", yellow);
        writeFlatPicture("gfx/in_frame1.tga", white);
        writeFlatPicture("gfx/in_frame2.tga", red);
        writeFlatPicture("gfx/click_frame0.tga", white);
        writeFlatPicture("gfx/click_frame1.tga", blue);
        writeFlatPicture("gfx/click_frame2.tga", green);
    }

    static void giveFrames(GuiAnimatedButton& button) {
        button.setFramesOutOfFocus("gfx\\out_frame0.tga");
        button.setFramesInFocus("gfx\\in_frame0.tga");
        button.setFramesClicked("gfx\\click_frame0.tga");
    }
    static std::uint32_t frameOf(const GuiAnimatedButton& button) { return button.currentFrame; }
    static float frameTimeOf(const GuiAnimatedButton& button) { return button.frameTime; }
    static std::string shown(const GuiAnimatedButton& button) {
        const GLTexture* const frame = button.getCurrentFrame();
        return frame != nullptr ? frame->name : "none";
    }
    /// The frames after each of `count` steps of a tenth of a second at 10 frames a second.
    static std::vector<std::uint32_t> run(GuiAnimatedButton& button, int count) {
        std::vector<std::uint32_t> frames;
        for (int i = 0; i < count; ++i) {
            button.runAnimation(0.1f, 10.0f);
            frames.push_back(button.currentFrame);
        }
        return frames;
    }
    static std::vector<std::string> found(const std::string& name) {
        std::vector<std::string> list;
        GuiAnimatedButton::findFrames(name, list);
        return list;
    }
    static void focus(GuiAnimatedButton& button, bool focused) {
        button.hasFocus = focused;
        focused ? button.gainedFocus() : button.lostFocus();
    }
};

using Frames = std::vector<std::uint32_t>;

TEST_F(GuiAnimatedButtonTest, ANameWithoutTheMarkStandsForItself) {
    EXPECT_EQ(found("gfx\\Sign.tga"), std::vector<std::string>{"GFX\\SIGN.TGA"});
}

TEST_F(GuiAnimatedButtonTest, ANameWithTheMarkStandsForTheWholeRunInItsOrder) {
    writeFlatPicture("gfx/out_frame1.png", red); // another ending

    EXPECT_EQ(
        found("gfx\\Out_Frame2.tga"),
        (std::vector<std::string>{"GFX\\out_frame0.tga", "GFX\\out_frame1.tga", "GFX\\out_frame2.tga"}));
}

TEST_F(GuiAnimatedButtonTest, ARunWithoutFilesIsEmptyAndDrawsNothing) {
    GuiAnimatedButton button;
    button.setFramesOutOfFocus("gfx\\missing_frame0.tga");
    beginPicture();

    button.windowRedrawing();
    run(button, 3);

    EXPECT_EQ(found("gfx\\missing_frame0.tga"), std::vector<std::string>{});
    EXPECT_EQ(button.getCurrentFrame(), nullptr);
    EXPECT_EQ(litPixels(), 0);
}

TEST_F(GuiAnimatedButtonTest, OutOfFocusTheAnimationLoops) {
    GuiAnimatedButton button;
    giveFrames(button);

    EXPECT_EQ(run(button, 4), (Frames{1, 2, 0, 1}));
    EXPECT_EQ(shown(button), "GFX\\OUT_FRAME1.TGA");
}

TEST_F(GuiAnimatedButtonTest, TimeIsGatheredUntilAFrameIsDueAndTheRestIsDropped) {
    GuiAnimatedButton button;
    giveFrames(button);

    button.runAnimation(0.06f, 10.0f);
    const std::uint32_t before = frameOf(button);
    button.runAnimation(0.3f, 10.0f); // one frame forward, whatever passed
    const std::uint32_t after = frameOf(button);
    button.runAnimation(0.09f, 10.0f);

    EXPECT_EQ(before, 0u);
    EXPECT_EQ(after, 1u);
    EXPECT_EQ(frameOf(button), 1u);
}

TEST_F(GuiAnimatedButtonTest, WithoutASpeedTheAnimationStands) {
    GuiAnimatedButton button;
    giveFrames(button);

    button.runAnimation(10.0f, 0.0f);
    button.runAnimation(10.0f, -5.0f);

    EXPECT_EQ(frameOf(button), 0u);
    EXPECT_EQ(frameTimeOf(button), 0.0f);
}

TEST_F(GuiAnimatedButtonTest, InFocusItRunsToTheEndAndStays) {
    GuiAnimatedButton button;
    giveFrames(button);
    run(button, 1);

    focus(button, true);

    EXPECT_EQ(button.state, GuiAnimatedButton::inFocus);
    EXPECT_EQ(run(button, 4), (Frames{1, 2, 2, 2}));
    EXPECT_EQ(shown(button), "GFX\\IN_FRAME2.TGA");
}

TEST_F(GuiAnimatedButtonTest, WhenTheFocusGoesItPlaysBackAndThenLoopsAgain) {
    GuiAnimatedButton button;
    giveFrames(button);
    focus(button, true);
    run(button, 2);

    focus(button, false);
    const Frames back = run(button, 2);
    const GuiAnimatedButton::State stateAtFirst = button.state;
    run(button, 1);

    EXPECT_EQ(back, (Frames{1, 0}));
    EXPECT_EQ(stateAtFirst, GuiAnimatedButton::inFocus);
    EXPECT_EQ(button.state, GuiAnimatedButton::outOfFocus);
    EXPECT_EQ(frameOf(button), 0u);
    EXPECT_EQ(run(button, 1), Frames{1});
}

TEST_F(GuiAnimatedButtonTest, FocusThatComesBackWhileItPlaysBackGoesOnFromThere) {
    GuiAnimatedButton button;
    giveFrames(button);
    focus(button, true);
    run(button, 2);
    focus(button, false);
    run(button, 1);

    focus(button, true);

    EXPECT_EQ(frameOf(button), 1u);
    EXPECT_EQ(run(button, 1), Frames{2});
}

TEST_F(GuiAnimatedButtonTest, ClickedItRunsToTheEndAndStaysUntilAReset) {
    GuiAnimatedButton button;
    giveFrames(button);
    focus(button, true);
    run(button, 2);

    button.mousePressed(0, 0, 4);
    const std::uint32_t first = frameOf(button);
    const Frames frames = run(button, 3);
    focus(button, false);
    run(button, 1);
    const GuiAnimatedButton::State before = button.state;
    button.reset();

    EXPECT_EQ(first, 0u);
    EXPECT_EQ(frames, (Frames{1, 2, 2}));
    EXPECT_EQ(before, GuiAnimatedButton::clicked);
    EXPECT_EQ(button.state, GuiAnimatedButton::outOfFocus);
    EXPECT_EQ(frameOf(button), 0u);
}

TEST_F(GuiAnimatedButtonTest, ASecondClickChangesNothing) {
    GuiAnimatedButton button;
    giveFrames(button);
    button.mousePressed(0, 0, 1);
    run(button, 1);

    button.mousePressed(0, 0, 1);

    EXPECT_EQ(frameOf(button), 1u);
}

TEST_F(GuiAnimatedButtonTest, SpaceAndEnterClickAndNoOtherKey) {
    GuiAnimatedButton other;
    GuiAnimatedButton space;
    GuiAnimatedButton enter;

    other.keyboardPressed(key::tab);
    other.keyboardPressed('A');
    space.keyboardPressed(key::space);
    enter.keyboardPressed(key::enter);

    EXPECT_EQ(other.state, GuiAnimatedButton::outOfFocus);
    EXPECT_EQ(space.state, GuiAnimatedButton::clicked);
    EXPECT_EQ(enter.state, GuiAnimatedButton::clicked);
}

TEST_F(GuiAnimatedButtonTest, AClickPutsEveryButtonOfTheScreenIntoTheClickedStateUntilTheReset) {
    GuiScreen screen;
    auto* const first = new GuiAnimatedButton;
    auto* const chooser = new GuiOptionChooser;
    auto* const last = new GuiAnimatedButton;
    screen.addWidget(first);
    screen.addWidget(chooser);
    screen.addWidget(last);
    giveFrames(*first);
    giveFrames(*last);
    focus(*first, true);
    run(*last, 2);

    first->mousePressed(0, 0, 1);
    const GuiAnimatedButton::State lastState = last->state;
    const std::uint32_t lastFrame = frameOf(*last);
    screen.reset();

    EXPECT_EQ(first->state, GuiAnimatedButton::outOfFocus);
    EXPECT_EQ(lastState, GuiAnimatedButton::clicked);
    EXPECT_EQ(lastFrame, 0u);
    EXPECT_EQ(last->state, GuiAnimatedButton::outOfFocus);
}

TEST_F(GuiAnimatedButtonTest, AOneFrameButtonNeverChangesInAnyState) {
    writeFlatPicture("gfx/sign.tga", red);
    GuiAnimatedButton button;
    button.setFramesOutOfFocus("gfx\\sign.tga");
    button.setFramesInFocus("gfx\\sign.tga");
    button.setFramesClicked("gfx\\sign.tga");

    const Frames out = run(button, 2);
    focus(button, true);
    const Frames in = run(button, 2);
    button.mousePressed(0, 0, 1);

    EXPECT_EQ(out, (Frames{0, 0}));
    EXPECT_EQ(in, (Frames{0, 0}));
    EXPECT_EQ(run(button, 2), (Frames{0, 0}));
    EXPECT_EQ(shown(button), "GFX\\SIGN.TGA");
}

TEST_F(GuiAnimatedButtonTest, TheFramesOfAStateAreReplaced) {
    GuiAnimatedButton button;
    giveFrames(button);

    button.setFramesOutOfFocus("gfx\\click_frame1.tga");

    EXPECT_EQ(shown(button), "GFX\\CLICK_FRAME0.TGA");
}

TEST_F(GuiAnimatedButtonTest, ThePictureLiesAtItsOwnSizeInTheMiddleWithItsShadowBelow) {
    GuiAnimatedButton button;
    giveFrames(button); // 4 by 4 pixels
    button.setPosition(20, 10);
    button.setSize(20, 10);
    button.dropShadowEnabled = true;
    button.setDropShadowOffset(3.0f, 2.0f);
    button.setDropShadowColor(0.0f, 0.0f, 1.0f, 1.0f);
    button.setFramesOutOfFocus("gfx\\in_frame1.tga"); // white
    button.framesPerSecond = 0.0f;
    beginPicture();

    button.windowRedrawing();

    EXPECT_EQ(pixel(28, 13), yellow) << "the middle of the widget is (30, 15)";
    EXPECT_EQ(pixel(31, 16), yellow);
    EXPECT_EQ(pixel(34, 18), black) << "a yellow picture has no blue for its shadow to show";
    EXPECT_EQ(pixel(27, 13), black);
    EXPECT_EQ(litPixels(), 16);
}

TEST_F(GuiAnimatedButtonTest, TimePassesWhileItIsDrawn) {
    GuiAnimatedButton button;
    giveFrames(button);
    beginPicture();

    Clock::drive(99);
    button.windowRedrawing();
    const std::uint32_t before = frameOf(button);
    Clock::drive(101);
    button.windowRedrawing();

    EXPECT_EQ(before, 0u);
    EXPECT_EQ(frameOf(button), 1u);
}

} // namespace tarnwick
