#include "console/GLConsole.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"
#include "support/DrawingTest.h"
#include "support/Keyboard.h"

#include <GL/gl.h>

#include <array>
#include <string>

namespace tarnwick {

/// A console in a window of 648 by 200 pixels: 81 columns and 21 rows of 8 pixels, the input band below them
/// from 168 on. The output is on black, the borders are red, the input band is blue; every character of the
/// sheet is a white block, the output's green, the input's yellow.
class GLConsoleDrawingTest : public DrawingTest {
protected:
    static constexpr std::int32_t cell = 8;
    static constexpr std::int32_t rows = 21;
    static constexpr std::int32_t columns = 81;

    GLConsoleDrawingTest()
        : DrawingTest(648, 200) {
        writeFlatPicture("gfx/font.tga", white);
        start("output_background_a = 1 ");
    }

    void start(const std::string& more) const {
        data.write("cfg/console.cfg",
                   "fontTextureName = gfx\\font.tga fontSize = 8 output_text_g = 1 input_background_b = 1 "
                   "input_border_r = 1 input_text_r = 1 input_text_g = 1 " +
                       more);
        GLConsole::initialise();
    }

    static void draw() {
        GLWindow::clearScreen(1.0f, 1.0f, 1.0f);
        GLConsole::draw();
    }
    static FramePicture::Pixel cellAt(std::int32_t column, std::int32_t row) {
        return pixel(column * cell + 4, row * cell + 4);
    }
    /// The columns of an output row that hold a character, as a text of blocks and dots without the dots at
    /// its end.
    static std::string row(std::int32_t number) {
        const FramePicture shown = picture();
        std::string text;
        for (std::int32_t column = 0; column < columns; ++column) {
            text += shown.at(column * cell + 4, number * cell + 4) == green ? '#' : '.';
        }
        return text.substr(0, text.find_last_of('#') + 1);
    }
    static std::string inputRow() {
        const FramePicture shown = picture();
        std::string text;
        for (std::int32_t column = 0; column < columns; ++column) {
            text += shown.at(column * cell + 4, (rows + 1) * cell + 8) == yellow ? '#' : '.';
        }
        return text.substr(0, text.find_last_of('#') + 1);
    }
    static void type(const std::string& text) {
        for (const char letter : text) {
            GLConsole::keyPressed(static_cast<std::uint32_t>(letter));
        }
    }
    /// The keyboard types over what is there until Insert is pressed once.
    static void pressInsert() {
        pressKey(SDL_SCANCODE_INSERT, SDLK_INSERT);
        GLWindow::run();
    }
};

TEST_F(GLConsoleDrawingTest, ThePanelsLieOneBelowTheOther) {
    draw();

    EXPECT_EQ(pixel(600, 0), black);
    EXPECT_EQ(pixel(600, 167), black);
    EXPECT_EQ(pixel(600, 168), red);
    EXPECT_EQ(pixel(600, 169), red);
    EXPECT_EQ(pixel(600, 170), blue);
    EXPECT_EQ(pixel(600, 197), blue);
    EXPECT_EQ(pixel(600, 198), red);
    EXPECT_EQ(pixel(647, 199), red);
}

TEST_F(GLConsoleDrawingTest, TheGameShinesThroughTheOutputAndNotThroughTheBands) {
    start("output_background_a = 0.5 ");

    draw();

    EXPECT_PRED2(alike, pixel(600, 100), (FramePicture::Pixel{128, 128, 128}));
    EXPECT_EQ(pixel(600, 180), blue);
}

TEST_F(GLConsoleDrawingTest, TheNewestTextStandsInTheLastRow) {
    GLConsole::print("\nabc");

    draw();

    EXPECT_EQ(row(rows - 1), "###");
    EXPECT_EQ(row(rows - 2), "");
    EXPECT_EQ(pixel(0, 160), green);
    EXPECT_EQ(pixel(23, 167), green);
    EXPECT_EQ(pixel(24, 160), black);
}

TEST_F(GLConsoleDrawingTest, ACharacterIsCutFromItsCellOfTheSheet) {
    writeSplitPicture("gfx/font.tga", black, white);
    start("output_background_a = 1 fontTextureName = gfx\\halves.tga ");
    writeSplitPicture("gfx/halves.tga", black, white);
    GLConsole::setFontTexture(GLTexture("gfx\\font.tga"));
    GLConsole::print("\n\x33\x3c"); // columns 3 and 12 of the sheet's 16: a black and a white cell

    draw();

    EXPECT_EQ(cellAt(0, rows - 1), black);
    EXPECT_EQ(cellAt(1, rows - 1), green);
}

TEST_F(GLConsoleDrawingTest, ACarriageReturnAndAnEscapeTakeUpCellsAndAreNotDrawn) {
    GLConsole::print("\na\r\x1b"
                     "b");

    draw();

    EXPECT_EQ(row(rows - 1), "#..#");
}

TEST_F(GLConsoleDrawingTest, ATabGoesToTheNextColumnThatIsAMultipleOfEight) {
    GLConsole::print("\n\ta\tb");

    draw();

    EXPECT_EQ(row(rows - 1), "........#.......#");
}

TEST_F(GLConsoleDrawingTest, ALongLineGoesOnInTheNextRow) {
    GLConsole::print("\n" + std::string(columns + 3, 'x'));

    draw();

    EXPECT_EQ(row(rows - 2), std::string(columns, '#'));
    EXPECT_EQ(row(rows - 1), "###");
}

TEST_F(GLConsoleDrawingTest, AfterTheRingWasFilledThePictureShowsTheNewestRows) {
    for (int i = 0; i < 7000; ++i) {
        GLConsole::print("\n0123456789");
    }
    GLConsole::print("\nab\nabc\nabcd");

    draw();

    EXPECT_EQ(row(rows - 4), "##########");
    EXPECT_EQ(row(rows - 3), "##");
    EXPECT_EQ(row(rows - 2), "###");
    EXPECT_EQ(row(rows - 1), "####");
    EXPECT_EQ(row(0), "##########");
}

TEST_F(GLConsoleDrawingTest, WithoutASheetOnlyThePanelsAndTheCursorAreDrawn) {
    GLConsole::print("\nabc");
    type("ABC");
    GLConsole::shutdown();

    draw();

    EXPECT_EQ(row(rows - 1), "");
    EXPECT_EQ(inputRow(), "");
    EXPECT_EQ(pixel(600, 180), blue);
    EXPECT_EQ(pixel(28, (rows + 3) * cell - 1), white);
}

TEST_F(GLConsoleDrawingTest, TheLineBeingTypedStandsInTheBandWithTheCursorBelow) {
    type("ABC");

    draw();

    EXPECT_EQ(inputRow(), "###");
    EXPECT_EQ(pixel(0, 179), blue);
    EXPECT_EQ(pixel(0, 180), yellow);
    EXPECT_EQ(pixel(0, 187), yellow);
    EXPECT_EQ(pixel(0, 188), blue);
}

TEST_F(GLConsoleDrawingTest, TheCursorIsFivePixelsHighWhileTypingOverwrites) {
    type("ABC");

    draw();

    EXPECT_EQ(pixel(24, 190), blue);
    EXPECT_EQ(pixel(24, 191), white);
    EXPECT_EQ(pixel(31, 195), white);
    EXPECT_EQ(pixel(24, 196), blue);
    EXPECT_EQ(pixel(23, 191), blue);
    EXPECT_EQ(pixel(32, 191), blue);
}

TEST_F(GLConsoleDrawingTest, TheCursorIsOnePixelHighWhileTypingInserts) {
    pressInsert();

    draw();

    EXPECT_EQ(pixel(0, 190), blue);
    EXPECT_EQ(pixel(0, 191), white);
    EXPECT_EQ(pixel(0, 192), blue);
}

TEST_F(GLConsoleDrawingTest, ALineThatIsTooLongIsShownUpToItsCursor) {
    type(std::string(100, 'A'));

    draw();

    EXPECT_EQ(inputRow(), std::string(columns - 1, '#')) << "80 characters, and the cursor behind them";
    EXPECT_EQ(pixel((columns - 1) * cell, 191), white);
}

TEST_F(GLConsoleDrawingTest, ALongLineWithTheCursorAtItsStartIsShownFromItsStart) {
    type(std::string(100, 'A'));
    GLConsole::keyPressed(key::home);

    draw();

    EXPECT_EQ(inputRow(), std::string(columns, '#'));
    EXPECT_EQ(pixel(0, 191), white);
}

TEST_F(GLConsoleDrawingTest, TheGLIsLeftAsItWas) {
    GLWindow::glBeginDraw2d();
    glTranslatef(5.0f, 6.0f, 0.0f);
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_CULL_FACE);
    glDisable(GL_BLEND);
    glColor4f(0.25f, 0.5f, 0.75f, 1.0f);
    std::array<float, 16> before{};
    glGetFloatv(GL_MODELVIEW_MATRIX, before.data());
    GLConsole::print("\nabc");

