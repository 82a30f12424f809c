#pragma once

#include "level/LevelBspNode.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tarnwick {

/// Divides a list of edges into a tree: picks an edge, sorts the others by the side of its line on which they
/// lie, and goes on with either side.
///
/// The edges need not stand in the order of their list, as long as each knows its place there: that place
/// decides between candidates of one score and never changes. So they are sorted once by where they lie in
/// the plane, and the sum over all edges that scores a candidate is taken over whole blocks that lie on one
/// side of its line.
class LevelBspPartition {
public:
    /// The edges in the order of their list, without caulk.
    explicit LevelBspPartition(const std::vector<LevelBspNode>& edges);

    /// The nodes; see `LevelBspBuilder::buildTree`. A tree may be as deep as it has nodes: nothing here
    /// recurses.
    std::vector<LevelBspNode> build();

private:
    /// An edge that has no place in the tree yet.
    struct Entry {
        LevelBspNode edge;
        std::uint32_t place = 0; ///< In the list; a piece has that of the edge it was cut from.
    };
    using Entries = std::vector<Entry>;

    static constexpr std::uint32_t none = 0xFFFFFFFF;

    /// Edges that make up one side of a node.
    struct Side {
        Entries entries; ///< Never empty.
        std::uint32_t parent = none;
        bool inFront = false;
    };

    std::vector<Side> pending; ///< Sides to be divided, the next one last.
    std::vector<LevelBspNode> nodes;
    std::vector<std::uint32_t>
        parents;                  ///< For each node, index of the one above; the block of nodes still moves.
    std::vector<bool> areInFront; ///< For each node, on which side of the one above it lies.

    void divide(Side side);
    void linkNodes();

    static std::size_t choosePartitionNode(const Entries& entries);
    static void bspPartition(const LevelBspNode& node, const Entries& entries, Entries& back, Entries& front);
    static void
    splitEdge(const LevelBspNode& node, const Entry& entry, bool startsBehind, Entries& back, Entries& front);
};

} // namespace tarnwick
