#pragma once

#include "core/Vector2.h"
#include "particles/Particle.h"
#include "particles/ParticleGroup.h"
#include "reference/PlainCollision.h"

#include <cstdint>
#include <list>
#include <unordered_map>

namespace tarnwick {

/// The configuration as it stands after the clamps.
struct PlainSettings {
    float gravity = 0.0f;
    float roomTemperature = 0.0f;
    float heatTransferRate = 0.0f;
    float steamRiseRate = 0.0f;
    float steamScatterRate = 0.0f;
    float particleKillTime = 0.0f;
    float particleGroupInterpolation = 0.0f;
    float groupExpandSpeed = 0.0f;
    float iceGravityStrenght = 0.0f;
};

/// What the simulation sees of the camera and the window.
struct PlainView {
    Vector2 position;
    Vector2 shake;
    float angle = 0.0f; ///< Degrees.
    float zoom = 1.0f;
    float areaX = 800.0f;
    float areaY = 600.0f;
};

/// The simulation of water and ice, read off its rules step by step with lists, loops and recursion, and with
/// data of its own: what the fast code must equal to the last bit.
class PlainSimulation {
public:
    std::list<Particle> particles;
    std::list<ParticleGroup> groups;
    PlainSettings settings;
    PlainView view;
    PlainCollision collision;
    std::uint32_t randomState = 0;

    void createParticles(float x, float y, float radius, int count);
    void tick(float dt);

    /// The particles of one grid cell, newest first.
    using Cell = std::list<Particle*>;
    /// Only cells that hold particles, by column * 1024 + row.
    std::unordered_map<std::uint32_t, Cell> grid;

private:
    std::uint32_t drawInteger();
    float drawFloat();

    void addToGrid(Particle& particle);
    void removeFromGrid(Particle& particle);
    void stepParticle(Particle& particle, float dt, Vector2 gravityStep, float f);
    void moveParticle(Particle& particle, float dt);
    void repulse(Particle& a, Particle& b, Vector2& direction, float& amount, unsigned& count);
    void repulseCell(Particle& particle, int x, int y, Vector2& direction, float& amount, unsigned& count);
    void runAttractions(float dt);
    void pullCluster(const std::list<Particle*>& cluster, float dt);

    void freeze();
    void gather(const Particle& from, ParticleGroup& group, std::list<Particle>& frozen);
    void givePlace(Particle& member);
    void stepGroups(float dt);
    bool moveGroupAndMembers(ParticleGroup& group, float dt);
    void moveGroup(ParticleGroup& group, float dt);
    void melt(ParticleGroup& group);
    void mergeGroups();

    /// Signed inward distance of `point` to the nearest edge of the view, negative outside.
    float insideView(Vector2 point) const;
};

} // namespace tarnwick
