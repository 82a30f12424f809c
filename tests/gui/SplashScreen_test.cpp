#include "gui/SplashScreen.h"

#include "core/GLTexture.h"
#include "core/Log.h"
#include "core/WorkerThread.h"
#include "game/Game.h"
#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"
#include "graphics/GLWindowEventListener.h"
#include "support/DrawingTest.h"

#include <GL/gl.h>
#include <SDL.h>

#include <algorithm>
#include <array>
#include <future>
#include <list>
#include <string>

namespace tarnwick {

class SplashScreenTest : public DrawingTest {
protected:
    SplashScreenTest() {
        writeFlatPicture("gfx/back.tga", blue);
        writeFlatPicture("gfx/wheel.tga", red);
        writeFlatPicture("gfx/stone.tga", green);
        data.write("cfg/splashScreen.cfg",
                   "splashBackground = gfx\\back.tga splashBackgroundW = 4 splashBackgroundH = 4"
                   " splashAnimation = gfx\\wheel.tga splashAnimationX = 400 splashAnimationY = 300"
                   " splashAnimationSpeed = 10");
        GLWindow::setEventListener(&listener);
        GLWindow::clearScreen(0.0f, 0.0f, 0.0f);
        GLWindow::swapBuffers();
    }

    static bool isCached(const std::string& name) {
        std::list<std::string> list;
        GLTextureManager::getTextureList(list);
        return std::any_of(list.begin(), list.end(),
                           [&](const std::string& line) { return line.starts_with(name); });
    }
    /// The picture that a texture has in the context of this thread.
    static FramePicture::Pixel firstTexel(const GLTexture& texture) {
        std::vector<std::uint8_t> texels(std::size_t{texture.width} * texture.height * 3);
        glBindTexture(GL_TEXTURE_2D, texture.textureId);
        glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_UNSIGNED_BYTE, texels.data());
        return {texels[0], texels[1], texels[2]};
    }

    /// The splash's thread will do this.
    static void setDrawing(void (*drawing)()) { SplashScreen::state.drawing = drawing; }
    /// The thread is waited for through two looks.
    static void losePatience() { SplashScreen::state.looks = 2; }
    static void putBack() {
        SplashScreen::state.drawing = SplashScreen::animate;
        SplashScreen::state.looks = SplashScreen::mostLooks;
        standing[standingCount++] = SplashScreen::state.abandoned.exchange(nullptr);
    }
    /// Stands still as if in the GL driver, but without the window: not every platform lends it twice.
    static void standStill() {
        SDL_GL_MakeCurrent(SDL_GL_GetCurrentWindow(), nullptr);
        std::promise<void>().get_future().wait();
    }
    static void standStillInTheEnd() {
        SplashScreen::state.threadReady = true;
        standStill();
    }

    struct ClosingListener final : GLWindowEventListener {
        void windowClosed() override { ++closed; }
        int closed = 0;
    };
    struct Listener final : GLWindowEventListener {};
    Listener listener;

private:
    /// Threads that stand still to the program's end.
    static inline std::array<WorkerThread*, 2> standing{};
    static inline std::size_t standingCount = 0;
};

TEST_F(SplashScreenTest, NobodyHearsTheWindowFromRunToStop) {
    SplashScreen::run();
    EXPECT_TRUE(SplashScreen::isRunning());
    EXPECT_EQ(GLWindow::getEventListener(), nullptr);

    SplashScreen::stop();

    EXPECT_FALSE(SplashScreen::isRunning());
    EXPECT_EQ(GLWindow::getEventListener(), &listener);
}

TEST_F(SplashScreenTest, ItsPicturesAreThereWhenRunReturnsAndGoneAfterStop) {
    SplashScreen::run();
    EXPECT_TRUE(isCached("GFX\\BACK.TGA"));
    EXPECT_TRUE(isCached("GFX\\WHEEL.TGA"));

    SplashScreen::stop();

    EXPECT_FALSE(isCached("GFX\\BACK.TGA"));
    EXPECT_FALSE(isCached("GFX\\WHEEL.TGA"));
}

TEST_F(SplashScreenTest, PicturesLoadedMeanwhileBelongToTheMainContext) {
    SplashScreen::run();
    const GLTexture stone("gfx\\stone.tga");
    EXPECT_EQ(firstTexel(stone), green);
    GLTextureManager::reloadAllTextures(); // those of the splash belong to the other thread
    EXPECT_EQ(firstTexel(stone), green);

    SplashScreen::stop();

    EXPECT_EQ(firstTexel(stone), green);
}

