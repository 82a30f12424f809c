#pragma once

#include "gui/GuiScreen.h"

namespace tarnwick {

/// Asks before the level starts again.
class Menu_Restart : public GuiScreen {
public:
    Menu_Restart();

private:
    static void restart(GuiWidget& button);
};

} // namespace tarnwick
