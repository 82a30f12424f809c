#include "tools/level/Commands.h"

#include "level/LevelFile.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"
#include "support/TiledText.h"
#include "tools/level/LevelWriter.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace tarnwick {

namespace fs = std::filesystem;

/// Runs the tool on files of a folder of its own.
class LevelCommandsTest : public ModuleTest {
protected:
    LevelCommandsTest() { fs::create_directories(path("data")); }

    std::string path(const std::string& name) const { return (folder.path() / name).string(); }

    std::string write(const std::string& name, const std::string& bytes) const {
        folder.write(name, bytes);
        return path(name);
    }

    static std::string read(const std::string& name) {
        std::ifstream file(name, std::ios::binary);
        std::ostringstream bytes;
        bytes << file.rdbuf();
        return bytes.str();
    }

    static std::ptrdiff_t linesOf(const std::string& text) {
        return std::count(text.begin(), text.end(), '\n');
    }

    int run(const std::vector<std::string>& arguments) {
        std::vector<const char*> words = {"tarnwick-level"};
        for (const std::string& argument : arguments) {
            words.push_back(argument.c_str());
        }
        output.str("");
        errors.str("");
        return runLevelTool(static_cast<int>(words.size()), words.data(), output, errors);
    }

    /// Runs what must end with status 2, nothing on output and this one line on errors.
    void expectRefused(const std::vector<std::string>& arguments, const std::string& line) {
        EXPECT_EQ(run(arguments), 2);
        EXPECT_EQ(output.str(), "");
        EXPECT_EQ(errors.str(), "tarnwick-level: " + line + "\n");
    }

    /// A level of one triangle that shows "gfx\Stone.TGA", and of its end.
    static LevelFile triangleLevel() {
        LevelFile level =
            compileText(mapOfObjects(triangleText("", textProperty("texture", "gfx\\\\Stone.TGA"))));
        level.triggers.push_back({0, 801, 0.0f, {{0, 0}, {9, 0}, {9, 9}, {0, 9}}});
        return level;
    }

    DataFolder folder;
    std::ostringstream output;
    std::ostringstream errors;
};

TEST_F(LevelCommandsTest, CompileWritesTheLevelAndSaysNothing) {
    const std::string map = write("a.tmj", mapOfObjects(triangleText()));

    const int status = run({"compile", map, path("a.rivl")});

    EXPECT_EQ(status, 0);
    EXPECT_EQ(output.str() + errors.str(), "");
    EXPECT_EQ(read(path("a.rivl")), writeLevel(compileText(mapOfObjects(triangleText()))));
}

TEST_F(LevelCommandsTest, CompileTellsWarningsAndWritesAllTheSame) {
    const std::string map = write("a.tmj", mapOfObjects(triangleText("", textProperty("colour", "red"))));

    const int status = run({"compile", map, path("a.rivl")});

    EXPECT_EQ(status, 0);
    EXPECT_EQ(errors.str(), "tarnwick-level: " + map +
                                ": warning: object 12 \"slope\": unknown property \"colour\" is left out\n");
    EXPECT_TRUE(fs::exists(path("a.rivl")));
}

TEST_F(LevelCommandsTest, ARefusedMapLeavesTheOldLevelAlone) {
    const std::string map = write("a.tmj", mapOfLayers(""));
    write("a.rivl", "old");

    expectRefused({"compile", map, path("a.rivl")}, map + ": the map has no waterStart point");

    EXPECT_EQ(read(path("a.rivl")), "old");
}

TEST_F(LevelCommandsTest, CompileRefusesFilesThatCannotBeRead) {
    const std::string level = path("a.rivl");
    write("empty.tmj", "");
    write("cut.tmj", mapOfObjects(triangleText()).substr(0, 100));
    write("large.tmj", "");
    fs::resize_file(path("large.tmj"), (64U << 20U) + 1); // takes no room on the disk

    expectRefused({"compile", path("none.tmj"), level}, path("none.tmj") + ": no such file");
    expectRefused({"compile", path("data"), level}, path("data") + ": is a folder");
    expectRefused({"compile", "/dev/zero", level}, "/dev/zero: is not a file");
    expectRefused({"compile", path("empty.tmj"), level}, path("empty.tmj") + ": is empty");
    expectRefused({"compile", path("cut.tmj"), level},
                  path("cut.tmj") +
                      ": not a Tiled map: the JSON is wrong or breaks off at line 1, column 101");
    expectRefused({"compile", path("large.tmj"), level},
                  path("large.tmj") + ": is larger than 64 MiB, too large for a map");
    EXPECT_FALSE(fs::exists(level));
}

TEST_F(LevelCommandsTest, CompileTellsWhenTheLevelCannotBeWritten) {
    const std::string map = write("a.tmj", mapOfObjects(""));

    expectRefused({"compile", map, path("none/a.rivl")},
                  path("none/a.rivl") + ": cannot be opened for writing");
    expectRefused({"compile", map, "/dev/full"}, "/dev/full: cannot be written to its end");
}

