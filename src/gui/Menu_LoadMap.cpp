#include "gui/Menu_LoadMap.h"

#include "core/DataFiles.h"
#include "core/LocationStack.h"
#include "game/Game.h"
#include "graphics/GamePad.h"
#include "graphics/KeyMap.h"
#include "gui/GuiAnimatedButton.h"
#include "gui/GuiOptionChooser.h"
#include "gui/MenuLayout.h"

namespace tarnwick {

Menu_LoadMap::Menu_LoadMap() {
    TARNWICK_LOCATION("Menu_LoadMap::Menu_LoadMap");
    const MenuLayout layout("cfg\\menu_loadMap.cfg");
    layout.addLogo(*this);
    layout.addLabel(*this, "mapLabel", "Choose Map to load");
    mapChooser = &layout.addChooser(*this, "mapChooser");
    for (const std::string& name : buildMapList()) {
        mapChooser->addOption(name);
    }
    GuiWidget& loadButton = layout.addButton<load>(*this, "loadButton");
    GuiWidget& backButton = layout.addButton<MenuLayout::goBack>(*this, "backButton");
    // The chooser is left out: the mouse alone reaches it.
    backButton.addFocusTraversal(key::up, &loadButton);
    backButton.addFocusTraversal(key::tab, &loadButton);
    loadButton.addFocusTraversal(key::down, &backButton);
    loadButton.addFocusTraversal(key::tab, &backButton);
    setDefaultFocusWidget(&backButton);
}

void Menu_LoadMap::keyboardPressed(std::uint32_t keyOrButton) {
    TARNWICK_LOCATION("Menu_LoadMap::keyboardPressed");
    if (keyOrButton == key::padLeft || keyOrButton == key::padRight) {
        mapChooser->keyboardPressed(GamePad::asMenuKey(keyOrButton));
    } else {
        GuiScreen::keyboardPressed(keyOrButton);
    }
}

std::vector<std::string> Menu_LoadMap::buildMapList() {
    TARNWICK_LOCATION("Menu_LoadMap::buildMapList");
    return DataFiles::list("maps\\*.rivl");
}

void Menu_LoadMap::load(GuiWidget& button) {
    TARNWICK_LOCATION("Menu_LoadMap::load");
    const auto& screen = dynamic_cast<const Menu_LoadMap&>(*button.parentScreen);
    Game::map("maps\\" + screen.mapChooser->getCurrentText());
}

} // namespace tarnwick
