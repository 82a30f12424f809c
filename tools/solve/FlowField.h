#pragma once

#include "core/Vector2.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tarnwick {

/// How far every place of the level is from its finish, through free space: a field of distances over a grid
/// of cells, from the end of level triggers outward.
///
/// Solid is what stays solid: a polygon that moves or vanishes counts as open, and one that no water can
/// pass, because it kills it, as a long way. The field knows neither down nor up.
class FlowField {
public:
    /// Of the level in memory.
    FlowField();

    /// World units; far beyond all others where free space does not lead to the finish. A place in a wall has
    /// the distance of the nearest free one, and the way to it.
    float distance(Vector2 place) const { return distances[cellAt(place)]; }
    /// Whether free space connects the place with the finish.
    bool reaches(Vector2 place) const { return distance(place) < farthest; }
    /// The level has a finish.
    bool hasFinish() const { return finish; }

    static constexpr float farthest = 1.0e6f; ///< World units: from here on there is no way.

    /// The grid, for who draws it.
    std::size_t columns() const { return columnCount; }
    std::size_t rows() const { return rowCount; }
    bool solid(std::size_t cell) const { return walls[cell]; }
    float distanceOfCell(std::size_t cell) const { return distances[cell]; }
    std::size_t cellAt(Vector2 place) const;

private:
    /// A cell that waits, and its distance when it was put there.
    struct Open {
        float distance = 0.0f;
        std::uint32_t cell = 0;

        bool operator<(const Open& other) const {
            return distance != other.distance ? distance > other.distance : cell > other.cell;
        }
    };

    Vector2 origin;
    float cellSize = 4.0f; ///< World units.
    std::size_t columnCount = 1;
    std::size_t rowCount = 1;
    bool finish = false;
    std::vector<bool> walls;
    std::vector<bool> deadly;
    std::vector<float> distances;

    void chooseGrid();
    void markWalls();
    void markDeadly();
    void spread(std::vector<Open> open, bool throughWalls);
    std::vector<Open> finishCells();
    Vector2 middleOf(std::size_t cell) const;
};

} // namespace tarnwick
