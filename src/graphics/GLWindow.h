#pragma once

#include <array>
#include <cstdint>

union SDL_Event;

namespace tarnwick {

class GLWindowEventListener;

/// The one window of the system and its keyboard and mouse: the source of every input event.
///
/// So far it exists without a picture (`createHeadless`), for the headless runner and the tests: it has a
/// size, a listener, and the keys, the mouse and the focus that SDL events bring. Keys are virtual key
/// numbers throughout
/// (`KeyMap`); mouse buttons are bit values: 1 left, 2 right, 4 middle.
class GLWindow {
public:
    GLWindow() = delete;

    /// A window that nobody sees: `exists` is true until `close`, its client area has the size given, in
    /// pixels, and fills its screen. It has no focus until an event gives it. Events come from SDL's queue.
    static void createHeadless(std::int32_t clientWidth, std::int32_t clientHeight);
    static bool exists() { return state.open; }
    /// Destroys the window at once.
    static void close();

    /// One pass of the message pump: hands every pending event to the listener, without ever blocking. Every
    /// loop in the system calls it once a pass.
    static void run();

    static GLWindowEventListener* getEventListener() { return state.eventListener; }
    static void setEventListener(GLWindowEventListener* listener) { state.eventListener = listener; }

    /// Pixels; 0 without a window.
    static std::int32_t getClientWidth() { return state.clientWidth; }
    static std::int32_t getClientHeight() { return state.clientHeight; }
    /// Screen position of the middle of the client area, pixels, as `centerMouse` reaches it.
    static std::int32_t getClientCenterX();
    static std::int32_t getClientCenterY();
    static bool isMinimised() { return state.minimised; }
    static bool hasFocus() { return state.focused; }

    /// Cursor in screen coordinates, pixels.
    static std::int32_t getMouseScreenX();
    static std::int32_t getMouseScreenY();
    static bool mouseInClientArea();
    /// Moves the cursor to the middle of the client area.
    static void centerMouse();

    /// True while the key is down.
    static bool keyboardKeyPressed(std::uint32_t key);
    /// True while a toggle key such as Insert (45) is on; flipped by each press that is no repeat.
    static bool keyboardKeyToggled(std::uint32_t key);
    /// The one character that the key gives with the present keyboard state, Latin-1; 0 if it gives none.
    static std::uint8_t keyboardKeyToAscii(std::uint32_t key);
    /// The key of the last press, and 0 from then on.
    static std::uint32_t getLastKeyPressed();

private:
    friend class ModuleReset;

    struct State {
        bool open = false;
        std::int32_t clientWidth = 0;
        std::int32_t clientHeight = 0;
        GLWindowEventListener* eventListener = nullptr; ///< Not owned.
        bool focused = false;
        bool minimised = false;
        std::uint32_t mouseX = 0; ///< Client pixels, at the last mouse event.
        std::uint32_t mouseY = 0;
        std::uint32_t lastKeyPressed = 0;
        std::array<bool, 256> keyDown{}; ///< By virtual key number, as the events told.
        std::array<bool, 256> keyToggled{};
        std::array<bool, 256> keyPressedOnce{};       ///< `keyCharacter` is known.
        std::array<std::uint8_t, 256> keyCharacter{}; ///< What each key typed at its last press, Latin-1.
    };
    static State state;

    static void keyPressed(const SDL_Event& event);
    static void keyReleased(const SDL_Event& event);
    static void mouseEvent(const SDL_Event& event);
    static void windowEvent(const SDL_Event& event);
    static void handleEvent(const SDL_Event& event);
};

} // namespace tarnwick
