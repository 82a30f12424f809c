// `GLWindow`: the window in the hands of another thread.

#include "core/LocationStack.h"
#include "graphics/GLWindow.h"

#include <SDL.h>

namespace tarnwick {

namespace {

constexpr std::int32_t stageSize = 16; ///< Client pixels of the unseen window: nothing is looked at there.

} // namespace

bool GLWindow::lend(void (*endLending)()) {
    TARNWICK_LOCATION("GLWindow::lend");
    if (state.windowHandle == nullptr || state.stageWindow != nullptr) {
        return false;
    }
    // Samples and all: a context goes only to windows of the pixel format that it was made for.
    state.stageWindow = createPlatformWindow(stageSize, stageSize, state.antiAliasingMode);
    if (state.stageWindow == nullptr) {
        return false;
    }
    if (SDL_GL_MakeCurrent(state.stageWindow, state.renderingContext) != 0) {
        SDL_DestroyWindow(state.stageWindow);
        state.stageWindow = nullptr;
        SDL_GL_MakeCurrent(state.windowHandle, state.renderingContext);
        return false;
    }
    state.endLending = endLending;
    return true;
}

void GLWindow::takeBack() {
    TARNWICK_LOCATION("GLWindow::takeBack");
    if (state.stageWindow == nullptr) {
        return;
    }
    SDL_GL_MakeCurrent(state.windowHandle, state.renderingContext);
    SDL_DestroyWindow(state.stageWindow);
    state.stageWindow = nullptr;
    state.endLending = nullptr;
}

void* GLWindow::createLentContext() {
    TARNWICK_LOCATION("GLWindow::createLentContext");
    return SDL_GL_CreateContext(state.windowHandle);
}

void GLWindow::deleteLentContext(void* context) {
    TARNWICK_LOCATION("GLWindow::deleteLentContext");
    if (context != nullptr) {
        SDL_GL_MakeCurrent(state.windowHandle, nullptr);
        SDL_GL_DeleteContext(context);
    }
    SDL_TLSCleanup(); // what SDL keeps for a thread that it did not make
}

} // namespace tarnwick
