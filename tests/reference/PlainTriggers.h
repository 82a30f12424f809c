#pragma once

#include "core/Vector2.h"
#include "reference/PlainEffects.h"
#include "reference/PlainMovers.h"
#include "reference/PlainSimulation.h"

#include <cstdint>
#include <list>

namespace tarnwick {

/// Triggers and what they do, read off their rules step by step: every trigger asks every body, and every
/// action looks through all entities for the id. Works on the water, ice and view of a `PlainSimulation`, on
/// the movers and polygons of a `PlainMovers` and on the emitters of a `PlainEffects`.
class PlainTriggers {
public:
    struct Object {
        std::int32_t id = 0;
        bool enabled = true;
        bool paused = true;
        std::uint32_t currentFrame = 0;
        float frameTime = 0.0f;
        std::int32_t loopCount = 0;
        std::int32_t loopsDone = 0;
    };
    struct Force {
        std::int32_t id = 0;
        bool enabled = true;
        Vector2 position;
        Vector2 direction;
        float strength = 0.0f;
    };
    struct Emitter {
        std::int32_t id = 0;
        PlainEmitter* emitter = nullptr;
    };
    struct Polygon {
        std::int32_t id = 0;
        bool visible = true;
        PlainMovers::Polygon* polygon = nullptr;
    };
    struct Trigger {
        std::int32_t type = 0;
        std::int32_t target = 0;
        float delay = 0.0f;
        Vector2 corners[4];
        std::uint32_t fireCount = 0;
        float cooldownLeft = 0.0f;
    };
    struct Event {
        Trigger* trigger = nullptr;
        float dt = 0.0f;
        float timeLeft = 0.0f;
    };

    std::list<Object> objects;
    std::list<Force> forces;
    std::list<Emitter> emitters;
    std::list<Polygon> polygons;
    std::list<Trigger> triggers; ///< Oldest first.
    std::list<Event> events;
    float changeSpeed = 0.0f; ///< Degrees per second.
    float iceBound = 0.0f;    ///< Degrees below zero.
    float steamBound = 0.0f;  ///< Degrees.
    bool shaking = false;     ///< The camera shakes; it does so without end.

    /// What else a tick touches.
    struct World {
        PlainSimulation& simulation;
        PlainMovers& movers;
        PlainEffects& effects;
    };
    void tick(const World& world, float dt);
    void reset();

private:
    /// What a handler sees of a particle or a group; all null for none.
    struct Body {
        Vector2 place;
        Vector2* velocity = nullptr;
        float* temperature = nullptr;
        bool* dying = nullptr;
        float* killTimer = nullptr;
        bool isGroup = false;
    };

    static bool near(const Trigger& trigger, const PlainView& view);
    static bool holds(const Trigger& trigger, Vector2 point);
    void ask(const std::list<Trigger*>& live, const Body& body, const World& world, float dt);
    void act(const Trigger& trigger, const Body& body, const World& world, float dt);
    void heat(std::int32_t type, const Body& body, float dt) const;
    void push(const Trigger& trigger, const Body& body, float dt) const;
    void animate(const Trigger& trigger);
    void switchEntities(const Trigger& trigger, bool on);
    void moveMovers(const Trigger& trigger, PlainMovers& movers) const;
    void emit(const Trigger& trigger, const World& world) const;
    static void kill(const Body& body, const PlainSimulation& simulation);
};

} // namespace tarnwick
