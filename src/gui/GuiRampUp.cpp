#include "gui/GuiRampUp.h"

#include "core/LocationStack.h"

#include <algorithm>

namespace tarnwick {

void GuiRampUp::restartRampUp() {
    TARNWICK_LOCATION("GuiRampUp::restartRampUp");
    frameTimer.reset();
    rampUpRemaining = rampUpTime;
}

bool GuiRampUp::rampUpAtStart() const {
    TARNWICK_LOCATION("GuiRampUp::rampUpAtStart");
    return rampUpRemaining == rampUpTime; // exactly: the first frame subtracts something
}

float GuiRampUp::runRampUp() {
    TARNWICK_LOCATION("GuiRampUp::runRampUp");
    rampUpRemaining -= frameTimer.getSeconds();
    return std::clamp(1.0f - rampUpRemaining / rampUpTime, 0.0f, 1.0f);
}

} // namespace tarnwick
