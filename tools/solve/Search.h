#pragma once

#include "game/Snapshot.h"
#include "tools/sim/HeadlessLevel.h"
#include "tools/solve/FlowField.h"
#include "tools/solve/Witness.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <random>
#include <set>
#include <unordered_map>
#include <vector>

namespace tarnwick {

/// Looks for keys that finish a level: a search over short stretches in which left, right or nothing is held,
/// each run from a snapshot of the end of another.
///
/// Which stretch is gone on from: mostly the one whose water is nearest to the finish, by the way through
/// free space, less a piece of it for each mechanism that has fired; now and then the one that stands where
/// the fewest stood. Two stretches stand at the same place when their water, ice and steam stand in the same
/// squares, about as warm, the same has fired, movers are as far and the view is turned alike; of one place
/// only a few are kept.
///
/// Nothing depends on the time of day: the same seed gives the same search, tick for tick.
class Search {
public:
    struct Progress {
        std::uint64_t ticks = 0;       ///< Simulated.
        float start = 0.0f;            ///< Distance at the level's start, world units.
        float best = 0.0f;             ///< The least so far.
        std::uint64_t statesKept = 0;  ///< Stretches whose end is in memory.
        std::uint64_t statesKnown = 0; ///< Places where water stood.
    };

    /// The level runs from its start on, and the camera flies to the water first.
    Search(HeadlessLevel& level, std::uint64_t seed);

    /// Goes on from one stretch. False when nothing is left to go on from.
    bool step();
    bool found() const { return finished; }
    /// What was found; else the way to the best so far.
    const Witness& witness() const { return result; }
    Witness bestWay() const { return wayTo(bestNode); }
    const Progress& progress() const { return state; }
    /// Cells of the field in which there was water at the end of a stretch.
    const std::set<std::size_t>& visited() const { return visitedCells; }
    const FlowField& flow() const { return field; }

private:
    static constexpr std::int32_t none = -1;

    /// The end of a stretch.
    struct Node {
        std::int32_t parent = none;
        Held held;                          ///< During the stretch.
        std::uint64_t begin = 0;            ///< Ticks run at its start.
        float value = 0.0f;                 ///< World units to go, less is better.
        std::uint64_t place = 0;            ///< Hash of where it stands.
        std::uint64_t novelty = 0;          ///< Who stood there, with it, when it came.
        RunPosition position;               ///< At its end.
        std::unique_ptr<Snapshot> snapshot; ///< Null once it was gone on from, or given up.
    };
    /// Where water stood.
    struct Place {
        std::uint32_t visits = 0;
        float best = 0.0f;
    };
    /// What is to be known of the water.
    struct Sight {
        float distance = 0.0f;
        std::uint64_t place = 0;
        std::uint32_t water = 0;
    };

    HeadlessLevel& game;
    FlowField field;
    std::mt19937_64 random;
    std::vector<Node> nodes;
    std::set<std::pair<float, std::int32_t>> byValue;
    std::set<std::pair<std::uint64_t, std::int32_t>> byNovelty; ///< Visits, and then the newest.
    std::unordered_map<std::uint64_t, Place> places;
    std::vector<std::unique_ptr<Snapshot>> spare;
    std::set<std::size_t> visitedCells;
    Progress state;
    Witness result;
    std::int32_t bestNode = 0;
    std::uint32_t startWater = 0;
    bool finished = false;

    void addNode(std::int32_t parent, Held held, std::uint64_t begin, const Sight& sight);
    void open(std::int32_t number);
    void close(std::int32_t number);
    std::int32_t choose();
    void run(std::int32_t from, Held held, std::uint64_t ticks);
    bool runTicks(std::uint64_t ticks);
    void finish(std::int32_t from, Held held, std::uint64_t begin);
    Sight look();
    void forgetTheWorst();
    Witness wayTo(std::int32_t number) const;
};

} // namespace tarnwick
