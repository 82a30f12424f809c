#include "audio/SoundManager.h"
#include "audio/SoundSystem.h"
#include "core/Clock.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"
#include "gui/GameMenus.h"
#include "gui/GuiAnimatedButton.h"
#include "gui/GuiOptionChooser.h"
#include "gui/GuiScoreLabel.h"
#include "gui/GuiScreen.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"
#include "support/ToneFile.h"

namespace tarnwick {

/// What the widgets let hear, in sounds of a second each, on a device that renders when it is asked. A sound
/// that is heard holds a voice.
class GuiSoundsTest : public ModuleTest {
protected:
    GuiSoundsTest() {
        data.write("snd/over.wav", toneFile(44'100));
        data.write("snd/click.wav", toneFile(44'100));
        data.write("cfg/menu_general.cfg", "menuBgSound = snd\\over.wav");
        GLWindow::createHeadless(800, 600);
        SoundSystem::initialiseLoopback();
        SoundManager::initialise();
    }

    template <typename Widget>
    static Widget& addWithSounds(GuiScreen& screen) {
        auto* const widget = new Widget;
        screen.addWidget(widget);
        widget->setOverSound("snd\\over.wav");
        widget->setClickedSound("snd\\click.wav");
        return *widget;
    }
    static std::size_t heard() { return SoundSystem::voicesInUse(); }

    DataFolder data;
    GuiScreen screen;
};

TEST_F(GuiSoundsTest, AButtonIsHeardWhenItGainsTheFocusAndNotTwiceAtOnce) {
    auto& button = addWithSounds<GuiAnimatedButton>(screen);
    const std::size_t before = heard();

    button.gainedFocus();
    const std::size_t first = heard();
    SoundSystem::renderLoopback(30'000);
    button.reset();
    button.gainedFocus(); // while the first is heard
    SoundSystem::renderLoopback(20'000);

    EXPECT_EQ(before, 0u);
    EXPECT_EQ(first, 1u);
    button.reset();
    button.gainedFocus(); // it had ended, and begins again
    EXPECT_EQ(heard(), 1u);
}

TEST_F(GuiSoundsTest, AClickIsHeardOnceAndTheOtherButtonsOfTheScreenStaySilent) {
    auto& button = addWithSounds<GuiAnimatedButton>(screen);
    addWithSounds<GuiAnimatedButton>(screen);

    button.mousePressed(0, 0, 1);
    button.mousePressed(0, 0, 1);

    EXPECT_EQ(heard(), 1u);
}

TEST_F(GuiSoundsTest, AButtonThatIsClickedDoesNotTellThatItGainsTheFocus) {
    auto& button = addWithSounds<GuiAnimatedButton>(screen);
    button.state = GuiAnimatedButton::clicked;

    button.gainedFocus();

    EXPECT_EQ(heard(), 0u);
    EXPECT_EQ(button.state, GuiAnimatedButton::clicked);
}

TEST_F(GuiSoundsTest, AChooserIsHeardWhenItGainsTheFocus) {
    auto& chooser = addWithSounds<GuiOptionChooser>(screen);

    chooser.gainedFocus();

    EXPECT_EQ(heard(), 1u);
}

TEST_F(GuiSoundsTest, AClickOnAChooserIsHeardOnlyIfTheOptionChangesAndKeysNever) {
    auto& chooser = addWithSounds<GuiOptionChooser>(screen);
    chooser.addOption("off");
    chooser.addOption("on");

    chooser.mousePressed(0, 0, 1); // nothing before the first
    const std::size_t afterVainClick = heard();
    chooser.keyboardPressed(key::right);
    const std::size_t afterKey = heard();
    chooser.mousePressed(0, 0, 1);

    EXPECT_EQ(afterVainClick, 0u);
    EXPECT_EQ(afterKey, 0u);
    EXPECT_EQ(heard(), 1u);
}

TEST_F(GuiSoundsTest, ACountIsHeardFromItsStartToItsEnd) {
    GuiScoreLabel label;
    label.setRampUpSound("snd\\over.wav");
    label.setRampUpTime(0.5f);
    const std::size_t before = heard();
    label.reset();

    Clock::drive(100);
    label.windowRedrawing();
    const std::size_t counting = heard();
    Clock::drive(600);
    label.windowRedrawing(); // the end is reached in this picture
    Clock::drive(610);
    label.windowRedrawing();

    EXPECT_EQ(before, 0u);
    EXPECT_EQ(counting, 1u);
    EXPECT_EQ(heard(), 0u);
}

TEST_F(GuiSoundsTest, AResetSilencesACount) {
    GuiScoreLabel label;
    label.setRampUpSound("snd\\over.wav");
    label.reset();
    label.windowRedrawing();
    const std::size_t counting = heard();

    label.reset();

    EXPECT_EQ(counting, 1u);
    EXPECT_EQ(heard(), 0u);
}

TEST_F(GuiSoundsTest, AnotherSoundTakesThePlaceOfTheFirst) {
    auto& button = addWithSounds<GuiAnimatedButton>(screen);
    button.gainedFocus();

    button.setOverSound("snd\\click.wav");

    EXPECT_EQ(heard(), 0u) << "the old one is gone, the new one has not begun";
}

TEST_F(GuiSoundsTest, TheSoundBehindTheMenusGoesOnFromMenuToMenuAndEndsWithThem) {
    GameMenus::initialise();
    const std::size_t before = heard();
    GameMenus::setCurrentMenu(menu::main);
    SoundSystem::renderLoopback(100'000); // longer than the sound
    GameMenus::setCurrentMenu(menu::options);
    const std::size_t inMenus = heard();
    GameMenus::setCurrentMenu(menu::none);

    EXPECT_EQ(before, 0u);
    EXPECT_EQ(inMenus, 1u);
    EXPECT_EQ(heard(), 0u);
    GameMenus::shutdown();
}

} // namespace tarnwick
