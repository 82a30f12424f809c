#include "tools/state/MoverRows.h"

#include "mechanisms/MoverManager.h"
#include "tools/state/JsonLine.h"
#include "tools/state/JsonObject.h"
#include "tools/state/SimulationState.h"

#include <nlohmann/json.hpp>

#include <string>

namespace tarnwick {

void MoverRows::write(JsonLine& out) {
    out.key("movers").openArray();
    for (const Mover& mover : MoverManager::movers) {
        out.openObject();
        out.key("id").number(mover.id).key("position").number(mover.position);
        out.key("state").number(static_cast<std::int32_t>(mover.state));
        out.closeObject();
    }
    out.closeArray();
}

void MoverRows::read(const JsonObject& in) {
    const nlohmann::json& entries = in.array("movers");
    if (entries.size() != MoverManager::movers.size()) {
        throw StateError("the state has " + std::to_string(entries.size()) + " movers, the level " +
                         std::to_string(MoverManager::movers.size()));
    }
    auto mover = MoverManager::movers.begin();
    for (const nlohmann::json& entry : entries) {
        const JsonObject from(entry, "movers");
        if (from.integer<std::int32_t>("id") != mover->id) {
            throw StateError("the state is of another level: the movers' ids differ");
        }
        rows.push_back({.position = from.number("position"),
                        .state = static_cast<MoverState>(from.integer<std::int32_t>("state"))});
        ++mover;
    }
}

void MoverRows::apply() const {
    auto row = rows.begin();
    for (Mover& mover : MoverManager::movers) {
        mover.position = row->position;
        mover.state = row->state;
        ++row;
    }
}

} // namespace tarnwick
