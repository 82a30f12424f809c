#pragma once

#include "game/GameRules.h"

namespace tarnwick {

class JsonLine;
class JsonObject;

/// The row "rules" of a state line: the time, the check point and the finish.
class GameRows {
public:
    /// Writes what a level changes of the rules.
    static void write(JsonLine& out);

    /// Reads and tests the row and changes nothing. Throws `StateError` for one that is not whole.
    void read(const JsonObject& in);
    /// Hands what was read to the rules. Cannot fail.
    void apply() const;

private:
    GameRules::State rules;
};

} // namespace tarnwick
