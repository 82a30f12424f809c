#include "console/GLConsole.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"
#include "gui/GameMenus.h"
#include "support/Keyboard.h"
#include "support/PlayTest.h"

namespace tarnwick {

/// A game in a window that has the focus, steered by the mouse: 10 degrees a second for each pixel from the
/// middle.
class GameMouseTest : public PlayTest {
protected:
    GameMouseTest() {
        data.write("cfg/camera.cfg", "mouseTurnSpeed = 10 maxAngle = 180 movementInterpolateSpeed = 1");
        play();
        sendWindowEvent(SDL_WINDOWEVENT_FOCUS_GAINED);
        point(0);
        tick();
    }

    /// Puts the pointer `pixels` right of the middle.
    static void point(Sint32 pixels) {
        moveMouse(GLWindow::getClientCenterX() + pixels, 300);
        GLWindow::run();
    }
    static void tick() { Game::tick(0.01f); }
    /// By how far the view has turned after the pointer has gone 200 pixels from the middle before the play
    /// takes the mouse back, and for a tick after it.
    template <typename TakeBack>
    static float turnedWhen(TakeBack takeBack) {
        point(200);
        tick();
        point(200); // also where the pointer was centred once more
        takeBack();
        tick();
        tick();
        return Camera::angle();
    }
    static bool centred() { return GLWindow::getMouseScreenX() == GLWindow::getClientCenterX(); }
};

TEST_F(GameMouseTest, InPlayTheWayFromTheMiddleTurnsTheView) {
    point(10);

    tick();

    EXPECT_EQ(Camera::angle(), -10.0f * 10.0f * 0.01f);
    EXPECT_TRUE(centred());
}

TEST_F(GameMouseTest, WhereThePointerStoodInAMenuTurnsNothingAfterIt) {
    GameMenus::setCurrentMenu(menu::inGame);

    const float turned = turnedWhen([] { GameMenus::setCurrentMenu(menu::none); });

    EXPECT_EQ(turned, 0.0f);
    EXPECT_TRUE(centred());
}

TEST_F(GameMouseTest, NorAfterEscape) {
    Game::keyboardPressed(key::escape);

    const float turned = turnedWhen([] { Game::keyboardPressed(key::escape); });

    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::none);
    EXPECT_EQ(turned, 0.0f);
}

TEST_F(GameMouseTest, NorAfterTheConsole) {
    Game::keyboardPressed(key::console);

    const float turned = turnedWhen([] { Game::keyboardPressed(key::console); });

    EXPECT_EQ(turned, 0.0f);
    EXPECT_TRUE(centred());
}

TEST_F(GameMouseTest, NorAfterTheFreeCamera) {
    GLConsole::runLine("FreeCamera true");

    const float turned = turnedWhen([] { GLConsole::runLine("FreeCamera false"); });

    EXPECT_EQ(turned, 0.0f);
}

TEST_F(GameMouseTest, NorWhenTheFocusReturns) {
    sendWindowEvent(SDL_WINDOWEVENT_FOCUS_LOST);
    GLWindow::run();

    const float turned = turnedWhen([] {
        sendWindowEvent(SDL_WINDOWEVENT_FOCUS_GAINED);
        GLWindow::run();
    });

    EXPECT_EQ(turned, 0.0f);
    EXPECT_TRUE(centred());
}

TEST_F(GameMouseTest, NorWhenThePauseEnds) {
    Game::keyboardPressed(key::pause);
    tick();
    point(200);

    Game::keyboardPressed(key::pause);
    tick();

    EXPECT_EQ(Camera::angle(), 0.0f);
    EXPECT_TRUE(centred());
}

TEST_F(GameMouseTest, WithoutTheFocusThePointerIsLeftAlone) {
    GameMenus::setCurrentMenu(menu::inGame);
    tick();
    sendWindowEvent(SDL_WINDOWEVENT_FOCUS_LOST);
    point(200);

    GameMenus::setCurrentMenu(menu::none);
    tick();

    EXPECT_EQ(GLWindow::getMouseScreenX(), GLWindow::getClientCenterX() + 200);
}

TEST_F(GameMouseTest, OnceThePlayHasTheMouseEveryMovementCounts) {
    GameMenus::setCurrentMenu(menu::inGame);
    tick();
    GameMenus::setCurrentMenu(menu::none);
    tick();
    point(10);

    tick();

    EXPECT_EQ(Camera::angle(), -10.0f * 10.0f * 0.01f);
}

} // namespace tarnwick
