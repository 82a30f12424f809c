#include "graphics/GLWindow.h"

#include "graphics/GLWindowEventListener.h"
#include "graphics/KeyMap.h"
#include "support/Keyboard.h"
#include "support/ModuleTest.h"

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
    void windowClosing() override { heard.emplace_back("closing"); }
    void windowClosed() override { heard.emplace_back("closed"); }
};

void sendButton(Uint32 type, int button) {
    SDL_Event event{};
    event.type = type;
    event.button.button = static_cast<Uint8>(button);
    event.button.clicks = 1;
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

TEST_F(GLWindowTest, ACloseRequestAlwaysEndsInDestruction) {
    sendWindowEvent(SDL_WINDOWEVENT_CLOSE);

    GLWindow::run();

    EXPECT_FALSE(GLWindow::exists());
    EXPECT_EQ(listener.heard, (std::vector<std::string>{"closing", "closed"}));
}

} // namespace tarnwick
