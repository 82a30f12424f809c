#pragma once

#include <SDL_events.h>

namespace tarnwick {

/// Puts a key press into the event queue, as a keyboard does; `text` is what it types, or null.
inline void pressKey(SDL_Scancode scancode, SDL_Keycode keycode, const char* text = nullptr, Uint16 mod = 0) {
    SDL_Event event{};
    event.type = SDL_KEYDOWN;
    event.key.state = SDL_PRESSED;
    event.key.keysym.scancode = scancode;
    event.key.keysym.sym = keycode;
    event.key.keysym.mod = mod;
    SDL_PushEvent(&event);
    if (text != nullptr) {
        SDL_Event typed{};
        typed.type = SDL_TEXTINPUT;
        SDL_strlcpy(typed.text.text, text, sizeof typed.text.text);
        SDL_PushEvent(&typed);
    }
}

inline void releaseKey(SDL_Scancode scancode, SDL_Keycode keycode) {
    SDL_Event event{};
    event.type = SDL_KEYUP;
    event.key.state = SDL_RELEASED;
    event.key.keysym.scancode = scancode;
    event.key.keysym.sym = keycode;
    SDL_PushEvent(&event);
}

/// A window event such as `SDL_WINDOWEVENT_FOCUS_GAINED`.
inline void sendWindowEvent(SDL_WindowEventID id) {
    SDL_Event event{};
    event.type = SDL_WINDOWEVENT;
    event.window.event = static_cast<Uint8>(id);
    SDL_PushEvent(&event);
}

inline void moveMouse(Sint32 x, Sint32 y) {
    SDL_Event event{};
    event.type = SDL_MOUSEMOTION;
    event.motion.x = x;
    event.motion.y = y;
    SDL_PushEvent(&event);
}

} // namespace tarnwick
