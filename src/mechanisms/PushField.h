#pragma once

#include "core/Box.h"
#include "core/Vector2.h"
#include "particles/Particle.h"
#include "particles/ParticleList.h"

#include <cstdint>
#include <vector>

namespace tarnwick {

/// The particles that no moving polygon has taken in this tick, found by place.
///
/// They stand in the order of their list, and a number tells each by its place there. A particle does not
/// move while it is a candidate, so the cells are filled once a tick; one that is taken leaves them. In the
/// field's words: a broad phase, a uniform grid filled by a counting sort.
class PushField {
public:
    static constexpr std::uint32_t none = ~0u;

    /// Makes all of `particles` candidates. The list must not change while the field is in use.
    void load(ParticleList& particles);

    /// Replaces `found` by the candidates in `box`, in order.
    void findInBox(const Box& box, std::vector<std::uint32_t>& found) const;
    /// Takes all candidates at a distance of `radius` world units or less from `middle`, in order, and
    /// appends them to `taken`.
    void takeWithin(Vector2 middle, float radius, std::vector<Particle*>& taken);

    Vector2 position(std::uint32_t candidate) const { return entries[candidate].position; }
    /// Takes one candidate.
    Particle& take(std::uint32_t candidate);
    bool isLeft(std::uint32_t candidate) const { return left[candidate] != 0; }
    /// The next candidate that is left behind this one; `none` behind the last.
    std::uint32_t nextLeft(std::uint32_t candidate) const;

private:
    struct Entry {
        Vector2 position;
        Particle* particle = nullptr; ///< Not owned.
        std::uint32_t cell = 0;
        std::uint32_t slot = 0; ///< Where in `slots` it stands.
    };
    /// A square of the world: who stands in it lies in `slots` from `begin` to `end`.
    struct Cell {
        std::uint32_t begin = 0;
        std::uint32_t end = 0;
    };

    void layCells();
    void fillCells();
    std::uint32_t columnOf(float x) const { return clampedCell((x - bounds.minX) * cellsPerUnit, columns); }
    std::uint32_t rowOf(float y) const { return clampedCell((y - bounds.minY) * cellsPerUnit, rows); }
    /// The cell at `place` cells from the border. Those of the border stand for all beyond, the first one for
    /// what is no number too.
    // no location: a few instructions, twice for each particle
    static std::uint32_t clampedCell(float place, std::uint32_t count) {
        if (!(place > 0.0f)) {
            return 0;
        }
        return place < static_cast<float>(count) ? static_cast<std::uint32_t>(place) : count - 1;
    }

    std::vector<Entry> entries;       ///< In list order, those that are taken too.
    std::vector<std::uint8_t> left;   ///< By candidate: 1 until it is taken.
    std::vector<std::uint32_t> slots; ///< Candidates, cell by cell.
    std::vector<Cell> cells;          ///< Row by row.
    std::vector<std::uint32_t> found; ///< Room of `takeWithin`.
    Box everybody;                    ///< Around all, taken or not.
    Box bounds;                       ///< The same, as far as the cells are meant for.
    float cellsPerUnit = 0.0f;
    std::uint32_t columns = 0;
    std::uint32_t rows = 0;
};

} // namespace tarnwick
