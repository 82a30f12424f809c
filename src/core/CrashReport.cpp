#include "core/CrashReport.h"

#include "core/LocationStack.h"

#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <system_error>

namespace tarnwick {

// The functions that run in a handler open no location scope: the report lists the locations at the moment of
// the fault, so nothing may be pushed over them before they are copied.

namespace {

/// A signal that is reported, and its line in the report.
struct CrashSignal {
    int number = 0;
    const char* errorLine = nullptr;
};

/// In the order in which the handlers are registered.
constexpr std::array<CrashSignal, 6> crashSignals{{
    {SIGABRT, "\nError type: Abnormal program termination by program.\n"},
    {SIGFPE, "\nError type: Arithmetic error. Divide by zero or invalid arithmetic operation.\n"},
    {SIGILL, "\nError type: Attempted execution of unknown processor instruction.\n"},
    {SIGINT, "\nError type: Abnormal interuption of program by user.\n"},
    {SIGSEGV, "\nError type: Read or write to memory not owned by program.\n"},
    {SIGTERM, "\nError type: Program requested to terminate abnormally.\n"},
}};

/// Bytes taken for the report at the start: the fixed text has some 1150, sixteen locations have a few
/// hundred.
constexpr std::size_t reportCapacity = 65'536;

constexpr const char* boxProgramName = "tarnwick-crash-box";

/// The text that every report starts with, line by line; two lines of asterisks follow.
constexpr std::array<std::string_view, 9> openingLines{
    "We are very sorry but 'Tarnwick' has encountered a techincal problem and must close as a result.",
    "",
    "Please help us to improve our software by reporting the error to 'support@tarnwick.example' .",
    "Any information you can provide relating to the problem would be extremely helpful in resolving the",
    "issue. Such information includes when the problem occurred, the specification of the PC being used to",
    "run the game, and what version of Windows is installed on your computer.",
    "The information below relates to the problem that occcured and should also be included in your report.",
    "Thank you very much for your help.",
    "",
};

static_assert(std::ranges::all_of(openingLines, [](std::string_view line) {
    return line.size() <= CrashReport::lineLength;
}));

/// The opening lines and the asterisks, each line filled up with blanks.
std::string fixedText() {
    TARNWICK_LOCATION("CrashReport::fixedText");
    std::string text;
    for (const std::string_view line : openingLines) {
        text += line;
        text.append(CrashReport::lineLength - line.size(), ' ');
        text += '\n';
    }
    const std::string asterisks(CrashReport::lineLength, '*');
    return text + asterisks + '\n' + asterisks + '\n';
}

/// `name` in the folder of this program.
std::string besideThisProgram(const char* name) {
    TARNWICK_LOCATION("CrashReport::besideThisProgram");
    std::error_code ignored; // without the link the name alone is left, and no box is shown
    return (std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path() / name).string();
}

/// Whether the user asked the program to end: no thread made a mistake.
// no location: runs in a signal handler
bool isRequest(int signalNumber) {
    return signalNumber == SIGINT || signalNumber == SIGTERM;
}

// no location: runs in a signal handler
const char* errorLineOf(int signalNumber) {
    const auto* found =
        std::find_if(crashSignals.begin(), crashSignals.end(),
                     [&](const CrashSignal& candidate) { return candidate.number == signalNumber; });
    return found == crashSignals.end() ? "" : found->errorLine;
}

/// Gives the signal to the main thread, if this is another one; whether it is.
// no location: runs in a signal handler
bool forwarded(int signalNumber) {
    const pid_t mainThread = getpid();
    if (gettid() == mainThread) {
        return false;
    }
    const int errorBefore = errno;
    tgkill(mainThread, mainThread, signalNumber);
    errno = errorBefore;
    return true;
}

/// Lets SIGALRM come after so many milliseconds, in place of a former time; 0: never. Returns what was left
/// of that one.
// no location: runs in a signal handler
unsigned startAlarm(unsigned milliseconds) {
    const itimerval time{{0, 0}, {milliseconds / 1000, milliseconds % 1000 * 1000L}};
    itimerval before{};
    setitimer(ITIMER_REAL, &time, &before);
    return static_cast<unsigned>(before.it_value.tv_sec * 1000 + before.it_value.tv_usec / 1000);
}

/// Has `handler` called when the time is over, in place of what was to be called before.
// no location: runs in a signal handler
void setAlarm(unsigned milliseconds, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_ONSTACK | SA_RESTART | SA_NODEFER; // the handler of one may wait for the next
    sigemptyset(&action.sa_mask);
    sigaction(SIGALRM, &action, nullptr);
    startAlarm(milliseconds);
}

/// Leaves the end of the program to another thread.
// no location: runs in a signal handler
[[noreturn]] void waitForTheEnd() {
    while (true) {
        pause();
    }
}

// no location: runs in a signal handler
void writeAll(int file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(file, text.data(), text.size());
        if (written > 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0 || errno != EINTR) {
            return; // nobody reads it
        }
    }
}

// no location: runs in a signal handler
bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

/// Whether a message box would be seen. The two video drivers named here draw nowhere.
// no location: runs in a signal handler
bool hasDisplay() {
    const char* driver = std::getenv("SDL_VIDEODRIVER");
    const std::string_view driverName = driver == nullptr ? "" : driver;
    return driverName != "offscreen" && driverName != "dummy" &&
           (isSet("DISPLAY") || isSet("WAYLAND_DISPLAY"));
}

/// Where the one worker thread's signals ran before they were told another place.
stack_t workersFormerStack{};

} // namespace

