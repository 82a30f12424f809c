// The push of MoverManager: moving polygons shove the water and ice that they meet.

#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/LongWork.h"
#include "level/Polygon2D.h"
#include "mechanisms/MoverManager.h"
#include "particles/CircleCollision.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

constexpr float longestStep = 1.7f; ///< World units that a polygon moves between two looks around.
static_assert(longestStep == 0.85f * particleRadius);
/// Of one push, between two looks whether the window lives: only a mover of absurd speed has as many in a
/// tick.
constexpr std::uint32_t stepsBetweenLooks = 4096;
constexpr float touchMargin = 0.25f;   ///< World units between a body and an edge that it touches already.
constexpr float nearbyDistance = 6.0f; ///< World units: how far a step hands the push on from one particle.

/// How much further than an edge a body on its corner may be on either axis, in radii: the root of 2, and
/// more than that by what rounding can make of it.
constexpr float cornerReach = 1.4143f;
constexpr float slack = 0.125f;       ///< World units,
constexpr float slackOfPlace = 1e-5f; ///< and as a share of a coordinate: more than the rounding of a test.

/// The box, moved by `offset` and wider by `margin`, and by what rounding may make of a test in it.
Box widened(const Box& box, Vector2 offset, float margin) {
    TARNWICK_LOCATION("MoverManager::widened");
    const Box moved = box.shifted(offset);
    const float farthest = std::max({std::abs(moved.minX), std::abs(moved.minY), std::abs(moved.maxX),
                                     std::abs(moved.maxY), std::abs(offset.x), std::abs(offset.y)});
    const float border = margin * cornerReach + slack + farthest * slackOfPlace;
    return moved.grown(border);
}

/// The first edge that a body of `reach` at `position` touches; as many as there are edges if it touches
/// none. `starts` are the first ends of the edges where they are now.
std::size_t firstTouched(const std::vector<LevelBspNode>& edges,
                         const std::vector<Vector2>& starts,
                         Vector2 position,
                         float reach) {
    TARNWICK_LOCATION("MoverManager::firstTouched");
    for (std::size_t i = 0; i < edges.size(); ++i) {
        const LevelBspNode& edge = edges[i];
        const Vector2 fromStart = position - starts[i];
        const float d = dotProduct(fromStart, edge.normal);
        const float t = dotProduct(fromStart, edge.direction);
        if (d >= -reach && d <= reach && t >= -reach && t <= edge.length + reach) {
            return i;
        }
    }
    return edges.size();
}

/// Whether `point`, without the polygon's offset, lies strictly inside one of its triangles.
bool insideTriangles(const Polygon2D& polygon, Vector2 point) {
    TARNWICK_LOCATION("MoverManager::insideTriangles");
    for (std::size_t first = 0; first < std::size_t{polygon.triangleCount} * 3; first += 3) {
        bool inside = true;
        for (std::size_t i = first; i < first + 3 && inside; ++i) {
            const Vector2 corner{polygon.trianglesX[i], polygon.trianglesY[i]};
            const Vector2 normal{polygon.normalsX[i], polygon.normalsY[i]};
            inside = dotProduct(point - corner, normal) > 0.0f;
        }
        if (inside) {
            return true;
        }
    }
    return false;
}

} // namespace

void MoverManager::pushPolygonParticles(float dt, const View& view) {
    TARNWICK_LOCATION("MoverManager::pushPolygonParticles");
    const Box near = view.pushSquare();
    bool loaded = false;
    for (const DynamicPolygon& dynamic : state.dynamicPolygons) {
        Polygon2D& polygon = *dynamic.polygon;
        const Vector2 offset{polygon.offsetX, polygon.offsetY};
        const bool moved = offset != Vector2{polygon.previousOffsetX, polygon.previousOffsetY};
        // Kept: nothing is too high up in the level; only a box that lies above the polygon's own origin is
        // left out.
        const Box box = dynamic.boxAt(offset);
        const bool outside =
            box.minX > near.maxX || box.maxX < near.minX || box.minY > near.maxY || box.maxY < offset.y;
        if (moved && polygon.collideable && !outside) {
            if (!loaded) {
                loadCandidates();
                loaded = true;
            }
            pushBodies(dynamic, dt);
        }
        polygon.previousOffsetX = offset.x;
        polygon.previousOffsetY = offset.y;
    }
}

/// Everybody is a candidate once a tick: whom one polygon takes, no other one pushes.
void MoverManager::loadCandidates() {
    TARNWICK_LOCATION("MoverManager::loadCandidates");
    state.candidateParticles.load(ParticleManager::particles);
    state.candidateGroups.clear();
    for (ParticleGroup& group : ParticleGroupMover::groups) {
        state.candidateGroups.push_back(&group);
    }
}

void MoverManager::pushBodies(const DynamicPolygon& pusher, float dt) {
    TARNWICK_LOCATION("MoverManager::pushBodies");
    const Polygon2D& polygon = *pusher.polygon;
    Vector2 place{polygon.previousOffsetX, polygon.previousOffsetY};
    const Vector2 delta = Vector2{polygon.offsetX, polygon.offsetY} - place;
    const Vector2 polygonVelocity = delta / dt;
    float remaining = vectorLength(delta);
    if (!(remaining > 0.0f)) {
        return;
    }
    const Vector2 pushDirection = delta / remaining;
    state.push.touchingParticles.clear();
    state.push.touchingGroups.clear();
    findTouching(pusher, place);
    std::uint32_t steps = 0;
    while (remaining > 0.0f) {
        if (++steps % stepsBetweenLooks == 0 && !LongWork::goesOnWithinTick()) {
            break;
        }
        const float move = std::min(remaining, longestStep);
        const Vector2 step = pushDirection * move;
        place += step;
        moveTouching(step);
        findTouching(pusher, place);
        const float before = remaining;
        remaining -= move;
        if (!state.push.touchingParticles.empty()) {
            endStep(pusher, polygonVelocity);
        }
        if (remaining == before) {
            break; // so absurdly far that no step shortens the way: it would never end
        }
    }
}

