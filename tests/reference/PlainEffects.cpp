#include "reference/PlainEffects.h"

#include "reference/PlainRandom.h"

#include <cmath>

namespace tarnwick {

float PlainEffects::drawFloat() {
    randomState = plainRandomStep(randomState);
    return static_cast<float>((randomState & 0xFFFFFFu) / 16777215.0);
}

void PlainEffects::spawn(const PlainEmitter& emitter) {
    if (emitter.textures == 0) {
        return;
    }
    PlainEffect particle;
    particle.useAlphaBlending = emitter.useAlphaBlending;
    particle.x = emitter.x;
    particle.y = emitter.y;

    float r = drawFloat();
    const float angle = r * emitter.spread - emitter.spread * 0.5f;
    const float directionX = emitter.directionX * std::cos(angle) - emitter.directionY * std::sin(angle);
    const float directionY = emitter.directionX * std::sin(angle) + emitter.directionY * std::cos(angle);

    r = drawFloat();
    for (int channel = 0; channel < 4; ++channel) {
        particle.color[channel] = (1.0f - r) * emitter.color[1][channel] + r * emitter.color[0][channel];
    }

    r = drawFloat();
    const float speed = (1.0f - r) * emitter.velocity[1] + r * emitter.velocity[0];
    particle.velocityX = directionX * speed;
    particle.velocityY = directionY * speed;

    r = drawFloat();
    particle.gravity = (1.0f - r) * emitter.gravity[1] + r * emitter.gravity[0];

    r = drawFloat();
    particle.size = (1.0f - r) * emitter.size[1] + r * emitter.size[0];

    r = drawFloat();
    particle.lifeTime = (1.0f - r) * emitter.liveTime[1] + r * emitter.liveTime[0];
    particle.timeLeft = particle.lifeTime;

    randomState = plainRandomStep(randomState);
    particle.emitter = &emitter;
    particle.texture = randomState % emitter.textures;
    particles.push_back(particle);
}

void PlainEffects::burst(const PlainEmitter& emitter) {
    for (unsigned i = 0; i < emitter.burstSize; ++i) {
        spawn(emitter);
    }
}

void PlainEffects::tick(float dt) {
    const float viewX = view.position.x + view.shake.x;
    const float viewY = view.position.y + view.shake.y;
    const float reach = view.areaX * 0.5f * view.zoom;
    for (PlainEmitter& emitter : emitters) {
        if (emitter.x < viewX - reach || emitter.x > viewX + reach || emitter.y < viewY - reach ||
            emitter.y > viewY + reach || !emitter.active) {
            continue;
        }
        emitter.timer += dt;
        while (!(emitter.timer < emitter.frequency)) {
            emitter.timer -= emitter.frequency;
            spawn(emitter);
        }
    }

    const float angle = view.angle * 0.017453292f;
    const float downX = 0.0f * std::cos(angle) - 1.0f * std::sin(angle);
    const float downY = 0.0f * std::sin(angle) + 1.0f * std::cos(angle);
    const float stepX = downX * gravity * dt;
    const float stepY = downY * gravity * dt;
    for (auto place = particles.begin(); place != particles.end();) {
        place->timeLeft -= dt;
        if (place->timeLeft <= 0.0f) {
            place = particles.erase(place);
            continue;
        }
        place->x += place->velocityX * dt;
        place->y += place->velocityY * dt;
        place->velocityX += stepX * place->gravity * dt;
        place->velocityY += stepY * place->gravity * dt;
        ++place;
    }
}

} // namespace tarnwick
