// usage: tarnwick-round-trip DATA FIRST COUNT
//
// Draws COUNT levels, from the seed FIRST on, and takes each there and back: as a file, as a map, and as the
// state of a game that is played on it. Prints what came back different; exit status 1 then.

#include "fuzz/DrawnLevel.h"
#include "fuzz/FuzzTarget.h"
#include "tools/level/LevelCompiler.h"
#include "tools/level/LevelDecompiler.h"
#include "tools/level/LevelWriter.h"
#include "tools/level/TiledMap.h"
#include "tools/level/ToolError.h"
#include "tools/state/SimulationState.h"

#include <cstdint>
#include <filesystem>
#include <iostream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

constexpr int playedTicks = 20;

std::string randomBytes(std::uint32_t seed) {
    std::mt19937 random(seed);
    std::string bytes(64 + random() % 448, '\0');
    for (char& byte : bytes) {
        byte = static_cast<char>(random() & 0xFFU);
    }
    return bytes;
}

/// What of the level came back different; empty if nothing did.
std::string differenceAsFile(const std::string& written) {
    std::istringstream file(written, std::ios::binary);
    LevelFile read;
    if (const char* const reason = LevelFile::read(file, read)) {
        return std::string("the written level is refused: ") + reason;
    }
    return writeLevel(read) == written ? "" : "the file is another";
}

std::string differenceAsMap(const LevelFile& level, const std::string& written) {
    try {
        std::vector<std::string> warnings;
        const LevelFile compiled = compileLevel(TiledMap::read(decompileLevel(level, "", nullptr)), warnings);
        return writeLevel(compiled) == written ? "" : "the map gives another level";
    } catch (const ToolError& error) {
        return std::string("the map is refused: ") + error.what();
    }
}

std::string differenceAsState(const LevelFile& level) {
    if (!startDrawnLevel(level)) {
        return "the game refuses the level";
    }
    RunPosition position;
    for (int i = 0; i < playedTicks; ++i) {
        playTick(position);
    }
    const std::string saved = SimulationState::write(position);
    startDrawnLevel(level);
    try {
        position = SimulationState::read(saved);
    } catch (const StateError& error) {
        return std::string("the state is refused: ") + error.what();
    }
    if (SimulationState::write(position) != saved) {
        return "the state is another";
    }
    return "";
}

/// The number of levels that came back different.
std::uint32_t roundTrips(std::uint32_t first, std::uint32_t count) {
    std::uint32_t different = 0;
    for (std::uint32_t seed = first; seed < first + count; ++seed) {
        const LevelFile level = drawLevel(randomBytes(seed), DrawnNumbers::sensible);
        const std::string written = writeLevel(level);
        for (const std::string& difference :
             {differenceAsFile(written), differenceAsMap(level, written), differenceAsState(level)}) {
            if (!difference.empty()) {
                std::cout << "level " << seed << ": " << difference << '\n';
                ++different;
                break;
            }
        }
    }
    return different;
}

} // namespace

} // namespace tarnwick

int main(int argumentCount, char** arguments) {
    namespace fs = std::filesystem;
    if (argumentCount != 4) {
        std::cerr << "usage: tarnwick-round-trip DATA FIRST COUNT\n";
        return 2;
    }
    const auto first = static_cast<std::uint32_t>(std::stoul(arguments[2]));
    const auto count = static_cast<std::uint32_t>(std::stoul(arguments[3]));
    const fs::path before = fs::current_path();
    tarnwick::enterFuzzFolder(fs::absolute(arguments[1]).string());
    const fs::path folder = fs::current_path();
    const std::uint32_t different = tarnwick::roundTrips(first, count);
    fs::current_path(before);
    fs::remove_all(folder);
    std::cout << different << " of " << count << " levels came back different\n";
    return different == 0 ? 0 : 1;
}
