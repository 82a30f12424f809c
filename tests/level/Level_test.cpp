#include "level/Level.h"

#include "console/GLConsole.h"
#include "level/LevelBspNode.h"
#include "level/LevelBspTree.h"
#include "level/LevelObjectsManager.h"
#include "support/ConsoleAnswer.h"
#include "support/DataFolder.h"
#include "support/LevelFileBuilder.h"
#include "support/ModuleTest.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace tarnwick {

class LevelTest : public ModuleTest {
protected:
    static constexpr const char* titleBar =
        "\n\n****************************************************************\n\n";
    DataFolder data;

    /// Two squares with a gap in between, and an open polygon, which has no nodes.
    static LevelFile level() {
        LevelFile file;
        file.polygons = {polygonRecord({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, 1),
                         polygonRecord({{20, 0}, {30, 0}, {30, 10}, {20, 10}}, 2),
                         polygonRecord({{40, 0}, {50, 0}}, 3)};
        file.waterStart = {5, -5};
        file.cameraStart = {6, -6};
        return file;
    }

    bool load(const LevelFile& file = level()) {
        data.write("maps/test.rivl", LevelFileBuilder::write(file));
        return Level::load("maps\\test.rivl");
    }

    static Polygon2D& polygon(std::ptrdiff_t index) { return *std::next(Level::polygons.begin(), index); }

    static std::size_t edgesOn() {
        std::vector<LevelBspNode*> nodes;
        LevelBspTree::getNodeList(nodes);
        return static_cast<std::size_t>(std::count_if(
            nodes.begin(), nodes.end(), [](const LevelBspNode* node) { return node->hasEdge; }));
    }

    /// The first of `lines` that the console does not tell behind those before it; "" if it tells all.
    static std::string toldInOrder(const std::vector<std::string>& lines) {
        const std::string printed = GLConsole::outputText();
        std::size_t place = 0;
        for (const std::string& line : lines) {
            place = printed.find(line, place);
            if (place == std::string::npos) {
                return line;
            }
            place += line.size();
        }
        return "";
    }
};

TEST_F(LevelTest, ALoadTellsItsSteps) {
    GLConsole::clear();

    const bool loaded = load();

    EXPECT_TRUE(loaded);
    const std::string printed = GLConsole::outputText();
    EXPECT_TRUE(printed.starts_with(std::string(titleBar) + "Level loading" + titleBar +
                                    "\nLoading level data..."
                                    "\nLevel 'maps\\test.rivl' loaded successfully.."
                                    "\nLevel loading took 0.000000 seconds."
                                    "\nClearing level data..."))
        << printed;
    EXPECT_TRUE(printed.find("\nCreating the level bsp tree..."
                             "\nBsp Tree created in 0.000000 seconds.") != std::string::npos)
        << printed;
    EXPECT_EQ(Level::waterStart(), (Vector2{5.0f, -5.0f}));
    EXPECT_EQ(Level::cameraStart(), (Vector2{6.0f, -6.0f}));
}

TEST_F(LevelTest, ALoadFindsTheNodesOfEachPolygon) {
    load();

    ASSERT_NE(Level::nodesOf(polygon(0)), nullptr);
    ASSERT_NE(Level::nodesOf(polygon(1)), nullptr);
    EXPECT_EQ(Level::nodesOf(polygon(2)), nullptr);
    EXPECT_EQ(Level::nodesOf(polygon(0))->size() + Level::nodesOf(polygon(1))->size(), 8u);
    for (const LevelBspNode* node : *Level::nodesOf(polygon(0))) {
        EXPECT_EQ(node->polygon, &polygon(0));
    }
}

TEST_F(LevelTest, PiecesOfASplitEdgeAreNodesOfItsPolygon) {
    LevelFile file;
    file.polygons = {polygonRecord({{0, 45}, {100, 45}, {100, 55}, {0, 55}}, 1),
                     polygonRecord({{45, 0}, {55, 0}, {55, 100}, {45, 100}}, 2)};
    load(file);
    std::vector<LevelBspNode*> all;
    LevelBspTree::getNodeList(all);

    const std::size_t own = Level::nodesOf(polygon(0))->size() + Level::nodesOf(polygon(1))->size();

    EXPECT_GT(all.size(), 8u);
    EXPECT_EQ(own, all.size());
}

TEST_F(LevelTest, AFailedLoadLeavesTheOldLevelPlayable) {
    load();
    const LevelBspNode* root = LevelBspTree::rootNode();
    data.write("maps/bad.rivl", "no level");

    const bool loaded = Level::load("maps\\bad.rivl");

    EXPECT_FALSE(loaded);
    EXPECT_EQ(Level::polygons.size(), 3u);
    EXPECT_EQ(LevelBspTree::rootNode(), root);
    EXPECT_EQ(answerTo("DrawTriangles true"), "\nDrawTriangles is now true");
    EXPECT_EQ(edgesOn(), 8u);
}

TEST_F(LevelTest, ALoadAndARestartSwitchTheTrianglesOff) {
    load();
    answerTo("DrawTriangles true");
    load();
    const std::string afterLoad = answerTo("DrawTriangles");
    answerTo("DrawTriangles true");

    Level::reset();

    EXPECT_EQ(afterLoad, "\nDrawTriangles is false");
    EXPECT_EQ(answerTo("DrawTriangles"), "\nDrawTriangles is false");
}

TEST_F(LevelTest, ClearingTakesTheLevelAndItsCommandsAway) {
    load();
    GLConsole::clear();

    Level::clear();

    EXPECT_TRUE(GLConsole::outputText().starts_with("\nClearing level data..."));
    EXPECT_TRUE(Level::polygons.empty());
    EXPECT_EQ(LevelBspTree::rootNode(), nullptr);
    EXPECT_FALSE(GLConsole::commands().contains("DRAWTRIANGLES"));
    EXPECT_FALSE(GLConsole::commands().contains("BSPSIZE"));
}

TEST_F(LevelTest, SwitchingAPolygonOffSwitchesItsNodesAlone) {
    load();

    Level::setPolygonCollideable(polygon(0), false);

    EXPECT_FALSE(polygon(0).collideable);
    EXPECT_TRUE(polygon(0).visible);
    for (const LevelBspNode* node : *Level::nodesOf(polygon(0))) {
        EXPECT_FALSE(node->hasEdge);
    }
    EXPECT_EQ(edgesOn(), 4u);

    Level::setPolygonCollideable(polygon(0), true);

    EXPECT_TRUE(polygon(0).collideable);
    EXPECT_EQ(edgesOn(), 8u);
}

TEST_F(LevelTest, SwitchingAPolygonWithoutNodesSetsItsFieldAlone) {
    load();

    Level::setPolygonCollideable(polygon(2), false);

    EXPECT_FALSE(polygon(2).collideable);
    EXPECT_EQ(edgesOn(), 8u);
}

TEST_F(LevelTest, ARestartBringsARemovedPolygonBackButNotItsField) {
    load();
    Level::setPolygonCollideable(polygon(0), false);
    polygon(0).visible = false;
    polygon(1).offsetX = 3.0f;
    polygon(1).offsetY = 4.0f;
    polygon(1).previousOffsetX = 5.0f;
    polygon(1).previousOffsetY = 6.0f;

    Level::reset();

    EXPECT_TRUE(polygon(0).visible);
    EXPECT_FALSE(polygon(0).collideable);
    EXPECT_EQ(edgesOn(), 8u);
    EXPECT_EQ(polygon(1).offsetX, 0.0f);
    EXPECT_EQ(polygon(1).offsetY, 0.0f);
    EXPECT_EQ(polygon(1).previousOffsetX, 0.0f);
    EXPECT_EQ(polygon(1).previousOffsetY, 0.0f);
}

TEST_F(LevelTest, ARestartPutsTheObjectsBackAndClearingDropsThem) {
    LevelFile file = level();
    file.objects = {{1, "gfx\\lamp.tga", 0, {0, 0}, 0}};
    load(file);
    LevelObjectsManager::staticObjects.front().enabled = false;

    Level::reset();
    const bool enabled = LevelObjectsManager::staticObjects.front().enabled;
    Level::clear();

    EXPECT_TRUE(enabled);
    EXPECT_TRUE(LevelObjectsManager::staticObjects.empty());
    EXPECT_FALSE(GLConsole::commands().contains("OBJECTSCOUNT"));
}

TEST_F(LevelTest, TheManagersEndInTheirOrder) {
    load();
    GLConsole::clear();

    Level::clear();

    EXPECT_EQ(toldInOrder({"\nClearing level data...", "\nShutting down level objects manager..",
                           "\nShutting down force manager.", "\nShuttrng down dynamic polygon renderer..",
                           "\nShutting down trigger manager..", "\nShutting down sound source manager..",
                           "\nShutting down check point times manager..", "\nShutting down mover manager.."}),
              "");
}

TEST_F(LevelTest, TheManagersStartInTheirOrderAfterTheOldLevelWent) {
    load();
    GLConsole::clear();

    load();

    EXPECT_EQ(
        toldInOrder({"\nShutting down mover manager..", "\nInitialising level objects manager..",
                     "\nInitialising force manager.", "\nInitialising sound source manager..",
                     "\nInitialising down mover manager..", "\nInitialising FX particle manager..",
                     "\nInitialising down trigger manager..", "\nCreating the level bsp tree...",
                     "\nInitialising level geometry renderer...", "\nIntialising dynamic polygon renderer..",
                     "\nInitialising check point times manager.."}),
        "");
}

TEST_F(LevelTest, ALoadReplacesTheLevel) {
    load();
    LevelFile other;
    other.polygons = {polygonRecord({{0, 0}, {9, 0}, {9, 9}}, 5)};

    load(other);

    EXPECT_EQ(Level::polygons.size(), 1u);
    EXPECT_EQ(Level::nodesOf(polygon(0))->size(), 3u);
    EXPECT_EQ(edgesOn(), 3u);
}

} // namespace tarnwick
