#include "graphics/GLWindow.h"

#include "core/CrashReport.h"
#include "core/DataFiles.h"
#include "core/LocationStack.h"
#include "core/LongWork.h"
#include "graphics/GLWindowEventListener.h"
#include "graphics/PictureHead.h"

#include <GL/gl.h>
#include <SDL.h>
#include <SDL_image.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace tarnwick {

namespace {

constexpr std::int32_t firstWidth = 320; ///< Client pixels of a window before it gets its real size.
constexpr std::int32_t firstHeight = 240;
constexpr std::uint32_t mostSamples = 64; ///< Per pixel: no GL has more.
constexpr std::int32_t probeSize = 16;    ///< Client pixels of a window that only asks for a pixel format.
constexpr std::uint32_t placingMilliseconds = 60; ///< In which a desktop puts its frame round a new window.
constexpr std::uint32_t longestPlacing = 1000;    ///< Milliseconds that a slow desktop gets.
constexpr std::uint32_t placingPause = 5;         ///< Milliseconds between two looks.

void setHints() {
    TARNWICK_LOCATION("GLWindow::setHints");
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");           // the crash report has them
    SDL_SetHint(SDL_HINT_VIDEO_MINIMIZE_ON_FOCUS_LOSS, "0"); // `watchFocus` does it
    SDL_SetHint(SDL_HINT_MOUSE_AUTO_CAPTURE, "0");        // else moves outside arrive while a button is held
    SDL_SetHint(SDL_HINT_MOUSE_DOUBLE_CLICK_TIME, "500"); // milliseconds
    SDL_SetHint(SDL_HINT_MOUSE_DOUBLE_CLICK_RADIUS, "4"); // pixels
}

/// Whether the environment or the program itself asks for this SDL video driver.
bool driverAskedFor(const char* driver) {
    TARNWICK_LOCATION("GLWindow::driverAskedFor");
    const char* const asked = SDL_GetHint(SDL_HINT_VIDEODRIVER);
    return asked != nullptr && std::strstr(asked, driver) != nullptr;
}

bool driverIs(const char* driver) {
    TARNWICK_LOCATION("GLWindow::driverIs");
    const char* const current = SDL_GetCurrentVideoDriver();
    return current != nullptr && std::strcmp(current, driver) == 0;
}

/// Pumps within work that takes long. Within a tick no listener hears of keys and clicks; they are lost.
bool liveThroughWork(LongWork::Kind kind) {
    TARNWICK_LOCATION("GLWindow::liveThroughWork");
    GLWindowEventListener* const listener = GLWindow::getEventListener();
    if (kind == LongWork::Kind::tick) {
        GLWindow::setEventListener(nullptr);
    }
    GLWindow::run();
    if (kind == LongWork::Kind::tick && GLWindow::exists()) {
        GLWindow::setEventListener(listener);
    }
    return GLWindow::exists();
}

} // namespace

GLWindow::State GLWindow::state;

void GLWindow::createWindow(const std::string& title, std::int32_t clientWidth, std::int32_t clientHeight) {
    TARNWICK_LOCATION("GLWindow::createWindow");
    if (state.open) {
        return;
    }
    setHints();
    setenv("SDL_VIDEO_X11_WMCLASS", windowClassName, 0);
    SDL_ClearError(); // what `fail` tells is of this window
    if (!startVideo()) {
        fail("Unable to create window: couldn't get program handle.", "Game error");
    }
    if (SDL_GL_LoadLibrary(nullptr) != 0) {
        fail("Unable to create window: couldn't register window class.", "Error");
    }
    SDL_GL_UnloadLibrary(); // every window loads it for itself
    state.windowHandle = createPlatformWindow(firstWidth, firstHeight, 1);
    if (state.windowHandle == nullptr) {
        fail("Unable to create window.", "Error");
    }
    if ((SDL_GetWindowFlags(state.windowHandle) & SDL_WINDOW_OPENGL) == 0) {
        fail("Unable to create window: could not get the device context.", "Error");
    }
    state.antiAliasingMode = 1;
    state.renderingContext = SDL_GL_CreateContext(state.windowHandle);
    if (state.renderingContext == nullptr) {
        fail("Unable to create window. Could not create an OpenGL rendering context.", "Error");
    }
    state.vsyncWanted = true;
    openForEvents();
    setCursor(Cursor::arrow);
    showForTheFirstTime();
    center();
    setTitle(title);
    setClientSize(clientWidth, clientHeight);
}

void GLWindow::createOffscreen(std::int32_t clientWidth, std::int32_t clientHeight) {
    TARNWICK_LOCATION("GLWindow::createOffscreen");
    SDL_SetHint(SDL_HINT_VIDEODRIVER, "offscreen");
    createWindow(defaultTitle, clientWidth, clientHeight);
}