/// What becomes of the particles after each step: walls stop them, the polygon crushes them, and they hand
/// the push on.
void MoverManager::endStep(const DynamicPolygon& pusher, Vector2 polygonVelocity) {
    TARNWICK_LOCATION("MoverManager::endStep");
    std::vector<Particle*>& touching = state.push.touchingParticles;
    for (std::size_t i = touching.size(); i-- > 0;) {
        CircleCollision::collisionTestStatic(touching[i]->position, particleRadius);
    }
    killParticlesInsidePolygon(pusher);
    addNearbyParticles(nearbyDistance);
    for (Particle* const particle : touching) {
        particle->pushVelocity += polygonVelocity; // in every step: a long way gives a hard push
    }
}

void MoverManager::moveTouching(Vector2 step) {
    TARNWICK_LOCATION("MoverManager::moveTouching");
    for (Particle* const particle : state.push.touchingParticles) {
        particle->position += step;
    }
    for (ParticleGroup* const group : state.push.touchingGroups) {
        group->centre += step;
        for (Particle& member : group->members) {
            member.position += step;
        }
    }
}

/// Takes the candidates that touch an edge of the polygon where it is with `offset`. What touches the last
/// edge of the list makes the scan step over the next candidate, which it meets at the next look around; if
/// the one that touched was the last of its list, the scan goes through the list again.
void MoverManager::findTouching(const DynamicPolygon& pusher, Vector2 offset) {
    TARNWICK_LOCATION("MoverManager::findTouching");
    constexpr float reach = particleRadius + touchMargin;
    state.candidateParticles.findInBox(widened(pusher.outline, offset, reach), state.push.nearby);
    if (state.push.nearby.empty() && state.candidateGroups.empty()) {
        return;
    }
    std::vector<Vector2>& starts = state.push.edgeStarts;
    starts.clear();
    for (const LevelBspNode& edge : pusher.edges) {
        starts.push_back(edge.start + offset);
    }
    findTouchingParticles(pusher, reach);
    findTouchingGroups(pusher, offset);
}

void MoverManager::findTouchingParticles(const DynamicPolygon& pusher, float reach) {
    TARNWICK_LOCATION("MoverManager::findTouchingParticles");
    const std::size_t edgeCount = pusher.edges.size();
    PushField& field = state.candidateParticles;
    std::vector<std::uint32_t>& nearby = state.push.nearby;
    for (std::size_t i = 0; i < nearby.size(); ++i) {
        const std::uint32_t candidate = nearby[i];
        const std::size_t edge =
            firstTouched(pusher.edges, state.push.edgeStarts, field.position(candidate), reach);
        if (edge == edgeCount) {
            continue;
        }
        state.push.touchingParticles.push_back(&field.take(candidate));
        if (edge + 1 < edgeCount) {
            continue;
        }
        const std::uint32_t next = field.nextLeft(candidate);
        if (next == PushField::none) {
            std::erase_if(nearby, [&](std::uint32_t other) { return !field.isLeft(other); });
            i = ~std::size_t{0}; // from the top
        } else if (i + 1 < nearby.size() && nearby[i + 1] == next) {
            ++i;
        }
    }
}

void MoverManager::findTouchingGroups(const DynamicPolygon& pusher, Vector2 offset) {
    TARNWICK_LOCATION("MoverManager::findTouchingGroups");
    const std::size_t edgeCount = pusher.edges.size();
    std::vector<ParticleGroup*>& candidates = state.candidateGroups;
    for (auto place = candidates.begin(); place != candidates.end();) {
        ParticleGroup* const group = *place;
        const float reach = group->radius + touchMargin;
        const std::size_t edge = widened(pusher.outline, offset, reach).holds(group->centre)
                                     ? firstTouched(pusher.edges, state.push.edgeStarts, group->centre, reach)
                                     : edgeCount;
        if (edge == edgeCount) {
            ++place;
            continue;
        }
        state.push.touchingGroups.push_back(group);
        place = candidates.erase(place);
        if (edge + 1 == edgeCount) {
            place = place == candidates.end() ? candidates.begin() : place + 1;
        }
    }
}

void MoverManager::killParticlesInsidePolygon(const DynamicPolygon& pusher) {
    TARNWICK_LOCATION("MoverManager::killParticlesInsidePolygon");
    const Polygon2D& polygon = *pusher.polygon;
    const Vector2 offset{polygon.offsetX, polygon.offsetY};
    const Box around = widened(pusher.outline, offset, 0.0f);
    for (Particle* const particle : state.push.touchingParticles) {
        // Where the polygon will be, also in the first steps of its way.
        if (around.holds(particle->position) && insideTriangles(polygon, particle->position - offset)) {
            ParticleManager::killParticle(*particle); // it is pushed on all the same
        }
    }
}

/// Hands the push on to the candidates near those that are pushed already, by one hop.
void MoverManager::addNearbyParticles(float radius) {
    TARNWICK_LOCATION("MoverManager::addNearbyParticles");
    std::vector<Particle*>& touching = state.push.touchingParticles;
    for (std::size_t i = touching.size(); i-- > 0;) { // who comes now is not visited
        state.candidateParticles.takeWithin(touching[i]->position, radius, touching);
    }
}

} // namespace tarnwick
