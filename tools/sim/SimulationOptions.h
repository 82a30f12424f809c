#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tarnwick {

/// What a run of `tarnwick-sim` was asked for.
struct SimulationOptions {
    std::string level;      ///< A file's path, or else a name inside the data folder.
    std::string dataFolder; ///< Holds `cfg`, `maps`, `gfx` and `snd`; empty: the one beside the program.
    std::uint64_t ticks = 750;
    float dt = 0.013333334f; ///< Seconds a tick.
    std::string inputFile;   ///< Held keys; empty: none.
    std::string eventsFile;  ///< Pointer, clicks and keys; empty: none.
    std::string dumpFile;    ///< State lines; "-" is standard output, empty: none.
    std::uint64_t dumpEvery = 1;
    std::string stateFile;   ///< Its last line is restored; empty: the level's start.
    bool noFlight = false;   ///< Starts with the camera on the water, in state 1.
    bool menus = false;      ///< Starts with the main menu up, as the game does.
    std::string consoleFile; ///< Each line runs as a console command before the first tick; empty: none.

    std::string screenshotFile; ///< PNG of the last tick; empty: none.
    std::string framesFolder;   ///< PNG files of every dumped tick; empty: none.
    std::int32_t width = 800; ///< Client pixels of the window; they decide how much of the level is in view.
    std::int32_t height = 600;

    /// Reads the command line. Nothing when there is nothing left to do (`--help`, `--version`) or the
    /// command line is bad; `exitStatus` is then 0 or 2, and the text has been written.
    static std::optional<SimulationOptions> fromCommandLine(int argc, char** argv, int& exitStatus);
};

} // namespace tarnwick
