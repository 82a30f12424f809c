#include "audio/SoundManager.h"

#include "audio/Sound.h"
#include "audio/SoundBuffer.h"
#include "audio/WavFile.h"
#include "support/ConsoleAnswer.h"
#include "support/LoopbackTest.h"

#include <sys/resource.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <list>
#include <optional>

namespace tarnwick {

namespace {

std::string title(const std::string& text) {
    const std::string bar = "\n\n" + std::string(64, '*') + "\n\n";
    return bar + text + bar;
}

} // namespace

class SoundManagerTest : public LoopbackTest {
protected:
    SoundManagerTest() {
        data.write("snd/tone.wav", monoWav(steadySamples(100, 1000)));
        data.write("snd/broken.wav", "RIFF");
    }

    /// Whether a file of these bytes makes a sound.
    bool loads(const WavText& wav) {
        data.write("snd/case.wav", wav.bytes());
        return SoundManager::createSoundBuffer("snd\\case.wav") != nullptr;
    }
    static WavText plainWav() {
        WavText wav;
        wav.samples = samples16({100, -200, 300, -400});
        return wav;
    }
};

TEST_F(SoundManagerTest, NamesThatDifferInCaseAreOneEntry) {
    const Sound first("snd\\tone.wav");
    const Sound second("SND\\Tone.WAV");

    EXPECT_EQ(soundList(), std::list<std::string>{"SND\\TONE.WAV"});
    EXPECT_EQ(references("snd\\tone.wav"), 2);
}

TEST_F(SoundManagerTest, TheLastSoundTakesTheSamplesWithIt) {
    std::optional<Sound> first("snd\\tone.wav");
    std::optional<Sound> second(*first);

    first.reset();
    EXPECT_EQ(references("snd\\tone.wav"), 1);
    second.reset();
    EXPECT_TRUE(soundList().empty());
    data.write("snd/tone.wav", monoWav(steadySamples(100, 2000)));
    Sound again("snd\\tone.wav"); // reads the file anew
    again.loop();
    EXPECT_EQ(heard(10).back(), 2000.0f / 32768.0f);
}

TEST_F(SoundManagerTest, AFileThatFailsIsTriedOnceWhileItsEntryLives) {
    std::optional<Sound> first("snd\\broken.wav");
    EXPECT_EQ(soundList(), std::list<std::string>{"SND\\BROKEN.WAV (loading failed)"});
    data.write("snd/broken.wav", monoWav(steadySamples(100, 1000)));

    std::optional<Sound> second("snd\\broken.wav");
    EXPECT_EQ(soundList(), std::list<std::string>{"SND\\BROKEN.WAV (loading failed)"});
    first.reset();
    second.reset();
    const Sound third("snd\\broken.wav");

    EXPECT_EQ(soundList(), std::list<std::string>{"SND\\BROKEN.WAV"});
}

TEST_F(SoundManagerTest, CopiesAreCountedAndAssignmentsNeverGiveBack) {
    data.write("snd/default.wav", monoWav(steadySamples(100, 1000)));
    const Sound tone("snd\\tone.wav");
    {
        Sound assigned; // the default
        EXPECT_EQ(references("snd\\default.wav"), 1);
        assigned = tone;
        EXPECT_EQ(references("snd\\tone.wav"), 2);
        const Sound& itself = assigned;
        assigned = itself;
        EXPECT_EQ(references("snd\\tone.wav"), 2);
        const Sound copy(assigned);
        EXPECT_EQ(references("snd\\tone.wav"), 3);
        assigned = copy; // of the same file: counted once more all the same
        EXPECT_EQ(references("snd\\tone.wav"), 4);
    }

    EXPECT_EQ(references("snd\\tone.wav"), 2); // one is lost by the assignment
    EXPECT_EQ(references("snd\\default.wav"), 1);
}

TEST_F(SoundManagerTest, FreeingAnUnknownNameDoesNothing) {
    SoundManager::freeSound("snd\\nowhere.wav");

    EXPECT_TRUE(soundList().empty());
}

TEST_F(SoundManagerTest, TheListPrintsEveryEntryInOrder) {
    const Sound tone("snd\\tone.wav");
    const Sound broken("snd\\broken.wav");
    const Sound nameless("");

    EXPECT_EQ(answerTo("SoundList"),
              title("Sounds in use") +
                  "\n (loading failed)\nSND\\BROKEN.WAV (loading failed)\nSND\\TONE.WAV");
}

TEST_F(SoundManagerTest, TheMemoryIsThatOfTheFilesSamples) {
    const Sound tone("snd\\tone.wav");
    const Sound same("snd\\tone.wav");
    const Sound broken("snd\\broken.wav");

    EXPECT_EQ(answerTo("SoundMemory"), title("Sound memory used") + "200 bytes.");
}

TEST_F(SoundManagerTest, ShutdownDropsEveryEntryAndTheCommands) {
    Sound tone("snd\\tone.wav");

    SoundManager::shutdown();

    EXPECT_TRUE(soundList().empty());
    EXPECT_FALSE(GLConsole::commands().contains("SOUNDLIST"));
    EXPECT_FALSE(GLConsole::commands().contains("SOUNDMEMORY"));
    tone.loop(); // its duplicate has the samples still
    EXPECT_EQ(heard(10).back(), 1000.0f / 32768.0f);
}

TEST_F(SoundManagerTest, FilesAreFoundWhateverTheirCaseOnDisk) {
    data.write("Snd/Mixed Case.Wav", monoWav(steadySamples(10, 1000)));

    EXPECT_NE(SoundManager::createSoundBuffer("SND\\MIXED CASE.WAV"), nullptr);
    EXPECT_EQ(SoundManager::createSoundBuffer("snd\\missing.wav"), nullptr);
    EXPECT_EQ(SoundManager::createSoundBuffer("snd"), nullptr);
}

TEST_F(SoundManagerTest, WhatThePlatformCannotPlayFails) {
    EXPECT_TRUE(loads(plainWav()));
    for (const std::uint32_t depth : {1u, 4u, 12u, 15u, 17u, 20u, 64u, 0xFFFFu}) {
        WavText wav = plainWav();
        wav.bitsPerSample = depth;
        EXPECT_FALSE(loads(wav)) << depth;
    }
    for (const std::uint32_t rate : {1u, 99u, 200'001u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        WavText wav = plainWav();
        wav.sampleRate = rate;
        EXPECT_FALSE(loads(wav)) << rate;
    }
    for (const std::uint32_t align : {1u, 3u, 4u, 0xFFFFu}) {
        WavText wav = plainWav();
        wav.blockAlign = align;
        EXPECT_FALSE(loads(wav)) << align;
    }
    WavText shorterThanAFrame = plainWav();
    shorterThanAFrame.samples = "x";
    EXPECT_FALSE(loads(shorterThanAFrame));
}

/// Looks at no sample: there are none behind the few that the bytes say they begin with.
TEST_F(SoundManagerTest, SamplesOfGigabytesAreRefusedBeforeTheyAreCopied) {
    const std::uint8_t first = 0;
    WavFile wav;
    wav.channels = 1;
    wav.sampleRate = 44'100;
    for (const std::uint32_t depth : {8u, 16u, 24u, 32u}) {
        wav.bitsPerSample = static_cast<std::uint16_t>(depth);
        wav.blockAlign = static_cast<std::uint16_t>(depth / 8);
        for (const std::size_t gibibytes : {2u, 3u}) {
            wav.samples = {&first, gibibytes << 30};

            EXPECT_EQ(SoundBuffer::create(wav), nullptr) << depth << ' ' << gibibytes;
        }
    }
    // In two channels twice as long; of 24 bits, which become floats, more.
    wav.bitsPerSample = 24;
    wav.blockAlign = 3;
    wav.samples = {&first, std::size_t{806} << 20};
    EXPECT_EQ(SoundBuffer::create(wav), nullptr);
}

#if !defined(__SANITIZE_ADDRESS__) // which takes terabytes of addresses itself
/// Ends the process: 0 if a sound of a file with `bytes` of samples, of which memory holds half as many
/// again, is inert.
[[noreturn]] static void playWithoutMemory(std::uint32_t bytes) {
    std::ifstream status("/proc/self/statm");
    rlim_t pages = 0;
    status >> pages;
    const rlim_t room = pages * 4'096 + bytes + bytes / 2; // for the file, not for two channels of it
    const rlimit limit = {room, room};
    setrlimit(RLIMIT_AS, &limit);
    Sound sound("snd\\large.wav");
    sound.loop();
    std::list<std::string> list;
    SoundManager::getSoundList(list);
    std::_Exit(list == std::list<std::string>{"SND\\LARGE.WAV (loading failed)"} ? 0 : 1);
}

TEST_F(SoundManagerTest, AFileThatMemoryDoesNotHoldMakesAnInertSound) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    WavText wav = plainWav();
    constexpr std::uint32_t bytes = 128u << 20;
    wav.dataSize = bytes;
    wav.samples.clear();
    data.write("snd/large.wav", wav.bytes());
    std::filesystem::resize_file("snd/large.wav", wav.bytes().size() + bytes); // takes no room on the disk

    EXPECT_EXIT(playWithoutMemory(bytes), testing::ExitedWithCode(0), "");
}
#endif

TEST_F(SoundManagerTest, AWrongByteRateIsNoHarm) {
    WavText wav = plainWav();
    wav.byteRate = 1;

    EXPECT_TRUE(loads(wav));
}

TEST_F(SoundManagerTest, WithoutADeviceNoFileIsRead) {
    SoundSystem::shutdown();

    const Sound tone("snd\\tone.wav");

    EXPECT_EQ(soundList(), std::list<std::string>{"SND\\TONE.WAV (loading failed)"});
}

} // namespace tarnwick
