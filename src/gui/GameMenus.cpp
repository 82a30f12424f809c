#include "gui/GameMenus.h"

#include "audio/Sound.h"
#include "core/LocationStack.h"
#include "game/GameRules.h"
#include "gui/MenuStyle.h"
#include "gui/Menu_Credits.h"
#include "gui/Menu_HighScores.h"
#include "gui/Menu_InGame.h"
#include "gui/Menu_Instructions.h"
#include "gui/Menu_LevelFinished.h"
#include "gui/Menu_LoadMap.h"
#include "gui/Menu_Main.h"
#include "gui/Menu_Options.h"
#include "gui/Menu_QuitGame.h"
#include "gui/Menu_Restart.h"

namespace tarnwick {

GameMenus::State GameMenus::state;

template <typename Screen>
void GameMenus::build(std::uint32_t number) {
    TARNWICK_LOCATION("GameMenus::build");
    if (state.screens[number] == nullptr) {
        state.screens[number] = std::make_unique<Screen>();
        state.screens[number]->clearBackground = false; // the level shows through, and the game presents
        state.screens[number]->swapBuffers = false;
    }
}

void GameMenus::initialise() {
    TARNWICK_LOCATION("GameMenus::initialise");
    build<Menu_Main>(menu::main);
    build<Menu_InGame>(menu::inGame);
    build<Menu_Options>(menu::options);
    build<Menu_Instructions>(menu::instructions);
    build<Menu_HighScores>(menu::highScores);
    build<Menu_LoadMap>(menu::loadMap);
    build<Menu_QuitGame>(menu::quitGame);
    build<Menu_Credits>(menu::credits);
    build<Menu_LevelFinished>(menu::levelFinished);
    build<Menu_Restart>(menu::restart);
    if (state.menuBackgroundSound == nullptr) {
        state.menuBackgroundSound = std::make_unique<Sound>(MenuStyle::read().backgroundSound);
    }
    state.currentMenu = menu::none;
    state.lastMenu = menu::none;
}

void GameMenus::shutdown() {
    TARNWICK_LOCATION("GameMenus::shutdown");
    state.currentMenu = menu::none;
    state.lastMenu = menu::none;
    for (auto& screen : state.screens) {
        screen.reset();
    }
    state.menuBackgroundSound.reset();
}

void GameMenus::setCurrentMenu(std::uint32_t number) {
    TARNWICK_LOCATION("GameMenus::setCurrentMenu");
    state.lastMenu = state.currentMenu;
    if (number <= menu::last) {
        state.currentMenu = state.screens[number] != nullptr ? number : menu::none;
    }
    if (GuiScreen* const screen = currentScreen(); screen != nullptr) {
        screen->reset();
        if (state.menuBackgroundSound != nullptr) {
            state.menuBackgroundSound->setVolume(1.0f);
            state.menuBackgroundSound->loop();
        }
        return;
    }
    if (state.menuBackgroundSound != nullptr) {
        state.menuBackgroundSound->stop();
    }
    GameRules::unpauseLevelTimer();
}

void GameMenus::keep(Moment& moment) {
    TARNWICK_LOCATION("GameMenus::keep");
    moment.currentMenu = state.currentMenu;
    moment.lastMenu = state.lastMenu;
    if (const GuiScreen* const screen = currentScreen(); screen != nullptr) {
        screen->keep(moment.screen);
    }
}

void GameMenus::putBack(const Moment& moment, std::uint32_t late) {
    TARNWICK_LOCATION("GameMenus::putBack");
    setCurrentMenu(moment.currentMenu);
    state.lastMenu = moment.lastMenu;
    if (GuiScreen* const screen = currentScreen(); screen != nullptr) {
        screen->putBack(moment.screen, late);
    }
}

void GameMenus::sendMenuEvent_windowRedrawing() {
    TARNWICK_LOCATION("GameMenus::sendMenuEvent_windowRedrawing");
    if (GuiScreen* const screen = currentScreen(); screen != nullptr) {
        screen->windowRedrawing();
    }
}

void GameMenus::sendMenuEvent_mouseMoved(std::uint32_t x, std::uint32_t y) {
    TARNWICK_LOCATION("GameMenus::sendMenuEvent_mouseMoved");
    if (GuiScreen* const screen = currentScreen(); screen != nullptr) {
        screen->mouseMoved(x, y);
    }
}

void GameMenus::sendMenuEvent_mousePressed(std::uint32_t x, std::uint32_t y, std::uint32_t button) {
    TARNWICK_LOCATION("GameMenus::sendMenuEvent_mousePressed");
    if (GuiScreen* const screen = currentScreen(); screen != nullptr) {
        screen->mousePressed(x, y, button);
    }
}

void GameMenus::sendMenuEvent_mouseReleased(std::uint32_t x, std::uint32_t y, std::uint32_t button) {
    TARNWICK_LOCATION("GameMenus::sendMenuEvent_mouseReleased");
    if (GuiScreen* const screen = currentScreen(); screen != nullptr) {
        screen->mouseReleased(x, y, button);
    }
}

void GameMenus::sendMenuEvent_keyboardPressed(std::uint32_t key) {
    TARNWICK_LOCATION("GameMenus::sendMenuEvent_keyboardPressed");
    if (GuiScreen* const screen = currentScreen(); screen != nullptr) {
        screen->keyboardPressed(key);
    }
}

void GameMenus::sendMenuEvent_keyboardReleased(std::uint32_t key) {
    TARNWICK_LOCATION("GameMenus::sendMenuEvent_keyboardReleased");
    if (GuiScreen* const screen = currentScreen(); screen != nullptr) {
        screen->keyboardReleased(key);
    }
}

} // namespace tarnwick
