#include "graphics/KeyMap.h"

#include "support/ModuleTest.h"

#include <SDL_keyboard.h>

#include <map>
#include <string>

namespace tarnwick {

namespace {

SDL_Keysym keysym(SDL_Scancode scancode, SDL_Keycode keycode, Uint16 mod = 0) {
    SDL_Keysym result{};
    result.scancode = scancode;
    result.sym = keycode;
    result.mod = mod;
    return result;
}

} // namespace

class KeyMapTest : public ModuleTest {};

TEST_F(KeyMapTest, ALetterIsItsCapitalWhereverItsKeyLies) {
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_Q, SDLK_a)), 0x41u); // AZERTY
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_Z, SDLK_z)), 0x5Au);
}

TEST_F(KeyMapTest, AKeyThatTypesNoLatinLetterGoesByItsPlace) {
    constexpr SDL_Keycode cyrillicEf = 0x444;
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_A, cyrillicEf)), 0x41u);
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_1, SDLK_AMPERSAND)), 0x31u); // AZERTY
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_0, SDLK_0)), 0x30u);
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_GRAVE, SDLK_CARET)), key::console); // QWERTZ
}

TEST_F(KeyMapTest, TheNumberPadFollowsNumLockAndShift) {
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_KP_1, SDLK_KP_1, KMOD_NUM)), 0x61u);
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_KP_0, SDLK_KP_0, KMOD_NUM)), 0x60u);
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_KP_1, SDLK_KP_1)), key::end);
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_KP_1, SDLK_KP_1, KMOD_NUM | KMOD_LSHIFT)), key::end);
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_KP_PERIOD, SDLK_KP_PERIOD)), key::deleteKey);
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_KP_PERIOD, SDLK_KP_PERIOD, KMOD_NUM)), 0x6Eu);
}

TEST_F(KeyMapTest, FunctionKeysRunOnWithoutAGap) {
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_F1, SDLK_F1)), 0x70u);
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_F12, SDLK_F12)), 0x7Bu);
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_F13, SDLK_F13)), 0x7Cu);
}

TEST_F(KeyMapTest, PauseWithCtrlIsAnotherKey) {
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_PAUSE, SDLK_PAUSE)), key::pause);
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_PAUSE, SDLK_PAUSE, KMOD_LCTRL)), 0x03u);
}

// The numbers are those that key files and levels' makers know from the platform that the game comes from.
// The fault: a key that is taken for its neighbour, or for none.
TEST_F(KeyMapTest, EveryKeyOfAKeyboardHasItsNumber) {
    const std::map<std::string, std::uint32_t> numbers{
        {"Return", 0x0D},      {"Keypad Enter", 0x0D},
        {"Backspace", 0x08},   {"Tab", 0x09},
        {"Escape", 0x1B},      {"Space", 0x20},
        {"Insert", 0x2D},      {"Delete", 0x2E},
        {"Home", 0x24},        {"End", 0x23},
        {"PageUp", 0x21},      {"PageDown", 0x22},
        {"Left", 0x25},        {"Up", 0x26},
        {"Right", 0x27},       {"Down", 0x28},
        {"Left Shift", 0x10},  {"Right Shift", 0x10},
        {"Left Ctrl", 0x11},   {"Right Ctrl", 0x11},
        {"Left Alt", 0x12},    {"Right Alt", 0x12},
        {"Left GUI", 0x5B},    {"Right GUI", 0x5C},
        {"Application", 0x5D}, {"Menu", 0x5D},
        {"CapsLock", 0x14},    {"Numlock", 0x90},
        {"ScrollLock", 0x91},  {"Pause", 0x13},
        {"PrintScreen", 0x2C}, {"SysReq", 0x2C},
        {"Cancel", 0x03},      {"=", 0xBB},
        {"-", 0xBD},           {",", 0xBC},
        {".", 0xBE},           {";", 0xBA},
        {"/", 0xBF},           {"'", 0xDE},
        {"[", 0xDB},           {"]", 0xDD},
        {"\\", 0xDC},          {"`", 0xDF},
        {"Clear", 0x0C},       {"Select", 0x29},
        {"Execute", 0x2B},     {"Help", 0x2F},
        {"Sleep", 0x5F},       {"Mute", 0xAD},
        {"AudioMute", 0xAD},   {"VolumeDown", 0xAE},
        {"VolumeUp", 0xAF},    {"AudioNext", 0xB0},
        {"AudioPrev", 0xB1},   {"AudioStop", 0xB2},
        {"AudioPlay", 0xB3},   {"Keypad /", 0x6F},
        {"Keypad *", 0x6A},    {"Keypad -", 0x6D},
        {"Keypad +", 0x6B},    {"Keypad ,", 0xC2},
        {"Keypad =", 0xBB},
    };
    for (const auto& [name, number] : numbers) {
        const SDL_Scancode scancode = SDL_GetScancodeFromName(name.c_str());
        ASSERT_NE(scancode, SDL_SCANCODE_UNKNOWN) << name;
        EXPECT_EQ(KeyMap::keyNumber(keysym(scancode, SDLK_UNKNOWN)), number) << name;
    }
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_NONUSBACKSLASH, SDLK_UNKNOWN)), 0xE2u);
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_NONUSHASH, SDLK_UNKNOWN)), 0xDCu);
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_RETURN2, SDLK_UNKNOWN)), 0x0Du);
}

