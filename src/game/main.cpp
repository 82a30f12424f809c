#include "console/GLConsole.h"
#include "core/LocationStack.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"

/// The program's start and stop. It takes no command line and no environment of its own, and reads its data
/// from the working directory. Modules stop in the reverse order of their start.
int main() {
    TARNWICK_LOCATION("main");
    tarnwick::GLConsole::initialise();
    if (tarnwick::GLWindow::exists()) {
        tarnwick::Game::run("maps\\testLevel.rivl");
    }
    tarnwick::GLConsole::shutdown();
    return 0;
}
