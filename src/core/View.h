#pragma once

#include "core/Box.h"
#include "core/Geometry.h"
#include "core/Vector2.h"

#include <algorithm>

namespace tarnwick {

constexpr float radiansPerDegree = 0.017453292f;

/// A rectangle of the world, turned about its middle. What lies outside by more than a margin is lost.
struct ViewRectangle {
    static constexpr int edgeCount = 4;

    Vector2 corners[edgeCount];       ///< World units; corner i lies on edges i and i - 1.
    Vector2 inwardNormals[edgeCount]; ///< Unit; normal i belongs to the edge from corner i to corner i + 1.

    /// True when the signed inward distance of `point` to any of the four edges is strictly below `-margin`.
    /// A point exactly `margin` outside is not beyond.
    bool isBeyond(Vector2 point, float margin) const {
        return distance(point, 0) < -margin || distance(point, 1) < -margin || distance(point, 2) < -margin ||
               distance(point, 3) < -margin;
    }

private:
    float distance(Vector2 point, int edge) const {
        return dotProduct(point - corners[edge], inwardNormals[edge]);
    }
};

/// What the player sees of the world at one moment, and with it which way is down: the camera hands it to the
/// simulation, to the sounds and to the drawing, which ask nobody else.
///
/// Each module that leaves out what is far away has a square of its own that counts as near; they stand here
/// side by side. They differ on purpose: a change of one changes what moves, sounds or shows at the rim of
/// the view. The order of their products is that of each module, to the last bit.
struct View {
    Vector2 position;     ///< World units, without the shake.
    Vector2 shakeOffset;  ///< World units, added to the position.
    float angle = 0.0f;   ///< Degrees.
    float zoom = 1.0f;    ///< 1 is normal, larger shows more.
    float areaX = 800.0f; ///< World units: width of the view at zoom 1.
    float areaY = 600.0f; ///< World units: its height.

    /// The middle of what is seen, world units.
    Vector2 centre() const { return position + shakeOffset; }
    /// The way that water falls: unit length, turned with the view.
    Vector2 down() const;
    /// The rectangle of the world that is seen. Water beyond it by more than a margin is lost.
    ViewRectangle rectangle() const;

    /// Emitters of effects run as far out as the sides of the view. Kept: how high the view is does not
    /// count.
    Box emitterSquare() const { return square(areaX * 0.5f * zoom); }
    /// Movers' edges are solid farther out than anything is seen, since water lives beyond the rim. Kept: the
    /// width alone counts, however high the view is.
    Box solidSquare() const { return square(solidReach()); }
    float solidReach() const { return areaX * 0.7f * zoom; }
    /// Movers push what is seen in a window of 4:3. Kept: a wider window does not make the square larger.
    Box pushSquare() const { return square(800.0f * 0.65f * zoom); }
    /// Triggers live a little beyond the longer side of the view. Kept: the zoom does not enter, so that an
    /// overview sets nothing off that play would not.
    Box triggerSquare() const { return square(0.55f * std::max(areaX, areaY)); }
    /// Objects are drawn in the half diagonal of the view, 0.625 of its width at 4:3, at any angle. Kept:
    /// also where the view is higher than wide, the width counts.
    Box objectSquare() const { return square(areaX * 0.65f * zoom); }
    /// Polygons that move are drawn in the same, but of the longer side: they can be large.
    Box polygonSquare() const { return square(std::max(areaX, areaY) * 0.65f * zoom); }

private:
    Box square(float reach) const {
        const Vector2 middle = centre();
        return {middle.x - reach, middle.y - reach, middle.x + reach, middle.y + reach};
    }
};

} // namespace tarnwick
