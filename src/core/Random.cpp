#include "core/Random.h"

#include <type_traits>

namespace tarnwick {

namespace {

/// 80 bits, of which 64 are the mantissa, where the platform has it.
using Extended = std::conditional_t<LDBL_MANT_DIG == 64, long double, double>;

} // namespace

Random::State Random::state;

std::uint32_t Random::nextStateExtended(std::uint32_t s) {
    const auto a = static_cast<Extended>(factorA);
    const auto b = static_cast<Extended>(offsetB);
    const auto c = static_cast<Extended>(factorC);
    const auto t = static_cast<std::int64_t>(static_cast<Extended>(s) * a + b);
    const auto s1 = static_cast<Extended>(static_cast<std::uint32_t>(t));
    const Extended f = s1 * a + b + s1 * c;
    return std::bit_cast<std::uint32_t>(static_cast<float>(f));
}

} // namespace tarnwick
