#pragma once

#include <cstdint>

namespace tarnwick {

/// The state of the random generator that follows `s`, every step written as it is defined and taken in
/// `long double`.
std::uint32_t plainRandomStep(std::uint32_t s);

} // namespace tarnwick
