#include "gui/SplashScreen.h"

#include "core/CrashReport.h"
#include "core/FrameTimer.h"
#include "core/LocationStack.h"
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
    if (state.running || !GLWindow::lend(stop)) {
        return;
    }
    state.previousListener = GLWindow::getEventListener();
    GLWindow::setEventListener(nullptr);
    state.running = true;
    state.thread = std::make_unique<WorkerThread>(threadFunction);
    state.threadReady = !state.thread->exists(); // a thread that the system refuses is not waited for
    state.thread->start();
    while (!state.threadReady) {
        CrashReport::endIfAsked();
        std::this_thread::sleep_for(readyPause);
    }
}

void SplashScreen::stop() {
    TARNWICK_LOCATION("SplashScreen::stop");
    if (!state.running) {
        return;
    }
    state.running = false;
    state.thread.reset(); // waits for its end
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
    if (state.renderingContext != nullptr) {
        animate();
    }
    state.threadReady = true; // without a context there is nothing to wait for
    GLWindow::deleteLentContext(state.renderingContext);
    state.renderingContext = nullptr;
}

/// The pictures live in here: they must go while their context is still current.
void SplashScreen::animate() {
    TARNWICK_LOCATION("SplashScreen::animate");
    SplashPicture picture;
    FrameTimer timer;
    state.threadReady = true;
    while (state.running) {
        timer.update();
        picture.advance(timer.getSeconds());
        picture.draw(GLWindow::getClientWidth(), GLWindow::getClientHeight());
        GLWindow::swapBuffers();
        std::this_thread::sleep_for(framePause);
    }
}

} // namespace tarnwick
