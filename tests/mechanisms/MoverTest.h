#pragma once

#include "console/GLConsole.h"
#include "game/Camera.h"
#include "graphics/GLWindow.h"
#include "level/Level.h"
#include "level/LevelObjectsManager.h"
#include "mechanisms/MoverManager.h"
#include "support/ModuleTest.h"
#include "support/SceneAccess.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>

namespace tarnwick {

/// A level put together by hand, and a window, for the view: 800 by 600 world units about the origin.
class MoverTest : public ModuleTest {
protected:
    MoverTest() {
        GLWindow::createHeadless(800, 600);
        GLConsole::initialise();
        SceneAccess::configure({});
        SceneAccess::placeCamera({}, {}, 0.0f, 1.0f);
        MoverManager::initialise();
    }
    ~MoverTest() override { GLWindow::close(); }

    static Polygon2D& addPolygon(std::int32_t id, std::initializer_list<Vector2> outline) {
        SceneAccess::addPolygon(outline, 0.25f);
        Level::polygons.back().id = id;
        return Level::polygons.back();
    }
    static Polygon2D& addSquare(std::int32_t id, float left, float top, float side) {
        return addPolygon(id,
                          {{left, top}, {left + side, top}, {left + side, top + side}, {left, top + side}});
    }
    static LevelObject& addObject(std::uint32_t id, bool animated) {
        auto& list = animated ? LevelObjectsManager::animatedObjects : LevelObjectsManager::staticObjects;
        LevelObject& object = list.emplace_front();
        object.id = id;
        return object;
    }
    /// A mover that stands `position` along its track from the origin.
    static Mover& addMover(std::int32_t id, Vector2 end, float position = 0.0f) {
        Mover mover;
        mover.id = id;
        mover.setEndPoint(end.x, end.y);
        mover.position = position;
        MoverManager::addMover(mover);
        return MoverManager::movers.back();
    }
    static Vector2 offsetOf(const Polygon2D& polygon) { return {polygon.offsetX, polygon.offsetY}; }
    static std::size_t nodesNow() {
        MoverManager::updateCollideableNodes(Camera::view());
        return MoverManager::collideableNodes.size();
    }
};

} // namespace tarnwick
