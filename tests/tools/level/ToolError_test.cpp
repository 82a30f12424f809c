#include "tools/level/ToolError.h"

#include <gtest/gtest.h>

namespace tarnwick {

TEST(ToolErrorTest, ANameStandsBetweenQuotesAsItIs) {
    EXPECT_EQ(inQuotes("gfx\\stone.tga"), "\"gfx\\stone.tga\"");
}

TEST(ToolErrorTest, ControlCharactersCannotBreakTheLine) {
    EXPECT_EQ(inQuotes("a\nb\x7F\x1B"), "\"a\\x0Ab\\x7F\\x1B\"");
}

TEST(ToolErrorTest, OfALongNameOnlyTheBeginningIsShown) {
    const std::string name(100, 'x');

    const std::string shown = inQuotes(name);

    EXPECT_EQ(shown, "\"" + std::string(80, 'x') + "...\"");
}

TEST(ToolErrorTest, ALongNameIsNotCutInsideACharacter) {
    const std::string umlaut = "\xC3\xBC";
    const std::string name = std::string(79, 'x') + umlaut + umlaut;

    const std::string shown = inQuotes(name);

    EXPECT_EQ(shown, "\"" + std::string(79, 'x') + "...\"");
}

} // namespace tarnwick
