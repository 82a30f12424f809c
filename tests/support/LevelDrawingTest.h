#pragma once

#include "level/Level.h"
#include "level/Polygon2D.h"
#include "support/DrawingTest.h"

#include <string>

namespace tarnwick {

/// A drawing test with polygons of one colour each, put into the level by hand.
class LevelDrawingTest : public DrawingTest {
protected:
    using DrawingTest::DrawingTest;

    LevelDrawingTest() {
        writeFlatPicture("gfx/red.tga", red);
        writeFlatPicture("gfx/green.tga", green);
        writeFlatPicture("gfx/blue.tga", blue);
        writeFlatPicture("gfx/white.tga", white);
    }

    /// Adds a square of side `side` with its top left corner at (x, y), in the picture `gfx\PICTURE.tga`.
    static Polygon2D&
    addSquare(float x, float y, float side, const std::string& picture, std::uint32_t layer = 0) {
        Polygon2D& polygon = Level::polygons.emplace_back();
        polygon.texture = "gfx\\" + picture + ".tga";
        polygon.layer = layer;
        polygon.addPoint(x, y);
        polygon.addPoint(x, y + side);
        polygon.addPoint(x + side, y + side);
        polygon.addPoint(x + side, y);
        return polygon;
    }
};

} // namespace tarnwick
