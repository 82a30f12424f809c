#pragma once

#include <cstdint>

namespace tarnwick {

/// The space of 800 by 600 units, y downwards, in which menus and texts are laid out whatever the window's
/// size. A client area without width or height counts as one pixel wide or high: a minimised window may have
/// none.
class VirtualScreen {
public:
    VirtualScreen() = delete;

    static constexpr float width = 800.0f;
    static constexpr float height = 600.0f;

    /// Units to a client pixel, across and down.
    static float unitsPerPixelX();
    static float unitsPerPixelY();

    /// Sets the GL up for drawing in the window in virtual units. Depth is multiplied by `depthScale`; 0
    /// makes all flat.
    static void begin(float depthScale);
    /// Scales from client pixels to virtual units, for a client area of the size given.
    static void scale(std::int32_t clientWidth, std::int32_t clientHeight, float depthScale);
};

} // namespace tarnwick
