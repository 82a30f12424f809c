#include "reference/PlainMovers.h"

#include "level/Polygon2D.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

float dot(Vector2 a, Vector2 b) {
    return a.x * b.x + a.y * b.y;
}

float lengthOf(Vector2 v) {
    return std::sqrt(v.x * v.x + v.y * v.y);
}

Vector2 middleOf(const PlainView& view) {
    return view.position + view.shake;
}

bool touches(const CollisionNode& edge, Vector2 offset, Vector2 point, float reach) {
    const Vector2 d = point - (edge.start + offset);
    const float across = dot(d, edge.normal);
    const float along = dot(d, edge.direction);
    return across >= -reach && across <= reach && along >= -reach && along <= edge.length + reach;
}

/// Moves what touches an edge from `candidates` to `touching`, by `put`. The list is a ring with one empty
/// place, its end: what touches the last edge makes the scan step over one more place.
template <typename Body, typename ReachOf, typename PlaceOf, typename Put>
void findTouching(const std::list<CollisionNode>& edges,
                  Vector2 offset,
                  std::list<Body*>& candidates,
                  ReachOf reachOf,
                  PlaceOf placeOf,
                  Put put) {
    auto candidate = candidates.begin();
    while (candidate != candidates.end()) {
        bool hit = false;
        bool hitLast = false;
        for (auto edge = edges.begin(); edge != edges.end(); ++edge) {
            if (touches(*edge, offset, placeOf(**candidate), reachOf(**candidate))) {
                hit = true;
                hitLast = std::next(edge) == edges.end();
                break;
            }
        }
        if (!hit) {
            ++candidate;
            continue;
        }
        put(*candidate);
        candidate = candidates.erase(candidate);
        if (hitLast) {
            if (candidate == candidates.end()) {
                candidate = candidates.begin();
            } else {
                ++candidate;
            }
        }
    }
}

void addNearby(std::list<Particle*>& candidates, std::list<Particle*>& touching, float radius) {
    const std::list<Particle*> present = touching;
    for (const Particle* particle : present) {
        for (auto candidate = candidates.begin(); candidate != candidates.end();) {
            const Vector2 apart = (*candidate)->position - particle->position;
            if (apart.x * apart.x + apart.y * apart.y <= radius * radius) {
                touching.push_front(*candidate);
                candidate = candidates.erase(candidate);
            } else {
                ++candidate;
            }
        }
    }
}

bool inside(const PlainMovers::Polygon& polygon, Vector2 point) {
    const Vector2 local = point - polygon.offset;
    for (std::size_t triangle = 0; triangle < polygon.triangleCount; ++triangle) {
        int sides = 0;
        for (std::size_t i = triangle * 3; i < triangle * 3 + 3; ++i) {
            if (dot(local - polygon.corners[i], polygon.normals[i]) > 0.0f) {
                ++sides;
            }
        }
        if (sides == 3) {
            return true;
        }
    }
    return false;
}

} // namespace

void PlainMovers::addPolygon(const Polygon2D& polygon) {
    Polygon& copy = polygons.emplace_back();
    copy.id = polygon.id;
    copy.collideable = polygon.collideable;
    copy.counterClockwise = polygon.counterClockwise;
    copy.triangleCount = polygon.triangleCount;
    copy.friction = polygon.frictionLevel;
    for (std::size_t i = 0; i < polygon.pointsX.size(); ++i) {
        copy.points.push_back({polygon.pointsX[i], polygon.pointsY[i]});
    }
    for (std::size_t i = 0; i < polygon.trianglesX.size(); ++i) {
        copy.corners.push_back({polygon.trianglesX[i], polygon.trianglesY[i]});
        copy.normals.push_back({polygon.normalsX[i], polygon.normalsY[i]});
    }
}

void PlainMovers::addMover(const Mover& mover) {
    movers.push_back(mover);
    for (Polygon& polygon : polygons) {
        const bool known = std::ranges::any_of(
            dynamics, [&](const Dynamic& dynamic) { return dynamic.polygon == &polygon; });
        if (polygon.id == mover.id && polygon.collideable && !known) {
            addDynamic(polygon);
        }
    }
}

void PlainMovers::addDynamic(Polygon& polygon) {
    const std::size_t count = polygon.points.size();
    if (polygon.triangleCount == 0 || count < 2) {
        return;
    }
    dynamics.emplace_front();
    Dynamic& dynamic = dynamics.front();
    dynamic.polygon = &polygon;
    for (std::size_t i = 0; i + 1 < count; ++i) {
        if (polygon.counterClockwise) {
            addEdge(dynamic, polygon.points[i], polygon.points[i + 1]);
        } else {
            addEdge(dynamic, polygon.points[i + 1], polygon.points[i]);
        }
    }
    if (polygon.counterClockwise) {
        addEdge(dynamic, polygon.points[count - 1], polygon.points[0]);
    } else {
        addEdge(dynamic, polygon.points[0], polygon.points[count - 1]);
    }
    dynamic.minX = dynamic.maxX = polygon.points[0].x;
    dynamic.minY = dynamic.maxY = polygon.points[1].x;
    for (std::size_t i = 1; i < count; ++i) {
        dynamic.minX = std::min(dynamic.minX, polygon.points[i].x);
        dynamic.maxX = std::max(dynamic.maxX, polygon.points[i].x);
        dynamic.minY = std::min(dynamic.minY, polygon.points[i].y);
        dynamic.maxY = std::max(dynamic.maxY, polygon.points[i].y);
    }
}

