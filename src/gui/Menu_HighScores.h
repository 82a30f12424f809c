#pragma once

#include "gui/GuiScreen.h"

namespace tarnwick {

/// The table of the ten best.
class Menu_HighScores : public GuiScreen {
public:
    Menu_HighScores();
};

} // namespace tarnwick
