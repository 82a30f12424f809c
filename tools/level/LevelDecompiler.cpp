#include "tools/level/LevelDecompiler.h"

#include "level/LevelFile.h"
#include "tools/level/LevelCompiler.h"
#include "tools/level/LevelNames.h"
#include "tools/level/PictureOrder.h"
#include "tools/level/ToolError.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <map>
#include <optional>
#include <vector>

namespace tarnwick {

namespace {

using Json = nlohmann::ordered_json;

constexpr int unknownSize = 32; ///< Pixels, of a picture that cannot be found.
constexpr int tileSize = 32;    ///< Pixels of the map's grid, which means nothing.
constexpr std::int64_t tileFlippedSideways = 0x80000000;

/// Collects the properties of one object, those that differ from what is taken when they are missing.
class Properties {
public:
    void text(const char* name, const std::string& value) {
        list.push_back({{"name", name}, {"type", "string"}, {"value", value}});
    }
    /// One of the names that the project lists as `kind`.
    void choice(const char* name, const char* kind, std::string_view value, std::string_view otherwise) {
        if (value != otherwise) {
            list.push_back({{"name", name}, {"propertytype", kind}, {"type", "string"}, {"value", value}});
        }
    }
    void number(const char* name, std::int64_t value, std::int64_t otherwise) {
        if (value != otherwise) {
            number(name, value);
        }
    }
    void number(const char* name, std::int64_t value) {
        list.push_back({{"name", name}, {"type", "int"}, {"value", value}});
    }
    /// As a number, or bit for bit when no number shows it.
    void decimal(const char* name, float value, float otherwise) {
        if (std::bit_cast<std::uint32_t>(value) == std::bit_cast<std::uint32_t>(otherwise)) {
            return;
        }
        if (std::isfinite(value)) {
            list.push_back({{"name", name}, {"type", "float"}, {"value", static_cast<double>(value)}});
            return;
        }
        char bits[11];
        std::snprintf(bits, sizeof bits, "0x%08X", std::bit_cast<std::uint32_t>(value));
        text(name, bits);
    }
    void flagByte(const char* name, std::uint8_t value, bool otherwise) {
        if (value > 1) {
            number(name, value);
        } else if ((value == 1) != otherwise) {
            list.push_back({{"name", name}, {"type", "bool"}, {"value", value == 1}});
        }
    }

    Json take() { return std::move(list); }

private:
    Json list = Json::array();
};

/// Whether every byte belongs to a well-formed character, as JSON wants it.
bool isUtf8(const std::string& text) {
    try {
        static_cast<void>(Json(text).dump());
        return true;
    } catch (const Json::type_error&) {
        return false;
    }
}

/// What a polygon of the finish is called, by its picture; empty for any other polygon.
std::string finishName(const std::string& picture) {
    constexpr std::pair<std::string_view, const char*> families[] = {
        {"gfx\\shade_", "shade"}, {"gfx\\outline", "outline"}, {"gfx\\edge_", "edge strip"}};
    for (const auto& [beginning, name] : families) {
        if (picture.starts_with(beginning)) {
            return name;
        }
    }
    return {};
}

class LevelDecompiler {
public:
    LevelDecompiler(const LevelFile& read, const std::string& folder, const PictureSize& size)
        : level(read)
        , pictureFolder(folder)
        , pictureSize(size) {}

    std::string decompile() {
        ordersPictures = isOrdered();
        polygons();
        objects();
        movers();
        forces();
        triggers();
        sounds();
        emitters();
        openLayer("start");
        addPoint("waterStart", level.waterStart, Json::array());
        addPoint("cameraStart", level.cameraStart, Json::array());
        return map().dump(1) + "\n";
    }

private:
    void openLayer(const std::string& name) {
        layers.push_back({{"draworder", "index"},
                          {"id", layers.size() + 1},
                          {"name", name},
                          {"objects", Json::array()},
                          {"opacity", 1},
                          {"type", "objectgroup"},
                          {"visible", true},
                          {"x", 0},
                          {"y", 0}});
    }

