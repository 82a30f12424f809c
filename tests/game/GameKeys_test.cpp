#include "game/Camera.h"
#include "game/Game.h"
#include "game/GameRules.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyBindings.h"
#include "graphics/KeyMap.h"
#include "gui/GameMenus.h"
#include "particles/ParticleManager.h"
#include "support/GameSceneTest.h"
#include "support/Keyboard.h"
#include "support/PlayTest.h"
#include "support/VirtualPad.h"

namespace tarnwick {

/// A game in which the view turns by 60 degrees a second.
class GameKeysTest : public PlayTest {
protected:
    GameKeysTest() {
        data.write("cfg/camera.cfg", "keyboardTurnSpeed = 60 maxAngle = 180 movementInterpolateSpeed = 1");
    }
    void bind(const std::string& keys) const {
        data.write("cfg/keys.cfg", keys);
        KeyBindings::initialise();
    }
    static void hold(SDL_Scancode scancode, SDL_Keycode keycode) {
        pressKey(scancode, keycode);
        GLWindow::run();
    }
    static constexpr float turnOfATick = 60.0f * 0.01f; ///< Degrees.
};

/// Finds a view that still listens to the keys of old alone.
TEST_F(GameKeysTest, TheChosenKeysTurnTheView) {
    bind("turnLeft = A turnRight = D");
    play();

    hold(SDL_SCANCODE_A, SDLK_a);
    Game::tick(0.01f);
    EXPECT_EQ(Camera::angle(), turnOfATick);

    releaseKey(SDL_SCANCODE_A, SDLK_a);
    hold(SDL_SCANCODE_LEFT, SDLK_LEFT);
    Game::tick(0.01f);
    EXPECT_EQ(Camera::angle(), turnOfATick);
}

/// Finds a menu that opens by its key and cannot be left by it, or not by Escape.
TEST_F(GameKeysTest, TheChosenMenuKeyOpensAndEscapeStillGoesBack) {
    bind("menu = M");
    play();

    Game::keyboardPressed(key::escape);
    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::none);
    Game::keyboardPressed('M');
    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::inGame);
    Game::keyboardPressed('M');
    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::none);
    Game::keyboardPressed('M');
    Game::keyboardPressed(key::escape);
    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::none);
}

/// Finds a menu that closes under the key that walks it.
TEST_F(GameKeysTest, AMenuKeyThatTheMenusNeedIsTheirs) {
    bind("menu = Space");
    play();

    Game::keyboardPressed(key::space);
    ASSERT_EQ(GameMenus::getCurrentMenu(), menu::inGame);
    Game::keyboardPressed(key::space);

    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::inGame);
}

/// Finds a restart that leaves the water or the pause as it was, or that works without a key.
TEST_F(GameKeysTest, TheRestartKeyStartsTheLevelAgainAndEndsAPause) {
    bind("restart = R");
    play();
    ParticleManager::particles.clear();
    Game::keyboardPressed(key::pause);

    Game::keyboardPressed('R');
    Game::serveRequests();

    EXPECT_FALSE(Game::paused());
    EXPECT_EQ(ParticleManager::particles.size(), 128u);
}

/// Finds a pad that opens no menu, walks it the wrong way, or cannot leave it.
TEST_F(GameKeysTest, APadOpensWalksAndLeavesTheMenus) {
    play();

    Game::keyboardPressed(key::padA);
    Game::keyboardPressed(key::padB);
    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::none) << "in play they do nothing";
    Game::keyboardPressed(key::padMenu);
    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::inGame);
    Game::keyboardPressed(key::padB);
    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::none);
    Game::keyboardPressed(key::padMenu);
    Game::keyboardPressed(key::padMenu);
    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::none);
}

/// Finds a stick that the view does not follow, or follows the wrong way.
TEST_F(GameKeysTest, TheStickTurnsTheView) {
    VirtualPad::look(data);
    VirtualPad pad;
    play();

    pad.lean(1.0f);
    Game::tick(0.01f);
    EXPECT_EQ(Camera::angle(), -turnOfATick) << "as the right key does";
    pad.lean(0.0f);
    pad.hold(SDL_CONTROLLER_BUTTON_DPAD_LEFT);
    Game::tick(0.01f);
    EXPECT_EQ(Camera::angle(), 0.0f);
}

/// Finds a pad that shakes without a loss, or never.
TEST_F(GameKeysTest, LostWaterShakesThePad) {
    data.write("cfg/water.cfg", "roomTemperature = 20 particleKillTime = 0.001");
    VirtualPad::look(data);
    VirtualPad pad;
    play();

    Game::tick(0.01f);
    EXPECT_EQ(pad.lastRumble(), 0);
    ParticleManager::killParticle(ParticleManager::particles.front());
    for (int i = 0; i < 4; ++i) {
        Game::tick(0.01f);
    }

    EXPECT_GT(pad.lastRumble(), 0);
    EXPECT_LT(pad.lastRumble(), 65535);
}

class GameFullscreenTest : public GameSceneTest {
protected:
    /// Whether the frame's end changes between window and full screen.
    static bool served() {
        const bool before = GLWindow::isFullscreen();
        Game::serveRequests();
        return GLWindow::isFullscreen() != before;
    }
    static constexpr std::uint32_t f11 = 0x7A;
};

/// Finds a key that does nothing, or one that changes the screen under the options, which take it back.
TEST_F(GameFullscreenTest, ItsKeyChangesTheScreenAndSoDoAltAndEnter) {
    data.write("cfg/keys.cfg", "fullscreen = F11");
    KeyBindings::initialise();
    play();

    Game::keyboardPressed(f11);
    EXPECT_TRUE(served());
    EXPECT_FALSE(served());
    Game::keyboardPressed(key::altEnter);
    EXPECT_TRUE(served());
    GameMenus::setCurrentMenu(menu::options);
    Game::keyboardPressed(f11);
    EXPECT_FALSE(served());
}

} // namespace tarnwick
