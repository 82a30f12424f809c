#include "tools/level/Dressing.h"

#include "tools/level/LevelNames.h"
#include "tools/level/PictureOrder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tarnwick {

namespace {

using Points = std::vector<LevelFile::Point>;
using Record = LevelFile::PolygonRecord;

constexpr double outlineWidth = 2.0;                  ///< Units that an outline stands out.
constexpr double stripWidth = 2.0;                    ///< Of a light or dark strip.
constexpr std::array<int, 3> bandWidths = {10, 6, 3}; ///< Nested, inside of stone.
constexpr double cell = 2.0;                          ///< Between the places where an edge is looked at.
constexpr double shortestPiece = 1.5;                 ///< A shorter piece of an edge gets nothing.
constexpr double lookOut = 2.0;                       ///< Beside the edge, where others are looked for.
constexpr double lookIn = 1.0;
constexpr double facingLight = 0.25; ///< Cosines to the light beyond which an edge gets a strip.
constexpr double facingAway = -0.2;
constexpr double bright = 0.75;        ///< Cosine from which a light strip is the strong one.
constexpr double shortestMitre = 0.35; ///< Limits how far a sharp corner is drawn out.
constexpr std::int32_t stone = 3;      ///< Surface.

struct Place {
    double x = 0.0;
    double y = 0.0;
};

constexpr Place towardsLight = {-0.62, -0.78};

Place placeOf(const LevelFile::Point& point) {
    return {static_cast<double>(point.x), static_cast<double>(point.y)};
}

double signedArea(const Points& points) {
    double area = 0.0;
    for (std::size_t index = 0; index < points.size(); ++index) {
        const Place a = placeOf(points[index]);
        const Place b = placeOf(points[(index + 1) % points.size()]);
        area += a.x * b.y - b.x * a.y;
    }
    return area / 2.0;
}

/// Unit normal of the edge from a to b that points out of a polygon with this sign of area.
Place outward(const LevelFile::Point& a, const LevelFile::Point& b, double winding) {
    const Place start = placeOf(a);
    const Place end = placeOf(b);
    const double length = std::hypot(end.x - start.x, end.y - start.y);
    const double scale = length == 0.0 ? winding : winding / length;
    return {scale * (end.y - start.y), -scale * (end.x - start.x)};
}

/// A coordinate moved by whole units, held inside of what a level file can hold.
std::int32_t moved(std::int32_t coordinate, double distance) {
    constexpr double lowest = std::numeric_limits<std::int32_t>::min();
    constexpr double highest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(coordinate + distance, lowest, highest));
}

/// The corner moved outwards, mitred. The points of a level are whole units, so it takes the whole place that
/// keeps the wanted distance from its two edges best: a band along an edge stays even.
LevelFile::Point
grownCorner(const LevelFile::Point& point, const Place& before, const Place& after, double distance) {
    const double mitre = std::max(1.0 + before.x * after.x + before.y * after.y, shortestMitre);
    const Place wanted = {distance * (before.x + after.x) / mitre, distance * (before.y + after.y) / mitre};
    std::pair<double, double> least = {std::numeric_limits<double>::max(), 0.0};
    Place best;
    for (int stepX = -1; stepX <= 1; ++stepX) {
        for (int stepY = -1; stepY <= 1; ++stepY) {
            const Place move = {std::round(wanted.x) + stepX, std::round(wanted.y) + stepY};
            const double missBefore = move.x * before.x + move.y * before.y - distance;
            const double missAfter = move.x * after.x + move.y * after.y - distance;
            const std::pair miss(missBefore * missBefore + missAfter * missAfter,
                                 std::hypot(move.x - wanted.x, move.y - wanted.y));
            if (miss < least) {
                least = miss;
                best = move;
            }
        }
    }
    return {moved(point.x, best.x), moved(point.y, best.y)};
}

