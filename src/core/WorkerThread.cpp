#include "core/WorkerThread.h"

#include "core/CrashReport.h"
#include "core/LocationStack.h"

#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace tarnwick {

namespace {

/// Bytes that the thread's own functions need at most.
constexpr std::size_t ownStack = 65535;

/// Bytes for what the thread calls: a GL driver may compile its shaders here. Only what is touched takes
/// memory.
constexpr std::size_t libraryStack = 8'388'608;

/// Nice values of the priorities -2 to 2.
constexpr std::array<int, 5> niceValues{10, 5, 0, -5, -10};
constexpr int lowestPriority = -2;
constexpr int highestPriority = 2;

/// The signals that may be delivered to any thread: they are for the main thread, whose locations the crash
/// report lists. A fault still is reported by the thread that made it.
sigset_t signalsOfMainThread() {
    TARNWICK_LOCATION("WorkerThread::signalsOfMainThread");
    sigset_t signals;
    sigfillset(&signals);
    for (const int fault : {SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGSEGV, SIGTRAP}) {
        sigdelset(&signals, fault);
    }
    return signals;
}

} // namespace

WorkerThread::WorkerThread(Function threadFunction)
    : suspended(true)
    , function(threadFunction) {
    TARNWICK_LOCATION("WorkerThread::WorkerThread");
    if (create()) {
        std::unique_lock lock(gateMutex);
        gate.wait(lock, [this] { return threadId != 0; });
    }
}

WorkerThread::~WorkerThread() {
    TARNWICK_LOCATION("WorkerThread::~WorkerThread");
    if (threadId == 0) {
        return;
    }
    setSuspended(false);
    pthread_join(handle, nullptr);
}

void WorkerThread::start() {
    TARNWICK_LOCATION("WorkerThread::start");
    if (threadId != 0 && function != nullptr && suspended) {
        setSuspended(false);
    }
}

void WorkerThread::suspend() {
    TARNWICK_LOCATION("WorkerThread::suspend");
    if (threadId != 0 && function != nullptr && !suspended) {
        setSuspended(true);
    }
}

void WorkerThread::setPriority(int newPriority) {
    TARNWICK_LOCATION("WorkerThread::setPriority");
    if (threadId == 0 || newPriority < lowestPriority || newPriority > highestPriority) {
        return;
    }
    const int niceValue = niceValues[static_cast<std::size_t>(newPriority - lowestPriority)];
    if (setpriority(PRIO_PROCESS, static_cast<id_t>(threadId), niceValue) == 0) { // of this thread alone
        priority = newPriority;
    }
}

void WorkerThread::waitWhileSuspended() {
    TARNWICK_LOCATION("WorkerThread::waitWhileSuspended");
    std::unique_lock lock(gateMutex);
    gate.wait(lock, [this] { return !suspended; });
}

// no location: the thread has no stack of them before
void* WorkerThread::enter(void* worker) {
    LocationStack::use(LocationStack::workerNames);
    TARNWICK_LOCATION("WorkerThread::enter");
    CrashReport::prepareWorker();
    auto& self = *static_cast<WorkerThread*>(worker);
    {
        const std::lock_guard lock(self.gateMutex);
        self.threadId = gettid();
    }
    self.gate.notify_all();
    self.waitWhileSuspended();
    if (self.function != nullptr) {
        self.function(self);
    }
    CrashReport::releaseWorker();
    return nullptr;
}

bool WorkerThread::create() {
    TARNWICK_LOCATION("WorkerThread::create");
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0) {
        return false;
    }
    const long pageSize = sysconf(_SC_PAGESIZE);
    const auto page = static_cast<std::size_t>(pageSize > 0 ? pageSize : 4096);
    const std::size_t bytes = ownStack + libraryStack;
    pthread_attr_setstacksize(&attributes, (bytes + page - 1) / page * page);

    const sigset_t blocked = signalsOfMainThread();
    sigset_t before;
    pthread_sigmask(SIG_BLOCK, &blocked, &before); // the new thread starts with the mask of this one
    const bool created = pthread_create(&handle, &attributes, enter, this) == 0;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);

    pthread_attr_destroy(&attributes);
    return created;
}

void WorkerThread::setSuspended(bool newSuspended) {
    TARNWICK_LOCATION("WorkerThread::setSuspended");
    {
        const std::lock_guard lock(gateMutex);
        suspended = newSuspended;
    }
    gate.notify_all();
}

} // namespace tarnwick
