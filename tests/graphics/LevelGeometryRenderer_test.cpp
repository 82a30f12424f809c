#include "graphics/LevelGeometryRenderer.h"

#include "console/GLConsole.h"
#include "game/Camera.h"
#include "graphics/DynamicPolygonRenderer.h"
#include "graphics/GLWindow.h"
#include "support/LevelDrawingTest.h"

#include <GL/gl.h>

#include <algorithm>

namespace tarnwick {

class LevelGeometryRendererTest : public LevelDrawingTest {
protected:
    static const std::array<std::uint32_t, layerCount>& lists() {
        return LevelGeometryRenderer::state.layerLists;
    }

    static void drawAllLayers() {
        beginPicture();
        LevelGeometryRenderer::drawLayer0();
        LevelGeometryRenderer::drawLayer1();
        LevelGeometryRenderer::drawLayer2();
        LevelGeometryRenderer::drawLayer3();
        LevelGeometryRenderer::drawLayer4();
    }
};

TEST_F(LevelGeometryRendererTest, APolygonIsDrawnInItsPlaceWithItsPicture) {
    addSquare(10.0f, 20.0f, 8.0f, "red");

    LevelGeometryRenderer::initialise();
    drawAllLayers();

    EXPECT_EQ(litPixels(), 64);
    EXPECT_EQ(pixel(10, 20), red);
    EXPECT_EQ(pixel(17, 27), red);
}

TEST_F(LevelGeometryRendererTest, ALayerDrawsItsOwnPolygonsOnly) {
    for (std::uint32_t layer = 0; layer < layerCount; ++layer) {
        addSquare(10.0f * static_cast<float>(layer), 20.0f, 8.0f, "red", layer);
    }
    LevelGeometryRenderer::initialise();
    void (*const drawLayers[])() = {LevelGeometryRenderer::drawLayer0, LevelGeometryRenderer::drawLayer1,
                                    LevelGeometryRenderer::drawLayer2, LevelGeometryRenderer::drawLayer3,
                                    LevelGeometryRenderer::drawLayer4};

    for (std::int32_t layer = 0; layer < 5; ++layer) {
        beginPicture();
        drawLayers[layer]();

        EXPECT_EQ(litPixels(), 64) << layer;
        EXPECT_EQ(pixel(10 * layer + 4, 24), red) << layer;
    }
}

TEST_F(LevelGeometryRendererTest, ALayerOutOfRangeIsDrawnAsLayerZero) {
    addSquare(10.0f, 20.0f, 8.0f, "red", 5);

    LevelGeometryRenderer::initialise();
    beginPicture();
    LevelGeometryRenderer::drawLayer0();

    EXPECT_EQ(litPixels(), 64);
}

TEST_F(LevelGeometryRendererTest, ThePictureIsOnePixelAUnitFromTheWorldsOrigin) {
    writeSplitPicture("gfx/split.tga", red, green);
    addSquare(9.0f, 20.0f, 8.0f, "split");

    LevelGeometryRenderer::initialise();
    beginPicture();
    glBindTexture(GL_TEXTURE_2D, Level::polygons.front().texture.textureId);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    LevelGeometryRenderer::drawLayer0();

    EXPECT_EQ(pixel(9, 20), red) << "column 1 of 4";
    EXPECT_EQ(pixel(10, 20), green) << "column 2 of 4";
    EXPECT_EQ(pixel(12, 20), red) << "the picture begins again";
}

TEST_F(LevelGeometryRendererTest, APolygonWithoutAPictureOfItsOwnIsInNeitherRenderer) {
    Polygon2D& polygon = addSquare(10.0f, 20.0f, 8.0f, "red");
    polygon.drawable = false;

    LevelGeometryRenderer::initialise();
    DynamicPolygonRenderer::initialise();
    drawAllLayers();
    DynamicPolygonRenderer::prepareDraw(Camera::view());
    DynamicPolygonRenderer::drawLayer(0);

    EXPECT_EQ(litPixels(), 0);
}

TEST_F(LevelGeometryRendererTest, APolygonThatIsOnlySeenIsDrawn) {
    addSquare(10.0f, 20.0f, 8.0f, "red").collideable = false;

    LevelGeometryRenderer::initialise();
    drawAllLayers();

    EXPECT_EQ(litPixels(), 64);
}

TEST_F(LevelGeometryRendererTest, WhatCanMoveOrVanishIsNotInTheLists) {
    addSquare(10.0f, 20.0f, 8.0f, "red").destructable = true;
    addSquare(30.0f, 20.0f, 8.0f, "red").moveable = true;

    LevelGeometryRenderer::initialise();
    drawAllLayers();

    EXPECT_EQ(litPixels(), 0);
}

TEST_F(LevelGeometryRendererTest, AnOutlineThatCrossesItselfIsNotDrawn) {
    Polygon2D& polygon = Level::polygons.emplace_back();
    polygon.texture = std::string("gfx\\red.tga");
    polygon.addPoint(10.0f, 10.0f);
    polygon.addPoint(20.0f, 20.0f);
    polygon.addPoint(20.0f, 10.0f);
    polygon.addPoint(10.0f, 20.0f);

    LevelGeometryRenderer::initialise();
    drawAllLayers();

    EXPECT_EQ(litPixels(), 0);
}

TEST_F(LevelGeometryRendererTest, TheCommandHidesWhatIsFixedAndLeavesTheRest) {
    addSquare(10.0f, 20.0f, 8.0f, "red");
    addSquare(30.0f, 20.0f, 8.0f, "green").moveable = true;
    LevelGeometryRenderer::initialise();
    DynamicPolygonRenderer::initialise();

    GLConsole::runLine("DrawLevelGeometry false");
    drawAllLayers();
    beginPicture();
    DynamicPolygonRenderer::prepareDraw(Camera::view());
    DynamicPolygonRenderer::drawLayer(0);
    LevelGeometryRenderer::drawLayer0();

    EXPECT_EQ(litPixels(), 64);
    EXPECT_EQ(pixel(34, 24), green);
}

TEST_F(LevelGeometryRendererTest, TheCommandTakesWordsAndRefusesNumbers) {
    LevelGeometryRenderer::initialise();
    GLConsole::clear();

    GLConsole::runLine("DrawLevelGeometry 0");
    GLConsole::runLine("DrawLevelGeometry");

    EXPECT_EQ(GLConsole::outputText(),
              "\nDrawLevelGeometry 0\nUSAGE: DrawLevelGeometry < true OR false OR nothing >"
              "\nDrawLevelGeometry\nDrawLevelGeometry is true");
}

TEST_F(LevelGeometryRendererTest, ALevelWithNothingToDrawGivesFiveEmptyLists) {
    LevelGeometryRenderer::initialise();
    drawAllLayers();

    EXPECT_EQ(litPixels(), 0);
    EXPECT_TRUE(std::ranges::all_of(lists(), [](std::uint32_t list) { return glIsList(list) == GL_TRUE; }));
}

TEST_F(LevelGeometryRendererTest, APictureOfNoSizeGivesInfiniteCoordinatesAndNoHarm) {
    Polygon2D& polygon = addSquare(10.0f, 20.0f, 8.0f, "red");
    polygon.texture.width = 0;
    polygon.texture.height = 0;

    LevelGeometryRenderer::initialise();
    drawAllLayers();

    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(LevelGeometryRendererTest, PolygonsAreDrawnInTheOrderOfTheirTexturesAndOfTheLevel) {
    const GLTexture first("gfx\\green.tga"); // has the lower name of the two
    addSquare(10.0f, 20.0f, 8.0f, "red");
    addSquare(14.0f, 20.0f, 8.0f, "green");

    LevelGeometryRenderer::initialise();
    drawAllLayers();

    ASSERT_LT(first.textureId, Level::polygons.front().texture.textureId);
    EXPECT_EQ(pixel(16, 24), red);
}

TEST_F(LevelGeometryRendererTest, ShutdownGivesTheListsBackAndRemovesTheCommand) {
    addSquare(10.0f, 20.0f, 8.0f, "red");
    LevelGeometryRenderer::initialise();
    const std::array<std::uint32_t, layerCount> before = lists();

    LevelGeometryRenderer::shutdown();
    drawAllLayers();

    EXPECT_EQ(litPixels(), 0);
    EXPECT_FALSE(GLConsole::commands().contains("DRAWLEVELGEOMETRY"));
    EXPECT_TRUE(std::ranges::none_of(before, [](std::uint32_t list) { return glIsList(list) == GL_TRUE; }));
}

TEST_F(LevelGeometryRendererTest, TheListsAreMadeAnewForANewLevel) {
    addSquare(10.0f, 20.0f, 8.0f, "red");
    LevelGeometryRenderer::initialise();
    Level::polygons.clear();
    addSquare(30.0f, 20.0f, 8.0f, "green");

    LevelGeometryRenderer::initialise();
    drawAllLayers();

    EXPECT_EQ(litPixels(), 64);
    EXPECT_EQ(pixel(34, 24), green);
}

TEST_F(LevelGeometryRendererTest, TheWorkIsToldWithItsTime) {
    LevelGeometryRenderer::initialise();

    EXPECT_EQ(GLConsole::outputText(), "\nInitialising level geometry renderer...\nLevel geometry prepared "
                                       "for rendering in 0.000000\nseconds.");
}

TEST_F(LevelGeometryRendererTest, WithoutAContextNothingIsCompiledAndNothingFails) {
    addSquare(10.0f, 20.0f, 8.0f, "red");
    GLWindow::close();
    GLWindow::createHeadless(80, 60);

    LevelGeometryRenderer::initialise();
    LevelGeometryRenderer::drawLayer0();

    EXPECT_TRUE(std::ranges::all_of(lists(), [](std::uint32_t list) { return list == 0; }));
}

} // namespace tarnwick
