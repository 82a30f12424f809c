#pragma once

#include "gui/GuiFontGroup.h"
#include "gui/GuiWidget.h"

#include <string>

namespace tarnwick {

/// A text with its top left corner at the widget's.
class GuiLabel : public GuiWidget, public GuiFontGroup {
public:
    std::string text;

    GuiLabel();
    void setText(const std::string& newText);

    void windowRedrawing() override;
};

} // namespace tarnwick