CrashReport::State CrashReport::state;
alignas(64) CrashReport::SignalStack CrashReport::signalStack;
alignas(64) CrashReport::SignalStack CrashReport::workerSignalStack;

// no location: it empties the stack
void installCrashHandlers() {
    LocationStack::use(LocationStack::mainNames);
    CrashReport::prepareReport();
    std::fill(std::begin(LocationStack::mainNames), std::end(LocationStack::mainNames) - 1, nullptr);
    LocationStack::count = 0;
    CrashReport::useSignalStack(CrashReport::signalStack);

    struct sigaction action {};
    action.sa_handler = CrashReport::onSignal;
    // A second fault is let in and cuts the window's closing short; blocked, it would end the program without
    // a report. A second request to end changes nothing. After the first one the program goes on, and with it
    // what it was waiting for.
    action.sa_flags = SA_ONSTACK | SA_NODEFER | SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaddset(&action.sa_mask, SIGINT);
    sigaddset(&action.sa_mask, SIGTERM);
    for (const CrashSignal& crashSignal : crashSignals) {
        sigaction(crashSignal.number, &action, nullptr);
    }
}

// no location: runs in a signal handler
void appendBacktrace(std::string& report) {
    report += "\nBacktrace of locations visited by program: \n";
    int line = 1;
    for (int i = LocationStack::count - 1; i >= 0 && line <= CrashReport::mostLocations; --i, ++line) {
        const char* name = LocationStack::names[i];
        report += '\n';
        report += std::to_string(line);
        report += " - ";
        report += name == nullptr ? "Unknown location." : name;
    }
}

void CrashReport::setWindowClosing(void (*close)(), bool (*drop)()) {
    TARNWICK_LOCATION("CrashReport::setWindowClosing");
    state.windowClosing = close;
    state.windowDropping = drop;
}

// no location: called before the stack of locations is emptied
void CrashReport::useSignalStack(SignalStack& memory) {
    stack_t stack{};
    stack.ss_sp = memory.data();
    stack.ss_size = memory.size();
    sigaltstack(&stack, nullptr);
}

void CrashReport::prepareWorker() {
    TARNWICK_LOCATION("CrashReport::prepareWorker");
    sigaltstack(nullptr, &workersFormerStack);
    useSignalStack(workerSignalStack);
}

void CrashReport::releaseWorker() {
    TARNWICK_LOCATION("CrashReport::releaseWorker");
    sigaltstack(&workersFormerStack, nullptr);
}

void CrashReport::prepareReport() {
    TARNWICK_LOCATION("CrashReport::prepareReport");
    state.report.clear();
    state.report.reserve(reportCapacity);
    state.report += fixedText();
    state.boxProgram = besideThisProgram(boxProgramName);
    std::atexit(holdExit);
}

/// A library that loses the window ends the program: not before the report is out, which ends it, too.
// no location: the report may be going out in another thread
void CrashReport::holdExit() {
    if (std::atomic_ref(state.deliverer).load() != 0) {
        waitForTheEnd();
    }
}

// no location: runs in a signal handler
void CrashReport::onSignal(int signalNumber) {
    if (!isRequest(signalNumber)) {
        report(signalNumber, longestClose);
    } else if (!forwarded(signalNumber) && !noteRequest(signalNumber)) {
        report(signalNumber, 0);
    }
}

