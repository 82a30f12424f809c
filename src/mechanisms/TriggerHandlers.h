#pragma once

#include "core/Vector2.h"

#include <cstdint>

namespace tarnwick {

struct Trigger;

/// What sets a trigger off.
enum class BodyKind : std::int32_t {
    particle = 0, ///< A `Particle`.
    group = 1,    ///< A `ParticleGroup`.
};

/// What triggers do. Each handler takes the trigger, the body that set it off, the kind of that body, and the
/// length of the tick in seconds.
///
/// The body is a particle or an ice group, and null when the call was delayed: the body may be gone by then.
/// Those that act on a body do nothing to a null one, unless it says otherwise below, and to no other kind;
/// those that act on entities walk the trigger's targets in their order and act on the kinds that they know.
/// They report nothing.
///
/// They run inside the walk over the bodies, so none of them moves or removes a body: kills only mark.
using TriggerHandler = void (*)(Trigger* trigger, void* body, BodyKind bodyKind, float dt);

/// What triggers do beyond the world, to sounds, the camera and the rules of the game. What is null does
/// nothing, as in a program that has none of them.
struct TriggerReach {
    void (*playSounds)(std::int32_t soundId) = nullptr;
    void (*stopSounds)(std::int32_t soundId) = nullptr;
    void (*zoomCamera)() = nullptr;
    void (*shakeCamera)() = nullptr;
    void (*countAtLevelEnd)(std::int32_t particles) = nullptr;
    void (*passCheckPoint)(Trigger* trigger, Vector2 place) = nullptr; ///< World units.
};
/// Called once, before the first trigger fires.
void setTriggerReach(const TriggerReach& reach);

void trigFuncNull(Trigger* trigger, void* body, BodyKind bodyKind, float dt);

/// Heat and cold, by the settings of `Triggers_HeatSources`: they act on every body inside in every tick, so
/// a particle moves steadily to the bound and no further. The bound holds for the result, whichever side it
/// came from.
///
/// Cools a particle or a group.
void trigFuncToIce(Trigger* trigger, void* body, BodyKind bodyKind, float dt);
/// Brings a particle to 50 degrees. Kept: a group warms without any bound, until it melts.
void trigFuncToWater(Trigger* trigger, void* body, BodyKind bodyKind, float dt);
/// Heats a particle. Kept: a group warms without any bound.
void trigFuncToSteam(Trigger* trigger, void* body, BodyKind bodyKind, float dt);

/// Plays the animation of each object from its present frame, without end.
void trigFuncAnimPlayLoop(Trigger* trigger, void* body, BodyKind bodyKind, float dt);
/// Plays the animation of each object once, from its first frame.
void trigFuncAnimPlayOnce(Trigger* trigger, void* body, BodyKind bodyKind, float dt);
void trigFuncAnimStop(Trigger* trigger, void* body, BodyKind bodyKind, float dt);

/// Play and silence the sound sources of the trigger's target id, which are no targets.
void trigFuncSoundPlay(Trigger* trigger, void* body, BodyKind bodyKind, float dt);
void trigFuncSoundStop(Trigger* trigger, void* body, BodyKind bodyKind, float dt);

/// The forces: each enabled one among the targets acts on the velocity of the body, one after the other.
///
/// Adds the force's acceleration along its direction.
void trigFuncForceDirectional(Trigger* trigger, void* body, BodyKind bodyKind, float dt);
/// Puts the force's velocity in the place of the body's; of several the last one holds.
void trigFuncForceInstantenous(Trigger* trigger, void* body, BodyKind bodyKind, float dt);
/// Accelerates toward the force's point, with the strength over the square root of (distance + 1). A body on
/// the point feels nothing. Only the trigger's region limits the reach.
void trigFuncForceMultiDirPull(Trigger* trigger, void* body, BodyKind bodyKind, float dt);
/// The same, away from the point.
void trigFuncForceMultiDirPush(Trigger* trigger, void* body, BodyKind bodyKind, float dt);

/// Takes polygons out of collision and view and switches objects and forces off; no movers, no emitters.
void trigFuncEntityRemove(Trigger* trigger, void* body, BodyKind bodyKind, float dt);
/// Brings back what `trigFuncEntityRemove` takes.
void trigFuncEntityAdd(Trigger* trigger, void* body, BodyKind bodyKind, float dt);

/// Set the state of each mover; a looping one turns at the ends.
void trigFuncMoverGotoStart(Trigger* trigger, void* body, BodyKind bodyKind, float dt);
void trigFuncMoverGotoEnd(Trigger* trigger, void* body, BodyKind bodyKind, float dt);
void trigFuncMoverStop(Trigger* trigger, void* body, BodyKind bodyKind, float dt);
void trigFuncMoverGotoStartLoop(Trigger* trigger, void* body, BodyKind bodyKind, float dt);
void trigFuncMoverGotoEndLoop(Trigger* trigger, void* body, BodyKind bodyKind, float dt);

void trigFuncEmitterCreateBurst(Trigger* trigger, void* body, BodyKind bodyKind, float dt);
void trigFuncEmitterStart(Trigger* trigger, void* body, BodyKind bodyKind, float dt);
void trigFuncEmitterStop(Trigger* trigger, void* body, BodyKind bodyKind, float dt);

void trigFuncCameraZoom(Trigger* trigger, void* body, BodyKind bodyKind, float dt);
void trigFuncCameraShake(Trigger* trigger, void* body, BodyKind bodyKind, float dt);

/// Starts the fade of the body.
void trigFuncParticleKill(Trigger* trigger, void* body, BodyKind bodyKind, float dt);
/// Kills the body with a chance of half of `dt` (in seconds), so about one half of them a second whatever the
/// tick's length. Draws `randomFloat` once for either kind of body, also for a null one.
void trigFuncParticleKillRandom(Trigger* trigger, void* body, BodyKind bodyKind, float dt);

/// Counts the body toward the end of the level: a particle, also a null one, as one, a group as its members.
/// `GameRules` decides with the count of one tick.
void trigFuncLevelEnd(Trigger* trigger, void* body, BodyKind bodyKind, float dt);
/// Makes the trigger's middle, the mean of the corners of its two triangles, the check point,
/// and shows its time. Nothing for a null trigger.
void trigFuncCheckPoint(Trigger* trigger, void* body, BodyKind bodyKind, float dt);

} // namespace tarnwick
