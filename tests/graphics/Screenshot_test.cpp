#include "graphics/Screenshot.h"

#include "core/Log.h"
#include "graphics/FramePicture.h"
#include "support/GLTest.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace tarnwick {

/// A player whose home is the data folder.
class ScreenshotTest : public GLTest {
protected:
    ScreenshotTest()
        : home(std::getenv("HOME") != nullptr ? std::getenv("HOME") : "") {
        setenv("HOME", data.path().c_str(), 1);
        unsetenv("XDG_CONFIG_HOME");
        std::filesystem::create_directories(data.path() / "Bilder");
    }
    ~ScreenshotTest() override { setenv("HOME", home.c_str(), 1); }
    static std::vector<std::filesystem::path> filesIn(const std::filesystem::path& folder) {
        std::vector<std::filesystem::path> files;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.is_regular_file()) {
                files.push_back(entry.path());
            }
        }
        return files;
    }

    const std::string home; ///< The real one.
};

/// Finds a picture that lands in the home of a player who has a folder for pictures.
TEST_F(ScreenshotTest, TheDesktopsFolderForPicturesIsTaken) {
    EXPECT_EQ(Screenshot::folder(), data.path());
    data.write(".config/user-dirs.dirs", "# of the desktop\nXDG_MUSIC_DIR=\"$HOME/Musik\"\n"
                                         "XDG_PICTURES_DIR=\"$HOME/Bilder\"\n");
    EXPECT_EQ(Screenshot::folder(), data.path() / "Bilder");
    data.write(".config/user-dirs.dirs", "XDG_PICTURES_DIR=\"$HOME/Gone\"\n");
    EXPECT_EQ(Screenshot::folder(), data.path());
}

/// Finds a picture of something else, and a second one that replaces the first of that second.
TEST_F(ScreenshotTest, EachPictureIsAFileOfWhatWasDrawn) {
    data.write(".config/user-dirs.dirs", "XDG_PICTURES_DIR=\"$HOME/Bilder\"\n");
    GLWindow::clearScreen(1.0f, 1.0f, 1.0f);

    Screenshot::save();
    Screenshot::save();

    const auto files = filesIn(data.path() / "Bilder");
    ASSERT_EQ(files.size(), 2u);
    const FramePicture saved = FramePicture::load(files.front());
    EXPECT_EQ(saved.width, side);
    EXPECT_EQ(saved.at(5, 5), (FramePicture::Pixel{255, 255, 255}));
    EXPECT_NE(Log::outputText().find("\nSaved the picture " + files.front().string()), std::string::npos);
}

/// Finds a silent failure.
TEST_F(ScreenshotTest, WithoutAHomeThePlayerIsTold) {
    unsetenv("HOME");

    Screenshot::save();

    EXPECT_EQ(Log::outputText(), "\nNo folder to save a picture in");
}

} // namespace tarnwick
