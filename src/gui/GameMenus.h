#pragma once

#include "gui/GuiScreen.h"
#include "gui/MenuNumber.h"

#include <array>
#include <cstdint>
#include <memory>

namespace tarnwick {

class Sound;

/// Owns the ten menus of the game and knows which one is up. They run inside the game's frame loop: `Game`
/// hands the window's events and the drawing to the current one, and the level shows through behind it.
///
/// The menus are built once and kept until `shutdown`; a change of level leaves them. They are known by the
/// numbers of `MenuNumber.h`.
class GameMenus {
public:
    GameMenus() = delete;

    /// Builds the menus that are not there yet, and the sound behind them. None is up afterwards.
    static void initialise();
    static void shutdown();

    /// Opens a menu, or, with `menu::none`, goes on with the play. The menu that was up becomes the last one,
    /// one step back and no more. A number without a menu opens again the one that is up.
    static void setCurrentMenu(std::uint32_t number);
    static std::uint32_t getCurrentMenu() { return state.currentMenu; }
    /// The one before the current one.
    static std::uint32_t getLastMenu() { return state.lastMenu; }

    /// What the window tells, for the current menu; nothing happens without one. Positions are client pixels.
    static void sendMenuEvent_windowRedrawing();
    static void sendMenuEvent_mouseMoved(std::uint32_t x, std::uint32_t y);
    static void sendMenuEvent_mousePressed(std::uint32_t x, std::uint32_t y, std::uint32_t button);
    static void sendMenuEvent_mouseReleased(std::uint32_t x, std::uint32_t y, std::uint32_t button);
    static void sendMenuEvent_keyboardPressed(std::uint32_t key);
    static void sendMenuEvent_keyboardReleased(std::uint32_t key);

    /// What of the module a `Snapshot` holds; nobody else looks inside.
    class Moment;
    static void keep(Moment& moment);
    /// Opens the menu that was up anew, where it stood. `late`: milliseconds by which the clock has gone on
    /// since then.
    static void putBack(const Moment& moment, std::uint32_t late);

private:
    friend class ModuleReset;
    friend class GameMenusTest;
    friend class MenuRows; // tools: dump and restore

    struct State {
        std::array<std::unique_ptr<GuiScreen>, menu::last + 1> screens; ///< By number; none at 0.
        std::uint32_t currentMenu = menu::none;
        std::uint32_t lastMenu = menu::none;
        std::unique_ptr<Sound> menuBackgroundSound;
    };
    static State state;

    template <typename Screen>
    static void build(std::uint32_t number);
    static GuiScreen* currentScreen() { return state.screens[state.currentMenu].get(); }
};

class GameMenus::Moment {
    friend class GameMenus;
    std::uint32_t currentMenu = menu::none;
    std::uint32_t lastMenu = menu::none;
    GuiScreen::Moment screen; ///< Of the menu that is up.
};

} // namespace tarnwick
