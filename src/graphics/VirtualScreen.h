#pragma once

#include "core/Box.h"
#include "core/Vector2.h"

#include <cstdint>

namespace tarnwick {

/// The space of 800 by 600 units, y downwards, in which menus and texts are laid out whatever the window's
/// size. It is stretched over the window; with the comfort `keepProportions` it lies in the middle of it, as
/// large as fits, and what shows beside it are units below 0 and beyond its width or height. A client area
/// without width or height counts as one pixel wide or high: a minimised window may have none.
class VirtualScreen {
public:
    VirtualScreen() = delete;

    static constexpr float width = 800.0f;
    static constexpr float height = 600.0f;

    /// The units at a position of client pixels.
    static Vector2 at(std::uint32_t x, std::uint32_t y);
    /// The window's edges, in units: the screen's own, or beside it.
    static Box window();

    /// Sets the GL up for drawing in the window in virtual units. Depth is multiplied by `depthScale`; 0
    /// makes all flat.
    static void begin(float depthScale);
    /// From client pixels to virtual units, for a client area of the size given.
    static void fit(std::int32_t clientWidth, std::int32_t clientHeight, float depthScale);
};

} // namespace tarnwick
