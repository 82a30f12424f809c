#include "audio/SoundSourceManager.h"

#include "audio/SoundSystem.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"
#include "gui/GameMenus.h"
#include "level/Level.h"
#include "mechanisms/TriggerHandlers.h"
#include "mechanisms/TriggerManager.h"
#include "support/ConsoleAnswer.h"
#include "support/LevelFileBuilder.h"
#include "support/LoopbackTest.h"
#include "support/SceneAccess.h"

#include <cmath>
#include <iterator>

namespace tarnwick {

class SoundSourceManagerTest : public LoopbackTest {
protected:
    static constexpr float fullScale = 32'768.0f;
    static constexpr std::size_t rampFrames = 4'096; ///< Longer than the mixer takes to a new loudness.
    static constexpr float reach = 500.0f;

    SoundSourceManagerTest() {
        data.write("snd/wind.wav", monoWav(steadySamples(100, 16'384)));
        data.write("snd/wave.wav", monoWav(waveSamples(7'000, 11)));
        data.write("snd/drip.wav", monoWav(steadySamples(1'000, 8'192)));
        SoundSourceManager::initialise();
        viewFrom(0.0f);
    }

    static void viewFrom(float x) { SceneAccess::placeCamera({x, 0.0f}, {0.0f, 0.0f}, 0.0f, 1.0f); }
    static void add(const char* name, float x, bool looping, std::int32_t id) {
        SoundSourceManager::addSoundSource(SoundSource(Sound(name), x, 0.0f, looping, id, reach));
    }
    /// The newest source of an id.
    static SoundSource& newest(std::int32_t id) {
        std::list<SoundSource*> list;
        SoundSourceManager::getSoundSources(id, list);
        return *list.front();
    }
    /// What a source is heard at in the end.
    static float level() { return heard(rampFrames).back(); }
    /// A level with a looping source of id 1, and one of id 2 that a trigger is there to start.
    void loadLevel() {
        LevelFile file;
        file.soundSources.push_back({1, {0, 0}, 500, 1, "snd\\wind.wav"});
        file.soundSources.push_back({2, {0, 0}, 500, 1, "snd\\wave.wav"});
        file.soundSources.push_back({3, {0, 0}, 500, 0, "snd\\drip.wav"});
        file.triggers.push_back({2, 100, 0.0f, {{0, 0}, {0, 1}, {1, 1}, {1, 0}}});
        data.write("maps/sounds.rivl", LevelFileBuilder::write(file));
        GLWindow::createHeadless(800, 600);
        Level::load("maps\\sounds.rivl");
    }
};

TEST_F(SoundSourceManagerTest, ALevelsSourcesLieWhereItsFileSaysAndReachAsFar) {
    LevelFile file;
    file.soundSources.push_back({7, {100, -200}, 400, 1, "snd\\wind.wav"});
    file.soundSources.push_back({8, {-30, 40}, 250, 0, "snd\\drip.wav"});
    data.write("maps/sounds.rivl", LevelFileBuilder::write(file));
    GLWindow::createHeadless(800, 600);

    Level::load("maps\\sounds.rivl");

    const SoundSource& looping = newest(7);
    EXPECT_EQ(looping.x, 100.0f);
    EXPECT_EQ(looping.y, -200.0f);
    EXPECT_EQ(looping.strenght, 400.0f);
    EXPECT_TRUE(looping.looping);
    EXPECT_EQ(looping.sound.getName(), "snd\\wind.wav");
    const SoundSource& once = newest(8);
    EXPECT_EQ(once.x, -30.0f);
    EXPECT_EQ(once.y, 40.0f);
    EXPECT_EQ(once.strenght, 250.0f);
    EXPECT_FALSE(once.looping);
    EXPECT_EQ(once.sound.getName(), "snd\\drip.wav");
}

TEST_F(SoundSourceManagerTest, ASourceOfValuesIsStoppedAndTheDefaultOneIsNot) {
    const SoundSource made(Sound("snd\\wind.wav"), 3.0f, 4.0f, true, 9, -2.0f);
    const SoundSource plain;

    EXPECT_TRUE(made.stopped);
    EXPECT_TRUE(made.looping);
    EXPECT_EQ(made.strenght, -2.0f);
    EXPECT_EQ(made.id, 9);
    EXPECT_FALSE(plain.stopped);
    EXPECT_FALSE(plain.looping);
    EXPECT_EQ(plain.strenght, 1000.0f);
    EXPECT_EQ(plain.id, -1);
    EXPECT_EQ(plain.sound.getName(), "SND\\DEFAULT.WAV");
}

TEST_F(SoundSourceManagerTest, TheReachThatIsSetIsAtLeastOne) {
    SoundSource source;

    source.setStrenght(0.5f);
    EXPECT_EQ(source.strenght, 1.0f);
    source.setStrenght(7.0f);
    EXPECT_EQ(source.strenght, 7.0f);
}

TEST_F(SoundSourceManagerTest, StartAndEndAreTold) {
    GLConsole::clear();

    SoundSourceManager::initialise();

    EXPECT_EQ(GLConsole::outputText(),
              "\nShutting down sound source manager..\nInitialising sound source manager..");
}

TEST_F(SoundSourceManagerTest, AfterShutdownSourcesAndCommandsAreGone) {
    add("snd\\wind.wav", 0.0f, true, 1);
    SoundSourceManager::playSounds(1);

    SoundSourceManager::shutdown();

    EXPECT_EQ(SoundSystem::voicesInUse(), 0u);
    EXPECT_TRUE(soundList().empty());
    for (const char* const command : {"SOUNDSOURCECREATE", "SOUNDSOURCECOUNT", "SOUNDSOURCEDRAW"}) {
        EXPECT_FALSE(GLConsole::commands().contains(command)) << command;
    }
}

TEST_F(SoundSourceManagerTest, ALoopingSourceThatIsNotStoppedIsHeardAtOnce) {
    SoundSource source(Sound("snd\\wind.wav"), 0.0f, 0.0f, true, 1, reach);
    SoundSourceManager::addSoundSource(source);
    EXPECT_FALSE(newest(1).sound.isPlaying());

    source.stopped = false;
    SoundSourceManager::addSoundSource(source);

    EXPECT_TRUE(newest(1).sound.isLooping());
}

TEST_F(SoundSourceManagerTest, SourcesOfAnIdAreListedLoopingOnesFirstAndNewestFirst) {
    add("snd\\drip.wav", 1.0f, false, 5);
    add("snd\\wind.wav", 2.0f, true, 5);
    add("snd\\wind.wav", 3.0f, true, 5);
    add("snd\\wind.wav", 4.0f, true, 6);
    std::list<SoundSource*> list;

    SoundSourceManager::getSoundSources(5, list);

    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(list.front()->x, 3.0f);
    EXPECT_EQ((*std::next(list.begin()))->x, 2.0f);
    EXPECT_EQ(list.back()->x, 1.0f);
}

TEST_F(SoundSourceManagerTest, LoudnessFallsWithTheDistanceOfTheViewAndEndsAtTheReach) {
    add("snd\\wind.wav", 0.0f, true, 1);
    SoundSourceManager::playExcludedSounds({});

    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
    EXPECT_EQ(newest(1).sound.getVolume(), 1.0f);
    EXPECT_EQ(level(), 0.5f);
    viewFrom(-250.0f);
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
    EXPECT_EQ(newest(1).sound.getVolume(), 0.5f);
    EXPECT_NEAR(level(), 0.5f * std::pow(10.0f, -0.647f), 1e-4f); // -12.94 dB
    viewFrom(500.0f);
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
    EXPECT_FALSE(newest(1).sound.isPlaying());
    EXPECT_FALSE(newest(1).stopped);
    viewFrom(499.0f);
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
    EXPECT_TRUE(newest(1).sound.isLooping());
}

TEST_F(SoundSourceManagerTest, TheViewIsTheCameraWithItsShake) {
    add("snd\\wind.wav", 100.0f, true, 1);
    SoundSourceManager::playExcludedSounds({});
    SceneAccess::placeCamera({60.0f, 30.0f}, {40.0f, -30.0f}, 0.0f, 1.0f);

    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());

    EXPECT_EQ(newest(1).sound.getVolume(), 1.0f);
}

TEST_F(SoundSourceManagerTest, ASourceWithoutReachIsNoHarm) {
    SoundSourceManager::addSoundSource(SoundSource(Sound("snd\\wind.wav"), 0.0f, 0.0f, true, 1, 0.0f));
    SoundSourceManager::playExcludedSounds({});

    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard()); // 0 over 0
    EXPECT_EQ(newest(1).sound.getVolume(), 0.0f);
    viewFrom(1.0f);
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
    EXPECT_FALSE(newest(1).sound.isPlaying());
}

TEST_F(SoundSourceManagerTest, APauseSilencesLoopingSourcesAndTheyComeBackInStep) {
    add("snd\\wave.wav", 0.0f, true, 1);
    add("snd\\wave.wav", 100.0f, true, 2);
    GLWindow::createHeadless(800, 600);
    data.write("maps/empty.rivl", LevelFileBuilder::write({}));
    SoundSourceManager::playExcludedSounds({});
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
    heard(1'000);
    GLConsole::runLine("Pause true"); // there is no game yet, and so no such command
    EXPECT_TRUE(newest(1).sound.isPlaying());

    Game::keyboardPressed(0x13);
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
    EXPECT_EQ(SoundSystem::voicesInUse(), 0u);
    EXPECT_EQ(heard(500), std::vector<float>(500));
    Game::keyboardPressed(0x13);
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());

    EXPECT_TRUE(newest(1).sound.isPlaying());
    Sound probe("snd\\wave.wav");
    EXPECT_TRUE(probe.synchroniseWith(newest(1).sound));
    newest(2).sound.setVolume(1.0f);
    newest(1).sound.setVolume(1.0f);
    heard(rampFrames);
    const std::vector<std::int16_t> wave = waveSamples(7'000, 11);
    const std::vector<float> line = heard(3'000);
    for (std::size_t i = 0; i < line.size(); ++i) {
        const std::size_t at = (1'000 + rampFrames + i) % wave.size();
        ASSERT_NEAR(line[i], 2.0f * static_cast<float>(wave[at]) / fullScale, 2e-6f) << i;
    }
}

TEST_F(SoundSourceManagerTest, AMenuSilencesLoopingSourcesUntilItGoes) {
    add("snd\\wave.wav", 0.0f, true, 1);
    GLWindow::createHeadless(800, 600);
    GameMenus::initialise();
    SoundSourceManager::playExcludedSounds({});
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
    heard(1'000);

    GameMenus::setCurrentMenu(menu::inGame);
    EXPECT_TRUE(newest(1).sound.isPlaying()); // until the next update
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
    EXPECT_FALSE(newest(1).sound.isPlaying());
    heard(500);
    GameMenus::setCurrentMenu(menu::none);
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());

    EXPECT_TRUE(newest(1).sound.isLooping());
    heard(rampFrames);
    const std::size_t at = (1'000 + rampFrames) % 7'000; // it went on where it stood
    EXPECT_NEAR(heard(1)[0], static_cast<float>(waveSamples(7'000, 11)[at]) / fullScale, 1e-6f);
}

TEST_F(SoundSourceManagerTest, ASourceThatComesInRangeLaterStartsWhereTheOtherIs) {
    add("snd\\wave.wav", 0.0f, true, 1);
    add("snd\\wave.wav", 900.0f, true, 2);
    SoundSourceManager::playExcludedSounds({});
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
    heard(1'234);
    EXPECT_FALSE(newest(2).sound.isPlaying());
    viewFrom(450.0f);

    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
    newest(1).sound.setVolume(1.0f);
    newest(2).sound.setVolume(1.0f);
    heard(rampFrames);
    const std::vector<float> line = heard(3'000);

    const std::vector<std::int16_t> wave = waveSamples(7'000, 11);
    for (std::size_t i = 0; i < line.size(); ++i) {
        const std::size_t at = (1'234 + rampFrames + i) % wave.size();
        ASSERT_NEAR(line[i], 2.0f * static_cast<float>(wave[at]) / fullScale, 2e-6f) << i;
    }
}

TEST_F(SoundSourceManagerTest, TheFirstSilentSourceEndsTheSearch) {
    add("snd\\wave.wav", 0.0f, true, 1);
    add("snd\\wind.wav", 9'000.0f, true, 0); // out of reach, and met first
    add("snd\\wave.wav", 0.0f, true, 2);
    SoundSourceManager::playSounds(1);
    heard(100);

    SoundSourceManager::syncLoopingSound(newest(2));
    newest(1).sound.stop();
    newest(2).sound.loop();
    heard(20);

    EXPECT_NEAR(heard(1)[0], static_cast<float>(waveSamples(7'000, 11)[20]) / fullScale, 1e-6f);
}

TEST_F(SoundSourceManagerTest, NamesOfAnotherCaseAreAnotherSound) {
    add("snd\\wave.wav", 0.0f, true, 1);
    add("SND\\WAVE.WAV", 0.0f, true, 2);
    SoundSourceManager::playSounds(1);
    heard(100);

    SoundSourceManager::syncLoopingSound(newest(2));
    newest(1).sound.stop();
    newest(2).sound.loop();

    EXPECT_EQ(heard(1)[0], 0.0f); // from its own start
}

TEST_F(SoundSourceManagerTest, OnceSourcesPlayAtFullVolumeWhereverTheViewIs) {
    add("snd\\drip.wav", 9'000.0f, false, 1);

    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
    EXPECT_FALSE(newest(1).sound.isPlaying());
    SoundSourceManager::playSounds(1);
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());

    EXPECT_EQ(heard(500).back(), 0.25f);
    EXPECT_FALSE(newest(1).sound.isLooping());
    EXPECT_FALSE(newest(1).stopped);
    heard(600);
    EXPECT_FALSE(newest(1).sound.isPlaying());
}

TEST_F(SoundSourceManagerTest, StoppingAnIdStopsBothKindsUntilTheyArePlayed) {
    add("snd\\drip.wav", 0.0f, false, 1);
    add("snd\\wind.wav", 0.0f, true, 1);
    SoundSourceManager::playSounds(1);
    EXPECT_EQ(SoundSystem::voicesInUse(), 2u);

    SoundSourceManager::stopSounds(1);
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
    EXPECT_EQ(SoundSystem::voicesInUse(), 0u);
    EXPECT_TRUE(newest(1).stopped);
    SoundSourceManager::playSounds(1);
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());

    EXPECT_EQ(SoundSystem::voicesInUse(), 2u);
}

TEST_F(SoundSourceManagerTest, PausingAllStopsBothKindsAndTheUpdateBringsBackTheLoops) {
    add("snd\\drip.wav", 0.0f, false, 1);
    add("snd\\wind.wav", 0.0f, true, 2);
    SoundSourceManager::playSounds(1);
    SoundSourceManager::playSounds(2);

    SoundSourceManager::pauseAllSounds();
    EXPECT_EQ(SoundSystem::voicesInUse(), 0u);
    EXPECT_FALSE(newest(1).stopped);
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());

    EXPECT_FALSE(newest(1).sound.isPlaying());
    EXPECT_TRUE(newest(2).sound.isLooping());
}

TEST_F(SoundSourceManagerTest, ResumingAllPlaysWhatIsNotStoppedOnce) {
    add("snd\\drip.wav", 0.0f, false, 1);
    add("snd\\wind.wav", 0.0f, true, 2);
    add("snd\\wind.wav", 0.0f, true, 3);
    SoundSourceManager::playSounds(1);
    SoundSourceManager::playSounds(2);
    SoundSourceManager::pauseAllSounds();

    SoundSourceManager::resumeAllSounds();

    EXPECT_TRUE(newest(1).sound.isPlaying());
    EXPECT_TRUE(newest(2).sound.isPlaying());
    EXPECT_FALSE(newest(2).sound.isLooping());
    EXPECT_FALSE(newest(3).sound.isPlaying());
}

TEST_F(SoundSourceManagerTest, LoopsThatNoTriggerStartsAreSilentUntilTheUpdate) {
    add("snd\\wind.wav", 0.0f, true, 1);
    add("snd\\wind.wav", 0.0f, true, 2);
    add("snd\\drip.wav", 0.0f, false, 3);

    SoundSourceManager::playExcludedSounds({2});

    EXPECT_TRUE(newest(1).sound.isLooping());
    EXPECT_EQ(newest(1).sound.getVolume(), 0.0f);
    EXPECT_FALSE(newest(1).stopped);
    EXPECT_FALSE(newest(2).sound.isPlaying());
    EXPECT_TRUE(newest(2).stopped);
    EXPECT_FALSE(newest(3).sound.isPlaying());
}

TEST_F(SoundSourceManagerTest, ResettingStopsAndRewindsAndEndsTheDrawing) {
    add("snd\\wave.wav", 0.0f, true, 1);
    SoundSourceManager::playSounds(1);
    heard(1'000);
    GLConsole::runLine("SoundSourceDraw true");

    SoundSourceManager::resetSounds();

    EXPECT_TRUE(newest(1).stopped);
    EXPECT_FALSE(newest(1).sound.isPlaying());
    EXPECT_EQ(answerTo("SoundSourceDraw"), "\nSoundSourceDraw is false");
    newest(1).sound.play();
    EXPECT_EQ(heard(1)[0], 0.0f); // the start of the wave
}

TEST_F(SoundSourceManagerTest, AtLevelStartALoopPlaysUnlessATriggerIsThereToStartIt) {
    loadLevel();

    EXPECT_TRUE(newest(1).sound.isLooping());
    EXPECT_FALSE(newest(2).sound.isPlaying());
    EXPECT_TRUE(newest(2).stopped);
    EXPECT_FALSE(newest(3).sound.isPlaying());
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
    EXPECT_FALSE(newest(2).sound.isPlaying());

    Trigger trigger = TriggerManager::triggers.front();
    trigFuncSoundPlay(&trigger, nullptr, BodyKind::particle, 0.0f);
    EXPECT_TRUE(newest(2).sound.isLooping());
    viewFrom(1'000.0f);
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
    EXPECT_FALSE(newest(2).sound.isPlaying());
    viewFrom(0.0f);
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
    EXPECT_TRUE(newest(2).sound.isLooping());
    trigFuncSoundStop(&trigger, nullptr, BodyKind::particle, 0.0f);
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
    EXPECT_FALSE(newest(2).sound.isPlaying());
}

TEST_F(SoundSourceManagerTest, ALevelStartedAgainSoundsAsAtItsStart) {
    loadLevel();
    SoundSourceManager::playSounds(2);
    SoundSourceManager::playSounds(3);
    SoundSourceManager::stopSounds(1);

    Level::reset();

    EXPECT_TRUE(newest(1).sound.isLooping());
    EXPECT_TRUE(newest(2).stopped);
    EXPECT_FALSE(newest(2).sound.isPlaying());
    EXPECT_FALSE(newest(3).sound.isPlaying());
}

TEST_F(SoundSourceManagerTest, LoadingALevelTakesADefaultSoundForEachSourceForGood) {
    loadLevel();
    EXPECT_EQ(references("snd\\default.wav"), 3);
    EXPECT_EQ(references("snd\\wind.wav"), 1);

    Level::clear();

    EXPECT_EQ(references("snd\\default.wav"), 3);
    EXPECT_EQ(references("snd\\wind.wav"), 0);
    EXPECT_EQ(SoundSystem::voicesInUse(), 0u);
}

/// Also those that are in the middle of being heard once.
TEST_F(SoundSourceManagerTest, AChangeOfLevelDropsTheSourcesOfBothKinds) {
    loadLevel();
    SoundSourceManager::playSounds(3);
    EXPECT_TRUE(newest(3).sound.isPlaying());
    data.write("maps/silent.rivl", LevelFileBuilder::write({}));

    Level::load("maps\\silent.rivl");

    for (const std::int32_t id : {1, 2, 3}) {
        std::list<SoundSource*> list;
        SoundSourceManager::getSoundSources(id, list);
        EXPECT_TRUE(list.empty()) << id;
    }
    EXPECT_EQ(answerTo("SoundSourceCount"), "\nSoundSourceCount is 0");
    EXPECT_EQ(SoundSystem::voicesInUse(), 0u);
    EXPECT_EQ(references("snd\\drip.wav"), 0);
    EXPECT_EQ(heard(100), std::vector<float>(100));
}

TEST_F(SoundSourceManagerTest, TheCommandMakesAStoppedSource) {
    EXPECT_EQ(answerTo("SoundSourceCreate -1.5 2.5 300 true -7 snd\\wind.wav"), "");

    const SoundSource& made = newest(-7);
    EXPECT_EQ(made.x, -1.5f);
    EXPECT_EQ(made.y, 2.5f);
    EXPECT_EQ(made.strenght, 300.0f);
    EXPECT_TRUE(made.looping);
    EXPECT_TRUE(made.stopped);
    EXPECT_EQ(made.sound.getName(), "snd\\wind.wav");
    EXPECT_FALSE(made.sound.isPlaying());
    EXPECT_EQ(references("snd\\wind.wav"), 1);
}

TEST_F(SoundSourceManagerTest, WrongArgumentsPrintTheUsageAndMakeNothing) {
    const std::string usage =
        "\nUSAGE: SoundSourceCreate < x : number > < y : number > < strenght : number > "
        "< looping : true OR false > < id : integer > < fileName > ";

    EXPECT_EQ(answerTo("SoundSourceCreate 1 2 300 true 7"), usage);
    EXPECT_EQ(answerTo("SoundSourceCreate 1 2 300 true 7 snd\\a b.wav"), usage);
    EXPECT_EQ(answerTo("SoundSourceCreate x 2 300 true 7 snd\\a.wav"), usage);
    EXPECT_EQ(answerTo("SoundSourceCreate 1 2e1 300 true 7 snd\\a.wav"), usage);
    EXPECT_EQ(answerTo("SoundSourceCreate 1 2 +300 true 7 snd\\a.wav"), usage);
    EXPECT_EQ(answerTo("SoundSourceCreate 1 2 300 1 7 snd\\a.wav"), usage);
    EXPECT_EQ(answerTo("SoundSourceCreate 1 2 300 true 7.5 snd\\a.wav"), usage);
    EXPECT_EQ(answerTo("SoundSourceCount"), "\nSoundSourceCount is 0");
}

TEST_F(SoundSourceManagerTest, TheCountIsThatOfIdsOfEachKind) {
    for (int i = 0; i < 3; ++i) {
        add("snd\\wind.wav", 0.0f, true, 1);
    }
    EXPECT_EQ(answerTo("SoundSourceCount"), "\nSoundSourceCount is 1");
    add("snd\\drip.wav", 0.0f, false, 1);
    EXPECT_EQ(answerTo("SoundSourceCount"), "\nSoundSourceCount is 2");
}

TEST_F(SoundSourceManagerTest, InertSourcesGoThroughAllTheMotions) {
    SoundSystem::shutdown();
    add("snd\\wind.wav", 0.0f, true, 1);
    add("snd\\wind.wav", 0.0f, true, 2);

    SoundSourceManager::playExcludedSounds({2});
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
    SoundSourceManager::playSounds(2);
    SoundSourceManager::pauseAllSounds();
    SoundSourceManager::resumeAllSounds();

    EXPECT_FALSE(newest(1).stopped);
    EXPECT_FALSE(newest(2).stopped);
    EXPECT_EQ(newest(1).sound.getVolume(), 1.0f);
    EXPECT_FALSE(newest(1).sound.isPlaying());
}

} // namespace tarnwick
