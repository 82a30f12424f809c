#include "mechanisms/Triggers_HeatSources.h"

#include "mechanisms/TriggerHandlers.h"
#include "particles/Particle.h"
#include "particles/ParticleGroup.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

namespace tarnwick {

/// 40 degrees a second, ice down to -30 and steam up to 200.
class Triggers_HeatSourcesTest : public ModuleTest {
protected:
    Triggers_HeatSourcesTest() {
        data.write("cfg/water.cfg",
                   "triggerTemperatureChangeSpeed = -40 triggerTemperatureChangeAmountIce = -30 "
                   "triggerTemperatureChangeAmountSteam = 200");
        Triggers_HeatSources_LoadSettings();
    }

    static constexpr float dt = 0.25f; ///< Ten degrees.

    static float particleAfter(TriggerHandler handler, float temperature) {
        Particle particle;
        particle.temperature = temperature;
        handler(nullptr, &particle, BodyKind::particle, dt);
        return particle.temperature;
    }
    static float groupAfter(TriggerHandler handler, float temperature) {
        ParticleGroup group;
        group.temperature = temperature;
        handler(nullptr, &group, BodyKind::group, dt);
        return group.temperature;
    }

    DataFolder data;
};

TEST_F(Triggers_HeatSourcesTest, TheSignsOfTheSettingsDoNotCount) {
    EXPECT_EQ(Triggers_HeatSources::temperatureChangeSpeed(), 40.0f);
    EXPECT_EQ(Triggers_HeatSources::temperatureChangeAmountIce(), 30.0f);
    EXPECT_EQ(Triggers_HeatSources::temperatureChangeAmountSteam(), 200.0f);
}

TEST_F(Triggers_HeatSourcesTest, BeforeLoadingTheyHaveValuesAndAMissingKeyIsZero) {
    ModuleReset::all();
    const float speed = Triggers_HeatSources::temperatureChangeSpeed();
    const float ice = Triggers_HeatSources::temperatureChangeAmountIce();
    const float steam = Triggers_HeatSources::temperatureChangeAmountSteam();
    data.write("cfg/water.cfg", "triggerTemperatureChangeAmountIce = 5");

    Triggers_HeatSources_LoadSettings();

    EXPECT_EQ(speed, 1000.0f);
    EXPECT_EQ(ice, 100.0f);
    EXPECT_EQ(steam, 200.0f);
    EXPECT_EQ(Triggers_HeatSources::temperatureChangeSpeed(), 0.0f);
    EXPECT_EQ(Triggers_HeatSources::temperatureChangeAmountIce(), 5.0f);
    EXPECT_EQ(Triggers_HeatSources::temperatureChangeAmountSteam(), 0.0f);
}

TEST_F(Triggers_HeatSourcesTest, ColdGoesDownToItsBoundOnParticlesAndGroups) {
    EXPECT_EQ(particleAfter(trigFuncToIce, 20.0f), 10.0f);
    EXPECT_EQ(particleAfter(trigFuncToIce, -25.0f), -30.0f);
    EXPECT_EQ(groupAfter(trigFuncToIce, -5.0f), -15.0f);
    EXPECT_EQ(groupAfter(trigFuncToIce, -25.0f), -30.0f);
}

TEST_F(Triggers_HeatSourcesTest, WhatIsColderThanTheBoundIsRaisedToIt) {
    EXPECT_EQ(particleAfter(trigFuncToIce, -80.0f), -30.0f);
    EXPECT_EQ(groupAfter(trigFuncToIce, -80.0f), -30.0f);
}

TEST_F(Triggers_HeatSourcesTest, WaterComesToFiftyFromBothSidesAndStaysThere) {
    EXPECT_EQ(particleAfter(trigFuncToWater, 20.0f), 30.0f);
    EXPECT_EQ(particleAfter(trigFuncToWater, 45.0f), 50.0f);
    EXPECT_EQ(particleAfter(trigFuncToWater, 50.0f), 50.0f);
    EXPECT_EQ(particleAfter(trigFuncToWater, 55.0f), 50.0f);
    EXPECT_EQ(particleAfter(trigFuncToWater, 130.0f), 120.0f);
}

TEST_F(Triggers_HeatSourcesTest, AGroupDoesNotStopAtFiftyButGoesOnWarming) {
    EXPECT_EQ(groupAfter(trigFuncToWater, -5.0f), 5.0f);
    EXPECT_EQ(groupAfter(trigFuncToWater, 55.0f), 65.0f);
}

TEST_F(Triggers_HeatSourcesTest, SteamRisesToItsBoundAndNotPastIt) {
    EXPECT_EQ(particleAfter(trigFuncToSteam, 150.0f), 160.0f);
    EXPECT_EQ(particleAfter(trigFuncToSteam, 195.0f), 200.0f);
    EXPECT_EQ(particleAfter(trigFuncToSteam, 250.0f), 200.0f); // at once
    EXPECT_EQ(groupAfter(trigFuncToSteam, 195.0f), 205.0f);    // no bound for a group
}

TEST_F(Triggers_HeatSourcesTest, AnotherKindOfBodyAndNoBodyAreLeftAlone) {
    for (const TriggerHandler handler : {trigFuncToIce, trigFuncToWater, trigFuncToSteam}) {
        Particle particle;
        particle.temperature = 20.0f;

        handler(nullptr, &particle, static_cast<BodyKind>(2), dt);
        handler(nullptr, &particle, static_cast<BodyKind>(-1), dt);
        handler(nullptr, nullptr, BodyKind::particle, dt);
        handler(nullptr, nullptr, BodyKind::group, dt);

        EXPECT_EQ(particle.temperature, 20.0f);
    }
}

} // namespace tarnwick
