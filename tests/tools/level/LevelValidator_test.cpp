#include "tools/level/LevelValidator.h"

#include "level/Level.h"
#include "level/LevelBspBuilder.h"
#include "level/LevelBspNode.h"
#include "level/LevelFile.h"
#include "support/ModuleTest.h"
#include "support/RandomLevels.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tarnwick {

class LevelValidatorTest : public ModuleTest {
protected:
    using Findings = std::vector<std::string>;

    /// A solid stone block with a picture, far from the water start at (0, 0).
    static LevelFile::PolygonRecord block(std::int32_t left = 100, std::int32_t top = 100) {
        return {0, "gfx\\stone.tga",
                3, 0,
                1, {{left, top}, {left + 20, top}, {left + 20, top + 20}, {left, top + 20}}};
    }

    static LevelFile levelOf(const std::vector<LevelFile::PolygonRecord>& polygons) {
        LevelFile level;
        level.polygons = polygons;
        return level;
    }

    /// What is found in a level that can be finished and whose files exist.
    static Findings findingsOf(const LevelFile& level) { return findingsOf(level, true); }
    static Findings findingsOf(LevelFile level, bool filesExist) {
        level.triggers.push_back(trigger(levelEnd, 0));
        return validateLevel(level, [filesExist](const std::string&) { return filesExist; });
    }

    static constexpr std::int32_t levelEnd = 801;
    static LevelFile::TriggerRecord trigger(std::int32_t type, std::int32_t target) {
        return {target, type, 0.0f, {}};
    }

    static Findings findingsOfPoints(const std::vector<LevelFile::Point>& points) {
        LevelFile::PolygonRecord polygon = block();
        polygon.points = points;
        return findingsOf(levelOf({block(300, 300), polygon}));
    }
};

TEST_F(LevelValidatorTest, ASoundLevelGivesNothing) {
    EXPECT_EQ(findingsOf(levelOf({block(), block(200, 0)})), Findings{});
}

TEST_F(LevelValidatorTest, ARepeatedPointIsToldWithBothNumbers) {
    EXPECT_EQ(
        findingsOfPoints({{100, 100}, {120, 100}, {120, 120}, {120, 100}}),
        Findings{
            "polygon 1 at (100, 100): point 3 repeats point 1, (120, 100); the game keeps the first only"});
}

TEST_F(LevelValidatorTest, SeveralRepeatedPointsAreOneFinding) {
    EXPECT_EQ(
        findingsOfPoints({{100, 100}, {120, 100}, {120, 120}, {120, 100}, {100, 100}, {100, 100}}),
        Findings{"polygon 1 at (100, 100): point 3 repeats point 1, (120, 100), and 2 more repeat; the game "
                 "keeps the first only"});
}

TEST_F(LevelValidatorTest, TooFewDifferentPointsAreTold) {
    EXPECT_EQ(findingsOfPoints({}), Findings{"polygon 1: has 0 different points, too few for a polygon"});
    EXPECT_EQ(findingsOfPoints({{100, 100}, {120, 100}}),
              Findings{"polygon 1 at (100, 100): has 2 different points, too few for a polygon"});
}

TEST_F(LevelValidatorTest, AnOutlineThatCrossesItselfIsToldWithTheSides) {
    EXPECT_EQ(
        findingsOfPoints({{100, 100}, {140, 140}, {140, 100}, {100, 140}}),
        Findings{"polygon 1 at (100, 100): crosses itself: side 0 and side 2; it is neither seen nor solid"});
}

TEST_F(LevelValidatorTest, ACrossingOfTheClosingSideIsFoundToo) {
    EXPECT_EQ(
        findingsOfPoints({{100, 100}, {140, 100}, {100, 140}, {140, 140}}),
        Findings{"polygon 1 at (100, 100): crosses itself: side 1 and side 3; it is neither seen nor solid"});
}

TEST_F(LevelValidatorTest, PointsInOneLineCannotBeCutIntoTriangles) {
    EXPECT_EQ(
        findingsOfPoints({{100, 100}, {120, 100}, {140, 100}}),
        Findings{"polygon 1 at (100, 100): cannot be cut into triangles; it is neither seen nor solid"});
}

TEST_F(LevelValidatorTest, PointsTooFarOutForAFloatAreTold) {
    const Findings findings = findingsOfPoints({{16777217, 100}, {16777300, 100}, {16777300, 200}});

    EXPECT_EQ(
        findings,
        Findings{
            "polygon 1 at (16777217, 100): point 0, (16777217, 100), lies so far out that the game moves "
            "it"});
}

