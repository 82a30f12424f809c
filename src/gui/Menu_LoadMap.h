#pragma once

#include "gui/GuiScreen.h"

#include <string>
#include <vector>

namespace tarnwick {

class GuiOptionChooser;

/// Chooses another level. The levels are those that are there when the screen is built.
class Menu_LoadMap : public GuiScreen {
public:
    Menu_LoadMap();

    /// Left and right of a game pad choose the level wherever the focus is: it has no pointer.
    void keyboardPressed(std::uint32_t keyOrButton) override;

private:
    GuiOptionChooser* mapChooser = nullptr; ///< On this screen; a level's file name is an option.

    /// The names of all level files, in the order of their names.
    static std::vector<std::string> buildMapList();
    static void load(GuiWidget& button);
};

} // namespace tarnwick
