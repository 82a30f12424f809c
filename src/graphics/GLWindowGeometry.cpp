// `GLWindow`: place, size, mode and cursor of the window.

#include "core/LocationStack.h"
#include "graphics/GLWindow.h"
#include "graphics/GLWindowEventListener.h"

#include <GL/gl.h>
#include <SDL.h>

#include <algorithm>
#include <array>
#include <vector>

namespace tarnwick {

namespace {

/// Where an absolute move to `target` ends on a desktop of `size` pixels: the move is told in 65535ths of the
/// desktop, in single precision, cut to whole numbers, and comes out one pixel short of the middle.
/// `getClientCenterX` counts on it.
std::int32_t absoluteMove(std::int32_t target, std::int32_t size) {
    TARNWICK_LOCATION("GLWindow::absoluteMove");
    const auto scaled =
        static_cast<std::int64_t>(static_cast<float>(target) * (65535.0f / static_cast<float>(size)));
    return static_cast<std::int32_t>(scaled * size / 65536);
}

struct Borders {
    int top = 0;
    int left = 0;
    int bottom = 0;
    int right = 0;
};

/// The desktop's frame; all 0 where there is none.
Borders bordersOf(SDL_Window* window) {
    TARNWICK_LOCATION("GLWindow::bordersOf");
    Borders borders;
    if (window == nullptr ||
        SDL_GetWindowBordersSize(window, &borders.top, &borders.left, &borders.bottom, &borders.right) != 0) {
        return {};
    }
    return borders;
}

} // namespace

void GLWindow::setTitle(const std::string& text) {
    TARNWICK_LOCATION("GLWindow::setTitle");
    if (!state.open) {
        return;
    }
    state.title = text;
    if (state.windowHandle != nullptr) {
        SDL_SetWindowTitle(state.windowHandle, text.c_str());
    }
}

/// Screen position of the client area's top left pixel.
std::array<std::int32_t, 2> GLWindow::clientCorner() {
    TARNWICK_LOCATION("GLWindow::clientCorner");
    std::array<std::int32_t, 2> corner = state.headlessCorner;
    if (state.windowHandle != nullptr) {
        SDL_GetWindowPosition(state.windowHandle, &corner[0], &corner[1]);
    }
    return corner;
}

/// The displays of the desktop; none without video.
std::vector<GLWindow::Display> GLWindow::displays() {
    TARNWICK_LOCATION("GLWindow::displays");
    if (state.open && state.windowHandle == nullptr) {
        if (!state.headlessDisplays.empty()) {
            return state.headlessDisplays;
        }
        return {{0, 0, state.clientWidth, state.clientHeight}};
    }
    std::vector<Display> found;
    const int count = SDL_GetNumVideoDisplays();
    for (int i = 0; i < count; ++i) {
        SDL_Rect bounds{};
        if (SDL_GetDisplayBounds(i, &bounds) == 0) {
            found.push_back({bounds.x, bounds.y, bounds.w, bounds.h});
        }
    }
    return found;
}

/// The display that the middle of the window is on, else the first one; empty without any.
GLWindow::Display GLWindow::displayOfWindow() {
    TARNWICK_LOCATION("GLWindow::displayOfWindow");
    const std::vector<Display> all = displays();
    const auto [left, top] = clientCorner();
    const std::int32_t x = left + getClientWidth() / 2;
    const std::int32_t y = top + getClientHeight() / 2;
    for (const Display& display : all) {
        if (x >= display.x && x < display.x + display.width && y >= display.y &&
            y < display.y + display.height) {
            return display;
        }
    }
    return all.empty() ? Display{} : all.front();
}

/// What the frame adds to the client area's width and height.
std::array<std::int32_t, 2> GLWindow::frameSize() {
    TARNWICK_LOCATION("GLWindow::frameSize");
    const Borders borders = bordersOf(state.windowHandle);
    return {borders.left + borders.right, borders.top + borders.bottom};
}

std::int32_t GLWindow::getX() {
    TARNWICK_LOCATION("GLWindow::getX");
    return clientCorner()[0] - bordersOf(state.windowHandle).left;
}

std::int32_t GLWindow::getY() {
    TARNWICK_LOCATION("GLWindow::getY");
    return clientCorner()[1] - bordersOf(state.windowHandle).top;
}

void GLWindow::setPosition(std::int32_t x, std::int32_t y) {
    TARNWICK_LOCATION("GLWindow::setPosition");
    if (state.windowHandle != nullptr) {
        const Borders borders = bordersOf(state.windowHandle);
        SDL_SetWindowPosition(state.windowHandle, x + borders.left, y + borders.top);
    } else if (state.open) {
        state.headlessCorner = {x, y};
    }
}

std::int32_t GLWindow::getWidth() {
    TARNWICK_LOCATION("GLWindow::getWidth");
    return state.restoredWidth + frameSize()[0];
}

std::int32_t GLWindow::getHeight() {
    TARNWICK_LOCATION("GLWindow::getHeight");
    return state.restoredHeight + frameSize()[1];
}

void GLWindow::setSize(std::int32_t width, std::int32_t height) {
    TARNWICK_LOCATION("GLWindow::setSize");
    if (width < 1 || height < 1 || !state.open) {
        return;
    }
    const auto [frameWidth, frameHeight] = frameSize();
    resizePlatformWindow(std::max(width - frameWidth, 1), std::max(height - frameHeight, 1));
    resetViewport();
}

std::int32_t GLWindow::getClientWidth() {
    TARNWICK_LOCATION("GLWindow::getClientWidth");
    if (state.windowHandle == nullptr) {
        return state.clientWidth;
    }
    int width = 0;
    SDL_GetWindowSize(state.windowHandle, &width, nullptr);
    return width;
}

std::int32_t GLWindow::getClientHeight() {
    TARNWICK_LOCATION("GLWindow::getClientHeight");
    if (state.windowHandle == nullptr) {
        return state.clientHeight;
    }
    int height = 0;
    SDL_GetWindowSize(state.windowHandle, nullptr, &height);
    return height;
}

void GLWindow::setClientSize(std::int32_t width, std::int32_t height) {
    TARNWICK_LOCATION("GLWindow::setClientSize");
    if (width < 1 || height < 1 || !state.open) {
        return;
    }
    resizePlatformWindow(width, height);
    glViewport(0, 0, width, height);
}

/// Gives the client area a new size and tells the listener. The `offscreen` driver keeps a surface of the
/// size of creation, beyond which nothing is drawn: there another window takes over the GL context, with all
/// that it holds.
void GLWindow::resizePlatformWindow(std::int32_t width, std::int32_t height) {
    TARNWICK_LOCATION("GLWindow::resizePlatformWindow");
    if (state.windowHandle == nullptr) {
        clientAreaResized(width, height);
        return;
    }
    const bool sizeStays = width == getClientWidth() && height == getClientHeight();
    SDL_Window* const larger =
        offscreen() && !sizeStays ? createPlatformWindow(width, height, state.antiAliasingMode) : nullptr;
    if (larger == nullptr) {
        SDL_SetWindowSize(state.windowHandle, width, height);
    } else {
        const auto [x, y] = clientCorner();
        SDL_SetWindowPosition(larger, x, y);
        SDL_SetWindowTitle(larger, state.title.c_str());
        SDL_GL_MakeCurrent(larger, state.renderingContext);
        SDL_DestroyWindow(state.windowHandle);
        state.windowHandle = larger;
        SDL_ShowWindow(larger);
    }
    clientAreaResized(getClientWidth(), getClientHeight());
}

/// Drops what repeats the size that the listener knows.
void GLWindow::clientAreaResized(std::int32_t width, std::int32_t height) {
    TARNWICK_LOCATION("GLWindow::clientAreaResized");
    if (width == state.clientWidth && height == state.clientHeight) {
        return;
    }
    state.clientWidth = width;
    state.clientHeight = height;
    if (!isMaximised()) {
        state.restoredWidth = width;
        state.restoredHeight = height;
    }
    if (state.eventListener != nullptr) {
        state.eventListener->windowResized();
    }
    resetViewport();
}

void GLWindow::resetViewport() {
    TARNWICK_LOCATION("GLWindow::resetViewport");
    glViewport(0, 0, getClientWidth(), getClientHeight());
}

std::int32_t GLWindow::getClientCenterX() {
    TARNWICK_LOCATION("GLWindow::getClientCenterX");
    return clientCorner()[0] - 1 + getClientWidth() / 2;
}

std::int32_t GLWindow::getClientCenterY() {
    TARNWICK_LOCATION("GLWindow::getClientCenterY");
    return clientCorner()[1] - 1 + getClientHeight() / 2;
}

std::int32_t GLWindow::getScreenWidth() {
    TARNWICK_LOCATION("GLWindow::getScreenWidth");
    return displayOfWindow().width;
}

std::int32_t GLWindow::getScreenHeight() {
    TARNWICK_LOCATION("GLWindow::getScreenHeight");
    return displayOfWindow().height;
}

void GLWindow::center() {
    TARNWICK_LOCATION("GLWindow::center");
    const Display display = displayOfWindow();
    setPosition(display.x + display.width / 2 - getWidth() / 2,
                display.y + display.height / 2 - getHeight() / 2);
}

bool GLWindow::isMinimised() {
    TARNWICK_LOCATION("GLWindow::isMinimised");
    return state.windowHandle != nullptr
               ? (SDL_GetWindowFlags(state.windowHandle) & SDL_WINDOW_MINIMIZED) != 0
               : state.minimised;
}

bool GLWindow::isMaximised() {
    TARNWICK_LOCATION("GLWindow::isMaximised");
    return state.windowHandle != nullptr &&
           (SDL_GetWindowFlags(state.windowHandle) & SDL_WINDOW_MAXIMIZED) != 0;
}

bool GLWindow::hasFocus() {
    TARNWICK_LOCATION("GLWindow::hasFocus");
    return state.windowHandle != nullptr
               ? (SDL_GetWindowFlags(state.windowHandle) & SDL_WINDOW_INPUT_FOCUS) != 0
               : state.focused;
}

void GLWindow::minimize() {
    TARNWICK_LOCATION("GLWindow::minimize");
    if (state.windowHandle != nullptr) {
        SDL_MinimizeWindow(state.windowHandle);
    } else {
        state.minimised = state.open;
    }
}

void GLWindow::maximize() {
    TARNWICK_LOCATION("GLWindow::maximize");
    if (state.windowHandle != nullptr) {
        SDL_MaximizeWindow(state.windowHandle);
    }
}

void GLWindow::restore() {
    TARNWICK_LOCATION("GLWindow::restore");
    if (state.windowHandle != nullptr) {
        SDL_RestoreWindow(state.windowHandle);
    } else {
        state.minimised = false;
    }
}

void GLWindow::giveFocous() {
    TARNWICK_LOCATION("GLWindow::giveFocous");
    if (state.windowHandle != nullptr) {
        SDL_RaiseWindow(state.windowHandle);
    }
}

void GLWindow::setResizeable(bool flag) {
    TARNWICK_LOCATION("GLWindow::setResizeable");
    if (!state.open) {
        return;
    }
    state.resizeable = flag;
    if (state.windowHandle != nullptr) {
        SDL_SetWindowResizable(state.windowHandle, flag ? SDL_TRUE : SDL_FALSE);
    }
}

bool GLWindow::isResizeable() {
    TARNWICK_LOCATION("GLWindow::isResizeable");
    return state.resizeable && !state.fullscreen;
}

void GLWindow::setFullscreen(bool flag, std::int32_t width, std::int32_t height) {
    TARNWICK_LOCATION("GLWindow::setFullscreen");
    if (state.windowHandle == nullptr) {
        return;
    }
    const Uint32 mode = flag ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0;
    const bool changed = offscreen() || SDL_SetWindowFullscreen(state.windowHandle, mode) == 0;
    if (!flag) {
        if (!changed) {
            return;
        }
        state.fullscreen = false;
        setResizeable(true);
        pumpUntilPlaced();
        setClientSize(width, height);
        center();
        return;
    }
    showCursor(Cursor::arrow); // whatever the outcome; the type that was set stays in mind
    if (!changed) {
        setClientSize(width, height);
        return;
    }
    state.fullscreen = true;
    if (offscreen()) {
        setPosition(0, 0);
        resizePlatformWindow(getScreenWidth(), getScreenHeight());
    }
    clientAreaResized(getClientWidth(), getClientHeight());
    resetViewport();
}

void GLWindow::setCursor(Cursor cursor) {
    TARNWICK_LOCATION("GLWindow::setCursor");
    if (!state.open || cursor < Cursor::none || cursor > Cursor::cross) {
        return;
    }
    state.cursorType = cursor;
    showCursor(cursor);
}

void GLWindow::showCursor(Cursor cursor) {
    TARNWICK_LOCATION("GLWindow::showCursor");
    if (state.windowHandle == nullptr) {
        return;
    }
    if (cursor == Cursor::none) {
        SDL_ShowCursor(SDL_DISABLE);
        return;
    }
    const bool arrow = cursor == Cursor::arrow;
    SDL_Cursor*& picture = arrow ? state.arrowCursor : state.crossCursor;
    if (picture == nullptr) {
        picture = SDL_CreateSystemCursor(arrow ? SDL_SYSTEM_CURSOR_ARROW : SDL_SYSTEM_CURSOR_CROSSHAIR);
    }
    SDL_SetCursor(picture);
    SDL_ShowCursor(SDL_ENABLE);
}

std::int32_t GLWindow::getMouseScreenX() {
    TARNWICK_LOCATION("GLWindow::getMouseScreenX");
    if (state.windowHandle == nullptr) {
        return state.headlessCorner[0] + static_cast<std::int32_t>(state.mouseX);
    }
    int x = 0;
    if (offscreen()) { // its screen position is relative to the window
        SDL_GetMouseState(&x, nullptr);
        return x + clientCorner()[0];
    }
    SDL_GetGlobalMouseState(&x, nullptr);
    return x;
}

std::int32_t GLWindow::getMouseScreenY() {
    TARNWICK_LOCATION("GLWindow::getMouseScreenY");
    if (state.windowHandle == nullptr) {
        return state.headlessCorner[1] + static_cast<std::int32_t>(state.mouseY);
    }
    int y = 0;
    if (offscreen()) {
        SDL_GetMouseState(nullptr, &y);
        return y + clientCorner()[1];
    }
    SDL_GetGlobalMouseState(nullptr, &y);
    return y;
}

bool GLWindow::mouseInClientArea() {
    TARNWICK_LOCATION("GLWindow::mouseInClientArea");
    if (!state.open) {
        return false;
    }
    const auto [left, top] = clientCorner();
    const std::int32_t x = getMouseScreenX();
    const std::int32_t y = getMouseScreenY();
    return left < x && top < y && x <= left + getClientWidth() + 1 && y <= top + getClientHeight() + 1;
}

void GLWindow::centerMouse() {
    TARNWICK_LOCATION("GLWindow::centerMouse");
    const auto [left, top] = clientCorner();
    moveMouseTo(left + getClientWidth() / 2, top + getClientHeight() / 2);
}

void GLWindow::moveMouse(std::int32_t dx, std::int32_t dy) {
    TARNWICK_LOCATION("GLWindow::moveMouse");
    moveMouseTo(getMouseScreenX() + dx, getMouseScreenY() + dy);
}

void GLWindow::moveMouseTo(std::int32_t screenX, std::int32_t screenY) {
    TARNWICK_LOCATION("GLWindow::moveMouseTo");
    const std::vector<Display> all = displays();
    if (!state.open || all.empty()) {
        return;
    }
    std::array<std::int32_t, 2> first{all.front().x, all.front().y}; // of the desktop, which spans them all
    std::array<std::int32_t, 2> end = first;
    for (const Display& display : all) {
        first = {std::min(first[0], display.x), std::min(first[1], display.y)};
        end = {std::max(end[0], display.x + display.width), std::max(end[1], display.y + display.height)};
    }
    const std::int32_t width = end[0] - first[0];
    const std::int32_t height = end[1] - first[1];
    if (width < 1 || height < 1) {
        return;
    }
    const std::int32_t x = first[0] + absoluteMove(std::clamp(screenX - first[0], 0, width), width);
    const std::int32_t y = first[1] + absoluteMove(std::clamp(screenY - first[1], 0, height), height);
    const auto [left, top] = clientCorner();
    if (state.windowHandle == nullptr) {
        state.mouseX = static_cast<std::uint32_t>(x - left);
        state.mouseY = static_cast<std::uint32_t>(y - top);
        return;
    }
    SDL_WarpMouseInWindow(state.windowHandle, x - left, y - top);
}

void GLWindow::restrictMouse(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) {
    TARNWICK_LOCATION("GLWindow::restrictMouse");
    if (state.windowHandle == nullptr) {
        return;
    }
    const auto [left, top] = clientCorner();
    const SDL_Rect rectangle{x - left, y - top, width, height};
    SDL_SetWindowMouseRect(state.windowHandle, &rectangle);
    SDL_SetWindowMouseGrab(state.windowHandle, SDL_TRUE); // else the rectangle does not hold
}

void GLWindow::unRestrictMouse() {
    TARNWICK_LOCATION("GLWindow::unRestrictMouse");
    if (state.windowHandle != nullptr) {
        SDL_SetWindowMouseRect(state.windowHandle, nullptr);
        SDL_SetWindowMouseGrab(state.windowHandle, SDL_FALSE);
    }
}

bool GLWindow::mouseButtonPressed(std::uint32_t button) {
    TARNWICK_LOCATION("GLWindow::mouseButtonPressed");
    if (button != 1 && button != 2 && button != 4) {
        return false;
    }
    if (state.windowHandle == nullptr || offscreen()) {
        return (state.mouseButtons & button) != 0;
    }
    const std::uint32_t pressed = SDL_GetGlobalMouseState(nullptr, nullptr);
    const std::uint32_t mask = button == 1   ? SDL_BUTTON_LMASK
                               : button == 2 ? SDL_BUTTON_RMASK
                                             : SDL_BUTTON_MMASK;
    return (pressed & mask) != 0;
}

} // namespace tarnwick
