#include "mechanisms/TriggerHandlers.h"

#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/Random.h"
#include "level/Level.h"
#include "level/LevelObject.h"
#include "mechanisms/Force.h"
#include "mechanisms/FxParticleEmitter.h"
#include "mechanisms/Mover.h"
#include "mechanisms/Trigger.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"

#include <cmath>

namespace tarnwick {

namespace {

constexpr float onThePoint = 0.0001f;       ///< World units from a force below which there is no direction.
constexpr float killChancePerSecond = 0.5f; ///< Of `trigFuncParticleKillRandom`.

constinit TriggerReach beyond; ///< As `setTriggerReach` had it.

/// Calls what lies beyond the world, if it is there.
template <typename Function, typename... Arguments>
void call(Function function, Arguments... arguments) {
    TARNWICK_LOCATION("TriggerHandlers::call");
    if (function != nullptr) {
        function(arguments...);
    }
}

/// Calls `action` with each target of `kind`, which is an `Entity`, in order.
template <typename Entity, typename Action>
void forEachTarget(const Trigger& trigger, TriggerTarget::Kind kind, const Action& action) {
    TARNWICK_LOCATION("TriggerHandlers::forEachTarget");
    for (const TriggerTarget& target : trigger.targets) {
        if (target.kind == kind) {
            action(*static_cast<Entity*>(target.entity));
        }
    }
}

template <typename Action>
void forEachObject(const Trigger& trigger, const Action& action) {
    TARNWICK_LOCATION("TriggerHandlers::forEachObject");
    forEachTarget<LevelObject>(trigger, TriggerTarget::Kind::object, action);
}

template <typename Action>
void forEachEmitter(const Trigger& trigger, const Action& action) {
    TARNWICK_LOCATION("TriggerHandlers::forEachEmitter");
    forEachTarget<FxParticleEmitter>(trigger, TriggerTarget::Kind::emitter, action);
}

template <typename Action>
void forEachEnabledForce(const Trigger& trigger, const Action& action) {
    TARNWICK_LOCATION("TriggerHandlers::forEachEnabledForce");
    for (const TriggerTarget& target : trigger.targets) {
        if (target.kind != TriggerTarget::Kind::force) {
            continue;
        }
        if (const Force& force = *static_cast<const Force*>(target.entity); force.enabled) {
            action(force);
        }
    }
}

/// What forces see of a body.
struct Motion {
    Vector2* velocity = nullptr; ///< Null for no body.
    Vector2 place;               ///< World units.
};

Motion motionOf(void* body, BodyKind bodyKind) {
    TARNWICK_LOCATION("TriggerHandlers::motionOf");
    if (body != nullptr && bodyKind == BodyKind::particle) {
        auto& particle = *static_cast<Particle*>(body);
        return {&particle.velocity, particle.position};
    }
    if (body != nullptr && bodyKind == BodyKind::group) {
        auto& group = *static_cast<ParticleGroup*>(body);
        return {&group.velocity, group.centre};
    }
    return {};
}

/// Velocity, in world units per second, that a force gives to a body at `place` away from its point.
Vector2 radialPush(const Force& force, Vector2 place, float dt) {
    TARNWICK_LOCATION("TriggerHandlers::radialPush");
    Vector2 away = place - force.position;
    const float distance = vectorLength(away);
    if (distance > onThePoint) {
        away = away / distance;
    }
    const float amount = dt * force.strength * std::sqrt(1.0f / (distance + 1.0f));
    return away * amount;
}

void setEntities(const Trigger& trigger, bool present) {
    TARNWICK_LOCATION("TriggerHandlers::setEntities");
    forEachTarget<Polygon2D>(trigger, TriggerTarget::Kind::polygon, [&](Polygon2D& polygon) {
        Level::setPolygonCollideable(polygon, present);
        polygon.visible = present;
    });
    forEachObject(trigger, [&](LevelObject& object) { object.enabled = present; });
    forEachTarget<Force>(trigger, TriggerTarget::Kind::force, [&](Force& force) { force.enabled = present; });
}

void setMovers(const Trigger& trigger, MoverState state) {
    TARNWICK_LOCATION("TriggerHandlers::setMovers");
    forEachTarget<Mover>(trigger, TriggerTarget::Kind::mover, [&](Mover& mover) { mover.state = state; });
}

} // namespace

void setTriggerReach(const TriggerReach& given) {
    TARNWICK_LOCATION("setTriggerReach");
    beyond = given;
}

void trigFuncNull(Trigger* /*trigger*/, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncNull");
}

void trigFuncAnimPlayLoop(Trigger* trigger, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncAnimPlayLoop");
    forEachObject(*trigger, [](LevelObject& object) {
        object.loopCount = 0;
        object.paused = false;
    });
}

void trigFuncAnimPlayOnce(Trigger* trigger, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncAnimPlayOnce");
    forEachObject(*trigger, [](LevelObject& object) {
        object.resetAnimation();
        object.loopCount = 1;
        object.paused = false;
    });
}

void trigFuncAnimStop(Trigger* trigger, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncAnimStop");
    forEachObject(*trigger, [](LevelObject& object) { object.paused = true; });
}

void trigFuncSoundPlay(Trigger* trigger, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncSoundPlay");
    call(beyond.playSounds, trigger->targetId);
}

void trigFuncSoundStop(Trigger* trigger, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncSoundStop");
    call(beyond.stopSounds, trigger->targetId);
}

void trigFuncForceDirectional(Trigger* trigger, void* body, BodyKind bodyKind, float dt) {
    TARNWICK_LOCATION("trigFuncForceDirectional");
    const Motion motion = motionOf(body, bodyKind);
    if (motion.velocity == nullptr) {
        return;
    }
    forEachEnabledForce(
        *trigger, [&](const Force& force) { *motion.velocity += force.direction * force.strength * dt; });
}

void trigFuncForceInstantenous(Trigger* trigger, void* body, BodyKind bodyKind, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncForceInstantenous");
    const Motion motion = motionOf(body, bodyKind);
    if (motion.velocity == nullptr) {
        return;
    }
    forEachEnabledForce(*trigger,
                        [&](const Force& force) { *motion.velocity = force.direction * force.strength; });
}

void trigFuncForceMultiDirPull(Trigger* trigger, void* body, BodyKind bodyKind, float dt) {
    TARNWICK_LOCATION("trigFuncForceMultiDirPull");
    const Motion motion = motionOf(body, bodyKind);
    if (motion.velocity == nullptr) {
        return;
    }
    forEachEnabledForce(*trigger,
                        [&](const Force& force) { *motion.velocity -= radialPush(force, motion.place, dt); });
}

void trigFuncForceMultiDirPush(Trigger* trigger, void* body, BodyKind bodyKind, float dt) {
    TARNWICK_LOCATION("trigFuncForceMultiDirPush");
    const Motion motion = motionOf(body, bodyKind);
    if (motion.velocity == nullptr) {
        return;
    }
    forEachEnabledForce(*trigger,
                        [&](const Force& force) { *motion.velocity += radialPush(force, motion.place, dt); });
}

void trigFuncEntityRemove(Trigger* trigger, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncEntityRemove");
    setEntities(*trigger, false);
}

void trigFuncEntityAdd(Trigger* trigger, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncEntityAdd");
    setEntities(*trigger, true);
}

void trigFuncMoverGotoStart(Trigger* trigger, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncMoverGotoStart");
    setMovers(*trigger, MoverToStart);
}

void trigFuncMoverGotoEnd(Trigger* trigger, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncMoverGotoEnd");
    setMovers(*trigger, MoverToEnd);
}

void trigFuncMoverStop(Trigger* trigger, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncMoverStop");
    setMovers(*trigger, MoverIdle);
}

void trigFuncMoverGotoStartLoop(Trigger* trigger, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncMoverGotoStartLoop");
    setMovers(*trigger, MoverLoopToStart);
}

void trigFuncMoverGotoEndLoop(Trigger* trigger, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncMoverGotoEndLoop");
    setMovers(*trigger, MoverLoopToEnd);
}

void trigFuncEmitterCreateBurst(Trigger* trigger, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncEmitterCreateBurst");
    forEachEmitter(*trigger, [](FxParticleEmitter& emitter) { emitter.createBurst(); });
}

void trigFuncEmitterStart(Trigger* trigger, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncEmitterStart");
    forEachEmitter(*trigger, [](FxParticleEmitter& emitter) { emitter.active = true; });
}

void trigFuncEmitterStop(Trigger* trigger, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncEmitterStop");
    forEachEmitter(*trigger, [](FxParticleEmitter& emitter) { emitter.active = false; });
}

void trigFuncCameraZoom(Trigger* /*trigger*/, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncCameraZoom");
    call(beyond.zoomCamera);
}

void trigFuncCameraShake(Trigger* /*trigger*/, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncCameraShake");
    call(beyond.shakeCamera);
}

void trigFuncParticleKill(Trigger* /*trigger*/, void* body, BodyKind bodyKind, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncParticleKill");
    if (body == nullptr) {
        return;
    }
    if (bodyKind == BodyKind::particle) {
        ParticleManager::killParticle(*static_cast<Particle*>(body));
    } else if (bodyKind == BodyKind::group) {
        ParticleGroupMover::killGroup(*static_cast<ParticleGroup*>(body));
    }
}

void trigFuncParticleKillRandom(Trigger* trigger, void* body, BodyKind bodyKind, float dt) {
    TARNWICK_LOCATION("trigFuncParticleKillRandom");
    if (bodyKind != BodyKind::particle && bodyKind != BodyKind::group) {
        return;
    }
    if (randomFloat() <= dt * killChancePerSecond) {
        trigFuncParticleKill(trigger, body, bodyKind, dt);
    }
}

void trigFuncLevelEnd(Trigger* /*trigger*/, void* body, BodyKind bodyKind, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncLevelEnd");
    if (bodyKind == BodyKind::particle) {
        call(beyond.countAtLevelEnd, 1);
    } else if (bodyKind == BodyKind::group && body != nullptr) {
        const auto members = static_cast<const ParticleGroup*>(body)->members.size();
        call(beyond.countAtLevelEnd, static_cast<std::int32_t>(members));
    }
}

void trigFuncCheckPoint(Trigger* trigger, void* /*body*/, BodyKind /*bodyKind*/, float /*dt*/) {
    TARNWICK_LOCATION("trigFuncCheckPoint");
    if (trigger == nullptr) {
        return;
    }
    Vector2 place;
    for (const Vector2 corner : trigger->triangleA) {
        place += corner;
    }
    for (const Vector2 corner : trigger->triangleB) {
        place += corner;
    }
    place = place / 6.0f; // the corners of the diagonal count twice
    call(beyond.passCheckPoint, trigger, place);
}

} // namespace tarnwick
