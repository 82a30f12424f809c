#include "core/ConsoleCommand.h"

#include "console/GLConsole.h"
#include "console/GLConsoleTest.h"
#include "support/ConsoleAnswer.h"

namespace tarnwick {

namespace {

/// What the probe functions below were called with.
struct Calls {
    std::int32_t count = 0;
    std::int32_t integer = 0;
    bool boolean = false;
    float number = 0.0f;
    std::string text;
    bool set = false;
};
Calls calls;

void action() {
    ++calls.count;
}

void setInteger(std::int32_t value) {
    ++calls.count;
    calls.integer = value;
}
void setBoolean(bool value) {
    ++calls.count;
    calls.boolean = value;
}
void setFloat(float value) {
    ++calls.count;
    calls.number = value;
}
void setString(const std::string& value) {
    ++calls.count;
    calls.text = value;
}

std::int32_t getInteger() {
    return -2'147'483'647 - 1;
}
bool getBoolean() {
    return true;
}
float getFloat() {
    return 2.5f;
}
std::string getString() {
    return "a b";
}

std::int32_t integerProperty(std::int32_t value, bool set) {
    ++calls.count;
    calls.set = set;
    calls.integer = value;
    return set ? value + 1 : 7;
}
bool booleanProperty(bool value, bool set) {
    ++calls.count;
    calls.set = set;
    calls.boolean = value;
    return set ? !value : true;
}
float floatProperty(float value, bool set) {
    ++calls.count;
    calls.set = set;
    calls.number = value;
    return set ? value * 2.0f : 0.5f;
}
std::string stringProperty(const std::string& value) {
    ++calls.count;
    calls.text = value;
    return value.empty() ? "old" : "[" + value + "]";
}

std::string removeOneself() {
    GLConsole::removeCommand("Leaver");
    return "gone";
}

void registerAnotherLevel() {
    GLConsole::clearCommands();
}

} // namespace

class ConsoleCommandTest : public GLConsoleTest {
protected:
    ConsoleCommandTest() {
        calls = {};
        GLConsole::addCommand("Act", action);
        GLConsole::addCommand("SetInt", setInteger);
        GLConsole::addCommand("SetBool", setBoolean);
        GLConsole::addCommand("SetFloat", setFloat);
        GLConsole::addCommand("SetString", setString);
        GLConsole::addCommand("GetInt", getInteger);
        GLConsole::addCommand("GetBool", getBoolean);
        GLConsole::addCommand("GetFloat", getFloat);
        GLConsole::addCommand("GetString", getString);
        GLConsole::addCommand("Int", integerProperty);
        GLConsole::addCommand("Bool", booleanProperty);
        GLConsole::addCommand("Float", floatProperty);
        GLConsole::addCommand("String", stringProperty);
    }