/// False if the request is to be reported at once: without a window there is no loop.
// no location: runs in a signal handler
bool CrashReport::noteRequest(int signalNumber) {
    const bool first = std::atomic_ref(state.request).exchange(signalNumber) == 0;
    if (!first || state.windowClosing == nullptr || std::atomic_ref(state.reporter).load() != 0) {
        return false;
    }
    setAlarm(longestPass, onUnheardRequest);
    return true;
}

// no location: runs in a signal handler
void CrashReport::onUnheardRequest(int signalNumber) {
    if (!forwarded(signalNumber)) {
        report(std::atomic_ref(state.request).load(), 0);
    }
}

// no location: the report tells where the request was heard
void CrashReport::endIfAsked() {
    if (std::atomic_ref(state.request).load(std::memory_order_relaxed) == 0 || gettid() != getpid()) {
        return;
    }
    std::signal(SIGALRM, SIG_IGN);       // it is heard: also drops an alarm that is on its way
    const unsigned left = startAlarm(0); // the window is to be gone by then
    sigset_t requests;
    sigemptyset(&requests);
    sigaddset(&requests, SIGINT);
    sigaddset(&requests, SIGTERM);
    sigprocmask(SIG_BLOCK, &requests, nullptr); // as in the handler
    report(state.request, std::max(left, 1u));
}

/// Does not return. The window gets so many milliseconds to close; 0: the main thread may be anywhere, with
/// any lock, and where the window can be dropped it is not closed.
// no location: runs in a signal handler
void CrashReport::report(int signalNumber, unsigned closingTime) {
    const pid_t thread = gettid();
    pid_t reporter = 0;
    if (!std::atomic_ref(state.reporter).compare_exchange_strong(reporter, thread)) {
        if (reporter == thread) {
            deliver(); // a fault while the window closed: the report is complete
        }
        waitForTheEnd();
    }
    state.report += errorLineOf(signalNumber);
    appendBacktrace(state.report);
    if (closingTime > 0 || !dropWindow()) {
        closeWindow(closingTime > 0 ? closingTime : longestClose);
    }
    deliver();
}

// no location: runs in a signal handler
void CrashReport::onStandstill(int /*signalNumber*/) {
    deliver();
}

/// False if there is none that could be dropped.
// no location: runs in a signal handler
bool CrashReport::dropWindow() {
    return state.windowDropping != nullptr && state.windowDropping();
}

// no location: runs in a signal handler
void CrashReport::closeWindow(unsigned milliseconds) {
    if (state.windowClosing == nullptr) {
        return;
    }
    setAlarm(milliseconds, onStandstill);
    state.windowClosing();
    startAlarm(0);
}

// no location: runs in a signal handler
void CrashReport::deliver() {
    std::signal(SIGALRM, SIG_IGN); // a box stays for as long as the player reads it
    startAlarm(0);
    const pid_t thread = gettid();
    pid_t deliverer = 0;
    if (!std::atomic_ref(state.deliverer).compare_exchange_strong(deliverer, thread)) {
        if (deliverer == thread) {
            _exit(1); // a fault while the report went out
        }
        waitForTheEnd();
    }
    dropWindow();
    std::signal(SIGPIPE, SIG_IGN); // nobody may be reading
    writeAll(STDERR_FILENO, state.report);
    writeAll(STDERR_FILENO, "\n");
    if (hasDisplay()) {
        showBox();
    }
    _exit(1);
}

/// Hands the report to the program that shows it, and waits until the player has closed the box.
// no location: runs in a signal handler
void CrashReport::showBox() {
    int ends[2];
    if (pipe(ends) != 0) {
        return;
    }
    const pid_t child = _Fork(); // unlike `fork` takes no lock of the heap
    if (child == 0) {
        sigset_t none;
        sigemptyset(&none);
        sigprocmask(SIG_SETMASK, &none, nullptr);
        std::signal(SIGPIPE, SIG_DFL);
        std::signal(SIGALRM, SIG_DFL);
        dup2(ends[0], STDIN_FILENO);
        close(ends[0]);
        close(ends[1]);
        execl(state.boxProgram.c_str(), boxProgramName, nullptr);
        _exit(127);
    }
    close(ends[0]);
    if (child > 0) {
        writeAll(ends[1], state.report);
    }
    close(ends[1]);
    while (child > 0 && waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

} // namespace tarnwick
