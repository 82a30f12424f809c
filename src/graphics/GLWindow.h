#pragma once

#include "core/Vector2.h"

#include <array>
#include <cstdint>
#include <list>
#include <string>
#include <utility>
#include <vector>

struct SDL_Cursor;
struct SDL_Window;
union SDL_Event;

namespace tarnwick {

class GLWindowEventListener;

/// The one window of the system, its GL context, its keyboard and its mouse: the source of every input event.
///
/// Whoever reacts to input installs a `GLWindowEventListener`, stores the old one and puts it back. Keys are
/// virtual key numbers throughout (`KeyMap`); mouse buttons are bit values: 1 left, 2 right, 4 middle.
///
/// The window can die at any time: every event loop tests `exists` and leaves when it is false. Without a
/// window everything here is harmless and tells nothing useful.
///
/// There are three ways to have one: `createWindow` on the screen, `createOffscreen` with a GL context that
/// nobody sees, and `createHeadless` without any GL. All of them take their events from SDL's queue through
/// the same code.
class GLWindow {
public:
    GLWindow() = delete;

    /// One entry of a file box: what it is called and what it shows, as in {"Levels", "*.rivl"}. Several
    /// patterns are separated by semicolons.
    using FileFilter = std::pair<std::string, std::string>;

    // Life of the window.

    /// Opens the window: sizable, centred as if it were 320 by 240, without anti-aliasing, with the arrow
    /// cursor. Does nothing if there is a window. Failure ends the program: a message box, the same text on
    /// standard error, exit status 1. No display is a failure; SDL's `offscreen` driver is accepted only
    /// where SDL_VIDEODRIVER asks for it.
    static void createWindow(const std::string& title, std::int32_t clientWidth, std::int32_t clientHeight);
    /// `createWindow` on SDL's `offscreen` driver: a GL context whose picture can be read back, without a
    /// display.
    static void createOffscreen(std::int32_t clientWidth, std::int32_t clientHeight);
    /// A window without a picture: `exists` is true until `close`, its client area has the size given, in
    /// pixels, and fills its screen. It has no focus until an event gives it.
    static void createHeadless(std::int32_t clientWidth, std::int32_t clientHeight);
    static bool exists() { return state.open; }
    /// Whether the calling thread can draw: GL calls without a context do nothing, and GLU crashes.
    static bool contextCurrent();
    /// Destroys the window at once; the listener hears `windowClosed`.
    static void close();
    /// Takes every window of the program from the desktop without a word, however far it is made or closed:
    /// nothing here works afterwards. For the crash report alone; takes no lock and can run in a signal
    /// handler. False, and nothing done, but on an X server.
    static bool drop();

    /// One pass of the message pump: hands every pending event to the listener, without ever blocking. Every
    /// loop in the system calls it once a pass.
    ///
    /// A window that had the focus and lost it minimises itself and tells its listener, once a loss.
    static void run();

    /// The listener is not owned. Null: events are dropped after the window's own bookkeeping.
    static GLWindowEventListener* getEventListener() { return state.eventListener; }
    static void setEventListener(GLWindowEventListener* listener) { state.eventListener = listener; }

    static void setTitle(const std::string& text);
    static std::string getTitle() { return state.title; }
    /// The next `run` calls `windowRedrawing`.
    static void requestRepaint() { state.repaintRequested = true; }

    // Geometry, in pixels. The outer rectangle is the client area and the frame that the desktop puts round
    // it.

