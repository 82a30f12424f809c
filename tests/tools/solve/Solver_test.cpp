#include "tools/solve/Solver.h"

#include "graphics/FramePicture.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"
#include "tools/sim/SimulationRun.h"
#include "tools/solve/SolveScene.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>

namespace tarnwick {

namespace fs = std::filesystem;

/// Solves small levels with the settings of the source tree, in a folder of its own.
class SolverTest : public ModuleTest {
protected:
    SolverTest()
        : dataOfTree((fs::current_path() / "data").string()) {
        options.dataFolder = dataOfTree;
        options.level = "small.rivl";
        options.jobs = 1;
        options.seconds = 300.0; // far more than it takes: no result hangs on it
        options.outFile = "out.keys";
        fs::current_path(files.path());
    }

    void write(const LevelFile& level) const { files.write("small.rivl", LevelFileBuilder::write(level)); }

    /// Begins as a program of its own.
    int run() {
        ModuleReset::all();
        fs::current_path(files.path());
        std::ostringstream out;
        std::ostringstream told;
        const int status = solve(options, out, told);
        log = told.str();
        fs::current_path(files.path());
        return status;
    }
    std::string keys() const {
        std::ifstream file(files.path() / options.outFile);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::string dataOfTree; // before the folder, which changes into itself
    DataFolder files;
    SolveOptions options;
    std::string log;
};

// Would write keys of another run than the game's.
TEST_F(SolverTest, TheKeysOfALevelWithATurnFinishItInTheRunner) {
    write(room());

    ASSERT_EQ(run(), 0) << log;

    std::istringstream text(keys());
    std::string word;
    std::uint64_t ticks = 0;
    while (word != "ticks" && text >> word) {
    }
    text >> ticks;
    ModuleReset::all();
    SimulationOptions played;
    played.level = "small.rivl";
    played.dataFolder = dataOfTree;
    played.inputFile = options.outFile;
    played.ticks = ticks;
    std::ostringstream summary;
    std::ostringstream console;
    runSimulation(played, summary, console);
    EXPECT_NE(summary.str().find("the level is finished"), std::string::npos) << keys() << summary.str();
    EXPECT_NE(keys().find(" right\n"), std::string::npos) << keys();
}

// Would let chance, or the speed of the machine, into the search.
TEST_F(SolverTest, TheSameSeedAndJobsGiveTheSameKeys) {
    write(room());
    options.jobs = 2;
    options.seed = 5;
    ASSERT_EQ(run(), 0) << log;
    const std::string first = keys();
    fs::remove(files.path() / options.outFile);

    ASSERT_EQ(run(), 0) << log;

    EXPECT_EQ(keys(), first);
}

// Would search to the end of its time where there is nothing to find, or end as if it had found it.
TEST_F(SolverTest, AClosedBoxEndsWithOneAndAPicture) {
    write(roomWithWall());
    options.pictureFile = "far.png";

    EXPECT_EQ(run(), 1);

    EXPECT_NE(log.find("free space does not lead from the water to the finish"), std::string::npos) << log;
    const FramePicture picture = FramePicture::load(files.path() / "far.png");
    const auto blue = std::ranges::count_if(
        picture.pixels, [](const FramePicture::Pixel& pixel) { return pixel.blue > 2 * pixel.red; });
    EXPECT_GT(picture.width, 100);
    EXPECT_GT(blue, 0) << "where water was";
    EXPECT_FALSE(fs::exists(files.path() / options.outFile));
}

TEST_F(SolverTest, WhenItsTimeIsUpItEndsWithOne) {
    write(room());
    options.seconds = 1e-9;
    options.pictureFile = "far.png";

    EXPECT_EQ(run(), 1);

    EXPECT_NE(log.find("no way was found"), std::string::npos) << log;
    EXPECT_TRUE(fs::exists(files.path() / "far.png"));
}

TEST_F(SolverTest, ALevelThatIsNoneIsTold) {
    files.write("small.rivl", "no level");

    try {
        run();
        FAIL() << "it was taken for a level";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "small.rivl: Not a RVL level file.");
    }
}

} // namespace tarnwick