    /// Puts an object of this class into the open layer and gives it back for more members.
    Json& add(const char* kind, const std::string& name, double x, double y, Json properties) {
        Json& objects = layers.back().at("objects");
        objects.push_back({{"class", kind},
                           {"height", 0},
                           {"id", nextObject++},
                           {"name", name},
                           {"rotation", 0},
                           {"visible", true},
                           {"width", 0},
                           {"x", x},
                           {"y", y}});
        if (!properties.empty()) {
            objects.back()["properties"] = std::move(properties);
        }
        return objects.back();
    }

    Json& addPoint(const char* kind, const LevelFile::Point& place, Json properties) {
        Json& object = add(kind, "", place.x, place.y, std::move(properties));
        object["point"] = true;
        return object;
    }

    /// The points of an outline or a line, seen from the first one.
    template <typename Points>
    static Json outline(const Points& points) {
        Json list = Json::array();
        for (const LevelFile::Point& point : points) {
            list.push_back({{"x", std::int64_t{point.x} - std::begin(points)->x},
                            {"y", std::int64_t{point.y} - std::begin(points)->y}});
        }
        return list;
    }

    static void testName(const std::string& name, const char* section, std::size_t number) {
        if (!isUtf8(name)) {
            throw ToolError(std::string(section) + " " + std::to_string(number) +
                            ": its file name is not UTF-8, and a map cannot hold it");
        }
    }

    /// Whether a compiler that orders the pictures itself makes this level of what is left without their
    /// list.
    bool isOrdered() const {
        LevelFile again = level;
        if (beginsWithOrder(again)) {
            takeOrderAway(again);
        }
        orderByLayers(again, [](std::size_t, std::size_t) {});
        if (wantsOrder(again)) {
            putOrderInFront(again);
        }
        return again.polygons == level.polygons;
    }

    void polygons() {
        std::optional<std::uint32_t> open;
        const std::size_t inOrder = ordersPictures && beginsWithOrder(level) ? orderedPictures.size() : 0;
        for (std::size_t number = inOrder; number < level.polygons.size(); ++number) {
            const LevelFile::PolygonRecord& record = level.polygons[number];
            testName(record.textureName, "polygon", number);
            if (open != record.layer) {
                openLayer(std::to_string(record.layer) + " polygons");
                open = record.layer;
            }
            Properties properties;
            properties.number("id", record.polygonId, PolygonDefaults::id);
            if (record.polygonMode >= 0 && record.polygonMode < static_cast<std::int32_t>(modeNames.size())) {
                properties.choice("mode", "mode", modeNames[static_cast<std::size_t>(record.polygonMode)],
                                  PolygonDefaults::mode);
            } else {
                properties.number("mode", record.polygonMode);
            }
            properties.choice("surface", "surface",
                              surfaceNames[static_cast<std::size_t>(record.surfaceType - 1)],
                              PolygonDefaults::surface);
            if (record.textureName != PolygonDefaults::texture) {
                properties.text("texture", record.textureName);
            }
            const LevelFile::Point first = record.points.empty() ? LevelFile::Point{} : record.points.front();
            Json& object =
                add("polygon", finishName(record.textureName), first.x, first.y, properties.take());
            object["polygon"] = outline(record.points);
        }
    }

    void objects() {
        std::optional<std::uint32_t> open;
        for (std::size_t number = 0; number < level.objects.size(); ++number) {
            const LevelFile::ObjectRecord& record = level.objects[number];
            testName(record.textureName, "object", number);
            if (open != record.layer) {
                openLayer(std::to_string(record.layer) + " objects");
                open = record.layer;
            }
            const std::size_t tile = tileOf(record.textureName);
            const auto [width, height] = sizes[tile];
            Properties properties;
            properties.number("id", static_cast<std::int32_t>(record.objectId), ObjectDefaults::id);
            if (record.mirrored > 1) {
                properties.flagByte("mirrored", record.mirrored, false);
            }
            properties.text("texture", record.textureName);
            // A tile stands on its bottom left corner.
            Json& object = add("object", "", record.position.x - width / 2.0,
                               record.position.y + height / 2.0, properties.take());
            object["width"] = width;
            object["height"] = height;
            object["gid"] =
                static_cast<std::int64_t>(tile) + 1 + (record.mirrored == 1 ? tileFlippedSideways : 0);
        }
    }

