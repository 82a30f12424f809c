// `Level`: its load, its restart and its end, which conduct the modules of a level from the top of the house.
// All else of `Level` knows of none of them.

#include "audio/SoundSourceManager.h"
#include "core/CommandRegistry.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "game/Camera.h"
#include "game/CheckPointTimesManager.h"
#include "game/Game.h"
#include "graphics/DynamicPolygonRenderer.h"
#include "graphics/LevelGeometryRenderer.h"
#include "level/Level.h"
#include "level/LevelBspTree.h"
#include "level/LevelLoader.h"
#include "level/LevelObjectsManager.h"
#include "mechanisms/ForceManager.h"
#include "mechanisms/MoverManager.h"
#include "mechanisms/TriggerManager.h"

#include <set>

namespace tarnwick {

constexpr CommandRow Level::commands[] = {
    {"DrawTriangles", CommandVariable{&state.drawTriangles, "Level::conCmdDrawTriangles"}},
};

bool Level::load(const std::string& fileName) {
    TARNWICK_LOCATION("Level::load");
    Log::printTitle("Level loading");
    Log::print("\nLoading level data...");
    if (!LevelLoader::loadLevel(fileName)) {
        return false;
    }
    state.drawTriangles = false;
    findDestructablePolygons();
    findMoveablePolygons();
    LevelBspTree::create();
    LevelGeometryRenderer::initialise();
    DynamicPolygonRenderer::initialise();
    CheckPointTimesManager::initialise();
    buildPolyNodeMap();
    playUntargetedSounds();
    CommandRegistry::add(commands);
    return true;
}

void Level::clear() {
    TARNWICK_LOCATION("Level::clear");
    Log::print("\nClearing level data...");
    CommandRegistry::remove(commands);
    LevelGeometryRenderer::shutdown();
    LevelBspTree::clear();
    LevelObjectsManager::shutdown();
    ForceManager::shutdown();
    DynamicPolygonRenderer::shutdown();
    TriggerManager::shutdown();
    SoundSourceManager::shutdown();
    CheckPointTimesManager::shutdown();
    MoverManager::shutdown();
    polygons.clear(); // last: everything else points into them
    state.polygonNodes.clear();
}

void Level::reset() {
    TARNWICK_LOCATION("Level::reset");
    state.drawTriangles = false;
    for (Polygon2D& polygon : polygons) {
        polygon.visible = true;
        polygon.offsetX = 0.0f;
        polygon.offsetY = 0.0f;
        polygon.previousOffsetX = 0.0f;
        polygon.previousOffsetY = 0.0f;
    }
    LevelBspTree::resetTree();
    LevelObjectsManager::resetObjects();
    MoverManager::resetMovers();
    SoundSourceManager::resetSounds();
    TriggerManager::resetTriggers();
    playUntargetedSounds();
}

void Level::findDestructablePolygons() {
    TARNWICK_LOCATION("Level::findDestructablePolygons");
    std::set<std::int32_t> ids;
    for (const Trigger& trigger : TriggerManager::triggers) {
        if (trigger.typeId == TriggerManager::entityRemoveType ||
            trigger.typeId == TriggerManager::entityAddType) {
            ids.insert(trigger.targetId);
        }
    }
    for (Polygon2D& polygon : polygons) {
        polygon.destructable |= ids.contains(polygon.id);
    }
}

void Level::findMoveablePolygons() {
    TARNWICK_LOCATION("Level::findMoveablePolygons");
    std::set<std::int32_t> ids;
    for (const Mover& mover : MoverManager::movers) {
        ids.insert(mover.id);
    }
    for (Polygon2D& polygon : polygons) {
        polygon.moveable |= ids.contains(polygon.id);
    }
}

void Level::playUntargetedSounds() {
    TARNWICK_LOCATION("Level::playUntargetedSounds");
    std::set<std::int32_t> targeted;
    for (const Trigger& trigger : TriggerManager::triggers) {
        if (trigger.typeId == TriggerManager::soundPlayType) {
            targeted.insert(trigger.targetId);
        }
    }
    SoundSourceManager::playExcludedSounds(targeted);
    SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
}

} // namespace tarnwick
