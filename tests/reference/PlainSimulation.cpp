#include "reference/PlainSimulation.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace tarnwick {

namespace {

float lengthOf(Vector2 v) {
    return std::sqrt(v.x * v.x + v.y * v.y);
}

float power(float base, float exponent) {
    return static_cast<float>(std::pow(static_cast<double>(base), static_cast<double>(exponent)));
}

void normalise(Vector2& v) {
    if (v.x == 0.0f && v.y == 0.0f) {
        v = {1.0f, 0.0f};
    } else {
        v = v / lengthOf(v);
    }
}

Vector2 rotated(Vector2 v, float angle) {
    return {v.x * std::cos(angle) - v.y * std::sin(angle), v.x * std::sin(angle) + v.y * std::cos(angle)};
}

} // namespace

std::uint32_t PlainSimulation::drawInteger() {
    const auto a = static_cast<long double>(32452843.11); // double constants
    const auto b = static_cast<long double>(275604541.11);
    const auto c = static_cast<long double>(0.31830987f); // a float constant
    const long double t = static_cast<long double>(randomState) * a + b;
    const std::uint32_t s1 = static_cast<std::uint32_t>(static_cast<std::int64_t>(t));
    const long double f = static_cast<long double>(s1) * a + b + static_cast<long double>(s1) * c;
    randomState = std::bit_cast<std::uint32_t>(static_cast<float>(f));
    return randomState;
}

float PlainSimulation::drawFloat() {
    return static_cast<float>((drawInteger() & 0xFFFFFFu) / 16777215.0);
}

void PlainSimulation::createParticles(float x, float y, float radius, int count) {
    for (int i = 0; i < count; ++i) {
        const float r = drawFloat() * radius;
        Vector2 d;
        d.x = drawFloat() - 0.5f;
        d.y = drawFloat() - 0.5f;
        normalise(d);
        Particle particle;
        particle.position = {x + r * d.x, y + r * d.y};
        particle.trail[0] = particle.position;
        particle.trail[1] = particle.position;
        particle.trail[2] = particle.position;
        particle.temperature = settings.roomTemperature;
        particles.push_front(particle);
    }
}

float PlainSimulation::insideView(Vector2 point) const {
    const float hx = view.areaX * view.zoom * 0.5f;
    const float hy = view.areaY * view.zoom * 0.5f;
    const Vector2 corners[4] = {{-hx, -hy}, {hx, -hy}, {hx, hy}, {-hx, hy}};
    const Vector2 normals[4] = {{0.0f, 1.0f}, {-1.0f, 0.0f}, {0.0f, -1.0f}, {1.0f, 0.0f}};
    const float angle = view.angle * 0.017453292f;
    float least = 0.0f;
    for (int i = 0; i < 4; ++i) {
        const Vector2 corner = rotated(corners[i], angle) + (view.position + view.shake);
        const Vector2 normal = rotated(normals[i], angle);
        const Vector2 to = point - corner;
        const float distance = to.x * normal.x + to.y * normal.y;
        least = i == 0 ? distance : std::min(least, distance);
    }
    return least;
}

void PlainSimulation::tick(float dt) {
    const Vector2 gravityStep = rotated({0.0f, 1.0f}, view.angle * 0.017453292f) * dt * settings.gravity;
    for (Particle& particle : particles) {
        removeFromGrid(particle);
        addToGrid(particle);
    }
    const float f = power(1.0f - settings.heatTransferRate, dt);
    for (auto place = particles.begin(); place != particles.end();) {
        const auto next = std::next(place);
        if (insideView(place->position) < -130.0f) {
            removeFromGrid(*place);
            particles.erase(place);
            place = next;
            continue;
        }
        bool gone = false;
        if (place->dying) {
            place->killTimer -= dt;
            if (place->killTimer <= 0.0f) {
                removeFromGrid(*place);
                gone = true;
            }
        }
        stepParticle(*place, dt, gravityStep, f);
        if (gone) {
            particles.erase(place);
        }
        place = next;
    }
    runAttractions(dt);
    freeze();
    stepGroups(dt);
}

void PlainSimulation::stepParticle(Particle& particle, float dt, Vector2 gravityStep, float f) {
    particle.previousVelocity = particle.velocity;
    if (particle.temperature >= 100.0f) {
        particle.velocity -= gravityStep * settings.steamRiseRate;
        const Vector2 scatter = gravityStep * settings.steamScatterRate;
        particle.velocity += rotated(scatter, drawFloat() * 6.2831855f);
    } else {
        particle.velocity += gravityStep;
    }
    particle.temperature = particle.temperature * f + settings.roomTemperature * (1.0f - f);
    particle.trail[2] = particle.trail[1];
    particle.trail[1] = particle.trail[0];
    particle.trail[0] = particle.position;
    moveParticle(particle, dt);
    particle.speed = lengthOf(particle.velocity + particle.pushVelocity);
    particle.pushVelocity = {0.0f, 0.0f};
}

void PlainSimulation::addToGrid(Particle& particle) {
    if (particle.inGrid) {
        return;
    }
    const float originX = view.position.x + view.shake.x - 512.0f;
    const float originY = view.position.y + view.shake.y - 512.0f;
    const std::int32_t i = static_cast<std::int32_t>(particle.position.x - originX);
    const std::int32_t j = static_cast<std::int32_t>(particle.position.y - originY);
    const std::uint32_t column = static_cast<std::uint32_t>(i) >> 1;
    const std::uint32_t row = static_cast<std::uint32_t>(j) >> 1;
    if (column >= 1024 || row >= 1024) {
        return;
    }
    particle.gridCellX = column;
    particle.gridCellY = row;
    particle.inGrid = true;
    grid[column * 1024 + row].push_front(&particle);
}

