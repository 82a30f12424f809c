#include "core/CommandArguments.h"

#include "support/LogTest.h"

namespace tarnwick {

namespace {

constexpr const char* usage =
    "\nUSAGE: Make thing < x : number > < id : integer >  < amount : integer number > "
    "< looping : true OR false > < file name : fileName > < string >";

} // namespace

class CommandArgumentsTest : public LogTest {};

TEST_F(CommandArgumentsTest, WordsThatFitTheirPlacesAreReadByKind) {
    const CommandArguments arguments("  -2.5 7\t-12  tRuE fx\\a.cfg 5 ", usage);

    ASSERT_TRUE(arguments.fit());
    EXPECT_EQ(arguments.number(0), -2.5f);
    EXPECT_EQ(arguments.integer(1), 7);
    EXPECT_EQ(arguments.integer(2), -12);
    EXPECT_TRUE(arguments.boolean(3));
    EXPECT_EQ(arguments.text(4), "fx\\a.cfg");
    EXPECT_EQ(arguments.text(5), "5");
    EXPECT_EQ(Log::outputText(), "");
}

TEST_F(CommandArgumentsTest, AWordOfAnotherKindEndsInTheUsage) {
    for (const char* typed : {"x 1 1 true a b", "1 1.5 1 true a b", "1 1 1.5 true a b", "1 1 1 yes a b"}) {
        Log::clear();

        EXPECT_FALSE(CommandArguments(typed, usage).fit()) << typed;

        EXPECT_EQ(Log::outputText(), usage) << typed;
    }
}

TEST_F(CommandArgumentsTest, TooFewAndTooManyWordsEndInTheUsage) {
    for (const char* typed : {"", " ", "1", "1 1 1 true a", "1 1 1 true a b c"}) {
        Log::clear();

        EXPECT_FALSE(CommandArguments(typed, usage).fit()) << typed;

        EXPECT_EQ(Log::outputText(), usage) << typed;
    }
}

TEST_F(CommandArgumentsTest, APlaceWithoutANameIsAKindToo) {
    const CommandArguments good("1 2", "\nUSAGE: Cast < number > < number >");
    const CommandArguments bad("1 a", "\nUSAGE: Cast < number > < number >");

    EXPECT_TRUE(good.fit());
    EXPECT_FALSE(bad.fit());
}

} // namespace tarnwick
