#include "tools/solve/WayPicture.h"

#include "graphics/FramePicture.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

constexpr FramePicture::Pixel wallColour{40, 40, 46};
constexpr FramePicture::Pixel waterColour{30, 90, 230};
constexpr FramePicture::Pixel cutOffColour{214, 120, 110};
constexpr FramePicture::Pixel finishColour{40, 190, 80};
constexpr std::int32_t pixelsOfCell = 2;

} // namespace

bool saveWayPicture(const FlowField& field,
                    const std::set<std::size_t>& visited,
                    const std::filesystem::path& file) {
    float longest = 1.0f;
    for (std::size_t cell = 0; cell < field.columns() * field.rows(); ++cell) {
        if (field.distanceOfCell(cell) < FlowField::farthest) {
            longest = std::max(longest, field.distanceOfCell(cell));
        }
    }
    const auto colourOf = [&](std::size_t cell) -> FramePicture::Pixel {
        const float distance = field.distanceOfCell(cell);
        if (field.solid(cell)) {
            return wallColour;
        }
        if (distance == 0.0f) { // exactly: a cell of the finish
            return finishColour;
        }
        if (distance >= FlowField::farthest) {
            return cutOffColour;
        }
        const auto light = static_cast<std::uint8_t>(240.0f - 110.0f * distance / longest);
        return {light, light, light};
    };
    FramePicture picture;
    picture.width = static_cast<std::int32_t>(field.columns()) * pixelsOfCell;
    picture.height = static_cast<std::int32_t>(field.rows()) * pixelsOfCell;
    for (std::int32_t y = 0; y < picture.height; ++y) {
        for (std::int32_t x = 0; x < picture.width; ++x) {
            const std::size_t cell = static_cast<std::size_t>(y / pixelsOfCell) * field.columns() +
                                     static_cast<std::size_t>(x / pixelsOfCell);
            picture.pixels.push_back(visited.contains(cell) ? waterColour : colourOf(cell));
        }
    }
    return picture.savePng(file);
}

} // namespace tarnwick
