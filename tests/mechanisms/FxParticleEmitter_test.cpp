#include "mechanisms/FxParticleEmitter.h"

#include "core/ConfigFile.h"
#include "core/Geometry.h"
#include "core/Random.h"
#include "graphics/GLTextureManager.h"
#include "mechanisms/FxParticleManager.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <algorithm>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

/// Writes down the keys that a file is asked for, each once, in the order of first asking.
class KeysInOrder final : public ConfigFile::Observer {
public:
    KeysInOrder() { ConfigFile::setObserver(this); }
    ~KeysInOrder() override { ConfigFile::setObserver(nullptr); }
    KeysInOrder(const KeysInOrder&) = delete;
    KeysInOrder& operator=(const KeysInOrder&) = delete;

    void fileRead(const std::string& name) override { files.push_back(name); }
    void keyAsked(const std::string& key) override {
        if (std::ranges::find(keys, key) == keys.end()) {
            keys.push_back(key);
        }
    }

    std::vector<std::string> files;
    std::vector<std::string> keys;
};

} // namespace

class FxParticleEmitterTest : public ModuleTest {
protected:
    DataFolder data;

    /// An emitter with the settings of a file that holds `text`.
    FxParticleEmitter emitterOf(const std::string& text) const {
        data.write("fx/test.cfg", text);
        FxParticleEmitter emitter;
        emitter.loadEmitterSettings("fx\\test.cfg");
        return emitter;
    }
    /// How many particles one call of `run` gives.
    static std::size_t givenIn(FxParticleEmitter& emitter, float dt) {
        const std::size_t before = FxParticleManager::particles.size();
        emitter.run(dt);
        return FxParticleManager::particles.size() - before;
    }
};

TEST_F(FxParticleEmitterTest, ANewEmitterHasItsDefaults) {
    const FxParticleEmitter emitter;

    EXPECT_EQ(emitter.id, 0);
    EXPECT_EQ(emitter.position, (Vector2{0.0f, 0.0f}));
    EXPECT_EQ(emitter.direction, (Vector2{1.0f, 0.0f}));
    EXPECT_EQ(emitter.frequency, 1.0f);
    EXPECT_EQ(emitter.timer, 0.0f);
    EXPECT_EQ(emitter.spread, 0.0f);
    EXPECT_EQ(emitter.burstSize, 16u);
    EXPECT_TRUE(emitter.active);
    EXPECT_TRUE(emitter.useAlphaBlending);
    EXPECT_EQ(emitter.velocity1, 0.0f);
    EXPECT_EQ(emitter.size2, 0.0f);
    EXPECT_EQ(emitter.liveTime1, 1.0f);
    EXPECT_EQ(emitter.liveTime2, 1.0f);
    EXPECT_EQ(emitter.color1.red, 1.0f);
    EXPECT_EQ(emitter.color2.alpha, 1.0f);
    EXPECT_EQ(emitter.gravity1, 0.0f);
    EXPECT_TRUE(emitter.textures.empty());
}

TEST_F(FxParticleEmitterTest, ADirectionIsMadeUnitLengthWithoutADraw) {
    FxParticleEmitter emitter;

    emitter.setDirection(0.0f, -4.0f);

    EXPECT_EQ(emitter.direction, (Vector2{0.0f, -1.0f}));
    EXPECT_EQ(getRandomState(), 0u);
}

TEST_F(FxParticleEmitterTest, NoDirectionIsARandomOneOfTwoDraws) {
    FxParticleEmitter emitter;
    seedRandom(99);
    Vector2 expected;
    expected.x = randomFloat() - 0.5f;
    expected.y = randomFloat() - 0.5f;
    normaliseVector(expected);
    const std::uint32_t stateAfter = getRandomState();
    seedRandom(99);

    emitter.setDirection(0.0f, -0.0f);

    EXPECT_EQ(emitter.direction, expected);
    EXPECT_EQ(getRandomState(), stateAfter);
}

