#pragma once

namespace tarnwick {

/// A colour as the GL takes it: four shares, each 0 to 1.
struct Colour {
    float red = 0.0f;
    float green = 0.0f;
    float blue = 0.0f;
    float alpha = 0.0f;

    /// The same colour with its alpha multiplied by `share`.
    constexpr Colour faded(float share) const { return {red, green, blue, alpha * share}; }
};

constexpr Colour opaqueWhite{1.0f, 1.0f, 1.0f, 1.0f};
constexpr Colour opaqueBlack{0.0f, 0.0f, 0.0f, 1.0f};

} // namespace tarnwick
