#include "tools/state/GameRows.h"

#include "audio/GameSfx_Ice.h"
#include "audio/GameSfx_Steam.h"
#include "audio/GameSfx_Water.h"
#include "game/GameRules.h"
#include "tools/state/JsonLine.h"
#include "tools/state/JsonObject.h"

namespace tarnwick {

void GameRows::write(JsonLine& out) {
    writeRules(out);
    writeAmbience(out);
}

void GameRows::writeRules(JsonLine& out) {
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

void GameRows::writeAmbience(JsonLine& out) {
    const Ambience now = ambienceNow();
    out.key("ambience").openObject();
    out.key("water").openObject();
    out.key("previousAverageSpeed").number(now.waterSpeed).key("ambientLevel").number(now.waterLevel);
    out.closeObject();
    out.key("ice").openObject();
    out.key("previousAverageSpeed").number(now.iceSpeed).key("previousCount").number(now.iceCount);
    out.key("pendingFreeze").number(now.pendingFreeze).key("freezeLevel").number(now.freezeLevel);
    out.key("frictionLevel").number(now.frictionLevel);
    out.closeObject();
    out.key("steam").openObject();
    out.key("previousCount").number(now.steamCount);
    out.key("pendingEvaporation").number(now.pendingEvaporation);
    out.key("evaporationLevel").number(now.evaporationLevel);
    out.key("ambientLevel").number(now.steamLevel);
    out.closeObject().closeObject();
}

void GameRows::read(const JsonObject& in) {
    readRules(in.child("rules"));
    readAmbience(in);
}

void GameRows::readRules(const JsonObject& from) {
    rules.levelTimer.totalClocks = from.integer<std::int32_t>("levelTime");
    rules.levelTimer.lastClock = from.integer<std::uint32_t>("levelTimerLast");
    rules.levelEnding = from.flag("levelEnding");
    rules.finishTimeLeft = from.number("finishTimeLeft");
    rules.endOfLevelParticleCount = from.integer<std::uint32_t>("endOfLevelParticleCount");
    rules.checkPointX = from.number("checkPointX");
    rules.checkPointY = from.number("checkPointY");
    rules.checkPointParticleCount = from.integer<std::uint32_t>("checkPointParticleCount");
}

void GameRows::readAmbience(const JsonObject& in) {
    ambience = ambienceNow();
    if (!in.has("ambience")) {
        return;
    }
    const JsonObject bodies = in.child("ambience");
    const JsonObject water = bodies.child("water");
    ambience.waterSpeed = water.number("previousAverageSpeed");
    ambience.waterLevel = water.number("ambientLevel");
    const JsonObject ice = bodies.child("ice");
    ambience.iceSpeed = ice.number("previousAverageSpeed");
    ambience.iceCount = ice.integer<std::uint32_t>("previousCount");
    ambience.pendingFreeze = ice.number("pendingFreeze");
    ambience.freezeLevel = ice.number("freezeLevel");
    ambience.frictionLevel = ice.number("frictionLevel");
    const JsonObject steam = bodies.child("steam");
    ambience.steamCount = steam.integer<std::uint32_t>("previousCount");
    ambience.pendingEvaporation = steam.number("pendingEvaporation");
    ambience.evaporationLevel = steam.number("evaporationLevel");
    ambience.steamLevel = steam.number("ambientLevel");
}

GameRows::Ambience GameRows::ambienceNow() {
    const GameSfx_Water::State& water = GameSfx_Water::state;
    const GameSfx_Ice::State& ice = GameSfx_Ice::state;
    const GameSfx_Steam::State& steam = GameSfx_Steam::state;
    return {.waterSpeed = water.previousAverageSpeed,
            .waterLevel = water.ambientLevel,
            .iceSpeed = ice.previousAverageSpeed,
            .iceCount = ice.previousCount,
            .pendingFreeze = ice.pendingFreeze,
            .freezeLevel = ice.freezeLevel,
            .frictionLevel = ice.frictionLevel,
            .steamCount = steam.previousCount,
            .pendingEvaporation = steam.pendingEvaporation,
            .evaporationLevel = steam.evaporationLevel,
            .steamLevel = steam.ambientLevel};
}

void GameRows::apply() const {
    applyRules();
    applyAmbience();
}

void GameRows::applyRules() const {
    GameRules::State& state = GameRules::state; // the rest is what `cfg\game.cfg` and the console decide
    state.levelTimer = rules.levelTimer;
    state.levelEnding = rules.levelEnding;
    state.finishTimeLeft = rules.finishTimeLeft;
    state.endOfLevelParticleCount = rules.endOfLevelParticleCount;
    state.checkPointX = rules.checkPointX;
    state.checkPointY = rules.checkPointY;
    state.checkPointParticleCount = rules.checkPointParticleCount;
}

void GameRows::applyAmbience() const {
    GameSfx_Water::state.previousAverageSpeed = ambience.waterSpeed;
    GameSfx_Water::state.ambientLevel = ambience.waterLevel;
    GameSfx_Ice::State& ice = GameSfx_Ice::state;
    ice.previousAverageSpeed = ambience.iceSpeed;
    ice.previousCount = ambience.iceCount;
    ice.pendingFreeze = ambience.pendingFreeze;
    ice.freezeLevel = ambience.freezeLevel;
    ice.frictionLevel = ambience.frictionLevel;
    GameSfx_Steam::State& steam = GameSfx_Steam::state;
    steam.previousCount = ambience.steamCount;
    steam.pendingEvaporation = ambience.pendingEvaporation;
    steam.evaporationLevel = ambience.evaporationLevel;
    steam.ambientLevel = ambience.steamLevel;
}

} // namespace tarnwick
