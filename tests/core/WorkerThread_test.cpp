#include "core/WorkerThread.h"

#include "core/LocationStack.h"

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <future>
#include <memory>

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

class WorkerThreadTest : public testing::Test {
protected:
    WorkerThreadTest() { progress = std::make_unique<Progress>(); }
    ~WorkerThreadTest() override { progress.reset(); }
};

TEST_F(WorkerThreadTest, AFreshThreadWaits) {
    const WorkerThread thread(countRun);

    EXPECT_TRUE(thread.isSuspended());
    EXPECT_EQ(thread.getPriority(), 0);
    EXPECT_EQ(progress->runs, 0);
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

    EXPECT_TRUE(thread.isSuspended());
    EXPECT_EQ(progress->runs, 0);
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

TEST_F(WorkerThreadTest, TheThreadHasRoomForItsLocationsAndItsFunctions) {
    {
        WorkerThread thread(look);
        thread.start();
    }
    {
        WorkerThread thread(useTheWholeStack);
        thread.start();
    }

    EXPECT_GE(progress->stackBytes, 65535 + sizeof(LocationStack::names));
    EXPECT_EQ(progress->runs, 2);
}

TEST_F(WorkerThreadTest, TheThreadHasALocationStackOfItsOwn) {
    TARNWICK_LOCATION("WorkerThreadTest");
    {
        WorkerThread thread(look);
        thread.start();
    }

    EXPECT_EQ(progress->locations, 1); // its own way in
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
