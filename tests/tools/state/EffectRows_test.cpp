#include "tools/state/EffectRows.h"

#include "game/Camera.h"
#include "mechanisms/ForceManager.h"
#include "mechanisms/FxParticleManager.h"
#include "support/ModuleTest.h"
#include "tools/state/SimulationState.h"

#include <nlohmann/json.hpp>

#include <string>

namespace tarnwick {

class EffectRowsTest : public ModuleTest {
protected:
    /// What the level has: a force, an emitter without pictures and one with two.
    static void addLevel() {
        ForceManager::addForce(7, 1.0f, 2.0f, 0.0f, 1.0f, 30.0f);
        FxParticleEmitter emitter;
        emitter.id = -3;
        FxParticleManager::addEmitter(emitter);
        emitter.id = 4;
        emitter.addTexture("gfx\\drop.tga");
        emitter.addTexture("gfx\\\xE4 \"a\".tga");
        FxParticleManager::addEmitter(emitter);
    }
    /// No field is as the level has it at its start, and no two are alike.
    static void change() {
        ForceManager::forces.front().enabled = false;
        FxParticleEmitter& emitter = FxParticleManager::emitters.back();
        emitter.active = false;
        emitter.timer = 0.125f;
        emitter.direction = {0.6f, -0.8f};
        emitter.position = {5.5f, -0.0f};
        emitter.frequency = 0.75f;
        emitter.spread = 1.25f;
        emitter.burstSize = 4096;
        emitter.useAlphaBlending = false;
        emitter.velocity1 = 11.0f;
        emitter.velocity2 = 12.0f;
        emitter.size1 = 13.0f;
        emitter.size2 = -14.0f;
        emitter.liveTime1 = 15.0f;
        emitter.liveTime2 = 16.0f;
        emitter.gravity1 = 17.0f;
        emitter.gravity2 = 18.0f;
        emitter.color1 = {0.1f, 0.2f, 0.3f, 0.4f};
        emitter.color2 = {0.5f, 0.6f, 0.7f, 0.8f};
        emitter.spawnParticle();
        emitter.createBurst();
        FxParticleManager::run(0.01f, Camera::view());
        FxParticleManager::addParticle({}); // one without a texture
    }