/// The corner moved straight away from one of its edges.
LevelFile::Point squareCorner(const LevelFile::Point& point, const Place& normal, double distance) {
    return {moved(point.x, std::round(normal.x * distance)), moved(point.y, std::round(normal.y * distance))};
}

/// The outline moved outwards, inwards when negative.
Points grown(const Points& points, double distance) {
    const double winding = signedArea(points) > 0.0 ? 1.0 : -1.0;
    Points result;
    for (std::size_t index = 0; index < points.size(); ++index) {
        const LevelFile::Point& point = points[index];
        const LevelFile::Point& previous = points[(index + points.size() - 1) % points.size()];
        const LevelFile::Point& next = points[(index + 1) % points.size()];
        result.push_back(
            grownCorner(point, outward(previous, point, winding), outward(point, next, winding), distance));
    }
    return result;
}

bool covers(const Points& points, const Place& place) {
    bool inside = false;
    for (std::size_t index = 0; index < points.size(); ++index) {
        const Place a = placeOf(points[index]);
        const Place b = placeOf(points[(index + 1) % points.size()]);
        if ((a.y > place.y) != (b.y > place.y) &&
            place.x < (b.x - a.x) * (place.y - a.y) / (b.y - a.y) + a.x) {
            inside = !inside;
        }
    }
    return inside;
}

/// The whole place nearest to a share of the way.
LevelFile::Point between(const LevelFile::Point& start, const LevelFile::Point& end, double share) {
    const Place from = placeOf(start);
    const Place to = placeOf(end);
    return {static_cast<std::int32_t>(std::lround(from.x + (to.x - from.x) * share)),
            static_cast<std::int32_t>(std::lround(from.y + (to.y - from.y) * share))};
}

/// Whether two lines cross at a place inside of both.
bool cross(const LevelFile::Point& a,
           const LevelFile::Point& b,
           const LevelFile::Point& c,
           const LevelFile::Point& d) {
    const auto side = [](const LevelFile::Point& from, const LevelFile::Point& to,
                         const LevelFile::Point& point) {
        const Place start = placeOf(from);
        return (placeOf(to).x - start.x) * (placeOf(point).y - start.y) -
               (placeOf(to).y - start.y) * (placeOf(point).x - start.x);
    };
    return side(a, b, c) * side(a, b, d) <= 0.0 && side(c, d, a) * side(c, d, b) <= 0.0;
}

/// Of a piece of a band: its ends cross where a band is wider than a bend of the outline leaves room for.
bool crossesItself(const Points& piece) {
    return cross(piece[0], piece[1], piece[2], piece[3]) || cross(piece[1], piece[2], piece[3], piece[0]);
}

bool isFar(const Record& record) {
    constexpr std::string_view ending = "_far.tga";
    const std::string& name = record.textureName;
    return name.size() >= ending.size() &&
           std::equal(ending.begin(), ending.end(), name.end() - static_cast<std::ptrdiff_t>(ending.size()),
                      [](char wanted, char found) {
                          return found == wanted ||
                                 (wanted >= 'a' && wanted <= 'z' && found == wanted - 'a' + 'A');
                      });
}

/// The picture of an edge's strip; empty for an edge that faces neither to the light nor away.
std::string stripPicture(const Record& record, const Place& normal) {
    const double facing = normal.x * towardsLight.x + normal.y * towardsLight.y;
    const char* kind = nullptr;
    if (facing < facingAway) {
        kind = "dark";
    } else if (facing > facingLight) {
        kind = facing > bright ? "light" : "light_soft";
    } else {
        return {};
    }
    const std::string family =
        isFar(record) ? "far" : std::string(surfaceNames[static_cast<std::size_t>(record.surfaceType - 1)]);
    return "gfx\\edge_" + family + "_" + kind + ".tga";
}

class Dresser {
public:
    Dresser(const std::vector<Record>& all, const std::vector<bool>& marked)
        : polygons(all)
        , dressed(marked) {
        const PictureRanks ranks(polygons);
        for (const Record& record : polygons) {
            order.push_back(ranks.of(record.textureName));
            for (const LevelFile::Point& point : record.points) {
                left = std::min(left, point.x);
                right = std::max(right, point.x);
                top = std::min(top, point.y);
                bottom = std::max(bottom, point.y);
            }
        }
    }

