#pragma once

#include "core/LocationStack.h"
#include "gui/MenuLayout.h"

namespace tarnwick {

/// The two buttons of a menu that asks: `yesButton` and `noButton`, side by side. No has the first focus and
/// leads one menu back.
class MenuQuestion {
public:
    MenuQuestion() = delete;

    /// Adds the buttons; `Act` is what yes does.
    template <MenuLayout::Action Act>
    static void addAnswers(const MenuLayout& layout, GuiScreen& screen) {
        TARNWICK_LOCATION("MenuQuestion::addAnswers");
        GuiAnimatedButton& yes = layout.addButton<answer<Act>>(screen, "yesButton");
        GuiAnimatedButton& no = layout.addButton<answer<MenuLayout::goBack>>(screen, "noButton");
        link(screen, yes, no);
    }

private:
    static void link(GuiScreen& screen, GuiAnimatedButton& yes, GuiAnimatedButton& no);
    static void releaseButton(GuiWidget& button);

    /// The answer's button goes back to where it was before the click, then the action comes.
    template <MenuLayout::Action Act>
    static void answer(GuiWidget& button) {
        TARNWICK_LOCATION("MenuQuestion::answer");
        releaseButton(button);
        Act(button);
    }
};

} // namespace tarnwick
