#pragma once

#include "core/Vector2.h"
#include "level/LevelBspNode.h"

#include <cstdint>
#include <list>

namespace tarnwick {

/// A circle against the tree of the level and the moving edges, read off the rules without any cleverness:
/// new lists for each test, the whole walk from the root, newest entry first.
class PlainCollision {
public:
    const LevelBspNode* root = nullptr; ///< Not owned; null for open space.
    std::list<CollisionNode> moving;    ///< In the world.

    std::uint32_t contactCount = 0;
    Vector2 contactNormal;
    float contactFriction = 1.0f;

    bool test(Vector2& centre, float radius);
    /// Without the moving edges.
    bool testStatic(Vector2& centre, float radius);

private:
    struct Point {
        Vector2 position;
        float friction;
    };

    void gatherMoving(Vector2 centre, float radius);
    void gather(const LevelBspNode* node, Vector2 centre, float radius);
    bool resolvePoints(Vector2& centre, float radius);
    bool resolveLines(Vector2& centre, float radius);

    std::list<Point> points;
    std::list<const CollisionNode*> lines;
};

} // namespace tarnwick