    std::vector<Record> finish() {
        forEachWall([&](std::size_t wall) {
            if (polygons[wall].surfaceType == stone && !isFar(polygons[wall])) {
                for (const int width : bandWidths) {
                    const std::string picture = "gfx\\shade_" + std::to_string(width) + ".tga";
                    addBand(wall, width, [&](const Place&) -> const std::string& { return picture; });
                }
            }
        });
        forEachWall([&](std::size_t wall) {
            const std::string picture = isFar(polygons[wall]) ? "gfx\\outline_far.tga" : "gfx\\outline.tga";
            addBand(wall, -outlineWidth, [&](const Place&) -> const std::string& { return picture; });
        });
        forEachWall([&](std::size_t wall) {
            addBand(wall, stripWidth,
                    [&](const Place& normal) { return stripPicture(polygons[wall], normal); });
        });
        return std::move(result);
    }

private:
    /// Walks the dressed polygons, the lowest layer first.
    template <typename Visit>
    void forEachWall(const Visit& visit) const {
        for (std::uint32_t layer = 0; layer <= LevelFile::highestLayer; ++layer) {
            for (std::size_t wall = 0; wall < polygons.size(); ++wall) {
                const Record& record = polygons[wall];
                if (dressed[wall] && record.layer == layer && modeIsSeen(record.polygonMode) &&
                    record.points.size() > 2) {
                    visit(wall);
                }
            }
        }
    }

    /// Bands of this width along the open pieces of a wall's edges, inside or, when negative, outside.
    template <typename PictureOf>
    void addBand(std::size_t wall, double width, const PictureOf& pictureOf) {
        const Points& points = polygons[wall].points;
        const double winding = signedArea(points) > 0.0 ? 1.0 : -1.0;
        const Points beside = grown(points, -width);
        for (std::size_t index = 0; index < points.size(); ++index) {
            const std::size_t next = (index + 1) % points.size();
            const Place normal = outward(points[index], points[next], winding);
            const std::string& picture = pictureOf(normal); // a value lives on with the name
            if (picture.empty() || liesOnBorder(points[index], points[next])) {
                continue;
            }
            const LevelFile::Point nearStart =
                endsSquare(wall, points[index], points[(index + points.size() - 1) % points.size()])
                    ? squareCorner(points[index], normal, -width)
                    : beside[index];
            const LevelFile::Point nearEnd =
                endsSquare(wall, points[next], points[(next + 1) % points.size()])
                    ? squareCorner(points[next], normal, -width)
                    : beside[next];
            for (const auto& [first, last] : openPieces(wall, points[index], points[next], normal)) {
                addPiece(polygons[wall], picture,
                         {between(points[index], points[next], first),
                          between(points[index], points[next], last), between(nearStart, nearEnd, last),
                          between(nearStart, nearEnd, first)});
            }
        }
    }

    /// Whether a band ends at this corner without a mitre, since another polygon joins along the edge that
    /// leads from the corner to `neighbour`: the wall and its finish go on there.
    bool
    endsSquare(std::size_t wall, const LevelFile::Point& corner, const LevelFile::Point& neighbour) const {
        const Place at = placeOf(corner);
        const Place along = {neighbour.x - at.x, neighbour.y - at.y};
        const double length = std::hypot(along.x, along.y);
        if (length == 0.0) {
            return false;
        }
        const double step = std::min(cell / length, 1.0) / 2.0;
        const Place place = {at.x + step * along.x, at.y + step * along.y};
        const Place oneSide = {along.y / length, -along.x / length};
        const Place otherSide = {-oneSide.x, -oneSide.y};
        return isHidden(wall, place,
                        covers(polygons[wall].points, beside(place, oneSide)) ? otherSide : oneSide);
    }

