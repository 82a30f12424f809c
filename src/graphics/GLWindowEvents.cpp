// `GLWindow`: the message pump, the keyboard, the mouse's events and the focus.

#include "core/LocationStack.h"
#include "graphics/GLWindow.h"
#include "graphics/GLWindowEventListener.h"
#include "graphics/KeyMap.h"
#include "graphics/WindowFeed.h"

#include <SDL.h>

namespace tarnwick {

namespace {

constexpr std::uint32_t shiftKey = 0x10;
constexpr std::uint32_t altKey = 0x12;
constexpr std::uint32_t capsLockKey = 0x14;
constexpr std::uint32_t f10Key = 0x79;
constexpr std::uint32_t numLockKey = 0x90;
constexpr std::uint32_t scrollLockKey = 0x91;
/// And then right Shift, left and right Ctrl, left and right Alt.
constexpr std::uint32_t leftShiftKey = 0xA0;
constexpr std::uint32_t rightAltKey = 0xA5;
constexpr SDL_Scancode sideScancodes[] = {SDL_SCANCODE_LSHIFT, SDL_SCANCODE_RSHIFT, SDL_SCANCODE_LCTRL,
                                          SDL_SCANCODE_RCTRL,  SDL_SCANCODE_LALT,   SDL_SCANCODE_RALT};

/// The one Latin-1 character of a UTF-8 text; 0 if the text is not exactly one code point below 256.
std::uint8_t latin1Of(const char* text) {
    TARNWICK_LOCATION("GLWindow::latin1Of");
    const auto first = static_cast<std::uint8_t>(text[0]);
    if (first < 0x80) {
        return text[0] != 0 && text[1] == 0 ? first : std::uint8_t{0};
    }
    const auto second = static_cast<std::uint8_t>(text[1]);
    const bool twoBytes = (first == 0xC2 || first == 0xC3) && (second & 0xC0) == 0x80 && text[2] == 0;
    return twoBytes ? static_cast<std::uint8_t>(((first & 0x03) << 6) | (second & 0x3F)) : std::uint8_t{0};
}

/// The text of a key press stands directly behind it in the queue.
std::uint8_t characterOfPress(std::uint32_t number, const SDL_Keysym& keysym) {
    TARNWICK_LOCATION("GLWindow::characterOfPress");
    SDL_Event next;
    if (SDL_PeepEvents(&next, 1, SDL_PEEKEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT) == 1 &&
        next.type == SDL_TEXTINPUT) {
        return latin1Of(next.text.text);
    }
    return KeyMap::controlCharacter(number, (keysym.mod & KMOD_CTRL) != 0);
}

/// The platform keeps these for itself: they are no presses for a listener.
bool isSystemKey(std::uint32_t number, const SDL_Keysym& keysym) {
    TARNWICK_LOCATION("GLWindow::isSystemKey");
    const bool altAlone = (keysym.mod & KMOD_ALT) != 0 && (keysym.mod & KMOD_CTRL) == 0;
    return altAlone || number == altKey || number == f10Key;
}

/// The bit value of an SDL mouse button; 0 for a button that is not delivered.
std::uint32_t buttonBit(std::uint8_t button) {
    TARNWICK_LOCATION("GLWindow::buttonBit");
    switch (button) {
    case SDL_BUTTON_LEFT:
        return 1;
    case SDL_BUTTON_RIGHT:
        return 2;
    case SDL_BUTTON_MIDDLE:
        return 4;
    default:
        return 0;
    }
}

} // namespace

void GLWindow::run() {
    TARNWICK_LOCATION("GLWindow::run");
    WindowFeed::run();
    SDL_Event event;
    while (state.open && SDL_PollEvent(&event) == 1) {
        windowProcedure(event);
    }
    if (state.open && state.repaintRequested) {
        paint();
    }
    if (state.open) {
        watchFocus();
    }
}

void GLWindow::windowProcedure(const SDL_Event& event) {
    TARNWICK_LOCATION("GLWindow::windowProcedure");
    switch (event.type) {
    case SDL_KEYDOWN:
        keyPressed(event);
        break;
    case SDL_KEYUP:
        keyReleased(event);
        break;
    case SDL_MOUSEMOTION:
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
        mouseEvent(event);
        break;
    case SDL_WINDOWEVENT:
        windowEvent(event);
        break;
    default:
        break;
    }
}

void GLWindow::windowEvent(const SDL_Event& event) {
    TARNWICK_LOCATION("GLWindow::windowEvent");
    const Uint32 windowId = event.window.windowID;
    if (state.windowHandle != nullptr && windowId != 0 && windowId != SDL_GetWindowID(state.windowHandle)) {
        return; // of a window that was replaced
    }
    switch (event.window.event) {
    case SDL_WINDOWEVENT_FOCUS_GAINED:
        state.focused = true;
        break;
    case SDL_WINDOWEVENT_FOCUS_LOST:
        state.focused = false;
        break;
    case SDL_WINDOWEVENT_MINIMIZED:
        state.minimised = true;
        break;
    case SDL_WINDOWEVENT_RESTORED:
        state.minimised = false;
        break;
    case SDL_WINDOWEVENT_SIZE_CHANGED:
        if (state.windowHandle != nullptr) { // the event may be older than the size
            clientAreaResized(getClientWidth(), getClientHeight());
        } else {
            clientAreaResized(event.window.data1, event.window.data2);
        }
        break;
    case SDL_WINDOWEVENT_EXPOSED:
        state.repaintRequested = true;
        break;
    case SDL_WINDOWEVENT_CLOSE:
        if (state.eventListener != nullptr) {
            state.eventListener->windowClosing();
        }
        close(); // a close request always ends in destruction
        break;
    default:
        break;
    }
}

/// Kept: one painting with the mouse outside makes the arrow the window's cursor for good, until somebody
/// sets another; the loops that want none set it anew all the time.
void GLWindow::paint() {
    TARNWICK_LOCATION("GLWindow::paint");
    state.repaintRequested = false;
    setCursor(mouseInClientArea() ? state.cursorType : 1);
    if (state.eventListener != nullptr) {
        state.eventListener->windowRedrawing();
    }
}

/// A window has no focus before the desktop gives it one, and not every desktop minimises when told to: only
/// the step from focus to none counts.
void GLWindow::watchFocus() {
    TARNWICK_LOCATION("GLWindow::watchFocus");
    if (hasFocus()) {
        state.focusSeen = true;
        state.focusLossTold = false;
        return;
    }
    if (!state.focusSeen || state.focusLossTold || isMinimised()) {
        return;
    }
    minimize();
    state.focusLossTold = true;
    if (state.eventListener != nullptr) {
        state.eventListener->windowFocusLost();
    }
}

void GLWindow::keyPressed(const SDL_Event& event) {
    TARNWICK_LOCATION("GLWindow::keyPressed");
    const SDL_Keysym& keysym = event.key.keysym;
    const std::uint32_t number = KeyMap::keyNumber(keysym);
    if (number == 0 || keysym.scancode >= scancodes) {
        return;
    }
    if (event.key.repeat == 0) {
        state.keyToggled[number] = !state.keyToggled[number];
    }
    releaseHeldKey(keysym.scancode);
    state.heldKey[keysym.scancode] = static_cast<std::uint8_t>(number);
    ++state.keysDown[number];
    state.keyCharacter[number] = characterOfPress(number, keysym);
    state.keyPressedOnce[number] = true;
    if (isSystemKey(number, keysym)) {
        return;
    }
    state.lastKeyPressed = number;
    if (state.eventListener != nullptr) {
        state.eventListener->keyboardPressed(number);
    }
}

void GLWindow::keyReleased(const SDL_Event& event) {
    TARNWICK_LOCATION("GLWindow::keyReleased");
    const SDL_Keysym& keysym = event.key.keysym;
    const std::uint32_t number = KeyMap::keyNumber(keysym);
    if (number == 0 || keysym.scancode >= scancodes) {
        return;
    }
    releaseHeldKey(keysym.scancode);
    if (!isSystemKey(number, keysym) && state.eventListener != nullptr) {
        state.eventListener->keyboardReleased(number);
    }
}

/// A place on the keyboard lets go of the key number that it gave when pressed: with Shift or NumLock changed
/// meanwhile it would give another one now.
void GLWindow::releaseHeldKey(std::size_t scancode) {
    TARNWICK_LOCATION("GLWindow::releaseHeldKey");
    const std::uint8_t held = state.heldKey[scancode];
    if (held != 0) {
        --state.keysDown[held];
        state.heldKey[scancode] = 0;
    }
}

void GLWindow::mouseEvent(const SDL_Event& event) {
    TARNWICK_LOCATION("GLWindow::mouseEvent");
    const bool motion = event.type == SDL_MOUSEMOTION;
    const bool press = event.type == SDL_MOUSEBUTTONDOWN;
    const std::uint32_t button = motion ? 0 : buttonBit(event.button.button);
    if (!motion && button == 0) {
        return;
    }
    if (!motion) {
        state.mouseButtons = press ? state.mouseButtons | button : state.mouseButtons & ~button;
    }
    if (press && event.button.clicks % 2 == 0 && event.button.clicks != 0) {
        return; // the second press of a double click is another message, and not delivered
    }
    // 16 bits unsigned, as a mouse message carries them: left of the client area is a large number.
    state.mouseX = static_cast<std::uint16_t>(motion ? event.motion.x : event.button.x);
    state.mouseY = static_cast<std::uint16_t>(motion ? event.motion.y : event.button.y);
    if (state.eventListener == nullptr) {
        return;
    }
    if (motion) {
        state.eventListener->mouseMoved(state.mouseX, state.mouseY);
    } else if (press) {
        state.eventListener->mousePressed(state.mouseX, state.mouseY, button);
    } else {
        state.eventListener->mouseReleased(state.mouseX, state.mouseY, button);
    }
}

bool GLWindow::keyboardKeyPressed(std::uint32_t key) {
    TARNWICK_LOCATION("GLWindow::keyboardKeyPressed");
    if (key == 1 || key == 2 || key == 4) {
        return mouseButtonPressed(key);
    }
    if (key >= leftShiftKey && key <= rightAltKey) {
        return state.heldKey[sideScancodes[key - leftShiftKey]] != 0;
    }
    return key < keyNumbers && state.keysDown[key] > 0;
}

bool GLWindow::keyboardKeyToggled(std::uint32_t key) {
    TARNWICK_LOCATION("GLWindow::keyboardKeyToggled");
    switch (key) {
    case capsLockKey:
        return (SDL_GetModState() & KMOD_CAPS) != 0;
    case numLockKey:
        return (SDL_GetModState() & KMOD_NUM) != 0;
    case scrollLockKey:
        return (SDL_GetModState() & KMOD_SCROLL) != 0;
    default:
        return key < keyNumbers && state.keyToggled[key];
    }
}

std::uint8_t GLWindow::keyboardKeyToAscii(std::uint32_t key) {
    TARNWICK_LOCATION("GLWindow::keyboardKeyToAscii");
    if (key >= keyNumbers) {
        return 0;
    }
    if (state.keyPressedOnce[key]) {
        return state.keyCharacter[key];
    }
    const std::uint8_t control = KeyMap::controlCharacter(key, false);
    return control != 0 ? control : KeyMap::usCharacter(key, state.keysDown[shiftKey] > 0);
}

std::uint32_t GLWindow::getLastKeyPressed() {
    TARNWICK_LOCATION("GLWindow::getLastKeyPressed");
    const std::uint32_t key = state.lastKeyPressed;
    state.lastKeyPressed = 0;
    return key;
}

} // namespace tarnwick