TEST_F(FxParticleEmitterTest, AllSettingsAreRead) {
    const FxParticleEmitter emitter = emitterOf(
        "active = false frequency = 0.25 burstSize = 40 spread = 180 gravity_1 = -0.5 gravity_2 = 2 "
        "size_1 = 3 size_2 = 4 liveTime_1 = 0.5 liveTime_2 = 1.5 velocity_1 = 60 velocity_2 = -90 "
        "useAlphaBlending = false color_1_r = 0.1 color_1_g = 0.2 color_1_b = 0.3 color_1_a = 0.4 "
        "color_2_r = 0.5 color_2_g = 0.6 color_2_b = 0.7 color_2_a = 0.8 texture1 = gfx\\a.tga "
        "texture8 = gfx\\h.tga");

    EXPECT_FALSE(emitter.active);
    EXPECT_EQ(emitter.frequency, 0.25f);
    EXPECT_EQ(emitter.burstSize, 40u);
    EXPECT_EQ(emitter.spread, 180.0f * 0.017453292f);
    EXPECT_EQ(emitter.gravity1, -0.5f);
    EXPECT_EQ(emitter.gravity2, 2.0f);
    EXPECT_EQ(emitter.size1, 3.0f);
    EXPECT_EQ(emitter.size2, 4.0f);
    EXPECT_EQ(emitter.liveTime1, 0.5f);
    EXPECT_EQ(emitter.liveTime2, 1.5f);
    EXPECT_EQ(emitter.velocity1, 60.0f);
    EXPECT_EQ(emitter.velocity2, -90.0f);
    EXPECT_FALSE(emitter.useAlphaBlending);
    EXPECT_EQ(emitter.color1.red, 0.1f);
    EXPECT_EQ(emitter.color1.alpha, 0.4f);
    EXPECT_EQ(emitter.color2.green, 0.6f);
    EXPECT_EQ(emitter.color2.alpha, 0.8f);
    ASSERT_EQ(emitter.textures.size(), 2u); // the gap from 2 to 7 does not stop the eighth
    EXPECT_EQ(emitter.textures[0].name, "GFX\\A.TGA");
    EXPECT_EQ(emitter.textures[1].name, "GFX\\H.TGA");
}

TEST_F(FxParticleEmitterTest, TheKeysAreAskedForInTheirOrder) {
    const KeysInOrder observed;

    emitterOf("");

    EXPECT_EQ(observed.files, std::vector<std::string>{"fx\\test.cfg"});
    EXPECT_EQ(observed.keys,
              (std::vector<std::string>{
                  "ACTIVE",           "FREQUENCY", "BURSTSIZE",  "SPREAD",     "GRAVITY_1",  "GRAVITY_2",
                  "SIZE_1",           "SIZE_2",    "LIVETIME_1", "LIVETIME_2", "VELOCITY_1", "VELOCITY_2",
                  "USEALPHABLENDING", "COLOR_1_R", "COLOR_1_G",  "COLOR_1_B",  "COLOR_1_A",  "COLOR_2_R",
                  "COLOR_2_G",        "COLOR_2_B", "COLOR_2_A",  "TEXTURE1",   "TEXTURE2",   "TEXTURE3",
                  "TEXTURE4",         "TEXTURE5",  "TEXTURE6",   "TEXTURE7",   "TEXTURE8"}));
}

TEST_F(FxParticleEmitterTest, ABurstHasAtMost4096Particles) {
    EXPECT_EQ(emitterOf("burstSize = 5000").burstSize, 4096u);
    EXPECT_EQ(emitterOf("burstSize = 4096").burstSize, 4096u);
    EXPECT_EQ(emitterOf("burstSize = -1").burstSize, 4096u); // taken as unsigned
    EXPECT_EQ(emitterOf("burstSize = 0").burstSize, 0u);
    EXPECT_EQ(emitterOf("burstSize = many").burstSize, 0u);
}

TEST_F(FxParticleEmitterTest, ABurstOf4096ParticlesIsGivenOff) {
    FxParticleEmitter emitter = emitterOf("burstSize = 4096 texture1 = gfx\\a.tga");

    emitter.createBurst();

    EXPECT_EQ(FxParticleManager::particles.size(), 4096u);
}