    /// Kinds that no signature gives.
    static void addOddCommand(ConsoleCommand::Type type, ConsoleCommand::Function function) {
        add({"Odd", function, type, false, false});
    }
};

TEST_F(ConsoleCommandTest, AnActionRunsWithoutWords) {
    const std::string answer = answerTo("Act");

    EXPECT_EQ(answer, "");
    EXPECT_EQ(calls.count, 1);
}

TEST_F(ConsoleCommandTest, AnActionTakesNoWord) {
    const std::string answer = answerTo("act now");

    EXPECT_EQ(answer, "\nUSAGE: Act < nothing >");
    EXPECT_EQ(calls.count, 0);
}

TEST_F(ConsoleCommandTest, BlanksBehindAnActionAreNoWords) {
    const std::string answer = answerTo("  act   ");

    EXPECT_EQ(answer, "");
    EXPECT_EQ(calls.count, 1);
}

TEST_F(ConsoleCommandTest, GettersPrintTheirValue) {
    EXPECT_EQ(answerTo("getint"), "\nGetInt is -2147483648");
    EXPECT_EQ(answerTo("getbool"), "\nGetBool is true");
    EXPECT_EQ(answerTo("getfloat"), "\nGetFloat is 2.500000");
    EXPECT_EQ(answerTo("getstring"), "\nGetString is a b");
}

TEST_F(ConsoleCommandTest, GettersTakeNoArgument) {
    EXPECT_EQ(answerTo("GetInt 1"), "\nUSAGE: GetInt < nothing >");
    EXPECT_EQ(answerTo("GetBool true"), "\nUSAGE: GetBool < nothing >");
    EXPECT_EQ(answerTo("GetFloat 1 2 3"), "\nUSAGE: GetFloat < nothing >");
    EXPECT_EQ(answerTo("GetString x"), "\nUSAGE: GetString < nothing >");
}

TEST_F(ConsoleCommandTest, AStringGetterCountsBlanksAsAnArgument) {
    EXPECT_EQ(answerTo("GetString "), "\nGetString is a b");
    EXPECT_EQ(answerTo("GetString  "), "\nUSAGE: GetString < nothing >");
}

TEST_F(ConsoleCommandTest, SettersTakeOneGoodWordAndPrintNothing) {
    EXPECT_EQ(answerTo("SetInt -12"), "");
    EXPECT_EQ(calls.integer, -12);
    EXPECT_EQ(answerTo("SetBool tRuE"), "");
    EXPECT_TRUE(calls.boolean);
    EXPECT_EQ(answerTo("SetFloat  -.5 "), "");
    EXPECT_EQ(calls.number, -0.5f);
    EXPECT_EQ(calls.count, 3);
}

TEST_F(ConsoleCommandTest, SettersAnswerWrongArgumentsWithTheirUsage) {
    for (const char* argument : {"", " abc", " 1 2", " 2.5.1"}) {
        const std::string typed = argument;
        EXPECT_EQ(answerTo("SetInt" + typed), "\nUSAGE: SetInt < integer number >");
        EXPECT_EQ(answerTo("SetBool" + typed), "\nUSAGE: SetBool < true OR false >");
        EXPECT_EQ(answerTo("SetFloat" + typed), "\nUSAGE: SetFloat < number >");
    }
    EXPECT_EQ(answerTo("SetInt 2.5"), "\nUSAGE: SetInt < integer number >");
    EXPECT_EQ(answerTo("SetBool 1"), "\nUSAGE: SetBool < true OR false >");
    EXPECT_EQ(answerTo("SetFloat 1e5"), "\nUSAGE: SetFloat < number >");
    EXPECT_EQ(calls.count, 0);
}

TEST_F(ConsoleCommandTest, AStringSetterTakesTheTextAsItStands) {
    EXPECT_EQ(answerTo("setstring  Two  words "), "");
    EXPECT_EQ(calls.text, " Two  words ");
    EXPECT_EQ(answerTo("setstring"), "");
    EXPECT_EQ(calls.text, "");
    EXPECT_EQ(calls.count, 2);
}

TEST_F(ConsoleCommandTest, GetOrSetReadsWithZeroAndTheFlagOff) {
    calls.integer = 99;
    calls.boolean = true;
    calls.number = 9.0f;

    EXPECT_EQ(answerTo("int"), "\nInt is 7");
    EXPECT_EQ(calls.integer, 0);
    EXPECT_FALSE(calls.set);
    EXPECT_EQ(answerTo("bool"), "\nBool is true");
    EXPECT_FALSE(calls.boolean);
    EXPECT_FALSE(calls.set);
    EXPECT_EQ(answerTo("float"), "\nFloat is 0.500000");
    EXPECT_EQ(calls.number, 0.0f);
    EXPECT_FALSE(calls.set);
}

TEST_F(ConsoleCommandTest, GetOrSetPrintsTheValueThatNowHolds) {
    EXPECT_EQ(answerTo("INT 41"), "\nInt is now 42");
    EXPECT_TRUE(calls.set);
    EXPECT_EQ(answerTo("BOOL false"), "\nBool is now true");
    EXPECT_TRUE(calls.set);
    EXPECT_EQ(answerTo("FLOAT 1.5"), "\nFloat is now 3.000000");
    EXPECT_TRUE(calls.set);
}

TEST_F(ConsoleCommandTest, GetOrSetAnswersWrongArgumentsWithItsUsage) {
    for (const char* argument : {" abc", " 1 2", " true false"}) {
        const std::string typed = argument;
        EXPECT_EQ(answerTo("Int" + typed), "\nUSAGE: Int < integer number OR nothing >");
        EXPECT_EQ(answerTo("Bool" + typed), "\nUSAGE: Bool < true OR false OR nothing >");
        EXPECT_EQ(answerTo("Float" + typed), "\nUSAGE: Float < number OR nothing >");
    }
    EXPECT_EQ(calls.count, 0);
}

TEST_F(ConsoleCommandTest, AStringGetOrSetReadsWithAnEmptyText) {
    EXPECT_EQ(answerTo("string"), "\nString is old");
    EXPECT_EQ(answerTo("string "), "\nString is old");
    EXPECT_EQ(answerTo("string a b"), "\nString is now [a b]");
    EXPECT_EQ(answerTo("string  "), "\nString is now [ ]");
}

TEST_F(ConsoleCommandTest, ALoneMinusIsTheIntegerZero) {
    const std::string answer = answerTo("Int -");

    EXPECT_EQ(answer, "\nInt is now 1");
}

TEST_F(ConsoleCommandTest, AValueCommandWithNeitherArgumentNorValueIsBad) {
    const std::string bad = "\nBAD COMMAND. NON VOID FUNCTION WITH NO RETURN OR ARGUMENT !";
    for (const ConsoleCommand::Type type : {ConsoleCommand::integerType, ConsoleCommand::booleanType,
                                            ConsoleCommand::floatType, ConsoleCommand::stringType}) {
        addOddCommand(type, action);

        EXPECT_EQ(answerTo("Odd"), bad) << static_cast<std::uint32_t>(type);
        EXPECT_EQ(answerTo("Odd 1"), bad) << static_cast<std::uint32_t>(type);
    }
}

TEST_F(ConsoleCommandTest, AnUnknownTypeIsBad) {
    ConsoleCommand command{"Odd", action, static_cast<ConsoleCommand::Type>(5), false, false};

    command.call("");

    EXPECT_EQ(GLConsole::outputText(), "\nBAD COMMAND. FUNCTION RETURN / ARGUMENT TYPES ARE NOT KNOWN !");
}

TEST_F(ConsoleCommandTest, ACommandMayRemoveItselfWhileItRuns) {
    GLConsole::addCommand("Leaver", removeOneself);

    const std::string answer = answerTo("leaver");

    EXPECT_EQ(answer, "\nLeaver is gone");
    EXPECT_FALSE(GLConsole::commands().contains("LEAVER"));
}

TEST_F(ConsoleCommandTest, ACommandMayReplaceTheWholeRegistryWhileItRuns) {
    GLConsole::addCommand("Replacer", registerAnotherLevel);

    const std::string answer = answerTo("replacer");

    EXPECT_EQ(answer, "");
    EXPECT_TRUE(GLConsole::commands().contains("VERSION"));
    EXPECT_FALSE(GLConsole::commands().contains("REPLACER"));
}

} // namespace tarnwick
