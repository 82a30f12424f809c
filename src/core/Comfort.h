#pragma once

#include <array>
#include <variant>

namespace tarnwick {

/// What a player may have beside the plain game, as `cfg\comfort.cfg` says: read once, at the program's
/// start, by `main` alone. A missing file or entry is off, and whatever is off changes nothing: so the tests
/// and the tools, which do not read the file, have the plain game to the tick.
///
/// A new entry is a field of `Values`, a row of `entries`, a line in the file and a row in its table of
/// `docs/configuration.md`.
class Comfort {
public:
    Comfort() = delete;

    /// The initialisers are off.
    struct Values {
        bool keepProportions = false;
        bool gamePad = false;
        bool rumble = false;
        bool keepSettings = false;
        float volumeSteps = 0.0f; ///< A whole number when on.
        bool stayWithoutFocus = false;
        bool reducedMotion = false;
        bool clearWater = false;
    };

    /// On by the word TRUE alone.
    struct Switch {
        bool Values::*field;
    };
    /// Off at 0, which is what a text that is no number reads as; what lies out of range is brought into it.
    struct Number {
        float Values::*field;
        float smallest;
        float largest;
    };
    struct Entry {
        const char* key;
        std::variant<Switch, Number> kind;
        const char* does; ///< As the documents say it.
    };

    static constexpr std::array entries = {
        Entry{
            "keepProportions", Switch{&Values::keepProportions},
            "Menus, texts and pictures of 800 by 600 units keep their shape in the middle of a window of any "
            "other shape, in place of being stretched over it."},
        Entry{"gamePad", Switch{&Values::gamePad},
              "A game pad plays: the left stick, the shoulders and the cross turn, Start opens the menu, the "
              "cross walks it, A presses and B goes back."},
        Entry{"rumble", Switch{&Values::rumble}, "A game pad with a motor shakes when water is lost."},
        Entry{"keepSettings", Switch{&Values::keepSettings},
              "The place and size of the window, full screen, music, sound and quality are kept from one run "
              "to "
              "the next, in `cfg/kept.cfg`."},
        Entry{"volumeSteps", Number{&Values::volumeSteps, 1.0f, 20.0f},
              "Steps from off to on of music and sound in the options; off, and with 1, there is nothing "
              "between them."},
        Entry{"stayWithoutFocus", Switch{&Values::stayWithoutFocus},
              "A window that loses the focus stays where it is, with the play held, in place of minimising "
              "itself."},
        Entry{"reducedMotion", Switch{&Values::reducedMotion},
              "Nothing shakes, and the view turns and zooms half as fast."},
        Entry{"clearWater", Switch{&Values::clearWater},
              "Water, steam and ice take the colours of `cfg/water_clear.cfg`, which differ from what lies "
              "behind them for every kind of colour vision."},
    };

    /// Reads the file. Without one everything is off, and nothing is printed.
    static void initialise();

    static const Values& values() { return state; }

private:
    friend class ModuleReset;
    friend class ComfortTest;

    using State = Values;
    static State state;
};

} // namespace tarnwick
