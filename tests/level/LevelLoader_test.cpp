#include "level/LevelLoader.h"

#include "console/GLConsole.h"
#include "graphics/GLWindow.h"
#include "graphics/GLWindowEventListener.h"
#include "level/Level.h"
#include "level/LevelBspTree.h"
#include "level/LevelObjectsManager.h"
#include "level/SurfaceTypeManager.h"
#include "support/DataFolder.h"
#include "support/LevelDrawingTest.h"
#include "support/LevelFileBuilder.h"
#include "support/ModuleTest.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <random>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

/// Counts the passes of the message pump: in each it asks to be painted in the next.
class PumpCounter final : public GLWindowEventListener {
public:
    int count = 0;

    void windowRedrawing() override {
        ++count;
        GLWindow::requestRepaint();
    }
};

} // namespace

class LevelLoaderTest : public ModuleTest {
protected:
    LevelLoaderTest() { data.write("fx/steam.cfg", ""); }

    DataFolder data;

    /// Loads a file of these bytes, and gives what was printed.
    std::string load(const std::string& bytes) {
        data.write("maps/test.rivl", bytes);
        GLConsole::clear();
        loaded = LevelLoader::loadLevel("maps\\test.rivl");
        return GLConsole::outputText();
    }

    std::string load(const LevelFile& level) { return load(LevelFileBuilder::write(level)); }

    /// A file that fails for `reason`, after which the level of before must be there, whole.
    void expectFailure(const LevelFileBuilder& file, const std::string& reason) {
        SCOPED_TRACE(reason);
        load(smallLevel());
        const std::list<Polygon2D>::iterator old = Level::polygons.begin();
        const LevelObject* const oldObject = &LevelObjectsManager::staticObjects.front();

        const std::string printed = load(file.bytes());

        EXPECT_FALSE(loaded);
        EXPECT_EQ(printed, "\nError reading level file 'maps\\test.rivl'\nReason: " + reason);
        EXPECT_EQ(Level::polygons.size(), 2u);
        EXPECT_EQ(Level::polygons.begin(), old);
        EXPECT_EQ(old->triangleCount, 2u);
        EXPECT_EQ(LevelObjectsManager::staticObjects.size(), 2u);
        EXPECT_EQ(&LevelObjectsManager::staticObjects.front(), oldObject);
        EXPECT_EQ(Level::waterStart(), (Vector2{50.0f, -60.0f}));
        EXPECT_EQ(Level::cameraStart(), (Vector2{-70.0f, 80.0f}));
    }

    static LevelFileBuilder start() { return LevelFileBuilder().header(); }

    bool loaded = false;
};

TEST_F(LevelLoaderTest, ALevelIsHandedOverAndAnnounced) {
    const std::string printed = load(smallLevel());

    EXPECT_TRUE(loaded);
    // The managers of the old level tell their own end behind this.
    EXPECT_TRUE(printed.starts_with("\nLevel 'maps\\test.rivl' loaded successfully.."
                                    "\nLevel loading took 0.000000 seconds."
                                    "\nClearing level data..."))
        << printed;
    ASSERT_EQ(Level::polygons.size(), 2u);
    const Polygon2D& polygon = Level::polygons.front();
    EXPECT_EQ(polygon.id, 7);
    EXPECT_EQ(polygon.pointsX, (std::vector<float>{0, 100, 100, 0}));
    EXPECT_EQ(polygon.pointsY, (std::vector<float>{0, 0, 50, 50}));
    EXPECT_EQ(polygon.triangleCount, 2u);
    EXPECT_EQ(polygon.layer, 0u);
    EXPECT_EQ(Level::polygons.back().id, -3);
    EXPECT_EQ(Level::polygons.back().layer, 4u);
    EXPECT_EQ(Level::waterStart(), (Vector2{50.0f, -60.0f}));
    EXPECT_EQ(Level::cameraStart(), (Vector2{-70.0f, 80.0f}));
}

