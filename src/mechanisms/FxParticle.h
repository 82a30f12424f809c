#pragma once

#include "core/Colour.h"
#include "core/Vector2.h"

namespace tarnwick {

class GLTexture;

/// One spark, drop or puff: a textured square that flies and fades. It collides with nothing and nothing
/// feels it.
struct FxParticle {
    bool useAlphaBlending = true;       ///< Normal blending; false: additive.
    Vector2 position;                   ///< Centre, world units.
    Vector2 velocity;                   ///< World units per second.
    Colour color;                       ///< Fixed at birth; drawn fading with the life that is left.
    float size = 0.0f;                  ///< Edge of the square, world units.
    float lifeTime = 1.0f;              ///< Seconds of life at birth.
    float timeLeft = 1.0f;              ///< Seconds.
    float gravity = 0.0f;               ///< Multiplier of the gravity step; below 0 it rises.
    const GLTexture* texture = nullptr; ///< In the emitter's list, not owned; null is drawn plain.
};

} // namespace tarnwick
