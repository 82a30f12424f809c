#include "game/HighScores.h"

#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string_view>

namespace tarnwick {

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
