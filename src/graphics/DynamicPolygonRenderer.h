#pragma once

#include "core/Box.h"
#include "core/View.h"
#include "graphics/PolygonQueue.h"
#include "level/Polygon2D.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <list>
#include <vector>

namespace tarnwick {

/// A polygon that can move or vanish, with the box of its outline where the level has it, without offset.
struct DynamicPolygonEntry {
    const Polygon2D* polygon = nullptr; ///< Not owned.
    float minX = 0.0f;                  ///< World units; the sides of `box`, each by its name.
    float maxX = 0.0f;
    float minY = 0.0f;
    float maxY = 0.0f;

    /// Of the outline, without offset.
    Box box() const { return {minX, minY, maxX, maxY}; }
};

/// Draws the polygons that movers carry and triggers remove, each frame, after leaving out what the camera
/// cannot see. Texture coordinates come from the outline without its offset, so the picture travels with the
/// polygon. What stays put is the business of `LevelGeometryRenderer`.
class DynamicPolygonRenderer {
public:
    DynamicPolygonRenderer() = delete;

    /// Gathers the polygons of `Level`, which must stay where they are until `shutdown`. Calls `shutdown`
    /// first.
    static void initialise();
    static void shutdown();

    /// Fills the layers' queues for this frame with the visible polygons that reach into a square about the
    /// camera, which holds the view at any angle.
    static void prepareDraw(const View& view);
    /// Draws a layer, 0 to 4, texture by texture, and empties its queue.
    static void drawLayer(std::uint32_t layer);

    /// Fills the four bounds of `entry` from its polygon's outline, which has a point at least.
    static void findPolygonBounds(DynamicPolygonEntry& entry);

private:
    friend class ModuleReset;
    friend class DynamicPolygonRendererTest;

    /// As the GL reads it.
    struct Corner {
        float s;
        float t;
        float x;
        float y;
    };

    struct State {
        std::list<DynamicPolygonEntry> dynamicPolygons; ///< In the order of the level's polygons.
        std::array<PolygonQueue, layerCount> layerQueues;
        std::vector<Corner>
            corners; ///< Of one texture's polygons, while a layer is drawn; kept for its memory.
    };
    static State state;

    static void addCorners(const Polygon2D& polygon);
    static void drawCorners();
};

} // namespace tarnwick
