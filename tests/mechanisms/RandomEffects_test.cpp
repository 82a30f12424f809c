// Emitters and effect particles beside their plain reading, on seeded random scenes: every field equal, bit
// for bit.

#include "core/Random.h"
#include "game/Camera.h"
#include "graphics/GLWindow.h"
#include "mechanisms/FxParticleManager.h"
#include "reference/PlainEffects.h"
#include "reference/RandomWindow.h"
#include "support/ModuleTest.h"
#include "support/SceneAccess.h"

#include <algorithm>
#include <array>
#include <bit>
#include <random>
#include <string>

namespace tarnwick {

namespace {

/// Numbers for building a scene; apart from the generator of the game, whose draws are part of the result.
class Dice {
public:
    explicit Dice(std::uint32_t seed)
        : engine(seed) {}

    float between(float low, float high) { return std::uniform_real_distribution<float>(low, high)(engine); }
    unsigned whole(unsigned low, unsigned high) {
        return std::uniform_int_distribution<unsigned>(low, high)(engine);
    }
    bool chance(float share) { return between(0.0f, 1.0f) < share; }

private:
    std::mt19937 engine;
};

using Words = std::array<std::uint32_t, 14>;

std::uint32_t bits(float value) {
    return std::bit_cast<std::uint32_t>(value);
}

/// The fields of a particle as words, so that comparing is comparing bits: -0 differs from 0.
Words wordsOf(const FxParticle& particle, std::uint32_t texture) {
    return {bits(particle.position.x),
            bits(particle.position.y),
            bits(particle.velocity.x),
            bits(particle.velocity.y),
            bits(particle.color.red),
            bits(particle.color.green),
            bits(particle.color.blue),
            bits(particle.color.alpha),
            bits(particle.size),
            bits(particle.lifeTime),
            bits(particle.timeLeft),
            bits(particle.gravity),
            particle.useAlphaBlending ? 1u : 0u,
            texture};
}

Words wordsOf(const PlainEffect& particle) {
    return {bits(particle.x),
            bits(particle.y),
            bits(particle.velocityX),
            bits(particle.velocityY),
            bits(particle.color[0]),
            bits(particle.color[1]),
            bits(particle.color[2]),
            bits(particle.color[3]),
            bits(particle.size),
            bits(particle.lifeTime),
            bits(particle.timeLeft),
            bits(particle.gravity),
            particle.useAlphaBlending ? 1u : 0u,
            particle.texture};
}

} // namespace

class RandomEffectsTest : public ModuleTest {
protected:
    ~RandomEffectsTest() override { GLWindow::close(); }

    void addEmitter(Dice& dice) {
        PlainEmitter& twin = plain.emitters.emplace_back();
        FxParticleEmitter emitter;
        twin.x = emitter.position.x = dice.between(-700.0f, 700.0f);
        twin.y = emitter.position.y = dice.between(-700.0f, 700.0f);
        if (dice.chance(0.2f)) { // on the edge of the view as the scene begins
            twin.x = emitter.position.x = -400.0f;
        }
        emitter.setDirection(dice.between(-1.0f, 1.0f), dice.between(-1.0f, 1.0f));
        twin.directionX = emitter.direction.x;
        twin.directionY = emitter.direction.y;
        emitter.setFrequency(dice.chance(0.2f) ? 0.0f : dice.between(0.001f, 0.3f));
        twin.frequency = emitter.frequency;
        twin.spread = emitter.spread = dice.chance(0.3f) ? 0.0f : dice.between(-7.0f, 7.0f);
        twin.burstSize = emitter.burstSize = dice.whole(0, 40);
        twin.useAlphaBlending = emitter.useAlphaBlending = dice.chance(0.5f);
        addRanges(dice, emitter, twin);
        twin.textures = dice.whole(0, 8);
        for (unsigned i = 0; i < twin.textures; ++i) {
            emitter.addTexture("gfx\\" + std::to_string(i) + ".tga");
        }
        FxParticleManager::addEmitter(emitter);
    }

