// The drawing set-ups of `GLWindow`, and its window off screen.

#include "core/FrameTimer.h"
#include "graphics/GLWindow.h"
#include "graphics/GLWindowEventListener.h"
#include "support/GLTest.h"

#include <SDL_video.h>

#include <array>
#include <cmath>
#include <string>

namespace tarnwick {

namespace {

class CountingListener final : public GLWindowEventListener {
public:
    int resized = 0;
    int redrawn = 0;
    int closed = 0;

    void windowResized() override { ++resized; }
    void windowRedrawing() override { ++redrawn; }
    void windowClosed() override { ++closed; }
};

void drawSquare(float left, float top, float edge) {
    glBegin(GL_QUADS);
    glVertex2f(left, top);
    glVertex2f(left + edge, top);
    glVertex2f(left + edge, top + edge);
    glVertex2f(left, top + edge);
    glEnd();
}

int stackDepth(GLenum stack) {
    GLint depth = 0;
    glGetIntegerv(stack, &depth);
    return depth;
}

} // namespace

class GLWindowDrawingTest : public GLTest {
protected:
    std::array<float, 16> matrix(GLenum which) const {
        std::array<float, 16> values{};
        glGetFloatv(which, values.data());
        return values;
    }
};

TEST_F(GLWindowDrawingTest, TheFlatSpaceIsInClientPixelsFromTheTopLeft) {
    glColor3f(1.0f, 1.0f, 1.0f);

    drawSquare(10.0f, 20.0f, 4.0f);

    EXPECT_EQ(pixelAt(10, 20), white);
    EXPECT_EQ(pixelAt(13, 23), white);
    EXPECT_EQ(pixelAt(9, 20), black);
    EXPECT_EQ(pixelAt(10, 19), black);
    EXPECT_EQ(pixelAt(14, 20), black);
    EXPECT_EQ(pixelAt(10, 24), black);
}

TEST_F(GLWindowDrawingTest, ABiggerWindowOffScreenIsDrawnOnToItsCorners) {
    GLWindow::setClientSize(300, 200);
    GLWindow::clearScreen(0.0f, 0.0f, 0.0f);
    GLWindow::glBeginDraw2d();

    drawSquare(290.0f, 190.0f, 10.0f);

    EXPECT_EQ(GLWindow::getClientWidth(), 300);
    EXPECT_EQ(pixelAt(299, 199), white);
    EXPECT_EQ(pixelAt(289, 199), black);
}

TEST_F(GLWindowDrawingTest, AResizeOffScreenKeepsTheContextAndTellsTheListener) {
    CountingListener listener;
    GLWindow::setEventListener(&listener);
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);

    GLWindow::setClientSize(100, 80);
    GLWindow::run();

    EXPECT_EQ(glIsTexture(texture), GL_TRUE);
    EXPECT_EQ(listener.resized, 1);
    EXPECT_EQ(listener.closed, 0);
}

TEST_F(GLWindowDrawingTest, ThePerspectiveLooksAlongZ) {
    GLWindow::glBeginDraw3d(90.0f, 1.0f, 100.0f);
    const std::array<float, 16> projection = matrix(GL_PROJECTION_MATRIX);

    EXPECT_NEAR(projection[0], 1.0f, 1e-6f); // a square window, and the tangent of 45 degrees
    EXPECT_NEAR(projection[5], 1.0f, 1e-6f);
    EXPECT_EQ(projection[11], -1.0f);
    EXPECT_EQ(matrix(GL_MODELVIEW_MATRIX)[0], 1.0f);
}

TEST_F(GLWindowDrawingTest, ACircleIsAnOutline) {
    glColor3f(1.0f, 1.0f, 1.0f);

    GLWindow::glCircle(32.5f, 32.5f, 20.0f, 64);

    for (int i = 0; i < 8; ++i) {
        const double angle = i * 0.785398;
        const auto x = static_cast<std::int32_t>(32.5 + 20.0 * std::cos(angle));
        const auto y = static_cast<std::int32_t>(32.5 + 20.0 * std::sin(angle));
        bool found = false;
        for (std::int32_t dy = -1; dy <= 1; ++dy) {
            for (std::int32_t dx = -1; dx <= 1; ++dx) {
                found = found || pixelAt(x + dx, y + dy) == white;
            }
        }
        EXPECT_TRUE(found) << i;
    }
    EXPECT_EQ(pixelAt(32, 32), black);
}

