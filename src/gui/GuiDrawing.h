#pragma once

#include "core/Colour.h"
#include "core/GLTexture.h"

namespace tarnwick {

/// What the widgets draw with: textured quads in virtual units.
class GuiDrawing {
public:
    GuiDrawing() = delete;

    /// A rectangle of the screen in virtual units, or of a picture in shares of it.
    struct Rectangle {
        float left = 0.0f;
        float top = 0.0f;
        float right = 1.0f;
        float bottom = 1.0f;
    };

    /// Draws the part `portion` of a picture at `place`, blended by its alpha. Leaves blending and texturing
    /// on, the picture bound and the colour set.
    static void
    drawPicture(const GLTexture& picture, const Rectangle& place, const Rectangle& portion, Colour colour);
};

} // namespace tarnwick
