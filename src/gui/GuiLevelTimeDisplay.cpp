#include "gui/GuiLevelTimeDisplay.h"

#include "core/LocationStack.h"
#include "game/CheckPointTimesManager.h"
#include "game/GameRules.h"
#include "gui/GuiScoreLabel.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

constexpr float defaultFontSize = 16.0f;

} // namespace

GuiLevelTimeDisplay::GuiLevelTimeDisplay()
    : GuiFontGroup(defaultFontSize) {
    TARNWICK_LOCATION("GuiLevelTimeDisplay::GuiLevelTimeDisplay");
}

void GuiLevelTimeDisplay::setRampUpTime(float seconds) {
    TARNWICK_LOCATION("GuiLevelTimeDisplay::setRampUpTime");
    rampUpTime = std::max(seconds, shortestRampUp);
    rampUpRemaining = rampUpTime;
}

void GuiLevelTimeDisplay::reset() {
    TARNWICK_LOCATION("GuiLevelTimeDisplay::reset");
    restartRampUp();
}

void GuiLevelTimeDisplay::windowRedrawing() {
    TARNWICK_LOCATION("GuiLevelTimeDisplay::windowRedrawing");
    frameTimer.update();
    const std::string text = CheckPointTimesManager::formatTime(shownTime());
    const Vector2 corner{static_cast<float>(x), static_cast<float>(y)};
    const Vector2 extent{static_cast<float>(width), static_cast<float>(height)};
    if (dropShadowEnabled) {
        font.drawStringCentered(text, corner + dropShadowOffset(), extent, fontSize, dropShadowColour());
    }
    font.drawStringCentered(text, corner, extent, fontSize, colour());
}

std::uint32_t GuiLevelTimeDisplay::shownTime() {
    TARNWICK_LOCATION("GuiLevelTimeDisplay::shownTime");
    if (previousScoreLabel == nullptr || !previousScoreLabel->rampUpDone()) {
        return 0;
    }
    const float progress = runRampUp();
    const auto time = static_cast<double>(GameRules::getLevelTime());
    return static_cast<std::uint32_t>(std::nearbyint(std::max(time, 0.0) * static_cast<double>(progress)));
}

} // namespace tarnwick