void PlainMovers::addEdge(Dynamic& dynamic, Vector2 start, Vector2 end) {
    CollisionNode edge;
    edge.start = start;
    edge.end = end;
    edge.length = lengthOf(end - start);
    if (edge.length <= 0.01f) {
        return;
    }
    edge.direction = (end - start) / edge.length;
    edge.normal = {-edge.direction.y, edge.direction.x};
    edge.friction = dynamic.polygon->friction;
    dynamic.edges.push_front(edge);
}

void PlainMovers::tick(PlainSimulation& simulation, float dt) {
    updateNodes(simulation);
    runMovers(dt);
    push(simulation, dt);
}

void PlainMovers::updateNodes(PlainSimulation& simulation) const {
    std::list<CollisionNode>& nodes = simulation.collision.moving;
    nodes.clear();
    const Vector2 view = middleOf(simulation.view);
    const float r = simulation.view.areaX * 0.7f * simulation.view.zoom;
    for (const Dynamic& dynamic : dynamics) {
        const Vector2 offset = dynamic.polygon->offset;
        if (dynamic.polygon->collideable && dynamic.minX + offset.x <= view.x + r &&
            dynamic.maxX + offset.x >= view.x - r && dynamic.minY + offset.y <= view.y + r &&
            dynamic.maxY + offset.y >= offset.y) {
            for (const CollisionNode& edge : dynamic.edges) {
                nodes.push_front(edge);
                nodes.front().start = edge.start + offset;
                nodes.front().end = edge.end + offset;
            }
        }
    }
}

void PlainMovers::runMovers(float dt) {
    for (Mover& mover : movers) {
        run(mover, lengthOf(mover.end - mover.start), dt);
    }
    for (const Mover& mover : movers) {
        for (Polygon& polygon : polygons) {
            if (polygon.id == mover.id) {
                polygon.offset = {0.0f, 0.0f};
            }
        }
    }
    for (const Mover& mover : movers) {
        const float length = lengthOf(mover.end - mover.start);
        const Vector2 direction = length == 0.0f ? Vector2{} : (mover.end - mover.start) / length;
        for (Polygon& polygon : polygons) {
            if (polygon.id == mover.id) {
                polygon.offset += direction * mover.position;
            }
        }
    }
}

void PlainMovers::run(Mover& mover, float length, float dt) {
    const float step = mover.speed * (dt > 1e-7f ? dt : 1e-7f);
    if (mover.state == 1 || mover.state == 4) {
        mover.position += step;
        if (mover.position > length) {
            mover.position = length;
            mover.state = mover.state == 1 ? 0 : 3;
        }
    } else if (mover.state == 2 || mover.state == 3) {
        mover.position -= step;
        if (mover.position < 0.0f) {
            mover.position = 0.0f;
            mover.state = mover.state == 2 ? 0 : 4;
        }
    }
}

void PlainMovers::push(PlainSimulation& simulation, float dt) const {
    std::list<Particle*> candidates;
    std::list<ParticleGroup*> groups;
    for (Particle& particle : simulation.particles) {
        candidates.push_back(&particle);
    }
    for (ParticleGroup& group : simulation.groups) {
        groups.push_back(&group);
    }
    const Vector2 view = middleOf(simulation.view);
    const float r = 800.0f * 0.65f * simulation.view.zoom;
    for (const Dynamic& dynamic : dynamics) {
        Polygon& polygon = *dynamic.polygon;
        const Vector2 offset = polygon.offset;
        const bool out = dynamic.minX + offset.x > view.x + r || dynamic.maxX + offset.x < view.x - r ||
                         dynamic.minY + offset.y > view.y + r || dynamic.maxY + offset.y < offset.y;
        if (polygon.collideable && !out) {
            pushBodies(dynamic, simulation, candidates, groups, dt);
        }
        polygon.previousOffset = polygon.offset;
    }
}

void PlainMovers::pushBodies(const Dynamic& dynamic,
                             PlainSimulation& simulation,
                             std::list<Particle*>& candidates,
                             std::list<ParticleGroup*>& groups,
                             float dt) {
    const Polygon& polygon = *dynamic.polygon;
    const Vector2 delta = polygon.offset - polygon.previousOffset;
    const Vector2 velocity = delta / dt;
    float remaining = lengthOf(delta);
    if (!(remaining > 0.0f)) {
        return;
    }
    const Vector2 direction = delta / remaining;
    std::list<Particle*> touching;
    std::list<ParticleGroup*> touchingGroups;
    Vector2 place = polygon.previousOffset;
    const auto look = [&] {
        findTouching(
            dynamic.edges, place, candidates, [](const Particle&) { return 2.0f + 0.25f; },
            [](const Particle& particle) { return particle.position; },
            [&](Particle* particle) { touching.push_front(particle); });
        findTouching(
            dynamic.edges, place, groups, [](const ParticleGroup& group) { return group.radius + 0.25f; },
            [](const ParticleGroup& group) { return group.centre; },
            [&](ParticleGroup* group) { touchingGroups.push_back(group); });
    };
    look();
    while (remaining > 0.0f) {
        const float move = std::min(remaining, 1.7f);
        place += direction * move;
        for (Particle* particle : touching) {
            particle->position += direction * move;
        }
        for (ParticleGroup* group : touchingGroups) {
            group->centre += direction * move;
            for (Particle& member : group->members) {
                member.position += direction * move;
            }
        }
        look();
        remaining -= move;
        for (Particle* particle : touching) {
            simulation.collision.testStatic(particle->position, 2.0f);
        }
        for (Particle* particle : touching) {
            if (inside(polygon, particle->position) && !particle->dying) {
                particle->dying = true;
                particle->killTimer = simulation.settings.particleKillTime;
            }
        }
        addNearby(candidates, touching, 6.0f);
        for (Particle* particle : touching) {
            particle->pushVelocity += velocity;
        }
    }
}

} // namespace tarnwick
