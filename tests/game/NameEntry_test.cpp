#include "game/NameEntry.h"

#include "core/Clock.h"
#include "game/HighScores.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"
#include "gui/GuiImage.h"
#include "gui/GuiScreen.h"
#include "support/DrawingTest.h"
#include "support/Keyboard.h"

#include <string>

namespace tarnwick {

namespace {

/// Lets a tenth of a second pass whenever it is drawn.
class Pendulum : public GuiWidget {
public:
    void windowRedrawing() override { Clock::drive(Clock::milliseconds() + 100); }
};

} // namespace

/// The entry of a name, in a window of 400 by 300: half a pixel a virtual unit. The button lies from (600,
/// 500) to (700, 550) and is green out of focus, yellow in focus and blue clicked.
class NameEntryTest : public DrawingTest {
protected:
    NameEntryTest()
        : DrawingTest(400, 300) {
        writeFlatPicture("gfx/font.tga", white);
        writeFlatPicture("gfx/cursor.tga", red);
        writePicture("gfx/out.tga", 64, [](auto, auto) { return Texel{green}; });
        writePicture("gfx/in.tga", 64, [](auto, auto) { return Texel{yellow}; });
        writePicture("gfx/click.tga", 64, [](auto, auto) { return Texel{blue}; });
        data.write("cfg/game.cfg", "cursor = gfx\\cursor.tga");
        data.write(
            "cfg/menu_general.cfg",
            "menuFont = gfx\\font.tga menuFontColor_r = 1 menuFontColor_a = 1 menuAnimationSpeeds = 10 "
            "textDropShadowOffset_x = 4 textDropShadowOffset_y = 4 textDropShadowColor_g = 1 "
            "textDropShadowColor_a = 1");
        data.write(
            "cfg/menu_levelFinished.cfg",
            "continueButton_x = 600 continueButton_y = 500 continueButton_w = 100 "
            "continueButton_h = 50 continueButton_frames_outOfFocus = gfx\\out.tga "
            "continueButton_frames_inFocus = gfx\\in.tga continueButton_frames_clicked = gfx\\click.tga");
        HighScores::setDefaultScores();
    }

