#pragma once

#include <cmath>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tarnwick {

/// Four floats that are worked on at once. Each lane rounds exactly as a single float would: no reciprocal,
/// no fused multiplication, so code in fours gives the bits of code in ones.
///
/// The first form is for x86-64, where SSE2 is always there; the other for everything else.
#if defined(__SSE2__)

struct Float4 {
    __m128 lanes;

    static Float4 all(float value) { return {_mm_set1_ps(value)}; }
    static Float4 of(float a, float b, float c, float d) { return {_mm_setr_ps(a, b, c, d)}; }
    /// From four floats in a row; needs no alignment.
    static Float4 load(const float* from) { return {_mm_loadu_ps(from)}; }
    void store(float* to) const { _mm_storeu_ps(to, lanes); }

    friend Float4 operator+(Float4 a, Float4 b) { return {_mm_add_ps(a.lanes, b.lanes)}; }
    friend Float4 operator-(Float4 a, Float4 b) { return {_mm_sub_ps(a.lanes, b.lanes)}; }
    friend Float4 operator*(Float4 a, Float4 b) { return {_mm_mul_ps(a.lanes, b.lanes)}; }
    friend Float4 operator/(Float4 a, Float4 b) { return {_mm_div_ps(a.lanes, b.lanes)}; }
    friend Float4 squareRoot(Float4 a) { return {_mm_sqrt_ps(a.lanes)}; }
    /// Bit i is set where lane i of `a` is greater than that of `b`; never for NaN.
    friend std::uint32_t greater(Float4 a, Float4 b) {
        return static_cast<std::uint32_t>(_mm_movemask_ps(_mm_cmpgt_ps(a.lanes, b.lanes)));
    }
    /// Bit i is set where lane i of `a` is not greater than or equal to that of `b`; always for NaN.
    friend std::uint32_t notGreaterOrEqual(Float4 a, Float4 b) {
        return static_cast<std::uint32_t>(_mm_movemask_ps(_mm_cmpnge_ps(a.lanes, b.lanes)));
    }
    /// `value` where `a` is greater than `b`, and 0 elsewhere.
    friend Float4 whereGreater(Float4 a, Float4 b, Float4 value) {
        return {_mm_and_ps(_mm_cmpgt_ps(a.lanes, b.lanes), value.lanes)};
    }
};

/// Writes the four numbers at `from`, each plus `shift`, to `to`.
inline void storeShifted(std::uint32_t* to, const std::uint32_t* from, std::uint32_t shift) {
    const __m128i numbers = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    const __m128i shifts = _mm_set1_epi32(static_cast<int>(shift));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_add_epi32(numbers, shifts));
}

#else

struct Float4 {
    float lanes[4];

    static Float4 all(float value) { return {{value, value, value, value}}; }
    static Float4 of(float a, float b, float c, float d) { return {{a, b, c, d}}; }
    static Float4 load(const float* from) { return {{from[0], from[1], from[2], from[3]}}; }
    void store(float* to) const {
        for (int i = 0; i < 4; ++i) {
            to[i] = lanes[i];
        }
    }

    template <typename Operation>
    static Float4 each(Operation operation) {
        return {{operation(0), operation(1), operation(2), operation(3)}};
    }
    friend Float4 operator+(Float4 a, Float4 b) {
        return each([&](int i) { return a.lanes[i] + b.lanes[i]; });
    }
    friend Float4 operator-(Float4 a, Float4 b) {
        return each([&](int i) { return a.lanes[i] - b.lanes[i]; });
    }
    friend Float4 operator*(Float4 a, Float4 b) {
        return each([&](int i) { return a.lanes[i] * b.lanes[i]; });
    }
    friend Float4 operator/(Float4 a, Float4 b) {
        return each([&](int i) { return a.lanes[i] / b.lanes[i]; });
    }
    friend Float4 squareRoot(Float4 a) {
        return each([&](int i) { return std::sqrt(a.lanes[i]); });
    }
    friend std::uint32_t greater(Float4 a, Float4 b) {
        std::uint32_t bits = 0;
        for (std::uint32_t i = 0; i < 4; ++i) {
            bits |= (a.lanes[i] > b.lanes[i] ? 1u : 0u) << i;
        }
        return bits;
    }
    friend std::uint32_t notGreaterOrEqual(Float4 a, Float4 b) {
        std::uint32_t bits = 0;
        for (std::uint32_t i = 0; i < 4; ++i) {
            bits |= (a.lanes[i] >= b.lanes[i] ? 0u : 1u) << i;
        }
        return bits;
    }
    friend Float4 whereGreater(Float4 a, Float4 b, Float4 value) {
        return each([&](int i) { return a.lanes[i] > b.lanes[i] ? value.lanes[i] : 0.0f; });
    }
};

inline void storeShifted(std::uint32_t* to, const std::uint32_t* from, std::uint32_t shift) {
    for (int i = 0; i < 4; ++i) {
        to[i] = from[i] + shift;
    }
}

#endif

} // namespace tarnwick
