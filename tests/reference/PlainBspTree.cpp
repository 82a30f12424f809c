#include "reference/PlainBspTree.h"

#include "core/Geometry.h"
#include "level/Polygon2D.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <vector>

namespace tarnwick {

namespace {

using NodeList = PlainBspTree::NodeList;

bool coincide(Vector2 a, Vector2 b) {
    return std::abs(a.x - b.x) < 0.01f && std::abs(a.y - b.y) < 0.01f;
}

bool isOverlapping(float position, float length) {
    return position >= 0.0001f && position < length - 0.0001f;
}

bool isInside(float position, float length) {
    return position > 0.01f && position < length - 0.01f;
}

LevelBspNode pieceOf(const LevelBspNode& parent, Vector2 start, Vector2 end) {
    LevelBspNode piece = parent;
    piece.start = start;
    piece.end = end;
    piece.length = distanceBetween(start, end);
    return piece;
}

bool isSameStretch(const LevelBspNode& a, const LevelBspNode& b) {
    return a.start == b.start && a.end == b.end;
}

/// False when the two do not overlap in one line, or, with `ends`, would come out as they are.
bool cut(NodeList& list, const LevelBspNode& e1, const LevelBspNode& e2, bool ends) {
    const float p1 = dotProduct(e2.start - e1.start, e1.normal);
    const float p2 = dotProduct(e2.end - e1.start, e1.normal);
    const float s1 = dotProduct(e1.start - e2.start, e2.direction);
    const float s2 = dotProduct(e1.end - e2.start, e2.direction);
    const float t1 = dotProduct(e2.start - e1.start, e1.direction);
    const float t2 = dotProduct(e2.end - e1.start, e1.direction);
    const bool collinear = std::abs(p1) < 0.01f && std::abs(p2) < 0.01f;
    const bool overlapping = isOverlapping(s1, e2.length) || isOverlapping(s2, e2.length) ||
                             isOverlapping(t1, e1.length) || isOverlapping(t2, e1.length);
    if (!collinear || !overlapping) {
        return false;
    }
    std::vector<LevelBspNode> second;
    std::vector<LevelBspNode> first;
    if (isInside(s1, e2.length)) {
        second.push_back(pieceOf(e2, e1.start, e2.end));
    }
    if (isInside(s2, e2.length)) {
        second.push_back(pieceOf(e2, e2.start, e1.end));
    }
    if (isInside(t1, e1.length)) {
        first.push_back(pieceOf(e1, e2.start, e1.end));
    }
    if (isInside(t2, e1.length)) {
        first.push_back(pieceOf(e1, e1.start, e2.end));
    }
    if (ends && first.size() == 1 && second.size() == 1 && isSameStretch(first[0], e1) &&
        isSameStretch(second[0], e2)) {
        return false; // they would be cut for ever
    }
    for (const std::vector<LevelBspNode>* const pieces : {&second, &first}) {
        for (const LevelBspNode& piece : *pieces) {
            list.push_back(new LevelBspNode(piece));
        }
    }
    return true;
}

enum class Deletion { none, first, both };

/// What is left to be cut, and whether two edges that would come out as they are stay.
struct Cuts {
    std::uint64_t left = 0;
    bool ends = true;
};

Deletion treatPair(NodeList& list, const LevelBspNode& e1, LevelBspNode& e2, Cuts& cuts) {
    if (coincide(e1.end, e2.start)) {
        if (coincide(e1.start, e2.end)) {
            return Deletion::both;
        }
        if (dotProduct(e1.direction, e2.direction) > 0.9999f) {
            e2.start = e1.start;
            e2.length = e2.length + e1.length;
            return Deletion::first;
        }
    }
    if (cuts.left == 0 || !cut(list, e1, e2, cuts.ends)) {
        return Deletion::none;
    }
    --cuts.left;
    return Deletion::both;
}

bool edgeIntersect(Vector2 rayStart, Vector2& rayEnd, Vector2 edgeStart, Vector2 edgeEnd) {
    constexpr float untouched = 1e30f;
    Vector2 meeting{untouched, untouched};
    lineIntersection(rayStart, rayEnd, edgeStart, edgeEnd, meeting);
    if (meeting.x == untouched && meeting.y == untouched) {
        return false;
    }
    const auto parameter = [meeting](Vector2 start, Vector2 end) {
        const float dx = end.x - start.x;
        const float dy = end.y - start.y;
        return std::abs(dy) < std::abs(dx) ? (meeting.x - start.x) / dx : (meeting.y - start.y) / dy;
    };
    const auto isShare = [](float t) { return t >= 0.0f && t <= 1.0f && !std::signbit(t); };
    if (!isShare(parameter(rayStart, rayEnd)) || !isShare(parameter(edgeStart, edgeEnd))) {
        return false;
    }
    rayEnd = meeting;
    return true;
}

NodeList copyOf(const NodeList& list) {
    NodeList copy;
    for (const LevelBspNode* const node : list) {
        copy.push_back(new LevelBspNode(*node));
    }
    return copy;
}

void deleteAll(NodeList& list) {
    for (const LevelBspNode* const node : list) {
        delete node;
    }
    list.clear();
}

void optimise(NodeList& list, Cuts& cuts) {
    auto e1 = list.begin();
    while (e1 != list.end()) {
        Deletion deletion = Deletion::none;
        auto e2 = e1;
        for (; e2 != list.end(); ++e2) {
            if (e1 == e2 || (*e1)->polygon->destructable || (*e2)->polygon->destructable) {
                continue;
            }
            deletion = treatPair(list, **e1, **e2, cuts);
            if (deletion != Deletion::none) {
                break;
            }
        }
        if (deletion == Deletion::both) {
            delete *e2;
            list.erase(e2);
        }
        if (deletion != Deletion::none) {
            delete *e1;
            e1 = list.erase(e1);
        } else {
            ++e1;
        }
    }
}

} // namespace

PlainBspTree::PlainBspTree(std::list<Polygon2D>& polygons) {
    NodeList list = buildInitialNodeList(polygons);
    optimiseInitialNodeList(list);
    removeCaulkNodes(list);
    root = partitionSide(nullptr, list);
}

PlainBspTree::~PlainBspTree() {
    deleteNodes(root);
}

NodeList PlainBspTree::buildInitialNodeList(std::list<Polygon2D>& polygons) {
    NodeList list;
    for (Polygon2D& polygon : polygons) {
        if (polygon.triangleCount == 0 || polygon.pointsX.size() < 2) {
            continue;
        }
        const bool caulk = !polygon.collideable && !polygon.drawable;
        if (!caulk && !(polygon.collideable && !polygon.moveable)) {
            continue;
        }
        const std::size_t count = polygon.pointsX.size();
        for (std::size_t i = 0; i < count; ++i) {
            const Vector2 a{polygon.pointsX[i], polygon.pointsY[i]};
            const Vector2 b{polygon.pointsX[(i + 1) % count], polygon.pointsY[(i + 1) % count]};
            LevelBspNode node;
            node.start = polygon.counterClockwise ? a : b;
            node.end = polygon.counterClockwise ? b : a;
            node.direction = node.end - node.start;
            node.length = distanceBetween(node.start, node.end);
            if (node.length <= 0.01f) {
                continue;
            }
            normaliseVector(node.direction);
            node.normal = {-node.direction.y, node.direction.x};
            node.hasEdge = true;
            node.friction = polygon.frictionLevel;
            node.polygon = &polygon;
            node.caulk = caulk;
            list.push_front(new LevelBspNode(node));
        }
    }
    return list;
}

void PlainBspTree::optimiseInitialNodeList(NodeList& list) {
    const std::uint64_t count = list.size();
    const auto patience = std::min<std::uint64_t>(4 * count * count + 1000, 64 * count + 1000000);
    NodeList uncut = copyOf(list);
    for (const Cuts& cuts : {Cuts{patience, false}, Cuts{patience, true}, Cuts{0, true}}) {
        deleteAll(list);
        list = copyOf(uncut);
        Cuts left = cuts;
        optimise(list, left);
        if (left.left > 0) {
            break;
        }
    }
    deleteAll(uncut);
}

bool PlainBspTree::optimiseWithoutEnd(NodeList& list, std::uint64_t patience) {
    Cuts cuts{patience, false};
    optimise(list, cuts);
    return cuts.left > 0;
}

void PlainBspTree::removeCaulkNodes(NodeList& list) {
    for (auto node = list.begin(); node != list.end();) {
        if ((*node)->caulk) {
            delete *node;
            node = list.erase(node);
        } else {
            ++node;
        }
    }
}

LevelBspNode* PlainBspTree::choosePartitionNode(const NodeList& list) {
    LevelBspNode* best = nullptr;
    long bestScore = 0;
    for (LevelBspNode* c : list) {
        long balance = 0;
        long splits = 0;
        for (const LevelBspNode* e : list) {
            if (e == c) {
                continue;
            }
            const float a = dotProduct(e->start - c->start, c->normal);
            const float b = dotProduct(e->end - c->start, c->normal);
            if (a >= 0.0f && b >= 0.0f) {
                balance += 1;
            }
            if (a < 0.0f && b < 0.0f) {
                balance -= 1;
            }
            if ((a >= 0.0f && b < 0.0f) || (a < 0.0f && b >= 0.0f)) {
                splits += 1;
            }
        }
        const long score = std::labs(balance) + splits;
        if (best == nullptr || score < bestScore) {
            best = c;
            bestScore = score;
        }
    }
    return best;
}

/// Picks a node from one side, takes it out and divides the rest; null for an empty side.
LevelBspNode* PlainBspTree::partitionSide(LevelBspNode* parent, NodeList& side) {
    LevelBspNode* node = choosePartitionNode(side);
    if (node != nullptr) {
        side.remove(node);
        node->parent = parent;
        bspPartition(node, side);
    }
    return node;
}

void PlainBspTree::bspPartition(LevelBspNode* node, const NodeList& list) {
    NodeList back;
    NodeList front;
    for (LevelBspNode* e : list) {
        const float a = dotProduct(e->start - node->start, node->normal);
        const float b = dotProduct(e->end - node->start, node->normal);
        if (a >= 0.0f && b >= -0.1f) {
            front.push_back(e);
            continue;
        }
        if (a < 0.0f && b < 0.1f) {
            back.push_back(e);
            continue;
        }
        Vector2 p = e->start;
        lineIntersection(e->start, e->end, node->start, node->end, p);
        const float along = dotProduct(p - e->start, e->direction);
        if (along < 0.0f) {
            p = e->start;
        } else if (along > e->length) {
            p = e->end;
        }
        const Vector2 ends[2][2] = {{e->start, p}, {p, e->end}};
        for (int i = 0; i < 2; ++i) {
            LevelBspNode piece;
            piece.start = ends[i][0];
            piece.end = ends[i][1];
            piece.direction = piece.end - piece.start;
            normaliseVector(piece.direction);
            piece.normal = {-piece.direction.y, piece.direction.x};
            piece.length = distanceBetween(piece.start, piece.end);
            piece.friction = e->friction;
            piece.hasEdge = e->hasEdge;
            piece.polygon = e->polygon;
            const bool toBack = (a < 0.0f) == (i == 0);
            if (piece.length > 0.01f) {
                (toBack ? back : front).push_back(new LevelBspNode(piece));
            }
        }
        delete e;
    }
    node->behind = partitionSide(node, back);
    node->inFront = partitionSide(node, front);
}

LevelBspNode* PlainBspTree::raycast(Vector2 start, Vector2& end) const {
    if (root == nullptr || start == end) {
        return nullptr;
    }
    return raycastRecursive(root, start, end);
}

LevelBspNode* PlainBspTree::raycastRecursive(LevelBspNode* node, Vector2 rayStart, Vector2& rayEnd) {
    while (node != nullptr) {
        const float ds = dotProduct(rayStart - node->start, node->normal);
        const float de = dotProduct(rayEnd - node->start, node->normal);
        if (std::abs(ds) <= 0.025f) {
            float t = dotProduct(rayStart - node->start, node->direction);
            if (t > -0.025f && t < node->length + 0.025f) {
                t = t <= 0.025f ? 0.025f : t;
                t = t >= node->length - 0.025f ? node->length - 0.025f : t;
                rayEnd = node->start + node->direction * t;
                return node;
            }
        }
        if (ds < 0.0f && de >= 0.0f) {
            LevelBspNode* hit =
                node->behind != nullptr ? raycastRecursive(node->behind, rayStart, rayEnd) : nullptr;
            if (hit != nullptr) {
                return hit;
            }
            if (node->hasEdge && edgeIntersect(rayStart, rayEnd, node->start, node->end)) {
                return node;
            }
            node = node->inFront;
        } else if (ds >= 0.0f && de < 0.0f) {
            LevelBspNode* hit =
                node->inFront != nullptr ? raycastRecursive(node->inFront, rayStart, rayEnd) : nullptr;
            if (hit != nullptr) {
                return hit;
            }
            if (node->hasEdge && edgeIntersect(rayStart, rayEnd, node->start, node->end)) {
                return node;
            }
            node = node->behind;
        } else {
            node = ds < 0.0f ? node->behind : node->inFront;
        }
    }
    return nullptr;
}

void PlainBspTree::deleteNodes(LevelBspNode* node) {
    if (node == nullptr) {
        return;
    }
    deleteNodes(node->behind);
    deleteNodes(node->inFront);
    delete node;
}

} // namespace tarnwick
