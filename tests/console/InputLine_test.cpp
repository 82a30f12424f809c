#include "console/InputLine.h"

#include <gtest/gtest.h>

#include <string>

namespace tarnwick {

namespace {

InputLine lineOf(const std::string& text) {
    InputLine line;
    line.set(text);
    return line;
}

} // namespace

TEST(InputLineTest, ANewLineIsEmpty) {
    const InputLine line;

    EXPECT_EQ(line.text(), "");
    EXPECT_EQ(line.cursor(), 0u);
}

TEST(InputLineTest, SettingGoesToTheEnd) {
    InputLine line = lineOf("a longer text");

    line.set("short");

    EXPECT_EQ(line.text(), "short");
    EXPECT_EQ(line.cursor(), 5u);
}

TEST(InputLineTest, SettingCutsAtTheCapacity) {
    const std::string text(300, 'x');

    const InputLine line = lineOf(text);

    EXPECT_EQ(line.text(), text.substr(0, 256));
    EXPECT_EQ(line.cursor(), 256u);
}

TEST(InputLineTest, TypingOverwritesUnlessItInserts) {
    InputLine over = lineOf("abc");
    InputLine inserted = lineOf("abc");
    over.moveToStart();
    inserted.moveToStart();

    over.type('X', false);
    inserted.type('X', true);

    EXPECT_EQ(over.text(), "Xbc");
    EXPECT_EQ(over.cursor(), 1u);
    EXPECT_EQ(inserted.text(), "Xabc");
    EXPECT_EQ(inserted.cursor(), 1u);
}

TEST(InputLineTest, AFullLineRefusesFurtherTyping) {
    InputLine line = lineOf(std::string(255, 'a'));

    const bool last = line.type('b', false);
    const bool overwritten = line.type('c', false);
    const bool inserted = line.type('c', true);

    EXPECT_TRUE(last);
    EXPECT_FALSE(overwritten);
    EXPECT_FALSE(inserted);
    EXPECT_EQ(line.text(), std::string(255, 'a') + "b");
    EXPECT_EQ(line.cursor(), 256u);
}

TEST(InputLineTest, InsertingIntoAFullLinePushesItsLastByteOut) {
    InputLine line = lineOf(std::string(255, 'a') + "z");
    line.moveToStart();

    const bool inserted = line.type('X', true);

    EXPECT_TRUE(inserted);
    EXPECT_EQ(line.text(), "X" + std::string(255, 'a'));
    EXPECT_EQ(line.cursor(), 1u);
}

TEST(InputLineTest, RemovingLeftClosesTheGap) {
    InputLine line = lineOf("abc");
    line.moveLeft();

    const bool removed = line.removeLeft();

    EXPECT_TRUE(removed);
    EXPECT_EQ(line.text(), "ac");
    EXPECT_EQ(line.cursor(), 1u);
}

TEST(InputLineTest, RemovingLeftAtTheStartDoesNothing) {
    InputLine line = lineOf("abc");
    line.moveToStart();

    const bool removed = line.removeLeft();

    EXPECT_FALSE(removed);
    EXPECT_EQ(line.text(), "abc");
    EXPECT_EQ(line.cursor(), 0u);
}

TEST(InputLineTest, RemovingLeftShortensAFullLine) {
    InputLine line = lineOf(std::string(256, 'a'));

    line.removeLeft();

    EXPECT_EQ(line.text(), std::string(255, 'a'));
    EXPECT_EQ(line.cursor(), 255u);
}

TEST(InputLineTest, RemovingHereKeepsTheCursor) {
    InputLine line = lineOf("abc");
    line.moveToStart();

    line.removeHere();

    EXPECT_EQ(line.text(), "bc");
    EXPECT_EQ(line.cursor(), 0u);
}

TEST(InputLineTest, RemovingBehindTheLastByteDoesNothing) {
    InputLine line = lineOf("abc");
    InputLine full = lineOf(std::string(256, 'a'));

    line.removeHere();
    full.removeHere();

    EXPECT_EQ(line.text(), "abc");
    EXPECT_EQ(line.cursor(), 3u);
    EXPECT_EQ(full.text(), std::string(256, 'a'));
    EXPECT_EQ(full.cursor(), 256u);
}

TEST(InputLineTest, TheCursorStaysWithinTheText) {
    InputLine line = lineOf("ab");
    InputLine full = lineOf(std::string(256, 'a'));

    line.moveRight();
    full.moveRight();

    EXPECT_EQ(line.cursor(), 2u);
    EXPECT_EQ(full.cursor(), 256u);
    line.moveToStart();
    line.moveLeft();
    EXPECT_EQ(line.cursor(), 0u);
    line.moveRight();
    EXPECT_EQ(line.cursor(), 1u);
    line.moveToEnd();
    EXPECT_EQ(line.cursor(), 2u);
}

TEST(InputLineTest, ClearingEmptiesAFullLine) {
    InputLine line = lineOf(std::string(256, 'a'));

    line.clear();

    EXPECT_EQ(line.text(), "");
    EXPECT_EQ(line.cursor(), 0u);
}

} // namespace tarnwick
