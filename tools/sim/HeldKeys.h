#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarnwick {

/// What is held of the two keys that turn.
struct Held {
    bool left = false;
    bool right = false;

    bool operator==(const Held&) const = default;
};

/// The keys that a recorded player holds, tick by tick. They reach the game the way a player's do: as SDL key
/// events in the queue that the window pumps.
class HeldKeys {
public:
    struct Change {
        std::uint64_t tick = 0; ///< Ticks run when the keys change.
        Held held;
    };

    /// Nothing held.
    HeldKeys() = default;

    /// Reads lines of `TICK left|right|none|both`; empty lines and lines that begin with `#` are passed over.
    /// TICK counts the ticks run since the level started: `0 left` holds from the first tick on. Of two lines
    /// for one tick the later wins; ticks may not go back. Throws `std::runtime_error` that names file and
    /// line.
    static HeldKeys fromFile(const std::string& fileName);

    /// For a run that goes on after `ticksRun` ticks: sends what is held since before. The window alone is to
    /// hear of it.
    void catchUp(std::uint64_t ticksRun);

    /// Sends the events that lead from what was held to what is held once `ticksRun` ticks have run.
    void send(std::uint64_t ticksRun);
    /// Sends the events that lead from one to the other.
    static void send(Held from, Held to);

    /// What is held once `ticksRun` ticks have run.
    Held at(std::uint64_t ticksRun) const;

    /// By tick, ascending.
    const std::vector<Change>& all() const { return changes; }

private:
    std::vector<Change> changes; ///< By tick, ascending.
    std::size_t nextChange = 0;
    Held told; ///< As the game was told.
};

} // namespace tarnwick
