#include "tools/state/MoverRows.h"

#include "mechanisms/MoverManager.h"
#include "support/ModuleTest.h"
#include "tools/state/SimulationState.h"

#include <nlohmann/json.hpp>

#include <string>

namespace tarnwick {

class MoverRowsTest : public ModuleTest {
protected:
    static void addLevel() {
        for (const std::int32_t id : {7, -3}) {
            Mover mover;
            mover.id = id;
            mover.setEndPoint(100.0f, 0.0f);
            mover.speed = 30.0f;
            MoverManager::addMover(mover);
        }
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

TEST_F(MoverRowsTest, TheRowsHaveTheFieldsOfTheFormat) {
    addLevel();
    MoverManager::movers.back().position = 0.5f;
    MoverManager::movers.back().state = MoverLoopToStart;

    const nlohmann::json json = nlohmann::json::parse(line());

    EXPECT_EQ(json["movers"].dump(),
              R"([{"id":7,"position":0,"state":0},{"id":-3,"position":0.5,"state":3}])");
}

TEST_F(MoverRowsTest, WhatIsWrittenIsRestoredByteForByteOverTheLevel) {
    addLevel();
    MoverManager::movers.front().position = 12.3456789f;
    MoverManager::movers.front().state = MoverLoopToEnd;
    MoverManager::movers.back().position = -0.0f;
    MoverManager::movers.back().state = static_cast<MoverState>(9); // stands still, as any other number
    const std::string before = line();
    ModuleReset::all();
    addLevel();

    SimulationState::read(before);

    EXPECT_EQ(line(), before);
    EXPECT_EQ(MoverManager::movers.front().speed, 30.0f);
}

TEST_F(MoverRowsTest, ABadRowIsRefusedAndChangesNothing) {
    addLevel();
    const std::string whole = line();
    const nlohmann::json json = nlohmann::json::parse(whole);
    const auto refusalWith = [&](const char* place, const nlohmann::json& value) {
        nlohmann::json changed = json;
        changed["movers"][0]["position"] = 5;
        changed[nlohmann::json::json_pointer(place)] = value;
        return refusalOf(changed);
    };

    EXPECT_EQ(refusalWith("/movers", nlohmann::json::array()), "the state has 0 movers, the level 2");
    EXPECT_EQ(refusalWith("/movers/1/id", 7), "the state is of another level: the movers' ids differ");
    EXPECT_EQ(refusalWith("/movers/1/position", "here"), "\"movers.position\" is not a number");
    EXPECT_EQ(refusalWith("/movers/1/state", 0.5), "\"movers.state\" is not a whole number");
    EXPECT_EQ(line(), whole);
}

} // namespace tarnwick
