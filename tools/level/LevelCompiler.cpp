#include "tools/level/LevelCompiler.h"

#include "tools/level/Dressing.h"
#include "tools/level/EntityCompiler.h"
#include "tools/level/LevelNames.h"
#include "tools/level/PictureOrder.h"
#include "tools/level/PropertyReader.h"
#include "tools/level/TiledMap.h"
#include "tools/level/ToolError.h"
#include "tools/level/WholePoints.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

namespace tarnwick {

namespace {

constexpr std::int64_t deepestLayer = 4; ///< Layers are numbered from 0.

/// The number in a layer's name, "2", "2 grass" or "layer 2, grass"; none in any other name.
std::optional<std::int64_t> layerInName(std::string_view name) {
    constexpr std::string_view prefix = "layer";
    constexpr std::size_t mostDigits = 9; // more cannot be a layer, and would overflow
    const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
    const auto isLetter = [](char character) {
        return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
    };
    const bool prefixed = name.size() >= prefix.size() &&
                          std::equal(prefix.begin(), prefix.end(), name.begin(), [](char wanted, char found) {
                              return found == wanted || found == wanted - 'a' + 'A';
                          });
    if (prefixed) {
        name.remove_prefix(prefix.size());
        name.remove_prefix(std::min(name.find_first_not_of(' '), name.size()));
    }
    std::int64_t number = 0;
    std::size_t digits = 0;
    while (digits < name.size() && isDigit(name[digits]) && digits < mostDigits) {
        number = number * 10 + (name[digits] - '0');
        ++digits;
    }
    const bool runsOn = digits < name.size() && (isDigit(name[digits]) || isLetter(name[digits]));
    return digits == 0 || runsOn ? std::nullopt : std::optional(number);
}

std::uint32_t layerOf(const TiledLayer& layer, const TiledObject& object, PropertyReader& properties) {
    std::optional<std::int64_t> number = properties.wholeNumber("layer");
    for (const TiledProperty& property : layer.properties) {
        if (!number && property.name == "layer") {
            const auto* const value = std::get_if<std::int64_t>(&property.value);
            if (value == nullptr) {
                throw ToolError("layer " + inQuotes(layer.name) +
                                ": property \"layer\" must be a whole number");
            }
            number = *value;
        }
    }
    if (!number) {
        number = layerInName(layer.name);
    }
    if (!number) {
        refuse(object, "its layer " + inQuotes(layer.name) +
                           " has no number: begin its name with 0 to 4 or give it a property \"layer\"");
    }
    if (*number < 0 || *number > deepestLayer) {
        refuse(object, "layer " + std::to_string(*number) + " is outside 0 to 4");
    }
    return static_cast<std::uint32_t>(*number);
}

/// Whether the polygons of a layer are dressed when they do not tell themselves.
bool dressedOf(const TiledLayer& layer) {
    bool dressed = PolygonDefaults::dressed;
    for (const TiledProperty& property : layer.properties) {
        if (property.name == "dressed") {
            const auto* const value = std::get_if<bool>(&property.value);
            if (value == nullptr) {
                throw ToolError("layer " + inQuotes(layer.name) +
                                ": property \"dressed\" must be true or false");
            }
            dressed = *value;
        }
    }
    return dressed;
}

class LevelCompiler {
public:
    explicit LevelCompiler(std::vector<std::string>& warningList)
        : warnings(warningList) {}

    LevelFile compile(const TiledMap& map) {
        for (const TiledLayer& layer : map.layers) {
            if (layer.kind == "notes") {
                continue;
            }
            for (const TiledObject& object : layer.objects) {
                compileObject(layer, object);
            }
        }
        if (waterStart == nullptr) {
            throw ToolError("the map has no waterStart point");
        }
        if (cameraStart == nullptr) {
            throw ToolError("the map has no cameraStart point");
        }
        if (map.ordersPictures) {
            orderByLayers(level,
                          [this](std::size_t polygon, std::size_t under) { warnOfRaise(polygon, under); });
        }
        addFinish(level.polygons, dressed);
        if (map.ordersPictures) {
            orderByLayers(level, [](std::size_t, std::size_t) {}); // what is raised now is finish
        }
        if (map.ordersPictures && wantsOrder(level)) {
            putOrderInFront(level);
        }
        if (level.polygons.size() > LevelFile::largestCount) {
            throw ToolError("a level holds no more than 65535 polygons, and with the finish of its dressed "
                            "polygons and the order of its pictures this one has " +
                            std::to_string(level.polygons.size()));
        }
        return std::move(level);
    }

private:
    void compileObject(const TiledLayer& layer, const TiledObject& object) {
        if (object.kind == "waterStart") {
            compileStartPoint(object, waterStart, level.waterStart);
        } else if (object.kind == "cameraStart") {
            compileStartPoint(object, cameraStart, level.cameraStart);
        } else if (object.kind == "object" || (object.kind.empty() && object.shape == TiledShape::tile)) {
            compilePicture(layer, object);
        } else if (object.kind == "polygon" || object.kind.empty()) {
            compilePolygon(layer, object);
        } else if (!compileEntity(object, level, warnings)) {
            refuse(object, "unknown class " + inQuotes(object.kind) +
                               " (polygon, object, mover, trigger, force, emitter, sound, waterStart or "
                               "cameraStart)");
        }
    }

