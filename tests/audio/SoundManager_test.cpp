#include "audio/SoundManager.h"

#include "audio/Sound.h"
#include "audio/SoundBuffer.h"
#include "support/ConsoleAnswer.h"
#include "support/LoopbackTest.h"

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
