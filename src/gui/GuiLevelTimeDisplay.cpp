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
    const auto drawAt = [&](float offsetX, float offsetY, Colour colour) {
        font.drawStringCentered(text.c_str(), static_cast<float>(x) + offsetX,
                                static_cast<float>(y) + offsetY, static_cast<float>(width),
                                static_cast<float>(height), fontSize, colour.red, colour.green, colour.blue,
                                colour.alpha);
    };
    if (dropShadowEnabled) {
        drawAt(dropShadowOffsetX, dropShadowOffsetY, dropShadowColour());
    }
    drawAt(0.0f, 0.0f, {red, green, blue, alpha});
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