void GLWindow::createHeadless(std::int32_t clientWidth, std::int32_t clientHeight) {
    TARNWICK_LOCATION("GLWindow::createHeadless");
    if (state.open) {
        return;
    }
    setHints();
    SDL_InitSubSystem(SDL_INIT_EVENTS);
    state.antiAliasingMode = 1;
    openForEvents();
    state.clientWidth = clientWidth;
    state.clientHeight = clientHeight;
    state.restoredWidth = clientWidth;
    state.restoredHeight = clientHeight;
}

bool GLWindow::contextCurrent() {
    TARNWICK_LOCATION("GLWindow::contextCurrent");
    return SDL_GL_GetCurrentContext() != nullptr;
}

void GLWindow::close() {
    TARNWICK_LOCATION("GLWindow::close");
    if (!state.open || state.closing) {
        return;
    }
    if (state.endLending != nullptr) {
        state.endLending();
    }
    state.closing = true;
    if (state.eventListener != nullptr) {
        state.eventListener->windowClosed();
    }
    windowDestroyed();
}

/// Without a display SDL falls back to a driver that shows nothing: nobody wants to play on that unseen.
bool GLWindow::startVideo() {
    TARNWICK_LOCATION("GLWindow::startVideo");
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) {
        return false;
    }
    const bool unseen = driverIs("offscreen") || driverIs("dummy");
    if (unseen && !driverAskedFor(SDL_GetCurrentVideoDriver())) {
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
        SDL_SetError("No display to open a window on");
        return false;
    }
    return true;
}

/// Ends the program. A second line tells what SDL knows about the reason.
void GLWindow::fail(const char* text, const char* caption) {
    TARNWICK_LOCATION("GLWindow::fail");
    const std::string reason = SDL_GetError();
    const std::string lines = reason.empty() ? text : std::string(text) + "\n" + reason;
    std::fprintf(stderr, "%s: %s\n", caption, lines.c_str());
    if (onScreen()) {
        SDL_ShowSimpleMessageBox(SDL_MESSAGEBOX_ERROR, caption, lines.c_str(), nullptr);
    }
    std::exit(1);
}

/// Whether a message box could be seen. Without any video SDL still finds a way on most desktops.
bool GLWindow::onScreen() {
    TARNWICK_LOCATION("GLWindow::onScreen");
    if (state.open && state.windowHandle == nullptr) {
        return false;
    }
    if (SDL_GetCurrentVideoDriver() == nullptr) {
        return !driverAskedFor("offscreen") && !driverAskedFor("dummy") &&
               (SDL_getenv("DISPLAY") != nullptr || SDL_getenv("WAYLAND_DISPLAY") != nullptr);
    }
    return !driverIs("offscreen") && !driverIs("dummy");
}

bool GLWindow::offscreen() {
    TARNWICK_LOCATION("GLWindow::offscreen");
    return driverIs("offscreen");
}

/// The fixed pixel format, with `samples` per pixel. SDL keeps it for later windows.
void GLWindow::setPixelFormat(std::uint32_t samples, bool accumulation) {
    TARNWICK_LOCATION("GLWindow::setPixelFormat");
    constexpr SDL_GLattr colourBits[] = {SDL_GL_RED_SIZE, SDL_GL_GREEN_SIZE, SDL_GL_BLUE_SIZE,
                                         SDL_GL_ALPHA_SIZE};
    constexpr SDL_GLattr accumulationBits[] = {SDL_GL_ACCUM_RED_SIZE, SDL_GL_ACCUM_GREEN_SIZE,
                                               SDL_GL_ACCUM_BLUE_SIZE, SDL_GL_ACCUM_ALPHA_SIZE};
    for (const SDL_GLattr attribute : colourBits) {
        SDL_GL_SetAttribute(attribute, 8);
    }
    for (const SDL_GLattr attribute : accumulationBits) {
        SDL_GL_SetAttribute(attribute, accumulation ? 8 : 0);
    }
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 24);
    SDL_GL_SetAttribute(SDL_GL_STENCIL_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_MULTISAMPLEBUFFERS, samples > 1 ? 1 : 0);
    SDL_GL_SetAttribute(SDL_GL_MULTISAMPLESAMPLES, samples > 1 ? static_cast<int>(samples) : 0);
}

