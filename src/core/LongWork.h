#pragma once

#include <cstdint>

namespace tarnwick {

/// Asked by work that can take minutes, such as cutting up a level, whether it is still wanted: whoever owns
/// a window answers, keeps it alive meanwhile, and says no once it is closed. What is left then of the work
/// need not be right, only safe to throw away.
class LongWork {
public:
    LongWork() = delete;

    /// Of a load, whose work begins between ticks, or of a tick, in which nobody may hear of keys and clicks.
    enum class Kind : std::uint8_t { load, tick };

    /// Pumps the window's messages; false when the window is gone.
    using Watch = bool (*)(Kind kind);
    /// Null, as at program start: all work is wanted. Never taken back by a window that closes.
    static void setWatch(Watch watch) { state.watch = watch; }

    /// For each small step of a load; asks at every 256th call and between them gives the last answer.
    static bool goesOn();
    /// For what within a tick has already taken unusually long; asks at once.
    static bool goesOnWithinTick();

private:
    friend class ModuleReset;

    struct State {
        Watch watch = nullptr;
        std::uint32_t calls = 0;
        bool wanted = true; ///< The last answer to `goesOn`.
    };
    static State state;
};

} // namespace tarnwick
