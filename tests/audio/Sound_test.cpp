#include "audio/Sound.h"

#include "support/LoopbackTest.h"

#include <AL/al.h>

#include <algorithm>
#include <cmath>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <random>

namespace tarnwick {

namespace {

constexpr std::size_t rampFrames = 4'096; ///< Longer than the mixer takes to come to a new loudness.
/// A sound that does not start at the start of its file comes in over the first stretch that is mixed.
constexpr std::size_t fadeIn = 20;
constexpr float fullScale = 32'768.0f;

double decibelsOf(float level, float reference) {
    return 20.0 * std::log10(static_cast<double>(level) / static_cast<double>(reference));
}

} // namespace

class SoundTest : public LoopbackTest {
protected:
    /// A looping sound of one level; the loudness at which it is heard in the end.
    float levelAt(Sound& sound) {
        sound.loop();
        const float level = heard(rampFrames).back();
        return level;
    }

    /// Frames of the file that pass in a frame of 44,100 a second.
    double speedAt(std::uint32_t fileRate, float frequency) {
        std::vector<std::int16_t> ramp(30'000);
        for (std::size_t i = 0; i < ramp.size(); ++i) {
            ramp[i] = static_cast<std::int16_t>(i);
        }
        data.write("snd/ramp.wav", monoWav(ramp, fileRate));
        Sound sound("snd\\ramp.wav");
        sound.setFrequency(frequency);
        sound.play();
        constexpr std::size_t from = 100;
        const std::size_t to = frequency > -0.5f ? 6'000 : 88'200; // the slow ones need their time
        const std::vector<float> line = heard(to + 1);
        return (static_cast<double>(line[to]) - static_cast<double>(line[from])) *
               static_cast<double>(fullScale) / static_cast<double>(to - from);
    }
};

TEST_F(SoundTest, ItStartsStoppedAtFullVolumeInTheCentreAtTheFilesRate) {
    data.write("snd/tone.wav", monoWav(steadySamples(100, 1000), 22'050));

    const Sound sound("snd\\Tone.wav");

    EXPECT_EQ(sound.getName(), "snd\\Tone.wav");
    EXPECT_EQ(sound.getVolume(), 1.0f);
    EXPECT_EQ(sound.getPan(), 0.0f);
    EXPECT_EQ(sound.getFrequency(), 0.0f);
    EXPECT_EQ(sound.getBaseFrequency(), 22'050);
    EXPECT_FALSE(sound.isPlaying());
    EXPECT_FALSE(sound.isLooping());
}

TEST_F(SoundTest, TheDefaultSoundHasItsNameInUpperCase) {
    EXPECT_EQ(Sound().getName(), "SND\\DEFAULT.WAV");
    EXPECT_EQ(Sound(static_cast<const char*>(nullptr)).getName(), "");
}

TEST_F(SoundTest, PlayingIsExactToTheSampleAndEndsByItself) {
    const std::vector<std::int16_t> wave = waveSamples(1'000, 7);
    data.write("snd/wave.wav", monoWav(wave));
    Sound sound("snd\\wave.wav");

    sound.play();
    EXPECT_TRUE(sound.isPlaying());
    EXPECT_FALSE(sound.isLooping());
    const std::vector<float> line = heard(1'500);

    for (std::size_t i = 0; i < wave.size(); ++i) {
        ASSERT_NEAR(line[i], static_cast<float>(wave[i]) / fullScale, 1e-6f) << i;
    }
    EXPECT_TRUE(std::all_of(line.begin() + 1'000, line.end(), [](float sample) { return sample == 0.0f; }));
    EXPECT_FALSE(sound.isPlaying());
    EXPECT_EQ(SoundSystem::voicesInUse(), 0u);
    sound.play(); // from the start again
    EXPECT_NEAR(heard(10)[5], static_cast<float>(wave[5]) / fullScale, 1e-6f);
}

TEST_F(SoundTest, ALoopHasNoGap) {
    const std::vector<std::int16_t> wave = waveSamples(1'234, 5);
    data.write("snd/wave.wav", monoWav(wave));
    Sound sound("snd\\wave.wav");

    sound.loop();
    EXPECT_TRUE(sound.isLooping());
    const std::vector<float> line = heard(20'000);

    for (std::size_t i = 0; i < line.size(); ++i) {
        ASSERT_NEAR(line[i], static_cast<float>(wave[i % wave.size()]) / fullScale, 1e-6f) << i;
    }
}

TEST_F(SoundTest, StoppingKeepsThePosition) {
    const std::vector<std::int16_t> wave = waveSamples(5'000, 3);
    data.write("snd/wave.wav", monoWav(wave));
    Sound sound("snd\\wave.wav");
    sound.play();
    heard(1'700);

    sound.stop();
    EXPECT_FALSE(sound.isPlaying());
    EXPECT_EQ(heard(500), std::vector<float>(500));
    sound.play();
    heard(fadeIn);

    EXPECT_NEAR(heard(1)[0], static_cast<float>(wave[1'700 + fadeIn]) / fullScale, 1e-6f);
}

TEST_F(SoundTest, RewindingGoesToTheStartPlayingOrNot) {
    const std::vector<std::int16_t> wave = waveSamples(5'000, 3);
    data.write("snd/wave.wav", monoWav(wave));
    Sound sound("snd\\wave.wav");
    sound.play();
    heard(1'000);

    sound.rewind();
    const float playing = heard(301).back();
    sound.stop();
    sound.rewind();
    sound.play();
    const float stopped = heard(101).back();

    EXPECT_NEAR(playing, static_cast<float>(wave[300]) / fullScale, 1e-6f);
    EXPECT_NEAR(stopped, static_cast<float>(wave[100]) / fullScale, 1e-6f);
}

TEST_F(SoundTest, PlayAndLoopOnAPlayingSoundOnlyChangeItsEnd) {
    const std::vector<std::int16_t> wave = waveSamples(1'000, 3);
    data.write("snd/wave.wav", monoWav(wave));
    Sound sound("snd\\wave.wav");
    sound.play();
    heard(600);

    sound.loop();
    EXPECT_TRUE(sound.isLooping());
    EXPECT_NEAR(heard(601).back(), static_cast<float>(wave[200]) / fullScale, 1e-6f);
    sound.play();
    EXPECT_FALSE(sound.isLooping());
    heard(900);

    EXPECT_FALSE(sound.isPlaying());
}

TEST_F(SoundTest, TheVolumeFollowsItsCurve) {
    data.write("snd/level.wav", monoWav(steadySamples(100, 16'384)));
    Sound sound("snd\\level.wav");
    const float full = levelAt(sound);
    EXPECT_EQ(full, 0.5f); // exactly: nothing is lost of a file of one channel

    for (const float volume : {1.0f, 0.9f, 0.75f, 0.5f, 0.25f, 0.1f, 0.03f, 0.01f, 0.001f}) {
        sound.setVolume(volume);
        const double expected = (1.0 - std::pow(static_cast<double>(volume), 0.2)) * -100.0;
        EXPECT_NEAR(decibelsOf(levelAt(sound), full), expected, 0.1) << volume;
    }
    sound.setVolume(0.0f);
    EXPECT_EQ(levelAt(sound), 0.0f);
}

TEST_F(SoundTest, TheMasterVolumeHoldsFromTheNextApplication) {
    data.write("snd/level.wav", monoWav(steadySamples(100, 16'384)));
    Sound sound("snd\\level.wav");
    levelAt(sound);

    SoundSystem::setVolume(0.5f);
    const float before = heard(rampFrames).back();
    sound.setVolume();
    const float after = heard(rampFrames).back();
    SoundSystem::setVolume(0.0f);
    sound.setVolume(1.0f);
    const float silent = heard(rampFrames).back();

    EXPECT_EQ(before, 0.5f);
    EXPECT_NEAR(decibelsOf(after, before), -12.94, 0.005);
    EXPECT_EQ(silent, 0.0f);
    EXPECT_EQ(sound.getVolume(), 1.0f);
}

/// Without it a sound made before "off" in the options would be heard after.
TEST_F(SoundTest, PlayingAndLoopingApplyTheVolumes) {
    data.write("snd/level.wav", monoWav(steadySamples(20'000, 16'384)));
    Sound once("snd\\level.wav");
    Sound looping("snd\\level.wav");

    for (const float master : {0.0f, 0.5f, 1.0f}) {
        const float expected = 0.5f * std::pow(10.0f, -5.0f * (1.0f - std::pow(master, 0.2f)));
        SoundSystem::setVolume(master);
        once.play();
        EXPECT_NEAR(heard(rampFrames).back(), master > 0.0f ? expected : 0.0f, 1e-4f) << master;
        once.stop();
        looping.loop();
        EXPECT_NEAR(heard(rampFrames).back(), master > 0.0f ? expected : 0.0f, 1e-4f) << master;
        looping.stop();
    }
}

TEST_F(SoundTest, TheVolumeIsHeldWithinItsRangeAndKeptByInertSounds) {
    data.write("snd/level.wav", monoWav(steadySamples(100, 16'384)));
    for (const char* const name : {"snd\\level.wav", "snd\\missing.wav"}) {
        Sound sound(name);

        sound.setVolume(2.0f);
        EXPECT_EQ(sound.getVolume(), 1.0f);
        sound.setVolume(-1.0f);
        EXPECT_EQ(sound.getVolume(), 0.0f);
        sound.setVolume(std::nanf(""));
        EXPECT_EQ(sound.getVolume(), 0.0f);
        sound.setVolume(0.25f);
        EXPECT_EQ(sound.getVolume(), 0.25f);
    }
}

TEST_F(SoundTest, TheRateIsAsTold) {
    constexpr double deviceRate = 44'100.0;
    constexpr double mixerStep = deviceRate / 4'096.0; // it cuts the speed to that many parts of a frame

    EXPECT_NEAR(speedAt(22'050, -1.0f) * deviceRate, 100.0, mixerStep);
    EXPECT_NEAR(speedAt(22'050, -0.1f) * deviceRate, 19'855.0, mixerStep);
    EXPECT_NEAR(speedAt(22'050, 0.0f) * deviceRate, 22'050.0, mixerStep);
    EXPECT_NEAR(speedAt(22'050, 0.1f) * deviceRate, 39'845.0, mixerStep);
    EXPECT_NEAR(speedAt(22'050, 1.0f) * deviceRate, 200'000.0, mixerStep);
    EXPECT_NEAR(speedAt(44'100, 0.0f), 1.0, 1e-6);
    EXPECT_NEAR(speedAt(22'050, 7.0f) * deviceRate, 200'000.0, mixerStep);
    EXPECT_NEAR(speedAt(22'050, -7.0f) * deviceRate, 100.0, mixerStep);
}

TEST_F(SoundTest, TheRateOfZeroIsTheFilesAgain) {
    const std::vector<std::int16_t> wave = waveSamples(5'000, 3);
    data.write("snd/wave.wav", monoWav(wave));
    Sound sound("snd\\wave.wav");
    sound.setFrequency(0.3f);

    sound.setFrequency(0.0f);
    sound.play();

    EXPECT_NEAR(heard(2'001).back(), static_cast<float>(wave[2'000]) / fullScale, 1e-6f);
}

TEST_F(SoundTest, ThePanGoesToTheSidesAndBackExactly) {
    data.write("snd/level.wav", monoWav(steadySamples(100, 16'384)));
    Sound sound("snd\\level.wav");
    sound.loop();

    sound.setPan(-3.0f);
    EXPECT_EQ(sound.getPan(), -1.0f);
    const std::vector<float> left = SoundSystem::renderLoopback(rampFrames);
    sound.setPan(1.0f);
    const std::vector<float> right = SoundSystem::renderLoopback(rampFrames);
    sound.setPan(0.0f);
    const std::vector<float> centre = SoundSystem::renderLoopback(rampFrames);

    EXPECT_GT(left[left.size() - 2], 10.0f * std::abs(left.back()));
    EXPECT_GT(right.back(), 10.0f * std::abs(right[right.size() - 2]));
    EXPECT_EQ(centre[centre.size() - 2], 0.5f);
    EXPECT_EQ(centre.back(), 0.5f);
}

TEST_F(SoundTest, EveryDepthAndBothChannelsAreHeardAsTheyAre) {
    struct Case {
        std::uint32_t channels;
        std::uint32_t bits;
        std::string frame; ///< Half of full scale; the right side minus a quarter.
    };
    const Case cases[] = {{1, 8, "\xC0"},
                          {2, 8, "\xC0\x60"},
                          {1, 16, std::string("\x00\x40", 2)},
                          {2, 16, std::string("\x00\x40\x00\xE0", 4)},
                          {1, 24, std::string("\x00\x00\x40", 3)},
                          {2, 24, std::string("\x00\x00\x40\x00\x00\xE0", 6)},
                          {1, 32, std::string("\x00\x00\x00\x40", 4)},
                          {2, 32, std::string("\x00\x00\x00\x40\x00\x00\x00\xE0", 8)}};
    for (const Case& c : cases) {
        WavText wav;
        wav.channels = c.channels;
        wav.bitsPerSample = c.bits;
        wav.blockAlign = c.channels * c.bits / 8;
        for (int i = 0; i < 50; ++i) {
            wav.samples += c.frame;
        }
        wav.samples += wav.blockAlign > 1 ? "x" : ""; // less than a frame, which is not played
        data.write("snd/case.wav", wav.bytes());
        Sound sound("snd\\case.wav");

        sound.loop();
        const std::vector<float> both = SoundSystem::renderLoopback(200);

        const float right = c.channels == 1 ? 0.5f : -0.25f;
        for (std::size_t i = 0; i < both.size(); i += 2) {
            ASSERT_NEAR(both[i], 0.5f, 1e-6f) << c.channels << " of " << c.bits << " at " << i;
            ASSERT_NEAR(both[i + 1], right, 1e-6f) << c.channels << " of " << c.bits << " at " << i;
        }
    }
}

TEST_F(SoundTest, SoundsOfOneFileHaveVolumeAndPositionOfTheirOwn) {
    data.write("snd/level.wav", monoWav(steadySamples(100, 8'192)));
    Sound first("snd\\level.wav");
    Sound second("snd\\level.wav");

    second.setVolume(0.0f);
    first.play();
    heard(50);
    second.play();
    heard(70);

    EXPECT_EQ(first.getVolume(), 1.0f);
    EXPECT_FALSE(first.isPlaying());
    EXPECT_TRUE(second.isPlaying());
    EXPECT_EQ(references("snd\\level.wav"), 2);
}

TEST_F(SoundTest, SynchronisedSoundsAddUpToTheSample) {
    const std::vector<std::int16_t> wave = waveSamples(7'000, 11);
    data.write("snd/wave.wav", monoWav(wave));
    Sound first("snd\\wave.wav");
    Sound second("snd\\wave.wav");
    first.loop();
    heard(12'345);

    EXPECT_TRUE(second.synchroniseWith(first));
    second.loop();
    heard(fadeIn);
    const std::vector<float> line = heard(10'000);

    for (std::size_t i = 0; i < line.size(); ++i) {
        ASSERT_NEAR(line[i], static_cast<float>(wave[(12'345 + fadeIn + i) % wave.size()]) * 2.0f / fullScale,
                    2e-6f)
            << i;
    }
}

TEST_F(SoundTest, SynchronisingGoesByBytesAndFailsBehindTheEnd) {
    data.write("snd/long.wav", monoWav(waveSamples(7'000, 11)));
    data.write("snd/short.wav", monoWav(steadySamples(100, 1'000)));
    Sound longer("snd\\long.wav");
    Sound shorter("snd\\short.wav");
    Sound inert("snd\\missing.wav");
    longer.loop();

    EXPECT_TRUE(shorter.synchroniseWith(longer)); // both at the start
    heard(1'000);
    EXPECT_FALSE(shorter.synchroniseWith(longer));
    EXPECT_TRUE(longer.synchroniseWith(shorter));
    EXPECT_FALSE(inert.synchroniseWith(longer));
    EXPECT_FALSE(longer.synchroniseWith(inert));
}

TEST_F(SoundTest, ACopyIsStoppedAndAtFullVolumeAtTheFilesRate) {
    const std::vector<std::int16_t> wave = waveSamples(5'000, 3);
    data.write("snd/wave.wav", monoWav(wave));
    Sound sound("snd\\wave.wav");
    sound.setVolume(0.0f);
    sound.setFrequency(0.5f);
    sound.setPan(-0.5f);
    sound.loop();
    heard(100);

    Sound copy(sound);
    Sound assigned;
    assigned = sound;
    sound.stop();

    for (Sound* const made : {&copy, &assigned}) {
        EXPECT_FALSE(made->isPlaying());
        EXPECT_EQ(made->getVolume(), 1.0f);
        EXPECT_EQ(made->getFrequency(), 0.5f);
        EXPECT_EQ(made->getPan(), -0.5f);
        made->play();
        EXPECT_NEAR(heard(501).back(), static_cast<float>(wave[500]) / fullScale, 1e-6f);
        made->stop();
    }
}

TEST_F(SoundTest, AssigningStopsWhatPlayed) {
    data.write("snd/level.wav", monoWav(steadySamples(100, 8'192)));
    data.write("snd/other.wav", monoWav(steadySamples(100, 4'096)));
    Sound sound("snd\\level.wav");
    sound.loop();

    sound = Sound("snd\\other.wav");

    EXPECT_EQ(heard(100), std::vector<float>(100));
    EXPECT_EQ(SoundSystem::voicesInUse(), 0u);
    sound.loop();
    EXPECT_EQ(heard(100).back(), 0.125f);
}

TEST_F(SoundTest, AnInertSoundDoesNothingAndSaysNo) {
    data.write("snd/float.wav", [] {
        WavText wav;
        wav.formatTag = 3;
        wav.samples = samples16({1, 2, 3});
        return wav.bytes();
    }());
    for (const char* const name : {"snd\\missing.wav", "snd\\float.wav", ""}) {
        Sound sound(name);

        sound.play();
        sound.loop();
        sound.setFrequency(0.5f);
        sound.setPan(0.5f);
        sound.rewind();
        sound.stop();

        EXPECT_FALSE(sound.isPlaying());
        EXPECT_FALSE(sound.isLooping());
        EXPECT_EQ(sound.getFrequency(), 0.0f);
        EXPECT_EQ(sound.getPan(), 0.0f);
        EXPECT_EQ(Sound(sound).getName(), name);
    }
}

TEST_F(SoundTest, OfMoreSoundsThanVoicesTheNewestAreNotHeard) {
    data.write("snd/level.wav", monoWav(steadySamples(100, 64)));
    std::list<Sound> sounds;
    for (std::size_t i = 0; i < SoundSystem::largestVoiceCount + 20; ++i) {
        sounds.emplace_back("snd\\level.wav").loop();
    }

    const auto playing = std::ranges::count_if(sounds, [](const Sound& sound) { return sound.isPlaying(); });
    EXPECT_EQ(playing, 256);
    EXPECT_TRUE(sounds.front().isPlaying());
    EXPECT_FALSE(sounds.back().isPlaying());
    EXPECT_NEAR(heard(200).back(), 256.0f * 64.0f / fullScale, 1e-4f);
    sounds.pop_front(); // a voice is free again
    sounds.back().loop();
    EXPECT_TRUE(sounds.back().isPlaying());
}

TEST_F(SoundTest, SoundsThatHaveEndedMakeRoom) {
    data.write("snd/level.wav", monoWav(steadySamples(100, 64)));
    std::list<Sound> sounds;
    for (int round = 0; round < 3; ++round) {
        for (std::size_t i = 0; i < SoundSystem::largestVoiceCount; ++i) {
            sounds.emplace_back("snd\\level.wav").play();
            EXPECT_TRUE(sounds.back().isPlaying());
        }
        heard(200);
    }
}

/// What the cache must count, while sounds come, go, are copied and assigned at random.
class SoundSoakTest : public LoopbackTest {
protected:
    static constexpr std::size_t mostSounds = 400;
    static constexpr ALuint namesAsked = 20'000; ///< More than the library ever gave out.

    SoundSoakTest() {
        for (int file = 0; file < 6; ++file) {
            data.write("snd/" + std::to_string(file) + ".wav",
                       monoWav(waveSamples(50 + 700 * static_cast<std::size_t>(file), 3),
                               11'025u * static_cast<std::uint32_t>(1 + file)));
        }
    }

    std::size_t below(std::size_t bound) { return random() % bound; }
    float share() { return static_cast<float>(random() % 3'001) / 1'000.0f - 1.5f; }
    Sound& any() { return *std::next(sounds.begin(), static_cast<std::ptrdiff_t>(below(sounds.size()))); }

    void makeOrTake() {
        if (sounds.size() < mostSounds && below(2) == 0) {
            const std::string name = "snd\\" + std::to_string(below(8)) + ".wav"; // two of eight are missing
            sounds.emplace_back(name);
            ++counts[name];
        } else if (sounds.size() > 1) {
            const auto gone = std::next(sounds.begin(), static_cast<std::ptrdiff_t>(below(sounds.size())));
            --counts[gone->getName()];
            sounds.erase(gone);
        }
    }
    void copyOrAssign() {
        const Sound& source = any();
        ++counts[source.getName()];
        if (below(4) != 0 && sounds.size() < mostSounds) {
            sounds.push_back(source);
            return;
        }
        Sound& target = any();
        if (&target == &source) {
            --counts[source.getName()];
        }
        target = source;
    }
    void call() {
        switch (below(12)) {
        case 0:
            any().stop();
            break;
        case 1:
            any().rewind();
            break;
        case 2:
            any().setVolume(share());
            break;
        case 3:
            any().setPan(share());
            break;
        case 4:
            any().setFrequency(share());
            break;
        case 5:
            any().synchroniseWith(any());
            break;
        case 6:
            any().isLooping();
            break;
        case 7:
            SoundSystem::setVolume(share());
            break;
        case 8:
            copyOrAssign();
            break;
        case 9:
            makeOrTake();
            break;
        case 10:
            any().play();
            break;
        default:
            any().loop();
            break;
        }
    }
    static ALuint buffersAlive() {
        ALuint alive = 0;
        for (ALuint name = 1; name < namesAsked; ++name) {
            alive += alIsBuffer(name) == AL_TRUE ? 1u : 0u;
        }
        return alive;
    }

    std::mt19937 random{20};
    std::list<Sound> sounds;
    std::map<std::string, std::int32_t> counts;
};

TEST_F(SoundSoakTest, AHundredThousandCallsLeakNeitherBuffersNorVoices) {
    sounds.emplace_back("snd\\0.wav");
    ++counts["snd\\0.wav"];
    for (int i = 0; i < 100'000; ++i) {
        call();
        if (i % 500 == 0) {
            for (const float sample : heard(64)) {
                ASSERT_TRUE(std::isfinite(sample));
            }
            ASSERT_LE(SoundSystem::voicesInUse(), SoundSystem::largestVoiceCount);
        }
    }

    for (const auto& [name, count] : counts) {
        EXPECT_EQ(references(name), count) << name;
    }
    EXPECT_LE(buffersAlive(), 6u);
    sounds.clear();
    EXPECT_EQ(SoundSystem::voicesInUse(), 0u);
    SoundManager::shutdown();
    EXPECT_EQ(buffersAlive(), 0u);
    EXPECT_EQ(alGetError(), static_cast<ALenum>(AL_NO_ERROR));
}

} // namespace tarnwick