TEST_F(LevelCommandsTest, CompileDoesNotOverwriteTheMap) {
    const std::string text = mapOfObjects("");
    const std::string map = write("a.tmj", text);

    expectRefused({"compile", map, path("data/../a.tmj")}, map + ": is the map and the level file at once");

    EXPECT_EQ(read(map), text);
}

TEST_F(LevelCommandsTest, DecompileWritesAMapThatCompilesToTheSameLevel) {
    LevelFile level = triangleLevel();
    level.objects.push_back({0, "gfx\\lamp.tga", 2, {100, 50}, 1});
    const std::string file = write("a.rivl", writeLevel(level));
    std::string picture(18, '\0');
    picture[12] = 24;
    picture[15] = 1; // 256 pixels high
    write("data/gfx/lamp.tga", picture);

    const int status = run({"decompile", file, path("b.tmj"), "--data", path("data")});

    EXPECT_EQ(status, 0);
    EXPECT_EQ(output.str() + errors.str(), "");
    EXPECT_EQ(writeLevel(compileText(read(path("b.tmj")))), read(file));
    EXPECT_NE(read(path("b.tmj")).find("\"data/gfx/lamp.tga\""), std::string::npos);
    EXPECT_NE(read(path("b.tmj")).find("\"imageheight\": 256"), std::string::npos);
}

TEST_F(LevelCommandsTest, DecompileRefusesWhatIsNoLevelOrNoFolder) {
    const std::string file = write("a.rivl", writeLevel(triangleLevel()));
    const std::string data = path("data");

    expectRefused({"decompile", path("none.rivl"), path("b.tmj"), "--data", data},
                  path("none.rivl") + ": no such file");
    expectRefused({"decompile", write("c.rivl", "text"), path("b.tmj"), "--data", data},
                  path("c.rivl") + ": Not a RVL level file.");
    expectRefused({"decompile", file, file, "--data", data},
                  file + ": is the level file and the map at once");
    expectRefused({"decompile", file, path("b.tmj"), "--data", path("nowhere")},
                  file + ": is no folder to look for pictures in");
    expectRefused({"decompile", file, path("no/b.tmj"), "--data", data},
                  path("no/b.tmj") + ": cannot be opened for writing");
    EXPECT_FALSE(fs::exists(path("b.tmj")));
}

TEST_F(LevelCommandsTest, InfoPrintsWhatTheFileHolds) {
    const int status = run({"info", write("a.rivl", writeLevel(triangleLevel()))});

    EXPECT_EQ(status, 0);
    EXPECT_EQ(errors.str(), "");
    EXPECT_EQ(output.str().substr(0, 18), "polygons        1\n");
    EXPECT_NE(output.str().find("\"gfx\\Stone.TGA\" on 1 polygon\n"), std::string::npos);
}

TEST_F(LevelCommandsTest, InfoAndValidateRefuseFilesThatAreNoLevel) {
    const std::string whole = writeLevel(triangleLevel());
    std::string otherVersion = whole;
    otherVersion[4] = 11;
    write("empty.rivl", "");
    write("short.rivl", "ab");
    write("other.rivl", "This is no level file.");
    write("version.rivl", otherVersion);
    write("layer.rivl", writeLevel([] {
              LevelFile level = triangleLevel();
              level.polygons[0].layer = 5;
              return level;
          }()));

    for (const char* const command : {"info", "validate"}) {
        expectRefused({command, path("none.rivl")}, path("none.rivl") + ": no such file");
        expectRefused({command, path("data")}, path("data") + ": is a folder");
        expectRefused({command, "/dev/zero"}, "/dev/zero: is not a file");
        expectRefused({command, path("empty.rivl")}, path("empty.rivl") + ": is empty");
        expectRefused({command, path("short.rivl")}, path("short.rivl") + ": Unable to read file");
        expectRefused({command, path("other.rivl")}, path("other.rivl") + ": Not a RVL level file.");
        expectRefused({command, path("version.rivl")},
                      path("version.rivl") + ": Invalid level file version. It is 11, the game reads 12.");
        expectRefused({command, path("layer.rivl")}, path("layer.rivl") + ": Invalid polygon layer.");
    }
}

TEST_F(LevelCommandsTest, ALevelCutAnywhereIsRefused) {
    const std::string whole = writeLevel(triangleLevel());
    for (std::size_t size = 1; size < whole.size(); ++size) {
        const std::string file = write("cut.rivl", whole.substr(0, size));

        expectRefused({"info", file}, file + ": Unable to read file");
    }
}

