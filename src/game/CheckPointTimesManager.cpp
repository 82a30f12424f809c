#include "game/CheckPointTimesManager.h"

#include "core/ConfigFile.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "game/GameRules.h"
#include "graphics/ReadColour.h"
#include "graphics/VirtualScreen.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

constexpr float shortestFade = 0.01f;

constexpr std::uint32_t millisecondsInHour = 3'600'000;
constexpr std::uint32_t millisecondsInMinute = 60'000;
constexpr std::uint32_t millisecondsInSecond = 1000;
constexpr std::uint32_t millisecondsInHundredth = 10;

/// `number`, below 100, in two digits.
std::string twoDigits(std::uint32_t number) {
    TARNWICK_LOCATION("CheckPointTimesManager::twoDigits");
    return (number < 10 ? "0" : "") + std::to_string(number);
}

} // namespace

CheckPointTimesManager::State CheckPointTimesManager::state;

void CheckPointTimesManager::initialise() {
    TARNWICK_LOCATION("CheckPointTimesManager::initialise");
    shutdown();
    Log::print("\nInitialising check point times manager..");
    readConfiguration();
    state.displayState = nothing;
    state.checkPointTimes.clear();
    state.fadeTimer.reset();
}

void CheckPointTimesManager::shutdown() {
    TARNWICK_LOCATION("CheckPointTimesManager::shutdown");
    Log::print("\nShutting down check point times manager..");
    state.checkPointTimes.clear();
    state.timeFont.reset();
}

void CheckPointTimesManager::readConfiguration() {
    TARNWICK_LOCATION("CheckPointTimesManager::readConfiguration");
    const ConfigFile config("cfg\\checkPoints.cfg");
    state.timeFont = std::make_unique<GLFont>(config.getVarAsString("font"));
    state.fontSize = config.getVarAsFloat("fontSize");
    state.fontColour = readColour(config, "fontColor");
    state.slowerFontColour = readColour(config, "slowerFontColor");
    state.fasterFontColour = readColour(config, "fasterFontColor");
    state.yPosition = config.getVarAsFloat("y_position");
    state.fadeTime = std::max(config.getVarAsFloat("fadeTime"), shortestFade);
}

void CheckPointTimesManager::recordTime(const Trigger* trigger, std::uint32_t time) {
    TARNWICK_LOCATION("CheckPointTimesManager::recordTime");
    const auto [known, isNew] = state.checkPointTimes.try_emplace(trigger, time);
    if (isNew) {
        state.displayState = timeFadingIn;
    } else {
        state.previousTime = static_cast<std::int32_t>(known->second);
        state.currentTime = static_cast<std::int32_t>(time);
        state.displayState = differenceFadingIn;
        known->second = time;
    }
    state.displayTimeLeft = state.fadeTime;
}

void CheckPointTimesManager::keep(Moment& moment) {
    TARNWICK_LOCATION("CheckPointTimesManager::keep");
    moment.checkPointTimes = state.checkPointTimes;
    moment.fadeTimer = state.fadeTimer;
    moment.displayState = state.displayState;
    moment.displayTimeLeft = state.displayTimeLeft;
    moment.currentTime = state.currentTime;
    moment.previousTime = state.previousTime;
}

void CheckPointTimesManager::putBack(const Moment& moment, std::uint32_t late) {
    TARNWICK_LOCATION("CheckPointTimesManager::putBack");
    state.checkPointTimes = moment.checkPointTimes;
    state.fadeTimer = moment.fadeTimer;
    state.fadeTimer.shift(late);
    state.displayState = moment.displayState;
    state.displayTimeLeft = moment.displayTimeLeft;
    state.currentTime = moment.currentTime;
    state.previousTime = moment.previousTime;
}

std::string CheckPointTimesManager::formatTime(std::uint32_t milliseconds) {
    TARNWICK_LOCATION("CheckPointTimesManager::formatTime");
    const std::uint32_t ofHour = milliseconds % millisecondsInHour;
    const std::uint32_t ofMinute = ofHour % millisecondsInMinute;
    const std::uint32_t ofSecond = ofMinute % millisecondsInSecond;
    return twoDigits(ofHour / millisecondsInMinute) + ":" + twoDigits(ofMinute / millisecondsInSecond) + ":" +
           twoDigits(ofSecond / millisecondsInHundredth);
}

void CheckPointTimesManager::draw() {
    TARNWICK_LOCATION("CheckPointTimesManager::draw");
    state.fadeTimer.update(); // in every case: what passed while nothing showed is no part of a fade
    if (state.timeFont == nullptr || state.displayState == nothing) {
        return;
    }
    VirtualScreen::begin(1.0f);
    if (state.displayState == timeFadingIn || state.displayState == timeFadingOut) {
        drawTime();
    } else {
        drawDifference();
    }
    passTime();
}

/// The level's time, which runs on while it shows.
void CheckPointTimesManager::drawTime() {
    TARNWICK_LOCATION("CheckPointTimesManager::drawTime");
    drawText(formatTime(static_cast<std::uint32_t>(GameRules::getLevelTime())), state.fontColour);
}

void CheckPointTimesManager::drawDifference() {
    TARNWICK_LOCATION("CheckPointTimesManager::drawDifference");
    // Unsigned: the difference of any two times has a place, as has the amount of any difference.
    const std::uint32_t difference =
        static_cast<std::uint32_t>(state.currentTime) - static_cast<std::uint32_t>(state.previousTime);
    if (static_cast<std::int32_t>(difference) < 0) {
        drawText("- " + formatTime(0u - difference), state.fasterFontColour);
    } else {
        drawText("+ " + formatTime(difference), state.slowerFontColour);
    }
}

void CheckPointTimesManager::drawText(const std::string& text, Colour colour) {
    TARNWICK_LOCATION("CheckPointTimesManager::drawText");
    state.timeFont->drawStringCentered(text, {0.0f, state.yPosition}, {VirtualScreen::width, state.fontSize},
                                       state.fontSize, colour.faded(fadedAlpha()));
}

/// Share of the text's alpha at this moment of the fade; its root makes the fade steep at the dark end.
float CheckPointTimesManager::fadedAlpha() {
    TARNWICK_LOCATION("CheckPointTimesManager::fadedAlpha");
    const bool fadingIn = state.displayState == timeFadingIn || state.displayState == differenceFadingIn;
    const float left = state.displayTimeLeft / state.fadeTime;
    const float alpha = fadingIn ? 1.0f - left : left;
    return alpha > 0.0f ? std::sqrt(alpha) : alpha;
}

/// Takes this frame's time off the fade, and goes on to what shows next when it is over.
void CheckPointTimesManager::passTime() {
    TARNWICK_LOCATION("CheckPointTimesManager::passTime");
    state.displayTimeLeft -= state.fadeTimer.getSeconds();
    if (state.displayTimeLeft > 0.0f) {
        return;
    }
    if (state.displayState == timeFadingIn) {
        state.displayState = timeFadingOut;
        state.displayTimeLeft = state.fadeTime;
    } else if (state.displayState == differenceFadingIn) {
        // Kept: the time left is not renewed, so the difference is gone after one frame that shows nothing.
        state.displayState = differenceFadingOut;
    } else {
        state.displayState = nothing;
    }
}

} // namespace tarnwick