TEST_F(LevelValidatorTest, PointsThatBecomeOneInTheGameLeaveTooFew) {
    const Findings findings = findingsOfPoints({{16777216, 100}, {16777217, 100}, {16777216, 200}});

    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(findings[1], "polygon 1 at (16777216, 100): has 2 different points, too few for a polygon");
}

TEST_F(LevelValidatorTest, ASeenPolygonWithoutPictureIsTold) {
    LevelFile::PolygonRecord polygon = block();
    polygon.textureName.clear();
    for (const std::int32_t mode : {0, 1, 7}) {
        polygon.polygonMode = mode;
        EXPECT_EQ(findingsOf(levelOf({polygon})),
                  Findings{"polygon 0 at (100, 100): is to be seen but has no picture"});
    }
    for (const std::int32_t mode : {2, 3}) {
        polygon.polygonMode = mode;
        EXPECT_EQ(findingsOf(levelOf({polygon})), Findings{});
    }
}

TEST_F(LevelValidatorTest, APictureWrittenWithTheWrongSlashIsTold) {
    LevelFile::PolygonRecord polygon = block();
    polygon.textureName = "gfx/stone.tga";

    EXPECT_EQ(
        findingsOf(levelOf({polygon})),
        Findings{"polygon 0 at (100, 100): picture \"gfx/stone.tga\" is written with / where the game writes "
                 "\\"});
}

TEST_F(LevelValidatorTest, AMissingPictureIsToldOnceAtItsFirstPolygon) {
    LevelFile level = levelOf({block(), block(200, 0), block(300, 0)});
    level.polygons[1].textureName = level.polygons[2].textureName = "gfx\\gone.tga";

    level.triggers.push_back(trigger(levelEnd, 0));

    const Findings findings =
        validateLevel(level, [](const std::string& name) { return name != "gfx\\gone.tga"; });

    EXPECT_EQ(findings, Findings{"polygon 1 at (200, 0): picture \"gfx\\gone.tga\" does not exist"});
}

TEST_F(LevelValidatorTest, AMissingPictureOfAnObjectIsToldUnlessAPolygonHasToldIt) {
    LevelFile level = levelOf({block()});
    level.polygons[0].textureName = "gfx\\gone.tga";
    level.objects = {{0, "gfx\\gone.tga", 0, {}, 0}, {0, "gfx\\lost.tga", 0, {1, 2}, 0}};

    const Findings findings = findingsOf(level, false);

    EXPECT_EQ(findings, (Findings{"polygon 0 at (100, 100): picture \"gfx\\gone.tga\" does not exist",
                                  "object 1 at (1, 2): picture \"gfx\\lost.tga\" does not exist"}));
}

TEST_F(LevelValidatorTest, AnObjectWithoutPictureOrWithTheWrongSlashOrTooFarOutIsTold) {
    LevelFile level;
    level.objects = {{0, "", 0, {1, 2}, 0},
                     {0, "gfx/lamp.tga", 0, {3, 4}, 0},
                     {0, "lamp.tga", 0, {16777217, 0}, 0},
                     {0, "lamp.tga", 0, {16777218, 0}, 0}};

    EXPECT_EQ(findingsOf(level),
              (Findings{"object 0 at (1, 2): has no picture",
                        "object 1 at (3, 4): picture \"gfx/lamp.tga\" is written with / where the game "
                        "writes \\",
                        "object 2 at (16777217, 0): lies so far out that the game moves it"}));
}

TEST_F(LevelValidatorTest, AnIdOfAnObjectThatNothingUsesIsTold) {
    LevelFile level;
    level.objects = {{4, "lamp.tga", 0, {1, 2}, 0}, {4294967295U, "lamp.tga", 0, {3, 4}, 0}};
    level.movers.push_back({-1, 1.0f, {}, {10, 0}});

    EXPECT_EQ(findingsOf(level),
              Findings{"object 0 at (1, 2): has id 4, which no mover and no trigger uses"});
}

TEST_F(LevelValidatorTest, WithoutATestNoPictureIsMissing) {
    LevelFile level = levelOf({block()});
    level.triggers.push_back(trigger(levelEnd, 0));

    EXPECT_EQ(validateLevel(level, nullptr), Findings{});
}

TEST_F(LevelValidatorTest, WaterThatStartsInAWallIsTold) {
    LevelFile level = levelOf({block()});
    level.waterStart = {110, 105};

    EXPECT_EQ(findingsOf(level),
              Findings{"polygon 0 at (100, 100): is solid, and the water start (110, 105) lies inside it"});
}

