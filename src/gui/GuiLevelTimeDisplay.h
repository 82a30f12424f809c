#pragma once

#include "gui/GuiFontGroup.h"
#include "gui/GuiRampUp.h"
#include "gui/GuiWidget.h"

#include <cstdint>

namespace tarnwick {

class GuiScoreLabel;

/// The time of the level in minutes, seconds and hundredths, counting up as a `GuiScoreLabel` does, centred
/// in the widget. Kept: without a label before it the time stays at zero, where a score label would count at
/// once. The display is only ever placed behind one.
class GuiLevelTimeDisplay : public GuiWidget, public GuiFontGroup, public GuiRampUp {
public:
    const GuiScoreLabel* previousScoreLabel = nullptr; ///< Not owned.

    GuiLevelTimeDisplay();

    /// Seconds, at least 0.01, all of them left.
    void setRampUpTime(float seconds);

    void reset() override;
    void windowRedrawing() override;

private:
    std::uint32_t shownTime();
};

} // namespace tarnwick
