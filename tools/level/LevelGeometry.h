#pragma once

#include "level/Polygon2D.h"

#include <cstdint>
#include <list>

namespace tarnwick {

struct LevelFile;

/// The level's polygons as the game builds them, in file order: outlines without repeated points, triangles,
/// and the flags that the movers and triggers of the file give. Without pictures and friction.
std::list<Polygon2D> buildPolygons(const LevelFile& level);

/// Measures of the tree of the level's edges.
struct TreeSize {
    std::uint32_t edges = 0; ///< Nodes; each is one edge or a piece of one.
    std::uint32_t depth = 0; ///< 1 for a lone root, 0 for no tree.
};

/// Builds the game's own tree over these polygons, measures it and clears it again. What was loaded in
/// `Level` and `LevelBspTree` is gone afterwards.
TreeSize measureTree(std::list<Polygon2D> polygons);

} // namespace tarnwick
