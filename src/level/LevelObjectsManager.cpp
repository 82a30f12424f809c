#include "level/LevelObjectsManager.h"

#include "console/GLConsole.h"
#include "core/CommandArguments.h"
#include "core/CommandRegistry.h"
#include "core/ConfigFile.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "graphics/GLFont.h"

#include <GL/gl.h>

#include <cmath>
#include <cstdio>

namespace tarnwick {

namespace {

constexpr float idTextSize = 8.0f;    ///< World units.
constexpr float idTextOffset = 12.0f; ///< World units: an id stands this much above its object.

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
    return x + halfWidth >= near.minX && x - halfWidth <= near.maxX && y + halfHeight >= near.minY &&
           y - halfHeight <= near.maxY;
}

void drawIds(const GLFont& font, const std::list<LevelObject>& objects) {
    TARNWICK_LOCATION("LevelObjectsManager::drawIds");
    for (const LevelObject& object : objects) {
        const GLTexture* const picture = object.frame();
        if (picture == nullptr) {
            continue;
        }
        char text[32];
        std::snprintf(text, sizeof text, "OBJ ID: %1i", static_cast<std::int32_t>(object.id));
        font.drawString(text,
                        {object.x - halfWidthOf(*picture), object.y - halfHeightOf(*picture) - idTextOffset},
                        idTextSize, opaqueWhite);
    }
}

void resetObject(LevelObject& object) {
    TARNWICK_LOCATION("LevelObjectsManager::resetObject");
    object.resetAnimation();
    object.enabled = true;
    object.offsetX = 0.0f;
    object.offsetY = 0.0f;
    object.paused = true;
}

} // namespace

std::list<LevelObject> LevelObjectsManager::staticObjects;
std::list<LevelObject> LevelObjectsManager::animatedObjects;
LevelObjectsManager::State LevelObjectsManager::state;

constexpr CommandRow LevelObjectsManager::commands[] = {
    {"ObjectsDraw", CommandVariable{&state.objectsDraw, "LevelObjectsManager::conCmdObjectsDraw"}},
    {"ObjectsCull", CommandVariable{&state.objectsCull, "LevelObjectsManager::conCmdObjectsCull"}},
    {"ObjectsCount", conCmdObjectsCount},
    {"ObjectsDrawIds", CommandVariable{&state.objectsDrawIds, "LevelObjectsManager::conCmdObjectsDrawIds"}},
    {"ObjectCreate", conCmdObjectCreate},
};

void LevelObjectsManager::initialise() {
    TARNWICK_LOCATION("LevelObjectsManager::initialise");
    shutdown();
    Log::print("\nInitialising level objects manager..");
    state.objectsDraw = true;
    state.objectsCull = true;
    state.objectsDrawIds = false;
    CommandRegistry::add(commands);
    const ConfigFile config("cfg\\animation.cfg");
    state.animationSpeed = std::abs(config.getVarAsFloat("animationSpeeds"));
}

void LevelObjectsManager::shutdown() {
    TARNWICK_LOCATION("LevelObjectsManager::shutdown");
    Log::print("\nShutting down level objects manager..");
    for (LayerQueue& queue : state.layerQueues) {
        while (!queue.empty()) {
            queue.pop();
        }
    }
    staticObjects.clear();
    animatedObjects.clear();
    CommandRegistry::remove(commands);
}

void LevelObjectsManager::addObject(const LevelObject& object) {
    TARNWICK_LOCATION("LevelObjectsManager::addObject");
    if (object.frameCount == 1) {
        staticObjects.push_front(object);
    } else if (object.frameCount > 1) {
        animatedObjects.push_front(object);
    }
}

void LevelObjectsManager::runAnimations(float seconds) {
    TARNWICK_LOCATION("LevelObjectsManager::runAnimations");
    for (LevelObject& object : animatedObjects) {
        object.runAnimation(seconds, state.animationSpeed);
    }
}

void LevelObjectsManager::resetObjects() {
    TARNWICK_LOCATION("LevelObjectsManager::resetObjects");
    state.objectsDraw = true;
    state.objectsCull = true;
    state.objectsDrawIds = false;
    for (LevelObject& object : staticObjects) {
        resetObject(object);
    }
    for (LevelObject& object : animatedObjects) {
        resetObject(object);
    }
}

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

bool LevelObjectsManager::ComesLater::operator()(const Waiting& a, const Waiting& b) const {
    TARNWICK_LOCATION("LevelObjectsManager::ComesLater::operator()");
    const bool aShown = a.drawable.object->frame() != nullptr;
    const bool bShown = b.drawable.object->frame() != nullptr;
    if (aShown != bShown) {
        return bShown;
    }
    if (a.drawable != b.drawable) {
        return a.drawable < b.drawable;
    }
    return a.turn < b.turn; // the lists stand newest first
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

void LevelObjectsManager::debugDraw() {
    TARNWICK_LOCATION("LevelObjectsManager::debugDraw");
    if (!state.objectsDrawIds) {
        return;
    }
    const GLFont font(GLConsole::getFontTexture());
    drawIds(font, staticObjects);
    drawIds(font, animatedObjects);
}

std::int32_t LevelObjectsManager::conCmdObjectsCount() {
    TARNWICK_LOCATION("LevelObjectsManager::conCmdObjectsCount");
    return static_cast<std::int32_t>(staticObjects.size() + animatedObjects.size());
}

void LevelObjectsManager::conCmdObjectCreate(const std::string& typed) {
    TARNWICK_LOCATION("LevelObjectsManager::conCmdObjectCreate");
    const CommandArguments arguments(typed, "\nUSAGE: ObjectCreate < x : number > < y : number > "
                                            "< object id : integer > < textureName : string >");
    if (!arguments.fit()) {
        return;
    }
    LevelObject object;
    object.x = arguments.number(0);
    object.y = arguments.number(1);
    object.id = static_cast<std::uint32_t>(arguments.integer(2));
    object.setTexture(arguments.text(3));
    addObject(object);
}

} // namespace tarnwick
