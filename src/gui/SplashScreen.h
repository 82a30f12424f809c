#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

namespace tarnwick {

class GLWindowEventListener;
class WorkerThread;

/// An animated picture while the main thread loads: the one place where two threads run. The second one
/// draws, in a GL context of its own that shares nothing with the main one; each thread has its own textures,
/// and texture entries know theirs.
///
/// There are no locks. The two meet only where one waits for the other: `run` waits until the pictures are
/// read, `stop` until they are freed. In between the splash's thread touches nothing but its pictures and the
/// window, and the main thread everything but the window. Flags, written by one side and polled by the other,
/// are all that crosses.
///
/// No wait is without end. A thread that does not answer within 10 seconds, for it stands in the GL driver,
/// is left alone: the console tells, the game goes on, and no splash is shown again.
class SplashScreen {
public:
    SplashScreen() = delete;

    /// Shows the splash, and returns when it shows. The window has no listener from here to `stop`, so
    /// nothing reacts to input. Does nothing when the splash runs already; where no window shows pictures, or
    /// the platform cannot draw from a second thread, loading goes on without a splash.
    static void run();
    /// Ends the splash and puts the listener back. Does nothing when none runs.
    static void stop();
    static bool isRunning();

private:
    friend class ModuleReset;
    friend class SplashScreenTest;

    static constexpr std::uint32_t mostLooks = 2000; ///< At a flag of the thread: 10 seconds.

    struct State {
        GLWindowEventListener* previousListener = nullptr; ///< Not owned. The window's before `run`.
        void* renderingContext = nullptr;                  ///< The thread's own, of the platform.
        std::unique_ptr<WorkerThread> thread;              ///< Null when no splash runs.
        std::atomic<bool> running = false;                 ///< Tells the thread to go on.
        std::atomic<bool> threadReady = true;              ///< The thread has read its pictures.
        std::atomic<bool> threadDone = true;               ///< The thread has freed all it had.
        std::atomic<WorkerThread*> abandoned = nullptr;    ///< Not null: it is to touch nothing any more.
        void (*drawing)() = animate;                       ///< What the thread does; tests do other things.
        std::uint32_t looks = mostLooks;                   ///< Patience; tests have less.
    };
    /// Never destroyed: a program that ends in the middle of a splash would wait for the thread without end.
    static State& state;

    static void threadFunction(WorkerThread& self);
    static void animate();
    static bool waitFor(const std::atomic<bool>& flag, bool hearsRequests);
    static void abandon();
    static void takeWindowBack();
    static void stopIfAbandoned();
};

} // namespace tarnwick
