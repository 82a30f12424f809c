#pragma once

#include "core/Box.h"
#include "core/View.h"
#include "level/LevelBspNode.h"
#include "mechanisms/Mover.h"
#include "mechanisms/PushField.h"

#include <cstdint>
#include <list>
#include <map>
#include <vector>

namespace tarnwick {

struct CommandRow;
class LevelObject;
struct Particle;
struct ParticleGroup;
class Polygon2D;

/// Owns the movers of the level: runs them, displaces what they carry, shoves the water and ice that a moving
/// polygon meets, and keeps the edges of the moving polygons near the view for the collisions of the tick,
/// because the level's tree knows only of what stands still.
///
/// A displacement is reckoned from nothing each tick and gathers no rounding. What no mover carries is never
/// touched. Every mover starts idle; only triggers set one going.
class MoverManager {
public:
    MoverManager() = delete;

    /// In file order. A node stays where it is until `shutdown`, so triggers keep pointers to movers.
    static std::list<Mover> movers;
    /// Edges, in the world, of the moving polygons near the view, in the order in which `CircleCollision`
    /// looks at them. They stand where their polygon stood as the tick began: the push deals with the step in
    /// between. Stale from `shutdown` to the next tick.
    static std::vector<LevelBspNode> collideableNodes;

    /// Registers the console commands. Calls `shutdown` first, so that it can run again for a new level.
    static void initialise();
    static void shutdown();
    /// All movers back to their start and idle, and the debug drawing off. The polygons are put back by who
    /// resets the level.
    static void resetMovers();

    /// Appends a copy, which carries every object and polygon of its id; what comes after the first mover
    /// of an id is not carried. Movers of one id carry the same, and their displacements add up. A polygon
    /// that is not `collideable` now is carried and never shoves or collides, also if it is switched on
    /// later.
    static void addMover(const Mover& mover);
    /// Makes the collision form of a polygon; none for a polygon without triangles.
    static void addDynamicPolygon(Polygon2D& polygon);

    /// Gathers `collideableNodes` anew. Before `runMovers` in a tick.
    static void updateCollideableNodes(const View& view);
    /// One tick of `dt` seconds, already capped at 1/30: runs the movers in order, then moves what they
    /// carry, then shoves what the moved polygons meet.
    static void runMovers(float dt, const View& view);

    /// Draws what the two commands ask for: the tracks with id and speed, and the edges of moving polygons
    /// with their normals, where they are now. Leaves the GL as it was.
    static void debugDraw();

    /// What of the module a `Snapshot` holds; nobody else looks inside.
    class Moment;
    static void keep(Moment& moment);
    /// With as many movers as there were. What they carry is put back where it stands: with the level.
    static void putBack(const Moment& moment);

private:
    friend class ModuleReset;

    /// The collision form of one moving polygon.
    struct DynamicPolygon {
        Polygon2D* polygon = nullptr;    ///< Not owned.
        std::vector<LevelBspNode> edges; ///< The sides without the offset, the last one first.
        float minX = 0.0f; ///< The sides of the box that is tested against the view, without offset.
        float maxX = 0.0f;
        float minY = 0.0f; ///< Kept: the x of the second point counts as a y too, and the y of the first not.
        float maxY = 0.0f;
        Box outline; ///< Around all points, without the offset.

        /// What is tested against the view where the polygon stands at `offset`.
        Box boxAt(Vector2 offset) const { return Box{minX, minY, maxX, maxY}.shifted(offset); }
    };

    /// All that the movers of one id carry.
    struct Cargo {
        std::vector<LevelObject*> objects; ///< Not owned.
        std::vector<Polygon2D*> polygons;  ///< Not owned; in the order of the level.
        Vector2 displacement;              ///< World units: the sum of the movers', in their order.
    };

    /// What one polygon shoves in one tick.
    struct Push {
        std::vector<Particle*> touchingParticles; ///< Newest last; walked from the newest on.
        std::vector<ParticleGroup*> touchingGroups;
        std::vector<Vector2> edgeStarts;   ///< First ends of the edges where the polygon is now.
        std::vector<std::uint32_t> nearby; ///< Candidates around the polygon.
    };

    struct State {
        std::map<std::int32_t, Cargo> cargoes;     ///< By id, of the ids that movers have.
        std::map<std::int32_t, Cargo> unclaimed;   ///< By id, of the others.
        std::size_t gatheredCount = 0;             ///< Polygons and objects that both were made of.
        std::vector<Cargo*> cargoOfMover;          ///< By the place in `movers`.
        std::list<DynamicPolygon> dynamicPolygons; ///< Newest first.
        PushField candidateParticles;              ///< Within a push: whom no polygon has taken yet.
        std::vector<ParticleGroup*> candidateGroups;
        Push push;              ///< Of the polygon at work; kept for its memory.
        bool moverDraw = false; ///< Debug drawing, both.
        bool dynamicNodeDraw = false;
    };
    static State state;

    static void gatherCargoes();
    static Cargo& claimCargo(std::int32_t id);
    static void sumDisplacements();
    static void moveMoverObjects();
    static void moveMoverPolygons();
    static void pushPolygonParticles(float dt, const View& view);
    static void loadCandidates();
    static void pushBodies(const DynamicPolygon& pusher, float dt);
    static void moveTouching(Vector2 step);
    static void endStep(const DynamicPolygon& pusher, Vector2 polygonVelocity);
    static void findTouching(const DynamicPolygon& pusher, Vector2 offset);
    static void findTouchingParticles(const DynamicPolygon& pusher, float reach);
    static void findTouchingGroups(const DynamicPolygon& pusher, Vector2 offset);
    static void killParticlesInsidePolygon(const DynamicPolygon& pusher);
    static void addNearbyParticles(float radius);
    static void drawTracks();
    static void drawDynamicNodes();

    static const CommandRow commands[];
    static std::int32_t conCmdMoverCount();
};

class MoverManager::Moment {
    friend class MoverManager;
    struct MoverMoment {
        float position = 0.0f;
        MoverState state = MoverIdle;
    };
    std::vector<MoverMoment> movers; ///< In the order of their list.
};

} // namespace tarnwick
