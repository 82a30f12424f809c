#pragma once

#include "support/DataFolder.h"
#include "support/ModuleTest.h"
#include "tools/sim/SimulationRun.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace tarnwick {

/// Runs levels with the data of the source tree and reads back the state lines that they dump. What a run is
/// given lies in a folder of the test's own.
class RecordedRunTest : public ModuleTest {
protected:
    using Lines = std::vector<nlohmann::json>;

    RecordedRunTest()
        : dataOfTree((std::filesystem::current_path() / "data").string()) {}

    /// `ticks` ticks of a level, begun on the water.
    SimulationOptions options(const std::string& level, std::uint64_t ticks) const {
        SimulationOptions asked;
        asked.level = level;
        asked.dataFolder = dataOfTree;
        asked.ticks = ticks;
        asked.noFlight = true;
        return asked;
    }
    /// The dumped line of each tick, tick 0 first. Begins as a program of its own. The summary is kept.
    Lines run(SimulationOptions asked) {
        ModuleReset::all();
        std::filesystem::current_path(files.path());
        asked.dumpFile = "run.jsonl";
        std::ostringstream out;
        std::ostringstream log;
        runSimulation(asked, out, log);
        summary = out.str();
        std::filesystem::current_path(files.path());
        Lines lines;
        std::ifstream file("run.jsonl");
        for (std::string line; std::getline(file, line);) {
            lines.push_back(nlohmann::json::parse(line));
        }
        return lines;
    }
    /// What follows in `whole` from the line `from` on, worked out anew from that line.
    Lines continued(SimulationOptions asked, const Lines& whole, std::size_t from) {
        files.write("from.jsonl", whole[from].dump() + "\n");
        asked.stateFile = "from.jsonl";
        asked.consoleFile.clear();
        asked.ticks -= from;
        return run(asked);
    }
    static Lines rest(const Lines& whole, std::size_t from) {
        return {whole.begin() + static_cast<std::ptrdiff_t>(from), whole.end()};
    }

    std::string dataOfTree;
    DataFolder files;
    std::string summary; ///< Of the last run.
};

} // namespace tarnwick
