#include "audio/GameSfx_Disturbance.h"
#include "audio/GameSfx_Ice.h"
#include "audio/GameSfx_Loop.h"
#include "audio/GameSfx_Steam.h"
#include "audio/GameSfx_Water.h"
#include "audio/SoundManager.h"
#include "audio/SoundSystem.h"
#include "console/GLConsole.h"
#include "core/ConfigFile.h"
#include "core/Random.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "game/GameRules.h"
#include "graphics/GLWindow.h"
#include "gui/GameMenus.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "support/DataFolder.h"
#include "support/LevelFileBuilder.h"
#include "support/ModuleTest.h"
#include "support/ToneFile.h"
#include "support/WavText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace tarnwick {

/// The sounds of water, ice and steam on a device that renders when it is asked. Every file is a tone at half
/// of full scale: the loops one second, the splashes and cracks a tenth.
class GameSfxSoundsTest : public ModuleTest {
protected:
    GameSfxSoundsTest() {
        for (const char* loop : {"water", "freeze", "friction", "evaporate", "steam"}) {
            data.write(std::string("snd/") + loop + ".wav", toneFile(secondOfFrames));
        }
        std::string settings = "water_disturbance_level1_speed = 10 water_disturbance_level2_speed = 20 "
                               "water_disturbance_level3_speed = 30 waterSound_ambient_volume = 0.5 "
                               "ice_disturbance_level1_speed = 10 ice_disturbance_level2_speed = 20 "
                               "ice_disturbance_level3_speed = 30 "
                               "ice_frictionSpeed = 1 ice_freezeVolume = 1 ice_freezeVolumeFadeRate = 1 "
                               "waterSound_ambient = snd\\water.wav iceSound_freeze = snd\\freeze.wav "
                               "iceSound_friction = snd\\friction.wav steamEvaporate = snd\\evaporate.wav "
                               "steamAmbient = snd\\steam.wav";
        for (const char* level : {"1", "2", "3"}) {
            for (const char* variant : {"1", "2", "3", "4"}) {
                const std::string number = std::string(level) + "_" + variant;
                data.write("snd/splash_" + number + ".wav", toneFile(tenthOfFrames));
                data.write("snd/crack_" + number + ".wav", toneFile(tenthOfFrames));
                for (const auto& [key, file] : {std::pair{" waterSound_disturbance_level_", "splash_"},
                                                {" iceSound_disturbance_Level_", "crack_"}}) {
                    settings.append(key).append(number).append(" = snd\\");
                    settings.append(file).append(number).append(".wav");
                }
            }
        }
        data.write("cfg/game_sfx.cfg", settings);
        SoundSystem::initialiseLoopback();
        SoundManager::initialise();
    }
    ~GameSfxSoundsTest() override { GLWindow::close(); }

    static constexpr std::size_t secondOfFrames = 44'100;
    static constexpr std::size_t tenthOfFrames = 4'410;
    static constexpr float dt = 0.013333334f;

    static void initialise() {
        GameSfx_Ice::initialise();
        GameSfx_Water::initialise();
        GameSfx_Steam::initialise();
    }
    static void update() {
        GameSfx_Ice::update(dt, Game::levelIsHeard());
        GameSfx_Water::update(dt, Game::levelIsHeard());
        GameSfx_Steam::update(dt, Game::levelIsHeard());
    }
    static void addParticles(std::size_t count, float temperature, float speed) {
        for (std::size_t i = 0; i < count; ++i) {
            Particle& particle = ParticleManager::particles.emplace_back();
            particle.temperature = temperature;
            particle.velocity = {0.0f, speed};
        }
    }
    /// Something of everything, so that all five loops have a level.
    static void addAllMatter() {
        addParticles(128, 20.0f, 0.0f);
        addParticles(64, 120.0f, 0.0f);
        ParticleGroup& group = ParticleGroupMover::groups.emplace_back();
        group.members.resize(64);
        group.velocity = {100.0f, 0.0f};
        group.colliding = true;
    }
    /// A running game on an empty level, with its camera on the water.
    void play() const {
        data.write("maps/empty.rivl", LevelFileBuilder::write({}));
        GLWindow::close();
        GLWindow::createHeadless(800, 600);
        GLConsole::initialise();
        Game::initialise("maps\\empty.rivl");
        GameMenus::setCurrentMenu(menu::none);
        Camera::setState(Camera::normal);
        ParticleManager::particles.clear();
        ParticleGroupMover::groups.clear();
        addAllMatter();
    }