    /// The number of the tile that shows this picture; a new one for a new picture.
    std::size_t tileOf(const std::string& picture) {
        const auto [found, isNew] = tiles.try_emplace(picture, tiles.size());
        if (isNew) {
            const auto size = pictureSize ? pictureSize(picture) : std::nullopt;
            sizes.push_back(size.value_or(std::pair(unknownSize, unknownSize)));
            std::string path = picture;
            std::replace(path.begin(), path.end(), '\\', '/');
            tileList.push_back({{"id", found->second},
                                {"image", pictureFolder + path},
                                {"imageheight", sizes.back().second},
                                {"imagewidth", sizes.back().first}});
        }
        return found->second;
    }

    void movers() {
        openSection("movers", level.movers.empty());
        for (const LevelFile::MoverRecord& record : level.movers) {
            Properties properties;
            properties.number("id", record.moverId, EntityDefaults::id);
            properties.decimal("speed", record.speed, EntityDefaults::speed);
            Json& object = add("mover", "", record.start.x, record.start.y, properties.take());
            object["polyline"] = outline(std::vector{record.start, record.end});
        }
    }

    void openSection(const char* name, bool isEmpty) {
        if (!isEmpty) {
            openLayer(name);
        }
    }

    /// A line as long as the direction; a point with properties where a line would not give the same bits.
    void addDirected(const char* kind,
                     const LevelFile::Point& place,
                     const Vector2& direction,
                     Properties& properties) {
        const auto survives = [](std::int32_t start, float along) {
            const double end = start + static_cast<double>(along);
            return std::isfinite(along) && std::bit_cast<std::uint32_t>(static_cast<float>(end - start)) ==
                                               std::bit_cast<std::uint32_t>(along);
        };
        if ((direction.x != 0.0f || direction.y != 0.0f) && survives(place.x, direction.x) &&
            survives(place.y, direction.y)) {
            Json& object = add(kind, "", place.x, place.y, properties.take());
            object["polyline"] = Json::array(
                {{{"x", 0}, {"y", 0}},
                 {{"x", static_cast<double>(direction.x)}, {"y", static_cast<double>(direction.y)}}});
            return;
        }
        properties.decimal("directionX", direction.x, 0.0f);
        properties.decimal("directionY", direction.y, 0.0f);
        addPoint(kind, place, properties.take());
    }

    void forces() {
        openSection("forces", level.forces.empty());
        for (const LevelFile::ForceRecord& record : level.forces) {
            Properties properties;
            properties.number("id", static_cast<std::int32_t>(record.forceId), EntityDefaults::id);
            properties.decimal("strength", record.strength, EntityDefaults::strength);
            addDirected("force", record.position, record.direction, properties);
        }
    }

    void triggers() {
        openSection("triggers", level.triggers.empty());
        for (const LevelFile::TriggerRecord& record : level.triggers) {
            Properties properties;
            properties.decimal("delay", record.delay, EntityDefaults::delay);
            properties.number("target", record.targetId, EntityDefaults::target);
            const TriggerAction* const action = actionOf(record.triggerType);
            if (action != nullptr) {
                properties.choice("type", "triggerType", action->name, "");
            } else {
                properties.number("type", record.triggerType);
            }
            const auto& [a, b, c, d] = record.corners;
            const bool isRectangle =
                a.y == b.y && b.x == c.x && c.y == d.y && d.x == a.x && a.x < b.x && b.y < c.y;
            Json& object = add("trigger", "", a.x, a.y, properties.take());
            if (isRectangle) {
                object["width"] = std::int64_t{b.x} - a.x;
                object["height"] = std::int64_t{c.y} - b.y;
            } else {
                object["polygon"] = outline(record.corners);
            }
        }
    }

