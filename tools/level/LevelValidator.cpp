#include "tools/level/LevelValidator.h"

#include "core/Geometry.h"
#include "core/Vector2.h"
#include "level/LevelFile.h"
#include "level/Polygon2D.h"
#include "tools/level/LevelFindings.h"
#include "tools/level/LevelGeometry.h"
#include "tools/level/LevelNames.h"
#include "tools/level/ToolError.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <list>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace tarnwick {

namespace {

constexpr float shortestEdge = 0.01f;      ///< World units; the tree drops sides up to this length.
constexpr std::uint32_t mostPoints = 2000; ///< A ring of them takes 3 s, and the time grows with the cube.
constexpr double waterStartRadius = 10.0;  ///< World units; the disc in which the first drops appear.

std::string textOf(const LevelFile::Point& point) {
    return "(" + std::to_string(point.x) + ", " + std::to_string(point.y) + ")";
}

/// Whether the game's floats can hold the place.
bool isExact(const LevelFile::Point& point) {
    return static_cast<std::int64_t>(static_cast<float>(point.x)) == point.x &&
           static_cast<std::int64_t>(static_cast<float>(point.y)) == point.y;
}

/// Distance of a place from a side.
double distanceFrom(const Polygon2D::Edge& side, double x, double y) {
    const double startX = static_cast<double>(side.start.x);
    const double startY = static_cast<double>(side.start.y);
    const double alongX = static_cast<double>(side.end.x) - startX;
    const double alongY = static_cast<double>(side.end.y) - startY;
    const double lengthSquared = alongX * alongX + alongY * alongY;
    double share = 0.0;
    if (lengthSquared > 0.0) {
        share = std::clamp(((x - startX) * alongX + (y - startY) * alongY) / lengthSquared, 0.0, 1.0);
    }
    return std::hypot(x - startX - share * alongX, y - startY - share * alongY);
}

/// Whether a place lies inside the outline, by counting the sides that a ray to the right meets.
bool contains(const Polygon2D& polygon, double x, double y) {
    bool inside = false;
    for (std::uint32_t side = 0; side < polygon.pointCount(); ++side) {
        const Polygon2D::Edge edge = sideOf(polygon, side);
        const double startX = static_cast<double>(edge.start.x);
        const double startY = static_cast<double>(edge.start.y);
        const double endX = static_cast<double>(edge.end.x);
        const double endY = static_cast<double>(edge.end.y);
        if ((startY > y) != (endY > y) && x < startX + (y - startY) * (endX - startX) / (endY - startY)) {
            inside = !inside;
        }
    }
    return inside;
}

/// Numbers of two sides that cross, counted over the points that the game keeps; none when it finds the
/// outline sound.
std::optional<std::pair<std::uint32_t, std::uint32_t>> crossingSides(const Polygon2D& polygon) {
    if (!polygon.isDegenerate()) {
        return std::nullopt;
    }
    for (std::uint32_t first = 0; first + 1 < polygon.pointCount(); ++first) {
        const Polygon2D::Edge a = sideOf(polygon, first);
        for (std::uint32_t second = first + 1; second < polygon.pointCount(); ++second) {
            const Polygon2D::Edge b = sideOf(polygon, second);
            // Both ways round: the test measures its two segments by different axes.
            if (segmentsCross(a.start, a.end, b.start, b.end) ||
                segmentsCross(b.start, b.end, a.start, a.end)) {
                return std::pair(first, second);
            }
        }
    }
    return std::nullopt;
}

class LevelValidator {
public:
    LevelValidator(const LevelFile& read, const FileTest& test, const PictureSize& size)
        : level(read)
        , fileExists(test)
        , sizeOf(size)
        , polygons(buildPolygons(read)) {}

