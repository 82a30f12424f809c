// Plays the recorded keys of `data/replays`: each finishes its level as it promises.

#include "tools/sim/RecordedRunTest.h"

#include <cstdint>
#include <map>

namespace tarnwick {

namespace {

namespace fs = std::filesystem;

/// The levels that come with the game, in the order in which they are to be played.
const char* const levels[] = {"testLevel", "frozenBridge", "kettle", "hoist", "gale", "sluices"};

constexpr std::int32_t endOfLevel = 801; ///< Action codes of triggers.
constexpr std::int32_t checkPoint = 901;

/// What the head of a recorded file promises: lines of "# NAME NUMBER".
std::map<std::string, std::uint64_t> promiseOf(const std::string& file) {
    std::map<std::string, std::uint64_t> promise;
    std::ifstream keys(file);
    for (std::string line; std::getline(keys, line) && line.starts_with("#");) {
        std::istringstream words(line.substr(1));
        std::string name;
        std::uint64_t number = 0;
        if (words >> name >> number && words.eof()) {
            promise[name] = number;
        }
    }
    return promise;
}

} // namespace

class ReplaysTest : public RecordedRunTest, public ::testing::WithParamInterface<const char*> {
protected:
    std::string keysOf(const std::string& level) const { return dataOfTree + "/replays/" + level + ".keys"; }

    /// The run of a level's recorded keys with the flight to the water, as a player has it.
    SimulationOptions replay(const std::string& level, std::uint64_t ticks) const {
        SimulationOptions asked = options(level, ticks);
        asked.inputFile = keysOf(level);
        asked.noFlight = false;
        asked.dumpEvery = ticks;
        return asked;
    }
};

TEST_P(ReplaysTest, TheRecordedKeysFinishTheLevelAsPromised) {
    std::map<std::string, std::uint64_t> promise = promiseOf(keysOf(GetParam()));
    ASSERT_EQ(promise.size(), 4U) << "assets/levels/record writes ticks, water, time and score";

    const nlohmann::json end = run(replay(GetParam(), promise["ticks"])).back();

    std::size_t water = end["particles"].size();
    for (const nlohmann::json& group : end["groups"]) {
        water += group["members"].size();
    }
    const std::string hint = "assets/levels/record renews what has changed on purpose\n" + summary;
    EXPECT_TRUE(end["rules"]["levelEnding"].get<bool>()) << hint;
    EXPECT_LE(end["rules"]["finishTimeLeft"].get<float>(), 0.0f) << hint;
    EXPECT_NE(summary.find("the level is finished"), std::string::npos) << hint;
    EXPECT_EQ(water, promise["water"]) << hint;
    EXPECT_EQ(end["rules"]["levelTime"].get<std::uint64_t>(), promise["time"]) << hint;
    EXPECT_NE(summary.find("score      " + std::to_string(promise["score"]) + ":"), std::string::npos)
        << hint;
}

TEST_P(ReplaysTest, WithoutAHandOnTheKeysTheLevelDoesNotEnd) {
    std::map<std::string, std::uint64_t> promise = promiseOf(keysOf(GetParam()));
    SimulationOptions asked = replay(GetParam(), promise["ticks"]);
    asked.inputFile.clear();

    const nlohmann::json end = run(asked).back();

    EXPECT_FALSE(end["rules"]["levelEnding"].get<bool>());
}

INSTANTIATE_TEST_SUITE_P(Levels, ReplaysTest, ::testing::ValuesIn(levels), [](const auto& level) {
    return std::string(level.param);
});

TEST_F(ReplaysTest, EveryLevelHasItsRecordedKeys) {
    std::size_t found = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(dataOfTree + "/maps")) {
        EXPECT_TRUE(fs::exists(keysOf(entry.path().stem().string()))) << entry.path();
        ++found;
    }
    EXPECT_EQ(found, std::size(levels));
}

TEST_F(ReplaysTest, TheSluicesLeadThroughACheckPointToTheEnd) {
    const std::uint64_t ticks = promiseOf(keysOf("sluices"))["ticks"];

    const nlohmann::json end = run(replay("sluices", ticks)).back();

    std::map<std::int32_t, std::uint32_t> fired;
    for (const nlohmann::json& trigger : end["triggers"]) {
        fired[trigger["typeId"].get<std::int32_t>()] += trigger["fireCount"].get<std::uint32_t>();
    }
    EXPECT_EQ(fired[checkPoint], 1U);
    EXPECT_GT(fired[endOfLevel], 0U);
    EXPECT_NEAR(end["rules"]["checkPointX"].get<float>(), 750.0f, 50.0f);
}

TEST_F(ReplaysTest, ARunOfTheHoistGoesOnFromADumpOnTheWayUp) {
    SimulationOptions asked = replay("hoist", 640);
    asked.dumpEvery = 40;
    const Lines whole = run(asked);
    const std::size_t onTheWay = 13; // tick 520

    files.write("from.jsonl", whole[onTheWay].dump() + "\n");
    asked.stateFile = "from.jsonl";
    asked.ticks = 120;

    EXPECT_TRUE(run(asked) == rest(whole, onTheWay));
}

} // namespace tarnwick
