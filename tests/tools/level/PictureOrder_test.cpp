#include "tools/level/PictureOrder.h"

#include "support/TiledText.h"
#include "tools/level/LevelDecompiler.h"
#include "tools/level/LevelGeometry.h"
#include "tools/level/LevelInfo.h"
#include "tools/level/LevelNames.h"
#include "tools/level/LevelValidator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

/// A rectangle of 100 by 100, object NUMBER, with its left side at `left`.
std::string wallText(int number, int left, const std::string& picture, const std::string& more = "") {
    return R"({"id":)" + std::to_string(number) + R"(,"name":"","class":"polygon","x":)" +
           std::to_string(left) + R"(,"y":0,"width":100,"height":100,"properties":[)" +
           textProperty("texture", "gfx\\\\" + picture + ".tga") + more + "]}";
}

std::string dressedWall(int number, int left, const std::string& picture) {
    return wallText(number, left, picture, R"(,{"name":"dressed","type":"bool","value":true})");
}

/// A map with a dressed wall between two others, since what lies on the border of a level gets no finish.
std::string dressedBetween(const std::string& picture) {
    return mapOfObjects(wallText(1, -300, picture) + "," + dressedWall(2, 0, picture) + "," +
                        wallText(3, 300, picture));
}

/// The layers of a level's polygons behind the list of pictures.
std::vector<std::uint32_t> layersOf(LevelFile level) {
    if (beginsWithOrder(level)) {
        takeOrderAway(level);
    }
    std::vector<std::uint32_t> layers;
    for (const LevelFile::PolygonRecord& record : level.polygons) {
        layers.push_back(record.layer);
    }
    return layers;
}

using Layers = std::vector<std::uint32_t>;
using Lines = std::vector<std::string>;

LevelFile::PolygonRecord squareOf(const std::string& picture, std::int32_t left, std::int32_t id = 0) {
    return {id, picture, 3, modeSeenOnly, 1, {{left, 0}, {left + 100, 0}, {left + 100, 100}, {left, 100}}};
}

/// The findings that speak of overlaps.
Lines overlapFindings(const LevelFile& level, const PictureSize& sizeOf = PictureSize()) {
    Lines lines = validateLevel(level, nullptr, sizeOf);
    std::erase_if(lines, [](const std::string& line) { return line.find("overlap") == std::string::npos; });
    return lines;
}

} // namespace

/// Would catch a picture of the list that is named twice, or one that the finish needs and the list lacks.
TEST(PictureOrderTest, EveryPictureHasOnePlace) {
    std::set<std::string_view> names(orderedPictures.begin(), orderedPictures.end());

    EXPECT_EQ(names.size(), orderedPictures.size());
    EXPECT_EQ(placeInOrder("GFX\\Background.TGA"), 0U); // as the game compares names
    EXPECT_EQ(placeInOrder("gfx\\mine.tga"), std::nullopt);
    EXPECT_LT(placeInOrder("gfx\\stone.tga"), placeInOrder("gfx\\outline.tga"));
    EXPECT_LT(placeInOrder("gfx\\shade_3.tga"), placeInOrder("gfx\\outline.tga"));
    EXPECT_LT(placeInOrder("gfx\\outline.tga"), placeInOrder("gfx\\edge_stone_dark.tga"));
}

/// Would catch a level that shows the game's pictures without their list, and one that gets it for nothing.
TEST(PictureOrderTest, TwoOrderedPicturesOnALayerWantTheList) {
    const LevelFile two = compileText(mapOfObjects(wallText(1, 0, "stone") + "," + wallText(2, 50, "sand")));
    const LevelFile one = compileText(mapOfObjects(wallText(1, 0, "stone") + "," + wallText(2, 50, "stone")));

    EXPECT_TRUE(beginsWithOrder(two));
    EXPECT_EQ(two.polygons.size(), orderedPictures.size() + 2);
    EXPECT_TRUE(two.polygons.front().points.empty());
    EXPECT_EQ(overlapFindings(two), Lines{});
    EXPECT_EQ(one.polygons.size(), 2U);
}

