// A snapshot of a run is the run: taken and put back it equals a dump and a restore of state lines.

#include "game/Snapshot.h"

#include "console/GLConsole.h"
#include "core/Clock.h"
#include "game/Game.h"
#include "game/GameRules.h"
#include "gui/GameMenus.h"
#include "level/Level.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"
#include "tools/sim/HeadlessLevel.h"

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

const char* const levels[] = {"testLevel", "frozenBridge", "kettle", "hoist", "gale", "sluices"};

/// A run with all that time changes on the way: the recorded keys, and what the console is told.
class Play {
public:
    explicit Play(const std::string& level)
        : game({.level = level, .dataFolder = dataOfTree()})
        , keys(HeldKeys::fromFile("replays/" + level + ".keys")) {}

    void tick() {
        game.hold(keys.at(game.position().tick));
        game.tickAndPassDrawing();
    }
    void tickTo(std::uint64_t tickNumber) {
        while (game.position().tick < tickNumber) {
            tick();
        }
    }
    /// False if the level does not end.
    bool tickToFinish() {
        constexpr std::uint64_t longestRun = 3000; // ticks
        while (!GameRules::gameIsFinished() && game.position().tick < longestRun) {
            tick();
        }
        return GameRules::gameIsFinished();
    }
    std::string line() const { return SimulationState::write(game.position()); }

    HeadlessLevel game;

private:
    HeldKeys keys;

    static std::string dataOfTree() { return (std::filesystem::current_path() / "data").string(); }
};

std::vector<std::string> linesFrom(Play& run, std::uint64_t count) {
    std::vector<std::string> lines{run.line()};
    for (std::uint64_t i = 0; i < count; ++i) {
        run.tick();
        lines.push_back(run.line());
    }
    return lines;
}

void expectEqualLines(const std::vector<std::string>& lines, const std::vector<std::string>& wanted) {
    ASSERT_EQ(lines.size(), wanted.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        ASSERT_EQ(lines[i], wanted[i]) << i << " ticks behind the snapshot";
    }
}

} // namespace

class SnapshotTest : public ModuleTest {
protected:
    ~SnapshotTest() override { std::filesystem::current_path(startFolder); }

private:
    std::filesystem::path startFolder = std::filesystem::current_path();
};

class SnapshotOfLevelTest : public SnapshotTest, public ::testing::WithParamInterface<const char*> {
protected:
    /// Goes to `moment` of the run, on from there for `away` ticks, back, and on again. Would show each field
    /// that a module forgets: state lines hold them all, and what they do not hold shows later.
    static void expectToComeBack(Play& run, std::uint64_t moment, std::uint64_t away) {
        run.tickTo(moment);
        Snapshot snapshot;
        snapshot.take();
        const RunPosition position = run.game.position();
        const std::vector<std::string> wanted = linesFrom(run, away);

        ASSERT_TRUE(snapshot.putBack());
        run.game.setPosition(position);

        expectEqualLines(linesFrom(run, away), wanted);
    }
};

TEST_P(SnapshotOfLevelTest, ARunGoesOnFromItAsItDid) {
    Play run(GetParam());
    std::mt19937 random(static_cast<std::uint32_t>(std::string(GetParam()).size()));
    std::vector<std::uint64_t> moments;
    for (int i = 0; i < 4; ++i) {
        moments.push_back(random() % 1000);
    }
    std::ranges::sort(moments);
    for (const std::uint64_t moment : moments) {
        if (moment >= run.game.position().tick) {
            expectToComeBack(run, moment, 250);
        }
    }
}

TEST_P(SnapshotOfLevelTest, ItIsTheStateThatAStateLineRestores) {
    Play run(GetParam());
    run.tickTo(500);
    const std::string line = run.line();
    Snapshot snapshot;
    snapshot.take();
    run.tickTo(600);
    const RunPosition position = SimulationState::read(line);
    run.game.setPosition(position);
    const std::vector<std::string> wanted = linesFrom(run, 100);

    ASSERT_TRUE(snapshot.putBack());
    run.game.setPosition(position);

    expectEqualLines(linesFrom(run, 100), wanted);
}

