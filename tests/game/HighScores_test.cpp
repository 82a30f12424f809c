#include "game/HighScores.h"

#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <vector>

namespace tarnwick {

/// Lets no file grow beyond some bytes, as a full disk does, and writes fail there.
class SmallFiles {
public:
    explicit SmallFiles(rlim_t bytes)
        : handler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit small{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallFiles() {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }
    SmallFiles(const SmallFiles&) = delete;
    SmallFiles& operator=(const SmallFiles&) = delete;

private:
    void (*handler)(int);
    rlimit before{};
};

/// Puts the table back at the end of its life to what it was at the start.
class HighScoresAccess {
public:
    HighScoresAccess()
        : before(HighScores::state) {}
    ~HighScoresAccess() { HighScores::state = before; }
    HighScoresAccess(const HighScoresAccess&) = delete;
    HighScoresAccess& operator=(const HighScoresAccess&) = delete;

private:
    HighScores::State before;
};

class HighScoresTest : public ModuleTest {
protected:
    static HighScoreEntry entry(std::string_view name, std::uint32_t score) {
        HighScoreEntry result;
        std::copy(name.begin(), name.end(), result.name.begin());
        result.score = score;
        return result;
    }
    /// Scores 100, 90, ... 10.
    static void fillTable() {
        HighScores::setDefaultScores();
        for (std::uint32_t score = 100; score > 0; score -= 10) {
            HighScores::addHighScore(entry("old", score));
        }
    }
    std::string savedBytes() const {
        std::ifstream file(data.path() / "sav/scores.sav", std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static bool isDefault() {
        const auto isNoName = [](const HighScoreEntry& each) {
            return HighScores::nameOf(each) == "NO NAME" && each.score == 0;
        };
        return std::all_of(HighScores::table().begin(), HighScores::table().end(), isNoName);
    }

    static std::vector<std::uint32_t> scores() {
        std::vector<std::uint32_t> result;
        for (const HighScoreEntry& each : HighScores::table()) {
            result.push_back(each.score);
        }
        return result;
    }
    std::ptrdiff_t entriesOf(const char* folder) const {
        return std::distance(std::filesystem::directory_iterator(data.path() / folder), {});
    }
    /// The file that another game, which did `acts`, would have saved. This game and its folder stay as they
    /// are.
    template <typename Acts>
    std::string fileOf(Acts acts) const {
        HighScoresAccess kept;
        const bool there = std::filesystem::exists(data.path() / "sav/scores.sav");
        const std::string before = savedBytes();
        acts();
        HighScores::saveScores();
        std::string after = savedBytes();
        if (there) {
            data.write("sav/scores.sav", before);
        } else {
            std::filesystem::remove(data.path() / "sav/scores.sav");
        }
        return after;
    }

    DataFolder data;
};

TEST_F(HighScoresTest, WithoutAFileTheTableIsTheDefault) {
    HighScores::loadScores();

    EXPECT_TRUE(isDefault());
}

TEST_F(HighScoresTest, TheFileIsTheMagicNumberAndTheTenEntries) {
    HighScores::setDefaultScores();
    HighScores::addHighScore(entry("Mia", 0x01020304));

    HighScores::saveScores();

    const std::string bytes = savedBytes();
    ASSERT_EQ(bytes.size(), 284u);
    EXPECT_EQ(bytes.substr(0, 4), std::string("\x0F\x23\x31\x12", 4));
    EXPECT_EQ(bytes.substr(4, 28),
              std::string("Mia") + std::string(21, '\0') + std::string("\x04\x03\x02\x01", 4));
    EXPECT_EQ(bytes.substr(32, 8), std::string("NO NAME\0", 8));
}

TEST_F(HighScoresTest, WhatIsSavedIsLoadedAtTheNextStart) {
    fillTable();
    HighScores::saveScores();
    ModuleReset::all();

    HighScores::loadScores();

    EXPECT_EQ(HighScores::table()[0].score, 100u);
    EXPECT_EQ(HighScores::table()[9].score, 10u);
    EXPECT_EQ(HighScores::nameOf(HighScores::table()[9]), "old");
}

TEST_F(HighScoresTest, AFolderThatIsThereAlreadyIsNoError) {
    data.write("sav/scores.sav", "old content, much longer than it ought to be" + std::string(400, 'x'));

    HighScores::saveScores();

    EXPECT_EQ(savedBytes().size(), 284u);
}

TEST_F(HighScoresTest, AFolderThatCannotBeMadeIsPassedOver) {
    data.write("sav", "a file where the folder should be");

    HighScores::saveScores();

    EXPECT_TRUE(savedBytes().empty());
}

TEST_F(HighScoresTest, TheFolderIsFoundInWhateverCaseItIsWritten) {
    std::filesystem::create_directory(data.path() / "SAV");
    fillTable();

    HighScores::saveScores();
    HighScores::setDefaultScores();
    HighScores::loadScores();

    EXPECT_EQ(std::filesystem::file_size(data.path() / "SAV/scores.sav"), 284u);
    EXPECT_FALSE(std::filesystem::exists(data.path() / "sav"));
    EXPECT_EQ(HighScores::table()[0].score, 100u);
}

TEST_F(HighScoresTest, AFileInAnotherCaseIsWrittenInItsPlace) {
    data.write("Sav/Scores.SAV", "old");
    fillTable();

    HighScores::saveScores();

    EXPECT_EQ(entriesOf("Sav"), 1);
    EXPECT_EQ(std::filesystem::file_size(data.path() / "Sav/Scores.SAV"), 284u);
}

TEST_F(HighScoresTest, WhatIsNoFileIsLeftAlone) {
    std::filesystem::create_directory(data.path() / "sav");
    ASSERT_EQ(mkfifo((data.path() / "sav/scores.sav").c_str(), 0600), 0);
    fillTable();

    HighScores::loadScores();
    HighScores::saveScores(); // neither waits for the other end of the pipe

    EXPECT_TRUE(std::filesystem::is_fifo(data.path() / "sav/scores.sav"));
    EXPECT_EQ(entriesOf("sav"), 1);
}

TEST_F(HighScoresTest, ALinkIsFollowed) {
    data.write("elsewhere/mine.sav", "old");
    std::filesystem::create_directory(data.path() / "sav");
    std::filesystem::create_symlink("../elsewhere/mine.sav", data.path() / "sav/scores.sav");
    fillTable();

    HighScores::saveScores();

    EXPECT_TRUE(std::filesystem::is_symlink(data.path() / "sav/scores.sav"));
    EXPECT_EQ(std::filesystem::file_size(data.path() / "elsewhere/mine.sav"), 284u);
}

TEST_F(HighScoresTest, AWriteThatFailsLeavesTheOldFile) {
    fillTable();
    HighScores::saveScores();
    const std::string before = savedBytes();
    HighScores::addHighScore(entry("new", 1000));

    {
        const SmallFiles hundredBytes(100);
        HighScores::saveScores();
    }
    const std::string afterFailure = savedBytes();
    const auto leftOver = entriesOf("sav");
    HighScores::saveScores();

    EXPECT_EQ(afterFailure, before);
    EXPECT_EQ(leftOver, 1);
    EXPECT_EQ(savedBytes().substr(4, 3), "new") << "nothing is lost by the first try";
}

TEST_F(HighScoresTest, AFileThatMayNotBeWrittenIsNotReplaced) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "nothing is forbidden to the superuser";
    }
    data.write("sav/scores.sav", "mine");
    std::filesystem::permissions(data.path() / "sav/scores.sav", std::filesystem::perms::owner_read);

