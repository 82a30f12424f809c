#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace tarnwick {

struct SimulationOptions;

/// Draws pictures of a run off screen, if its options ask for any: of the last tick (`--screenshot`) and of
/// every dumped tick (`--frames`). Drawing touches nothing of the simulation.
class FrameWriter {
public:
    /// Makes the folder of the frames. Throws `std::runtime_error` that names it when that fails.
    explicit FrameWriter(const SimulationOptions& options);

    /// Opens the window of the run: with a GL context if there is something to draw, and without any GL if
    /// not.
    void openWindow(std::int32_t width, std::int32_t height) const;

    /// Whether pictures of the dumped ticks were asked for.
    bool wantsFrames() const { return !folder.empty(); }
    /// Saves the picture of this moment as the next of the frames, `000000.png` first.
    void writeFrame();
    /// Saves the picture of this moment as the screenshot.
    void writeScreenshot() const;

private:
    std::filesystem::path screenshot; ///< Absolute, as the folder is; empty: none is asked for.
    std::filesystem::path folder;
    std::uint64_t framesWritten = 0;
};

} // namespace tarnwick
