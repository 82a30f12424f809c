#include "game/HighScores.h"

#include "core/DataFiles.h"
#include "core/LocationStack.h"
#include "core/MemoryFile.h"
#include "game/NameEntry.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <tuple>

namespace tarnwick {

namespace {

constexpr const char* folderName = "sav";
constexpr const char* fileName = "sav\\scores.sav";
static_assert(std::endian::native == std::endian::little); // entries are written as they stand in memory

} // namespace

HighScores::State HighScores::state;

std::string HighScores::nameOf(const HighScoreEntry& entry) {
    TARNWICK_LOCATION("HighScores::nameOf");
    return {entry.name.begin(), std::find(entry.name.begin(), entry.name.end(), '\0')};
}

void HighScores::setDefaultScores() {
    TARNWICK_LOCATION("HighScores::setDefaultScores");
    constexpr std::string_view noName = "NO NAME";
    HighScoreEntry entry;
    std::copy(noName.begin(), noName.end(), entry.name.begin());
    state.highScoreTable.fill(entry);
}

void HighScores::loadScores() {
    TARNWICK_LOCATION("HighScores::loadScores");
    setDefaultScores();
    MemoryFile file(fileName);
    std::uint32_t magic = 0;
    file.read(&magic, sizeof magic);
    if (file.error() || magic != fileMagic) {
        return;
    }
    Table read;
    file.read(read.data(), sizeof read);
    if (!file.error()) {
        state.highScoreTable = read;
    }
}

void HighScores::saveScores() {
    TARNWICK_LOCATION("HighScores::saveScores");
    std::error_code ignored; // that the folder is there already is no error, and the open tells the rest
    std::filesystem::create_directory(DataFiles::find(folderName), ignored);
    std::ofstream file(DataFiles::find(fileName), std::ios::binary | std::ios::trunc);
    if (!file) {
        return;
    }
    char bytes[sizeof fileMagic + sizeof(Table)];
    std::memcpy(bytes, &fileMagic, sizeof fileMagic);
    std::memcpy(bytes + sizeof fileMagic, state.highScoreTable.data(), sizeof(Table));
    file.write(bytes, sizeof bytes);
    file.flush();
}

/// The first entry whose score is below `score`; behind the last if there is none.
HighScoreEntry* HighScores::placeOf(std::uint32_t score) {
    TARNWICK_LOCATION("HighScores::placeOf");
    Table& table = state.highScoreTable;
    return std::find_if(table.begin(), table.end(),
                        [&](const HighScoreEntry& entry) { return entry.score < score; });
}

void HighScores::addHighScore(const HighScoreEntry& entry) {
    TARNWICK_LOCATION("HighScores::addHighScore");
    Table& table = state.highScoreTable;
    HighScoreEntry* const place = placeOf(entry.score);
    if (place == table.end()) {
        return;
    }
    std::move_backward(place, table.end() - 1, table.end());
    *place = entry;
}

void HighScores::checkScore(std::uint32_t score, GuiScreen* background) {
    TARNWICK_LOCATION("HighScores::checkScore");
    if (placeOf(score) == state.highScoreTable.end()) {
        return;
    }
    HighScoreEntry entry;
    static_assert(NameEntry::longestName < std::tuple_size_v<decltype(entry.name)>); // and its zero
    const std::string name = NameEntry::ask(background);
    std::copy(name.begin(), name.end(), entry.name.begin());
    entry.score = score;
    addHighScore(entry);
}

} // namespace tarnwick
