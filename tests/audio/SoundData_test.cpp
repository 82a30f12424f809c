#include "audio/WavFile.h"
#include "core/ConfigFile.h"
#include "level/LevelFile.h"
#include "support/Loudness.h"
#include "support/ModuleTest.h"

#include <SDL.h>
#include <SDL_mixer.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

constexpr double fullScale = 32'768.0;
constexpr double quietEnd = 0.001;      ///< -60 dB: what is heard once begins and ends below it.
constexpr double ordinaryStep = 0.99;   ///< Share of all steps that stay below one that is still ordinary.
constexpr double musicPeak = 0.447;     ///< -7 dB.
constexpr double shortestMusic = 120.0; ///< Seconds.
constexpr double musicLoudness = -20.0; ///< LUFS.
constexpr double alike = 3.0;           ///< LU within which sounds are about equally loud.
constexpr double shortestLoop = 20.0;   ///< Seconds: in a shorter one the ear finds the pattern.
constexpr double shrill = 4'000.0;      ///< Hertz.

const std::filesystem::path dataFolder = std::filesystem::path(TARNWICK_SOURCE_DIR) / "data";

/// Those that go round, by the configuration and by what levels do with them.
const std::set<std::string> loops = {"water_ambient", "ice_freeze",  "ice_friction", "steam_evaporate",
                                     "steam_ambient", "wind",        "machine",      "drip",
                                     "fire",          "menu_evening"};

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// -1 to 1, of a file of 16 bits.
std::vector<double> levelsOf(const std::uint8_t* bytes, std::size_t size) {
    std::vector<double> levels(size / 2);
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const auto value = static_cast<std::int16_t>(bytes[2 * i] | (bytes[2 * i + 1] << 8));
        levels[i] = value / fullScale;
    }
    return levels;
}

double peakOf(const std::vector<double>& levels) {
    return std::abs(*std::ranges::max_element(levels, {}, [](double level) { return std::abs(level); }));
}

/// The step from the last frame to the first, over the step that is still ordinary within.
double seamOf(const std::vector<double>& levels, std::size_t channels) {
    std::vector<double> steps;
    double seam = 0.0;
    for (std::size_t channel = 0; channel < channels; ++channel) {
        for (std::size_t i = channel + channels; i < levels.size(); i += channels) {
            steps.push_back(std::abs(levels[i] - levels[i - channels]));
        }
        seam = std::max(seam, std::abs(levels[levels.size() - channels + channel] - levels[channel]));
    }
    const auto rank = static_cast<std::ptrdiff_t>(static_cast<double>(steps.size()) * ordinaryStep);
    std::ranges::nth_element(steps, steps.begin() + rank);
    return seam / steps[static_cast<std::size_t>(rank)];
}

/// A WAV file with the bytes that its samples lie in.
struct HeldWav : WavFile {
    std::unique_ptr<const std::string> bytes;
};

/// A file of the game, by its name in settings and levels.
HeldWav readWav(std::string name) {
    std::ranges::replace(name, '\\', '/');
    HeldWav wav;
    wav.bytes = std::make_unique<const std::string>(contentOf(dataFolder / name));
    EXPECT_TRUE(
        WavFile::read(reinterpret_cast<const std::uint8_t*>(wav.bytes->data()), wav.bytes->size(), wav))
        << name;
    return wav;
}

double secondsOf(const WavFile& wav) {
    return static_cast<double>(wav.samples.size()) / wav.blockAlign / wav.sampleRate;
}

std::vector<float> samplesOf(const WavFile& wav) {
    const std::vector<double> levels = levelsOf(wav.samples.data(), wav.samples.size());
    return {levels.begin(), levels.end()};
}

/// LUFS; of one that goes round over two rounds.
double loudnessOf(const WavFile& wav, bool goesRound) {
    std::vector<float> samples = samplesOf(wav);
    if (goesRound) {
        const std::vector<float> round = samples;
        samples.insert(samples.end(), round.begin(), round.end());
    }
    return Loudness::integrated(samples, wav.channels, wav.sampleRate);
}

/// Reads settings of the game.
class SettingsDataTest : public ModuleTest {
protected:
    SettingsDataTest() { std::filesystem::current_path(dataFolder); }
    ~SettingsDataTest() override { std::filesystem::current_path(before); }

    const std::filesystem::path before = std::filesystem::current_path();
};

} // namespace

TEST_F(SettingsDataTest, ACountLastsAsLongAsItsSoundOrATenthOfASecondMore) {
    const ConfigFile settings("cfg\\menu_levelFinished.cfg");
    for (const std::string count : {"water", "time", "total"}) {
        const HeldWav wav = readWav(settings.getVarAsString(count + "RampUpSound"));
        const auto seconds = static_cast<double>(settings.getVarAsFloat(count + "RampUpTime"));

        EXPECT_LE(secondsOf(wav), seconds + 0.001) << count << ": the end of the sound is never heard";
        EXPECT_GE(secondsOf(wav), seconds - 0.1) << count << ": the count goes on in silence";
        EXPECT_NEAR(loudnessOf(wav, false), musicLoudness, alike) << count;
    }
}