    GLConsole::draw();

    std::array<float, 16> after{};
    glGetFloatv(GL_MODELVIEW_MATRIX, after.data());
    std::array<float, 4> colour{};
    glGetFloatv(GL_CURRENT_COLOR, colour.data());
    EXPECT_EQ(after, before);
    EXPECT_EQ(colour, (std::array<float, 4>{0.25f, 0.5f, 0.75f, 1.0f}));
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_TRUE(glIsEnabled(GL_CULL_FACE));
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
}

TEST_F(GLConsoleDrawingTest, ASmallWindowStillHasSixteenRowsOfEightyColumns) {
    GLWindow::setClientSize(160, 80);
    GLConsole::print("\n" + std::string(83, 'x'));

    draw();

    // The 16 rows end at 128, below the window's bottom: what is seen are the first ten, which are empty.
    EXPECT_EQ(pixel(4, 4), black);
    EXPECT_EQ(pixel(150, 79), black);
    GLWindow::setClientSize(160, 130);
    GLConsole::print("\nab");
    draw();
    EXPECT_EQ(pixel(12, 124), green) << "row 15";
    EXPECT_EQ(pixel(28, 116), black) << "row 14 holds the 3 characters that row 13 had no room for";
    EXPECT_EQ(pixel(20, 116), green);
}

TEST_F(GLConsoleDrawingTest, TheSheetCanBeReplacedAndAskedFor) {
    writeFlatPicture("gfx/other.tga", red);
    const GLTexture other("gfx\\other.tga");

    GLConsole::setFontTexture(other);

    EXPECT_EQ(GLConsole::getFontTexture().textureId, other.textureId);
    GLConsole::shutdown();
    EXPECT_EQ(GLConsole::getFontTexture().name, "GFX\\DEFAULT.TGA");
}

} // namespace tarnwick
