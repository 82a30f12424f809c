#pragma once

#include <pthread.h>
#include <sys/types.h>

#include <condition_variable>
#include <cstddef>
#include <mutex>

namespace tarnwick {

/// A second thread, created waiting. Its one user is the splash screen.
///
/// Everything but `waitWhileSuspended` is called by the thread that created it.
class WorkerThread {
public:
    /// What the thread runs; `self` is its own handle.
    using Function = void (*)(WorkerThread& self);

    /// Creates the thread suspended, with the priority 0. If the system refuses, the rest does nothing.
    explicit WorkerThread(Function function);
    /// Lets a suspended thread go, even one that never started, and waits for its end without a limit.
    ~WorkerThread();
    WorkerThread(const WorkerThread&) = delete;
    WorkerThread& operator=(const WorkerThread&) = delete;

    /// Lets a suspended thread go. Does nothing without a function.
    void start();
    /// Suspends the thread again. One that has not begun its function waits; one that has goes on as far as
    /// its next `waitWhileSuspended`, since a thread stopped at any instruction could hold the lock of the
    /// heap.
    void suspend();
    bool isSuspended() const { return suspended; }
    /// False if the system refused the thread.
    bool exists() const { return threadId != 0; }

    /// -2 (least) to 2 (most); others are ignored. Keeps the old one if the system refuses, as it may for
    /// more than 0 without the right to it.
    void setPriority(int newPriority);
    int getPriority() const { return priority; }

    /// For the function of the thread: a place at which it can be suspended.
    void waitWhileSuspended();

private:
    pthread_t handle{};
    pid_t threadId = 0;     ///< The system's number of the thread; 0: there is none.
    bool suspended = false; ///< Written by the creator alone, under `gateMutex`.
    Function function = nullptr;
    int priority = 0;

    std::mutex gateMutex; ///< Guards `suspended` and `threadId`.
    std::condition_variable gate;

    static void* enter(void* worker);
    bool create();
    void setSuspended(bool newSuspended);
};

} // namespace tarnwick
