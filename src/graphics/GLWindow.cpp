#include "graphics/GLWindow.h"

#include "core/LocationStack.h"
#include "graphics/GLWindowEventListener.h"
#include "graphics/KeyMap.h"

#include <SDL.h>

namespace tarnwick {

namespace {

constexpr std::uint32_t keyNumbers = 256;
constexpr std::uint32_t capsLockKey = 0x14;
constexpr std::uint32_t numLockKey = 0x90;
constexpr std::uint32_t scrollLockKey = 0x91;
constexpr std::uint32_t altKey = 0x12;
constexpr std::uint32_t f10Key = 0x79;

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

/// Where an absolute move to `target` ends on a screen of `size` pixels: the move is told in 65535ths of the
/// screen, cut to whole numbers, and comes out one pixel short of the middle. `getClientCenterX` counts on
/// it.
std::int32_t absoluteMove(std::int32_t target, std::int32_t size) {
    TARNWICK_LOCATION("GLWindow::absoluteMove");
    const auto scaled =
        static_cast<std::int64_t>(static_cast<float>(target) * (65535.0f / static_cast<float>(size)));
    return static_cast<std::int32_t>(scaled * size / 65536);
}

} // namespace

GLWindow::State GLWindow::state;

void GLWindow::createHeadless(std::int32_t clientWidth, std::int32_t clientHeight) {
    TARNWICK_LOCATION("GLWindow::createHeadless");
    if (state.open) {
        return;
    }
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1"); // the crash report has them
    SDL_InitSubSystem(SDL_INIT_EVENTS);
    state.open = true;
    state.clientWidth = clientWidth;
    state.clientHeight = clientHeight;
    state.lastKeyPressed = 0;
}

void GLWindow::close() {
    TARNWICK_LOCATION("GLWindow::close");
    if (!state.open) {
        return;
    }
    if (state.eventListener != nullptr) {
        state.eventListener->windowClosed();
    }
    state.open = false;
    state.clientWidth = 0;
    state.clientHeight = 0;
    state.eventListener = nullptr;
    SDL_QuitSubSystem(SDL_INIT_EVENTS);
}

void GLWindow::run() {
    TARNWICK_LOCATION("GLWindow::run");
    SDL_Event event;
    while (state.open && SDL_PollEvent(&event) == 1) {
        handleEvent(event);
    }
}

std::int32_t GLWindow::getClientCenterX() {
    TARNWICK_LOCATION("GLWindow::getClientCenterX");
    return state.clientWidth / 2 - 1;
}

std::int32_t GLWindow::getClientCenterY() {
    TARNWICK_LOCATION("GLWindow::getClientCenterY");
    return state.clientHeight / 2 - 1;
}

std::int32_t GLWindow::getMouseScreenX() {
    TARNWICK_LOCATION("GLWindow::getMouseScreenX");
    return static_cast<std::int32_t>(state.mouseX);
}

std::int32_t GLWindow::getMouseScreenY() {
    TARNWICK_LOCATION("GLWindow::getMouseScreenY");
    return static_cast<std::int32_t>(state.mouseY);
}

bool GLWindow::mouseInClientArea() {
    TARNWICK_LOCATION("GLWindow::mouseInClientArea");
    const std::int32_t x = getMouseScreenX();
    const std::int32_t y = getMouseScreenY();
    return state.open && 0 < x && 0 < y && x <= state.clientWidth + 1 && y <= state.clientHeight + 1;
}

void GLWindow::centerMouse() {
    TARNWICK_LOCATION("GLWindow::centerMouse");
    if (!state.open) {
        return;
    }
    state.mouseX = static_cast<std::uint32_t>(absoluteMove(state.clientWidth / 2, state.clientWidth));
    state.mouseY = static_cast<std::uint32_t>(absoluteMove(state.clientHeight / 2, state.clientHeight));
}

bool GLWindow::keyboardKeyPressed(std::uint32_t key) {
    TARNWICK_LOCATION("GLWindow::keyboardKeyPressed");
    return key < keyNumbers && state.keyDown[key];
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
    constexpr std::uint32_t shiftKey = 0x10;
    const std::uint8_t control = KeyMap::controlCharacter(key, false);
    return control != 0 ? control : KeyMap::usCharacter(key, state.keyDown[shiftKey]);
}

std::uint32_t GLWindow::getLastKeyPressed() {
    TARNWICK_LOCATION("GLWindow::getLastKeyPressed");
    const std::uint32_t key = state.lastKeyPressed;
    state.lastKeyPressed = 0;
    return key;
}

void GLWindow::keyPressed(const SDL_Event& event) {
    TARNWICK_LOCATION("GLWindow::keyPressed");
    const SDL_Keysym& keysym = event.key.keysym;
    const std::uint32_t number = KeyMap::keyNumber(keysym);
    if (number == 0) {
        return;
    }
    if (event.key.repeat == 0) {
        state.keyToggled[number] = !state.keyToggled[number];
    }
    state.keyDown[number] = true;
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
    const std::uint32_t number = KeyMap::keyNumber(event.key.keysym);
    if (number == 0) {
        return;
    }
    state.keyDown[number] = false;
    if (!isSystemKey(number, event.key.keysym) && state.eventListener != nullptr) {
        state.eventListener->keyboardReleased(number);
    }
}

void GLWindow::mouseEvent(const SDL_Event& event) {
    TARNWICK_LOCATION("GLWindow::mouseEvent");
    const bool motion = event.type == SDL_MOUSEMOTION;
    const std::uint32_t button = motion ? 0 : buttonBit(event.button.button);
    if (!motion && button == 0) {
        return;
    }
    // 16 bits unsigned, as a mouse message carries them: left of the client area is a large number.
    state.mouseX = static_cast<std::uint16_t>(motion ? event.motion.x : event.button.x);
    state.mouseY = static_cast<std::uint16_t>(motion ? event.motion.y : event.button.y);
    if (state.eventListener == nullptr) {
        return;
    }
    if (motion) {
        state.eventListener->mouseMoved(state.mouseX, state.mouseY);
    } else if (event.type == SDL_MOUSEBUTTONDOWN) {
        state.eventListener->mousePressed(state.mouseX, state.mouseY, button);
    } else {
        state.eventListener->mouseReleased(state.mouseX, state.mouseY, button);
    }
}

void GLWindow::windowEvent(const SDL_Event& event) {
    TARNWICK_LOCATION("GLWindow::windowEvent");
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

void GLWindow::handleEvent(const SDL_Event& event) {
    TARNWICK_LOCATION("GLWindow::handleEvent");
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

} // namespace tarnwick
