#include "support/ModuleReset.h"

#include "console/GLConsole.h"
#include "core/Clock.h"

namespace tarnwick {

void ModuleReset::all() {
    Clock::state = {};
    GLConsole::state = {};
    GLConsole::outputBuffer.fill('\n');
}

} // namespace tarnwick
