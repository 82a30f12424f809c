#include "gui/Menu_Options.h"

#include "audio/MusicSystem.h"
#include "audio/SoundSystem.h"
#include "core/LocationStack.h"
#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"
#include "graphics/LevelGeometryRenderer.h"
#include "gui/GuiAnimatedButton.h"
#include "gui/GuiOptionChooser.h"
#include "gui/MenuLayout.h"
#include "gui/SplashScreen.h"

#include <array>

namespace tarnwick {

namespace {

constexpr std::int32_t windowedWidth = 800; ///< Client pixels of a window that leaves full screen.
constexpr std::int32_t windowedHeight = 600;
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
    soundChooser->setCurrentOption(SoundSystem::getVolume() != 0.0f ? on : off); // exactly: off is 0
    musicChooser->setCurrentOption(MusicSystem::getVolume() != 0 ? on : off);
    commitSettings();
}

/// The option that comes nearest to what holds now.
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
    SoundSystem::setVolume(soundChooser->getCurrentOption() == on ? 1.0f : 0.0f);
    MusicSystem::setVolume(musicChooser->getCurrentOption() == on ? loudestMusic : 0);
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
        GLWindow::setFullscreen(false, windowedWidth, windowedHeight);
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

void Menu_Options::commitAndGoBack(GuiWidget& button) {
    TARNWICK_LOCATION("Menu_Options::commitAndGoBack");
    dynamic_cast<Menu_Options&>(*button.parentScreen).commitSettings();
    MenuLayout::goBack(button);
}

} // namespace tarnwick
