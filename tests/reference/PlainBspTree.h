#pragma once

#include "level/LevelBspNode.h"

#include <cstdint>
#include <list>

namespace tarnwick {

/// The building of the level's tree, and the ray through it, word for word and slow: every pair of edges is
/// compared, every candidate scored against all others. What `LevelBspTree` has to equal to the last bit.
class PlainBspTree {
public:
    explicit PlainBspTree(std::list<Polygon2D>& polygons);
    ~PlainBspTree();
    PlainBspTree(const PlainBspTree&) = delete;
    PlainBspTree& operator=(const PlainBspTree&) = delete;

    LevelBspNode* root = nullptr; ///< Null without edges.

    LevelBspNode* raycast(Vector2 start, Vector2& end) const;

    using NodeList = std::list<LevelBspNode*>;
    static NodeList buildInitialNodeList(std::list<Polygon2D>& polygons);
    static void optimiseInitialNodeList(NodeList& list);
    /// The same without the rules that make it end on huge edges; false when it took more cuts than
    /// `patience`.
    static bool optimiseWithoutEnd(NodeList& list, std::uint64_t patience);
    static void removeCaulkNodes(NodeList& list);
    static LevelBspNode* choosePartitionNode(const NodeList& list);

private:
    static void bspPartition(LevelBspNode* node, const NodeList& list);
    static LevelBspNode* partitionSide(LevelBspNode* parent, NodeList& side);
    static LevelBspNode* raycastRecursive(LevelBspNode* node, Vector2 rayStart, Vector2& rayEnd);
    static void deleteNodes(LevelBspNode* node);
};

} // namespace tarnwick
