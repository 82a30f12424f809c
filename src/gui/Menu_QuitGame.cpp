#include "gui/Menu_QuitGame.h"

#include "core/LocationStack.h"
#include "game/Game.h"
#include "gui/MenuLayout.h"
#include "gui/MenuQuestion.h"

namespace tarnwick {

Menu_QuitGame::Menu_QuitGame() {
    TARNWICK_LOCATION("Menu_QuitGame::Menu_QuitGame");
    const MenuLayout layout("cfg\\menu_quitGame.cfg");
    layout.addLogo(*this);
    layout.addSizedLabel(*this, "quitLabel", "Quit game: are you sure?");
    MenuQuestion::addAnswers<quit>(layout, *this);
}

void Menu_QuitGame::quit(GuiWidget& /*button*/) {
    TARNWICK_LOCATION("Menu_QuitGame::quit");
    Game::stop();
}

} // namespace tarnwick