TEST_F(LevelLoaderTest, ObjectsAreHandedOverWithTheirPicturesNewestFirst) {
    data.write("gfx/lamp_frame0.tga", "");
    data.write("gfx/lamp_frame1.tga", "");
    LevelFile level = smallLevel();
    level.objects.push_back({4294967295u, "gfx\\post.tga", 1, {-3, 4}, 255});

    load(level);

    ASSERT_EQ(LevelObjectsManager::animatedObjects.size(), 1u);
    const LevelObject& lamp = LevelObjectsManager::animatedObjects.front();
    EXPECT_EQ(lamp.id, 5u);
    EXPECT_EQ(lamp.frameCount, 2u);
    EXPECT_EQ(lamp.layer, 3u);
    EXPECT_EQ(lamp.x, -20.0f);
    EXPECT_EQ(lamp.y, 30.0f);
    EXPECT_TRUE(lamp.mirrored);
    ASSERT_EQ(LevelObjectsManager::staticObjects.size(), 2u);
    const LevelObject& post = LevelObjectsManager::staticObjects.front();
    EXPECT_EQ(post.id, 4294967295u);
    EXPECT_EQ(post.frames[0].name, "GFX\\POST.TGA");
    EXPECT_TRUE(post.mirrored);
    const LevelObject& empty = LevelObjectsManager::staticObjects.back();
    EXPECT_EQ(empty.id, 6u);
    EXPECT_EQ(empty.frames[0].name, "");
    EXPECT_FALSE(empty.mirrored);
}

TEST_F(LevelLoaderTest, ANameIsFoundInAnyCase) {
    data.write("Maps/Test.RIVL", LevelFileBuilder::write(smallLevel()));

    EXPECT_TRUE(LevelLoader::loadLevel("maps\\test.rivl"));
}

TEST_F(LevelLoaderTest, AFileThatIsNotThereIsNamed) {
    GLConsole::clear();

    const bool result = LevelLoader::loadLevel("maps\\none.rivl");

    EXPECT_FALSE(result);
    EXPECT_EQ(GLConsole::outputText(), "\nUnable to open level file 'maps\\none.rivl'");
}

TEST_F(LevelLoaderTest, AnEmptyLevelLoads) {
    load(smallLevel());

    load(start().emptySections(7).startPoints({1, 2}, {3, 4}).bytes());

    EXPECT_TRUE(loaded);
    EXPECT_TRUE(Level::polygons.empty());
    EXPECT_EQ(Level::waterStart(), (Vector2{1.0f, 2.0f}));
    EXPECT_EQ(Level::cameraStart(), (Vector2{3.0f, 4.0f}));
}

TEST_F(LevelLoaderTest, BytesBehindTheStartPointsAreIgnored) {
    load(LevelFileBuilder::write(smallLevel()) + "more");

    EXPECT_TRUE(loaded);
}

TEST_F(LevelLoaderTest, TheModeSetsTwoFlagsAndUnknownOnesCountAsZero) {
    LevelFile level;
    for (const std::int32_t mode : {0, 1, 2, 3, 7, -1}) {
        level.polygons.push_back(polygonRecord({{0, 0}, {1, 0}, {0, 1}}));
        level.polygons.back().polygonMode = mode;
    }

    load(level);

    std::string flags;
    for (const Polygon2D& polygon : Level::polygons) {
        flags += polygon.collideable ? 'c' : '-';
        flags += polygon.drawable ? 'd' : '-';
        flags += ' ';
    }
    EXPECT_EQ(flags, "cd -d c- -- cd cd ");
}

TEST_F(LevelLoaderTest, TheSurfaceBecomesTheFriction) {
    data.write("cfg/surfaces.cfg", "surfaceFriction_stone = 0.25 surfaceFriction_sand = 0.75");
    SurfaceTypeManager::initialise();
    LevelFile level;
    level.polygons = {polygonRecord({}), polygonRecord({})};
    level.polygons[1].surfaceType = 5;

    load(level);

    EXPECT_EQ(Level::polygons.front().frictionLevel, 0.25f);
    EXPECT_EQ(Level::polygons.back().frictionLevel, 0.75f);
}

TEST_F(LevelLoaderTest, APolygonWithoutPointsIsKeptAndIgnoredByTheTree) {
    LevelFile level;
    level.polygons = {polygonRecord({})};

    load(level);
    LevelBspTree::create();

    ASSERT_EQ(Level::polygons.size(), 1u);
    EXPECT_EQ(Level::polygons.front().triangleCount, 0u);
    EXPECT_EQ(LevelBspTree::rootNode(), nullptr);
}

TEST_F(LevelLoaderTest, APointListedTwiceIsKeptOnce) {
    LevelFile level;
    level.polygons = {polygonRecord({{0, 0}, {10, 0}, {0, 0}, {10, 10}, {10, 0}, {0, 10}})};

    load(level);

    EXPECT_EQ(Level::polygons.front().pointsX, (std::vector<float>{0, 10, 10, 0}));
    EXPECT_EQ(Level::polygons.front().triangleCount, 2u);
}

