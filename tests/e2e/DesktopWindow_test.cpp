// The window on a real desktop: run by `with-desktop`, on an X server of its own with a window manager.

#include "graphics/GLWindow.h"
#include "graphics/GLWindowEventListener.h"
#include "support/ModuleReset.h"

#include <GL/gl.h>
#include <SDL.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>

namespace tarnwick {

namespace {

constexpr std::uint32_t patience = 3000; ///< Milliseconds in which a desktop must have done what it was told.
constexpr std::uint32_t calm = 250;      ///< Milliseconds after which nothing more is expected to happen.

/// Lets the window live until `done` holds; false if that never happens.
bool runUntil(const std::function<bool()>& done) {
    for (std::uint32_t waited = 0; waited < patience; waited += 5) {
        GLWindow::run();
        if (done()) {
            return true;
        }
        SDL_Delay(5);
    }
    return false;
}

void runForAWhile() {
    for (std::uint32_t waited = 0; waited < calm; waited += 5) {
        GLWindow::run();
        SDL_Delay(5);
    }
}

/// Counts what it hears.
class CountingListener final : public GLWindowEventListener {
public:
    int resized = 0;
    int closed = 0;
    int focusLost = 0;
    int redrawn = 0;
    int keys = 0;

    void keyboardPressed(std::uint32_t) override { ++keys; }
    void windowResized() override { ++resized; }
    void windowClosed() override { ++closed; }
    void windowRedrawing() override { ++redrawn; }
    void windowFocusLost() override { ++focusLost; }
};

} // namespace

class DesktopWindowTest : public testing::Test {
protected:
    DesktopWindowTest() {
        ModuleReset::all();
        GLWindow::createWindow("Desktop test", 640, 480);
        GLWindow::setEventListener(&listener);
        runUntil(GLWindow::hasFocus);
        // A painting with the pointer outside takes the cursor away, wherever the last test left it.
        GLWindow::centerMouse();
    }
    ~DesktopWindowTest() override { ModuleReset::all(); }

