#include "reference/PlainCollision.h"

#include <cmath>

namespace tarnwick {

bool PlainCollision::test(Vector2& centre, float radius) {
    contactCount = 0;
    contactNormal = {0.0f, 0.0f};
    contactFriction = 0.0f;
    gather(root, centre, radius);
    bool result = false;
    for (int pass = 1; pass <= 3; ++pass) {
        const bool pointMoved = resolvePoints(centre, radius);
        const bool lineMoved = resolveLines(centre, radius);
        if (!pointMoved && !lineMoved) {
            break;
        }
        result = true;
    }
    if (contactCount == 0) {
        contactFriction = 1.0f;
    } else {
        const float factor = 1.0f / static_cast<float>(contactCount);
        contactNormal.x = contactNormal.x * factor;
        contactNormal.y = contactNormal.y * factor;
        contactFriction = contactFriction * factor;
    }
    points.clear();
    lines.clear();
    return result;
}

void PlainCollision::gather(const LevelBspNode* node, Vector2 centre, float radius) {
    if (node == nullptr) {
        return;
    }
    const float dx = centre.x - node->start.x;
    const float dy = centre.y - node->start.y;
    const float d = dx * node->normal.x + dy * node->normal.y;
    if (d >= radius) {
        gather(node->inFront, centre, radius);
        return;
    }
    if (d < -radius) {
        gather(node->behind, centre, radius);
        return;
    }
    if (node->hasEdge) {
        const float t = dx * node->direction.x + dy * node->direction.y;
        if (t >= 0.0f && t <= node->length) {
            lines.push_front(node);
            points.push_front({{node->start.x + node->direction.x * t, node->start.y + node->direction.y * t},
                               node->friction});
        } else if (t >= -radius && t <= node->length + radius) {
            const float along = t > 0.0f ? node->length : 0.0f;
            const Vector2 farEnd{node->start.x + node->direction.x * along,
                                 node->start.y + node->direction.y * along};
            points.push_front({t > 0.0f ? farEnd : node->start, node->friction});
        }
    }
    gather(node->behind, centre, radius);
    gather(node->inFront, centre, radius);
}

bool PlainCollision::resolvePoints(Vector2& centre, float radius) {
    bool moved = false;
    for (const Point& point : points) {
        const float ex = point.position.x - centre.x;
        const float ey = point.position.y - centre.y;
        const float distance = std::sqrt(ex * ex + ey * ey);
        if (distance > 0.0f && distance < radius) {
            contactCount += 1;
            const float nx = ex / distance;
            const float ny = ey / distance;
            centre.x = centre.x + -nx * (radius - distance);
            centre.y = centre.y + -ny * (radius - distance);
            contactNormal.x += nx;
            contactNormal.y += ny;
            contactFriction += point.friction;
            moved = true;
        }
    }
    return moved;
}

bool PlainCollision::resolveLines(Vector2& centre, float radius) {
    bool moved = false;
    for (const LevelBspNode* node : lines) {
        const float d =
            (centre.x - node->start.x) * node->normal.x + (centre.y - node->start.y) * node->normal.y;
        if (d >= -radius) {
            contactCount += 1;
            centre.x = centre.x + -node->normal.x * (radius + d);
            centre.y = centre.y + -node->normal.y * (radius + d);
            contactNormal.x += node->normal.x;
            contactNormal.y += node->normal.y;
            contactFriction += node->friction;
            moved = true;
        }
    }
    return moved;
}

} // namespace tarnwick
