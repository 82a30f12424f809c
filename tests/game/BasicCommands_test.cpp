#include "game/BasicCommands.h"

#include "console/GLConsole.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"
#include "support/ConsoleAnswer.h"
#include "support/DataFolder.h"
#include "support/Keyboard.h"
#include "support/LevelFileBuilder.h"
#include "support/ModuleTest.h"

namespace tarnwick {

/// Starts with the basic commands.
class BasicCommandsTest : public ModuleTest {
protected:
    BasicCommandsTest() {
        BasicCommands::handOver();
        GLConsole::clearCommands();
    }
};

TEST_F(BasicCommandsTest, MapWithoutANameTellsTheLevel) {
    EXPECT_EQ(answerTo("map"), "\nMap is ");
    EXPECT_EQ(answerTo("map "), "\nMap is ");
}

TEST_F(BasicCommandsTest, MapChangesTheLevelOfARunningGameAtTheFramesEnd) {
    const DataFolder folder;
    folder.write("maps/a.rivl", LevelFileBuilder::write(LevelFile()));
    folder.write("maps/b.rivl", LevelFileBuilder::write(LevelFile()));
    ASSERT_TRUE(Game::initialise("maps\\a.rivl"));

    EXPECT_EQ(answerTo("map maps\\b.rivl"), "");
    EXPECT_EQ(answerTo("map"), "\nMap is maps\\a.rivl");
    Game::serveRequests();

    EXPECT_EQ(answerTo("map"), "\nMap is maps\\b.rivl");
}

TEST_F(BasicCommandsTest, MapStartsAGameIfNoneRuns) {
    const DataFolder folder;
    folder.write("maps/a.rivl", LevelFileBuilder::write(LevelFile()));
    GLWindow::createHeadless(800, 600);
    sendWindowEvent(SDL_WINDOWEVENT_CLOSE); // ends the game in its first frame

    GLConsole::runLine("map maps\\a.rivl");

    const std::string printed = GLConsole::outputText();
    EXPECT_NE(printed.find("Game initialisation"), std::string::npos);
    EXPECT_NE(printed.find("Game shutdown"), std::string::npos);
    EXPECT_FALSE(Game::running());
    EXPECT_EQ(Game::currentMap(), "maps\\a.rivl");
}

} // namespace tarnwick
