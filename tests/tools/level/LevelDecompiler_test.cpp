#include "tools/level/LevelDecompiler.h"

#include "level/LevelFile.h"
#include "support/TiledText.h"
#include "tools/level/LevelWriter.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <bit>
#include <cstdint>
#include <iterator>
#include <limits>
#include <random>

namespace tarnwick {

namespace {

using Json = nlohmann::json;

/// A level in which every section is full of values of all kinds, absurd ones among them.
class RandomRecords {
public:
    explicit RandomRecords(std::uint32_t seed)
        : random(seed) {}

    LevelFile make() {
        LevelFile level;
        fill(level.polygons, [&] {
            LevelFile::PolygonRecord record{number(),
                                            name(),
                                            static_cast<std::int32_t>(below(5)) + 1,
                                            below(4) == 0 ? number() : static_cast<std::int32_t>(below(4)),
                                            below(5),
                                            {}};
            record.points.resize(below(6));
            for (LevelFile::Point& place : record.points) {
                place = point();
            }
            return record;
        });
        fill(level.objects, [&] {
            return LevelFile::ObjectRecord{static_cast<std::uint32_t>(number()), name(), below(5), point(),
                                           static_cast<std::uint8_t>(below(4) == 0 ? below(256) : below(2))};
        });
        fill(level.forces, [&] {
            return LevelFile::ForceRecord{
                static_cast<std::uint32_t>(number()), point(), {decimal(), decimal()}, decimal()};
        });
        fill(level.movers, [&] { return LevelFile::MoverRecord{number(), decimal(), point(), point()}; });
        fill(level.triggers, [&] { return trigger(); });
        fill(level.soundSources, [&] {
            return LevelFile::SoundSourceRecord{number(), point(),
                                                static_cast<std::int32_t>(below(2) * (random() >> 1U)),
                                                static_cast<std::uint8_t>(below(256)), name()};
        });
        fill(level.emitters, [&] {
            return LevelFile::EmitterRecord{number(), point(), {decimal(), decimal()}, name()};
        });
        level.waterStart = point();
        level.cameraStart = point();
        return level;
    }

private:
    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(random()) % limit; }

    std::int32_t number() {
        return below(2) == 0 ? static_cast<std::int32_t>(below(20)) - 5 : std::bit_cast<std::int32_t>(bits());
    }
    std::uint32_t bits() { return static_cast<std::uint32_t>(random()); }
    LevelFile::Point point() { return {number(), number()}; }

    float decimal() {
        switch (below(4)) {
        case 0:
            return static_cast<float>(below(9)) - 4.0f;
        case 1:
            return -0.0f;
        default:
            return std::bit_cast<float>(bits()); // not numbers and infinities among them
        }
    }

    std::string name() {
        const std::string pieces[] = {
            "", "gfx\\stone.tga", "gfx\\edge_wood_dark.tga", "\xC3\xA9\"\\/", std::string(1, '\0'), "x"};
        return pieces[below(6)] + pieces[below(6)];
    }

    LevelFile::TriggerRecord trigger() {
        LevelFile::TriggerRecord record{number(), static_cast<std::int32_t>(below(1000)) - 2, decimal(), {}};
        const LevelFile::Point a = point();
        const LevelFile::Point c = point();
        record.corners[0] = a;
        record.corners[1] = {c.x, a.y};
        record.corners[2] = c;
        record.corners[3] = below(2) == 0 ? point() : LevelFile::Point{a.x, c.y};
        return record;
    }

    template <typename Record, typename Make>
    void fill(std::vector<Record>& section, const Make& make) {
        for (std::uint32_t count = below(8); count > 0; --count) {
            section.push_back(make());
        }
    }

    std::mt19937 random;
};

std::string decompiled(const LevelFile& level) {
    return decompileLevel(level, "../../data/", nullptr);
}

} // namespace

TEST(LevelDecompilerTest, CompilingAgainGivesTheSameBytes) {
    for (std::uint32_t seed = 0; seed < 500; ++seed) {
        const LevelFile level = RandomRecords(seed).make();
        std::vector<std::string> warnings;

        const LevelFile again = compileText(decompiled(level), warnings);

        ASSERT_EQ(writeLevel(again), writeLevel(level)) << "seed " << seed;
        ASSERT_EQ(warnings, std::vector<std::string>{}) << "seed " << seed;
    }
}

TEST(LevelDecompilerTest, AnEmptyLevelIsItsTwoStartPoints) {
    LevelFile level;
    level.waterStart = {1, -2};

    const Json map = Json::parse(decompiled(level));

    ASSERT_EQ(map.at("layers").size(), 1U);
    EXPECT_EQ(map.at("layers")[0].at("name"), "start");
    EXPECT_EQ(map.at("layers")[0].at("objects")[0].at("class"), "waterStart");
    EXPECT_EQ(map.at("layers")[0].at("objects")[0].at("y"), -2);
    EXPECT_TRUE(map.at("tilesets").empty());
}

