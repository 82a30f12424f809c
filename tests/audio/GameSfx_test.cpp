#include "audio/GameSfx_Disturbance.h"
#include "audio/GameSfx_Ice.h"
#include "audio/GameSfx_Steam.h"
#include "audio/GameSfx_Water.h"
#include "core/Random.h"
#include "game/Game.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <cmath>

namespace tarnwick {

/// Bodies of water, ice and steam put together by hand.
class GameSfxTest : public ModuleTest {
protected:
    void configure(const std::string& settings) const {
        data.write("cfg/game_sfx.cfg", settings);
        GameSfx_Water::initialise();
        GameSfx_Ice::initialise();
        GameSfx_Steam::initialise();
    }
    static void addParticles(std::size_t count, float temperature, float speed) {
        for (std::size_t i = 0; i < count; ++i) {
            Particle& particle = ParticleManager::particles.emplace_back();
            particle.temperature = temperature;
            particle.velocity = {0.0f, speed};
        }
    }
    static ParticleGroup& addGroup(std::size_t members, float speed) {
        ParticleGroup& group = ParticleGroupMover::groups.emplace_back();
        group.members.resize(members);
        group.velocity = {speed, 0.0f};
        return group;
    }
    /// What the generator is at after `draws` from where it stands now.
    static std::uint32_t after(int draws) {
        std::uint32_t random = getRandomState();
        for (int i = 0; i < draws; ++i) {
            random = Random::nextState(random);
        }
        return random;
    }
    static float pow32(float base, float exponent) {
        return static_cast<float>(std::pow(static_cast<double>(base), static_cast<double>(exponent)));
    }
    static GameSfx_Water::State& water() { return GameSfx_Water::state; }
    static GameSfx_Ice::State& ice() { return GameSfx_Ice::state; }
    static GameSfx_Steam::State& steam() { return GameSfx_Steam::state; }