    /// Presses a key that types a character.
    static void type(NameEntry& screen, char character) {
        GLWindow::setEventListener(&screen);
        const std::string text(1, character);
        const SDL_Keycode keycode = character >= 'A' && character <= 'Z' ? character - 'A' + 'a' : character;
        pressKey(scancodeOf(keycode), keycode, text.c_str());
        GLWindow::run();
        releaseKey(scancodeOf(keycode), keycode);
        GLWindow::run();
        GLWindow::setEventListener(nullptr);
    }
    static void type(NameEntry& screen, const std::string& text) {
        for (const char character : text) {
            type(screen, character);
        }
    }
    static SDL_Scancode scancodeOf(SDL_Keycode keycode) {
        if (keycode >= 'a' && keycode <= 'z') {
            return static_cast<SDL_Scancode>(SDL_SCANCODE_A + keycode - 'a');
        }
        if (keycode >= '1' && keycode <= '9') {
            return static_cast<SDL_Scancode>(SDL_SCANCODE_1 + keycode - '1');
        }
        return keycode == ' ' ? SDL_SCANCODE_SPACE : SDL_SCANCODE_MINUS;
    }
    /// What the screen draws, before it is presented.
    static FramePicture draw(NameEntry& screen) {
        screen.windowRedrawing();
        return picture();
    }
    static void drawAt(std::uint32_t milliseconds, NameEntry& screen) {
        Clock::drive(milliseconds);
        screen.windowRedrawing();
    }
};

TEST_F(NameEntryTest, LettersDigitsAndBlanksAreEnteredAndNothingElse) {
    NameEntry screen(nullptr);

    type(screen, "Ab 9-z");
    screen.keyboardPressed(key::home);
    screen.keyboardPressed(key::tab);

    EXPECT_EQ(screen.name(), "Ab 9z");
}

TEST_F(NameEntryTest, TwentyCharactersStopTheInputAndBackspaceWorksThere) {
    NameEntry screen(nullptr);
    type(screen, std::string(22, 'a'));
    const std::string full = screen.name();

    screen.keyboardPressed(key::backspace);
    const std::string shorter = screen.name();
    type(screen, "bc");

    EXPECT_EQ(full, std::string(20, 'a'));
    EXPECT_EQ(shorter, std::string(19, 'a'));
    EXPECT_EQ(screen.name(), std::string(19, 'a') + "b");
}

TEST_F(NameEntryTest, BackspaceOnAnEmptyNameDoesNothing) {
    NameEntry screen(nullptr);

    screen.keyboardPressed(key::backspace);

    EXPECT_EQ(screen.name(), "");
}

TEST_F(NameEntryTest, AfterEnterFurtherKeysDoNothingAndTheScreenClosesEightTenthsOfASecondLater) {
    NameEntry screen(nullptr);
    type(screen, "a");
    drawAt(10, screen);

    screen.keyboardPressed(key::enter);
    type(screen, "b");
    screen.keyboardPressed(key::backspace);
    drawAt(800, screen); // 0.79 seconds
    drawAt(805, screen);
    const bool before = screen.isActive();
    drawAt(820, screen); // the time is up, and the next picture is the last
    drawAt(821, screen);

    EXPECT_EQ(screen.name(), "a");
    EXPECT_TRUE(before);
    EXPECT_FALSE(screen.isActive());
}

TEST_F(NameEntryTest, EscapeAcceptsToo) {
    NameEntry screen(nullptr);

    screen.keyboardPressed(key::escape);
    type(screen, "b");

    EXPECT_EQ(screen.name(), "");
}

TEST_F(NameEntryTest, AKeyThatIsHeldWhenTheScreenOpensCountsOnlyAfterItsRelease) {
    pressKey(SDL_SCANCODE_RETURN, SDLK_RETURN); // on the button that leads here
    GLWindow::run();
    NameEntry screen(nullptr);
    GLWindow::setEventListener(&screen);

    pressKey(SDL_SCANCODE_RETURN, SDLK_RETURN); // the keyboard repeats it
    GLWindow::run();
    type(screen, "a");
    GLWindow::setEventListener(&screen);
    releaseKey(SDL_SCANCODE_RETURN, SDLK_RETURN);
    pressKey(SDL_SCANCODE_RETURN, SDLK_RETURN);
    GLWindow::run();
    type(screen, "b");

    EXPECT_EQ(screen.name(), "a") << "accepted by the second press, and not by the first";
}

TEST_F(NameEntryTest, ALetterThatIsHeldWhenTheScreenOpensIsNotEntered) {
    pressKey(SDL_SCANCODE_A, SDLK_a, "a");
    GLWindow::run();
    NameEntry screen(nullptr);
    GLWindow::setEventListener(&screen);

    pressKey(SDL_SCANCODE_A, SDLK_a, "a");
    GLWindow::run();
    releaseKey(SDL_SCANCODE_A, SDLK_a);
    GLWindow::run();
    type(screen, "ba");

    EXPECT_EQ(screen.name(), "ba");
}

TEST_F(NameEntryTest, WithoutAnEndTheScreenStays) {
    NameEntry screen(nullptr);

    drawAt(100'000, screen);
    drawAt(200'000, screen);

    EXPECT_TRUE(screen.isActive());
}

TEST_F(NameEntryTest, TheButtonLightsUpUnderTheMouseAndAcceptsAPressThere) {
    NameEntry screen(nullptr);
    screen.mousePressed(325, 262, 1); // no focus yet
    type(screen, "a");
    screen.mouseMoved(325, 262);
    const FramePicture focused = draw(screen);
    screen.mousePressed(10, 10, 1);
    type(screen, "b");
    screen.mousePressed(325, 262, 4);
    type(screen, "c");

    EXPECT_EQ(focused.at(325, 262), yellow);
    EXPECT_EQ(screen.name(), "ab");
    EXPECT_EQ(draw(screen).at(325, 262), blue);
}

TEST_F(NameEntryTest, OffTheButtonItsFocusGoes) {
    NameEntry screen(nullptr);
    screen.mouseMoved(325, 262);

    screen.mouseMoved(350, 262); // (700, 524) is outside
    screen.mousePressed(325, 262, 1);
    type(screen, "a");

    EXPECT_EQ(screen.name(), "a") << "nothing was accepted";
}

TEST_F(NameEntryTest, TheWordsAndTheNameAreCentredWithTheirShadows) {
    NameEntry screen(nullptr);
    type(screen, "ab");

    const FramePicture shown = draw(screen);

    // "New high score!" is 15 characters of 32 about 400: 160 to 640, from 32 down; half a pixel a unit.
    EXPECT_EQ(shown.at(81, 17), red);
    EXPECT_EQ(shown.at(318, 31), red);
    EXPECT_EQ(shown.at(321, 33), green);
    EXPECT_EQ(shown.at(78, 17), black);
    // "Please enter name:" is 18 characters: 112 to 688, from 80 down.
    EXPECT_EQ(shown.at(57, 41), red);
    EXPECT_EQ(shown.at(342, 55), red);
    // Two characters of 24: 376 to 424, from 224 + 8 - 12 down.
    EXPECT_EQ(shown.at(189, 111), red);
    EXPECT_EQ(shown.at(210, 121), red);
    EXPECT_EQ(shown.at(186, 111), black);
    EXPECT_EQ(shown.at(325, 262), green);
}

TEST_F(NameEntryTest, TheMenuBehindShowsThroughAVeil) {
    GuiScreen background;
    background.swapBuffers = false;
    auto* const image = new GuiImage;
    background.addWidget(image);
    image->setImage("gfx\\font.tga");
    image->setSize(800, 600);
    NameEntry screen(&background);

    const FramePicture shown = draw(screen);

    EXPECT_PRED2(alike, shown.at(20, 200), (FramePicture::Pixel{26, 26, 26})) << "a tenth of white";
}

TEST_F(NameEntryTest, TheCursorLiesAtTheMouseInItsOwnSize) {
    NameEntry screen(nullptr);
    moveMouse(100, 200);
    GLWindow::run();

    const FramePicture shown = draw(screen);

    EXPECT_EQ(shown.at(100, 200), red);
    EXPECT_EQ(shown.at(103, 203), red);
    EXPECT_EQ(shown.at(104, 203), black);
}

TEST_F(NameEntryTest, AScoreThatIsNotAboveAnyDoesNotAsk) {
    HighScoreEntry entry;
    entry.score = 500;
    for (int i = 0; i < 10; ++i) {
        HighScores::addHighScore(entry);
    }
    sendWindowEvent(SDL_WINDOWEVENT_CLOSE);

    HighScores::checkScore(500, nullptr);
    const bool closedByAsking = !GLWindow::exists();
    HighScores::checkScore(501, nullptr);

    EXPECT_FALSE(closedByAsking);
    EXPECT_FALSE(GLWindow::exists());
    EXPECT_EQ(HighScores::table()[0].score, 501u);
    EXPECT_EQ(HighScores::table()[9].score, 500u);
}

TEST_F(NameEntryTest, ANewScoreEqualToAnEntryGoesInBelowIt) {
    HighScoreEntry entry;
    entry.name[0] = 'x';
    entry.score = 500;
    HighScores::addHighScore(entry);
    pressKey(SDL_SCANCODE_Y, SDLK_y, "y");
    sendWindowEvent(SDL_WINDOWEVENT_CLOSE);

    HighScores::checkScore(500, nullptr);

    EXPECT_EQ(HighScores::nameOf(HighScores::table()[0]), "x");
    EXPECT_EQ(HighScores::nameOf(HighScores::table()[1]), "y");
    EXPECT_EQ(HighScores::table()[1].score, 500u);
}

TEST_F(NameEntryTest, ScoresAreComparedUnsignedAndTheRestOfANameIsZero) {
    pressKey(SDL_SCANCODE_Y, SDLK_y, "y");
    sendWindowEvent(SDL_WINDOWEVENT_CLOSE);

    HighScores::checkScore(0x80000001, nullptr);

    std::array<char, 24> name{};
    name[0] = 'y';
    EXPECT_EQ(HighScores::table()[0].score, 0x80000001u);
    EXPECT_EQ(HighScores::table()[0].name, name);
}

TEST_F(NameEntryTest, TheListenerComesBackWhenTheNameIsIn) {
    GuiScreen before;
    before.swapBuffers = false;
    before.addWidget(new Pendulum);
    GLWindow::setEventListener(&before);
    pressKey(SDL_SCANCODE_RETURN, SDLK_RETURN);

    HighScores::checkScore(5, &before);

    EXPECT_EQ(GLWindow::getEventListener(), &before);
    EXPECT_TRUE(GLWindow::exists());
    EXPECT_EQ(HighScores::nameOf(HighScores::table()[0]), "");
    EXPECT_EQ(HighScores::table()[0].score, 5u);
    GLWindow::setEventListener(nullptr);
}

/// Finds a pad with which no name, or not every letter, can be entered.
TEST_F(NameEntryTest, APadTurnsTheLettersAddsThemAndTakesThemBack) {
    NameEntry screen(nullptr);

    screen.keyboardPressed(key::padUp); // the first letter
    EXPECT_EQ(screen.name(), "A");
    screen.keyboardPressed(key::padUp);
    screen.keyboardPressed(key::padUp);
    screen.keyboardPressed(key::padRight);
    screen.keyboardPressed(key::padDown); // round, to the last of them
    EXPECT_EQ(screen.name(), "C ");
    screen.keyboardPressed(key::padDown);
    EXPECT_EQ(screen.name(), "C9");
    screen.keyboardPressed(key::padB);
    EXPECT_EQ(screen.name(), "C");
    for (std::size_t i = 0; i < NameEntry::longestName + 5; ++i) {
        screen.keyboardPressed(key::padRight);
    }
    EXPECT_EQ(screen.name().size(), NameEntry::longestName);
    screen.keyboardPressed(key::padA);
    screen.keyboardPressed(key::padB);
    EXPECT_EQ(screen.name().size(), NameEntry::longestName) << "accepted";
}

} // namespace tarnwick
