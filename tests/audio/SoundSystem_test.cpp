#include "audio/SoundSystem.h"

#include "audio/Sound.h"
#include "support/LoopbackTest.h"

#include <cstdlib>
#include <list>
#include <memory>

namespace tarnwick {

class SoundSystemTest : public ModuleTest {
protected:
    SoundSystemTest() { GLConsole::initialise(); }

    static constexpr const char* failure = "\nError initialising sound subsystem.";
    static constexpr const char* success = "\nSound subsystem initialised successfully.";

    /// Opens the default device where there are only `drivers`. Ends the process: the library chooses its
    /// drivers once in a process. The status is 0 if what was printed and found is as said.
    [[noreturn]] static void openWith(const char* drivers, const char* printed, bool deviceFound) {
        setenv("ALSOFT_DRIVERS", drivers, 1);
        GLConsole::clear();
        SoundSystem::initialise();
        const bool asSaid =
            GLConsole::outputText() == printed && (SoundSystem::session() != 0) == deviceFound;
        const Sound sound("snd\\any.wav");
        SoundSystem::shutdown();
        std::_Exit(asSaid && !sound.isPlaying() ? 0 : 1);
    }

    /// Ends the process: 0 if half of the few voices of a device are left to others by a level's sounds.
    [[noreturn]] static void playOnADeviceOf(std::size_t voices) {
        setenv("ALSOFT_CONF", "few", 1);
        SoundSystem::initialiseLoopback();
        SoundManager::initialise();
        std::list<Sound> sounds;
        for (std::size_t i = 0; i < 2 * voices; ++i) {
            sounds.emplace_back("snd\\tone.wav").leaveVoices();
            sounds.back().loop();
        }
        const std::size_t ofTheLevel = SoundSystem::voicesInUse();
        for (std::size_t i = 0; i < 2 * voices; ++i) {
            sounds.emplace_back("snd\\tone.wav").loop();
        }
        std::_Exit(ofTheLevel == voices / 2 && SoundSystem::voicesInUse() == voices ? 0 : 1);
    }

    DataFolder data;
};

TEST_F(SoundSystemTest, ALevelLeavesHalfTheVoicesOfADeviceThatHasFew) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    data.write("few", "[general]\nsources = 16\n");
    data.write("snd/tone.wav", monoWav(steadySamples(100, 1000)));

    EXPECT_EXIT(playOnADeviceOf(16), testing::ExitedWithCode(0), "");
}

TEST_F(SoundSystemTest, AMachineWithoutADeviceIsToldOnce) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");

    EXPECT_EXIT(openWith("none", failure, false), testing::ExitedWithCode(0), "");
}

TEST_F(SoundSystemTest, ADeviceIsOpenedAndClosed) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");

    EXPECT_EXIT(openWith("null", success, true), testing::ExitedWithCode(0), "");
}

TEST_F(SoundSystemTest, ASecondStartDoesNothing) {
    SoundSystem::initialiseLoopback();
    SoundSystem::setVolume(0.25f);
    GLConsole::clear();

    SoundSystem::initialise();
    SoundSystem::initialiseLoopback();

    EXPECT_EQ(GLConsole::outputText(), "");
    EXPECT_EQ(SoundSystem::getVolume(), 0.25f);
    EXPECT_EQ(SoundSystem::session(), 1u);
}

TEST_F(SoundSystemTest, AnewStartIsAtFullVolume) {
    SoundSystem::initialiseLoopback();
    SoundSystem::setVolume(0.25f);
    SoundSystem::shutdown();

    SoundSystem::initialiseLoopback();

    EXPECT_EQ(SoundSystem::getVolume(), 1.0f);
    EXPECT_EQ(SoundSystem::session(), 2u);
}

TEST_F(SoundSystemTest, TheVolumeIsHeldWithinItsRange) {
    SoundSystem::setVolume(1.5f);
    EXPECT_EQ(SoundSystem::getVolume(), 1.0f);
    SoundSystem::setVolume(-0.5f);
    EXPECT_EQ(SoundSystem::getVolume(), 0.0f);
    SoundSystem::setVolume(std::nanf(""));
    EXPECT_EQ(SoundSystem::getVolume(), 0.0f);
}

TEST_F(SoundSystemTest, ShutdownWithoutADeviceDoesNothing) {
    SoundSystem::shutdown();
    SoundSystem::shutdown();

    EXPECT_EQ(SoundSystem::session(), 0u);
    EXPECT_EQ(SoundSystem::renderLoopback(4), std::vector<float>(8));
}

TEST_F(SoundSystemTest, SoundsThatOutliveTheDeviceAreInertForGood) {
    data.write("snd/tone.wav", monoWav(steadySamples(100, 1000)));
    SoundSystem::initialiseLoopback();
    SoundManager::initialise();
    auto playing = std::make_unique<Sound>("snd\\tone.wav");
    playing->loop();
    const Sound stopped("snd\\tone.wav");

    SoundManager::shutdown();
    SoundSystem::shutdown();
    SoundSystem::initialiseLoopback();
    playing->loop();

    EXPECT_FALSE(playing->isPlaying());
    EXPECT_FALSE(Sound(*playing).isPlaying());
    EXPECT_FALSE(playing->synchroniseWith(stopped));
    EXPECT_EQ(SoundSystem::voicesInUse(), 0u);
    playing.reset(); // touches nothing of the new device
    EXPECT_EQ(SoundSystem::renderLoopback(10), std::vector<float>(20));
}

} // namespace tarnwick
