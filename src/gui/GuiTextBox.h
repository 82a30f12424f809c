#pragma once

#include "gui/GuiFontGroup.h"
#include "gui/GuiWidget.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tarnwick {

/// A long text, broken into lines that fit the width of the widget. The height is what the text takes.
class GuiTextBox : public GuiWidget, public GuiFontGroup {
public:
    static constexpr float smallestFontSize = 4.0f;

    std::string text;               ///< Up to its first zero.
    std::vector<std::string> lines; ///< The text as it is drawn; each line keeps the character it broke at.
    bool centered = false;          ///< Each line by itself.

    GuiTextBox();
    /// Both break the text anew, for the width that the widget has now.
    void setText(const std::string& newText);
    void setFontSize(float size);

    void windowRedrawing() override;

private:
    void formatText();
    std::size_t lineEnd(std::size_t start, std::size_t maxColumns) const;
    void drawLines(Vector2 offset, Colour shade) const;
};

} // namespace tarnwick
