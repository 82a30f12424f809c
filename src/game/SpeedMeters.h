#pragma once

#include "core/FrameTimer.h"

#include <cstdint>

namespace tarnwick {

/// How long a frame takes: the mean of the last finished batch of 16. It is the only clock that feeds the
/// simulation.
class FrameMeter {
public:
    bool shown = false; ///< Prints the frames of a second after each frame, once there is a mean.

    /// Begins a frame: what passed before does not count. The batch goes on.
    void reset() { timer.reset(); }
    /// Ends a frame and begins the next.
    void update();
    /// Seconds; 0 until the first batch ends.
    float average() const { return averageFrameTime; }

private:
    FrameTimer timer;
    float frameTimeSum = 0.0f;       ///< Seconds of the current batch.
    std::int32_t frameTimeCount = 0; ///< Frames in it.
    float averageFrameTime = 0.0f;
};

/// What a piece of work costs in ticks of the performance counter: the mean of each batch of 32 runs. It
/// feeds nothing but the console.
class CostMeter {
public:
    /// `title` is what the console calls the work. Text that outlives the meter.
    explicit CostMeter(const char* title)
        : work(title) {}

    bool shown = false; ///< Prints the mean, cut to a whole number, at the end of each batch.

    /// Counts a run; of its cost only the low 32 bits.
    void add(std::uint64_t ticks);
    /// Runs in the current batch.
    std::int32_t runs() const { return count; }

private:
    const char* work;
    std::int32_t count = 0;
    double sum = 0.0; ///< Of the current batch.
};

} // namespace tarnwick
