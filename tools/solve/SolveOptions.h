#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tarnwick {

/// What `tarnwick-solve` was asked for.
struct SolveOptions {
    std::string level;      ///< A file's path, or else a name inside the data folder.
    std::string dataFolder; ///< Empty: the one beside the program.
    double seconds = 600.0; ///< After which it gives up.
    std::uint32_t jobs = 2; ///< Processes.
    std::uint64_t seed = 0;
    bool difficulty = false;    ///< Tell how hard the level is, by the keys that were found or given.
    std::string keysFile;       ///< Measured in place of a search.
    std::uint32_t players = 16; ///< Who hold keys at random.
    std::string outFile;        ///< Keys; empty: standard output.
    std::string
        pictureFile; ///< PNG of how far it came; empty: beside the working folder's name of the level.

    /// Reads the command line. Nothing when there is nothing left to do (`--help`, `--version`) or the
    /// command line is bad; `exitStatus` is then 0 or 2, and the text has been written.
    static std::optional<SolveOptions> fromCommandLine(int argc, char** argv, int& exitStatus);
};

} // namespace tarnwick
