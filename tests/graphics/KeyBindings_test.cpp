#include "graphics/KeyBindings.h"

#include "core/Log.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"
#include "support/DataFolder.h"
#include "support/Keyboard.h"
#include "support/ModuleTest.h"

#include <string>

namespace tarnwick {

class KeyBindingsTest : public ModuleTest {
protected:
    KeyBindingsTest() { GLWindow::createHeadless(800, 600); }

    void bind(const std::string& text) const {
        folder.write("cfg/keys.cfg", text);
        KeyBindings::initialise();
    }

    const DataFolder folder;
};

/// Finds a plain game whose keys are others, or that has keys it never had.
TEST_F(KeyBindingsTest, WithoutTheFileThePlainKeysHold) {
    KeyBindings::initialise();

    EXPECT_TRUE(KeyBindings::is(GameKey::menu, key::escape));
    EXPECT_TRUE(KeyBindings::is(GameKey::console, key::console));
    EXPECT_TRUE(KeyBindings::is(GameKey::pause, key::pause));
    EXPECT_TRUE(KeyBindings::is(GameKey::pause, 'P'));
    for (const GameKey none : {GameKey::restart, GameKey::screenshot, GameKey::fullscreen}) {
        EXPECT_FALSE(KeyBindings::exists(none));
        EXPECT_FALSE(KeyBindings::is(none, 0));
    }
    EXPECT_EQ(KeyBindings::told(), "");
    EXPECT_EQ(Log::outputText(), "");
}

/// Finds a chosen key that does not count, and the old one that still does.
TEST_F(KeyBindingsTest, AChosenKeyTakesThePlaceOfThePlainOne) {
    bind("turnLeft = A pause = Space");
    pressKey(SDL_SCANCODE_A, SDLK_a, "a");
    GLWindow::run();

    EXPECT_TRUE(KeyBindings::isHeld(GameKey::turnLeft));
    EXPECT_FALSE(KeyBindings::isHeld(GameKey::turnRight));
    EXPECT_TRUE(KeyBindings::is(GameKey::pause, key::space));
    EXPECT_FALSE(KeyBindings::is(GameKey::pause, 'P'));
    pressKey(SDL_SCANCODE_LEFT, SDLK_LEFT);
    releaseKey(SDL_SCANCODE_A, SDLK_a);
    GLWindow::run();
    EXPECT_FALSE(KeyBindings::isHeld(GameKey::turnLeft));
}

/// Finds names with blanks, lists and the comma itself that are not understood.
TEST_F(KeyBindingsTest, NamesMayHaveBlanksAndStandInLists) {
    bind("pause = Keypad_4,Left_Shift,f9 restart = , menu = ; screenshot = PrintScreen");

    EXPECT_TRUE(KeyBindings::is(GameKey::pause, 0x64));
    EXPECT_TRUE(KeyBindings::is(GameKey::pause, 0x10));
    EXPECT_TRUE(KeyBindings::is(GameKey::pause, 0x78));
    EXPECT_TRUE(KeyBindings::is(GameKey::restart, 0xBC));
    EXPECT_TRUE(KeyBindings::is(GameKey::menu, 0xBA));
    EXPECT_TRUE(KeyBindings::is(GameKey::screenshot, 0x2C));
    EXPECT_EQ(Log::outputText(), "");
}

/// Finds a slip of the pen that leaves the player without a key, or is passed over in silence.
TEST_F(KeyBindingsTest, ANameThatNoKeyHasIsToldAndThePlainKeyHolds) {
    bind("menu = F2,Escpae restart = F5");

    EXPECT_TRUE(KeyBindings::is(GameKey::menu, key::escape));
    EXPECT_FALSE(KeyBindings::is(GameKey::menu, 0x71));
    EXPECT_TRUE(KeyBindings::is(GameKey::restart, 0x74));
    EXPECT_EQ(Log::outputText(), "\ncfg\\keys.cfg: no key is called 'Escpae'; menu keeps the keys it had");
}

/// Finds a line for the player that names other keys than those that hold.
TEST_F(KeyBindingsTest, WhatHoldsIsTold) {
    bind("turnRight = D pause = Left_Shift fullscreen = F11");

    EXPECT_EQ(KeyBindings::told(), "turn Left and D; pause Left Shift; menu Escape\nfull screen F11");
}

} // namespace tarnwick
