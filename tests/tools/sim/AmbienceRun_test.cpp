#include "core/ConfigFile.h"
#include "tools/sim/RecordedRunTest.h"

#include <cmath>

namespace tarnwick {

namespace {

using Json = nlohmann::json;

float pow32(float base, float exponent) {
    return static_cast<float>(std::pow(static_cast<double>(base), static_cast<double>(exponent)));
}

float lengthOf(float x, float y) {
    return std::sqrt(x * x + y * y);
}

/// The levels of the sounds, worked out from a run's state lines alone.
struct PlainAmbience {
    float waterSpeed = 0.0f;
    float waterLevel = 0.0f;
    float iceSpeed = 0.0f;
    std::uint32_t iceCount = 0;
    float pendingFreeze = 0.0f;
    float freezeLevel = 0.0f;
    float frictionLevel = 0.0f;
    std::uint32_t steamCount = 0;
    float pendingEvaporation = 0.0f;
    float evaporationLevel = 0.0f;
    float steamLevel = 0.0f;

    void listenToFree(const Json& particles, float dt, const ConfigFile& config) {
        float speeds = 0.0f;
        std::uint32_t water = 0;
        std::uint32_t steam = 0;
        for (const Json& row : particles) {
            const auto temperature = row[14].get<float>();
            if (temperature >= 100.0f) {
                ++steam;
            } else if (temperature > 0.0f) {
                speeds += lengthOf(row[8].get<float>(), row[9].get<float>());
                ++water;
            }
        }
        waterSpeed = water == 0 ? 0.0f : speeds / static_cast<float>(water);
        waterLevel =
            std::sqrt(static_cast<float>(water) / 128.0f) * config.getVarAsFloat("waterSound_ambient_volume");
        pendingEvaporation += steam > steamCount ? static_cast<float>(steam - steamCount) : 0.0f;
        steamCount = steam;
        const float part = (1.0f - pow32(0.001f, dt)) * pendingEvaporation;
        pendingEvaporation -= part;
        evaporationLevel = (evaporationLevel + part * 0.05f) * pow32(0.25f, dt);
        const float kept = pow32(0.05f, dt);
        steamLevel = (1.0f - kept) * static_cast<float>(steam) * 0.02f + kept * steamLevel;
    }

    void listenToIce(const Json& groups, float dt, const ConfigFile& config) {
        float speeds = 0.0f;
        float rubbing = 0.0f;
        std::uint32_t members = 0;
        for (const Json& group : groups) {
            const auto size = static_cast<float>(group["members"].size());
            const float speed =
                lengthOf(group["velocity"][0].get<float>(), group["velocity"][1].get<float>());
            members += static_cast<std::uint32_t>(group["members"].size());
            speeds += size * speed;
            if (group["colliding"]) {
                rubbing += speed * config.getVarAsFloat("ice_frictionSpeed") * std::sqrt(size / 128.0f);
            }
        }
        iceSpeed = members == 0 ? 0.0f : speeds / static_cast<float>(members);
        pendingFreeze += members > iceCount ? static_cast<float>(members - iceCount) : 0.0f;
        iceCount = members;
        const float part = (1.0f - pow32(config.getVarAsFloat("ice_freezeEffectSpeed"), dt)) * pendingFreeze;
        pendingFreeze -= part;
        freezeLevel = (freezeLevel + part * config.getVarAsFloat("ice_freezeVolume")) *
                      pow32(config.getVarAsFloat("ice_freezeVolumeFadeRate"), dt);
        const float kept = pow32(config.getVarAsFloat("ice_frictionChangeRate"), dt);
        frictionLevel = (1.0f - kept) * rubbing + kept * frictionLevel;
    }

    /// As it stands in a state line.
    Json row() const {
        return {{"water", {{"previousAverageSpeed", waterSpeed}, {"ambientLevel", waterLevel}}},
                {"ice",
                 {{"previousAverageSpeed", iceSpeed},
                  {"previousCount", iceCount},
                  {"pendingFreeze", pendingFreeze},
                  {"freezeLevel", freezeLevel},
                  {"frictionLevel", frictionLevel}}},
                {"steam",
                 {{"previousCount", steamCount},
                  {"pendingEvaporation", pendingEvaporation},
                  {"evaporationLevel", evaporationLevel},
                  {"ambientLevel", steamLevel}}}};
    }
};

/// A line's row, with its numbers as floats again.
Json asFloats(const Json& ambience) {
    Json row = ambience;
    for (auto& body : row) {
        for (auto& value : body) {
            if (value.is_number_float() || value == 0) {
                value = value.get<float>();
            }
        }
    }
    return row;
}

} // namespace

/// Runs of the test level under a heat that turns its water to something else.
class AmbienceRunTest : public RecordedRunTest {
protected:
    SimulationOptions testLevel(const std::string& commands) const {
        files.write("commands.txt", commands);
        SimulationOptions asked = options("maps\\testLevel.rivl", 200);
        asked.consoleFile = "commands.txt";
        return asked;
    }

    /// How many of the run's ticks had a level of what `body` calls `key`; fails for the first tick whose
    /// levels are not those of the formulas.
    int ticksSounding(const Lines& run, const char* body, const char* key) const {
        const ConfigFile config((dataOfTree + "/cfg/game_sfx.cfg").c_str());
        PlainAmbience plain;
        int sounding = 0;
        for (std::size_t i = 1; i < run.size(); ++i) {
            const auto dt = run[i]["dt"].get<float>();
            plain.listenToIce(run[i]["groups"], dt, config);
            plain.listenToFree(run[i]["particles"], dt, config);
            const Json told = asFloats(run[i]["ambience"]);
            if (told != asFloats(plain.row())) {
                ADD_FAILURE() << "tick " << i << ": " << told.dump() << " instead of " << plain.row().dump();
                break;
            }
            sounding += told[body][key].get<float>() > 0.001f ? 1 : 0;
        }
        return sounding;
    }
};

TEST_F(AmbienceRunTest, WaterSoundsByTheFormulas) {
    EXPECT_EQ(ticksSounding(run(testLevel("")), "water", "ambientLevel"), 200);
}

TEST_F(AmbienceRunTest, FreezingAndSlidingIceSoundByTheFormulas) {
    const Lines lines = run(testLevel("RoomTemperature -60\nHeatTransferRate 0.9\n"));

    EXPECT_GT(ticksSounding(lines, "ice", "freezeLevel"), 50);
    EXPECT_GT(ticksSounding(lines, "ice", "frictionLevel"), 10);
}

TEST_F(AmbienceRunTest, EvaporationAndSteamSoundByTheFormulas) {
    const Lines lines = run(testLevel("RoomTemperature 180\nHeatTransferRate 0.9\n"));

    EXPECT_GT(ticksSounding(lines, "steam", "evaporationLevel"), 50);
    EXPECT_GT(ticksSounding(lines, "steam", "ambientLevel"), 50);
}

TEST_F(AmbienceRunTest, ARunWithIceGoesOnFromADump) {
    const SimulationOptions asked = testLevel("RoomTemperature -60\nHeatTransferRate 0.9\n");
    const Lines whole = run(asked);

    EXPECT_TRUE(continued(asked, whole, 90) == rest(whole, 90));
}

} // namespace tarnwick
