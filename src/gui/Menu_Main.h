#pragma once

#include "gui/GuiScreen.h"

namespace tarnwick {

/// The first menu, over the still level.
class Menu_Main : public GuiScreen {
public:
    Menu_Main();

private:
    static void start(GuiWidget& button);
};

} // namespace tarnwick