TEST_F(LevelValidatorTest, WaterThatStartsTouchingAWallIsTold) {
    LevelFile level = levelOf({block()});
    level.waterStart = {110, 91};

    EXPECT_EQ(
        findingsOf(level),
        Findings{
            "polygon 0 at (100, 100): is solid and nearer than 10 units to the water start (110, 91), so "
            "that drops start inside it"});
    level.waterStart = {110, 90};
    EXPECT_EQ(findingsOf(level), Findings{});
}

TEST_F(LevelValidatorTest, WaterMayStartBeforeAWallThatIsOnlySeen) {
    LevelFile level = levelOf({block()});
    level.polygons[0].polygonMode = 1;
    level.waterStart = {110, 105};

    EXPECT_EQ(findingsOf(level), Findings{});
}

TEST_F(LevelValidatorTest, AMovingPolygonThatRunsTheWrongWayRoundIsTold) {
    LevelFile level = levelOf({block(), block(200, 0)});
    std::swap(level.polygons[0].points[1], level.polygons[0].points[3]);
    std::swap(level.polygons[1].points[1], level.polygons[1].points[3]);
    level.polygons[1].polygonId = 5;
    level.movers.push_back({5, 1.0f, {}, {10, 0}});

    EXPECT_EQ(
        findingsOf(level),
        Findings{
            "polygon 1 at (200, 0): moves, but runs the wrong way round to crush: reverse the order of its "
            "points"});
}

TEST_F(LevelValidatorTest, AMovingPolygonThatLiesTooHighToBeSolidIsTold) {
    LevelFile level = levelOf({block(-300, -200), block(100, -200), block(-300, 100)});
    for (LevelFile::PolygonRecord& polygon : level.polygons) {
        polygon.polygonId = 5;
    }
    level.movers.push_back({5, 1.0f, {}, {10, 0}});
    level.waterStart = {0, 0};

    EXPECT_EQ(findingsOf(level), Findings{"polygon 0 at (-300, -200): moves, but lies above y = 0, where "
                                          "what moves is not solid: build the level "
                                          "further down"});
}

TEST_F(LevelValidatorTest, AnIdThatNobodyUsesIsTold) {
    LevelFile level = levelOf({block(), block(200, 0), block(300, 0)});
    level.polygons[0].polygonId = 5;
    level.polygons[1].polygonId = 6;
    level.polygons[2].polygonId = -7;
    level.movers.push_back({5, 1.0f, {}, {10, 0}});
    level.triggers.resize(1);
    level.triggers[0].targetId = 6;

    EXPECT_EQ(findingsOf(level),
              Findings{"polygon 2 at (300, 0): has id -7, which no mover and no trigger uses"});
}

TEST_F(LevelValidatorTest, AMoverThatCarriesNothingOrEverythingIsTold) {
    LevelFile level = levelOf({block()});
    level.objects = {{6, "lamp.tga", 0, {}, 0}};
    level.movers.push_back({5, 1.0f, {}, {10, 0}});
    level.movers.push_back({6, 1.0f, {}, {10, 0}});
    level.movers.push_back({0, 1.0f, {}, {10, 0}});

    EXPECT_EQ(findingsOf(level), (Findings{"mover 0: carries nothing: no polygon or object has id 5",
                                           "mover 2: has id 0 and carries everything that has no id"}));
}

TEST_F(LevelValidatorTest, ATriggerWhoseTargetNobodyIsIsTold) {
    LevelFile level;
    level.objects = {{1, "lamp.tga", 0, {}, 0}};
    level.forces.resize(1);
    level.forces[0].forceId = 4294967294U; // -2 in a trigger
    level.soundSources.resize(1);
    level.soundSources[0].soundId = 3;
    level.emitters.resize(1);
    level.emitters[0].emitterId = 4;
    level.polygons = {block()};
    level.polygons[0].polygonId = 5;
    level.movers.push_back({5, 1.0f, {}, {10, 0}});
    for (const std::int32_t target : {0, 1, -2, 3, 4, 5, 6}) {
        level.triggers.emplace_back().targetId = target;
    }

    EXPECT_EQ(findingsOf(level), Findings{"trigger 6: nothing has its target id 6"});
}