// The fault: a run of keys that begins or ends one too early.
TEST_F(KeyMapTest, LettersDigitsFunctionKeysAndTheNumberPadRunOn) {
    for (int i = 0; i < 26; ++i) {
        const std::string name(1, static_cast<char>('A' + i));
        EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_GetScancodeFromName(name.c_str()), SDLK_UNKNOWN)),
                  0x41u + unsigned(i));
        EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_UNKNOWN, 'a' + i)), 0x41u + unsigned(i));
    }
    constexpr std::uint32_t withoutNumLock[] = {0x2D, 0x23, 0x28, 0x22, 0x25, 0x0C, 0x27, 0x24, 0x26, 0x21};
    for (unsigned digit = 0; digit <= 9; ++digit) {
        const std::string name = std::to_string(digit);
        const SDL_Scancode pad = SDL_GetScancodeFromName(("Keypad " + name).c_str());
        EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_GetScancodeFromName(name.c_str()), SDLK_UNKNOWN)),
                  0x30u + digit);
        EXPECT_EQ(KeyMap::keyNumber(keysym(pad, SDLK_UNKNOWN, KMOD_NUM)), 0x60u + digit);
        EXPECT_EQ(KeyMap::keyNumber(keysym(pad, SDLK_UNKNOWN)), withoutNumLock[digit]) << digit;
    }
    for (unsigned i = 1; i <= 24; ++i) {
        const SDL_Scancode function = SDL_GetScancodeFromName(("F" + std::to_string(i)).c_str());
        EXPECT_EQ(KeyMap::keyNumber(keysym(function, SDLK_UNKNOWN)), 0x6Fu + i) << "F" << i;
    }
}

TEST_F(KeyMapTest, AnUnknownKeyIsZero) {
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_UNKNOWN, SDLK_UNKNOWN)), 0u);
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_WWW, SDLK_WWW)), 0u);
}

TEST_F(KeyMapTest, CtrlAndALetterTypesAControlCharacter) {
    EXPECT_EQ(KeyMap::controlCharacter('A', true), 1);
    EXPECT_EQ(KeyMap::controlCharacter('Z', true), 26);
    EXPECT_EQ(KeyMap::controlCharacter('A', false), 0);
    EXPECT_EQ(KeyMap::controlCharacter('Z' + 1, true), 0);
    EXPECT_EQ(KeyMap::controlCharacter(key::escape, false), 27);
    EXPECT_EQ(KeyMap::controlCharacter(key::backspace, false), 8);
    EXPECT_EQ(KeyMap::controlCharacter(key::tab, false), 9);
    EXPECT_EQ(KeyMap::controlCharacter(key::enter, true), 13);
}

TEST_F(KeyMapTest, AKeyNeverPressedTypesWhatAUsKeyboardPrints) {
    EXPECT_EQ(KeyMap::usCharacter('Q', false), 'q');
    EXPECT_EQ(KeyMap::usCharacter('Q', true), 'Q');
    std::string shifted;
    std::string plain;
    for (char digit = '0'; digit <= '9'; ++digit) {
        shifted += static_cast<char>(KeyMap::usCharacter(static_cast<std::uint32_t>(digit), true));
        plain += static_cast<char>(KeyMap::usCharacter(static_cast<std::uint32_t>(digit), false));
    }
    EXPECT_EQ(plain, "0123456789");
    EXPECT_EQ(shifted, ")!@#$%^&*(");
    EXPECT_EQ(KeyMap::usCharacter('A', false), 'a');
    EXPECT_EQ(KeyMap::usCharacter('Z', true), 'Z');
    EXPECT_EQ(KeyMap::usCharacter('Z' + 1, false), 0);
    EXPECT_EQ(KeyMap::usCharacter(' ', true), ' ');
    EXPECT_EQ(KeyMap::usCharacter(key::left, false), 0);
}

} // namespace tarnwick
