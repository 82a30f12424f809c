#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace tarnwick {

class JsonLine;
class JsonObject;

/// The row "checkPoints" of a state line: the times that are known, by the places of their triggers, and what
/// of them is on screen.
class CheckPointRows {
public:
    static void write(JsonLine& out);

    /// Reads and tests the row and changes nothing. A line without it leaves everything as it is.
    void read(const JsonObject& in);
    /// Hands what was read to the module. After the triggers. Cannot fail.
    void apply() const;

private:
    bool present = false;
    std::vector<std::pair<std::size_t, std::uint32_t>> times; ///< Place of the trigger, milliseconds.
    std::int32_t display = 0;
    float timeLeft = 0.0f;
    std::int32_t currentTime = 0;
    std::int32_t previousTime = 0;
    std::uint32_t clock = 0; ///< At which the fade was last looked at.

    void readTimes(const JsonObject& from, std::size_t triggers);
};

} // namespace tarnwick
