#include "tools/level/WholePoints.h"

#include "tools/level/PropertyReader.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace tarnwick {

namespace {

/// World units; digits lost on the way through text, not a fraction.
constexpr double unnoticedRounding = 1e-6;

} // namespace

std::vector<LevelFile::Point> wholePoints(const TiledObject& object, std::vector<std::string>& warnings) {
    constexpr double lowest = std::numeric_limits<std::int32_t>::min();
    constexpr double highest = std::numeric_limits<std::int32_t>::max();
    std::vector<LevelFile::Point> points;
    points.reserve(object.points.size());
    std::size_t fractional = 0;
    for (const TiledPoint& point : object.points) {
        const double x = std::round(point.x);
        const double y = std::round(point.y);
        // Written so that "not a number" fails as well.
        if (!(x >= lowest && x <= highest && y >= lowest && y <= highest)) {
            refuse(object, "a point lies beyond the 2,147,483,647 units that a level file can hold");
        }
        if (std::max(std::abs(point.x - x), std::abs(point.y - y)) > unnoticedRounding) {
            ++fractional;
        }
        points.push_back({static_cast<std::int32_t>(x), static_cast<std::int32_t>(y)});
    }
    if (fractional > 0) {
        warnings.push_back(object.label() + ": " + std::to_string(fractional) + " of " +
                           std::to_string(points.size()) + " points rounded to whole units");
    }
    return points;
}

} // namespace tarnwick
