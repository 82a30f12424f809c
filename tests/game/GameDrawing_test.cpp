#include "console/GLConsole.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "graphics/DynamicPolygonRenderer.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"
#include "graphics/LevelGeometryRenderer.h"
#include "level/Level.h"
#include "particles/ParticleManager.h"
#include "support/GameSceneTest.h"

#include <GL/gl.h>

namespace tarnwick {

class GameDrawingTest : public GameSceneTest {
protected:
    /// Pixels of a colour in the rectangle from (left, top) up to, and without, (right, bottom).
    static std::int32_t pixelsOf(FramePicture::Pixel colour,
                                 std::int32_t left,
                                 std::int32_t top,
                                 std::int32_t right,
                                 std::int32_t bottom) {
        const FramePicture shown = picture();
        std::int32_t count = 0;
        for (std::int32_t y = top; y < bottom; ++y) {
            for (std::int32_t x = left; x < right; ++x) {
                count += shown.at(x, y) == colour ? 1 : 0;
            }
        }
        return count;
    }
    /// How often the cost of drawing was told.
    static std::size_t speedsTold() {
        const std::string text = GLConsole::outputText();
        const std::string line = "\nDrawing - clock tics: ";
        std::size_t count = 0;
        for (std::size_t at = text.find(line); at != std::string::npos; at = text.find(line, at + 1)) {
            ++count;
        }
        return count;
    }
};

TEST_F(GameDrawingTest, ThePictureIsClearedToTheBackgroundOfTheConfiguration) {
    data.write("cfg/game.cfg", "background_r = 1.0 background_g = 0.5 background_b = 0.25");
    play();

    Game::drawPicture();

    EXPECT_PRED2(alike, pixel(0, 0), (FramePicture::Pixel{255, 128, 64}));
    EXPECT_PRED2(alike, pixel(399, 299), (FramePicture::Pixel{255, 128, 64}));
}

TEST_F(GameDrawingTest, TheLayersLieInTheirOrder) {
    addSquare(100, 100, 100, "white", 4);
    addSquare(80, 100, 100, "yellow", 3);
    addSquare(60, 100, 100, "blue", 2);
    addSquare(40, 100, 100, "green", 1);
    addSquare(20, 100, 100, "red", 0);
    play();

    Game::drawPicture();

    EXPECT_EQ(shownAt(10, 150), black);
    EXPECT_EQ(shownAt(30, 150), red);
    EXPECT_EQ(shownAt(50, 150), green);
    EXPECT_EQ(shownAt(70, 150), blue);
    EXPECT_EQ(shownAt(90, 150), yellow);
    EXPECT_EQ(shownAt(110, 150), white);
}

TEST_F(GameDrawingTest, TwoLayersLieBehindTheWaterAndThreeInFrontOfIt) {
    for (std::int32_t layer = 0; layer < 5; ++layer) {
        addSquare(100 * layer, 100, 50, "red", static_cast<std::uint32_t>(layer));
    }
    play();
    for (int layer = 0; layer < 5; ++layer) {
        addWater(100.0f * static_cast<float>(layer) + 20.0f, 120.0f);
    }

    Game::drawPicture();

    EXPECT_EQ(shownAt(20, 120), blue);
    EXPECT_EQ(shownAt(120, 120), blue);
    EXPECT_EQ(shownAt(220, 120), red);
    EXPECT_EQ(shownAt(320, 120), red);
    EXPECT_EQ(shownAt(420, 120), red);
}

TEST_F(GameDrawingTest, TheWatersColourDoesNotRunIntoTheLayersInFrontOfIt) {
    addSquare(100, 100, 50, "white", 2);
    play();
    addWater(300.0f, 300.0f);

    Game::drawPicture();

    EXPECT_EQ(shownAt(120, 120), white);
}

TEST_F(GameDrawingTest, WhatMovesLiesUnderTheFixedPolygonsOfItsLayer) {
    addSquare(100, 100, 50, "red", 1);
    addSquare(120, 100, 50, "green", 1);
    play();
    Level::polygons.back().moveable = true;
    LevelGeometryRenderer::initialise();
    DynamicPolygonRenderer::initialise();

    Game::drawPicture();

    EXPECT_EQ(shownAt(130, 110), red);
    EXPECT_EQ(shownAt(160, 110), green);
}

TEST_F(GameDrawingTest, ObjectsLieOnThePolygonsOfTheirLayerAndUnderThoseOfTheNext) {
    addSquare(100, 100, 50, "red", 2);
    addSquare(200, 100, 50, "red", 3);
    level.objects = {{1, "gfx\\green.tga", 2, {120, 120}, 0}, {2, "gfx\\green.tga", 2, {220, 120}, 0}};
    play();

    Game::drawPicture();

    EXPECT_EQ(shownAt(120, 120), green);
    EXPECT_EQ(shownAt(220, 120), red);
}

TEST_F(GameDrawingTest, ObjectsOfTwoLayersLieBehindTheWaterAndThoseOfThreeInFrontOfIt) {
    for (std::int32_t layer = 0; layer < 5; ++layer) {
        level.objects.push_back(
            {0, "gfx\\green.tga", static_cast<std::uint32_t>(layer), {100 * layer + 20, 120}, 0});
    }
    play();
    for (int layer = 0; layer < 5; ++layer) {
        addWater(100.0f * static_cast<float>(layer) + 20.0f, 120.0f);
    }

    Game::drawPicture();

    EXPECT_EQ(shownAt(20, 120), blue);
    EXPECT_EQ(shownAt(120, 120), blue);
    EXPECT_EQ(shownAt(220, 120), green);
    EXPECT_EQ(shownAt(320, 120), green);
    EXPECT_EQ(shownAt(420, 120), green);
}

TEST_F(GameDrawingTest, ObjectsStayWhenTheGeometryIsSwitchedOff) {
    addSquare(100, 100, 50, "red", 1);
    level.objects = {{1, "gfx\\green.tga", 1, {120, 120}, 0}};
    play();
    GLConsole::runLine("DrawLevelGeometry false");

    Game::drawPicture();

    EXPECT_EQ(shownAt(110, 110), black);
    EXPECT_EQ(shownAt(120, 120), green);
}

TEST_F(GameDrawingTest, IdsOfObjectsLieOverTheWholeLevel) {
    addSquare(100, 100, 100, "red", 4);
    level.objects = {{1, "gfx\\green.tga", 0, {150, 150}, 0}};
    play();
    GLConsole::runLine("ObjectsDrawIds true");

    Game::drawPicture();

    EXPECT_EQ(shownAt(150, 138), white);
    EXPECT_EQ(shownAt(150, 150), red);
}

TEST_F(GameDrawingTest, AChangeOfLevelShowsTheNewLevel) {
    addSquare(100, 100, 50, "red", 1);
    play();
    level.polygons.clear();
    addSquare(300, 100, 50, "green", 1);

    play();
    Game::drawPicture();

    EXPECT_EQ(shownAt(120, 120), black);
    EXPECT_EQ(shownAt(320, 120), green);
}

TEST_F(GameDrawingTest, PausedIsWrittenInTheMiddleWithAShadow) {
    data.write("cfg/game.cfg", "font = gfx\\white.tga background_b = 1");
    play();

    GLConsole::runLine("Pause true");
    Game::drawPicture();

    // Six letters of 32 units on a screen of 800 by 600: from (304, 284) to (496, 316), and 2 units behind.
    EXPECT_EQ(pixel(152, 142), white);
    EXPECT_EQ(pixel(247, 157), white);
    EXPECT_EQ(pixel(248, 150), black);
    EXPECT_EQ(pixel(200, 158), black);
    EXPECT_EQ(pixel(151, 150), blue);
    EXPECT_EQ(pixel(249, 150), blue);
    EXPECT_EQ(pixel(200, 159), blue);
}

TEST_F(GameDrawingTest, NothingIsWrittenWhileTheGameRunsOrTheFreeCameraFlies) {
    play();
    Game::drawPicture();
    const std::int32_t litWhileRunning = litPixels();

    GLConsole::runLine("Pause true");
    GLConsole::runLine("FreeCamera true");
    Game::drawPicture();

    EXPECT_EQ(litWhileRunning, 0);
    EXPECT_EQ(pixel(152, 142), black);
}

TEST_F(GameDrawingTest, TheFreeCameraLooksAtTheWorldsOriginFirst) {
    addSquare(0, 0, 50, "red", 1);
    play();

    GLConsole::runLine("FreeCamera true");
    Game::drawPicture();

    EXPECT_EQ(pixel(220, 170), red);
    EXPECT_EQ(pixel(180, 130), black);
}

TEST_F(GameDrawingTest, TheFreeCameraMarksItsPlaceAndTheViewOfTheGame) {
    play();
    Camera::setPosition({600.0f, 450.0f});

    GLConsole::runLine("FreeCamera true");
    Game::drawPicture();

    // The cross of 8 units in the middle of the window; the top left corner of the frame 200 units right of
    // it and 150 below; the coordinates in letters of 8 units, 16 units below the cross.
    EXPECT_GE(pixelsOf(white, 197, 147, 203, 153), 6);
    EXPECT_EQ(pixelsOf(white, 100, 100, 196, 146), 0);
    EXPECT_GE(pixelsOf(green, 310, 223, 390, 227), 80);
    EXPECT_GE(pixelsOf(green, 298, 230, 302, 290), 60);
    EXPECT_EQ(pixelsOf(white, 200, 158, 276, 162), 76 * 4) << "0.000000 , 0.000000";
    EXPECT_EQ(pixelsOf(white, 200, 162, 300, 222), 0);
}

TEST_F(GameDrawingTest, DrawingTellsItsCostOnceInThirtyTwoPicturesIfAsked) {
    play();
    GLConsole::runLine("ShowDrawSpeeds true");
    GLConsole::clear();

    for (int i = 0; i < 31; ++i) {
        Game::drawPicture();
    }
    const std::size_t toldAfter31 = speedsTold();
    Game::drawPicture();
    const std::size_t toldAfter32 = speedsTold();
    for (int i = 0; i < 32; ++i) {
        Game::drawPicture();
    }

    EXPECT_EQ(toldAfter31, 0u);
    EXPECT_EQ(toldAfter32, 1u);
    EXPECT_EQ(speedsTold(), 2u);
}

TEST_F(GameDrawingTest, TheCostIsNotToldUnlessAskedForAndARestartForgetsTheWish) {
    play();
    GLConsole::clear();
    for (int i = 0; i < 64; ++i) {
        Game::drawPicture();
    }
    const std::size_t toldUnasked = speedsTold();
    GLConsole::runLine("ShowDrawSpeeds true");

    Game::resetLevel();
    GLConsole::clear();
    GLConsole::runLine("ShowDrawSpeeds");

    EXPECT_EQ(toldUnasked, 0u);
    EXPECT_EQ(GLConsole::outputText(), "\nShowDrawSpeeds\nShowDrawSpeeds is false");
}

TEST_F(GameDrawingTest, TheConsoleLiesOverEverythingWhileItIsOpen) {
    play();
    GLConsole::runLine("Pause true");
    Game::drawPicture();
    const FramePicture::Pixel closed = pixel(200, 150);
    GLConsole::clear();

    Game::keyboardPressed(key::console);
    Game::drawPicture();
    const FramePicture::Pixel open = pixel(200, 150);
    Game::keyboardPressed(key::console);
    Game::drawPicture();

    EXPECT_EQ(closed, white);
    EXPECT_EQ(open, red) << "the background of the output";
    EXPECT_EQ(pixel(200, 150), white);
}

TEST_F(GameDrawingTest, AfterAChangeOfSamplesThePictureIsTheSame) {
    addSquare(100, 100, 50, "red", 1);
    play();
    addWater(300.0f, 300.0f);
    Game::drawPicture();
    const FramePicture before = picture();

    GLConsole::runLine("AntiAliasingSamples 4");
    GLConsole::runLine("AntiAliasingSamples 1");
    Game::drawPicture();

    EXPECT_EQ(shownAt(120, 120), red);
    EXPECT_EQ(shownAt(300, 300), blue);
    EXPECT_TRUE(picture().pixels == before.pixels);
}

TEST_F(GameDrawingTest, DrawingLeavesTheSimulationAlone) {
    play();
    addWater(300.0f, 300.0f);
    const Vector2 camera = Camera::position();

    Game::draw();

    EXPECT_EQ(ParticleManager::particles.front().position, (Vector2{300.0f, 300.0f}));
    EXPECT_EQ(Camera::position(), camera);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(GameDrawingTest, AWindowThatIsTallShowsMoreAboveAndBelow) {
    GLWindow::setClientSize(200, 300);
    addSquare(0, -200, 50, "red", 1);
    play();

    Game::drawPicture();

    // 800 units fill the width of 200 pixels; 1200 units the height: the view reaches from -300 to 900.
    EXPECT_EQ(pixel(5, 30), red);
}

} // namespace tarnwick
