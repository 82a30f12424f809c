#include "gui/Menu_Restart.h"

#include "audio/MusicSystem.h"
#include "core/LocationStack.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"
#include "gui/GameMenus.h"
#include "gui/MenuLayout.h"
#include "gui/MenuQuestion.h"

namespace tarnwick {

Menu_Restart::Menu_Restart() {
    TARNWICK_LOCATION("Menu_Restart::Menu_Restart");
    const MenuLayout layout("cfg\\menu_restart.cfg");
    layout.addLogo(*this);
    layout.addSizedLabel(*this, "restartLabel", "Restart game: are you sure?");
    MenuQuestion::addAnswers<restart>(layout, *this);
}

void Menu_Restart::restart(GuiWidget& /*button*/) {
    TARNWICK_LOCATION("Menu_Restart::restart");
    Game::unpause();
    MusicSystem::play(Game::musicFileName(), true);
    Game::restart();
    GameMenus::setCurrentMenu(menu::none);
    GLWindow::centerMouse();
}

} // namespace tarnwick
