#pragma once

#include "core/Box.h"
#include "core/Float4.h"
#include "core/LocationStack.h"
#include "core/Vector2.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tarnwick {

struct Trigger;

/// The triggers that take part in one tick, in the order in which they are asked, with their reaches in
/// fours, so that a body far from all of them is done in a moment. In the field's words: a broad phase of
/// bounding boxes, grown until the test is conservative, as a structure of arrays for vector instructions.
///
/// The reach of a trigger is a box outside of which `TriggerManager::pointInTrigger` is false for certain,
/// rounding included. Its margin beyond the corners follows from this, for a counter-clockwise triangle whose
/// angles all have a sine of at least 2^-10, of diameter d, and a point p at the distance D from it:
///
/// - The nearest point of the triangle lies on an edge or is a corner. In the worst case, a corner of angle
///   a, one of the two edges there has p at least D sin(a / 2) >= D 2^-11 on its outer side.
/// - Edges, unit vectors and dot product are rounded by less than 2^-21 in all, relative to the distance from
///   p to the edge's start, which is at most D + d.
/// - So p is seen outside if D 2^-11 > (D + d) 2^-21, which holds from D = d 2^-9 on.
///
/// A triangle with a smaller angle, or none at all, may hold points far away, up to all of the plane for one
/// that is a single point; such a trigger reaches everywhere.
class LiveTriggers {
public:
    /// The reach of a trigger whose triangles and unit edges are set.
    static Box reachOf(const Trigger& trigger);

    void clear();
    void add(Trigger& trigger);
    bool empty() const { return triggers.empty(); }
    std::size_t size() const { return triggers.size(); }

    /// Calls `visit` with each trigger whose reach holds `point`, in order. A point that is no number is in
    /// every reach.
    template <typename Visit>
    void visitAt(Vector2 point, const Visit& visit) const {
        TARNWICK_LOCATION("LiveTriggers::visitAt");
        const Float4 x = Float4::all(point.x);
        const Float4 y = Float4::all(point.y);
        for (std::size_t block = 0; block < blocks.size(); ++block) {
            const Reaches& reaches = blocks[block];
            std::uint32_t outside =
                greater(x, Float4::load(reaches.maxX)) | greater(Float4::load(reaches.minX), x) |
                greater(y, Float4::load(reaches.maxY)) | greater(Float4::load(reaches.minY), y);
            for (std::size_t place = 4 * block; outside != allFour && place < triggers.size(); ++place) {
                if ((outside & 1u) == 0) {
                    visit(*triggers[place]);
                }
                outside = outside >> 1 | 1u << 3; // a lane that is done counts as outside
            }
        }
    }

private:
    static constexpr std::uint32_t allFour = 0xFu;

    /// Reaches of four triggers in a row; those of lanes without one hold nothing.
    struct Reaches {
        float minX[4];
        float minY[4];
        float maxX[4];
        float maxY[4];
    };

    std::vector<Trigger*> triggers; ///< Not owned.
    std::vector<Reaches> blocks;
};

} // namespace tarnwick
