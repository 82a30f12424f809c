#include "support/RandomLevels.h"

#include "level/Level.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace tarnwick {

void RandomLevels::make(std::size_t polygons) {
    const std::uint32_t kind = random.below(6);
    const std::size_t share = kind == 5 ? std::max<std::size_t>(1, polygons / 5) : polygons;
    if (kind == 0 || kind == 5) {
        addGrid(share);
    }
    if (kind == 1 || kind == 5) {
        addRectangles(share);
    }
    if (kind == 2 || kind == 5) {
        addBentWall(share);
    }
    if (kind == 3 || kind == 5) {
        addOutlines(share);
    }
    if (kind == 4 || kind == 5) {
        addCrumbs(share);
    }
}

void RandomLevels::makeHuge(std::size_t polygons) {
    const std::uint32_t reach = 1u << (12 + random.below(20));
    const auto coordinate = [&] {
        return static_cast<float>(static_cast<std::int64_t>(random.below(2 * reach - 1)) -
                                  static_cast<std::int64_t>(reach));
    };
    std::vector<std::vector<Vector2>> outlines;
    while (outlines.size() < polygons) {
        std::vector<Vector2> outline;
        if (outlines.empty() || random.below(2) == 0) {
            for (std::uint32_t points = 3 + random.below(2); points > 0; --points) {
                const float x = coordinate();
                outline.push_back({x, coordinate()});
            }
        } else {
            outline = outlines[random.below(static_cast<std::uint32_t>(outlines.size()))];
            const std::size_t side = random.below(static_cast<std::uint32_t>(outline.size()));
            const Vector2 along = outline[(side + 1) % outline.size()] - outline[side];
            const float share = static_cast<float>(random.below(9)) / 4.0f - 1.0f; // 0: the same place
            for (Vector2& point : outline) {
                point.x = std::round(point.x + along.x * share);
                point.y = std::round(point.y + along.y * share);
            }
        }
        outlines.push_back(outline);
    }
    for (const std::vector<Vector2>& outline : outlines) {
        add(outline);
    }
}

void RandomLevels::add(const std::vector<Vector2>& points) {
    std::vector<Vector2> outline = points;
    if (random.below(3) == 0) {
        std::reverse(outline.begin(), outline.end());
    }
    Polygon2D polygon;
    polygon.addPoints(outline);
    polygon.setFrictionLevel(whole(11) * 0.1f);
    polygon.moveable = random.below(30) == 0;
    polygon.destructable = random.below(12) == 0;
    const std::uint32_t mode = random.below(20);
    polygon.collideable = mode != 1 && mode != 3;
    polygon.drawable = mode != 2 && mode != 3;
    Level::polygons.push_back(std::move(polygon));
}

void RandomLevels::addRectangle(float x, float y, float width, float height) {
    add({{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}});
}

void RandomLevels::addGrid(std::size_t polygons) {
    const float size = 5.0f + whole(60);
    for (std::size_t i = 0; i < polygons; ++i) {
        const float x = static_cast<float>(i % 7) * size;
        const float y = static_cast<float>(i / 7) * size;
        const std::uint32_t kind = random.below(8);
        if (kind == 0) {
            continue;
        }
        if (kind == 1) {
            addRectangle(x, y, size / 2.0f, size);
            addRectangle(x + size / 2.0f, y, size / 2.0f, size);
        } else {
            addRectangle(x, y, size, size);
        }
    }
}

void RandomLevels::addRectangles(std::size_t polygons) {
    for (std::size_t i = 0; i < polygons; ++i) {
        const float x = whole(20) * 10.0f;
        const float y = whole(12) * 10.0f;
        addRectangle(x, y, 10.0f + whole(6) * 10.0f, 10.0f + whole(4) * 10.0f);
    }
}

void RandomLevels::addBentWall(std::size_t polygons) {
    float left = 0.0f;
    float leftHeight = 100.0f;
    std::vector<std::vector<Vector2>> slices;
    for (std::size_t i = 0; i < polygons; ++i) {
        const float right = left + 4.0f + whole(40);
        const float rightHeight = leftHeight + whole(7) * 0.05f;
        slices.push_back({{left, 0.0f}, {right, 0.0f}, {right, rightHeight}, {left, leftHeight}});
        left = right + (random.below(3) == 0 ? whole(14) * 0.001f : 0.0f);
        leftHeight = rightHeight + (random.below(4) == 0 ? 0.006f : 0.0f);
    }
    while (!slices.empty()) { // in no order: it decides which sides become one
        const auto next = slices.begin() + random.below(static_cast<std::uint32_t>(slices.size()));
        add(*next);
        slices.erase(next);
    }
}

void RandomLevels::addOutlines(std::size_t polygons) {
    for (std::size_t i = 0; i < polygons; ++i) {
        std::vector<Vector2> points = random.any(16);
        const Vector2 place{whole(3000) - 1500.0f, whole(3000) - 1500.0f};
        for (Vector2& point : points) {
            point += place;
        }
        add(points);
    }
}

void RandomLevels::addCrumbs(std::size_t polygons) {
    for (std::size_t i = 0; i < polygons; ++i) {
        const float x = whole(300) * 0.004f;
        const float y = whole(20) * 0.004f;
        addRectangle(x, y, 0.008f + whole(40) * 0.01f, 0.008f + whole(30) * 0.003f);
    }
}

} // namespace tarnwick
