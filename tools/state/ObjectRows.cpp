#include "tools/state/ObjectRows.h"

#include "level/LevelObjectsManager.h"
#include "tools/state/JsonLine.h"
#include "tools/state/JsonObject.h"
#include "tools/state/SimulationState.h"

#include <list>
#include <string>

namespace tarnwick {

namespace {

void writeList(JsonLine& out, const char* key, const std::list<LevelObject>& objects) {
    out.key(key).openArray();
    for (const LevelObject& object : objects) {
        out.openObject();
        out.key("id").number(object.id);
        out.key("enabled").flag(object.enabled).key("paused").flag(object.paused);
        out.key("offset").vector(object.offsetX, object.offsetY);
        out.key("currentFrame").number(object.currentFrame).key("frameTime").number(object.frameTime);
        out.key("loopCount").number(object.loopCount).key("loopsDone").number(object.loopsDone);
        out.closeObject();
    }
    out.closeArray();
}

template <typename Row>
std::vector<Row> readList(const JsonObject& in, const char* key, const std::list<LevelObject>& objects) {
    const nlohmann::json& entries = in.array(key);
    if (entries.size() != objects.size()) {
        throw StateError("the state has " + std::to_string(entries.size()) + " entries in \"" + key +
                         "\", the level " + std::to_string(objects.size()));
    }
    std::vector<Row> rows;
    auto object = objects.begin();
    for (const nlohmann::json& entry : entries) {
        const JsonObject from(entry, key);
        if (from.integer<std::uint32_t>("id") != object->id) {
            throw StateError("the state is of another level: the objects' ids differ");
        }
        Row& row = rows.emplace_back();
        row.enabled = from.flag("enabled");
        row.paused = from.flag("paused");
        row.offset = from.vector("offset");
        row.currentFrame = from.integer<std::uint32_t>("currentFrame");
        if (row.currentFrame >= object->frameCount) {
            refuseField(from.path("currentFrame"), "a frame of its object");
        }
        row.frameTime = from.number("frameTime");
        row.loopCount = from.integer<std::int32_t>("loopCount");
        row.loopsDone = from.integer<std::int32_t>("loopsDone");
        ++object;
    }
    return rows;
}

template <typename Row>
void applyList(const std::vector<Row>& rows, std::list<LevelObject>& objects) {
    auto row = rows.begin();
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

} // namespace

void ObjectRows::write(JsonLine& out) {
    writeList(out, "staticObjects", LevelObjectsManager::staticObjects);
    writeList(out, "animatedObjects", LevelObjectsManager::animatedObjects);
}

void ObjectRows::read(const JsonObject& in) {
    staticRows = readList<Row>(in, "staticObjects", LevelObjectsManager::staticObjects);
    animatedRows = readList<Row>(in, "animatedObjects", LevelObjectsManager::animatedObjects);
}

void ObjectRows::apply() const {
    applyList(staticRows, LevelObjectsManager::staticObjects);
    applyList(animatedRows, LevelObjectsManager::animatedObjects);
}

} // namespace tarnwick
