#include "core/CrashReport.h"

#include "core/LocationStack.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {
namespace {

/// What is left of a program that crashed.
struct Remains {
    std::string errorText; ///< All of its standard error.
    int exitStatus = -1;   ///< -1: a signal ended it.
};

std::string readAll(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

/// Runs a program to its end, with nothing in its environment but what is given.
Remains
run(const std::string& program, const std::string& argument, const std::vector<std::string>& environment) {
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "stderr.txt", O_WRONLY | O_CREAT | O_TRUNC, 0600);
    std::vector<char*> variables;
    for (const std::string& variable : environment) {
        variables.push_back(const_cast<char*>(variable.c_str()));
    }
    variables.push_back(nullptr);
    std::array<char*, 3> arguments{const_cast<char*>(program.c_str()), const_cast<char*>(argument.c_str()),
                                   nullptr};

    Remains remains;
    pid_t child = 0;
    int status = 0;
    if (posix_spawn(&child, program.c_str(), &files, nullptr, arguments.data(), variables.data()) == 0 &&
        waitpid(child, &status, 0) == child && WIFEXITED(status)) {
        remains.exitStatus = WEXITSTATUS(status);
    }
    posix_spawn_file_actions_destroy(&files);
    remains.errorText = readAll("stderr.txt");
    return remains;
}

/// Crashes in the way that the victim knows under this name, on a machine without a display.
Remains crash(const std::string& way) {
    return run(TARNWICK_CRASH_VICTIM, way, {});
}

std::string padded(std::string line) {
    line.resize(103, ' ');
    return line + '\n';
}

std::string openingText() {
    return padded("We are very sorry but 'Tarnwick' has encountered a techincal problem and must close as a "
                  "result.") +
           padded("") +
           padded("Please help us to improve our software by reporting the error to "
                  "'support@tarnwick.example' .") +
           padded("Any information you can provide relating to the problem would be extremely helpful in "
                  "resolving the") +
           padded("issue. Such information includes when the problem occurred, the specification of the PC "
                  "being used "
                  "to") +
           padded("run the game, and what version of Windows is installed on your computer.") +
           padded("The information below relates to the problem that occcured and should also be included in "
                  "your "
                  "report.") +
           padded("Thank you very much for your help.") + padded("") + std::string(103, '*') + '\n' +
           std::string(103, '*') + '\n';
}

/// The whole report of an error with this list of locations.
std::string reportOf(const std::string& errorLine, const std::string& locations) {
    return openingText() + "\nError type: " + errorLine +
           "\n\nBacktrace of locations visited by program: \n" + locations + "\n";
}

constexpr const char* memoryError = "Read or write to memory not owned by program.";
constexpr const char* arithmeticError = "Arithmetic error. Divide by zero or invalid arithmetic operation.";

/// Each test stands in a folder of its own, which the standard error of the victim is written to.
class CrashReportTest : public ModuleTest {
protected:
    DataFolder folder;
};

struct SignalCase {
    const char* name;
    const char* errorLine;
    const char* locations;
};

/// Shown by CTest beside the test's name.
void PrintTo(const SignalCase& signalCase, std::ostream* stream) {
    *stream << signalCase.name;
}

class CrashReportSignalTest : public CrashReportTest, public testing::WithParamInterface<SignalCase> {};

TEST_P(CrashReportSignalTest, TheWholeReportGoesToStandardErrorAndTheStatusIsOne) {
    const Remains remains = crash(GetParam().name);

    EXPECT_EQ(remains.errorText,
              reportOf(GetParam().errorLine, std::string("\n1 - ") + GetParam().locations));
    EXPECT_EQ(remains.exitStatus, 1);
}

INSTANTIATE_TEST_SUITE_P(
    AllSignals,
    CrashReportSignalTest,
    testing::Values(SignalCase{"SIGABRT", "Abnormal program termination by program.", "Victim::abortProgram"},
                    SignalCase{"SIGFPE", arithmeticError, "Victim::divideByZero"},
                    SignalCase{"SIGILL", "Attempted execution of unknown processor instruction.",
                               "Victim::runUnknownInstruction"},
                    SignalCase{"SIGINT", "Abnormal interuption of program by user.",
                               "GLWindow::run\n2 - Victim::interruptProgram"},
                    SignalCase{"SIGSEGV", memoryError, "Victim::writeToNobodysMemory"},
                    SignalCase{"SIGTERM", "Program requested to terminate abnormally.",
                               "GLWindow::run\n2 - Victim::terminateProgram"}),
    [](const auto& parameter) { return std::string(parameter.param.name); });

TEST_F(CrashReportTest, InstallingTheHandlersEmptiesTheStackButForItsLastEntry) {
    EXPECT_EQ(crash("install again").exitStatus, 0);
}

TEST_F(CrashReportTest, EveryLineOfTheFixedTextHas103Characters) {
    const std::string text = crash("SIGSEGV").errorText;

    std::size_t start = 0;
    for (int line = 1; line <= 11; ++line) {
        EXPECT_EQ(text.find('\n', start) - start, 103u) << "line " << line;
        start += 104;
    }
}

TEST_F(CrashReportTest, AFaultAfter100PlacesListsTheNewest16) {
    std::string locations;
    for (int line = 1; line <= 16; ++line) {
        locations += "\n" + std::to_string(line) + " - Place " + std::to_string(101 - line);
    }

    EXPECT_EQ(crash("100 places").errorText, reportOf(memoryError, locations));
}

TEST_F(CrashReportTest, AFaultWithoutPlacesListsNone) {
    const Remains remains = crash("no places");

    EXPECT_EQ(remains.errorText, reportOf(memoryError, ""));
    EXPECT_EQ(remains.exitStatus, 1);
}

TEST_F(CrashReportTest, ANullPlaceIsUnknownAndUsesUpALine) {
    EXPECT_EQ(
        crash("null place").errorText,
        reportOf(memoryError,
                 "\n1 - Victim::writeToNobodysMemory\n2 - Unknown location.\n3 - Place 2\n4 - Place 1"));
}

TEST_F(CrashReportTest, AStackThatWrappedRoundListsWhatItHoldsBelowItsCount) {
    EXPECT_EQ(crash("wrapped").errorText,
              reportOf(memoryError, "\n1 - Place 65539\n2 - Place 65538\n3 - Place 65537"));
}

TEST_F(CrashReportTest, AStackOverflowIsReported) {
    std::string locations;
    for (int line = 1; line <= 16; ++line) {
        locations += "\n" + std::to_string(line) + " - Victim::overflowTheStack";
    }

    for (const char* way : {"stack overflow", "stack overflow on a second thread"}) {
        const Remains remains = crash(way);

        EXPECT_EQ(remains.errorText, reportOf(memoryError, locations)) << way;
        EXPECT_EQ(remains.exitStatus, 1) << way;
    }
}

TEST_F(CrashReportTest, DamageToTheHeapIsReported) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitiser finds the damage first";
#endif
    for (const char* way : {"heap damage", "heap damage with a window"}) {
        const Remains remains = crash(way);

        EXPECT_NE(remains.errorText.find(
                      reportOf("Abnormal program termination by program.", "\n1 - Victim::damageTheHeap")),
                  std::string::npos)
            << way << remains.errorText;
        EXPECT_EQ(remains.exitStatus, 1) << way;
    }
}

