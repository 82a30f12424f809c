#pragma once

#include "level/LevelBspNode.h"

#include <list>
#include <vector>

namespace tarnwick {

/// The steps by which `LevelBspTree` makes a tree out of polygons. They keep nothing between calls.
///
/// The order of the edges in their list decides every tie, so each step says what it does to the order. All
/// steps give the result of comparing every edge with every other; blocks of edges that cannot matter are
/// stepped over.
class LevelBspBuilder {
public:
    LevelBspBuilder() = delete;

    /// The edges of all polygons that the tree takes: solid ones that do not move, and caulk. Each edge has
    /// its polygon on its positive side. Edges of at most 0.01 units are left out. The edge created last
    /// stands first: the closing edge of the last polygon.
    static std::vector<LevelBspNode> buildInitialNodeList(std::list<Polygon2D>& polygons);

    /// Cuts away what two edges in opposite directions share, and makes one edge of two that run on in line.
    /// Every edge, from the front of the list, is compared with those behind it until something happens to
    /// it; pieces go to the back, where they are compared in their turn. Edges of destructable polygons stay
    /// whole.
    ///
    /// Of edges beyond 65,536 units, pieces can come back in a circle by rounding. Where there are more cuts
    /// than any other edges ask for, all begins anew, and two edges of which a cut would leave just these two
    /// again stay whole; where that does not end either, nothing is cut, and the answer is false.
    static bool optimiseInitialNodeList(std::vector<LevelBspNode>& edges);

    static void removeCaulkNodes(std::vector<LevelBspNode>& edges);

    /// The tree of the edges, in one block: each node is followed by its subtree behind and then by the one
    /// in front, so that the root stands first. Pointers lead into the block.
    static std::vector<LevelBspNode> buildTree(const std::vector<LevelBspNode>& edges);
};

} // namespace tarnwick
