#include "graphics/VirtualScreen.h"

#include "core/LocationStack.h"
#include "graphics/GLWindow.h"

#include <GL/gl.h>

#include <algorithm>

namespace tarnwick {

namespace {

/// A client size as a divisor, or as what is divided.
float guarded(std::int32_t clientSize) {
    TARNWICK_LOCATION("VirtualScreen::guarded");
    return static_cast<float>(std::max(clientSize, 1));
}

} // namespace

float VirtualScreen::unitsPerPixelX() {
    TARNWICK_LOCATION("VirtualScreen::unitsPerPixelX");
    return width / guarded(GLWindow::getClientWidth());
}

float VirtualScreen::unitsPerPixelY() {
    TARNWICK_LOCATION("VirtualScreen::unitsPerPixelY");
    return height / guarded(GLWindow::getClientHeight());
}

void VirtualScreen::begin(float depthScale) {
    TARNWICK_LOCATION("VirtualScreen::begin");
    GLWindow::glBeginDraw2d();
    scale(GLWindow::getClientWidth(), GLWindow::getClientHeight(), depthScale);
}

void VirtualScreen::scale(std::int32_t clientWidth, std::int32_t clientHeight, float depthScale) {
    TARNWICK_LOCATION("VirtualScreen::scale");
    glScalef(guarded(clientWidth) / width, guarded(clientHeight) / height, depthScale);
}

} // namespace tarnwick
