#include "graphics/LevelGeometryRenderer.h"

#include "core/CommandRegistry.h"
#include "core/CrashReport.h"
#include "core/FrameTimer.h"
#include "core/GLTexture.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "level/Level.h"

#include <GL/gl.h>

namespace tarnwick {

namespace {

constexpr float farthestDepth = 65535.0f; ///< z of layer 0; each layer is 1 nearer.

/// True for a polygon that belongs into a display list. One with a degenerate outline has no triangles.
bool isStatic(const Polygon2D& polygon) {
    TARNWICK_LOCATION("LevelGeometryRenderer::isStatic");
    return polygon.drawable && !polygon.moveable && polygon.triangleCount != 0 && !polygon.destructable;
}

/// Hands the triangles of a polygon to an open `glBegin(GL_TRIANGLES)`.
void emitTriangles(const Polygon2D& polygon, const GLTexture& texture) {
    TARNWICK_LOCATION("LevelGeometryRenderer::emitTriangles");
    // A picture of no size makes these infinite, and the coordinates with them: nothing to see, and harmless.
    const float perPixelX = 1.0f / static_cast<float>(texture.width);
    const float perPixelY = 1.0f / static_cast<float>(texture.height);
    const float depth = farthestDepth - static_cast<float>(polygon.layer);
    for (std::size_t corner = 0; corner < std::size_t{polygon.triangleCount} * 3; ++corner) {
        const float x = polygon.trianglesX[corner];
        const float y = polygon.trianglesY[corner];
        glTexCoord2f(perPixelX * x, perPixelY * y);
        glVertex3f(x, y, depth);
    }
}

} // namespace

LevelGeometryRenderer::State LevelGeometryRenderer::state;

constexpr CommandRow LevelGeometryRenderer::commands[] = {
    {"DrawLevelGeometry",
     CommandVariable{&state.drawLevelGeometry, "LevelGeometryRenderer::conCmdDrawLevelGeometry"}},
};

void LevelGeometryRenderer::initialise() {
    TARNWICK_LOCATION("LevelGeometryRenderer::initialise");
    shutdown();
    Log::print("\nInitialising level geometry renderer...");
    state.drawLevelGeometry = true;
    CommandRegistry::add(commands);
    FrameTimer timer;
    for (std::uint32_t& list : state.layerLists) {
        list = glGenLists(1);
    }

    std::array<PolygonQueue, layerCount> queues;
    for (const Polygon2D& polygon : Level::polygons) {
        if (isStatic(polygon)) {
            queues[polygon.layer < layerCount ? polygon.layer : 0].push(polygon);
        }
    }
    for (std::size_t layer = 0; layer < layerCount; ++layer) {
        CrashReport::endIfAsked();
        if (state.layerLists[layer] != 0) {
            glNewList(state.layerLists[layer], GL_COMPILE);
            drawLayer(queues[layer]);
            glEndList();
        }
    }

    timer.update();
    Log::print("\nLevel geometry prepared for rendering in ");
    Log::print(timer.getSeconds());
    Log::print("\nseconds.");
}

void LevelGeometryRenderer::shutdown() {
    TARNWICK_LOCATION("LevelGeometryRenderer::shutdown");
    for (std::uint32_t& list : state.layerLists) {
        if (list != 0) {
            glDeleteLists(list, 1);
            list = 0;
        }
    }
    CommandRegistry::remove(commands);
}

void LevelGeometryRenderer::drawLayer(PolygonQueue& queue) {
    TARNWICK_LOCATION("LevelGeometryRenderer::drawLayer");
    while (!queue.empty()) {
        const GLTexture texture = queue.top().texture;
        glBindTexture(GL_TEXTURE_2D, texture.textureId);
        glBegin(GL_TRIANGLES);
        while (!queue.empty() && queue.top().texture.textureId == texture.textureId) {
            emitTriangles(queue.top(), texture);
            queue.pop();
        }
        glEnd();
    }
}

void LevelGeometryRenderer::drawLayer0() {
    TARNWICK_LOCATION("LevelGeometryRenderer::drawLayer0");
    drawList(0);
}

void LevelGeometryRenderer::drawLayer1() {
    TARNWICK_LOCATION("LevelGeometryRenderer::drawLayer1");
    drawList(1);
}

void LevelGeometryRenderer::drawLayer2() {
    TARNWICK_LOCATION("LevelGeometryRenderer::drawLayer2");
    drawList(2);
}

void LevelGeometryRenderer::drawLayer3() {
    TARNWICK_LOCATION("LevelGeometryRenderer::drawLayer3");
    drawList(3);
}

void LevelGeometryRenderer::drawLayer4() {
    TARNWICK_LOCATION("LevelGeometryRenderer::drawLayer4");
    drawList(4);
}

void LevelGeometryRenderer::drawList(std::uint32_t layer) {
    TARNWICK_LOCATION("LevelGeometryRenderer::drawList");
    if (state.layerLists[layer] != 0 && state.drawLevelGeometry) {
        glCallList(state.layerLists[layer]);
    }
}

} // namespace tarnwick
