#include "core/Log.h"

#include "support/LogTest.h"

#include <filesystem>
#include <fstream>
#include <limits>
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

// Printing

TEST_F(LogTest, NothingIsPrintedAtTheStart) {
    EXPECT_EQ(Log::outputText(), "");
    EXPECT_EQ(Log::outputWriteIndex(), 0u);
}

TEST_F(LogTest, EachTypeIsPrintedInItsFormat) {
    Log::print("text ");
    Log::print(std::string("string "));
    Log::print('c');
    Log::print(4'294'967'295u);
    Log::print(-17);
    Log::print(0.1f);
    Log::print(0.1);
    Log::print(true);
    Log::print(false);

    EXPECT_EQ(Log::outputText(), "text string c4294967295-170.1000000.100000truefalse");
}

TEST_F(LogTest, NullIsNotPrinted) {
    const char* nothing = nullptr;

    Log::print(nothing);

    EXPECT_EQ(Log::outputText(), "");
}

TEST_F(LogTest, TheLargestNumbersArePrintedWhole) {
    Log::print(std::numeric_limits<double>::lowest());

    const std::string printed = Log::outputText();
    EXPECT_EQ(printed.size(), 317u); // a sign, 309 digits, the point and 6 digits
    EXPECT_TRUE(printed.starts_with("-179769313486231570814527423731704356798070567525844996598917476803"));
    EXPECT_TRUE(printed.ends_with("858368.000000"));
}

TEST_F(LogTest, ATitleStandsBetweenBars) {
    Log::printTitle("Level loading");
    Log::printTitle("Memory");

    const std::string bar = titleBar;
    EXPECT_EQ(Log::outputText(), bar + "Level loading" + bar + bar + "Memory" + bar);
    EXPECT_EQ(bar, "\n\n" + std::string(64, '*') + "\n\n");
}

TEST_F(LogTest, TheOldestTextIsOverwritten) {
    Log::print(std::string(ring - 3, 'a'));
    Log::print("12345");

    EXPECT_EQ(Log::outputWriteIndex(), 2u);
    EXPECT_EQ(Log::outputText(), std::string(ring - 5, 'a') + "12345");
}

TEST_F(LogTest, ARingFilledToTheLastByteStartsAgainAtZero) {
    Log::print(std::string(ring, 'a'));

    EXPECT_EQ(Log::outputWriteIndex(), 0u);
    EXPECT_EQ(Log::outputText(), std::string(ring, 'a'));
}

TEST_F(LogTest, OfATextLongerThanTheRingTheEndStays) {
    const std::string text = std::string(ring, 'a') + std::string(ring, 'b') + "end";

    Log::print(text);

    EXPECT_EQ(Log::outputText(), text.substr(text.size() - ring));
}

TEST_F(LogTest, ClearingEmptiesTheRing) {
    Log::print(std::string(ring + 5, 'a'));

    Log::clear();

    EXPECT_EQ(Log::outputText(), "");
    EXPECT_EQ(Log::outputWriteIndex(), 0u);
    EXPECT_EQ(Log::outputByte(0), '\n');
    EXPECT_EQ(Log::outputByte(ring - 1), '\n');
}

// The file

/// Logs to a file of its own.
class LogFileTest : public LogTest {
protected:
    LogFileTest() { setLogFileName(fileName); }
    void TearDown() override {
        Log::disableLogging();
        std::filesystem::remove(fileName);
    }

    const std::string fileName =
        testing::TempDir() + testing::UnitTest::GetInstance()->current_test_info()->name() + ".txt";
};

TEST_F(LogFileTest, TheLogIsCalledConsoleLog) {
    ModuleReset::all();

    EXPECT_FALSE(Log::loggingEnabled());
    EXPECT_EQ(logFileName(), "ConsoleLog.txt");
}

TEST_F(LogFileTest, TheLogMirrorsWhatIsPrintedAtOnce) {
    Log::print("before");
    Log::enableLogging();
    Log::print("\nnumber ");
    Log::print(5);

    const std::string logged = fileText(fileName); // still open

    EXPECT_TRUE(Log::loggingEnabled());
    EXPECT_EQ(logged, "\nCommencing console log to " + fileName + "\nnumber 5");
    EXPECT_EQ(Log::outputText(), "before" + logged);
}

TEST_F(LogFileTest, StoppingTellsWhereTheLogIs) {
    Log::enableLogging();
    Log::clear();

    Log::disableLogging();
    Log::print("after");

    EXPECT_FALSE(Log::loggingEnabled());
    EXPECT_EQ(Log::outputText(), "\nLogging stopped. All output saved to " + fileName + "after");
    EXPECT_EQ(fileText(fileName), "\nCommencing console log to " + fileName);
}

TEST_F(LogFileTest, StartingAgainEmptiesTheFile) {
    Log::enableLogging();
    Log::print("a long text of the first run");
    Log::disableLogging();

    Log::enableLogging();

    EXPECT_EQ(fileText(fileName), "\nCommencing console log to " + fileName);
}

TEST_F(LogFileTest, StartingTwiceChangesNothing) {
    Log::enableLogging();
    Log::print("kept");
    Log::clear();

    Log::enableLogging();

    EXPECT_EQ(Log::outputText(), "");
    EXPECT_TRUE(fileText(fileName).ends_with("kept"));
}

TEST_F(LogFileTest, StoppingWithoutALogSaysNothing) {
    Log::disableLogging();

    EXPECT_EQ(Log::outputText(), "");
}

TEST_F(LogFileTest, AFileThatCannotBeOpenedIsReported) {
    setLogFileName("/no such folder/log.txt");

    Log::enableLogging();

    EXPECT_FALSE(Log::loggingEnabled());
    EXPECT_EQ(Log::outputText(), "\nUnable to write log to /no such folder/log.txt");
}

TEST_F(LogFileTest, AfterAFailureTheNextTryStandsOnItsOwn) {
    setLogFileName("/no such folder/log.txt");
    Log::enableLogging();
    setLogFileName(fileName);

    Log::enableLogging();

    EXPECT_TRUE(Log::loggingEnabled());
    EXPECT_EQ(fileText(fileName), "\nCommencing console log to " + fileName);
}

TEST_F(LogFileTest, AWriteErrorEndsTheLogAndPrintingGoesOn) {
    setLogFileName("/dev/full");

    Log::enableLogging();
    Log::print("\nafter");

    EXPECT_FALSE(Log::loggingEnabled());
    EXPECT_EQ(Log::outputText(),
              "\nLogging to /dev/full stopped because of a write error." // each text goes to the log first
              "\nCommencing console log to /dev/full\nafter");
}

TEST_F(LogFileTest, AfterAWriteErrorALogCanStartAgain) {
    setLogFileName("/dev/full");
    Log::enableLogging();
    setLogFileName(fileName);

    Log::enableLogging();

    EXPECT_TRUE(Log::loggingEnabled());
    EXPECT_EQ(fileText(fileName), "\nCommencing console log to " + fileName);
}

} // namespace tarnwick
