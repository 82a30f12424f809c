#include "tools/level/EntityCompiler.h"

#include "support/TiledText.h"
#include "tools/level/LevelNames.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>

namespace tarnwick {

namespace {

/// An object of this class, 7 "it", with these members and properties.
std::string
entityText(const std::string& kind, const std::string& members, const std::string& properties = "") {
    return R"({"id":7,"name":"it","class":")" + kind + R"(","x":100,"y":-50,)" + members +
           R"(,"properties":[)" + properties + "]}";
}

LevelFile compiled(const std::string& kind, const std::string& members, const std::string& properties = "") {
    return compileText(mapOfObjects(entityText(kind, members, properties)));
}

/// Why this object is refused, without its number and name; all of it when they are not in front.
std::string refusal(const std::string& kind, const std::string& members, const std::string& properties = "") {
    const std::string reason = refusalOf(mapOfObjects(entityText(kind, members, properties)));
    const std::string label = "object 7 \"it\": ";
    return reason.starts_with(label) ? reason.substr(label.size()) : "unlabelled: " + reason;
}

const std::string line = R"("polyline":[{"x":0,"y":0},{"x":30,"y":-40}])";
const std::string point = R"("point":true)";
const std::string box = R"("width":20,"height":10)";
const std::string circle = R"("ellipse":true,"width":200,"height":200)";
const std::string wind = textProperty("sound", "snd\\\\wind.wav");
const std::string drip = textProperty("settings", "fx\\\\drip.cfg");
const std::string endType = textProperty("type", "Level_end_a");

} // namespace

TEST(EntityCompilerTest, AMoverIsALineOfTwoPoints) {
    const LevelFile level =
        compiled("mover", line, numberProperty("id", "-3") + "," + numberProperty("speed", "60"));

    ASSERT_EQ(level.movers.size(), 1U);
    EXPECT_EQ(level.movers[0], (LevelFile::MoverRecord{-3, 60.0f, {100, -50}, {130, -90}}));
}

TEST(EntityCompilerTest, ATriggerIsARectangleOrFourCorners) {
    const std::string properties = textProperty("type", "Mover_goto_end_1") + "," +
                                   numberProperty("target", "9") + "," + numberProperty("delay", "1.5");
    const std::string corners = R"("polygon":[{"x":0,"y":0},{"x":9,"y":1},{"x":8,"y":7},{"x":-2,"y":6}])";

    const LevelFile rectangle = compiled("trigger", box, properties);
    const LevelFile polygon = compiled("trigger", corners, endType);

    EXPECT_EQ(rectangle.triggers.at(0),
              (LevelFile::TriggerRecord{9, 402, 1.5f, {{100, -50}, {120, -50}, {120, -40}, {100, -40}}}));
    EXPECT_EQ(polygon.triggers.at(0),
              (LevelFile::TriggerRecord{0, 801, 0.0f, {{100, -50}, {109, -49}, {108, -43}, {98, -44}}}));
}

TEST(EntityCompilerTest, EveryTypeOfTriggerHasItsCode) {
    for (const TriggerAction& action : triggerActions) {
        const LevelFile level = compiled("trigger", box, textProperty("type", std::string(action.name)));

        EXPECT_EQ(level.triggers.at(0).triggerType, action.code);
        EXPECT_EQ(actionOf(action.code), &action);
    }
    EXPECT_EQ(actionOf(77), nullptr);
}

TEST(EntityCompilerTest, ATypeThatIsANumberIsTakenAsItStands) {
    EXPECT_EQ(compiled("trigger", box, numberProperty("type", "77")).triggers.at(0).triggerType, 77);
}

TEST(EntityCompilerTest, AForcePointsAlongItsLineOrAsItsPropertiesTell) {
    const std::string direction =
        numberProperty("directionX", "-0.5") + "," + numberProperty("directionY", "2");

    const LevelFile drawn =
        compiled("force", line, numberProperty("id", "4") + "," + numberProperty("strength", "25.5"));
    const LevelFile told = compiled("force", point, direction);
    const LevelFile none = compiled("force", point);

    EXPECT_EQ(drawn.forces.at(0), (LevelFile::ForceRecord{4, {100, -50}, {30.0f, -40.0f}, 25.5f}));
    EXPECT_EQ(told.forces.at(0), (LevelFile::ForceRecord{0, {100, -50}, {-0.5f, 2.0f}, 1.0f}));
    EXPECT_EQ(none.forces.at(0).direction, (Vector2{0.0f, 0.0f}));
}

TEST(EntityCompilerTest, AnEmitterTakesItsDirectionAndSettings) {
    const LevelFile level = compiled("emitter", line, drip + "," + numberProperty("id", "6"));

    EXPECT_EQ(level.emitters.at(0),
              (LevelFile::EmitterRecord{6, {100, -50}, {30.0f, -40.0f}, "fx\\drip.cfg"}));
}

TEST(EntityCompilerTest, ASoundReachesAsFarAsItsCircle) {
    const LevelFile level = compiled("sound", circle, wind + "," + numberProperty("id", "8"));

    EXPECT_EQ(level.soundSources.at(0),
              (LevelFile::SoundSourceRecord{8, {200, 50}, 100, 1, "snd\\wind.wav"}));
}

TEST(EntityCompilerTest, APointedSoundTakesItsReachFromAProperty) {
    const std::string once = R"({"name":"looping","type":"bool","value":false})";

    const LevelFile told = compiled("sound", point, wind + "," + numberProperty("reach", "0") + "," + once);
    const LevelFile untold = compiled("sound", point, wind);

    EXPECT_EQ(told.soundSources.at(0), (LevelFile::SoundSourceRecord{0, {100, -50}, 0, 0, "snd\\wind.wav"}));
    EXPECT_EQ(untold.soundSources.at(0).strenght, EntityDefaults::reach);
}

TEST(EntityCompilerTest, ATextOfBitsIsAFloatBitForBit) {
    const LevelFile level = compiled("mover", line, textProperty("speed", "0x7FC00001"));

    EXPECT_EQ(std::bit_cast<std::uint32_t>(level.movers.at(0).speed), 0x7FC00001U);
    EXPECT_EQ(refusal("mover", line, textProperty("speed", "0x7FC0000")),
              "property \"speed\" must be a number");
    EXPECT_EQ(refusal("mover", line, textProperty("speed", "0x7FC0000G")),
              "property \"speed\" must be a number");
}

TEST(EntityCompilerTest, ATriggerWithoutFourCornersIsRefused) {
    const std::string reason = "a trigger must be a rectangle or a polygon of four corners";
    const std::string three = R"("polygon":[{"x":0,"y":0},{"x":9,"y":1},{"x":8,"y":7}])";

    EXPECT_EQ(refusal("trigger", three, endType), reason);
    EXPECT_EQ(refusal("trigger", line, endType), reason);
    EXPECT_EQ(refusal("trigger", point, endType), reason);
    EXPECT_EQ(refusal("trigger", circle, endType), reason);
    EXPECT_EQ(refusal("trigger", box), "does nothing: give it a property \"type\"");
    EXPECT_EQ(refusal("trigger", box, textProperty("type", "to_ice_a")),
              "unknown type \"to_ice_a\"; the Tiled project lists the types of triggers");
}

TEST(EntityCompilerTest, OtherShapesAreRefused) {
    const std::string bent = R"("polyline":[{"x":0,"y":0},{"x":3,"y":4},{"x":5,"y":6}])";
    const std::string oval = R"("ellipse":true,"width":200,"height":100)";

    EXPECT_EQ(refusal("mover", bent), "a mover must be a line of two points");
    EXPECT_EQ(refusal("mover", box), "a mover must be a line of two points");
    EXPECT_EQ(refusal("force", bent), "a force must be a line of two points, or a point");
    EXPECT_EQ(refusal("emitter", box, drip), "an emitter must be a line of two points, or a point");
    EXPECT_EQ(refusal("sound", box, wind), "a sound must be a circle or a point");
    EXPECT_EQ(refusal("sound", oval, wind),
              "a sound reaches equally far all round: make its ellipse a circle");
}

TEST(EntityCompilerTest, WhatIsToldTwiceIsRefused) {
    EXPECT_EQ(refusal("force", line, numberProperty("directionX", "1")),
              "has its direction twice, as a line and in its properties");
    EXPECT_EQ(refusal("sound", circle, wind + "," + numberProperty("reach", "5")),
              "has its reach twice, as a circle and in its properties");
}

TEST(EntityCompilerTest, ValuesThatALevelFileCannotHoldAreRefused) {
    const std::string tooLong(65536, 'x');

    EXPECT_EQ(refusal("sound", point, textProperty("sound", tooLong)),
              "its sound name is longer than 65535 bytes");
    EXPECT_EQ(refusal("emitter", line, textProperty("settings", tooLong)),
              "its settings name is longer than 65535 bytes");
    EXPECT_EQ(refusal("sound", point), "names no file: give it a property \"sound\"");
    EXPECT_EQ(refusal("emitter", line), "names no file: give it a property \"settings\"");
    EXPECT_EQ(refusal("sound", point, wind + "," + numberProperty("reach", "-1")), "reach -1 is below 0");
    EXPECT_EQ(refusal("sound", point, wind + "," + numberProperty("looping", "256")),
              "looping 256 does not fit into one byte");
    EXPECT_EQ(refusal("mover", line, numberProperty("speed", "1e39")),
              "property \"speed\" is too large for a 32-bit float");
    EXPECT_EQ(refusal("trigger", box, endType + "," + numberProperty("target", "4294967296")),
              "target 4294967296 does not fit into 32 bits");
    EXPECT_EQ(refusal("mover", R"("polyline":[{"x":0,"y":0},{"x":1e30,"y":0}])"),
              "a point lies beyond the 2,147,483,647 units that a level file can hold");
}

TEST(EntityCompilerTest, UnknownPropertiesAreLeftOutWithAWarning) {
    const std::vector<std::string> expected = {"object 7 \"it\": unknown property \"colour\" is left out"};
    const std::string colour = textProperty("colour", "red");

    EXPECT_EQ(warningsOf(mapOfObjects(entityText("mover", line, colour))), expected);
    EXPECT_EQ(warningsOf(mapOfObjects(entityText("force", line, colour))), expected);
    EXPECT_EQ(warningsOf(mapOfObjects(entityText("trigger", box, endType + "," + colour))), expected);
    EXPECT_EQ(warningsOf(mapOfObjects(entityText("sound", point, wind + "," + colour))), expected);
    EXPECT_EQ(warningsOf(mapOfObjects(entityText("emitter", point, drip + "," + colour))), expected);
}

TEST(EntityCompilerTest, TheLayerOfAnEntityNeedsNoNumber) {
    const std::string start = objectLayer("start", waterStartText + "," + cameraStartText);

    const LevelFile level =
        compileText(mapOfLayers(start + "," + objectLayer("works", entityText("mover", line))));

    EXPECT_EQ(level.movers.size(), 1U);
}

TEST(EntityCompilerTest, OneEntityTooManyIsRefused) {
    std::vector<std::string> warnings;
    LevelFile level;
    level.movers.resize(LevelFile::largestCount);
    TiledObject mover;
    mover.number = 3;
    mover.kind = "mover";
    mover.shape = TiledShape::polyline;
    mover.points = {{0.0, 0.0}, {1.0, 1.0}};

    EXPECT_THROW(compileEntity(mover, level, warnings), ToolError);
    mover.kind = "ladder";
    EXPECT_FALSE(compileEntity(mover, level, warnings));
}

} // namespace tarnwick
