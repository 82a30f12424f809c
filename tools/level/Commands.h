#pragma once

#include <iosfwd>

namespace tarnwick {

/// The whole of `tarnwick-level` but its entry: reads the command line, runs `compile`, `decompile`, `info`
/// or `validate`, and gives the exit status: 0 when all went well, 1 when `validate` found something, 2 when
/// an argument or a file is bad. Results go to `output`; errors and warnings go to `errors`, one line each,
/// with the name of the file and the reason.
int runLevelTool(int argumentCount, const char* const* arguments, std::ostream& output, std::ostream& errors);

} // namespace tarnwick
