#include "tools/level/TiledMap.h"

#include "tools/level/ToolError.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>

namespace tarnwick {

namespace {

using Json = nlohmann::json;

/// Groups inside groups; more than anybody draws, fewer than the stack holds.
constexpr int deepestGroup = 64;

/// Reads members of one JSON object; `where` names the thing in messages ("" for the map itself).
class Members {
public:
    Members(const Json& object, std::string place)
        : json(object)
        , where(std::move(place)) {
        if (!json.is_object()) {
            refuse("is not a JSON object");
        }
    }

    [[noreturn]] void refuse(const std::string& reason) const {
        throw ToolError(where.empty() ? "the map " + reason : where + ": " + reason);
    }
    const std::string& place() const { return where; }
    void rename(std::string newWhere) { where = std::move(newWhere); }

    bool has(const char* key) const { return json.contains(key); }

    /// A member that may be missing; null counts as missing.
    const Json* find(const char* key) const {
        const auto found = json.find(key);
        return found == json.end() || found->is_null() ? nullptr : &*found;
    }

    std::string text(const char* key) const {
        const Json* const value = find(key);
        if (value == nullptr) {
            return {};
        }
        if (!value->is_string()) {
            refuse(std::string(key) + " is not a text");
        }
        return value->get<std::string>();
    }

    double number(const char* key, double otherwise) const {
        const Json* const value = find(key);
        if (value == nullptr) {
            return otherwise;
        }
        if (!value->is_number()) {
            refuse(std::string(key) + " is not a number");
        }
        return value->get<double>();
    }

    std::int64_t wholeNumber(const char* key, std::int64_t otherwise) const {
        const Json* const value = find(key);
        if (value == nullptr) {
            return otherwise;
        }
        if (!isWhole(*value)) {
            refuse(std::string(key) + " is not a whole number");
        }
        return value->get<std::int64_t>();
    }

    bool flag(const char* key) const {
        const Json* const value = find(key);
        if (value == nullptr) {
            return false;
        }
        if (!value->is_boolean()) {
            refuse(std::string(key) + " is neither true nor false");
        }
        return value->get<bool>();
    }

    /// A list that may be missing.
    const Json* list(const char* key) const {
        const Json* const value = find(key);
        if (value != nullptr && !value->is_array()) {
            refuse(std::string(key) + " is not a list");
        }
        return value;
    }

