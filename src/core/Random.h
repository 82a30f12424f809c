#pragma once

#include <bit>
#include <cfloat>
#include <cstdint>

namespace tarnwick {

/// The one generator of random numbers. Nothing in the game seeds it: it starts from 0, so the sequence
/// depends only on the order of the draws, and two runs with the same input are the same run.
///
/// One step makes the next state of the present state s:
///   1. t = s * A + B in extended precision, cut toward zero; s1 is the low 32 bits of t.
///   2. f = s1 * A + B + s1 * C in extended precision, rounded to a 32-bit float.
///   3. The new state is the bit pattern of f, not its value.
/// A and B are doubles, C is a float. Where `long double` has no 64-bit mantissa the steps are taken in
/// double, and the sequence is another one.
class Random {
public:
    Random() = delete;

    static constexpr double factorA = 32452843.11;
    static constexpr double offsetB = 275604541.11;
    static constexpr float factorC = 0.31830987f; ///< 1 / pi.

    static std::uint32_t getState() { return state.randomState; }
    static void setState(std::uint32_t value) { state.randomState = value; }

    /// Takes one step and gives the new state.
    static std::uint32_t step() { return state.randomState = nextState(state.randomState); }

    /// The state that follows `s`. Every draw waits for the one before it, so what counts is the latency, and
    /// this takes the steps in whole numbers, exactly or with a known small error. Where the roundings of
    /// extended precision could decide, about one draw in a hundred, it leaves the draw to
    /// `nextStateExtended`. The result is always the same.
    static std::uint32_t nextState(std::uint32_t s);

    /// The same with the steps taken as they are written.
    static std::uint32_t nextStateExtended(std::uint32_t s);

private:
    friend class ModuleReset;

    struct State {
        std::uint32_t randomState = 0;
    };
    static State state;

    /// The product of two 64-bit numbers: a type outside the standard, of GCC and clang on 64-bit machines.
    __extension__ using Product = unsigned __int128;
};

/// One step; the new state, all 32 bits.
inline std::uint32_t randomInt() {
    return Random::step();
}

/// One step; 0.0 to 1.0, both ends included, from the low 24 bits of the new state.
inline float randomFloat() {
    // Both numbers are exact in float, and the quotient rounds as it would in double and then to float.
    return static_cast<float>(Random::step() & 0xFFFFFFu) / 16777215.0f;
}

/// One `randomFloat`, times (`a` - `b`), minus `a`.
/// Kept: the results lie between -`a` and -`b`; that sign is as it must be.
inline float randomRange(float a, float b) {
    return randomFloat() * (a - b) - a;
}

inline void seedRandom(std::uint32_t seed) {
    Random::setState(seed);
}
inline std::uint32_t getRandomState() {
    return Random::getState();
}

inline std::uint32_t Random::nextState(std::uint32_t s) {
#if LDBL_MANT_DIG == 64
    // Step 1 exactly, in units of 2^-28 modulo 2^64: A and B are whole numbers of them, and of t only bits 28
    // to 59 are wanted. t is below 2^57, where extended numbers are 2^-7 apart: two roundings move the sum by
    // 2^-7 at most.
    constexpr auto a28 = static_cast<std::uint64_t>(factorA * 0x1p28);
    constexpr auto b28 = static_cast<std::uint64_t>(offsetB * 0x1p28);
    constexpr std::uint64_t fractionMask = (1u << 28) - 1;
    constexpr std::uint64_t mostRounded = 1u << 21; // 2^-7
    static_assert(static_cast<double>(a28) == factorA * 0x1p28 &&
                  static_cast<double>(b28) == offsetB * 0x1p28);
    const std::uint64_t t28 = s * a28 + b28;
    const std::uint64_t s1 = (t28 >> 28) & 0xFFFFFFFFu;
    if (((t28 + mostRounded) & fractionMask) <= 2 * mostRounded) [[unlikely]] {
        return nextStateExtended(s);
    }

    // Step 2 in units of 2^-7 with 64 bits: below, s1 stands 2^32 and A + C 2^39 too high, and the product is
    // cut by 2^64. Cutting it and B takes less than 2 units off, the three roundings of extended precision
    // add or take at most 1.5 (numbers below 2^57 are 1 unit apart).
    constexpr auto sumAC39 =
        static_cast<std::uint64_t>(factorA * 0x1p28 + static_cast<double>(factorC) * 0x1p28) << 11;
    constexpr auto b7 = static_cast<std::uint64_t>(offsetB * 0x1p7);
    constexpr std::uint64_t mostWrong = 4;
    const auto product = static_cast<Product>(s1 << 32) * sumAC39;
    const std::uint64_t f7 = static_cast<std::uint64_t>(product >> 64) + b7;

    // Step 3: f7 as a float. The top bit goes to bit 63; 24 bits are the mantissa, the next one rounds.
    const int leadingZeros = std::countl_zero(f7);
    const std::uint64_t mantissa = f7 << leadingZeros;
    constexpr std::uint64_t half = 1ull << 39;
    const std::uint64_t slack = mostWrong << leadingZeros;
    if (((mantissa - half + slack) & (2 * half - 1)) <= 2 * slack) [[unlikely]] {
        return nextStateExtended(s); // too near the middle of two floats
    }
    constexpr std::uint32_t exponentOfOne = 127;
    const std::uint32_t exponent =
        exponentOfOne + 56 - static_cast<std::uint32_t>(leadingZeros); // 2^63 is 2^56 units
    const auto rounded = static_cast<std::uint32_t>((mantissa >> 40) + ((mantissa >> 39) & 1));
    return ((exponent - 1) << 23) +
           rounded; // the mantissa's top bit adds 1 to the exponent, a carry one more
#else
    return nextStateExtended(s);
#endif
}

} // namespace tarnwick
