#include "graphics/GLWindow.h"

#include "core/Comfort.h"
#include "graphics/GLWindowEventListener.h"
#include "graphics/KeyMap.h"
#include "support/DataFolder.h"
#include "support/Keyboard.h"
#include "support/ModuleTest.h"

#include <array>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

/// Writes down what it hears.
class RecordingListener final : public GLWindowEventListener {
public:
    std::vector<std::string> heard;

    void mouseMoved(std::uint32_t x, std::uint32_t y) override {
        heard.push_back("moved " + std::to_string(x) + " " + std::to_string(y));
    }
    void mousePressed(std::uint32_t, std::uint32_t, std::uint32_t button) override {
        heard.push_back("pressed " + std::to_string(button));
    }
    void mouseReleased(std::uint32_t, std::uint32_t, std::uint32_t button) override {
        heard.push_back("released " + std::to_string(button));
    }
    void keyboardPressed(std::uint32_t key) override { heard.push_back("key " + std::to_string(key)); }
    void keyboardReleased(std::uint32_t key) override { heard.push_back("key up " + std::to_string(key)); }
    void windowResized() override { heard.emplace_back("resized"); }
    void windowRedrawing() override { heard.emplace_back("redrawing"); }
    void windowFocusLost() override { heard.emplace_back("focus lost"); }
    void windowClosing() override { heard.emplace_back("closing"); }
    void windowClosed() override { heard.emplace_back("closed"); }
};

void sendButton(Uint32 type, int button, int clicks = 1) {
    SDL_Event event{};
    event.type = type;
    event.button.button = static_cast<Uint8>(button);
    event.button.clicks = static_cast<Uint8>(clicks);
    event.button.x = 10;
    event.button.y = 20;
    SDL_PushEvent(&event);
}

} // namespace

class GLWindowTest : public ModuleTest {
protected:
    GLWindowTest() {
        GLWindow::createHeadless(800, 600);
        GLWindow::setEventListener(&listener);
    }
    ~GLWindowTest() override { GLWindow::close(); }

    /// The window of 800 by 600 in the middle of the last of these displays.
    static void standOn(const std::vector<std::array<std::int32_t, 4>>& displays) {
        for (const auto& [x, y, width, height] : displays) {
            GLWindow::state.headlessDisplays.push_back({x, y, width, height});
        }
        GLWindow::setPosition(displays.back()[0] + 10, displays.back()[1] + 10);
        GLWindow::center();
    }
    static std::array<std::uint16_t, 256> gammaRamp(float gamma) { return GLWindow::gammaRamp(gamma); }

    RecordingListener listener;
};

TEST_F(GLWindowTest, AClosedWindowHasNoSizeAndHearsNothing) {
    GLWindow::close();
    GLWindow::run();

    EXPECT_FALSE(GLWindow::exists());
    EXPECT_EQ(GLWindow::getClientWidth(), 0);
    EXPECT_EQ(GLWindow::getClientHeight(), 0);
    EXPECT_EQ(listener.heard, std::vector<std::string>{"closed"});
    EXPECT_EQ(GLWindow::getEventListener(), nullptr);
}

TEST_F(GLWindowTest, AKeyIsDownFromItsPressToItsRelease) {
    pressKey(SDL_SCANCODE_LEFT, SDLK_LEFT);
    GLWindow::run();
    const bool downAfterPress = GLWindow::keyboardKeyPressed(key::left);
    releaseKey(SDL_SCANCODE_LEFT, SDLK_LEFT);
    GLWindow::run();

    EXPECT_TRUE(downAfterPress);
    EXPECT_FALSE(GLWindow::keyboardKeyPressed(key::left));
    EXPECT_EQ(listener.heard, (std::vector<std::string>{"key 37", "key up 37"}));
}

TEST_F(GLWindowTest, KeyNumbersBeyondTheTableAreNeverDown) {
    EXPECT_FALSE(GLWindow::keyboardKeyPressed(256));
    EXPECT_FALSE(GLWindow::keyboardKeyToggled(4000000000u));
    EXPECT_EQ(GLWindow::keyboardKeyToAscii(256), 0);
}

TEST_F(GLWindowTest, ATextBehindAPressIsWhatTheKeyTypes) {
    pressKey(SDL_SCANCODE_A, SDLK_a, "\xC3\xA4"); // a umlaut
    GLWindow::run();

    EXPECT_EQ(GLWindow::keyboardKeyToAscii('A'), 0xE4);
}

