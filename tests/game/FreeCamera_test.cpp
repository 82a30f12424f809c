#include "game/FreeCamera.h"

#include "graphics/GLWindow.h"
#include "support/Keyboard.h"
#include "support/ModuleTest.h"

namespace tarnwick {

class FreeCameraTest : public ModuleTest {
protected:
    FreeCameraTest() { GLWindow::createHeadless(800, 600); }
    ~FreeCameraTest() override { GLWindow::close(); }

    /// Steers for `seconds` with one key held.
    void steerWith(SDL_Scancode scancode, SDL_Keycode code, float seconds) {
        pressKey(scancode, code);
        GLWindow::run();
        camera.steer(seconds);
        releaseKey(scancode, code);
        GLWindow::run();
    }
    void pageUp(float seconds) { steerWith(SDL_SCANCODE_PAGEUP, SDLK_PAGEUP, seconds); }
    void pageDown(float seconds) { steerWith(SDL_SCANCODE_PAGEDOWN, SDLK_PAGEDOWN, seconds); }

    static constexpr float step = 500.0f * 0.02f; ///< World units in 0.02 s at zoom 1.
    static constexpr float doubling = 0.2f;       ///< Seconds: at 5 a second a factor of 2.

    FreeCamera camera;
};

TEST_F(FreeCameraTest, ItStandsAtTheOriginAtZoomOneAndIsOff) {
    EXPECT_EQ(camera.position, Vector2{});
    EXPECT_EQ(camera.zoom, 1.0f);
    EXPECT_FALSE(camera.enabled);
}

TEST_F(FreeCameraTest, EachArrowMovesItsOwnWay) {
    steerWith(SDL_SCANCODE_UP, SDLK_UP, 0.02f);
    const Vector2 up = camera.position;
    camera.position = {};
    steerWith(SDL_SCANCODE_DOWN, SDLK_DOWN, 0.02f);
    const Vector2 down = camera.position;
    camera.position = {};
    steerWith(SDL_SCANCODE_LEFT, SDLK_LEFT, 0.02f);
    const Vector2 left = camera.position;
    camera.position = {};
    steerWith(SDL_SCANCODE_RIGHT, SDLK_RIGHT, 0.02f);

    EXPECT_EQ(up, (Vector2{0.0f, -step}));
    EXPECT_EQ(down, (Vector2{0.0f, step}));
    EXPECT_EQ(left, (Vector2{-step, 0.0f}));
    EXPECT_EQ(camera.position, (Vector2{step, 0.0f}));
    EXPECT_EQ(camera.zoom, 1.0f);
}

TEST_F(FreeCameraTest, WithoutAKeyItStands) {
    camera.position = {7.0f, 8.0f};

    camera.steer(1.0f);

    EXPECT_EQ(camera.position, (Vector2{7.0f, 8.0f}));
    EXPECT_EQ(camera.zoom, 1.0f);
}

TEST_F(FreeCameraTest, TheLargerTheZoomTheSlowerTheFlight) {
    camera.zoom = 4.0f;

    steerWith(SDL_SCANCODE_RIGHT, SDLK_RIGHT, 0.02f);

    EXPECT_EQ(camera.position, (Vector2{step / 4.0f, 0.0f}));
}

TEST_F(FreeCameraTest, ThePageKeysZoomByAShareOfASecond) {
    pageUp(doubling);
    const float enlarged = camera.zoom;
    camera.zoom = 1.0f;
    pageDown(doubling);

    EXPECT_EQ(enlarged, 2.0f);
    EXPECT_EQ(camera.zoom, 0.5f);
    EXPECT_EQ(camera.position, Vector2{});
}

TEST_F(FreeCameraTest, PageUpHasAFloorAndNoUpperBound) {
    camera.zoom = 0.001f;
    pageUp(doubling);
    const float fromBelow = camera.zoom;
    camera.zoom = 0.0075f;
    pageUp(doubling);
    const float justAbove = camera.zoom;
    camera.zoom = 100.0f;
    pageUp(doubling);

    EXPECT_EQ(fromBelow, 0.01f);
    EXPECT_EQ(justAbove, 0.015f); // tested after the multiplication
    EXPECT_EQ(camera.zoom, 200.0f);
}

TEST_F(FreeCameraTest, PageDownHasACeilingAndNoLowerBound) {
    camera.zoom = 400.0f;
    pageDown(doubling);
    const float fromAbove = camera.zoom;
    camera.zoom = 150.0f;
    pageDown(doubling);
    const float justBelow = camera.zoom;
    camera.zoom = 0.01f;
    pageDown(doubling);

    EXPECT_EQ(fromAbove, 100.0f);
    EXPECT_EQ(justBelow, 75.0f); // tested after the division
    EXPECT_EQ(camera.zoom, 0.005f);
}

} // namespace tarnwick
