// The committed files of the level maker: they must agree with the tool and with one another.

#include "console/GLConsole.h"
#include "level/LevelFile.h"
#include "mechanisms/TriggerManager.h"
#include "support/ConsoleAnswer.h"
#include "support/ModuleTest.h"
#include "support/TiledText.h"
#include "tools/level/LevelCompiler.h"
#include "tools/level/LevelDecompiler.h"
#include "tools/level/LevelNames.h"
#include "tools/level/LevelValidator.h"
#include "tools/level/LevelWriter.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

using Json = nlohmann::json;

/// A file of the repository; tests run in its root.
std::string readRepositoryFile(const std::string& name) {
    std::ifstream file(TARNWICK_SOURCE_DIR "/" + name, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << name;
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

/// The type of this name in the Tiled project.
Json projectType(const std::string& name) {
    const Json project = Json::parse(readRepositoryFile("assets/levels/tarnwick.tiled-project"));
    for (const Json& type : project.at("propertyTypes")) {
        if (type.at("name") == name) {
            return type;
        }
    }
    ADD_FAILURE() << name;
    return {};
}

/// The value that the project shows for a member of a class.
Json shownDefault(const std::string& name, const std::string& kind = "polygon") {
    const Json type = projectType(kind);
    for (const Json& member : type.at("members")) {
        if (member.at("name") == name) {
            return member.at("value");
        }
    }
    ADD_FAILURE() << name;
    return {};
}

/// The levels that come with the game.
std::vector<std::string> levelNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(TARNWICK_SOURCE_DIR "/assets/levels")) {
        if (entry.path().extension() == ".tmj") {
            names.push_back(entry.path().stem().string());
        }
    }
    EXPECT_FALSE(names.empty());
    return names;
}

} // namespace

class LevelDataTest : public ModuleTest {};

TEST_F(LevelDataTest, EveryLevelIsWhatItsMapCompilesTo) {
    for (const std::string& level : levelNames()) {
        const std::string map = readRepositoryFile("assets/levels/" + level + ".tmj");

        const std::string fresh = writeLevel(compileText(map)); // throws for a warning

        EXPECT_TRUE(fresh == readRepositoryFile("data/maps/" + level + ".rivl"))
            << level << ": the map has changed: build the target \"levels\" and commit data/maps";
    }
}

TEST_F(LevelDataTest, EveryLevelComesBackFromItsMap) {
    for (const std::string& level : levelNames()) {
        const LevelFile read = compileText(readRepositoryFile("assets/levels/" + level + ".tmj"));

        const LevelFile again = compileText(decompileLevel(read, "../../data/", nullptr));

        EXPECT_EQ(again, read) << level;
    }
}

TEST_F(LevelDataTest, NothingIsWrongWithTheLevels) {
    for (const std::string& level : levelNames()) {
        const LevelFile read = compileText(readRepositoryFile("assets/levels/" + level + ".tmj"));

        EXPECT_EQ(validateLevel(read, nullptr), std::vector<std::string>{}) << level;
    }
}

TEST_F(LevelDataTest, WhatTheLevelsNameIsThere) {
    std::set<std::string> names;
    for (const std::string& level : levelNames()) {
        const LevelFile read = compileText(readRepositoryFile("assets/levels/" + level + ".tmj"));
        for (const LevelFile::PolygonRecord& record : read.polygons) {
            names.insert(record.textureName);
        }
        for (const LevelFile::ObjectRecord& record : read.objects) {
            names.insert(record.textureName);
        }
        for (const LevelFile::SoundSourceRecord& record : read.soundSources) {
            names.insert(record.soundName);
        }
        for (const LevelFile::EmitterRecord& record : read.emitters) {
            names.insert(record.settingsName);
        }
    }
    for (std::string name : names) {
        std::replace(name.begin(), name.end(), '\\', '/');
        EXPECT_TRUE(std::filesystem::exists(TARNWICK_SOURCE_DIR "/data/" + name)) << name;
    }
}

