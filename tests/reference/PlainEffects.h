#pragma once

#include "reference/PlainSimulation.h"

#include <cstdint>
#include <list>

namespace tarnwick {

/// An emitter by its rules alone; its pictures are only counted.
struct PlainEmitter {
    float x = 0.0f;
    float y = 0.0f;
    float directionX = 1.0f;
    float directionY = 0.0f;
    float frequency = 1.0f;
    float timer = 0.0f;
    float spread = 0.0f;
    unsigned burstSize = 16;
    bool active = true;
    bool useAlphaBlending = true;
    float velocity[2] = {0.0f, 0.0f};
    float size[2] = {0.0f, 0.0f};
    float liveTime[2] = {1.0f, 1.0f};
    float gravity[2] = {0.0f, 0.0f};
    float color[2][4] = {{1.0f, 1.0f, 1.0f, 1.0f}, {1.0f, 1.0f, 1.0f, 1.0f}};
    unsigned textures = 0;
};

struct PlainEffect {
    bool useAlphaBlending = true;
    float x = 0.0f;
    float y = 0.0f;
    float velocityX = 0.0f;
    float velocityY = 0.0f;
    float color[4] = {0.0f, 0.0f, 0.0f, 0.0f};
    float size = 0.0f;
    float lifeTime = 0.0f;
    float timeLeft = 0.0f;
    float gravity = 0.0f;
    const PlainEmitter* emitter = nullptr;
    unsigned texture = 0; ///< Of the emitter's, by its place.
};

/// Emitters and effect particles, read off their rules step by step with data of its own: what the game's
/// must equal to the last bit.
class PlainEffects {
public:
    std::list<PlainEmitter> emitters;
    std::list<PlainEffect> particles; ///< Oldest first.
    PlainView view;
    float gravity = 0.0f; ///< World units per second squared.
    std::uint32_t randomState = 0;

    void tick(float dt);
    void burst(const PlainEmitter& emitter);

private:
    float drawFloat();
    void spawn(const PlainEmitter& emitter);
};

} // namespace tarnwick