TEST_F(LevelLoaderTest, CoordinatesBecomeTheNearestFloats) {
    LevelFile level;
    level.polygons = {polygonRecord({{16777217, -2147483647 - 1}, {10, 0}})};

    load(level);

    EXPECT_EQ(Level::polygons.front().pointsX[0], 16777216.0f);
    EXPECT_EQ(Level::polygons.front().pointsY[0], -2147483648.0f);
}

TEST_F(LevelLoaderTest, TheWindowIsPumpedOnceForEachPolygonObjectAndSound) {
    PumpCounter counter;
    GLWindow::createHeadless(800, 600);
    GLWindow::setEventListener(&counter);
    GLWindow::run();
    counter.count = 0;
    GLWindow::requestRepaint();

    load(smallLevel());

    GLWindow::setEventListener(nullptr);
    EXPECT_TRUE(loaded);
    EXPECT_EQ(counter.count, 6);
}

TEST_F(LevelLoaderTest, AFileThatEndsInAnyFieldFails) {
    expectFailure(start(), "Unable to read file");
    expectFailure(LevelFileBuilder(), "Unable to read file");
    const std::string bytes = LevelFileBuilder::write(smallLevel());
    load(smallLevel());
    for (std::size_t length = 0; length < bytes.size(); length += 3) {
        load(bytes.substr(0, length));
        EXPECT_FALSE(loaded) << length;
        EXPECT_EQ(Level::polygons.size(), 2u) << length;
    }
}

TEST_F(LevelLoaderTest, AWrongMagicNumberFails) {
    expectFailure(LevelFileBuilder().u32(0x008F1396u).u32(12).emptySections(7), "Not a RVL level file.");
}

TEST_F(LevelLoaderTest, AWrongVersionPrintsBothVersionsAndThenTheFailure) {
    load(smallLevel());

    const std::string printed = load(LevelFileBuilder().u32(0x008F1397u).u32(4000000000u).bytes());

    EXPECT_FALSE(loaded);
    EXPECT_EQ(printed, "\nInvalid level file version. Version is 4000000000. Version used by game is 12."
                       "\nError reading level file 'maps\\test.rivl'"
                       "\nReason: Invalid level file version.");
    EXPECT_EQ(Level::polygons.size(), 2u);
}

TEST_F(LevelLoaderTest, CountsAboveTheLimitFailWithTheNameOfTheirSection) {
    expectFailure(start().u32(65536), "Too many polygons in level.");
    expectFailure(start().u32(0x80000000u), "Too many polygons in level.");
    expectFailure(start().u32(0xFFFFFFFFu), "Too many polygons in level.");
    expectFailure(start().emptySections(1).u32(65536), "Too many objects in level");
    expectFailure(start().emptySections(2).u32(65536), "Too many forces in level.");
    expectFailure(start().emptySections(3).u32(65536), "Too many movers in level.");
    expectFailure(start().emptySections(4).u32(65536), "Too many triggers in level.");
    expectFailure(start().emptySections(5).u32(65536), "Too many sounds in level.");
    expectFailure(start().emptySections(6).u32(65536), "Too many emitters in level.");
}

TEST_F(LevelLoaderTest, CountsAtTheLimitAreReadOn) {
    for (int section = 0; section < 7; ++section) {
        expectFailure(start().emptySections(section).u32(65535), "Unable to read file");
    }
}

TEST_F(LevelLoaderTest, ABadPolygonFails) {
    expectFailure(start().u32(1).i32(0).u32(65536), "\nPolygon texture name too long.");
    expectFailure(start().u32(1).i32(0).name("").i32(0), "Invalid surface type encountered.");
    expectFailure(start().u32(1).i32(0).name("").i32(6), "Invalid surface type encountered.");
    expectFailure(start().u32(1).i32(0).name("").i32(1).i32(0).u32(5), "Invalid polygon layer.");
    expectFailure(start().u32(1).i32(0).name("").i32(1).i32(0).u32(4).u32(65536), "Too many polygon points.");
    expectFailure(start().u32(1).i32(0).name("").i32(1).i32(0).u32(4).u32(65535), "Unable to read file");
}

