#pragma once

#include "gui/GuiScreen.h"

namespace tarnwick {

/// What Escape and the right button open in play.
class Menu_InGame : public GuiScreen {
public:
    Menu_InGame();
};

} // namespace tarnwick