/// What the console made, the pauses, the shaken view and the menus stand in it as well.
TEST_P(SnapshotOfLevelTest, EventsBeforeItAreInIt) {
    Play run(GetParam());
    for (const char* const command :
         {"ObjectCreate 300 300 7 gfx\\wheel_frame00.tga", "TriggerCreate 300 7 -900 -900 900 900",
          "ForceCreate 7 300 300 1 0 50", "TriggerCreate 200 7 -900 -900 900 900",
          "TriggerCreate 901 0 -900 -900 900 900", "FxEmitterCreate 300 300 1 0 7 fx\\drip.cfg",
          "TriggerCreate 502 7 -900 -900 900 900", "ParticleCreate 300 280 20 40", "ShakeCamera",
          "RoomTemperature -40", "FreeCamera true"}) {
        GLConsole::runLine(command);
    }
    expectToComeBack(run, 130, 200);
    GLConsole::runLine("Pause true");
    expectToComeBack(run, 400, 20);
    GameMenus::setCurrentMenu(menu::inGame);
    Game::keyboardPressed(0x28); // down: gives the focus
    expectToComeBack(run, 430, 40);
}

INSTANTIATE_TEST_SUITE_P(Levels, SnapshotOfLevelTest, ::testing::ValuesIn(levels), [](const auto& level) {
    return std::string(level.param);
});

// Would miss a menu or a pause that came later and stays up.
TEST_F(SnapshotTest, WhatWasOpenedSinceIsClosedAgain) {
    Play run("testLevel");
    run.tickTo(200);
    Snapshot snapshot;
    snapshot.take();
    const std::string line = run.line();
    const RunPosition position = run.game.position();
    GLConsole::runLine("Pause true");
    GLConsole::runLine("Gravity 3");
    GameMenus::setCurrentMenu(menu::inGame);
    run.tickTo(230);

    ASSERT_TRUE(snapshot.putBack());

    run.game.setPosition(position);
    EXPECT_EQ(run.line(), line);
}

// Would hand edges of a polygon that was switched off to the water, or keep them from it.
TEST_F(SnapshotTest, EdgesThatWereSwitchedSinceComeBack) {
    Play run("sluices");
    run.tickTo(200);
    Snapshot snapshot;
    snapshot.take();
    const std::string line = run.line();
    const RunPosition position = run.game.position();
    for (Polygon2D& polygon : Level::polygons) {
        Level::setPolygonCollideable(polygon, false);
    }

    ASSERT_TRUE(snapshot.putBack());

    run.game.setPosition(position);
    EXPECT_EQ(run.line(), line);
}

// Would walk behind the end of a list, or aim at what is gone.
TEST_F(SnapshotTest, ItRefusesOtherEntitiesAndChangesNothing) {
    Play run("testLevel");
    run.tickTo(150);
    Snapshot snapshot;
    EXPECT_FALSE(snapshot.fits());
    EXPECT_FALSE(snapshot.putBack());
    snapshot.take();
    run.tickTo(160);
    GLConsole::runLine("ForceCreate 7 300 300 1 0 50");
    const std::string line = run.line();

    EXPECT_FALSE(snapshot.putBack());
    EXPECT_EQ(run.line(), line);

    snapshot.take();
    EXPECT_TRUE(snapshot.fits());
    Game::map(Game::currentMap());
    Game::serveRequests();
    EXPECT_FALSE(snapshot.fits());
}

// Would keep the finish: a run could not be tried again from before it.
TEST_F(SnapshotTest, ItComesBackFromBehindTheFinish) {
    Play run("gale");
    run.tickTo(700);
    Snapshot snapshot;
    snapshot.take();
    const RunPosition position = run.game.position();
    const std::string line = run.line();
    ASSERT_TRUE(run.tickToFinish());

    ASSERT_TRUE(snapshot.putBack());
    run.game.setPosition(position);

    EXPECT_EQ(run.line(), line);
    EXPECT_TRUE(run.tickToFinish());
}

// Would count into the level's time what the clock went on between snapshot and return.
TEST_F(SnapshotTest, ATimerThatIsPutBackLateCountsNothingOfTheTimeBetween) {
    Play run("testLevel");
    run.tickTo(600);
    GameRules::Moment moment;
    GameRules::keep(moment);
    const std::int32_t counted = GameRules::getLevelTime();
    Clock::drive(Clock::milliseconds() + 5000);

    GameRules::putBack(moment, 5000);
    GameRules::update(0.013333334f);

    EXPECT_EQ(GameRules::getLevelTime(), counted);
}

} // namespace tarnwick
