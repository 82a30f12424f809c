#pragma once

#include "core/Vector2.h"
#include "level/LevelBspNode.h"
#include "reference/PlainSimulation.h"

#include <cstdint>
#include <list>
#include <vector>

namespace tarnwick {

class Polygon2D;

/// Movers, the polygons that they carry and the push, read off their rules step by step: lists, and a look at
/// everybody for every edge. Works on the water, ice and view of a `PlainSimulation`.
class PlainMovers {
public:
    struct Mover {
        std::int32_t id = 0;
        Vector2 start;
        Vector2 end;
        float speed = 0.0f;
        float position = 0.0f;
        std::int32_t state = 0;
    };
    /// A polygon of the level with what the rules need of it.
    struct Polygon {
        std::int32_t id = 0;
        bool collideable = true;
        bool counterClockwise = true;
        std::uint32_t triangleCount = 0;
        float friction = 1.0f;
        std::vector<Vector2> points;
        std::vector<Vector2> corners; ///< Of the triangles.
        std::vector<Vector2> normals; ///< Of the triangles' sides.
        Vector2 offset;
        Vector2 previousOffset;
    };

    std::list<Mover> movers;
    std::list<Polygon> polygons; ///< All of the level, in its order.

    /// Takes a copy of a polygon of the level as it stands.
    void addPolygon(const Polygon2D& polygon);
    /// After all polygons.
    void addMover(const Mover& mover);
    /// What comes before the water in a tick. The moving edges go to `simulation.collision`.
    void tick(PlainSimulation& simulation, float dt);

private:
    struct Dynamic {
        Polygon* polygon = nullptr;
        std::list<CollisionNode> edges;
        float minX = 0.0f;
        float maxX = 0.0f;
        float minY = 0.0f;
        float maxY = 0.0f;
    };
    std::list<Dynamic> dynamics;

    void addDynamic(Polygon& polygon);
    static void addEdge(Dynamic& dynamic, Vector2 start, Vector2 end);
    void updateNodes(PlainSimulation& simulation) const;
    void runMovers(float dt);
    static void run(Mover& mover, float length, float dt);
    void push(PlainSimulation& simulation, float dt) const;
    static void pushBodies(const Dynamic& dynamic,
                           PlainSimulation& simulation,
                           std::list<Particle*>& candidates,
                           std::list<ParticleGroup*>& groups,
                           float dt);
};

} // namespace tarnwick
