#include "tools/state/TriggerRows.h"

#include "console/GLConsole.h"
#include "core/Clock.h"
#include "game/Camera.h"
#include "graphics/GLWindow.h"
#include "level/Level.h"
#include "level/LevelObjectsManager.h"
#include "mechanisms/ForceManager.h"
#include "mechanisms/FxParticleManager.h"
#include "mechanisms/TriggerManager.h"
#include "particles/ParticleManager.h"
#include "support/ModuleTest.h"
#include "tools/state/SimulationState.h"

#include <nlohmann/json.hpp>

#include <limits>
#include <string>

namespace tarnwick {

class TriggerRowsTest : public ModuleTest {
protected:
    TriggerRowsTest() { start(); }
    ~TriggerRowsTest() override { GLWindow::close(); }

    static void start() {
        ModuleReset::all();
        Clock::drive(0);
        GLWindow::createHeadless(800, 600);
        GLConsole::initialise();
    }

    /// A level with a force and two triggers: a delayed remover, and one of no known type.
    static void addLevel() {
        ForceManager::initialise();
        ForceManager::addForce(3, 0.0f, 0.0f, 1.0f, 0.0f, 5.0f);
        TriggerManager::initialise();
        TriggerManager::addTrigger(300, 3, 0.5f, {0.0f, 0.0f}, {10.0f, 0.0f}, {10.0f, 10.0f}, {0.0f, 10.0f});
        TriggerManager::addTrigger(-3, -4, 0.25f, {0.0f, 0.0f}, {0.0f, 10.0f}, {10.0f, 10.0f}, {10.0f, 0.0f});
    }
    /// Both have fired, and one rests.
    static void fire() {
        ParticleManager::particles.emplace_back().position = {5.0f, 5.0f};
        TriggerManager::runTriggers(0.0125f, Camera::view());
        TriggerManager::triggers.front().cooldownLeft = 0.75f;
    }

