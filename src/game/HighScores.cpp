#include "game/HighScores.h"

#include "core/DataFiles.h"
#include "core/FileReplacement.h"
#include "core/LocationStack.h"
#include "core/MemoryFile.h"
#include "game/NameEntry.h"

#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <tuple>

namespace tarnwick {

namespace {

constexpr const char* folderName = "sav";
constexpr const char* fileName = "sav\\scores.sav";
constexpr const char* plainFileName = "scores.sav";        ///< In a folder that has no such file yet.
static_assert(std::endian::native == std::endian::little); // entries are written as they stand in memory

/// The bytes of a file of the table.
std::string bytesOf(const HighScores::Table& table) {
    TARNWICK_LOCATION("HighScores::bytesOf");
    std::string bytes(sizeof HighScores::fileMagic + sizeof table, '\0');
    std::memcpy(bytes.data(), &HighScores::fileMagic, sizeof HighScores::fileMagic);
    std::memcpy(bytes.data() + sizeof HighScores::fileMagic, table.data(), sizeof table);
    return bytes;
}

/// Where the file is, or where it is to be made; behind a link, which stays one. Empty if something stands
/// there that is no file or may not be written.
std::filesystem::path placeToWrite() {
    TARNWICK_LOCATION("HighScores::placeToWrite");
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::path found = DataFiles::find(fileName);
    const fs::file_status status = fs::status(found, error);
    if (!fs::exists(status)) {
        return fs::path(DataFiles::find(folderName)) / plainFileName;
    }
    if (!fs::is_regular_file(status) || access(found.c_str(), W_OK) != 0) {
        return {};
    }
    const fs::path real = fs::canonical(found, error);
    return error ? found : real;
}

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
    state.entered.clear();
}

void HighScores::loadScores() {
    TARNWICK_LOCATION("HighScores::loadScores");
    setDefaultScores();
    if (const std::optional<Table> read = readTable(); read.has_value()) {
        state.highScoreTable = *read;
    }
}

/// What stands in the file; nothing if it is missing, short or of another magic number.
std::optional<HighScores::Table> HighScores::readTable() {
    TARNWICK_LOCATION("HighScores::readTable");
    MemoryFile file(fileName);
    std::uint32_t magic = 0;
    file.read(&magic, sizeof magic);
    if (file.error() || magic != fileMagic) {
        return std::nullopt;
    }
    Table read;
    file.read(read.data(), sizeof read);
    return file.error() ? std::nullopt : std::optional(read);
}

void HighScores::saveScores() {
    TARNWICK_LOCATION("HighScores::saveScores");
    std::error_code ignored; // that the folder is there already is no error, and the write tells the rest
    const std::string folder = DataFiles::find(folderName);
    std::filesystem::create_directory(folder, ignored);
    const FolderLock lock(folder);
    const std::filesystem::path place = placeToWrite();
    const Table table = tableToSave();
    if (!place.empty() && replaceFile(place, bytesOf(table))) {
        state.highScoreTable = table;
        state.entered.clear();
    }
}

HighScores::Table HighScores::tableToSave() {
    TARNWICK_LOCATION("HighScores::tableToSave");
    std::optional<Table> table = readTable();
    if (!table.has_value()) {
        return state.highScoreTable;
    }
    for (const HighScoreEntry& entry : state.entered) {
        insert(*table, entry);
    }
    return *table;
}

/// The first entry whose score is below `score`; behind the last if there is none.
HighScoreEntry* HighScores::placeOf(Table& table, std::uint32_t score) {
    TARNWICK_LOCATION("HighScores::placeOf");
    return std::find_if(table.begin(), table.end(),
                        [&](const HighScoreEntry& entry) { return entry.score < score; });
}

void HighScores::insert(Table& table, const HighScoreEntry& entry) {
    TARNWICK_LOCATION("HighScores::insert");
    HighScoreEntry* const place = placeOf(table, entry.score);
    if (place == table.end()) {
        return;
    }
    std::move_backward(place, table.end() - 1, table.end());
    *place = entry;
}

void HighScores::addHighScore(const HighScoreEntry& entry) {
    TARNWICK_LOCATION("HighScores::addHighScore");
    insert(state.highScoreTable, entry);
    state.entered.push_back(entry);
}

void HighScores::checkScore(std::uint32_t score, GuiScreen* background) {
    TARNWICK_LOCATION("HighScores::checkScore");
    if (placeOf(state.highScoreTable, score) == state.highScoreTable.end()) {
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
