#pragma once

#include "tools/sim/SimulationOptions.h"

#include <iosfwd>

namespace tarnwick {

/// Plays a level as the options say: dumps go where they say, the summary to `out` (or to `log` when the dump
/// takes standard output), what console commands answer to `log`. Changes the working directory to the data
/// folder. Throws `std::runtime_error` that names the file and the reason when an option, the level or a file
/// is bad.
void runSimulation(const SimulationOptions& options, std::ostream& out, std::ostream& log);

} // namespace tarnwick
