#pragma once

#include "particles/Particle.h"

#include <list>

namespace tarnwick {

/// A list of particles by value. A node stays where it is for as long as it is in its list.
using ParticleList = std::list<Particle>;

} // namespace tarnwick
