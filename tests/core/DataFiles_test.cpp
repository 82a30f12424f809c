#include "core/DataFiles.h"

#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

namespace tarnwick {
namespace {

using Names = std::vector<std::string>;

class DataFilesTest : public ModuleTest {
protected:
    DataFolder folder;
};

TEST_F(DataFilesTest, BackSlashesAndAnyCaseFindTheFile) {
    folder.write("gfx/stone.tga", "");

    EXPECT_EQ(DataFiles::find("gfx\\Stone.TGA"), "gfx/stone.tga");
    EXPECT_EQ(DataFiles::find("GFX/STONE.tga"), "gfx/stone.tga");
}

TEST_F(DataFilesTest, RepeatedSlashesCountAsOne) {
    folder.write("cfg/console.cfg", "");

    EXPECT_EQ(DataFiles::find("cfg//console.cfg"), "cfg/console.cfg");
    EXPECT_EQ(DataFiles::find("cfg\\\\/console.cfg"), "cfg/console.cfg");
    EXPECT_EQ(DataFiles::find(".\\CFG\\console.cfg"), "./cfg/console.cfg");
    EXPECT_EQ(DataFiles::find("cfg\\..\\Cfg\\Console.cfg"), "cfg/../cfg/console.cfg");
}

TEST_F(DataFilesTest, AFolderIsFoundWithOrWithoutASlashBehindIt) {
    folder.write("gfx/stone.tga", "");

    EXPECT_EQ(DataFiles::find("GFX"), "gfx");
    EXPECT_EQ(DataFiles::find("GFX\\"), "gfx");
}

TEST_F(DataFilesTest, AnExactMatchGoesBeforeAllOthers) {
    folder.write("STONE.TGA", "");
    folder.write("stone.tga", "");

    EXPECT_EQ(DataFiles::find("stone.tga"), "stone.tga");
    EXPECT_EQ(DataFiles::find("STONE.TGA"), "STONE.TGA");
}

TEST_F(DataFilesTest, OfSeveralMatchesTheSmallestIsTaken) {
    folder.write("sTONE.tga", "");
    folder.write("STONE.tga", "");
    folder.write("Stone.tga", "");

    EXPECT_EQ(DataFiles::find("stone.TGA"), "STONE.tga");
}

TEST_F(DataFilesTest, AnExactFolderIsTakenEvenIfOnlyAnotherHoldsTheFile) {
    folder.write("gfx/other.tga", "");
    folder.write("GFX/stone.tga", "");

    EXPECT_EQ(DataFiles::find("gfx\\stone.tga"), "gfx/stone.tga");
}

TEST_F(DataFilesTest, OnlyAsciiLettersHaveACase) {
    folder.write("\xC3\xA4.tga", "");

    EXPECT_EQ(DataFiles::find("\xC3\xA4.TGA"), "\xC3\xA4.tga");
    EXPECT_EQ(DataFiles::find("\xC3\x84.tga"), "\xC3\x84.tga"); // a capital umlaut is another letter
}

TEST_F(DataFilesTest, ANameWithoutAFileComesBackWithItsSlashesPutRight) {
    EXPECT_EQ(DataFiles::find("sav\\\\Scores.sav"), "sav/Scores.sav");
    EXPECT_EQ(DataFiles::find(""), "");
}

TEST_F(DataFilesTest, AnAbsoluteNameIsTakenAsItStands) {
    folder.write("gfx/stone.tga", "");
    const std::string absolute = (folder.path() / "GFX//Stone\\x.TGA").string();

    EXPECT_EQ(DataFiles::find(absolute), absolute);
}

TEST_F(DataFilesTest, AFileCreatedAfterAMissIsFound) {
    EXPECT_EQ(DataFiles::find("sav\\Scores.sav"), "sav/Scores.sav");
    folder.write("SAV/scores.sav", "");

    EXPECT_EQ(DataFiles::find("sav\\Scores.sav"), "SAV/scores.sav");
}

TEST_F(DataFilesTest, AFileThatVanishedIsLookedUpAgain) {
    folder.write("STONE.tga", "");
    EXPECT_EQ(DataFiles::find("stone.tga"), "STONE.tga");
    std::filesystem::rename("STONE.tga", "Stone.tga");

    EXPECT_EQ(DataFiles::find("stone.tga"), "Stone.tga");
    std::filesystem::remove("Stone.tga");
    EXPECT_EQ(DataFiles::find("stone.tga"), "stone.tga");
}

TEST_F(DataFilesTest, AnExactFileCreatedLaterTakesTheNameOver) {
    folder.write("STONE.tga", "");
    EXPECT_EQ(DataFiles::find("stone.tga"), "STONE.tga");
    folder.write("stone.tga", "");

    EXPECT_EQ(DataFiles::find("stone.tga"), "stone.tga");
}

TEST_F(DataFilesTest, AMatchIsKeptUntilItIsForgotten) {
    folder.write("Stone.tga", "");
    EXPECT_EQ(DataFiles::find("STONE.TGA"), "Stone.tga");
    folder.write("STone.tga", "");

    EXPECT_EQ(DataFiles::find("STONE.TGA"), "Stone.tga");
    DataFiles::forget();
    EXPECT_EQ(DataFiles::find("STONE.TGA"), "STone.tga");
}

TEST_F(DataFilesTest, OpeningReadsTheFileByteForByte) {
    folder.write("maps/test.rivl", "a\r\nb\x1A");

    std::ifstream file = DataFiles::open("Maps\\Test.RIVL");
    const std::string content{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};

    EXPECT_EQ(content, "a\r\nb\x1A");
}

TEST_F(DataFilesTest, WhatCannotBeReadToAnEndDoesNotOpen) {
    std::filesystem::create_directory("folder");
    ASSERT_EQ(mkfifo("pipe", 0600), 0);

    EXPECT_FALSE(DataFiles::open("missing").is_open());
    EXPECT_FALSE(DataFiles::open("folder").is_open());
    EXPECT_FALSE(DataFiles::open("pipe").is_open()); // and does not wait for a writer
    EXPECT_FALSE(DataFiles::open("/dev/zero").is_open());
    EXPECT_FALSE(DataFiles::open("").is_open());
}

TEST_F(DataFilesTest, AStarMatchesAnyRunOfCharacters) {
    for (const char* name :
         {"gfx/fish_01.tga", "gfx/fish_02.tga", "gfx/fish.tga", "gfx/dish_01.tga", "gfx/fish_01.txt"}) {
        folder.write(name, "");
    }

    EXPECT_EQ(DataFiles::list("gfx\\fish_*.tga"), (Names{"fish_01.tga", "fish_02.tga"}));
    EXPECT_EQ(DataFiles::list("gfx\\*ish_01*"), (Names{"dish_01.tga", "fish_01.tga", "fish_01.txt"}));
    EXPECT_EQ(DataFiles::list("gfx\\fish*.tga"), (Names{"fish.tga", "fish_01.tga", "fish_02.tga"}));
    EXPECT_EQ(DataFiles::list("gfx\\fish.tga"), (Names{"fish.tga"}));
    EXPECT_EQ(DataFiles::list("gfx\\*").size(), 5u);
    EXPECT_EQ(DataFiles::list("gfx\\**_*1*.t*a"), (Names{"dish_01.tga", "fish_01.tga"}));
    EXPECT_TRUE(DataFiles::list("gfx\\fish_*.tg").empty());
}

TEST_F(DataFilesTest, CaseDoesNotCountInAListNorInItsOrder) {
    folder.write("GFX/Fish_b.TGA", "");
    folder.write("GFX/FISH_A.tga", "");
    folder.write("GFX/fish_C.Tga", "");
    folder.write("GFX/fish_c.Tga", "");

    EXPECT_EQ(DataFiles::list("gfx\\fish_*.tga"),
              (Names{"FISH_A.tga", "Fish_b.TGA", "fish_C.Tga", "fish_c.Tga"}));
}

TEST_F(DataFilesTest, AListHoldsFilesOnly) {
    folder.write("gfx/fish_1/stone.tga", "");
    folder.write("gfx/fish_2", "");

    EXPECT_EQ(DataFiles::list("gfx\\fish_*"), (Names{"fish_2"}));
}

TEST_F(DataFilesTest, APatternWithoutAFolderListsTheWorkingDirectory) {
    folder.write("one.cfg", "");

    EXPECT_EQ(DataFiles::list("*.CFG"), (Names{"one.cfg"}));
}

TEST_F(DataFilesTest, AnAbsolutePatternListsItsFolder) {
    folder.write("gfx/One.tga", "");

    EXPECT_EQ(DataFiles::list((folder.path() / "gfx/*.TGA").string()), (Names{"One.tga"}));
}

TEST_F(DataFilesTest, AFolderThatIsMissingListsNothing) {
    EXPECT_TRUE(DataFiles::list("missing\\*.tga").empty());
    EXPECT_TRUE(DataFiles::list("").empty());
    EXPECT_TRUE(DataFiles::list("missing\\").empty());
}

TEST_F(DataFilesTest, ManyStarsAreMatchedInReasonableTime) {
    folder.write(std::string(200, 'a'), "");
    std::string pattern;
    for (int i = 0; i < 100; ++i) {
        pattern += "*a";
    }

    EXPECT_EQ(DataFiles::list(pattern).size(), 1u);
    EXPECT_TRUE(DataFiles::list(pattern + "b").empty());
}

} // namespace
} // namespace tarnwick