/// Would catch a wall of a picture of its own that covers its finish.
TEST(PictureOrderTest, TheFinishOfAPictureThatIsNotInTheListLiesALayerUp) {
    const LevelFile level = compileText(dressedBetween("mine"));

    const Layers layers = layersOf(level);

    EXPECT_EQ(layers.front(), 1U);
    EXPECT_EQ(layers.back(), 2U);
    const LevelFile::PolygonRecord& strip = level.polygons.back();
    EXPECT_TRUE(strip.textureName.starts_with("gfx\\edge_stone")) << strip.textureName;
    EXPECT_EQ(overlapFindings(level), Lines{});
}

/// Would catch a finish that is put in front of the water for no reason.
TEST(PictureOrderTest, TheFinishOfAnOrderedPictureStaysOnItsLayer) {
    const Layers layers = layersOf(compileText(dressedBetween("stone")));

    EXPECT_GT(layers.size(), 3U);
    EXPECT_EQ(layers, Layers(layers.size(), 1));
}

/// Would catch walls of two pictures of their own that stay on one layer, or a maker who is not told.
TEST(PictureOrderTest, WhatLiesOverAnotherPictureGoesALayerUp) {
    const std::string map = mapOfObjects(wallText(1, 0, "mine") + "," + wallText(2, 50, "yours") + "," +
                                         wallText(3, 200, "hers"));
    std::vector<std::string> warnings;

    const LevelFile level = compileText(map, warnings);

    EXPECT_EQ(layersOf(level), (Layers{1, 2, 1}));
    EXPECT_EQ(warnings,
              Lines{"object 2 lies over object 1, which shows another picture, and goes to layer 2"});
    EXPECT_EQ(overlapFindings(level), Lines{});
}

/// Would catch a third wall that is compared with the layer of the map and not with the one that a wall went
/// to.
TEST(PictureOrderTest, AStackOfPicturesGetsALayerEach) {
    std::vector<std::string> warnings;

    const LevelFile level = compileText(mapOfObjects(wallText(1, 0, "a") + "," + wallText(2, 30, "b") + "," +
                                                     wallText(3, 60, "c") + "," + wallText(4, 90, "d") + "," +
                                                     wallText(5, 95, "e")),
                                        warnings);

    // 5 has no layer left above 4, and validate tells.
    EXPECT_EQ(layersOf(level), (Layers{1, 2, 3, 4, 4}));
    EXPECT_EQ(overlapFindings(level).size(), 1U);
}

/// Would catch sides or corners that count as an overlap.
TEST(PictureOrderTest, NeighboursDoNotOverlap) {
    const LevelFile level =
        compileText(mapOfObjects(wallText(1, 0, "mine") + "," + wallText(2, 100, "yours")));

    EXPECT_EQ(layersOf(level), (Layers{1, 1}));
    EXPECT_EQ(overlapFindings(level), Lines{});
}

/// Would catch a test of boxes alone: the triangles' boxes are equal.
TEST(PictureOrderTest, TwoHalvesOfASquareDoNotOverlap) {
    LevelFile level;
    level.polygons = {{0, "gfx\\a.tga", 3, modeSeenOnly, 1, {{0, 0}, {100, 0}, {0, 100}}},
                      {0, "gfx\\b.tga", 3, modeSeenOnly, 1, {{100, 0}, {100, 100}, {0, 100}}}};
    EXPECT_EQ(overlapFindings(level), Lines{});

    level.polygons[1].points = {{99, 0}, {100, 100}, {0, 100}};
    EXPECT_EQ(overlapFindings(level).size(), 1U);
}

/// Would catch a gate that is raised although all that moves is drawn first.
TEST(PictureOrderTest, WhatMovesLiesBehindItsLayerAnyway) {
    LevelFile level;
    level.polygons = {squareOf("gfx\\a.tga", 0, 7), squareOf("gfx\\b.tga", 50)};
    level.movers.push_back({7, 1.0f, {0, 0}, {0, 50}});
    std::vector<std::size_t> raised;

    orderByLayers(level, [&](std::size_t polygon, std::size_t) { raised.push_back(polygon); });

    EXPECT_TRUE(raised.empty());
    EXPECT_EQ(overlapFindings(level), Lines{});
}

