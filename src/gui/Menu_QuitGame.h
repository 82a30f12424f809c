#pragma once

#include "gui/GuiScreen.h"

namespace tarnwick {

/// Asks before the program ends.
class Menu_QuitGame : public GuiScreen {
public:
    Menu_QuitGame();

private:
    static void quit(GuiWidget& button);
};

} // namespace tarnwick