    static std::string line() { return SimulationState::write({}); }
    static std::string refusalOf(const nlohmann::json& changed) {
        try {
            SimulationState::read(changed.dump());
        } catch (const StateError& error) {
            return error.what();
        }
        return "accepted";
    }
};

TEST_F(TriggerRowsTest, TheRowsHaveTheFieldsOfTheFormat) {
    addLevel();
    fire();

    const nlohmann::json json = nlohmann::json::parse(line());

    EXPECT_EQ(json["triggers"].dump(),
              R"([{"cooldownLeft":0.75,"corners":[[0,0],[0,10],[10,10],[10,0]],"fireCount":1,)"
              R"("targetId":-4,"targets":[0,0,0,0,0,0],"typeId":4294967293},)"
              R"({"cooldownLeft":0,"corners":[[0,0],[10,0],[10,10],[0,10]],"fireCount":1,)"
              R"("targetId":3,"targets":[0,0,1,0,0,0],"typeId":300}])");
    EXPECT_EQ(json["delayedEvents"].dump(), R"([{"dt":0.0125000002,"timeLeft":0.5,"trigger":1},)"
                                            R"({"dt":0.0125000002,"timeLeft":0.25,"trigger":0}])");
}

TEST_F(TriggerRowsTest, WhatIsWrittenIsRestoredByteForByteOverTheLevel) {
    addLevel();
    fire();
    const std::string before = line();
    start();
    addLevel();

    SimulationState::read(before);

    EXPECT_EQ(line(), before);
}

TEST_F(TriggerRowsTest, ARestoredEventHappensInItsTime) {
    addLevel();
    fire();
    const std::string before = line();
    start();
    addLevel();
    SimulationState::read(before);

    TriggerManager::checkDelayedTriggerEvents(0.49f);
    const bool early = ForceManager::forces.front().enabled;
    TriggerManager::checkDelayedTriggerEvents(0.02f);

    EXPECT_TRUE(early);
    EXPECT_FALSE(ForceManager::forces.front().enabled);
}

TEST_F(TriggerRowsTest, WhatIsPendingNowGivesWayToWhatWasPending) {
    addLevel();
    const std::string before = line();
    fire();

    SimulationState::read(before);

    EXPECT_EQ(line(), before);
}

TEST_F(TriggerRowsTest, WhatTheConsoleMadeComesBackWithTheTargetsThatItHad) {
    addLevel();
    GLConsole::runLine("TriggerCreate 300 3 1 2 -30 40");
    GLConsole::runLine("ForceCreate 3 1 1 1 1 1"); // too late for the first, in time for the second
    GLConsole::runLine("TriggerCreate 201 3 5 6 7 8");
    fire();
    const std::string before = line();
    start();
    addLevel();

    SimulationState::read(before);

    EXPECT_EQ(line(), before);
    ASSERT_EQ(TriggerManager::triggers.size(), 4u);
    EXPECT_EQ(TriggerManager::triggers.front().targets.size(), 2u);
    EXPECT_EQ(std::next(TriggerManager::triggers.begin())->targets.size(), 1u);
}

TEST_F(TriggerRowsTest, ObjectsThatCameAfterATriggerAreNoTargetsOfIt) {
    addLevel();
    LevelObjectsManager::initialise();
    GLConsole::runLine("ObjectCreate 1 2 3 first.tga");
    GLConsole::runLine("TriggerCreate 300 3 1 2 -30 40");
    GLConsole::runLine("ObjectCreate 4 5 3 second.tga");
    GLConsole::runLine("TriggerCreate 301 3 1 2 -30 40");
    const std::string before = line();
    start();
    addLevel();
    LevelObjectsManager::initialise();

    SimulationState::read(before);

    EXPECT_EQ(line(), before);
    const auto& earlier = *std::next(TriggerManager::triggers.begin());
    ASSERT_EQ(earlier.targets.size(), 2u); // with the force
    EXPECT_EQ(earlier.targets.front().entity, &LevelObjectsManager::staticObjects.back());
    EXPECT_EQ(LevelObjectsManager::staticObjects.back().frames[0].name, "FIRST.TGA");
    EXPECT_EQ(TriggerManager::triggers.front().targets.size(), 3u);
}

TEST_F(TriggerRowsTest, TriggersOfTheLevelStayWhereTheyAreWithTheirTargets) {
    addLevel();
    const Trigger* const trigger = &TriggerManager::triggers.back();

    SimulationState::read(line());

    EXPECT_EQ(&TriggerManager::triggers.back(), trigger);
    EXPECT_EQ(trigger->targets.front().entity, &ForceManager::forces.front());
}

TEST_F(TriggerRowsTest, AnEventThatNeverComesIsRestoredToo) {
    addLevel();
    TriggerManager::triggers.front().delay = std::numeric_limits<float>::infinity();
    fire();
    const std::string before = line();
    start();
    addLevel();

    SimulationState::read(before);

    EXPECT_EQ(line(), before);
    EXPECT_NE(before.find(R"("timeLeft":"inf")"), std::string::npos);
}

TEST_F(TriggerRowsTest, ABadRowIsRefusedAndChangesNothing) {
    addLevel();
    GLConsole::runLine("TriggerCreate 201 3 5 6 7 8");
    fire();
    const std::string whole = line();
    start();
    addLevel();
    const std::string atStart = line();
    const nlohmann::json json = nlohmann::json::parse(whole);
    const auto refusalWith = [&](const char* place, const nlohmann::json& value) {
        nlohmann::json changed = json;
        changed[nlohmann::json::json_pointer(place)] = value;
        return refusalOf(changed);
    };

    EXPECT_EQ(refusalWith("/triggers", nlohmann::json::array()),
              "the state has 0 entries in \"triggers\", the level 2");
    EXPECT_EQ(refusalWith("/triggers/2/typeId", 301), "the state is of another level: the triggers differ");
    EXPECT_EQ(refusalWith("/triggers/1/targetId", 1), "the state is of another level: the triggers differ");
    EXPECT_EQ(refusalWith("/triggers/1/fireCount", -1),
              "\"triggers.fireCount\" is not in the range of its kind");
    EXPECT_EQ(refusalWith("/triggers/0/corners", {1, 2}),
              "\"triggers.corners\" is not a list of four points");
    EXPECT_EQ(refusalWith("/triggers/0/targets", {1, 2}),
              "\"triggers.targets\" is not a list of six numbers");
    EXPECT_EQ(refusalWith("/delayedEvents/0/trigger", 3),
              "\"delayedEvents.trigger\" is not the place of a trigger");
    EXPECT_EQ(refusalWith("/delayedEvents/0/timeLeft", "soon"), "\"delayedEvents.timeLeft\" is not a number");
    EXPECT_EQ(line(), atStart);
}

} // namespace tarnwick
