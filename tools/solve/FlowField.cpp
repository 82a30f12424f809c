#include "tools/solve/FlowField.h"

#include "core/Box.h"
#include "level/Level.h"
#include "mechanisms/TriggerManager.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <queue>
#include <utility>

namespace tarnwick {

namespace {

constexpr float margin = 60.0f;              ///< World units around everything.
constexpr std::size_t mostCells = 4'000'000; ///< A larger level has larger cells.
constexpr float deadlyFactor = 12.0f;        ///< A way through what kills counts so many times.
constexpr float wallFactor = 4.0f;           ///< And one in a wall, for who has got into one.
constexpr std::int32_t endOfLevel = 801;     ///< Action codes of triggers.
constexpr std::int32_t particleKill = 701;

void addPoint(Box& box, Vector2 point) {
    box.add(Box::around(point, point));
}

/// Where the horizontal line at `y` crosses the outline, ascending.
std::vector<float> crossings(const Polygon2D& polygon, float y) {
    std::vector<float> found;
    const std::size_t count = polygon.pointsX.size();
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t next = (i + 1) % count;
        const float y1 = polygon.pointsY[i];
        const float y2 = polygon.pointsY[next];
        if ((y1 <= y) != (y2 <= y)) {
            const float share = (y - y1) / (y2 - y1);
            found.push_back(polygon.pointsX[i] + (polygon.pointsX[next] - polygon.pointsX[i]) * share);
        }
    }
    std::ranges::sort(found);
    return found;
}

} // namespace

FlowField::FlowField() {
    chooseGrid();
    markWalls();
    markDeadly();
    distances.assign(walls.size(), 2.0f * farthest);
    std::vector<Open> cells = finishCells();
    finish = !cells.empty();
    spread(std::move(cells), false);
    std::vector<Open> reached;
    for (std::size_t cell = 0; cell < distances.size(); ++cell) {
        if (distances[cell] < farthest) {
            reached.push_back({distances[cell], static_cast<std::uint32_t>(cell)});
        }
    }
    spread(std::move(reached), true);
}

void FlowField::chooseGrid() {
    const Vector2 start = Level::waterStart();
    Box box = Box::around(start, start);
    for (const Polygon2D& polygon : Level::polygons) {
        for (std::size_t i = 0; i < polygon.pointsX.size(); ++i) {
            addPoint(box, {polygon.pointsX[i], polygon.pointsY[i]});
        }
    }
    for (const Trigger& trigger : TriggerManager::triggers) {
        addPoint(box, {trigger.minX, trigger.minY});
        addPoint(box, {trigger.maxX, trigger.maxY});
    }
    origin = {box.minX - margin, box.minY - margin};
    const float width = box.maxX - box.minX + 2.0f * margin;
    const float height = box.maxY - box.minY + 2.0f * margin;
    while (width / cellSize * (height / cellSize) > static_cast<float>(mostCells)) {
        cellSize *= 2.0f;
    }
    columnCount = static_cast<std::size_t>(width / cellSize) + 1;
    rowCount = static_cast<std::size_t>(height / cellSize) + 1;
    walls.assign(columnCount * rowCount, false);
    deadly.assign(columnCount * rowCount, false);
}

void FlowField::markWalls() {
    for (const Polygon2D& polygon : Level::polygons) {
        if (!polygon.collideable || polygon.triangleCount == 0 || polygon.moveable || polygon.destructable) {
            continue;
        }
        for (std::size_t row = 0; row < rowCount; ++row) {
            const std::vector<float> found = crossings(polygon, middleOf(row * columnCount).y);
            for (std::size_t pair = 0; pair + 1 < found.size(); pair += 2) {
                const float first = std::ceil((found[pair] - origin.x) / cellSize - 0.5f);
                const float last = std::floor((found[pair + 1] - origin.x) / cellSize - 0.5f);
                for (float column = std::max(first, 0.0f); column <= last; column += 1.0f) {
                    walls[row * columnCount + static_cast<std::size_t>(column)] = true;
                }
            }
        }
    }
}

void FlowField::markDeadly() {
    for (const Trigger& trigger : TriggerManager::triggers) {
        if (static_cast<std::int32_t>(trigger.typeId) != particleKill) {
            continue;
        }
        for (std::size_t cell = 0; cell < deadly.size(); ++cell) {
            if (TriggerManager::pointInTrigger(middleOf(cell), trigger)) {
                deadly[cell] = true;
            }
        }
    }
}

std::vector<FlowField::Open> FlowField::finishCells() {
    std::vector<Open> open;
    for (const Trigger& trigger : TriggerManager::triggers) {
        if (static_cast<std::int32_t>(trigger.typeId) != endOfLevel) {
            continue;
        }
        for (std::size_t cell = 0; cell < walls.size(); ++cell) {
            if (!walls[cell] && distances[cell] > 0.0f &&
                TriggerManager::pointInTrigger(middleOf(cell), trigger)) {
                distances[cell] = 0.0f;
                open.push_back({0.0f, static_cast<std::uint32_t>(cell)});
            }
        }
    }
    return open;
}

/// The shortest ways from the open cells on, through eight neighbours each.
void FlowField::spread(std::vector<Open> open, bool throughWalls) {
    std::priority_queue<Open> queue(std::less<Open>(), std::move(open));
    const auto width = static_cast<std::ptrdiff_t>(columnCount);
    while (!queue.empty()) {
        const Open here = queue.top();
        queue.pop();
        if (here.distance > distances[here.cell]) {
            continue; // a shorter way came since
        }
        const auto row = static_cast<std::ptrdiff_t>(here.cell) / width;
        const auto column = static_cast<std::ptrdiff_t>(here.cell) % width;
        for (std::ptrdiff_t y = -1; y <= 1; ++y) {
            for (std::ptrdiff_t x = -1; x <= 1; ++x) {
                if (row + y < 0 || row + y >= static_cast<std::ptrdiff_t>(rowCount) || column + x < 0 ||
                    column + x >= width) {
                    continue;
                }
                const auto next = static_cast<std::size_t>((row + y) * width + column + x);
                if (walls[next] && !throughWalls) {
                    continue;
                }
                const float length = x != 0 && y != 0 ? std::sqrt(2.0f) : 1.0f;
                const float factor = walls[next] ? wallFactor : deadly[next] ? deadlyFactor : 1.0f;
                const float there = here.distance + length * factor * cellSize;
                if (there < distances[next] && (walls[next] || !throughWalls)) {
                    distances[next] = there;
                    queue.push({there, static_cast<std::uint32_t>(next)});
                }
            }
        }
    }
}

std::size_t FlowField::cellAt(Vector2 place) const {
    const auto within = [this](float offset, std::size_t count) {
        const float number = offset / cellSize;
        return number > 0.0f ? std::min(static_cast<std::size_t>(std::min(number, 1.0e6f)), count - 1) : 0;
    };
    return within(place.y - origin.y, rowCount) * columnCount + within(place.x - origin.x, columnCount);
}

Vector2 FlowField::middleOf(std::size_t cell) const {
    return {origin.x + (static_cast<float>(cell % columnCount) + 0.5f) * cellSize,
            origin.y + (static_cast<float>(cell / columnCount) + 0.5f) * cellSize};
}

} // namespace tarnwick
