#include "core/LocationStack.h"
#include "level/LevelObjectsManager.h"

#include <GL/gl.h>

namespace tarnwick {

namespace {

float halfWidthOf(const GLTexture& picture) {
    TARNWICK_LOCATION("LevelObjectsManager::halfWidthOf");
    return static_cast<float>(picture.width) / 2.0f;
}

float halfHeightOf(const GLTexture& picture) {
    TARNWICK_LOCATION("LevelObjectsManager::halfHeightOf");
    return static_cast<float>(picture.height) / 2.0f;
}

/// Whether the object is on and its picture meets the square, edges included.
bool inReach(const LevelObject& object, const Box& near) {
    TARNWICK_LOCATION("LevelObjectsManager::inReach");
    const GLTexture* const picture = object.frame();
    if (!object.enabled || picture == nullptr) {
        return false;
    }
    const float x = object.x + object.offsetX;
    const float y = object.y + object.offsetY;
    const float halfWidth = halfWidthOf(*picture);
    const float halfHeight = halfHeightOf(*picture);
    return Box{x - halfWidth, y - halfHeight, x + halfWidth, y + halfHeight}.touches(near);
}

} // namespace

void LevelObjectsManager::prepareDraw(const View& view) {
    TARNWICK_LOCATION("LevelObjectsManager::prepareDraw");
    if (!state.objectsDraw) {
        return;
    }
    const Box near = view.objectSquare();
    std::uint32_t turn = 0;
    queueObjects(staticObjects, near, turn);
    queueObjects(animatedObjects, near, turn);
}

void LevelObjectsManager::queueObjects(const std::list<LevelObject>& objects,
                                       const Box& near,
                                       std::uint32_t& turn) {
    TARNWICK_LOCATION("LevelObjectsManager::queueObjects");
    for (const LevelObject& object : objects) {
        if (!state.objectsCull || inReach(object, near)) {
            state.layerQueues[object.layer < layerCount ? object.layer : 0].push({{&object}, turn});
            ++turn;
        }
    }
}

void LevelObjectsManager::drawLayer(std::uint32_t layer) {
    TARNWICK_LOCATION("LevelObjectsManager::drawLayer");
    LayerQueue& queue = state.layerQueues[layer];
    while (!queue.empty()) {
        if (queue.top().drawable.object->frame() == nullptr) {
            queue.pop();
        } else {
            drawBatch(queue);
        }
    }
}

/// Draws the first object of the queue and all others of its texture.
void LevelObjectsManager::drawBatch(LayerQueue& queue) {
    TARNWICK_LOCATION("LevelObjectsManager::drawBatch");
    const LevelObjectDrawable first = queue.top().drawable;
    const GLTexture& picture = *first.object->frame();
    glBindTexture(GL_TEXTURE_2D, picture.textureId);
    state.quads.begin(queue.size());
    do {
        addQuad(*queue.top().drawable.object, halfWidthOf(picture), halfHeightOf(picture));
        queue.pop();
    } while (!queue.empty() && queue.top().drawable == first);
    state.quads.draw();
}

void LevelObjectsManager::addQuad(const LevelObject& object, float halfWidth, float halfHeight) {
    TARNWICK_LOCATION("LevelObjectsManager::addQuad");
    const float x = object.x + object.offsetX;
    const float y = object.y + object.offsetY;
    const float left = object.mirrored ? 1.0f : 0.0f;
    state.quads.addRectangle({x - halfWidth, y - halfHeight, x + halfWidth, y + halfHeight},
                             {left, 0.0f, 1.0f - left, 1.0f}, opaqueWhite);
}

} // namespace tarnwick
