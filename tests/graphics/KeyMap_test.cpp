#include "graphics/KeyMap.h"

#include "support/ModuleTest.h"

#include <SDL_keyboard.h>

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

TEST_F(KeyMapTest, AnUnknownKeyIsZero) {
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_UNKNOWN, SDLK_UNKNOWN)), 0u);
    EXPECT_EQ(KeyMap::keyNumber(keysym(SDL_SCANCODE_WWW, SDLK_WWW)), 0u);
}

TEST_F(KeyMapTest, CtrlAndALetterTypesAControlCharacter) {
    EXPECT_EQ(KeyMap::controlCharacter('A', true), 1);
    EXPECT_EQ(KeyMap::controlCharacter('Z', true), 26);
    EXPECT_EQ(KeyMap::controlCharacter('A', false), 0);
    EXPECT_EQ(KeyMap::controlCharacter(key::escape, false), 27);
}

TEST_F(KeyMapTest, AKeyNeverPressedTypesWhatAUsKeyboardPrints) {
    EXPECT_EQ(KeyMap::usCharacter('Q', false), 'q');
    EXPECT_EQ(KeyMap::usCharacter('Q', true), 'Q');
    EXPECT_EQ(KeyMap::usCharacter('2', true), '@');
    EXPECT_EQ(KeyMap::usCharacter(key::left, false), 0);
}

} // namespace tarnwick
