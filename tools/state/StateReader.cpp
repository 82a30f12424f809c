// The reading half of SimulationState: a line becomes values, and only whole values reach the modules.

#include "core/Clock.h"
#include "core/Random.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "level/Level.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "particles/ParticleMover.h"
#include "tools/state/CheckPointRows.h"
#include "tools/state/EffectRows.h"
#include "tools/state/GameRows.h"
#include "tools/state/JsonObject.h"
#include "tools/state/MenuRows.h"
#include "tools/state/MoverRows.h"
#include "tools/state/ObjectRows.h"
#include "tools/state/SimulationState.h"
#include "tools/state/TriggerRows.h"

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarnwick {

namespace {

using Json = nlohmann::json;

constexpr std::size_t particleValues = 27; ///< In a particle's row.

/// Gives every lone "-0" outside texts a fraction: the parser would read it as the whole number 0 and lose
/// the sign.
std::string keepNegativeZeros(const std::string& line) {
    std::string kept;
    kept.reserve(line.size() + line.size() / 8);
    bool inText = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        kept += line[i];
        if (inText && line[i] == '\\' && i + 1 < line.size()) {
            kept += line[++i];
            continue;
        }
        inText = inText != (line[i] == '"');
        const bool isZero = !inText && line[i] == '0' && i > 0 && line[i - 1] == '-';
        const bool goesOn = i + 1 < line.size() &&
                            std::string_view(".eE0123456789").find(line[i + 1]) != std::string_view::npos;
        if (isZero && !goesOn) {
            kept += ".0";
        }
    }
    return kept;
}

Particle asParticle(const Json& row, const std::string& what) {
    if (asArray(row, what).size() != particleValues) {
        refuseField(what, "a list of rows of 27 values");
    }
    const auto pair = [&](std::size_t i) {
        return Vector2{asFloat(row[i], what), asFloat(row[i + 1], what)};
    };
    Particle particle;
    particle.position = pair(0);
    for (std::size_t i = 0; i < 3; ++i) {
        particle.trail[i] = pair(2 + 2 * i);
    }
    particle.velocity = pair(8);
    particle.previousVelocity = pair(10);
    particle.pushVelocity = pair(12);
    particle.temperature = asFloat(row[14], what);
    particle.speed = asFloat(row[15], what);
    particle.gridCellX = asInteger<std::uint32_t>(row[16], what);
    particle.gridCellY = asInteger<std::uint32_t>(row[17], what);
    particle.inGrid = asBit(row[18], what);
    particle.dying = asBit(row[19], what);
    particle.killTimer = asFloat(row[20], what);
    particle.groupDirection = pair(21);
    particle.groupFraction = asFloat(row[23], what);
    if (particle.gridCellX >= ParticleMover::gridSize || particle.gridCellY >= ParticleMover::gridSize) {
        refuseField(what, "inside the grid of 1024 by 1024 cells");
    }
    return particle;
}

} // namespace

/// Everything a line holds, before any of it reaches a module.
struct SimulationState::Restored {
    struct PolygonSwitches {
        bool visible = true;
        bool collideable = true;
        bool edgesOn = true;
        Vector2 offset;
        Vector2 previousOffset;
    };

    RunPosition position;
    std::uint32_t random = 0;
    std::uint32_t clock = 0;
    MenuRows menus;
    bool paused = false;
    bool consoleOpen = false;
    Camera::State camera;
    FreeCamera freeCamera;
    GameRows game;
    ParticleManager::State water;
    ParticleList particles;
    std::list<ParticleGroup> groups;
    std::vector<PolygonSwitches> polygons;
    ObjectRows objects;
    MoverRows movers;
    EffectRows effects;
    TriggerRows triggers;
    CheckPointRows checkPoints;
};

RunPosition SimulationState::read(const std::string& line) {
    const Json json = Json::parse(keepNegativeZeros(line), nullptr, false);
    if (json.is_discarded()) {
        throw StateError("the last line is not JSON");
    }
    const JsonObject in(json, "");
    Restored restored;
    readPosition(in, restored.position);
    restored.random = in.integer<std::uint32_t>("random");
    restored.clock = in.integer<std::uint32_t>("clock");
    restored.menus.read(in);
    restored.paused = in.flag("paused", Game::state.paused);
    restored.consoleOpen = in.flag("consoleOpen", Game::state.consoleOpen);
    readCamera(in.child("camera"), restored);
    readFreeCamera(in, restored);
    restored.game.read(in);
    readWater(in, restored);
    readParticles(in, restored);
    readGroups(in, restored);
    readPolygons(in, restored);
    restored.objects.read(in);
    restored.movers.read(in);
    restored.effects.read(in);
    restored.triggers.read(in);
    restored.checkPoints.read(in);
    apply(restored);
    return restored.position;
}

void SimulationState::readPosition(const JsonObject& in, RunPosition& position) {
    position.tick = in.integer<std::uint64_t>("tick");
    position.dt = in.number("dt");
    if (!in.field("time").is_number()) {
        refuseField("time", "a number");
    }
    position.time = in.field("time").get<double>();
    if (!(position.time >= 0.0 && position.time < clockRange)) {
        refuseField("time", "from 0 to below 4294967 seconds, which is as far as the clock goes");
    }
}

