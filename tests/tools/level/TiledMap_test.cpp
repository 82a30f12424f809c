#include "tools/level/TiledMap.h"

#include "support/TiledText.h"

#include <gtest/gtest.h>

namespace tarnwick {

namespace {

/// The one object of a map with one layer.
TiledObject onlyObject(const std::string& object) {
    return TiledMap::read(mapOfLayers(objectLayer("1", object))).layers.at(0).objects.at(0);
}

std::string readRefusal(const std::string& text) {
    try {
        TiledMap::read(text);
    } catch (const ToolError& error) {
        return error.what();
    }
    return {};
}

using Points = std::vector<TiledPoint>;

} // namespace

TEST(TiledMapTest, PointsOfAPolygonAreRelativeToItsPlace) {
    const TiledObject object = onlyObject(triangleText());

    EXPECT_EQ(object.shape, TiledShape::polygon);
    EXPECT_EQ(object.points, (Points{{100, 200}, {130, 210}, {100, 210}}));
}

TEST(TiledMapTest, ARectangleHasFourCornersFromTheTopLeftOne) {
    const TiledObject object = onlyObject(R"({"id":1,"x":10,"y":20,"width":30,"height":40})");

    EXPECT_EQ(object.shape, TiledShape::rectangle);
    EXPECT_EQ(object.points, (Points{{10, 20}, {40, 20}, {40, 60}, {10, 60}}));
}

TEST(TiledMapTest, APointIsItsPlace) {
    const TiledObject object = onlyObject(waterStartText);

    EXPECT_EQ(object.shape, TiledShape::point);
    EXPECT_EQ(object.points, (Points{{5, -6}}));
}

TEST(TiledMapTest, ALineKeepsItsRun) {
    const TiledObject object =
        onlyObject(R"({"id":1,"x":10,"y":20,"polyline":[{"x":0,"y":0},{"x":5,"y":6}]})");

    EXPECT_EQ(object.shape, TiledShape::polyline);
    EXPECT_EQ(object.points, (Points{{10, 20}, {15, 26}}));
}

TEST(TiledMapTest, AQuarterTurnIsExact) {
    const TiledObject object = onlyObject(triangleText(R"("rotation":90,)"));

    EXPECT_EQ(object.points, (Points{{100, 200}, {90, 230}, {90, 200}})); // clockwise on the screen
}

TEST(TiledMapTest, FiveQuarterTurnsBackwardsAreOneBackwards) {
    const TiledObject object = onlyObject(triangleText(R"("rotation":-450,)"));

    EXPECT_EQ(object.points, (Points{{100, 200}, {110, 170}, {110, 200}}));
}

TEST(TiledMapTest, AnyOtherRotationTurnsAboutThePlace) {
    constexpr double rounding = 1e-9; // of sine and cosine
    const TiledObject object = onlyObject(triangleText(R"("rotation":30,)"));

    EXPECT_NEAR(object.points[1].x, 100 + 30 * 0.8660254037844386 - 10 * 0.5, rounding);
    EXPECT_NEAR(object.points[1].y, 200 + 30 * 0.5 + 10 * 0.8660254037844386, rounding);
}

TEST(TiledMapTest, GroupsAreTakenApartAndTheirOffsetsAdded) {
    const std::string inner =
        R"({"type":"objectgroup","name":"2 inner","offsetx":1,"offsety":2,"objects":[)" + waterStartText +
        "]}";
    const std::string group =
        R"({"type":"group","name":"g","offsetx":10,"offsety":20,"layers":[)" + inner + "]}";

    const TiledMap map = TiledMap::read(mapOfLayers(group + "," + objectLayer("1", "")));

    ASSERT_EQ(map.layers.size(), 2U);
    EXPECT_EQ(map.layers[0].name, "2 inner");
    EXPECT_EQ(map.layers[0].objects[0].points, (Points{{16, 16}}));
    EXPECT_EQ(map.layers[1].name, "1");
}

TEST(TiledMapTest, TheClassIsReadUnderTheNamesOfAllVersions) {
    EXPECT_EQ(onlyObject(R"({"id":1,"class":"waterStart"})").kind, "waterStart");
    EXPECT_EQ(onlyObject(R"({"id":1,"type":"waterStart"})").kind, "waterStart");
    EXPECT_EQ(onlyObject(R"({"id":1,"class":"","type":"waterStart"})").kind, "waterStart");
    EXPECT_EQ(onlyObject(R"({"id":1})").kind, "");
}

TEST(TiledMapTest, ATileStandsOnItsPlaceAndTellsItsFlips) {
    const TiledObject plain = onlyObject(R"({"id":1,"gid":3,"x":10,"y":20,"width":30,"height":5})");
    const TiledObject mirrored = onlyObject(R"({"id":1,"gid":2147483651})");
    const TiledObject upsideDown = onlyObject(R"({"id":1,"gid":1073741827})");

    EXPECT_EQ(plain.points, (Points{{10, 15}, {40, 15}, {40, 20}, {10, 20}}));
    EXPECT_FALSE(plain.flippedSideways || plain.flippedOtherwise);
    EXPECT_TRUE(mirrored.flippedSideways && !mirrored.flippedOtherwise);
    EXPECT_TRUE(upsideDown.flippedOtherwise && !upsideDown.flippedSideways);
}

TEST(TiledMapTest, ShapesAreToldApart) {
    EXPECT_EQ(onlyObject(R"({"id":1,"ellipse":true})").shape, TiledShape::ellipse);
    EXPECT_EQ(onlyObject(R"({"id":1,"text":{"text":"a"}})").shape, TiledShape::text);
    EXPECT_EQ(onlyObject(R"({"id":1,"gid":3})").shape, TiledShape::tile);
}

TEST(TiledMapTest, PropertiesKeepTheirKindOfValue) {
    const TiledObject object = onlyObject(
        triangleText("", R"({"name":"a","value":3},{"name":"b","value":2.5},{"name":"c","value":true})"));

    ASSERT_EQ(object.properties.size(), 3U);
    EXPECT_EQ(std::get<std::int64_t>(object.properties[0].value), 3);
    EXPECT_EQ(std::get<double>(object.properties[1].value), 2.5);
    EXPECT_EQ(std::get<bool>(object.properties[2].value), true);
}

TEST(TiledMapTest, ImageLayersAreForTracingAndSilentlyLeftOut) {
    const TiledMap map = TiledMap::read(mapOfLayers(R"({"type":"imagelayer","name":"sketch"})"));

    EXPECT_TRUE(map.layers.empty());
    EXPECT_TRUE(map.warnings.empty());
}

TEST(TiledMapTest, TileLayersAreLeftOutWithAWarning) {
    const TiledMap map = TiledMap::read(mapOfLayers(R"({"type":"tilelayer","name":"Tile Layer 1"})"));

    ASSERT_EQ(map.warnings.size(), 1U);
    EXPECT_EQ(map.warnings[0],
              "layer \"Tile Layer 1\" is a tile layer and left out: a level is made of objects");
}

TEST(TiledMapTest, TextThatIsNoJsonIsRefusedWithItsPlace) {
    EXPECT_EQ(readRefusal("{\n  \"type\": \"map\",\n  oops\n}"),
              "not a Tiled map: the JSON is wrong or breaks off at line 3, column 3");
    EXPECT_EQ(readRefusal(R"({"type":"map")"),
              "not a Tiled map: the JSON is wrong or breaks off at line 1, column 14");
    EXPECT_EQ(readRefusal(R"({"type":1e999})"), "not a Tiled map: a number is too large");
    EXPECT_EQ(readRefusal(""), "is empty");
    EXPECT_EQ(readRefusal("<?xml version=\"1.0\"?>"), "not a Tiled map in JSON: save it as *.tmj");
}

TEST(TiledMapTest, JsonThatIsNoMapIsRefused) {
    EXPECT_EQ(readRefusal("[]"), "the map is not a JSON object");
    EXPECT_EQ(readRefusal("{}"), "not a Tiled map: its type is not \"map\"");
    EXPECT_EQ(readRefusal(R"({"type":"tileset"})"), "not a Tiled map: its type is not \"map\"");
    EXPECT_EQ(readRefusal(R"({"type":7})"), "the map type is not a text");
    EXPECT_EQ(readRefusal(R"({"type":"map","orientation":"orthogonal"})"), "the map has no list of layers");
    EXPECT_EQ(readRefusal(R"({"type":"map","orientation":"orthogonal","layers":{}})"),
              "the map layers is not a list");
}

TEST(TiledMapTest, OnlyAnOrthogonalMapShowsPlacesAsTheyAre) {
    EXPECT_EQ(readRefusal(R"({"type":"map","orientation":"isometric","layers":[]})"),
              "the map is \"isometric\": only an orthogonal map shows a level as it is");
}

TEST(TiledMapTest, AnInfiniteMapIsAsGoodAsAnyOther) {
    EXPECT_EQ(readRefusal(R"({"type":"map","orientation":"orthogonal","infinite":true,"layers":[]})"), "");
}

TEST(TiledMapTest, MembersOfAWrongTypeAreRefusedWithTheirObject) {
    const auto refusal = [](const std::string& object) {
        return readRefusal(mapOfLayers(objectLayer("1", object)));
    };
    EXPECT_EQ(refusal("7"), "an object of layer \"1\": is not a JSON object");
    EXPECT_EQ(refusal(R"({"id":"x"})"), "an object of layer \"1\": id is not a whole number");
    EXPECT_EQ(refusal(R"({"id":18446744073709551615})"),
              "an object of layer \"1\": id is not a whole number");
    EXPECT_EQ(refusal(R"({"id":3,"x":"a"})"), "object 3: x is not a number");
    EXPECT_EQ(refusal(R"({"id":3,"point":1})"), "object 3: point is neither true nor false");
    EXPECT_EQ(refusal(R"({"id":3,"name":"n","class":5})"), "object 3 \"n\": class is not a text");
    EXPECT_EQ(refusal(R"({"id":3,"polygon":{}})"), "object 3: its points are not a list");
    EXPECT_EQ(refusal(R"({"id":3,"polygon":[{"x":1}]})"), "object 3: a point lacks x or y");
    EXPECT_EQ(refusal(R"({"id":3,"properties":[{"name":"a"}]})"), "object 3: property \"a\" has no value");
    EXPECT_EQ(refusal(R"({"id":3,"properties":[{"name":"a","value":{}}]})"),
              "object 3: property \"a\" is neither a number, a text nor true or false");
    EXPECT_EQ(refusal(R"({"id":3,"template":"t.tx"})"),
              "object 3: is an instance of a template; detach it in Tiled first");
}

TEST(TiledMapTest, AnUnknownLayerTypeIsRefused) {
    EXPECT_EQ(readRefusal(mapOfLayers(R"({"type":"x","name":"n"})")),
              "layer \"n\": unknown layer type \"x\"");
}

TEST(TiledMapTest, EndlesslyNestedGroupsAreRefused) {
    std::string layers;
    for (int depth = 0; depth < 100; ++depth) {
        layers.insert(0, R"({"type":"group","name":"g","layers":[)");
        layers += "]}";
    }

    EXPECT_EQ(readRefusal(mapOfLayers(layers)), "layer \"g\": too many groups inside one another");
}

TEST(TiledMapTest, AHundredThousandOpenBracketsAreJustWrongJson) {
    const std::string refusal = readRefusal(std::string(100000, '['));

    EXPECT_EQ(refusal, "not a Tiled map: the JSON is wrong or breaks off at line 1, column 100001");
}

} // namespace tarnwick