TEST_F(CrashReportTest, AFaultOfTheSecondThreadListsItsOwnLocations) {
    const Remains remains = crash("second thread");

    EXPECT_EQ(remains.errorText,
              reportOf(memoryError, "\n1 - Victim::writeToNobodysMemory\n2 - WorkerThread::enter"));
    EXPECT_EQ(remains.exitStatus, 1);
}

TEST_F(CrashReportTest, ARequestToEndIsReportedByTheMainThread) {
    EXPECT_EQ(crash("interrupted thread").errorText,
              reportOf("Abnormal interuption of program by user.",
                       "\n1 - GLWindow::run\n2 - Victim::interruptASecondThread"));
}

TEST_F(CrashReportTest, ARequestToEndLetsTheFrameBeDoneBeforeTheWindowCloses) {
    const Remains remains = crash("request in a frame");

    EXPECT_EQ(remains.errorText,
              "frame done\nwindow closed\n" + reportOf("Program requested to terminate abnormally.",
                                                       "\n1 - GLWindow::run\n2 - Victim::interruptAFrame"));
    EXPECT_EQ(remains.exitStatus, 1);
}

TEST_F(CrashReportTest, ARequestToEndThatNoFrameHearsIsReportedAllTheSame) {
    const Remains remains = crash("standstill after a request");

    EXPECT_EQ(remains.errorText,
              reportOf("Abnormal interuption of program by user.", "\n1 - Victim::interruptAStandstill"));
    EXPECT_EQ(remains.exitStatus, 1);
}

TEST_F(CrashReportTest, ASecondRequestToEndIsReportedAtOnce) {
    const Remains remains = crash("two requests");

    EXPECT_EQ(remains.errorText,
              reportOf("Program requested to terminate abnormally.", "\n1 - Victim::interruptTwice"));
    EXPECT_EQ(remains.exitStatus, 1);
}

TEST_F(CrashReportTest, TheWindowIsClosedBeforeTheReport) {
    EXPECT_EQ(crash("closing").errorText,
              "window closed\n" + reportOf(memoryError, "\n1 - Victim::writeToNobodysMemory"));
}

TEST_F(CrashReportTest, AFaultWhileTheWindowClosesStillReportsTheFirst) {
    const Remains remains = crash("fault while closing");

    EXPECT_EQ(remains.errorText, reportOf(arithmeticError, "\n1 - Victim::divideByZero"));
    EXPECT_EQ(remains.exitStatus, 1);
}

TEST_F(CrashReportTest, AStandstillWhileTheWindowClosesDoesNotHoldTheReportBack) {
    const Remains remains = crash("standstill while closing");

    EXPECT_EQ(remains.errorText, reportOf(arithmeticError, "\n1 - Victim::divideByZero"));
    EXPECT_EQ(remains.exitStatus, 1);
}

