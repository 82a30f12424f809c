#include "console/GLConsole.h"
#include "game/Game.h"
#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"
#include "gui/GameMenus.h"
#include "gui/GuiOptionChooser.h"
#include "gui/Menu_Options.h"
#include "support/GameSceneTest.h"
#include "support/Keyboard.h"

#include <algorithm>

namespace tarnwick {

/// Menus over a level, in a window of 400 by 300: half a pixel a virtual unit.
class GameMenusDrawingTest : public GameSceneTest {
protected:
    GameMenusDrawingTest() {
        data.write("cfg/game.cfg", "cursor = gfx\\cursor.tga");
        data.write("cfg/menu_main.cfg", "logo = gfx\\logo.tga logo_x = 400 logo_y = 300 "
                                        "startButton_x = 380 startButton_y = 280 startButton_w = 40 "
                                        "startButton_h = 40 startButton_frames_outOfFocus = gfx\\sign.tga "
                                        "startButton_frames_inFocus = gfx\\lit.tga");
        writePicture("gfx/logo.tga", 128, [](auto, auto) { return Texel{blue}; });
        writePicture("gfx/sign.tga", 32, [](auto, auto) { return Texel{yellow}; });
        writePicture("gfx/lit.tga", 32, [](auto, auto) { return Texel{white}; });
        writePicture("gfx/cursor.tga", 16, [](auto, auto) { return Texel{green}; });
    }

    static GuiOptionChooser& quality(Menu_Options& options) {
        GuiOptionChooser* last = nullptr;
        for (const auto& widget : options.getWidgets()) {
            if (auto* const chooser = dynamic_cast<GuiOptionChooser*>(widget.get()); chooser != nullptr) {
                last = chooser;
            }
        }
        return *last;
    }
};

TEST_F(GameMenusDrawingTest, AMenuLiesOverTheLevelWithItsLogoInItsMiddleAndTheButtonsOnIt) {
    addSquare(0, 0, 100, "red", 1);
    play();
    GameMenus::setCurrentMenu(menu::main);

    Game::drawPicture();

    EXPECT_EQ(shownAt(50, 80), red);
    EXPECT_EQ(shownAt(338, 238), blue) << "the logo is 128 units a side";
    EXPECT_EQ(shownAt(462, 362), blue);
    EXPECT_EQ(shownAt(334, 238), black);
    EXPECT_EQ(shownAt(466, 362), black);
    EXPECT_EQ(shownAt(400, 300), yellow);
}

TEST_F(GameMenusDrawingTest, TheLogoDoesNotKeepTheMouseFromTheButtons) {
    play();
    GameMenus::setCurrentMenu(menu::main);

    GameMenus::sendMenuEvent_mouseMoved(200, 150);
    Game::drawPicture();

    EXPECT_EQ(shownAt(400, 300), white) << "lit";
}

TEST_F(GameMenusDrawingTest, TheCursorLiesAtTheMouseOverABlackCopyAndOnlyInMenus) {
    addSquare(0, 0, 400, "red", 1);
    play();
    moveMouse(100, 100);
    GLWindow::run();
    Game::drawPicture();
    const FramePicture inPlay = picture();
    GameMenus::setCurrentMenu(menu::main);

    Game::drawPicture();

    EXPECT_EQ(inPlay.at(105, 105), red);
    EXPECT_EQ(pixel(100, 100), green);
    EXPECT_EQ(pixel(115, 115), green);
    EXPECT_EQ(pixel(117, 117), black);
    EXPECT_EQ(pixel(118, 118), red);
}

TEST_F(GameMenusDrawingTest, AChangeOfTheSamplesAloneLoadsAllPicturesAgain) {
    addSquare(0, 0, 400, "red", 1);
    GLConsole::runLine("AntiAliasingSamples 4");
    play();
    Menu_Options options;
    const std::string before = quality(options).getCurrentText();
    writeFlatPicture("gfx/red.tga", green); // seen when the file is read again

    quality(options).setCurrentOption(3); // high: two samples, the same detail
    options.commitSettings();
    Game::drawPicture();

    EXPECT_EQ(before, "very high");
    EXPECT_EQ(GLTextureManager::getTextureDetailLevel(), 0u);
    EXPECT_EQ(shownAt(100, 100), green);
}

TEST_F(GameMenusDrawingTest, WhatHoldsAlreadyLoadsNothing) {
    addSquare(0, 0, 400, "red", 1);
    play();
    Menu_Options options;
    writeFlatPicture("gfx/red.tga", green);

    options.commitSettings();
    Game::drawPicture();

    EXPECT_EQ(quality(options).getCurrentText(), "normal");
    EXPECT_EQ(shownAt(100, 100), red);
}

TEST_F(GameMenusDrawingTest, FullScreenGoesOffToAWindowOf800By600) {
    play();
    GLWindow::setFullscreen(true, GLWindow::getScreenWidth(), GLWindow::getScreenHeight());
    Menu_Options options;
    GuiOptionChooser& fullscreen =
        dynamic_cast<GuiOptionChooser&>(**std::ranges::find_if(options.getWidgets(), [](const auto& widget) {
            return dynamic_cast<GuiOptionChooser*>(widget.get()) != nullptr;
        }));
    const std::string before = fullscreen.getCurrentText();

    fullscreen.setCurrentOption(0);
    options.commitSettings();

    EXPECT_EQ(before, "on");
    EXPECT_FALSE(GLWindow::isFullscreen());
    EXPECT_EQ(GLWindow::getClientWidth(), 800);
    EXPECT_EQ(GLWindow::getClientHeight(), 600);
}

} // namespace tarnwick
