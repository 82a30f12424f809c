#include "audio/MusicSystem.h"

#include "console/GLConsole.h"
#include "support/ConsoleAnswer.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <SDL.h>
#include <SDL_mixer.h>
#include <sys/stat.h>

#include <condition_variable>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <mutex>
#include <random>

namespace tarnwick {

namespace {

constexpr double millisecondsInBuffer = 1024.0 / 44.1;
constexpr int buffersAhead = 6; ///< By which a decoder may run ahead of what was mixed.

/// Most milliseconds of a file that can have gone into `buffers` of the mix.
double mostPlayedIn(int buffers) {
    return static_cast<double>(buffers + buffersAhead) * millisecondsInBuffer;
}

/// Listens to the mix: counts its buffers and looks at the samples of the last one. Time in these tests is a
/// count of buffers and not the wall clock's.
class MixListener {
public:
    MixListener() { Mix_SetPostMix(mixed, this); }
    ~MixListener() { Mix_SetPostMix(nullptr, nullptr); }
    MixListener(const MixListener&) = delete;
    MixListener& operator=(const MixListener&) = delete;

    /// Waits until `buffers` more have been mixed.
    void wait(int buffers) {
        std::unique_lock lock(mutex);
        const int wanted = count + buffers;
        changed.wait(lock, [&] { return count >= wanted; });
    }
    /// Buffers mixed so far.
    int buffers() {
        const std::scoped_lock lock(mutex);
        return count;
    }
    /// Loudest sample of the last buffer, 0 to 32768.
    int loudest() {
        const std::scoped_lock lock(mutex);
        return peak;
    }

private:
    static void mixed(void* listener, Uint8* bytes, int length) {
        auto& self = *static_cast<MixListener*>(listener);
        const auto* const samples = reinterpret_cast<const Sint16*>(bytes); // the device's format
        const std::scoped_lock lock(self.mutex);
        self.peak = 0;
        for (int i = 0; i < length / 2; ++i) {
            self.peak = std::max(self.peak, std::abs(static_cast<int>(samples[i])));
        }
        ++self.count;
        self.changed.notify_all();
    }

    std::mutex mutex;
    std::condition_variable changed;
    int count = 0;
    int peak = 0;
};

} // namespace

/// A device that nobody hears, and two files: `quarter`, a quarter of a second of a tone, and `music`, the
/// two minutes of the game's own.
class MusicSystemTest : public ModuleTest {
protected:
    MusicSystemTest() {
        useDriver("dummy");
        data.write("music/quarter.ogg", contentOf(TARNWICK_SOURCE_DIR "/tests/audio/quarter_second.ogg"));
    }
    ~MusicSystemTest() override { SDL_ResetHint(SDL_HINT_AUDIODRIVER); }

    static constexpr const char* quarter = "music\\quarter.ogg";
    static constexpr const char* music = TARNWICK_SOURCE_DIR "/data/music/play.ogg";

