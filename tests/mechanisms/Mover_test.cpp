#include "mechanisms/Mover.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tarnwick {

namespace {

/// A mover on a track of 10 units to the right, at 4 units a second.
Mover moverAt(float position, MoverState state) {
    Mover mover;
    mover.setStartPoint(5.0f, 7.0f);
    mover.setEndPoint(15.0f, 7.0f);
    mover.speed = 4.0f;
    mover.position = position;
    mover.state = state;
    return mover;
}

} // namespace

TEST(MoverTrackTest, ANewMoverStandsIdleOnATrackOfNoLength) {
    const Mover mover;

    EXPECT_EQ(mover.startPoint, Vector2{});
    EXPECT_EQ(mover.endPoint, Vector2{});
    EXPECT_EQ(mover.direction, Vector2{});
    EXPECT_EQ(mover.length, 0.0f);
    EXPECT_EQ(mover.speed, 0.0f);
    EXPECT_EQ(mover.position, 0.0f);
    EXPECT_EQ(mover.state, MoverIdle);
}

TEST(MoverTrackTest, TheStatesHaveTheNumbersThatTriggersWrite) {
    EXPECT_EQ(static_cast<std::int32_t>(MoverIdle), 0);
    EXPECT_EQ(static_cast<std::int32_t>(MoverToEnd), 1);
    EXPECT_EQ(static_cast<std::int32_t>(MoverToStart), 2);
    EXPECT_EQ(static_cast<std::int32_t>(MoverLoopToStart), 3);
    EXPECT_EQ(static_cast<std::int32_t>(MoverLoopToEnd), 4);
}

TEST(MoverTrackTest, EachPointMeasuresTheTrackAnew) {
    Mover mover;
    mover.setEndPoint(3.0f, -4.0f);
    const Mover half = mover;

    mover.setStartPoint(3.0f, 6.0f);

    EXPECT_EQ(half.length, 5.0f);
    EXPECT_EQ(half.direction, (Vector2{3.0f / 5.0f, -4.0f / 5.0f}));
    EXPECT_EQ(mover.length, 10.0f);
    EXPECT_EQ(mover.direction, (Vector2{0.0f, -1.0f}));
}

TEST(MoverTrackTest, ATrackWhoseEndsCoincideHasNoDirection) {
    Mover mover;
    mover.setEndPoint(3.0f, -4.0f);

    mover.setStartPoint(3.0f, -4.0f);

    EXPECT_EQ(mover.length, 0.0f);
    EXPECT_EQ(mover.direction, Vector2{});
}

TEST(MoverTrackTest, OnATrackOfNoLengthTheEndIsReachedInOneTick) {
    Mover mover;
    mover.speed = 4.0f;
    mover.state = MoverToEnd;

    mover.run(0.5f);

    EXPECT_EQ(mover.state, MoverIdle);
    EXPECT_EQ(mover.position, 0.0f);
}

TEST(MoverTrackTest, AnIdleMoverStandsStill) {
    Mover mover = moverAt(3.0f, MoverIdle);

    mover.run(0.5f);

    EXPECT_EQ(mover.position, 3.0f);
}

TEST(MoverTrackTest, AnUnknownStateStandsStill) {
    for (const std::int32_t number : {-1, 5, 1000}) {
        const auto state = static_cast<MoverState>(number);
        Mover mover = moverAt(3.0f, state);

        mover.run(0.5f);

        EXPECT_EQ(mover.position, 3.0f);
        EXPECT_EQ(mover.state, state);
    }
}

TEST(MoverTrackTest, ItRunsTowardsWhereItsStateSays) {
    Mover toEnd = moverAt(3.0f, MoverToEnd);
    Mover toStart = moverAt(3.0f, MoverToStart);
    Mover loopToEnd = moverAt(3.0f, MoverLoopToEnd);
    Mover loopToStart = moverAt(3.0f, MoverLoopToStart);

    for (Mover* const mover : {&toEnd, &toStart, &loopToEnd, &loopToStart}) {
        mover->run(0.5f);
    }

    EXPECT_EQ(toEnd.position, 5.0f);
    EXPECT_EQ(toStart.position, 1.0f);
    EXPECT_EQ(loopToEnd.position, 5.0f);
    EXPECT_EQ(loopToStart.position, 1.0f);
}

TEST(MoverTrackTest, PastAnEndItTurnsOrStopsAndTheRestOfTheWayIsDropped) {
    Mover toEnd = moverAt(9.0f, MoverToEnd);
    Mover toStart = moverAt(1.0f, MoverToStart);
    Mover loopToEnd = moverAt(9.0f, MoverLoopToEnd);
    Mover loopToStart = moverAt(1.0f, MoverLoopToStart);

    for (Mover* const mover : {&toEnd, &toStart, &loopToEnd, &loopToStart}) {
        mover->run(0.5f);
    }

    EXPECT_EQ(toEnd.position, 10.0f);
    EXPECT_EQ(toEnd.state, MoverIdle);
    EXPECT_EQ(toStart.position, 0.0f);
    EXPECT_EQ(toStart.state, MoverIdle);
    EXPECT_EQ(loopToEnd.position, 10.0f);
    EXPECT_EQ(loopToEnd.state, MoverLoopToStart);
    EXPECT_EQ(loopToStart.position, 0.0f);
    EXPECT_EQ(loopToStart.state, MoverLoopToEnd);
}

TEST(MoverTrackTest, LandingExactlyOnAnEndItTurnsATickLater) {
    Mover mover = moverAt(8.0f, MoverLoopToEnd);
    mover.run(0.5f);
    const Mover landed = mover;

    mover.run(0.5f);

    EXPECT_EQ(landed.position, 10.0f);
    EXPECT_EQ(landed.state, MoverLoopToEnd);
    EXPECT_EQ(mover.position, 10.0f);
    EXPECT_EQ(mover.state, MoverLoopToStart);
}

TEST(MoverTrackTest, ATickOfNoTimeStillAdvancesALittle) {
    Mover mover = moverAt(0.0f, MoverToEnd);

    mover.run(0.0f);

    EXPECT_EQ(mover.position, 4.0f * 1e-7f);
}

TEST(MoverTrackTest, ANegativeSpeedRunsTheOtherWay) {
    Mover mover = moverAt(1.0f, MoverToEnd);
    mover.speed = -4.0f;

    mover.run(0.5f);

    EXPECT_EQ(mover.position, -1.0f); // only the far end is looked for on this way
    EXPECT_EQ(mover.state, MoverToEnd);
}

TEST(MoverTrackTest, ResettingLeavesTheTrack) {
    Mover mover = moverAt(3.0f, MoverLoopToStart);

    mover.reset();

    EXPECT_EQ(mover.position, 0.0f);
    EXPECT_EQ(mover.state, MoverIdle);
    EXPECT_EQ(mover.length, 10.0f);
    EXPECT_EQ(mover.speed, 4.0f);
}

} // namespace tarnwick
