#pragma once

#include "gui/GuiScreen.h"

#include <cstdint>

namespace tarnwick {

class GuiOptionChooser;

/// Full screen, music, sound and the quality of the pictures. What is chosen holds from the click on the way
/// back on; Escape leaves without it.
class Menu_Options : public GuiScreen {
public:
    Menu_Options();

    /// Shows what holds now.
    void reset() override;
    /// Sets the choosers to what holds now, and commits that: what lies between two choices goes to one.
    void detectSettings();
    /// Makes what is chosen hold.
    void commitSettings();

private:
    GuiOptionChooser* fullscreenChooser = nullptr; ///< All on this screen.
    GuiOptionChooser* musicChooser = nullptr;
    GuiOptionChooser* soundChooser = nullptr;
    GuiOptionChooser* graphicQualityChooser = nullptr;

    void linkFocus(GuiWidget& backButton);
    static std::uint32_t detectQuality();
    static void commitFullscreen(bool wanted);
    static void commitQuality(std::uint32_t index);
    static void commitAndGoBack(GuiWidget& button);
};

} // namespace tarnwick
