#include "core/FileReplacement.h"

#include "support/DataFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

namespace tarnwick {

class FileReplacementTest : public testing::Test {
protected:
    std::string contentOf(const char* name) const {
        std::ifstream file(data.path() / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::ptrdiff_t files() const {
        return std::distance(std::filesystem::directory_iterator(data.path()), {});
    }

    DataFolder data;
};

TEST_F(FileReplacementTest, ANewFileIsMade) {
    EXPECT_TRUE(replaceFile(data.path() / "a.sav", std::string("a\0b", 3)));

    EXPECT_EQ(contentOf("a.sav"), std::string("a\0b", 3));
    EXPECT_EQ(files(), 1);
}

TEST_F(FileReplacementTest, AnOldFileIsReplacedAndKeepsItsRights) {
    namespace fs = std::filesystem;
    data.write("a.sav", "a longer content than the new one");
    fs::permissions(data.path() / "a.sav",
                    fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);

    EXPECT_TRUE(replaceFile(data.path() / "a.sav", "new"));

    EXPECT_EQ(contentOf("a.sav"), "new");
    EXPECT_EQ(fs::status(data.path() / "a.sav").permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    EXPECT_EQ(files(), 1);
}

TEST_F(FileReplacementTest, WhoHasTheOldFileOpenSeesItWhole) {
    data.write("a.sav", "old");
    std::ifstream reader(data.path() / "a.sav", std::ios::binary);

    replaceFile(data.path() / "a.sav", "new");

    EXPECT_EQ((std::string{std::istreambuf_iterator<char>(reader), {}}), "old");
}

TEST_F(FileReplacementTest, WhatAnotherProgramLeftBesideItIsNoHindrance) {
    ASSERT_EQ(mkfifo((data.path() / "a.sav.new").c_str(), 0600), 0);

    EXPECT_TRUE(replaceFile(data.path() / "a.sav", "new"));

    EXPECT_EQ(contentOf("a.sav"), "new");
    EXPECT_EQ(files(), 1);
}

TEST_F(FileReplacementTest, AFailureLeavesNothingBehind) {
    data.write("a.sav/full", ""); // a folder that is not empty cannot be replaced

    EXPECT_FALSE(replaceFile(data.path() / "a.sav", "new"));
    EXPECT_FALSE(replaceFile(data.path() / "missing" / "a.sav", "new"));

    EXPECT_EQ(files(), 1);
}

TEST_F(FileReplacementTest, ALockedFolderIsLockedForOthersUntilTheLockGoes) {
    const int folder = ::open(data.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    int whileLocked = 0;
    {
        const FolderLock lock(data.path());
        whileLocked = flock(folder, LOCK_EX | LOCK_NB);
    }

    EXPECT_NE(whileLocked, 0);
    EXPECT_EQ(flock(folder, LOCK_EX | LOCK_NB), 0);
    ::close(folder);
}

} // namespace tarnwick