TEST_F(LevelValidatorTest, ATriggerOfUnknownTypeAndAMoverOfNoLengthAreTold) {
    LevelFile level = levelOf({block()});
    level.polygons[0].polygonId = 5;
    level.movers.push_back({5, 1.0f, {7, 7}, {7, 7}});
    level.triggers.push_back({5, 77, 0.0f, {}});

    EXPECT_EQ(findingsOf(level), (Findings{"mover 0: starts where it ends, and moves nothing",
                                           "trigger 0: no trigger has type 77; it does nothing"}));
}

TEST_F(LevelValidatorTest, MissingSoundsAndSettingsAreTold) {
    LevelFile level;
    level.soundSources.push_back({0, {}, 1, 1, "snd\\gone.wav"});
    level.soundSources.push_back({0, {}, 1, 1, ""});
    level.emitters.push_back({0, {}, {}, "fx\\gone.cfg"});

    const Findings findings = findingsOf(level, false);

    EXPECT_EQ(findings, (Findings{"sound 0: file \"snd\\gone.wav\" does not exist",
                                  "emitter 0: settings \"fx\\gone.cfg\" do not exist"}));
}

TEST_F(LevelValidatorTest, ALevelWithoutAnEndIsTold) {
    EXPECT_EQ(validateLevel(levelOf({block()}), nullptr),
              Findings{"no trigger is a Level_end_a: the level cannot be finished"});
}

TEST_F(LevelValidatorTest, NumbersThatAreNotFiniteAreTold) {
    const float infinity = std::numeric_limits<float>::infinity();
    const float none = std::numeric_limits<float>::quiet_NaN();
    LevelFile level = levelOf({block()});
    level.polygons[0].polygonId = 5;
    level.forces = {{5, {}, {1, 0}, infinity}, {5, {}, {none, 0}, 1.0f}, {5, {}, {0, -infinity}, 1.0f}};
    level.movers = {{5, none, {}, {10, 0}}, {5, 1.0f, {}, {10, 0}}};
    level.emitters = {{5, {}, {none, none}, "fx.cfg"}};
    level.triggers = {trigger(200, 5)};
    level.triggers[0].delay = none;

    EXPECT_EQ(findingsOf(level), (Findings{"force 0: its strength is not a finite number",
                                           "force 1: its direction is not a finite number",
                                           "force 2: its direction is not a finite number",
                                           "emitter 0: its direction is not a finite number",
                                           "mover 0: its speed is not a finite number",
                                           "trigger 0: its delay is not a number"}));
}

TEST_F(LevelValidatorTest, ARemoverWithoutTargetIsTold) {
    LevelFile level;
    level.triggers = {trigger(300, 0), trigger(301, 0), trigger(402, 0), trigger(100, 0), trigger(0, 0)};

    EXPECT_EQ(
        findingsOf(level),
        (Findings{"trigger 0: has target 0 and acts on nothing, but the walls without an id are no longer "
                  "joined to one another: give it a target",
                  "trigger 1: has target 0 and acts on nothing, but the walls without an id are no longer "
                  "joined to one another: give it a target",
                  "trigger 2: has target 0 and acts on nothing"}));
}

TEST_F(LevelValidatorTest, ATargetOfTheWrongKindIsTold) {
    LevelFile level = levelOf({block()});
    level.polygons[0].polygonId = 1;
    level.objects = {{2, "lamp.tga", 0, {}, 0}};
    level.forces = {{3, {}, {1, 0}, 1.0f}};
    level.soundSources = {{4, {}, 1, 1, "a.wav"}};
    level.emitters = {{5, {}, {}, "fx.cfg"}};
    level.movers = {{1, 1.0f, {}, {10, 0}}};
    const std::vector<std::pair<std::int32_t, std::set<std::int32_t>>> understood = {
        {3, {2}}, {101, {4}}, {203, {3}}, {300, {1, 2, 3}}, {410, {1}}, {502, {5}}, {2, {1, 2, 3, 4, 5}}};
    const std::map<std::int32_t, std::string> words = {
        {3, "an object"}, {101, "a sound"},   {203, "a force"}, {300, "a polygon, an object or a force"},
        {410, "a mover"}, {502, "an emitter"}};
    for (const auto& [type, ids] : understood) {
        for (std::int32_t id = 1; id <= 5; ++id) {
            level.triggers = {trigger(0, 2), trigger(type, id)};
            const Findings wrong = ids.contains(id) ? Findings{}
                                                    : Findings{"trigger 1: nothing that has its target id " +
                                                               std::to_string(id) + " is " + words.at(type)};
            EXPECT_EQ(findingsOf(level), wrong) << type << ' ' << id;
        }
    }
}