    /// A whole number that 64 bits with a sign hold.
    static bool isWhole(const Json& value) {
        if (value.is_number_unsigned()) {
            return value.get<std::uint64_t>() <=
                   static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
        }
        return value.is_number_integer();
    }

private:
    const Json& json;
    std::string where;
};

std::vector<TiledProperty> readProperties(const Members& owner) {
    std::vector<TiledProperty> properties;
    const Json* const list = owner.list("properties");
    if (list == nullptr) {
        return properties;
    }
    for (const Json& entry : *list) {
        const Members members(entry, owner.place());
        TiledProperty property;
        property.name = members.text("name");
        const std::string label = "property " + inQuotes(property.name);
        const Json* const value = members.find("value");
        if (value == nullptr) {
            owner.refuse(label + " has no value");
        }
        if (value->is_boolean()) {
            property.value = value->get<bool>();
        } else if (Members::isWhole(*value)) {
            property.value = value->get<std::int64_t>();
        } else if (value->is_number()) {
            property.value = value->get<double>();
        } else if (value->is_string()) {
            property.value = value->get<std::string>();
        } else {
            owner.refuse(label + " is neither a number, a text nor true or false");
        }
        properties.push_back(std::move(property));
    }
    return properties;
}

/// The class of an object or a layer: Tiled 1.9 calls the member "class", the versions before and after
/// "type".
std::string readKind(const Members& members, const char* newName) {
    const std::string kind = members.text("class");
    return kind.empty() && newName != nullptr ? members.text(newName) : kind;
}

std::vector<TiledPoint> readPoints(const Members& object, const Json& list) {
    if (!list.is_array()) {
        object.refuse("its points are not a list");
    }
    std::vector<TiledPoint> points;
    points.reserve(list.size());
    for (const Json& entry : list) {
        const Members point(entry, object.place());
        if (!point.has("x") || !point.has("y")) {
            object.refuse("a point lacks x or y");
        }
        points.push_back({point.number("x", 0.0), point.number("y", 0.0)});
    }
    return points;
}

/// Points around the object's own place become places on the map. Quarter turns are exact, so that what was
/// drawn on whole units stays there.
void placeOnMap(std::vector<TiledPoint>& points, const TiledPoint& place, double degrees) {
    const double turn = std::remainder(degrees, 360.0);
    double sine = std::sin(turn * std::numbers::pi / 180.0);
    double cosine = std::cos(turn * std::numbers::pi / 180.0);
    if (std::fmod(turn, 90.0) == 0.0) {
        sine = std::round(sine);
        cosine = std::round(cosine);
    }
    for (TiledPoint& point : points) {
        const TiledPoint own = point;
        point.x = place.x + own.x * cosine - own.y * sine;
        point.y = place.y + own.x * sine + own.y * cosine;
    }
}

/// The flags in the number of a tile.
constexpr std::int64_t tileFlippedSideways = 0x80000000;
constexpr std::int64_t tileFlippedOtherwise = 0x70000000;

TiledShape shapeOf(const Members& object) {
    if (object.has("template")) {
        object.refuse("is an instance of a template; detach it in Tiled first");
    }
    if (object.find("gid") != nullptr) {
        return TiledShape::tile;
    }
    if (object.find("text") != nullptr) {
        return TiledShape::text;
    }
    if (object.find("polygon") != nullptr) {
        return TiledShape::polygon;
    }
    if (object.find("polyline") != nullptr) {
        return TiledShape::polyline;
    }
    if (object.flag("point")) {
        return TiledShape::point;
    }
    if (object.flag("ellipse") || object.flag("capsule")) {
        return TiledShape::ellipse;
    }
    return TiledShape::rectangle;
}

TiledObject readObject(const Json& json, const std::string& layerLabel, const TiledPoint& offset) {
    Members members(json, "an object of " + layerLabel);
    TiledObject object;
    object.number = members.wholeNumber("id", 0);
    object.name = members.text("name");
    members.rename(object.label());
    object.kind = readKind(members, "type");
    object.shape = shapeOf(members);
    object.properties = readProperties(members);

    object.points = {{0.0, 0.0}};
    if (object.shape == TiledShape::polygon) {
        object.points = readPoints(members, *members.find("polygon"));
    } else if (object.shape == TiledShape::polyline) {
        object.points = readPoints(members, *members.find("polyline"));
    } else if (object.shape == TiledShape::rectangle || object.shape == TiledShape::ellipse) {
        const double width = members.number("width", 0.0);
        const double height = members.number("height", 0.0);
        object.points = {{0.0, 0.0}, {width, 0.0}, {width, height}, {0.0, height}};
    } else if (object.shape == TiledShape::tile) {
        // A tile stands on its place, which is its bottom left corner.
        const double width = members.number("width", 0.0);
        const double height = members.number("height", 0.0);
        object.points = {{0.0, -height}, {width, -height}, {width, 0.0}, {0.0, 0.0}};
        const std::int64_t number = members.wholeNumber("gid", 0);
        object.flippedSideways = (number & tileFlippedSideways) != 0;
        object.flippedOtherwise = (number & tileFlippedOtherwise) != 0;
    }
    const TiledPoint place = {members.number("x", 0.0) + offset.x, members.number("y", 0.0) + offset.y};
    placeOnMap(object.points, place, members.number("rotation", 0.0));
    return object;
}

void readLayers(const Members& owner, const TiledPoint& offset, int depth, TiledMap& map) {
    const Json* const list = owner.list("layers");
    if (list == nullptr) {
        owner.refuse("has no list of layers");
    }
    for (const Json& entry : *list) {
        Members members(entry, "a layer");
        TiledLayer layer;
        layer.name = members.text("name");
        const std::string label = "layer " + inQuotes(layer.name);
        members.rename(label);
        const TiledPoint place = {offset.x + members.number("offsetx", 0.0),
                                  offset.y + members.number("offsety", 0.0)};
        const std::string type = members.text("type");
        if (type == "group") {
            if (depth == deepestGroup) {
                members.refuse("too many groups inside one another");
            }
            readLayers(members, place, depth + 1, map);
        } else if (type == "tilelayer") {
            map.warnings.push_back(label + " is a tile layer and left out: a level is made of objects");
        } else if (type == "objectgroup") {
            layer.kind = readKind(members, nullptr);
            layer.properties = readProperties(members);
            const Json* const objects = members.list("objects");
            for (std::size_t index = 0; objects != nullptr && index < objects->size(); ++index) {
                layer.objects.push_back(readObject((*objects)[index], label, place));
            }
            map.layers.push_back(std::move(layer));
        } else if (type != "imagelayer") {
            members.refuse("unknown layer type " + inQuotes(type));
        }
    }
}

/// Line and column, counted from 1, of the byte with which the JSON went wrong.
std::string placeInText(std::string_view text, std::size_t byte) {
    const std::string_view before = text.substr(0, std::min(byte == 0 ? 0 : byte - 1, text.size()));
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const std::size_t lineStart = before.rfind('\n') + 1; // 0 when there is no line feed: npos + 1
    return "line " + std::to_string(line) + ", column " + std::to_string(before.size() - lineStart + 1);
}

Json parse(std::string_view text) {
    try {
        return Json::parse(text);
    } catch (const Json::parse_error& error) {
        throw ToolError("not a Tiled map: the JSON is wrong or breaks off at " +
                        placeInText(text, error.byte));
    } catch (const Json::exception&) {
        throw ToolError("not a Tiled map: a number is too large");
    }
}

} // namespace

std::string TiledObject::label() const {
    const std::string text = "object " + std::to_string(number);
    return name.empty() ? text : text + " " + inQuotes(name);
}

TiledMap TiledMap::read(std::string_view text) {
    if (text.empty()) {
        throw ToolError("is empty");
    }
    if (text.front() == '<') {
        throw ToolError("not a Tiled map in JSON: save it as *.tmj");
    }
    const Json json = parse(text);
    const Members members(json, "");
    if (members.text("type") != "map") {
        throw ToolError("not a Tiled map: its type is not \"map\"");
    }
    const std::string orientation = members.text("orientation");
    if (orientation != "orthogonal") {
        members.refuse("is " + inQuotes(orientation) + ": only an orthogonal map shows a level as it is");
    }
    TiledMap map;
    for (const TiledProperty& property : readProperties(members)) {
        if (property.name == "ordersPictures") {
            const auto* const value = std::get_if<bool>(&property.value);
            if (value == nullptr) {
                throw ToolError("property \"ordersPictures\" of the map must be true or false");
            }
            map.ordersPictures = *value;
        }
    }
    readLayers(members, {}, 0, map);
    return map;
}

} // namespace tarnwick
