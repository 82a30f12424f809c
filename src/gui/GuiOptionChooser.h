#pragma once

#include "gui/GuiAnimatedButton.h"
#include "gui/GuiFontGroup.h"
#include "gui/GuiWidget.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tarnwick {

class Sound;

/// One of several texts between a left and a right arrow. The keys Left and Right, and clicks in the left and
/// the right half, go one option back or forward, without wrapping; an arrow that leads nowhere is dim.
class GuiOptionChooser : public GuiWidget, public GuiFontGroup {
public:
    GuiOptionChooser();
    ~GuiOptionChooser() override;

    void addOption(const std::string& text);
    const std::vector<std::string>& getOptions() const { return options; }
    /// Past the end it is the last option, without options 0.
    void setCurrentOption(std::uint32_t index);
    std::uint32_t getCurrentOption() const { return currentOption; }
    /// The text of the current option; empty without options.
    std::string getCurrentText() const;

    /// The pictures of the arrows, as those of `GuiAnimatedButton`.
    void setLeftButtonFramesOutOfFocus(const std::string& name) { leftButton.setFramesOutOfFocus(name); }
    void setLeftButtonFramesInFocus(const std::string& name) { leftButton.setFramesInFocus(name); }
    void setLeftButtonFramesClicked(const std::string& name) { leftButton.setFramesClicked(name); }
    void setRightButtonFramesOutOfFocus(const std::string& name) { rightButton.setFramesOutOfFocus(name); }
    void setRightButtonFramesInFocus(const std::string& name) { rightButton.setFramesInFocus(name); }
    void setRightButtonFramesClicked(const std::string& name) { rightButton.setFramesClicked(name); }
    /// Pictures a second of both arrows.
    void setFramesPerSecond(float speed);
    /// Puts both arrows into a state of `GuiAnimatedButton`.
    void setButtonStates(GuiAnimatedButton::State state);

    /// Heard on gaining the focus and on a change of the option.
    void setOverSound(const std::string& name);
    void setClickedSound(const std::string& name);

    void gainedFocus() override;
    void lostFocus() override;
    void reset() override;
    void keyboardPressed(std::uint32_t key) override;
    void mousePressed(std::uint32_t mouseX, std::uint32_t mouseY, std::uint32_t button) override;
    void windowRedrawing() override;

private:
    friend class GuiOptionChooserTest;

    std::uint32_t currentOption = 0; ///< Index into `options`.
    std::vector<std::string> options;
    GuiAnimatedButton leftButton; ///< The arrows: not in the screen's list, driven from here.
    GuiAnimatedButton rightButton;
    std::unique_ptr<Sound> overSound; ///< Null for none, as the next.
    std::unique_ptr<Sound> clickedSound;

    void goBack();
    void goForward();
    void playClicked();
    /// Draws an arrow with its picture centred on `centreY`, left or right of `edge`.
    static void drawArrow(GuiAnimatedButton& arrow, float edge, float centreY, bool leftOfEdge, bool lit);
};

} // namespace tarnwick
