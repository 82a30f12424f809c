#include "particles/CollisionField.h"

#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "level/LevelBspNode.h"
#include "particles/Particle.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tarnwick {

namespace {

constexpr float smallestCell = 2.0f;          ///< World units; doubled until the level has few enough cells.
constexpr float mostCells = 1024.0f * 512.0f; ///< 8 MiB of them.
/// World units by which every test here is laxer than that of the walk: more than the rounding of both at the
/// coordinates of a level.
constexpr float slack = 0.125f;
constexpr float reach = particleRadius + slack;

/// The least and the greatest of a linear function over an area.
struct Span {
    float least;
    float greatest;
};

/// Of the distance from `start` along the unit vector `axis`.
Span distances(Vector2 start, Vector2 axis, Vector2 middle, Vector2 half) {
    TARNWICK_LOCATION("CollisionField::distances");
    const float distance = dotProduct(middle - start, axis);
    const float spread = std::abs(axis.x) * half.x + std::abs(axis.y) * half.y;
    return {distance - spread, distance + spread};
}

/// Grows the rectangle `low` to `high` by all edges of a subtree.
void includeEdges(const LevelBspNode* node, Vector2& low, Vector2& high) {
    TARNWICK_LOCATION("CollisionField::includeEdges");
    for (; node != nullptr; node = node->inFront) {
        for (const Vector2 end : {node->start, node->end}) {
            low = {std::min(low.x, end.x), std::min(low.y, end.y)};
            high = {std::max(high.x, end.x), std::max(high.y, end.y)};
        }
        includeEdges(node->behind, low, high);
    }
}

} // namespace

void CollisionField::build(const LevelBspNode* root) {
    TARNWICK_LOCATION("CollisionField::build");
    *this = {};
    if (root == nullptr) {
        return;
    }
    chooseCells(root);
    cells.resize(std::size_t{columns} * rows);
    fill({0, columns, 0, rows}, root);
}

void CollisionField::chooseCells(const LevelBspNode* root) {
    TARNWICK_LOCATION("CollisionField::chooseCells");
    Vector2 low = root->start;
    Vector2 high = root->start;
    includeEdges(root, low, high);
    constexpr float border = 2.0f * particleRadius; // an end is touched from 1.42 radii away at the most
    origin = low - Vector2{border, border};
    const Vector2 extent = high - low + Vector2{2.0f * border, 2.0f * border};
    cellSize = smallestCell;
    while ((extent.x / cellSize + 1.0f) * (extent.y / cellSize + 1.0f) > mostCells) {
        cellSize *= 2.0f;
    }
    cellsPerUnit = 1.0f / cellSize;
    width = std::ceil(extent.x * cellsPerUnit);
    height = std::ceil(extent.y * cellsPerUnit);
    columns = static_cast<std::uint32_t>(width);
    rows = static_cast<std::uint32_t>(height);
}

CollisionField::Area CollisionField::areaOf(const Block& block) const {
    TARNWICK_LOCATION("CollisionField::areaOf");
    const Vector2 begin{static_cast<float>(block.columnBegin), static_cast<float>(block.rowBegin)};
    const Vector2 end{static_cast<float>(block.columnEnd), static_cast<float>(block.rowEnd)};
    return {origin + (begin + end) * (0.5f * cellSize), (end - begin) * (0.5f * cellSize)};
}

void CollisionField::fill(const Block& block, const LevelBspNode* node) {
    TARNWICK_LOCATION("CollisionField::fill");
    const Area area = areaOf(block);
    node = firstUndecided(node, area);
    if (!mayTouch(node, area)) {
        return; // the cells are null already
    }
    const std::uint32_t blockColumns = block.columnEnd - block.columnBegin;
    const std::uint32_t blockRows = block.rowEnd - block.rowBegin;
    if (blockColumns == 1 && blockRows == 1) {
        const bool alone = !mayTouch(node->behind, area) && !mayTouch(node->inFront, area);
        cells[block.rowBegin * columns + block.columnBegin] = {node, alone};
        return;
    }
    Block first = block;
    Block second = block;
    if (blockColumns > blockRows) {
        first.columnEnd = second.columnBegin = block.columnBegin + blockColumns / 2;
    } else {
        first.rowEnd = second.rowBegin = block.rowBegin + blockRows / 2;
    }
    fill(first, node);
    fill(second, node);
}

const LevelBspNode* CollisionField::firstUndecided(const LevelBspNode* node, const Area& area) {
    TARNWICK_LOCATION("CollisionField::firstUndecided");
    while (node != nullptr) {
        const Span d = distances(node->start, node->normal, area.middle, area.half);
        if (d.least > reach) {
            node = node->inFront;
        } else if (d.greatest < -reach) {
            node = node->behind;
        } else {
            return node;
        }
    }
    return nullptr;
}

bool CollisionField::mayTouch(const LevelBspNode* node, const Area& area) {
    TARNWICK_LOCATION("CollisionField::mayTouch");
    node = firstUndecided(node, area);
    if (node == nullptr) {
        return false;
    }
    const Span t = distances(node->start, node->direction, area.middle, area.half);
    if (t.greatest >= -reach && t.least <= node->length + reach) {
        return true;
    }
    return mayTouch(node->behind, area) || mayTouch(node->inFront, area);
}

} // namespace tarnwick
