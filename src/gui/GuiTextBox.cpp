#include "gui/GuiTextBox.h"

#include "core/LocationStack.h"

#include <algorithm>

namespace tarnwick {

namespace {

constexpr float defaultFontSize = 8.0f;

bool endsLine(char character) {
    TARNWICK_LOCATION("GuiTextBox::endsLine");
    return character == '\r' || character == '\n';
}

} // namespace

GuiTextBox::GuiTextBox()
    : GuiFontGroup(defaultFontSize) {
    TARNWICK_LOCATION("GuiTextBox::GuiTextBox");
}

void GuiTextBox::setText(const std::string& newText) {
    TARNWICK_LOCATION("GuiTextBox::setText");
    text = newText.substr(0, newText.find('\0'));
    formatText();
}

void GuiTextBox::setFontSize(float size) {
    TARNWICK_LOCATION("GuiTextBox::setFontSize");
    fontSize = std::max(size, smallestFontSize);
    formatText();
}

void GuiTextBox::formatText() {
    TARNWICK_LOCATION("GuiTextBox::formatText");
    const auto columns = static_cast<std::size_t>(static_cast<float>(width) / fontSize);
    const std::size_t maxColumns = std::max<std::size_t>(columns, 1);
    lines.clear();
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = lineEnd(start, maxColumns);
        lines.push_back(text.substr(start, end - start));
        start = end;
    }
}

/// Where the line that starts at `start` ends: one character behind the blank or line end at which it breaks,
/// so a word that has none in reach leaves a line of one character.
std::size_t GuiTextBox::lineEnd(std::size_t start, std::size_t maxColumns) const {
    TARNWICK_LOCATION("GuiTextBox::lineEnd");
    std::size_t stop = start;
    while (stop < text.size() && !endsLine(text[stop]) && stop - start < maxColumns) {
        ++stop;
    }
    if (stop == text.size()) {
        return stop;
    }
    while (stop > start && !endsLine(text[stop]) && text[stop] != ' ') {
        --stop;
    }
    return stop + 1;
}

void GuiTextBox::windowRedrawing() {
    TARNWICK_LOCATION("GuiTextBox::windowRedrawing");
    if (dropShadowEnabled) {
        drawLines(dropShadowOffset(), dropShadowColour());
    }
    drawLines({}, colour());
}

void GuiTextBox::drawLines(Vector2 offset, Colour shade) const {
    TARNWICK_LOCATION("GuiTextBox::drawLines");
    const float middle = static_cast<float>(x) + static_cast<float>(width) / 2.0f;
    float lineY = static_cast<float>(y) + offset.y;
    for (const std::string& line : lines) {
        const float lineWidth = static_cast<float>(line.size()) * fontSize;
        const float lineX = centered ? middle - lineWidth / 2.0f : static_cast<float>(x);
        font.drawString(line, {lineX + offset.x, lineY}, fontSize, shade);
        lineY += fontSize;
    }
}

} // namespace tarnwick
