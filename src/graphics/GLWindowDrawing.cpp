// `GLWindow`: the set-ups on which all other drawing relies, and what the GL can do.

#include "core/FrameTimer.h"
#include "core/LocationStack.h"
#include "core/Strings.h"
#include "graphics/GLWindow.h"

#include <GL/gl.h>
#include <GL/glu.h>
#include <SDL.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace tarnwick {

namespace {

constexpr float fullTurn = 6.2831855f; ///< Radians.
constexpr float longestFade = 10.0f;   ///< Seconds.
constexpr GLbitfield allAttributes = 0xFFFFF;
constexpr GLbitfield allClientAttributes = 0xFFFFFFFF;

void fadeQuad(float width, float height, float alpha) {
    TARNWICK_LOCATION("GLWindow::fadeQuad");
    glColor4f(0.0f, 0.0f, 0.0f, alpha);
    glBegin(GL_QUADS);
    glVertex2f(0.0f, 0.0f);
    glVertex2f(width, 0.0f);
    glVertex2f(width, height);
    glVertex2f(0.0f, height);
    glEnd();
}

/// The names of the extensions; empty without a context.
std::string extensionText() {
    TARNWICK_LOCATION("GLWindow::extensionText");
    const GLubyte* const text = GLWindow::contextCurrent() ? glGetString(GL_EXTENSIONS) : nullptr;
    return text != nullptr ? reinterpret_cast<const char*>(text) : "";
}

} // namespace

void GLWindow::glBeginDraw2d() {
    TARNWICK_LOCATION("GLWindow::glBeginDraw2d");
    const std::int32_t clientWidth = getClientWidth();
    const std::int32_t clientHeight = getClientHeight();
    const auto width = static_cast<float>(clientWidth);
    const auto height = static_cast<float>(clientHeight);
    glViewport(0, 0, clientWidth, clientHeight);
    const float scale[16] = {2.0f / width, 0.0f,           0.0f, 0.0f, //
                             0.0f,         -2.0f / height, 0.0f, 0.0f, //
                             0.0f,         0.0f,           1.0f, 0.0f, //
                             0.0f,         0.0f,           0.0f, 1.0f};
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixf(scale);
    glTranslatef(-width / 2.0f, -height / 2.0f, 0.0f);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

void GLWindow::glBeginDraw3d(float fieldOfView, float nearPlane, float farPlane) {
    TARNWICK_LOCATION("GLWindow::glBeginDraw3d");
    const std::int32_t clientWidth = getClientWidth();
    const std::int32_t clientHeight = getClientHeight();
    const bool positive = clientWidth > 0 && clientHeight > 0;
    const float width = positive ? static_cast<float>(clientWidth) : 0.01f;
    const float height = positive ? static_cast<float>(clientHeight) : 0.01f;
    glViewport(0, 0, clientWidth, clientHeight);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(static_cast<double>(fieldOfView), static_cast<double>(width / height),
                   static_cast<double>(nearPlane), static_cast<double>(farPlane));
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

void GLWindow::glCircle(Vector2 middle, float radius, std::int32_t segments) {
    TARNWICK_LOCATION("GLWindow::glCircle");
    const float step = fullTurn / static_cast<float>(segments);
    const auto corner = [&](std::int32_t i) {
        const auto angle = static_cast<long double>(static_cast<float>(i) * step);
        const auto wideRadius = static_cast<long double>(radius);
        glVertex2f(static_cast<float>(std::cos(angle) * wideRadius + static_cast<long double>(middle.x)),
                   static_cast<float>(std::sin(angle) * wideRadius + static_cast<long double>(middle.y)));
    };
    glBegin(GL_LINES);
    for (std::int32_t i = 0; i < segments; ++i) {
        corner(i);
        corner(i + 1);
    }
    glEnd();
}

void GLWindow::glPushState() {
    TARNWICK_LOCATION("GLWindow::glPushState");
    glPushAttrib(allAttributes);
    glPushClientAttrib(allClientAttributes);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
}

void GLWindow::glPopState() {
    TARNWICK_LOCATION("GLWindow::glPopState");
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopClientAttrib();
    glPopAttrib();
}

void GLWindow::clearScreen(float red, float green, float blue) {
    TARNWICK_LOCATION("GLWindow::clearScreen");
    glClearColor(red, green, blue, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
}

void GLWindow::swapBuffers() {
    TARNWICK_LOCATION("GLWindow::swapBuffers");
    if (state.windowHandle != nullptr) {
        SDL_GL_SwapWindow(state.windowHandle);
    }
}

void GLWindow::fadeScreen(float seconds) {
    TARNWICK_LOCATION("GLWindow::fadeScreen");
    if (!(seconds > 0.0f)) {
        return;
    }
    const float duration = std::min(seconds, longestFade);
    const auto width = static_cast<float>(getClientWidth());
    const auto height = static_cast<float>(getClientHeight());
    GLWindowEventListener* const listener = state.eventListener;
    state.eventListener = nullptr;
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glPushAttrib(GL_ENABLE_BIT);
    glReadBuffer(GL_BACK);
    glAccum(GL_LOAD, 1.0f);
    glDrawBuffer(GL_BACK);
    glBeginDraw2d();
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_CULL_FACE);
    glDisable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);

    FrameTimer timer;
    float remaining = duration;
    while (remaining > 0.0f && exists()) {
        run();
        glAccum(GL_RETURN, 1.0f);
        fadeQuad(width, height, 1.0f - remaining / duration);
        swapBuffers();
        timer.update();
        remaining -= timer.getSeconds();
    }

    // Kept: these are pushes and not pops, and leave two entries more on each stack.
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopAttrib();
    state.eventListener = listener;
}

void GLWindow::setGamma(float gamma) {
    TARNWICK_LOCATION("GLWindow::setGamma");
    if (!(gamma >= 0.0f && gamma <= 2.0f) || state.windowHandle == nullptr) {
        return;
    }
    const std::array<std::uint16_t, gammaEntries> ramp = gammaRamp(gamma);
    SDL_SetWindowGammaRamp(state.windowHandle, ramp.data(), ramp.data(), ramp.data());
}

/// Steps of whole multiples, cut off at the top; 1 gives a straight line over the whole range.
std::array<std::uint16_t, GLWindow::gammaEntries> GLWindow::gammaRamp(float gamma) {
    TARNWICK_LOCATION("GLWindow::gammaRamp");
    constexpr std::uint32_t brightest = 0xFFFF;
    const auto step = static_cast<std::uint32_t>(gamma * 255.0f);
    std::array<std::uint16_t, gammaEntries> ramp{};
    for (std::uint32_t i = 0; i < gammaEntries; ++i) {
        ramp[i] = static_cast<std::uint16_t>(std::min(step * i, brightest));
    }
    return ramp;
}

void GLWindow::getExtensionList(std::list<std::string>& list) {
    TARNWICK_LOCATION("GLWindow::getExtensionList");
    slSeparateArgs(extensionText(), list);
}

bool GLWindow::extensionSupported(std::string& name) {
    TARNWICK_LOCATION("GLWindow::extensionSupported");
    slStringUpper(name);
    std::string text = extensionText();
    slStringUpper(text);
    std::list<std::string> extensions;
    slSeparateArgs(text, extensions);
    return std::find(extensions.begin(), extensions.end(), name) != extensions.end();
}

} // namespace tarnwick
