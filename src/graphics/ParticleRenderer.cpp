#include "graphics/ParticleRenderer.h"

#include "core/Comfort.h"
#include "core/CommandRegistry.h"
#include "core/ConfigFile.h"
#include "core/DataFiles.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "graphics/ReadColour.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace tarnwick {

namespace {

constexpr float trailExpansion = 1.0f;          ///< World units: copies on the trail are this much larger.
constexpr std::size_t quadsOfTrailedSprite = 4; ///< The particle and its three last positions.
constexpr float waterTrailShares[3] = {0.5f, 0.25f, 0.125f}; ///< Of the sprite's alpha, newest first.
/// Kept: the last is a tenth of the water's, so that steam leaves almost no third copy.
constexpr float steamTrailShares[3] = {0.5f, 0.25f, 0.0125f};

/// Share of its alpha that a dying particle still has, 0 to 1. The timer may have run below 0.
float fadeOf(const Particle& particle) {
    TARNWICK_LOCATION("ParticleRenderer::fadeOf");
    return particle.dying ? std::max(particle.killTimer / ParticleManager::particleKillTime(), 0.0f) : 1.0f;
}

} // namespace

ParticleRenderer::State ParticleRenderer::state;

constexpr CommandRow ParticleRenderer::commands[] = {
    {"ParticleDraw", CommandVariable{&state.particleDrawEnabled, "ParticleRenderer::conCmdParticleDraw"}},
};

void ParticleRenderer::initialise() {
    TARNWICK_LOCATION("ParticleRenderer::initialise");
    shutdown();
    Log::print("\nInitialising particle renderer..");
    state.particleDrawEnabled = true;
    const ConfigFile config("cfg\\water.cfg");
    readLook(config, "water", state.water);
    readLook(config, "steam", state.steam);
    readLook(config, "ice", state.ice);
    state.steam.expansion = config.getVarAsFloat("steamExpansion");
    state.ice.expansion = config.getVarAsFloat("iceExpansion");
    state.velocityExpansion = std::abs(config.getVarAsFloat("velocityExpansion"));
    state.maxVelocityExpansion = std::abs(config.getVarAsFloat("maxVelocityExpansion"));
    readClearColours();
    CommandRegistry::add(commands);
}

void ParticleRenderer::readLook(const ConfigFile& config, const std::string& kind, Look& look) {
    TARNWICK_LOCATION("ParticleRenderer::readLook");
    if (look.texture == nullptr) {
        look.texture = std::make_unique<GLTexture>(config.getVarAsString(kind + "Texture"));
    }
    look.colour = readColour(config, kind + "_color");
    look.outlineColour = readColour(config, kind + "_outline_color");
    look.outlineSize = config.getVarAsFloat(kind + "_outline_size");
}

/// With the comfort `clearWater` the colours come from a file of their own.
void ParticleRenderer::readClearColours() {
    TARNWICK_LOCATION("ParticleRenderer::readClearColours");
    constexpr const char* fileName = "cfg\\water_clear.cfg";
    if (!Comfort::values().clearWater || !DataFiles::open(fileName).is_open()) {
        return;
    }
    const ConfigFile config(fileName);
    const auto read = [&config](const std::string& kind, Look& look) {
        look.colour = readColour(config, kind + "_color");
        look.outlineColour = readColour(config, kind + "_outline_color");
    };
    read("water", state.water);
    read("steam", state.steam);
    read("ice", state.ice);
}

void ParticleRenderer::shutdown() {
    TARNWICK_LOCATION("ParticleRenderer::shutdown");
    Log::print("\nShutting down particle renderer..");
    state.water.texture.reset();
    state.steam.texture.reset();
    state.ice.texture.reset();
    CommandRegistry::remove(commands);
}

void ParticleRenderer::draw() {
    TARNWICK_LOCATION("ParticleRenderer::draw");
    if (!state.particleDrawEnabled || state.water.texture == nullptr) {
        return;
    }
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    sortParticles();
    drawWaterParticleOutlines(state.waterParticles); // all outlines lie under all sprites
    drawSteamParticleOutlines(state.steamParticles);
    drawIceParticleOutlines(state.iceParticles);
    drawWaterParticles(state.waterParticles);
    drawSteamParticles(state.steamParticles);
    drawIceParticles(state.iceParticles);
}

