#pragma once

#include "core/Vector2.h"

#include <cstdint>

namespace tarnwick {

constexpr float particleRadius = 2.0f;     ///< World units, the same for every particle.
constexpr float iceTemperature = 0.0f;     ///< At or below this a particle is ice.
constexpr float steamTemperature = 100.0f; ///< At or above this a particle is steam.

/// One circle of water, held by value in a list node. It belongs to exactly one list: the free list of
/// `ParticleManager`, the members of one ice group, or for the length of a step a list of the freeze. It
/// changes list by copy, so a pointer to one is good for one step only. Nothing stores the state of matter:
/// the temperature decides.
struct Particle {
    Vector2 position;         ///< Centre, world units.
    Vector2 trail[3];         ///< Positions at the start of the last three ticks, newest first; for drawing.
    Vector2 velocity;         ///< World units per second.
    Vector2 previousVelocity; ///< `velocity` at the start of the particle's last step.
    Vector2 pushVelocity;     ///< Added to `velocity` for one step, from moving polygons; cleared at its end.
    float temperature = 0.0f; ///< Degrees.
    float speed = 0.0f;       ///< Length of `velocity` + `pushVelocity` at the end of the last step.
    Particle* gridNext = nullptr; ///< Next in the same grid cell; not owned.
    Particle* gridPrev = nullptr; ///< Previous in the same grid cell, null at the head; not owned.
    std::uint32_t gridCellX = 0;  ///< Grid column; keeps its last value outside the grid.
    std::uint32_t gridCellY = 0;  ///< Grid row.
    bool inGrid = false;          ///< Linked into the grid.
    bool dying = false;           ///< Killed, and fading out.
    float killTimer = 0.0f;       ///< Seconds of fade left; meaningful only while `dying`.
    Vector2 groupDirection;       ///< Unit vector from the centre of its ice group to its place.
    float groupFraction = 0.0f;   ///< Its place: 0 to 1 of the group's radius along `groupDirection`.
};

} // namespace tarnwick