TEST_F(GLWindowDrawingTest, WhatWasPushedComesBack) {
    const float somebodys[2] = {};
    glEnable(GL_BLEND);
    glVertexPointer(2, GL_FLOAT, 0, somebodys);
    glTranslatef(3.0f, 0.0f, 0.0f);
    const std::array<float, 16> projection = matrix(GL_PROJECTION_MATRIX);
    const std::array<float, 16> modelview = matrix(GL_MODELVIEW_MATRIX);

    GLWindow::glPushState();
    glDisable(GL_BLEND);
    glVertexPointer(2, GL_FLOAT, 0, nullptr);
    GLWindow::glBeginDraw3d(60.0f, 1.0f, 10.0f);
    glMatrixMode(GL_TEXTURE);
    GLWindow::glPopState();

    GLint mode = 0;
    void* pointer = nullptr;
    glGetIntegerv(GL_MATRIX_MODE, &mode);
    glGetPointerv(GL_VERTEX_ARRAY_POINTER, &pointer);
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    EXPECT_EQ(pointer, somebodys);
    EXPECT_EQ(matrix(GL_PROJECTION_MATRIX), projection);
    EXPECT_EQ(matrix(GL_MODELVIEW_MATRIX), modelview);
    EXPECT_EQ(mode, GL_MODELVIEW);
}

TEST_F(GLWindowDrawingTest, ClearingFillsTheWindowWithAColour) {
    GLWindow::clearScreen(1.0f, 0.0f, 1.0f);

    EXPECT_EQ(pixelAt(0, 0), (PixelColour{255, 0, 255}));
    EXPECT_EQ(pixelAt(side - 1, side - 1), (PixelColour{255, 0, 255}));
}

TEST_F(GLWindowDrawingTest, AFadeTakesItsTimeAndLeavesTwoEntriesMoreOnEachStack) {
    CountingListener listener;
    GLWindow::setEventListener(&listener);
    GLWindow::requestRepaint();
    const int projection = stackDepth(GL_PROJECTION_STACK_DEPTH);
    const int modelview = stackDepth(GL_MODELVIEW_STACK_DEPTH);

    GLWindow::fadeScreen(5.0f * FrameTimer::shortestSeconds);

    EXPECT_EQ(stackDepth(GL_PROJECTION_STACK_DEPTH), projection + 2);
    EXPECT_EQ(stackDepth(GL_MODELVIEW_STACK_DEPTH), modelview + 2);
    EXPECT_EQ(listener.redrawn, 0); // it hears nothing meanwhile
    EXPECT_EQ(GLWindow::getEventListener(), &listener);
}

TEST_F(GLWindowDrawingTest, AFadeOfNoTimeDoesNothing) {
    const int projection = stackDepth(GL_PROJECTION_STACK_DEPTH);

    GLWindow::fadeScreen(0.0f);
    GLWindow::fadeScreen(-1.0f);

    EXPECT_EQ(stackDepth(GL_PROJECTION_STACK_DEPTH), projection);
}

TEST_F(GLWindowDrawingTest, AnExtensionIsAWholeWordInAnyCase) {
    std::string name = "gl_arb_MULTISAMPLE";
    std::string part = "GL_ARB_multi";

    EXPECT_TRUE(GLWindow::extensionSupported(name));
    EXPECT_EQ(name, "GL_ARB_MULTISAMPLE"); // in place
    EXPECT_FALSE(GLWindow::extensionSupported(part));
}

TEST_F(GLWindowDrawingTest, OneSampleAndNoneAreAlwaysThere) {
    EXPECT_TRUE(GLWindow::antiAliasingModeAvailable(0));
    EXPECT_TRUE(GLWindow::antiAliasingModeAvailable(1));
    EXPECT_FALSE(GLWindow::antiAliasingModeAvailable(1000));
    EXPECT_FALSE(GLWindow::antiAliasingModeAvailable(0xFFFFFFFC));
}

TEST_F(GLWindowDrawingTest, ThePresentModeCreatesNothingAnew) {
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);

    EXPECT_TRUE(GLWindow::setAntiAliasingMode(1));
    EXPECT_TRUE(GLWindow::setAntiAliasingMode(0));

    EXPECT_EQ(glIsTexture(texture), GL_TRUE);
}

TEST_F(GLWindowDrawingTest, AModeThatTheGlDoesNotHaveLeavesAWindowWithoutSamples) {
    // The driver off screen promises samples and has none.
    CountingListener listener;
    GLWindow::setEventListener(&listener);
    GLWindow::setTitle("The title");
    GLWindow::setCursor(2);
    GLWindow::setResizeable(false);

    EXPECT_FALSE(GLWindow::setAntiAliasingMode(8));

    EXPECT_EQ(GLWindow::getAntiAliasingMode(), 1u);
    EXPECT_EQ(GLWindow::getTitle(), "The title");
    EXPECT_EQ(GLWindow::getCursor(), 2);
    EXPECT_FALSE(GLWindow::isResizeable());
    EXPECT_EQ(GLWindow::getClientWidth(), side);
    EXPECT_EQ(GLWindow::getClientHeight(), side);
    EXPECT_EQ(GLWindow::getEventListener(), &listener);
    EXPECT_EQ(listener.closed, 0);
    EXPECT_TRUE(GLWindow::contextCurrent());
}

