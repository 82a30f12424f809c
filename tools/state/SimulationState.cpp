#include "tools/state/SimulationState.h"

#include "core/Clock.h"
#include "core/Random.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "level/Level.h"
#include "level/LevelBspNode.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "tools/state/CheckPointRows.h"
#include "tools/state/EffectRows.h"
#include "tools/state/GameRows.h"
#include "tools/state/JsonLine.h"
#include "tools/state/MenuRows.h"
#include "tools/state/MoverRows.h"
#include "tools/state/ObjectRows.h"
#include "tools/state/TriggerRows.h"

#include <algorithm>

namespace tarnwick {

namespace {

constexpr int reservedValues = 3; ///< At the end of a particle's row, always 0.

/// A particle's row of 27 values.
void writeParticle(JsonLine& out, const Particle& particle) {
    out.openArray();
    for (const Vector2 pair : {particle.position, particle.trail[0], particle.trail[1], particle.trail[2],
                               particle.velocity, particle.previousVelocity, particle.pushVelocity}) {
        out.number(pair.x).number(pair.y);
    }
    out.number(particle.temperature).number(particle.speed);
    out.number(particle.gridCellX).number(particle.gridCellY);
    out.number(particle.inGrid ? 1 : 0).number(particle.dying ? 1 : 0).number(particle.killTimer);
    out.number(particle.groupDirection.x).number(particle.groupDirection.y).number(particle.groupFraction);
    for (int i = 0; i < reservedValues; ++i) {
        out.number(0);
    }
    out.closeArray();
}

void writeGroup(JsonLine& out, const ParticleGroup& group) {
    out.openObject();
    out.key("radius").number(group.radius).key("targetRadius").number(group.targetRadius);
    out.key("centre").vector(group.centre).key("velocity").vector(group.velocity);
    out.key("previousVelocity").vector(group.previousVelocity).key("pushVelocity").vector(group.pushVelocity);
    out.key("colliding").flag(group.colliding).key("temperature").number(group.temperature);
    out.key("dying").flag(group.dying).key("killTimer").number(group.killTimer);
    out.key("members").openArray();
    for (const Particle& member : group.members) {
        writeParticle(out, member);
    }
    out.closeArray().closeObject();
}

/// A polygon without nodes in the tree counts as on.
bool edgesOn(const Polygon2D& polygon) {
    const std::vector<LevelBspNode*>* const nodes = Level::nodesOf(polygon);
    return nodes == nullptr ||
           std::all_of(nodes->begin(), nodes->end(), [](const LevelBspNode* node) { return node->hasEdge; });
}

} // namespace

std::string SimulationState::write(const RunPosition& position) {
    JsonLine out;
    out.openObject();
    out.key("tick").number(position.tick).key("dt").number(position.dt);
    out.key("random").number(getRandomState());
    out.key("time").number(position.time).key("clock").number(Clock::milliseconds());
    MenuRows::write(out);
    out.key("paused").flag(Game::paused()).key("consoleOpen").flag(Game::state.consoleOpen);
    writeCamera(out);
    writeFreeCamera(out);
    GameRows::write(out);
    writeWater(out);
    writeParticles(out);
    writeGroups(out);
    writePolygons(out);
    ObjectRows::write(out);
    MoverRows::write(out);
    EffectRows::write(out);
    TriggerRows::write(out);
    CheckPointRows::write(out);
    out.closeObject();
    return out.text();
}

void SimulationState::writeCamera(JsonLine& out) {
    const Camera::State& camera = Camera::state;
    out.key("camera").openObject();
    out.key("state").number(static_cast<std::int32_t>(camera.cameraState));
    out.key("x").number(camera.cameraX).key("y").number(camera.cameraY);
    out.key("angle").number(camera.cameraAngle).key("turnSpeed").number(camera.cameraTurnSpeed);
    out.key("zoom").number(camera.cameraZoom);
    out.key("shakeOffsetX").number(camera.shakeOffsetX).key("shakeOffsetY").number(camera.shakeOffsetY);
    out.key("shakeTargetX").number(camera.shakeTargetX).key("shakeTargetY").number(camera.shakeTargetY);
    out.key("shaking").flag(camera.shaking).key("shakeTimeLeft").number(camera.shakeTimeLeft);
    out.key("zoomTimeLeft").number(camera.zoomTimeLeft);
    out.closeObject();
}

void SimulationState::writeFreeCamera(JsonLine& out) {
    const FreeCamera& camera = Game::state.freeCamera;
    out.key("freeCamera").openObject().key("enabled").flag(camera.enabled);
    out.key("x").number(camera.position.x).key("y").number(camera.position.y);
    out.key("zoom").number(camera.zoom);
    out.closeObject();
}

/// What console commands can have changed since the level was loaded.
void SimulationState::writeWater(JsonLine& out) {
    const ParticleManager::State& water = ParticleManager::state;
    out.key("water").openObject();
    out.key("gravity").number(water.gravity).key("roomTemperature").number(water.roomTemperature);
    out.key("heatTransferRate").number(water.heatTransferRate);
    out.key("steamRiseRate").number(water.steamRiseRate);
    out.key("steamScatterRate").number(water.steamScatterRate);
    out.closeObject();
}

void SimulationState::writeParticles(JsonLine& out) {
    out.key("particles").openArray();
    for (const Particle& particle : ParticleManager::particles) {
        writeParticle(out, particle);
    }
    out.closeArray();
}

void SimulationState::writeGroups(JsonLine& out) {
    out.key("groups").openArray();
    for (const ParticleGroup& group : ParticleGroupMover::groups) {
        writeGroup(out, group);
    }
    out.closeArray();
}

void SimulationState::writePolygons(JsonLine& out) {
    out.key("polygons").openArray();
    for (const Polygon2D& polygon : Level::polygons) {
        out.openObject();
        out.key("id").number(polygon.id).key("visible").flag(polygon.visible);
        out.key("collideable").flag(polygon.collideable).key("edgesOn").flag(edgesOn(polygon));
        out.key("offset").vector(polygon.offsetX, polygon.offsetY);
        out.key("previousOffset").vector(polygon.previousOffsetX, polygon.previousOffsetY);
        out.closeObject();
    }
    out.closeArray();
}

} // namespace tarnwick