void SimulationState::readCamera(const JsonObject& in, Restored& restored) {
    Camera::State& camera = restored.camera;
    camera = Camera::state; // the configuration stays
    camera.cameraState = static_cast<Camera::Course>(in.integer<std::int32_t>("state"));
    if (camera.cameraState < Camera::movingToWaypoint || camera.cameraState > Camera::zoomingIn) {
        refuseField("camera.state", "a state from 0 to 4");
    }
    camera.cameraX = in.number("x");
    camera.cameraY = in.number("y");
    camera.cameraAngle = in.number("angle");
    camera.cameraTurnSpeed = in.number("turnSpeed");
    camera.cameraZoom = in.number("zoom");
    camera.shakeOffsetX = in.number("shakeOffsetX");
    camera.shakeOffsetY = in.number("shakeOffsetY");
    camera.shakeTargetX = in.number("shakeTargetX");
    camera.shakeTargetY = in.number("shakeTargetY");
    camera.shaking = in.flag("shaking");
    camera.shakeTimeLeft = in.number("shakeTimeLeft");
    camera.zoomTimeLeft = in.number("zoomTimeLeft");
}

void SimulationState::readFreeCamera(const JsonObject& in, Restored& restored) {
    restored.freeCamera = Game::state.freeCamera;
    if (in.has("freeCamera")) {
        const JsonObject from = in.child("freeCamera");
        restored.freeCamera.enabled = from.flag("enabled");
        restored.freeCamera.position = {from.number("x"), from.number("y")};
        restored.freeCamera.zoom = from.number("zoom");
    }
}

void SimulationState::readWater(const JsonObject& line, Restored& restored) {
    ParticleManager::State& water = restored.water;
    water = ParticleManager::state;
    if (!line.has("water")) {
        return;
    }
    const JsonObject in = line.child("water");
    water.gravity = in.number("gravity");
    water.roomTemperature = in.number("roomTemperature");
    water.heatTransferRate = in.number("heatTransferRate");
    water.steamRiseRate = in.number("steamRiseRate");
    water.steamScatterRate = in.number("steamScatterRate");
}

void SimulationState::readParticles(const JsonObject& in, Restored& restored) {
    for (const Json& row : in.array("particles")) {
        restored.particles.push_back(asParticle(row, "particles"));
    }
}

void SimulationState::readGroups(const JsonObject& in, Restored& restored) {
    for (const Json& entry : in.array("groups")) {
        const JsonObject from(entry, "groups");
        ParticleGroup& group = restored.groups.emplace_back();
        group.radius = from.number("radius");
        group.targetRadius = from.number("targetRadius");
        group.centre = from.vector("centre");
        group.velocity = from.vector("velocity");
        group.previousVelocity = from.vector("previousVelocity");
        group.pushVelocity = from.vector("pushVelocity");
        group.colliding = from.flag("colliding");
        group.temperature = from.number("temperature");
        group.dying = from.flag("dying");
        group.killTimer = from.number("killTimer");
        for (const Json& row : from.array("members")) {
            group.members.push_back(asParticle(row, "groups.members"));
        }
    }
}

void SimulationState::readPolygons(const JsonObject& in, Restored& restored) {
    const Json& rows = in.array("polygons");
    if (rows.size() != Level::polygons.size()) {
        throw StateError("the state has " + std::to_string(rows.size()) + " polygons, the level " +
                         std::to_string(Level::polygons.size()));
    }
    auto polygon = Level::polygons.begin();
    for (const Json& entry : rows) {
        const JsonObject from(entry, "polygons");
        if (from.integer<std::int32_t>("id") != polygon->id) {
            throw StateError("the state is of another level: the polygons' ids differ");
        }
        restored.polygons.push_back({.visible = from.flag("visible"),
                                     .collideable = from.flag("collideable"),
                                     .edgesOn = from.flag("edgesOn"),
                                     .offset = from.vector("offset"),
                                     .previousOffset = from.vector("previousOffset")});
        ++polygon;
    }
}

/// Cannot fail: the values are whole.
void SimulationState::apply(Restored& restored) {
    seedRandom(restored.random);
    Clock::drive(restored.clock);
    Game::state.paused = restored.paused;
    Game::state.consoleOpen = restored.consoleOpen;
    Game::state.freeCamera = restored.freeCamera;
    Camera::state = restored.camera;
    ParticleManager::state = restored.water;
    ParticleMover::unlink(ParticleManager::particles);
    ParticleManager::particles = std::move(restored.particles);
    ParticleMover::linkAgain(ParticleManager::particles);
    ParticleGroupMover::groups = std::move(restored.groups);
    restored.menus
        .apply(); // after the water, which the scores count, and before the rules, whose timer hears of it
    restored.game.apply();
    auto switches = restored.polygons.begin();
    for (Polygon2D& polygon : Level::polygons) {
        Level::setPolygonCollideable(polygon, switches->edgesOn);
        polygon.collideable = switches->collideable;
        polygon.visible = switches->visible;
        polygon.offsetX = switches->offset.x;
        polygon.offsetY = switches->offset.y;
        polygon.previousOffsetX = switches->previousOffset.x;
        polygon.previousOffsetY = switches->previousOffset.y;
        ++switches;
    }
    restored.objects.apply();
    restored.movers.apply();
    restored.effects.apply();
    restored.triggers.apply(); // they aim at all others
    restored.checkPoints.apply();
}

} // namespace tarnwick
