#include "support/ModuleReset.h"

#include "core/Clock.h"

namespace tarnwick {

void ModuleReset::all() {
    Clock::state = {};
}

} // namespace tarnwick
