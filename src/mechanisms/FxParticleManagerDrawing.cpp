#include "core/GLTexture.h"
#include "core/LocationStack.h"
#include "graphics/PlainDrawing.h"
#include "mechanisms/FxParticleManager.h"

#include <algorithm>
#include <functional>

namespace tarnwick {

namespace {

/// The order of the heap: what has the greatest texture pointer comes out first.
struct ByTexture {
    // no location: called some hundred thousand times a frame
    bool operator()(const FxParticle* a, const FxParticle* b) const {
        return std::less<>()(a->texture, b->texture);
    }
};

/// GL name 0, plain colour, for a particle without texture.
std::uint32_t textureIdOf(const FxParticle& particle) {
    TARNWICK_LOCATION("FxParticleManager::textureIdOf");
    return particle.texture != nullptr ? particle.texture->textureId : 0;
}

} // namespace

void FxParticleManager::draw() {
    TARNWICK_LOCATION("FxParticleManager::draw");
    PlainDrawing::beginSprites();
    fillDrawQueue();
    bool alphaBlending = true;
    PlainDrawing::setSpritesCover(alphaBlending);
    while (!state.drawQueue.empty()) {
        drawBatch(alphaBlending);
    }
    PlainDrawing::endSprites();
}

void FxParticleManager::fillDrawQueue() {
    TARNWICK_LOCATION("FxParticleManager::fillDrawQueue");
    for (const FxParticle& particle : particles) {
        state.drawQueue.push_back(&particle);
        std::push_heap(state.drawQueue.begin(), state.drawQueue.end(), ByTexture());
    }
}

const FxParticle& FxParticleManager::takeTop() {
    TARNWICK_LOCATION("FxParticleManager::takeTop");
    std::pop_heap(state.drawQueue.begin(), state.drawQueue.end(), ByTexture());
    const FxParticle* const top = state.drawQueue.back();
    state.drawQueue.pop_back();
    return *top;
}

/// Draws all particles on top of the queue that share the GL texture of the first, with one binding. A change
/// of blending between two of them ends what one call of the GL draws, not the batch.
void FxParticleManager::drawBatch(bool& alphaBlending) {
    TARNWICK_LOCATION("FxParticleManager::drawBatch");
    const std::uint32_t textureId = textureIdOf(*state.drawQueue.front());
    PlainDrawing::bindPicture(textureId);
    state.quads.begin(state.drawQueue.size());
    while (!state.drawQueue.empty() && textureIdOf(*state.drawQueue.front()) == textureId) {
        const FxParticle& particle = takeTop();
        if (particle.useAlphaBlending != alphaBlending) {
            state.quads.draw();
            state.quads.begin(state.drawQueue.size() + 1);
            alphaBlending = particle.useAlphaBlending;
            PlainDrawing::setSpritesCover(alphaBlending);
        }
        Colour colour = particle.color;
        colour.alpha = colour.alpha * particle.timeLeft / particle.lifeTime;
        state.quads.addSquare(particle.position, particle.size * 0.5f, colour);
    }
    state.quads.draw();
}

} // namespace tarnwick
