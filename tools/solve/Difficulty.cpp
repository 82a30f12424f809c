#include "tools/solve/Difficulty.h"

#include "game/GameRules.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <stdexcept>

namespace tarnwick {

namespace {

constexpr double secondsOfTick = 1.0 / 75.0;
constexpr std::int64_t shifts[] = {2, 4, 8, 16, 32, 64, 127}; ///< Ticks by which a change is moved.
constexpr std::uint64_t patience = 1500;      ///< Ticks more than the keys take that a moved one may take.
constexpr std::uint64_t gameOfPlayer = 45000; ///< Ticks: ten minutes.
constexpr std::uint64_t longestAfterKeys =
    6000;                                  ///< Ticks behind the last change within which a level must end.
constexpr std::uint64_t shortestHold = 10; ///< Ticks that a random player holds what he holds,
constexpr std::uint64_t longestHold = 110; ///< at least and at most.

constexpr double weight = 10.0; ///< Of each part.

} // namespace

double Difficulty::figure() const {
    constexpr double easySeconds = 10.0;
    const double length = std::log2(1.0 + seconds / easySeconds);
    const double planning = std::log2(1.0 + decisions) / 2.0;
    const double precision = std::log2(longestTolerance / std::max(tolerance, secondsOfTick)) / 3.0;
    return weight *
           (length / 2.0 + planning + std::max(precision, 0.0) + (1.0 - playerShare()) + lostShare());
}

std::string Difficulty::text() const {
    char lines[400];
    std::snprintf(lines, sizeof lines,
                  "difficulty %.1f\nseconds    %.1f\ndecisions  %u\ntolerance  %.2f s\n"
                  "players    %u of %u who hold keys at random finish\nwater      %u of %u are lost\n",
                  figure(), seconds, decisions, tolerance, playersAtEnd, players, waterLost, water);
    return lines;
}

DifficultyMeter::DifficultyMeter(HeadlessLevel& level)
    : game(level)
    , startPosition(level.position()) {
    start.take();
}

Difficulty DifficultyMeter::measure(const Witness& keys,
                                    std::uint32_t players,
                                    const std::function<void(std::uint32_t)>& told) {
    Difficulty found;
    found.water = GameRules::getParticleCount();
    const std::uint64_t lastChange = keys.changes.empty() ? 0 : keys.changes.back().tick;
    if (!finishes(keys.changes, lastChange + longestAfterKeys)) {
        throw std::runtime_error("the keys do not finish the level");
    }
    const std::uint64_t ticks = game.position().tick;
    found.seconds = static_cast<double>(GameRules::getLevelTime()) / 1000.0;
    const std::uint32_t left = GameRules::getParticleCount();
    found.waterLost = found.water > left ? found.water - left : 0;
    std::int64_t tolerance = shifts[std::size(shifts) - 1];
    for (std::size_t which = 0; which < keys.changes.size(); ++which) {
        found.decisions += keys.changes[which].held != Held{} ? 1U : 0U;
        tolerance = std::min(tolerance, toleranceOf(keys.changes, which, ticks + patience));
    }
    found.tolerance = static_cast<double>(tolerance) * secondsOfTick;
    for (std::uint32_t number = 0; number < players; ++number) {
        ++found.players;
        found.playersAtEnd += randomPlayerFinishes(number) ? 1U : 0U;
        if (told) {
            told(found.players);
        }
    }
    backToStart();
    return found;
}

std::int64_t DifficultyMeter::toleranceOf(const Changes& changes, std::size_t which, std::uint64_t ticks) {
    std::int64_t kept = 0;
    for (const std::int64_t shift : shifts) {
        if (!finishesShifted(changes, which, -shift, ticks) ||
            !finishesShifted(changes, which, shift, ticks)) {
            break;
        }
        kept = shift;
    }
    return kept;
}

/// A change does not pass its neighbours: moved that far it counts as failed.
bool DifficultyMeter::finishesShifted(const Changes& changes,
                                      std::size_t which,
                                      std::int64_t by,
                                      std::uint64_t ticks) {
    Changes moved = changes;
    const std::int64_t tick = static_cast<std::int64_t>(changes[which].tick) + by;
    const std::int64_t before = which > 0 ? static_cast<std::int64_t>(changes[which - 1].tick) : -1;
    if (tick <= before ||
        (which + 1 < changes.size() && tick >= static_cast<std::int64_t>(changes[which + 1].tick))) {
        return false;
    }
    moved[which].tick = static_cast<std::uint64_t>(tick);
    return finishes(moved, ticks);
}

bool DifficultyMeter::finishes(const Changes& changes, std::uint64_t ticks) {
    backToStart();
    auto next = changes.begin();
    while (game.position().tick < ticks && !GameRules::finishHasBegun()) {
        for (; next != changes.end() && next->tick <= game.position().tick; ++next) {
            game.hold(next->held);
        }
        game.tick();
    }
    return GameRules::finishHasBegun();
}

bool DifficultyMeter::randomPlayerFinishes(std::uint32_t number) {
    backToStart();
    std::mt19937 random(number + 1);
    constexpr Held choices[] = {{}, {.left = true}, {.right = true}};
    std::uint64_t until = 0;
    while (game.position().tick < gameOfPlayer && !GameRules::finishHasBegun()) {
        if (game.position().tick >= until) {
            game.hold(choices[random() % std::size(choices)]);
            until = game.position().tick + shortestHold + random() % (longestHold - shortestHold);
        }
        game.tick();
    }
    return GameRules::finishHasBegun();
}

void DifficultyMeter::backToStart() {
    game.hold({});
    start.putBack();
    game.setPosition(startPosition);
}

} // namespace tarnwick
