#include "game/HighScores.h"
#include "graphics/GLWindow.h"
#include "gui/GuiHighScores.h"
#include "gui/GuiImage.h"
#include "gui/GuiLabel.h"
#include "gui/GuiScreen.h"
#include "support/DrawingTest.h"

#include <GL/gl.h>

namespace tarnwick {

/// The widgets that only show something, in a window of 800 by 600: client pixels are virtual units.
class GuiPicturesTest : public DrawingTest {
protected:
    GuiPicturesTest()
        : DrawingTest(800, 600) {
        writeFlatPicture("gfx/font.tga", white);
        writeSplitPicture("gfx/split.tga", red, green);
    }
};

TEST_F(GuiPicturesTest, ALabelIsBlackOf16UnitsUntilToldOtherwise) {
    const GuiLabel label;

    EXPECT_EQ(label.red, 0.0f);
    EXPECT_EQ(label.fontSize, 16.0f);
    EXPECT_FALSE(label.dropShadowEnabled);
    EXPECT_EQ(label.dropShadowAlpha, 1.0f);
    EXPECT_EQ(label.font.name, "GFX\\DEFAULT.TGA");
}

TEST_F(GuiPicturesTest, ALabelStandsAtItsTopLeftCornerWithItsShadow) {
    GuiLabel label;
    label.setFont("gfx\\font.tga");
    label.setColor(0.0f, 0.0f, 1.0f, 1.0f);
    label.setPosition(100, 50);
    label.setText("ab");
    label.dropShadowEnabled = true;
    label.setDropShadowOffset(4.0f, 2.0f);
    label.setDropShadowColor(1.0f, 0.0f, 0.0f, 1.0f);
    beginPicture();

    label.windowRedrawing();

    EXPECT_EQ(pixel(100, 50), blue);
    EXPECT_EQ(pixel(131, 65), blue);
    EXPECT_EQ(pixel(135, 67), red);
    EXPECT_EQ(pixel(136, 67), black);
    EXPECT_EQ(pixel(99, 50), black);
}

TEST_F(GuiPicturesTest, AnImageFillsItsRectangle) {
    GuiImage image;
    image.setImage("gfx\\split.tga");
    image.setPosition(10, 20);
    image.setSize(80, 40);
    beginPicture();

    image.windowRedrawing();

    EXPECT_EQ(pixel(30, 30), red);
    EXPECT_EQ(pixel(70, 30), green);
    EXPECT_EQ(pixel(9, 30), black);
    EXPECT_EQ(pixel(90, 30), black);
    EXPECT_EQ(pixel(50, 60), black);
}

TEST_F(GuiPicturesTest, APortionOfAnImageFillsItsRectangleInTheWidgetsColour) {
    GuiImage image;
    image.setImage("gfx\\split.tga");
    image.setImagePortion(2.5f, 0.0f, 1.0f, 4.0f); // of its right half
    image.setColor(1.0f, 0.5f, 1.0f, 1.0f);
    image.setSize(40, 40);
    beginPicture();

    image.windowRedrawing();

    EXPECT_PRED2(alike, pixel(1, 20), (FramePicture::Pixel{0, 128, 0}));
    EXPECT_PRED2(alike, pixel(38, 20), (FramePicture::Pixel{0, 128, 0}));
}

TEST_F(GuiPicturesTest, AnotherImageShowsWholeAgain) {
    GuiImage image;
    image.setImage("gfx\\split.tga");
    image.setImagePortion(3.0f, 3.0f, 1.0f, 1.0f);

    image.setImage("gfx\\font.tga");

    EXPECT_EQ(image.portionX, 0.0f);
    EXPECT_EQ(image.portionWidth, 4.0f);
    EXPECT_EQ(image.portionHeight, 4.0f);
}

TEST_F(GuiPicturesTest, AnImageWithoutASizeIsDrawnWithoutDividingByIt) {
    GuiImage image;
    image.setImage("gfx\\split.tga");
    image.setSize(80, 40);
    image.setImagePortion(0.0f, 0.0f, 0.0f, 0.0f);
    beginPicture();
    image.windowRedrawing();
    const FramePicture corner = picture(); // the picture's corner, all over

    image.setImagePortion(2.0f, 0.0f, 2.0f, 4.0f);
    image.image.width = 0;
    beginPicture();
    image.windowRedrawing();
    const FramePicture withoutSize = picture();

    EXPECT_NE(corner.at(20, 20), black);
    for (const std::int32_t x : {1, 40, 78}) {
        EXPECT_EQ(withoutSize.at(x, 20), corner.at(x, 20)) << x;
    }
}

TEST_F(GuiPicturesTest, TheTableHasARowOfTitlesAndTenEntries) {
    HighScores::setDefaultScores();
    GuiHighScores table;
    table.setFont("gfx\\font.tga");
    table.setPosition(10, 20);
    table.setTitleFontSize(10.0f);
    table.setEntryFontSize(8.0f);
    beginPicture();

    table.windowRedrawing();

    const FramePicture shown = picture();
    EXPECT_EQ(shown.at(10, 20), white) << "Rank";
    EXPECT_EQ(shown.at(49, 29), white);
    EXPECT_EQ(shown.at(50, 29), black);
    EXPECT_EQ(shown.at(70, 20), white) << "Name";
    EXPECT_EQ(shown.at(190, 20), white) << "Score";
    EXPECT_EQ(shown.at(239, 20), white);
    EXPECT_EQ(shown.at(10, 40), white) << "1";
    EXPECT_EQ(shown.at(18, 40), black);
    EXPECT_EQ(shown.at(70, 40), white) << "NO NAME";
    EXPECT_EQ(shown.at(125, 47), white);
    EXPECT_EQ(shown.at(126, 40), black);
    EXPECT_EQ(shown.at(197, 40), white) << "0";
    EXPECT_EQ(shown.at(198, 40), black);
    EXPECT_EQ(shown.at(12, 48), black) << "rows are a title letter high";
    EXPECT_EQ(shown.at(25, 130), white) << "10";
    EXPECT_EQ(shown.at(12, 140), black);
}

TEST_F(GuiPicturesTest, TheShadowOfTheTableLiesBelowIt) {
    HighScores::setDefaultScores();
    GuiHighScores table;
    table.setFont("gfx\\font.tga");
    table.setTitleFontSize(10.0f);
    table.dropShadowEnabled = true;
    table.setDropShadowOffset(3.0f, 4.0f);
    table.setDropShadowColor(0.0f, 1.0f, 0.0f, 1.0f);
    beginPicture();

    table.windowRedrawing();

    EXPECT_EQ(pixel(39, 9), white);
    EXPECT_EQ(pixel(42, 13), green);
}

TEST_F(GuiPicturesTest, ANameWithoutAnEndFromABrokenFileDoesNotRunOn) {
    HighScoreEntry entry;
    entry.name.fill('A');
    entry.score = 5;
    HighScores::addHighScore(entry);
    GuiHighScores table;
    table.setFont("gfx\\font.tga");
    table.setTitleFontSize(20.0f);
    table.setEntryFontSize(4.0f);
    beginPicture();

    table.windowRedrawing();

    EXPECT_EQ(pixel(120 + 24 * 4 - 1, 41), white);
    EXPECT_EQ(pixel(120 + 24 * 4, 41), black);
}

TEST_F(GuiPicturesTest, ALargeWindowShowsAWidgetAtTheSameRelativePlace) {
    GLWindow::close();
    GLWindow::createOffscreen(1600, 1200);
    GuiScreen screen;
    auto* const image = new GuiImage;
    screen.addWidget(image);
    image->setImage("gfx\\split.tga");
    image->setPosition(700, 500);
    image->setSize(100, 100);
    screen.swapBuffers = false;

    screen.windowRedrawing();

    EXPECT_EQ(pixel(1399, 1100), black);
    EXPECT_EQ(pixel(1450, 1001), red);
    EXPECT_EQ(pixel(1550, 1198), green);
    EXPECT_EQ(pixel(1450, 998), black);
}

TEST_F(GuiPicturesTest, AScreenClearsToItsColourUnlessItLiesOnTopOfSomething) {
    GuiScreen screen;
    screen.swapBuffers = false;
    screen.backgroundBlue = 1.0f;

    screen.windowRedrawing();
    const FramePicture::Pixel cleared = pixel(400, 300);
    GLWindow::clearScreen(1.0f, 0.0f, 0.0f);
    screen.clearBackground = false;
    screen.windowRedrawing();

    EXPECT_EQ(cleared, blue);
    EXPECT_EQ(pixel(400, 300), red);
}

TEST_F(GuiPicturesTest, AWidgetAddedLaterLiesOnTop) {
    GuiScreen screen;
    screen.swapBuffers = false;
    for (const char* const name : {"gfx\\font.tga", "gfx\\split.tga"}) {
        auto* const image = new GuiImage;
        image->setImage(name);
        screen.addWidget(image);
    }

    screen.windowRedrawing();

    EXPECT_EQ(pixel(25, 10), red);
}

TEST_F(GuiPicturesTest, AScreenLeavesTheStateOfTheGraphicsAsItWas) {
    GuiScreen screen;
    screen.swapBuffers = false;
    auto* const image = new GuiImage;
    screen.addWidget(image);
    glEnable(GL_CULL_FACE);
    glDisable(GL_TEXTURE_2D);

    screen.windowRedrawing();

    GLint shadeModel = 0;
    glGetIntegerv(GL_SHADE_MODEL, &shadeModel);
    EXPECT_TRUE(glIsEnabled(GL_CULL_FACE));
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(shadeModel, GL_SMOOTH);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

} // namespace tarnwick
