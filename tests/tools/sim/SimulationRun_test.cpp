#include "tools/sim/SimulationRun.h"

#include "game/HighScores.h"
#include "support/DataFolder.h"
#include "support/LevelFileBuilder.h"
#include "support/ModuleTest.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace tarnwick {

/// Runs the test level of the source tree; files of a run go to a folder of the test's own.
class SimulationRunTest : public ModuleTest {
protected:
    SimulationRunTest()
        : dataOfTree((std::filesystem::current_path() / "data").string()) {}

    SimulationOptions options() const {
        SimulationOptions result;
        result.level = "maps\\testLevel.rivl";
        result.dataFolder = dataOfTree;
        result.ticks = 60;
        result.noFlight = true;
        return result;
    }
    /// Every run begins as a program of its own: modules at start, in the folder of the test.
    std::string run(const SimulationOptions& asked) {
        ModuleReset::all();
        std::filesystem::current_path(files.path());
        std::ostringstream out;
        runSimulation(asked, out, log);
        std::filesystem::current_path(files.path());
        return out.str();
    }
    std::string refusalOf(const SimulationOptions& asked) {
        try {
            run(asked);
        } catch (const std::runtime_error& error) {
            std::filesystem::current_path(files.path());
            return error.what();
        }
        return "accepted";
    }
    std::vector<std::string> linesOf(const std::string& name) const {
        std::ifstream file(files.path() / name);
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    std::string dataOfTree;
    DataFolder files;
    std::ostringstream log;
};

TEST_F(SimulationRunTest, TwoRunsOfOneCommandGiveEqualBytes) {
    SimulationOptions asked = options();
    asked.dumpFile = "first.jsonl";
    const std::string firstSummary = run(asked);
    asked.dumpFile = "second.jsonl";
    const std::string secondSummary = run(asked);

    EXPECT_EQ(linesOf("first.jsonl").size(), 61u); // tick 0 first
    EXPECT_EQ(linesOf("first.jsonl"), linesOf("second.jsonl"));
    EXPECT_EQ(firstSummary, secondSummary);
}

TEST_F(SimulationRunTest, BehindTheMainMenuTheWaterStandsStill) {
    SimulationOptions asked = options();
    asked.menus = true;
    asked.dumpFile = "dump.jsonl";

    run(asked);

    const nlohmann::json first = nlohmann::json::parse(linesOf("dump.jsonl").front());
    const nlohmann::json last = nlohmann::json::parse(linesOf("dump.jsonl").back());
    EXPECT_EQ(first.at("menu"), 1);
    EXPECT_EQ(last.at("menu"), 1);
    EXPECT_EQ(first.at("particles"), last.at("particles"));
}

TEST_F(SimulationRunTest, TheTableOfScoresIsTheDefaultOne) {
    SimulationOptions asked = options();
    asked.menus = true;

    run(asked);

    EXPECT_EQ(HighScores::nameOf(HighScores::table().front()), "NO NAME");
}

TEST_F(SimulationRunTest, WhatAPlayerDoesReachesTheMenus) {
    files.write("events.txt", "10 key Escape\n");
    SimulationOptions asked = options();
    asked.menus = true;
    asked.eventsFile = "events.txt";
    asked.dumpFile = "dump.jsonl";

    run(asked);

    const std::vector<std::string> lines = linesOf("dump.jsonl");
    EXPECT_EQ(nlohmann::json::parse(lines[10]).at("menu"), 1);
    EXPECT_EQ(nlohmann::json::parse(lines[11]).at("menu"), 6); // whether to quit
}

TEST_F(SimulationRunTest, AMissingFileOfEventsIsRefused) {
    SimulationOptions asked = options();
    asked.eventsFile = "nowhere.txt";

    EXPECT_TRUE(refusalOf(asked).ends_with("nowhere.txt: cannot be opened"));
}

TEST_F(SimulationRunTest, ARunContinuedFromADumpEqualsTheUninterruptedOne) {
    files.write("keys.txt", "0 left\n20 right\n35 none\n");
    SimulationOptions asked = options();
    asked.inputFile = "keys.txt";
    asked.dumpFile = "whole.jsonl";
    run(asked);
    const std::vector<std::string> whole = linesOf("whole.jsonl");
    files.write("at25.jsonl", whole[25] + "\n");
    asked.stateFile = "at25.jsonl";
    asked.ticks = 35;
    asked.dumpFile = "rest.jsonl";

    run(asked);

    EXPECT_EQ(linesOf("rest.jsonl"), std::vector<std::string>(whole.begin() + 25, whole.end()));
}

TEST_F(SimulationRunTest, EffectsAndForcesGoOnFromADumpAlsoThoseOfTheConsole) {
    LevelFile level;
    level.forces = {{1, {0, 0}, {1.0f, 2.0f}, 3.0f}};
    level.emitters = {{2, {10, -20}, {0.0f, 0.0f}, "fx\\fountain.cfg"},
                      {3, {0, 0}, {0.0f, -1.0f}, "fx\\drip.cfg"}};
    files.write("effects.rivl", LevelFileBuilder::write(level));
    files.write("commands.txt", "ForceCreate 7 1 2 3 4 5\nFxEmitterCreate 5 5 0 0 9 fx\\dust.cfg\n");
    SimulationOptions asked = options();
    asked.level = "effects.rivl";
    asked.consoleFile = "commands.txt";
    asked.dumpFile = "whole.jsonl";
    run(asked);
    const std::vector<std::string> whole = linesOf("whole.jsonl");
    files.write("at25.jsonl", whole[25] + "\n");
    asked.consoleFile = "";
    asked.stateFile = "at25.jsonl";
    asked.ticks = 35;
    asked.dumpFile = "rest.jsonl";

    run(asked);

    EXPECT_EQ(linesOf("rest.jsonl"), std::vector<std::string>(whole.begin() + 25, whole.end()));
    const nlohmann::json last = nlohmann::json::parse(whole.back());
    EXPECT_EQ(last["forces"].size(), 2u);
    EXPECT_EQ(last["emitters"].size(), 3u);
    EXPECT_GT(last["effectParticles"].size(), 50u);
}

TEST_F(SimulationRunTest, TriggersGoOnFromAnyDumpWithAllThatIsPending) {
    LevelFile level;
    level.polygons = {polygonRecord({{-200, 60}, {200, 60}, {200, 90}, {-200, 90}}),
                      polygonRecord({{-60, -40}, {-50, -40}, {-50, 60}, {-60, 60}}, 5)};
    level.movers = {{6, 60.0f, {0, 0}, {40, 0}}};
    level.forces = {{7, {0, 20}, {1.0f, -1.0f}, 10.0f}};
    level.emitters = {{8, {0, 0}, {0.0f, -1.0f}, "fx\\sparks.cfg"}};
    const LevelFile::Point everywhere[4] = {{-200, -100}, {200, -100}, {200, 100}, {-200, 100}};
    const auto addTrigger = [&](std::int32_t type, std::int32_t target, float delay) {
        LevelFile::TriggerRecord record{target, type, delay, {}};
        std::ranges::copy(everywhere, record.corners);
        level.triggers.push_back(record);
    };
    addTrigger(200, 7, 0.0f);
    addTrigger(300, 5, 0.3f);
    addTrigger(301, 5, 0.6f);
    addTrigger(407, 6, 0.1f);
    addTrigger(408, 6, 0.5f);
    addTrigger(501, 8, 0.4f);
    addTrigger(603, 0, 0.2f);
    addTrigger(702, 0, 0.1f); // draws without a body, and piles up
    level.triggers.push_back({0, 702, 0.0f, {{-30, -20}, {0, -20}, {0, 10}, {-30, 10}}});
    level.triggers.push_back({0, 0, 0.0f, {{0, 0}, {60, 0}, {60, 60}, {0, 60}}});
    level.triggers.push_back({0, 2, 0.0f, {{-50, 0}, {-30, 0}, {-30, 60}, {-50, 60}}});
    files.write("triggers.rivl", LevelFileBuilder::write(level));
    files.write("commands.txt", "TriggerCreate 203 7 -20 -20 40 40\n");
    SimulationOptions asked = options();
    asked.level = "triggers.rivl";
    asked.consoleFile = "commands.txt";
    asked.ticks = 100;
    asked.dumpFile = "whole.jsonl";
    run(asked);
    const std::vector<std::string> whole = linesOf("whole.jsonl");
    asked.consoleFile = "";
    asked.stateFile = "from.jsonl";
    asked.dumpFile = "rest.jsonl";
    for (const std::ptrdiff_t from : {0, 1, 10, 25, 40, 70}) {
        files.write("from.jsonl", whole[static_cast<std::size_t>(from)] + "\n");
        asked.ticks = 100 - static_cast<std::uint64_t>(from);

        run(asked);

        EXPECT_EQ(linesOf("rest.jsonl"), std::vector<std::string>(whole.begin() + from, whole.end())) << from;
    }
    const nlohmann::json middle = nlohmann::json::parse(whole[20]);
    const nlohmann::json last = nlohmann::json::parse(whole.back());
    EXPECT_GT(middle["delayedEvents"].size(), 100u);
    EXPECT_EQ(last["triggers"].size(), 12u);
    EXPECT_FALSE(last["groups"].empty());
}

TEST_F(SimulationRunTest, LostWaterComesBackAndTheRunGoesOnFromADumpInTheFlight) {
    LevelFile level; // nothing holds the water
    files.write("void.rivl", LevelFileBuilder::write(level));
    SimulationOptions asked = options();
    asked.level = "void.rivl";
    asked.ticks = 400;
    asked.dumpFile = "whole.jsonl";
    run(asked);
    const std::vector<std::string> whole = linesOf("whole.jsonl");
    std::size_t lost = 1; // the first tick at whose end the camera flies back
    while (lost < 300 && nlohmann::json::parse(whole[lost])["camera"]["state"] != 0) {
        ++lost;
    }
    ASSERT_LT(lost, 300u);
    files.write("flight.jsonl", whole[lost + 1] + "\n");
    asked.stateFile = "flight.jsonl";
    asked.ticks = 400 - lost - 1;
    asked.dumpFile = "rest.jsonl";

    run(asked);

    EXPECT_EQ(nlohmann::json::parse(whole[lost])["particles"].size(), 128u);
    EXPECT_EQ(linesOf("rest.jsonl"),
              std::vector<std::string>(whole.begin() + static_cast<std::ptrdiff_t>(lost) + 1, whole.end()));
}

TEST_F(SimulationRunTest, MoversGoOnFromADumpInTheMiddleOfTheirWay) {
    LevelFile level;
    level.polygons = {polygonRecord({{-60, 40}, {60, 40}, {60, 50}, {-60, 50}}, 7),
                      polygonRecord({{-60, -60}, {60, -60}, {60, -50}, {-60, -50}}, 8)};
    level.movers = {{7, 90.0f, {0, 0}, {3, -70}}, {8, 55.0f, {0, 0}, {0, 60}}};
    files.write("lift.rivl", LevelFileBuilder::write(level));
    SimulationOptions asked = options();
    asked.level = "lift.rivl";
    asked.ticks = 0;
    asked.dumpFile = "start.jsonl";
    run(asked);
    nlohmann::json started = nlohmann::json::parse(linesOf("start.jsonl")[0]);
    started["movers"][0]["state"] = 4; // as a trigger does
    started["movers"][1]["state"] = 1;
    files.write("started.jsonl", started.dump() + "\n");
    asked.stateFile = "started.jsonl";
    asked.ticks = 90;
    asked.dumpFile = "whole.jsonl";
    run(asked);
    const std::vector<std::string> whole = linesOf("whole.jsonl");
    files.write("at45.jsonl", whole[45] + "\n");
    asked.stateFile = "at45.jsonl";
    asked.ticks = 45;
    asked.dumpFile = "rest.jsonl";

    run(asked);

    EXPECT_EQ(linesOf("rest.jsonl"), std::vector<std::string>(whole.begin() + 45, whole.end()));
    const nlohmann::json last = nlohmann::json::parse(whole.back());
    EXPECT_GT(last["movers"][0]["position"], 0);
    EXPECT_LT(last["polygons"][0]["offset"][1], -1);
    EXPECT_EQ(last["movers"][1]["state"], 0); // it has arrived
}

TEST_F(SimulationRunTest, HeldKeysTurnTheWorldAsAPlayersDo) {
    files.write("keys.txt", "0 left\n");
    SimulationOptions asked = options();
    asked.inputFile = "keys.txt";
    asked.dumpFile = "state.jsonl";
    asked.dumpEvery = 60;

    run(asked);

    const std::vector<std::string> lines = linesOf("state.jsonl");
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(nlohmann::json::parse(lines[0])["camera"]["angle"], 0);
    EXPECT_GT(nlohmann::json::parse(lines[1])["camera"]["angle"], 1);
}

TEST_F(SimulationRunTest, WithoutTheFlightTheWaterFallsFromTheFirstTick) {
    SimulationOptions asked = options();
    asked.ticks = 1;
    asked.dumpFile = "state.jsonl";
    run(asked);
    asked.noFlight = false;
    asked.dumpFile = "flight.jsonl";
    run(asked);

    const nlohmann::json falling = nlohmann::json::parse(linesOf("state.jsonl")[1]);
    const nlohmann::json waiting = nlohmann::json::parse(linesOf("flight.jsonl")[1]);
    EXPECT_EQ(falling["camera"]["state"], 1);
    EXPECT_NE(falling["particles"][0][9], 0); // velocity y
    EXPECT_EQ(waiting["camera"]["state"], 0);
    EXPECT_EQ(waiting["particles"][0][9], 0);
}

TEST_F(SimulationRunTest, ConsoleCommandsRunBeforeTheFirstTickAndTheirAnswersAreTold) {
    files.write("commands.txt", "Gravity 0\nParticleCount\n");
    SimulationOptions asked = options();
    asked.consoleFile = "commands.txt";
    asked.dumpFile = "state.jsonl";

    run(asked);

    EXPECT_NE(log.str().find("Gravity is now 0.000000"), std::string::npos);
    EXPECT_NE(log.str().find("ParticleCount is 128"), std::string::npos);
    EXPECT_EQ(nlohmann::json::parse(linesOf("state.jsonl")[0])["water"]["gravity"], 0);
}

TEST_F(SimulationRunTest, TheSummaryTellsWhatBecameOfTheWater) {
    const std::string summary = run(options());

    EXPECT_NE(summary.find("ticks      60, 0.8 s"), std::string::npos) << summary;
    EXPECT_NE(summary.find("particles  128: 128 water, 0 steam, 0 ice in 0 groups"), std::string::npos)
        << summary;
    EXPECT_NE(summary.find("time       0.8 s of play\n"), std::string::npos) << summary;
    EXPECT_NE(summary.find("score      500000: 436000 for the time, 64000 for the water\n"),
              std::string::npos)
        << summary;
}

TEST_F(SimulationRunTest, ALevelIsAPathOrElseANameInTheDataFolder) {
    std::filesystem::copy_file(std::filesystem::path(dataOfTree) / "maps/testLevel.rivl",
                               files.path() / "copy.rivl");
    SimulationOptions asked = options();
    asked.level = "copy.rivl";
    const std::string ofPath = run(asked);
    asked.level = "testLevel";
    const std::string ofName = run(asked);

    EXPECT_NE(ofPath.find("copy.rivl"), std::string::npos);
    EXPECT_NE(ofName.find("maps\\testLevel.rivl"), std::string::npos);
}

TEST_F(SimulationRunTest, WhatIsBadIsRefusedWithItsNameAndTheReason) {
    files.write("broken.rivl", "no level");
    files.write("short.rivl", std::string("\x97\x13\x8F\0\x0C\0\0\0", 8));
    files.write("empty.jsonl", "");
    files.write("bad.jsonl", "{\"tick\": 1}\n");
    const auto withLevel = [&](const std::string& level) {
        SimulationOptions asked = options();
        asked.level = level;
        return refusalOf(asked);
    };
    const auto withState = [&](const std::string& state) {
        SimulationOptions asked = options();
        asked.stateFile = state;
        return refusalOf(asked);
    };
    const std::string folder = files.path().string() + "/";

    EXPECT_EQ(withLevel("broken.rivl"), "broken.rivl: Not a RVL level file.");
    EXPECT_EQ(withLevel("short.rivl"), "short.rivl: Unable to read file");
    EXPECT_EQ(withLevel("missing.rivl"), "missing.rivl: Unable to open level file 'missing.rivl'");
    EXPECT_EQ(withState("missing.jsonl"), folder + "missing.jsonl: cannot be opened");
    EXPECT_EQ(withState("empty.jsonl"), folder + "empty.jsonl: holds no state line");
    EXPECT_EQ(withState("bad.jsonl"), folder + "bad.jsonl: no field \"dt\"");
}

TEST_F(SimulationRunTest, AFolderThatIsNotThereIsRefused) {
    SimulationOptions asked = options();
    asked.dataFolder = "nowhere";

    EXPECT_EQ(refusalOf(asked), "nowhere: is no folder to read data from");
}

TEST_F(SimulationRunTest, TicksBeyondTheClockAreRefused) {
    SimulationOptions asked = options();
    asked.ticks = 10;
    asked.dumpFile = "state.jsonl";
    run(asked);
    nlohmann::json late = nlohmann::json::parse(linesOf("state.jsonl")[0]);
    late["time"] = 4294966.0;
    files.write("late.jsonl", late.dump() + "\n");
    asked.stateFile = "late.jsonl";

    const std::string ofTen = refusalOf(asked);
    asked.ticks = 100;

    EXPECT_EQ(ofTen, "accepted");
    EXPECT_EQ(refusalOf(asked), files.path().string() +
                                    "/late.jsonl: from its time on the ticks would go beyond the 4294967 "
                                    "seconds that the clock can tell");
}

TEST_F(SimulationRunTest, AClickInAMenuActsAfterItsTimeAlsoWithoutPictures) {
    files.write("events.txt", "5 point 400 222\n10 click\n");
    SimulationOptions asked = options();
    asked.menus = true;
    asked.eventsFile = "events.txt";
    asked.ticks = 80;
    asked.dumpFile = "dump.jsonl";

    run(asked);

    const std::vector<std::string> lines = linesOf("dump.jsonl");
    EXPECT_EQ(nlohmann::json::parse(lines[69]).at("menu"), 1);
    EXPECT_EQ(nlohmann::json::parse(lines[72]).at("menu"), 0); // 0.8 s later
}

/// Runs of a level that ends where its water starts, to the entry of a name and through it.
class FinishedRunTest : public SimulationRunTest {
protected:
    SimulationOptions finished(const std::string& events, std::uint64_t ticks) const {
        LevelFile level;
        level.polygons = {polygonRecord({{-100, 40}, {100, 40}, {100, 60}, {-100, 60}})};
        level.triggers = {{0, 801, 0.0f, {{-100, -100}, {100, -100}, {100, 100}, {-100, 100}}}};
        files.write("end.rivl", LevelFileBuilder::write(level));
        files.write("events.txt", events);
        SimulationOptions asked = options();
        asked.level = "end.rivl";
        asked.eventsFile = "events.txt";
        asked.ticks = ticks;
        asked.dumpFile = "dump.jsonl";
        return asked;
    }
    std::vector<nlohmann::json> lines() const {
        std::vector<nlohmann::json> parsed;
        for (const std::string& line : linesOf("dump.jsonl")) {
            parsed.push_back(nlohmann::json::parse(line));
        }
        return parsed;
    }
};

TEST_F(FinishedRunTest, TheRunEndsWithItsTicksAlsoWhileANameIsEntered) {
    const std::string summary = run(finished("250 point 400 530\n260 click\n", 500));

    EXPECT_NE(summary.find("ticks      500, 6.6"), std::string::npos) << summary;
    EXPECT_EQ(lines().back()["menu"], 9);
    EXPECT_LT(lines().back()["tick"], 330); // in the entry nothing is told
    EXPECT_EQ(HighScores::nameOf(HighScores::table().front()), "NO NAME");
}

TEST_F(FinishedRunTest, AfterTheNameTheRunGoesOnAtTheTickThatTheEntryHasReached) {
    run(finished("250 point 400 530\n260 click\n340 key Return\n", 500));

    const std::vector<nlohmann::json> all = lines();
    std::size_t before = 0; // the line in front of the entry
    while (before + 1 < all.size() && all[before + 1]["tick"] == all[before]["tick"].get<int>() + 1) {
        ++before;
    }
    ASSERT_LT(before + 1, all.size());
    EXPECT_EQ(all[before]["menu"], 9);
    EXPECT_EQ(all[before + 1]["menu"], 4); // the scores, over the level's start
    EXPECT_EQ(all[before + 1]["lastMenu"], 1);
    EXPECT_NEAR(all[before + 1]["tick"].get<double>(), 340.0 + 0.8 * 75.0, 3.0);
    EXPECT_EQ(all.back()["tick"], 500);
    EXPECT_NEAR(all.back()["time"].get<double>(), 500.0 / 75.0, 1e-5);
    EXPECT_EQ(all.back()["rules"]["levelEnding"], false);
    EXPECT_EQ(HighScores::nameOf(HighScores::table().front()), "");
}

} // namespace tarnwick