    /// Loudest sample of what comes next, once changes of volume have been ramped in. 0 to 1.
    static float loudest() {
        SoundSystem::renderLoopback(4096);
        float peak = 0.0f;
        for (const float sample : SoundSystem::renderLoopback(512)) {
            peak = std::max(peak, std::abs(sample));
        }
        return peak;
    }
    /// What the tone is heard at when its sound has this volume.
    static float toneAt(float volume) {
        const double decibels = (1.0 - std::pow(static_cast<double>(volume), 0.2)) * -100.0;
        return 0.5f * static_cast<float>(std::pow(10.0, decibels / 20.0));
    }
    /// Of water, freezing, friction, evaporation and steam.
    static std::array<GameSfx_Loop*, 5> loops() {
        return {&GameSfx_Water::state.ambient, &GameSfx_Ice::state.freeze, &GameSfx_Ice::state.friction,
                &GameSfx_Steam::state.evaporate, &GameSfx_Steam::state.ambient};
    }
    static std::size_t loopsPlaying() {
        std::size_t playing = 0;
        for (const GameSfx_Loop* const loop : loops()) {
            playing += loop->sound->isPlaying() && loop->sound->isLooping() ? 1u : 0u;
        }
        return playing;
    }
    static const GameSfx_Ice::State& ice() { return GameSfx_Ice::state; }
    static GameSfx_Disturbance::Settings& settingsOfWater() {
        return GameSfx_Water::state.disturbance.settings;
    }
    static Sound* soundOfWater() { return GameSfx_Water::state.ambient.sound.get(); }
    static bool plays(const GameSfx_Loop& loop) { return loop.sound->isPlaying(); }
    /// Splashes of a level that sound.
    static std::size_t splashesPlaying(std::size_t level) {
        const auto& sounds = GameSfx_Water::state.disturbance.sounds[level - 1];
        return static_cast<std::size_t>(
            std::ranges::count_if(sounds, [](const auto& sound) { return sound->isPlaying(); }));
    }
    static const Sound& splash(std::size_t level, std::size_t variant) {
        return *GameSfx_Water::state.disturbance.sounds[level - 1][variant];
    }
    static const Sound& crack(std::size_t level, std::size_t variant) {
        return *GameSfx_Ice::state.disturbance.sounds[level - 1][variant];
    }
    static void follow(GameSfx_Loop& loop, float level) { loop.follow(level, true); }
    static void hit(float fall, float share) {
        GameSfx_Water::state.disturbance.playDisturbanceSounds(fall, share);
    }

    static constexpr float tenthOfADecibel = 0.0115f; ///< As a share of the amplitude.
    DataFolder data;
};

TEST_F(GameSfxSoundsTest, TheLoopOfWaterIsAsLoudAsItsLevel) {
    initialise();
    addParticles(128, 20.0f, 0.0f);

    GameSfx_Water::update(dt, Game::levelIsHeard());

    EXPECT_NEAR(loudest(), toneAt(0.5f), toneAt(0.5f) * tenthOfADecibel);
}

TEST_F(GameSfxSoundsTest, TheLoopFollowsItsLevelAndGoesOnWithoutAGap) {
    initialise();
    addParticles(512, 20.0f, 0.0f); // a share of 4: the level of 1 is full

    GameSfx_Water::update(dt, Game::levelIsHeard());
    const float full = loudest();
    ParticleManager::particles.resize(128);
    GameSfx_Water::update(dt, Game::levelIsHeard());
    SoundSystem::renderLoopback(2 * secondOfFrames);
    const float half = loudest();

    EXPECT_NEAR(full, toneAt(1.0f), toneAt(1.0f) * tenthOfADecibel);
    EXPECT_NEAR(half, toneAt(0.5f), toneAt(0.5f) * tenthOfADecibel);
}

