#pragma once

#include "core/Colour.h"
#include "core/Vector2.h"

#include <cassert>
#include <cstddef>
#include <vector>

namespace tarnwick {

/// Textured, coloured quads gathered in memory and drawn with one call. The picture is the one that drawing
/// them corner by corner gives, in the order in which they were added.
///
/// The memory is kept from one picture to the next, so an array in a module's state takes none once it has
/// seen its largest picture.
class QuadArray {
public:
    /// Empties the array and makes room for `quads` of them; more must not be added.
    void begin(std::size_t quads);

    /// A square about (x, y), corners from (x - halfSize, y - halfSize) by way of (x + halfSize,
    /// y - halfSize), with the whole texture on it.
    void addSquare(Vector2 middle, float halfSize, Colour colour) {
        addRectangle({middle.x - halfSize, middle.y - halfSize, middle.x + halfSize, middle.y + halfSize},
                     {0.0f, 0.0f, 1.0f, 1.0f}, colour);
    }

    struct Rectangle {
        float left;
        float top;
        float right;
        float bottom;
    };
    /// A rectangle at `place`, corners left top, right top, right bottom, left bottom, with the part
    /// `picture` of the texture on it, in shares of the texture.
    // no location: called for every particle of a frame
    void addRectangle(Rectangle place, Rectangle picture, Colour colour) {
        assert(used + cornersPerQuad <= corners.size());
        Corner* const quad = corners.data() + used;
        quad[0] = {picture.left, picture.top, colour, place.left, place.top};
        quad[1] = {picture.right, picture.top, colour, place.right, place.top};
        quad[2] = {picture.right, picture.bottom, colour, place.right, place.bottom};
        quad[3] = {picture.left, picture.bottom, colour, place.left, place.bottom};
        used += cornersPerQuad;
    }

    std::size_t quadCount() const { return used / cornersPerQuad; }

    /// Draws everything that was added, with the texture now bound. The colour of the last quad is the GL's
    /// current colour afterwards; all else is as it was.
    void draw() const;

private:
    static constexpr std::size_t cornersPerQuad = 4;

    /// As the GL reads it.
    struct Corner {
        float s;
        float t;
        Colour colour;
        float x;
        float y;
    };

    std::vector<Corner> corners; ///< Only the first `used` belong to the picture.
    std::size_t used = 0;
};

} // namespace tarnwick