TEST_F(GLWindowTest, AKeyWithoutACharacterGivesZero) {
    pressKey(SDL_SCANCODE_A, SDLK_a);                 // a dead key gives no text
    pressKey(SDL_SCANCODE_S, SDLK_s, "\xE2\x82\xAC"); // the euro sign is beyond Latin-1
    GLWindow::run();

    EXPECT_EQ(GLWindow::keyboardKeyToAscii('A'), 0);
    EXPECT_EQ(GLWindow::keyboardKeyToAscii('S'), 0);
    EXPECT_EQ(GLWindow::keyboardKeyToAscii(key::left), 0);
}

TEST_F(GLWindowTest, TheLastKeyIsToldOnce) {
    pressKey(SDL_SCANCODE_A, SDLK_a);
    GLWindow::run();

    EXPECT_EQ(GLWindow::getLastKeyPressed(), std::uint32_t{'A'});
    EXPECT_EQ(GLWindow::getLastKeyPressed(), 0u);
}

TEST_F(GLWindowTest, APressFlipsTheToggleAndARepeatDoesNot) {
    pressKey(SDL_SCANCODE_INSERT, SDLK_INSERT);
    SDL_Event repeat{};
    repeat.type = SDL_KEYDOWN;
    repeat.key.repeat = 1;
    repeat.key.keysym.scancode = SDL_SCANCODE_INSERT;
    repeat.key.keysym.sym = SDLK_INSERT;
    SDL_PushEvent(&repeat);
    GLWindow::run();

    EXPECT_TRUE(GLWindow::keyboardKeyToggled(key::insert));
    EXPECT_EQ(listener.heard.size(), 2u); // but a repeat is delivered
}

TEST_F(GLWindowTest, KeysWithAltAreNoPresses) {
    pressKey(SDL_SCANCODE_F4, SDLK_F4, nullptr, KMOD_LALT);
    pressKey(SDL_SCANCODE_F10, SDLK_F10);
    GLWindow::run();

    EXPECT_TRUE(listener.heard.empty());
}

TEST_F(GLWindowTest, MouseButtonsAreBits) {
    for (const int button : {SDL_BUTTON_LEFT, SDL_BUTTON_RIGHT, SDL_BUTTON_MIDDLE, SDL_BUTTON_X1}) {
        sendButton(SDL_MOUSEBUTTONDOWN, button);
    }
    sendButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_RIGHT);
    GLWindow::run();

    EXPECT_EQ(listener.heard,
              (std::vector<std::string>{"pressed 1", "pressed 2", "pressed 4", "released 2"}));
}

TEST_F(GLWindowTest, AMouseLeftOfTheClientAreaIsALargeNumber) {
    moveMouse(-1, 5);
    GLWindow::run();

    EXPECT_EQ(listener.heard, std::vector<std::string>{"moved 65535 5"});
    EXPECT_FALSE(GLWindow::mouseInClientArea());
}

TEST_F(GLWindowTest, ACentredMouseHasNotMoved) {
    moveMouse(700, 5);
    GLWindow::run();

    GLWindow::centerMouse();

    EXPECT_EQ(GLWindow::getMouseScreenX(), GLWindow::getClientCenterX());
    EXPECT_EQ(GLWindow::getMouseScreenY(), GLWindow::getClientCenterY());
    EXPECT_TRUE(GLWindow::mouseInClientArea());
}

constexpr std::array<std::int32_t, 4> firstDisplay{0, 0, 1280, 1024};

class GLWindowOnDisplaysTest : public GLWindowTest,
                               public testing::WithParamInterface<std::array<std::int32_t, 4>> {};

TEST_P(GLWindowOnDisplaysTest, TheMiddleIsThatOfTheWindowsDisplay) {
    const auto [x, y, width, height] = GetParam();
    standOn({firstDisplay, GetParam()});

    EXPECT_EQ(GLWindow::getScreenWidth(), width);
    EXPECT_EQ(GLWindow::getScreenHeight(), height);
    EXPECT_EQ(GLWindow::getX(), x + width / 2 - 400);
    EXPECT_EQ(GLWindow::getY(), y + height / 2 - 300);
}

TEST_P(GLWindowOnDisplaysTest, ACentredMouseHasNotMoved) {
    standOn({firstDisplay, GetParam()});

    GLWindow::centerMouse();

    EXPECT_EQ(GLWindow::getMouseScreenX(), GLWindow::getClientCenterX());
    EXPECT_EQ(GLWindow::getMouseScreenY(), GLWindow::getClientCenterY());
}

