#include "graphics/DynamicPolygonRenderer.h"

#include "core/GLTexture.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "level/Level.h"

#include <GL/gl.h>

#include <algorithm>

namespace tarnwick {

namespace {

/// True for a polygon that can move or vanish. One with a degenerate outline has no triangles.
bool isDynamic(const Polygon2D& polygon) {
    TARNWICK_LOCATION("DynamicPolygonRenderer::isDynamic");
    return polygon.triangleCount != 0 && polygon.drawable && (polygon.moveable || polygon.destructable);
}

} // namespace

DynamicPolygonRenderer::State DynamicPolygonRenderer::state;

void DynamicPolygonRenderer::initialise() {
    TARNWICK_LOCATION("DynamicPolygonRenderer::initialise");
    shutdown();
    Log::print("\nIntialising dynamic polygon renderer..");
    for (const Polygon2D& polygon : Level::polygons) {
        if (isDynamic(polygon)) {
            DynamicPolygonEntry& entry = state.dynamicPolygons.emplace_back();
            entry.polygon = &polygon;
            findPolygonBounds(entry);
        }
    }
}

void DynamicPolygonRenderer::shutdown() {
    TARNWICK_LOCATION("DynamicPolygonRenderer::shutdown");
    Log::print("\nShuttrng down dynamic polygon renderer..");
    state.dynamicPolygons.clear();
}

void DynamicPolygonRenderer::findPolygonBounds(DynamicPolygonEntry& entry) {
    TARNWICK_LOCATION("DynamicPolygonRenderer::findPolygonBounds");
    const Polygon2D& polygon = *entry.polygon;
    const auto [left, right] = std::minmax_element(polygon.pointsX.begin(), polygon.pointsX.end());
    const auto [top, bottom] = std::minmax_element(polygon.pointsY.begin(), polygon.pointsY.end());
    entry.minX = *left;
    entry.maxX = *right;
    entry.minY = *top;
    entry.maxY = *bottom;
}

void DynamicPolygonRenderer::prepareDraw(const View& view) {
    TARNWICK_LOCATION("DynamicPolygonRenderer::prepareDraw");
    const Box near = view.polygonSquare();
    for (const DynamicPolygonEntry& entry : state.dynamicPolygons) {
        const Polygon2D& polygon = *entry.polygon;
        const Box box = entry.box().shifted({polygon.offsetX, polygon.offsetY});
        if (polygon.visible && box.touches(near)) {
            state.layerQueues[polygon.layer < layerCount ? polygon.layer : 0].push(polygon);
        }
    }
}

void DynamicPolygonRenderer::drawLayer(std::uint32_t layer) {
    TARNWICK_LOCATION("DynamicPolygonRenderer::drawLayer");
    PolygonQueue& queue = state.layerQueues[layer];
    while (!queue.empty()) {
        const std::uint32_t textureId = queue.top().texture.textureId;
        glBindTexture(GL_TEXTURE_2D, textureId);
        state.corners.clear();
        while (!queue.empty() && queue.top().texture.textureId == textureId) {
            addCorners(queue.top());
            queue.pop();
        }
        drawCorners();
    }
}

void DynamicPolygonRenderer::addCorners(const Polygon2D& polygon) {
    TARNWICK_LOCATION("DynamicPolygonRenderer::addCorners");
    // A picture of no size makes these infinite, and the coordinates with them: nothing to see, and harmless.
    const float perPixelX = 1.0f / static_cast<float>(polygon.texture.width);
    const float perPixelY = 1.0f / static_cast<float>(polygon.texture.height);
    for (std::size_t corner = 0; corner < std::size_t{polygon.triangleCount} * 3; ++corner) {
        const float x = polygon.trianglesX[corner];
        const float y = polygon.trianglesY[corner];
        state.corners.push_back({perPixelX * x, perPixelY * y, x + polygon.offsetX, y + polygon.offsetY});
    }
}

void DynamicPolygonRenderer::drawCorners() {
    TARNWICK_LOCATION("DynamicPolygonRenderer::drawCorners");
    constexpr auto stride = static_cast<GLsizei>(sizeof(Corner));
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glEnableClientState(GL_VERTEX_ARRAY);
    glTexCoordPointer(2, GL_FLOAT, stride, &state.corners[0].s);
    glVertexPointer(2, GL_FLOAT, stride, &state.corners[0].x);
    glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(state.corners.size()));
    glPopClientAttrib();
}

} // namespace tarnwick