/// Would catch overlaps that nobody names, layers that are mixed up, and polygons that are not seen.
TEST(PictureOrderTest, ValidateNamesOverlapsOfDifferentPicturesOnALayer) {
    LevelFile level;
    level.polygons = {squareOf("gfx\\a.tga", 0), squareOf("gfx\\b.tga", 90), squareOf("gfx\\A.TGA", -50),
                      squareOf("gfx\\b.tga", 0), squareOf("gfx\\b.tga", 0)};
    level.polygons[3].layer = 2;
    level.polygons[4].polygonMode = modeInvisible;

    EXPECT_EQ(
        overlapFindings(level),
        Lines{"polygon 1 at (90, 0): overlaps polygon 0, which shows another picture on the same layer: "
              "which of them lies on top hangs on the level loaded before"});
}

/// Would catch a level from before the list that passes for one with it.
TEST(PictureOrderTest, ValidateNamesALevelThatLacksTheList) {
    LevelFile level;
    level.polygons = {squareOf("gfx\\stone.tga", 0), squareOf("gfx\\sand.tga", 50)};

    EXPECT_EQ(overlapFindings(level).size(), 1U);
    putOrderInFront(level);
    EXPECT_EQ(overlapFindings(level), Lines{});
}

/// Would catch objects whose sizes are left out or halved.
TEST(PictureOrderTest, ValidateNamesObjectsThatOverlap) {
    LevelFile level;
    level.objects = {{0, "gfx\\a.tga", 1, {0, 0}, 0}, {0, "gfx\\b.tga", 1, {29, 0}, 0}};
    const PictureSize sizes = [](const std::string& name) {
        return std::optional(name == "gfx\\a.tga" ? std::pair(40, 8) : std::pair(20, 8));
    };

    EXPECT_EQ(
        overlapFindings(level, sizes),
        Lines{"object 1: overlaps object 0, which shows another picture on the same layer: which of them "
              "lies on top hangs on the level loaded before"});
    level.objects[1].position.x = 30; // side to side
    EXPECT_EQ(overlapFindings(level, sizes), Lines{});
}

/// Would catch a map that compiles to other bytes than those of the level that it was made of.
TEST(PictureOrderTest, AnyLevelComesBackFromItsMap) {
    LevelFile plain;
    plain.polygons = {squareOf("gfx\\a.tga", 0), squareOf("gfx\\b.tga", 50)}; // would be raised
    LevelFile lacking;
    lacking.polygons = {squareOf("gfx\\stone.tga", 0), squareOf("gfx\\sand.tga", 50)};
    LevelFile ordered = lacking;
    putOrderInFront(ordered);
    LevelFile needless;
    putOrderInFront(needless);

    for (const LevelFile& level : {plain, lacking, ordered, needless}) {
        EXPECT_EQ(compileText(decompileLevel(level, "", nullptr)), level);
    }
    EXPECT_EQ(decompileLevel(ordered, "", nullptr).find("ordersPictures"), std::string::npos);
    EXPECT_EQ(decompileLevel(ordered, "", nullptr).find("background.tga"), std::string::npos);
    EXPECT_NE(decompileLevel(lacking, "", nullptr).find("ordersPictures"), std::string::npos);
}

/// Would catch a switch that takes any value for true.
TEST(PictureOrderTest, TheSwitchOfTheMapIsTrueOrFalse) {
    std::string map = mapOfObjects("");
    map.insert(map.rfind('}'), R"(,"properties":[)" + numberProperty("ordersPictures", "1") + "]");

    EXPECT_EQ(refusalOf(map), "property \"ordersPictures\" of the map must be true or false");
}

/// Would catch a list that stands among the pictures that the level shows.
TEST(PictureOrderTest, InfoLeavesTheListOut) {
    LevelFile level;
    level.polygons = {squareOf("gfx\\stone.tga", 0), squareOf("gfx\\sand.tga", 50)};
    putOrderInFront(level);
    std::ostringstream output;

    printLevelInfo(output, level);

    EXPECT_NE(output.str().find("pictures        2\n"), std::string::npos) << output.str();
    EXPECT_NE(output.str().find("in the order of the game's pictures"), std::string::npos);
}

} // namespace tarnwick