TEST_P(GLWindowOnDisplaysTest, AMoveOfTheMouseStaysNearIt) {
    standOn({firstDisplay, GetParam()});
    GLWindow::centerMouse();

    GLWindow::moveMouse(31, -9);

    EXPECT_EQ(GLWindow::getMouseScreenX(), GLWindow::getClientCenterX() + 30);
    EXPECT_EQ(GLWindow::getMouseScreenY(), GLWindow::getClientCenterY() - 10);
}

INSTANTIATE_TEST_SUITE_P(TwoDisplays,
                         GLWindowOnDisplaysTest,
                         testing::Values(std::array{1280, 0, 1920, 1080},
                                         std::array{-1920, 100, 1920, 1080},
                                         std::array{0, -1080, 1920, 1080},
                                         std::array{0, 1024, 1920, 1080}));

TEST_F(GLWindowTest, TheMouseStaysOnTheDisplays) {
    standOn({firstDisplay, {1280, 0, 1280, 1024}});

    GLWindow::moveMouse(5000, 5000);

    EXPECT_EQ(GLWindow::getMouseScreenX(), 2559);
    EXPECT_EQ(GLWindow::getMouseScreenY(), 1023);
}

TEST_F(GLWindowTest, ACharacterBehindAltGrIsAPress) {
    pressKey(SDL_SCANCODE_Q, SDLK_q, "@", KMOD_RALT);
    GLWindow::run();
    const std::uint8_t character = GLWindow::keyboardKeyToAscii('Q');
    SDL_Event release{};
    release.type = SDL_KEYUP;
    release.key.keysym.scancode = SDL_SCANCODE_Q;
    release.key.keysym.sym = SDLK_q;
    release.key.keysym.mod = KMOD_RALT;
    SDL_PushEvent(&release);
    GLWindow::run();

    EXPECT_EQ(listener.heard, (std::vector<std::string>{"key 81", "key up 81"}));
    EXPECT_EQ(character, '@');
}

TEST_F(GLWindowTest, AnAltThatChangesNoTextMakesASystemKey) {
    pressKey(SDL_SCANCODE_Q, SDLK_q, "q", KMOD_RALT);
    pressKey(SDL_SCANCODE_Q, SDLK_q, "Q", KMOD_RALT | KMOD_LSHIFT);
    pressKey(SDL_SCANCODE_2, SDLK_2, "@", KMOD_RALT | KMOD_LSHIFT);
    pressKey(SDL_SCANCODE_Q, SDLK_q, nullptr, KMOD_RALT);
    pressKey(SDL_SCANCODE_Q, SDLK_q, "@", KMOD_LALT);
    pressKey(SDL_SCANCODE_Q, SDLK_q, "@", KMOD_LALT | KMOD_RALT);
    GLWindow::run();

    EXPECT_TRUE(listener.heard.empty());
}

TEST_F(GLWindowTest, ACharacterBehindAltGrMayBeAnotherKeysOnAUsKeyboard) {
    pressKey(SDL_SCANCODE_2, SDLK_2, "@", KMOD_RALT); // Spanish
    GLWindow::run();

    EXPECT_EQ(listener.heard, std::vector<std::string>{"key 50"});
    EXPECT_EQ(GLWindow::keyboardKeyToAscii('2'), '@');
}

TEST_F(GLWindowTest, AnAccentOnTheConsoleKeyLosesNoTextBehindIt) {
    SDL_StopTextInput();
    pressKey(SDL_SCANCODE_GRAVE, SDLK_CARET);
    pressKey(SDL_SCANCODE_A, SDLK_a, "a");
    GLWindow::run();

    EXPECT_EQ(listener.heard, (std::vector<std::string>{"key 223", "key 65"}));
    EXPECT_EQ(GLWindow::keyboardKeyToAscii('A'), 'a');
    EXPECT_EQ(SDL_IsTextInputActive(), SDL_TRUE); // it was started anew
}

TEST_F(GLWindowTest, ACloseRequestAlwaysEndsInDestruction) {
    sendWindowEvent(SDL_WINDOWEVENT_CLOSE);

    GLWindow::run();

    EXPECT_FALSE(GLWindow::exists());
    EXPECT_EQ(listener.heard, (std::vector<std::string>{"closing", "closed"}));
}

