#pragma once

#include "gui/GuiFontGroup.h"
#include "gui/GuiWidget.h"

namespace tarnwick {

/// The table of `HighScores`: a row of titles, and a row for each of the ten entries.
class GuiHighScores : public GuiWidget, public GuiFontGroup {
public:
    float titleFontSize = 16.0f; ///< Virtual units; also what the columns and rows are measured in.
    float entryFontSize = 16.0f; ///< `fontSize` has no use here.

    GuiHighScores();
    void setTitleFontSize(float size);
    void setEntryFontSize(float size);

    void windowRedrawing() override;

private:
    void drawScores(Colour shade) const;
};

} // namespace tarnwick
