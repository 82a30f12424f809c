#include "tools/state/CheckPointRows.h"

#include "game/CheckPointTimesManager.h"
#include "mechanisms/TriggerManager.h"
#include "tools/state/JsonLine.h"
#include "tools/state/JsonObject.h"
#include "tools/state/SimulationState.h"

#include <nlohmann/json.hpp>

namespace tarnwick {

void CheckPointRows::write(JsonLine& out) {
    const CheckPointTimesManager::State& state = CheckPointTimesManager::state;
    out.key("checkPoints").openObject().key("times").openArray();
    std::uint64_t place = 0;
    for (const Trigger& trigger : TriggerManager::triggers) { // and not by address, as the map stands
        if (const auto known = state.checkPointTimes.find(&trigger); known != state.checkPointTimes.end()) {
            out.openArray().number(place).number(known->second).closeArray();
        }
        ++place;
    }
    out.closeArray();
    out.key("display")
        .number(static_cast<std::int32_t>(state.displayState))
        .key("timeLeft")
        .number(state.displayTimeLeft);
    out.key("currentTime").number(state.currentTime).key("previousTime").number(state.previousTime);
    out.key("clock").number(SimulationState::lastClockOf(state.fadeTimer));
    out.closeObject();
}

void CheckPointRows::read(const JsonObject& in) {
    present = in.has("checkPoints");
    if (!present) {
        return;
    }
    const JsonObject from = in.child("checkPoints");
    readTimes(from, in.array("triggers").size());
    display = from.integer<std::int32_t>("display");
    if (display < static_cast<std::int32_t>(CheckPointTimesManager::Display::nothing) ||
        display > static_cast<std::int32_t>(CheckPointTimesManager::Display::differenceFadingOut)) {
        refuseField(from.path("display"), "a number from 0 to 4");
    }
    timeLeft = from.number("timeLeft");
    currentTime = from.integer<std::int32_t>("currentTime");
    previousTime = from.integer<std::int32_t>("previousTime");
    clock = from.integer<std::uint32_t>("clock");
}

void CheckPointRows::readTimes(const JsonObject& from, std::size_t triggers) {
    for (const nlohmann::json& row : from.array("times")) {
        const std::string what = from.path("times");
        if (asArray(row, what).size() != 2) {
            refuseField(what, "a list of rows of 2 values");
        }
        times.emplace_back(asInteger<std::uint32_t>(row[0], what), asInteger<std::uint32_t>(row[1], what));
        if (times.back().first >= triggers) {
            refuseField(what, "of the places of triggers");
        }
    }
}

void CheckPointRows::apply() const {
    if (!present) {
        return;
    }
    CheckPointTimesManager::State& state = CheckPointTimesManager::state;
    std::vector<const Trigger*> triggers;
    for (const Trigger& trigger : TriggerManager::triggers) {
        triggers.push_back(&trigger);
    }
    state.checkPointTimes.clear();
    for (const auto& [place, time] : times) {
        state.checkPointTimes.emplace(triggers[place], time);
    }
    state.displayState = static_cast<CheckPointTimesManager::Display>(display);
    state.displayTimeLeft = timeLeft;
    state.currentTime = currentTime;
    state.previousTime = previousTime;
    SimulationState::setLastClock(state.fadeTimer, clock);
}

} // namespace tarnwick