TEST_F(SplashScreenTest, TheMainContextDrawsIntoTheWindowAgainAfterStop) {
    SplashScreen::run();
    SplashScreen::stop();

    beginPicture();
    glDisable(GL_TEXTURE_2D);
    glColor4f(1.0f, 1.0f, 0.0f, 1.0f);
    glRectf(0.0f, 0.0f, 80.0f, 60.0f);

    EXPECT_EQ(pixel(40, 30), yellow);
    EXPECT_EQ(pixel(79, 59), yellow);
}

TEST_F(SplashScreenTest, ASecondRunDoesNothingAndOneStopEndsIt) {
    SplashScreen::run();
    SplashScreen::run();

    SplashScreen::stop();

    EXPECT_FALSE(SplashScreen::isRunning());
    EXPECT_EQ(GLWindow::getEventListener(), &listener);
}

TEST_F(SplashScreenTest, StoppingWithoutASplashDoesNothing) {
    SplashScreen::stop();

    EXPECT_EQ(GLWindow::getEventListener(), &listener);
}

TEST_F(SplashScreenTest, ItRunsAsOftenAsItIsAskedFor) {
    for (int round = 0; round < 5; ++round) {
        SplashScreen::run();
        EXPECT_TRUE(SplashScreen::isRunning());
        SplashScreen::stop();
    }

    EXPECT_TRUE(GLWindow::contextCurrent());
}

TEST_F(SplashScreenTest, AWindowThatGoesInTheMiddleTakesTheSplashWithIt) {
    SplashScreen::run();

    GLWindow::close();

    EXPECT_FALSE(SplashScreen::isRunning());
    EXPECT_FALSE(GLWindow::exists());
    SplashScreen::stop();
    SplashScreen::run(); // nothing to show it on
    EXPECT_FALSE(SplashScreen::isRunning());
}

TEST_F(SplashScreenTest, ANewNumberOfSamplesEndsTheSplashAndKeepsTheListener) {
    ClosingListener hears;
    GLWindow::setEventListener(&hears);
    SplashScreen::run();

    ASSERT_TRUE(GLWindow::setAntiAliasingMode(2));
    const bool running = SplashScreen::isRunning();
    SplashScreen::stop();

    EXPECT_FALSE(running);
    EXPECT_TRUE(GLWindow::exists());
    EXPECT_EQ(GLWindow::getEventListener(), &hears);
    EXPECT_EQ(hears.closed, 0) << "the window is the same for who listens";
    GLWindow::setEventListener(nullptr);
}

// The fault: a start that stands still for ever because the splash does.
TEST_F(SplashScreenTest, ASplashThatIsNeverReadyIsDoneWithout) {
    setDrawing(standStill);
    losePatience();
    SplashScreen::run();
    const bool running = SplashScreen::isRunning();
    const std::string told = Log::outputText();

    SplashScreen::run();
    const bool runningAgain = SplashScreen::isRunning();
    putBack();

    EXPECT_FALSE(running);
    EXPECT_FALSE(runningAgain);
    EXPECT_EQ(told, "\nThe splash was not ready within 10 seconds: loading goes on without it.");
    EXPECT_EQ(GLWindow::getEventListener(), &listener);
    EXPECT_TRUE(GLWindow::contextCurrent());
}

TEST_F(SplashScreenTest, ASplashThatDoesNotEndIsLeftAlone) {
    setDrawing(standStillInTheEnd);
    SplashScreen::run();
    const bool running = SplashScreen::isRunning();
    losePatience();

    SplashScreen::stop();
    putBack();

    EXPECT_TRUE(running);
    EXPECT_FALSE(SplashScreen::isRunning());
    EXPECT_EQ(Log::outputText(), "\nThe splash did not end within 10 seconds: its thread is left alone.");
    EXPECT_EQ(GLWindow::getEventListener(), &listener);
    EXPECT_TRUE(GLWindow::contextCurrent());
}

TEST_F(SplashScreenTest, ALevelThatFailsToLoadEndsTheSplashAsWell) {
    EXPECT_FALSE(Game::initialise("maps\\missing.rivl"));

    EXPECT_FALSE(SplashScreen::isRunning());
    EXPECT_EQ(GLWindow::getEventListener(), &listener);
    EXPECT_TRUE(GLWindow::contextCurrent());
}

TEST_F(SplashScreenTest, AHeadlessWindowHasNoSplash) {
    GLWindow::close();
    GLWindow::createHeadless(800, 600);
    GLWindow::setEventListener(&listener);

    SplashScreen::run();

    EXPECT_FALSE(SplashScreen::isRunning());
    EXPECT_EQ(GLWindow::getEventListener(), &listener);
}

} // namespace tarnwick
