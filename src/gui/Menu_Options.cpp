#include "gui/Menu_Options.h"

#include "audio/MusicSystem.h"
#include "audio/SoundSystem.h"
#include "core/Comfort.h"
#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "game/KeptSettings.h"
#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"
#include "graphics/LevelGeometryRenderer.h"
#include "gui/GuiAnimatedButton.h"
#include "gui/GuiOptionChooser.h"
#include "gui/MenuLayout.h"
#include "gui/SplashScreen.h"

#include <algorithm>
#include <array>
#include <string>

namespace tarnwick {

namespace {

constexpr std::int32_t loudestMusic = 255;
constexpr std::uint32_t off = 0; ///< Options of the choosers that switch.
constexpr std::uint32_t on = 1;

/// One option of the graphic quality.
struct Quality {
    const char* name;
    std::uint32_t detailLevel; ///< Of `GLTextureManager`: 0 is the finest.
    std::uint32_t samples;     ///< A pixel, against jagged edges.
    std::uint32_t anisotropy;
};
constexpr std::array<Quality, 6> qualities = {{
    {"very low", 2, 1, 1},
    {"low", 1, 1, 1},
    {"normal", 0, 1, 1},
    {"high", 0, 2, 2},
    {"very high", 0, 4, 4},
    {"best", 0, 8, 8},
}};
static_assert(qualities.size() == Menu_Options::qualityCount);

/// From off to on.
std::uint32_t volumeSteps() {
    TARNWICK_LOCATION("Menu_Options::volumeSteps");
    return static_cast<std::uint32_t>(std::max(Comfort::values().volumeSteps, 1.0f));
}

/// The option that comes nearest to a volume of 0 to 1; what is heard is not off.
std::uint32_t stepOf(float volume) {
    TARNWICK_LOCATION("Menu_Options::stepOf");
    if (volume == 0.0f) { // exactly: off is 0
        return off;
    }
    const auto steps = static_cast<float>(volumeSteps());
    return static_cast<std::uint32_t>(std::clamp(round(volume * steps), 1.0f, steps));
}

} // namespace

Menu_Options::Menu_Options() {
    TARNWICK_LOCATION("Menu_Options::Menu_Options");
    const MenuLayout layout("cfg\\menu_options.cfg");
    layout.addLogo(*this);
    layout.addLabel(*this, "fullscreenLabel", "Fullscreen");
    layout.addLabel(*this, "musicLabel", "Music");
    layout.addLabel(*this, "soundLabel", "Sound");
    layout.addLabel(*this, "graphicQualityLabel", "Graphic quality");
    fullscreenChooser = &layout.addChooser(*this, "fullscreenChooser");
    musicChooser = &layout.addChooser(*this, "musicChooser");
    soundChooser = &layout.addChooser(*this, "soundChooser");
    graphicQualityChooser = &layout.addChooser(*this, "graphicQualityChooser");
    for (GuiOptionChooser* const chooser : {fullscreenChooser, musicChooser, soundChooser}) {
        chooser->addOption("off");
        for (std::uint32_t step = 1; chooser != fullscreenChooser && step < volumeSteps(); ++step) {
            chooser->addOption(std::to_string(step * 100 / volumeSteps()) + " %");
        }
        chooser->addOption("on");
    }
    for (const Quality& quality : qualities) {
        graphicQualityChooser->addOption(quality.name);
    }
    linkFocus(layout.addButton<commitAndGoBack>(*this, "backButton"));
    detectSettings();
}

void Menu_Options::linkFocus(GuiWidget& backButton) {
    TARNWICK_LOCATION("Menu_Options::linkFocus");
    const std::array<GuiWidget*, 5> column = {fullscreenChooser, musicChooser, soundChooser,
                                              graphicQualityChooser, &backButton};
    for (std::size_t i = 0; i + 1 < column.size(); ++i) {
        column[i]->addFocusTraversal(key::down, column[i + 1]);
        column[i + 1]->addFocusTraversal(key::up, column[i]);
        column[i]->addFocusTraversal(key::tab, column[i + 1]);
    }
    // Kept: Tab goes round in the choosers, and never reaches the button from which it leads in, too.
    graphicQualityChooser->addFocusTraversal(key::tab, fullscreenChooser);
    backButton.addFocusTraversal(key::tab, fullscreenChooser);
    setDefaultFocusWidget(&backButton);
}

void Menu_Options::reset() {
    TARNWICK_LOCATION("Menu_Options::reset");
    detectSettings();
    GuiScreen::reset();
}

void Menu_Options::detectSettings() {
    TARNWICK_LOCATION("Menu_Options::detectSettings");
    graphicQualityChooser->setCurrentOption(detectQuality());
    fullscreenChooser->setCurrentOption(GLWindow::isFullscreen() ? on : off);
    soundChooser->setCurrentOption(stepOf(SoundSystem::getVolume()));
    musicChooser->setCurrentOption(stepOf(static_cast<float>(MusicSystem::getVolume()) / loudestMusic));
    commitSettings();
}

std::uint32_t Menu_Options::detectQuality() {
    TARNWICK_LOCATION("Menu_Options::detectQuality");
    const std::uint32_t detailLevel = GLTextureManager::getTextureDetailLevel();
    if (detailLevel != 0) {
        return GLTextureManager::coarsestDetailLevel - detailLevel;
    }
    const std::uint32_t samples = GLWindow::getAntiAliasingMode();
    auto quality = static_cast<std::uint32_t>(qualities.size()) - 1;
    while (qualities[quality].samples > 1 && samples < qualities[quality].samples) {
        --quality;
    }
    return quality;
}

void Menu_Options::commitSettings() {
    TARNWICK_LOCATION("Menu_Options::commitSettings");
    commitFullscreen(fullscreenChooser->getCurrentOption() == on);
    const auto steps = static_cast<std::int32_t>(volumeSteps());
    const auto music = static_cast<std::int32_t>(musicChooser->getCurrentOption());
    SoundSystem::setVolume(static_cast<float>(soundChooser->getCurrentOption()) / static_cast<float>(steps));
    MusicSystem::setVolume(loudestMusic * music / steps);
    commitQuality(graphicQualityChooser->getCurrentOption());
}

void Menu_Options::commitFullscreen(bool wanted) {
    TARNWICK_LOCATION("Menu_Options::commitFullscreen");
    if (wanted == GLWindow::isFullscreen()) {
        return;
    }
    if (wanted) {
        GLWindow::setFullscreen(true, GLWindow::getScreenWidth(), GLWindow::getScreenHeight());
    } else {
        const KeptSettings::Window window = KeptSettings::leavingFullscreen();
        GLWindow::setFullscreen(false, window.width, window.height);
    }
}

/// Another number of samples takes another window, into which everything is loaded anew.
void Menu_Options::commitQuality(std::uint32_t index) {
    TARNWICK_LOCATION("Menu_Options::commitQuality");
    const Quality& quality = qualities[index];
    const bool sameDetail = GLTextureManager::getTextureDetailLevel() == quality.detailLevel;
    if (!sameDetail || GLWindow::getAntiAliasingMode() != quality.samples) {
        GLWindow::setAntiAliasingMode(quality.samples);
        SplashScreen::run();
        if (sameDetail) {
            GLTextureManager::reloadAllTextures();
        } else {
            GLTextureManager::setTextureDetailLevel(quality.detailLevel);
        }
        LevelGeometryRenderer::initialise();
        SplashScreen::stop();
    }
    GLTextureManager::setAnisotropicFilteringLevel(quality.anisotropy);
}

void Menu_Options::startWithQuality(std::uint32_t index) {
    TARNWICK_LOCATION("Menu_Options::startWithQuality");
    const Quality& quality = qualities[index];
    GLWindow::setAntiAliasingMode(quality.samples);
    if (GLTextureManager::getTextureDetailLevel() == quality.detailLevel) {
        GLTextureManager::reloadAllTextures();
    } else {
        GLTextureManager::setTextureDetailLevel(quality.detailLevel);
    }
    GLTextureManager::setAnisotropicFilteringLevel(quality.anisotropy);
}

void Menu_Options::commitAndGoBack(GuiWidget& button) {
    TARNWICK_LOCATION("Menu_Options::commitAndGoBack");
    dynamic_cast<Menu_Options&>(*button.parentScreen).commitSettings();
    MenuLayout::goBack(button);
}

} // namespace tarnwick
