#include "core/MemoryFile.h"

#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <limits>
#include <string>

namespace tarnwick {
namespace {

class MemoryFileTest : public ModuleTest {
protected:
    MemoryFileTest() { folder.write("ten.bin", "0123456789"); }

    static std::string readText(MemoryFile& file, std::size_t bytes) {
        std::string text(bytes, '?');
        file.read(text.data(), bytes);
        return text;
    }

    DataFolder folder;
};

TEST_F(MemoryFileTest, AFreshOneIsClosed) {
    const MemoryFile file;

    EXPECT_FALSE(file.is_open());
    EXPECT_TRUE(file.error());
    EXPECT_TRUE(file.eof());
    EXPECT_FALSE(file.good());
    EXPECT_EQ(file.size(), 0);
    EXPECT_EQ(file.tell(), 0);
    EXPECT_EQ(file.getDataAhead(), nullptr);
}

TEST_F(MemoryFileTest, OpeningPutsTheCursorAtTheStart) {
    const MemoryFile file("ten.bin");
    const MemoryFile same(std::string("TEN.BIN"));

    EXPECT_TRUE(file.is_open());
    EXPECT_TRUE(file.good());
    EXPECT_FALSE(file.error());
    EXPECT_EQ(file.size(), 10);
    EXPECT_EQ(file.tell(), 0);
    EXPECT_EQ(std::memcmp(file.getDataAhead(), "0123456789", 10), 0);
    EXPECT_TRUE(same.good());
}

TEST_F(MemoryFileTest, AMissingEmptyOrNamelessFileDoesNotOpen) {
    folder.write("empty.bin", "");
    std::filesystem::create_directory("folder.bin");
    const char* noName = nullptr;
    for (const char* name : {"missing.bin", "empty.bin", "folder.bin", "", noName}) {
        MemoryFile file("ten.bin");

        EXPECT_FALSE(file.open(name));
        EXPECT_FALSE(file.is_open());
        EXPECT_TRUE(file.error());
        EXPECT_EQ(file.size(), 0);
    }
}

TEST_F(MemoryFileTest, ADeviceWithoutEndDoesNotOpen) {
    MemoryFile file;

    EXPECT_FALSE(file.open("/dev/zero"));
}

TEST_F(MemoryFileTest, AFileBeyondTwoGigabytesDoesNotOpen) {
    std::filesystem::resize_file("ten.bin", static_cast<std::uintmax_t>(MemoryFile::largestFile) + 1);
    MemoryFile file;

    EXPECT_FALSE(file.open("ten.bin"));
}

TEST_F(MemoryFileTest, ClosingGivesEverythingBack) {
    MemoryFile file("ten.bin");

    file.close();

    EXPECT_FALSE(file.is_open());
    EXPECT_TRUE(file.error());
    EXPECT_EQ(file.getDataAhead(), nullptr);
}

TEST_F(MemoryFileTest, ReadingExactlyToTheEndIsNoError) {
    MemoryFile file("ten.bin");

    EXPECT_EQ(readText(file, 4), "0123");
    EXPECT_EQ(readText(file, 6), "456789");

    EXPECT_TRUE(file.eof());
    EXPECT_FALSE(file.error());
    EXPECT_FALSE(file.good());
}

TEST_F(MemoryFileTest, AReadPastTheEndCopiesNothingAndLeavesTheCursor) {
    MemoryFile file("ten.bin");
    readText(file, 4);

    EXPECT_EQ(readText(file, 7), "???????");

    EXPECT_EQ(file.tell(), 4);
    EXPECT_TRUE(file.error());
    EXPECT_EQ(readText(file, 6), "456789"); // a smaller read still works
    EXPECT_FALSE(file.good());
}

TEST_F(MemoryFileTest, AnAbsurdReadIsRefused) {
    MemoryFile file("ten.bin");
    char byte = '?';

    file.read(&byte, std::numeric_limits<std::size_t>::max());

    EXPECT_EQ(byte, '?');
    EXPECT_TRUE(file.error());
}

TEST_F(MemoryFileTest, ReadingFromAClosedFileIsAnError) {
    MemoryFile file;

    EXPECT_EQ(readText(file, 1), "?");
    file.read(nullptr, 0);

    EXPECT_TRUE(file.error());
}

TEST_F(MemoryFileTest, SeekingCountsFromTheCursorTheEndOrTheStart) {
    MemoryFile file("ten.bin");

    file.seek(4, MemoryFile::fromStart);
    EXPECT_EQ(file.tell(), 4);
    file.seek(-2, MemoryFile::fromCursor);
    EXPECT_EQ(file.tell(), 2);
    file.seek(3, MemoryFile::backFromEnd);
    EXPECT_EQ(file.tell(), 7);

    EXPECT_FALSE(file.error());
}

TEST_F(MemoryFileTest, SeekingToTheVeryEndIsNoError) {
    MemoryFile file("ten.bin");

    file.seek(0, MemoryFile::backFromEnd);

    EXPECT_TRUE(file.eof());
    EXPECT_FALSE(file.error());
}

TEST_F(MemoryFileTest, SeekingOutsideGoesToTheNearerEndWithAnError) {
    MemoryFile before("ten.bin");
    MemoryFile behind("ten.bin");
    MemoryFile farBehind("ten.bin");

    before.seek(11, MemoryFile::backFromEnd);
    behind.seek(11, MemoryFile::fromStart);
    farBehind.seek(std::numeric_limits<std::int64_t>::max(), MemoryFile::fromCursor);

    EXPECT_EQ(before.tell(), 0);
    EXPECT_TRUE(before.error());
    EXPECT_EQ(behind.tell(), 10);
    EXPECT_TRUE(behind.error());
    EXPECT_EQ(farBehind.tell(), 10);
    EXPECT_TRUE(farBehind.error());
}

TEST_F(MemoryFileTest, AnUnknownOriginLeavesTheCursor) {
    MemoryFile file("ten.bin");
    file.seek(4, MemoryFile::fromStart);

    file.seek(2, 3);

    EXPECT_EQ(file.tell(), 4);
    EXPECT_FALSE(file.error());
}

TEST_F(MemoryFileTest, ACopyHasItsOwnBytesButTheCursorOfItsSource) {
    MemoryFile source("ten.bin");
    readText(source, 4);

    MemoryFile copy(source);

    EXPECT_EQ(copy.getDataAhead(), source.getDataAhead());
    EXPECT_EQ(copy.size(), 10);
    EXPECT_FALSE(copy.error());
    copy.seek(0, MemoryFile::fromStart);
    EXPECT_NE(copy.getDataAhead(), source.getDataAhead() - 4);
    source.close();
    EXPECT_EQ(readText(copy, 10), "0123456789");
}

TEST_F(MemoryFileTest, ACopyThatHasNotSeekedReadsNothing) {
    const MemoryFile source("ten.bin");

    MemoryFile copy(source);

    EXPECT_EQ(readText(copy, 1), "?");
    EXPECT_TRUE(copy.error());
}

TEST_F(MemoryFileTest, AnUnknownOriginStillClampsTheCursorOfACopy) {
    const MemoryFile source("ten.bin");
    MemoryFile copy(source);

    copy.seek(0, 3);

    EXPECT_TRUE(copy.tell() == 0 || copy.tell() == 10);
    EXPECT_TRUE(copy.error());
}

TEST_F(MemoryFileTest, AssigningReplacesTheBytes) {
    folder.write("three.bin", "abc");
    const MemoryFile source("three.bin");
    MemoryFile file("ten.bin");

    file = source;
    file.seek(0, MemoryFile::fromStart);
    EXPECT_EQ(readText(file, 3), "abc");
    const MemoryFile& itself = file;
    file = itself;
    EXPECT_EQ(file.size(), 3);
    file = MemoryFile();

    EXPECT_FALSE(file.is_open());
    EXPECT_TRUE(file.error());
}

} // namespace
} // namespace tarnwick
