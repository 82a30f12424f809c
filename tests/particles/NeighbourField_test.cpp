#include "particles/NeighbourField.h"

#include "core/Random.h"
#include "game/Camera.h"
#include "particles/ParticleManager.h"
#include "particles/ParticleMover.h"
#include "support/ModuleTest.h"

#include <cmath>

namespace tarnwick {

class NeighbourFieldTest : public ModuleTest {
protected:
    static void fill(int count, bool withPush) {
        for (int i = 0; i < count; ++i) {
            Particle& particle = ParticleManager::particles.emplace_back();
            particle.position = {randomFloat() * 20.0f, randomFloat() * 20.0f};
            particle.velocity = {randomFloat() * 100.0f, randomFloat() - 0.5f};
            particle.temperature = randomFloat() * 100.0f;
            if (withPush) {
                particle.pushVelocity = {randomFloat(), randomFloat()};
            }
        }
        ParticleMover::rebuildGrid(ParticleManager::particles, Camera::view());
    }
    /// Lets every particle visit its neighbours, in the field and by the chains of the grid, and compares.
    static void expectPlainVisits() {
        ParticleList& particles = ParticleManager::particles;
        NeighbourField field;
        field.load(particles);
        std::size_t index = 0;
        for (Particle& particle : particles) {
            const std::uint32_t slot = field.slotOf(index++);
            Body body = field.body(slot);
            field.hide(slot);
            const Overlap overlap = field.meetNeighbours(particle.gridCellX, particle.gridCellY, body);
            field.put(slot, body);
            Vector2 direction;
            float amount = 0.0f;
            ParticleMover::doParticleRepulsions(particle, direction, amount);
            ASSERT_EQ(overlap.direction, direction);
            ASSERT_EQ(overlap.amount, amount);
        }
        ParticleList copy = particles;
        field.unload(particles);
        auto plain = copy.begin();
        for (const Particle& particle : particles) {
            ASSERT_EQ(particle.position, plain->position);
            ASSERT_EQ(particle.velocity, plain->velocity);
            ASSERT_EQ(particle.pushVelocity, plain->pushVelocity);
            ASSERT_EQ(particle.temperature, plain->temperature);
            ++plain;
        }
    }
};

TEST_F(NeighbourFieldTest, AVisitIsThatAlongTheChains) {
    fill(500, false);

    expectPlainVisits();
}

TEST_F(NeighbourFieldTest, PushVelocitiesAreSharedToo) {
    fill(300, true);

    expectPlainVisits();
}

TEST_F(NeighbourFieldTest, AHiddenOrDroppedBodyIsMetByNobody) {
    ParticleList& particles = ParticleManager::particles;
    for (int i = 0; i < 3; ++i) {
        particles.emplace_back().position = {1.0f + static_cast<float>(i), 1.0f};
    }
    ParticleMover::rebuildGrid(particles, Camera::view());
    NeighbourField field;
    field.load(particles);
    field.hide(field.slotOf(0));
    field.drop(2);
    Body body = field.body(field.slotOf(1));
    field.hide(field.slotOf(1));

    const Overlap overlap = field.meetNeighbours(256, 256, body);

    EXPECT_EQ(overlap.amount, 0.0f);
    EXPECT_EQ(overlap.direction, Vector2{});
}

TEST_F(NeighbourFieldTest, UnloadingSkipsWhoWasErased) {
    ParticleList& particles = ParticleManager::particles;
    for (int i = 0; i < 3; ++i) {
        particles.emplace_back().position = {10.0f * static_cast<float>(i), 0.0f};
    }
    ParticleMover::rebuildGrid(particles, Camera::view());
    NeighbourField field;
    field.load(particles);
    Body last = field.body(field.slotOf(2));
    last.position.x = 99.0f;
    field.put(field.slotOf(2), last);
    field.drop(1);
    particles.erase(std::next(particles.begin()));

    field.unload(particles);

    EXPECT_EQ(particles.front().position.x, 0.0f);
    EXPECT_EQ(particles.back().position.x, 99.0f);
}

} // namespace tarnwick
