#pragma once

#include "tools/sim/HeldKeys.h"
#include "tools/sim/LevelStart.h"
#include "tools/state/SimulationState.h"

#include <string>

namespace tarnwick {

/// A level that plays without window and sound, tick by tick, for a program that decides as it goes what is
/// held: the ticks are those of `tarnwick-sim`. There is one at a time. The flight to the water comes first,
/// as a player has it.
class HeadlessLevel {
public:
    static constexpr float tickLength = 0.013333334f; ///< Seconds.

    struct Asked {
        std::string level;      ///< A file's path, or else a name inside the data folder.
        std::string dataFolder; ///< Empty: the one beside the program.
    };
    /// Changes the working directory to the data folder. Throws `std::runtime_error` that names the file and
    /// the reason.
    explicit HeadlessLevel(const Asked& asked);
    HeadlessLevel(const HeadlessLevel&) = delete;
    HeadlessLevel& operator=(const HeadlessLevel&) = delete;

    /// What is held from the next tick on.
    void hold(Held keys);
    /// One tick, as the game's loop has it, without drawing.
    void tick();
    /// A tick with what drawing changes: the menus' time, and the display of the check points. State lines
    /// are equal to those of `tarnwick-sim` with it; without it they differ in the display's fields alone.
    void tickAndPassDrawing();

    /// Where the run is. A run that goes on elsewhere, from a snapshot, goes on from its position there.
    const RunPosition& position() const { return run; }
    void setPosition(const RunPosition& position) { run = position; }

private:
    RunPosition run;
    Held held;
    ModulesStop atTheEnd;

    void beginTick();
};

} // namespace tarnwick