TEST(LevelDecompilerTest, PolygonsLieInLayersOfTheirOwnInFileOrder) {
    LevelFile level;
    for (const std::uint32_t layer : {1U, 1U, 0U, 1U}) {
        level.polygons.push_back({0, "", 3, 0, layer, {{0, 0}, {1, 0}, {0, 1}}});
    }

    const Json map = Json::parse(decompiled(level));

    ASSERT_EQ(map.at("layers").size(), 4U);
    EXPECT_EQ(map.at("layers")[0].at("name"), "1 polygons");
    EXPECT_EQ(map.at("layers")[0].at("objects").size(), 2U);
    EXPECT_EQ(map.at("layers")[1].at("name"), "0 polygons");
    EXPECT_EQ(map.at("layers")[2].at("name"), "1 polygons");
}

TEST(LevelDecompilerTest, TheFinishIsShownAsTheSeenOnlyPolygonsThatItIs) {
    const std::string dressed = R"({"name":"dressed","type":"bool","value":true})";
    const LevelFile level = compileText(
        mapOfObjects(triangleText("", dressed + "," + textProperty("texture", "gfx\\\\stone.tga"))));

    const Json map = Json::parse(decompiled(level));

    const Json& objects = map.at("layers")[0].at("objects");
    EXPECT_EQ(objects[0].at("name"), "");
    EXPECT_EQ(objects[1].at("name"), "shade");
    EXPECT_EQ(objects.back().at("name"), "edge strip");
    for (std::size_t number = 1; number < objects.size(); ++number) {
        EXPECT_EQ(objects[number].at("properties")[0].at("value"), "seen-only");
    }
}

TEST(LevelDecompilerTest, ObjectsAreTilesAsLargeAsTheirPictures) {
    LevelFile level;
    level.objects.push_back({0, "gfx\\lamp.tga", 2, {100, 50}, 1});
    const auto size = [](const std::string& name) {
        return name == "gfx\\lamp.tga" ? std::optional(std::pair(24, 35)) : std::nullopt;
    };

    const Json map = Json::parse(decompileLevel(level, "../../data/", size));

    const Json& object = map.at("layers")[0].at("objects")[0];
    EXPECT_EQ(object.at("gid"), 0x80000001U);
    EXPECT_EQ(object.at("x"), 88);
    EXPECT_EQ(object.at("y"), 67.5);
    EXPECT_EQ(object.at("width"), 24);
    EXPECT_EQ(map.at("tilesets")[0].at("tiles")[0].at("image"), "../../data/gfx/lamp.tga");
    EXPECT_EQ(map.at("tilesets")[0].at("tileheight"), 35);
}

TEST(LevelDecompilerTest, RectanglesLinesAndCirclesAreDrawnAsSuch) {
    LevelFile level;
    level.movers.push_back({1, 2.0f, {3, 4}, {13, 24}});
    level.forces.push_back({1, {3, 4}, {0.5f, -1.0f}, 2.0f});
    level.triggers.push_back({1, 801, 0.0f, {{0, 0}, {8, 0}, {8, 6}, {0, 6}}});
    level.soundSources.push_back({1, {100, 100}, 40, 1, "a.wav"});

    const Json layers = Json::parse(decompiled(level)).at("layers");

    EXPECT_EQ(layers[0].at("objects")[0].at("polyline")[1], (Json{{"x", 10}, {"y", 20}}));
    EXPECT_EQ(layers[1].at("objects")[0].at("polyline")[1], (Json{{"x", 0.5}, {"y", -1.0}}));
    EXPECT_EQ(layers[2].at("objects")[0].at("width"), 8);
    EXPECT_EQ(layers[2].at("objects")[0].at("properties")[1].at("value"), "Level_end_a");
    EXPECT_TRUE(layers[3].at("objects")[0].at("ellipse"));
    EXPECT_EQ(layers[3].at("objects")[0].at("x"), 60);
}

TEST(LevelDecompilerTest, ANameThatIsNotUtf8IsRefused) {
    const auto refusal = [](const LevelFile& level) -> std::string {
        try {
            decompiled(level);
        } catch (const ToolError& error) {
            return error.what();
        }
        return {};
    };
    LevelFile polygon;
    polygon.polygons.resize(2);
    polygon.polygons[1].textureName = "\xFF";
    LevelFile sound;
    sound.soundSources.push_back({0, {}, 1, 1, "\xC3"});

    EXPECT_EQ(refusal(polygon), "polygon 1: its file name is not UTF-8, and a map cannot hold it");
    EXPECT_EQ(refusal(sound), "sound 0: its file name is not UTF-8, and a map cannot hold it");
}

} // namespace tarnwick