TEST_F(SettingsDataTest, WhatGoesRoundTakesTwentySecondsAndIsAboutAsLoudAsTheMusic) {
    const ConfigFile water("cfg\\game_sfx.cfg");
    const ConfigFile menus("cfg\\menu_general.cfg");
    std::set<std::string> names = {menus.getVarAsString("menuBgSound")};
    for (const char* const key :
         {"waterSound_ambient", "iceSound_freeze", "iceSound_friction", "steamEvaporate", "steamAmbient"}) {
        names.insert(water.getVarAsString(key));
    }
    for (const auto& entry : std::filesystem::directory_iterator(dataFolder / "maps")) {
        std::ifstream file(entry.path(), std::ios::binary);
        LevelFile level;
        ASSERT_EQ(LevelFile::read(file, level), nullptr) << entry.path();
        for (const LevelFile::SoundSourceRecord& source : level.soundSources) {
            if (source.looping != 0) {
                names.insert(source.soundName);
            }
        }
    }
    EXPECT_GE(names.size(), 10u);
    for (const std::string& name : names) {
        const HeldWav wav = readWav(name);
        EXPECT_TRUE(loops.contains(std::filesystem::path(name.substr(name.find('\\') + 1)).stem())) << name;
        EXPECT_GE(secondsOf(wav), shortestLoop) << name;
        const double sparse = name == "snd\\drip.wav" ? 3.0 : 0.0; // mostly silence
        EXPECT_NEAR(loudnessOf(wav, true), musicLoudness - sparse, alike) << name;
    }
    EXPECT_NEAR(loudnessOf(readWav(water.getVarAsString("waterSound_ambient")), true), musicLoudness, 1.0);
    EXPECT_NEAR(loudnessOf(readWav(menus.getVarAsString("menuBgSound")), true), musicLoudness, 1.0);
}

TEST_F(SettingsDataTest, FreezingIsNotShrill) {
    const HeldWav wav = readWav(ConfigFile("cfg\\game_sfx.cfg").getVarAsString("iceSound_freeze"));

    EXPECT_LT(Loudness::shareAbove(samplesOf(wav), wav.sampleRate, shrill), 0.1);
}

TEST(SoundDataTest, EverySoundIsReadAndBelowClippingAndEndsWithoutAClick) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(dataFolder / "snd")) {
        const std::string name = entry.path().stem();
        const HeldWav wav = readWav("snd/" + name + ".wav");
        ASSERT_EQ(wav.bitsPerSample, 16) << name;
        ASSERT_EQ(wav.samples.size() % wav.blockAlign, 0u) << name;
        const std::vector<double> levels = levelsOf(wav.samples.data(), wav.samples.size());

        EXPECT_LT(peakOf(levels), 0.8) << name;
        EXPECT_GT(peakOf(levels), 0.02) << name;
        if (loops.contains(name)) {
            EXPECT_LT(seamOf(levels, wav.channels), 1.0) << name;
        } else {
            EXPECT_LT(std::abs(levels.front()), quietEnd) << name;
            EXPECT_LT(std::abs(levels.back()), quietEnd) << name;
        }
        ++files;
    }
    EXPECT_GT(files, 40);
}

TEST(SoundDataTest, EverySoundAndMusicThatTheSettingsNameIsThere) {
    int names = 0;
    for (const auto& entry : std::filesystem::directory_iterator(dataFolder / "cfg")) {
        std::istringstream words(contentOf(entry.path()));
        for (std::string name; words >> name;) {
            if (name.ends_with(".wav") || name.ends_with(".ogg")) {
                std::ranges::replace(name, '\\', '/');
                EXPECT_TRUE(std::filesystem::exists(dataFolder / name)) << entry.path() << ": " << name;
                ++names;
            }
        }
    }
    EXPECT_GT(names, 30);
}

TEST(SoundDataTest, MusicIsLongEnoughAndLeavesRoomForTheWaterAndLoopsWithoutASeam) {
    SDL_SetHintWithPriority(SDL_HINT_AUDIODRIVER, "dummy", SDL_HINT_OVERRIDE);
    ASSERT_EQ(SDL_InitSubSystem(SDL_INIT_AUDIO), 0);
    ASSERT_EQ(Mix_OpenAudioDevice(44'100, AUDIO_S16LSB, 2, 1024, nullptr, 0), 0);
    for (const char* const name : {"menu.ogg", "play.ogg"}) {
        Mix_Chunk* const piece = Mix_LoadWAV((dataFolder / "music" / name).c_str());
        ASSERT_NE(piece, nullptr) << name;
        const std::vector<double> levels = levelsOf(piece->abuf, piece->alen);
        Mix_FreeChunk(piece);
        const std::vector<float> samples(levels.begin(), levels.end());

        EXPECT_NEAR(Loudness::integrated(samples, 2, 44'100.0), musicLoudness, 0.7) << name;

        EXPECT_GT(static_cast<double>(levels.size()) / 2.0 / 44'100.0, shortestMusic) << name;
        EXPECT_LT(peakOf(levels), musicPeak) << name;
        EXPECT_LT(seamOf(levels, 2), 1.0) << name;
    }
    Mix_CloseAudio();
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    SDL_ResetHint(SDL_HINT_AUDIODRIVER);
}

} // namespace tarnwick