TEST_F(FxParticleEmitterTest, AFrequencyOfZeroIsAThousandth) {
    FxParticleEmitter emitter = emitterOf("frequency = 0 texture1 = gfx\\a.tga");

    EXPECT_EQ(emitter.frequency, 0.001f);
    EXPECT_EQ(emitterOf("frequency = -5").frequency, 0.001f);
    EXPECT_EQ(emitterOf("frequency = soon").frequency, 0.001f);
    EXPECT_EQ(givenIn(emitter, 0.0301f), 30u);
}

TEST_F(FxParticleEmitterTest, AThirtiethOfThirtyMillisecondsIsDueOneTickLater) {
    FxParticleEmitter emitter = emitterOf("frequency = 0 texture1 = gfx\\a.tga");

    EXPECT_EQ(givenIn(emitter, 0.03f), 29u); // as a float 0.001 is a little more than a thirtieth of 0.03
    EXPECT_EQ(givenIn(emitter, 0.03f), 30u);
}

TEST_F(FxParticleEmitterTest, LivesAreNotShorterThanATenThousandth) {
    const FxParticleEmitter emitter = emitterOf("liveTime_1 = 0 liveTime_2 = -3");

    EXPECT_EQ(emitter.liveTime1, 0.0001f);
    EXPECT_EQ(emitter.liveTime2, 0.0001f);
}

TEST_F(FxParticleEmitterTest, HalfARangeIsNone) {
    const FxParticleEmitter emitter = emitterOf("gravity_1 = 3 size_2 = 4 liveTime_1 = 5 velocity_2 = 6");

    EXPECT_EQ(emitter.gravity1, 0.0f);
    EXPECT_EQ(emitter.gravity2, 0.0f);
    EXPECT_EQ(emitter.size1, 0.0f);
    EXPECT_EQ(emitter.size2, 0.0f);
    EXPECT_EQ(emitter.liveTime1, 1.0f);
    EXPECT_EQ(emitter.velocity2, 0.0f);
}

TEST_F(FxParticleEmitterTest, ColoursWithAGapAreNone) {
    const FxParticleEmitter emitter =
        emitterOf("color_1_r = 0 color_1_g = 0 color_1_b = 0 color_1_a = 0 color_2_r = 0 color_2_g = 0 "
                  "color_2_b = 0");

    EXPECT_EQ(emitter.color1.red, 1.0f);
    EXPECT_EQ(emitter.color2.red, 1.0f);
}

TEST_F(FxParticleEmitterTest, AMissingSettingsFileLeavesAnEmitterThatGivesNothing) {
    FxParticleEmitter emitter;
    emitter.loadEmitterSettings("fx\\none.cfg");

    EXPECT_EQ(givenIn(emitter, 5.0f), 0u);
    emitter.createBurst();

    EXPECT_TRUE(FxParticleManager::particles.empty());
    EXPECT_EQ(emitter.frequency, 1.0f);
    EXPECT_EQ(getRandomState(), 0u); // without a texture nothing is drawn
}

TEST_F(FxParticleEmitterTest, AMissingPictureGivesParticlesAllTheSame) {
    FxParticleEmitter emitter = emitterOf("texture1 = gfx\\none.tga texture2 =");

    emitter.createBurst();

    EXPECT_EQ(FxParticleManager::particles.size(), 16u);
}

TEST_F(FxParticleEmitterTest, TimeIsGatheredFromRunToRun) {
    FxParticleEmitter emitter = emitterOf("frequency = 0.5 texture1 = gfx\\a.tga");

    EXPECT_EQ(givenIn(emitter, 0.25f), 0u);
    EXPECT_EQ(emitter.timer, 0.25f);
    EXPECT_EQ(givenIn(emitter, 0.25f), 1u); // at the interval exactly it is due
    EXPECT_EQ(emitter.timer, 0.0f);
    EXPECT_EQ(givenIn(emitter, 1.75f), 3u);
    EXPECT_EQ(emitter.timer, 0.25f);
}

TEST_F(FxParticleEmitterTest, AStoppedEmitterGivesNothingByItselfButBursts) {
    FxParticleEmitter emitter = emitterOf("active = false burstSize = 3 texture1 = gfx\\a.tga");

    EXPECT_EQ(givenIn(emitter, 5.0f), 0u);
    EXPECT_EQ(emitter.timer, 0.0f);
    emitter.createBurst();

    EXPECT_EQ(FxParticleManager::particles.size(), 3u);
}

