#include "core/Clock.h"
#include "core/Comfort.h"
#include "game/Game.h"
#include "game/GameRules.h"
#include "graphics/GLWindow.h"
#include "gui/GameMenus.h"
#include "support/GameSceneTest.h"

namespace tarnwick {

/// A level of one red square, whose finish is a white picture of two seconds.
class GameRulesDrawingTest : public GameSceneTest {
protected:
    GameRulesDrawingTest() {
        data.write("cfg/game.cfg", "finishAnimationTime = 2 finishWaterVolume = 0.5 "
                                   "finishAnimationFrames = gfx\\large.tga finishAnimationFrameRate = 10");
        writePicture("gfx/large.tga", 64, [](std::int32_t, std::int32_t) { return Texel{white}; });
        addSquare(200, 100, 400, "red", 0);
        play();
        addWater(400.0f, 500.0f);
    }

    static void reachEnd() {
        GameRules::incrementEndOfLevelTriggerParticleCount(1);
        GameRules::update(0.01f);
    }
    static FramePicture::Pixel middle() { return shownAt(400, 300); }
};

TEST_F(GameRulesDrawingTest, BeforeTheFinishTheLevelIsSeen) {
    Game::drawPicture();

    EXPECT_TRUE(alike(middle(), red));
}

TEST_F(GameRulesDrawingTest, ThePictureOfTheFinishFadesIn) {
    reachEnd();
    Game::drawPicture();
    const FramePicture::Pixel atFirst = middle();
    GameRules::update(1.0f);

    Game::drawPicture();

    EXPECT_TRUE(alike(atFirst, red));
    EXPECT_TRUE(alike(middle(), {255, 128, 128}));
    EXPECT_TRUE(alike(shownAt(440, 300), red)); // beside the picture, which keeps its size
}

TEST_F(GameRulesDrawingTest, AfterTheFinishNothingIsLeftOfTheLevel) {
    reachEnd();
    GameRules::update(2.0f);
    const std::uint32_t menuUp = GameMenus::getCurrentMenu();
    GameMenus::setCurrentMenu(menu::none); // of which something is seen

    Game::drawPicture();

    EXPECT_TRUE(GameRules::gameIsFinished());
    EXPECT_EQ(menuUp, menu::levelFinished);
    EXPECT_EQ(litPixels(), 0);
}

TEST_F(GameRulesDrawingTest, WithoutAPictureTheFinishGoesOn) {
    GameRules::shutdown();
    reachEnd();
    GameRules::update(1.0f);

    Game::drawPicture();

    EXPECT_TRUE(alike(middle(), red));
}

/// Finds a finish that leaves a part of a window of another shape uncovered.
TEST_F(GameRulesDrawingTest, WithKeptProportionsThePictureCoversAWindowOfAnyShape) {
    data.write("cfg/comfort.cfg", "keepProportions = TRUE");
    Comfort::initialise();
    reachEnd();
    GameRules::update(1.9f);
    constexpr FramePicture::Pixel shade{242, 242, 242}; // 95 % of white over black
    const std::pair<std::int32_t, std::int32_t> shapes[] = {{400, 300}, {640, 180}, {180, 320}, {250, 200}};
    for (const auto& [width, height] : shapes) {
        GLWindow::setClientSize(width, height);

        Game::drawPicture();

        const FramePicture shown = picture();
        for (const std::int32_t x : {2, width / 2, width - 3}) {
            for (const std::int32_t y : {2, height - 3}) {
                EXPECT_GE(shown.at(x, y).blue, shade.blue - 2) << x << ", " << y << " of " << width;
            }
        }
    }
    GameRules::update(0.2f);
    GameMenus::setCurrentMenu(menu::none);
    Game::drawPicture();
    EXPECT_EQ(picture().at(2, 2), white) << "it stays behind the menu";
}

} // namespace tarnwick
