#include "game/KeptSettings.h"

#include "audio/MusicSystem.h"
#include "audio/SoundSystem.h"
#include "core/Comfort.h"
#include "core/ConfigFile.h"
#include "core/DataFiles.h"
#include "core/FileReplacement.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "graphics/GLWindow.h"
#include "gui/Menu_Options.h"

#include <algorithm>
#include <string>

namespace tarnwick {

namespace {

constexpr const char* fileName = "cfg\\kept.cfg";
constexpr std::int32_t farthest = 32'767; ///< Of a screen position.
constexpr std::int32_t loudestMusic = 255;

} // namespace

KeptSettings::State KeptSettings::state;

void KeptSettings::initialise() {
    TARNWICK_LOCATION("KeptSettings::initialise");
    state = {};
    if (!Comfort::values().keepSettings || !DataFiles::open(fileName).is_open()) {
        return; // asked first: the reader would print that there is none
    }
    const ConfigFile config(fileName);
    if (config.variableExists("windowWidth") && config.variableExists("windowHeight")) {
        Window kept;
        kept.x = std::clamp(config.getVarAsInt("windowX"), -farthest, farthest);
        kept.y = std::clamp(config.getVarAsInt("windowY"), -farthest, farthest);
        kept.width = std::clamp(config.getVarAsInt("windowWidth"), smallestSide, largestSide);
        kept.height = std::clamp(config.getVarAsInt("windowHeight"), smallestSide, largestSide);
        kept.fullscreen = config.getVarAsBool("fullscreen");
        state.window = kept;
        state.seen = kept;
    }
    if (config.variableExists("music")) {
        state.music = std::clamp(config.getVarAsInt("music"), 0, loudestMusic);
    }
    if (config.variableExists("sound")) {
        state.sound = std::clamp(config.getVarAsFloat("sound"), 0.0f, 1.0f);
    }
    if (config.variableExists("quality")) {
        state.quality = config.getVarAsInt("quality");
    }
}

void KeptSettings::restoreVolumes() {
    TARNWICK_LOCATION("KeptSettings::restoreVolumes");
    if (state.music) {
        MusicSystem::setVolume(*state.music);
    }
    if (state.sound) {
        SoundSystem::setVolume(*state.sound);
    }
}

std::optional<std::uint32_t> KeptSettings::quality() {
    TARNWICK_LOCATION("KeptSettings::quality");
    if (!state.quality || *state.quality < 0 || *state.quality >= Menu_Options::qualityCount) {
        return {};
    }
    return static_cast<std::uint32_t>(*state.quality);
}

void KeptSettings::noteWindow() {
    TARNWICK_LOCATION("KeptSettings::noteWindow");
    if (!Comfort::values().keepSettings || !GLWindow::exists()) {
        return;
    }
    state.windowSeen = true;
    state.seen.fullscreen = GLWindow::isFullscreen();
    if (state.seen.fullscreen || GLWindow::isMinimised() || GLWindow::isMaximised()) {
        return;
    }
    state.seen.x = GLWindow::getX();
    state.seen.y = GLWindow::getY();
    state.seen.width = GLWindow::getClientWidth();
    state.seen.height = GLWindow::getClientHeight();
}

KeptSettings::Window KeptSettings::leavingFullscreen() {
    TARNWICK_LOCATION("KeptSettings::leavingFullscreen");
    return state.seen;
}

void KeptSettings::save() {
    TARNWICK_LOCATION("KeptSettings::save");
    if (!Comfort::values().keepSettings || !state.windowSeen) {
        return;
    }
    const auto line = [](const char* key, const std::string& value) {
        return std::string(key) + " = " + value + "\n";
    };
    std::string text = "Written by the game at its end.\n";
    text += line("windowX", std::to_string(state.seen.x)) + line("windowY", std::to_string(state.seen.y));
    text += line("windowWidth", std::to_string(state.seen.width));
    text += line("windowHeight", std::to_string(state.seen.height));
    text += line("fullscreen", state.seen.fullscreen ? "TRUE" : "FALSE");
    if (MusicSystem::hasDevice()) {
        text += line("music", std::to_string(MusicSystem::getVolume()));
    } else if (state.music) { // a run without a device has no volume
        text += line("music", std::to_string(*state.music));
    }
    text += line("sound", std::to_string(SoundSystem::getVolume()));
    text += line("quality", std::to_string(Menu_Options::detectQuality()));
    if (!replaceFile(DataFiles::find(fileName), text)) {
        Log::print("\nUnable to write " + std::string(fileName));
    }
}

} // namespace tarnwick