/// Each file has a level of its own: a loop of another's file would be heard at another.
TEST_F(GameSfxSoundsTest, EachLoopIsTheFileOfItsKey) {
    std::int16_t sample = 0;
    for (const char* const file : {"water", "freeze", "friction", "evaporate", "steam"}) {
        sample = static_cast<std::int16_t>(sample + 2'048);
        data.write(std::string("snd/") + file + ".wav", monoWav(steadySamples(1'000, sample)));
    }
    initialise();

    float expected = 0.0f;
    for (GameSfx_Loop* const loop : loops()) {
        expected += 2'048.0f / 32'768.0f;
        follow(*loop, 1.0f);
        EXPECT_EQ(loudest(), expected);
        follow(*loop, 0.0f);
    }
}

TEST_F(GameSfxSoundsTest, EachSplashAndCrackIsTheFileOfItsKey) {
    initialise();

    for (std::size_t level = 1; level <= GameSfx_Disturbance::levelCount; ++level) {
        for (std::size_t variant = 1; variant <= GameSfx_Disturbance::variantCount; ++variant) {
            const std::string number = std::to_string(level) + "_" + std::to_string(variant) + ".wav";
            EXPECT_EQ(splash(level, variant - 1).getName(), "snd\\splash_" + number);
            EXPECT_EQ(crack(level, variant - 1).getName(), "snd\\crack_" + number);
        }
    }
}

TEST_F(GameSfxSoundsTest, WithoutWaterTheLoopStops) {
    initialise();
    addParticles(128, 20.0f, 0.0f);
    GameSfx_Water::update(dt, Game::levelIsHeard());
    ParticleManager::particles.clear();

    GameSfx_Water::update(dt, Game::levelIsHeard());

    EXPECT_EQ(SoundSystem::voicesInUse(), 0u);
    EXPECT_EQ(loudest(), 0.0f);
}

TEST_F(GameSfxSoundsTest, ALoopStartsAtAThousandth) {
    GameSfx_Loop loop;
    loop.makeSound("snd\\water.wav");

    loop.follow(0.0009f, Game::levelIsHeard());
    const bool below = plays(loop);
    loop.follow(0.001f, Game::levelIsHeard());
    const bool at = plays(loop);
    loop.follow(0.0009f, Game::levelIsHeard());

    EXPECT_FALSE(below);
    EXPECT_TRUE(at);
    EXPECT_FALSE(plays(loop));
}

TEST_F(GameSfxSoundsTest, ALoopWithoutASoundIsSilent) {
    GameSfx_Loop loop;

    loop.follow(1.0f, Game::levelIsHeard());

    EXPECT_EQ(SoundSystem::voicesInUse(), 0u);
}

TEST_F(GameSfxSoundsTest, EverythingSoundsInPlay) {
    play();

    update();

    EXPECT_EQ(loopsPlaying(), 5u);
}

TEST_F(GameSfxSoundsTest, APauseSilencesAllLoopsAndTheirLevelsGoOn) {
    play();
    update();
    GLConsole::runLine("Pause true");
    ParticleGroupMover::groups.front().members.resize(100); // a freeze that nobody hears
    const float freezeLevel = ice().freezeLevel;

    update();
    const std::size_t whilePaused = loopsPlaying();
    GLConsole::runLine("Pause false");
    update();

    EXPECT_EQ(whilePaused, 0u);
    EXPECT_GT(ice().freezeLevel, freezeLevel);
    EXPECT_EQ(ice().previousCount, 100u);
    EXPECT_EQ(loopsPlaying(), 5u);
}

TEST_F(GameSfxSoundsTest, ATickOfTheGameSoundsAlsoInTheFlight) {
    play();
    Camera::setState(Camera::movingToWaypoint);

    Game::tick(dt);

    EXPECT_EQ(loopsPlaying(), 5u);
}

TEST_F(GameSfxSoundsTest, AMenuSilencesAllLoopsAndTheirLevelsGoOn) {
    play();
    update();
    GameMenus::setCurrentMenu(menu::inGame);
    const float freezeLevel = ice().freezeLevel;
    ParticleGroupMover::groups.front().members.resize(100);

    Game::tick(dt);
    const std::size_t inTheMenu = loopsPlaying();
    GameMenus::setCurrentMenu(menu::none);
    update();

    EXPECT_EQ(inTheMenu, 0u);
    EXPECT_GT(ice().freezeLevel, freezeLevel);
    EXPECT_EQ(loopsPlaying(), 5u);
}

TEST_F(GameSfxSoundsTest, TheTickThatFinishesALevelSilencesTheLoopsForGood) {
    play();
    update();
    const std::size_t before = loopsPlaying();
    GameRules::incrementEndOfLevelTriggerParticleCount(1000);
    Game::tick(dt); // the finish, of a millisecond, begins
    const std::size_t whileFinishing = loopsPlaying();

    Game::tick(dt);
    const bool finished = GameRules::gameIsFinished();
    const std::size_t atTheFinish = loopsPlaying();
    Game::tick(dt);

    EXPECT_EQ(before, 5u);
    EXPECT_GE(whileFinishing, 3u); // of water and steam; the ice has moved
    EXPECT_TRUE(finished);
    EXPECT_EQ(atTheFinish, 0u);
    EXPECT_EQ(loopsPlaying(), 0u);
}

TEST_F(GameSfxSoundsTest, TheFinishDrawsNoRandomNumberAndNothingIsDrawnAfterIt) {
    const auto statesOfTwoTicks = [&](float waterVolume) {
        data.write("cfg/game.cfg", "finishWaterVolume = " + std::to_string(waterVolume));
        play();
        seedRandom(0);
        GameRules::incrementEndOfLevelTriggerParticleCount(1000);
        Game::tick(dt);
        Game::tick(dt);
        return getRandomState();
    };
    const std::uint32_t unfinished = statesOfTwoTicks(100.0f);
    const bool goesOn = !GameRules::gameIsFinished();

    const std::uint32_t finished = statesOfTwoTicks(0.5f);
    const bool over = GameRules::gameIsFinished();
    Game::tick(dt);

    EXPECT_TRUE(goesOn);
    EXPECT_TRUE(over);
    EXPECT_EQ(finished, unfinished);
    EXPECT_EQ(getRandomState(), finished);
}

TEST_F(GameSfxSoundsTest, AFallOfTheSpeedSplashes) {
    initialise();
    addParticles(128, 20.0f, 100.0f);
    GameSfx_Water::update(dt, Game::levelIsHeard());
    const std::size_t whileItSpeedsUp = splashesPlaying(3);
    ParticleManager::particles.clear();
    addParticles(128, 20.0f, 40.0f);

    GameSfx_Water::update(dt, Game::levelIsHeard()); // a fall of 60

    EXPECT_EQ(whileItSpeedsUp, 0u);
    EXPECT_EQ(splashesPlaying(3), 1u);
}

TEST_F(GameSfxSoundsTest, ALevelSoundsOnceAtATimeAndTheLevelsOverlap) {
    initialise();
    for (int i = 0; i < 20; ++i) {
        hit(15.0f, 1.0f);
    }
    const std::size_t first = splashesPlaying(1);
    hit(25.0f, 1.0f);
    hit(1e6f, 1.0f);

    EXPECT_EQ(first, 1u);
    EXPECT_EQ(splashesPlaying(1), 1u);
    EXPECT_EQ(splashesPlaying(2), 1u);
    EXPECT_EQ(splashesPlaying(3), 1u);
}

TEST_F(GameSfxSoundsTest, TheNextSplashSoundsWhenTheFirstHasEnded) {
    initialise();
    hit(15.0f, 1.0f);
    SoundSystem::renderLoopback(tenthOfFrames + 1024);
    const std::size_t ended = splashesPlaying(1);

    hit(15.0f, 1.0f);

    EXPECT_EQ(ended, 0u);
    EXPECT_EQ(splashesPlaying(1), 1u);
    EXPECT_GT(loudest(), 0.4f);
}

TEST_F(GameSfxSoundsTest, ANegativeVolumePlaysInSilence) {
    initialise();

    hit(15.0f, -0.5f);

    EXPECT_EQ(splashesPlaying(1), 1u);
    EXPECT_EQ(loudest(), 0.0f);
}

TEST_F(GameSfxSoundsTest, VolumeAndPitchAreThoseDrawn) {
    initialise();
    settingsOfWater().randomnessPitch = 0.5f;
    settingsOfWater().randomnessVolume = 0.25f;
    seedRandom(5);
    const GameSfx_Disturbance::Hit drawn = GameSfx_Disturbance::choose(settingsOfWater(), 25.0f, 0.9f);
    seedRandom(5);

    hit(25.0f, 0.9f);

    EXPECT_EQ(splash(2, drawn.variant).getVolume(), drawn.volume);
    EXPECT_EQ(splash(2, drawn.variant).getFrequency(), drawn.pitch);
}

TEST_F(GameSfxSoundsTest, ADisturbanceIsHeardAlsoInAPause) {
    play();
    GLConsole::runLine("Pause true");

    hit(15.0f, 1.0f);

    EXPECT_EQ(splashesPlaying(1), 1u);
}

TEST_F(GameSfxSoundsTest, TheSoundsAreMadeOnceAndOutliveARestart) {
    initialise();
    addParticles(128, 20.0f, 0.0f);
    GameSfx_Water::update(dt, Game::levelIsHeard());
    Sound* const before = soundOfWater();

    initialise();

    EXPECT_EQ(soundOfWater(), before);
    EXPECT_TRUE(soundOfWater()->isPlaying());
}

TEST_F(GameSfxSoundsTest, ShutdownDeletesTheSounds) {
    initialise();
    addAllMatter();
    update();

    GameSfx_Water::shutdown();
    GameSfx_Ice::shutdown();
    GameSfx_Steam::shutdown();

    std::list<std::string> files;
    SoundManager::getSoundList(files);
    EXPECT_TRUE(files.empty());
    EXPECT_EQ(SoundSystem::voicesInUse(), 0u);
}

TEST_F(GameSfxSoundsTest, WithoutFilesTheRestGoesOnAndTheDrawsAreTheSame) {
    addAllMatter();
    initialise();
    update();
    update();
    const std::uint32_t withFiles = getRandomState();
    const float freezeLevel = ice().freezeLevel;
    GameSfx_Water::shutdown();
    GameSfx_Ice::shutdown();
    GameSfx_Steam::shutdown();
    data.write("cfg/game_sfx.cfg", "ice_freezeVolume = 1 ice_freezeVolumeFadeRate = 1");
    seedRandom(0);

    initialise();
    update();
    update();

    EXPECT_EQ(getRandomState(), withFiles);
    EXPECT_EQ(ice().freezeLevel, freezeLevel);
    EXPECT_EQ(SoundSystem::voicesInUse(), 0u);
}

} // namespace tarnwick
