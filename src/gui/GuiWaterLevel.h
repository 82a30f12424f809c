#pragma once

#include "gui/GuiRampUp.h"
#include "gui/GuiWidget.h"

namespace tarnwick {

/// A column of water that rises to what is left of it in the level. 128 particles fill the widget; more rise
/// out of its top.
class GuiWaterLevel : public GuiWidget, public GuiRampUp {
public:
    /// Seconds until the column stands, at least 0.0001; none of them left.
    void setRampUpTimePerParticle(float seconds);

    void reset() override;
    void windowRedrawing() override;
};

} // namespace tarnwick
