// A run that is taken up again at any of its state lines goes on as if it had never been interrupted.

#include "tools/sim/RecordedRunTest.h"

#include <algorithm>
#include <cstdlib>
#include <random>
#include <set>

namespace tarnwick {

namespace {

const char* const levels[] = {"testLevel", "frozenBridge", "kettle", "hoist", "gale", "sluices"};

/// How many lines of each run are taken up, and for how many ticks at most: few by default, 50 to the run's
/// end with TARNWICK_LONG_TESTS set.
bool thorough() {
    return std::getenv("TARNWICK_LONG_TESTS") != nullptr;
}

} // namespace

class RestoredRunTest : public RecordedRunTest, public ::testing::WithParamInterface<const char*> {
protected:
    static constexpr std::uint64_t ticks = 400;

    SimulationOptions recorded() const {
        SimulationOptions asked = options(GetParam(), ticks);
        asked.inputFile = dataOfTree + "/replays/" + GetParam() + ".keys";
        asked.noFlight = false;
        return asked;
    }
    /// Another choice of ticks for each level and each kind of run, and the same in each run of the test.
    static std::set<std::uint64_t> randomTicks(std::uint32_t seed) {
        std::mt19937 random(seed * 256u + static_cast<std::uint32_t>(std::string(GetParam()).size()));
        std::set<std::uint64_t> chosen;
        while (chosen.size() < (thorough() ? 50u : 3u)) {
            chosen.insert(random() % ticks);
        }
        return chosen;
    }
    void expectToGoOn(const SimulationOptions& asked, std::uint32_t seed) {
        play(asked);
        const std::vector<std::string> whole = linesOf("run.jsonl");
        ASSERT_EQ(whole.size(), ticks + 1);
        for (const std::uint64_t from : randomTicks(seed)) {
            files.write("from.jsonl", whole[from] + "\n");
            SimulationOptions again = asked;
            again.stateFile = "from.jsonl";
            again.consoleFile.clear();
            again.ticks = std::min<std::uint64_t>(ticks - from, thorough() ? ticks : 60);

            play(again);

            const std::vector<std::string> lines = linesOf("run.jsonl");
            for (std::size_t i = 0; i <= again.ticks; ++i) {
                ASSERT_EQ(lines.at(i), whole.at(from + i)) << "from tick " << from << ", at " << from + i;
            }
        }
    }
    std::vector<std::string> linesOf(const std::string& name) const {
        std::ifstream file(files.path() / name);
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);) {
            lines.push_back(line);
        }
        return lines;
    }
};

TEST_P(RestoredRunTest, WithHeldKeys) {
    expectToGoOn(recorded(), 1);
}

TEST_P(RestoredRunTest, ThroughMenusAndAPause) {
    files.write("events.txt", "10 point 400 222\n20 click\n140 key Escape\n200 key Escape\n"
                              "230 key P\n250 key P\n300 point 100 100\n");
    SimulationOptions asked = recorded();
    asked.menus = true;
    asked.eventsFile = "events.txt";
    expectToGoOn(asked, 2);
}

TEST_P(RestoredRunTest, WithWhatTheConsoleMade) {
    files.write("commands.txt",
                "ObjectCreate 300 300 7 gfx\\fan_frame00.tga\nTriggerCreate 300 7 -900 -900 900 900\n"
                "ObjectCreate 310 300 7 gfx\\lantern.tga\nForceCreate 7 300 300 1 0 50\n"
                "TriggerCreate 200 7 -900 -900 900 900\nTriggerCreate 901 0 -900 -900 900 900\n"
                "FxEmitterCreate 300 300 1 0 7 fx\\drip.cfg\nTriggerCreate 502 7 -900 -900 900 900\n"
                "ParticleCreate 300 280 20 40\nShakeCamera\nRoomTemperature -40\n");
    SimulationOptions asked = recorded();
    asked.noFlight = true;
    asked.consoleFile = "commands.txt";
    expectToGoOn(asked, 3);
}

TEST_P(RestoredRunTest, SeenByTheFreeCamera) {
    files.write("commands.txt", "FreeCamera true\n");
    SimulationOptions asked = recorded();
    asked.consoleFile = "commands.txt";
    expectToGoOn(asked, 4);
}

INSTANTIATE_TEST_SUITE_P(Levels, RestoredRunTest, ::testing::ValuesIn(levels), [](const auto& level) {
    return std::string(level.param);
});

} // namespace tarnwick
