#include "tools/sim/FrameWriter.h"

#include "graphics/FramePicture.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"
#include "tools/sim/SimulationOptions.h"
#include "tools/sim/SimulationRun.h"

#include <SDL.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace tarnwick {

/// Runs the test level of the source tree; files of a run go to a folder of the test's own.
class FrameWriterTest : public ModuleTest {
protected:
    FrameWriterTest()
        : dataOfTree((std::filesystem::current_path() / "data").string()) {}

    SimulationOptions options(std::uint64_t ticks) const {
        SimulationOptions result;
        result.level = "maps\\testLevel.rivl";
        result.dataFolder = dataOfTree;
        result.ticks = ticks;
        result.noFlight = true;
        return result;
    }
    /// Every run begins as a program of its own: modules at start, in the folder of the test.
    void run(const SimulationOptions& asked) {
        ModuleReset::all();
        std::filesystem::current_path(files.path());
        std::ostringstream out;
        runSimulation(asked, out, out);
        std::filesystem::current_path(files.path());
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
    std::string contentOf(const std::string& name) const {
        std::ifstream file(files.path() / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::vector<std::string> namesIn(const std::string& folder) const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(files.path() / folder)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    std::string dataOfTree;
    DataFolder files;
};

TEST_F(FrameWriterTest, ARunWithoutPicturesHasNothingToDoWithVideo) {
    run(options(2));

    EXPECT_EQ(SDL_WasInit(SDL_INIT_VIDEO), 0u);
}

TEST_F(FrameWriterTest, TheScreenshotShowsTheLevel) {
    SimulationOptions asked = options(2);
    asked.screenshotFile = "shot.png";

    run(asked);

    const FramePicture shot = FramePicture::load(files.path() / "shot.png");
    ASSERT_EQ(shot.width, 800);
    ASSERT_EQ(shot.height, 600);
    const auto differs = [&](FramePicture::Pixel pixel) { return pixel != shot.at(0, 0); };
    EXPECT_GT(std::count_if(shot.pixels.begin(), shot.pixels.end(), differs), 800 * 600 / 2);
}

TEST_F(FrameWriterTest, PicturesHaveTheSizeAskedFor) {
    SimulationOptions asked = options(2);
    asked.screenshotFile = "shot.png";
    asked.width = 320;
    asked.height = 180;

    run(asked);

    const FramePicture shot = FramePicture::load(files.path() / "shot.png");
    EXPECT_EQ(shot.width, 320);
    EXPECT_EQ(shot.height, 180);
}

TEST_F(FrameWriterTest, EveryDumpedTickIsAFrameAndTheyAreNumberedWithoutGaps) {
    SimulationOptions asked = options(7);
    asked.framesFolder = "film/frames";
    asked.dumpEvery = 3;

    run(asked);

    EXPECT_EQ(namesIn("film/frames"), (std::vector<std::string>{"000000.png", "000001.png", "000002.png"}));
}

TEST_F(FrameWriterTest, PicturesChangeNothingOfTheRun) {
    SimulationOptions asked = options(20);
    asked.dumpFile = "plain.jsonl";
    run(asked);
    asked.dumpFile = "drawn.jsonl";
    asked.framesFolder = "frames";
    asked.screenshotFile = "shot.png";

    run(asked);

    EXPECT_FALSE(contentOf("plain.jsonl").empty());
    EXPECT_TRUE(contentOf("plain.jsonl") == contentOf("drawn.jsonl"));
}

TEST_F(FrameWriterTest, AFolderThatCannotBeMadeIsRefused) {
    files.write("inTheWay", "a file");
    SimulationOptions asked = options(2);
    asked.framesFolder = "inTheWay/frames";

    const std::string refusal = refusalOf(asked);

    EXPECT_EQ(refusal,
              (files.path() / "inTheWay/frames").string() + ": is no folder that frames could go to");
}

TEST_F(FrameWriterTest, AScreenshotThatCannotBeWrittenIsRefused) {
    SimulationOptions asked = options(2);
    asked.screenshotFile = "nowhere/shot.png";

    const std::string refusal = refusalOf(asked);

    EXPECT_EQ(refusal, (files.path() / "nowhere/shot.png").string() + ": cannot be written");
}

TEST_F(FrameWriterTest, AfterTheConsoleClosedTheWindowThereIsNoPicture) {
    files.write("commands", "Quit\n");
    SimulationOptions asked = options(2);
    asked.consoleFile = "commands";
    asked.screenshotFile = "shot.png";

    const std::string refusal = refusalOf(asked);

    EXPECT_EQ(refusal,
              (files.path() / "shot.png").string() + ": the window was closed, there is nothing to draw");
}

} // namespace tarnwick
