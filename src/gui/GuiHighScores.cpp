#include "gui/GuiHighScores.h"

#include "core/LocationStack.h"
#include "game/HighScores.h"

#include <GL/gl.h>

#include <string>

namespace tarnwick {

namespace {

constexpr float defaultFontSize = 16.0f;
constexpr float nameColumn = 6.0f; ///< Title characters from the column before.
constexpr float scoreColumn = 12.0f;
constexpr float titleRow = 2.0f; ///< Title characters: height of the row of titles.

} // namespace

GuiHighScores::GuiHighScores()
    : GuiFontGroup(defaultFontSize) {
    TARNWICK_LOCATION("GuiHighScores::GuiHighScores");
}

void GuiHighScores::setTitleFontSize(float size) {
    TARNWICK_LOCATION("GuiHighScores::setTitleFontSize");
    titleFontSize = size;
}

void GuiHighScores::setEntryFontSize(float size) {
    TARNWICK_LOCATION("GuiHighScores::setEntryFontSize");
    entryFontSize = size;
}

void GuiHighScores::windowRedrawing() {
    TARNWICK_LOCATION("GuiHighScores::windowRedrawing");
    if (dropShadowEnabled) {
        glPushMatrix();
        glTranslatef(dropShadowOffsetX, dropShadowOffsetY, 0.0f);
        drawScores(dropShadowColour());
        glPopMatrix();
    }
    drawScores(colour());
}

void GuiHighScores::drawScores(Colour shade) const {
    TARNWICK_LOCATION("GuiHighScores::drawScores");
    float rowY = static_cast<float>(y);
    const auto drawRow = [&](float size, const std::string& rank, const std::string& name,
                             const std::string& score) {
        float columnX = static_cast<float>(x);
        const auto drawCell = [&](const std::string& text) {
            font.drawString(text, {columnX, rowY}, size, shade);
        };
        drawCell(rank);
        columnX += nameColumn * titleFontSize;
        drawCell(name);
        columnX += scoreColumn * titleFontSize;
        drawCell(score);
    };
    drawRow(titleFontSize, "Rank", "Name", "Score");
    rowY += titleRow * titleFontSize;
    std::uint32_t rank = 1;
    for (const HighScoreEntry& entry : HighScores::table()) {
        drawRow(entryFontSize, std::to_string(rank), HighScores::nameOf(entry), std::to_string(entry.score));
        rowY += titleFontSize;
        ++rank;
    }
}

} // namespace tarnwick