    /// Screen position of the outer rectangle.
    static std::int32_t getX();
    static std::int32_t getY();
    static void setPosition(std::int32_t x, std::int32_t y);
    /// Outer size, as it is when neither minimised nor maximised.
    static std::int32_t getWidth();
    static std::int32_t getHeight();
    /// Outer size. Ignored unless both are at least 1.
    static void setSize(std::int32_t width, std::int32_t height);
    static std::int32_t getClientWidth();
    static std::int32_t getClientHeight();
    /// Resizes without moving. Ignored unless both are at least 1. Calls `windowResized` at once.
    static void setClientSize(std::int32_t width, std::int32_t height);
    /// Screen position of the middle of the client area, where `centerMouse` puts the cursor.
    static std::int32_t getClientCenterX();
    static std::int32_t getClientCenterY();
    /// Size of the desktop.
    static std::int32_t getScreenWidth();
    static std::int32_t getScreenHeight();
    /// Puts the window's centre on the screen's centre.
    static void center();
    static bool isMinimised();
    static bool isMaximised();
    /// Whether the window is the foreground window.
    static bool hasFocus();
    static void minimize();
    static void maximize();
    static void restore();
    /// Brings the window to the foreground.
    static void giveFocous();
    static void setResizeable(bool flag);
    static bool isResizeable();
    /// Full screen is always the desktop's own size: no display mode is changed, and `width` and `height`
    /// count only when the desktop refuses. Leaving it makes a sizable, centred window with a client area of
    /// `width` by `height`. Failure changes nothing but the size and is not reported.
    static void setFullscreen(bool flag, std::int32_t width, std::int32_t height);
    static bool isFullscreen() { return state.fullscreen; }

    // Cursor and mouse.

    enum class Cursor : std::int32_t { none = 0, arrow = 1, cross = 2 };
    /// Any other number does nothing.
    static void setCursor(Cursor cursor);
    static void setCursor(std::int32_t type) { setCursor(static_cast<Cursor>(type)); }
    static std::int32_t getCursor() { return static_cast<std::int32_t>(state.cursorType); }
    /// Client position of the last mouse event, y downwards; left of or above the client area it is a large
    /// number (16 bits, unsigned).
    static std::uint32_t getMouseX() { return state.mouseX; }
    static std::uint32_t getMouseY() { return state.mouseY; }
    /// Cursor in screen coordinates, at this moment.
    static std::int32_t getMouseScreenX();
    static std::int32_t getMouseScreenY();
    static bool mouseInClientArea();
    /// Moves the cursor to the middle of the client area.
    static void centerMouse();
    /// Moves the cursor relative to where it is.
    static void moveMouse(std::int32_t dx, std::int32_t dy);
    /// Confines the cursor to a rectangle of the screen, as far as the platform does.
    static void restrictMouse(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height);
    static void unRestrictMouse();
    /// Present state of button 1, 2 or 4; false for any other value.
    static bool mouseButtonPressed(std::uint32_t button);

    // Keyboard.

    /// True while the key is down. 1, 2 and 4 are the mouse buttons, 0xA0 to 0xA5 the left and right Shift,
    /// Ctrl and Alt.
    static bool keyboardKeyPressed(std::uint32_t key);
    /// True while a toggle key such as Insert (45) is on; flipped by each press that is no repeat.
    static bool keyboardKeyToggled(std::uint32_t key);
    /// The one character that the key gives with the present keyboard state, Latin-1; 0 if it gives none.
    static std::uint8_t keyboardKeyToAscii(std::uint32_t key);
    /// Whether the last press delivered was the keyboard's repetition of one.
    static bool pressRepeats() { return state.pressRepeats; }
    /// A game pad's button, as a key of its own.
    static void padKeyPressed(std::uint32_t key);
    static void padKeyReleased(std::uint32_t key);
    /// The key of the last press, and 0 from then on.
    static std::uint32_t getLastKeyPressed();

    // Drawing set-ups.

    /// A space in client pixels with (0, 0) at the top left and y downwards; modelview is the identity and
    /// current.
    static void glBeginDraw2d();
    /// A perspective view; `fieldOfView` in degrees, from bottom to top. Modelview is the identity and
    /// current.
    static void glBeginDraw3d(float fieldOfView, float nearPlane, float farPlane);
    /// The outline of a circle, in lines.
    static void glCircle(Vector2 middle, float radius, std::int32_t segments);
    static void glCircle(float x, float y, float radius, std::int32_t segments) {
        glCircle({x, y}, radius, segments);
    }
    /// Saves all attributes, the client attributes, and the projection and modelview matrices; modelview is
    /// current.
    static void glPushState();
    static void glPopState();
    /// Clears the colours, to an opaque one; each component 0 to 1.
    static void clearScreen(float red, float green, float blue);
    /// Presents what was drawn.
    static void swapBuffers();
    /// Fades what was drawn to black and returns when it is done, at most 10 seconds later; the listener
    /// hears nothing meanwhile. Does nothing for a time not above 0. Kept: it leaves two entries more on each
    /// of the two matrix stacks.
    static void fadeScreen(float seconds);
    /// 0 to 2, 1 is the screen's own; anything else is ignored. Does nothing where the platform has no gamma
    /// ramp.
    static void setGamma(float gamma);

