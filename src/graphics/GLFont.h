#pragma once

#include "graphics/GLTexture.h"

#include <string>

namespace tarnwick {

/// A fixed-pitch font: a picture of 16 by 16 cells that holds the 256 byte values, and text drawn from it.
///
/// Byte c lies in cell column c & 15 and cell row c >> 4, counted from the top left. Every character advances
/// by the size asked for. White cells on transparency take the colour given at drawing.
class GLFont : public GLTexture {
public:
    GLFont() = default;
    explicit GLFont(const GLTexture& source);
    GLFont(const GLFont& source);
    explicit GLFont(const std::string& fileName);
    ~GLFont() = default;

    /// Nothing happens when `source` is the same GL texture already.
    GLFont& operator=(const GLTexture& source);
    GLFont& operator=(const GLFont& source);
    GLFont& operator=(const std::string& fileName);

    /// Draws `text` (Latin-1) with its top left corner at (`x`, `y`) in cells of `size` by `size`, in the
    /// space of `GLWindow::glBeginDraw2d` or any other with y downwards. A newline goes back to `x` and down
    /// by `size`. Colours are 0 to 1. Nothing is drawn for null or for a size not above 0.
    ///
    /// Leaves the texture bound, the blend function set and, if there was anything to draw, the colour; all
    /// else stays as it was.
    void drawString(const char* text,
                    float x,
                    float y,
                    float size,
                    float red,
                    float green,
                    float blue,
                    float alpha) const;

    /// Draws `text` centred in the rectangle, at whole coordinates, halves away from zero.
    /// Kept: a newline counts as a character, so a text with newlines is centred as if it were one line, and
    /// its further lines start at the left edge of that line.
    void drawStringCentered(const char* text,
                            float x,
                            float y,
                            float boxWidth,
                            float boxHeight,
                            float size,
                            float red,
                            float green,
                            float blue,
                            float alpha) const;
};

} // namespace tarnwick
