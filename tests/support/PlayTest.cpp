#include "support/PlayTest.h"

#include "console/GLConsole.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"
#include "gui/GameMenus.h"
#include "level/Level.h"
#include "support/LevelFileBuilder.h"

namespace tarnwick {

std::string writeLevel(const DataFolder& data, const LevelFile& level, const std::string& name) {
    data.write("maps/" + name + ".rivl", LevelFileBuilder::write(level));
    return "maps\\" + name + ".rivl";
}

void startLevel(const DataFolder& data, const LevelFile& level) {
    ASSERT_TRUE(Game::initialise(writeLevel(data, level))) << GLConsole::outputText();
    GameMenus::setCurrentMenu(menu::none);
}

void playLevel(const DataFolder& data, const LevelFile& level, Vector2 camera) {
    startLevel(data, level);
    Camera::setPosition(camera);
    Camera::setState(Camera::normal);
}

PlayTest::PlayTest() {
    GLWindow::createHeadless(800, 600);
    GLConsole::initialise();
}

PlayTest::~PlayTest() {
    GLWindow::close();
}

bool PlayTest::load(const std::string& name) {
    return Level::load(writeLevel(data, level, name));
}

} // namespace tarnwick
