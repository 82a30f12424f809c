#include "tools/solve/Difficulty.h"

#include "support/DataFolder.h"
#include "support/ModuleTest.h"
#include "tools/solve/SolveScene.h"

#include <filesystem>
#include <stdexcept>
#include <vector>

namespace tarnwick {

namespace fs = std::filesystem;

/// Measures small levels with the settings of the source tree.
class DifficultyTest : public ModuleTest {
protected:
    static constexpr std::uint32_t players = 2;

    ~DifficultyTest() override { fs::current_path(startFolder); }

    Difficulty measure(const LevelFile& level, const std::vector<Witness::Change>& changes) {
        ModuleReset::all();
        files.write("small.rivl", LevelFileBuilder::write(level));
        HeadlessLevel game(
            {.level = (files.path() / "small.rivl").string(), .dataFolder = (startFolder / "data").string()});
        Witness keys;
        keys.changes = changes;
        return DifficultyMeter(game).measure(keys, players);
    }
    /// A room whose finish is where the water starts.
    static LevelFile roomThatPlaysItself() {
        LevelFile level = room();
        level.triggers[0] = region(801, 0, 0, 500, 160);
        return level;
    }

    fs::path startFolder = fs::current_path();
    DataFolder files;
};

// Would find a level hard that needs nobody.
TEST_F(DifficultyTest, ALevelThatPlaysItselfIsEasy) {
    const Difficulty easy = measure(roomThatPlaysItself(), {});

    EXPECT_EQ(easy.decisions, 0U);
    EXPECT_EQ(easy.playersAtEnd, players);
    EXPECT_EQ(easy.waterLost, 0U);
    EXPECT_LT(easy.figure(), 5.0);
}

// Would leave out what the keys cost.
TEST_F(DifficultyTest, ATurnThatMayComeAtAnyTimeIsForgivenAndCounts) {
    const Difficulty found = measure(room(), {{700, {.right = true}}, {780, {}}});

    EXPECT_EQ(found.decisions, 1U);
    EXPECT_GT(found.tolerance, 0.1);
    EXPECT_LE(found.tolerance, Difficulty::longestTolerance);
    EXPECT_GT(found.seconds, 1.0);
    EXPECT_GT(found.figure(), 5.0);
}

TEST_F(DifficultyTest, KeysThatDoNotFinishAreRefused) {
    EXPECT_THROW(measure(roomWithWall(), {}), std::runtime_error);
}

// Each part must make a level harder, and none less.
TEST_F(DifficultyTest, EachPartCounts) {
    const Difficulty plain{.seconds = 20.0,
                           .decisions = 2,
                           .tolerance = 0.5,
                           .players = 4,
                           .playersAtEnd = 2,
                           .water = 128,
                           .waterLost = 10};
    Difficulty other = plain;
    other.seconds = 40.0;
    EXPECT_GT(other.figure(), plain.figure());
    other = plain;
    other.decisions = 3;
    EXPECT_GT(other.figure(), plain.figure());
    other = plain;
    other.tolerance = 0.25;
    EXPECT_GT(other.figure(), plain.figure());
    other = plain;
    other.playersAtEnd = 1;
    EXPECT_GT(other.figure(), plain.figure());
    other = plain;
    other.waterLost = 20;
    EXPECT_GT(other.figure(), plain.figure());
}

} // namespace tarnwick