TEST_F(GLWindowTest, TheSecondPressOfADoubleClickIsNotDelivered) {
    for (const int clicks : {1, 2, 3, 4, 5}) {
        sendButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, clicks);
        sendButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, clicks);
    }
    GLWindow::run();

    EXPECT_EQ(listener.heard,
              (std::vector<std::string>{"pressed 1", "released 1", "released 1", "pressed 1", "released 1",
                                        "released 1", "pressed 1", "released 1"}));
}

TEST_F(GLWindowTest, AMouseButtonIsDownFromItsPressToItsRelease) {
    sendButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_RIGHT);
    GLWindow::run();
    const bool downAfterPress = GLWindow::mouseButtonPressed(2);
    const bool asKey = GLWindow::keyboardKeyPressed(2);
    sendButton(SDL_MOUSEBUTTONUP, SDL_BUTTON_RIGHT);
    GLWindow::run();

    EXPECT_TRUE(downAfterPress);
    EXPECT_TRUE(asKey);
    EXPECT_FALSE(GLWindow::mouseButtonPressed(2));
    EXPECT_FALSE(GLWindow::mouseButtonPressed(3));
}

TEST_F(GLWindowTest, AMouseEventTellsWhereTheMouseIs) {
    sendButton(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT);
    GLWindow::run();

    EXPECT_EQ(GLWindow::getMouseX(), 10u);
    EXPECT_EQ(GLWindow::getMouseY(), 20u);
}

TEST_F(GLWindowTest, ShiftIsDownAsLongAsOneOfItsSidesIs) {
    constexpr std::uint32_t shift = 0x10;
    constexpr std::uint32_t leftShift = 0xA0;
    constexpr std::uint32_t rightShift = 0xA1;
    pressKey(SDL_SCANCODE_LSHIFT, SDLK_LSHIFT);
    pressKey(SDL_SCANCODE_RSHIFT, SDLK_RSHIFT);
    releaseKey(SDL_SCANCODE_LSHIFT, SDLK_LSHIFT);
    GLWindow::run();

    EXPECT_TRUE(GLWindow::keyboardKeyPressed(shift));
    EXPECT_FALSE(GLWindow::keyboardKeyPressed(leftShift));
    EXPECT_TRUE(GLWindow::keyboardKeyPressed(rightShift));
}

TEST_F(GLWindowTest, AKeyThatChangesItsNumberWhileHeldDoesNotStayDown) {
    pressKey(SDL_SCANCODE_KP_4, SDLK_KP_4); // NumLock is off: Left
    GLWindow::run();
    SDL_Event release{};
    release.type = SDL_KEYUP;
    release.key.keysym.scancode = SDL_SCANCODE_KP_4;
    release.key.keysym.sym = SDLK_KP_4;
    release.key.keysym.mod = KMOD_NUM;
    SDL_PushEvent(&release);
    GLWindow::run();

    EXPECT_FALSE(GLWindow::keyboardKeyPressed(key::left));
}

TEST_F(GLWindowTest, LosingTheFocusMinimisesAndTellsOnce) {
    sendWindowEvent(SDL_WINDOWEVENT_FOCUS_GAINED);
    GLWindow::run();
    sendWindowEvent(SDL_WINDOWEVENT_FOCUS_LOST);
    GLWindow::run();
    const bool minimised = GLWindow::isMinimised();
    GLWindow::run();
    sendWindowEvent(SDL_WINDOWEVENT_RESTORED); // a desktop that restores without giving the focus
    GLWindow::run();

    EXPECT_TRUE(minimised);
    EXPECT_EQ(listener.heard, std::vector<std::string>{"focus lost"});
}

TEST_F(GLWindowTest, EveryLossOfTheFocusIsTold) {
    for (int i = 0; i < 2; ++i) {
        sendWindowEvent(SDL_WINDOWEVENT_RESTORED);
        sendWindowEvent(SDL_WINDOWEVENT_FOCUS_GAINED);
        GLWindow::run();
        sendWindowEvent(SDL_WINDOWEVENT_FOCUS_LOST);
        GLWindow::run();
    }

    EXPECT_EQ(listener.heard, (std::vector<std::string>{"focus lost", "focus lost"}));
}

TEST_F(GLWindowTest, AWindowThatNeverHadTheFocusDoesNotLoseIt) {
    GLWindow::run();

    EXPECT_FALSE(GLWindow::isMinimised());
    EXPECT_TRUE(listener.heard.empty());
}

