#include "console/GLConsole.h"
#include "console/GLConsoleTest.h"
#include "graphics/GLWindow.h"
#include "support/ConsoleAnswer.h"

#include <cstdio>

namespace tarnwick {

namespace {

constexpr const char* unknown = "\nUNKNOWN COMMAND. USE 'COMMANDS' FOR A LIST OF AVAILABLE COMMANDS.";

std::int32_t one() {
    return 1;
}
std::int32_t two() {
    return 2;
}

} // namespace

/// Starts with the basic commands.
class GLConsoleCommandsTest : public GLConsoleTest {
protected:
    GLConsoleCommandsTest() { GLConsole::clearCommands(); }
};

// The registry

TEST_F(GLConsoleCommandsTest, EverySignatureGivesItsKind) {
    using Text = std::string;
    GLConsole::addCommand(
        "a", +[] {});
    GLConsole::addCommand(
        "b", +[](std::int32_t) {});
    GLConsole::addCommand(
        "c", +[](bool) {});
    GLConsole::addCommand(
        "d", +[](float) {});
    GLConsole::addCommand(
        "e", +[](const Text&) {});
    GLConsole::addCommand(
        "f", +[]() -> std::int32_t { return 0; });
    GLConsole::addCommand(
        "g", +[]() -> bool { return false; });
    GLConsole::addCommand(
        "h", +[]() -> float { return 0.0f; });
    GLConsole::addCommand(
        "i", +[]() -> Text { return ""; });
    GLConsole::addCommand(
        "j", +[](std::int32_t, bool) -> std::int32_t { return 0; });
    GLConsole::addCommand(
        "k", +[](bool, bool) -> bool { return false; });
    GLConsole::addCommand(
        "l", +[](float, bool) -> float { return 0.0f; });
    GLConsole::addCommand(
        "m", +[](const Text&) -> Text { return ""; });

    std::string kinds;
    for (char name = 'A'; name <= 'M'; ++name) {
        const ConsoleCommand& command = GLConsole::commands().at(Text(1, name));
        kinds += std::to_string(static_cast<std::uint32_t>(command.type)) +
                 (command.hasArgument ? "a" : "-") + (command.hasReturn ? "r " : "- ");
    }

    EXPECT_EQ(kinds, "0-- 1a- 2a- 3a- 4a- 1-r 2-r 3-r 4-r 1ar 2ar 3ar 4ar ");
}

TEST_F(GLConsoleCommandsTest, ALaterCommandOfTheSameNameReplacesTheFirst) {
    GLConsole::addCommand("Count", one);

    GLConsole::addCommand("COUNT", two);

    EXPECT_EQ(answerTo("count"), "\nCOUNT is 2");
}

TEST_F(GLConsoleCommandsTest, BadRegistrationsAreDropped) {
    const std::size_t before = GLConsole::commands().size();
    std::int32_t (*nothing)() = nullptr;

    GLConsole::addCommand("", one);
    GLConsole::addCommand(nullptr, one);
    GLConsole::addCommand("Nothing", nothing);
    GLConsole::addCommand("Two words", one);
    GLConsole::addCommand(" ", one);
    add({"TypeFive", one, static_cast<ConsoleCommand::Type>(5), false, true});

    EXPECT_EQ(GLConsole::commands().size(), before);
}

TEST_F(GLConsoleCommandsTest, RemovingIsWithoutRegardToCaseAndAlwaysGivesZero) {
    GLConsole::addCommand("Count", one);

    EXPECT_EQ(GLConsole::removeCommand("cOUNT"), 0);
    EXPECT_EQ(GLConsole::removeCommand("cOUNT"), 0);
    EXPECT_EQ(GLConsole::removeCommand(nullptr), 0);

    EXPECT_EQ(answerTo("count"), unknown);
}

// Parsing

TEST_F(GLConsoleCommandsTest, AnEmptyLineAndBlanksDoNothing) {
    EXPECT_EQ(answerTo(""), "");
    EXPECT_EQ(answerTo("    "), "");
    EXPECT_EQ(answerTo(std::string(256, ' ')), "");
}

TEST_F(GLConsoleCommandsTest, TheFirstWordIsTheCommand) {
    EXPECT_EQ(answerTo("   vErSiOn"), "\nVersion is 1.00");
    EXPECT_EQ(answerTo("version2"), unknown);
    EXPECT_EQ(answerTo("versio"), unknown);
    EXPECT_EQ(answerTo("\tversion"), unknown); // only a blank separates
}

TEST_F(GLConsoleCommandsTest, RunningReadsTheLineAndLeavesIt) {
    setLine("version");

    GLConsole::runCommand();

    EXPECT_EQ(GLConsole::outputText(), "\nVersion is 1.00");
    EXPECT_EQ(line(), "version");
    EXPECT_EQ(history(0), "");
}

TEST_F(GLConsoleCommandsTest, RunLineDoesWhatTypingAndEnterDo) {
    setLine("left over");

    GLConsole::runLine("version");

    EXPECT_EQ(GLConsole::outputText(), "\nversion\nVersion is 1.00");
    EXPECT_EQ(history(0), "version");
    EXPECT_EQ(line(), "");
    EXPECT_EQ(cursor(), 0u);
}

TEST_F(GLConsoleCommandsTest, RunLineTakesWhatALineHolds) {
    GLConsole::runLine("version " + std::string(300, 'x'));

    const std::string held = "version " + std::string(248, 'x');
    EXPECT_EQ(GLConsole::outputText(), "\n" + held + "\nUSAGE: Version < nothing >");
    EXPECT_EQ(history(0), held);
}

TEST_F(GLConsoleCommandsTest, RunLineEndsAtAZero) {
    GLConsole::runLine(std::string("version\0x", 9));

    EXPECT_EQ(GLConsole::outputText(), "\nversion\nVersion is 1.00");
}

TEST_F(GLConsoleCommandsTest, AWordMayFillTheWholeLine) {
    const std::string name(256, 'N');
    GLConsole::addCommand(name.c_str(), one);

    const std::string answer = answerTo(name);

    EXPECT_EQ(answer, "\n" + name + " is 1");
}

// The basic commands

TEST_F(GLConsoleCommandsTest, QuitClosesTheWindow) {
    GLWindow::createHeadless(800, 600);

    const std::string answer = answerTo("quit");

    EXPECT_EQ(answer, "");
    EXPECT_FALSE(GLWindow::exists());
}

TEST_F(GLConsoleCommandsTest, QuitWithAWordDoesNotQuit) {
    GLWindow::createHeadless(800, 600);

    const std::string answer = answerTo("quit now");

    EXPECT_EQ(answer, "\nUSAGE: Quit < nothing >");
    EXPECT_TRUE(GLWindow::exists());
    GLWindow::close();
}

TEST_F(GLConsoleCommandsTest, ClearEmptiesTheOutput) {
    GLConsole::print("text");

    GLConsole::runLine("clear");

    EXPECT_EQ(GLConsole::outputText(), "");
    EXPECT_EQ(history(0), "clear");
    EXPECT_EQ(answerTo("clear all"), "\nUSAGE: Clear < nothing >");
}

TEST_F(GLConsoleCommandsTest, VersionIsRead) {
    EXPECT_EQ(answerTo("version"), "\nVersion is 1.00");
    EXPECT_EQ(answerTo("version 2"), "\nUSAGE: Version < nothing >");
}

class GLConsoleListTest : public GLConsoleTest {
protected:
    GLConsoleListTest() {
        GLConsole::clearCommands();
        for (const char* name : {"Mover", "MoverCount", "moverDraw", "Movie", "Zoom", "_under"}) {
            GLConsole::addCommand(name, one);
        }
    }

