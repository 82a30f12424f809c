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
    /// Dumps to `run.jsonl`, tick 0 first. Begins as a program of its own. The summary is kept.
    void play(SimulationOptions asked);
    /// The same; the dumped line of each tick.
    Lines run(SimulationOptions asked);
    /// What follows in `whole` from the line `from` on, worked out anew from that line.
    Lines continued(SimulationOptions asked, const Lines& whole, std::size_t from);
    static Lines rest(const Lines& whole, std::size_t from);

    std::string dataOfTree;
    DataFolder files;
    std::string summary; ///< Of the last run.
};

} // namespace tarnwick
