#include "tools/sim/SimulationOptions.h"

#include "tools/state/SimulationState.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>

namespace tarnwick {

namespace {

/// Refuses what is not all digits or lies below `smallest`: the parser alone would read -5 as a number near
/// 2^64.
CLI::Validator wholeNumber(std::uint64_t smallest, const char* wanted) {
    return {[=](std::string& word) -> std::string {
                constexpr std::size_t mostDigits = 18; // below 2^63
                const bool digits =
                    !word.empty() && word.find_first_not_of("0123456789") == std::string::npos;
                if (digits && word.size() <= mostDigits && std::stoull(word) >= smallest) {
                    return {};
                }
                return "'" + word + "' is not " + wanted;
            },
            ""};
}

/// `size` takes the text of --size.
void addPictureOptions(CLI::App& app, SimulationOptions& options, std::string& size) {
    app.add_option("--screenshot", options.screenshotFile,
                   "draw the last tick off screen at 800 by 600 and save it")
        ->type_name("FILE.png");
    app.add_option("--frames", options.framesFolder, "draw every dumped tick into DIR, as numbered PNG files")
        ->type_name("DIR");
    app.add_option("--size", size,
                   "window of WIDTHxHEIGHT pixels, as in 1280x720 [800x600]; it decides the view")
        ->type_name("WxH");
}

/// Takes "WIDTHxHEIGHT"; nothing where no size was given.
void readSize(const std::string& size, SimulationOptions& options) {
    if (size.empty()) {
        return;
    }
    constexpr int largestSide = 8192; // pixels
    char rest = 0;
    if (std::sscanf(size.c_str(), "%5dx%5d%c", &options.width, &options.height, &rest) != 2 ||
        std::min(options.width, options.height) < 1 ||
        std::max(options.width, options.height) > largestSide) {
        throw CLI::ValidationError("--size", "'" + size + "' is no size from 1x1 to 8192x8192");
    }
}

} // namespace

std::optional<SimulationOptions> SimulationOptions::fromCommandLine(int argc, char** argv, int& exitStatus) {
    CLI::App app{"Plays a level without window and sound at a fixed tick, and prints a summary.\n"
                 "Two runs of one command give the same bytes.",
                 "tarnwick-sim"};
    SimulationOptions options;
    app.set_version_flag("--version", "tarnwick-sim " TARNWICK_VERSION);
    app.add_option("LEVEL", options.level, "level file, or else a name inside the data folder")->required();
    app.add_option("--data", options.dataFolder,
                   "folder with cfg, maps, gfx and snd [the one beside the build]")
        ->type_name("DIR");
    app.add_option("--ticks", options.ticks, "ticks to run [750]")
        ->type_name("N")
        ->check(wholeNumber(0, "a whole number"));
    app.add_option("--dt", options.dt, "tick length in seconds [1/75]")->type_name("SECONDS");
    app.add_option("--input", options.inputFile,
                   "held keys: lines of TICK left|right|none|both, from that tick on")
        ->type_name("FILE");
    app.add_option("--events", options.eventsFile,
                   "what a player does in menus: lines of TICK point X Y, TICK click, TICK key NAME")
        ->type_name("FILE");
    app.add_option("--dump", options.dumpFile, "write state lines, tick 0 first; - is standard output")
        ->type_name("FILE");
    app.add_option("--dump-every", options.dumpEvery, "dump every N-th tick [1]")
        ->type_name("N")
        ->check(wholeNumber(1, "a whole number above 0"));
    app.add_option("--state", options.stateFile, "restore the last line of FILE before the first tick")
        ->type_name("FILE");
    app.add_flag("--no-flight", options.noFlight,
                 "start with the camera on the water, so that it runs at once");
    app.add_flag("--menus", options.menus, "start with the main menu up, as the game does");
    app.add_option("--console", options.consoleFile,
                   "run each line of FILE as a console command before the first tick")
        ->type_name("FILE");
    std::string size;
    addPictureOptions(app, options, size);
    try {
        app.parse(argc, argv);
        readSize(size, options);
        if (!std::isfinite(options.dt) || options.dt <= 0.0f) {
            throw CLI::ValidationError("--dt", "the tick length must be above 0 seconds");
        }
        if (static_cast<double>(options.dt) * static_cast<double>(options.ticks) >=
            SimulationState::clockRange) {
            throw CLI::ValidationError(
                "--dt", "the ticks would take more than the 4294967 seconds that the clock can tell");
        }
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            exitStatus = app.exit(error);
            return std::nullopt;
        }
        std::cerr << "tarnwick-sim: " << error.what() << '\n';
        exitStatus = 2;
        return std::nullopt;
    }
    return options;
}

} // namespace tarnwick
