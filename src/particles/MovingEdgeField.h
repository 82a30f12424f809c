#pragma once

#include "core/Vector2.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace tarnwick {

struct LevelBspNode;

/// Tells for every place near the view which of the moving edges a particle there may touch.
///
/// A square around the view is divided into cells, and each keeps, in their order, the edges that come near
/// it; most keep none. The edges move, so the field is built anew in every tick. In the field's words: a
/// broad phase, a uniform grid filled by a counting sort.
class MovingEdgeField {
public:
    /// Gathers the field for edges that stand still from now on: over the square that reaches `reach` world
    /// units from `middle` on each axis, and somewhat further.
    void build(const std::vector<LevelBspNode>& edges, Vector2 middle, float reach);

    /// Whether the field can tell of this place. It cannot outside of its square, nor when there are so many
    /// edges that to sort them would take longer than to look at them.
    // no location: a few instructions, several times a particle
    bool covers(Vector2 place) const {
        const float column = (place.x - origin.x) * cellsPerUnit;
        const float row = (place.y - origin.y) * cellsPerUnit;
        return column >= 0.0f && column < side && row >= 0.0f && row < side;
    }
    /// The numbers of the edges that may be touched at a place that is covered, in ascending order.
    // no location: a look-up, several times a particle
    std::span<const std::uint32_t> edgesAt(Vector2 place) const {
        const auto column = static_cast<std::uint32_t>((place.x - origin.x) * cellsPerUnit);
        const auto row = static_cast<std::uint32_t>((place.y - origin.y) * cellsPerUnit);
        const std::uint32_t* const begin = begins.data() + (row * cellsPerSide + column);
        return {entries.data() + begin[0], entries.data() + begin[1]};
    }

private:
    static constexpr std::uint32_t cellsPerSide = 64;

    /// Cells that an edge comes near, the last ones included; none if the first is behind the last.
    struct Range {
        std::uint32_t firstColumn = 1;
        std::uint32_t lastColumn = 0;
        std::uint32_t firstRow = 1;
        std::uint32_t lastRow = 0;
    };

    Range rangeOf(const LevelBspNode& edge) const;
    void fill();

    Vector2 origin; ///< World units: the corner of cell (0, 0).
    float cellsPerUnit = 0.0f;
    float side = 0.0f;         ///< `cellsPerSide`, or 0 while the field covers nothing.
    std::vector<Range> ranges; ///< By edge.
    /// By cell, row by row: where in `entries` its edges begin. They end where those of the next one begin.
    std::array<std::uint32_t, std::size_t{cellsPerSide} * cellsPerSide + 1> begins{};
    std::vector<std::uint32_t> entries; ///< Numbers of edges, cell by cell.
};

} // namespace tarnwick
