// `GLWindow`: what SDL leaves to the X server: the wait for a new window to appear, and the end of the
// connection.

#include "core/CrashReport.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "graphics/GLWindow.h"

#include <SDL.h>
#include <SDL_syswm.h>
#include <sys/socket.h>

#include <array>
#include <cstdio>

namespace tarnwick {

namespace {

constexpr std::uint32_t mappingMilliseconds = 10'000; ///< In which a desktop shows a new window.
constexpr std::uint32_t mappingPause = 2;             ///< Milliseconds between two looks.
constexpr std::uint32_t mappingRepeat = 500; ///< Milliseconds after which the desktop is asked again.
constexpr const char* notMapped = "\nThe desktop has not shown the window within 10 seconds.";

/// False where the window is none of an X server.
bool isOfXServer(SDL_Window* window, SDL_SysWMinfo& info) {
    TARNWICK_LOCATION("GLWindow::isOfXServer");
    SDL_VERSION(&info.version); // NOLINT(bugprone-assignment-in-if-condition): SDL's macro
    return SDL_GetWindowWMInfo(window, &info) == SDL_TRUE && info.subsystem == SDL_SYSWM_X11;
}

/// Whether the window manager is done with it: the window and the frame round it can be seen.
bool isMapped(const SDL_SysWMinfo& info) {
    TARNWICK_LOCATION("GLWindow::isMapped");
    XWindowAttributes attributes{};
    return XGetWindowAttributes(info.info.x11.display, info.info.x11.window, &attributes) != 0 &&
           attributes.map_state == IsViewable;
}

} // namespace

/// Whether SDL has heard where the desktop has put the window.
bool GLWindow::placeKnown() {
    TARNWICK_LOCATION("GLWindow::placeKnown");
    SDL_SysWMinfo info{};
    if (!isOfXServer(state.windowHandle, info)) {
        return true;
    }
    ::Display* const display = info.info.x11.display;
    XWindowAttributes attributes{};
    int x = 0;
    int y = 0;
    Window child = 0;
    if (XGetWindowAttributes(display, info.info.x11.window, &attributes) == 0 ||
        XTranslateCoordinates(display, info.info.x11.window, attributes.root, 0, 0, &x, &y, &child) == 0) {
        return true;
    }
    return clientCorner() == std::array<std::int32_t, 2>{x, y};
}

/// Lets `drop` know the way to the X server.
void GLWindow::keepConnection(SDL_Window* window) {
    TARNWICK_LOCATION("GLWindow::keepConnection");
    SDL_SysWMinfo info{};
    state.connection = isOfXServer(window, info) ? XConnectionNumber(info.info.x11.display) : -1;
}

/// Shows the window. SDL would wait for the desktop without end, and hear of nothing else meanwhile; it does
/// not wait for a window that is there already. The window manager is asked more than once, in case it was
/// just starting. A desktop that takes longer than all patience shows the window when it likes.
void GLWindow::mapWindow() {
    TARNWICK_LOCATION("GLWindow::mapWindow");
    SDL_SysWMinfo info{};
    if (!isOfXServer(state.windowHandle, info)) {
        SDL_ShowWindow(state.windowHandle);
        return;
    }
    for (std::uint32_t waited = 0; waited < mappingMilliseconds; waited += mappingPause) {
        CrashReport::endIfAsked();
        if (waited % mappingRepeat == 0) {
            XMapRaised(info.info.x11.display, info.info.x11.window);
        }
        if (isMapped(info)) {
            SDL_ShowWindow(state.windowHandle);
            return;
        }
        SDL_Delay(mappingPause);
    }
    std::fprintf(stderr, "%s\n", notMapped + 1);
    Log::print(notMapped);
}

// no location: runs in a signal handler
bool GLWindow::drop() {
    return state.connection >= 0 && shutdown(state.connection, SHUT_RDWR) == 0;
}

} // namespace tarnwick
