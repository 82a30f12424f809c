#pragma once

#include "core/Vector2.h"
#include "level/Polygon2D.h"

#include <list>
#include <map>
#include <string>
#include <vector>

namespace tarnwick {

struct CommandRow;
struct LevelBspNode;

/// Owns the polygons of the one level in memory and conducts its load, restart and end. All else of a level
/// lives in the managers it calls.
class Level {
public:
    Level() = delete;

    /// In file order. Other modules keep pointers to entries: they stay where they are until `clear`.
    static std::list<Polygon2D> polygons;

    /// Loads a level file and everything that follows from it. False when the file is bad; the level that was
    /// in memory is then still there, as it was.
    static bool load(const std::string& fileName);
    /// Empties memory of the level.
    static void clear();
    /// Puts the level back to its start without reading the file. A polygon that a trigger removed is seen
    /// again and its edges are back; its field `collideable` stays false until a trigger adds it or the level
    /// is loaded anew.
    static void reset();
    /// Draws what the commands of the tree and `DrawTriangles` ask for, in the world.
    static void debugDraw();

    /// Switches a polygon on or off: its edges in the tree, if it has any, and its field.
    static void setPolygonCollideable(Polygon2D& polygon, bool collideable);

    /// World units: where the water is made at the start, and where the camera stands first.
    static Vector2 waterStart() { return state.waterStart; }
    static Vector2 cameraStart() { return state.cameraStart; }
    /// For the loader.
    static void setStartPoints(Vector2 waterStart, Vector2 cameraStart);

    /// Every node of the polygon in the tree, pieces of its edges included; null for a polygon without nodes.
    static const std::vector<LevelBspNode*>* nodesOf(const Polygon2D& polygon);
    /// Marks the polygons that some trigger removes or adds. Kept: target id 0, which is no target to a
    /// trigger, marks the polygons of id 0 as well. A step of `load`, before the tree is built: their edges
    /// are kept whole there, so that they can be switched.
    static void findDestructablePolygons();
    /// Marks the polygons that some mover carries. A step of `load`, before the tree is built.
    static void findMoveablePolygons();
    /// Gathers for each polygon its nodes. A step of `load`, after the tree is built.
    static void buildPolyNodeMap();
    /// Starts every looping sound source that no trigger is there to start. The last step of `load`, and of
    /// `reset`.
    static void playUntargetedSounds();

    /// What of the module a `Snapshot` holds; nobody else looks inside.
    class Moment;
    static void keep(Moment& moment);
    /// Of a moment of this very load of the level.
    static void putBack(const Moment& moment);

private:
    friend class ModuleReset;
    friend class SimulationState;

    struct State {
        std::map<const Polygon2D*, std::vector<LevelBspNode*>>
            polygonNodes;           ///< Only polygons that have nodes.
        bool drawTriangles = false; ///< Debug drawing: outline every triangle.
        Vector2 waterStart;         ///< World units.
        Vector2 cameraStart;        ///< World units.
    };
    static State state;

    static bool edgesOn(const Polygon2D& polygon);

    static const CommandRow commands[];
};

class Level::Moment {
    friend class Level;
    struct PolygonMoment {
        bool visible = true;
        bool collideable = true;
        bool edgesOn = true; ///< In the tree; true without edges there.
        Vector2 offset;
        Vector2 previousOffset;
    };
    std::vector<PolygonMoment> polygons; ///< In the order of the level.
};

} // namespace tarnwick
