// Installs the crash handlers and crashes in the way that its argument names. The tests of the crash report
// start it and read what is left.

#include "core/CrashReport.h"
#include "core/LocationStack.h"
#include "core/LongWork.h"
#include "core/WorkerThread.h"
#include "graphics/GLWindow.h"
#include "graphics/GLWindowEventListener.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace tarnwick {
namespace {

/// An address that belongs to nobody; not null, which the sanitisers would report themselves.
volatile std::uintptr_t nobodysAddress = 64;
volatile int zero = 0;
volatile int seven = 7;

[[gnu::noinline]] void writeToNobodysMemory() {
    TARNWICK_LOCATION("Victim::writeToNobodysMemory");
    *reinterpret_cast<int*>(nobodysAddress) = 1; // calls nothing: a function that an optimiser sees through
}

[[gnu::noinline]] __attribute__((no_sanitize("undefined"))) int divideByZero() {
    TARNWICK_LOCATION("Victim::divideByZero");
    return seven / zero;
}

[[gnu::noinline]] void runUnknownInstruction() {
    TARNWICK_LOCATION("Victim::runUnknownInstruction");
    __builtin_trap();
}

[[gnu::noinline]] void abortProgram() {
    TARNWICK_LOCATION("Victim::abortProgram");
    std::abort();
}

/// Goes on as a loop does.
[[gnu::noinline]] void interruptProgram() {
    TARNWICK_LOCATION("Victim::interruptProgram");
    kill(getpid(), SIGINT);
    GLWindow::run();
}

[[gnu::noinline]] void terminateProgram() {
    TARNWICK_LOCATION("Victim::terminateProgram");
    kill(getpid(), SIGTERM);
    GLWindow::run();
}

/// The loop does not come round again: what the alarm would do.
[[gnu::noinline]] void interruptAStandstill() {
    TARNWICK_LOCATION("Victim::interruptAStandstill");
    kill(getpid(), SIGINT);
    kill(getpid(), SIGALRM);
}

[[gnu::noinline]] void interruptTwice() {
    TARNWICK_LOCATION("Victim::interruptTwice");
    kill(getpid(), SIGINT);
    kill(getpid(), SIGTERM);
}

/// Pushes "Place 1" to "Place `count`", which stay.
void pushPlaces(int count) {
    static std::vector<std::string> names; // outlives every reader
    names.reserve(static_cast<std::size_t>(count));
    for (int place = 1; place <= count; ++place) {
        LocationStack::push(names.emplace_back("Place " + std::to_string(place)).c_str());
    }
}

void crashAfter100Places() {
    pushPlaces(100);
    *reinterpret_cast<int*>(nobodysAddress) = 1;
}

void crashWithoutPlaces() {
    *reinterpret_cast<int*>(nobodysAddress) = 1;
}

void crashAfterANullPlace() {
    pushPlaces(2);
    LocationStack::push(nullptr);
    writeToNobodysMemory();
}

void crashAfterTheStackWrappedRound() {
    pushPlaces(65536 + 3);
    *reinterpret_cast<int*>(nobodysAddress) = 1;
}

// NOLINTNEXTLINE(misc-no-recursion): it is what is tried
[[gnu::noinline]] int overflowTheStack(int depth) { // NOLINT(readability-function-size)
    TARNWICK_LOCATION("Victim::overflowTheStack");
    volatile char frame[4096];
    frame[0] = static_cast<char>(depth);
    return depth < 0 ? 0 : overflowTheStack(depth + 1) + frame[0];
}

void overflow() {
    std::exit(overflowTheStack(0));
}

/// What the C library finds damaged while it holds the lock of the heap, which it takes once a thread was
/// started.
[[gnu::noinline]] void damageTheHeap() {
    TARNWICK_LOCATION("Victim::damageTheHeap");
    std::thread([] {}).join();
    constexpr std::size_t blockSize = 60'000; // from the end of the heap: the two lie side by side
    auto* block = static_cast<volatile char*>(std::malloc(blockSize));
    auto* next = static_cast<volatile char*>(std::malloc(blockSize));
    for (volatile char* byte = block + blockSize; byte != next; ++byte) {
        *byte = 0x41; // the size of the next block among them
    }
    std::free(const_cast<char*>(block));
}

/// The lock makes closing the window, which gives memory back, wait for ever.
void damageTheHeapWithAWindowOpen() {
    GLWindow::createHeadless(64, 64);
    damageTheHeap();
}

void crashOnASecondThread() {
    TARNWICK_LOCATION("Victim::crashOnASecondThread");
    WorkerThread thread([](WorkerThread&) { writeToNobodysMemory(); });
    thread.start();
    pause();
}

void overflowTheStackOfASecondThread() {
    TARNWICK_LOCATION("Victim::overflowTheStackOfASecondThread");
    WorkerThread thread([](WorkerThread&) { overflow(); });
    thread.start();
    pause();
}

void interruptFromAnotherThread() {
    TARNWICK_LOCATION("Victim::interruptFromAnotherThread");
    raise(SIGINT);
}

/// SIGINT may be given to any thread that does not block it.
void interruptASecondThread() {
    TARNWICK_LOCATION("Victim::interruptASecondThread");
    std::thread(interruptFromAnotherThread).join();
    GLWindow::run();
}

/// Ends with status 0 if installing the handlers again empties the location stack but for its last entry.
void installAgain() {
    std::fill(std::begin(LocationStack::mainNames), std::end(LocationStack::mainNames), "Old::place");
    LocationStack::count = 7;
    installCrashHandlers();
    const bool empty =
        std::all_of(std::begin(LocationStack::mainNames), std::end(LocationStack::mainNames) - 1,
                    [](const char* name) { return name == nullptr; });
    const bool lastIsKept = LocationStack::names[LocationStack::capacity - 1] != nullptr;
    _exit(empty && lastIsKept && LocationStack::count == 0 ? 0 : 3);
}

/// Does harm while the window closes.
class BadListener final : public GLWindowEventListener {
public:
    explicit BadListener(void (*badAct)())
        : act(badAct) {}
    void windowClosed() override { act(); }

private:
    void (*act)();
};

void crashAgainWhileTheWindowCloses() {
    BadListener listener(writeToNobodysMemory);
    GLWindow::createHeadless(64, 64);
    GLWindow::setEventListener(&listener);
    divideByZero();
}

/// As if the window had taken too long: what the alarm would do.
void standStillWhileTheWindowCloses() {
    BadListener listener([] {
        raise(SIGALRM);
        pause();
    });
    GLWindow::createHeadless(64, 64);
    GLWindow::setEventListener(&listener);
    divideByZero();
}

void tell(std::string_view text) {
    if (write(STDERR_FILENO, text.data(), text.size()) < 0) {
        _exit(3);
    }
}

void tellThatTheWindowCloses() {
    BadListener listener([] { tell("window closed\n"); });
    GLWindow::createHeadless(64, 64);
    GLWindow::setEventListener(&listener);
    writeToNobodysMemory();
}

bool tellThatTheWindowIsDropped() {
    tell("window dropped\n");
    return true;
}

bool tellThatNothingCanBeDropped() {
    tell("nothing to drop\n");
    return false;
}

/// The loop does not come round again, in the middle of what may hold a lock.
void interruptAStandstillWith(bool (*drop)()) {
    BadListener listener([] { tell("window closed\n"); });
    GLWindow::createHeadless(64, 64);
    GLWindow::setEventListener(&listener);
    CrashReport::setWindowClosing(GLWindow::close, drop);
    interruptAStandstill();
}

void standStillWhileTheWindowClosesAndDropIt() {
    CrashReport::setWindowClosing(GLWindow::close, tellThatTheWindowIsDropped);
    standStillWhileTheWindowCloses();
}

/// Work that looks at no events, but asks whether it goes on.
void interruptLongWork() {
    TARNWICK_LOCATION("Victim::interruptLongWork");
    GLWindow::createHeadless(64, 64);
    kill(getpid(), SIGTERM);
    LongWork::goesOn();
}

/// As in the middle of a frame: the window stays until the frame is done.
void interruptAFrame() {
    TARNWICK_LOCATION("Victim::interruptAFrame");
    BadListener listener([] { tell("window closed\n"); });
    GLWindow::createHeadless(64, 64);
    GLWindow::setEventListener(&listener);
    kill(getpid(), SIGTERM);
    tell("frame done\n");
    GLWindow::run();
}

const std::map<std::string, void (*)()> waysToCrash{
    {"SIGSEGV", writeToNobodysMemory},
    {"SIGFPE", [] { std::exit(divideByZero()); }},
    {"SIGILL", runUnknownInstruction},
    {"SIGABRT", abortProgram},
    {"SIGINT", interruptProgram},
    {"SIGTERM", terminateProgram},
    {"standstill after a request", interruptAStandstill},
    {"two requests", interruptTwice},
    {"request in a frame", interruptAFrame},
    {"100 places", crashAfter100Places},
    {"no places", crashWithoutPlaces},
    {"null place", crashAfterANullPlace},
    {"wrapped", crashAfterTheStackWrappedRound},
    {"stack overflow", overflow},
    {"heap damage", damageTheHeap},
    {"heap damage with a window", damageTheHeapWithAWindowOpen},
    {"second thread", crashOnASecondThread},
    {"stack overflow on a second thread", overflowTheStackOfASecondThread},
    {"interrupted thread", interruptASecondThread},
    {"install again", installAgain},
    {"closing", tellThatTheWindowCloses},
    {"droppable standstill", [] { interruptAStandstillWith(tellThatTheWindowIsDropped); }},
    {"standstill that cannot be dropped", [] { interruptAStandstillWith(tellThatNothingCanBeDropped); }},
    {"standstill while closing, dropped", standStillWhileTheWindowClosesAndDropIt},
    {"request in long work", interruptLongWork},
    {"fault while closing", crashAgainWhileTheWindowCloses},
    {"standstill while closing", standStillWhileTheWindowCloses},
};

} // namespace
} // namespace tarnwick

int main(int argumentCount, char** arguments) {
    const auto way = tarnwick::waysToCrash.find(argumentCount == 2 ? arguments[1] : "");
    if (way == tarnwick::waysToCrash.end()) {
        return 2;
    }
    tarnwick::installCrashHandlers();
    tarnwick::CrashReport::setWindowClosing(tarnwick::GLWindow::close);
    way->second();
    return 0; // it did not crash
}
