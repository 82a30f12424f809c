#include "game/KeptSettings.h"

#include "audio/MusicSystem.h"
#include "audio/SoundSystem.h"
#include "core/Comfort.h"
#include "core/Log.h"
#include "graphics/GLWindow.h"
#include "gui/Menu_Options.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <SDL.h>

#include <filesystem>
#include <string>

namespace tarnwick {

class KeptSettingsTest : public ModuleTest {
protected:
    void keep(bool on) const {
        folder.write("cfg/comfort.cfg", on ? "keepSettings = TRUE" : "");
        Comfort::initialise();
        KeptSettings::initialise();
    }
    /// The next run of the program.
    void startAgain() const {
        ModuleReset::all();
        keep(true);
    }
    /// Without a device there is no volume.
    static void openMusic() {
        SDL_SetHintWithPriority(SDL_HINT_AUDIODRIVER, "dummy", SDL_HINT_OVERRIDE);
        MusicSystem::initialise();
    }
    bool written() const { return std::filesystem::exists(folder.path() / "cfg" / "kept.cfg"); }

    const DataFolder folder;
};

/// Finds a plain game that writes a file, or a run that ended before its window and writes nonsense.
TEST_F(KeptSettingsTest, WithoutTheComfortOrAWindowNothingIsWritten) {
    keep(false);
    GLWindow::createHeadless(800, 600);
    KeptSettings::noteWindow();
    KeptSettings::save();
    EXPECT_FALSE(written());
    GLWindow::close();

    keep(true);
    KeptSettings::noteWindow();
    KeptSettings::save();
    EXPECT_FALSE(written());
    EXPECT_FALSE(KeptSettings::window().has_value());
    EXPECT_EQ(Log::outputText(), "");
}

/// Finds a setting that is lost, or comes back as another one.
TEST_F(KeptSettingsTest, TheNextRunStartsAsThisOneEnded) {
    keep(true);
    GLWindow::createHeadless(640, 480);
    GLWindow::setPosition(30, 40);
    openMusic();
    MusicSystem::setVolume(64);
    SoundSystem::setVolume(0.25f);
    KeptSettings::noteWindow();
    GLWindow::close(); // as a player does
    KeptSettings::noteWindow();
    KeptSettings::save();

    startAgain();
    openMusic();
    KeptSettings::restoreVolumes();

    ASSERT_TRUE(KeptSettings::window().has_value());
    EXPECT_EQ(KeptSettings::window()->width, 640);
    EXPECT_EQ(KeptSettings::window()->height, 480);
    EXPECT_EQ(KeptSettings::window()->x, 30);
    EXPECT_EQ(KeptSettings::window()->y, 40);
    EXPECT_FALSE(KeptSettings::window()->fullscreen);
    EXPECT_EQ(MusicSystem::getVolume(), 64);
    EXPECT_EQ(SoundSystem::getVolume(), 0.25f);
    EXPECT_EQ(KeptSettings::quality(), 2u) << "normal: one sample and all details";
}

/// Finds full screen that forgets the window to which it leads back.
TEST_F(KeptSettingsTest, LeavingFullScreenGivesTheWindowThatWasThereBefore) {
    keep(true);
    EXPECT_EQ(KeptSettings::leavingFullscreen().width, 800);
    folder.write("cfg/kept.cfg", "windowWidth = 640 windowHeight = 480 fullscreen = TRUE");

    startAgain();

    EXPECT_TRUE(KeptSettings::window()->fullscreen);
    EXPECT_EQ(KeptSettings::leavingFullscreen().width, 640);
}

/// Finds music that is off for good because one run found no device.
TEST_F(KeptSettingsTest, ARunWithoutADeviceKeepsTheVolumeOfTheMusic) {
    folder.write("cfg/kept.cfg", "music = 128");
    keep(true);
    GLWindow::createHeadless(640, 480);
    KeptSettings::restoreVolumes();
    KeptSettings::noteWindow();
    KeptSettings::save();

    startAgain();
    openMusic();
    KeptSettings::restoreVolumes();

    EXPECT_EQ(MusicSystem::getVolume(), 128);
}

/// Finds a window that nobody can see, or a quality that there is not, taken from a damaged file.
TEST_F(KeptSettingsTest, WhatCannotBeIsBroughtIntoRangeOrLeft) {
    folder.write("cfg/kept.cfg", "windowWidth = 3 windowHeight = 999999 windowX = 9999999 music = 900 "
                                 "sound = -4 quality = 17");

    openMusic();
    keep(true);
    KeptSettings::restoreVolumes();

    EXPECT_EQ(KeptSettings::window()->width, KeptSettings::smallestSide);
    EXPECT_EQ(KeptSettings::window()->height, KeptSettings::largestSide);
    EXPECT_EQ(MusicSystem::getVolume(), 255);
    EXPECT_EQ(SoundSystem::getVolume(), 0.0f);
    EXPECT_FALSE(KeptSettings::quality().has_value());
}

} // namespace tarnwick
