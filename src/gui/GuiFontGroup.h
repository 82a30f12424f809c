#pragma once

#include "graphics/GLFont.h"
#include "gui/GuiDropShadow.h"

#include <string>
#include <string_view>

namespace tarnwick {

/// What all widgets with text share: the font, its size, and the shadow of the letters. A part of widgets;
/// never deleted through this class.
class GuiFontGroup : public GuiDropShadow {
public:
    GLFont font;           ///< The default picture until `setFont`.
    float fontSize = 8.0f; ///< Virtual units, width and height of a character.

    void setFont(const std::string& fileName);
    void setFontSize(float size);

protected:
    explicit GuiFontGroup(float size)
        : fontSize(size) {}
    ~GuiFontGroup() = default;

    /// Draws text, the shadow first if it is on, with its top left corner at `place` in characters of `size`.
    void drawText(std::string_view text, Vector2 place, float size, Colour colour) const;
};

} // namespace tarnwick
