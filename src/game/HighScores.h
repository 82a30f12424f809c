#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarnwick {

class GuiScreen;

/// One line of the table, the same in memory and in the file: 28 bytes.
struct HighScoreEntry {
    std::array<char, 24> name{}; ///< Latin-1, ended by a zero byte; at most 20 characters are ever entered.
    std::uint32_t score = 0;
};
static_assert(sizeof(HighScoreEntry) == 28);

/// The table of the ten best scores. `NameEntry` is the screen on which a player enters a name for it.
///
/// The table is in memory from the program's start to its end and on disk only at these two moments:
/// `sav\scores.sav` is a magic number and the ten entries, 284 bytes, little-endian. Two games may run at
/// once: what each of them has entered is put into the file that it finds at its end.
class HighScores {
public:
    HighScores() = delete;

    static constexpr std::size_t entryCount = 10;
    static constexpr std::uint32_t fileMagic = 0x1231230F;
    using Table = std::array<HighScoreEntry, entryCount>;

    /// Best first.
    static const Table& table() { return state.highScoreTable; }
    /// What stands before the first zero byte of an entry's name: a name from a broken file may have none.
    static std::string nameOf(const HighScoreEntry& entry);

    /// Ten times "NO NAME" with nothing.
    static void setDefaultScores();
    /// Reads the file. If it is missing, short or of another magic number the default table stands; nothing
    /// is reported.
    static void loadScores();
    /// Puts what was entered since the load into the table of the file as it is now, which is the table from
    /// here on, and writes it; a missing or broken file takes the table as it stands. Makes the folder if
    /// need be. The old file stays whole until the new one is. Nothing is reported when that fails, and what
    /// was entered is kept for another try.
    static void saveScores();
    /// Puts an entry behind all whose score is not below its own; the last falls out. Does nothing if its
    /// score is above none.
    static void addHighScore(const HighScoreEntry& entry);

    /// If `score` is above any in the table: asks for a name, with `background` drawn behind, and enters it.
    /// Returns when the player is done or the window is gone; the name as far as it was typed counts then.
    static void checkScore(std::uint32_t score, GuiScreen* background);

private:
    friend class ModuleReset;
    friend class HighScoresAccess;

    struct State {
        Table highScoreTable{};
        std::vector<HighScoreEntry> entered; ///< Since the table was read or written, in their order.
    };
    static State state;

    static std::optional<Table> readTable();
    static Table tableToSave();
    static HighScoreEntry* placeOf(Table& table, std::uint32_t score);
    static void insert(Table& table, const HighScoreEntry& entry);
};

} // namespace tarnwick