    void sounds() {
        openSection("sounds", level.soundSources.empty());
        for (std::size_t number = 0; number < level.soundSources.size(); ++number) {
            const LevelFile::SoundSourceRecord& record = level.soundSources[number];
            testName(record.soundName, "sound", number);
            Properties properties;
            properties.number("id", record.soundId, EntityDefaults::id);
            properties.flagByte("looping", record.looping, EntityDefaults::looping);
            if (record.strenght == 0) { // Tiled has no circle without a size
                properties.number("reach", 0);
            }
            properties.text("sound", record.soundName);
            if (record.strenght == 0) {
                addPoint("sound", record.position, properties.take());
                continue;
            }
            const double reach = record.strenght;
            Json& object =
                add("sound", "", record.position.x - reach, record.position.y - reach, properties.take());
            object["ellipse"] = true;
            object["width"] = 2.0 * reach;
            object["height"] = 2.0 * reach;
        }
    }

    void emitters() {
        openSection("emitters", level.emitters.empty());
        for (std::size_t number = 0; number < level.emitters.size(); ++number) {
            const LevelFile::EmitterRecord& record = level.emitters[number];
            testName(record.settingsName, "emitter", number);
            Properties properties;
            properties.number("id", record.emitterId, EntityDefaults::id);
            properties.text("settings", record.settingsName);
            addDirected("emitter", record.position, record.direction, properties);
        }
    }

    Json map() {
        Json result = {{"compressionlevel", -1},
                       {"height", 1},
                       {"infinite", false},
                       {"layers", layers},
                       {"nextlayerid", layers.size() + 1},
                       {"nextobjectid", nextObject},
                       {"orientation", "orthogonal"},
                       {"renderorder", "right-down"},
                       {"tiledversion", "1.9.2"},
                       {"tileheight", tileSize},
                       {"tilesets", Json::array()},
                       {"tilewidth", tileSize},
                       {"type", "map"},
                       {"version", "1.9"},
                       {"width", 1}};
        if (!ordersPictures) {
            result["properties"] =
                Json::array({{{"name", "ordersPictures"}, {"type", "bool"}, {"value", false}}});
        }
        if (!tileList.empty()) {
            const auto wider = [](const auto& a, const auto& b) { return a.first < b.first; };
            const auto taller = [](const auto& a, const auto& b) { return a.second < b.second; };
            result["tilesets"].push_back(
                {{"columns", 0},
                 {"firstgid", 1},
                 {"grid", {{"height", 1}, {"orientation", "orthogonal"}, {"width", 1}}},
                 {"margin", 0},
                 {"name", "objects"},
                 {"spacing", 0},
                 {"tilecount", tileList.size()},
                 {"tileheight", std::max_element(sizes.begin(), sizes.end(), taller)->second},
                 {"tiles", tileList},
                 {"tilewidth", std::max_element(sizes.begin(), sizes.end(), wider)->first}});
        }
        return result;
    }

    const LevelFile& level;
    const std::string& pictureFolder;
    const PictureSize& pictureSize;
    bool ordersPictures = true;
    std::vector<Json> layers;
    std::int64_t nextObject = 1;
    std::map<std::string, std::size_t> tiles; ///< Number of each picture's tile.
    std::vector<std::pair<int, int>> sizes;   ///< Of each tile, pixels.
    std::vector<Json> tileList;
};

} // namespace

std::string
decompileLevel(const LevelFile& level, const std::string& pictureFolder, const PictureSize& pictureSize) {
    return LevelDecompiler(level, pictureFolder, pictureSize).decompile();
}

} // namespace tarnwick
