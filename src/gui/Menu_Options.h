#pragma once

#include "gui/GuiScreen.h"

#include <cstdint>

namespace tarnwick {

class GuiOptionChooser;

/// Full screen, music, sound and the quality of the pictures. What is chosen holds from the click on the way
/// back on; Escape leaves without it.
class Menu_Options : public GuiScreen {
public:
    static constexpr std::int32_t qualityCount = 6; ///< Options of the quality of the pictures.

    Menu_Options();

    /// Shows what holds now.
    void reset() override;
    /// Sets the choosers to what holds now, and commits that: what lies between two choices goes to one.
    void detectSettings();
    /// Makes what is chosen hold.
    void commitSettings();

    /// The option of the quality that comes nearest to what holds now.
    static std::uint32_t detectQuality();
    /// Makes an option of the quality hold before anything of a level is loaded: no splash shows.
    static void startWithQuality(std::uint32_t index);

private:
    GuiOptionChooser* fullscreenChooser = nullptr; ///< All on this screen.
    GuiOptionChooser* musicChooser = nullptr;
    GuiOptionChooser* soundChooser = nullptr;
    GuiOptionChooser* graphicQualityChooser = nullptr;

    void linkFocus(GuiWidget& backButton);
    static void commitFullscreen(bool wanted);
    static void commitQuality(std::uint32_t index);
    static void commitAndGoBack(GuiWidget& button);
};

} // namespace tarnwick
