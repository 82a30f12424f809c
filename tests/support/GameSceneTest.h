#pragma once

#include "level/LevelFile.h"
#include "support/DrawingTest.h"

#include <cstdint>
#include <string>

namespace tarnwick {

/// A drawing test that plays a level of squares of one colour each. The window is 400 by 300 pixels unless a
/// test asks for others, half a pixel a world unit, and the camera stands so that world and window have one
/// origin.
///
/// Water is blue, steam green and ice white, without outlines; the background is black.
class GameSceneTest : public DrawingTest {
protected:
    explicit GameSceneTest(std::int32_t width = 400, std::int32_t height = 300);

    /// Adds a square of side `side` units with its top left corner at (x, y), in the picture
    /// `gfx\PICTURE.tga`, to the level that `play` starts. Seen, and not solid.
    void addSquare(
        std::int32_t x, std::int32_t y, std::int32_t side, const std::string& picture, std::uint32_t layer);
    /// Writes the level file and starts it, without any water.
    void play();
    /// A particle at rest at (x, y), its trail with it.
    static void addWater(float x, float y);

    /// The pixel of the last picture at a place in the world.
    static FramePicture::Pixel shownAt(std::int32_t worldX, std::int32_t worldY) {
        return pixel(worldX / 2, worldY / 2);
    }

    LevelFile level;
};

} // namespace tarnwick
