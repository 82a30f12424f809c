#pragma once

#include "mechanisms/Mover.h"

#include <vector>

namespace tarnwick {

class JsonLine;
class JsonObject;

/// The row "movers" of a state line: where each mover is on its track and what it does.
class MoverRows {
public:
    /// Writes the list as it stands.
    static void write(JsonLine& out);

    /// Reads and tests all rows and changes nothing. Throws `StateError` for movers that are not those of the
    /// level.
    void read(const JsonObject& in);
    /// Hands what was read to the level's movers. Cannot fail.
    void apply() const;

private:
    struct Row {
        float position = 0.0f;
        MoverState state = MoverIdle;
    };
    std::vector<Row> rows;
};

} // namespace tarnwick
