// The ways in which a window cannot be opened. Each ends the program, so each runs in a child process.

#include "graphics/GLWindow.h"
#include "support/ModuleTest.h"

#include <cstdlib>

namespace tarnwick {

namespace {

/// Opens a window in an environment without display, but for one variable.
void createWindowWith(const char* variable, const char* value) {
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
    unsetenv("SDL_VIDEODRIVER");
    if (variable != nullptr) {
        setenv(variable, value, 1);
    }
    GLWindow::createWindow("Title", 320, 240);
    std::exit(0);
}

} // namespace

class GLWindowFailureTest : public ModuleTest {
protected:
    GLWindowFailureTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(GLWindowFailureTest, NoDisplayEndsTheProgram) {
    EXPECT_EXIT(createWindowWith(nullptr, nullptr), testing::ExitedWithCode(1),
                "Game error: Unable to create window: couldn't get program handle\\.\n"
                "No display to open a window on\n");
}

TEST_F(GLWindowFailureTest, AnUnknownDriverEndsTheProgram) {
    EXPECT_EXIT(createWindowWith("SDL_VIDEODRIVER", "nonsense"), testing::ExitedWithCode(1),
                "Game error: Unable to create window: couldn't get program handle\\.\n"
                "nonsense not available\n");
}

TEST_F(GLWindowFailureTest, ADriverWithoutGlEndsTheProgram) {
    EXPECT_EXIT(createWindowWith("SDL_VIDEODRIVER", "dummy"), testing::ExitedWithCode(1),
                "Error: Unable to create window: couldn't register window class\\.\n"
                "No dynamic OpenGL support");
}

TEST_F(GLWindowFailureTest, TheDriverOffScreenIsTakenWhenAskedFor) {
    EXPECT_EXIT(createWindowWith("SDL_VIDEODRIVER", "offscreen"), testing::ExitedWithCode(0), "");
}

} // namespace tarnwick