    static std::string line() { return SimulationState::write({}); }
    static std::string refusalOf(const nlohmann::json& changed) {
        try {
            SimulationState::read(changed.dump());
        } catch (const StateError& error) {
            return error.what();
        }
        return "accepted";
    }
};

TEST_F(EffectRowsTest, TheRowsHaveTheFieldsOfTheFormat) {
    addLevel();
    FxParticleManager::emitters.front().timer = 0.5f;
    FxParticle particle;
    particle.position = {1.0f, 2.0f};
    particle.velocity = {3.0f, 4.0f};
    particle.size = 5.0f;
    particle.lifeTime = 6.0f;
    particle.timeLeft = 7.0f;
    particle.gravity = 8.0f;
    particle.color = {0.25f, 0.5f, 0.75f, 1.0f};
    particle.texture = &FxParticleManager::emitters.back().textures[1];
    FxParticleManager::addParticle(particle);

    const nlohmann::json json = nlohmann::json::parse(line());

    EXPECT_EQ(json["forces"].dump(),
              R"([{"direction":[0,1],"enabled":true,"id":7,"position":[1,2],"strength":30}])");
    ASSERT_EQ(json["emitters"].size(), 2u);
    EXPECT_EQ(json["emitters"][0]["id"], -3);
    EXPECT_EQ(json["emitters"][0]["active"], true);
    EXPECT_EQ(json["emitters"][0]["timer"], 0.5);
    EXPECT_EQ(json["emitters"][0]["direction"], (nlohmann::json{1, 0}));
    EXPECT_EQ(json["emitters"][1]["textures"][0], "GFX\\DROP.TGA");
    EXPECT_EQ(json["effectParticles"].dump(), "[[1,2,3,4,5,6,7,8]]");
    EXPECT_EQ(json["effectLooks"].dump(), "[[0.25,0.5,0.75,1,1,1,1]]");
}

TEST_F(EffectRowsTest, WhatIsWrittenIsRestoredByteForByteOverTheLevel) {
    addLevel();
    change();
    const std::string before = line();
    ModuleReset::all();
    addLevel();

    SimulationState::read(before);

    EXPECT_EQ(line(), before);
    const FxParticleEmitter& emitter = FxParticleManager::emitters.back();
    EXPECT_EQ(emitter.textures[1].name, "GFX\\\xE4 \"A\".TGA");
    EXPECT_EQ(FxParticleManager::particles.back().texture, nullptr);
    EXPECT_TRUE(FxParticleManager::particles.front().texture == &emitter.textures[0] ||
                FxParticleManager::particles.front().texture == &emitter.textures[1]);
}

TEST_F(EffectRowsTest, FromALineThatTellsOnlyWhatChangesTheRestIsThatOfTheLevel) {
    addLevel();
    nlohmann::json json = nlohmann::json::parse(line());
    json["forces"][0] = nlohmann::json::parse(R"({"id":7,"enabled":false})");
    json["emitters"][1] = nlohmann::json::parse(R"({"id":4,"active":false,"timer":0,"direction":[0,1]})");

    SimulationState::read(json.dump());

    EXPECT_FALSE(ForceManager::forces.front().enabled);
    EXPECT_EQ(ForceManager::forces.front().strength, 30.0f);
    EXPECT_EQ(FxParticleManager::emitters.back().direction.y, 1.0f);
    EXPECT_EQ(FxParticleManager::emitters.back().textures.size(), 2u);
}

TEST_F(EffectRowsTest, WhatTheConsoleMadeIsNeededWhole) {
    addLevel();
    ForceManager::addForce(8, 3.0f, 4.0f, 1.0f, 1.0f, -2.0f);
    nlohmann::json json = nlohmann::json::parse(line());
    json["forces"][1].erase("strength");
    ModuleReset::all();
    addLevel();

    EXPECT_EQ(refusalOf(json), "no field \"forces.strength\"");
}

TEST_F(EffectRowsTest, WhatTheConsoleMadeComesBack) {
    addLevel();
    ForceManager::addForce(8, 3.0f, 4.0f, 1.0f, 1.0f, -2.0f);
    FxParticleManager::addEmitter(FxParticleManager::emitters.back());
    FxParticleManager::emitters.back().createBurst();
    const std::string before = line();
    ModuleReset::all();
    addLevel();

    SimulationState::read(before);

    EXPECT_EQ(line(), before);
    EXPECT_EQ(ForceManager::forces.size(), 2u);
    EXPECT_EQ(FxParticleManager::emitters.size(), 3u);
}

TEST_F(EffectRowsTest, ForcesAndEmittersOfTheLevelStayWhereTheyAre) {
    addLevel();
    const Force* const force = &ForceManager::forces.front();
    const FxParticleEmitter* const emitter = &FxParticleManager::emitters.front();

    SimulationState::read(line());

    EXPECT_EQ(&ForceManager::forces.front(), force);
    EXPECT_EQ(&FxParticleManager::emitters.front(), emitter);
}

TEST_F(EffectRowsTest, ABadRowIsRefusedAndChangesNothing) {
    addLevel();
    FxParticleManager::emitters.back().spawnParticle();
    const std::string whole = line();
    const nlohmann::json json = nlohmann::json::parse(whole);
    const auto refusalWith = [&](const char* place, const nlohmann::json& value) {
        nlohmann::json changed = json;
        changed[nlohmann::json::json_pointer(place)] = value;
        return refusalOf(changed);
    };

    EXPECT_EQ(refusalWith("/forces", nlohmann::json::array()),
              "the state has 0 entries in \"forces\", the level 1");
    EXPECT_EQ(refusalWith("/forces/0/id", 8), "the state is of another level: the ids of the forces differ");
    EXPECT_EQ(refusalWith("/forces/0/enabled", 1), "\"forces.enabled\" is not true or false");
    EXPECT_EQ(refusalWith("/emitters", nlohmann::json::array({json["emitters"][0]})),
              "the state has 1 entries in \"emitters\", the level 2");
    EXPECT_EQ(refusalWith("/emitters/1/id", 5),
              "the state is of another level: the ids of the emitters differ");
    EXPECT_EQ(refusalWith("/emitters/0/frequency", 0), "\"emitters.frequency\" is not at least 0.001");
    EXPECT_EQ(refusalWith("/emitters/0/timer", 1e30), "\"emitters.timer\" is not below the frequency");
    EXPECT_EQ(refusalWith("/emitters/0/timer", -1), "\"emitters.timer\" is not below the frequency");
    EXPECT_EQ(refusalWith("/emitters/0/burstSize", 4097), "\"emitters.burstSize\" is not at most 4096");
    EXPECT_EQ(refusalWith("/emitters/0/color1", {1, 1, 1}),
              "\"emitters.color1\" is not a list of four numbers");
    EXPECT_EQ(refusalWith("/emitters/1/textures/0", 1), "\"emitters.textures\" is not a text");
    EXPECT_EQ(refusalWith("/emitters/1/textures/0", "\u20AC"),
              "\"emitters.textures\" is not a text of bytes");
    EXPECT_EQ(refusalWith("/effectParticles/0", {1, 2}),
              "\"effectParticles\" is not a list of rows of 8 values");
    EXPECT_EQ(refusalWith("/effectLooks", nlohmann::json::array()),
              "\"effectLooks\" is not as long as \"effectParticles\"");
    EXPECT_EQ(refusalWith("/effectLooks/0", {1, 2}), "\"effectLooks\" is not a list of rows of 7 values");
    EXPECT_EQ(refusalWith("/effectLooks/0/5", 2), "\"effectLooks\" is not a texture of an emitter");
    EXPECT_EQ(refusalWith("/effectLooks/0/5", 0), "\"effectLooks\" is not a texture of an emitter");
    EXPECT_EQ(refusalWith("/effectLooks/0/6", -1), "\"effectLooks\" is not a texture of an emitter");
    EXPECT_EQ(line(), whole);
}

} // namespace tarnwick