TEST_F(LevelDataTest, TheTestLevelHasSolidSlopesOfAllSurfaces) {
    const LevelFile level = compileText(readRepositoryFile("assets/levels/testLevel.tmj"));
    for (std::int32_t surface = 1; surface <= 5; ++surface) {
        const auto isSlope = [&](const LevelFile::PolygonRecord& polygon) {
            return polygon.surfaceType == surface && modeIsSolid(polygon.polygonMode);
        };
        EXPECT_TRUE(std::any_of(level.polygons.begin(), level.polygons.end(), isSlope)) << surface;
    }
}

TEST_F(LevelDataTest, TheTiledProjectOffersTheNamesThatTheToolKnows) {
    const Json surfaces = projectType("surface").at("values");
    const Json modes = projectType("mode").at("values");

    EXPECT_EQ(surfaces, Json(surfaceNames));
    EXPECT_EQ(modes, Json(modeNames));
    Json types = Json::array();
    for (const TriggerAction& action : triggerActions) {
        types.push_back(action.name);
    }
    EXPECT_EQ(projectType("triggerType").at("values"), types);
}

TEST_F(LevelDataTest, TheToolKnowsTheTypesOfTriggersThatTheGameKnows) {
    GLConsole::initialise();
    TriggerManager::initialise();
    std::string expected;
    for (const TriggerAction& action : triggerActions) {
        expected += "\nTrigger id: " + std::to_string(action.code) +
                    "\t\tTrigger name:   " + std::string(action.name);
    }

    const std::string list = answerTo("TriggerTypeList");

    EXPECT_EQ(list.substr(std::min(list.find("\nTrigger id: "), list.size())), expected);
    TriggerManager::shutdown();
    GLConsole::shutdown();
}

TEST_F(LevelDataTest, TheTiledProjectShowsTheDefaultsThatTheToolTakes) {
    EXPECT_EQ(shownDefault("surface"), PolygonDefaults::surface);
    EXPECT_EQ(shownDefault("mode"), PolygonDefaults::mode);
    EXPECT_EQ(shownDefault("texture"), PolygonDefaults::texture);
    EXPECT_EQ(shownDefault("id"), PolygonDefaults::id);
    EXPECT_EQ(shownDefault("texture", "object"), ObjectDefaults::texture);
    EXPECT_EQ(shownDefault("id", "object"), ObjectDefaults::id);
    EXPECT_EQ(shownDefault("dressed"), PolygonDefaults::dressed);
    EXPECT_EQ(shownDefault("mirrored", "object"), ObjectDefaults::mirrored);
    for (const char* const kind : {"mover", "force", "emitter", "sound"}) {
        EXPECT_EQ(shownDefault("id", kind), EntityDefaults::id) << kind;
    }
    EXPECT_EQ(shownDefault("speed", "mover"), EntityDefaults::speed);
    EXPECT_EQ(shownDefault("target", "trigger"), EntityDefaults::target);
    EXPECT_EQ(shownDefault("delay", "trigger"), EntityDefaults::delay);
    EXPECT_EQ(shownDefault("strength", "force"), EntityDefaults::strength);
    EXPECT_EQ(shownDefault("reach", "sound"), EntityDefaults::reach);
    EXPECT_EQ(shownDefault("looping", "sound"), EntityDefaults::looping);
}

TEST_F(LevelDataTest, TheTiledProjectHasTheClassesThatTheToolKnows) {
    EXPECT_EQ(projectType("waterStart").at("type"), "class");
    EXPECT_EQ(projectType("cameraStart").at("type"), "class");
    EXPECT_EQ(projectType("notes").at("useAs"), Json::array({"layer"}));
}

TEST_F(LevelDataTest, TheExamplesOfTheGuideCompile) {
    const std::string guide = readRepositoryFile("docs/level-making.md");
    const std::string fence = "```json\n";
    int examples = 0;
    for (std::size_t start = guide.find(fence); start != std::string::npos;
         start = guide.find(fence, start)) {
        start += fence.size();
        const std::string example = guide.substr(start, guide.find("```", start) - start);
        EXPECT_FALSE(compileText(example).polygons.empty()); // throws for a warning
        ++examples;
    }
    EXPECT_GT(examples, 0);
}

} // namespace tarnwick
