#pragma once

#include "graphics/PolygonQueue.h"
#include "level/Polygon2D.h"

#include <array>
#include <cstdint>

namespace tarnwick {

struct CommandRow;

/// Draws the polygons that never move or vanish. When a level is loaded they are compiled into one display
/// list a layer, ordered by texture; a layer is then one call a frame. What moves or vanishes is the business
/// of `DynamicPolygonRenderer`.
///
/// Texture coordinates come from world positions, one pixel a unit, so a picture runs across neighbouring
/// polygons without a seam.
///
/// Display lists die with the GL context: after the window was made anew, `initialise` must run again.
class LevelGeometryRenderer {
public:
    LevelGeometryRenderer() = delete;

    /// Compiles the polygons of `Level` and registers the console command. Calls `shutdown` first. Without a
    /// GL context nothing is compiled, and nothing is drawn later.
    static void initialise();
    static void shutdown();

    /// One layer each, from the back.
    static void drawLayer0();
    static void drawLayer1();
    static void drawLayer2();
    static void drawLayer3();
    static void drawLayer4();

private:
    friend class ModuleReset;
    friend class LevelGeometryRendererTest;

    struct State {
        std::array<std::uint32_t, layerCount> layerLists{}; ///< GL display lists; 0: none.
        bool drawLevelGeometry = true;                      ///< Off hides all static geometry.
    };
    static State state;

    /// Draws a layer's polygons texture by texture and empties the queue; for compiling.
    static void drawLayer(PolygonQueue& queue);
    static void drawList(std::uint32_t layer);

    static const CommandRow commands[];
};

} // namespace tarnwick