void PlainSimulation::removeFromGrid(Particle& particle) {
    if (!particle.inGrid) {
        return;
    }
    const std::uint32_t cell = particle.gridCellX * 1024 + particle.gridCellY;
    grid[cell].remove(&particle);
    if (grid[cell].empty()) {
        grid.erase(cell);
    }
    particle.inGrid = false;
}

void PlainSimulation::moveParticle(Particle& particle, float dt) {
    const Vector2 v = particle.velocity + particle.pushVelocity;
    if (v.x == 0.0f && v.y == 0.0f) {
        return;
    }
    const Vector2 d = v * dt;
    const float length = lengthOf(d);
    if (length <= 1.7f) {
        particle.position += d;
        collision.test(particle.position, 2.0f);
    } else {
        const Vector2 u = d / length;
        float left = std::min(length, 15.0f);
        while (left > 0.0f) {
            if (left > 1.7f) {
                particle.position += u * 1.7f;
                collision.test(particle.position, 2.0f);
                left -= 1.7f;
            } else {
                particle.position += u * left;
                collision.test(particle.position, 2.0f);
                break;
            }
        }
    }
    const Vector2 n = collision.contactNormal;
    const float s = collision.contactFriction;
    particle.velocity -= n * (particle.velocity.x * n.x + particle.velocity.y * n.y);
    particle.velocity *= power(s, dt);

    Vector2 direction;
    float amount = 0.0f;
    unsigned count = 0;
    const int x = static_cast<int>(particle.gridCellX);
    const int y = static_cast<int>(particle.gridCellY);
    const int visits[7][2] = {{x, y},     {x - 1, y},     {x - 1, y + 1}, {x - 1, y - 1},
                              {x + 1, y}, {x + 1, y + 1}, {x + 1, y - 1}};
    for (const auto& visit : visits) {
        repulseCell(particle, visit[0], visit[1], direction, amount, count);
    }
    if (count > 0) {
        direction = direction / static_cast<float>(count);
        amount = amount / static_cast<float>(count);
        normalise(direction);
    }
    amount *= std::min(dt / 0.02f, 1.0f);
    if (amount > 0.0f) {
        amount = std::min(amount, 1.7f);
        particle.position += direction * amount;
        collision.test(particle.position, 2.0f);
    }
}

void PlainSimulation::repulseCell(
    Particle& particle, int x, int y, Vector2& direction, float& amount, unsigned& count) {
    if (x < 0 || y < 0 || x > 1023 || y > 1023) {
        return;
    }
    const auto cell = grid.find(static_cast<std::uint32_t>(x * 1024 + y));
    if (cell == grid.end()) {
        return;
    }
    for (Particle* other : cell->second) {
        repulse(particle, *other, direction, amount, count);
    }
}

void PlainSimulation::repulse(Particle& a, Particle& b, Vector2& direction, float& amount, unsigned& count) {
    if (&a == &b) {
        return;
    }
    const Vector2 d = a.position - b.position;
    const float r = lengthOf(d);
    if (r >= 4.0f) {
        return;
    }
    if (r > 1e-05f) {
        direction += d / r;
        count += 1;
        amount += 4.0f - r;
    }
    const Vector2 push{(a.pushVelocity.x + b.pushVelocity.x) / 2.0f,
                       (a.pushVelocity.y + b.pushVelocity.y) / 2.0f};
    const Vector2 velocity{(a.velocity.x + b.velocity.x) / 2.0f, (a.velocity.y + b.velocity.y) / 2.0f};
    const float temperature = (a.temperature + b.temperature) / 2.0f;
    a.pushVelocity = push;
    b.pushVelocity = push;
    a.velocity = velocity;
    b.velocity = velocity;
    a.temperature = temperature;
    b.temperature = temperature;
}

void PlainSimulation::runAttractions(float dt) {
    std::list<Particle*> rest;
    for (Particle& particle : particles) {
        if (drawInteger() % 2 == 1) {
            rest.push_back(&particle);
        } else {
            rest.push_front(&particle);
        }
    }
    while (!rest.empty()) {
        std::list<Particle*> cluster;
        cluster.push_back(rest.front());
        rest.pop_front();
        for (auto q = rest.begin(); q != rest.end();) {
            const auto next = std::next(q);
            for (const Particle* member : cluster) {
                const float dx = (*q)->position.x - member->position.x;
                const float dy = (*q)->position.y - member->position.y;
                if (dx * dx + dy * dy <= 40.0f * 40.0f) {
                    cluster.push_back(*q);
                    rest.erase(q);
                    break;
                }
            }
            q = next;
        }
        pullCluster(cluster, dt);
    }
}

void PlainSimulation::pullCluster(const std::list<Particle*>& cluster, float dt) {
    Vector2 c;
    for (const Particle* member : cluster) {
        c += member->position;
    }
    c = c / static_cast<float>(cluster.size());
    for (Particle* member : cluster) {
        const Vector2 e = c - member->position;
        const float r = lengthOf(e);
        if (r > 0.0001f) {
            const Vector2 u = e / r;
            const float m = std::min((r - 4.0f) * (dt / 0.75f), 1.5f);
            const float jx = 0.1f * (drawFloat() - 0.5f);
            const float jy = 0.1f * (drawFloat() - 0.5f);
            if (m > 0.0f) {
                member->position += u * m + Vector2{jx, jy};
                collision.test(member->position, 2.0f);
            }
        }
    }
}

} // namespace tarnwick
