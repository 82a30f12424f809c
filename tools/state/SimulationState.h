#pragma once

#include "core/FrameTimer.h"

#include <cstdint>
#include <stdexcept>
#include <string>

namespace tarnwick {

class JsonLine;
class JsonObject;

/// What a run knows beside the modules.
struct RunPosition {
    std::uint64_t tick = 0; ///< Ticks run since the level started.
    float dt = 0.0f;        ///< Seconds: length of the tick that led here, 0 at tick 0.
    double time = 0.0;      ///< Virtual seconds since the level started.
};

/// A state line that cannot be restored; the text is the reason.
class StateError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The whole state of a running level as one line of JSON, and back: a run continued from any line is equal,
/// byte for byte, to the run that was never interrupted. `docs/state-lines.md` has the format.
class SimulationState {
public:
    SimulationState() = delete;

    /// The state as it stands, without a line end. Lists stand in the order of the program's own lists.
    static std::string write(const RunPosition& position);

    /// Seconds that the clock, which counts milliseconds in 32 bits, can tell: `time` is below.
    static constexpr double clockRange = 4294967.0;

    /// Restores what `write` wrote, over the level that the line was written of and that has just been
    /// loaded. Fields that the format did not always have may be missing and leave everything as the load
    /// did; fields that it does not know are passed over. Everything is read and tested before anything is
    /// changed. Throws `StateError` for a line that is not whole or not of this level.
    static RunPosition read(const std::string& line);

private:
    friend class CheckPointRows;
    friend class MenuRows;

    /// The clock at which a timer was last looked at.
    static std::uint32_t lastClockOf(const FrameTimer& timer) { return timer.lastClock; }
    static void setLastClock(FrameTimer& timer, std::uint32_t clock) { timer.lastClock = clock; }

    static void writeCamera(JsonLine& out);
    static void writeFreeCamera(JsonLine& out);
    static void writeWater(JsonLine& out);
    static void writeParticles(JsonLine& out);
    static void writeGroups(JsonLine& out);
    static void writePolygons(JsonLine& out);

    struct Restored;
    static void readPosition(const JsonObject& in, RunPosition& position);
    static void readCamera(const JsonObject& in, Restored& restored);
    static void readFreeCamera(const JsonObject& in, Restored& restored);
    static void readWater(const JsonObject& line, Restored& restored);
    static void readParticles(const JsonObject& in, Restored& restored);
    static void readGroups(const JsonObject& in, Restored& restored);
    static void readPolygons(const JsonObject& in, Restored& restored);
    static void apply(Restored& restored);
};

} // namespace tarnwick
