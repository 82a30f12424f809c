#pragma once

#include "core/Vector2.h"

#include <cstdint>
#include <vector>

namespace tarnwick {

struct LevelBspNode;

/// Tells for every place of the level where a walk of the tree for a particle may start.
///
/// The level is covered with small square cells. From the root down, many nodes decide alike for every circle
/// of the particles' radius whose centre lies in the cell; the cell keeps the first one that does not. A walk
/// from there finds the same edges in the same order as one from the root. Most cells keep no node at all,
/// because no edge can be touched from them: then there is nothing to walk. Whether an edge is switched on is
/// left out of account, so the field stands for as long as the tree. In the field's words: a broad phase, a
/// uniform grid over the tree whose cells cache the entry point of the descent.
class CollisionField {
public:
    /// Gathers the field for a tree; null for a level without edges.
    void build(const LevelBspNode* root);

    /// Where a walk starts.
    struct Start {
        const LevelBspNode* node = nullptr; ///< Null when nothing can be in reach. Not owned.
        bool alone = false;                 ///< Nothing below the node can be in reach.
    };

    /// Where to start for a particle at `centre`.
    // no location: a look-up, for every step of every particle
    Start startAt(const Vector2& centre) const {
        const float column = (centre.x - origin.x) * cellsPerUnit;
        const float row = (centre.y - origin.y) * cellsPerUnit;
        if (!(column >= 0.0f && column < width && row >= 0.0f && row < height)) {
            return {}; // beyond all edges, or no place at all
        }
        return cells[static_cast<std::uint32_t>(row) * columns + static_cast<std::uint32_t>(column)];
    }

private:
    /// Cells of a rectangle; the end is not in it.
    struct Block {
        std::uint32_t columnBegin;
        std::uint32_t columnEnd;
        std::uint32_t rowBegin;
        std::uint32_t rowEnd;
    };
    /// The centres that a block stands for: its middle, and how far it reaches on each axis.
    struct Area {
        Vector2 middle;
        Vector2 half;
    };

    void chooseCells(const LevelBspNode* root);
    void fill(const Block& block, const LevelBspNode* node);
    Area areaOf(const Block& block) const;
    static const LevelBspNode* firstUndecided(const LevelBspNode* node, const Area& area);
    static bool mayTouch(const LevelBspNode* node, const Area& area);

    Vector2 origin;            ///< World units: the corner of cell (0, 0).
    float cellSize = 0.0f;     ///< World units.
    float cellsPerUnit = 0.0f; ///< 1 / `cellSize`, a power of two.
    float width = 0.0f;        ///< `columns` and `rows` as floats.
    float height = 0.0f;
    std::uint32_t columns = 0;
    std::uint32_t rows = 0;
    std::vector<Start> cells; ///< Row by row.
};

} // namespace tarnwick
