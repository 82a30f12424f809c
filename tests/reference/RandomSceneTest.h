#pragma once

#include "reference/PlainSimulation.h"
#include "support/ModuleTest.h"

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

namespace tarnwick {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool sanitised = true;
#else
constexpr bool sanitised = false;
#endif

/// Numbers for building a scene; apart from the generator of the game, whose draws are part of the result.
class Dice {
public:
    explicit Dice(std::uint32_t seed)
        : engine(seed) {}

    float between(float low, float high) { return std::uniform_real_distribution<float>(low, high)(engine); }
    int whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine); }
    bool chance(float share) { return between(0.0f, 1.0f) < share; }

private:
    std::mt19937 engine;
};

/// Runs random scenes of water, steam and ice twice: by the modules, and by their plain reading. A test that
/// adds something to the scenes overrides the hooks; what they draw of the dice makes other scenes, equal for
/// both.
class RandomSceneTest : public ModuleTest {
protected:
    RandomSceneTest();
    ~RandomSceneTest() override;

    /// Runs one scene side by side and stops at the first difference.
    void runScene(std::uint32_t seed, int count, int ticks);

    /// Adds to `Level::polygons` before the tree is built.
    virtual void addMechanisms(Dice& dice);
    /// Between two ticks.
    virtual void meddleWithMechanisms(Dice& dice);
    /// One tick of both.
    virtual void runTick(float dt);
    /// The first difference of what the hooks added, or an empty text.
    virtual std::string mechanismsDifference() const;

    PlainSimulation plain;

private:
    void buildLevel(Dice& dice);
    void configure(Dice& dice);
    void addParticle(const Particle& particle);
    void fillScene(Dice& dice, int count);
    void moveCamera(Dice& dice);
    void meddle(Dice& dice);
    void refill(Dice& dice);
    void meddleWithGroups(Dice& dice);
    static void switchEdges(Dice& dice);
    std::string gridDifference() const;
    std::string anyDifference() const;

    PlainView view;
    std::size_t wanted = 0; ///< Particles of the scene, free or frozen.
};

} // namespace tarnwick
