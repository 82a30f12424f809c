#include "tools/launcher/LaunchOptions.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>

namespace tarnwick {

namespace {

constexpr std::int32_t smallestSide = 64;   ///< Pixels of a window.
constexpr std::int32_t largestSide = 16384; ///< Pixels; what OpenGL drivers of today can draw.

/// Takes "WIDTHxHEIGHT"; nothing where no size was given.
void readSize(const std::string& size, LaunchOptions& options) {
    if (size.empty()) {
        return;
    }
    char rest = 0;
    if (std::sscanf(size.c_str(), "%6dx%6d%c", &options.windowWidth, &options.windowHeight, &rest) != 2 ||
        std::min(options.windowWidth, options.windowHeight) < smallestSide ||
        std::max(options.windowWidth, options.windowHeight) > largestSide) {
        throw CLI::ValidationError("--windowed", "'" + size + "' is no size from 64x64 to 16384x16384");
    }
}

} // namespace

std::optional<LaunchOptions> LaunchOptions::fromCommandLine(int argc, char** argv, int& exitStatus) {
    CLI::App app{"A water-physics puzzle game: lead the water home by turning the world.", "tarnwick"};
    LaunchOptions options;
    std::string size;
    std::string file;
    app.set_version_flag("--version", "tarnwick " TARNWICK_VERSION);
    app.add_option("FILE", file, "a level file to play")->type_name("");
    app.add_option("--data", options.dataFolder, "folder with cfg, maps, gfx and snd [the installed one]")
        ->type_name("DIR");
    app.add_option("--windowed", size,
                   "play in a window of WIDTHxHEIGHT pixels, as in 1280x720 [full screen]")
        ->type_name("WxH");
    app.add_option("--level", options.level, "level to start with: a name of the list of maps, or a file")
        ->type_name("NAME");
    try {
        app.parse(argc, argv);
        readSize(size, options);
        if (!file.empty() && !options.level.empty()) {
            throw CLI::ValidationError("--level", "there is a FILE to play already");
        }
    } catch (const CLI::ParseError& reason) {
        exitStatus = app.exit(reason);
        return std::nullopt;
    }
    if (!file.empty()) { // a file, also where its name stands in the list of maps
        options.level = std::filesystem::absolute(file).string();
    }
    return options;
}

} // namespace tarnwick
