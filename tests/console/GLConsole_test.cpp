#include "console/GLConsole.h"

#include "console/GLConsoleTest.h"
#include "support/ConsoleAnswer.h"
#include "support/DataFolder.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace tarnwick {

namespace {

constexpr std::size_t ring = Log::outputCapacity;

std::string fileText(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

} // namespace

// Clearing

TEST_F(GLConsoleTest, ClearingEmptiesTheTextAndTheLine) {
    GLConsole::print(std::string(ring + 5, 'a'));
    setLine("typed");

    GLConsole::clear();

    EXPECT_EQ(GLConsole::outputText(), "");
    EXPECT_EQ(Log::outputWriteIndex(), 0u);
    EXPECT_EQ(line(), "");
    EXPECT_EQ(cursor(), 0u);
    setPicture(80, 16);
    EXPECT_EQ(shownText(), std::string(15, '\n')); // nothing but newlines in the ring
}

// Where a picture starts

TEST_F(GLConsoleTest, APictureShowsTheNewestRows) {
    for (std::int32_t i = 0; i < 100; ++i) {
        GLConsole::print("\nrow ");
        GLConsole::print(i);
    }
    setPicture(80, 3);

    const std::string shown = shownText();

    EXPECT_EQ(shown, "row 97\nrow 98\nrow 99");
}

TEST_F(GLConsoleTest, APictureShowsTheNewestRowsAfterTheRingWentRound) {
    setPicture(80, 3);
    for (std::size_t before = ring - 20; before <= ring; ++before) {
        GLConsole::clear();
        GLConsole::print(std::string(before, '\n'));

        GLConsole::print("\nfirst\nsecond\nthird");

        EXPECT_EQ(shownText(), "first\nsecond\nthird") << before;
    }
}

TEST_F(GLConsoleTest, APictureThatStartsAtTheRingsFirstByteStartsAtZero) {
    GLConsole::print(std::string(ring, '\n'));
    GLConsole::print("a\nb");
    setPicture(80, 2);

    const std::uint32_t start = drawStart();

    EXPECT_EQ(start, 0u); // the newline before it is the ring's last byte
}

TEST_F(GLConsoleTest, ALongLineTakesSeveralRows) {
    GLConsole::print("\nold\n" + std::string(80, 'a') + std::string(80, 'b') + "\nend");

    // A row filled to its last column ends there, and the newline behind it ends one more.
    setPicture(80, 4);
    EXPECT_EQ(shownText(), std::string(80, 'a') + std::string(80, 'b') + "\nend");
    // Kept: the character at which the walk back counts a row is not shown.
    setPicture(80, 3);
    EXPECT_EQ(shownText(), std::string(79, 'a') + std::string(80, 'b') + "\nend");
}

TEST_F(GLConsoleTest, ATabAtTheRowsEndTakesARow) {
    GLConsole::print("\n\t\tx"); // back from the end: column 1, then 8, then 16

    setPicture(17, 1);
    EXPECT_EQ(shownText(), "\t\tx");
    setPicture(16, 1);
    EXPECT_EQ(shownText(), "\tx");
    setPicture(16, 2);
    EXPECT_EQ(shownText(), "\t\tx");
}

// Life

TEST_F(GLConsoleTest, InitialisingRegistersTheBasicCommandsAlone) {
    GLConsole::addCommand("Other", GLConsole::clear);
    GLConsole::print("old text");

    GLConsole::initialise();

    std::string names;
    for (const auto& [key, command] : GLConsole::commands()) {
        names += key + "=" + command.name + " ";
    }
    EXPECT_EQ(names, "ANISOTROPICFILTERINGLEVEL=AnisotropicFilteringLevel "
                     "ANTIALIASINGSAMPLES=AntiAliasingSamples CLEAR=Clear COMMANDS=Commands "
                     "EXTENSIONS=Extensions FULLSCREEN=Fullscreen ISEXTENSION=IsExtension "
                     "LOGCONSOLE=LogConsole MAP=Map MEMORY=Memory QUIT=Quit RENDERER=Renderer "
                     "TEXTURELIST=TextureList TEXTUREMEMORY=TextureMemory TEXTUREQUALITY=TextureQuality "
                     "TEXTURERELOAD=TextureReload VERSION=Version VSYNCENABLE=VsyncEnable ");
    EXPECT_EQ(GLConsole::outputText().find("old text"), std::string::npos);
}

TEST_F(GLConsoleTest, ClearingTheCommandsKeepsTheBasicOnes) {
    GLConsole::addCommand("Other", GLConsole::clear);

    GLConsole::clearCommands();

    EXPECT_FALSE(GLConsole::commands().contains("OTHER"));
    EXPECT_TRUE(GLConsole::commands().contains("QUIT"));
}

TEST_F(GLConsoleTest, ShuttingDownForgetsEverythingButTheText) {
    GLConsole::clearCommands();
    type("first");
    press(13);
    press(38);
    type("v");
    press(9);
    GLConsole::clear();
    GLConsole::print("text");

    GLConsole::shutdown();

    EXPECT_TRUE(GLConsole::commands().empty());
    EXPECT_EQ(history(0), "");
    EXPECT_EQ(historyIndex(), -1);
    EXPECT_EQ(completionTerm(), "");
    EXPECT_EQ(GLConsole::outputText(), "text");
}

// Configuration

/// Runs in a data folder of its own.
class GLConsoleConfigTest : public GLConsoleTest {
protected:
    void TearDown() override { GLConsole::shutdown(); }
    void configure(const std::string& text) const { folder.write("cfg/console.cfg", text); }

