// `GLWindow`: the message pump, the keyboard, the mouse's events and the focus.

#include "core/Comfort.h"
#include "core/CrashReport.h"
#include "core/LocationStack.h"
#include "graphics/GLWindow.h"
#include "graphics/GLWindowEventListener.h"
#include "graphics/GamePad.h"
#include "graphics/KeyBindings.h"
#include "graphics/KeyMap.h"
#include "graphics/WindowFeed.h"

#include <SDL.h>

#include <string>
#include <vector>

namespace tarnwick {

namespace {

constexpr int mostWaitingEvents = 65535; ///< SDL's own limit.
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

/// What a key press types; it stands directly behind the press in the queue. Empty if it types nothing.
std::string textOfPress() {
    TARNWICK_LOCATION("GLWindow::textOfPress");
    SDL_Event next;
    if (SDL_PeepEvents(&next, 1, SDL_PEEKEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT) == 1 &&
        next.type == SDL_TEXTINPUT) {
        return next.text.text;
    }
    return {};
}

/// Whether a press types what its key types without Alt: the key's own character, or the one with Shift, as
/// far as that is known.
bool isPlainText(const std::string& text, std::uint32_t number, const SDL_Keysym& keysym) {
    TARNWICK_LOCATION("GLWindow::isPlainText");
    const auto character = static_cast<SDL_Keycode>(latin1Of(text.c_str()));
    const bool shiftHeld = (keysym.mod & KMOD_SHIFT) != 0;
    const bool capital = number >= 'A' && number <= 'Z' && character == static_cast<SDL_Keycode>(number);
    return character == keysym.sym || capital ||
           (shiftHeld && character == static_cast<SDL_Keycode>(KeyMap::usCharacter(number, true)));
}

/// Presses with this key down are for the text behind it, where the layout has one: \ and @ on most keyboards
/// of Europe.
bool altGrAlone(const SDL_Keysym& keysym) {
    TARNWICK_LOCATION("GLWindow::altGrAlone");
    return (keysym.mod & (KMOD_ALT | KMOD_CTRL)) == KMOD_RALT;
}

/// Forgets an accent that waits for the letter under it. What is in the queue stays there.
void forgetAccent() {
    TARNWICK_LOCATION("GLWindow::forgetAccent");
    std::vector<SDL_Event> waiting(mostWaitingEvents);
    const int count =
        SDL_PeepEvents(waiting.data(), mostWaitingEvents, SDL_GETEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT);
    SDL_StopTextInput(); // would drop the texts of the presses that wait
    SDL_StartTextInput();
    SDL_PeepEvents(waiting.data(), count, SDL_ADDEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT);
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
    CrashReport::endIfAsked();
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
        GamePad::handle(event);
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
    setCursor(mouseInClientArea() ? state.cursorType : Cursor::arrow);
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
    if (!Comfort::values().stayWithoutFocus) {
        minimize();
    }
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
    const std::string text = textOfPress();
    state.keyCharacter[number] = text.empty()
                                     ? KeyMap::controlCharacter(number, (keysym.mod & KMOD_CTRL) != 0)
                                     : latin1Of(text.c_str());
    state.keyPressedOnce[number] = true;
    if (number == key::console && text.empty()) { // on some keyboards it is an accent
        forgetAccent();
    }
    state.heldForText[keysym.scancode] =
        altGrAlone(keysym) && !text.empty() && !isPlainText(text, number, keysym);
    state.pressRepeats = event.key.repeat != 0;
    if (!isSystemKey(number, keysym) || state.heldForText[keysym.scancode]) {
        deliverPress(number);
    } else if (number == key::enter && KeyBindings::exists(GameKey::fullscreen)) {
        deliverPress(key::altEnter);
    }
}

void GLWindow::deliverPress(std::uint32_t number) {
    TARNWICK_LOCATION("GLWindow::deliverPress");
    state.lastKeyPressed = number;
    if (state.eventListener != nullptr) {
        state.eventListener->keyboardPressed(number);
    }
}

void GLWindow::padKeyPressed(std::uint32_t key) {
    TARNWICK_LOCATION("GLWindow::padKeyPressed");
    ++state.keysDown[key % keyNumbers];
    state.pressRepeats = false;
    deliverPress(key);
}

void GLWindow::padKeyReleased(std::uint32_t key) {
    TARNWICK_LOCATION("GLWindow::padKeyReleased");
    std::uint8_t& down = state.keysDown[key % keyNumbers];
    down = down > 0 ? static_cast<std::uint8_t>(down - 1) : std::uint8_t{0}; // a new window starts with none
    if (state.eventListener != nullptr) {
        state.eventListener->keyboardReleased(key);
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
    const bool delivered = !isSystemKey(number, keysym) || state.heldForText[keysym.scancode];
    if (delivered && state.eventListener != nullptr) {
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