    HighScores::saveScores();

    EXPECT_EQ(savedBytes(), "mine");
}

TEST_F(HighScoresTest, OfTwoGamesAtOnceTheScoresOfBothAreKept) {
    fillTable();
    HighScores::saveScores(); // 100 to 10
    HighScores::loadScores(); // the first game
    HighScores::addHighScore(entry("first", 55));
    const std::string second = fileOf([] {
        HighScores::loadScores();
        HighScores::addHighScore(entry("second", 65));
    });
    data.write("sav/scores.sav", second); // has ended meanwhile

    HighScores::saveScores();
    const HighScores::Table inMemory = HighScores::table();
    HighScores::loadScores();

    EXPECT_EQ(scores(), (std::vector<std::uint32_t>{100, 90, 80, 70, 65, 60, 55, 50, 40, 30}));
    EXPECT_EQ(HighScores::nameOf(HighScores::table()[4]), "second");
    EXPECT_EQ(HighScores::nameOf(HighScores::table()[6]), "first");
    EXPECT_EQ(inMemory[4].score, 65u);
}

TEST_F(HighScoresTest, AGameWithoutANewScoreLeavesThoseOfTheOther) {
    HighScores::loadScores();
    const std::string other = fileOf([] {
        HighScores::loadScores();
        HighScores::addHighScore(entry("other", 500));
    });
    data.write("sav/scores.sav", other);

    HighScores::saveScores();

    EXPECT_EQ(savedBytes(), other);
}

TEST_F(HighScoresTest, AScoreIsEnteredOnceHoweverOftenItIsSaved) {
    HighScores::loadScores();
    HighScores::addHighScore(entry("once", 500));

    HighScores::saveScores();
    HighScores::saveScores();

    EXPECT_EQ(scores(), (std::vector<std::uint32_t>{500, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(HighScoresTest, ABrokenFileIsReplacedByTheWholeTable) {
    fillTable();
    HighScores::saveScores();
    HighScores::loadScores();
    data.write("sav/scores.sav", "broken meanwhile");

    HighScores::saveScores();
    HighScores::loadScores();

    EXPECT_EQ(HighScores::table()[9].score, 10u);
}

/// The other game may have been stopped in the middle.
TEST_F(HighScoresTest, ALockThatIsNeverGivenBackDoesNotHoldTheEndUp) {
    std::filesystem::create_directory(data.path() / "sav");
    const int folder = ::open((data.path() / "sav").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ASSERT_EQ(flock(folder, LOCK_EX), 0);
    fillTable();

    HighScores::saveScores();
    ::close(folder);

    EXPECT_EQ(savedBytes().size(), 284u);
}

TEST_F(HighScoresTest, AWrongMagicNumberGivesTheDefault) {
    data.write("sav/scores.sav", std::string(284, 'x'));

    HighScores::loadScores();

    EXPECT_TRUE(isDefault());
}

TEST_F(HighScoresTest, AShortFileGivesTheDefault) {
    fillTable();
    HighScores::saveScores();
    const std::string whole = savedBytes();
    for (const std::size_t length : {0u, 3u, 4u, 104u, 283u}) {
        data.write("sav/scores.sav", whole.substr(0, length));

        HighScores::loadScores();

        EXPECT_TRUE(isDefault()) << length << " bytes";
    }
}

TEST_F(HighScoresTest, ANameWithoutAnEndDoesNotRunOn) {
    data.write("sav/scores.sav", std::string("\x0F\x23\x31\x12", 4) + std::string(280, 'A'));

    HighScores::loadScores();

    EXPECT_EQ(HighScores::nameOf(HighScores::table()[3]), std::string(24, 'A'));
}

TEST_F(HighScoresTest, AnEqualScoreGoesInBelowTheOlderOne) {
    fillTable();

    HighScores::addHighScore(entry("new", 50));

    EXPECT_EQ(HighScores::nameOf(HighScores::table()[5]), "old");
    EXPECT_EQ(HighScores::nameOf(HighScores::table()[6]), "new");
    EXPECT_EQ(HighScores::table()[9].score, 20u); // the last fell out
}

TEST_F(HighScoresTest, AScoreEqualToTheTenthStaysOutAndOneHigherGetsIn) {
    fillTable();

    HighScores::addHighScore(entry("new", 10));
    const std::string afterEqual = HighScores::nameOf(HighScores::table()[9]);
    HighScores::addHighScore(entry("new", 11));

    EXPECT_EQ(afterEqual, "old");
    EXPECT_EQ(HighScores::nameOf(HighScores::table()[9]), "new");
}

TEST_F(HighScoresTest, ScoresAreComparedUnsigned) {
    fillTable();

    HighScores::addHighScore(entry("huge", 0xFFFFFFFF));

    EXPECT_EQ(HighScores::nameOf(HighScores::table()[0]), "huge");
}

} // namespace tarnwick
