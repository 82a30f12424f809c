#include "gui/Menu_Credits.h"

#include "core/LocationStack.h"
#include "gui/GuiAnimatedButton.h"
#include "gui/MenuLayout.h"

namespace tarnwick {

Menu_Credits::Menu_Credits() {
    TARNWICK_LOCATION("Menu_Credits::Menu_Credits");
    const MenuLayout layout("cfg\\menu_credits.cfg");
    layout.addLogo(*this);
    setDefaultFocusWidget(&layout.addButton<MenuLayout::goBack>(*this, "backButton"));
    layout.addTextBox(*this, "creditsText");
}

} // namespace tarnwick
