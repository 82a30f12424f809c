#include "audio/Sound.h"
#include "audio/SoundSystem.h"
#include "core/Clock.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"
#include "gui/GameMenus.h"
#include "support/LoopbackTest.h"
#include "support/PlayTest.h"

#include <AL/al.h>

#include <cmath>
#include <filesystem>
#include <vector>

namespace tarnwick {

/// A device that is pretended to be lost, and another that takes its place or is not there.
class SoundLossTest : public LoopbackTest {
protected:
    static constexpr const char* lost = "\nThe sound device is lost.";
    static constexpr const char* open = "\nThe sound device is open again.";
    static constexpr std::size_t waveLength = 5'000;

    SoundLossTest()
        : wave(waveSamples(waveLength, 3)) {
        pretence = {};
        pretence.open = SoundSystem::state.calls.open;
        Clock::drive(0);
        data.write("snd/wave.wav", monoWav(wave));
        GLConsole::clear();
    }

    /// From now on the device that is open is not connected.
    static void lose() {
        pretence.gone = SoundSystem::state.device;
        pretence.tries = 0;
        SoundSystem::state.calls.connected = [](ALCdevice_struct* device) { return device != pretence.gone; };
        SoundSystem::state.calls.open = [] {
            ++pretence.tries;
            return pretence.others ? pretence.open() : nullptr;
        };
    }
    /// The lost device can be opened again in its place.
    static void letItReopen() {
        SoundSystem::state.calls.reopen = [](ALCdevice_struct* device) {
            const bool right = device == pretence.gone;
            pretence.gone = nullptr;
            return right;
        };
    }
    float waveAt(std::size_t frame) const { return static_cast<float>(wave[frame % waveLength]) / 32'768.0f; }

    struct Pretence {
        ALCdevice_struct* gone = nullptr;
        ALCdevice_struct* (*open)() = nullptr; ///< What opens devices in truth.
        bool others = true;                    ///< There is another device.
        int tries = 0;                         ///< To open one.
    };
    static Pretence pretence;
    std::vector<std::int16_t> wave;
};

SoundLossTest::Pretence SoundLossTest::pretence;

TEST_F(SoundLossTest, NothingHappensWhileTheDeviceIsThere) {
    SoundSystem::mendLoss();
    EXPECT_EQ(SoundSystem::session(), 1u);
    SoundSystem::shutdown();
    SoundSystem::mendLoss(); // nor without one
    EXPECT_EQ(SoundSystem::session(), 0u);
    EXPECT_EQ(GLConsole::outputText(), "");
}

TEST_F(SoundLossTest, LoopsGoOnFromTheirStartOnAnotherDeviceAndTheConsoleSaysSo) {
    Sound first("snd\\wave.wav");
    Sound second("snd\\wave.wav");
    first.loop();
    heard(700);
    second.synchroniseWith(first);
    second.loop();
    heard(300);
    lose();

    SoundSystem::mendLoss();

    EXPECT_EQ(GLConsole::outputText(), std::string(lost) + open);
    EXPECT_EQ(SoundSystem::session(), 2u);
    EXPECT_EQ(SoundSystem::voicesInUse(), 2u);
    const std::vector<float> line = heard(6'000);
    for (std::size_t i = 0; i < line.size(); ++i) {
        ASSERT_NEAR(line[i], 2.0f * waveAt(i), 2e-6f) << i; // in step
    }
    second.stop();
    EXPECT_NEAR(heard(1)[0], waveAt(6'000), 1e-6f);
    SoundSystem::mendLoss(); // the new one is there
    EXPECT_EQ(pretence.tries, 1);
}

TEST_F(SoundLossTest, WhatPlayedOnceHasEndedAndPlaysAgain) {
    Sound once("snd\\wave.wav");
    once.play();
    heard(500);
    lose();

    SoundSystem::mendLoss();

    EXPECT_FALSE(once.isPlaying());
    EXPECT_EQ(SoundSystem::voicesInUse(), 0u);
    EXPECT_EQ(heard(100), std::vector<float>(100));
    once.play();
    EXPECT_NEAR(heard(101).back(), waveAt(100), 1e-6f);
}

TEST_F(SoundLossTest, AStoppedSoundKeepsItsPlaceVolumeAndPan) {
    Sound stopped("snd\\wave.wav");
    stopped.play();
    heard(1'000);
    stopped.stop();
    stopped.setVolume(0.5f);
    SoundSystem::setVolume(0.75f);
    lose();

    SoundSystem::mendLoss();
    stopped.loop();
    heard(4'096);

    const float gain = std::pow(10.0f, -5.0f * (1.0f - std::pow(0.5f * 0.75f, 0.2f)));
    EXPECT_NEAR(heard(1)[0], gain * waveAt(1'000 + 4'096), 1e-5f);
    EXPECT_EQ(stopped.getVolume(), 0.5f);
    EXPECT_EQ(SoundSystem::getVolume(), 0.75f);
}

TEST_F(SoundLossTest, TheNextSoundOpensAnotherDevice) {
    Sound sound("snd\\wave.wav");
    for (const bool loops : {false, true}) {
        lose();

        if (loops) {
            sound.loop();
        } else {
            sound.play();
        }

        EXPECT_EQ(pretence.tries, 1);
        EXPECT_EQ(sound.isLooping(), loops);
        EXPECT_NEAR(heard(101).back(), waveAt(100), 1e-6f);
        sound.stop();
        sound.rewind();
    }
}

TEST_F(SoundLossTest, ATickOfTheGameOpensAnotherDeviceUnderAMenuToo) {
    GLWindow::createHeadless(800, 600);
    playLevel(data, {}, {});
    lose();
    Game::tick(Game::tickThreshold);
    EXPECT_EQ(pretence.tries, 1);
    GameMenus::setCurrentMenu(menu::inGame);
    lose();
    Game::tick(Game::tickThreshold);
    EXPECT_EQ(pretence.tries, 1);
}

TEST_F(SoundLossTest, WithoutAnotherDeviceItIsTriedAgainEveryThreeSeconds) {
    Sound sound("snd\\wave.wav");
    lose();
    pretence.others = false;

    SoundSystem::mendLoss();
    EXPECT_EQ(GLConsole::outputText(), lost);
    Clock::drive(2'999);
    sound.loop();
    EXPECT_EQ(pretence.tries, 1);
    Clock::drive(3'000);
    SoundSystem::mendLoss();
    EXPECT_EQ(pretence.tries, 2);
    EXPECT_EQ(GLConsole::outputText(), lost); // said once
    Sound made("snd\\wave.wav");              // of meanwhile
    made.setVolume(0.0f);
    made.loop();
    pretence.others = true;
    Clock::drive(6'000);
    SoundSystem::mendLoss();

    EXPECT_EQ(GLConsole::outputText(), std::string(lost) + open);
    EXPECT_TRUE(made.isLooping());
    EXPECT_NEAR(heard(101).back(), waveAt(100), 1e-6f);
    lose(); // and once more, at once
    SoundSystem::mendLoss();
    EXPECT_EQ(GLConsole::outputText(), std::string(lost) + open + lost + open);
}

TEST_F(SoundLossTest, ADeviceThatReopensInItsPlaceKeepsItsVoices) {
    Sound loop("snd\\wave.wav");
    loop.loop();
    heard(1'000);
    lose();
    letItReopen();

    SoundSystem::mendLoss();

    EXPECT_EQ(GLConsole::outputText(), std::string(lost) + open);
    EXPECT_EQ(pretence.tries, 0);
    EXPECT_EQ(SoundSystem::session(), 1u);
    EXPECT_NEAR(heard(101).back(), waveAt(100), 1e-6f);
}

TEST_F(SoundLossTest, ASoundWhoseFileIsGoneIsInertOnTheOtherDevice) {
    Sound loop("snd\\wave.wav");
    loop.loop();
    std::filesystem::remove("snd/wave.wav");
    lose();

    SoundSystem::mendLoss();
    loop.loop();

    EXPECT_FALSE(loop.isPlaying());
    EXPECT_EQ(SoundSystem::voicesInUse(), 0u);
    EXPECT_EQ(heard(100), std::vector<float>(100));
}

TEST_F(SoundLossTest, NothingOfTheOldDeviceStays) {
    Sound loop("snd\\wave.wav");
    loop.loop();
    for (int i = 0; i < 5; ++i) {
        lose();
        SoundSystem::mendLoss();
    }
    int buffers = 0;
    for (ALuint name = 1; name < 1'000; ++name) {
        buffers += alIsBuffer(name) == AL_TRUE ? 1 : 0;
    }
    EXPECT_EQ(buffers, 1);
    EXPECT_EQ(SoundSystem::voicesInUse(), 1u);
    EXPECT_EQ(alGetError(), static_cast<ALenum>(AL_NO_ERROR));
}

} // namespace tarnwick
