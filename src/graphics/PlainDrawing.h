#pragma once

#include "core/Box.h"
#include "core/Colour.h"

#include <cstdint>

namespace tarnwick {

/// Rectangles and how they mix with what is there: what modules draw with that have no business with the GL.
class PlainDrawing {
public:
    PlainDrawing() = delete;

    /// Everything off that would come between: pictures, light, fog, culling, stencil and depth. What is
    /// drawn blends by its alpha. Between `GLWindow::glPushState` and `glPopState`.
    static void beginFlat();
    /// A plain rectangle, `box` in client pixels, which leaves its colour set.
    static void drawRectangle(const Box& box, Colour colour);
    static void setBlending(bool on);
    static void setPictures(bool on);
    /// The picture that quads are drawn with: a GL texture name, or 0 for plain colour.
    static void bindPicture(std::uint32_t textureId);

    /// Pictures and blending on, until `endSprites` brings back what was.
    static void beginSprites();
    /// Whether quads cover what is behind by their alpha, or add to it.
    static void setSpritesCover(bool cover);
    static void endSprites();
};

} // namespace tarnwick