TEST_F(FxParticleEmitterTest, ParticlesTakeTheirDrawsInTheirOrder) {
    FxParticleEmitter emitter = emitterOf(
        "spread = 90 gravity_1 = -1 gravity_2 = 3 size_1 = 2 size_2 = -5 liveTime_1 = 0.5 liveTime_2 = 2 "
        "velocity_1 = 10 velocity_2 = 100 useAlphaBlending = false color_1_r = 0 color_1_g = 0.25 "
        "color_1_b = 0.5 color_1_a = 0.75 color_2_r = 1 color_2_g = 0.5 color_2_b = 0 color_2_a = 0.25 "
        "texture1 = gfx\\a.tga texture2 = gfx\\b.tga texture3 = gfx\\c.tga");
    emitter.position = {7.0f, 8.0f};
    seedRandom(5);
    float r[6] = {};
    for (float& draw : r) {
        draw = randomFloat();
    }
    const std::uint32_t picture = randomInt() % 3;
    const std::uint32_t stateAfter = getRandomState();
    Vector2 direction = emitter.direction;
    rotateVector(direction, r[0] * emitter.spread - emitter.spread * 0.5f);
    seedRandom(5);

    emitter.spawnParticle();

    ASSERT_EQ(FxParticleManager::particles.size(), 1u);
    const FxParticle& particle = FxParticleManager::particles.front();
    EXPECT_EQ(getRandomState(), stateAfter);
    EXPECT_EQ(particle.position, (Vector2{7.0f, 8.0f}));
    EXPECT_EQ(particle.color.red, (1.0f - r[1]) * 1.0f + r[1] * 0.0f);
    EXPECT_EQ(particle.color.alpha, (1.0f - r[1]) * 0.25f + r[1] * 0.75f);
    EXPECT_EQ(particle.velocity, direction * ((1.0f - r[2]) * 100.0f + r[2] * 10.0f));
    EXPECT_EQ(particle.gravity, (1.0f - r[3]) * 3.0f + r[3] * -1.0f);
    EXPECT_EQ(particle.size, (1.0f - r[4]) * -5.0f + r[4] * 2.0f);
    EXPECT_EQ(particle.lifeTime, (1.0f - r[5]) * 2.0f + r[5] * 0.5f);
    EXPECT_EQ(particle.timeLeft, particle.lifeTime);
    EXPECT_EQ(particle.texture, &emitter.textures[picture]);
    EXPECT_FALSE(particle.useAlphaBlending);
}

TEST_F(FxParticleEmitterTest, TexturesAddedLaterLeaveParticlesTheirs) {
    FxParticleEmitter emitter = emitterOf("texture1 = gfx\\a.tga");
    emitter.spawnParticle();

    for (int i = 0; i < 200; ++i) {
        emitter.addTexture("gfx\\b.tga");
    }

    EXPECT_EQ(FxParticleManager::particles.front().texture, &emitter.textures.front());
}

TEST_F(FxParticleEmitterTest, ACopyHasAllFieldsAndTexturesOfItsOwn) {
    FxParticleEmitter emitter = emitterOf("frequency = 3 texture1 = gfx\\a.tga");
    emitter.id = 12;
    emitter.timer = 0.5f;

    const FxParticleEmitter copy = emitter;
    emitter = FxParticleEmitter();

    EXPECT_EQ(copy.id, 12);
    EXPECT_EQ(copy.frequency, 3.0f);
    EXPECT_EQ(copy.timer, 0.5f);
    ASSERT_EQ(copy.textures.size(), 1u);
    EXPECT_EQ(copy.textures.front().name, "GFX\\A.TGA");
    EXPECT_TRUE(emitter.textures.empty());
}

TEST_F(FxParticleEmitterTest, TheTexturesOfAnEmitterAreGivenBack) {
    {
        const FxParticleEmitter emitter = emitterOf("texture1 = gfx\\a.tga");
        EXPECT_GT(GLTextureManager::getTextureBytesUsed(), 0u);
    }

    EXPECT_EQ(GLTextureManager::getTextureBytesUsed(), 0u);
}

} // namespace tarnwick
