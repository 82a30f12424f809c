#include "tools/level/LevelValidator.h"

#include "level/LevelFile.h"
#include "support/ModuleTest.h"

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

    static Findings findingsOf(const LevelFile& level) {
        return validateLevel(level, [](const std::string&) { return true; });
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

    const Findings findings =
        validateLevel(level, [](const std::string& name) { return name != "gfx\\gone.tga"; });

    EXPECT_EQ(findings, Findings{"polygon 1 at (200, 0): picture \"gfx\\gone.tga\" does not exist"});
}

TEST_F(LevelValidatorTest, AMissingPictureOfAnObjectIsToldUnlessAPolygonHasToldIt) {
    LevelFile level = levelOf({block()});
    level.polygons[0].textureName = "gfx\\gone.tga";
    level.objects = {{0, "gfx\\gone.tga", 0, {}, 0}, {0, "gfx\\lost.tga", 0, {1, 2}, 0}};

    const Findings findings = validateLevel(level, [](const std::string&) { return false; });

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
    EXPECT_EQ(validateLevel(levelOf({block()}), nullptr), Findings{});
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

    const Findings findings = validateLevel(level, [](const std::string&) { return false; });

    EXPECT_EQ(findings, (Findings{"sound 0: file \"snd\\gone.wav\" does not exist",
                                  "emitter 0: settings \"fx\\gone.cfg\" do not exist"}));
}

} // namespace tarnwick