/// A window that is not shown yet; null if the platform has none with this pixel format. Few platforms still
/// have an accumulation buffer, so it is asked for first and then done without.
SDL_Window* GLWindow::createPlatformWindow(std::int32_t width, std::int32_t height, std::uint32_t samples) {
    TARNWICK_LOCATION("GLWindow::createPlatformWindow");
    constexpr Uint32 flags = SDL_WINDOW_OPENGL | SDL_WINDOW_HIDDEN | SDL_WINDOW_RESIZABLE;
    for (const bool accumulation : {true, false}) {
        setPixelFormat(samples, accumulation);
        SDL_Window* const window = SDL_CreateWindow(defaultTitle, SDL_WINDOWPOS_UNDEFINED,
                                                    SDL_WINDOWPOS_UNDEFINED, width, height, flags);
        CrashReport::endIfAsked();
        if (window != nullptr) {
            keepConnection(window);
            return window;
        }
    }
    return nullptr;
}

/// The bookkeeping of a window that was just made.
void GLWindow::openForEvents() {
    TARNWICK_LOCATION("GLWindow::openForEvents");
    state.open = true;
    LongWork::setWatch(liveThroughWork);
    state.title = defaultTitle;
    state.mouseX = 0;
    state.mouseY = 0;
    state.mouseButtons = 0;
    state.headlessCorner = {};
    state.lastKeyPressed = 0;
    state.heldKey = {};
    state.keysDown = {};
}

void GLWindow::showForTheFirstTime() {
    TARNWICK_LOCATION("GLWindow::showForTheFirstTime");
    state.resizeable = true;
    state.fullscreen = false;
    state.repaintRequested = false;
    state.focusSeen = false;
    state.focusLossTold = false;
    SDL_GetWindowSize(state.windowHandle, &state.clientWidth, &state.clientHeight);
    state.restoredWidth = state.clientWidth;
    state.restoredHeight = state.clientHeight;
    setIcon();
    enableVsync(state.vsyncWanted);
    resetViewport();
    glBeginDraw2d();
    SDL_StartTextInput(); // by itself on only where SDL counts on a real keyboard
    mapWindow();
    SDL_RaiseWindow(state.windowHandle);
    pumpUntilPlaced();
}

/// The data's icon; a window without one has the desktop's own.
void GLWindow::setIcon() {
    TARNWICK_LOCATION("GLWindow::setIcon");
    const std::string path = DataFiles::find("gfx\\icon_48.png");
    SDL_Surface* const icon = PictureHead(path, false).plausible() ? IMG_Load(path.c_str()) : nullptr;
    if (icon != nullptr) {
        SDL_SetWindowIcon(state.windowHandle, icon);
        SDL_FreeSurface(icon);
    }
}

/// Waits until the desktop has put its frame round the window. Only then is its place known, and can be set:
/// set earlier, the desktop takes it for the frame's, and a window would walk with each re-creation.
void GLWindow::pumpUntilPlaced() {
    TARNWICK_LOCATION("GLWindow::pumpUntilPlaced");
    if (SDL_GetWindowBordersSize(state.windowHandle, nullptr, nullptr, nullptr, nullptr) != 0) {
        return; // a platform without frames
    }
    for (std::uint32_t waited = 0; waited < placingMilliseconds || (waited < longestPlacing && !placeKnown());
         waited += placingPause) {
        CrashReport::endIfAsked();
        SDL_PumpEvents();
        SDL_Delay(placingPause);
    }
    SDL_PumpEvents();
}

void GLWindow::windowDestroyed() {
    TARNWICK_LOCATION("GLWindow::windowDestroyed");
    const Uint32 subsystem = state.windowHandle != nullptr ? SDL_INIT_VIDEO : SDL_INIT_EVENTS;
    releasePlatformWindow(); // full screen ends with its window: no display mode was changed
    state.open = false;
    state.closing = false;
    state.eventListener = nullptr;
    state.fullscreen = false;
    state.resizeable = false;
    state.focused = false;
    state.minimised = false;
    state.swapControl = false;
    state.clientWidth = 0;
    state.clientHeight = 0;
    state.restoredWidth = 0;
    state.restoredHeight = 0;
    state.cursorType = Cursor::arrow;
    state.title.clear();
    SDL_QuitSubSystem(subsystem);
    if (SDL_WasInit(SDL_INIT_VIDEO) == 0) {
        state.connection = -1;
    }
}

void GLWindow::releasePlatformWindow() {
    TARNWICK_LOCATION("GLWindow::releasePlatformWindow");
    if (state.windowHandle == nullptr) {
        return;
    }
    SDL_GL_DeleteContext(state.renderingContext);
    SDL_FreeCursor(state.arrowCursor);
    SDL_FreeCursor(state.crossCursor);
    SDL_DestroyWindow(state.windowHandle);
    state.renderingContext = nullptr;
    state.arrowCursor = nullptr;
    state.crossCursor = nullptr;
    state.windowHandle = nullptr;
}

