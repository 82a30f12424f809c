#pragma once

#include "audio/Sound.h"
#include "core/LongTimer.h"
#include "core/Vector2.h"
#include "gui/GuiAnimatedButton.h"

#include <cstdint>
#include <memory>

namespace tarnwick {

struct CommandRow;

/// What makes a game of the simulation: the level's time, the water that is left, the scores, the last check
/// point, the return of water that was all lost, and the finish.
///
/// A level ends when a large enough share of the water stands in the end of level triggers in one single
/// tick, and it is never lost for good. Its course: playing; then ending, when the simulation still runs, the
/// timer stands and the finish fades in; then finished.
class GameRules {
public:
    GameRules() = delete;

    static constexpr std::uint32_t startParticles = 128;    ///< Of a level, and of its first check point.
    static constexpr std::int32_t bestLevelTime = 160'000;  ///< Milliseconds: up to here the full time score.
    static constexpr std::int32_t worstLevelTime = 480'000; ///< Milliseconds: from here on the smallest.

    /// Puts everything at the start of a level, with the check point at its water start, reads
    /// `cfg\game.cfg`, makes picture and sounds if they are not made yet and registers the console command.
    /// Called at each level start and restart.
    static void initialise();
    /// Deletes picture and sounds and removes the command. For the program's end: no change of level calls
    /// it.
    static void shutdown();

    /// Once a tick, behind simulation and camera: the time, the return of water when none is left, and the
    /// finish. `dt` is the tick's whole length in seconds. Draws random numbers only when it makes water, as
    /// `ParticleManager::createParticles` does.
    static void update(float dt);
    /// Takes the place of `update` in a tick in which it does not run: what passed is not counted.
    static void unpauseLevelTimer();

    /// Enough of the water has reached the end: nothing can keep the level from finishing.
    static bool finishHasBegun() { return state.levelEnding; }
    /// The end of the level has faded in.
    static bool gameIsFinished();
    /// Milliseconds of play.
    static std::int32_t getLevelTime() { return state.levelTimer.getTotalClocks(); }
    /// Free particles and the members of all ice groups.
    static std::uint32_t getParticleCount();

    /// Tells that `n` particles more stand in an end of level trigger in this tick.
    static void incrementEndOfLevelTriggerParticleCount(std::int32_t n);
    /// From here on lost water comes back at (x, y), world units, as much as there is now.
    static void setCheckPoint(Vector2 place);
    static void setCheckPoint(float x, float y) { setCheckPoint({x, y}); }

    /// 436,000 for a time up to `bestLevelTime`, falling in proportion to 1,000 at `worstLevelTime`.
    static std::uint32_t getTimeScore();
    /// 500 for each particle, without a limit.
    static std::uint32_t getWaterScore();
    static std::uint32_t getTotalScore();

    /// Once a frame, over the level and under the menus: the picture of the finish, ever less transparent.
    /// Prints the time, if `TimePrint` asks for it.
    static void draw();

    /// What of the module a `Snapshot` holds; nobody else looks inside.
    class Moment;
    static void keep(Moment& moment);
    /// `late`: milliseconds by which the clock has gone on since then. What the finish has stopped, music and
    /// loops, stays so.
    static void putBack(const Moment& moment, std::uint32_t late);

private:
    friend class ModuleReset;
    friend class GameRows; // tools: dump and restore
    friend class GameRulesTest;
    friend class GameRulesSoundsTest;

    struct State {
        LongTimer levelTimer;
        bool timePrintEnabled = false;
        std::unique_ptr<GuiAnimatedButton> finishAnimation; ///< Fades in. Null before the first level.
        std::unique_ptr<Sound> deadSound;          ///< All water is lost. Null before the first level.
        std::unique_ptr<Sound> finishSound;        ///< The level ends. Null before the first level.
        std::uint32_t endOfLevelParticleCount = 0; ///< Counted in this tick.
        float finishWaterVolume = 0.0f;            ///< Share of the water that must reach the end.
        bool levelEnding = false;                  ///< The finish has begun.
        float finishAnimationTime = 0.001f;        ///< Seconds of the finish, at least 0.001.
        float finishTimeLeft = 0.0f;               ///< Seconds left of it.
        std::uint32_t checkPointParticleCount = startParticles; ///< Water that comes back,
        float checkPointX = 0.0f;                               ///< and where, world units.
        float checkPointY = 0.0f;
    };
    static State state;

    static void readConfiguration();
    static void drawFinish();
    static void restoreLostWater();
    static void lookForFinish();
    static void runFinish(float dt);
    static void printTime();

    static const CommandRow commands[];
};

class GameRules::Moment {
    friend class GameRules;
    LongTimer levelTimer;
    std::uint32_t endOfLevelParticleCount = 0;
    bool levelEnding = false;
    float finishTimeLeft = 0.0f;
    std::uint32_t checkPointParticleCount = 0;
    float checkPointX = 0.0f;
    float checkPointY = 0.0f;
};

} // namespace tarnwick
