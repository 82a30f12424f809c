#include "tools/state/ObjectRows.h"

#include "level/LevelObjectsManager.h"
#include "tools/state/JsonLine.h"
#include "tools/state/JsonObject.h"
#include "tools/state/SimulationState.h"

#include <nlohmann/json.hpp>

namespace tarnwick {

void ObjectRows::write(JsonLine& out) {
    const LevelObjectsManager::State& state = LevelObjectsManager::state;
    writeList(out, "staticObjects", LevelObjectsManager::staticObjects, state.createdStatic);
    writeList(out, "animatedObjects", LevelObjectsManager::animatedObjects, state.createdAnimated);
}

void ObjectRows::writeList(JsonLine& out,
                           const char* key,
                           const std::list<LevelObject>& objects,
                           std::size_t madeByConsole) {
    out.key(key).openArray();
    std::size_t place = 0;
    for (const LevelObject& object : objects) {
        out.openObject();
        out.key("id").number(object.id);
        out.key("enabled").flag(object.enabled).key("paused").flag(object.paused);
        out.key("offset").vector(object.offsetX, object.offsetY);
        out.key("currentFrame").number(object.currentFrame).key("frameTime").number(object.frameTime);
        out.key("loopCount").number(object.loopCount).key("loopsDone").number(object.loopsDone);
        if (place++ < madeByConsole) {
            out.key("position").vector(object.x, object.y).key("frames").openArray();
            for (const GLTexture& frame : object.frames) {
                out.string(frame.name);
            }
            out.closeArray();
        }
        out.closeObject();
    }
    out.closeArray();
}

void ObjectRows::read(const JsonObject& in) {
    staticRows = readList(in, "staticObjects", LevelObjectsManager::staticObjects);
    animatedRows = readList(in, "animatedObjects", LevelObjectsManager::animatedObjects);
}

ObjectRows::Rows
ObjectRows::readList(const JsonObject& in, const char* key, const std::list<LevelObject>& objects) {
    const nlohmann::json& entries = in.array(key);
    if (entries.size() < objects.size()) {
        throw StateError("the state has " + std::to_string(entries.size()) + " entries in \"" + key +
                         "\", the level " + std::to_string(objects.size()));
    }
    Rows read;
    read.toBeMade = entries.size() - objects.size();
    auto object = objects.begin();
    for (const nlohmann::json& entry : entries) {
        const JsonObject from(entry, key);
        if (read.rows.size() < read.toBeMade) {
            read.rows.push_back(readRow(from, from.array("frames").size()));
            readMaking(from, read.rows.back());
            continue;
        }
        if (from.integer<std::uint32_t>("id") != object->id) {
            throw StateError("the state is of another level: the objects' ids differ");
        }
        read.rows.push_back(readRow(from, object->frameCount));
        ++object;
    }
    return read;
}

ObjectRows::Row ObjectRows::readRow(const JsonObject& from, std::size_t frameCount) {
    Row row;
    row.enabled = from.flag("enabled");
    row.paused = from.flag("paused");
    row.offset = from.vector("offset");
    row.currentFrame = from.integer<std::uint32_t>("currentFrame");
    if (row.currentFrame >= frameCount) {
        refuseField(from.path("currentFrame"), "a frame of its object");
    }
    row.frameTime = from.number("frameTime");
    row.loopCount = from.integer<std::int32_t>("loopCount");
    row.loopsDone = from.integer<std::int32_t>("loopsDone");
    return row;
}

void ObjectRows::readMaking(const JsonObject& from, Row& row) {
    row.id = from.integer<std::uint32_t>("id");
    row.position = from.vector("position");
    for (const nlohmann::json& name : from.array("frames")) {
        row.frames.push_back(asText(name, from.path("frames")));
    }
}

void ObjectRows::apply() const {
    LevelObjectsManager::State& state = LevelObjectsManager::state;
    applyList(staticRows, LevelObjectsManager::staticObjects, state.createdStatic);
    applyList(animatedRows, LevelObjectsManager::animatedObjects, state.createdAnimated);
}

void ObjectRows::applyList(const Rows& read, std::list<LevelObject>& objects, std::size_t& madeByConsole) {
    for (std::size_t i = read.toBeMade; i > 0; --i) { // the newest stands first
        objects.push_front(made(read.rows[i - 1]));
    }
    madeByConsole += read.toBeMade;
    auto row = read.rows.begin();
    for (LevelObject& object : objects) {
        object.enabled = row->enabled;
        object.paused = row->paused;
        object.offsetX = row->offset.x;
        object.offsetY = row->offset.y;
        object.currentFrame = row->currentFrame;
        object.frameTime = row->frameTime;
        object.loopCount = row->loopCount;
        object.loopsDone = row->loopsDone;
        ++row;
    }
}

/// By its pictures' names and not by the name that was typed: files may have come into the folder since.
LevelObject ObjectRows::made(const Row& row) {
    LevelObject object;
    object.id = row.id;
    object.x = row.position.x;
    object.y = row.position.y;
    object.frames.reserve(row.frames.size()); // a handle that moved would be counted anew
    for (const std::string& name : row.frames) {
        object.frames.emplace_back(name);
    }
    object.frameCount = static_cast<std::uint32_t>(row.frames.size());
    return object;
}

} // namespace tarnwick