    void compileStartPoint(const TiledObject& object, const TiledObject*& found, LevelFile::Point& target) {
        if (object.shape != TiledShape::point) {
            refuse(object, "a " + object.kind + " must be a point object");
        }
        if (found != nullptr) {
            refuse(object, "a second " + object.kind + "; the first is " + found->label());
        }
        found = &object;
        PropertyReader(object).warnOfOthers(warnings);
        target = wholePoints(object, warnings).front();
    }

    void compilePolygon(const TiledLayer& layer, const TiledObject& object) {
        testShape(object);
        PropertyReader properties(object);
        LevelFile::PolygonRecord record;
        record.layer = layerOf(layer, object, properties);
        record.polygonId = properties.number32("id", PolygonDefaults::id);
        record.textureName = properties.fileName("texture", PolygonDefaults::texture, LevelFile::longestName);
        record.surfaceType = properties.choice("surface", PolygonDefaults::surface, surfaceNames) + 1;
        record.polygonMode = properties.isNumber("mode")
                                 ? properties.number32("mode", 0)
                                 : properties.choice("mode", PolygonDefaults::mode, modeNames);
        const bool isDressed = properties.flag("dressed", dressedOf(layer));
        properties.warnOfOthers(warnings);
        if (object.points.size() > LevelFile::largestCount) {
            refuse(object, "has more than 65535 points");
        }
        record.points = wholePoints(object, warnings);
        if (level.polygons.size() == LevelFile::largestCount) {
            refuse(object, "a level holds no more than 65535 polygons, and this is one more");
        }
        level.polygons.push_back(std::move(record));
        dressed.push_back(isDressed);
        labels.push_back(object.label());
    }

    void warnOfRaise(std::size_t polygon, std::size_t under) {
        warnings.push_back(labels[polygon] + " lies over " + labels[under] +
                           ", which shows another picture, and goes to layer " +
                           std::to_string(level.polygons[polygon].layer));
    }

    /// A decorative object.
    void compilePicture(const TiledLayer& layer, const TiledObject& object) {
        PropertyReader properties(object);
        LevelFile::ObjectRecord record;
        const TiledObject centre = centreOf(object);
        record.layer = layerOf(layer, object, properties);
        record.objectId = static_cast<std::uint32_t>(properties.number32("id", ObjectDefaults::id));
        record.textureName =
            properties.fileName("texture", ObjectDefaults::texture, LevelFile::longestObjectTextureName);
        if (!properties.has("texture")) {
            refuse(object, "shows no picture: give it a property \"texture\"");
        }
        record.mirrored = properties.flagByte("mirrored", ObjectDefaults::mirrored);
        if (object.flippedSideways) {
            record.mirrored = record.mirrored == 0 ? 1 : 0;
        }
        properties.warnOfOthers(warnings);
        record.position = wholePoints(centre, warnings).front();
        if (level.objects.size() == LevelFile::largestCount) {
            refuse(object, "a level holds no more than 65535 objects, and this is one more");
        }
        level.objects.push_back(std::move(record));
    }

    /// The object as a point: what the game knows of its place.
    static TiledObject centreOf(const TiledObject& object) {
        TiledObject centre = object;
        if (object.shape == TiledShape::point) {
            return centre;
        }
        if (object.shape != TiledShape::rectangle && object.shape != TiledShape::tile) {
            refuse(object, "an object must be a point, a rectangle or a tile");
        }
        const TiledPoint& topLeft = object.points[0];
        const TiledPoint& topRight = object.points[1];
        const TiledPoint& bottomRight = object.points[2];
        if (topLeft.y != topRight.y || topRight.x < topLeft.x || object.flippedOtherwise) {
            refuse(object, "a picture can be mirrored from side to side, not turned or put upside down");
        }
        centre.points = {{(topLeft.x + bottomRight.x) / 2.0, (topLeft.y + bottomRight.y) / 2.0}};
        return centre;
    }

    static void testShape(const TiledObject& object) {
        switch (object.shape) {
        case TiledShape::polygon:
            return;
        case TiledShape::rectangle:
            if (object.points[0] == object.points[1] || object.points[1] == object.points[2]) {
                refuse(object, "a rectangle without width or height");
            }
            return;
        case TiledShape::point:
            refuse(object, "a point must be of class object, waterStart or cameraStart");
        case TiledShape::polyline:
            refuse(object, "a line cannot be a polygon: close it");
        case TiledShape::ellipse:
            refuse(object, "an ellipse cannot be written: draw it as a polygon");
        case TiledShape::text:
            refuse(object, "a text cannot be written: move it to a layer of class \"notes\"");
        case TiledShape::tile:
            refuse(object, "a tile must be of class object");
        }
    }

    std::vector<std::string>& warnings;
    LevelFile level;
    std::vector<bool> dressed;       ///< For each polygon of the level.
    std::vector<std::string> labels; ///< Of the objects that the polygons come from.
    const TiledObject* waterStart = nullptr;
    const TiledObject* cameraStart = nullptr;
};

} // namespace

LevelFile compileLevel(const TiledMap& map, std::vector<std::string>& warnings) {
    warnings.insert(warnings.end(), map.warnings.begin(), map.warnings.end());
    return LevelCompiler(warnings).compile(map);
}

} // namespace tarnwick
