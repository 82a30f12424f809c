#include "level/LevelFile.h"
#include "support/ModuleTest.h"
#include "support/TiledText.h"
#include "tools/level/LevelInfo.h"
#include "tools/level/LevelValidator.h"
#include "tools/level/LevelWriter.h"

#include <nlohmann/json.hpp>

#include <random>
#include <sstream>
#include <string>

namespace tarnwick {

namespace {

using Json = nlohmann::json;

constexpr int rounds = 3000; ///< Enough to meet every branch of the readers, few enough for the sanitisers.

/// A map that uses all that a map can.
std::string richMap() {
    const std::string properties = numberProperty("id", "3") + "," + textProperty("texture", "gfx\\\\a.tga") +
                                   "," + textProperty("surface", "wood") + "," +
                                   textProperty("mode", "seen-only") + "," + numberProperty("layer", "2");
    const std::string group = R"({"type":"group","name":"g","offsetx":1.5,"layers":[)" +
                              objectLayer("2", triangleText(R"("rotation":12.5,)")) + "]}";
    const std::string notes =
        R"({"type":"objectgroup","name":"n","class":"notes","objects":[{"id":5,"text":{}}]})";
    const std::string line = R"("polyline":[{"x":0,"y":0},{"x":30,"y":-40}])";
    const std::string works = objectLayer(
        "works",
        R"({"id":20,"class":"mover",)" + line + R"(,"properties":[)" + numberProperty("speed", "2.5") +
            R"(]},{"id":21,"class":"trigger","width":4,"height":5,"properties":[)" +
            textProperty("type", "To_ice_a") + R"(]},{"id":22,"class":"force",)" + line +
            R"(},{"id":23,"class":"emitter","point":true,"properties":[)" +
            textProperty("settings", "a.cfg") +
            R"(]},{"id":24,"class":"sound","ellipse":true,"width":8,"height":8,"properties":[)" +
            textProperty("sound", "b.wav") + R"(]},{"id":25,"class":"polygon","width":9,"height":9,)" +
            R"("properties":[{"name":"dressed","value":true},)" + numberProperty("layer", "1") + "]}");
    return mapOfLayers(works + "," + objectLayer("layer 0", waterStartText + "," + cameraStartText) + "," +
                       objectLayer("1", triangleText("", properties) + R"(,{"id":3,"width":5,"height":5})") +
                       "," + group + "," + notes + R"(,{"type":"imagelayer"},{"type":"tilelayer"})");
}

/// Puts a random value of any type in a random place of a document.
void replaceSomewhere(Json& json, std::mt19937& random) {
    if ((json.is_array() || json.is_object()) && !json.empty() && random() % 8 != 0) {
        auto child = json.begin();
        std::advance(child, static_cast<std::ptrdiff_t>(random() % json.size()));
        if (random() % 16 == 0) {
            json.erase(child);
        } else {
            replaceSomewhere(*child, random);
        }
        return;
    }
    const Json values[] = {nullptr,
                           true,
                           -1,
                           4294967296,
                           1e300,
                           0.5,
                           "",
                           "polygon",
                           Json::array(),
                           Json::object(),
                           Json::array({Json::object({{"x", 1}, {"y", 2}})})};
    json = values[random() % std::size(values)];
}

/// Flips, drops, doubles and cuts bytes.
std::string mangle(std::string bytes, std::mt19937& random) {
    for (unsigned change = 0; change <= random() % 4 && !bytes.empty(); ++change) {
        const std::size_t place = random() % bytes.size();
        switch (random() % 5) {
        case 0:
            bytes[place] = static_cast<char>(random() & 0xFFU);
            break;
        case 1:
            bytes.erase(place, random() % 8);
            break;
        case 2:
            bytes.insert(place, bytes.substr(place, random() % 32));
            break;
        case 3:
            bytes[place] = static_cast<char>(static_cast<unsigned char>(bytes[place]) ^ (1U << random() % 8));
            break;
        default:
            bytes.resize(random() % 16 == 0 ? place : bytes.size());
        }
    }
    return bytes;
}

/// A map either gives a level that reads back the same, or is refused with a reason of one line.
void expectCompiledOrRefused(const std::string& text) {
    std::vector<std::string> warnings;
    try {
        const LevelFile level = compileText(text, warnings);
        std::istringstream file(writeLevel(level), std::ios::binary);
        LevelFile readBack;
        ASSERT_EQ(LevelFile::read(file, readBack), nullptr) << text;
        ASSERT_EQ(readBack, level) << text;
    } catch (const ToolError& error) {
        const std::string reason = error.what();
        ASSERT_FALSE(reason.empty()) << text;
        ASSERT_EQ(reason.find('\n'), std::string::npos) << text;
    }
}

} // namespace

class LevelToolFuzzTest : public ModuleTest {};

TEST_F(LevelToolFuzzTest, MapsWithWrongValuesAreCompiledOrRefused) {
    std::mt19937 random(1);
    for (int round = 0; round < rounds; ++round) {
        Json map = Json::parse(richMap());
        for (unsigned change = 0; change <= random() % 3; ++change) {
            replaceSomewhere(map, random);
        }
        expectCompiledOrRefused(map.dump());
    }
}

TEST_F(LevelToolFuzzTest, MangledMapsAreCompiledOrRefused) {
    std::mt19937 random(2);
    for (int round = 0; round < rounds; ++round) {
        expectCompiledOrRefused(mangle(richMap(), random));
    }
}

TEST_F(LevelToolFuzzTest, RandomBytesAreNoMap) {
    std::mt19937 random(3);
    for (int round = 0; round < rounds; ++round) {
        std::string bytes(random() % 64, '\0');
        for (char& byte : bytes) {
            byte = static_cast<char>(random() & 0xFFU);
        }
        EXPECT_NE(refusalOf(bytes), "");
    }
}

TEST_F(LevelToolFuzzTest, MangledLevelsAreToldAboutOrRefused) {
    std::mt19937 random(4);
    LevelFile level =
        compileText(mapOfObjects(triangleText() + R"(,{"id":3,"x":9,"y":9,"width":5,"height":5})"));
    level.objects.push_back({7, "b", 3, {-8, 9}, 2});
    level.movers.push_back({-3, 2.5f, {1, 2}, {3, -4}});
    level.triggers.push_back({5, 300, 0.75f, {{1, 2}, {3, 4}, {5, 6}, {-7, 8}}});
    level.soundSources.push_back({6, {7, -8}, 9, 1, "snd\\c.wav"});
    const std::string whole = writeLevel(level);
    int read = 0;
    for (int round = 0; round < rounds; ++round) {
        std::istringstream file(mangle(whole, random), std::ios::binary);
        LevelFile mangled;
        if (LevelFile::read(file, mangled) == nullptr) {
            std::ostringstream output;
            printLevelInfo(output, mangled);
            validateLevel(mangled, [](const std::string& name) { return name.empty(); });
            ++read;
        }
    }
    EXPECT_GT(read, rounds / 20); // the mangling must not be so coarse that nothing gets through
}

} // namespace tarnwick