    const DataFolder folder;
};

TEST_F(GLConsoleConfigTest, TheColoursAndTheCellAreRead) {
    configure("fontSize = 12 output_background_r = 0.1 output_background_g = 0.2 output_background_b = 0.3 "
              "output_background_a = 0.4 output_text_r = 0.5 output_text_g = 0.6 output_text_b = 0.7 "
              "input_background_r = 0.8 input_background_g = 0.9 input_background_b = 0.11 "
              "input_border_r = 0.12 input_border_g = 0.13 input_border_b = 0.14 "
              "input_text_r = 0.15 input_text_g = 0.16 input_text_b = 0.17");

    GLConsole::initialise();

    EXPECT_EQ(fontSize(), 12u);
    EXPECT_EQ(outputBackground(), (Rgb{0.1f, 0.2f, 0.3f}));
    EXPECT_EQ(outputBackgroundAlpha(), 0.4f);
    EXPECT_EQ(outputTextColour(), (Rgb{0.5f, 0.6f, 0.7f}));
    EXPECT_EQ(inputBackground(), (Rgb{0.8f, 0.9f, 0.11f}));
    EXPECT_EQ(inputBorder(), (Rgb{0.12f, 0.13f, 0.14f}));
    EXPECT_EQ(inputTextColour(), (Rgb{0.15f, 0.16f, 0.17f}));
    EXPECT_FALSE(Log::loggingEnabled());
    EXPECT_EQ(GLConsole::outputText(), "");
}

TEST_F(GLConsoleConfigTest, ACellHasAtLeastOnePixel) {
    for (const char* size : {"0", "-3", "2.5", "big"}) {
        configure(std::string("fontSize = ") + size);

        GLConsole::initialise();

        EXPECT_EQ(fontSize(), 1u) << size;
    }
}

TEST_F(GLConsoleConfigTest, WithoutAFileTheCellIsOnePixelAndEverythingBlack) {
    GLConsole::initialise();

    EXPECT_EQ(fontSize(), 1u);
    EXPECT_EQ(outputTextColour(), Rgb{});
    EXPECT_EQ(GLConsole::outputText(), "\nCould not open config file: cfg//console.cfg");
}

TEST_F(GLConsoleConfigTest, LoggingCanStartWithTheProgram) {
    configure("enableLogging = true");

    GLConsole::initialise();

    EXPECT_TRUE(Log::loggingEnabled());
    EXPECT_EQ(GLConsole::outputText(), "\nCommencing console log to ConsoleLog.txt");
    EXPECT_EQ(fileText("ConsoleLog.txt"), GLConsole::outputText());
}

// Logging

/// Logs to a file of its own.
class GLConsoleLogTest : public GLConsoleTest {
protected:
    GLConsoleLogTest() { setLogFileName(fileName); }
    void TearDown() override {
        GLConsole::shutdown();
        std::filesystem::remove(fileName);
    }

    const std::string fileName =
        testing::TempDir() + testing::UnitTest::GetInstance()->current_test_info()->name() + ".txt";
};

TEST_F(GLConsoleLogTest, ShuttingDownEndsTheLog) {
    GLConsole::enableLogging();
    GLConsole::clear();

    GLConsole::shutdown();

    EXPECT_FALSE(Log::loggingEnabled());
    EXPECT_EQ(GLConsole::outputText(), "\nLogging stopped. All output saved to " + fileName);
}

TEST_F(GLConsoleLogTest, TheCommandStartsAndStopsTheLog) {
    GLConsole::clearCommands();

    EXPECT_EQ(answerTo("logconsole"), "\nLogConsole is false");
    EXPECT_EQ(answerTo("logconsole true"),
              "\nCommencing console log to " + fileName + "\nLogConsole is now true");
    EXPECT_EQ(answerTo("logconsole"), "\nLogConsole is true");
    EXPECT_EQ(answerTo("logconsole maybe"), "\nUSAGE: LogConsole < true OR false OR nothing >");
    EXPECT_TRUE(Log::loggingEnabled());
    EXPECT_EQ(answerTo("logconsole false"),
              "\nLogging stopped. All output saved to " + fileName + "\nLogConsole is now false");
}

} // namespace tarnwick
