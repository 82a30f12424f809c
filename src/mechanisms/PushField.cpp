#include "mechanisms/PushField.h"

#include "core/Geometry.h"
#include "core/LocationStack.h"

#include <algorithm>

namespace tarnwick {

namespace {

constexpr float smallestCell = 8.0f;  ///< World units; doubled until there are few enough cells.
constexpr float mostCells = 16384.0f; ///< 128 KiB of them.
constexpr float farthest = 1e6f;      ///< World units: who is beyond shares the cells of the border.
constexpr float slack = 0.125f;       ///< World units: more than the rounding of a distance.

} // namespace

void PushField::load(ParticleList& particles) {
    TARNWICK_LOCATION("PushField::load");
    entries.clear();
    for (Particle& particle : particles) {
        entries.push_back({.position = particle.position, .particle = &particle});
    }
    left.assign(entries.size(), 1);
    layCells();
    fillCells();
}

void PushField::fillCells() {
    TARNWICK_LOCATION("PushField::fillCells");
    for (Entry& entry : entries) {
        entry.cell = rowOf(entry.position.y) * columns + columnOf(entry.position.x);
        ++cells[entry.cell].end; // counts, for now
    }
    std::uint32_t begin = 0;
    for (Cell& cell : cells) {
        const std::uint32_t count = cell.end;
        cell = {begin, begin};
        begin += count;
    }
    slots.resize(entries.size());
    std::uint32_t candidate = 0;
    for (Entry& entry : entries) {
        entry.slot = cells[entry.cell].end++;
        slots[entry.slot] = candidate++;
    }
}

void PushField::layCells() {
    TARNWICK_LOCATION("PushField::layCells");
    everybody = {};
    bounds = {};
    for (const Entry& entry : entries) {
        everybody.add(Box::around(entry.position, entry.position));
        const Vector2 place{std::clamp(entry.position.x, -farthest, farthest),
                            std::clamp(entry.position.y, -farthest, farthest)};
        bounds.add(Box::around(place, place)); // what is no number is left out
    }
    columns = rows = 1;
    cellsPerUnit = 0.0f;
    const float width = bounds.maxX - bounds.minX;
    const float height = bounds.maxY - bounds.minY;
    if (width >= 0.0f && height >= 0.0f) {
        float cellSize = smallestCell;
        while ((width / cellSize + 1.0f) * (height / cellSize + 1.0f) > mostCells) {
            cellSize *= 2.0f;
        }
        cellsPerUnit = 1.0f / cellSize;
        columns = static_cast<std::uint32_t>(width * cellsPerUnit) + 1;
        rows = static_cast<std::uint32_t>(height * cellsPerUnit) + 1;
    }
    cells.assign(std::size_t{columns} * rows, {});
}

void PushField::findInBox(const Box& box, std::vector<std::uint32_t>& result) const {
    TARNWICK_LOCATION("PushField::findInBox");
    result.clear();
    if (!everybody.touches(box)) {
        return; // most polygons move where there is no water
    }
    const std::uint32_t lastColumn = columnOf(box.maxX);
    const std::uint32_t lastRow = rowOf(box.maxY);
    const std::uint32_t firstColumn = columnOf(box.minX);
    for (std::uint32_t row = rowOf(box.minY); row <= lastRow; ++row) {
        for (std::uint32_t column = firstColumn; column <= lastColumn; ++column) {
            const Cell& cell = cells[row * columns + column];
            for (std::uint32_t slot = cell.begin; slot < cell.end; ++slot) {
                const std::uint32_t candidate = slots[slot];
                if (box.holds(entries[candidate].position)) {
                    result.push_back(candidate);
                }
            }
        }
    }
    std::ranges::sort(result);
}

void PushField::takeWithin(Vector2 middle, float radius, std::vector<Particle*>& taken) {
    TARNWICK_LOCATION("PushField::takeWithin");
    found.clear();
    const float radiusSquared = radius * radius;
    const float reach = radius + slack;
    const std::uint32_t lastColumn = columnOf(middle.x + reach);
    const std::uint32_t lastRow = rowOf(middle.y + reach);
    const std::uint32_t firstColumn = columnOf(middle.x - reach);
    for (std::uint32_t row = rowOf(middle.y - reach); row <= lastRow; ++row) {
        for (std::uint32_t column = firstColumn; column <= lastColumn; ++column) {
            const Cell& cell = cells[row * columns + column];
            for (std::uint32_t slot = cell.begin; slot < cell.end; ++slot) {
                const Vector2 apart = entries[slots[slot]].position - middle;
                if (dotProduct(apart, apart) <= radiusSquared) {
                    found.push_back(slots[slot]);
                }
            }
        }
    }
    std::ranges::sort(found);
    for (const std::uint32_t candidate : found) {
        taken.push_back(&take(candidate));
    }
}

Particle& PushField::take(std::uint32_t candidate) {
    TARNWICK_LOCATION("PushField::take");
    Entry& entry = entries[candidate];
    Cell& cell = cells[entry.cell];
    --cell.end;
    const std::uint32_t moved = slots[cell.end]; // the last of the cell fills the gap
    slots[entry.slot] = moved;
    entries[moved].slot = entry.slot;
    left[candidate] = 0;
    return *entry.particle;
}

std::uint32_t PushField::nextLeft(std::uint32_t candidate) const {
    TARNWICK_LOCATION("PushField::nextLeft");
    const auto next = std::find(left.begin() + candidate + 1, left.end(), std::uint8_t{1});
    return next == left.end() ? none : static_cast<std::uint32_t>(next - left.begin());
}

} // namespace tarnwick
