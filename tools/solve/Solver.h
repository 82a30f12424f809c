#pragma once

#include "tools/solve/SolveOptions.h"

#include <iosfwd>

namespace tarnwick {

/// Looks for keys that finish a level, in processes of their own, each with an order of its own. Of several
/// that find some, the one that simulated the fewest ticks counts, and of two of those the first: the others
/// are heard until they have simulated as many, so the result is that of seed and number of jobs alone, as
/// long as the time does not run out. The keys are played once from the level's start before they are told.
///
/// The progress goes to `log`. 0 when keys were found and written; 1 when there are none, with the picture
/// written. Throws `std::runtime_error` that names the file and the reason when an option or a file is bad.
int solve(const SolveOptions& options, std::ostream& out, std::ostream& log);

} // namespace tarnwick
