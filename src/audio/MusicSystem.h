#pragma once

#include <cstdint>
#include <string>

// NOLINTNEXTLINE(bugprone-reserved-identifier): SDL_mixer's name of a stream
struct _Mix_Music;

namespace tarnwick {

struct CommandRow;

/// Plays one streamed music file at a time, independently of the sound effects. There is no playlist and no
/// cross-fade: the callers (the intro, the start and the end of a game, the pause) say what to play. If no
/// device could be opened every operation is without effect, and the game goes on in silence.
///
/// A stream ends only by `stop`, `play` or `shutdown`: a file that has played to its end stays open.
class MusicSystem {
public:
    MusicSystem() = delete;

    /// Opens the device at 44,100 hertz in stereo, tells on the console whether that worked, and registers
    /// the console commands in any case. Does not open a second device if one is open.
    static void initialise();
    /// Closes the stream and the device and removes the console commands.
    static void shutdown();

    /// Opens a file, found through `DataFiles`, and plays it from its start: for ever, or once. What played
    /// before is stopped and closed first, also when the new file then cannot be opened. False without a
    /// device, for an empty name, and for a file that cannot be opened or is of no known kind. A file that is
    /// cut short plays as far as it goes.
    static bool play(const std::string& fileName, bool loop);
    /// Stops and closes the stream. True also if there was none.
    static bool stop();
    /// Keeps the position in the stream and halts it. False without a stream.
    static bool pause();
    /// Plays the stream from the position that `pause` kept; without a pause since `play`, from its start.
    /// False without a stream.
    static bool resume();

    static bool hasDevice() { return state.initialised; }
    /// 0 to 255; 0 without a device.
    static std::uint8_t getVolume();
    /// Takes the low 8 bits. It holds for all files from now on. Without effect if there is no device.
    static void setVolume(std::int32_t volume);

private:
    friend class ModuleReset;
    friend class MusicSystemTest;

    struct State {
        bool initialised = false; ///< The device is open.
        _Mix_Music* stream = nullptr;
        bool looping = false;             ///< The last `play` was asked to loop.
        std::uint32_t pausedPosition = 0; ///< Milliseconds from the start of the file.
        std::uint8_t volume = 255;        ///< Kept here, since the mixer's own has 129 steps only.
    };
    static State state;

    /// Plays from a position in the file. False, and silence, for a stream that has nothing to play there.
    static bool startStream(double seconds);
    static void applyVolume();

    static const CommandRow commands[];
    static bool conCmdMusicSystemInitialised();
    static void conCmdMusicPlay(const std::string& fileName);
    static std::int32_t conCmdMusicVolume(std::int32_t value, bool set);
};

} // namespace tarnwick
