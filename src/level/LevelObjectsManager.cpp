#include "level/LevelObjectsManager.h"

#include "core/CommandArguments.h"
#include "core/CommandRegistry.h"
#include "core/ConfigFile.h"
#include "core/LocationStack.h"
#include "core/Log.h"

#include <cmath>

namespace tarnwick {

namespace {

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
    state.createdStatic = 0;
    state.createdAnimated = 0;
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

void LevelObjectsManager::keep(Moment& moment) {
    TARNWICK_LOCATION("LevelObjectsManager::keep");
    Moment::keepList(staticObjects, moment.staticObjects);
    Moment::keepList(animatedObjects, moment.animatedObjects);
}

void LevelObjectsManager::putBack(const Moment& moment) {
    TARNWICK_LOCATION("LevelObjectsManager::putBack");
    Moment::putListBack(moment.staticObjects, staticObjects);
    Moment::putListBack(moment.animatedObjects, animatedObjects);
}

void LevelObjectsManager::Moment::keepList(const std::list<LevelObject>& objects, Objects& kept) {
    TARNWICK_LOCATION("LevelObjectsManager::Moment::keepList");
    kept.clear();
    for (const LevelObject& object : objects) {
        kept.push_back({.enabled = object.enabled,
                        .paused = object.paused,
                        .currentFrame = object.currentFrame,
                        .frameTime = object.frameTime,
                        .offsetX = object.offsetX,
                        .offsetY = object.offsetY,
                        .loopCount = object.loopCount,
                        .loopsDone = object.loopsDone});
    }
}

void LevelObjectsManager::Moment::putListBack(const Objects& kept, std::list<LevelObject>& objects) {
    TARNWICK_LOCATION("LevelObjectsManager::Moment::putListBack");
    auto then = kept.begin();
    for (LevelObject& object : objects) {
        object.enabled = then->enabled;
        object.paused = then->paused;
        object.currentFrame = then->currentFrame;
        object.frameTime = then->frameTime;
        object.offsetX = then->offsetX;
        object.offsetY = then->offsetY;
        object.loopCount = then->loopCount;
        object.loopsDone = then->loopsDone;
        ++then;
    }
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
    ++(object.frameCount == 1 ? state.createdStatic : state.createdAnimated);
}

} // namespace tarnwick
