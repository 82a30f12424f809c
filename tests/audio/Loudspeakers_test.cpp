#include "audio/Sound.h"
#include "support/LoopbackTest.h"

#include <cmath>

namespace tarnwick {

/// What each loudspeaker gives of a steady sound, half of full scale on the left and a quarter on the right.
class LoudspeakersTest : public LoopbackTest {
protected:
    static constexpr std::size_t rampFrames = 4'096; ///< Longer than the mixer takes to come to a loudness.
    static constexpr float leftLevel = 0.5f;
    static constexpr float rightLevel = 0.25f;
    // Of five and seven loudspeakers in the order of the device.
    static constexpr std::size_t left = 0;
    static constexpr std::size_t right = 1;
    static constexpr std::size_t centre = 2;
    static constexpr std::size_t subwoofer = 3;
    static constexpr std::size_t behind = 4;

    LoudspeakersTest() {
        WavText wav;
        wav.channels = 2;
        wav.blockAlign = 4;
        for (int i = 0; i < 100; ++i) {
            wav.samples += samples16({16'384, 8'192});
        }
        data.write("snd/sides.wav", wav.bytes());
        data.write("snd/one.wav", monoWav(steadySamples(100, 8'192)));
    }

    /// The level of each channel of a device of `channels`, after the sound of a file was played there.
    static std::vector<float> levelsOn(std::size_t channels, const char* name, float pan = 0.0f) {
        SoundManager::shutdown();
        SoundSystem::shutdown();
        SoundSystem::initialiseLoopback(channels);
        SoundManager::initialise();
        Sound sound(name);
        sound.setPan(pan);
        sound.loop();
        const std::vector<float> line = SoundSystem::renderLoopback(rampFrames);
        EXPECT_EQ(line.size(), rampFrames * channels);
        return {line.end() - static_cast<std::ptrdiff_t>(channels), line.end()};
    }
    static double powerOf(const std::vector<float>& levels) {
        double sum = 0.0;
        for (const float level : levels) {
            sum += static_cast<double>(level) * static_cast<double>(level);
        }
        return sum;
    }
    /// In front, and to the side that each belongs to; quieter behind.
    static void expectInFront(const std::vector<float>& levels) {
        const double power = static_cast<double>(leftLevel * leftLevel + rightLevel * rightLevel);
        constexpr double twoDecibels = 1.6; // of power
        EXPECT_GT(levels[left], 1.3f * levels[right]);
        EXPECT_GT(levels[right], 0.0f);
        EXPECT_EQ(levels[subwoofer], 0.0f);
        EXPECT_EQ(levels[centre], 0.0f);
        for (std::size_t i = behind; i < levels.size(); ++i) {
            EXPECT_LT(std::abs(levels[i]), 0.2f * levels[left]) << i;
        }
        EXPECT_GT(powerOf(levels), power / twoDecibels);
        EXPECT_LT(powerOf(levels), power * twoDecibels);
    }
};

TEST_F(LoudspeakersTest, OneGivesBothSides) {
    EXPECT_EQ(levelsOn(1, "snd\\sides.wav"), std::vector<float>{leftLevel + rightLevel});
    EXPECT_EQ(levelsOn(1, "snd\\one.wav"),
              std::vector<float>{0.5f}); // a file of one channel has two like sides
}

TEST_F(LoudspeakersTest, OneGivesAPannedSoundToo) {
    for (const float pan : {-1.0f, 0.5f, 1.0f}) {
        EXPECT_GT(levelsOn(1, "snd\\one.wav", pan).front(), 0.1f) << pan;
    }
}

TEST_F(LoudspeakersTest, TwoGiveEachItsSideToTheSample) {
    EXPECT_EQ(levelsOn(2, "snd\\sides.wav"), (std::vector<float>{leftLevel, rightLevel}));
    EXPECT_EQ(levelsOn(2, "snd\\one.wav"), (std::vector<float>{0.25f, 0.25f}));
}

TEST_F(LoudspeakersTest, FiveAndASubwooferGiveItInFront) {
    expectInFront(levelsOn(6, "snd\\sides.wav"));
}

TEST_F(LoudspeakersTest, SevenAndASubwooferGiveItInFront) {
    expectInFront(levelsOn(8, "snd\\sides.wav"));
}

} // namespace tarnwick
