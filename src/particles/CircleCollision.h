#pragma once

#include "core/Vector2.h"
#include "particles/CollisionField.h"
#include "particles/MovingEdgeField.h"

#include <cstdint>
#include <vector>

namespace tarnwick {

struct CollisionNode;
struct LevelBspNode;

/// A point that a circle may touch: the nearest point of an edge, or an end of one.
struct CollisionPoint {
    Vector2 position;      ///< World units.
    float friction = 0.0f; ///< Of the edge: share of speed kept after 1 s of contact.
};

/// Moves one circle out of the level: the only collision code for water and ice.
///
/// A test pushes the position out of every edge and edge end in reach and leaves behind the mean contact
/// normal and the mean surface friction; it changes no velocity, that is the caller's part. The edges near
/// the circle come from the level's tree and from a flat list of moving edges, which tell nothing of their
/// motion: what a moving polygon meets is pushed before. One test at a time: results hold
/// until the next one.
class CircleCollision {
public:
    CircleCollision() = delete;

    /// Moves `centre` (world units) out of all edges within `radius`, in at most three passes. True if
    /// anything was hit; a contact that moves by zero is a hit too.
    static bool collisionTest(Vector2& centre, float radius);
    /// The same against the edges that never move: for what a moving polygon pushes.
    static bool collisionTestStatic(Vector2& centre, float radius);

    /// Mean of the last test's contact normals, pointing into the solid; below unit length in a corner, zero
    /// without a contact. An edge that was hit in two passes counts twice.
    static Vector2 contactNormal() { return state.contactNormal; }
    /// Mean friction of the last test's contacts: share of speed kept after 1 s of contact; 1 without a
    /// contact.
    static float contactFriction() { return state.contactFriction; }

    /// Gets ready for the level's tree, which the first test after a change of the level would do else.
    static void prepare();
    /// Takes the list of the moving edges, which stand still until the next call and stay where they are;
    /// most of the water is within `reach` world units of `middle` on each axis. Once a tick.
    static void takeMovingEdges(const std::vector<LevelBspNode>& edges, Vector2 middle, float reach);

private:
    friend class ModuleReset;
    friend class SimulationState;

    struct State {
        CollisionField field;                             ///< Of the tree of `fieldGeneration`.
        std::uint32_t fieldGeneration = 0;                ///< Of `LevelBspTree`; 0 for none.
        std::size_t treeSize = 0;                         ///< Nodes of that tree.
        const std::vector<LevelBspNode>* edges = nullptr; ///< That move. Not owned; null until taken.
        MovingEdgeField movingEdges;                      ///< Of them.
        /// Candidates of the test that runs, in the order found; they are resolved from the last to the
        /// first. There is always room for every edge of the level, and those that move.
        std::vector<CollisionPoint> collisionPoints;
        std::vector<const CollisionNode*> collisionNodes; ///< Not owned.
        std::size_t pointCount = 0;
        std::size_t nodeCount = 0;
        std::vector<const LevelBspNode*> openNodes; ///< Subtrees the walk comes back to, the next one last.
        std::uint32_t contactCount = 0;             ///< Contacts resolved in the last test.
        Vector2 contactNormal;
        float contactFriction = 1.0f;
    };
    static State state;

    static void makeRoom();
    static bool testAgainstTree(Vector2& centre, float radius);
    /// Gathers the candidates among the moving edges, in the order of their list.
    static void buildDynamicPointsAndNodesList(const Vector2& collisionCentre, float collisionRadius);
    /// Gathers the candidates of the tree: of each node first its own, then those behind, then those in
    /// front. Of an edge that the centre projects onto, the edge and its nearest point; else the end in
    /// reach.
    static void buildPointsAndNodesList(const Vector2& collisionCentre, float collisionRadius);
    /// Moves the circle out of all candidates, points first, and derives the means.
    static bool resolveCollisions(Vector2& collisionCentre, float collisionRadius);
};

} // namespace tarnwick
