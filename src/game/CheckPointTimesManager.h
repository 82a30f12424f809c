#pragma once

#include "core/Colour.h"
#include "core/FrameTimer.h"
#include "graphics/GLFont.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace tarnwick {

class ConfigFile;
struct Trigger;

/// Shows a time at each check point: the level's time on the first visit, and on a later one how much slower
/// or faster than the last time this visit is.
///
/// It lives as long as the level in memory, so a player who starts the level again meets the times of the
/// last run. Fades run on a clock of their own, frame by frame, also while the game is paused.
class CheckPointTimesManager {
public:
    CheckPointTimesManager() = delete;

    /// Reads `cfg\checkPoints.cfg`. Calls `shutdown` first, so that it can run again for a new level; nothing
    /// shows and no time is known then.
    static void initialise();
    static void shutdown();

    /// Takes the level's time, in milliseconds, at the check point of `trigger`, which is only told apart by
    /// its address. Shows it, in the place of what shows now. The next visit is compared with this time, also
    /// if an earlier one was better.
    static void recordTime(const Trigger* trigger, std::uint32_t time);

    /// Once a frame, over the level and under the menus. Leaves the GL in the virtual space of 800 by 600.
    static void draw();

    /// Minutes, seconds and hundredths, two digits each, as in "01:23:45". Hours are dropped.
    static std::string formatTime(std::uint32_t milliseconds);

    /// What of the module a `Snapshot` holds; nobody else looks inside.
    class Moment;
    static void keep(Moment& moment);
    /// `late`: milliseconds by which the clock has gone on since then.
    static void putBack(const Moment& moment, std::uint32_t late);

private:
    friend class ModuleReset;
    friend class CheckPointTimesManagerTest;
    friend class CheckPointRows; // tools: dump and restore

    /// What is on screen.
    enum class Display : std::int32_t {
        nothing = 0,
        timeFadingIn = 1,
        timeFadingOut = 2,
        differenceFadingIn = 3,
        differenceFadingOut = 4,
    };
    using enum Display;

    struct State {
        std::map<const Trigger*, std::uint32_t> checkPointTimes; ///< Milliseconds, of the last visit.
        FrameTimer fadeTimer;
        Display displayState = nothing;
        float displayTimeLeft = 0.0f;     ///< Seconds left of the present fade.
        std::int32_t currentTime = 0;     ///< Milliseconds: of a visit to a known check point,
        std::int32_t previousTime = 0;    ///< and of the one before.
        std::unique_ptr<GLFont> timeFont; ///< Null without a level.
        float fontSize = 0.0f;            ///< Units of the virtual screen.
        Colour fontColour;
        Colour slowerFontColour;
        Colour fasterFontColour;
        float yPosition = 0.0f; ///< Top of the text, units of the virtual screen.
        float fadeTime = 0.01f; ///< Seconds, at least 0.01.
    };
    static State state;

    static void readConfiguration();
    static void drawText(const std::string& text, Colour colour);
    static float fadedAlpha();
    static void drawTime();
    static void drawDifference();
    static void passTime();
};

class CheckPointTimesManager::Moment {
    friend class CheckPointTimesManager;
    std::map<const Trigger*, std::uint32_t> checkPointTimes;
    FrameTimer fadeTimer;
    Display displayState = nothing;
    float displayTimeLeft = 0.0f;
    std::int32_t currentTime = 0;
    std::int32_t previousTime = 0;
};

} // namespace tarnwick
