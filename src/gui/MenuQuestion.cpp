#include "gui/MenuQuestion.h"

#include "graphics/KeyMap.h"
#include "gui/GuiAnimatedButton.h"

namespace tarnwick {

void MenuQuestion::link(GuiScreen& screen, GuiAnimatedButton& yes, GuiAnimatedButton& no) {
    TARNWICK_LOCATION("MenuQuestion::link");
    no.addFocusTraversal(key::left, &yes);
    no.addFocusTraversal(key::tab, &yes);
    yes.addFocusTraversal(key::right, &no);
    yes.addFocusTraversal(key::tab, &no);
    screen.setDefaultFocusWidget(&no);
}

void MenuQuestion::releaseButton(GuiWidget& button) {
    TARNWICK_LOCATION("MenuQuestion::releaseButton");
    if (auto* const animated = dynamic_cast<GuiAnimatedButton*>(&button); animated != nullptr) {
        animated->state = GuiAnimatedButton::inFocus;
        animated->resetAnimation();
    }
}

} // namespace tarnwick
