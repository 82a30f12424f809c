#include "gui/GuiScoreLabel.h"

#include "audio/Sound.h"
#include "core/LocationStack.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

constexpr float defaultFontSize = 16.0f;

} // namespace

GuiScoreLabel::GuiScoreLabel()
    : GuiFontGroup(defaultFontSize) {
    TARNWICK_LOCATION("GuiScoreLabel::GuiScoreLabel");
    setColor(opaqueBlack);
}

GuiScoreLabel::~GuiScoreLabel() {
    TARNWICK_LOCATION("GuiScoreLabel::~GuiScoreLabel");
}

void GuiScoreLabel::setRampUpTime(float seconds) {
    TARNWICK_LOCATION("GuiScoreLabel::setRampUpTime");
    rampUpTime = std::max(seconds, shortestRampUp);
    rampUpRemaining = rampUpTime;
}

void GuiScoreLabel::setRampUpSound(const std::string& name) {
    TARNWICK_LOCATION("GuiScoreLabel::setRampUpSound");
    rampUpSound = std::make_unique<Sound>(name);
}

void GuiScoreLabel::reset() {
    TARNWICK_LOCATION("GuiScoreLabel::reset");
    restartRampUp();
    if (rampUpSound != nullptr) {
        rampUpSound->stop();
    }
}

void GuiScoreLabel::windowRedrawing() {
    TARNWICK_LOCATION("GuiScoreLabel::windowRedrawing");
    frameTimer.update();
    drawText(std::to_string(shownValue()), {static_cast<float>(x), static_cast<float>(y)}, fontSize,
             colour());
}

std::uint32_t GuiScoreLabel::shownValue() {
    TARNWICK_LOCATION("GuiScoreLabel::shownValue");
    if (previousScoreLabel != nullptr && !previousScoreLabel->rampUpDone()) {
        return 0;
    }
    playRampUpSound();
    const std::uint32_t value = valueFunction != nullptr ? valueFunction() : 0;
    const float progress = runRampUp();
    return static_cast<std::uint32_t>(
        std::nearbyint(static_cast<double>(value) * static_cast<double>(progress)));
}

/// From the first frame of the way to its end.
void GuiScoreLabel::playRampUpSound() {
    TARNWICK_LOCATION("GuiScoreLabel::playRampUpSound");
    if (rampUpSound == nullptr) {
        return;
    }
    if (rampUpAtStart()) {
        rampUpSound->setVolume(1.0f);
        rampUpSound->rewind();
        rampUpSound->play();
    }
    if (rampUpDone()) {
        rampUpSound->stop();
    }
}

} // namespace tarnwick