/// Sorts all particles by kind. Each stands in front of those met before it, so the one met first is drawn
/// last.
void ParticleRenderer::sortParticles() {
    TARNWICK_LOCATION("ParticleRenderer::sortParticles");
    state.waterParticles.clear();
    state.steamParticles.clear();
    state.iceParticles.clear();
    for (const Particle& particle : ParticleManager::particles) {
        (particle.temperature >= steamTemperature ? state.steamParticles : state.waterParticles)
            .push_back(&particle);
    }
    for (const ParticleGroup& group : ParticleGroupMover::groups) {
        for (const Particle& member : group.members) {
            state.iceParticles.push_back(&member);
        }
    }
    std::reverse(state.waterParticles.begin(), state.waterParticles.end());
    std::reverse(state.steamParticles.begin(), state.steamParticles.end());
    std::reverse(state.iceParticles.begin(), state.iceParticles.end());
}

void ParticleRenderer::drawWaterParticleOutlines(const Particles& particles) {
    TARNWICK_LOCATION("ParticleRenderer::drawWaterParticleOutlines");
    drawOutlines(state.water, particles);
}

void ParticleRenderer::drawSteamParticleOutlines(const Particles& particles) {
    TARNWICK_LOCATION("ParticleRenderer::drawSteamParticleOutlines");
    drawOutlines(state.steam, particles);
}

void ParticleRenderer::drawIceParticleOutlines(const Particles& particles) {
    TARNWICK_LOCATION("ParticleRenderer::drawIceParticleOutlines");
    drawOutlines(state.ice, particles);
}

void ParticleRenderer::drawWaterParticles(const Particles& particles) {
    TARNWICK_LOCATION("ParticleRenderer::drawWaterParticles");
    drawTrailedSprites(state.water, particles, waterTrailShares);
}

void ParticleRenderer::drawSteamParticles(const Particles& particles) {
    TARNWICK_LOCATION("ParticleRenderer::drawSteamParticles");
    drawTrailedSprites(state.steam, particles, steamTrailShares);
}

void ParticleRenderer::drawIceParticles(const Particles& particles) {
    TARNWICK_LOCATION("ParticleRenderer::drawIceParticles");
    drawSprites(state.ice, particles, state.ice.expansion + particleRadius, state.ice.colour);
}

void ParticleRenderer::drawOutlines(const Look& look, const Particles& particles) {
    TARNWICK_LOCATION("ParticleRenderer::drawOutlines");
    drawSprites(look, particles, look.outlineSize + particleRadius + look.expansion, look.outlineColour);
}

void ParticleRenderer::drawSprites(const Look& look, const Particles& particles, float size, Colour colour) {
    TARNWICK_LOCATION("ParticleRenderer::drawSprites");
    state.quads.begin(particles.size());
    for (const Particle* particle : particles) {
        const float swell = std::min(state.velocityExpansion * particle->speed, state.maxVelocityExpansion);
        state.quads.addSquare(particle->position, size + swell, colour.faded(fadeOf(*particle)));
    }
    drawPass(look);
}

void ParticleRenderer::drawTrailedSprites(const Look& look,
                                          const Particles& particles,
                                          const float (&trailShares)[3]) {
    TARNWICK_LOCATION("ParticleRenderer::drawTrailedSprites");
    const float baseSize = look.expansion + particleRadius;
    state.quads.begin(particles.size() * quadsOfTrailedSprite);
    for (const Particle* particle : particles) {
        const float swell = std::min(state.velocityExpansion * particle->speed, state.maxVelocityExpansion);
        const float halfSize = baseSize + swell;
        const Colour colour = look.colour.faded(fadeOf(*particle));
        state.quads.addSquare(particle->position, halfSize, colour);
        for (int age = 0; age < 3; ++age) {
            const Vector2 place = particle->trail[age];
            state.quads.addSquare(place, halfSize + trailExpansion, colour.faded(trailShares[age]));
        }
    }
    drawPass(look);
}

/// Draws the gathered quads with the kind's sprite.
void ParticleRenderer::drawPass(const Look& look) {
    TARNWICK_LOCATION("ParticleRenderer::drawPass");
    if (look.texture != nullptr) {
        glBindTexture(GL_TEXTURE_2D, look.texture->textureId);
    }
    state.quads.draw();
}

} // namespace tarnwick
