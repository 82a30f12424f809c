#include "support/ModuleReset.h"

#include "console/GLConsole.h"
#include "core/Clock.h"
#include "core/DataFiles.h"
#include "core/Random.h"

namespace tarnwick {

void ModuleReset::all() {
    Clock::state = {};
    DataFiles::state = {};
    GLConsole::state = {};
    GLConsole::outputBuffer.fill('\n');
    Random::state = {};
}

} // namespace tarnwick
