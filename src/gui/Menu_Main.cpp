#include "gui/Menu_Main.h"

#include "audio/MusicSystem.h"
#include "core/LocationStack.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"
#include "gui/GameMenus.h"
#include "gui/GuiAnimatedButton.h"
#include "gui/MenuLayout.h"

namespace tarnwick {

Menu_Main::Menu_Main() {
    TARNWICK_LOCATION("Menu_Main::Menu_Main");
    const MenuLayout layout("cfg\\menu_main.cfg");
    layout.addLogo(*this);
    const std::vector<GuiWidget*> column = {
        &layout.addButton<start>(*this, "startButton"),
        &layout.addButton<MenuLayout::openMenu<menu::loadMap>>(*this, "loadButton"),
        &layout.addButton<MenuLayout::openMenu<menu::options>>(*this, "optionsButton"),
        &layout.addButton<MenuLayout::openMenu<menu::instructions>>(*this, "instructionsButton"),
        &layout.addButton<MenuLayout::openMenu<menu::highScores>>(*this, "highScoresButton"),
        &layout.addButton<MenuLayout::openMenu<menu::credits>>(*this, "creditsButton"),
        &layout.addButton<MenuLayout::openMenu<menu::quitGame>>(*this, "quitButton"),
    };
    MenuLayout::linkColumn(column);
    setDefaultFocusWidget(column.front());
}

void Menu_Main::start(GuiWidget& /*button*/) {
    TARNWICK_LOCATION("Menu_Main::start");
    GameMenus::setCurrentMenu(menu::none);
    Game::unpause(); // of the level before
    MusicSystem::play(Game::musicFileName(), true);
    GLWindow::centerMouse();
}

} // namespace tarnwick
