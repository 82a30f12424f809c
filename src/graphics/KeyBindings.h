#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tarnwick {

/// What a key of the game does, in the order of the rows of `KeyBindings`.
enum class GameKey : std::uint8_t {
    turnLeft,
    turnRight,
    pause,
    menu,
    console,
    restart,
    screenshot,
    fullscreen
};

/// Which keys do what, as `cfg\keys.cfg` says by SDL's names: read once, at the program's start, by `main`
/// alone. Without the file, or an entry of it, the plain game's keys hold, and what has none there does not
/// exist.
///
/// A value is one name or several with commas between them. SDL's names may hold blanks, which a value
/// cannot: an underscore stands for one, as in "Left_Shift".
class KeyBindings {
public:
    KeyBindings() = delete;

    /// Reads the file. A name that no key has is told on the console, and the plain keys hold.
    static void initialise();

    /// Whether a press of key number `key` does that.
    static bool is(GameKey does, std::uint32_t key);
    /// Whether a key that does it is down.
    static bool isHeld(GameKey does);
    /// Whether any key does it.
    static bool exists(GameKey does);

    /// What holds, for a reader: a line of the plain game's keys and one of the others. Empty without the
    /// file.
    static std::string told();

private:
    friend class ModuleReset;

    static constexpr std::size_t keyCount = static_cast<std::size_t>(GameKey::fullscreen) + 1;

    struct Binding {
        bool chosen = false;                ///< The file names keys for it.
        std::vector<std::uint32_t> numbers; ///< As chosen.
        std::string names;                  ///< As they are told.
    };
    struct State {
        bool fileRead = false;
        std::array<Binding, keyCount> bindings;
    };
    static State state;

    static const Binding& bindingOf(GameKey does) { return state.bindings[static_cast<std::size_t>(does)]; }
};

} // namespace tarnwick