TEST_F(GLWindowTest, ANewSizeIsToldAtOnceAndOnlyOnce) {
    GLWindow::setClientSize(400, 300);
    const std::vector<std::string> atOnce = listener.heard;
    GLWindow::setClientSize(400, 300);
    GLWindow::run();

    EXPECT_EQ(atOnce, std::vector<std::string>{"resized"});
    EXPECT_EQ(listener.heard, atOnce);
    EXPECT_EQ(GLWindow::getClientWidth(), 400);
    EXPECT_EQ(GLWindow::getHeight(), 300); // no frame
}

// The fault: a size that the user draws with the mouse and nobody hears of.
TEST_F(GLWindowTest, ASizeThatTheUserChoosesIsToldOnce) {
    for (int i = 0; i < 2; ++i) { // the desktop tells it more than once
        SDL_Event event{};
        event.type = SDL_WINDOWEVENT;
        event.window.event = SDL_WINDOWEVENT_SIZE_CHANGED;
        event.window.data1 = 1024;
        event.window.data2 = 700;
        SDL_PushEvent(&event);
    }
    GLWindow::run();

    EXPECT_EQ(listener.heard, std::vector<std::string>{"resized"});
    EXPECT_EQ(GLWindow::getClientWidth(), 1024);
    EXPECT_EQ(GLWindow::getClientHeight(), 700);
}

TEST_F(GLWindowTest, SizesBelowOneAreIgnored) {
    GLWindow::setClientSize(0, 300);
    GLWindow::setSize(300, -1);

    EXPECT_TRUE(listener.heard.empty());
    EXPECT_EQ(GLWindow::getClientWidth(), 800);
}

TEST_F(GLWindowTest, AskedRepaintsAndExposuresAreServedOnce) {
    GLWindow::requestRepaint();
    GLWindow::run();
    sendWindowEvent(SDL_WINDOWEVENT_EXPOSED);
    sendWindowEvent(SDL_WINDOWEVENT_EXPOSED);
    GLWindow::run();

    EXPECT_EQ(listener.heard, (std::vector<std::string>{"redrawing", "redrawing"}));
}

TEST_F(GLWindowTest, AListenerMayCloseTheWindowAnywhere) {
    class Closer final : public GLWindowEventListener {
    public:
        int closed = 0;
        void keyboardPressed(std::uint32_t) override { GLWindow::close(); }
        void windowClosed() override {
            ++closed;
            GLWindow::close();
        }
    };
    Closer closer;
    GLWindow::setEventListener(&closer);
    pressKey(SDL_SCANCODE_A, SDLK_a);
    pressKey(SDL_SCANCODE_B, SDLK_b);

    GLWindow::run();

    EXPECT_FALSE(GLWindow::exists());
    EXPECT_EQ(closer.closed, 1);
}

TEST_F(GLWindowTest, TheGammaRampStepsByWholeMultiples) {
    EXPECT_EQ(gammaRamp(1.0f)[1], 255);
    EXPECT_EQ(gammaRamp(1.0f)[255], 65025);
    EXPECT_EQ(gammaRamp(0.5f)[2], 254); // 127 a step
    EXPECT_EQ(gammaRamp(2.0f)[128], 65280);
    EXPECT_EQ(gammaRamp(2.0f)[200], 0xFFFF);
    EXPECT_EQ(gammaRamp(0.0f)[255], 0);
}

TEST_F(GLWindowTest, AHeadlessWindowHasNoSamplesAndNoContext) {
    EXPECT_FALSE(GLWindow::contextCurrent());
    EXPECT_FALSE(GLWindow::setAntiAliasingMode(4));
    EXPECT_TRUE(GLWindow::setAntiAliasingMode(1));
    EXPECT_FALSE(GLWindow::isFullscreen());
}

/// Finds a window that goes away although the player wants it to stay, or a play that goes on unseen.
TEST_F(GLWindowTest, ItStaysWithoutTheFocusWhereThePlayerWantsThat) {
    const DataFolder folder;
    folder.write("cfg/comfort.cfg", "stayWithoutFocus = TRUE");
    Comfort::initialise();
    sendWindowEvent(SDL_WINDOWEVENT_FOCUS_GAINED);
    GLWindow::run();

    sendWindowEvent(SDL_WINDOWEVENT_FOCUS_LOST);
    GLWindow::run();
    GLWindow::run();

    EXPECT_FALSE(GLWindow::isMinimised());
    EXPECT_EQ(listener.heard, (std::vector<std::string>{"focus lost"}));
}

} // namespace tarnwick
