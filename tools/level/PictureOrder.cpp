#include "tools/level/PictureOrder.h"

#include "tools/level/LevelGeometry.h"
#include "tools/level/LevelNames.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <set>
#include <tuple>
#include <utility>

namespace tarnwick {

namespace {

constexpr std::size_t cornersOfTriangle = 3;

/// As the game compares names of pictures.
std::string keyOf(std::string_view picture) {
    std::string key(picture);
    std::transform(key.begin(), key.end(), key.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return key;
}

/// Twice the signed area of the triangle of two corners of `polygon`'s list and a third point.
double turn(const Polygon2D& from, std::size_t a, std::size_t b, const Polygon2D& to, std::size_t c) {
    const double ax = static_cast<double>(from.trianglesX[a]);
    const double ay = static_cast<double>(from.trianglesY[a]);
    return (static_cast<double>(from.trianglesX[b]) - ax) * (static_cast<double>(to.trianglesY[c]) - ay) -
           (static_cast<double>(from.trianglesY[b]) - ay) * (static_cast<double>(to.trianglesX[c]) - ax);
}

/// Whether a side of the first triangle has the second one wholly beyond it; touching counts as beyond.
bool sideParts(const Polygon2D& a, std::size_t first, const Polygon2D& b, std::size_t second) {
    for (std::size_t corner = 0; corner < cornersOfTriangle; ++corner) {
        const std::size_t start = first + corner;
        const std::size_t end = first + (corner + 1) % cornersOfTriangle;
        const double inside = turn(a, start, end, a, first + (corner + 2) % cornersOfTriangle);
        bool beyond = true;
        for (std::size_t other = 0; other < cornersOfTriangle; ++other) {
            const double side = turn(a, start, end, b, second + other);
            beyond = beyond && (inside > 0.0 ? side <= 0.0 : side >= 0.0);
        }
        if (beyond) {
            return true;
        }
    }
    return false;
}

/// Whether two polygons cover a place together; a shared side or corner is none.
bool overlap(const Polygon2D& a, const Polygon2D& b) {
    for (std::size_t first = 0; first < a.triangleCount * cornersOfTriangle; first += cornersOfTriangle) {
        for (std::size_t second = 0; second < b.triangleCount * cornersOfTriangle;
             second += cornersOfTriangle) {
            if (!sideParts(a, first, b, second) && !sideParts(b, second, a, first)) {
                return true;
            }
        }
    }
    return false;
}

/// A polygon that is seen, with what tells whether it lies over another.
struct Seen {
    std::size_t number = 0; ///< In the file.
    const Polygon2D* polygon = nullptr;
    std::size_t rank = 0;
    bool ordered = false; ///< Its picture has a place in the list.
    bool isStatic = true; ///< Drawn after all that moves or can vanish on the layer.
    float left = 0.0f;
    float right = 0.0f;
    float top = 0.0f;
    float bottom = 0.0f;

    bool boxMeets(const Seen& other) const {
        return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
    }
    bool overlaps(const Seen& other) const { return boxMeets(other) && overlap(*polygon, *other.polygon); }
};

/// The seen polygons of a level in file order.
std::vector<Seen> seenPolygons(const LevelFile& level, const std::list<Polygon2D>& polygons) {
    std::vector<Seen> seen;
    const PictureRanks ranks(level.polygons);
    std::size_t number = 0;
    for (const Polygon2D& polygon : polygons) {
        if (polygon.drawable && polygon.triangleCount > 0) {
            const auto [left, right] = std::minmax_element(polygon.pointsX.begin(), polygon.pointsX.end());
            const auto [top, bottom] = std::minmax_element(polygon.pointsY.begin(), polygon.pointsY.end());
            const std::string& picture = level.polygons[number].textureName;
            seen.push_back({number, &polygon, ranks.of(picture), placeInOrder(picture).has_value(),
                            !polygon.moveable && !polygon.destructable, *left, *right, *top, *bottom});
        }
        ++number;
    }
    return seen;
}

/// Whether `under` is drawn before `over` when both are on one layer, whatever was loaded before.
bool isHeld(const Seen& under, const Seen& over) {
    if (under.isStatic != over.isStatic) {
        return over.isStatic;
    }
    return under.rank == over.rank || (under.ordered && over.ordered && under.rank < over.rank);
}

} // namespace

std::optional<std::size_t> placeInOrder(std::string_view picture) {
    const std::string key = keyOf(picture);
    for (std::size_t place = 0; place < orderedPictures.size(); ++place) {
        if (keyOf(orderedPictures[place]) == key) {
            return place;
        }
    }
    return std::nullopt;
}

bool beginsWithOrder(const LevelFile& level) {
    LevelFile order;
    putOrderInFront(order);
    return level.polygons.size() >= order.polygons.size() &&
           std::equal(order.polygons.begin(), order.polygons.end(), level.polygons.begin());
}

bool wantsOrder(const LevelFile& level) {
    std::map<std::uint32_t, std::size_t> shown; // on each layer
    for (const LevelFile::PolygonRecord& record : level.polygons) {
        const std::optional<std::size_t> place = placeInOrder(record.textureName);
        if (place && modeIsSeen(record.polygonMode) && !record.points.empty() &&
            shown.try_emplace(record.layer, *place).first->second != *place) {
            return true;
        }
    }
    return false;
}

void putOrderInFront(LevelFile& level) {
    std::vector<LevelFile::PolygonRecord> order;
    for (const std::string_view picture : orderedPictures) {
        LevelFile::PolygonRecord& record = order.emplace_back();
        record.textureName = picture;
        record.polygonMode = modeSeenOnly;
    }
    level.polygons.insert(level.polygons.begin(), order.begin(), order.end());
}

void takeOrderAway(LevelFile& level) {
    level.polygons.erase(level.polygons.begin(),
                         level.polygons.begin() + static_cast<std::ptrdiff_t>(orderedPictures.size()));
}

PictureRanks::PictureRanks(const std::vector<LevelFile::PolygonRecord>& polygons) {
    std::set<std::size_t> places;        // of the ordered pictures, as in the list
    std::vector<std::size_t> ranksThere; // that the ordered pictures share out, rising
    for (const LevelFile::PolygonRecord& record : polygons) {
        const auto [entry, isNew] = ranks.try_emplace(keyOf(record.textureName), ranks.size());
        const std::optional<std::size_t> place = placeInOrder(record.textureName);
        if (isNew && place) {
            places.insert(*place);
            ranksThere.push_back(entry->second);
        }
    }
    auto rank = ranksThere.begin();
    for (const std::size_t place : places) {
        ranks[keyOf(orderedPictures[place])] = *rank++;
    }
}

std::size_t PictureRanks::of(const std::string& picture) const {
    return ranks.at(keyOf(picture));
}

void orderByLayers(LevelFile& level,
                   const std::function<void(std::size_t polygon, std::size_t under)>& raised) {
    const auto isOwn = [](const LevelFile::PolygonRecord& record) {
        return modeIsSeen(record.polygonMode) && !placeInOrder(record.textureName);
    };
    if (std::none_of(level.polygons.begin(), level.polygons.end(), isOwn)) {
        return; // the list holds all; nothing need be cut up
    }
    const std::list<Polygon2D> polygons = buildPolygons(level);
    std::vector<Seen> seen = seenPolygons(level, polygons);
    const auto layerOf = [&](const Seen& each) -> std::uint32_t& {
        return level.polygons[each.number].layer;
    };
    std::stable_sort(seen.begin(), seen.end(), [&](const Seen& a, const Seen& b) {
        return std::tuple(layerOf(a), a.isStatic, a.rank) < std::tuple(layerOf(b), b.isStatic, b.rank);
    });
    for (std::size_t over = 0; over < seen.size(); ++over) {
        std::uint32_t& layer = layerOf(seen[over]);
        const std::uint32_t before = layer;
        std::size_t highest = over;
        for (std::size_t under = 0; under < over; ++under) {
            const std::uint32_t least = layerOf(seen[under]) + (isHeld(seen[under], seen[over]) ? 0 : 1);
            if (least > layer && seen[over].overlaps(seen[under])) {
                layer = least;
                highest = under;
            }
        }
        layer = std::min(layer, LevelFile::highestLayer);
        if (layer != before) {
            raised(seen[over].number, seen[highest].number);
        }
    }
}

std::vector<Overlap>
overlapsOnLayers(const LevelFile& level, const std::list<Polygon2D>& polygons, bool ofOrdered) {
    const std::vector<Seen> seen = seenPolygons(level, polygons);
    std::vector<Overlap> found;
    for (std::size_t second = 0; second < seen.size(); ++second) {
        const Seen& b = seen[second];
        const auto earlier = std::find_if(
            seen.begin(), seen.begin() + static_cast<std::ptrdiff_t>(second), [&](const Seen& a) {
                return level.polygons[a.number].layer == level.polygons[b.number].layer &&
                       a.isStatic == b.isStatic && a.rank != b.rank &&
                       (a.ordered && b.ordered) == ofOrdered && a.overlaps(b);
            });
        if (earlier->number != b.number) {
            found.push_back({earlier->number, b.number});
        }
    }
    return found;
}

std::vector<Overlap> objectOverlaps(const LevelFile& level, const PictureSize& sizeOf, bool ofOrdered) {
    std::vector<std::optional<std::pair<int, int>>> sizes;
    for (const LevelFile::ObjectRecord& record : level.objects) {
        sizes.push_back(sizeOf(record.textureName));
    }
    const auto meet = [&](std::size_t first, std::size_t second) {
        const LevelFile::ObjectRecord& a = level.objects[first];
        const LevelFile::ObjectRecord& b = level.objects[second];
        const auto apart = [](std::int32_t from, std::int32_t to) { return std::abs(2.0 * from - 2.0 * to); };
        return sizes[first] && sizes[second] && a.layer == b.layer &&
               apart(a.position.x, b.position.x) < sizes[first]->first + sizes[second]->first &&
               apart(a.position.y, b.position.y) < sizes[first]->second + sizes[second]->second;
    };
    std::vector<Overlap> found;
    for (std::size_t second = 0; second < level.objects.size(); ++second) {
        const std::string& over = level.objects[second].textureName;
        for (std::size_t first = 0; first < second; ++first) {
            const std::string& under = level.objects[first].textureName;
            if (keyOf(over) != keyOf(under) && (placeInOrder(over) && placeInOrder(under)) == ofOrdered &&
                meet(first, second)) {
                found.push_back({first, second});
                break;
            }
        }
    }
    return found;
}

} // namespace tarnwick