    static Place beside(const Place& place, const Place& normal) {
        return {place.x + normal.x * lookIn, place.y + normal.y * lookIn};
    }

    void addPiece(const Record& wall, const std::string& picture, Points points) {
        points.erase(std::unique(points.begin(), points.end()), points.end());
        if (points.size() > 1 && points.front() == points.back()) {
            points.pop_back();
        }
        if (points.size() == 4 && crossesItself(points)) {
            points = {points[0], points[1], between(points[2], points[3], 0.5)};
        }
        if (points.size() < 3 || signedArea(points) == 0.0) {
            return;
        }
        Record record = wall;
        record.textureName = picture;
        record.polygonMode = modeSeenOnly;
        record.points = std::move(points);
        result.push_back(std::move(record));
    }

    bool liesOnBorder(const LevelFile::Point& start, const LevelFile::Point& end) const {
        return (start.x == end.x && (start.x == left || start.x == right)) ||
               (start.y == end.y && (start.y == top || start.y == bottom));
    }

    /// Whether another polygon joins the wall at this place of its edge or lies over it.
    bool isHidden(std::size_t wall, const Place& place, const Place& normal) const {
        const Place outside = {place.x + normal.x * lookOut, place.y + normal.y * lookOut};
        const Place inside = {place.x - normal.x * lookIn, place.y - normal.y * lookIn};
        for (std::size_t other = 0; other < polygons.size(); ++other) {
            const Record& record = polygons[other];
            if (other == wall || !modeIsSeen(record.polygonMode) || record.layer != polygons[wall].layer ||
                record.polygonId != polygons[wall].polygonId || order[other] < order[wall]) {
                continue;
            }
            if (covers(record.points, outside) ||
                (order[other] > order[wall] && covers(record.points, inside))) {
                return true;
            }
        }
        return false;
    }

    /// The parts of an edge where the wall really ends, as shares of its length.
    std::vector<std::pair<double, double>> openPieces(std::size_t wall,
                                                      const LevelFile::Point& start,
                                                      const LevelFile::Point& end,
                                                      const Place& normal) const {
        const Place from = placeOf(start);
        const Place to = placeOf(end);
        const double length = std::hypot(to.x - from.x, to.y - from.y);
        const auto count = static_cast<int>(
            std::clamp(std::round(length / cell), 1.0, static_cast<double>(LevelFile::largestCount)));
        std::vector<std::pair<double, double>> pieces;
        std::optional<int> opened;
        for (int index = 0; index <= count; ++index) {
            const double share = (index + 0.5) / count;
            const Place place = {from.x + share * (to.x - from.x), from.y + share * (to.y - from.y)};
            const bool open = index < count && !isHidden(wall, place, normal);
            if (open && !opened) {
                opened = index;
            } else if (!open && opened) {
                if ((index - *opened) * length / count >= shortestPiece) {
                    pieces.emplace_back(static_cast<double>(*opened) / count,
                                        static_cast<double>(index) / count);
                }
                opened.reset();
            }
        }
        return pieces;
    }

    const std::vector<Record>& polygons;
    const std::vector<bool>& dressed;
    std::vector<std::size_t> order; ///< Of each polygon: the rank of its picture.
    std::int32_t left = std::numeric_limits<std::int32_t>::max();
    std::int32_t right = std::numeric_limits<std::int32_t>::min();
    std::int32_t top = std::numeric_limits<std::int32_t>::max();
    std::int32_t bottom = std::numeric_limits<std::int32_t>::min();
    std::vector<Record> result;
};

} // namespace

void addFinish(std::vector<LevelFile::PolygonRecord>& polygons, const std::vector<bool>& dressed) {
    std::vector<Record> finish = Dresser(polygons, dressed).finish();
    polygons.insert(polygons.end(), std::make_move_iterator(finish.begin()),
                    std::make_move_iterator(finish.end()));
}

} // namespace tarnwick
