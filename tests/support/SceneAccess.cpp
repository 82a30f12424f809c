#include "support/SceneAccess.h"

#include "game/Camera.h"
#include "level/Level.h"
#include "level/LevelBspTree.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "particles/ParticleMover.h"

namespace tarnwick {

void SceneAccess::configure(const SceneSettings& settings) {
    ParticleManager::State& manager = ParticleManager::state;
    manager.gravity = settings.gravity;
    manager.roomTemperature = settings.roomTemperature;
    manager.heatTransferRate = settings.heatTransferRate;
    manager.steamRiseRate = settings.steamRiseRate;
    manager.steamScatterRate = settings.steamScatterRate;
    manager.particleKillTime = settings.particleKillTime;
    ParticleGroupMover::State& groups = ParticleGroupMover::state;
    groups.particleGroupInterpolation = settings.particleGroupInterpolation;
    groups.groupExpandSpeed = settings.groupExpandSpeed;
    groups.iceGravityStrenght = settings.iceGravityStrenght;
}

void SceneAccess::placeCamera(Vector2 position, Vector2 shakeOffset, float angle, float zoom) {
    Camera::setPosition(position);
    Camera::state.shakeOffsetX = shakeOffset.x;
    Camera::state.shakeOffsetY = shakeOffset.y;
    Camera::state.cameraAngle = angle;
    Camera::state.cameraZoom = zoom;
}

void SceneAccess::addPolygon(std::initializer_list<Vector2> outline, float friction) {
    Polygon2D& polygon = Level::polygons.emplace_back();
    for (const Vector2 point : outline) {
        polygon.addPoint(point.x, point.y);
    }
    polygon.setFrictionLevel(friction);
}

void SceneAccess::buildTree() {
    LevelBspTree::create();
}

void SceneAccess::buildBasin(float left, float right, float floor, float height) {
    constexpr float thickness = 40.0f;
    constexpr float friction = 0.5f;
    const float top = floor - height;
    const float bottom = floor + thickness;
    addPolygon({{left, floor}, {right, floor}, {right, bottom}, {left, bottom}}, friction);
    addPolygon({{left - thickness, top}, {left, top}, {left, bottom}, {left - thickness, bottom}}, friction);
    addPolygon({{right, top}, {right + thickness, top}, {right + thickness, bottom}, {right, bottom}},
               friction);
    buildTree();
}

void SceneAccess::buildBowl(float width, float bottom, float slope) {
    constexpr float thickness = 60.0f;
    constexpr float friction = 0.5f;
    const float rim = bottom - width * slope;
    const float base = bottom + thickness;
    addPolygon({{-width, rim}, {0.0f, bottom}, {width, rim}, {width, base}, {-width, base}}, friction);
    buildTree();
}

SceneSettings SceneAccess::iceSettings() {
    const ParticleGroupMover::State& groups = ParticleGroupMover::state;
    SceneSettings settings;
    settings.particleGroupInterpolation = groups.particleGroupInterpolation;
    settings.groupExpandSpeed = groups.groupExpandSpeed;
    settings.iceGravityStrenght = groups.iceGravityStrenght;
    return settings;
}

float SceneAccess::simulationDecay() {
    return ParticleMover::state.simulationDecay;
}

} // namespace tarnwick
