#include "tools/level/LevelWriter.h"

#include "level/LevelFile.h"
#include "support/TiledText.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>
#include <sstream>

namespace tarnwick {

namespace {

std::string bytesOf(std::initializer_list<int> values) {
    std::string bytes;
    for (const int value : values) {
        bytes += static_cast<char>(value);
    }
    return bytes;
}

/// A level with one record in every section, no two fields alike.
LevelFile fullLevel() {
    LevelFile level;
    level.polygons.push_back({-1, "gfx\\a.tga", 5, 7, 4, {{1, -2}, {3, 4}}});
    level.objects.push_back({7, "b", 3, {-8, 9}, 2});
    level.forces.push_back({4000000000U, {10, 11}, {0.5f, -1.5f}, 12.25f});
    level.movers.push_back({-3, 2.5f, {1, 2}, {3, -4}});
    level.triggers.push_back({5, 300, 0.75f, {{1, 2}, {3, 4}, {5, 6}, {-7, 8}}});
    level.soundSources.push_back({6, {7, -8}, 9, 1, "snd\\c.wav"});
    level.emitters.push_back({10, {11, 12}, {-0.0f, 1.0f}, "cfg\\d.cfg"});
    level.waterStart = {13, -14};
    level.cameraStart = {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()};
    return level;
}

} // namespace

TEST(LevelWriterTest, AnEmptyLevelIsHeaderCountsAndStartPoints) {
    LevelFile level;
    level.waterStart = {5, -6};
    level.cameraStart = {70, 256};

    const std::string bytes = writeLevel(level);

    EXPECT_EQ(bytes, bytesOf({0x97, 0x13, 0x8F, 0x00, 12, 0, 0, 0}) + std::string(28, '\0') +
                         bytesOf({5, 0, 0, 0, 0xFA, 0xFF, 0xFF, 0xFF, 70, 0, 0, 0, 0, 1, 0, 0}));
}

TEST(LevelWriterTest, ACompiledTriangleIsThisByteForByte) {
    const std::string properties = numberProperty("id", "-2") + "," +
                                   textProperty("texture", "gfx\\\\s.tga") + "," +
                                   textProperty("surface", "sand") + "," + textProperty("mode", "caulk");

    const std::string bytes = writeLevel(compileText(mapOfObjects(triangleText("", properties))));

    EXPECT_EQ(bytes, bytesOf({0x97, 0x13, 0x8F, 0x00, 12, 0, 0, 0, // header
                              1,    0,    0,    0,                 // polygons
                              0xFE, 0xFF, 0xFF, 0xFF,              // id
                              9,    0,    0,    0}) +              // texture
                         "gfx\\s.tga" +
                         bytesOf({5,   0, 0, 0,                  // surface
                                  3,   0, 0, 0,                  // mode
                                  1,   0, 0, 0,                  // layer
                                  3,   0, 0, 0,                  // points
                                  100, 0, 0, 0, 200, 0, 0, 0,    // (100, 200)
                                  130, 0, 0, 0, 210, 0, 0, 0,    // (130, 210)
                                  100, 0, 0, 0, 210, 0, 0, 0}) + // (100, 210)
                         std::string(24, '\0') +                 // the other six sections
                         bytesOf({5, 0, 0, 0, 0xFA, 0xFF, 0xFF, 0xFF, 70, 0, 0, 0, 80, 0, 0, 0}));
}

TEST(LevelWriterTest, EverySectionReadsBackTheSame) {
    const LevelFile level = fullLevel();

    std::istringstream file(writeLevel(level), std::ios::binary);
    LevelFile readBack;
    const char* const failure = LevelFile::read(file, readBack);

    EXPECT_EQ(failure, nullptr);
    EXPECT_EQ(readBack, level);
}

TEST(LevelWriterTest, RecordsHaveTheirSizesInTheFile) {
    // Counts and records of the sections in file order, then the start points.
    const std::size_t polygons = 4 + 4 + 4 + 9 + 4 + 4 + 4 + 4 + 2 * 8;
    const std::size_t objects = 4 + 4 + 4 + 1 + 4 + 8 + 1;
    const std::size_t forces = 4 + 24;
    const std::size_t movers = 4 + 24;
    const std::size_t triggers = 4 + 44;
    const std::size_t sounds = 4 + 4 + 8 + 4 + 1 + 4 + 9;
    const std::size_t emitters = 4 + 4 + 8 + 8 + 4 + 9;

    const std::string bytes = writeLevel(fullLevel());

    EXPECT_EQ(bytes.size(), 8 + polygons + objects + forces + movers + triggers + sounds + emitters + 16);
}

} // namespace tarnwick