    // Capabilities.

    static void getExtensionList(std::list<std::string>& list);
    /// Whether the GL has an extension, whole word, in any case. Upper-cases `name` in place.
    static bool extensionSupported(std::string& name);
    /// Samples per pixel; 1 without multisampling.
    static std::uint32_t getAntiAliasingMode() { return state.antiAliasingMode; }
    /// Changes the samples per pixel; 0 is read as 1. A change creates a new window and GL context with the
    /// place, size, title, cursor, listener, resizability and mode of the old one: everything that the GL
    /// holds must then be loaded anew. When it fails, the previous mode is tried again, and false comes back.
    static bool setAntiAliasingMode(std::uint32_t samples);
    static bool antiAliasingModeAvailable(std::uint32_t samples);
    static void enableVsync(bool flag);
    /// Whether presenting waits for the screen; true where the platform cannot tell.
    static bool vsyncEnabled();

    // Another thread draws into the window for a while: of two contexts on one window not every platform
    // allows both to be current. So the window is lent. The main thread's context goes on meanwhile, its
    // textures and lists can be filled, but what it draws nobody sees.

    /// For the main thread: gives the window away. False if it has no picture to draw, or is lent already.
    /// `endLending` is called when the window is about to close, for the other thread draws into it: it ends
    /// the drawing and takes the window back.
    static bool lend(void (*endLending)());
    /// For the main thread, when the other one is done.
    static void takeBack();
    /// For the other thread: a GL context of its own on the lent window, current, which shares nothing with
    /// the main one; null if the platform refuses.
    static void* createLentContext();
    /// The other thread's last call here, also where it got no context.
    static void deleteLentContext(void* context);

    // Dialogs. Without a desktop to show them on, their text goes to standard error and the answer is no.

    static void showMessageBox(const std::string& text, const std::string& caption);
    /// True for yes.
    static bool showQuestionBox(const std::string& text, const std::string& caption);
    /// The path chosen; empty on cancel, and where the desktop offers no file box (`zenity` is not
    /// installed). An empty `initialDirectory` is left out; the first of `filters` is selected.
    static std::string showOpenFileBox(const std::string& title,
                                       const std::string& initialDirectory,
                                       const std::list<FileFilter>& filters);
    /// The same for a file to write; asks before an existing one is taken. A path without any "." gets what
    /// stands behind the last "*" of the first filter's pattern.
    static std::string showSaveFileBox(const std::string& title,
                                       const std::string& initialDirectory,
                                       const std::list<FileFilter>& filters);

private:
    friend class ModuleReset;
    friend class GLWindowTest;

    static constexpr std::size_t keyNumbers = 256;
    static constexpr std::size_t scancodes = 512; ///< SDL's.
    static constexpr std::size_t gammaEntries = 256;
    /// At every creation, before the real one.
    static constexpr const char* defaultTitle = "Untitled window";
    static constexpr const char* windowClassName = "TolvarsWindowClass";

    /// One of the screens, in the coordinates that span all of them: the second may start at 1280 or at
    /// -1920.
    struct Display {
        std::int32_t x = 0;
        std::int32_t y = 0;
        std::int32_t width = 0; ///< Pixels.
        std::int32_t height = 0;
    };

