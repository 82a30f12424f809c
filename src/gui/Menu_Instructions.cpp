#include "gui/Menu_Instructions.h"

#include "core/LocationStack.h"
#include "graphics/KeyBindings.h"
#include "gui/GuiAnimatedButton.h"
#include "gui/MenuLayout.h"

namespace tarnwick {

Menu_Instructions::Menu_Instructions() {
    TARNWICK_LOCATION("Menu_Instructions::Menu_Instructions");
    const MenuLayout layout("cfg\\menu_instructions.cfg");
    layout.addLogo(*this);
    setDefaultFocusWidget(&layout.addButton<MenuLayout::goBack>(*this, "backButton"));
    layout.addTextBox(*this, "instructionsText");
    layout.addTextBox(*this, "keysText", KeyBindings::told());
}

} // namespace tarnwick
