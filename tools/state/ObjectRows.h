#pragma once

#include "core/Vector2.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <string>
#include <vector>

namespace tarnwick {

class JsonLine;
class JsonObject;
class LevelObject;

/// The rows "staticObjects" and "animatedObjects" of a state line: what movers, triggers and time change of
/// the level's objects. Those that the console made stand before those of the level, with their pictures and
/// places, and are made again.
class ObjectRows {
public:
    /// Writes both lists as they stand.
    static void write(JsonLine& out);

    /// Reads and tests both lists and changes nothing. Throws `StateError` for lists that do not end with the
    /// objects of the level.
    void read(const JsonObject& in);
    /// Hands what was read to the level's objects, which stay where they are in memory. Cannot fail.
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
        std::uint32_t id = 0;            ///< Of an object that the console made, as the rest; else not read.
        Vector2 position;                ///< Likewise.
        std::vector<std::string> frames; ///< Names of its pictures.
    };
    /// One of the two lists. Rows at its front may be of objects that the console made.
    struct Rows {
        std::vector<Row> rows;
        std::size_t toBeMade = 0; ///< Rows at the front for which there is no object yet.
    };
    Rows staticRows;
    Rows animatedRows;

    static void writeList(JsonLine& out,
                          const char* key,
                          const std::list<LevelObject>& objects,
                          std::size_t madeByConsole);
    static Rows readList(const JsonObject& in, const char* key, const std::list<LevelObject>& objects);
    static Row readRow(const JsonObject& from, std::size_t frameCount);
    static void readMaking(const JsonObject& from, Row& row);
    static LevelObject made(const Row& row);
    static void applyList(const Rows& read, std::list<LevelObject>& objects, std::size_t& madeByConsole);
};

} // namespace tarnwick
