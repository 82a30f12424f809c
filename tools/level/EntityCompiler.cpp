#include "tools/level/EntityCompiler.h"

#include "level/LevelFile.h"
#include "tools/level/LevelCompiler.h"
#include "tools/level/LevelNames.h"
#include "tools/level/PropertyReader.h"
#include "tools/level/TiledMap.h"
#include "tools/level/WholePoints.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <utility>

namespace tarnwick {

namespace {

constexpr std::size_t cornerCount = 4; ///< Of a trigger.

/// Puts one more record into a section, which is called `name` in messages.
template <typename Record>
void add(std::vector<Record>& section, Record record, const TiledObject& object, const std::string& name) {
    if (section.size() == LevelFile::largestCount) {
        refuse(object, "a level holds no more than 65535 " + name + ", and this is one more");
    }
    section.push_back(std::move(record));
}

/// A name of a file that must be there, though it may be empty.
std::string fileNameOf(const TiledObject& object, PropertyReader& properties, const std::string& name) {
    if (!properties.has(name)) {
        refuse(object, "names no file: give it a property " + inQuotes(name));
    }
    return properties.fileName(name, "", LevelFile::longestName);
}

/// The object's first place alone, in whole units.
LevelFile::Point placeOf(const TiledObject& object, std::vector<std::string>& warnings) {
    TiledObject place = object;
    place.points.resize(1);
    return wholePoints(place, warnings).front();
}

void testIsLine(const TiledObject& object) {
    if (object.shape != TiledShape::polyline || object.points.size() != 2) {
        refuse(object, "a " + object.kind + " must be a line of two points");
    }
}

/// Where a force or an emitter points: along its line, or as its properties tell when it is a point.
Vector2 directionOf(const TiledObject& object, PropertyReader& properties) {
    if (object.shape == TiledShape::point) {
        return {properties.decimal("directionX", 0.0f), properties.decimal("directionY", 0.0f)};
    }
    if (object.shape != TiledShape::polyline || object.points.size() != 2) {
        refuse(object, std::string(object.kind == "emitter" ? "an " : "a ") + object.kind +
                           " must be a line of two points, or a point");
    }
    if (properties.has("directionX") || properties.has("directionY")) {
        refuse(object, "has its direction twice, as a line and in its properties");
    }
    const double x = object.points[1].x - object.points[0].x;
    const double y = object.points[1].y - object.points[0].y;
    constexpr auto largest = static_cast<double>(std::numeric_limits<float>::max());
    if (!(std::abs(x) <= largest && std::abs(y) <= largest)) {
        refuse(object, "its direction is too long for a 32-bit float");
    }
    return {static_cast<float>(x), static_cast<float>(y)};
}

void compileForce(const TiledObject& object, LevelFile& level, std::vector<std::string>& warnings) {
    PropertyReader properties(object);
    LevelFile::ForceRecord record;
    record.forceId = static_cast<std::uint32_t>(properties.number32("id", EntityDefaults::id));
    record.direction = directionOf(object, properties);
    record.strength = properties.decimal("strength", EntityDefaults::strength);
    properties.warnOfOthers(warnings);
    record.position = placeOf(object, warnings);
    add(level.forces, record, object, "forces");
}

void compileMover(const TiledObject& object, LevelFile& level, std::vector<std::string>& warnings) {
    testIsLine(object);
    PropertyReader properties(object);
    LevelFile::MoverRecord record;
    record.moverId = properties.number32("id", EntityDefaults::id);
    record.speed = properties.decimal("speed", EntityDefaults::speed);
    properties.warnOfOthers(warnings);
    const std::vector<LevelFile::Point> ends = wholePoints(object, warnings);
    record.start = ends[0];
    record.end = ends[1];
    add(level.movers, record, object, "movers");
}

std::int32_t triggerTypeOf(const TiledObject& object, PropertyReader& properties) {
    if (!properties.has("type")) {
        refuse(object, "does nothing: give it a property \"type\"");
    }
    if (properties.isNumber("type")) {
        return properties.number32("type", 0);
    }
    const std::string name = properties.text("type", "");
    const TriggerAction* const action = actionOf(std::string_view(name));
    if (action == nullptr) {
        refuse(object, "unknown type " + inQuotes(name) + "; the Tiled project lists the types of triggers");
    }
    return action->code;
}

void compileTrigger(const TiledObject& object, LevelFile& level, std::vector<std::string>& warnings) {
    const bool isRegion = object.shape == TiledShape::polygon || object.shape == TiledShape::rectangle;
    if (!isRegion || object.points.size() != cornerCount) {
        refuse(object, "a trigger must be a rectangle or a polygon of four corners");
    }
    PropertyReader properties(object);
    LevelFile::TriggerRecord record;
    record.targetId = properties.number32("target", EntityDefaults::target);
    record.triggerType = triggerTypeOf(object, properties);
    record.delay = properties.decimal("delay", EntityDefaults::delay);
    properties.warnOfOthers(warnings);
    const std::vector<LevelFile::Point> corners = wholePoints(object, warnings);
    std::copy(corners.begin(), corners.end(), std::begin(record.corners));
    add(level.triggers, record, object, "triggers");
}

/// The middle and half the width of a sound's circle.
std::pair<TiledPoint, double> circleOf(const TiledObject& object) {
    const TiledPoint& topLeft = object.points[0];
    const TiledPoint& topRight = object.points[1];
    const TiledPoint& bottomRight = object.points[2];
    const double width = std::hypot(topRight.x - topLeft.x, topRight.y - topLeft.y);
    const double height = std::hypot(bottomRight.x - topRight.x, bottomRight.y - topRight.y);
    constexpr double evenness = 1e-6; // world units; sides that a turn of the circle made uneven
    if (std::abs(width - height) > evenness) {
        refuse(object, "a sound reaches equally far all round: make its ellipse a circle");
    }
    return {{(topLeft.x + bottomRight.x) / 2.0, (topLeft.y + bottomRight.y) / 2.0}, width / 2.0};
}

void compileSound(const TiledObject& object, LevelFile& level, std::vector<std::string>& warnings) {
    PropertyReader properties(object);
    LevelFile::SoundSourceRecord record;
    TiledObject place = object;
    if (object.shape == TiledShape::ellipse) {
        if (properties.has("reach")) {
            refuse(object, "has its reach twice, as a circle and in its properties");
        }
        const auto [middle, radius] = circleOf(object);
        // Beside the middle: the reach is rounded and tested as a place is.
        place.points = {middle, {radius, 0.0}};
        const std::vector<LevelFile::Point> whole = wholePoints(place, warnings);
        record.position = whole[0];
        record.strenght = whole[1].x;
    } else if (object.shape == TiledShape::point) {
        record.position = placeOf(object, warnings);
        record.strenght = properties.number32("reach", EntityDefaults::reach);
    } else {
        refuse(object, "a sound must be a circle or a point");
    }
    if (record.strenght < 0) {
        refuse(object, "reach " + std::to_string(record.strenght) + " is below 0");
    }
    record.soundId = properties.number32("id", EntityDefaults::id);
    record.looping = properties.flagByte("looping", EntityDefaults::looping);
    record.soundName = fileNameOf(object, properties, "sound");
    properties.warnOfOthers(warnings);
    add(level.soundSources, std::move(record), object, "sounds");
}

void compileEmitter(const TiledObject& object, LevelFile& level, std::vector<std::string>& warnings) {
    PropertyReader properties(object);
    LevelFile::EmitterRecord record;
    record.emitterId = properties.number32("id", EntityDefaults::id);
    record.direction = directionOf(object, properties);
    record.settingsName = fileNameOf(object, properties, "settings");
    properties.warnOfOthers(warnings);
    record.position = placeOf(object, warnings);
    add(level.emitters, std::move(record), object, "emitters");
}

} // namespace

bool compileEntity(const TiledObject& object, LevelFile& level, std::vector<std::string>& warnings) {
    using Compile = void (*)(const TiledObject&, LevelFile&, std::vector<std::string>&);
    constexpr std::pair<std::string_view, Compile> classes[] = {{"force", compileForce},
                                                                {"mover", compileMover},
                                                                {"trigger", compileTrigger},
                                                                {"sound", compileSound},
                                                                {"emitter", compileEmitter}};
    for (const auto& [name, compile] : classes) {
        if (object.kind == name) {
            compile(object, level, warnings);
            return true;
        }
    }
    return false;
}

} // namespace tarnwick
