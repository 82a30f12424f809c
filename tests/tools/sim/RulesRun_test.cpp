#include "level/LevelFile.h"
#include "support/LevelFileBuilder.h"
#include "tools/sim/RecordedRunTest.h"

namespace tarnwick {

namespace {

constexpr std::int32_t endOfLevel = 801;
constexpr std::int32_t checkPoint = 901;

/// A trigger on a square of 200 units about (x, y).
LevelFile::TriggerRecord triggerAt(std::int32_t type, std::int32_t x, std::int32_t y) {
    LevelFile::TriggerRecord trigger;
    trigger.triggerType = type;
    trigger.corners[0] = {x - 100, y - 100};
    trigger.corners[1] = {x - 100, y + 100};
    trigger.corners[2] = {x + 100, y + 100};
    trigger.corners[3] = {x + 100, y - 100};
    return trigger;
}

} // namespace

/// Whole levels without ground: what is not caught by a trigger falls and is lost.
class RulesRunTest : public RecordedRunTest {
protected:
    SimulationOptions optionsFor(const LevelFile& level, std::uint64_t ticks) const {
        files.write("level.rivl", LevelFileBuilder::write(level));
        return options("level.rivl", ticks);
    }
    /// The first line for which `holds`, or the number of lines.
    template <typename Condition>
    static std::size_t firstWhere(const Lines& lines, Condition holds) {
        std::size_t i = 0;
        while (i < lines.size() && !holds(lines[i])) {
            ++i;
        }
        return i;
    }
};

TEST_F(RulesRunTest, WaterInTheEndFinishesTheLevel) {
    LevelFile level;
    level.triggers = {triggerAt(endOfLevel, 0, 500)};
    const SimulationOptions asked = optionsFor(level, 600);
    const Lines lines = run(asked);
    const std::size_t reached =
        firstWhere(lines, [](const auto& line) { return line["rules"]["levelEnding"].template get<bool>(); });
    ASSERT_LT(reached, lines.size());
    const auto finishTime = lines[reached]["rules"]["finishTimeLeft"].get<float>();

    EXPECT_GT(reached, 60u);     // a fall of 400 units
    EXPECT_EQ(finishTime, 2.5f); // of `cfg/game.cfg`
    EXPECT_LE(lines.back()["rules"]["finishTimeLeft"].get<float>(), 0.0f);
    EXPECT_EQ(lines.back()["rules"]["levelTime"], lines[reached]["rules"]["levelTime"]);
    EXPECT_NE(summary.find("the level is finished"), std::string::npos) << summary;
    EXPECT_EQ(lines.back()["random"], lines[lines.size() - 2]["random"]); // all stands
    EXPECT_TRUE(lines.back()["particles"] == lines[lines.size() - 2]["particles"]);
}

TEST_F(RulesRunTest, TheRunGoesOnFromADumpInTheFinish) {
    LevelFile level;
    level.triggers = {triggerAt(endOfLevel, 0, 500)};
    const SimulationOptions asked = optionsFor(level, 600);
    const Lines whole = run(asked);

    const std::size_t from =
        firstWhere(whole, [](const auto& line) { return line["rules"]["levelEnding"].template get<bool>(); });

    EXPECT_TRUE(continued(asked, whole, from + 20) == rest(whole, from + 20));
}

TEST_F(RulesRunTest, WaterLostBehindACheckPointComesBackThere) {
    LevelFile level;
    level.triggers = {triggerAt(checkPoint, 0, 300)};
    const SimulationOptions asked = optionsFor(level, 500);
    const Lines whole = run(asked);
    const std::size_t lost =
        firstWhere(whole, [](const auto& line) { return line["tick"] > 10 && line["camera"]["state"] == 0; });
    ASSERT_LT(lost + 10, whole.size());
    const auto& rules = whole[lost]["rules"];

    EXPECT_EQ(rules["checkPointX"], 0);
    EXPECT_EQ(rules["checkPointY"], 300);
    for (const auto& particle : whole[lost]["particles"]) {
        EXPECT_NEAR(particle[1].get<float>(), 300.0f, 10.1f);
    }
    EXPECT_EQ(whole[lost]["particles"].size(), rules["checkPointParticleCount"]);
    EXPECT_EQ(whole[lost + 10]["rules"]["levelTime"], rules["levelTime"]); // not counted in the flight
    EXPECT_TRUE(continued(asked, whole, lost + 5) == rest(whole, lost + 5));
}

} // namespace tarnwick