TEST_F(LevelCommandsTest, CountsThatPromiseTooMuchAreRefusedAtOnce) {
    const std::string header = writeLevel(LevelFile()).substr(0, 8);
    write("counts.rivl", header + std::string(2, '\xFF') + std::string(2, '\0'));
    write("name.rivl", header + std::string("\1\0\0\0\0\0\0\0\xFF\xFF\0\0", 12));
    write("many.rivl", header + std::string(4, '\xFF'));

    expectRefused({"info", path("counts.rivl")}, path("counts.rivl") + ": Unable to read file");
    expectRefused({"info", path("name.rivl")}, path("name.rivl") + ": Unable to read file");
    expectRefused({"info", path("many.rivl")}, path("many.rivl") + ": Too many polygons in level.");
}

TEST_F(LevelCommandsTest, AReasonThatBeginsALineOfItsOwnIsStillOneLine) {
    const std::string header = writeLevel(LevelFile()).substr(0, 8);
    const std::string file = write("a.rivl", header + std::string("\1\0\0\0\0\0\0\0\0\0\1\0", 12));

    expectRefused({"info", file}, file + ": Polygon texture name too long.");
}

TEST_F(LevelCommandsTest, ValidateOfASoundLevelEndsWithZeroAndNoWord) {
    write("data/gfx/stone.tga", "picture");
    const std::string file = write("a.rivl", writeLevel(triangleLevel()));

    const int status = run({"validate", file, "--data", path("data")});

    EXPECT_EQ(status, 0);
    EXPECT_EQ(output.str() + errors.str(), "");
}

TEST_F(LevelCommandsTest, PicturesOfObjectsAreLookedUpToo) {
    write("data/gfx/stone.tga", "picture");
    write("data/gfx/lamp.tga", "picture");
    LevelFile level = triangleLevel();
    level.objects = {{0, "gfx\\Lamp.TGA", 0, {1, 2}, 0}, {0, "gfx\\gone.tga", 0, {3, 4}, 0}};
    const std::string file = write("a.rivl", writeLevel(level));

    run({"validate", file, "--data", path("data")});

    EXPECT_EQ(output.str(), "object 1 at (3, 4): picture \"gfx\\gone.tga\" does not exist\n");
}

TEST_F(LevelCommandsTest, ValidatePrintsItsFindingsAndEndsWithOne) {
    const std::string file = write("a.rivl", writeLevel(triangleLevel()) + "rest");

    const int status = run({"validate", file, "--data", path("data")});

    EXPECT_EQ(status, 1);
    EXPECT_EQ(errors.str(), "");
    EXPECT_EQ(output.str(), "polygon 0 at (100, 200): picture \"gfx\\Stone.TGA\" does not exist\n"
                            "file: 4 bytes follow the level, which the game does not read\n");
}

TEST_F(LevelCommandsTest, WithoutPicturesValidateLooksForNone) {
    const std::string file = write("a.rivl", writeLevel(triangleLevel()));

    EXPECT_EQ(run({"validate", file, "--no-pictures"}), 0);
    EXPECT_EQ(output.str() + errors.str(), "");
}

TEST_F(LevelCommandsTest, ValidateLeavesTheWorkingFolderAsItWas) {
    const fs::path before = fs::current_path();

    run({"validate", write("a.rivl", writeLevel(triangleLevel())), "--data", path("data")});

    EXPECT_EQ(fs::current_path(), before);
}

TEST_F(LevelCommandsTest, ADataFolderThatIsNoneIsRefused) {
    const std::string file = write("a.rivl", writeLevel(triangleLevel()));

    expectRefused({"validate", file, "--data", path("none")},
                  path("none") + ": is no folder to look for pictures in");
}

TEST_F(LevelCommandsTest, HelpIsThereForEverything) {
    for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
             {"--help"}, {"compile", "--help"}, {"info", "--help"}, {"validate", "--help"}}) {
        EXPECT_EQ(run(words), 0);
        EXPECT_NE(output.str().find("Usage:"), std::string::npos);
        EXPECT_EQ(errors.str(), "");
    }
}

TEST_F(LevelCommandsTest, TheVersionIsOneLine) {
    EXPECT_EQ(run({"--version"}), 0);
    EXPECT_EQ(output.str().substr(0, 15), "tarnwick-level ");
    EXPECT_EQ(linesOf(output.str()), 1);
}

TEST_F(LevelCommandsTest, BadArgumentsEndInOneLineAndTwo) {
    for (const std::vector<std::string>& words :
         std::vector<std::vector<std::string>>{{},
                                               {"decorate"},
                                               {"compile"},
                                               {"compile", "a.tmj"},
                                               {"info"},
                                               {"info", "a", "b"},
                                               {"validate", "a", "--data"},
                                               {"info", "a", "--no-pictures"}}) {
        EXPECT_EQ(run(words), 2);
        EXPECT_EQ(output.str(), "");
        EXPECT_EQ(linesOf(errors.str()), 1) << errors.str();
        EXPECT_EQ(errors.str().substr(0, 16), "tarnwick-level: ");
    }
}

} // namespace tarnwick
