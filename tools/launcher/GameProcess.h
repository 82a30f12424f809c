#pragma once

#include <filesystem>
#include <string>

namespace tarnwick {

/// Runs `program` without arguments in `folder` and waits for its end. SIGTERM, SIGHUP and SIGQUIT are passed
/// on to it; SIGINT reaches it from the terminal by itself. Its exit status; 128 and the signal's number if a
/// signal ended it, as shells say it. Throws `std::runtime_error` if it cannot be started.
int runGame(const std::filesystem::path& program, const std::filesystem::path& folder);

/// Runs `program` with one argument and `text` on its standard input, and waits for its end. Nothing if it
/// cannot be started.
void writeToProgram(const std::filesystem::path& program, std::string argument, const std::string& text);

} // namespace tarnwick
