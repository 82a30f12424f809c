#include "reference/PlainCollision.h"

#include <cmath>

namespace tarnwick {

bool PlainCollision::test(Vector2& centre, float radius) {
    gatherMoving(centre, radius);
    return testStatic(centre, radius);
}

bool PlainCollision::testStatic(Vector2& centre, float radius) {
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

void PlainCollision::gatherMoving(Vector2 centre, float radius) {
    for (const CollisionNode& edge : moving) {
        const float dx = centre.x - edge.start.x;
        const float dy = centre.y - edge.start.y;
        const float d = dx * edge.normal.x + dy * edge.normal.y;
        if (!(d >= -radius && d <= radius)) {
            continue;
        }
        const float t = dx * edge.direction.x + dy * edge.direction.y;
        if (t >= 0.0f && t <= edge.length) {
            lines.push_front(&edge);
            points.push_front(
                {{edge.start.x + edge.direction.x * t, edge.start.y + edge.direction.y * t}, edge.friction});
        } else if (t >= -radius && t <= edge.length + radius) {
            const Vector2 farEnd{edge.start.x + edge.direction.x * edge.length,
                                 edge.start.y + edge.direction.y * edge.length};
            points.push_front({t >= 0.0f ? farEnd : edge.start, edge.friction});
        }
    }
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
    for (const CollisionNode* node : lines) {
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
