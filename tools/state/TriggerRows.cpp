#include "tools/state/TriggerRows.h"

#include "level/LevelObject.h"
#include "mechanisms/TriggerManager.h"
#include "tools/state/JsonLine.h"
#include "tools/state/JsonObject.h"
#include "tools/state/SimulationState.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <utility>

namespace tarnwick {

namespace {

constexpr std::size_t objectKinds =
    2; ///< The first kinds, whose lists stand newest first; the others oldest.
constexpr TriggerTarget::Kind laterKinds[] = {TriggerTarget::Kind::force, TriggerTarget::Kind::polygon,
                                              TriggerTarget::Kind::mover, TriggerTarget::Kind::emitter};

} // namespace

void TriggerRows::write(JsonLine& out) {
    out.key("triggers").openArray();
    for (const Trigger& trigger : TriggerManager::triggers) {
        writeTrigger(out, trigger);
    }
    out.closeArray();
    writeEvents(out);
}

void TriggerRows::writeTrigger(JsonLine& out, const Trigger& trigger) {
    out.openObject();
    out.key("typeId").number(trigger.typeId).key("targetId").number(trigger.targetId);
    out.key("fireCount").number(trigger.fireCount).key("cooldownLeft").number(trigger.cooldownLeft);
    out.key("corners").openArray();
    for (const Vector2 corner : cornersOf(trigger)) {
        out.vector(corner);
    }
    out.closeArray();
    out.key("targets").openArray();
    for (const std::size_t count : countTargets(trigger)) {
        out.number(static_cast<std::uint64_t>(count));
    }
    out.closeArray().closeObject();
}

/// The corners as they were given: the triangles begin with the first and the third, and may have exchanged
/// the other two.
std::array<Vector2, TriggerRows::cornerCount> TriggerRows::cornersOf(const Trigger& trigger) {
    const Vector2 first = trigger.triangleA[0];
    const Vector2 third = trigger.triangleB[0];
    const Vector2 second = trigger.triangleA[2] == third ? trigger.triangleA[1] : trigger.triangleA[2];
    const Vector2 fourth = trigger.triangleB[2] == first ? trigger.triangleB[1] : trigger.triangleB[2];
    return {first, second, third, fourth};
}

std::size_t TriggerRows::kindPlace(const TriggerTarget& target) {
    if (target.kind == TriggerTarget::Kind::object) {
        return static_cast<const LevelObject*>(target.entity)->frameCount > 1 ? 0 : 1;
    }
    const auto* const found = std::ranges::find(laterKinds, target.kind);
    return objectKinds + static_cast<std::size_t>(found - std::begin(laterKinds));
}

TriggerRows::TargetCounts TriggerRows::countTargets(const Trigger& trigger) {
    TargetCounts counts{};
    for (const TriggerTarget& target : trigger.targets) {
        ++counts[kindPlace(target)];
    }
    return counts;
}

void TriggerRows::writeEvents(JsonLine& out) {
    std::map<const Trigger*, std::uint64_t> places;
    for (const Trigger& trigger : TriggerManager::triggers) {
        places.emplace(&trigger, places.size());
    }
    out.key("delayedEvents").openArray();
    for (const DelayedTriggerEvent& event : TriggerManager::state.delayedEvents) {
        out.openObject();
        out.key("trigger").number(places.at(event.trigger));
        out.key("dt").number(event.dt).key("timeLeft").number(event.timeLeft);
        out.closeObject();
    }
    out.closeArray();
}

void TriggerRows::read(const JsonObject& in) {
    readTriggers(in);
    readEvents(in);
}

void TriggerRows::readTriggers(const JsonObject& in) {
    const nlohmann::json& entries = in.array("triggers");
    const std::size_t ofLevel = TriggerManager::triggers.size();
    if (entries.size() < ofLevel) {
        throw StateError("the state has " + std::to_string(entries.size()) +
                         " entries in \"triggers\", the level " + std::to_string(ofLevel));
    }
    madeByConsole = entries.size() - ofLevel;
    auto trigger = TriggerManager::triggers.begin();
    for (const nlohmann::json& entry : entries) {
        const JsonObject from(entry, "triggers");
        Row& row = rows.emplace_back();
        row.typeId = from.integer<std::uint32_t>("typeId");
        row.targetId = from.integer<std::int32_t>("targetId");
        row.fireCount = from.integer<std::uint32_t>("fireCount");
        row.cooldownLeft = from.number("cooldownLeft");
        if (rows.size() <= madeByConsole) {
            readMaking(from, row);
            continue;
        }
        if (row.typeId != trigger->typeId || row.targetId != trigger->targetId) {
            throw StateError("the state is of another level: the triggers differ");
        }
        ++trigger;
    }
}

void TriggerRows::readMaking(const JsonObject& from, Row& row) {
    const nlohmann::json& corners = from.array("corners");
    if (corners.size() != cornerCount) {
        refuseField(from.path("corners"), "a list of four points");
    }
    for (std::size_t i = 0; i < cornerCount; ++i) {
        row.corners[i] = asVector(corners[i], from.path("corners"));
    }
    const nlohmann::json& counts = from.array("targets");
    if (counts.size() != kindCount) {
        refuseField(from.path("targets"), "a list of six numbers");
    }
    for (std::size_t i = 0; i < kindCount; ++i) {
        row.targets[i] = asInteger<std::uint32_t>(counts[i], from.path("targets"));
    }
}

void TriggerRows::readEvents(const JsonObject& in) {
    for (const nlohmann::json& entry : in.array("delayedEvents")) {
        const JsonObject from(entry, "delayedEvents");
        Event& event = events.emplace_back();
        event.trigger = from.integer<std::uint32_t>("trigger");
        if (event.trigger >= rows.size()) {
            refuseField(from.path("trigger"), "the place of a trigger");
        }
        event.dt = from.number("dt");
        event.timeLeft = from.number("timeLeft");
    }
}

void TriggerRows::apply() const {
    for (std::size_t i = madeByConsole; i > 0; --i) { // the newest stands first
        makeTrigger(rows[i - 1]);
    }
    std::vector<Trigger*> places;
    auto row = rows.begin();
    for (Trigger& trigger : TriggerManager::triggers) {
        trigger.fireCount = row->fireCount;
        trigger.cooldownLeft = row->cooldownLeft;
        places.push_back(&trigger);
        ++row;
    }
    TriggerManager::state.delayedEvents.clear();
    for (const Event& event : events) {
        Trigger* const trigger = places[event.trigger];
        TriggerManager::state.delayedEvents.push_back(
            {trigger->type->handler, trigger, event.dt, event.timeLeft});
    }
}

/// Makes it anew, without the targets that came into the level only after it: of objects, whose lists grow at
/// the front, those are the first, and of the other kinds the last.
void TriggerRows::makeTrigger(const Row& row) {
    TriggerManager::addTrigger(static_cast<std::int32_t>(row.typeId), row.targetId, 0.0f, row.corners[0],
                               row.corners[1], row.corners[2], row.corners[3]);
    Trigger& trigger = TriggerManager::triggers.front();
    const TargetCounts all = countTargets(trigger);
    TargetCounts met{};
    std::vector<TriggerTarget> kept;
    for (const TriggerTarget& target : trigger.targets) {
        const std::size_t place = kindPlace(target);
        const std::size_t number = met[place]++;
        const bool wasThere =
            place < objectKinds ? number + row.targets[place] >= all[place] : number < row.targets[place];
        if (wasThere) {
            kept.push_back(target);
        }
    }
    if (kept.size() < trigger.targets.size()) {
        auto& index =
            TriggerManager::state.targetIndexes.emplace_front(); // the last stays that of all entities
        trigger.targets = index.targets[row.targetId] = std::move(kept);
    }
}

} // namespace tarnwick
