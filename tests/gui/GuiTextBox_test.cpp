#include "gui/GuiTextBox.h"

#include "support/DrawingTest.h"

namespace tarnwick {

class GuiTextBoxTest : public DrawingTest {
protected:
    GuiTextBoxTest()
        : DrawingTest(120, 40) {
        writeFlatPicture("gfx/font.tga", white);
        box = std::make_unique<GuiTextBox>();
    }

    std::unique_ptr<GuiTextBox> box; ///< 100 units wide, in characters of 8: 12 columns.
};

using Lines = std::vector<std::string>;

TEST_F(GuiTextBoxTest, ABox100UnitsWideHolds12CharactersALine) {
    box->setText("abcdefghijkl mnopqrstuvwx yz");

    EXPECT_EQ(box->lines, (Lines{"abcdefghijkl ", "mnopqrstuvwx ", "yz"}));
}

TEST_F(GuiTextBoxTest, AWordThatDoesNotFitGoesToTheNextLine) {
    box->setText("turn the world");

    EXPECT_EQ(box->lines, (Lines{"turn the ", "world"}));
}

TEST_F(GuiTextBoxTest, LineFeedsAndCarriageReturnsBreakAndStayAtTheirLine) {
    box->setText("one\ntwo\rthree\r\nfour");

    EXPECT_EQ(box->lines, (Lines{"one\n", "two\r", "three\r", "\n", "four"}));
}

TEST_F(GuiTextBoxTest, AWordLongerThanTheBoxLeavesALineOfOneCharacter) {
    box->setText("abcdefghijklmn");

    EXPECT_EQ(box->lines, (Lines{"a", "b", "cdefghijklmn"}));
}

TEST_F(GuiTextBoxTest, AnEmptyTextHasNoLinesAndATextEndsAtItsFirstZero) {
    box->setText("");
    const Lines empty = box->lines;

    box->setText(std::string("ab\0cd", 5));

    EXPECT_EQ(empty, Lines{});
    EXPECT_EQ(box->lines, Lines{"ab"});
    EXPECT_EQ(box->text, "ab");
}

TEST_F(GuiTextBoxTest, AnotherSizeOfTheFontBreaksTheTextAnew) {
    box->setText("turn the world");

    box->setFontSize(20.0f);
    const Lines large = box->lines;
    box->setFontSize(1.0f);

    EXPECT_EQ(large, (Lines{"turn ", "the ", "world"}));
    EXPECT_EQ(box->fontSize, 4.0f) << "the smallest";
    EXPECT_EQ(box->lines, Lines{"turn the world"});
}

TEST_F(GuiTextBoxTest, ABoxNarrowerThanALetterHoldsOneALine) {
    box->setSize(3, 10);

    box->setText("a bc");

    EXPECT_EQ(box->lines, (Lines{"a ", "b", "c"}));
}

TEST_F(GuiTextBoxTest, LinesLieOneBelowTheOtherAndAShadowLiesBelowAll) {
    box->setFont("gfx\\font.tga");
    box->setPosition(10, 4);
    box->setText("ab\nc"); // the break is a character of its line and is not drawn
    box->dropShadowEnabled = true;
    box->setDropShadowOffset(2.0f, 2.0f);
    box->setDropShadowColor(1.0f, 0.0f, 0.0f, 1.0f);
    beginPicture();

    box->windowRedrawing();

    EXPECT_EQ(pixel(10, 4), white);
    EXPECT_EQ(pixel(25, 11), white);
    EXPECT_EQ(pixel(27, 11), red);
    EXPECT_EQ(pixel(17, 19), white);
    EXPECT_EQ(pixel(19, 21), red);
    EXPECT_EQ(pixel(21, 16), black);
    EXPECT_EQ(pixel(9, 4), black);
}

TEST_F(GuiTextBoxTest, CentredLinesLieEachInTheMiddle) {
    box->setFont("gfx\\font.tga");
    box->setPosition(10, 0);
    box->centered = true;
    box->setText("abcd");
    beginPicture();

    box->windowRedrawing();

    EXPECT_EQ(pixel(43, 0), black);
    EXPECT_EQ(pixel(44, 0), white);
    EXPECT_EQ(pixel(75, 7), white);
    EXPECT_EQ(pixel(76, 0), black);
}

} // namespace tarnwick
