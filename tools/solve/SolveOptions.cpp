#include "tools/solve/SolveOptions.h"

#include <CLI/CLI.hpp>

#include <iostream>

namespace tarnwick {

namespace {

constexpr std::uint32_t mostJobs = 256;
constexpr std::uint32_t mostPlayers = 10'000;

} // namespace

std::optional<SolveOptions> SolveOptions::fromCommandLine(int argc, char** argv, int& exitStatus) {
    CLI::App app{"Looks for keys that finish a level. The same seed and number of jobs give the same keys.\n"
                 "Ends with 1, and a picture of how far it came, when it finds none.",
                 "tarnwick-solve"};
    SolveOptions options;
    app.set_version_flag("--version", "tarnwick-solve " TARNWICK_VERSION);
    app.add_option("LEVEL", options.level, "level file, or else a name inside the data folder")->required();
    app.add_option("--data", options.dataFolder,
                   "folder with cfg, maps, gfx and snd [the one beside the build]")
        ->type_name("DIR");
    app.add_option("--seconds", options.seconds, "give up after S seconds [600]")
        ->type_name("S")
        ->check(CLI::PositiveNumber);
    app.add_option("--jobs", options.jobs, "search with N processes [2]")
        ->type_name("N")
        ->check(CLI::Range(1u, mostJobs));
    app.add_option("--seed", options.seed, "search in another order [0]")->type_name("K");
    app.add_option("--out", options.outFile,
                   "write the keys to FILE, for tarnwick-sim --input [standard output]")
        ->type_name("FILE");
    app.add_option("--picture", options.pictureFile,
                   "where the picture goes when there is no way [LEVEL-unsolved.png]")
        ->type_name("FILE.png");
    app.add_flag("--difficulty", options.difficulty,
                 "tell how hard the level is, by the keys that were found");
    app.add_option("--keys", options.keysFile, "with --difficulty: measure the keys of FILE and search none")
        ->type_name("FILE")
        ->needs("--difficulty");
    app.add_option("--players", options.players, "with --difficulty: players who hold keys at random [16]")
        ->type_name("N")
        ->check(CLI::Range(0u, mostPlayers));
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            exitStatus = app.exit(error);
            return std::nullopt;
        }
        std::cerr << "tarnwick-solve: " << error.what() << '\n';
        exitStatus = 2;
        return std::nullopt;
    }
    return options;
}

} // namespace tarnwick
