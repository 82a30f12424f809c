#include "tools/state/GameRows.h"

#include "tools/state/JsonLine.h"
#include "tools/state/JsonObject.h"

namespace tarnwick {

void GameRows::write(JsonLine& out) {
    const GameRules::State& rules = GameRules::state;
    out.key("rules").openObject();
    out.key("levelTime").number(rules.levelTimer.totalClocks);
    out.key("levelTimerLast").number(rules.levelTimer.lastClock);
    out.key("levelEnding").flag(rules.levelEnding).key("finishTimeLeft").number(rules.finishTimeLeft);
    out.key("endOfLevelParticleCount").number(rules.endOfLevelParticleCount);
    out.key("checkPointX").number(rules.checkPointX).key("checkPointY").number(rules.checkPointY);
    out.key("checkPointParticleCount").number(rules.checkPointParticleCount);
    out.closeObject();
}

void GameRows::read(const JsonObject& in) {
    const JsonObject from = in.child("rules");
    rules = GameRules::state; // keeps what `cfg\game.cfg` and the console decide
    rules.levelTimer.totalClocks = from.integer<std::int32_t>("levelTime");
    rules.levelTimer.lastClock = from.integer<std::uint32_t>("levelTimerLast");
    rules.levelEnding = from.flag("levelEnding");
    rules.finishTimeLeft = from.number("finishTimeLeft");
    rules.endOfLevelParticleCount = from.integer<std::uint32_t>("endOfLevelParticleCount");
    rules.checkPointX = from.number("checkPointX");
    rules.checkPointY = from.number("checkPointY");
    rules.checkPointParticleCount = from.integer<std::uint32_t>("checkPointParticleCount");
}

void GameRows::apply() const {
    GameRules::state = rules;
}

} // namespace tarnwick
