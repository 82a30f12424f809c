#pragma once

#include "core/FrameTimer.h"
#include "core/Vector2.h"
#include "level/LevelBspNode.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarnwick {

struct CommandRow;

/// One binary space partition of the level's fixed edges; every node is one edge. Built once per level load,
/// never rebuilt in play: a polygon that a trigger removes only has its nodes switched off.
///
/// Building also removes hidden edges: where two polygons abut, the stretch they share goes from both, and
/// sides that run on in one line become one edge. Edges of moving polygons are not here, and edges of
/// destructable ones stay whole. Caulk polygons only help to hide: they leave no node.
///
/// `CircleCollision` walks the nodes itself. They lie in one block, in the order in which a walk meets them:
/// a node, then its subtree behind, then the one in front.
class LevelBspTree {
public:
    LevelBspTree() = delete;

    /// Builds the tree from the polygons of the level, whose flags `moveable` and `destructable` must stand,
    /// and registers the commands. A level without edges has a null root.
    static void create();
    /// Gives back all nodes and removes the commands.
    static void clear();
    /// Switches every edge on again, and all debug drawing off.
    static void resetTree();

    /// Null for a level without edges.
    static LevelBspNode* rootNode() { return state.rootNode; }
    /// A number that changes whenever the tree is built or cleared: what was gathered from the nodes is stale
    /// then. Never 0.
    static std::uint32_t generation() { return state.generation; }

    /// The first edge on the way from `start` to `end`: returns its node and moves `end` to the hit. An edge
    /// that the ray starts on, within 0.025 units, is hit also when it is switched off. Null without a hit,
    /// and for a ray of no length; `end` then stays.
    static LevelBspNode* raycast(const Vector2& start, Vector2& end);
    /// Appends all nodes: of each node first those behind it, then the node, then those in front of it.
    static void getNodeList(std::vector<LevelBspNode*>& nodes);
    /// Draws what the four commands ask for, in the world: splitting lines, the walked node, the rays cast
    /// last, all edges.
    static void debugDraw();

private:
    friend class ModuleReset;
    friend class LevelBspTreeDrawingTest;
    friend class LevelBspTreeTest;

    static constexpr std::size_t testRayCount = 256; ///< Rays of one pass of `BspCast`.

    /// A node whose line the ray being cast crosses, tried when nothing was hit on the near side.
    struct Crossing {
        LevelBspNode* node = nullptr;
        LevelBspNode* farSide = nullptr; ///< Subtree to go on with; null if it is empty.
    };

    struct State {
        std::vector<LevelBspNode> nodes; ///< The whole tree; its root first.
        LevelBspNode* rootNode = nullptr;
        LevelBspNode* walkNode = nullptr; ///< Where `BspWalk` stands.
        std::size_t depth = 0;            ///< Of the deepest node; 1 for a lone root.
        std::vector<Crossing> crossings;  ///< Room of `raycast`, for as many as the tree is deep.
        std::uint32_t generation = 1;
        bool nodeDraw = false; ///< Debug drawing, all four.
        bool splitDraw = false;
        bool castDraw = false;
        bool walkDraw = false;
        std::array<Vector2, testRayCount> testRayStarts{}; ///< Of the last pass of `BspCast`, for drawing.
        std::array<Vector2, testRayCount> testRayEnds{};
        std::optional<FrameTimer> castTimer; ///< Made by the first `BspCast`.
    };
    static State state;

    static void clearDrawSwitches();
    static bool hitsWhereItStarts(const LevelBspNode& node, const Vector2& start, Vector2& end);
    static void castTestRays(Vector2 start);

    static void drawTestRays();

    static const CommandRow commands[];
    static std::int32_t conCmdBspSize();
    static std::int32_t conCmdBspDepth();
    static void conCmdBspWalk(const std::string& direction);
    static void conCmdBspCast(const std::string& target);
};

} // namespace tarnwick
