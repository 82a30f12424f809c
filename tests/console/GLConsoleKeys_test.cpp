#include "console/GLConsole.h"
#include "console/GLConsoleTest.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"
#include "support/Keyboard.h"

#include <iterator>
#include <random>

namespace tarnwick {

namespace {

std::int32_t one() {
    return 1;
}

/// Presses and releases Insert at the keyboard.
void toggleInsert() {
    pressKey(SDL_SCANCODE_INSERT, SDLK_INSERT);
    releaseKey(SDL_SCANCODE_INSERT, SDLK_INSERT);
    GLWindow::run();
}

} // namespace

class GLConsoleKeysTest : public GLConsoleTest {
protected:
    /// Types a line and presses Enter.
    static void enter(const std::string& text) {
        type(text);
        press(key::enter);
    }
};

// Typing

TEST_F(GLConsoleKeysTest, CharactersAreTypedAtTheCursor) {
    type("abc 12");

    EXPECT_EQ(line(), "abc 12");
    EXPECT_EQ(cursor(), 6u);
}

TEST_F(GLConsoleKeysTest, KeysWithoutACharacterTypeNothing) {
    for (const std::uint32_t number :
         {key::pageUp, key::pageDown, key::insert, 0x70u, 0u, 255u, 0xFFFFFFFFu}) {
        press(number);
    }

    EXPECT_EQ(line(), "");
}

TEST_F(GLConsoleKeysTest, TypingOverwritesWithTheInsertToggleOff) {
    type("abc");
    press(key::home);

    type("x");

    EXPECT_EQ(line(), "xbc");
    EXPECT_EQ(cursor(), 1u);
}

TEST_F(GLConsoleKeysTest, TypingInsertsWithTheInsertToggleOn) {
    GLWindow::createHeadless(800, 600);
    toggleInsert();
    type("abc");
    press(key::home);

    type("x");
    toggleInsert();
    type("y");

    EXPECT_EQ(line(), "xybc");
    EXPECT_EQ(cursor(), 2u);
    GLWindow::close();
}

TEST_F(GLConsoleKeysTest, ALineOfThreeHundredCharactersStopsAtTheBuffersEnd) {
    type(std::string(300, 'a'));

    EXPECT_EQ(line(), std::string(256, 'a'));
    EXPECT_EQ(cursor(), 256u);
    press(key::right);
    EXPECT_EQ(cursor(), 256u);
    press(key::deleteKey);
    EXPECT_EQ(line().size(), 256u);
    press(key::backspace);
    EXPECT_EQ(line(), std::string(255, 'a'));
}

TEST_F(GLConsoleKeysTest, AFullLineIsEnteredWhole) {
    type(std::string(300, 'a'));

    press(key::enter);

    const std::string held(256, 'a');
    EXPECT_EQ(GLConsole::outputText(),
              "\n" + held + "\nUNKNOWN COMMAND. USE 'COMMANDS' FOR A LIST OF AVAILABLE COMMANDS.");
    EXPECT_EQ(history(0), held);
    press(key::up);
    EXPECT_EQ(line(), held);
    EXPECT_EQ(cursor(), 256u);
}

// Moving and removing

TEST_F(GLConsoleKeysTest, TheCursorMovesWithinTheLine) {
    type("abc");

    press(key::right);
    EXPECT_EQ(cursor(), 3u);
    press(key::left);
    EXPECT_EQ(cursor(), 2u);
    press(key::home);
    EXPECT_EQ(cursor(), 0u);
    press(key::left);
    EXPECT_EQ(cursor(), 0u);
    press(key::right);
    EXPECT_EQ(cursor(), 1u);
    press(key::end);
    EXPECT_EQ(cursor(), 3u);
}

TEST_F(GLConsoleKeysTest, BackspaceAndDeleteCloseTheGap) {
    type("abcd");
    press(key::left);

    press(key::backspace);
    EXPECT_EQ(line(), "abd");
    EXPECT_EQ(cursor(), 2u);
    press(key::home);
    press(key::deleteKey);
    EXPECT_EQ(line(), "bd");
    EXPECT_EQ(cursor(), 0u);
    press(key::backspace);
    EXPECT_EQ(line(), "bd");
}

TEST_F(GLConsoleKeysTest, EscapeClearsTheLine) {
    type("abc");

    press(key::escape);

    EXPECT_EQ(line(), "");
    EXPECT_EQ(cursor(), 0u);
    EXPECT_EQ(history(0), "");
}

// What ends a completion run, and what leaves the history

TEST_F(GLConsoleKeysTest, KeysThatChangeTheLineEndBothRuns) {
    for (const std::uint32_t number :
         {key::backspace, key::enter, key::escape, key::deleteKey, std::uint32_t{'A'}}) {
        ModuleReset::all();
        GLConsole::clearCommands();
        enter("version");
        press(key::up);
        ASSERT_EQ(historyIndex(), 0);

        press(number);

        EXPECT_EQ(historyIndex(), -1) << number;
    }
    for (const std::uint32_t number :
         {key::backspace, key::enter, key::escape, key::deleteKey, std::uint32_t{'A'}}) {
        ModuleReset::all();
        GLConsole::clearCommands();
        type("v");
        press(key::tab);
        ASSERT_EQ(completionTerm(), "V");

        press(number);

        EXPECT_EQ(completionTerm(), "") << number;
    }
}

TEST_F(GLConsoleKeysTest, KeysThatMoveTheCursorEndNeitherRun) {
    for (const std::uint32_t number : {key::left, key::right, key::home, key::end, key::insert}) {
        ModuleReset::all();
        GLConsole::clearCommands();
        enter("version");
        press(key::up);
        const std::int32_t shown = historyIndex();
        press(number);
        EXPECT_EQ(historyIndex(), shown) << number;
        press(key::escape);
        type("v");
        press(key::tab);
        press(number);
        EXPECT_EQ(completionTerm(), "V") << number;
    }
}

TEST_F(GLConsoleKeysTest, ABackspaceThatDoesNothingEndsNeitherRun) {
    GLConsole::clearCommands();
    enter("version");
    press(key::up);
    press(key::home);

    press(key::backspace);

    EXPECT_EQ(historyIndex(), 0);
}

TEST_F(GLConsoleKeysTest, ACharacterThatIsRefusedEndsNeitherRun) {
    enter(std::string(256, 'a'));
    press(key::up);

    type("b");

    EXPECT_EQ(historyIndex(), 0);
}

TEST_F(GLConsoleKeysTest, TabLeavesTheHistoryAndKeepsItsOwnRun) {
    GLConsole::clearCommands();
    enter("v");
    press(key::up);

    press(key::tab);

    EXPECT_EQ(historyIndex(), -1);
    EXPECT_EQ(completionTerm(), "V");
}

TEST_F(GLConsoleKeysTest, ShowingAHistoryEntryEndsTheCompletion) {
    GLConsole::clearCommands();
    enter("first");
    type("v");
    press(key::tab);

    press(key::down); // shows nothing
    EXPECT_EQ(completionTerm(), "V");
    press(key::up);

    EXPECT_EQ(completionTerm(), "");
    EXPECT_EQ(line(), "first");
}

// History

TEST_F(GLConsoleKeysTest, UpAndDownStepThroughTheLines) {
    enter("first");
    enter("second");
    enter("third");
    type("half");

    press(key::up);
    EXPECT_EQ(line(), "third");
    EXPECT_EQ(cursor(), 5u);
    press(key::up);
    press(key::up);
    EXPECT_EQ(line(), "first");
    press(key::up); // the entry beyond is empty
    EXPECT_EQ(line(), "first");
    press(key::down);
    EXPECT_EQ(line(), "second");
    press(key::down);
    press(key::down); // never back to the half line
    EXPECT_EQ(line(), "third");
    EXPECT_EQ(historyIndex(), 0);
}

TEST_F(GLConsoleKeysTest, DownWithoutUpShowsNothing) {
    enter("first");

    press(key::down);

    EXPECT_EQ(line(), "");
    EXPECT_EQ(historyIndex(), -1);
}

TEST_F(GLConsoleKeysTest, SixteenLinesAreKept) {
    for (char letter = 'a'; letter <= 'q'; ++letter) {
        enter(std::string(1, letter));
    }

    for (std::int32_t i = 0; i < 20; ++i) {
        press(key::up);
    }

    EXPECT_EQ(historyIndex(), 15);
    EXPECT_EQ(line(), "b"); // 'a' fell out
}

TEST_F(GLConsoleKeysTest, AnEmptyLineStopsTheWayUp) {
    enter("first");
    enter("");
    enter("second");

    press(key::up);
    press(key::up);

    EXPECT_EQ(history(1), "");
    EXPECT_EQ(history(2), "first");
    EXPECT_EQ(line(), "second");
    EXPECT_EQ(historyIndex(), 0);
}

TEST_F(GLConsoleKeysTest, EnterPrintsTheLineBeforeItsAnswer) {
    GLConsole::clearCommands();

    enter("version");
    enter("");

    EXPECT_EQ(GLConsole::outputText(), "\nversion\nVersion is 1.00\n");
}

// Completion

class GLConsoleCompletionTest : public GLConsoleTest {
protected:
    GLConsoleCompletionTest() {
        for (const char* name : {"Camera", "Mover", "MoverCount", "moverDraw", "Zoom"}) {
            GLConsole::addCommand(name, one);
        }
    }
};

TEST_F(GLConsoleCompletionTest, TabGoesThroughTheMatchesAndRoundToTheFirst) {
    type("mo");
    std::string seen;
    for (std::int32_t i = 0; i < 5; ++i) {
        press(key::tab);
        seen += line() + " ";
        EXPECT_EQ(cursor(), line().size());
    }

    EXPECT_EQ(seen, "Mover MoverCount moverDraw Mover MoverCount ");
    EXPECT_EQ(completionTerm(), "MO");
}

TEST_F(GLConsoleCompletionTest, TheLastMatchOfAllGoesRoundToo) {
    type("zo");

    press(key::tab);
    press(key::tab);

    EXPECT_EQ(line(), "Zoom");
    EXPECT_EQ(completionTerm(), "ZO");
}

TEST_F(GLConsoleCompletionTest, AWholeNameCompletesToItsOwnSpelling) {
    type("moverdraw");

    press(key::tab);

    EXPECT_EQ(line(), "moverDraw");
    EXPECT_EQ(completionTerm(), "MOVERDRAW");
}

TEST_F(GLConsoleCompletionTest, WithoutAMatchTheLineStaysAndTheTermIsKept) {
    type("nothing");
    press(key::home);

    press(key::tab);

    EXPECT_EQ(line(), "nothing");
    EXPECT_EQ(cursor(), 7u);
    EXPECT_EQ(completionTerm(), "NOTHING");
}

TEST_F(GLConsoleCompletionTest, AfterATabWithoutAMatchTheNextOneStartsAnew) {
    type("mova");
    press(key::tab);
    setLine("mov"); // as if the commands had changed under the run
    GLConsole::addCommand("Movable", one);

    press(key::tab);

    EXPECT_EQ(line(), "Movable");
    EXPECT_EQ(completionTerm(), "MOV");
}

TEST_F(GLConsoleCompletionTest, BehindAllNamesThereIsNoMatch) {
    type("zz");

    press(key::tab);
    press(key::tab);

    EXPECT_EQ(line(), "zz");
    EXPECT_EQ(completionTerm(), "ZZ");
}

TEST_F(GLConsoleCompletionTest, AnEmptyLineCompletesToTheFirstCommand) {
    press(key::tab);
    EXPECT_EQ(line(), "Camera");
    EXPECT_EQ(completionTerm(), ""); // no run: the next Tab starts one with the name itself

    press(key::tab);
    EXPECT_EQ(line(), "Camera");
    EXPECT_EQ(completionTerm(), "CAMERA");
}

TEST_F(GLConsoleCompletionTest, WithoutCommandsTabDoesNothing) {
    GLConsole::shutdown();
    type("mo");

    press(key::tab);
    press(key::tab);

    EXPECT_EQ(line(), "mo");
}

TEST_F(GLConsoleCompletionTest, ANameLongerThanTheLineIsNotOffered) {
    const std::string longest = "n" + std::string(255, 'o');
    GLConsole::addCommand((longest + "x").c_str(), one);
    type("n");
    press(key::tab);
    EXPECT_EQ(line(), "n");
    GLConsole::addCommand(longest.c_str(), one);

    press(key::tab);

    EXPECT_EQ(line(), longest);
    EXPECT_EQ(cursor(), 256u);
}

TEST_F(GLConsoleCompletionTest, TheCompletedNameRuns) {
    type("moverc");
    press(key::tab);
    GLConsole::clear();
    type("moverc");
    press(key::tab);

    press(key::enter);

    EXPECT_EQ(GLConsole::outputText(), "\nMoverCount\nMoverCount is 1");
}

// A hundred thousand keys

TEST_F(GLConsoleKeysTest, NoStormOfKeysBreaksTheLine) {
    std::mt19937 random(20'260'101);
    const std::uint32_t editing[] = {key::backspace, key::tab, key::enter, key::end,  key::home,
                                     key::left,      key::up,  key::right, key::down, key::deleteKey,
                                     key::insert,    'A',      'M',        ' ',       'V'};
    for (const char* name : {"aa", "aam", "Amv", "vam", "MMM"}) {
        GLConsole::addCommand(name, one);
    }

    for (std::int32_t i = 0; i < 100'000; ++i) {
        const bool any = random() % 8 == 0;
        press(any ? static_cast<std::uint32_t>(random() % 300) : editing[random() % std::size(editing)]);
        ASSERT_LE(cursor(), line().size()) << i;
        ASSERT_GE(historyIndex(), -1) << i;
        ASSERT_LT(historyIndex(), 16) << i;
    }

    EXPECT_LE(line().size(), 256u);
}

} // namespace tarnwick
