#include "tools/state/GameRows.h"

#include "core/Clock.h"
#include "game/Camera.h"
#include "game/GameRules.h"
#include "particles/ParticleManager.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"
#include "tools/state/SimulationState.h"

#include <nlohmann/json.hpp>

#include <string>

namespace tarnwick {

/// Rules in the middle of a finish, with no two fields alike.
class GameRowsTest : public ModuleTest {
protected:
    GameRowsTest() {
        data.write("cfg/game.cfg", "finishAnimationTime = 2 finishWaterVolume = 0.5");
        GameRules::initialise();
        Clock::drive(70);
        ParticleManager::particles.resize(5);
        GameRules::setCheckPoint(12.5f, -3.25f);
        ParticleManager::particles.resize(4);
        Camera::setState(Camera::normal);
        GameRules::incrementEndOfLevelTriggerParticleCount(2);
        GameRules::update(0.07f); // the finish begins
        GameRules::update(0.5f);
        GameRules::incrementEndOfLevelTriggerParticleCount(3);
    }

    static std::string refusalOf(const nlohmann::json& changed) {
        try {
            SimulationState::read(changed.dump());
        } catch (const StateError& error) {
            return error.what();
        }
        return "accepted";
    }

    const DataFolder data;
};

TEST_F(GameRowsTest, TheRowHasTheFieldsOfTheRules) {
    const nlohmann::json rules = nlohmann::json::parse(SimulationState::write({}))["rules"];

    EXPECT_EQ(rules["levelTime"], 70);
    EXPECT_EQ(rules["levelTimerLast"], 70);
    EXPECT_EQ(rules["levelEnding"], true);
    EXPECT_EQ(rules["finishTimeLeft"], 1.5);
    EXPECT_EQ(rules["endOfLevelParticleCount"], 3);
    EXPECT_EQ(rules["checkPointX"], 12.5);
    EXPECT_EQ(rules["checkPointY"], -3.25);
    EXPECT_EQ(rules["checkPointParticleCount"], 5);
}

TEST_F(GameRowsTest, WhatIsWrittenIsRestoredByteForByte) {
    const std::string line = SimulationState::write({});
    GameRules::initialise();

    const RunPosition position = SimulationState::read(line);

    EXPECT_EQ(SimulationState::write(position), line);
}

TEST_F(GameRowsTest, ARestoredFinishRunsOn) {
    const std::string line = SimulationState::write({});
    GameRules::initialise();
    SimulationState::read(line);

    GameRules::update(1.5f);

    EXPECT_TRUE(GameRules::gameIsFinished());
}

TEST_F(GameRowsTest, ABadRowIsRefusedAndChangesNothing) {
    const std::string line = SimulationState::write({});
    const nlohmann::json whole = nlohmann::json::parse(line);
    nlohmann::json without = whole;
    without["rules"].erase("finishTimeLeft");
    nlohmann::json negative = whole;
    negative["rules"]["checkPointParticleCount"] = -1;

    EXPECT_EQ(refusalOf(without), "no field \"rules.finishTimeLeft\"");
    EXPECT_NE(refusalOf(negative), "accepted");
    EXPECT_EQ(SimulationState::write({}), line);
}

} // namespace tarnwick
