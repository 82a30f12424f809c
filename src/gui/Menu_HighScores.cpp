#include "gui/Menu_HighScores.h"

#include "core/LocationStack.h"
#include "gui/GuiAnimatedButton.h"
#include "gui/GuiHighScores.h"
#include "gui/MenuLayout.h"

namespace tarnwick {

Menu_HighScores::Menu_HighScores() {
    TARNWICK_LOCATION("Menu_HighScores::Menu_HighScores");
    const MenuLayout layout("cfg\\menu_highScores.cfg");
    layout.addLogo(*this);
    auto& table = layout.add<GuiHighScores>(*this, "highScores");
    layout.dressText(table);
    table.setEntryFontSize(layout.number("highScores_entryFontSize"));
    table.setTitleFontSize(layout.number("highScores_titleFontSize"));
    setDefaultFocusWidget(&layout.addButton<MenuLayout::goBack>(*this, "backButton"));
}

} // namespace tarnwick
