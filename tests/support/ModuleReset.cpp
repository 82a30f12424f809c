#include "support/ModuleReset.h"

#include "console/GLConsole.h"
#include "core/Clock.h"
#include "core/DataFiles.h"
#include "core/Random.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"

namespace tarnwick {

void ModuleReset::all() {
    Camera::state = {};
    Clock::state = {};
    DataFiles::state = {};
    GLConsole::state = {};
    GLConsole::outputBuffer.fill('\n');
    GLWindow::close();
    GLWindow::state = {};
    Game::state = {};
    Random::state = {};
}

} // namespace tarnwick