    std::vector<std::string> validate() {
        const std::size_t inOrder = beginsWithOrder(level) ? orderedPictures.size() : 0; // without points
        std::size_t number = 0;
        for (const Polygon2D& polygon : polygons) {
            if (number >= inOrder) {
                validatePoints(number);
                validateOutline(number, polygon);
                validatePicture(number);
            }
            ++number;
        }
        for (std::size_t object = 0; object < level.objects.size(); ++object) {
            validateObject(object);
        }
        validateMissingFiles();
        validateWaterStart();
        validateEqualSides(level, polygons, findings);
        validateCuts(polygons, findings);
        validatePictureOrder(level, polygons, sizeOf, findings);
        validateActors(level, findings);
        return std::move(findings);
    }

private:
    void found(std::size_t number, const std::string& text) {
        findings.push_back(aboutPolygon(level, number, text));
    }

    void foundObject(std::size_t number, const std::string& text) {
        findings.push_back("object " + std::to_string(number) + " at " +
                           textOf(level.objects[number].position) + ": " + text);
    }

    void validateObject(std::size_t number) {
        const LevelFile::ObjectRecord& record = level.objects[number];
        if (!isExact(record.position)) {
            foundObject(number, "lies so far out that the game moves it");
        }
        if (record.textureName.empty()) {
            foundObject(number, "has no picture");
        } else if (record.textureName.find('/') != std::string::npos) {
            foundObject(number, "picture " + inQuotes(record.textureName) +
                                    " is written with / where the game writes \\");
        }
    }

    /// Repeated points, and points that the game's floats cannot hold.
    void validatePoints(std::size_t number) {
        const std::vector<LevelFile::Point>& points = level.polygons[number].points;
        std::map<std::pair<std::int32_t, std::int32_t>, std::size_t> seen;
        std::size_t repeats = 0;
        std::string firstRepeat;
        std::optional<std::size_t> inexact;
        for (std::size_t index = 0; index < points.size(); ++index) {
            const LevelFile::Point& point = points[index];
            const auto [earlier, isNew] = seen.try_emplace({point.x, point.y}, index);
            if (!isNew && repeats++ == 0) {
                firstRepeat = "point " + std::to_string(index) + " repeats point " +
                              std::to_string(earlier->second) + ", " + textOf(point);
            }
            if (!isExact(point) && !inexact) {
                inexact = index;
            }
        }
        if (repeats > 0) {
            const std::string others =
                repeats > 1 ? ", and " + std::to_string(repeats - 1) + " more repeat" : "";
            found(number, firstRepeat + others + "; the game keeps the first only");
        }
        if (inexact) {
            found(number, "point " + std::to_string(*inexact) + ", " + textOf(points[*inexact]) +
                              ", lies so far out that the game moves it");
        }
    }

    void validateOutline(std::size_t number, const Polygon2D& polygon) {
        if (polygon.pointCount() > mostPoints) {
            found(number, "has " + std::to_string(polygon.pointCount()) +
                              " points: the game can take minutes to cut up more than 2000, divide it");
        }
        if (polygon.pointCount() < 3) {
            found(number,
                  "has " + std::to_string(polygon.pointCount()) + " different points, too few for a polygon");
            return;
        }
        for (std::uint32_t side = 0; side < polygon.pointCount(); ++side) {
            const Polygon2D::Edge edge = sideOf(polygon, side);
            if (distanceBetween(edge.start, edge.end) <= shortestEdge) {
                found(number, "side " + std::to_string(side) + " is not longer than 0.01 units");
            }
        }
        if (const auto crossing = crossingSides(polygon)) {
            found(number, "crosses itself: side " + std::to_string(crossing->first) + " and side " +
                              std::to_string(crossing->second) + "; it is neither seen nor solid");
        } else if (polygon.triangleCount == 0) {
            found(number, "cannot be cut into triangles; it is neither seen nor solid");
        } else if (polygon.moveable && polygon.collideable && !polygon.counterClockwise) {
            found(number, "moves, but runs the wrong way round to crush: reverse the order of its points");
        } else if (polygon.moveable && polygon.collideable && liesTooHigh(polygon)) {
            found(number,
                  "moves, but lies above y = 0, where what moves is not solid: build the level further down");
        }
    }