    const std::string title =
        std::string(titleBar) + "Command list: Use Commands < term > to filter listings" + titleBar;
};

TEST_F(GLConsoleListTest, AllCommandsAreListedInTheOrderOfTheirKeys) {
    const std::string list =
        title + "\nAnisotropicFilteringLevel\nAntiAliasingSamples\nClear\nCommands\nExtensions\n"
                "Fullscreen\nIsExtension\nLogConsole\nMap\nMemory\nMover\nMoverCount\nmoverDraw\n"
                "Movie\nQuit\nRenderer\nTextureList\nTextureMemory\nTextureQuality\n"
                "TextureReload\nVersion\nVsyncEnable\nZoom\n_under\n";

    EXPECT_EQ(answerTo("commands"), list);
    EXPECT_EQ(answerTo("commands     "), list);
}

TEST_F(GLConsoleListTest, ATermListsTheNamesThatStartWithIt) {
    EXPECT_EQ(answerTo("commands   mover"), title + "\nMover\nMoverCount\nmoverDraw\n");
    EXPECT_EQ(answerTo("commands moverc"), title + "\nMoverCount\n");
    EXPECT_EQ(answerTo("commands mo"), title + "\nMover\nMoverCount\nmoverDraw\nMovie\n");
}

TEST_F(GLConsoleListTest, ATermWithoutMatchListsNothing) {
    EXPECT_EQ(answerTo("commands n"), title + "\n");
    EXPECT_EQ(answerTo("commands zzz"), title + "\n");
    EXPECT_EQ(answerTo("commands ~"), title + "\n");
    EXPECT_EQ(answerTo("commands mover "), title + "\n"); // the blank belongs to the term
}

TEST_F(GLConsoleCommandsTest, MemoryAddsUp) {
    const std::string head = std::string(titleBar) + "Memory usage" + titleBar + "\nSystem memory usage: \n";

    const std::string text = answerTo("memory");

    ASSERT_TRUE(text.starts_with(head)) << text;
    unsigned long long total = 0;
    unsigned long long available = 0;
    unsigned long long used = 0;
    ASSERT_EQ(std::sscanf(text.c_str() + head.size(),
                          "\nTotal : %llu\t bytes\nFree  : %llu\t bytes\nUsed  : %llu", &total, &available,
                          &used),
              3);
    EXPECT_EQ(text, head + "\nTotal : " + std::to_string(total) +
                        "\t bytes\nFree  : " + std::to_string(available) +
                        "\t bytes\nUsed  : " + std::to_string(used) + "\t bytes\n");
    EXPECT_GT(available, 0u);
    EXPECT_EQ(total, available + used);
    EXPECT_EQ(answerTo("memory x"), "\nUSAGE: Memory < nothing >");
}

} // namespace tarnwick
