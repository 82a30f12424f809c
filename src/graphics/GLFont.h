#pragma once

#include "core/Colour.h"
#include "core/GLTexture.h"
#include "core/Strings.h"
#include "core/Vector2.h"

#include <string>
#include <string_view>

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

    /// Draws `text` (Latin-1), up to its first zero byte, with its top left corner at `place` in cells of
    /// `size` by `size`, in the space of `GLWindow::glBeginDraw2d` or any other with y downwards. A newline
    /// goes back to the left and down by `size`. Nothing is drawn for a view of nothing or for a size not
    /// above 0.
    ///
    /// Leaves the texture bound and, if there is a character to draw, blend function and colour set; all else
    /// stays as it was.
    void drawString(std::string_view text, Vector2 place, float size, Colour colour) const;
    void drawString(const char* text,
                    float x,
                    float y,
                    float size,
                    float red,
                    float green,
                    float blue,
                    float alpha) const {
        drawString(slText(text), {x, y}, size, {red, green, blue, alpha});
    }

    /// Draws `text` centred in the rectangle of the size `extent` at `corner`, at whole coordinates, halves
    /// away from zero.
    /// Kept: a newline counts as a character, so a text with newlines is centred as if it were one line, and
    /// its further lines start at the left edge of that line.
    void drawStringCentered(
        std::string_view text, Vector2 corner, Vector2 extent, float size, Colour colour) const;
    void drawStringCentered(const char* text,
                            float x,
                            float y,
                            float boxWidth,
                            float boxHeight,
                            float size,
                            float red,
                            float green,
                            float blue,
                            float alpha) const {
        drawStringCentered(slText(text), {x, y}, {boxWidth, boxHeight}, size, {red, green, blue, alpha});
    }
};

} // namespace tarnwick
