// Targets that read a file of text or records.

#include "core/ConfigFile.h"
#include "core/Log.h"
#include "fuzz/FuzzTarget.h"
#include "game/HighScores.h"
#include "level/LevelFile.h"
#include "support/ModuleReset.h"
#include "tools/level/LevelCompiler.h"
#include "tools/level/LevelDecompiler.h"
#include "tools/level/LevelInfo.h"
#include "tools/level/LevelValidator.h"
#include "tools/level/LevelWriter.h"
#include "tools/level/TiledMap.h"
#include "tools/level/ToolError.h"
#include "tools/sim/HeldKeys.h"
#include "tools/sim/PlayerEvents.h"

#include <cmath>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

constexpr const char* inputName = "input";

/// The records of the bytes; false if they are no level file.
bool readLevelBytes(std::string_view bytes, LevelFile& level) {
    std::istringstream file{std::string(bytes), std::ios::binary};
    return LevelFile::read(file, level) == nullptr;
}

/// A refusal is one line that says why.
void expectReason(const std::exception& error) {
    const std::string reason = error.what();
    fuzzExpect(!reason.empty() && reason.find('\n') == std::string::npos,
               "a refusal has a reason of one line");
}

} // namespace

void fuzzLevelFile(std::string_view bytes) {
    LevelFile level;
    if (!readLevelBytes(bytes, level)) {
        return;
    }
    const std::string written = writeLevel(level);
    fuzzExpect(bytes.starts_with(written), "a level that was read is written as it stood in the file");
    std::ostringstream output;
    printLevelInfo(output, level);
    validateLevel(level, [](const std::string& name) { return name.empty(); });
    std::string map;
    try {
        map = decompileLevel(level, "", nullptr);
    } catch (const ToolError& error) {
        expectReason(error);
        return;
    }
    std::vector<std::string> warnings;
    try {
        fuzzExpect(writeLevel(compileLevel(TiledMap::read(map), warnings)) == written,
                   "a level comes back from a map as it was");
    } catch (const ToolError& error) { // what a level file can hold and a map cannot
        expectReason(error);
    }
}

void fuzzConfiguration(std::string_view bytes) {
    writeFuzzInput(inputName, bytes);
    ConfigFile config;
    config.loadConfigFile(inputName);
    std::list<std::string> tokens;
    config.separateTokens(std::string(bytes).c_str(), tokens);
    for (const std::string& name : tokens) {
        config.getVarAsFloat(name);
        config.getVarAsInt(name);
        config.getVarAsBool(name);
        fuzzExpect(config.variableExists(name) || config.getVarAsString(name).empty(),
                   "a missing key has no value");
    }
    Log::clear();
}

void fuzzKeys(std::string_view bytes) {
    writeFuzzInput(inputName, bytes);
    try {
        HeldKeys::fromFile(inputName);
    } catch (const std::runtime_error& error) {
        expectReason(error);
    }
    try {
        PlayerEvents::fromFile(inputName);
    } catch (const std::runtime_error& error) {
        expectReason(error);
    }
}

void fuzzScores(std::string_view bytes) {
    writeFuzzInput("sav/scores.sav", bytes);
    HighScores::loadScores();
    for (const HighScoreEntry& entry : HighScores::table()) {
        HighScores::nameOf(entry);
    }
    HighScoreEntry entry;
    entry.score = 1000;
    HighScores::addHighScore(entry);
    HighScores::saveScores();
    const HighScores::Table saved = HighScores::table();
    HighScores::loadScores();
    for (std::size_t i = 0; i < saved.size(); ++i) {
        fuzzExpect(saved[i].name == HighScores::table()[i].name &&
                       saved[i].score == HighScores::table()[i].score,
                   "what was saved is loaded");
    }
}

void fuzzTiledMap(std::string_view bytes) {
    std::vector<std::string> warnings;
    LevelFile level;
    try {
        level = compileLevel(TiledMap::read(bytes), warnings);
    } catch (const ToolError& error) {
        expectReason(error);
        return;
    }
    const std::string written = writeLevel(level);
    LevelFile readBack;
    fuzzExpect(readLevelBytes(written, readBack), "what was compiled can be read");
    fuzzExpect(writeLevel(readBack) == written, "what was compiled reads back the same");
}

} // namespace tarnwick
