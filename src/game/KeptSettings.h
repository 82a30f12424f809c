#pragma once

#include <cstdint>
#include <optional>

namespace tarnwick {

/// What the comfort `keepSettings` keeps from one run to the next, in `cfg\kept.cfg`: the window, music,
/// sound and quality. Without the comfort nothing is read or written, and without the file the game starts as
/// it always did.
class KeptSettings {
public:
    KeptSettings() = delete;

    struct Window {
        std::int32_t x = 0; ///< Screen position of the outer corner.
        std::int32_t y = 0;
        std::int32_t width = 800; ///< Client pixels.
        std::int32_t height = 600;
        bool fullscreen = true;
    };

    static constexpr std::int32_t smallestSide = 200; ///< Client pixels of a window that is taken back.
    static constexpr std::int32_t largestSide = 16'384;

    /// Reads the file, once, at the program's start.
    static void initialise();

    /// The window of the last run; nothing if none was kept.
    static const std::optional<Window>& window() { return state.window; }
    /// Puts the volumes of the last run back.
    static void restoreVolumes();
    /// The option of the quality, 0 to 5; nothing if none was kept.
    static std::optional<std::uint32_t> quality();

    /// Remembers where the window is; called once a frame, for at the end it is gone.
    static void noteWindow();
    /// The client size of a window that leaves full screen: the last one that was seen.
    static Window leavingFullscreen();

    /// Writes the file, at the program's end. A failure is told on the console.
    static void save();

private:
    friend class ModuleReset;

    struct State {
        std::optional<Window> window;
        std::optional<std::int32_t> music; ///< 0 to 255.
        std::optional<float> sound;        ///< 0 to 1.
        std::optional<std::int32_t> quality;
        Window seen; ///< Its place and size are those of the last frame that was not full screen.
        bool windowSeen = false;
    };
    static State state;
};

} // namespace tarnwick
