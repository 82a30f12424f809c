#pragma once

#include "core/BoxRow.h"
#include "level/Polygon2D.h"

#include <cstddef>
#include <vector>

namespace tarnwick {

/// Answers the questions of `Polygon2D::edgeCrossesEdges` and `triangleCoversPolyPoint` about one open chain
/// of edges, many times over, without looking at every edge. The answers are the same to the last bit.
///
/// For a chain with coordinates that are no whole numbers, or larger ones than `largestExact`, no edge is
/// left out.
class OutlineIndex {
public:
    /// World units. Up to here the crossing of segments with whole coordinates is computed exactly, but for
    /// its last division: all cross products stay below 2^53.
    static constexpr float largestExact = 65536.0f;

    /// Keeps a reference to `edges`, which must stay as they are.
    explicit OutlineIndex(const std::vector<Polygon2D::Edge>& edges);

    /// `Polygon2D::edgeCrossesEdges(edge, edges)`, for a segment between two corners of the chain.
    bool crosses(const Polygon2D::Edge& edge) const;
    /// `Polygon2D::triangleCoversPolyPoint(triangle, edges)`, for a triangle of three corners of the chain.
    bool covers(const float* triangle) const;
    /// Whether the closed chain crosses itself: an edge of the open chain crosses another or the closing
    /// edge.
    bool crossesItself() const;

    /// How many points of the outline, fewer than all and at least three, make the longest closed outline
    /// that does not cross itself; 0 if there is none.
    std::size_t longestSimplePrefix() const;

private:
    const std::vector<Polygon2D::Edge>& chain;
    bool exact = false; ///< Boxes that do not touch prove that edges do not cross.
    BoxRow row;         ///< The edges; empty for a chain in which no edge may be left out.

    bool mayCross(const Polygon2D::Edge& edge, const Polygon2D::Edge& other) const;
    std::size_t nextNear(std::size_t index, const Box& box) const;
    std::size_t edgesBeforeFirstCrossing() const;
};

} // namespace tarnwick
