// Plays the committed test level: the water must be able to go all the way.

#include "level/LevelFile.h"
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

class TestLevelTest : public ModuleTest {
protected:
    struct Drop {
        double x = 0.0;
        double y = 0.0;
    };

    /// Plays the level with these held keys and gives the drops of every hundredth tick.
    std::vector<std::vector<Drop>> play(std::uint64_t ticks, const std::string& keys) const {
        folder.write("keys.txt", keys);
        SimulationOptions options;
        options.level = "maps\\testLevel.rivl";
        options.dataFolder = TARNWICK_SOURCE_DIR "/data";
        options.ticks = ticks;
        options.inputFile = (folder.path() / "keys.txt").string();
        options.dumpFile = (folder.path() / "dump.jsonl").string();
        options.dumpEvery = 100;
        options.noFlight = true;
        std::ostringstream summary;
        std::ostringstream log;
        runSimulation(options, summary, log);

        std::vector<std::vector<Drop>> moments;
        std::ifstream dump(options.dumpFile);
        for (std::string line; std::getline(dump, line);) {
            std::vector<Drop>& moment = moments.emplace_back();
            const nlohmann::json state = nlohmann::json::parse(line);
            for (const nlohmann::json& particle : state.at("particles")) {
                moment.push_back({particle.at(0).get<double>(), particle.at(1).get<double>()});
            }
        }
        return moments;
    }

    static std::vector<LevelFile::PolygonRecord> walls() {
        std::ifstream file(TARNWICK_SOURCE_DIR "/data/maps/testLevel.rivl", std::ios::binary);
        LevelFile level;
        EXPECT_EQ(LevelFile::read(file, level), nullptr);
        std::erase_if(level.polygons, [](const auto& polygon) { return polygon.polygonMode != 0; });
        return level.polygons;
    }

    static bool contains(const LevelFile::PolygonRecord& polygon, const Drop& drop) {
        bool inside = false;
        LevelFile::Point start = polygon.points.back();
        for (const LevelFile::Point& end : polygon.points) {
            if ((start.y > drop.y) != (end.y > drop.y) &&
                drop.x < start.x + (drop.y - start.y) * (end.x - start.x) / (end.y - start.y)) {
                inside = !inside;
            }
            start = end;
        }
        return inside;
    }

    DataFolder folder;
};

TEST_F(TestLevelTest, LeftAloneAllWaterRunsDownTheSlopesIntoTheBowl) {
    const std::vector<Drop> drops = play(1000, "").back();

    EXPECT_EQ(drops.size(), 128U);
    for (const Drop& drop : drops) {
        EXPECT_GT(drop.x, 668);
        EXPECT_LT(drop.x, 964);
        EXPECT_GT(drop.y, 1170);
    }
}

TEST_F(TestLevelTest, AGentleTurnPoursTheBowlIntoTheTarn) {
    const std::vector<Drop> drops = play(2000, "0 none\n1000 right\n1030 none\n").back();

    EXPECT_EQ(drops.size(), 128U);
    for (const Drop& drop : drops) {
        EXPECT_GT(drop.x, 1020);
        EXPECT_GT(drop.y, 1290);
    }
}

TEST_F(TestLevelTest, NoDropGetsIntoAWallHoweverTheWorldTurns) {
    const std::vector<LevelFile::PolygonRecord> solid = walls();
    const std::string keys =
        "0 left\n150 right\n260 left\n330 none\n500 right\n800 left\n1100 right\n1500 none\n";

    const std::vector<std::vector<Drop>> moments = play(2000, keys);

    ASSERT_EQ(moments.size(), 21U);
    for (const std::vector<Drop>& moment : moments) {
        EXPECT_GT(moment.size(), 100U); // a few are left behind outside the view
        for (const Drop& drop : moment) {
            for (const LevelFile::PolygonRecord& wall : solid) {
                ASSERT_FALSE(contains(wall, drop)) << drop.x << ' ' << drop.y;
            }
        }
    }
}

} // namespace tarnwick
