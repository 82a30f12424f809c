#include "audio/Sound.h"
#include "audio/SoundManager.h"
#include "audio/SoundSourceManager.h"
#include "audio/SoundSystem.h"
#include "game/Camera.h"
#include "game/GameRules.h"
#include "particles/ParticleManager.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"
#include "support/ToneFile.h"

namespace tarnwick {

/// The rules with their two sounds, of a second each, on a device that renders when it is asked.
class GameRulesSoundsTest : public ModuleTest {
protected:
    GameRulesSoundsTest() {
        data.write("snd/dead.wav", toneFile(44'100));
        data.write("snd/finish.wav", toneFile(44'100));
        data.write("cfg/game.cfg", "finishWaterVolume = 0.5 finishAnimationTime = 2 "
                                   "deadSound = snd\\dead.wav finishSound = snd\\finish.wav");
        SoundSystem::initialiseLoopback();
        SoundManager::initialise();
        GameRules::initialise();
        Camera::setState(Camera::normal);
    }

    static Sound& deadSound() { return *GameRules::state.deadSound; }
    static Sound& finishSound() { return *GameRules::state.finishSound; }

    DataFolder data;
};

TEST_F(GameRulesSoundsTest, AStartIsSilent) {
    EXPECT_FALSE(deadSound().isPlaying());
    EXPECT_FALSE(finishSound().isPlaying());
}

TEST_F(GameRulesSoundsTest, LostWaterIsHeardAtFullVolumeEachTimeFromTheStart) {
    deadSound().setVolume(0.25f);
    GameRules::update(0.01f); // no water
    const bool first = deadSound().isPlaying();
    SoundSystem::renderLoopback(30'000);
    ParticleManager::particles.clear();
    GameRules::update(0.01f);
    SoundSystem::renderLoopback(30'000);

    EXPECT_TRUE(first);
    EXPECT_EQ(deadSound().getVolume(), 1.0f);
    EXPECT_TRUE(deadSound().isPlaying()); // it began again, else it had ended
    EXPECT_FALSE(deadSound().isLooping());
}

TEST_F(GameRulesSoundsTest, TheFinishIsHeardOnce) {
    ParticleManager::particles.resize(10);
    GameRules::incrementEndOfLevelTriggerParticleCount(10);
    GameRules::update(0.01f);
    const bool begun = finishSound().isPlaying();
    SoundSystem::renderLoopback(50'000);

    GameRules::update(1.0f);

    EXPECT_TRUE(begun);
    EXPECT_FALSE(finishSound().isPlaying());
}

TEST_F(GameRulesSoundsTest, TheEndOfTheFinishSilencesTheSourcesOfTheLevel) {
    SoundSourceManager::addSoundSource(SoundSource(Sound("snd\\dead.wav"), 0.0f, 0.0f, true, 1, 100.0f));
    SoundSourceManager::addSoundSource(SoundSource(Sound("snd\\dead.wav"), 0.0f, 0.0f, false, 1, 100.0f));
    SoundSourceManager::playSounds(1);
    ParticleManager::particles.resize(10);
    GameRules::incrementEndOfLevelTriggerParticleCount(10);
    GameRules::update(0.01f);
    SoundSystem::renderLoopback(20'000);
    const std::size_t during = SoundSystem::voicesInUse();

    GameRules::update(2.0f);

    EXPECT_EQ(during, 3u); // the finish is heard with them
    EXPECT_EQ(SoundSystem::voicesInUse(), 1u);
}

TEST_F(GameRulesSoundsTest, TheSoundsAreMadeOnceAndStayTillTheEnd) {
    const Sound* const before = &deadSound();

    GameRules::initialise();
    EXPECT_EQ(&deadSound(), before);
    GameRules::shutdown();

    std::list<std::string> files;
    SoundManager::getSoundList(files);
    EXPECT_TRUE(files.empty());
}

TEST_F(GameRulesSoundsTest, WithoutFilesTheRulesGoOn) {
    GameRules::shutdown();
    data.write("cfg/game.cfg", "finishWaterVolume = 0.5");
    GameRules::initialise();

    GameRules::update(0.01f);
    GameRules::incrementEndOfLevelTriggerParticleCount(128);
    GameRules::update(0.01f);
    GameRules::update(0.01f);

    EXPECT_TRUE(GameRules::gameIsFinished());
    EXPECT_EQ(SoundSystem::voicesInUse(), 0u);
}

} // namespace tarnwick
