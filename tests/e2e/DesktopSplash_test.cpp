// The splash on a real desktop: run by `with-desktop`, on an X server of its own with a window manager.

#include "core/GLTexture.h"
#include "graphics/FramePicture.h"
#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"
#include "graphics/GLWindowEventListener.h"
#include "gui/SplashScreen.h"
#include "support/DataFolder.h"
#include "support/ModuleReset.h"
#include "support/TgaFile.h"

#include <GL/gl.h>
#include <SDL.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

namespace tarnwick {

namespace {

constexpr std::uint32_t patience = 5000; ///< Milliseconds in which a desktop must have done what it was told.
constexpr FramePicture::Pixel blue{0, 0, 255};
constexpr FramePicture::Pixel green{0, 255, 0};

bool waitUntil(const std::function<bool()>& done) {
    for (std::uint32_t waited = 0; waited < patience; waited += 20) {
        if (done()) {
            return true;
        }
        SDL_Delay(20);
    }
    return false;
}

/// What the desktop shows in the middle of the window.
FramePicture::Pixel onScreen() {
    // NOLINTNEXTLINE(cert-env33-c,concurrency-mt-unsafe)
    if (const int status = std::system("timeout 20 scrot --overwrite screen.png"); status != 0) {
        std::fprintf(stderr, "scrot ended with %d\n", status);
        return {};
    }
    const FramePicture screen = FramePicture::load("screen.png");
    const std::int32_t x = GLWindow::getClientCenterX();
    const std::int32_t y = GLWindow::getClientCenterY();
    return x < screen.width && y < screen.height ? screen.at(x, y) : FramePicture::Pixel{};
}

} // namespace

class DesktopSplashTest : public testing::Test {
protected:
    DesktopSplashTest() {
        ModuleReset::all();
        writeFlat("gfx/back.tga", blue);
        writeFlat("gfx/stone.tga", green);
        data.write("cfg/splashScreen.cfg",
                   "splashBackground = gfx\\back.tga splashBackgroundW = 8 splashBackgroundH = 8"
                   " splashAnimation = gfx\\back.tga splashAnimationSpeed = 10");
        GLWindow::createWindow("Desktop test", 640, 480);
        GLTextureManager::initialise();
        GLWindow::setEventListener(&listener);
        waitUntil([] {
            GLWindow::run();
            return GLWindow::hasFocus();
        });
    }
    ~DesktopSplashTest() override { ModuleReset::all(); }

    void writeFlat(const std::string& name, FramePicture::Pixel colour) const {
        TgaFile file{.width = 8, .height = 8};
        for (int i = 0; i < 64; ++i) {
            file.data += TgaFile::pixel(colour.blue, colour.green, colour.red, 255);
        }
        data.write(name, file.bytes());
    }
    /// The colour of a texture of 8 by 8 in the context of this thread.
    static FramePicture::Pixel colourOf(const GLTexture& texture) {
        std::uint8_t texels[8 * 8 * 3] = {};
        glBindTexture(GL_TEXTURE_2D, texture.textureId);
        glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_UNSIGNED_BYTE, texels);
        return {texels[0], texels[1], texels[2]};
    }

    struct Listener final : GLWindowEventListener {
        int focusLost = 0;
        void windowFocusLost() override { ++focusLost; }
    };
    Listener listener;
    const DataFolder data;
};

TEST_F(DesktopSplashTest, ItShowsWhileTheMainThreadLoadsPictures) {
    SplashScreen::run();

    const bool shown = waitUntil([] { return onScreen() == blue; });
    const GLTexture stone("gfx\\stone.tga");
    const FramePicture::Pixel loaded = colourOf(stone);
    SplashScreen::stop();

    EXPECT_TRUE(shown);
    EXPECT_EQ(loaded, green);
    EXPECT_EQ(colourOf(stone), green);
}

TEST_F(DesktopSplashTest, TheMainThreadDrawsAgainAfterIt) {
    SplashScreen::run();
    SplashScreen::stop();

    const bool shown = waitUntil([] {
        GLWindow::run();
        GLWindow::clearScreen(0.0f, 1.0f, 0.0f);
        GLWindow::swapBuffers();
        return onScreen() == green;
    });

    EXPECT_TRUE(shown);
    EXPECT_EQ(listener.focusLost, 0);
    EXPECT_TRUE(GLWindow::hasFocus());
    EXPECT_EQ(GLWindow::getEventListener(), &listener);
}

TEST_F(DesktopSplashTest, ItShowsInAWindowWithSamples) {
    ASSERT_TRUE(GLWindow::setAntiAliasingMode(4));

    SplashScreen::run();
    const bool shown = waitUntil([] { return onScreen() == blue; });
    SplashScreen::stop();

    EXPECT_TRUE(shown);
    EXPECT_TRUE(GLWindow::contextCurrent());
}

TEST_F(DesktopSplashTest, AWindowOfAnotherNumberOfSamplesEndsIt) {
    SplashScreen::run();

    EXPECT_TRUE(GLWindow::setAntiAliasingMode(4));

    EXPECT_FALSE(SplashScreen::isRunning());
    EXPECT_TRUE(GLWindow::exists());
    EXPECT_TRUE(GLWindow::contextCurrent());
}

TEST_F(DesktopSplashTest, AClosedWindowEndsIt) {
    SplashScreen::run();

    GLWindow::close();

    EXPECT_FALSE(SplashScreen::isRunning());
    EXPECT_FALSE(GLWindow::exists());
}

} // namespace tarnwick
