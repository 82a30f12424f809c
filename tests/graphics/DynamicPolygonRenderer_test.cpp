#include "graphics/DynamicPolygonRenderer.h"

#include "console/GLConsole.h"
#include "game/Camera.h"
#include "support/LevelDrawingTest.h"
#include "support/SceneAccess.h"

#include <GL/gl.h>

namespace tarnwick {

class DynamicPolygonRendererTest : public LevelDrawingTest {
protected:
    DynamicPolygonRendererTest() = default;
    DynamicPolygonRendererTest(std::int32_t width, std::int32_t height)
        : LevelDrawingTest(width, height) {}

    static const std::list<DynamicPolygonEntry>& entries() {
        return DynamicPolygonRenderer::state.dynamicPolygons;
    }
    static bool queued() {
        for (const PolygonQueue& queue : DynamicPolygonRenderer::state.layerQueues) {
            if (!queue.empty()) {
                return true;
            }
        }
        return false;
    }
    static void draw() {
        beginPicture();
        DynamicPolygonRenderer::prepareDraw(Camera::view());
        for (std::uint32_t layer = 0; layer < layerCount; ++layer) {
            DynamicPolygonRenderer::drawLayer(layer);
        }
    }
};

TEST_F(DynamicPolygonRendererTest, WhatMovesAndWhatVanishesIsDrawnAndTheRestIsNot) {
    addSquare(10.0f, 20.0f, 8.0f, "red").moveable = true;
    addSquare(30.0f, 20.0f, 8.0f, "green").destructable = true;
    addSquare(50.0f, 20.0f, 8.0f, "blue");

    DynamicPolygonRenderer::initialise();
    draw();

    EXPECT_EQ(litPixels(), 128);
    EXPECT_EQ(pixel(14, 24), red);
    EXPECT_EQ(pixel(34, 24), green);
}

TEST_F(DynamicPolygonRendererTest, APolygonWithoutTrianglesIsLeftOut) {
    Polygon2D& polygon = Level::polygons.emplace_back();
    polygon.moveable = true;
    polygon.addPoint(10.0f, 10.0f);
    polygon.addPoint(20.0f, 10.0f);

    DynamicPolygonRenderer::initialise();

    EXPECT_TRUE(entries().empty());
}

TEST_F(DynamicPolygonRendererTest, TheBoundsAreThoseOfTheOutlineWithoutItsOffset) {
    Polygon2D& polygon = addSquare(-10.0f, 20.0f, 8.0f, "red");
    polygon.moveable = true;
    polygon.offsetX = 100.0f;

    DynamicPolygonRenderer::initialise();

    ASSERT_EQ(entries().size(), 1u);
    EXPECT_EQ(entries().front().minX, -10.0f);
    EXPECT_EQ(entries().front().maxX, -2.0f);
    EXPECT_EQ(entries().front().minY, 20.0f);
    EXPECT_EQ(entries().front().maxY, 28.0f);
}

TEST_F(DynamicPolygonRendererTest, ThePictureTravelsWithThePolygon) {
    writeSplitPicture("gfx/split.tga", red, green);
    Polygon2D& polygon = addSquare(8.0f, 20.0f, 8.0f, "split");
    polygon.moveable = true;
    polygon.offsetX = 21.0f;
    polygon.offsetY = 5.0f;
    glBindTexture(GL_TEXTURE_2D, polygon.texture.textureId);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);

    DynamicPolygonRenderer::initialise();
    draw();

    EXPECT_EQ(litPixels(), 64);
    EXPECT_EQ(pixel(29, 25), red) << "column 0 of 4 stands at the polygon's left edge";
    EXPECT_EQ(pixel(31, 25), green);
    EXPECT_EQ(pixel(36, 32), green);
}

TEST_F(DynamicPolygonRendererTest, AnInvisiblePolygonIsNotDrawnUntilItIsVisibleAgain) {
    Polygon2D& polygon = addSquare(10.0f, 20.0f, 8.0f, "red");
    polygon.destructable = true;
    DynamicPolygonRenderer::initialise();

    polygon.visible = false;
    draw();
    const std::int32_t litWhileGone = litPixels();
    polygon.visible = true;
    draw();

    EXPECT_EQ(litWhileGone, 0);
    EXPECT_EQ(litPixels(), 64);
}

