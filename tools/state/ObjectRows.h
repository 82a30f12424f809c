#pragma once

#include "core/Vector2.h"

#include <cstdint>
#include <vector>

namespace tarnwick {

class JsonLine;
class JsonObject;

/// The rows "staticObjects" and "animatedObjects" of a state line: what movers, triggers and time change of
/// the level's objects.
class ObjectRows {
public:
    /// Writes both lists as they stand.
    static void write(JsonLine& out);

    /// Reads and tests both lists and changes nothing. Throws `StateError` for objects that are not those of
    /// the level, also for those that the console made.
    void read(const JsonObject& in);
    /// Hands what was read to the level's objects. Cannot fail.
    void apply() const;

private:
    struct Row {
        bool enabled = true;
        bool paused = true;
        Vector2 offset;
        std::uint32_t currentFrame = 0;
        float frameTime = 0.0f;
        std::int32_t loopCount = 0;
        std::int32_t loopsDone = 0;
    };
    std::vector<Row> staticRows;
    std::vector<Row> animatedRows;
};

} // namespace tarnwick
