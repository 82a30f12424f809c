#include "audio/Sound.h"
#include "audio/SoundSourceManager.h"
#include "audio/SoundSystem.h"
#include "core/View.h"
#include "support/LoopbackTest.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <list>
#include <vector>

namespace tarnwick {

/// A level of more looping sources than there are voices, in a row along the x axis: the place of each is its
/// id.
class SoundVoicesTest : public LoopbackTest {
protected:
    static constexpr std::int32_t sources = 400;
    static constexpr float reach = 500.0f;
    static constexpr std::size_t forSources = SoundSystem::largestVoiceCount - SoundSystem::voicesLeft;
    static constexpr std::size_t rampFrames = 4'096; ///< Longer than the mixer takes to come to a loudness.
    static constexpr std::size_t waveLength = 7'000;

    SoundVoicesTest()
        : wave(waveSamples(waveLength, 11)) {
        for (std::int16_t& sample : wave) {
            sample = static_cast<std::int16_t>(sample / 256);
        }
        data.write("snd/wave.wav", monoWav(wave));
        data.write("snd/drip.wav", monoWav(steadySamples(1'000, 16)));
        SoundSourceManager::initialise();
    }

    static void add(std::int32_t id, float x, bool looping = true, const char* name = "snd\\wave.wav") {
        SoundSourceManager::addSoundSource(SoundSource(Sound(name), x, 0.0f, looping, id, reach));
    }
    static void addRow() {
        for (std::int32_t id = 0; id < sources; ++id) {
            add(id, static_cast<float>(id));
        }
        SoundSourceManager::playExcludedSounds({});
    }
    static void hearFrom(float x, bool heard = true) {
        View view;
        view.position = {x, 0.0f};
        SoundSourceManager::updateAllSounds(view, heard);
    }
    static Sound& soundOf(std::int32_t id) {
        std::list<SoundSource*> list;
        SoundSourceManager::getSoundSources(id, list);
        return list.front()->sound;
    }
    /// The sources that sound.
    static std::vector<std::int32_t> playing() {
        std::vector<std::int32_t> ids;
        for (std::int32_t id = 0; id < sources; ++id) {
            if (soundOf(id).isPlaying()) {
                ids.push_back(id);
            }
        }
        return ids;
    }
    static std::vector<std::int32_t> from(std::int32_t first, std::size_t count) {
        std::vector<std::int32_t> ids(count);
        for (std::size_t i = 0; i < count; ++i) {
            ids[i] = first + static_cast<std::int32_t>(i);
        }
        return ids;
    }

    std::vector<std::int16_t> wave;
};

TEST_F(SoundVoicesTest, OfMoreLoopsThanVoicesTheLoudestAreHeard) {
    addRow();

    hearFrom(-10.0f);
    EXPECT_EQ(playing(), from(0, forSources));
    hearFrom(static_cast<float>(sources)); // from the other end, in one update
    EXPECT_EQ(playing(), from(sources - static_cast<std::int32_t>(forSources), forSources));
    EXPECT_EQ(soundOf(sources - 1).getVolume(), 1.0f - 1.0f / reach);
}

TEST_F(SoundVoicesTest, OfEquallyLoudLoopsTheFirstAreHeard) {
    for (std::int32_t id = 0; id < sources; ++id) {
        add(id, 0.0f);
    }
    SoundSourceManager::playExcludedSounds({});

    hearFrom(5.0f);
    EXPECT_EQ(playing(), from(0, forSources));
    SoundSourceManager::stopSounds(0);
    hearFrom(5.0f);
    EXPECT_EQ(playing(), from(1, forSources)); // the first that waits takes the voice
}

TEST_F(SoundVoicesTest, ALevelLeavesVoicesToMenusAndSplashes) {
    addRow();
    for (std::int32_t i = 0; i < sources; ++i) {
        add(1'000, 0.0f, false, "snd\\drip.wav");
    }
    hearFrom(0.0f);
    SoundSourceManager::playSounds(1'000); // every trigger at once
    EXPECT_EQ(SoundSystem::voicesInUse(), forSources);

    std::list<Sound> others;
    for (std::size_t i = 0; i < SoundSystem::voicesLeft; ++i) {
        others.emplace_back("snd\\drip.wav").play();
        EXPECT_TRUE(others.back().isPlaying()) << i;
    }
    others.emplace_back("snd\\drip.wav").play();
    EXPECT_FALSE(others.back().isPlaying());
    hearFrom(10.0f); // those in use are not asked for
    EXPECT_EQ(playing().size(), forSources);
}

TEST_F(SoundVoicesTest, VoicesOfSoundsThatHaveEndedGoToTheLoops) {
    for (std::int32_t i = 0; i < 100; ++i) {
        add(1'000, 0.0f, false, "snd\\drip.wav");
    }
    SoundSourceManager::playSounds(1'000);
    addRow();
    hearFrom(-10.0f);
    EXPECT_EQ(playing(), from(0, forSources - 100));

    heard(1'100); // the hundred come to their end
    hearFrom(-10.0f);

    EXPECT_EQ(playing(), from(0, forSources));
}

TEST_F(SoundVoicesTest, AVoiceThatIsLeftGoesToTheNextInTheSameUpdate) {
    addRow();
    hearFrom(-276.5f); // the last in reach is 223: each that should be heard is
    EXPECT_EQ(playing(), from(0, forSources));

    hearFrom(500.5f); // 0 is out of reach; 1 to 175 are the quietest of the others

    EXPECT_EQ(playing(), from(sources - static_cast<std::int32_t>(forSources), forSources));
}

TEST_F(SoundVoicesTest, WhoWaitsForAVoiceComesBackInStep) {
    addRow();
    hearFrom(-10.0f);
    heard(1'234);
    hearFrom(100.0f);
    heard(777);
    hearFrom(static_cast<float>(sources));
    for (const std::int32_t id : playing()) {
        soundOf(id).setVolume(1.0f);
    }
    heard(rampFrames);

    const std::vector<float> line = heard(3'000);

    for (std::size_t i = 0; i < line.size(); ++i) {
        const std::size_t at = (1'234 + 777 + rampFrames + i) % waveLength;
        ASSERT_NEAR(line[i], static_cast<float>(forSources) * static_cast<float>(wave[at]) / 32'768.0f, 2e-4f)
            << i;
    }
}

TEST_F(SoundVoicesTest, AMenuSilencesThemAllAndTheLoudestComeBack) {
    addRow();
    hearFrom(-10.0f);

    hearFrom(-10.0f, false);
    EXPECT_EQ(SoundSystem::voicesInUse(), 0u);
    hearFrom(-10.0f);

    EXPECT_EQ(playing(), from(0, forSources));
}

TEST_F(SoundVoicesTest, ALoopWithoutReachIsTheQuietestOfAll) {
    addRow();
    SoundSourceManager::addSoundSource(SoundSource(Sound("snd\\wave.wav"), -10.0f, 0.0f, true, -1, 0.0f));
    SoundSourceManager::playSounds(-1);

    hearFrom(-10.0f); // 0 over 0

    EXPECT_EQ(playing(), from(0, forSources));
    EXPECT_FALSE(soundOf(-1).isPlaying());
}

} // namespace tarnwick
