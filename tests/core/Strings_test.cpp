#include "core/Strings.h"

#include <gtest/gtest.h>

#include <limits>
#include <list>
#include <string>

namespace tarnwick {
namespace {

using Words = std::list<std::string>;

TEST(StringsTest, NumericTextIsDigitsWithALeadingMinusAndOnePoint) {
    for (const char* text : {"0", "42", "-42", "1.5", "-.5", "5.", "-", ".", "-.", "007"}) {
        EXPECT_TRUE(slStringIsNumeric(text)) << text;
    }
    for (const char* text :
         {"", "+1", "1e5", " 1", "1 ", "1.2.3", "--1", "1-", "-1-", "12abc", "..", "\t1", "\xB2"}) {
        EXPECT_FALSE(slStringIsNumeric(text)) << text;
    }
}

TEST(StringsTest, IntegerTextIsDigitsWithALeadingMinus) {
    for (const char* text : {"0", "42", "-42", "-", "007"}) {
        EXPECT_TRUE(slStringIsInteger(text)) << text;
    }
    for (const char* text : {"", "1.5", ".", "-.", "+1", "1 ", " 1", "1-", "0x10"}) {
        EXPECT_FALSE(slStringIsInteger(text)) << text;
    }
}

TEST(StringsTest, BooleanTextIsTrueOrFalseInAnyCase) {
    for (const char* text : {"TRUE", "true", "tRuE", "FALSE", "false", "fAlSe"}) {
        EXPECT_TRUE(slStringIsBoolean(text)) << text;
    }
    for (const char* text : {"", "1", "0", "yes", "tru", "truee", " true", "true "}) {
        EXPECT_FALSE(slStringIsBoolean(text)) << text;
    }
}

TEST(StringsTest, OnlyNumericTextConvertsToAFloat) {
    EXPECT_EQ(slStringToFloat("1.25"), 1.25f);
    EXPECT_EQ(slStringToFloat("-.5"), -0.5f);
    EXPECT_EQ(slStringToFloat("1.2.3"), 0.0f);
    EXPECT_EQ(slStringToFloat("1e5"), 0.0f);
    EXPECT_EQ(slStringToFloat("-"), 0.0f);
    EXPECT_EQ(slStringToFloat("."), 0.0f);
}

TEST(StringsTest, OnlyIntegerTextConvertsToAnInteger) {
    EXPECT_EQ(slStringToInt("-42"), -42);
    EXPECT_EQ(slStringToInt("42 "), 0);
    EXPECT_EQ(slStringToInt("2.5"), 0);
    EXPECT_EQ(slStringToInt("-"), 0);
}

TEST(StringsTest, AnIntegerOutsideItsRangeGivesTheNearestEnd) {
    EXPECT_EQ(slStringToInt("2147483647"), std::numeric_limits<int>::max());
    EXPECT_EQ(slStringToInt("2147483648"), std::numeric_limits<int>::max());
    EXPECT_EQ(slStringToInt("99999999999999999999999999"), std::numeric_limits<int>::max());
    EXPECT_EQ(slStringToInt("-2147483648"), std::numeric_limits<int>::min());
    EXPECT_EQ(slStringToInt("-99999999999999999999999999"), std::numeric_limits<int>::min());
}

TEST(StringsTest, OnlyTheWordTrueConvertsToTrue) {
    EXPECT_TRUE(slStringToBool("tRuE"));
    EXPECT_FALSE(slStringToBool("1"));
    EXPECT_FALSE(slStringToBool("false"));
    EXPECT_FALSE(slStringToBool(""));
}

TEST(StringsTest, CaseChangesOnlyTheLettersAToZ) {
    std::string upper = "azAZ09@[`{\xE4\xC4";
    std::string lower = upper;

    slStringUpper(upper);
    slStringLower(lower);

    EXPECT_EQ(upper, "AZAZ09@[`{\xE4\xC4");
    EXPECT_EQ(lower, "azaz09@[`{\xE4\xC4");
}

TEST(StringsTest, ArgumentsAreTheWordsBetweenRunsOfSeparators) {
    Words words{"kept"};

    slSeparateArgs(" \t one\r\n\x1B\b=two= \t", words);

    EXPECT_EQ(words, (Words{"kept", "one", "=two="}));
}

TEST(StringsTest, TextWithoutWordsGivesNoArguments) {
    Words words;

    slSeparateArgs("", words);
    slSeparateArgs(" \t\r\n", words);

    EXPECT_TRUE(words.empty());
}

TEST(StringsTest, ANullPointerGivesFalseOrZeroOrDoesNothing) {
    const char* nothing = nullptr;
    char* nowhere = nullptr;
    Words words;

    slStringUpper(nowhere);
    slStringLower(nowhere);
    slSeparateArgs(nothing, words);

    EXPECT_FALSE(slStringIsNumeric(nothing));
    EXPECT_FALSE(slStringIsInteger(nothing));
    EXPECT_FALSE(slStringIsBoolean(nothing));
    EXPECT_EQ(slStringToFloat(nothing), 0.0f);
    EXPECT_EQ(slStringToInt(nothing), 0);
    EXPECT_FALSE(slStringToBool(nothing));
    EXPECT_TRUE(words.empty());
}

TEST(StringsTest, BothKindsOfTextAreTreatedAlike) {
    char upper[] = "abc";
    char lower[] = "ABC";
    Words words;

    slStringUpper(upper);
    slStringLower(lower);
    slSeparateArgs(std::string("one two"), words);

    EXPECT_STREQ(upper, "ABC");
    EXPECT_STREQ(lower, "abc");
    EXPECT_EQ(words, (Words{"one", "two"}));
    EXPECT_TRUE(slStringIsNumeric(std::string("1.5")));
    EXPECT_FALSE(slStringIsInteger(std::string("1.5")));
    EXPECT_TRUE(slStringIsBoolean(std::string("true")));
    EXPECT_EQ(slStringToFloat(std::string("1.5")), 1.5f);
    EXPECT_EQ(slStringToInt(std::string("15")), 15);
    EXPECT_TRUE(slStringToBool(std::string("true")));
    EXPECT_TRUE(slStringIsInteger(std::string("15\0x", 4))); // up to the NUL, as a C string
}

} // namespace
} // namespace tarnwick
