#include "particles/MovingEdgeField.h"

#include "core/LocationStack.h"
#include "level/LevelBspNode.h"
#include "particles/Particle.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tarnwick {

namespace {

constexpr float viewBorder = 160.0f; ///< World units beyond the reach: water is lost 130 outside the view.
constexpr std::size_t mostEntries = 65536;

/// A particle touches an edge from no further than the root of 2 radii on each axis. The rest is more than
/// the rounding of the test, whose error grows with the coordinates.
constexpr float cornerReach = 1.4143f;
constexpr float slack = 0.125f;       ///< World units,
constexpr float slackOfPlace = 1e-5f; ///< and as a share of a coordinate.

} // namespace

void MovingEdgeField::build(const std::vector<LevelBspNode>& edges, Vector2 middle, float reach) {
    TARNWICK_LOCATION("MovingEdgeField::build");
    const float half = reach + viewBorder;
    origin = middle - Vector2{half, half};
    side = static_cast<float>(cellsPerSide);
    cellsPerUnit = side / (2.0f * half);
    ranges.clear();
    std::size_t entryCount = 0;
    for (const LevelBspNode& edge : edges) {
        const Range& range = ranges.emplace_back(rangeOf(edge));
        if (range.firstColumn <= range.lastColumn && range.firstRow <= range.lastRow) {
            entryCount +=
                std::size_t{range.lastColumn - range.firstColumn + 1} * (range.lastRow - range.firstRow + 1);
        }
    }
    if (edges.empty() || entryCount > mostEntries) {
        side = 0.0f;
        return;
    }
    entries.resize(entryCount);
    fill();
}

MovingEdgeField::Range MovingEdgeField::rangeOf(const LevelBspNode& edge) const {
    TARNWICK_LOCATION("MovingEdgeField::rangeOf");
    const float farthest = std::max(
        {std::abs(edge.start.x), std::abs(edge.start.y), std::abs(edge.end.x), std::abs(edge.end.y)});
    const float border = particleRadius * cornerReach + slack + farthest * slackOfPlace;
    // Numbered like the cell of a place, so that a place within the border is in a cell within the range.
    const auto cellOf = [&](float place, float from) { return (place - from) * cellsPerUnit; };
    const float left = cellOf(std::min(edge.start.x, edge.end.x) - border, origin.x);
    const float right = cellOf(std::max(edge.start.x, edge.end.x) + border, origin.x);
    const float top = cellOf(std::min(edge.start.y, edge.end.y) - border, origin.y);
    const float bottom = cellOf(std::max(edge.start.y, edge.end.y) + border, origin.y);
    if (!(left < side && right >= 0.0f && top < side && bottom >= 0.0f)) {
        return {};
    }
    const auto clamped = [&](float cell) {
        return static_cast<std::uint32_t>(std::clamp(cell, 0.0f, side - 1.0f));
    };
    return {clamped(left), clamped(right), clamped(top), clamped(bottom)};
}

/// Counts what comes to each cell, then deals the edges out in their order.
void MovingEdgeField::fill() {
    TARNWICK_LOCATION("MovingEdgeField::fill");
    const auto eachCell = [&](const Range& range, const auto& visit) {
        for (std::uint32_t row = range.firstRow; row <= range.lastRow; ++row) {
            for (std::uint32_t column = range.firstColumn; column <= range.lastColumn; ++column) {
                visit(begins[row * cellsPerSide + column]);
            }
        }
    };
    begins.fill(0);
    for (const Range& range : ranges) {
        eachCell(range, [](std::uint32_t& count) { ++count; });
    }
    std::uint32_t end = 0;
    for (std::uint32_t& begin : begins) { // for now the end, from which the entries are dealt backwards
        end += begin;
        begin = end;
    }
    for (std::uint32_t edge = static_cast<std::uint32_t>(ranges.size()); edge-- > 0;) {
        eachCell(ranges[edge], [&](std::uint32_t& place) { entries[--place] = edge; });
    }
}

} // namespace tarnwick
