#include "tools/solve/FlowField.h"

#include "support/PlayTest.h"
#include "tools/solve/SolveScene.h"

namespace tarnwick {

class FlowFieldTest : public PlayTest {
protected:
    FlowField field(const LevelFile& of) {
        level = of;
        start();
        return {};
    }
};

constexpr float cell = 8.0f; ///< World units: twice the side of a cell.

// Would send the search away from the finish.
TEST_F(FlowFieldTest, TheWayIsAsLongAsTheRoomIsWide) {
    const FlowField found = field(room());

    EXPECT_TRUE(found.hasFinish());
    EXPECT_EQ(found.distance({460.0f, 80.0f}), 0.0f); // exactly: inside
    EXPECT_NEAR(found.distance({120.0f, 80.0f}), 300.0f, cell);
    EXPECT_NEAR(found.distance({320.0f, 80.0f}), 100.0f, cell);
}

// Would take a wall for air: the nearest place by air is none by water.
TEST_F(FlowFieldTest, AWallIsGoneRound) {
    LevelFile bent = room();
    bent.polygons.push_back(block(240, 40, 270, 160)); // open above
    const FlowField found = field(bent);

    EXPECT_GT(found.distance({220.0f, 150.0f}), 200.0f + 80.0f); // up to the gap and on
    EXPECT_TRUE(found.reaches({220.0f, 150.0f}));
}

// Would search for ever in a level that has no way out.
TEST_F(FlowFieldTest, WhatAWallCutsOffDoesNotReach) {
    const FlowField found = field(roomWithWall());

    EXPECT_FALSE(found.reaches({60.0f, 120.0f}));
    EXPECT_TRUE(found.reaches({300.0f, 120.0f}));
}

// Would call a level with a door unsolvable.
TEST_F(FlowFieldTest, AWallThatATriggerRemovesCountsAsOpen) {
    constexpr std::int32_t entityRemove = 300;
    LevelFile door = roomWithWall(7);
    door.triggers.push_back(region(entityRemove, 0, 0, 200, 160, 7));
    const FlowField found = field(door);

    EXPECT_TRUE(found.reaches({60.0f, 120.0f}));
}

// Would lead the water through what kills it.
TEST_F(FlowFieldTest, AWayThroughWhatKillsIsLong) {
    constexpr std::int32_t particleKill = 701;
    LevelFile deadly = room();
    deadly.triggers.push_back(region(particleKill, 240, 0, 300, 160));
    const FlowField found = field(deadly);

    EXPECT_GT(found.distance({120.0f, 80.0f}), 700.0f);
    EXPECT_TRUE(found.reaches({120.0f, 80.0f}));
}

// Would read beyond the grid.
TEST_F(FlowFieldTest, PlacesOutsideTheLevelHaveTheDistanceOfItsEdge) {
    const FlowField found = field(room());

    EXPECT_EQ(found.distance({-1.0e9f, 1.0e9f}), found.distance({-1.0e6f, 1.0e6f}));
}

TEST_F(FlowFieldTest, ALevelWithoutAFinishHasNone) {
    LevelFile endless = room();
    endless.triggers.clear();
    const FlowField found = field(endless);

    EXPECT_FALSE(found.hasFinish());
    EXPECT_FALSE(found.reaches({60.0f, 120.0f}));
}

} // namespace tarnwick
