#include "game/GameRules.h"

#include "audio/GameSfx_Ice.h"
#include "audio/GameSfx_Steam.h"
#include "audio/GameSfx_Water.h"
#include "audio/MusicSystem.h"
#include "audio/SoundSourceManager.h"
#include "core/Comfort.h"
#include "core/CommandRegistry.h"
#include "core/ConfigFile.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "game/Camera.h"
#include "game/CheckPointTimesManager.h"
#include "game/Game.h"
#include "graphics/VirtualScreen.h"
#include "gui/GameMenus.h"
#include "level/Level.h"
#include "mechanisms/TriggerHandlers.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"

#include <GL/gl.h>

#include <algorithm>
#include <cstdio>
#include <limits>

namespace tarnwick {

namespace {

constexpr float returnRadius = 10.0f; ///< World units: the disc in which water comes back.
constexpr float shortestFinish = 0.001f;

constexpr float timeScoreRange = 435'000.0f; ///< From the worst to the best time.
constexpr std::uint32_t smallestTimeScore = 1000;
constexpr float fullWater = 128.0f; ///< Particles that give `fullWaterScore`.
constexpr float fullWaterScore = 64'000.0f;

constexpr std::int32_t millisecondsInSecond = 1000;
constexpr std::int32_t millisecondsInMinute = 60 * millisecondsInSecond;
constexpr std::int32_t millisecondsInHour = 60 * millisecondsInMinute;

/// Particles in `share` of `count`, cut to a whole number; at least 1.
std::uint32_t particlesIn(float share, std::uint32_t count) {
    TARNWICK_LOCATION("GameRules::particlesIn");
    constexpr float beyondAll = 4294967296.0f; // 2^32
    const float particles = static_cast<float>(count) * share;
    if (particles >= beyondAll) {
        return std::numeric_limits<std::uint32_t>::max();
    }
    return particles < 1.0f ? 1 : static_cast<std::uint32_t>(particles);
}

void passCheckPoint(Trigger* trigger, Vector2 place) {
    TARNWICK_LOCATION("GameRules::passCheckPoint");
    GameRules::setCheckPoint(place);
    CheckPointTimesManager::recordTime(trigger, static_cast<std::uint32_t>(GameRules::getLevelTime()));
}

/// Set before `main`: triggers reach as far in every program that has these rules.
[[maybe_unused]] const bool reachSet = [] {
    setTriggerReach({.playSounds = SoundSourceManager::playSounds,
                     .stopSounds = SoundSourceManager::stopSounds,
                     .zoomCamera = Camera::zoomOut,
                     .shakeCamera = Camera::shake,
                     .countAtLevelEnd = GameRules::incrementEndOfLevelTriggerParticleCount,
                     .passCheckPoint = passCheckPoint});
    return true;
}();

} // namespace

GameRules::State GameRules::state;

constexpr CommandRow GameRules::commands[] = {
    {"TimePrint", CommandVariable{&state.timePrintEnabled, "GameRules::conCmdTimePrint"}},
};

void GameRules::initialise() {
    TARNWICK_LOCATION("GameRules::initialise");
    const Vector2 start = Level::waterStart();
    state.checkPointX = start.x;
    state.checkPointY = start.y;
    state.checkPointParticleCount = startParticles;
    state.levelEnding = false;
    state.timePrintEnabled = false;
    state.endOfLevelParticleCount = 0;
    readConfiguration();
    state.finishTimeLeft = state.finishAnimationTime;
    CommandRegistry::add(commands);
    state.levelTimer.reset();
}

void GameRules::readConfiguration() {
    TARNWICK_LOCATION("GameRules::readConfiguration");
    const ConfigFile config("cfg\\game.cfg");
    state.finishAnimationTime = std::max(config.getVarAsFloat("finishAnimationTime"), shortestFinish);
    state.finishWaterVolume = config.getVarAsFloat("finishWaterVolume");
    if (state.finishAnimation == nullptr) {
        const std::string frames = config.getVarAsString("finishAnimationFrames");
        state.finishAnimation = std::make_unique<GuiAnimatedButton>();
        state.finishAnimation->setFramesOutOfFocus(frames);
        state.finishAnimation->setFramesInFocus(frames);
        state.finishAnimation->setFramesClicked(frames);
        state.finishAnimation->framesPerSecond = config.getVarAsFloat("finishAnimationFrameRate");
    }
    if (state.finishSound == nullptr) {
        state.finishSound = std::make_unique<Sound>(config.getVarAsString("finishSound"));
    }
    if (state.deadSound == nullptr) {
        state.deadSound = std::make_unique<Sound>(config.getVarAsString("deadSound"));
    }
}

void GameRules::shutdown() {
    TARNWICK_LOCATION("GameRules::shutdown");
    state.finishAnimation.reset();
    state.deadSound.reset();
    state.finishSound.reset();
    CommandRegistry::remove(commands);
    state.endOfLevelParticleCount = 0;
}

void GameRules::update(float dt) {
    TARNWICK_LOCATION("GameRules::update");
    if (!state.levelEnding) { // the clock stops at the moment the finish begins
        if (Camera::getState() == Camera::movingToWaypoint) {
            state.levelTimer.unpause();
        } else {
            state.levelTimer.update();
        }
    }
    if (ParticleManager::particles.empty() && ParticleGroupMover::groups.empty()) {
        restoreLostWater();
    }
    if (!state.levelEnding) {
        lookForFinish();
    } else if (state.finishTimeLeft > 0.0f) {
        runFinish(dt);
    }
}

/// The loss costs the time of the flight back and the water lost since the check point, and nothing else.
void GameRules::restoreLostWater() {
    TARNWICK_LOCATION("GameRules::restoreLostWater");
    if (state.deadSound != nullptr) { // it is when no level could be loaded yet
        state.deadSound->rewind();
        state.deadSound->setVolume(1.0f);
        state.deadSound->play();
    }
    ParticleManager::createParticles({state.checkPointX, state.checkPointY}, returnRadius,
                                     static_cast<std::int32_t>(state.checkPointParticleCount));
    Camera::setState(Camera::movingToWaypoint);
}

void GameRules::lookForFinish() {
    TARNWICK_LOCATION("GameRules::lookForFinish");
    const std::uint32_t needed = particlesIn(state.finishWaterVolume, getParticleCount());
    const bool enough = state.endOfLevelParticleCount >= needed;
    state.endOfLevelParticleCount = 0; // what came through in earlier ticks does not count
    if (enough) {
        state.levelEnding = true;
        state.finishTimeLeft = state.finishAnimationTime;
        if (state.finishSound != nullptr) {
            state.finishSound->rewind();
            state.finishSound->play();
        }
    }
}

void GameRules::runFinish(float dt) {
    TARNWICK_LOCATION("GameRules::runFinish");
    state.finishTimeLeft -= dt;
    if (state.finishTimeLeft <= 0.0f) {
        SoundSourceManager::pauseAllSounds();
        GameSfx_Ice::silence(); // the ticks from here on have no sound that could
        GameSfx_Water::silence();
        GameSfx_Steam::silence();
        MusicSystem::stop();
        GameMenus::setCurrentMenu(menu::levelFinished);
    }
}

void GameRules::unpauseLevelTimer() {
    TARNWICK_LOCATION("GameRules::unpauseLevelTimer");
    state.levelTimer.unpause();
}

bool GameRules::gameIsFinished() {
    TARNWICK_LOCATION("GameRules::gameIsFinished");
    return state.levelEnding && state.finishTimeLeft <= 0.0f;
}

std::uint32_t GameRules::getParticleCount() {
    TARNWICK_LOCATION("GameRules::getParticleCount");
    std::size_t count = ParticleManager::particles.size();
    for (const ParticleGroup& group : ParticleGroupMover::groups) {
        count += group.members.size();
    }
    return static_cast<std::uint32_t>(count);
}

void GameRules::incrementEndOfLevelTriggerParticleCount(std::int32_t n) {
    TARNWICK_LOCATION("GameRules::incrementEndOfLevelTriggerParticleCount");
    state.endOfLevelParticleCount += static_cast<std::uint32_t>(n);
}

void GameRules::setCheckPoint(Vector2 place) {
    TARNWICK_LOCATION("GameRules::setCheckPoint");
    state.checkPointX = place.x;
    state.checkPointY = place.y;
    state.checkPointParticleCount = getParticleCount();
}

void GameRules::keep(Moment& moment) {
    TARNWICK_LOCATION("GameRules::keep");
    moment.levelTimer = state.levelTimer;
    moment.endOfLevelParticleCount = state.endOfLevelParticleCount;
    moment.levelEnding = state.levelEnding;
    moment.finishTimeLeft = state.finishTimeLeft;
    moment.checkPointParticleCount = state.checkPointParticleCount;
    moment.checkPointX = state.checkPointX;
    moment.checkPointY = state.checkPointY;
}

void GameRules::putBack(const Moment& moment, std::uint32_t late) {
    TARNWICK_LOCATION("GameRules::putBack");
    state.levelTimer = moment.levelTimer;
    state.levelTimer.shift(late);
    state.endOfLevelParticleCount = moment.endOfLevelParticleCount;
    state.levelEnding = moment.levelEnding;
    state.finishTimeLeft = moment.finishTimeLeft;
    state.checkPointParticleCount = moment.checkPointParticleCount;
    state.checkPointX = moment.checkPointX;
    state.checkPointY = moment.checkPointY;
}

std::uint32_t GameRules::getTimeScore() {
    TARNWICK_LOCATION("GameRules::getTimeScore");
    constexpr auto range = static_cast<float>(worstLevelTime - bestLevelTime);
    const float late = (static_cast<float>(getLevelTime()) - static_cast<float>(bestLevelTime)) / range;
    const float kept = 1.0f - std::clamp(late, 0.0f, 1.0f);
    return static_cast<std::uint32_t>(kept * timeScoreRange) + smallestTimeScore;
}

std::uint32_t GameRules::getWaterScore() {
    TARNWICK_LOCATION("GameRules::getWaterScore");
    return static_cast<std::uint32_t>(static_cast<float>(getParticleCount()) / fullWater * fullWaterScore);
}

std::uint32_t GameRules::getTotalScore() {
    TARNWICK_LOCATION("GameRules::getTotalScore");
    return getTimeScore() + getWaterScore();
}

void GameRules::draw() {
    TARNWICK_LOCATION("GameRules::draw");
    VirtualScreen::begin(1.0f);
    const bool stays = Comfort::values().keepProportions; // beside the menu of the scores, which is no wider
    if (state.levelEnding && (state.finishTimeLeft > 0.0f || stays) && state.finishAnimation != nullptr) {
        drawFinish();
    }
    if (state.timePrintEnabled) {
        printTime();
    }
}

/// In the middle of the view, which in a wide window is wider than the screen of the menus. Where that keeps
/// its shape the picture lies in the middle of the window, and grows until it covers it.
void GameRules::drawFinish() {
    TARNWICK_LOCATION("GameRules::drawFinish");
    GuiAnimatedButton& picture = *state.finishAnimation;
    picture.setColor(1.0f, 1.0f, 1.0f,
                     1.0f - std::max(state.finishTimeLeft, 0.0f) / state.finishAnimationTime);
    picture.setPosition(0, 0);
    if (!Comfort::values().keepProportions) {
        picture.setSize(static_cast<std::int32_t>(Game::getViewAreaX()),
                        static_cast<std::int32_t>(Game::getViewAreaY()));
        picture.windowRedrawing();
        return;
    }
    constexpr Vector2 middle{VirtualScreen::width / 2.0f, VirtualScreen::height / 2.0f};
    const Box window = VirtualScreen::window();
    float scale = 1.0f;
    if (const GLTexture* const frame = picture.getCurrentFrame(); frame != nullptr) {
        scale = std::max({scale, (window.maxX - window.minX) / static_cast<float>(frame->width),
                          (window.maxY - window.minY) / static_cast<float>(frame->height)});
    }
    picture.setSize(static_cast<std::int32_t>(VirtualScreen::width),
                    static_cast<std::int32_t>(VirtualScreen::height));
    glPushMatrix();
    glTranslatef(middle.x, middle.y, 0.0f);
    glScalef(scale, scale, 1.0f);
    glTranslatef(-middle.x, -middle.y, 0.0f);
    picture.windowRedrawing();
    glPopMatrix();
}

/// Hours, minutes, seconds and hundredths.
void GameRules::printTime() {
    TARNWICK_LOCATION("GameRules::printTime");
    const std::int32_t time = getLevelTime();
    char text[64];
    std::snprintf(text, sizeof text, "\n%01i::%2i::%3i.%4i", time / millisecondsInHour,
                  time % millisecondsInHour / millisecondsInMinute,
                  time % millisecondsInMinute / millisecondsInSecond, time % millisecondsInSecond / 10);
    Log::print(text);
}

} // namespace tarnwick
