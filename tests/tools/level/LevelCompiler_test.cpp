#include "tools/level/LevelCompiler.h"

#include "support/TiledText.h"
#include "tools/level/LevelWriter.h"
#include "tools/level/PictureOrder.h"

#include <gtest/gtest.h>

#include <sstream>

namespace tarnwick {

using Points = std::vector<LevelFile::Point>;

namespace {

const std::string lampProperty = textProperty("texture", "lamp.tga");
const std::string mirroredProperty = R"({"name":"mirrored","type":"bool","value":true})";

/// An object of class object, 7 "lamp", with these members and properties.
std::string pictureText(const std::string& members, const std::string& properties) {
    return R"({"id":7,"name":"lamp","class":"object",)" + members + R"(,"properties":[)" + properties + "]}";
}

} // namespace

TEST(LevelCompilerTest, StartPointsAreThoseOfTheMap) {
    const LevelFile level = compileText(mapOfObjects(""));

    EXPECT_EQ(level.waterStart, (LevelFile::Point{5, -6}));
    EXPECT_EQ(level.cameraStart, (LevelFile::Point{70, 80}));
    EXPECT_TRUE(level.polygons.empty());
}

TEST(LevelCompilerTest, APolygonTakesItsProperties) {
    const std::string properties = numberProperty("id", "-7") + "," +
                                   textProperty("texture", "gfx\\\\Wood.tga") + "," +
                                   textProperty("surface", "wood") + "," + textProperty("mode", "invisible") +
                                   "," + numberProperty("layer", "4");

    const LevelFile level = compileText(mapOfObjects(triangleText("", properties)));

    ASSERT_EQ(level.polygons.size(), 1U);
    const LevelFile::PolygonRecord& polygon = level.polygons[0];
    EXPECT_EQ(polygon.polygonId, -7);
    EXPECT_EQ(polygon.textureName, "gfx\\Wood.tga");
    EXPECT_EQ(polygon.surfaceType, 2);
    EXPECT_EQ(polygon.polygonMode, 2);
    EXPECT_EQ(polygon.layer, 4U);
    EXPECT_EQ(polygon.points, (Points{{100, 200}, {130, 210}, {100, 210}}));
}

TEST(LevelCompilerTest, WhatIsMissingIsStoneSolidAndWithoutPictureOrId) {
    const LevelFile level = compileText(mapOfObjects(triangleText()));

    EXPECT_EQ(level.polygons[0].polygonId, 0);
    EXPECT_EQ(level.polygons[0].textureName, "");
    EXPECT_EQ(level.polygons[0].surfaceType, 3);
    EXPECT_EQ(level.polygons[0].polygonMode, 0);
    EXPECT_EQ(level.polygons[0].layer, 1U);
}

TEST(LevelCompilerTest, EverySurfaceAndModeHasItsNumber) {
    const std::vector<std::string> surfaces = {"metal", "wood", "stone", "cloth", "sand"};
    const std::vector<std::string> modes = {"solid", "seen-only", "invisible", "caulk"};
    std::string objects;
    for (std::size_t i = 0; i < surfaces.size(); ++i) {
        objects += (i == 0 ? "" : ",") + triangleText("", textProperty("surface", surfaces[i]));
    }
    for (const std::string& mode : modes) {
        objects += "," + triangleText("", textProperty("mode", mode));
    }

    const LevelFile level = compileText(mapOfObjects(objects));

    for (std::size_t i = 0; i < surfaces.size(); ++i) {
        EXPECT_EQ(level.polygons[i].surfaceType, static_cast<std::int32_t>(i) + 1);
    }
    for (std::size_t i = 0; i < modes.size(); ++i) {
        EXPECT_EQ(level.polygons[surfaces.size() + i].polygonMode, static_cast<std::int32_t>(i));
    }
}

TEST(LevelCompilerTest, ARectangleWithoutClassIsAPolygon) {
    const LevelFile level = compileText(mapOfObjects(R"({"id":1,"x":1,"y":2,"width":10,"height":20})"));

    EXPECT_EQ(level.polygons[0].points, (Points{{1, 2}, {11, 2}, {11, 22}, {1, 22}}));
}

TEST(LevelCompilerTest, ASquareOnItsCornerIsNoRectangleWithoutWidth) {
    const std::string square = R"({"id":1,"x":0,"y":0,"width":10,"height":10,"rotation":45})";

    EXPECT_EQ(refusalOf(mapOfObjects(square)), "");
}

TEST(LevelCompilerTest, PolygonsStandInTheOrderOfLayersAndObjects) {
    const std::string map =
        mapOfLayers(objectLayer("2 front", triangleText("", numberProperty("id", "1"))) + "," +
                    objectLayer("0", triangleText("", numberProperty("id", "2")) + "," +
                                         triangleText("", numberProperty("id", "3"))) +
                    "," +
                    objectLayer("Layer 2, more", triangleText("", numberProperty("id", "4")) + "," +
                                                     waterStartText + "," + cameraStartText));

    const LevelFile level = compileText(map);

    ASSERT_EQ(level.polygons.size(), 4U);
    const std::vector<std::uint32_t> layers = {2, 0, 0, 2};
    for (std::size_t i = 0; i < layers.size(); ++i) {
        EXPECT_EQ(level.polygons[i].polygonId, static_cast<std::int32_t>(i) + 1);
        EXPECT_EQ(level.polygons[i].layer, layers[i]);
    }
}

TEST(LevelCompilerTest, TheNumberOfALayerComesFromItsPropertyOrItsName) {
    const auto layerOf = [](const std::string& layer) {
        return compileText(
                   mapOfLayers(objectLayer("start", waterStartText + "," + cameraStartText) + "," + layer))
            .polygons.at(0)
            .layer;
    };
    EXPECT_EQ(layerOf(objectLayer("3", triangleText())), 3U);
    EXPECT_EQ(layerOf(objectLayer("3: grass", triangleText())), 3U);
    EXPECT_EQ(layerOf(objectLayer("LAYER  3", triangleText())), 3U);
    EXPECT_EQ(layerOf(objectLayer("layer3 of 4", triangleText())), 3U);
    EXPECT_EQ(layerOf(R"({"type":"objectgroup","name":"0 walls","properties":[{"name":"layer","value":2}],)"
                      R"("objects":[)" +
                      triangleText() + "]}"),
              2U);
}

TEST(LevelCompilerTest, ALayerOfClassNotesIsLeftOut) {
    const std::string notes = R"({"type":"objectgroup","name":"todo","class":"notes","objects":[)"
                              R"({"id":1,"text":{"text":"more grass"}}]})";

    const LevelFile level =
        compileText(mapOfLayers(notes + "," + objectLayer("1", waterStartText + "," + cameraStartText)));

    EXPECT_TRUE(level.polygons.empty());
}

TEST(LevelCompilerTest, FractionsAreRoundedHalvesAwayFromZeroAndTold) {
    const std::string object =
        R"({"id":4,"name":"bowl","x":0.5,"y":-0.5,"polygon":[{"x":0,"y":0},{"x":9.25,"y":0.5},{"x":0,"y":9.2}]})";
    std::vector<std::string> warnings;

    const LevelFile level = compileText(mapOfObjects(object), warnings);

    EXPECT_EQ(level.polygons[0].points, (Points{{1, -1}, {10, 0}, {1, 9}}));
    EXPECT_EQ(warnings, std::vector<std::string>{"object 4 \"bowl\": 3 of 3 points rounded to whole units"});
}

TEST(LevelCompilerTest, DigitsLostInTheTextAreNoFraction) {
    const std::string object = R"({"id":4,"x":0,"y":0,"width":9.9999999999,"height":10.0000000001})";

    const LevelFile level = compileText(mapOfObjects(object)); // throws for a warning

    EXPECT_EQ(level.polygons[0].points, (Points{{0, 0}, {10, 0}, {10, 10}, {0, 10}}));
}

TEST(LevelCompilerTest, AnUnknownPropertyIsLeftOutWithAWarning) {
    const std::string object = triangleText("", textProperty("surfcae", "wood"));

    EXPECT_EQ(warningsOf(mapOfObjects(object)),
              std::vector<std::string>{"object 12 \"slope\": unknown property \"surfcae\" is left out"});
}

TEST(LevelCompilerTest, APropertyOfAWrongTypeIsRefused) {
    EXPECT_EQ(refusalOf(mapOfObjects(triangleText("", numberProperty("surface", "3")))),
              "object 12 \"slope\": property \"surface\" must be a text");
    EXPECT_EQ(refusalOf(mapOfObjects(triangleText("", textProperty("id", "3")))),
              "object 12 \"slope\": property \"id\" must be a whole number");
    EXPECT_EQ(refusalOf(mapOfObjects(triangleText("", numberProperty("id", "1.5")))),
              "object 12 \"slope\": property \"id\" must be a whole number");
}

TEST(LevelCompilerTest, AnUnknownSurfaceIsRefused) {
    EXPECT_EQ(refusalOf(mapOfObjects(triangleText("", textProperty("surface", "glass")))),
              "object 12 \"slope\": unknown surface \"glass\" (metal, wood, stone, cloth or sand)");
    EXPECT_EQ(refusalOf(mapOfObjects(triangleText("", textProperty("surface", "Wood")))),
              "object 12 \"slope\": unknown surface \"Wood\" (metal, wood, stone, cloth or sand)");
}

TEST(LevelCompilerTest, AnUnknownModeIsRefused) {
    EXPECT_EQ(refusalOf(mapOfObjects(triangleText("", textProperty("mode", "seen only")))),
              "object 12 \"slope\": unknown mode \"seen only\" (solid, seen-only, invisible or caulk)");
}

TEST(LevelCompilerTest, ALayerOutsideZeroToFourIsRefused) {
    EXPECT_EQ(refusalOf(mapOfObjects(triangleText("", numberProperty("layer", "5")))),
              "object 12 \"slope\": layer 5 is outside 0 to 4");
    EXPECT_EQ(refusalOf(mapOfObjects(triangleText("", numberProperty("layer", "-1")))),
              "object 12 \"slope\": layer -1 is outside 0 to 4");
    EXPECT_EQ(refusalOf(mapOfLayers(objectLayer("layer 12", triangleText()))),
              "object 12 \"slope\": layer 12 is outside 0 to 4");
}

TEST(LevelCompilerTest, ALayerWithoutNumberIsRefused) {
    const std::vector<std::string> names = {"walls", "", "layer", "2nd", "layer x", "9999999999999999999"};
    for (const std::string& name : names) {
        EXPECT_EQ(refusalOf(mapOfLayers(objectLayer(name, triangleText()))),
                  "object 12 \"slope\": its layer \"" + name +
                      "\" has no number: begin its name with 0 to 4 or give it a property \"layer\"");
    }
}

TEST(LevelCompilerTest, ALayerWhosePropertyIsNoNumberIsRefused) {
    const std::string layer =
        R"({"type":"objectgroup","name":"1","properties":[{"name":"layer","value":"2"}],)"
        R"("objects":[)" +
        triangleText() + "]}";

    EXPECT_EQ(refusalOf(mapOfLayers(layer)), "layer \"1\": property \"layer\" must be a whole number");
}

TEST(LevelCompilerTest, AnIdThatThirtyTwoBitsCannotHoldIsRefused) {
    EXPECT_EQ(refusalOf(mapOfObjects(triangleText("", numberProperty("id", "2147483647")))), "");
    EXPECT_EQ(refusalOf(mapOfObjects(triangleText("", numberProperty("id", "2147483648")))),
              "object 12 \"slope\": id 2147483648 does not fit into 32 bits");
    EXPECT_EQ(refusalOf(mapOfObjects(triangleText("", numberProperty("id", "-2147483649")))),
              "object 12 \"slope\": id -2147483649 does not fit into 32 bits");
}

TEST(LevelCompilerTest, ANameOf65535BytesIsTheLongest) {
    const auto refusal = [](std::size_t length) {
        return refusalOf(mapOfObjects(triangleText("", textProperty("texture", std::string(length, 'x')))));
    };
    EXPECT_EQ(refusal(65535), "");
    EXPECT_EQ(refusal(65536), "object 12 \"slope\": its texture name is longer than 65535 bytes");
}

TEST(LevelCompilerTest, APlaceBeyondThirtyTwoBitsIsRefused) {
    const std::string reason = ": a point lies beyond the 2,147,483,647 units that a level file can hold";
    const auto refusal = [](const std::string& x) {
        return refusalOf(mapOfObjects(R"({"id":3,"x":)" + x + R"(,"y":0,"width":1,"height":1})"));
    };
    EXPECT_EQ(refusal("2147483646"), "");
    EXPECT_EQ(refusal("2147483647"), "object 3" + reason);
    EXPECT_EQ(refusal("-2147483648"), "");
    EXPECT_EQ(refusal("-2147483649"), "object 3" + reason);
    EXPECT_EQ(refusal("1e15"), "object 3" + reason);
    EXPECT_EQ(
        refusalOf(mapOfObjects(R"({"id":3,"x":1e308,"y":1e308,"width":1e308,"height":1e308,"rotation":33})")),
        "object 3" + reason); // sums beyond every number
}

TEST(LevelCompilerTest, APolygonOfMoreThan65535PointsIsRefused) {
    const auto polygonOf = [](std::size_t count) {
        std::string points = R"({"x":0,"y":0})";
        for (std::size_t i = 1; i < count; ++i) {
            points += R"(,{"x":0,"y":0})";
        }
        return mapOfObjects(R"({"id":3,"name":"huge","polygon":[)" + points + "]}");
    };
    EXPECT_EQ(refusalOf(polygonOf(65535)), "");
    EXPECT_EQ(refusalOf(polygonOf(65536)), "object 3 \"huge\": has more than 65535 points");
}

TEST(LevelCompilerTest, ALevelOfMoreThan65535PolygonsIsRefused) {
    TiledMap map;
    TiledLayer& layer = map.layers.emplace_back();
    layer.name = "1";
    for (const char* const kind : {"waterStart", "cameraStart"}) {
        TiledObject& start = layer.objects.emplace_back();
        start.kind = kind;
        start.shape = TiledShape::point;
        start.points = {{0.0, 0.0}};
    }
    for (std::int64_t number = 1; number <= 65536; ++number) {
        TiledObject& object = layer.objects.emplace_back();
        object.number = number;
        object.shape = TiledShape::polygon;
    }
    std::vector<std::string> warnings;

    std::string refusal;
    try {
        compileLevel(map, warnings);
    } catch (const ToolError& error) {
        refusal = error.what();
    }

    EXPECT_EQ(refusal, "object 65536: a level holds no more than 65535 polygons, and this is one more");
    layer.objects.pop_back();
    EXPECT_EQ(compileLevel(map, warnings).polygons.size(), 65535U);
}

TEST(LevelCompilerTest, BothStartPointsMustBeThereOnce) {
    EXPECT_EQ(refusalOf(mapOfLayers(objectLayer("1", cameraStartText))), "the map has no waterStart point");
    EXPECT_EQ(refusalOf(mapOfLayers(objectLayer("1", waterStartText))), "the map has no cameraStart point");
    EXPECT_EQ(refusalOf(mapOfObjects(R"({"id":7,"name":"b","class":"waterStart","point":true})")),
              "object 7 \"b\": a second waterStart; the first is object 900");
}

TEST(LevelCompilerTest, AStartMustBeAPoint) {
    EXPECT_EQ(refusalOf(mapOfObjects(R"({"id":7,"class":"cameraStart","width":3,"height":3})")),
              "object 7: a cameraStart must be a point object");
}

TEST(LevelCompilerTest, AnObjectTakesItsProperties) {
    const std::string properties = numberProperty("id", "-7") + "," +
                                   textProperty("texture", "gfx\\\\Lamp.tga") + "," + mirroredProperty + "," +
                                   numberProperty("layer", "4");

    const LevelFile level =
        compileText(mapOfObjects(pictureText(R"("x":3,"y":-5,"point":true)", properties)));

    ASSERT_EQ(level.objects.size(), 1U);
    EXPECT_EQ(level.objects[0], (LevelFile::ObjectRecord{4294967289U, "gfx\\Lamp.tga", 4, {3, -5}, 1}));
    EXPECT_TRUE(level.polygons.empty());
}

TEST(LevelCompilerTest, AnObjectThatHasAPictureOnlyStandsUprightOnTheLayerOfItsList) {
    const LevelFile level =
        compileText(mapOfObjects(pictureText(R"("x":3,"y":-5,"point":true)", lampProperty)));

    EXPECT_EQ(level.objects[0], (LevelFile::ObjectRecord{0, "lamp.tga", 1, {3, -5}, 0}));
}

TEST(LevelCompilerTest, ObjectsKeepTheOrderOfTheMapAndTheirPlaceIsTheirMiddle) {
    const std::string objects =
        pictureText(R"("x":10,"y":20,"width":32,"height":64)", lampProperty) + "," + triangleText() + "," +
        pictureText(R"("x":100,"y":200,"gid":3,"width":40,"height":20)", lampProperty) + "," +
        pictureText(R"("x":1,"y":2,"width":0,"height":0)", lampProperty);

    const LevelFile level = compileText(mapOfObjects(objects));

    ASSERT_EQ(level.objects.size(), 3U);
    EXPECT_EQ(level.objects[0].position, (LevelFile::Point{26, 52}));
    EXPECT_EQ(level.objects[1].position, (LevelFile::Point{120, 190})) << "a tile stands on its place";
    EXPECT_EQ(level.objects[2].position, (LevelFile::Point{1, 2}));
}

TEST(LevelCompilerTest, ATileNeedsNoClassAndIsMirroredByItsFlip) {
    const std::string flipped = R"({"id":7,"gid":2147483651,"width":2,"height":2,"properties":[)";

    const LevelFile once = compileText(mapOfObjects(flipped + lampProperty + "]}"));
    const LevelFile twice = compileText(mapOfObjects(flipped + lampProperty + "," + mirroredProperty + "]}"));

    EXPECT_EQ(once.objects.at(0).mirrored, 1);
    EXPECT_EQ(twice.objects.at(0).mirrored, 0);
}

TEST(LevelCompilerTest, AMiddleBetweenTwoUnitsIsRoundedAndTold) {
    const std::string map = mapOfObjects(pictureText(R"("x":0,"y":0,"width":3,"height":2)", lampProperty));
    std::vector<std::string> warnings;

    const LevelFile level = compileText(map, warnings);

    EXPECT_EQ(level.objects[0].position, (LevelFile::Point{2, 1}));
    EXPECT_EQ(warnings, std::vector<std::string>{"object 7 \"lamp\": 1 of 1 points rounded to whole units"});
}

TEST(LevelCompilerTest, ObjectsThatCannotBeWrittenAreRefused) {
    const auto refusal = [](const std::string& members, const std::string& properties) {
        return refusalOf(mapOfObjects(pictureText(members, properties)));
    };
    const std::string turned =
        "object 7 \"lamp\": a picture can be mirrored from side to side, not turned or "
        "put upside down";
    const std::string box = R"("width":4,"height":2)";

    EXPECT_EQ(refusal(box, ""), "object 7 \"lamp\": shows no picture: give it a property \"texture\"");
    EXPECT_EQ(refusal(box + R"(,"rotation":90)", lampProperty), turned);
    EXPECT_EQ(refusal(box + R"(,"rotation":180)", lampProperty), turned);
    EXPECT_EQ(refusal(box + R"(,"gid":1073741825)", lampProperty), turned);
    EXPECT_EQ(refusal(box + R"(,"gid":536870913)", lampProperty), turned);
    EXPECT_EQ(refusal(R"("ellipse":true)", lampProperty),
              "object 7 \"lamp\": an object must be a point, a rectangle or a tile");
    EXPECT_EQ(refusal(box, lampProperty + "," + textProperty("mirrored", "yes")),
              "object 7 \"lamp\": property \"mirrored\" must be true or false");
    EXPECT_EQ(refusal(box, lampProperty + "," + numberProperty("id", "2147483648")),
              "object 7 \"lamp\": id 2147483648 does not fit into 32 bits");
    EXPECT_EQ(refusal(box, lampProperty + "," + numberProperty("layer", "5")),
              "object 7 \"lamp\": layer 5 is outside 0 to 4");
    EXPECT_EQ(refusal(box, textProperty("texture", std::string(65535, 'x'))),
              "object 7 \"lamp\": its texture name is longer than 65534 bytes");
    EXPECT_EQ(refusal(box, textProperty("texture", std::string(65534, 'x'))), "");
}

TEST(LevelCompilerTest, AnUnknownClassIsRefused) {
    EXPECT_EQ(refusalOf(mapOfObjects(R"({"id":7,"name":"lift","class":"ladder","width":3,"height":3})")),
              "object 7 \"lift\": unknown class \"ladder\" (polygon, object, mover, trigger, force, emitter, "
              "sound, waterStart or cameraStart)");
}

TEST(LevelCompilerTest, ADressedPolygonGetsItsFinishBehindAllOthers) {
    const std::string dressed = R"({"name":"dressed","type":"bool","value":true})";
    const std::string plain = triangleText(R"("rotation":90,)");

    LevelFile level = compileText(mapOfObjects(triangleText("", dressed) + "," + plain));

    ASSERT_TRUE(beginsWithOrder(level));
    takeOrderAway(level);
    ASSERT_GT(level.polygons.size(), 2U);
    EXPECT_EQ(level.polygons[1].textureName, "");
    EXPECT_EQ(level.polygons[2].textureName, "gfx\\shade_10.tga");
    EXPECT_EQ(level.polygons.back().polygonMode, 1);
}

TEST(LevelCompilerTest, ALayerDressesItsPolygonsUnlessTheyTellOtherwise) {
    const std::string undressed = R"({"name":"dressed","type":"bool","value":false})";
    const std::string start = objectLayer("start", waterStartText + "," + cameraStartText);
    const auto layerText = [&](const std::string& value, const std::string& objects) {
        return mapOfLayers(start +
                           R"(,{"type":"objectgroup","name":"1","properties":[{"name":"dressed","value":)" +
                           value + R"(}],"objects":[)" + objects + "]}");
    };

    EXPECT_GT(compileText(layerText("true", triangleText())).polygons.size(), 1U);
    EXPECT_EQ(compileText(layerText("true", triangleText("", undressed))).polygons.size(), 1U);
    EXPECT_EQ(compileText(layerText("false", triangleText())).polygons.size(), 1U);
    EXPECT_EQ(refusalOf(layerText("1", triangleText())),
              "layer \"1\": property \"dressed\" must be true or false");
}

TEST(LevelCompilerTest, AModeThatIsANumberIsTakenAsItStands) {
    EXPECT_EQ(
        compileText(mapOfObjects(triangleText("", numberProperty("mode", "7")))).polygons[0].polygonMode, 7);
}

TEST(LevelCompilerTest, ShapesThatAreNoPolygonAreRefused) {
    EXPECT_EQ(refusalOf(mapOfObjects(R"({"id":7,"ellipse":true,"width":3,"height":3})")),
              "object 7: an ellipse cannot be written: draw it as a polygon");
    EXPECT_EQ(refusalOf(mapOfObjects(R"({"id":7,"text":{"text":"a"},"width":3,"height":3})")),
              "object 7: a text cannot be written: move it to a layer of class \"notes\"");
    EXPECT_EQ(refusalOf(mapOfObjects(R"({"id":7,"class":"polygon","gid":1,"width":3,"height":3})")),
              "object 7: a tile must be of class object");
    EXPECT_EQ(refusalOf(mapOfObjects(R"({"id":7,"polyline":[{"x":0,"y":0},{"x":5,"y":6}]})")),
              "object 7: a line cannot be a polygon: close it");
    EXPECT_EQ(refusalOf(mapOfObjects(R"({"id":7,"point":true})")),
              "object 7: a point must be of class object, waterStart or cameraStart");
    EXPECT_EQ(refusalOf(mapOfObjects(R"({"id":7,"width":3,"height":0})")),
              "object 7: a rectangle without width or height");
    EXPECT_EQ(refusalOf(mapOfObjects(R"({"id":7,"class":"polygon"})")),
              "object 7: a rectangle without width or height");
}

TEST(LevelCompilerTest, WhatIsCompiledReadsBackTheSame) {
    const std::string properties =
        numberProperty("id", "9") + "," + textProperty("texture", "gfx\\\\sand.tga");
    const LevelFile level =
        compileText(mapOfObjects(triangleText("", properties) + "," + triangleText(R"("rotation":180,)")));

    std::istringstream file(writeLevel(level), std::ios::binary);
    LevelFile readBack;
    const char* const failure = LevelFile::read(file, readBack);

    EXPECT_EQ(failure, nullptr);
    EXPECT_EQ(readBack, level);
}

TEST(LevelCompilerTest, TheSameMapGivesTheSameBytes) {
    const std::string map = mapOfObjects(triangleText() + "," + triangleText(R"("rotation":33.3,)"));
    std::vector<std::string> warnings;

    const std::string first = writeLevel(compileText(map, warnings));
    const std::string second = writeLevel(compileText(map, warnings));

    EXPECT_EQ(first, second);
}

} // namespace tarnwick
