#include "particles/ClusterSweep.h"

#include "core/Random.h"
#include "particles/ParticleMover.h"
#include "support/ModuleTest.h"

#include <list>
#include <vector>

namespace tarnwick {

class ClusterSweepTest : public ModuleTest {
protected:
    /// Runs the sweep, and `ParticleMover::groupParticles` on lists, and compares every cluster.
    static void expectPlainClusters(ParticleList& particles) {
        const std::uint32_t before = getRandomState();
        std::list<Particle*> rest;
        for (Particle& particle : particles) {
            if (randomInt() % 2 == 1) {
                rest.push_back(&particle);
            } else {
                rest.push_front(&particle);
            }
        }
        seedRandom(before);
        sweep.start(particles);
        while (!rest.empty()) {
            std::list<Particle*> group;
            group.splice(group.end(), rest, rest.begin());
            ParticleMover::groupParticles(group, rest, 40.0f);
            std::list<Particle*> found;
            for (const ClusterSweep::Entry& entry : sweep.nextCluster()) {
                found.push_back(entry.particle);
            }
            ASSERT_EQ(found, group);
        }
        ASSERT_TRUE(sweep.nextCluster().empty());
    }

    static ClusterSweep sweep;
};

ClusterSweep ClusterSweepTest::sweep;

TEST_F(ClusterSweepTest, NobodyMakesNoCluster) {
    ParticleList particles;
    sweep.start(particles);

    EXPECT_TRUE(sweep.nextCluster().empty());
}

TEST_F(ClusterSweepTest, ClustersAndTheirOrderAreThoseOfThePlainSweep) {
    for (const float spread : {30.0f, 120.0f, 400.0f, 1500.0f, 30000.0f}) {
        ParticleList particles(400);
        for (Particle& particle : particles) {
            particle.position = {randomFloat() * spread, randomFloat() * spread * 0.5f};
        }

        expectPlainClusters(particles);
    }
}

TEST_F(ClusterSweepTest, ExactlyFortyUnitsAreWithinReach) {
    ParticleList particles(2);
    particles.back().position = {24.0f, 32.0f};
    sweep.start(particles);
    EXPECT_EQ(sweep.nextCluster().size(), 2u);

    particles.back().position = {24.0f, 32.00001f};
    sweep.start(particles);
    EXPECT_EQ(sweep.nextCluster().size(), 1u);
}

} // namespace tarnwick
