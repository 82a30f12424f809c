#pragma once

#include <SDL_keycode.h>
#include <SDL_scancode.h>

#include <cstdint>
#include <string>
#include <vector>

namespace tarnwick {

/// What a player does in menus, by the tick: the way of the pointer, clicks and keys. It reaches the game the
/// way a player's does: as SDL events in the queue that the window pumps.
class PlayerEvents {
public:
    /// Nothing is done.
    PlayerEvents() = default;

    /// Reads lines of `TICK point X Y`, `TICK click` or `TICK key NAME`; empty lines and lines that begin
    /// with `#` are passed over, and ticks may not go back. X and Y are client pixels; the pointer is there
    /// at TICK, and comes from its last place on a straight way, fast in the middle. A click is one of the
    /// left button where the pointer is, and lasts 6 ticks. NAME is a key of SDL's, as in `Escape` or `P`.
    /// Throws `std::runtime_error` that names file and line.
    static PlayerEvents fromFile(const std::string& fileName);

    /// For a run that goes on after `ticksRun` ticks: sends where the pointer is and which buttons and keys
    /// are down since before. The window alone is to hear of it.
    void catchUp(std::uint64_t ticksRun);

    /// Sends what is done once `ticksRun` ticks have run. Call it for every tick.
    void send(std::uint64_t ticksRun);

private:
    static constexpr std::uint64_t clickTicks = 6; ///< From the press to the release of a button or key.

    struct Place {
        std::uint64_t tick = 0;
        int x = 0; ///< Client pixels.
        int y = 0;
    };
    struct Stroke {
        std::uint64_t tick = 0;
        bool down = false;
        SDL_Scancode scancode = SDL_SCANCODE_UNKNOWN; ///< Unknown: the left button of the mouse.
        SDL_Keycode keycode = SDLK_UNKNOWN;
    };
    std::vector<Place> places;   ///< By tick.
    std::vector<Stroke> strokes; ///< By tick, once a file is read.
    Place pointer;               ///< Where it is; its tick has no meaning.

    std::string read(const std::string& line);
    std::string readPlace(std::uint64_t tick, const std::string& x, const std::string& y);
    void addStroke(std::uint64_t tick, SDL_Scancode scancode, SDL_Keycode keycode);
    Place pointerAt(std::uint64_t tick) const;
    void movePointer(std::uint64_t tick);
    void sendStroke(const Stroke& stroke) const;
};

} // namespace tarnwick
