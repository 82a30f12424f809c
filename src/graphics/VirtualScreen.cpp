#include "graphics/VirtualScreen.h"

#include "core/Comfort.h"
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

/// How the screen lies in a client area.
struct Place {
    float unitsX; ///< To a pixel.
    float unitsY;
    float besideX; ///< Units of the client area on either side of the screen,
    float besideY; ///< and above and below it.
};

Place placeIn(std::int32_t clientWidth, std::int32_t clientHeight) {
    TARNWICK_LOCATION("VirtualScreen::placeIn");
    const float unitsX = VirtualScreen::width / guarded(clientWidth);
    const float unitsY = VirtualScreen::height / guarded(clientHeight);
    if (!Comfort::values().keepProportions) {
        return {unitsX, unitsY, 0.0f, 0.0f};
    }
    const float units = std::max(unitsX, unitsY); // the smaller scale: all of the screen is seen
    return {units, units, (guarded(clientWidth) * units - VirtualScreen::width) / 2.0f,
            (guarded(clientHeight) * units - VirtualScreen::height) / 2.0f};
}

} // namespace

Vector2 VirtualScreen::at(std::uint32_t x, std::uint32_t y) {
    TARNWICK_LOCATION("VirtualScreen::at");
    const Place place = placeIn(GLWindow::getClientWidth(), GLWindow::getClientHeight());
    return {static_cast<float>(x) * place.unitsX - place.besideX,
            static_cast<float>(y) * place.unitsY - place.besideY};
}

Box VirtualScreen::window() {
    TARNWICK_LOCATION("VirtualScreen::window");
    const Place place = placeIn(GLWindow::getClientWidth(), GLWindow::getClientHeight());
    return {-place.besideX, -place.besideY, width + place.besideX, height + place.besideY};
}

void VirtualScreen::begin(float depthScale) {
    TARNWICK_LOCATION("VirtualScreen::begin");
    GLWindow::glBeginDraw2d();
    fit(GLWindow::getClientWidth(), GLWindow::getClientHeight(), depthScale);
}

void VirtualScreen::fit(std::int32_t clientWidth, std::int32_t clientHeight, float depthScale) {
    TARNWICK_LOCATION("VirtualScreen::fit");
    if (!Comfort::values().keepProportions) {
        glScalef(guarded(clientWidth) / width, guarded(clientHeight) / height, depthScale);
        return;
    }
    const Place place = placeIn(clientWidth, clientHeight);
    glScalef(1.0f / place.unitsX, 1.0f / place.unitsY, depthScale);
    glTranslatef(place.besideX, place.besideY, 0.0f);
}

} // namespace tarnwick
