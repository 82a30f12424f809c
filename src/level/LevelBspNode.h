#pragma once

#include "core/Vector2.h"

namespace tarnwick {

class Polygon2D;

/// What a circle needs to know of an edge; the one record for fixed and moving edges.
struct CollisionNode {
    Vector2 start;     ///< First end, world units.
    Vector2 end;       ///< Second end, world units.
    Vector2 normal;    ///< Unit, (-direction.y, direction.x): points into the solid, free space is negative.
    Vector2 direction; ///< Unit, from `start` to `end`.
    float length = 0.0f;   ///< World units.
    float friction = 0.0f; ///< Share of speed kept after one second of contact, 0 to 1.
    bool hasEdge = true;   ///< Can be hit. Switched per polygon while a level runs; moving edges always can.
};

/// One fixed edge of the level: a node of the tree.
struct LevelBspNode : CollisionNode {
    bool caulk = false;              ///< Of a polygon neither solid nor seen; gone before the partition.
    Polygon2D* polygon = nullptr;    ///< Owner of the edge; not owned.
    LevelBspNode* parent = nullptr;  ///< Null at the root.
    LevelBspNode* behind = nullptr;  ///< Subtree on the negative side; the console calls it LEFT.
    LevelBspNode* inFront = nullptr; ///< Subtree on the positive side; the console calls it RIGHT.
};

} // namespace tarnwick