    static constexpr float dt = 0.013333334f;
    DataFolder data;
};

TEST_F(GameSfxTest, WaterIsWhatIsNeitherFrozenNorSteam) {
    for (const float temperature : {-5.0f, 0.0f, 0.1f, 50.0f, 99.9f, 100.0f, 150.0f}) {
        addParticles(1, temperature, 0.0f);
    }

    EXPECT_EQ(GameSfx_Water::getWaterParticleCount(), 3u);
    EXPECT_EQ(GameSfx_Steam::getSteamParticleCount(), 2u);
}

TEST_F(GameSfxTest, TheSpeedOfWaterIsTheMeanOfItsParticlesWithoutTheirPush) {
    addParticles(1, 20.0f, 30.0f);
    addParticles(3, 20.0f, -10.0f);
    addParticles(4, 120.0f, 500.0f); // steam
    ParticleManager::particles.front().pushVelocity = {900.0f, 0.0f};
    float average = -1.0f;

    GameSfx_Water::getAverageWaterVelocity(average);

    EXPECT_EQ(average, 15.0f);
}

TEST_F(GameSfxTest, NothingHasNoSpeed) {
    float averageOfWater = -1.0f;
    float averageOfIce = -1.0f;

    GameSfx_Water::getAverageWaterVelocity(averageOfWater);
    GameSfx_Ice::getAverageIceVelocity(averageOfIce);

    EXPECT_EQ(averageOfWater, 0.0f);
    EXPECT_EQ(averageOfIce, 0.0f);
}

TEST_F(GameSfxTest, TheSpeedOfIceIsThatOfItsMembers) {
    addGroup(3, 10.0f);
    addGroup(1, -50.0f);
    addGroup(0, 1000.0f);
    float average = 0.0f;

    GameSfx_Ice::getAverageIceVelocity(average);

    EXPECT_EQ(GameSfx_Ice::getIceParticleCount(), 4u);
    EXPECT_EQ(average, 20.0f);
}

TEST_F(GameSfxTest, WaterAndIceDrawThreeNumbersEachInEveryTickAndSteamNone) {
    const std::uint32_t afterThree = after(3);
    GameSfx_Ice::update(dt, Game::levelIsHeard()); // no ice, and nothing configured
    EXPECT_EQ(getRandomState(), afterThree);

    addParticles(128, 20.0f, 100.0f);
    const std::uint32_t afterThreeMore = after(3);
    GameSfx_Water::update(dt, Game::levelIsHeard());
    EXPECT_EQ(getRandomState(), afterThreeMore);

    addParticles(10, 120.0f, 100.0f);
    GameSfx_Steam::update(dt, Game::levelIsHeard());
    EXPECT_EQ(getRandomState(), afterThreeMore);
}

TEST_F(GameSfxTest, VariantVolumeAndPitchAreDrawnInThisOrder) {
    seedRandom(77);
    const std::uint32_t variant = randomInt() & 3;
    const float volume = std::sqrt(0.9f - randomFloat() * 0.3f);
    const float pitch = (randomFloat() - 0.5f) * 0.2f;
    const std::uint32_t drawn = getRandomState();
    seedRandom(77);

    const GameSfx_Disturbance::Hit hit = GameSfx_Disturbance::choose(
        {.levelSpeeds = {10.0f, 20.0f, 30.0f}, .randomnessPitch = 0.2f, .randomnessVolume = 0.3f}, 15.0f,
        0.9f);

    EXPECT_EQ(hit.level, 1u);
    EXPECT_EQ(hit.variant, variant);
    EXPECT_EQ(hit.volume, volume);
    EXPECT_EQ(hit.pitch, pitch);
    EXPECT_EQ(getRandomState(), drawn);
}

TEST_F(GameSfxTest, TheFallOfSpeedGivesTheLevel) {
    const GameSfx_Disturbance::Settings settings{.levelSpeeds = {10.0f, 20.0f, 30.0f}};
    const auto levelOf = [&](float fall) { return GameSfx_Disturbance::choose(settings, fall, 1.0f).level; };

    EXPECT_EQ(levelOf(-60.0f), 0u); // it sped up
    EXPECT_EQ(levelOf(9.9f), 0u);
    EXPECT_EQ(levelOf(10.0f), 1u);
    EXPECT_EQ(levelOf(19.9f), 1u);
    EXPECT_EQ(levelOf(20.0f), 2u);
    EXPECT_EQ(levelOf(30.0f), 3u);
    EXPECT_EQ(levelOf(1e9f), 3u);
}

TEST_F(GameSfxTest, AShareBelowTheRandomCutGivesANegativeVolume) {
    seedRandom(1);
    randomInt();
    const float cut = randomFloat() * 50.0f;
    seedRandom(1);

    const GameSfx_Disturbance::Hit hit =
        GameSfx_Disturbance::choose({.randomnessVolume = 50.0f}, 0.0f, 0.25f);

    ASSERT_GT(cut, 0.25f);
    EXPECT_EQ(hit.volume, 0.25f - cut); // and no root of it
}

TEST_F(GameSfxTest, TheSettingsOfWaterHaveNoSign) {
    configure("water_disturbance_level1_speed = -1 water_disturbance_level2_speed = -2 "
              "water_disturbance_level3_speed = -3 water_disturbance_randomness_pitch = -4 "
              "water_disturbance_randomness_volume = -5 waterSound_ambient_volume = -6");

    EXPECT_EQ(water().disturbance.settings.levelSpeeds, (std::array{1.0f, 2.0f, 3.0f}));
    EXPECT_EQ(water().disturbance.settings.randomnessPitch, 4.0f);
    EXPECT_EQ(water().disturbance.settings.randomnessVolume, 5.0f);
    EXPECT_EQ(water().ambientVolume, 6.0f);
}

TEST_F(GameSfxTest, TheSettingsOfIceKeepTheirSignAndItsRatesAreShares) {
    configure("ice_disturbance_level1_speed = -1 ice_disturbance_level2_speed = -2 "
              "ice_disturbance_level3_speed = -3 ice_disturbance_randomness_pitch = -4 "
              "ice_disturbance_randomness_volume = -5 ice_frictionSpeed = -6 ice_freezeVolume = -7 "
              "ice_frictionChangeRate = 8 ice_freezeEffectSpeed = -9 ice_freezeVolumeFadeRate = 0.5");

    EXPECT_EQ(ice().disturbance.settings.levelSpeeds, (std::array{-1.0f, -2.0f, -3.0f}));
    EXPECT_EQ(ice().disturbance.settings.randomnessPitch, -4.0f);
    EXPECT_EQ(ice().disturbance.settings.randomnessVolume, -5.0f);
    EXPECT_EQ(ice().frictionSpeed, -6.0f);
    EXPECT_EQ(ice().freezeVolume, -7.0f);
    EXPECT_EQ(ice().frictionChangeRate, 1.0f);
    EXPECT_EQ(ice().freezeEffectSpeed, 0.0f);
    EXPECT_EQ(ice().freezeVolumeFadeRate, 0.5f);
}

TEST_F(GameSfxTest, TheLevelOfWaterGrowsWithTheRootOfItsShare) {
    configure("waterSound_ambient_volume = 0.7");
    addParticles(512, 20.0f, 0.0f);

    GameSfx_Water::update(dt, Game::levelIsHeard());
    const float ofFour = water().ambientLevel;
    ParticleManager::particles.clear();
    GameSfx_Water::update(dt, Game::levelIsHeard());

    EXPECT_EQ(ofFour, 2.0f * 0.7f); // a share of 4
    EXPECT_EQ(water().ambientLevel, 0.0f);
}

TEST_F(GameSfxTest, WaterRemembersItsSpeedFromTickToTick) {
    addParticles(128, 20.0f, 100.0f);
    GameSfx_Water::update(dt, Game::levelIsHeard());
    EXPECT_EQ(water().previousAverageSpeed, 100.0f);

    ParticleManager::particles.clear();
    addParticles(128, 20.0f, 40.0f);
    GameSfx_Water::update(dt, Game::levelIsHeard());

    EXPECT_EQ(water().previousAverageSpeed, 40.0f);
}

TEST_F(GameSfxTest, FreezingSwellsAndFades) {
    configure("ice_freezeEffectSpeed = 0.02 ice_freezeVolume = 0.015 ice_freezeVolumeFadeRate = 0.25");
    addGroup(100, 0.0f);

    GameSfx_Ice::update(dt, Game::levelIsHeard());

    const float part = (1.0f - pow32(0.02f, dt)) * 100.0f;
    EXPECT_EQ(ice().pendingFreeze, 100.0f - part);
    EXPECT_EQ(ice().freezeLevel, part * 0.015f * pow32(0.25f, dt));
    EXPECT_EQ(ice().previousCount, 100u);
}

TEST_F(GameSfxTest, OnlyARiseOfTheWholeCountIsAFreeze) {
    configure("ice_freezeEffectSpeed = 1 ice_freezeVolume = 1 ice_freezeVolumeFadeRate = 1");
    addGroup(30, 0.0f);
    addGroup(20, 0.0f);
    GameSfx_Ice::update(dt, Game::levelIsHeard());
    EXPECT_EQ(ice().pendingFreeze, 50.0f); // nothing drains at a share of 1

    ParticleGroupMover::groups.clear();
    addGroup(50, 0.0f); // the two have merged
    GameSfx_Ice::update(dt, Game::levelIsHeard());
    EXPECT_EQ(ice().pendingFreeze, 50.0f);

    ParticleGroupMover::groups.front().members.resize(10); // and melt
    GameSfx_Ice::update(dt, Game::levelIsHeard());
    EXPECT_EQ(ice().pendingFreeze, 50.0f);

    ParticleGroupMover::groups.front().members.resize(15);
    GameSfx_Ice::update(dt, Game::levelIsHeard());
    EXPECT_EQ(ice().pendingFreeze, 55.0f);
}

TEST_F(GameSfxTest, OnlyIceThatTouchesSomethingRubs) {
    configure("ice_frictionChangeRate = 0.01 ice_frictionSpeed = 0.003");
    addGroup(128, 200.0f).colliding = true;
    addGroup(32, -100.0f).colliding = true;
    addGroup(128, 900.0f); // in free fall
    const float kept = pow32(0.01f, dt);
    const float target = 200.0f * 0.003f * 1.0f + 100.0f * 0.003f * 0.5f;

    GameSfx_Ice::update(dt, Game::levelIsHeard());
    const float first = (1.0f - kept) * target + kept * 0.0f;
    EXPECT_EQ(ice().frictionLevel, first);
    GameSfx_Ice::update(dt, Game::levelIsHeard());

    EXPECT_EQ(ice().frictionLevel, (1.0f - kept) * target + kept * first);
}

TEST_F(GameSfxTest, EvaporationSwellsAndFades) {
    addParticles(50, 120.0f, 0.0f);

    GameSfx_Steam::update(dt, Game::levelIsHeard());

    const float part = (1.0f - pow32(0.001f, dt)) * 50.0f;
    EXPECT_EQ(steam().pendingEvaporation, 50.0f - part);
    EXPECT_EQ(steam().evaporationLevel, part * 0.05f * pow32(0.25f, dt));
}

TEST_F(GameSfxTest, TheLevelOfSteamFollowsItsCount) {
    addParticles(50, 120.0f, 0.0f);
    const float kept = pow32(0.05f, dt);

    GameSfx_Steam::update(dt, Game::levelIsHeard());
    const float first = (1.0f - kept) * 50.0f * 0.02f + kept * 0.0f;
    EXPECT_EQ(steam().ambientLevel, first);
    ParticleManager::particles.clear();
    GameSfx_Steam::update(dt, Game::levelIsHeard());

    EXPECT_EQ(steam().ambientLevel, (1.0f - kept) * 0.0f * 0.02f + kept * first);
}

TEST_F(GameSfxTest, ARestartForgetsWhatWas) {
    addParticles(50, 20.0f, 100.0f);
    addParticles(50, 120.0f, 100.0f);
    addGroup(50, 100.0f).colliding = true;
    configure("ice_freezeVolume = 1 ice_frictionSpeed = 1 waterSound_ambient_volume = 1");
    GameSfx_Ice::update(dt, Game::levelIsHeard());
    GameSfx_Water::update(dt, Game::levelIsHeard());
    GameSfx_Steam::update(dt, Game::levelIsHeard());

    configure("ice_freezeVolume = 1");

    EXPECT_EQ(water().previousAverageSpeed, 0.0f);
    EXPECT_EQ(ice().previousAverageSpeed, 0.0f);
    EXPECT_EQ(ice().previousCount, 0u);
    EXPECT_EQ(ice().pendingFreeze, 0.0f);
    EXPECT_EQ(ice().freezeLevel, 0.0f);
    EXPECT_EQ(ice().frictionLevel, 0.0f);
    EXPECT_EQ(steam().previousCount, 0u);
    EXPECT_EQ(steam().pendingEvaporation, 0.0f);
    EXPECT_EQ(steam().evaporationLevel, 0.0f);
    EXPECT_EQ(steam().ambientLevel, 0.0f);
}

} // namespace tarnwick
