#pragma once

#include <cstdint>
#include <vector>

struct _SDL_GameController;
union SDL_Event;

namespace tarnwick {

/// The game pads, if the comfort `gamePad` is on: any number of them, plugged in and out at any time, all of
/// them the one player's.
///
/// Their buttons are keys of the window with numbers of their own (`key::padA` and so on): they go to the
/// listener as presses and releases, and are down while they are held. The left stick is no key. Which button
/// lies where is told by SDL's own table of pads and by the file of the community, where there is one.
class GamePad {
public:
    GamePad() = delete;

    /// Starts to look for pads. Does nothing without the comfort, and where the platform knows none.
    static void initialise();
    static void shutdown();

    /// What the window's pump hands on: pads that come and go, and their buttons.
    static void handle(const SDL_Event& event);

    /// How far the pads turn, -1 (left) to 1: the left stick in proportion, from beyond the middle, where a
    /// worn one rests; shoulders and cross as far as they can.
    static float turn();

    /// Shakes the pads that have a motor, if the comfort `rumble` is on; `strength` 0 to 1.
    static void rumble(float strength);

    /// The key of the menus that a pad's button stands for: the arrows, Enter and Escape; any other key is
    /// itself.
    static std::uint32_t asMenuKey(std::uint32_t key);

private:
    friend class ModuleReset;
    friend class GamePadTest;

    struct Pad {
        _SDL_GameController* handle = nullptr;
        std::vector<std::uint32_t> held; ///< Keys that are down.
    };
    struct State {
        bool looking = false;  ///< SDL's part that knows pads is on.
        std::vector<Pad> pads; ///< In the order in which they came.
    };
    static State state;

    static void readMappings();
    static void plugIn(std::int32_t device);
    static void unplug(std::int32_t instance);
    static void letGo(const Pad& pad);
    static void button(const SDL_Event& event);
    static Pad* padOf(std::int32_t instance);
};

} // namespace tarnwick
