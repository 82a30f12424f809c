#pragma once

#include "game/Snapshot.h"
#include "tools/sim/HeadlessLevel.h"
#include "tools/solve/Witness.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tarnwick {

/// How hard a level is, by keys that finish it: one figure and its parts. `docs/difficulty.md` explains both.
struct Difficulty {
    double seconds = 0.0;           ///< Of play until the finish begins, with these keys.
    std::uint32_t decisions = 0;    ///< Times that a key goes down.
    double tolerance = 0.0;         ///< Seconds that any one change may be early or late.
    std::uint32_t players = 0;      ///< That held keys at random.
    std::uint32_t playersAtEnd = 0; ///< Of them those that finished.
    std::uint32_t water = 0;        ///< Particles at the start, and
    std::uint32_t waterLost = 0;    ///< those that the keys lose on the way.

    double playerShare() const { return players == 0 ? 0.0 : static_cast<double>(playersAtEnd) / players; }
    double lostShare() const { return water == 0 ? 0.0 : static_cast<double>(waterLost) / water; }
    /// 0 for a level that plays itself; about 10 for each part that is hard. See the document.
    double figure() const;
    /// A line for the figure and one for each part.
    std::string text() const;

    static constexpr double longestTolerance = 1.7; ///< Seconds: no more is tried.
};

/// Measures what keys do to a level. The level stands at its start.
class DifficultyMeter {
public:
    explicit DifficultyMeter(HeadlessLevel& level);

    /// Throws `std::runtime_error` if the keys do not finish the level. `players` random players have ten
    /// minutes of game time each; `told` hears how many have played.
    Difficulty measure(const Witness& keys,
                       std::uint32_t players,
                       const std::function<void(std::uint32_t)>& told = nullptr);

private:
    using Changes = std::vector<Witness::Change>;

    HeadlessLevel& game;
    Snapshot start;
    RunPosition startPosition;

    bool finishes(const Changes& changes, std::uint64_t ticks);
    bool finishesShifted(const Changes& changes, std::size_t which, std::int64_t by, std::uint64_t ticks);
    std::int64_t toleranceOf(const Changes& changes, std::size_t which, std::uint64_t ticks);
    bool randomPlayerFinishes(std::uint32_t number);
    void backToStart();
};

} // namespace tarnwick
