#include "mechanisms/TriggerManager.h"

#include "core/CommandArguments.h"
#include "core/CommandRegistry.h"
#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "level/Level.h"
#include "level/LevelObjectsManager.h"
#include "mechanisms/ForceManager.h"
#include "mechanisms/FxParticleManager.h"
#include "mechanisms/MoverManager.h"
#include "mechanisms/TriggerTypes.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"

#include <algorithm>
#include <iterator>

namespace tarnwick {

namespace {

static_assert(TriggerTypes::find(TriggerManager::soundPlayType)->handler == trigFuncSoundPlay);
static_assert(TriggerTypes::find(TriggerManager::entityRemoveType)->handler == trigFuncEntityRemove);
static_assert(TriggerTypes::find(TriggerManager::entityAddType)->handler == trigFuncEntityAdd);

/// Whether triggers of the type leave their delay out of account.
bool actsOnlyAtOnce(std::int32_t typeId) {
    TARNWICK_LOCATION("TriggerManager::actsOnlyAtOnce");
    const TriggerTypes::Row* const row = TriggerTypes::find(typeId);
    return row != nullptr && row->body == TriggerTypes::needsBody;
}

/// Takes the corners of a triangle in counter-clockwise order, and the edges, lengths and inward normals that
/// follow.
void setTriangle(const Vector2 (&given)[3],
                 Vector2 (&corners)[3],
                 Vector2 (&edges)[3],
                 float (&lengths)[3],
                 Vector2 (&normals)[3]) {
    TARNWICK_LOCATION("TriggerManager::setTriangle");
    float points[6] = {given[0].x, given[0].y, given[1].x, given[1].y, given[2].x, given[2].y};
    fixTriangleWinding(points);
    for (std::size_t i = 0; i < 3; ++i) {
        corners[i] = {points[2 * i], points[2 * i + 1]};
    }
    for (std::size_t i = 0; i < 3; ++i) {
        edges[i] = corners[(i + 1) % 3] - corners[i];
        lengths[i] = vectorLength(edges[i]);
        if (lengths[i] > 0.0f) {
            edges[i] = edges[i] / lengths[i];
        }
        normals[i] = {-edges[i].y, edges[i].x};
    }
}

using TargetsById = std::map<std::int32_t, std::vector<TriggerTarget>>;

/// Appends each of `entities` to the targets of its id, taken as signed.
template <typename Entity>
void appendTargets(std::list<Entity>& entities, TriggerTarget::Kind kind, TargetsById& targets) {
    TARNWICK_LOCATION("TriggerManager::appendTargets");
    for (Entity& entity : entities) {
        targets[static_cast<std::int32_t>(entity.id)].push_back({&entity, kind});
    }
}

} // namespace

std::list<Trigger> TriggerManager::triggers;
TriggerManager::State TriggerManager::state;

constexpr CommandRow TriggerManager::commands[] = {
    {"TriggerTypeList", conCmdTriggerTypeList},
    {"TriggerCreate", conCmdTriggerCreate},
    {"TriggerCount", conCmdTriggerCount},
    {"TriggerDraw", CommandVariable{&state.triggerDraw, "TriggerManager::conCmdTriggerDraw"}},
};

void TriggerManager::initialise() {
    TARNWICK_LOCATION("TriggerManager::initialise");
    shutdown();
    Log::print("\nInitialising down trigger manager..");
    CommandRegistry::add(commands);
    state.triggerDraw = false;
    createTriggerTypeMap();
}

void TriggerManager::shutdown() {
    TARNWICK_LOCATION("TriggerManager::shutdown");
    Log::print("\nShutting down trigger manager..");
    CommandRegistry::remove(commands);
    state.delayedEvents.clear(); // first: they point to the triggers, and those to types and targets
    triggers.clear();
    state.triggerTypes.clear();
    state.targetIndexes.clear();
    state.triggerDraw = false;
}

void TriggerManager::createTriggerTypeMap() {
    TARNWICK_LOCATION("TriggerManager::createTriggerTypeMap");
    for (const TriggerTypes::Row& row : TriggerTypes::table) {
        state.triggerTypes[row.id] = {.name = row.name, .handler = row.handler, .maxFires = row.fires};
    }
}

void TriggerManager::addTrigger(std::int32_t typeId,
                                std::int32_t targetId,
                                float delay,
                                Vector2 corner1,
                                Vector2 corner2,
                                Vector2 corner3,
                                Vector2 corner4) {
    TARNWICK_LOCATION("TriggerManager::addTrigger");
    Trigger& trigger = triggers.emplace_front();
    setTriangle({corner1, corner2, corner3}, trigger.triangleA, trigger.edgesA, trigger.lengthsA,
                trigger.normalsA);
    setTriangle({corner3, corner4, corner1}, trigger.triangleB, trigger.edgesB, trigger.lengthsB,
                trigger.normalsB);
    Box box = Box::around(corner1, corner2);
    box.add(Box::around(corner3, corner4));
    trigger.minX = box.minX;
    trigger.maxX = box.maxX;
    trigger.minY = box.minY;
    trigger.maxY = box.maxY;
    trigger.reach = LiveTriggers::reachOf(trigger);
    trigger.typeId = static_cast<std::uint32_t>(typeId);
    trigger.targetId = targetId;
    trigger.delay = actsOnlyAtOnce(typeId) ? 0.0f : delay;
    const auto row = state.triggerTypes.find(typeId);
    // Before the table is built the row that is looked up comes into being as a type that does nothing.
    trigger.type =
        row != state.triggerTypes.end() ? &row->second : &state.triggerTypes[TriggerTypes::nullType];
    findTargets(trigger);
}

void TriggerManager::findTargets(Trigger& trigger) {
    TARNWICK_LOCATION("TriggerManager::findTargets");
    trigger.targets = {};
    if (trigger.targetId == 0) {
        return;
    }
    const TargetIndex& index = targetIndex();
    if (const auto found = index.targets.find(trigger.targetId); found != index.targets.end()) {
        trigger.targets = found->second;
    }
}

/// The index of the entities that are there now, made anew when some have come in.
const TriggerManager::TargetIndex& TriggerManager::targetIndex() {
    TARNWICK_LOCATION("TriggerManager::targetIndex");
    const std::array<std::size_t, 6> counts = {LevelObjectsManager::animatedObjects.size(),
                                               LevelObjectsManager::staticObjects.size(),
                                               ForceManager::forces.size(),
                                               Level::polygons.size(),
                                               MoverManager::movers.size(),
                                               FxParticleManager::emitters.size()};
    if (!state.targetIndexes.empty() && state.targetIndexes.back().entityCounts == counts) {
        return state.targetIndexes.back();
    }
    TargetIndex& index = state.targetIndexes.emplace_back();
    index.entityCounts = counts;
    appendTargets(LevelObjectsManager::animatedObjects, TriggerTarget::Kind::object, index.targets);
    appendTargets(LevelObjectsManager::staticObjects, TriggerTarget::Kind::object, index.targets);
    appendTargets(ForceManager::forces, TriggerTarget::Kind::force, index.targets);
    appendTargets(Level::polygons, TriggerTarget::Kind::polygon, index.targets);
    appendTargets(MoverManager::movers, TriggerTarget::Kind::mover, index.targets);
    appendTargets(FxParticleManager::emitters, TriggerTarget::Kind::emitter, index.targets);
    return index;
}

bool TriggerManager::pointInTrigger(Vector2 point, const Trigger& trigger) {
    TARNWICK_LOCATION("TriggerManager::pointInTrigger");
    const auto holds = [point](const Vector2(&corners)[3], const Vector2(&normals)[3]) {
        return !(dotProduct(point - corners[0], normals[0]) < 0.0f ||
                 dotProduct(point - corners[1], normals[1]) < 0.0f ||
                 dotProduct(point - corners[2], normals[2]) < 0.0f);
    };
    return holds(trigger.triangleA, trigger.normalsA) || holds(trigger.triangleB, trigger.normalsB);
}

void TriggerManager::runTriggers(float dt, const View& view) {
    TARNWICK_LOCATION("TriggerManager::runTriggers");
    checkDelayedTriggerEvents(dt);
    gatherLiveTriggers(dt, view);
    if (!state.liveTriggers.empty()) {
        for (Particle& particle : ParticleManager::particles) {
            fireAt(particle.position, &particle, BodyKind::particle, dt);
        }
        for (ParticleGroup& group : ParticleGroupMover::groups) {
            fireAt(group.centre, &group, BodyKind::group, dt);
        }
    }
    state.liveTriggers.clear();
}

/// Fills the live triggers in the order of creation. One near the view that rests goes on resting; the rest
/// of those far away does not run down.
void TriggerManager::gatherLiveTriggers(float dt, const View& view) {
    TARNWICK_LOCATION("TriggerManager::gatherLiveTriggers");
    const Box near = view.triggerSquare();
    for (auto place = triggers.rbegin(); place != triggers.rend(); ++place) {
        Trigger& trigger = *place;
        if (trigger.spent() || !trigger.box().touches(near)) {
            continue;
        }
        if (trigger.cooldownLeft <= 0.0f) {
            state.liveTriggers.add(trigger);
        } else {
            trigger.cooldownLeft -= dt;
        }
    }
}

void TriggerManager::fireAt(Vector2 place, void* body, BodyKind bodyKind, float dt) {
    TARNWICK_LOCATION("TriggerManager::fireAt");
    state.liveTriggers.visitAt(place, [&](Trigger& trigger) {
        if (!trigger.spent() && pointInTrigger(place, trigger)) {
            fire(trigger, body, bodyKind, dt);
        }
    });
}

void TriggerManager::fire(Trigger& trigger, void* body, BodyKind bodyKind, float dt) {
    TARNWICK_LOCATION("TriggerManager::fire");
    ++trigger.fireCount;
    trigger.cooldownLeft = trigger.type->cooldown;
    if (trigger.delay > 0.0f) {
        state.delayedEvents.push_back({trigger.type->handler, &trigger, dt, trigger.delay});
    } else {
        trigger.type->handler(&trigger, body, bodyKind, dt);
    }
}

void TriggerManager::checkDelayedTriggerEvents(float dt) {
    TARNWICK_LOCATION("TriggerManager::checkDelayedTriggerEvents");
    std::size_t kept = 0;
    for (std::size_t i = 0; i < state.delayedEvents.size(); ++i) {
        DelayedTriggerEvent event = state.delayedEvents[i];
        event.timeLeft -= dt;
        if (event.timeLeft > 0.0f) {
            state.delayedEvents[kept++] = event;
        } else {
            event.handler(event.trigger, nullptr, BodyKind::particle, event.dt);
        }
    }
    state.delayedEvents.resize(kept);
}

void TriggerManager::resetTriggers() {
    TARNWICK_LOCATION("TriggerManager::resetTriggers");
    state.delayedEvents.clear();
    for (Trigger& trigger : triggers) {
        trigger.cooldownLeft = 0.0f;
        trigger.fireCount = 0;
    }
}

void TriggerManager::keep(Moment& moment) {
    TARNWICK_LOCATION("TriggerManager::keep");
    moment.triggers.clear();
    for (const Trigger& trigger : triggers) {
        moment.triggers.push_back({.cooldownLeft = trigger.cooldownLeft, .fireCount = trigger.fireCount});
    }
    moment.delayedEvents = state.delayedEvents;
}

void TriggerManager::putBack(const Moment& moment) {
    TARNWICK_LOCATION("TriggerManager::putBack");
    auto then = moment.triggers.begin();
    for (Trigger& trigger : triggers) {
        trigger.cooldownLeft = then->cooldownLeft;
        trigger.fireCount = then->fireCount;
        ++then;
    }
    state.delayedEvents = moment.delayedEvents;
}

void TriggerManager::conCmdTriggerTypeList() {
    TARNWICK_LOCATION("TriggerManager::conCmdTriggerTypeList");
    Log::printTitle("Trigger types");
    for (const auto& [id, type] : state.triggerTypes) {
        Log::print("\nTrigger id: ");
        Log::print(id);
        Log::print("\t\t");
        Log::print("Trigger name:   ");
        Log::print(type.name);
    }
}

void TriggerManager::conCmdTriggerCreate(const std::string& typed) {
    TARNWICK_LOCATION("TriggerManager::conCmdTriggerCreate");
    const CommandArguments arguments(
        typed, "\nUSAGE: TriggerCreate < id : integer > < target id : integer > < x : number > "
               "< y : number > < w : number > < h : number > ");
    if (!arguments.fit()) {
        return;
    }
    const float x = arguments.number(2);
    const float y = arguments.number(3);
    const float width = arguments.number(4);
    const float height = arguments.number(5);
    addTrigger(arguments.integer(0), arguments.integer(1), 0.0f, {x, y}, {x + width, y},
               {x + width, y + height}, {x, y + height});
}

std::int32_t TriggerManager::conCmdTriggerCount() {
    TARNWICK_LOCATION("TriggerManager::conCmdTriggerCount");
    return static_cast<std::int32_t>(triggers.size());
}

} // namespace tarnwick
