#include "core/Comfort.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"
#include "gui/GameMenus.h"
#include "support/ComparePictures.h"
#include "support/GameSceneTest.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <string>

namespace tarnwick {

namespace {

constexpr std::int32_t longestSide = 192; ///< Pixels of the pictures that are kept.

/// A picture made smaller: each pixel is the mean of a square of them.
FramePicture reduced(const FramePicture& whole) {
    const std::int32_t factor = std::max({whole.width, whole.height, longestSide}) / longestSide;
    FramePicture small;
    small.width = whole.width / factor;
    small.height = whole.height / factor;
    for (std::int32_t y = 0; y < small.height; ++y) {
        for (std::int32_t x = 0; x < small.width; ++x) {
            std::array<std::int32_t, 3> sums{};
            for (std::int32_t i = 0; i < factor * factor; ++i) {
                const FramePicture::Pixel& pixel = whole.at(x * factor + i % factor, y * factor + i / factor);
                sums[0] += pixel.red;
                sums[1] += pixel.green;
                sums[2] += pixel.blue;
            }
            const auto mean = [&](std::size_t part) {
                return static_cast<std::uint8_t>(sums.at(part) / (factor * factor));
            };
            small.pixels.push_back({mean(0), mean(1), mean(2)});
        }
    }
    return small;
}

} // namespace

/// A menu of a disc, a square sign and a line of text over a level of stripes, with the proportions kept:
/// whatever the window, the disc is round, and all lies in the middle.
class MenuShapesTest : public GameSceneTest {
protected:
    MenuShapesTest() {
        data.write("cfg/comfort.cfg", "keepProportions = TRUE");
        Comfort::initialise();
        writePicture("gfx/disc.tga", 512, [](std::int32_t x, std::int32_t y) {
            const bool inside = std::hypot(x - 255.5, y - 255.5) < 250.0;
            return Texel{blue, static_cast<std::uint8_t>(inside ? 255 : 0)};
        });
        writePicture("gfx/sign.tga", 128, [](auto, auto) { return Texel{yellow}; });
        data.write("cfg/menu_general.cfg",
                   "menuFont = gfx\\white.tga menuFontColor_r = 1 menuFontColor_a = 1");
        data.write("cfg/menu_instructions.cfg",
                   "logo = gfx\\disc.tga logo_x = 400 logo_y = 300 instructionsText_text = text "
                   "instructionsText_fontSize = 40 instructionsText_x = 0 instructionsText_y = 20 "
                   "instructionsText_w = 800 backButton_x = 620 backButton_y = 460 backButton_w = 128 "
                   "backButton_h = 128 backButton_frames_outOfFocus = gfx\\sign.tga");
        for (std::int32_t x = -2000; x < 3000; x += 200) {
            addSquare(x, 250, 100, "green", 1);
        }
        play();
        GameMenus::setCurrentMenu(menu::instructions);
    }
    /// The same game in a window of another size, as a player drags it.
    static FramePicture resizedTo(std::int32_t width, std::int32_t height) {
        GLWindow::setClientSize(width, height);
        Game::drawPicture();
        return reduced(picture());
    }
    static void expectShape(std::int32_t width, std::int32_t height) {
        const std::string name = "menu-" + std::to_string(width) + "x" + std::to_string(height) + ".png";
        expectPictureAsFile(resizedTo(width, height),
                            std::filesystem::path(TARNWICK_SOURCE_FOLDER) / "tests" / "pictures" / name);
    }
};

/// Finds menus that are stretched, cut off or off the middle on a screen of any shape.
TEST_F(MenuShapesTest, MenusKeepTheirShapeAtSixSizes) {
    expectShape(640, 480);
    expectShape(1280, 720);
    expectShape(1280, 1024);
    expectShape(1920, 540);
    expectShape(720, 1280);
    expectShape(3840, 2160);
}

} // namespace tarnwick
