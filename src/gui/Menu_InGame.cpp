#include "gui/Menu_InGame.h"

#include "core/LocationStack.h"
#include "gui/GameMenus.h"
#include "gui/GuiAnimatedButton.h"
#include "gui/MenuLayout.h"

namespace tarnwick {

Menu_InGame::Menu_InGame() {
    TARNWICK_LOCATION("Menu_InGame::Menu_InGame");
    const MenuLayout layout("cfg\\menu_inGame.cfg");
    layout.addLogo(*this);
    const std::vector<GuiWidget*> column = {
        &layout.addButton<MenuLayout::openMenu<menu::none>>(*this, "continueButton"),
        &layout.addButton<MenuLayout::openMenu<menu::restart>>(*this, "restartButton"),
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

} // namespace tarnwick
