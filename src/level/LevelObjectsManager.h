#pragma once

#include "core/QuadArray.h"
#include "core/View.h"
#include "level/LevelObject.h"
#include "level/Polygon2D.h"

#include <array>
#include <cstdint>
#include <list>
#include <queue>
#include <string>
#include <vector>

namespace tarnwick {

struct CommandRow;

/// Owns the objects of the level, runs their animations, and draws those that the camera can see, texture by
/// texture. Objects do not collide and draw no random numbers: the water's way is the same without them.
class LevelObjectsManager {
public:
    LevelObjectsManager() = delete;

    /// An object in the order in which a layer is drawn: by the GL texture name of its current frame, with
    /// the sense turned round, so that a queue which gives out its greatest element first begins with the
    /// lowest name. Every comparison is false if either object has no current frame.
    struct LevelObjectDrawable {
        const LevelObject* object = nullptr; ///< Not owned.

        friend bool operator<(const LevelObjectDrawable& a, const LevelObjectDrawable& b) {
            return bothShown(a, b) && nameOf(a) > nameOf(b);
        }
        friend bool operator>(const LevelObjectDrawable& a, const LevelObjectDrawable& b) {
            return bothShown(a, b) && nameOf(a) < nameOf(b);
        }
        friend bool operator<=(const LevelObjectDrawable& a, const LevelObjectDrawable& b) {
            return bothShown(a, b) && nameOf(a) >= nameOf(b);
        }
        friend bool operator>=(const LevelObjectDrawable& a, const LevelObjectDrawable& b) {
            return bothShown(a, b) && nameOf(a) <= nameOf(b);
        }
        friend bool operator==(const LevelObjectDrawable& a, const LevelObjectDrawable& b) {
            return bothShown(a, b) && nameOf(a) == nameOf(b);
        }
        friend bool operator!=(const LevelObjectDrawable& a, const LevelObjectDrawable& b) {
            return bothShown(a, b) && nameOf(a) != nameOf(b);
        }

    private:
        static bool bothShown(const LevelObjectDrawable& a, const LevelObjectDrawable& b) {
            return a.object->frame() != nullptr && b.object->frame() != nullptr;
        }
        static std::uint32_t nameOf(const LevelObjectDrawable& drawable) {
            return drawable.object->frame()->textureId;
        }
    };

    /// Objects of one frame, and objects of several; new ones come in at the front. Entries stay where they
    /// are until `shutdown`, so other modules keep pointers to them.
    static std::list<LevelObject> staticObjects;
    static std::list<LevelObject> animatedObjects;

    /// Registers the console commands and reads `cfg\animation.cfg`. Calls `shutdown` first.
    static void initialise();
    /// Drops all objects. The speed of the animations stays.
    static void shutdown();

    /// Takes a copy; an object without frames (`frameCount` 0) is dropped.
    static void addObject(const LevelObject& object);

    /// Lets `seconds` pass for all animations, newest object first.
    static void runAnimations(float seconds);
    /// Back to the level's start: every object seen, in its place, at the first frame, and standing still
    /// until a trigger plays it.
    static void resetObjects();

    /// Fills the layers' queues for this frame with the objects that are on and reach into a square about the
    /// camera. Kept: unlike that for polygons the square is as large as the view's width tells, also where
    /// the view is higher than wide.
    static void prepareDraw(const View& view);
    /// Draws a layer, 0 to 4, texture by texture, in white, and empties its queue. Objects of one texture are
    /// drawn in the order in which they were added, static before animated.
    static void drawLayer(std::uint32_t layer);
    /// Draws every object's id above its place if `ObjectsDrawIds` is on, in the world. Kept: offsets do not
    /// count, so the id of an object that a mover carries stays where the object began.
    static void debugDraw();

    /// What of the module a `Snapshot` holds; nobody else looks inside.
    class Moment;
    static void keep(Moment& moment);
    /// With as many objects as there were.
    static void putBack(const Moment& moment);

private:
    friend class ModuleReset;
    friend class LevelObjectsManagerTest;
    friend class ObjectRows; // tools: dump and restore

    struct Waiting {
        LevelObjectDrawable drawable;
        std::uint32_t turn; ///< How many were pushed before it in this frame.
    };
    /// The order of the queues: whether `a` is drawn after `b`. Those without a picture come last.
    struct ComesLater {
        bool operator()(const Waiting& a, const Waiting& b) const;
    };
    using LayerQueue = std::priority_queue<Waiting, std::vector<Waiting>, ComesLater>;

    struct State {
        std::array<LayerQueue, layerCount> layerQueues; ///< Filled by `prepareDraw`, emptied by `drawLayer`.
        bool objectsDraw = true;                        ///< Off: nothing is queued.
        bool objectsCull = true;         ///< Off: everything is queued, also what is off or far away.
        bool objectsDrawIds = false;     ///< Debug drawing: every object's id.
        float animationSpeed = 15.0f;    ///< Frames per second of all animations; 0 stops them.
        QuadArray quads;                 ///< Of one texture's objects, while a layer is drawn.
        std::size_t createdStatic = 0;   ///< Objects at the front of `staticObjects` that the console made,
        std::size_t createdAnimated = 0; ///< and of `animatedObjects`.
    };
    static State state;

    static void queueObjects(const std::list<LevelObject>& objects, const Box& near, std::uint32_t& turn);
    static void drawBatch(LayerQueue& queue);
    static void addQuad(const LevelObject& object, float halfWidth, float halfHeight);

    static const CommandRow commands[];
    static std::int32_t conCmdObjectsCount();
    static void conCmdObjectCreate(const std::string& typed);
};

class LevelObjectsManager::Moment {
    friend class LevelObjectsManager;
    struct ObjectMoment {
        bool enabled = true;
        bool paused = true;
        std::uint32_t currentFrame = 0;
        float frameTime = 0.0f;
        float offsetX = 0.0f;
        float offsetY = 0.0f;
        std::int32_t loopCount = 0;
        std::int32_t loopsDone = 0;
    };
    using Objects = std::vector<ObjectMoment>; ///< In the order of their list.
    Objects staticObjects;
    Objects animatedObjects;

    static void keepList(const std::list<LevelObject>& objects, Objects& kept);
    static void putListBack(const Objects& kept, std::list<LevelObject>& objects);
};

} // namespace tarnwick
