#include "core/CommandRegistry.h"

#include "support/ConsoleAnswer.h"
#include "support/ModuleTest.h"

namespace tarnwick {

namespace {

bool flag = false;
std::int32_t count = 0;
float rate = 0.0f;

std::int32_t answer() {
    return 42;
}

constexpr CommandRow rows[] = {
    {"Flag", CommandVariable{&flag, "Test::conCmdFlag"}},
    {"Count", CommandVariable{&count, "Test::conCmdCount"}},
    {"Rate", CommandVariable{&rate, "Test::conCmdRate"}},
    {"Answer", answer},
};

} // namespace

class CommandRegistryTest : public ModuleTest {
protected:
    CommandRegistryTest() {
        flag = false;
        count = 0;
        rate = 0.0f;
        CommandRegistry::add(rows);
    }
};

TEST_F(CommandRegistryTest, ATableIsAddedWholeAndRemovedWhole) {
    CommandRegistry::addCommand("Other", answer);
    std::string names;
    for (const auto& [key, command] : CommandRegistry::commands()) {
        names += key + "=" + command.name + " ";
    }
    EXPECT_EQ(names, "ANSWER=Answer COUNT=Count FLAG=Flag OTHER=Other RATE=Rate ");

    CommandRegistry::remove(rows);

    ASSERT_EQ(CommandRegistry::commands().size(), 1u);
    EXPECT_TRUE(CommandRegistry::commands().contains("OTHER"));
}

TEST_F(CommandRegistryTest, AVariableIsAGetOrSetOfItsType) {
    const ConsoleCommand& command = CommandRegistry::commands().at("RATE");

    EXPECT_EQ(command.type, ConsoleCommand::floatType);
    EXPECT_TRUE(command.hasArgument);
    EXPECT_TRUE(command.hasReturn);
    EXPECT_EQ(CommandRegistry::commands().at("FLAG").type, ConsoleCommand::booleanType);
    EXPECT_EQ(CommandRegistry::commands().at("COUNT").type, ConsoleCommand::integerType);
}

TEST_F(CommandRegistryTest, AVariableIsReadAndSetAsItStands) {
    EXPECT_EQ(answerTo("flag"), "\nFlag is false");
    EXPECT_EQ(answerTo("flag true"), "\nFlag is now true");
    EXPECT_TRUE(flag);
    EXPECT_EQ(answerTo("flag"), "\nFlag is true");
    EXPECT_EQ(answerTo("flag 1"), "\nUSAGE: Flag < true OR false OR nothing >");
    EXPECT_TRUE(flag);
    EXPECT_EQ(answerTo("count -3"), "\nCount is now -3");
    EXPECT_EQ(count, -3);
    EXPECT_EQ(answerTo("rate 0.25"), "\nRate is now 0.250000");
    EXPECT_EQ(rate, 0.25f);
}

TEST_F(CommandRegistryTest, AVariableOfNothingIsNoCommand) {
    CommandRegistry::addCommand("Empty", CommandVariable<bool>{nullptr, "Test::conCmdEmpty"});

    EXPECT_FALSE(CommandRegistry::commands().contains("EMPTY"));
}

} // namespace tarnwick
