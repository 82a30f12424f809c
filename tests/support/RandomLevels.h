#pragma once

#include "support/RandomOutlines.h"

#include <cstdint>

namespace tarnwick {

/// Puts polygons into `Level::polygons` as a careless level maker would: abutting and overlapping, in line
/// and nearly in line, caulk and moving and destructable ones among them. The same for the same seed.
class RandomLevels {
public:
    explicit RandomLevels(std::uint32_t seed)
        : random(seed) {}

    /// A level of about `polygons` polygons of one kind or a mixture of all.
    void make(std::size_t polygons);

    /// Some triangles and quadrangles anywhere up to 2^31, and copies of them: in the same place, turned
    /// round, or shifted along one of their own sides.
    void makeHuge(std::size_t polygons);

private:
    RandomOutlines random;

    float whole(std::uint32_t limit) { return static_cast<float>(random.below(limit)); }
    void add(const std::vector<Vector2>& points);
    void addRectangle(float x, float y, float width, float height);
    /// Squares side by side, some left out, some divided once more.
    void addGrid(std::size_t polygons);
    /// Rectangles over one another, on a coarse grid: sides in line everywhere.
    void addRectangles(std::size_t polygons);
    /// Slices, in no order, of a wall whose upper side bends by less than what counts as a bend, with gaps of
    /// less than what counts as a gap.
    void addBentWall(std::size_t polygons);
    /// Outlines of every kind, thrown about.
    void addOutlines(std::size_t polygons);
    /// Slivers shorter and thinner than the tolerances, on one spot.
    void addCrumbs(std::size_t polygons);
};

} // namespace tarnwick