    struct State {
        bool open = false;
        bool closing = false;               ///< `close` is at work.
        SDL_Window* windowHandle = nullptr; ///< Null without a window and in a headless one.
        int connection = -1;                ///< Of the X server's socket; -1: there is none.
        void* renderingContext = nullptr;   ///< SDL's handle; current for the whole life of the window.
        SDL_Window* stageWindow = nullptr;  ///< Unseen; has the context while the window is lent, else null.
        void (*endLending)() = nullptr;     ///< Null while the window is not lent.
        GLWindowEventListener* eventListener = nullptr; ///< Not owned.
        std::string title;
        bool fullscreen = false;
        bool resizeable = false;
        bool focused = false;         ///< Headless: as the events told.
        bool minimised = false;       ///< Headless: as the events told.
        std::int32_t clientWidth = 0; ///< Pixels, as the listener last heard.
        std::int32_t clientHeight = 0;
        std::array<std::int32_t, 2> headlessCorner{}; ///< Headless: screen position of the client area.
        std::vector<Display> headlessDisplays;        ///< Headless: empty is one display, the client area.
        std::int32_t restoredWidth = 0;               ///< Client pixels when neither minimised nor maximised.
        std::int32_t restoredHeight = 0;
        bool repaintRequested = false;
        bool focusSeen = false;     ///< The window had the focus since it was created.
        bool focusLossTold = false; ///< The listener knows that the focus is gone.
        std::uint32_t antiAliasingMode = 1;
        bool swapControl = false; ///< The platform lets us choose when to present.
        bool vsyncWanted = true;  ///< Kept across re-creations.
        Cursor cursorType = Cursor::arrow;
        SDL_Cursor* arrowCursor = nullptr;
        SDL_Cursor* crossCursor = nullptr;
        std::uint32_t mouseX = 0; ///< Client pixels, at the last mouse event.
        std::uint32_t mouseY = 0;
        std::uint32_t mouseButtons = 0; ///< Bits of the buttons that events say are down.
        std::uint32_t lastKeyPressed = 0;
        bool pressRepeats = false;
        std::array<std::uint8_t, scancodes> heldKey{}; ///< What each place on the keyboard gave when pressed.
        std::array<bool, scancodes> heldForText{};     ///< Its press was delivered for what it typed.
        std::array<std::uint8_t, keyNumbers> keysDown{}; ///< Places now held, by key number.
        std::array<bool, keyNumbers> keyToggled{};
        std::array<bool, keyNumbers> keyPressedOnce{}; ///< `keyCharacter` is known.
        std::array<std::uint8_t, keyNumbers>
            keyCharacter{}; ///< What each key typed at its last press, Latin-1.
    };
    static State state;

    static bool startVideo();
    [[noreturn]] static void fail(const char* text, const char* caption);
    static bool onScreen();
    static bool offscreen();
    static void setPixelFormat(std::uint32_t samples, bool accumulation);
    static SDL_Window* createPlatformWindow(std::int32_t width, std::int32_t height, std::uint32_t samples);
    static void openForEvents();
    static void showForTheFirstTime();
    static bool openWithSamples(std::uint32_t samples, std::int32_t width, std::int32_t height);
    static void reopen(std::uint32_t samples, std::int32_t width, std::int32_t height);
    static void setIcon();
    static void keepConnection(SDL_Window* window);
    static void mapWindow();
    static bool placeKnown();
    static void pumpUntilPlaced();
    static void windowDestroyed();
    static void releasePlatformWindow();
    static bool enableWindowAA(std::uint32_t samples);
    static void disableWindowAA();
    static bool recreate(std::uint32_t samples);

    static std::array<std::int32_t, 2> clientCorner();
    static std::vector<Display> displays();
    static Display displayOfWindow();
    static std::array<std::int32_t, 2> frameSize();
    static void resizePlatformWindow(std::int32_t width, std::int32_t height);
    static void clientAreaResized(std::int32_t width, std::int32_t height);
    static void resetViewport();
    static void showCursor(Cursor cursor);
    static void moveMouseTo(std::int32_t screenX, std::int32_t screenY);

    static void windowProcedure(const SDL_Event& event);
    static void keyPressed(const SDL_Event& event);
    static void deliverPress(std::uint32_t number);
    static void keyReleased(const SDL_Event& event);
    static void releaseHeldKey(std::size_t scancode);
    static void mouseEvent(const SDL_Event& event);
    static void windowEvent(const SDL_Event& event);
    static void paint();
    static void watchFocus();

    static std::array<std::uint16_t, gammaEntries> gammaRamp(float gamma);
    static void waitForFocus();
};

} // namespace tarnwick
