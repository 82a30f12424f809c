#include "core/WorkerThread.h"

#include "core/LocationStack.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <memory>
#include <string>
#include <thread>

namespace tarnwick {
namespace {

/// What the functions below tell of themselves. Shared, since a thread's function takes nothing but its
/// handle.
struct Progress {
    std::atomic<int> runs = 0;
    std::atomic<bool> goOn = true;
    std::promise<void> begun;
    std::promise<void> secondPart;
    std::size_t stackBytes = 0;
    std::uint16_t locations = 0;
    std::string firstLocation;
    bool interruptBlocked = false;
};
std::unique_ptr<Progress> progress;

void countRun(WorkerThread&) {
    ++progress->runs;
}

void stopAtThePausePoint(WorkerThread& self) {
    progress->begun.set_value();
    while (progress->goOn) { // until the test has suspended this thread
    }
    self.waitWhileSuspended();
    ++progress->runs;
    progress->secondPart.set_value();
}

void look(WorkerThread&) {
    pthread_attr_t attributes;
    void* lowest = nullptr;
    pthread_getattr_np(pthread_self(), &attributes);
    pthread_attr_getstack(&attributes, &lowest, &progress->stackBytes);
    pthread_attr_destroy(&attributes);
    progress->locations = LocationStack::count;
    progress->firstLocation = LocationStack::names[0];
    sigset_t blocked;
    pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    progress->interruptBlocked = sigismember(&blocked, SIGINT) == 1 && sigismember(&blocked, SIGSEGV) == 0;
}

void useTheWholeStack(WorkerThread&) {
    volatile char bytes[65535 - 8192]; // the rest is for the functions around this one
    bytes[0] = 1;
    bytes[sizeof bytes - 1] = 1;
    progress->runs = bytes[0] + bytes[sizeof bytes - 1];
}

/// What the system says of the newest thread: 'S' is one that waits.
char stateOfNewestThread() {
    long newest = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/task")) {
        newest = std::max(newest, std::stol(entry.path().filename().string()));
    }
    std::ifstream file("/proc/self/task/" + std::to_string(newest) + "/stat");
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::size_t behindName = text.rfind(") ");
    return behindName == std::string::npos ? '?' : text[behindName + 2];
}

/// Looks on until the thread either waits or has gone past the place where it should; whether it waits.
bool waits() {
    while (progress->runs == 0) {
        if (stateOfNewestThread() == 'S') {
            return progress->runs == 0;
        }
        std::this_thread::yield();
    }
    return false;
}

class WorkerThreadTest : public testing::Test {
protected:
    WorkerThreadTest() {
        progress = std::make_unique<Progress>();
        LocationStack::use(LocationStack::mainNames);
    }
    ~WorkerThreadTest() override {
        LocationStack::use(LocationStack::otherNames);
        progress.reset();
    }
};

TEST_F(WorkerThreadTest, AFreshThreadWaits) {
    const WorkerThread thread(countRun);

    EXPECT_TRUE(waits()); // the fault: a thread that begins before it is started
    EXPECT_TRUE(thread.isSuspended());
    EXPECT_EQ(thread.getPriority(), 0);
}

TEST_F(WorkerThreadTest, StartingRunsTheFunctionOnce) {
    {
        WorkerThread thread(countRun);
        thread.start();
        EXPECT_FALSE(thread.isSuspended());
        thread.start();
    }

    EXPECT_EQ(progress->runs, 1);
}

TEST_F(WorkerThreadTest, DestroyingAWaitingThreadLetsItRunToItsEnd) {
    { const WorkerThread thread(countRun); }

    EXPECT_EQ(progress->runs, 1);
}

TEST_F(WorkerThreadTest, AThreadWithoutFunctionEndsAtOnce) {
    WorkerThread thread(nullptr);

    thread.start();

    EXPECT_TRUE(thread.isSuspended());
}

TEST_F(WorkerThreadTest, ASuspendedThreadStopsAtItsPausePoint) {
    WorkerThread thread(stopAtThePausePoint);
    thread.start();
    progress->begun.get_future().wait();

    thread.suspend();
    progress->goOn = false;

    EXPECT_TRUE(waits()); // the fault: a pause point that lets a suspended thread pass
    EXPECT_TRUE(thread.isSuspended());
    thread.start();
    progress->secondPart.get_future().wait();
    EXPECT_EQ(progress->runs, 1);
}

TEST_F(WorkerThreadTest, DestroyingLetsAThreadGoThatIsSuspendedInItsMiddle) {
    {
        WorkerThread thread(stopAtThePausePoint);
        thread.start();
        progress->begun.get_future().wait();
        thread.suspend();
        progress->goOn = false;
        EXPECT_TRUE(waits());
    }

    EXPECT_EQ(progress->runs, 1);
}

TEST_F(WorkerThreadTest, LowerPrioritiesAreTakenAndOthersIgnored) {
    WorkerThread thread(countRun);

    thread.setPriority(-1);
    EXPECT_EQ(thread.getPriority(), -1);
    thread.setPriority(-3);
    EXPECT_EQ(thread.getPriority(), -1);
    thread.setPriority(3);
    EXPECT_EQ(thread.getPriority(), -1);
    thread.setPriority(-2);

    EXPECT_EQ(thread.getPriority(), -2);
}

TEST_F(WorkerThreadTest, TheThreadHasRoomForItsFunctions) {
    {
        WorkerThread thread(look);
        thread.start();
    }
    {
        WorkerThread thread(useTheWholeStack);
        thread.start();
    }

    EXPECT_GE(progress->stackBytes, 65535u);
    EXPECT_EQ(progress->runs, 2);
}

TEST_F(WorkerThreadTest, TheThreadHasALocationStackOfItsOwn) {
    TARNWICK_LOCATION("WorkerThreadTest");
    {
        WorkerThread thread(look);
        thread.start();
    }

    EXPECT_EQ(progress->locations, 1); // its own way in
    EXPECT_EQ(progress->firstLocation, "WorkerThread::enter");
    EXPECT_STREQ(LocationStack::names[LocationStack::count - 1], "WorkerThreadTest"); // and not over ours
}

TEST_F(WorkerThreadTest, RequestsToEndTheProgramAreLeftToTheMainThread) {
    {
        WorkerThread thread(look);
        thread.start();
    }

    EXPECT_TRUE(progress->interruptBlocked);
}

} // namespace
} // namespace tarnwick
