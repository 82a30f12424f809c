#pragma once

#include "core/Vector2.h"
#include "mechanisms/Trigger.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tarnwick {

class JsonLine;
class JsonObject;

/// The rows "triggers" and "delayedEvents" of a state line: what has fired, what rests and what is pending.
/// Triggers that the console made stand before those of the level and come back with the targets they had.
class TriggerRows {
public:
    /// Writes the lists as they stand.
    static void write(JsonLine& out);

    /// Reads and tests all rows and changes nothing. Throws `StateError` for triggers that do not end with
    /// those of the level.
    void read(const JsonObject& in);
    /// Puts what was read into the lists; triggers of the level stay where they are in memory. After all
    /// entities that triggers aim at. Cannot fail.
    void apply() const;

private:
    /// Kinds of targets: animated objects, static objects, forces, polygons, movers, emitters.
    static constexpr std::size_t kindCount = 6;
    static constexpr std::size_t cornerCount = 4;
    /// How many targets of each kind a trigger has.
    using TargetCounts = std::array<std::size_t, kindCount>;

    struct Row {
        std::uint32_t typeId = 0;
        std::int32_t targetId = 0;
        std::uint32_t fireCount = 0;
        float cooldownLeft = 0.0f;
        std::array<Vector2, cornerCount> corners; ///< Of triggers that the console made; else not read.
        TargetCounts targets{};                   ///< Likewise.
    };
    struct Event {
        std::size_t trigger = 0; ///< Place in `rows`.
        float dt = 0.0f;
        float timeLeft = 0.0f;
    };
    std::vector<Row> rows;
    std::vector<Event> events;
    std::size_t madeByConsole = 0; ///< Rows at the front that the level does not have.

    static std::array<Vector2, cornerCount> cornersOf(const Trigger& trigger);
    static std::size_t kindPlace(const TriggerTarget& target);
    static TargetCounts countTargets(const Trigger& trigger);
    static void writeTrigger(JsonLine& out, const Trigger& trigger);
    static void writeEvents(JsonLine& out);

    void readTriggers(const JsonObject& in);
    static void readMaking(const JsonObject& from, Row& row);
    void readEvents(const JsonObject& in);
    static void makeTrigger(const Row& row);
};

} // namespace tarnwick
