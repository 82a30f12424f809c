#include "tools/level/LevelInfo.h"

#include "level/LevelFile.h"
#include "level/Polygon2D.h"
#include "tools/level/LevelGeometry.h"
#include "tools/level/LevelNames.h"
#include "tools/level/PictureOrder.h"
#include "tools/level/ToolError.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iomanip>
#include <list>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

constexpr int labelWidth = 16; ///< Characters of the first column.

std::ostream& label(std::ostream& output, const char* text) {
    return output << std::left << std::setw(labelWidth) << text;
}

/// "3 solid, 1 caulk": the names with their counts, without those that are 0; "none" when all are.
template <std::size_t Size>
std::string countsOf(const std::array<std::size_t, Size>& counts,
                     const std::array<std::string_view, Size>& names) {
    std::string text;
    for (std::size_t place = 0; place < Size; ++place) {
        if (counts[place] > 0) {
            text += text.empty() ? "" : ", ";
            text += std::to_string(counts[place]) + " " + std::string(names[place]);
        }
    }
    return text.empty() ? "none" : text;
}

void printPolygons(std::ostream& output, const LevelFile& level) {
    constexpr std::array<std::string_view, layerCount> layerNames = {"in layer 0", "in layer 1", "in layer 2",
                                                                     "in layer 3", "in layer 4"};
    std::array<std::size_t, modeNames.size()> modes{};
    std::array<std::size_t, surfaceNames.size()> surfaces{};
    std::array<std::size_t, layerCount> layers{};
    std::size_t points = 0;
    for (const LevelFile::PolygonRecord& record : level.polygons) {
        const bool known = record.polygonMode >= modeSolid && record.polygonMode <= modeCaulk;
        ++modes.at(known ? static_cast<std::size_t>(record.polygonMode) : 0);
        ++surfaces.at(static_cast<std::size_t>(record.surfaceType - 1));
        ++layers.at(record.layer);
        points += record.points.size();
    }
    label(output, "polygons") << level.polygons.size() << '\n';
    label(output, "  modes") << countsOf(modes, modeNames) << '\n';
    label(output, "  surfaces") << countsOf(surfaces, surfaceNames) << '\n';
    label(output, "  layers") << countsOf(layers, layerNames) << '\n';
    label(output, "points") << points << '\n';
}

void printBoundingBox(std::ostream& output, const LevelFile& level) {
    std::optional<LevelFile::Point> low;
    LevelFile::Point high;
    for (const LevelFile::PolygonRecord& record : level.polygons) {
        for (const LevelFile::Point& point : record.points) {
            if (!low) {
                low = high = point;
            }
            *low = {std::min(low->x, point.x), std::min(low->y, point.y)};
            high = {std::max(high.x, point.x), std::max(high.y, point.y)};
        }
    }
    label(output, "bounding box");
    if (!low) {
        output << "none\n";
        return;
    }
    const std::int64_t width = std::int64_t{high.x} - low->x;
    const std::int64_t height = std::int64_t{high.y} - low->y;
    output << low->x << ' ' << low->y << " to " << high.x << ' ' << high.y << " (" << width << " by "
           << height << " units)\n";
}

/// "1 polygon", "3 polygons".
std::string counted(std::size_t count, const char* thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

void printPictures(std::ostream& output, const LevelFile& level) {
    struct Uses {
        std::size_t polygons = 0;
        std::size_t objects = 0;
    };
    std::vector<std::string> names;
    std::map<std::string, Uses> uses;
    const auto usesOf = [&](const std::string& name) -> Uses& {
        const auto [entry, isNew] = uses.try_emplace(name);
        if (isNew && !name.empty()) {
            names.push_back(name);
        }
        return entry->second;
    };
    for (const LevelFile::PolygonRecord& record : level.polygons) {
        ++usesOf(record.textureName).polygons;
    }
    for (const LevelFile::ObjectRecord& record : level.objects) {
        ++usesOf(record.textureName).objects;
    }
    label(output, "pictures") << names.size() << '\n';
    for (const std::string& name : names) {
        const Uses& on = uses[name];
        output << "  " << inQuotes(name) << " on ";
        if (on.polygons > 0) {
            output << counted(on.polygons, "polygon") << (on.objects > 0 ? " and " : "");
        }
        if (on.objects > 0) {
            output << counted(on.objects, "object");
        }
        output << '\n';
    }
}

} // namespace

void printLevelInfo(std::ostream& output, const LevelFile& read) {
    LevelFile level = read;
    const bool isOrdered = beginsWithOrder(level);
    if (isOrdered) {
        takeOrderAway(level); // it shows nothing
    }
    const std::list<Polygon2D> polygons = buildPolygons(level);
    std::size_t triangles = 0;
    for (const Polygon2D& polygon : polygons) {
        triangles += polygon.triangleCount;
    }
    const TreeSize tree = measureTree(polygons);

    printPolygons(output, level);
    label(output, "triangles") << triangles << '\n';
    label(output, "tree") << tree.edges << " edges, depth " << tree.depth << '\n';
    label(output, "objects") << level.objects.size() << '\n';
    label(output, "forces") << level.forces.size() << '\n';
    label(output, "movers") << level.movers.size() << '\n';
    label(output, "triggers") << level.triggers.size() << '\n';
    label(output, "sound sources") << level.soundSources.size() << '\n';
    label(output, "emitters") << level.emitters.size() << '\n';
    printBoundingBox(output, level);
    label(output, "water start") << level.waterStart.x << ' ' << level.waterStart.y << '\n';
    label(output, "camera start") << level.cameraStart.x << ' ' << level.cameraStart.y << '\n';
    printPictures(output, level);
    if (isOrdered) {
        output << "  in the order of the game's pictures, with which the level begins\n";
    }
}

} // namespace tarnwick
