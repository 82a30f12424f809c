#pragma once

#include <cstdint>
#include <iterator>

namespace tarnwick {

/// Windows of every shape, one after another by the seed, and the world units that each shows at zoom 1: what
/// of 800 by 600 is too narrow for the window is widened.
struct RandomWindow {
    std::int32_t width = 800;
    std::int32_t height = 600;

    explicit RandomWindow(std::uint32_t seed) {
        constexpr std::int32_t sizes[][2] = {{800, 600}, {1280, 720}, {600, 800}, {640, 480},
                                             {700, 700}, {1920, 800}, {300, 1000}};
        const auto& size = sizes[seed % std::size(sizes)];
        width = size[0];
        height = size[1];
    }
    float areaX() const {
        return width > height ? 600.0f / static_cast<float>(height) * static_cast<float>(width) : 800.0f;
    }
    float areaY() const {
        return width > height ? 600.0f : static_cast<float>(height) * (800.0f / static_cast<float>(width));
    }
};

} // namespace tarnwick