    static void addRanges(Dice& dice, FxParticleEmitter& emitter, PlainEmitter& twin) {
        twin.velocity[0] = emitter.velocity1 = dice.between(-300.0f, 300.0f);
        twin.velocity[1] = emitter.velocity2 = dice.between(-300.0f, 300.0f);
        twin.size[0] = emitter.size1 = dice.between(-5.0f, 20.0f);
        twin.size[1] = emitter.size2 = dice.between(-5.0f, 20.0f);
        emitter.setLiveTime(dice.between(-0.1f, 1.0f), dice.between(0.0f, 1.0f));
        twin.liveTime[0] = emitter.liveTime1;
        twin.liveTime[1] = emitter.liveTime2;
        twin.gravity[0] = emitter.gravity1 = dice.between(-20.0f, 60.0f);
        twin.gravity[1] = emitter.gravity2 = dice.between(-20.0f, 60.0f);
        Colour* const ends[] = {&emitter.color1, &emitter.color2};
        for (int end = 0; end < 2; ++end) {
            *ends[end] = {dice.between(0.0f, 1.0f), dice.between(0.0f, 1.0f), dice.between(0.0f, 1.0f),
                          dice.between(0.0f, 1.0f)};
            twin.color[end][0] = ends[end]->red;
            twin.color[end][1] = ends[end]->green;
            twin.color[end][2] = ends[end]->blue;
            twin.color[end][3] = ends[end]->alpha;
        }
    }

    void moveCamera(Dice& dice) {
        PlainView& view = plain.view;
        view.position += Vector2{dice.between(-20.0f, 20.0f), dice.between(-20.0f, 20.0f)};
        view.shake =
            dice.chance(0.5f) ? Vector2{dice.between(-5.0f, 5.0f), dice.between(-5.0f, 5.0f)} : Vector2{};
        view.angle = dice.between(-180.0f, 180.0f);
        view.zoom = dice.between(0.8f, 2.5f);
        SceneAccess::placeCamera(view.position, view.shake, view.angle, view.zoom);
    }

    /// What triggers do to emitters between two ticks.
    void meddle(Dice& dice) {
        auto twin = plain.emitters.begin();
        for (FxParticleEmitter& emitter : FxParticleManager::emitters) {
            if (dice.chance(0.05f)) {
                emitter.active = twin->active = dice.chance(0.6f);
            }
            if (dice.chance(0.03f)) {
                emitter.createBurst();
                plain.burst(*twin);
            }
            ++twin;
        }
    }

    /// The place of a particle's texture in its emitter.
    static std::uint32_t texturePlace(const FxParticle& particle) {
        for (const FxParticleEmitter& emitter : FxParticleManager::emitters) {
            for (std::uint32_t place = 0; place < emitter.textures.size(); ++place) {
                if (particle.texture == &emitter.textures[place]) {
                    return place;
                }
            }
        }
        return 0xFFFFFFFFu;
    }

    std::string difference() const {
        if (FxParticleManager::particles.size() != plain.particles.size()) {
            return "number of particles";
        }
        auto twin = plain.particles.begin();
        for (const FxParticle& particle : FxParticleManager::particles) {
            if (wordsOf(particle, texturePlace(particle)) != wordsOf(*twin)) {
                return "a particle";
            }
            ++twin;
        }
        auto emitterTwin = plain.emitters.begin();
        for (const FxParticleEmitter& emitter : FxParticleManager::emitters) {
            if (bits(emitter.timer) != bits(emitterTwin->timer)) {
                return "the timer of an emitter";
            }
            ++emitterTwin;
        }
        return getRandomState() == plain.randomState ? "" : "random state";
    }

    /// Runs one scene side by side and stops at the first difference.
    void runScene(std::uint32_t seed) {
        FxParticleManager::particles.clear();
        FxParticleManager::emitters.clear();
        plain = {};
        const RandomWindow window(seed);
        GLWindow::close();
        GLWindow::createHeadless(window.width, window.height);
        plain.view.areaX = window.areaX();
        Dice dice(seed);
        SceneSettings settings;
        settings.gravity = plain.gravity = dice.between(0.0f, 1500.0f);
        SceneAccess::configure(settings);
        for (unsigned i = dice.whole(1, 8); i > 0; --i) {
            addEmitter(dice);
        }
        seedRandom(seed);
        plain.randomState = seed;
        for (int tick = 0; tick < 60; ++tick) {
            const float dt = dice.between(1.0f / 200.0f, 1.0f / 30.0f);
            if (tick > 0) {
                moveCamera(dice);
            } else {
                SceneAccess::placeCamera({}, {}, 0.0f, 1.0f);
            }
            meddle(dice);
            FxParticleManager::run(dt, Camera::view());
            plain.tick(dt);
            ASSERT_EQ(difference(), "") << "seed " << seed << ", tick " << tick;
        }
        mostParticles = std::max(mostParticles, plain.particles.size());
    }

    PlainEffects plain;
    std::size_t mostParticles = 0; ///< At the end of a scene.
};

TEST_F(RandomEffectsTest, AScenesEffectsAreThePlainReadingToTheLastBit) {
    for (std::uint32_t seed = 1; seed <= 100; ++seed) {
        runScene(seed);
        ASSERT_FALSE(HasFatalFailure());
    }
    EXPECT_GT(mostParticles, 500u); // the scenes are no empty ones
}

} // namespace tarnwick
