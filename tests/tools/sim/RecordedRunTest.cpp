#include "tools/sim/RecordedRunTest.h"

#include <cstddef>
#include <fstream>
#include <sstream>
#include <utility>

namespace tarnwick {

void RecordedRunTest::play(SimulationOptions asked) {
    ModuleReset::all();
    std::filesystem::current_path(files.path());
    asked.dumpFile = "run.jsonl";
    std::ostringstream out;
    std::ostringstream log;
    runSimulation(asked, out, log);
    summary = out.str();
    std::filesystem::current_path(files.path());
}

RecordedRunTest::Lines RecordedRunTest::run(SimulationOptions asked) {
    play(std::move(asked));
    Lines lines;
    std::ifstream file("run.jsonl");
    for (std::string line; std::getline(file, line);) {
        lines.push_back(nlohmann::json::parse(line));
    }
    return lines;
}

RecordedRunTest::Lines
RecordedRunTest::continued(SimulationOptions asked, const Lines& whole, std::size_t from) {
    files.write("from.jsonl", whole[from].dump() + "\n");
    asked.stateFile = "from.jsonl";
    asked.consoleFile.clear();
    asked.ticks -= from;
    return run(asked);
}

RecordedRunTest::Lines RecordedRunTest::rest(const Lines& whole, std::size_t from) {
    return {whole.begin() + static_cast<std::ptrdiff_t>(from), whole.end()};
}

} // namespace tarnwick
