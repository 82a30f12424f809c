#include "tools/level/LevelInfo.h"

#include "level/LevelFile.h"
#include "support/ModuleTest.h"

#include <sstream>

namespace tarnwick {

class LevelInfoTest : public ModuleTest {
protected:
    static std::string infoOf(const LevelFile& level) {
        std::ostringstream output;
        printLevelInfo(output, level);
        return output.str();
    }
};

TEST_F(LevelInfoTest, ALevelIsToldSectionBySection) {
    LevelFile level;
    level.polygons.push_back({0, "gfx\\stone.tga", 3, 0, 1, {{0, 0}, {100, 0}, {100, 50}, {0, 50}}});
    level.polygons.push_back({0, "gfx\\sand.tga", 5, 1, 0, {{-20, 10}, {0, -30}, {5, 10}}});
    level.polygons.push_back({0, "gfx\\stone.tga", 3, 9, 1, {{0, 80}, {100, 80}, {50, 90}}});
    level.polygons.push_back({0, "", 1, 3, 4, {{0, 200}, {10, 200}}});
    level.objects.resize(1);
    level.forces.resize(2);
    level.movers.resize(3, {99, 1.0f, {}, {}});
    level.triggers.resize(4);
    level.soundSources.resize(5);
    level.emitters.resize(6);
    level.waterStart = {5, -6};
    level.cameraStart = {70, 80};

    EXPECT_EQ(infoOf(level), "polygons        4\n"
                             "  modes         2 solid, 1 seen-only, 1 caulk\n"
                             "  surfaces      1 metal, 2 stone, 1 sand\n"
                             "  layers        1 in layer 0, 2 in layer 1, 1 in layer 4\n"
                             "points          12\n"
                             "triangles       4\n"
                             "tree            7 edges, depth 4\n"
                             "objects         1\n"
                             "forces          2\n"
                             "movers          3\n"
                             "triggers        4\n"
                             "sound sources   5\n"
                             "emitters        6\n"
                             "bounding box    -20 -30 to 100 200 (120 by 230 units)\n"
                             "water start     5 -6\n"
                             "camera start    70 80\n"
                             "pictures        2\n"
                             "  \"gfx\\stone.tga\" on 2 polygons\n"
                             "  \"gfx\\sand.tga\" on 1 polygon\n");
}

TEST_F(LevelInfoTest, AnEmptyLevelHasNoneOfEverything) {
    const std::string info = infoOf(LevelFile());

    EXPECT_NE(info.find("  modes         none\n"), std::string::npos);
    EXPECT_NE(info.find("tree            0 edges, depth 0\n"), std::string::npos);
    EXPECT_NE(info.find("bounding box    none\n"), std::string::npos);
    EXPECT_NE(info.find("pictures        0\n"), std::string::npos);
}

TEST_F(LevelInfoTest, APictureIsToldWithThePolygonsAndTheObjectsThatShowIt) {
    LevelFile level;
    level.polygons.push_back({0, "both.tga", 3, 0, 1, {{0, 0}, {100, 0}, {100, 50}}});
    level.objects = {{0, "both.tga", 0, {}, 0}, {0, "own.tga", 0, {}, 0}, {0, "own.tga", 0, {}, 0}};

    const std::string info = infoOf(level);

    EXPECT_TRUE(info.ends_with("pictures        2\n"
                               "  \"both.tga\" on 1 polygon and 1 object\n"
                               "  \"own.tga\" on 2 objects\n"))
        << info;
}

TEST_F(LevelInfoTest, ABoxFromEndToEndOfTheWorldIsMeasuredRight) {
    LevelFile level;
    level.polygons.push_back({0, "", 1, 0, 0, {{-2147483647 - 1, 0}, {2147483647, 0}, {0, 5}}});

    const std::string info = infoOf(level);

    EXPECT_NE(info.find("(4294967295 by 5 units)"), std::string::npos) << info;
}

} // namespace tarnwick