    CountingListener listener;
};

TEST_F(DesktopWindowTest, ANewWindowHasItsSizeItsTitleAndTheFocus) {
    EXPECT_TRUE(GLWindow::hasFocus());
    EXPECT_EQ(GLWindow::getClientWidth(), 640);
    EXPECT_EQ(GLWindow::getClientHeight(), 480);
    EXPECT_EQ(GLWindow::getTitle(), "Desktop test");
    EXPECT_TRUE(GLWindow::isResizeable());
    EXPECT_EQ(GLWindow::getCursor(), 1);
    EXPECT_GT(GLWindow::getHeight(), 480); // the frame
}

TEST_F(DesktopWindowTest, ACentredWindowHasItsCentreOnTheScreens) {
    GLWindow::center();
    runForAWhile();

    EXPECT_EQ(GLWindow::getX(), GLWindow::getScreenWidth() / 2 - GLWindow::getWidth() / 2);
    EXPECT_EQ(GLWindow::getY(), GLWindow::getScreenHeight() / 2 - GLWindow::getHeight() / 2);
}

TEST_F(DesktopWindowTest, APositionIsThatOfTheFrame) {
    GLWindow::setPosition(120, 90);
    runForAWhile();

    EXPECT_EQ(GLWindow::getX(), 120);
    EXPECT_EQ(GLWindow::getY(), 90);
    EXPECT_GT(GLWindow::getClientCenterY(), 90 + 480 / 2 - 1); // below the caption
}

TEST_F(DesktopWindowTest, SizesBelowOneAreIgnored) {
    GLWindow::setSize(0, 100);
    GLWindow::setClientSize(100, -1);
    runForAWhile();

    EXPECT_EQ(GLWindow::getClientWidth(), 640);
    EXPECT_EQ(GLWindow::getClientHeight(), 480);
}

TEST_F(DesktopWindowTest, ANewSizeIsToldOnceAndAtOnce) {
    GLWindow::setClientSize(500, 400);
    const int toldAtOnce = listener.resized;
    runForAWhile();

    EXPECT_EQ(toldAtOnce, 1);
    EXPECT_EQ(listener.resized, 1);
    EXPECT_EQ(GLWindow::getClientWidth(), 500);
    EXPECT_EQ(GLWindow::getClientHeight(), 400);
}

TEST_F(DesktopWindowTest, TheOuterSizeCountsTheFrame) {
    const std::int32_t frameWidth = GLWindow::getWidth() - 640;
    GLWindow::setSize(500, 400);
    runForAWhile();

    EXPECT_EQ(GLWindow::getWidth(), 500);
    EXPECT_EQ(GLWindow::getHeight(), 400);
    EXPECT_EQ(GLWindow::getClientWidth(), 500 - frameWidth);
}

TEST_F(DesktopWindowTest, FullScreenIsTheDesktopsSizeAndGoesBackToAWindow) {
    GLWindow::setFullscreen(true, GLWindow::getScreenWidth(), GLWindow::getScreenHeight());
    runForAWhile();
    const bool fullscreen = GLWindow::isFullscreen();
    const std::int32_t fullWidth = GLWindow::getClientWidth();
    const std::int32_t fullHeight = GLWindow::getClientHeight();

    GLWindow::setFullscreen(false, 800, 600);
    runForAWhile();

    EXPECT_TRUE(fullscreen);
    EXPECT_EQ(fullWidth, GLWindow::getScreenWidth());
    EXPECT_EQ(fullHeight, GLWindow::getScreenHeight());
    EXPECT_FALSE(GLWindow::isFullscreen());
    EXPECT_EQ(GLWindow::getClientWidth(), 800);
    EXPECT_EQ(GLWindow::getClientHeight(), 600);
    EXPECT_EQ(GLWindow::getX(), GLWindow::getScreenWidth() / 2 - GLWindow::getWidth() / 2);
    EXPECT_EQ(GLWindow::getY(), GLWindow::getScreenHeight() / 2 - GLWindow::getHeight() / 2);
    EXPECT_EQ(listener.focusLost, 0);
}

TEST_F(DesktopWindowTest, LosingTheFocusMinimisesAndTellsOnce) {
    SDL_Window* const other = SDL_CreateWindow("Other", 50, 50, 100, 100, 0);
    SDL_RaiseWindow(other);
    const bool minimised = runUntil(GLWindow::isMinimised);
    runForAWhile();
    const int toldOnce = listener.focusLost;
    GLWindow::restore();
    GLWindow::giveFocous();
    const bool back = runUntil(GLWindow::hasFocus);
    runForAWhile();
    SDL_DestroyWindow(other);

    EXPECT_TRUE(minimised);
    EXPECT_EQ(toldOnce, 1);
    EXPECT_TRUE(back);
    EXPECT_FALSE(GLWindow::isMinimised());
    EXPECT_EQ(listener.focusLost, 1);
}

// The fault: a full screen that stays over the program that the user went to.
TEST_F(DesktopWindowTest, AFullScreenThatLosesTheFocusMinimisesAndTellsOnce) {
    GLWindow::setFullscreen(true, GLWindow::getScreenWidth(), GLWindow::getScreenHeight());
    runForAWhile();
    SDL_Window* const other = SDL_CreateWindow("Other", 50, 50, 100, 100, 0);
    SDL_RaiseWindow(other);
    const bool minimised = runUntil(GLWindow::isMinimised);
    runForAWhile();
    const int toldOnce = listener.focusLost;
    SDL_DestroyWindow(other);
    GLWindow::restore();
    GLWindow::giveFocous();
    const bool back = runUntil(GLWindow::hasFocus);
    runForAWhile();

    EXPECT_TRUE(minimised);
    EXPECT_EQ(toldOnce, 1);
    EXPECT_TRUE(back);
    EXPECT_TRUE(GLWindow::isFullscreen());
    EXPECT_EQ(GLWindow::getClientWidth(), GLWindow::getScreenWidth());
}

TEST_F(DesktopWindowTest, ASizeThatTheUserDrawsIsToldAndDrawnIn) {
    ASSERT_EQ(std::system("timeout 20 xdotool search --name '^Desktop test$' windowsize 700 500"), 0);
    const bool resized = runUntil([] { return GLWindow::getClientWidth() == 700; });
    runForAWhile();
    GLint viewport[4] = {};
    GLWindow::glBeginDraw2d();
    glGetIntegerv(GL_VIEWPORT, viewport);

    EXPECT_TRUE(resized);
    EXPECT_GE(listener.resized, 1);
    EXPECT_EQ(GLWindow::getClientHeight(), 500);
    EXPECT_EQ(viewport[2], 700);
    EXPECT_EQ(viewport[3], 500);
}

TEST_F(DesktopWindowTest, AWindowCreatedAnewForItsSamplesIsTheSameToItsUsers) {
    GLWindow::setPosition(200, 150);
    GLWindow::setCursor(2);
    GLWindow::setResizeable(false);
    runForAWhile();

    const bool changed = GLWindow::setAntiAliasingMode(4);
    GLint samples = 0;
    glGetIntegerv(GL_SAMPLES, &samples);
    runForAWhile();
    GLWindow::setAntiAliasingMode(2);
    GLWindow::setAntiAliasingMode(4);
    runForAWhile();

    EXPECT_TRUE(changed);
    EXPECT_EQ(samples, 4);
    EXPECT_EQ(GLWindow::getAntiAliasingMode(), 4u);
    EXPECT_EQ(GLWindow::getX(), 200);
    EXPECT_EQ(GLWindow::getY(), 150);
    EXPECT_EQ(GLWindow::getClientWidth(), 640);
    EXPECT_EQ(GLWindow::getClientHeight(), 480);
    EXPECT_EQ(GLWindow::getTitle(), "Desktop test");
    EXPECT_EQ(GLWindow::getCursor(), 2);
    EXPECT_FALSE(GLWindow::isResizeable());
    EXPECT_FALSE(GLWindow::isFullscreen());
    EXPECT_EQ(GLWindow::getEventListener(), &listener);
    EXPECT_EQ(listener.closed, 0);
    EXPECT_EQ(listener.focusLost, 0);
}

TEST_F(DesktopWindowTest, AFullScreenWindowCreatedAnewStaysInFullScreen) {
    GLWindow::setFullscreen(true, GLWindow::getScreenWidth(), GLWindow::getScreenHeight());
    runForAWhile();

    GLWindow::setAntiAliasingMode(4);
    runForAWhile();

    EXPECT_TRUE(GLWindow::isFullscreen());
    EXPECT_EQ(GLWindow::getClientWidth(), GLWindow::getScreenWidth());
    EXPECT_EQ(GLWindow::getClientHeight(), GLWindow::getScreenHeight());
    EXPECT_EQ(listener.focusLost, 0);
}

TEST_F(DesktopWindowTest, ZeroSamplesAreOneAndCreateTheWindowAnew) {
    GLWindow::setAntiAliasingMode(4);

    EXPECT_TRUE(GLWindow::setAntiAliasingMode(0));

    EXPECT_EQ(GLWindow::getAntiAliasingMode(), 1u);
    EXPECT_EQ(glIsEnabled(GL_MULTISAMPLE), GL_FALSE);
}

TEST_F(DesktopWindowTest, ANumberOfSamplesThatFailsFallsBackToTheFormerOne) {
    constexpr std::uint32_t tooMany = 64;

    const bool fromNone = GLWindow::setAntiAliasingMode(tooMany);
    const std::uint32_t modeAfterNone = GLWindow::getAntiAliasingMode();
    GLWindow::setAntiAliasingMode(4);
    const bool fromFour = GLWindow::setAntiAliasingMode(tooMany);
    GLint samples = 0;
    glGetIntegerv(GL_SAMPLES, &samples);

    EXPECT_FALSE(fromNone);
    EXPECT_EQ(modeAfterNone, 1u);
    EXPECT_FALSE(fromFour);
    EXPECT_EQ(GLWindow::getAntiAliasingMode(), 4u);
    EXPECT_EQ(samples, 4);
}

TEST_F(DesktopWindowTest, TheCursorGoesToTheMiddleAndFromThere) {
    GLWindow::centerMouse();
    const std::int32_t x = GLWindow::getMouseScreenX();
    const std::int32_t y = GLWindow::getMouseScreenY();
    GLWindow::moveMouse(31, -9);
    runForAWhile();

    EXPECT_EQ(x, GLWindow::getClientCenterX());
    EXPECT_EQ(y, GLWindow::getClientCenterY());
    EXPECT_EQ(GLWindow::getMouseScreenX(), x + 30); // a move comes out one pixel short
    EXPECT_EQ(GLWindow::getMouseScreenY(), y - 10);
    EXPECT_TRUE(GLWindow::mouseInClientArea());
}

TEST_F(DesktopWindowTest, ARepaintIsServedOnce) {
    runForAWhile();
    listener.redrawn = 0;
    GLWindow::requestRepaint();
    GLWindow::run();
    GLWindow::run();

    EXPECT_EQ(listener.redrawn, 1);
}

TEST_F(DesktopWindowTest, AQuestionIsAnsweredByKeyAndTheWindowStaysUp) {
    ASSERT_EQ(std::system("(sleep 0.7; timeout 20 xdotool key Return) &"), 0);
    const bool yes = GLWindow::showQuestionBox("Shall it be?", "Question");
    ASSERT_EQ(std::system("(sleep 0.7; timeout 20 xdotool key Escape) &"), 0);
    const bool no = GLWindow::showQuestionBox("Shall it be?", "Question");
    runForAWhile();

    EXPECT_TRUE(yes);
    EXPECT_FALSE(no);
    EXPECT_EQ(listener.focusLost, 0);
    EXPECT_FALSE(GLWindow::isMinimised());
}

} // namespace tarnwick