TEST_F(LevelLoaderTest, ABadObjectFails) {
    expectFailure(start().emptySections(1).u32(1).u32(0).u32(65535), "Object texture name too long.");
    expectFailure(start().emptySections(1).u32(1).u32(0).name("").u32(5), "Invalid polygon layer.");
}

TEST_F(LevelLoaderTest, ABadSoundSourceFails) {
    expectFailure(start().emptySections(5).u32(1).i32(0).point({}).i32(-1), "Invalid sound source strenght.");
    expectFailure(start().emptySections(5).u32(1).i32(0).point({}).i32(0).u8(0).u32(65536),
                  "Sound source sound name too long.");
}

TEST_F(LevelLoaderTest, ABadEmitterFails) {
    expectFailure(start().emptySections(6).u32(1).i32(0).point({}).vector({}).u32(65536),
                  "Emitter settings file name too long.");
}

TEST_F(LevelLoaderTest, APolygonNameMayBeOneByteLongerThanAnObjectName) {
    LevelFile level = smallLevel();
    level.polygons[0].textureName = std::string(65535, 'p');
    level.objects[0].textureName = std::string(65534, 'o');
    load(level);
    const bool longest = loaded;
    level.objects[0].textureName.push_back('o');

    const std::string printed = load(level);

    EXPECT_TRUE(longest);
    EXPECT_FALSE(loaded);
    EXPECT_TRUE(printed.ends_with("\nReason: Object texture name too long."));
}

TEST_F(LevelLoaderTest, ASoundSourceOfNoStrenghtIsAccepted) {
    LevelFile level;
    level.soundSources = {{1, {2, 3}, 0, 0, ""}};

    load(level);

    EXPECT_TRUE(loaded);
}

TEST_F(LevelLoaderTest, AFolderIsNoLevel) {
    data.write("maps/test.rivl/inside.txt", "");
    GLConsole::clear();

    const bool result = LevelLoader::loadLevel("maps\\test.rivl");

    EXPECT_FALSE(result);
    EXPECT_EQ(GLConsole::outputText(), "\nUnable to open level file 'maps\\test.rivl'");
}

TEST_F(LevelLoaderTest, RandomBytesNeverHarmTheLevel) {
    std::mt19937 random(3);
    load(smallLevel());
    for (int file = 0; file < 100; ++file) {
        std::string bytes = random() % 2 == 0 ? LevelFileBuilder().header().bytes() : "";
        const std::size_t length = random() % 3000;
        for (std::size_t i = 0; i < length; ++i) {
            bytes.push_back(static_cast<char>(random() % 2 == 0 ? 0 : random()));
        }

        load(bytes + "\x01");

        EXPECT_TRUE(loaded || Level::polygons.size() == 2);
    }
}

/// Loads with a GL context, in which pictures are read from their files.
class LoadedPicturesTest : public LevelDrawingTest {
protected:
    /// How often the default picture's file was opened by the load of a level of so many polygons.
    int openingsOfTheDefault(std::size_t polygons) {
        LevelFile level;
        for (std::size_t i = 0; i < polygons; ++i) {
            level.polygons.push_back(polygonRecord({{0, 0}, {20, 0}, {0, 20}}));
            level.polygons.back().textureName = i % 3 == 0 ? "" : "gfx\\red.tga";
        }
        data.write("maps/test.rivl", LevelFileBuilder::write(level));
        const int watcher = inotify_init1(IN_NONBLOCK);
        inotify_add_watch(watcher, (data.path() / "gfx/default.tga").c_str(), IN_OPEN);
        EXPECT_TRUE(LevelLoader::loadLevel("maps\\test.rivl"));
        alignas(inotify_event) char events[16384];
        const ssize_t bytes = read(watcher, events, sizeof events);
        close(watcher);
        return bytes < 0 ? 0 : static_cast<int>(bytes / static_cast<ssize_t>(sizeof(inotify_event)));
    }
};

TEST_F(LoadedPicturesTest, TheDefaultPictureIsReadOnceALoad) {
    writeFlatPicture("gfx/default.tga", blue);

    const int withOne = openingsOfTheDefault(2);
    Level::clear();

    EXPECT_GT(withOne, 0);
    EXPECT_EQ(openingsOfTheDefault(40), withOne);
    EXPECT_EQ(Level::polygons.front().texture.name, "GFX\\DEFAULT.TGA"); // a polygon without a picture
}

} // namespace tarnwick
