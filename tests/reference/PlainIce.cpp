#include "reference/PlainSimulation.h"

#include <cmath>

namespace tarnwick {

namespace {

float lengthOf(Vector2 v) {
    return std::sqrt(v.x * v.x + v.y * v.y);
}

float power(float base, float exponent) {
    return static_cast<float>(std::pow(static_cast<double>(base), static_cast<double>(exponent)));
}

float targetRadiusFor(std::size_t members) {
    const float pi = 3.1415927f;
    return std::sqrt(static_cast<float>(members) * 2.0f * 2.0f * pi / pi);
}

bool withinTwelve(Vector2 a, Vector2 b) {
    const float dx = a.x - b.x;
    const float dy = a.y - b.y;
    return dx * dx + dy * dy <= 144.0f;
}

} // namespace

void PlainSimulation::givePlace(Particle& member) {
    Vector2 d;
    d.x = drawFloat() - 0.5f;
    d.y = drawFloat() - 0.5f;
    if (d.x == 0.0f && d.y == 0.0f) {
        d = {1.0f, 0.0f};
    } else {
        d = d / lengthOf(d);
    }
    member.groupDirection = d;
    member.groupFraction = drawFloat();
}

void PlainSimulation::freeze() {
    std::list<Particle> frozen;
    for (auto place = particles.begin(); place != particles.end();) {
        const auto next = std::next(place);
        if (place->temperature <= 0.0f) {
            removeFromGrid(*place);
            frozen.push_back(*place);
            particles.erase(place);
        }
        place = next;
    }
    while (!frozen.empty()) {
        groups.emplace_front();
        ParticleGroup& group = groups.front();
        group.members.push_back(frozen.front());
        frozen.pop_front();
        Particle& first = group.members.front();
        group.radius = 2.0f;
        group.targetRadius = 2.0f;
        group.centre = first.position;
        group.dying = false;
        group.velocity = first.velocity;
        group.previousVelocity = first.previousVelocity;
        group.pushVelocity = first.pushVelocity;
        group.temperature = first.temperature;
        first.speed = 0.0f;
        givePlace(first);
        gather(first, group, frozen);
        group.targetRadius = targetRadiusFor(group.members.size());
    }
}

void PlainSimulation::gather(const Particle& from, ParticleGroup& group, std::list<Particle>& frozen) {
    std::list<Particle*> found;
    for (auto q = frozen.begin(); q != frozen.end();) {
        const auto next = std::next(q);
        if (withinTwelve(q->position, from.position)) {
            group.members.push_front(*q);
            frozen.erase(q);
            found.push_back(&group.members.front());
            givePlace(group.members.front());
        }
        q = next;
    }
    for (auto q = particles.begin(); q != particles.end();) {
        const auto next = std::next(q);
        if (withinTwelve(q->position, from.position)) {
            removeFromGrid(*q);
            group.members.push_front(*q);
            particles.erase(q);
            found.push_back(&group.members.front());
            givePlace(group.members.front());
        }
        q = next;
    }
    while (!found.empty()) {
        gather(*found.front(), group, frozen);
        found.pop_front();
    }
}

void PlainSimulation::stepGroups(float dt) {
    for (auto group = groups.begin(); group != groups.end();) {
        const auto next = std::next(group);
        if (!moveGroupAndMembers(*group, dt)) {
            groups.erase(group);
        } else if (!(group->temperature <= 0.0f && !group->members.empty())) {
            melt(*group);
            groups.erase(group);
        }
        group = next;
    }
    mergeGroups();
}

bool PlainSimulation::moveGroupAndMembers(ParticleGroup& group, float dt) {
    const float angle = view.angle * 0.017453292f;
    const Vector2 down = {0.0f * std::cos(angle) - 1.0f * std::sin(angle),
                          0.0f * std::sin(angle) + 1.0f * std::cos(angle)};
    const Vector2 fall = down * settings.gravity;
    const float k = 1.0f - power(1.0f - settings.heatTransferRate, dt);
    const float i = power(settings.particleGroupInterpolation, dt);
    const float e = power(settings.groupExpandSpeed, dt);

    const Vector2 oldCentre = group.centre;
    group.previousVelocity = group.velocity;
    group.colliding = false;
    if (insideView(group.centre) < -(group.radius + 128.0f)) {
        return false;
    }
    if (group.dying) {
        group.killTimer -= dt;
        if (group.killTimer <= 0.0f) {
            return false;
        }
    }
    group.velocity += fall * dt * settings.iceGravityStrenght;
    group.temperature = k * settings.roomTemperature + (1.0f - k) * group.temperature;
    group.radius = (1.0f - e) * group.targetRadius + e * group.radius;
    moveGroup(group, dt);
    for (Particle& member : group.members) {
        member.position += group.centre - oldCentre;
        member.dying = group.dying;
        member.killTimer = group.killTimer;
        const Vector2 place = group.centre + member.groupDirection * member.groupFraction * group.radius;
        member.position.x = i * member.position.x + (1.0f - i) * place.x;
        member.position.y = i * member.position.y + (1.0f - i) * place.y;
        member.temperature = (1.0f - i) * group.temperature + i * member.temperature;
        member.pushVelocity = group.pushVelocity;
    }
    group.pushVelocity = {0.0f, 0.0f};
    return true;
}

void PlainSimulation::moveGroup(ParticleGroup& group, float dt) {
    const Vector2 v = group.velocity + group.pushVelocity;
    if (v.x == 0.0f && v.y == 0.0f) {
        return;
    }
    const Vector2 d = v * dt;
    const float length = lengthOf(d);
    const float step = group.radius * 0.75f;
    if (length <= step) {
        group.centre += d;
        if (collision.test(group.centre, group.radius)) {
            group.colliding = true;
        }
    } else {
        const Vector2 u = d / length;
        float left = length;
        while (left > 0.0f) {
            const bool last = !(left > step);
            group.centre += u * (last ? left : step);
            if (collision.test(group.centre, group.radius)) {
                group.colliding = true;
            }
            if (last) {
                break;
            }
            left -= step;
        }
    }
    const Vector2 n = collision.contactNormal;
    group.velocity -= n * (group.velocity.x * n.x + group.velocity.y * n.y);
}

void PlainSimulation::melt(ParticleGroup& group) {
    while (!group.members.empty()) {
        Particle& member = group.members.front();
        member.velocity = group.velocity;
        member.previousVelocity = group.previousVelocity;
        member.pushVelocity = {0.0f, 0.0f};
        member.temperature = group.temperature;
        member.speed = lengthOf(member.velocity);
        member.inGrid = false;
        member.trail[0] = member.position;
        member.trail[1] = member.position;
        member.trail[2] = member.position;
        member.gridNext = nullptr;
        member.gridPrev = nullptr;
        member.gridCellX = 0;
        member.gridCellY = 0;
        particles.push_front(member);
        group.members.pop_front();
    }
}

void PlainSimulation::mergeGroups() {
    for (auto a = groups.begin(); a != groups.end(); ++a) {
        for (auto b = std::next(a); b != groups.end(); ++b) {
            if (lengthOf(a->centre - b->centre) < a->targetRadius + b->targetRadius + 2.0f) {
                if (a->targetRadius <= b->targetRadius) {
                    b->members.insert(b->members.end(), a->members.begin(), a->members.end());
                    a->members.clear();
                    b->targetRadius = targetRadiusFor(b->members.size());
                } else {
                    a->members.insert(a->members.end(), b->members.begin(), b->members.end());
                    b->members.clear();
                    a->targetRadius = targetRadiusFor(a->members.size());
                }
            }
        }
    }
}

} // namespace tarnwick