/// The view of this window is 800 by 600 units, so the square about the camera reaches 520 units each way.
TEST_F(DynamicPolygonRendererTest, APolygonThatOnlyTouchesTheSquareIsDrawn) {
    addSquare(520.0f, 0.0f, 8.0f, "red").moveable = true;
    addSquare(0.0f, -528.0f, 8.0f, "red").moveable = true;
    DynamicPolygonRenderer::initialise();

    DynamicPolygonRenderer::prepareDraw(Camera::view());

    EXPECT_TRUE(queued());
}

TEST_F(DynamicPolygonRendererTest, APolygonOutsideTheSquareIsLeftOut) {
    addSquare(520.5f, 0.0f, 8.0f, "red").moveable = true;
    addSquare(0.0f, -528.5f, 8.0f, "red").moveable = true;
    DynamicPolygonRenderer::initialise();

    DynamicPolygonRenderer::prepareDraw(Camera::view());

    EXPECT_FALSE(queued());
}

TEST_F(DynamicPolygonRendererTest, TheSquareFollowsTheCameraAndTheOffsetThePolygon) {
    Polygon2D& polygon = addSquare(2000.0f, 0.0f, 8.0f, "red");
    polygon.moveable = true;
    DynamicPolygonRenderer::initialise();

    DynamicPolygonRenderer::prepareDraw(Camera::view());
    const bool seenFromTheOrigin = queued();
    Camera::setPosition({2000.0f, 0.0f});
    DynamicPolygonRenderer::prepareDraw(Camera::view());
    const bool seenFromNearby = queued();
    draw();
    polygon.offsetX = -2000.0f;
    DynamicPolygonRenderer::prepareDraw(Camera::view());

    EXPECT_FALSE(seenFromTheOrigin);
    EXPECT_TRUE(seenFromNearby);
    EXPECT_FALSE(queued());
}

TEST_F(DynamicPolygonRendererTest, TheSquareGrowsWithTheZoomAndFollowsTheShake) {
    addSquare(650.0f, 0.0f, 8.0f, "red").moveable = true;
    DynamicPolygonRenderer::initialise();
    const auto seenAt = [](Vector2 shake, float zoom) {
        SceneAccess::placeCamera({}, shake, 0.0f, zoom);
        draw();
        DynamicPolygonRenderer::prepareDraw(Camera::view());
        const bool seen = queued();
        draw();
        return seen;
    };

    EXPECT_FALSE(seenAt({}, 1.0f));
    EXPECT_TRUE(seenAt({}, 1.25f)); // 520 units by 1.25
    EXPECT_FALSE(seenAt({}, 1.24f));
    EXPECT_TRUE(seenAt({130.0f, 0.0f}, 1.0f));
    EXPECT_FALSE(seenAt({129.0f, 0.0f}, 1.0f));
}

/// A window of 60 by 80: its view is 800 units wide and 1067 high.
class UprightPolygonRendererTest : public DynamicPolygonRendererTest {
protected:
    UprightPolygonRendererTest()
        : DynamicPolygonRendererTest(60, 80) {
        writeFlatPicture("gfx/red.tga", red);
    }
};

TEST_F(UprightPolygonRendererTest, TheLargerSideOfTheViewTellsWhatIsDrawn) {
    addSquare(0.0f, 693.0f, 8.0f, "red").moveable = true; // 0.65 of 1066.7 units down
    DynamicPolygonRenderer::initialise();
    DynamicPolygonRenderer::prepareDraw(Camera::view());
    const bool inside = queued();
    draw();
    Level::polygons.back().offsetY = 1.0f;

    DynamicPolygonRenderer::prepareDraw(Camera::view());

    EXPECT_TRUE(inside);
    EXPECT_FALSE(queued());
}

TEST_F(DynamicPolygonRendererTest, DrawingEmptiesTheQueue) {
    addSquare(10.0f, 20.0f, 8.0f, "red", 4).moveable = true;
    DynamicPolygonRenderer::initialise();

    draw();

    EXPECT_FALSE(queued());
    EXPECT_EQ(litPixels(), 64);
}

TEST_F(DynamicPolygonRendererTest, APictureOfNoSizeGivesInfiniteCoordinatesAndNoHarm) {
    Polygon2D& polygon = addSquare(10.0f, 20.0f, 8.0f, "red");
    polygon.moveable = true;
    polygon.texture.width = 0;
    polygon.texture.height = 0;
    DynamicPolygonRenderer::initialise();

    draw();

    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(DynamicPolygonRendererTest, StartAndStopAreTold) {
    DynamicPolygonRenderer::initialise();

    EXPECT_EQ(GLConsole::outputText(),
              "\nShuttrng down dynamic polygon renderer..\nIntialising dynamic polygon renderer..");
}

} // namespace tarnwick
