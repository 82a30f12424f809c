#pragma once

#include "gui/GuiScreen.h"

namespace tarnwick {

/// Who made the game.
class Menu_Credits : public GuiScreen {
public:
    Menu_Credits();
};

} // namespace tarnwick
