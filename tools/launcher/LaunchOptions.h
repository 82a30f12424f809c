#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace tarnwick {

/// What the launcher was asked for.
struct LaunchOptions {
    std::filesystem::path dataFolder; ///< Empty: the data that are installed with the launcher.
    std::string level;                ///< A level's name or file to start with; empty: the game's own first.
    std::int32_t windowWidth = 0;     ///< Pixels; 0: full screen.
    std::int32_t windowHeight = 0;

    /// Reads the command line. Nothing is returned when the program is to end at once, after `--help`,
    /// `--version` or a mistake, which are told on standard output or standard error; `exitStatus` then holds
    /// the status.
    static std::optional<LaunchOptions> fromCommandLine(int argc, char** argv, int& exitStatus);
};

} // namespace tarnwick