// The fault: a closing that waits for a lock which the interrupted code holds, and a window that stays over
// its box.
TEST_F(CrashReportTest, ARequestThatNoFrameHearsDropsTheWindowInPlaceOfClosingIt) {
    const std::string report =
        reportOf("Abnormal interuption of program by user.", "\n1 - Victim::interruptAStandstill");

    EXPECT_EQ(crash("droppable standstill").errorText, "window dropped\nwindow dropped\n" + report);
    EXPECT_EQ(crash("standstill that cannot be dropped").errorText,
              "nothing to drop\nwindow closed\nnothing to drop\n" + report);
}

// The fault: a window whose closing stood still stays over the box.
TEST_F(CrashReportTest, AWindowWhoseClosingStandsStillIsDropped) {
    EXPECT_EQ(crash("standstill while closing, dropped").errorText,
              "window dropped\n" + reportOf(arithmeticError, "\n1 - Victim::divideByZero"));
}

// The fault: a level that is cut up for minutes does not hear the request.
TEST_F(CrashReportTest, ARequestIsHeardInLongWork) {
    EXPECT_EQ(crash("request in long work").errorText,
              reportOf("Program requested to terminate abnormally.",
                       "\n1 - LongWork::goesOn\n2 - Victim::interruptLongWork"));
}

/// A victim in the test's folder, beside a program for the box that keeps what it is given.
class CrashReportBoxTest : public CrashReportTest {
protected:
    CrashReportBoxTest() {
        std::filesystem::copy(TARNWICK_CRASH_VICTIM, "victim");
        folder.write("tarnwick-crash-box", "#!/bin/sh\nexec cat > box.txt\n");
        std::filesystem::permissions("tarnwick-crash-box", std::filesystem::perms::owner_all);
    }
    static Remains crashWith(const std::vector<std::string>& environment) {
        return run("./victim", "SIGSEGV", environment);
    }

    const std::string report = reportOf(memoryError, "\n1 - Victim::writeToNobodysMemory");
};

TEST_F(CrashReportBoxTest, WithADisplayTheProgramForTheBoxIsGivenTheReport) {
    for (const char* display : {"DISPLAY=:0", "WAYLAND_DISPLAY=wayland-0"}) {
        const Remains remains = crashWith({"PATH=/usr/bin:/bin", display});

        EXPECT_EQ(readAll("box.txt") + "\n", report) << display;
        EXPECT_EQ(remains.errorText, report) << display;
        EXPECT_EQ(remains.exitStatus, 1) << display;
        std::filesystem::remove("box.txt");
    }
}

TEST_F(CrashReportBoxTest, WithoutADisplayNoBoxIsShown) {
    crashWith({});
    crashWith({"DISPLAY="});
    crashWith({"DISPLAY=:0", "SDL_VIDEODRIVER=offscreen"});
    crashWith({"DISPLAY=:0", "SDL_VIDEODRIVER=dummy"});

    EXPECT_FALSE(std::filesystem::exists("box.txt"));
}

TEST_F(CrashReportBoxTest, AMissingProgramForTheBoxChangesNothingElse) {
    std::filesystem::remove("tarnwick-crash-box");

    const Remains remains = crashWith({"DISPLAY=:0"});

    EXPECT_EQ(remains.errorText, report);
    EXPECT_EQ(remains.exitStatus, 1);
}

TEST_F(CrashReportBoxTest, AProgramForTheBoxThatReadsNothingChangesNothingElse) {
    folder.write("tarnwick-crash-box", "#!/bin/sh\nexit 3\n");

    const Remains remains = crashWith({"DISPLAY=:0"});

    EXPECT_EQ(remains.errorText, report);
    EXPECT_EQ(remains.exitStatus, 1);
}

TEST_F(CrashReportBoxTest, TheAlarmOfAWindowThatClosesDoesNotEndTheProgramBeforeItsBox) {
    folder.write("tarnwick-crash-box",
                 "#!/bin/sh\nparent=$PPID\nkill -ALRM $parent\ncat > text\n"
                 "[ \"$(ps -o ppid= -p $$ | tr -d ' ')\" = $parent ] && mv text box.txt\n");

    const Remains remains = run("./victim", "fault while closing", {"PATH=/usr/bin:/bin", "DISPLAY=:0"});

    EXPECT_EQ(
        readAll("box.txt"),
        reportOf(arithmeticError, "\n1 - Victim::divideByZero").substr(0, remains.errorText.size() - 1));
    EXPECT_EQ(remains.exitStatus, 1);
}

TEST_F(CrashReportTest, ABacktraceIsAppendedToTheText) {
    const std::uint16_t countBefore = LocationStack::count;
    LocationStack::count = 0;
    LocationStack::push("First::place");
    LocationStack::push("Second::place");
    std::string report = "Before.";

    appendBacktrace(report);

    EXPECT_EQ(report,
              "Before.\nBacktrace of locations visited by program: \n\n1 - Second::place\n2 - First::place");
    LocationStack::count = countBefore;
}

} // namespace
} // namespace tarnwick
