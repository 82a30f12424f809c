#include "core/BoxRow.h"

#include <utility>

namespace tarnwick {

namespace {

/// How far `value` lies above `low`, in 65535ths of `extent`; 0 if that is no number.
std::uint32_t gridPosition(float value, float low, float extent) {
    constexpr float largest = 65535.0f;
    const float position = (value - low) / extent * largest;
    return position > 0.0f ? static_cast<std::uint32_t>(std::min(position, largest)) : 0u;
}

/// Two numbers of 16 bits with their bits dealt out in turn, the lowest of `x` first: points that are near
/// one another mostly have numbers near one another.
std::uint32_t interleave(std::uint32_t x, std::uint32_t y) {
    std::uint32_t result = 0;
    for (unsigned bit = 0; bit < 16; ++bit) {
        result |= (x >> bit & 1u) << (2 * bit) | (y >> bit & 1u) << (2 * bit + 1);
    }
    return result;
}

} // namespace

std::vector<std::uint32_t> orderInPlane(const std::vector<Box>& boxes) {
    Box all;
    for (const Box& box : boxes) {
        all.add(box);
    }
    const float extent = std::max(all.maxX - all.minX, all.maxY - all.minY);
    std::vector<std::pair<std::uint32_t, std::uint32_t>> cells; // where in the plane, which box
    cells.reserve(boxes.size());
    for (const Box& box : boxes) {
        const std::uint32_t column = gridPosition(box.minX, all.minX, extent);
        const std::uint32_t line = gridPosition(box.minY, all.minY, extent);
        cells.emplace_back(interleave(column, line), static_cast<std::uint32_t>(cells.size()));
    }
    std::sort(cells.begin(), cells.end());
    std::vector<std::uint32_t> order;
    order.reserve(cells.size());
    for (const auto& [cell, index] : cells) {
        order.push_back(index);
    }
    return order;
}

} // namespace tarnwick
