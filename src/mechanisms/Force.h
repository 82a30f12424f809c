#pragma once

#include "core/Vector2.h"

#include <cstdint>

namespace tarnwick {

/// A marked point of the level with a direction and a strength: data that the region of a trigger applies to
/// the water inside it. Without a trigger that names its `id` it has no effect at all.
struct Force {
    bool enabled = true;   ///< Only an enabled force acts.
    std::int32_t id = 0;   ///< What triggers target; need not be the only one.
    Vector2 position;      ///< World units: the point from which the radial types measure.
    Vector2 direction;     ///< Unit vector, for the directional types.
    float strength = 0.0f; ///< World units per second for the instantaneous type, per second squared else.
};

} // namespace tarnwick
