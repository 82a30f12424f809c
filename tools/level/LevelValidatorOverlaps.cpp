// The part of the validator that compares polygons with one another.

#include "core/Geometry.h"
#include "core/Vector2.h"
#include "level/LevelBspBuilder.h"
#include "level/LevelBspNode.h"
#include "level/LevelFile.h"
#include "tools/level/LevelFindings.h"

#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace tarnwick {

namespace {

constexpr float longSide = 1024.0f; ///< World units, of a slanted side: from here on rounding can lose it.

} // namespace

void validateEqualSides(const LevelFile& level, const std::list<Polygon2D>& polygons, Findings& findings) {
    using Side = std::tuple<float, float, float, float>; // from start to end
    struct Shared {
        std::uint32_t side = 0; ///< Of the later polygon,
        std::uint32_t other =
            0; ///< and of the earlier one: the first that they share, or the first long one.
        std::uint32_t count = 0;
        bool isLong = false;
    };
    std::map<Side, std::pair<std::size_t, std::uint32_t>> known;
    std::size_t number = 0;
    for (const Polygon2D& polygon : polygons) {
        const bool joined =
            polygon.collideable && !polygon.moveable && !polygon.destructable && polygon.triangleCount > 0;
        std::map<std::size_t, Shared> sharedWith;
        for (std::uint32_t side = 0; joined && side < polygon.pointCount(); ++side) {
            const Polygon2D::Edge edge = sideOf(polygon, side);
            const Vector2 start = polygon.counterClockwise ? edge.start : edge.end;
            const Vector2 end = polygon.counterClockwise ? edge.end : edge.start;
            const auto [earlier, isNew] =
                known.try_emplace({start.x, start.y, end.x, end.y}, std::pair(number, side));
            if (isNew || earlier->second.first == number) {
                continue;
            }
            const bool isLong =
                start.x != end.x && start.y != end.y && distanceBetween(start, end) >= longSide;
            Shared& shared = sharedWith[earlier->second.first];
            if (shared.count++ == 0 || (isLong && !shared.isLong)) {
                shared.side = side;
                shared.other = earlier->second.second;
                shared.isLong = isLong;
            }
        }
        for (const auto& [earlier, shared] : sharedWith) {
            if (shared.isLong || shared.count == polygon.pointCount()) {
                findings.push_back(aboutPolygon(
                    level, number,
                    "side " + std::to_string(shared.side) + " is side " + std::to_string(shared.other) +
                        " of polygon " + std::to_string(earlier) +
                        " again: the two walls overlap, and where the side is long and slanted the game can "
                        "take it from both, so that all water falls through"));
            }
        }
        ++number;
    }
}

void validateCuts(std::list<Polygon2D>& polygons, Findings& findings) {
    std::vector<LevelBspNode> edges = LevelBspBuilder::buildInitialNodeList(polygons);
    if (!LevelBspBuilder::optimiseInitialNodeList(edges)) {
        findings.push_back("sides longer than 65536 units overlap, and the game cannot cut them apart");
    }
}

void validatePictureOrder(const LevelFile& level,
                          const std::list<Polygon2D>& polygons,
                          const PictureSize& sizeOf,
                          Findings& findings) {
    const auto overlapText = [](const char* thing, std::size_t other) {
        return "overlaps " + std::string(thing) + std::to_string(other) +
               ", which shows another picture on the same layer: which of them lies on top hangs on the "
               "level "
               "loaded before";
    };
    for (const Overlap& pair : overlapsOnLayers(level, polygons, false)) {
        findings.push_back(aboutPolygon(level, pair.second, overlapText("polygon ", pair.first)));
    }
    if (sizeOf) {
        for (const Overlap& pair : objectOverlaps(level, sizeOf, false)) {
            findings.push_back("object " + std::to_string(pair.second) + ": " +
                               overlapText("object ", pair.first));
        }
    }
    if (!beginsWithOrder(level) && (!overlapsOnLayers(level, polygons, true).empty() ||
                                    (sizeOf && !objectOverlaps(level, sizeOf, true).empty()))) {
        findings.push_back(
            "pictures overlap on a layer, and which of them lie on top hangs on the level loaded "
            "before: compile the map again, and the level begins with their order");
    }
}

} // namespace tarnwick
