#pragma once

#include "core/Vector2.h"
#include "particles/Particle.h"
#include "particles/ParticleList.h"

namespace tarnwick {

/// An ice group: one moving disc with its frozen particles. It has no rotation and no friction.
struct ParticleGroup {
    ParticleList members;      ///< Owned.
    float radius = 2.0f;       ///< World units; runs toward `targetRadius`.
    float targetRadius = 2.0f; ///< Of a disc with the area of its members: 2 sqrt(count).
    Vector2 centre;            ///< World units.
    Vector2 velocity;          ///< World units per second.
    Vector2 previousVelocity;  ///< `velocity` at the start of the tick.
    Vector2 pushVelocity;      ///< Extra velocity for one tick, from moving polygons.
    bool colliding = false;    ///< Anything was hit in this tick's move.
    float temperature = 0.0f;  ///< Degrees.
    bool dying = false;        ///< Killed, and fading out.
    float killTimer = 0.0f;    ///< Seconds of fade left.
};

} // namespace tarnwick
