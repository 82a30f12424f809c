// Levels that a careless or hostile level maker writes: each behaves as told and leaves the game playable.

#include "level/LevelFile.h"
#include "support/LevelFileBuilder.h"
#include "tools/sim/RecordedRunTest.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <utility>

namespace tarnwick {

namespace {

constexpr std::int32_t nothing = 77;  ///< An id that no entity has, and an action code that no type has.
constexpr std::int32_t gotoEnd = 405; ///< Action codes of triggers.
constexpr std::int32_t playSound = 100;
constexpr std::int32_t killRandom = 702;
constexpr std::int32_t endOfLevel = 801;
constexpr std::uint64_t ticks = 300;

/// A floor that holds the water, which starts above it.
LevelFile roomLevel() {
    LevelFile level;
    LevelFile::PolygonRecord floor;
    floor.surfaceType = 3;
    floor.layer = 1;
    floor.points = {{-300, 40}, {300, 40}, {300, 200}, {-300, 200}};
    level.polygons.push_back(floor);
    return level;
}

LevelFile::TriggerRecord trigger(std::int32_t type, std::int32_t target, float delay = 0.0f) {
    LevelFile::TriggerRecord record{
        target, type, delay, {{-200, -200}, {200, -200}, {200, 200}, {-200, 200}}};
    return record;
}

/// Every number of a state line is a number: none was lost to a NaN or an infinity, which JSON cannot hold.
bool isSound(const nlohmann::json& value) {
    if (value.is_structured()) {
        for (const nlohmann::json& part : value) {
            if (!isSound(part)) {
                return false;
            }
        }
    }
    return !value.is_null() && (!value.is_number_float() || std::isfinite(value.get<double>()));
}

} // namespace

class BadLevelsTest : public RecordedRunTest {
protected:
    /// Plays the level and gives its last state. All water must still be there, and lie on the floor.
    nlohmann::json playedWith(const LevelFile& level) {
        files.write("level.rivl", LevelFileBuilder::write(level));
        SimulationOptions asked = options("level.rivl", ticks);
        asked.dumpEvery = ticks;
        const nlohmann::json end = run(asked).back();
        EXPECT_TRUE(isSound(end));
        EXPECT_EQ(end["particles"].size(), 128U);
        for (const nlohmann::json& particle : end["particles"]) {
            EXPECT_LT(particle[1].get<float>(), 40.0f);
            EXPECT_GT(particle[1].get<float>(), -100.0f);
        }
        return end;
    }
    std::string settingsFile(const std::string& text) const {
        files.write("hostile.cfg", text);
        return (files.path() / "hostile.cfg").string();
    }
};

TEST_F(BadLevelsTest, IdsThatMatchNothingDoNothing) {
    LevelFile level = roomLevel();
    level.movers.push_back({nothing, 50.0f, {0, 0}, {100, 0}});
    for (const std::int32_t type :
         {3, 4, 5, playSound, 101, 200, 201, 202, 203, 300, 301, 403, 501, 502, 503}) {
        level.triggers.push_back(trigger(type, nothing + 1));
    }

    const nlohmann::json end = playedWith(level);

    EXPECT_EQ(end["movers"][0]["position"], 0);
    for (const nlohmann::json& fired : end["triggers"]) {
        EXPECT_GT(fired["fireCount"], 0);
    }
}

TEST_F(BadLevelsTest, TriggersOfUnknownTypeFireAndDoNothing) {
    LevelFile level = roomLevel();
    level.triggers.push_back(trigger(nothing, 0));
    level.triggers.push_back(trigger(std::numeric_limits<std::int32_t>::min(), 1));

    const nlohmann::json end = playedWith(level);

    EXPECT_GT(end["triggers"][0]["fireCount"], 0);
    EXPECT_GT(end["triggers"][1]["fireCount"], 0);
}

TEST_F(BadLevelsTest, DegenerateRegionsAreHarmless) {
    LevelFile level = roomLevel();
    LevelFile::TriggerRecord point = trigger(endOfLevel, 0);
    std::fill(std::begin(point.corners), std::end(point.corners), LevelFile::Point{0, 500});
    LevelFile::TriggerRecord line = trigger(endOfLevel, 0);
    line.corners[0] = line.corners[1] = {-300, 500};
    line.corners[2] = line.corners[3] = {300, 500};
    LevelFile::TriggerRecord crossed = trigger(2, 0);
    std::swap(crossed.corners[1], crossed.corners[2]);
    for (LevelFile::Point& corner : crossed.corners) {
        corner.y += 800;
    }
    level.triggers = {point, line, crossed};

    const nlohmann::json end = playedWith(level);

    EXPECT_EQ(end["rules"]["levelEnding"], false);
}

TEST_F(BadLevelsTest, MoversOfNoLengthOrAbsurdSpeedDisplaceNothing) {
    LevelFile level = roomLevel();
    LevelFile::PolygonRecord block = level.polygons[0];
    block.polygonId = 5;
    block.points = {{400, -100}, {440, -100}, {440, -60}, {400, -60}};
    level.polygons.push_back(block);
    level.movers.push_back({5, 50.0f, {10, 10}, {10, 10}});
    level.movers.push_back({5, 0.0f, {0, 0}, {100, 0}});
    level.movers.push_back({5, -50.0f, {0, 0}, {100, 0}});
    level.triggers.push_back(trigger(gotoEnd, 5));

    const nlohmann::json end = playedWith(level);

    EXPECT_EQ(end["movers"][0]["position"], 0);
    EXPECT_EQ(end["movers"][1]["position"], 0);
}

TEST_F(BadLevelsTest, EmittersWithoutSettingsGiveNothing) {
    LevelFile level = roomLevel();
    level.emitters.push_back({1, {0, 0}, {0.0f, 0.0f}, ""});
    level.emitters.push_back({1, {0, 0}, {0.0f, 0.0f}, "fx\\missing.cfg"});
    level.triggers.push_back(trigger(501, 1));

    EXPECT_TRUE(playedWith(level)["effectParticles"].empty());
}

TEST_F(BadLevelsTest, HostileSettingsAreClamped) {
    std::string text = "frequency = 0\nburstSize = 100000\nspread = 100000\nsize_1 = -5\nsize_2 = -1\n"
                       "liveTime_1 = -1\nliveTime_2 = 0.1\nvelocity_1 = -1000\nvelocity_2 = 1000\n"
                       "gravity_1 = -1000\ngravity_2 = 1000\n";
    for (int number = 1; number <= 8; ++number) {
        text += "texture" + std::to_string(number) + " = gfx\\missing" + std::to_string(number) + ".tga\n";
    }
    LevelFile level = roomLevel();
    level.emitters.push_back({1, {0, 0}, {0.0f, 0.0f}, settingsFile(text)});
    level.triggers.push_back(trigger(501, 1));

    const nlohmann::json end = playedWith(level);

    EXPECT_GT(end["effectParticles"].size(), 20U); // a thousand a second that live for up to a tenth of one
    EXPECT_LT(end["effectParticles"].size(), 100U);
}

TEST_F(BadLevelsTest, SoundsWithoutFilesAndWithoutReachAreSilent) {
    LevelFile level = roomLevel();
    level.soundSources.push_back({1, {0, 0}, 0, 1, ""});
    level.soundSources.push_back({1, {0, 0}, 400, 1, "snd\\missing.wav"});
    level.soundSources.push_back({1, {0, 0}, 400, 0, "gfx\\stone.tga"});
    level.triggers.push_back(trigger(playSound, 1));
    level.triggers.push_back(trigger(101, 1, 0.5f));

    playedWith(level);
}

TEST_F(BadLevelsTest, AbsurdDelaysAndADelayedKillHarmNobody) {
    LevelFile level = roomLevel();
    level.triggers.push_back(trigger(killRandom, 0, 0.5f));
    level.triggers.push_back(trigger(603, 0, std::numeric_limits<float>::quiet_NaN()));
    level.triggers.push_back(trigger(603, 0, -1.0f));
    level.triggers.push_back(trigger(2, 0, 100.0f)); // the heat types take no delay
    level.triggers.back().corners[0].y = level.triggers.back().corners[1].y = 190;

    EXPECT_EQ(playedWith(level)["rules"]["levelEnding"], false);
}

} // namespace tarnwick
