#pragma once

#include "core/Colour.h"
#include "core/Vector2.h"

#include <string>

namespace tarnwick {

/// What all menus share, as `cfg\menu_general.cfg` says.
struct MenuStyle {
    /// The pictures of a button's three states.
    struct Frames {
        std::string outOfFocus;
        std::string inFocus;
        std::string clicked;
    };

    std::string font;
    Colour fontColour;
    Vector2 textShadowOffset; ///< Virtual units, right and down.
    Colour textShadowColour;
    float labelFontSize = 0.0f; ///< Virtual units.

    Vector2 buttonShadowOffset;
    Colour buttonShadowColour;
    float animationSpeed = 0.0f; ///< Pictures a second of buttons and arrows.
    std::string overSound;
    std::string clickedSound;

    float chooserFontSize = 0.0f; ///< Virtual units.
    Frames chooserLeft;
    Frames chooserRight;
    std::string chooserOverSound;
    std::string chooserClickedSound;

    std::string backgroundSound; ///< Heard behind all menus.

    static MenuStyle read();
};

} // namespace tarnwick