TEST_F(LevelValidatorTest, AnAbsurdlyFastMoverIsTold) {
    LevelFile level = levelOf({block()});
    level.polygons[0].polygonId = 5;
    level.movers = {{5, 1e30f, {}, {100001, 0}}, {5, 1e30f, {}, {99999, 0}}, {5, 40.0f, {}, {2000000000, 0}}};

    EXPECT_EQ(findingsOf(level),
              Findings{"mover 0: goes more than 100000 units in a tick, which takes the game seconds"});
}

TEST_F(LevelValidatorTest, AnOutlineThatTakesLongToCutUpIsTold) {
    std::vector<LevelFile::Point> comb;
    for (std::int32_t i = 0; i < 1001; ++i) {
        comb.push_back({1000 + 4 * i, 100});
        comb.push_back({1002 + 4 * i, 120});
    }
    comb.push_back({3000, 500});
    const Findings findings = findingsOfPoints(comb);

    ASSERT_FALSE(findings.empty());
    EXPECT_EQ(findings[0], "polygon 1 at (1000, 100): has 2003 points: the game can take minutes to cut up "
                           "more than 2000, divide it");
}

TEST_F(LevelValidatorTest, ASideThatTwoWallsShareInOneDirectionIsTold) {
    LevelFile level = levelOf({block(), block(120, 100), block(100, 100)}); // a neighbour, and one twice
    std::ranges::reverse(level.polygons[2].points);

    EXPECT_EQ(
        findingsOf(level),
        Findings{"polygon 2 at (100, 120): side 0 is side 2 of polygon 0 again: the two walls overlap, and "
                 "where the side is long and slanted the game can take it from both, so that all water "
                 "falls through"});
    level.polygons[2].polygonMode = 1; // seen only
    EXPECT_EQ(findingsOf(level), Findings{});
}

TEST_F(LevelValidatorTest, OfSidesThatTwoWallsShareTheLongSlantedOnesAreTold) {
    LevelFile level = levelOf({block(), block(), block()});
    level.waterStart = {-500, -500};
    level.polygons[0].points = {{0, 0}, {1000, 221}, {0, 500}};     // 1024.1 units
    level.polygons[1].points = {{0, 0}, {1000, 221}, {10, 400}};    // begins with the same side
    level.polygons[2].points = {{1000, 221}, {0, 500}, {900, 490}}; // the next side, the other way

    const Findings found = findingsOf(level);

    ASSERT_EQ(found.size(), 1U);
    EXPECT_TRUE(found[0].starts_with("polygon 1 at (0, 0): side 0 is side 0 of polygon 0 again")) << found[0];
    level.polygons[0].points[1] = level.polygons[1].points[1] = {1000, 220}; // 1023.9
    EXPECT_EQ(findingsOf(level), Findings{});
    level.polygons[0].points[1] = level.polygons[1].points[1] = {1100, 0}; // level
    EXPECT_EQ(findingsOf(level), Findings{});
}

/// Would catch a level that the game cannot cut up, called sound.
TEST_F(LevelValidatorTest, SidesThatCannotBeCutApartAreNamed) {
    const std::string finding = "sides longer than 65536 units overlap, and the game cannot cut them apart";
    std::uint32_t named = 0;
    for (std::uint32_t seed = 1; seed <= 500 && named == 0; ++seed) {
        Level::polygons.clear();
        RandomLevels(seed).makeHuge(2 + seed % 6);
        std::vector<LevelBspNode> edges = LevelBspBuilder::buildInitialNodeList(Level::polygons);
        if (LevelBspBuilder::optimiseInitialNodeList(edges)) {
            continue;
        }
        LevelFile huge;
        for (const Polygon2D& polygon : Level::polygons) {
            LevelFile::PolygonRecord record = block();
            record.points.clear();
            for (std::uint32_t point = 0; point < polygon.pointCount(); ++point) {
                record.points.push_back({static_cast<std::int32_t>(std::lround(polygon.pointsX[point])),
                                         static_cast<std::int32_t>(std::lround(polygon.pointsY[point]))});
            }
            huge.polygons.push_back(record);
        }
        const Findings findings = findingsOf(huge);
        if (std::count(findings.begin(), findings.end(), finding) == 1) {
            ++named;
        }
    }
    EXPECT_EQ(named, 1u);
    Level::polygons.clear();
    const Findings sound = findingsOf(levelOf({block(), block(120, 100)}));
    EXPECT_EQ(std::count(sound.begin(), sound.end(), finding), 0);
}

} // namespace tarnwick
