#pragma once

#include "gui/GuiScreen.h"

namespace tarnwick {

/// How to play.
class Menu_Instructions : public GuiScreen {
public:
    Menu_Instructions();
};

} // namespace tarnwick
