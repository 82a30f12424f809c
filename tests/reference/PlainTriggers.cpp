#include "reference/PlainTriggers.h"

#include "reference/PlainRandom.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace tarnwick {

namespace {

const std::set<std::int32_t> oneShots = {3,   4,   5,   100, 101, 300, 301, 401, 402,
                                         403, 407, 408, 501, 502, 503, 601, 603, 901};
const std::set<std::int32_t> neverDelayed = {0, 1, 2, 200, 201, 202, 203, 701};

float lengthOf(Vector2 v) {
    return std::sqrt(v.x * v.x + v.y * v.y);
}

/// Which side of the edge from `start` to `end` a point is on: below 0 on the one that the normal points
/// away from.
float sideOf(Vector2 point, Vector2 start, Vector2 end) {
    const Vector2 edge = end - start;
    const Vector2 to = point - start;
    return to.x * -edge.y + to.y * edge.x;
}

bool triangleHolds(Vector2 a, Vector2 b, Vector2 c, Vector2 point) {
    const Vector2 middle = (a + c) * 0.5f;
    if (sideOf(middle, a, b) < 0.0f && sideOf(middle, b, c) < 0.0f) {
        std::swap(b, c);
    }
    const Vector2 corners[4] = {a, b, c, a};
    for (int i = 0; i < 3; ++i) {
        Vector2 edge = corners[i + 1] - corners[i];
        const float length = lengthOf(edge);
        if (length > 0.0f) {
            edge = edge / length;
        }
        const Vector2 normal{-edge.y, edge.x};
        const Vector2 to = point - corners[i];
        if (to.x * normal.x + to.y * normal.y < 0.0f) {
            return false;
        }
    }
    return true;
}

bool spent(const PlainTriggers::Trigger& trigger) {
    return oneShots.contains(trigger.type) && trigger.fireCount >= 1;
}

} // namespace

void PlainTriggers::reset() {
    events.clear();
    for (Trigger& trigger : triggers) {
        trigger.cooldownLeft = 0.0f;
        trigger.fireCount = 0;
    }
}

void PlainTriggers::tick(const World& world, float dt) {
    for (auto event = events.begin(); event != events.end();) {
        event->timeLeft -= dt;
        if (event->timeLeft > 0.0f) {
            ++event;
            continue;
        }
        act(*event->trigger, {}, world, event->dt);
        event = events.erase(event);
    }
    std::list<Trigger*> live;
    for (Trigger& trigger : triggers) {
        if (spent(trigger) || !near(trigger, world.simulation.view)) {
            continue;
        }
        if (trigger.cooldownLeft <= 0.0f) {
            live.push_back(&trigger);
        } else {
            trigger.cooldownLeft -= dt;
        }
    }
    for (Particle& particle : world.simulation.particles) {
        ask(live,
            {particle.position, &particle.velocity, &particle.temperature, &particle.dying,
             &particle.killTimer, false},
            world, dt);
    }
    for (ParticleGroup& group : world.simulation.groups) {
        ask(live, {group.centre, &group.velocity, &group.temperature, &group.dying, &group.killTimer, true},
            world, dt);
    }
}

bool PlainTriggers::near(const Trigger& trigger, const PlainView& view) {
    const float reach = 0.55f * std::max(view.areaX, view.areaY);
    const Vector2 middle = view.position + view.shake;
    float minX = trigger.corners[0].x;
    float maxX = trigger.corners[0].x;
    float minY = trigger.corners[0].y;
    float maxY = trigger.corners[0].y;
    for (const Vector2 corner : trigger.corners) {
        minX = std::min(minX, corner.x);
        maxX = std::max(maxX, corner.x);
        minY = std::min(minY, corner.y);
        maxY = std::max(maxY, corner.y);
    }
    return minX <= middle.x + reach && minY <= middle.y + reach && maxX >= middle.x - reach &&
           maxY >= middle.y - reach;
}

bool PlainTriggers::holds(const Trigger& trigger, Vector2 point) {
    const Vector2(&corners)[4] = trigger.corners;
    return triangleHolds(corners[0], corners[1], corners[2], point) ||
           triangleHolds(corners[2], corners[3], corners[0], point);
}

void PlainTriggers::ask(const std::list<Trigger*>& live, const Body& body, const World& world, float dt) {
    for (Trigger* const trigger : live) {
        if (spent(*trigger) || !holds(*trigger, body.place)) {
            continue;
        }
        ++trigger->fireCount;
        trigger->cooldownLeft = 0.0f;
        if (trigger->delay > 0.0f && !neverDelayed.contains(trigger->type)) {
            events.push_back({trigger, dt, trigger->delay});
        } else {
            act(*trigger, body, world, dt);
        }
    }
}