    /// Whether the game takes a moving polygon for out of view wherever the view is. Of its first point it
    /// looks at x alone, and at that of the second as if it was a y too.
    static bool liesTooHigh(const Polygon2D& polygon) {
        return polygon.pointsX[1] < 0.0f && std::all_of(polygon.pointsY.begin() + 1, polygon.pointsY.end(),
                                                        [](float y) { return y < 0.0f; });
    }

    void validatePicture(std::size_t number) {
        const LevelFile::PolygonRecord& record = level.polygons[number];
        if (record.textureName.empty()) {
            if (modeIsSeen(record.polygonMode)) {
                found(number, "is to be seen but has no picture");
            }
            return;
        }
        if (record.textureName.find('/') != std::string::npos) {
            found(number,
                  "picture " + inQuotes(record.textureName) + " is written with / where the game writes \\");
        }
    }

    /// One finding a file, at the first polygon, object, sound or emitter that names it.
    void validateMissingFiles() {
        std::set<std::string> tested;
        const auto isMissing = [&](const std::string& name) {
            return fileExists && !name.empty() && tested.insert(name).second && !fileExists(name);
        };
        for (std::size_t number = 0; number < level.polygons.size(); ++number) {
            const std::string& name = level.polygons[number].textureName;
            if (isMissing(name)) {
                found(number, "picture " + inQuotes(name) + " does not exist");
            }
        }
        for (std::size_t number = 0; number < level.objects.size(); ++number) {
            const std::string& name = level.objects[number].textureName;
            if (isMissing(name)) {
                foundObject(number, "picture " + inQuotes(name) + " does not exist");
            }
        }
        for (std::size_t number = 0; number < level.soundSources.size(); ++number) {
            const std::string& name = level.soundSources[number].soundName;
            if (isMissing(name)) {
                findings.push_back("sound " + std::to_string(number) + ": file " + inQuotes(name) +
                                   " does not exist");
            }
        }
        for (std::size_t number = 0; number < level.emitters.size(); ++number) {
            const std::string& name = level.emitters[number].settingsName;
            if (isMissing(name)) {
                findings.push_back("emitter " + std::to_string(number) + ": settings " + inQuotes(name) +
                                   " do not exist");
            }
        }
    }

    void validateWaterStart() {
        const double x = level.waterStart.x;
        const double y = level.waterStart.y;
        std::size_t number = 0;
        for (const Polygon2D& polygon : polygons) {
            if (polygon.collideable && polygon.triangleCount > 0) {
                double nearest = std::numeric_limits<double>::max();
                for (std::uint32_t side = 0; side < polygon.pointCount(); ++side) {
                    nearest = std::min(nearest, distanceFrom(sideOf(polygon, side), x, y));
                }
                if (contains(polygon, x, y)) {
                    found(number,
                          "is solid, and the water start " + textOf(level.waterStart) + " lies inside it");
                } else if (nearest < waterStartRadius) {
                    found(number, "is solid and nearer than 10 units to the water start " +
                                      textOf(level.waterStart) + ", so that drops start inside it");
                }
            }
            ++number;
        }
    }

    const LevelFile& level;
    const FileTest& fileExists;
    const PictureSize& sizeOf;
    std::list<Polygon2D> polygons;
    std::vector<std::string> findings;
};

} // namespace

std::string aboutPolygon(const LevelFile& level, std::size_t number, const std::string& text) {
    const LevelFile::PolygonRecord& record = level.polygons[number];
    std::string line = "polygon " + std::to_string(number);
    if (!record.points.empty()) {
        line += " at " + textOf(record.points.front());
    }
    return line + ": " + text;
}

Polygon2D::Edge sideOf(const Polygon2D& polygon, std::uint32_t side) {
    const std::uint32_t next = side + 1 == polygon.pointCount() ? 0 : side + 1;
    return {{polygon.pointsX[side], polygon.pointsY[side]}, {polygon.pointsX[next], polygon.pointsY[next]}};
}

std::vector<std::string>
validateLevel(const LevelFile& level, const FileTest& fileExists, const PictureSize& sizeOf) {
    return LevelValidator(level, fileExists, sizeOf).validate();
}

} // namespace tarnwick
