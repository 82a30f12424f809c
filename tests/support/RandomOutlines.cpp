#include "support/RandomOutlines.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace tarnwick {

namespace {

/// The i-th of `count` directions round (0, 0), followed for `length` and rounded to whole coordinates.
Vector2 onCircle(std::size_t i, std::size_t count, double length) {
    const double angle = 6.283185307179586 * static_cast<double>(i) / static_cast<double>(count);
    return {static_cast<float>(std::nearbyint(std::cos(angle) * length)),
            static_cast<float>(std::nearbyint(std::sin(angle) * length))};
}

} // namespace

std::vector<Vector2> RandomOutlines::star(std::size_t points, double reach, double roughness) {
    std::vector<Vector2> outline;
    for (std::size_t i = 0; i < points; ++i) {
        outline.push_back(
            onCircle(i, points, reach * (1.0 - roughness * static_cast<double>(below(1000)) / 1000.0)));
    }
    return outline;
}

std::vector<Vector2> RandomOutlines::circle(std::size_t points, double radius) {
    std::vector<Vector2> outline;
    for (std::size_t i = 0; i < points; ++i) {
        outline.push_back(onCircle(i, points, radius));
    }
    return outline;
}

std::vector<Vector2> RandomOutlines::comb(std::size_t points) {
    std::vector<Vector2> outline{{0.0f, 0.0f}};
    const std::size_t teeth = std::max<std::size_t>(1, points / 4);
    for (std::size_t tooth = 0; tooth < teeth; ++tooth) {
        const auto left = static_cast<float>(tooth * 8);
        const float tip = -20.0f - whole(200);
        outline.insert(outline.end(),
                       {{left + 2.0f, 0.0f}, {left + 2.0f, tip}, {left + 6.0f, tip - whole(5)}});
        outline.push_back({left + 6.0f, 0.0f});
    }
    const auto width = static_cast<float>(teeth * 8);
    outline.insert(outline.end(), {{width, 0.0f}, {width, 30.0f}, {0.0f, 30.0f}});
    return outline;
}

std::vector<Vector2> RandomOutlines::scribble(std::size_t points, std::uint32_t cells) {
    std::vector<Vector2> outline;
    for (std::size_t i = 0; i < points; ++i) {
        const float x = whole(cells);
        outline.push_back({x * 10.0f, whole(cells) * 10.0f});
    }
    return outline;
}

std::vector<Vector2> RandomOutlines::walk(std::size_t points) {
    std::vector<Vector2> outline;
    Vector2 here;
    for (std::size_t i = 0; i < points; ++i) {
        outline.push_back(here);
        const float step = 1.0f + whole(6);
        const std::uint32_t direction = below(8);
        if (direction < 4) { // two of three steps go to the right: the walk seldom meets itself
            here.x += step;
        } else {
            here.y += direction < 6 ? step : -step;
        }
    }
    outline.push_back({here.x, 500.0f});
    outline.push_back({0.0f, 500.0f});
    return outline;
}

void RandomOutlines::spoil(std::vector<Vector2>& points) {
    if (below(3) == 0) {
        std::reverse(points.begin(), points.end());
    }
    if (below(3) == 0) {
        std::rotate(points.begin(), points.begin() + below(static_cast<std::uint32_t>(points.size())),
                    points.end());
    }
    if (below(3) == 0) { // points along the sides
        std::vector<Vector2> longer;
        for (std::size_t i = 0; i < points.size(); ++i) {
            const Vector2 next = points[(i + 1) % points.size()];
            longer.push_back(points[i]);
            if (below(3) == 0) {
                longer.push_back((points[i] + next) * 0.5f);
            }
        }
        points = longer;
    }
    if (below(4) == 0) { // off the whole numbers
        const float scale = 0.1f + whole(100) / 37.0f;
        for (Vector2& point : points) {
            point = {point.x * scale + 0.3f, point.y * scale - 17.77f};
        }
    }
    if (below(4) == 0) { // far away, where floats are coarse
        for (Vector2& point : points) {
            point += {60000.0f, -64000.0f};
        }
    }
    for (std::uint32_t repeats = below(4); repeats > 0; --repeats) {
        const auto count = static_cast<std::uint32_t>(points.size());
        points.insert(points.begin() + below(count), points[below(count)]);
    }
}

std::vector<Vector2> RandomOutlines::any(std::size_t mostPoints) {
    const std::size_t count = 3 + below(static_cast<std::uint32_t>(mostPoints - 2));
    std::vector<Vector2> points;
    switch (below(5)) {
    case 0:
        points = star(count, 5.0 + below(2000));
        break;
    case 1:
        points = comb(count);
        break;
    case 2:
        points = scribble(count, 2 + below(8));
        break;
    case 3:
        points = scribble(3 + below(7), 3 + below(30));
        break;
    default:
        points = walk(count);
        break;
    }
    spoil(points);
    return points;
}

std::string describe(const std::vector<Vector2>& points) {
    std::ostringstream text;
    text.precision(9);
    for (const Vector2 point : points) {
        text << "{" << point.x << ", " << point.y << "}, ";
    }
    return text.str();
}

} // namespace tarnwick
