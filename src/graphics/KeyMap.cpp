#include "graphics/KeyMap.h"

#include "core/LocationStack.h"

#include <SDL_keyboard.h>

#include <algorithm>

namespace tarnwick {

namespace {

struct KeyPair {
    SDL_Scancode scancode;
    std::uint32_t keyNumber;
};

/// Keys that are one key number in every state of the keyboard.
constexpr KeyPair plainKeys[] = {
    {SDL_SCANCODE_0, 0x30},
    {SDL_SCANCODE_RETURN, key::enter},
    {SDL_SCANCODE_RETURN2, key::enter},
    {SDL_SCANCODE_KP_ENTER, key::enter},
    {SDL_SCANCODE_BACKSPACE, key::backspace},
    {SDL_SCANCODE_TAB, key::tab},
    {SDL_SCANCODE_ESCAPE, key::escape},
    {SDL_SCANCODE_SPACE, key::space},
    {SDL_SCANCODE_INSERT, key::insert},
    {SDL_SCANCODE_DELETE, key::deleteKey},
    {SDL_SCANCODE_HOME, key::home},
    {SDL_SCANCODE_END, key::end},
    {SDL_SCANCODE_PAGEUP, key::pageUp},
    {SDL_SCANCODE_PAGEDOWN, key::pageDown},
    {SDL_SCANCODE_LEFT, key::left},
    {SDL_SCANCODE_UP, key::up},
    {SDL_SCANCODE_RIGHT, key::right},
    {SDL_SCANCODE_DOWN, key::down},
    {SDL_SCANCODE_LSHIFT, 0x10},
    {SDL_SCANCODE_RSHIFT, 0x10},
    {SDL_SCANCODE_LCTRL, 0x11},
    {SDL_SCANCODE_RCTRL, 0x11},
    {SDL_SCANCODE_LALT, 0x12},
    {SDL_SCANCODE_RALT, 0x12},
    {SDL_SCANCODE_LGUI, 0x5B},
    {SDL_SCANCODE_RGUI, 0x5C},
    {SDL_SCANCODE_APPLICATION, 0x5D},
    {SDL_SCANCODE_MENU, 0x5D},
    {SDL_SCANCODE_CAPSLOCK, 0x14},
    {SDL_SCANCODE_NUMLOCKCLEAR, 0x90},
    {SDL_SCANCODE_SCROLLLOCK, 0x91},
    {SDL_SCANCODE_CANCEL, 0x03},
    {SDL_SCANCODE_PRINTSCREEN, 0x2C},
    {SDL_SCANCODE_SYSREQ, 0x2C},
    {SDL_SCANCODE_EQUALS, 0xBB},
    {SDL_SCANCODE_MINUS, 0xBD},
    {SDL_SCANCODE_COMMA, 0xBC},
    {SDL_SCANCODE_PERIOD, 0xBE},
    {SDL_SCANCODE_SEMICOLON, 0xBA},
    {SDL_SCANCODE_SLASH, 0xBF},
    {SDL_SCANCODE_APOSTROPHE, 0xDE},
    {SDL_SCANCODE_LEFTBRACKET, 0xDB},
    {SDL_SCANCODE_RIGHTBRACKET, 0xDD},
    {SDL_SCANCODE_BACKSLASH, 0xDC},
    {SDL_SCANCODE_NONUSHASH, 0xDC},
    {SDL_SCANCODE_NONUSBACKSLASH, 0xE2},
    {SDL_SCANCODE_GRAVE, key::console},
    {SDL_SCANCODE_CLEAR, 0x0C},
    {SDL_SCANCODE_SELECT, 0x29},
    {SDL_SCANCODE_EXECUTE, 0x2B},
    {SDL_SCANCODE_HELP, 0x2F},
    {SDL_SCANCODE_SLEEP, 0x5F},
    {SDL_SCANCODE_MUTE, 0xAD},
    {SDL_SCANCODE_AUDIOMUTE, 0xAD},
    {SDL_SCANCODE_VOLUMEDOWN, 0xAE},
    {SDL_SCANCODE_VOLUMEUP, 0xAF},
    {SDL_SCANCODE_AUDIONEXT, 0xB0},
    {SDL_SCANCODE_AUDIOPREV, 0xB1},
    {SDL_SCANCODE_AUDIOSTOP, 0xB2},
    {SDL_SCANCODE_AUDIOPLAY, 0xB3},
    {SDL_SCANCODE_KP_DIVIDE, 0x6F},
    {SDL_SCANCODE_KP_MULTIPLY, 0x6A},
    {SDL_SCANCODE_KP_MINUS, 0x6D},
    {SDL_SCANCODE_KP_PLUS, 0x6B},
    {SDL_SCANCODE_KP_COMMA, 0xC2},
    {SDL_SCANCODE_KP_EQUALS, 0xBB},
};

/// The number pad's 1 to 9 and 0 without NumLock, in the order of their scancodes.
constexpr std::uint32_t padWithoutNumLock[] = {key::end,    key::down,  key::pageDown, key::left,
                                               0x0C,        key::right, key::home,     key::up,
                                               key::pageUp, key::insert};

/// Keys of the number pad that depend on NumLock and Shift; 0 for any other key.
std::uint32_t padKeyNumber(SDL_Scancode scancode, bool typesDigits, bool numLock) {
    TARNWICK_LOCATION("KeyMap::padKeyNumber");
    if (scancode == SDL_SCANCODE_KP_PERIOD) {
        return numLock ? 0x6E : key::deleteKey;
    }
    if (scancode < SDL_SCANCODE_KP_1 || scancode > SDL_SCANCODE_KP_0) {
        return 0;
    }
    const auto index = static_cast<std::uint32_t>(scancode - SDL_SCANCODE_KP_1);
    if (!typesDigits) {
        return padWithoutNumLock[index];
    }
    return scancode == SDL_SCANCODE_KP_0 ? 0x60 : 0x61 + index;
}

std::uint32_t runOf(SDL_Scancode scancode, SDL_Scancode first, SDL_Scancode last, std::uint32_t firstNumber) {
    TARNWICK_LOCATION("KeyMap::runOf");
    if (scancode < first || scancode > last) {
        return 0;
    }
    return firstNumber + static_cast<std::uint32_t>(scancode - first);
}

} // namespace

std::uint32_t KeyMap::keyNumber(const SDL_Keysym& keysym) {
    TARNWICK_LOCATION("KeyMap::keyNumber");
    if (keysym.sym >= SDLK_a && keysym.sym <= SDLK_z) {
        return 'A' + static_cast<std::uint32_t>(keysym.sym - SDLK_a);
    }
    const SDL_Scancode scancode = keysym.scancode;
    const bool control = (keysym.mod & KMOD_CTRL) != 0;
    const bool numLock = (keysym.mod & KMOD_NUM) != 0;
    if (scancode == SDL_SCANCODE_PAUSE) {
        return control ? 0x03 : key::pause;
    }
    const bool typesDigits = numLock && (keysym.mod & KMOD_SHIFT) == 0;
    const std::uint32_t candidates[] = {
        padKeyNumber(scancode, typesDigits, numLock),
        runOf(scancode, SDL_SCANCODE_A, SDL_SCANCODE_Z, 'A'),
        runOf(scancode, SDL_SCANCODE_1, SDL_SCANCODE_9, '1'),
        runOf(scancode, SDL_SCANCODE_F1, SDL_SCANCODE_F12, 0x70),
        runOf(scancode, SDL_SCANCODE_F13, SDL_SCANCODE_F24, 0x7C),
    };
    for (const std::uint32_t candidate : candidates) {
        if (candidate != 0) {
            return candidate;
        }
    }
    const auto* const found = std::find_if(std::begin(plainKeys), std::end(plainKeys),
                                           [&](const KeyPair& pair) { return pair.scancode == scancode; });
    return found == std::end(plainKeys) ? 0 : found->keyNumber;
}

std::uint32_t KeyMap::numberOf(const std::string& name) {
    TARNWICK_LOCATION("KeyMap::numberOf");
    SDL_Keysym keysym{};
    keysym.sym = SDL_GetKeyFromName(name.c_str());
    keysym.mod = KMOD_NUM;
    keysym.scancode =
        SDL_GetScancodeFromName(name.c_str()); // a place: what the system goes by but for letters
    if (keysym.scancode == SDL_SCANCODE_UNKNOWN) {
        keysym.scancode = SDL_GetScancodeFromKey(keysym.sym);
    }
    return keyNumber(keysym);
}

std::uint8_t KeyMap::controlCharacter(std::uint32_t number, bool controlHeld) {
    TARNWICK_LOCATION("KeyMap::controlCharacter");
    switch (number) {
    case key::backspace:
    case key::tab:
    case key::enter:
    case key::escape:
        return static_cast<std::uint8_t>(number); // each types the control character of its own number
    default:
        break;
    }
    if (controlHeld && number >= 'A' && number <= 'Z') {
        return static_cast<std::uint8_t>(number - 'A' + 1);
    }
    return 0;
}

std::uint8_t KeyMap::usCharacter(std::uint32_t number, bool shiftHeld) {
    TARNWICK_LOCATION("KeyMap::usCharacter");
    constexpr char shiftedDigits[] = ")!@#$%^&*(";
    if (number >= 'A' && number <= 'Z') {
        return static_cast<std::uint8_t>(shiftHeld ? number : number - 'A' + 'a');
    }
    if (number >= '0' && number <= '9') {
        return static_cast<std::uint8_t>(shiftHeld ? shiftedDigits[number - '0'] : static_cast<char>(number));
    }
    return number == ' ' ? ' ' : 0;
}

} // namespace tarnwick
