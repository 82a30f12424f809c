#include "gui/SplashScreen.h"

#include "core/CrashReport.h"
#include "core/FrameTimer.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "core/WorkerThread.h"
#include "graphics/GLWindow.h"
#include "gui/SplashPicture.h"

#include <chrono>
#include <thread>

namespace tarnwick {

namespace {

constexpr std::chrono::milliseconds readyPause(5);  ///< Between two looks at `threadReady`.
constexpr std::chrono::milliseconds framePause(25); ///< Between two pictures: loading is the work to be done.

} // namespace

SplashScreen::State& SplashScreen::state = *new State;

void SplashScreen::run() {
    TARNWICK_LOCATION("SplashScreen::run");
    if (state.running || state.abandoned != nullptr || !GLWindow::lend(stop)) {
        return;
    }
    state.previousListener = GLWindow::getEventListener();
    GLWindow::setEventListener(nullptr);
    state.running = true;
    state.thread = std::make_unique<WorkerThread>(threadFunction);
    state.threadReady = !state.thread->exists(); // a thread that the system refuses is not waited for
    state.threadDone = !state.thread->exists();
    state.thread->start();
    if (!waitFor(state.threadReady, true)) {
        Log::print("\nThe splash was not ready within 10 seconds: loading goes on without it.");
        abandon();
    }
}

/// False if the thread does not set the flag in time. `hearsRequests` where the program may end meanwhile.
bool SplashScreen::waitFor(const std::atomic<bool>& flag, bool hearsRequests) {
    TARNWICK_LOCATION("SplashScreen::waitFor");
    for (std::uint32_t look = 0; !flag && look < state.looks; ++look) {
        if (hearsRequests) {
            CrashReport::endIfAsked();
        }
        std::this_thread::sleep_for(readyPause);
    }
    return flag;
}

void SplashScreen::stop() {
    TARNWICK_LOCATION("SplashScreen::stop");
    if (!state.running) {
        return;
    }
    state.running = false;
    if (!waitFor(state.threadDone, false)) {
        Log::print("\nThe splash did not end within 10 seconds: its thread is left alone.");
        abandon();
        return;
    }
    state.thread.reset();
    takeWindowBack();
}

/// The thread keeps what it has, and its own handle, for ever.
void SplashScreen::abandon() {
    TARNWICK_LOCATION("SplashScreen::abandon");
    state.abandoned = state.thread.release();
    state.running = false;
    takeWindowBack();
}

void SplashScreen::takeWindowBack() {
    TARNWICK_LOCATION("SplashScreen::takeWindowBack");
    GLWindow::takeBack();
    GLWindow::setEventListener(state.previousListener);
    state.previousListener = nullptr;
}

bool SplashScreen::isRunning() {
    TARNWICK_LOCATION("SplashScreen::isRunning");
    return state.running;
}

void SplashScreen::threadFunction(WorkerThread& /*self*/) {
    TARNWICK_LOCATION("SplashScreen::threadFunction");
    state.renderingContext = GLWindow::createLentContext();
    stopIfAbandoned();
    if (state.renderingContext != nullptr) {
        state.drawing();
        stopIfAbandoned();
    }
    state.threadReady = true; // without a context there is nothing to wait for
    GLWindow::deleteLentContext(state.renderingContext);
    state.renderingContext = nullptr;
    state.threadDone = true;
}

/// For the thread: the main thread has long gone on, and what the two would share is its own.
void SplashScreen::stopIfAbandoned() {
    TARNWICK_LOCATION("SplashScreen::stopIfAbandoned");
    while (state.abandoned != nullptr) {
        std::this_thread::sleep_for(std::chrono::hours(1));
    }
}

/// The pictures live in here: they must go while their context is still current.
void SplashScreen::animate() {
    TARNWICK_LOCATION("SplashScreen::animate");
    SplashPicture picture;
    FrameTimer timer;
    stopIfAbandoned();
    state.threadReady = true;
    while (state.running) {
        timer.update();
        picture.advance(timer.getSeconds());
        picture.draw(GLWindow::getClientWidth(), GLWindow::getClientHeight());
        GLWindow::swapBuffers();
        std::this_thread::sleep_for(framePause);
        stopIfAbandoned();
    }
    stopIfAbandoned(); // the pictures' entries are the main thread's now
}

} // namespace tarnwick
