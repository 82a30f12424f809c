#include "game/StartFile.h"

#include "console/GLConsole.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

namespace tarnwick {

class StartFileTest : public ModuleTest {
protected:
    const DataFolder folder;
};

TEST_F(StartFileTest, WithoutTheFileTheGameStartsAsItAlwaysDid) {
    const StartFile start = StartFile::read();

    EXPECT_EQ(start.map, "maps\\testLevel.rivl");
    EXPECT_FALSE(start.asksForWindow());
}

TEST_F(StartFileTest, TheFileNamesLevelAndWindow) {
    folder.write("cfg/start.cfg", "map = maps\\kettle.rivl windowWidth = 1280 windowHeight = 720");

    const StartFile start = StartFile::read();

    EXPECT_EQ(start.map, "maps\\kettle.rivl");
    EXPECT_TRUE(start.asksForWindow());
    EXPECT_EQ(start.windowWidth, 1280);
    EXPECT_EQ(start.windowHeight, 720);
}

TEST_F(StartFileTest, ANoBreakSpaceBelongsToAName) {
    folder.write("cfg/start.cfg", "map = maps\\Winter:\xA0"
                                  "frost.rivl");

    EXPECT_EQ(StartFile::read().map, "maps\\Winter:\xA0"
                                     "frost.rivl");
}

TEST_F(StartFileTest, WhatTheFileLeavesOutStaysAsItWas) {
    folder.write("cfg/start.cfg", "windowWidth = 1280");

    const StartFile start = StartFile::read();

    EXPECT_EQ(start.map, "maps\\testLevel.rivl");
    EXPECT_FALSE(start.asksForWindow());
}

TEST_F(StartFileTest, SidesThatNoWindowHasAreBroughtIntoRange) {
    folder.write("cfg/start.cfg", "windowWidth = -5 windowHeight = 99999");

    const StartFile start = StartFile::read();

    EXPECT_EQ(start.windowWidth, 0);
    EXPECT_EQ(start.windowHeight, StartFile::largestSide);
    EXPECT_FALSE(start.asksForWindow());
}

} // namespace tarnwick