    static void useDriver(const char* driver) {
        SDL_SetHintWithPriority(SDL_HINT_AUDIODRIVER, driver, SDL_HINT_OVERRIDE);
    }
    static std::string contentOf(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static MusicSystem::State& state() { return MusicSystem::state; }
    /// Milliseconds into the file at which the music now stands.
    static double position() {
        MusicSystem::pause();
        return static_cast<double>(state().pausedPosition);
    }

    DataFolder data;
};

TEST_F(MusicSystemTest, InitialiseTellsThatItWorked) {
    MusicSystem::initialise();

    EXPECT_EQ(GLConsole::outputText(), "\nMusic subsystem initialised successfully.");
    EXPECT_EQ(answerTo("MusicSystemInitialised"), "\nMusicSystemInitialised is true");
    EXPECT_EQ(MusicSystem::getVolume(), 255);
}

TEST_F(MusicSystemTest, WithoutADeviceEveryOperationIsWithoutEffect) {
    useDriver("no such driver");

    MusicSystem::initialise();

    EXPECT_EQ(GLConsole::outputText(), "\nError initialising music subsystem.");
    EXPECT_FALSE(MusicSystem::play(quarter, true));
    EXPECT_FALSE(MusicSystem::pause());
    EXPECT_FALSE(MusicSystem::resume());
    EXPECT_TRUE(MusicSystem::stop());
    MusicSystem::setVolume(100);
    EXPECT_EQ(MusicSystem::getVolume(), 0);
    EXPECT_EQ(answerTo("MusicVolume 100"), "\nMusicVolume is now 0");
    EXPECT_EQ(answerTo("MusicSystemInitialised"), "\nMusicSystemInitialised is false");
    EXPECT_EQ(answerTo("MusicPlay music\\quarter.ogg"), "\nFailed to open file.");
}

TEST_F(MusicSystemTest, ShutdownRemovesTheCommandsAlsoWithoutADevice) {
    useDriver("no such driver");
    MusicSystem::initialise();

    MusicSystem::shutdown();

    EXPECT_TRUE(GLConsole::commands().empty());
}

TEST_F(MusicSystemTest, AfterShutdownItCanStartAgain) {
    MusicSystem::initialise();
    MusicSystem::play(quarter, true);
    MusicSystem::setVolume(10);
    MusicSystem::shutdown();
    EXPECT_FALSE(MusicSystem::play(quarter, true));

    MusicSystem::initialise();

    EXPECT_TRUE(MusicSystem::play(quarter, true));
    EXPECT_EQ(MusicSystem::getVolume(), 255);
}

TEST_F(MusicSystemTest, AFileIsFoundWhateverItsCaseAndHeard) {
    MusicSystem::initialise();
    MixListener mix;

    EXPECT_TRUE(MusicSystem::play("MUSIC\\Quarter.OGG", true));
    mix.wait(3);

    EXPECT_GT(mix.loudest(), 1000);
}

TEST_F(MusicSystemTest, ALoopGoesOnBehindItsEnd) {
    MusicSystem::initialise();
    MixListener mix;

    MusicSystem::play(quarter, true);
    mix.wait(40); // nearly four times the file

    EXPECT_GT(mix.loudest(), 1000);
    EXPECT_LE(position(), 250.0 + millisecondsInBuffer);
}

TEST_F(MusicSystemTest, WithoutALoopItEndsAndStaysOpen) {
    MusicSystem::initialise();
    MixListener mix;

    MusicSystem::play(quarter, false);
    mix.wait(20);

    EXPECT_EQ(mix.loudest(), 0);
    EXPECT_NE(state().stream, nullptr);
    EXPECT_TRUE(MusicSystem::pause());
}

TEST_F(MusicSystemTest, ANewFileTakesTheOldOnesPlace) {
    MusicSystem::initialise();
    MusicSystem::play(music, true);

    EXPECT_TRUE(MusicSystem::play(quarter, false));

    EXPECT_LT(Mix_MusicDuration(state().stream), 0.3);
}

TEST_F(MusicSystemTest, StopClosesTheStreamAndIsTrueWithoutOne) {
    MusicSystem::initialise();
    MixListener mix;
    MusicSystem::play(music, true);

    EXPECT_TRUE(MusicSystem::stop());
    mix.wait(2);

    EXPECT_EQ(mix.loudest(), 0);
    EXPECT_EQ(state().stream, nullptr);
    EXPECT_TRUE(MusicSystem::stop());
    EXPECT_FALSE(MusicSystem::pause());
    EXPECT_FALSE(MusicSystem::resume());
}

TEST_F(MusicSystemTest, APausedFileIsSilentAndGoesOnWhereItStood) {
    MusicSystem::initialise();
    MixListener mix;
    MusicSystem::play(music, true);
    mix.wait(12);

    const double kept = position();
    mix.wait(2);
    const int silence = mix.loudest();
    const int before = mix.buffers();
    const bool resumed = MusicSystem::resume();
    mix.wait(2);
    const double after = position();

    EXPECT_GE(kept, 12.0 * millisecondsInBuffer);
    EXPECT_EQ(silence, 0);
    EXPECT_TRUE(resumed);
    EXPECT_GE(after, kept);
    EXPECT_LE(after, kept + mostPlayedIn(mix.buffers() - before));
}

TEST_F(MusicSystemTest, APositionFarInTheFileComesBack) {
    MusicSystem::initialise();
    MixListener mix;
    MusicSystem::play(music, true);
    MusicSystem::pause();
    state().pausedPosition = 90'500;
    const int before = mix.buffers();

    MusicSystem::resume();

    const double reached = position();
    EXPECT_GE(reached, 90'500.0 - 1.0); // a position is cut to whole milliseconds
    EXPECT_LE(reached, 90'500.0 + mostPlayedIn(mix.buffers() - before));
}

TEST_F(MusicSystemTest, AStreamThatHasLoopedGoesOnWhereItStood) {
    MusicSystem::initialise();
    MixListener mix;
    MusicSystem::play(quarter, true);
    mix.wait(15); // a third into the second round
    const double kept = position();

    MusicSystem::resume();
    mix.wait(30);

    EXPECT_LE(kept, 250.0);
    EXPECT_GT(mix.loudest(), 1000); // it still loops
}

TEST_F(MusicSystemTest, APositionBehindTheEndIsHeldAtTheEnd) {
    MusicSystem::initialise();
    MixListener mix;
    MusicSystem::play(quarter, true);
    state().pausedPosition = 4'000'000'000;

    EXPECT_TRUE(MusicSystem::resume());
    mix.wait(20);

    EXPECT_GT(mix.loudest(), 1000);
    EXPECT_LE(position(), 250.0 + millisecondsInBuffer);
}

TEST_F(MusicSystemTest, ResumeWithoutAPauseJumpsToTheStart) {
    MusicSystem::initialise();
    MixListener mix;
    MusicSystem::play(music, true);
    mix.wait(20);
    const int before = mix.buffers();

    MusicSystem::resume();

    EXPECT_LE(position(), mostPlayedIn(mix.buffers() - before));
}

TEST_F(MusicSystemTest, AMissingFileStopsTheMusicAndLeavesNone) {
    MusicSystem::initialise();
    MusicSystem::play(music, true);

    EXPECT_FALSE(MusicSystem::play("music\\missing.ogg", true));

    EXPECT_FALSE(MusicSystem::pause());
    EXPECT_EQ(Mix_PlayingMusic(), 0);
}

TEST_F(MusicSystemTest, AnEmptyNameLeavesTheMusicButForgetsThePause) {
    MusicSystem::initialise();
    MusicSystem::play(music, true);
    state().pausedPosition = 1000;

    EXPECT_FALSE(MusicSystem::play("", true));

    EXPECT_EQ(state().pausedPosition, 0u);
    EXPECT_EQ(Mix_PlayingMusic(), 1);
}

TEST_F(MusicSystemTest, WhatIsNoMusicIsNotOpened) {
    MusicSystem::initialise();
    const std::string whole = contentOf(music);
    data.write("music/empty.ogg", "");
    data.write("music/text.ogg",
               "no music at all, and a good deal of it. And still more, to fill the header.");
    data.write("music/head.ogg", whole.substr(0, 40)); // cut in the first header
    std::filesystem::create_directory(data.path() / "music/folder.ogg");
    ASSERT_EQ(mkfifo((data.path() / "music/pipe.ogg").c_str(), 0600), 0);

    for (const char* name : {"empty", "text", "head", "folder", "pipe"}) {
        EXPECT_FALSE(MusicSystem::play(std::string("music\\") + name + ".ogg", true)) << name;
    }
}

TEST_F(MusicSystemTest, AFileThatIsCutShortPlaysAsFarAsItGoesAndLoops) {
    MusicSystem::initialise();
    const std::string whole = contentOf(TARNWICK_SOURCE_DIR "/tests/audio/quarter_second.ogg");
    data.write("music/cut.ogg", whole.substr(0, whole.size() - 300));
    MixListener mix;

    EXPECT_TRUE(MusicSystem::play("music\\cut.ogg", true));
    mix.wait(30);

    EXPECT_NE(state().stream, nullptr);
    EXPECT_TRUE(MusicSystem::stop());
}

TEST_F(MusicSystemTest, TheVolumeIsHeardAndOutlivesTheFile) {
    MusicSystem::initialise();
    MixListener mix;
    MusicSystem::play(quarter, true);
    mix.wait(3);
    const int full = mix.loudest();

    MusicSystem::setVolume(64);
    mix.wait(3);
    const int quarterOfFull = mix.loudest();
    MusicSystem::setVolume(0);
    MusicSystem::play(quarter, true);
    mix.wait(3);

    EXPECT_NEAR(4 * quarterOfFull, full, full * 0.04); // steps of the mixer
    EXPECT_EQ(mix.loudest(), 0);
}

TEST_F(MusicSystemTest, SetVolumeTakesTheLow8Bits) {
    MusicSystem::initialise();

    MusicSystem::setVolume(256 + 5);

    EXPECT_EQ(MusicSystem::getVolume(), 5);
}

TEST_F(MusicSystemTest, TheCommandClampsTheVolume) {
    MusicSystem::initialise();

    EXPECT_EQ(answerTo("MusicVolume 300"), "\nMusicVolume is now 255");
    EXPECT_EQ(answerTo("MusicVolume -1"), "\nMusicVolume is now 0");
    EXPECT_EQ(answerTo("MusicVolume 100"), "\nMusicVolume is now 100");
    EXPECT_EQ(answerTo("MusicVolume"), "\nMusicVolume is 100");
}

TEST_F(MusicSystemTest, TheCommandPlaysItsWholeArgumentAndLoops) {
    MusicSystem::initialise();
    data.write("music/two words.ogg", contentOf(TARNWICK_SOURCE_DIR "/tests/audio/quarter_second.ogg"));

    EXPECT_EQ(answerTo("MusicPlay music\\two words.ogg"), "\nFile opened successfully.");
    EXPECT_TRUE(state().looping);
    EXPECT_EQ(answerTo("MusicPlay"), "\nUSAGE: MusicPlay < file name >");
    EXPECT_EQ(answerTo("MusicPlay missing.ogg"), "\nFailed to open file.");
}

TEST_F(MusicSystemTest, AnyOrderOfCallsIsFine) {
    MusicSystem::initialise();
    std::minstd_rand random(7);
    const std::string names[] = {quarter, music, "missing.ogg"};

    bool open = false; // the model: a stream there or not, and the volume
    std::uint8_t volume = MusicSystem::getVolume();
    for (int i = 0; i < 300; ++i) {
        switch (random() % 5) {
        case 0: {
            const std::string& name = names[random() % 3];
            const bool loop = random() % 2 == 0;
            open = name != "missing.ogg";
            EXPECT_EQ(MusicSystem::play(name, loop), open) << "call " << i;
            EXPECT_TRUE(!open || state().looping == loop) << "call " << i;
            break;
        }
        case 1:
            EXPECT_EQ(MusicSystem::pause(), open) << "call " << i;
            break;
        case 2:
            EXPECT_EQ(MusicSystem::resume(), open) << "call " << i;
            break;
        case 3:
            EXPECT_TRUE(MusicSystem::stop());
            open = false;
            break;
        default:
            volume = static_cast<std::uint8_t>(random());
            MusicSystem::setVolume(volume);
        }
        EXPECT_EQ(state().stream != nullptr, open) << "call " << i;
        EXPECT_EQ(MusicSystem::getVolume(), volume) << "call " << i;
    }

    EXPECT_TRUE(MusicSystem::stop());
}

} // namespace tarnwick