TEST_F(GLWindowDrawingTest, FullScreenOffScreenIsDrawnOnToItsCorners) {
    GLWindow::setFullscreen(true, GLWindow::getScreenWidth(), GLWindow::getScreenHeight());
    GLWindow::clearScreen(0.0f, 1.0f, 0.0f);

    EXPECT_TRUE(GLWindow::isFullscreen());
    EXPECT_FALSE(GLWindow::isResizeable());
    EXPECT_EQ(GLWindow::getClientWidth(), GLWindow::getScreenWidth());
    EXPECT_EQ(pixelAt(GLWindow::getClientWidth() - 1, GLWindow::getClientHeight() - 1),
              (PixelColour{0, 255, 0}));
}

TEST_F(GLWindowDrawingTest, APaintOutsideTheClientAreaMakesTheArrowTheCursor) {
    CountingListener listener;
    GLWindow::setEventListener(&listener);
    GLWindow::setCursor(2);
    GLWindow::requestRepaint(); // the cursor is at (0, 0), which counts as outside

    GLWindow::run();
    GLWindow::run();

    EXPECT_EQ(listener.redrawn, 1);
    EXPECT_EQ(GLWindow::getCursor(), 1);
}

TEST_F(GLWindowDrawingTest, UnknownCursorsAreIgnored) {
    GLWindow::setCursor(2);
    GLWindow::setCursor(3);
    GLWindow::setCursor(-1);

    EXPECT_EQ(GLWindow::getCursor(), 2);
}

TEST_F(GLWindowDrawingTest, TheCursorGoesToTheMiddle) {
    GLWindow::centerMouse();

    EXPECT_EQ(GLWindow::getMouseScreenX(), GLWindow::getClientCenterX());
    EXPECT_EQ(GLWindow::getMouseScreenY(), GLWindow::getClientCenterY());
    EXPECT_TRUE(GLWindow::mouseInClientArea());
}

TEST_F(GLWindowDrawingTest, WithoutAWindowEverythingIsHarmless) {
    GLWindow::close();

    GLWindow::run();
    GLWindow::glBeginDraw2d();
    GLWindow::glBeginDraw3d(60.0f, 1.0f, 10.0f);
    GLWindow::glPushState();
    GLWindow::glPopState();
    GLWindow::clearScreen(0.0f, 0.0f, 0.0f);
    GLWindow::swapBuffers();
    GLWindow::fadeScreen(1.0f);
    GLWindow::setGamma(1.0f);
    GLWindow::setTitle("none");
    GLWindow::setPosition(1, 1);
    GLWindow::setSize(10, 10);
    GLWindow::setClientSize(10, 10);
    GLWindow::center();
    GLWindow::minimize();
    GLWindow::maximize();
    GLWindow::restore();
    GLWindow::giveFocous();
    GLWindow::setResizeable(true);
    GLWindow::setFullscreen(true, 10, 10);
    GLWindow::setCursor(2);
    GLWindow::centerMouse();
    GLWindow::moveMouse(1, 1);
    GLWindow::restrictMouse(0, 0, 10, 10);
    GLWindow::unRestrictMouse();
    GLWindow::enableVsync(true);

    EXPECT_FALSE(GLWindow::exists());
    EXPECT_FALSE(GLWindow::setAntiAliasingMode(4));
    EXPECT_FALSE(GLWindow::isFullscreen());
    EXPECT_FALSE(GLWindow::isMinimised());
    EXPECT_FALSE(GLWindow::isMaximised());
    EXPECT_FALSE(GLWindow::isResizeable());
    EXPECT_FALSE(GLWindow::hasFocus());
    EXPECT_FALSE(GLWindow::mouseInClientArea());
    EXPECT_FALSE(GLWindow::mouseButtonPressed(1));
    EXPECT_EQ(GLWindow::getCursor(), 1);
    EXPECT_EQ(GLWindow::getTitle(), "");
    EXPECT_EQ(GLWindow::getClientWidth(), 0);
}

// The fault: a switch that does nothing, or a new window that forgets it.
TEST_F(GLWindowDrawingTest, VerticalSyncIsSwitchedAndKeptInANewWindow) {
    GLWindow::enableVsync(false);
    const int intervalOff = SDL_GL_GetSwapInterval();
    const bool toldOff = GLWindow::vsyncEnabled();
    GLWindow::setAntiAliasingMode(4);
    const int intervalInNewWindow = SDL_GL_GetSwapInterval();
    GLWindow::enableVsync(true);

    EXPECT_EQ(intervalOff, 0);
    EXPECT_FALSE(toldOff);
    EXPECT_EQ(intervalInNewWindow, 0);
    EXPECT_EQ(SDL_GL_GetSwapInterval(), 1);
    EXPECT_TRUE(GLWindow::vsyncEnabled());
}

} // namespace tarnwick
