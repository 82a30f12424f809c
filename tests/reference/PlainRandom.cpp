#include "reference/PlainRandom.h"

#include <cstring>

namespace tarnwick {

std::uint32_t plainRandomStep(std::uint32_t s) {
    const auto a = static_cast<long double>(32452843.11); // the double, not the decimal
    const auto b = static_cast<long double>(275604541.11);
    const auto c = static_cast<long double>(0.31830987f);

    const long double t = static_cast<long double>(s) * a + b;
    const auto whole = static_cast<std::int64_t>(t);
    const auto s1 = static_cast<std::uint32_t>(whole & 0xFFFFFFFF);

    const long double f = static_cast<long double>(s1) * a + b + static_cast<long double>(s1) * c;
    const auto rounded = static_cast<float>(f);

    std::uint32_t pattern = 0;
    std::memcpy(&pattern, &rounded, sizeof pattern);
    return pattern;
}

} // namespace tarnwick