bool GLWindow::setAntiAliasingMode(std::uint32_t samples) {
    TARNWICK_LOCATION("GLWindow::setAntiAliasingMode");
    if (!state.open) {
        return false;
    }
    const std::uint32_t wanted = std::max(samples, std::uint32_t{1});
    const std::uint32_t previous = state.antiAliasingMode;
    if (wanted == previous) {
        return true;
    }
    if (wanted < 2) {
        disableWindowAA();
        return true;
    }
    if (enableWindowAA(wanted)) {
        return true;
    }
    if (previous != 1) {
        enableWindowAA(previous);
    }
    return false;
}

bool GLWindow::antiAliasingModeAvailable(std::uint32_t samples) {
    TARNWICK_LOCATION("GLWindow::antiAliasingModeAvailable");
    if (samples < 2) {
        return true;
    }
    if (samples > mostSamples) {
        return false;
    }
    std::string extension = "GL_ARB_multisample";
    if (!extensionSupported(extension)) {
        return false;
    }
    SDL_Window* const probe = createPlatformWindow(probeSize, probeSize, samples);
    setPixelFormat(state.antiAliasingMode, false);
    if (probe == nullptr) {
        return false;
    }
    SDL_DestroyWindow(probe);
    return true;
}

bool GLWindow::enableWindowAA(std::uint32_t samples) {
    TARNWICK_LOCATION("GLWindow::enableWindowAA");
    return antiAliasingModeAvailable(samples) && recreate(samples);
}

void GLWindow::disableWindowAA() {
    TARNWICK_LOCATION("GLWindow::disableWindowAA");
    recreate(1);
}

/// A window's samples are chosen once, so another number takes another window. False if it could only be had
/// without multisampling.
bool GLWindow::recreate(std::uint32_t samples) {
    TARNWICK_LOCATION("GLWindow::recreate");
    const std::string title = getTitle();
    const bool fullscreen = state.fullscreen;
    const bool resizeable = isResizeable();
    const Cursor cursorType = state.cursorType;
    const std::int32_t width = getClientWidth();
    const std::int32_t height = getClientHeight();
    const std::int32_t x = getX();
    const std::int32_t y = getY();
    if (state.endLending != nullptr) {
        state.endLending(); // before the listener is kept: who has the window on loan gives it back with it
    }
    GLWindowEventListener* const listener = state.eventListener;
    state.eventListener = nullptr; // nothing hears the destruction
    SDL_InitSubSystem(SDL_INIT_VIDEO);
    close();

    reopen(samples, width, height);
    setPosition(x, y);
    setClientSize(width, height);
    setTitle(title);
    setCursor(cursorType);
    state.eventListener = listener;
    setResizeable(resizeable);
    if (fullscreen) { // a window keeps its place and its frame: leaving full screen would change both
        setFullscreen(true, width, height);
    }
    return state.antiAliasingMode == samples;
}

/// A window with the wanted samples, else one without multisampling, shown in its size; takes over the
/// caller's hold on SDL's video.
void GLWindow::reopen(std::uint32_t samples, std::int32_t width, std::int32_t height) {
    TARNWICK_LOCATION("GLWindow::reopen");
    if (!openWithSamples(samples, width, height) && !openWithSamples(1, width, height)) {
        fail("Unable to create window.", "Error");
    }
    if (state.antiAliasingMode > 1) {
        glEnable(GL_MULTISAMPLE);
    } else {
        glDisable(GL_MULTISAMPLE);
    }
    state.open = true;
    showForTheFirstTime();
}

/// A driver may promise samples and have none: the GL itself is asked.
bool GLWindow::openWithSamples(std::uint32_t samples, std::int32_t width, std::int32_t height) {
    TARNWICK_LOCATION("GLWindow::openWithSamples");
    state.windowHandle = createPlatformWindow(width, height, samples);
    if (state.windowHandle == nullptr) {
        return false;
    }
    state.renderingContext = SDL_GL_CreateContext(state.windowHandle);
    CrashReport::endIfAsked();
    GLint present = 0;
    glGetIntegerv(GL_SAMPLES, &present);
    const bool enough = samples == 1 || static_cast<std::uint32_t>(present) >= samples;
    if (state.renderingContext == nullptr || !enough) {
        releasePlatformWindow();
        return false;
    }
    state.antiAliasingMode = samples;
    return true;
}

void GLWindow::enableVsync(bool flag) {
    TARNWICK_LOCATION("GLWindow::enableVsync");
    state.vsyncWanted = flag;
    state.swapControl = contextCurrent() && SDL_GL_SetSwapInterval(flag ? 1 : 0) == 0;
}

bool GLWindow::vsyncEnabled() {
    TARNWICK_LOCATION("GLWindow::vsyncEnabled");
    return !state.swapControl || SDL_GL_GetSwapInterval() > 0;
}

} // namespace tarnwick
