#include "tools/level/Dressing.h"

#include "tools/level/LevelNames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <random>
#include <string>

namespace tarnwick {

namespace {

using Record = LevelFile::PolygonRecord;
using Points = std::vector<LevelFile::Point>;

constexpr std::int32_t wood = 2;
constexpr std::int32_t stone = 3;

Record rectangle(std::int32_t left, std::int32_t top, std::int32_t right, std::int32_t bottom) {
    return {
        0, "gfx\\wood.tga", wood, modeSolid, 1, {{left, top}, {right, top}, {right, bottom}, {left, bottom}}};
}

/// A polygon far out, so that no edge of the others lies on the border of the level.
Record frame() {
    Record record = rectangle(-5000, -5000, 5000, 5000);
    record.layer = 4;
    return record;
}

/// The finish of these polygons, of which the first `dressed` are dressed.
std::vector<Record> finishOf(std::vector<Record> polygons, std::size_t dressed) {
    std::vector<bool> marks(polygons.size(), false);
    std::fill_n(marks.begin(), dressed, true);
    const std::size_t before = polygons.size();
    addFinish(polygons, marks);
    polygons.erase(polygons.begin(), polygons.begin() + static_cast<std::ptrdiff_t>(before));
    return polygons;
}

std::vector<Points> pointsOf(const std::vector<Record>& records, const std::string& picture) {
    std::vector<Points> points;
    for (const Record& record : records) {
        if (record.textureName == picture) {
            points.push_back(record.points);
        }
    }
    return points;
}

} // namespace

TEST(DressingTest, ARectangleGetsItsOutlineAndItsLightAndDarkEdges) {
    const std::vector<Record> finish = finishOf({rectangle(0, 0, 100, 20), frame()}, 1);

    EXPECT_EQ(pointsOf(finish, "gfx\\outline.tga"),
              (std::vector<Points>{{{0, 0}, {100, 0}, {102, -2}, {-2, -2}},
                                   {{100, 0}, {100, 20}, {102, 22}, {102, -2}},
                                   {{100, 20}, {0, 20}, {-2, 22}, {102, 22}},
                                   {{0, 20}, {0, 0}, {-2, -2}, {-2, 22}}}));
    EXPECT_EQ(pointsOf(finish, "gfx\\edge_wood_light.tga"),
              (std::vector<Points>{{{0, 0}, {100, 0}, {98, 2}, {2, 2}}}));
    EXPECT_EQ(pointsOf(finish, "gfx\\edge_wood_light_soft.tga"),
              (std::vector<Points>{{{0, 20}, {0, 0}, {2, 2}, {2, 18}}}));
    EXPECT_EQ(pointsOf(finish, "gfx\\edge_wood_dark.tga").size(), 2U);
    EXPECT_EQ(finish.size(), 8U);
}

TEST(DressingTest, TheDirectionOfDrawingDoesNotMatter) {
    Record turned = rectangle(0, 0, 100, 20);
    std::reverse(turned.points.begin(), turned.points.end());

    const std::vector<Record> finish = finishOf({turned, frame()}, 1);

    EXPECT_EQ(finish.size(), 8U);
    EXPECT_EQ(pointsOf(finish, "gfx\\edge_wood_light.tga"),
              (std::vector<Points>{{{100, 0}, {0, 0}, {2, 2}, {98, 2}}}));
}

TEST(DressingTest, OnlyNearStoneDarkensTowardsItsEdge) {
    Record wall = rectangle(0, 0, 100, 100);
    wall.surfaceType = stone;
    wall.textureName = "gfx\\stone.tga";
    Record farWall = wall;
    farWall.textureName = "gfx\\stone_far.tga";

    const std::vector<Record> near = finishOf({wall, frame()}, 1);
    const std::vector<Record> far = finishOf({farWall, frame()}, 1);

    EXPECT_EQ(near.size(), 20U);
    EXPECT_EQ(pointsOf(near, "gfx\\shade_10.tga").front(), (Points{{0, 0}, {100, 0}, {90, 10}, {10, 10}}));
    EXPECT_EQ(far.size(), 8U);
    EXPECT_EQ(pointsOf(far, "gfx\\outline_far.tga").size(), 4U);
    EXPECT_EQ(pointsOf(far, "gfx\\edge_far_dark.tga").size(), 2U);
}

TEST(DressingTest, BandsComeBeforeOutlinesAndOutlinesBeforeStripsInAllLayers) {
    Record low = rectangle(0, 0, 100, 20);
    low.layer = 0;
    Record high = rectangle(0, 0, 100, 20);
    high.surfaceType = stone;
    high.layer = 2;

    const std::vector<Record> finish = finishOf({high, low, frame()}, 2);

    const auto rank = [](const Record& record) {
        const bool isBand = record.textureName.starts_with("gfx\\shade");
        const bool isOutline = record.textureName.starts_with("gfx\\outline");
        return std::pair(isBand ? 0 : isOutline ? 1 : 2, record.layer);
    };
    EXPECT_TRUE(std::is_sorted(finish.begin(), finish.end(),
                               [&](const Record& a, const Record& b) { return rank(a) < rank(b); }));
}

TEST(DressingTest, WhereTwoWallsOfOnePictureMeetThereIsNothing) {
    const std::vector<Record> finish =
        finishOf({rectangle(0, 0, 100, 20), rectangle(100, 0, 200, 20), frame()}, 2);

    EXPECT_EQ(pointsOf(finish, "gfx\\outline.tga").size(), 6U);
}

TEST(DressingTest, TheFinishGoesStraightOnFromOneWallToTheNext) {
    const std::vector<Record> finish =
        finishOf({rectangle(0, 0, 100, 20), rectangle(100, 0, 200, 20), frame()}, 2);

    EXPECT_EQ(pointsOf(finish, "gfx\\edge_wood_light.tga"),
              (std::vector<Points>{{{0, 0}, {100, 0}, {100, 2}, {2, 2}},
                                   {{100, 0}, {200, 0}, {198, 2}, {100, 2}}}));
    EXPECT_EQ(pointsOf(finish, "gfx\\outline.tga").front(), (Points{{0, 0}, {100, 0}, {100, -2}, {-2, -2}}));
}

TEST(DressingTest, AnEdgeThatIsPartlyCoveredIsFinishedWhereItIsOpen) {
    const std::vector<Record> finish =
        finishOf({rectangle(0, 0, 100, 20), rectangle(40, -30, 60, 0), frame()}, 1);

    EXPECT_EQ(
        pointsOf(finish, "gfx\\edge_wood_light.tga"),
        (std::vector<Points>{{{0, 0}, {40, 0}, {40, 2}, {2, 2}}, {{60, 0}, {100, 0}, {98, 2}, {60, 2}}}));
}

TEST(DressingTest, AWallOfAnEarlierPictureHidesNothingOfALaterOne) {
    Record bed = rectangle(20, 0, 80, 10);
    bed.textureName = "gfx\\cloth.tga";

    const std::vector<Record> later = finishOf({rectangle(0, 0, 100, 20), bed, frame()}, 2);

    EXPECT_EQ(pointsOf(later, "gfx\\outline.tga").size(), 4U + 5U); // the top of the wood in two pieces
}

TEST(DressingTest, OtherLayersOtherIdsAndWhatIsNotSeenHideNothing) {
    Record above = rectangle(100, 0, 200, 20);
    above.layer = 2;
    Record moving = rectangle(0, 20, 100, 40);
    moving.polygonId = 5;
    Record lid = rectangle(0, -20, 100, 0);
    lid.polygonMode = modeInvisible;

    const std::vector<Record> finish = finishOf({rectangle(0, 0, 100, 20), above, moving, lid, frame()}, 1);

    EXPECT_EQ(pointsOf(finish, "gfx\\outline.tga").size(), 4U);
}

TEST(DressingTest, TheFinishCarriesIdLayerAndSurfaceOfItsWall) {
    Record lift = rectangle(0, 0, 100, 20);
    lift.polygonId = 12;
    lift.layer = 3;

    for (const Record& record : finishOf({lift, frame()}, 1)) {
        EXPECT_EQ(record.polygonId, 12);
        EXPECT_EQ(record.layer, 3U);
        EXPECT_EQ(record.surfaceType, wood);
        EXPECT_EQ(record.polygonMode, modeSeenOnly);
    }
}

TEST(DressingTest, NothingIsAddedToTheBorderToUnseenAndToUnmarkedPolygons) {
    Record hidden = rectangle(0, 0, 50, 50);
    hidden.polygonMode = modeInvisible;
    Record caulk = hidden;
    caulk.polygonMode = modeCaulk;

    EXPECT_TRUE(finishOf({rectangle(0, 0, 100, 20)}, 1).empty());
    EXPECT_TRUE(finishOf({hidden, caulk, frame()}, 2).empty());
    EXPECT_TRUE(finishOf({rectangle(0, 0, 100, 20), frame()}, 0).empty());
    EXPECT_TRUE(finishOf({}, 0).empty());
}

TEST(DressingTest, ABandThatIsWiderThanABendStaysSound) {
    Record wall = rectangle(0, 0, 100, 60);
    wall.surfaceType = stone;
    wall.points = {{0, 0}, {40, 0}, {42, 5}, {44, 0}, {100, 0}, {100, 60}, {0, 60}};

    const std::vector<Record> finish = finishOf({wall, frame()}, 1);

    for (const Record& record : finish) {
        if (record.points.size() == 4) {
            const auto& [a, b, c, d] =
                std::array{record.points[0], record.points[1], record.points[2], record.points[3]};
            EXPECT_GE((b.x - a.x) * (c.x - d.x) + (b.y - a.y) * (c.y - d.y), 0) << record.textureName;
        }
    }
    EXPECT_EQ(pointsOf(finish, "gfx\\shade_10.tga").size(), 7U);
}

TEST(DressingTest, AbsurdOutlinesAreDressedWithoutHarm) {
    constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    Record huge = rectangle(least, least, most, most);
    huge.points.push_back({0, 0});
    Record flat = rectangle(0, 0, 10, 0);
    Record repeated = rectangle(3, 3, 3, 3);
    Record empty = rectangle(0, 0, 1, 1);
    empty.points.clear();

    const std::vector<Record> finish = finishOf({huge, flat, repeated, empty}, 4);

    EXPECT_TRUE(std::none_of(finish.begin(), finish.end(),
                             [](const Record& record) { return record.points.size() < 3; }));
}

} // namespace tarnwick
