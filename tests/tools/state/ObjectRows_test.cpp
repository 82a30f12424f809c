#include "tools/state/ObjectRows.h"

#include "console/GLConsole.h"
#include "level/LevelObjectsManager.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"
#include "tools/state/SimulationState.h"

#include <nlohmann/json.hpp>

namespace tarnwick {

class ObjectRowsTest : public ModuleTest {
protected:
    DataFolder data;

    /// A level of two pictures and one animation of two frames.
    void addObjects() const {
        data.write("fan_frame0.tga", "");
        data.write("fan_frame1.tga", "");
        add(7, "lamp.tga");
        add(4294967295u, "lamp.tga");
        add(9, "fan_frame0.tga");
    }
    static void add(std::uint32_t id, const char* picture) {
        LevelObject object;
        object.id = id;
        object.setTexture(picture);
        LevelObjectsManager::addObject(object);
    }
    /// No field is as the level has it at its start.
    static void change() {
        LevelObject& lamp = LevelObjectsManager::staticObjects.back();
        lamp.enabled = false;
        lamp.offsetX = 1.5f;
        lamp.offsetY = -0.0f;
        LevelObject& fan = LevelObjectsManager::animatedObjects.front();
        fan.paused = false;
        fan.currentFrame = 1;
        fan.frameTime = 0.013333334f;
        fan.loopCount = -2;
        fan.loopsDone = 5;
    }

    static std::string refusalOf(const nlohmann::json& line) {
        try {
            SimulationState::read(line.dump());
        } catch (const StateError& error) {
            return error.what();
        }
        return "accepted";
    }
};

TEST_F(ObjectRowsTest, TheRowsHaveTheFieldsOfTheFormatInTheOrderOfTheLists) {
    addObjects();
    change();

    const nlohmann::json line = nlohmann::json::parse(SimulationState::write({}));

    EXPECT_EQ(line["staticObjects"].dump(),
              R"([{"currentFrame":0,"enabled":true,"frameTime":0,"id":4294967295,"loopCount":0,)"
              R"("loopsDone":0,"offset":[0,0],"paused":true},)"
              R"({"currentFrame":0,"enabled":false,"frameTime":0,"id":7,"loopCount":0,)"
              R"("loopsDone":0,"offset":[1.5,0],"paused":true}])");
    EXPECT_EQ(line["animatedObjects"].dump(),
              R"([{"currentFrame":1,"enabled":true,"frameTime":0.0133333337,"id":9,"loopCount":-2,)"
              R"("loopsDone":5,"offset":[0,0],"paused":false}])");
}

TEST_F(ObjectRowsTest, WhatIsWrittenIsRestoredByteForByte) {
    addObjects();
    change();
    const std::string line = SimulationState::write({});
    LevelObjectsManager::shutdown();
    addObjects(); // the level is loaded anew before a state is restored

    SimulationState::read(line);

    EXPECT_EQ(SimulationState::write({}), line);
}

TEST_F(ObjectRowsTest, ObjectsThatTheConsoleMadeAreMadeAgainInTheirPlaces) {
    addObjects();
    LevelObjectsManager::initialise();
    addObjects();
    GLConsole::runLine("ObjectCreate 10.5 -20 7 lamp.tga");
    GLConsole::runLine("ObjectCreate 3 4 -1 fan_frame0.tga");
    LevelObjectsManager::animatedObjects.front().currentFrame = 1;
    const std::string line = SimulationState::write({});
    LevelObjectsManager::initialise();
    addObjects();
    const LevelObject* const lamp = &LevelObjectsManager::staticObjects.back();

    SimulationState::read(line);

    EXPECT_EQ(SimulationState::write({}), line);
    EXPECT_EQ(&LevelObjectsManager::staticObjects.back(), lamp); // others may point to it
    ASSERT_EQ(LevelObjectsManager::staticObjects.size(), 3u);
    EXPECT_EQ(LevelObjectsManager::staticObjects.front().x, 10.5f);
    EXPECT_EQ(LevelObjectsManager::animatedObjects.front().frames.size(), 2u);
}

TEST_F(ObjectRowsTest, AnObjectThatTheConsoleMadeIsNeededWhole) {
    LevelObjectsManager::initialise();
    GLConsole::runLine("ObjectCreate 10.5 -20 7 lamp.tga");
    nlohmann::json line = nlohmann::json::parse(SimulationState::write({}));
    LevelObjectsManager::initialise();
    line["staticObjects"][0].erase("position");

    EXPECT_EQ(refusalOf(line), "no field \"staticObjects.position\"");
}

TEST_F(ObjectRowsTest, ObjectsOfAnotherLevelAreRefusedAndNothingChanges) {
    addObjects();
    change();
    const std::string whole = SimulationState::write({});
    const auto refusalWith = [&](const char* place, const nlohmann::json& value) {
        nlohmann::json changed = nlohmann::json::parse(whole);
        changed[nlohmann::json::json_pointer(place)] = value;
        return refusalOf(changed);
    };

    EXPECT_EQ(refusalWith("/staticObjects", nlohmann::json::array()),
              "the state has 0 entries in \"staticObjects\", the level 2");
    EXPECT_EQ(refusalWith("/animatedObjects", 1), "\"animatedObjects\" is not a list");
    EXPECT_EQ(refusalWith("/staticObjects/1/id", 8),
              "the state is of another level: the objects' ids differ");
    EXPECT_EQ(refusalWith("/staticObjects/1/id", -1), "\"staticObjects.id\" is not in the range of its kind");
    EXPECT_EQ(refusalWith("/animatedObjects/0/currentFrame", 2),
              "\"animatedObjects.currentFrame\" is not a frame of its object");
    EXPECT_EQ(refusalWith("/animatedObjects/0/paused", 0), "\"animatedObjects.paused\" is not true or false");
    EXPECT_EQ(SimulationState::write({}), whole);
}

} // namespace tarnwick