void PlainTriggers::act(const Trigger& trigger, const Body& body, const World& world, float dt) {
    const std::int32_t type = trigger.type;
    if (type >= 0 && type <= 2) {
        heat(type, body, dt);
    } else if (type >= 3 && type <= 5) {
        animate(trigger);
    } else if (type >= 200 && type <= 203) {
        push(trigger, body, dt);
    } else if (type == 300 || type == 301) {
        switchEntities(trigger, type == 301);
    } else if (type >= 401 && type <= 410) {
        moveMovers(trigger, world.movers);
    } else if (type >= 501 && type <= 503) {
        emit(trigger, world);
    } else if ((type == 603 || type == 604) && !shaking) {
        shaking = true; // and picks a direction
        std::uint32_t& state = world.simulation.randomState;
        state = plainRandomStep(plainRandomStep(state));
    } else if (type == 701) {
        kill(body, world.simulation);
    } else if (type == 702) {
        std::uint32_t& state = world.simulation.randomState;
        state = plainRandomStep(state);
        if (static_cast<float>((state & 0xFFFFFFu) / 16777215.0) <= dt * 0.5f) {
            kill(body, world.simulation);
        }
    }
}

void PlainTriggers::heat(std::int32_t type, const Body& body, float dt) const {
    if (body.temperature == nullptr) {
        return;
    }
    const float change = changeSpeed * dt;
    float& temperature = *body.temperature;
    if (type == 0) {
        temperature -= change;
        if (temperature < -iceBound) {
            temperature = -iceBound;
        }
    } else if (body.isGroup) {
        temperature += change;
    } else if (type == 1 && temperature >= 50.0f) {
        temperature -= change;
        if (temperature < 50.0f) {
            temperature = 50.0f;
        }
    } else {
        const float bound = type == 1 ? 50.0f : steamBound;
        temperature += change;
        if (temperature > bound) {
            temperature = bound;
        }
    }
}

void PlainTriggers::push(const Trigger& trigger, const Body& body, float dt) const {
    if (body.velocity == nullptr) {
        return;
    }
    Vector2& velocity = *body.velocity;
    for (const Force& force : forces) {
        if (force.id != trigger.target || trigger.target == 0 || !force.enabled) {
            continue;
        }
        if (trigger.type == 200) {
            velocity.x += force.direction.x * force.strength * dt;
            velocity.y += force.direction.y * force.strength * dt;
        } else if (trigger.type == 201) {
            velocity = {force.direction.x * force.strength, force.direction.y * force.strength};
        } else {
            Vector2 d = body.place - force.position;
            const float length = lengthOf(d);
            if (length > 0.0001f) {
                d = d / length;
            }
            const float a = dt * force.strength * std::sqrt(1.0f / (length + 1.0f));
            velocity = trigger.type == 203 ? velocity + d * a : velocity - d * a;
        }
    }
}

void PlainTriggers::animate(const Trigger& trigger) {
    for (Object& object : objects) {
        if (object.id != trigger.target || trigger.target == 0) {
            continue;
        }
        object.paused = trigger.type == 5;
        if (trigger.type == 3) {
            object.loopCount = 0;
        } else if (trigger.type == 4) {
            object.frameTime = 0.0f;
            object.currentFrame = 0;
            object.loopsDone = 0;
            object.loopCount = 1;
        }
    }
}

void PlainTriggers::switchEntities(const Trigger& trigger, bool on) {
    if (trigger.target == 0) {
        return;
    }
    for (Object& object : objects) {
        object.enabled = object.id == trigger.target ? on : object.enabled;
    }
    for (Force& force : forces) {
        force.enabled = force.id == trigger.target ? on : force.enabled;
    }
    for (Polygon& polygon : polygons) {
        if (polygon.id == trigger.target) {
            polygon.visible = on;
            polygon.polygon->collideable = on;
        }
    }
}

void PlainTriggers::moveMovers(const Trigger& trigger, PlainMovers& movers) const {
    // The states by the type's last digit: 401, 402, ..., 410.
    static constexpr std::int32_t states[] = {4, 2, 1, 0, 2, 1, 0, 3, 4, 3};
    for (PlainMovers::Mover& mover : movers.movers) {
        if (mover.id == trigger.target && trigger.target != 0) {
            mover.state = states[trigger.type % 10];
        }
    }
}

void PlainTriggers::emit(const Trigger& trigger, const World& world) const {
    for (const Emitter& entry : emitters) {
        if (entry.id != trigger.target || trigger.target == 0) {
            continue;
        }
        if (trigger.type == 501) {
            world.effects.randomState = world.simulation.randomState;
            world.effects.burst(*entry.emitter);
            world.simulation.randomState = world.effects.randomState;
        } else {
            entry.emitter->active = trigger.type == 502;
        }
    }
}

void PlainTriggers::kill(const Body& body, const PlainSimulation& simulation) {
    if (body.dying != nullptr && !*body.dying) {
        *body.dying = true;
        *body.killTimer = simulation.settings.particleKillTime;
    }
}

} // namespace tarnwick
