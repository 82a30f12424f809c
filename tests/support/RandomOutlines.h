#pragma once

#include "core/Vector2.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace tarnwick {

/// Outlines for tests and benchmarks, each the same for the same seed: every shape that a triangulation may
/// meet, good and bad.
class RandomOutlines {
public:
    explicit RandomOutlines(std::uint32_t seed)
        : random(seed) {}

    /// A star-shaped outline round (0, 0), counter-clockwise, with whole coordinates up to `reach`. Its
    /// points lie between the share `1 - roughness` of `reach` and all of it away from the middle.
    std::vector<Vector2> star(std::size_t points, double reach, double roughness = 0.5);
    /// The corners of a regular polygon round (0, 0), counter-clockwise, rounded to whole coordinates.
    static std::vector<Vector2> circle(std::size_t points, double radius);
    /// A back with `points` / 4 teeth of random lengths, counter-clockwise, with whole coordinates.
    std::vector<Vector2> comb(std::size_t points);
    /// Points on a grid of `cells` by `cells` in random order: mostly crossing itself, with many in line and
    /// equal.
    std::vector<Vector2> scribble(std::size_t points, std::uint32_t cells);
    /// A walk in right angles with whole steps: long runs in line, touching and crossing itself now and then.
    std::vector<Vector2> walk(std::size_t points);
    /// One of the above, at random, then at random turned round, moved off the whole numbers, its start
    /// shifted, points added along its sides, and some of its points repeated.
    std::vector<Vector2> any(std::size_t mostPoints);

    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(random() % limit); }

private:
    std::mt19937 random;

    float whole(std::uint32_t limit) { return static_cast<float>(below(limit)); }
    void spoil(std::vector<Vector2>& points);
};

/// The points as C++ would write them, for the message of a failing test.
std::string describe(const std::vector<Vector2>& points);

} // namespace tarnwick
