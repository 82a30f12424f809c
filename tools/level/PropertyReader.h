#pragma once

#include "tools/level/LevelNames.h"
#include "tools/level/TiledMap.h"
#include "tools/level/ToolError.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

/// Throws a `ToolError` with the object's number and name and the reason.
[[noreturn]] void refuse(const TiledObject& object, const std::string& reason);

/// Takes the properties of one object by name and knows afterwards which nobody asked for. A property of a
/// wrong type or out of range is refused with the object's number and name.
class PropertyReader {
public:
    explicit PropertyReader(const TiledObject& read)
        : object(read) {}

    std::string text(std::string_view name, std::string_view otherwise);
    std::optional<std::int64_t> wholeNumber(std::string_view name);

    /// A whole number that 32 bits with a sign hold; they may be the bits of one without.
    std::int32_t number32(std::string_view name, std::int32_t otherwise);

    /// A number as the nearest 32-bit float; as text "0x" and eight hexadecimal digits it is taken bit for
    /// bit, which is how a level file's value that no number can show stands in a map.
    float decimal(std::string_view name, float otherwise);
    bool has(std::string_view name) { return find(name) != nullptr; }

    bool flag(std::string_view name, bool otherwise);

    /// A flag as the level file's byte, 0 or 1; a whole number from 0 to 255 is taken as it stands.
    std::uint8_t flagByte(std::string_view name, bool otherwise);

    /// A file name of at most `longest` bytes.
    std::string fileName(std::string_view name, std::string_view otherwise, std::size_t longest);

    /// One of `names`, as its place in the list.
    template <std::size_t Size>
    std::int32_t choice(std::string_view name,
                        std::string_view otherwise,
                        const std::array<std::string_view, Size>& names) {
        const std::string value = text(name, otherwise);
        const std::optional<std::int32_t> place = placeOf(value, names);
        if (!place) {
            refuse(object,
                   "unknown " + std::string(name) + " " + inQuotes(value) + " (" + choiceOf(names) + ")");
        }
        return *place;
    }

    /// Whether the property is there as a whole number, though names are usual.
    bool isNumber(std::string_view name);

    void warnOfOthers(std::vector<std::string>& warnings) const;

private:
    const TiledProperty* find(std::string_view name);

    const TiledObject& object;
    std::set<std::string, std::less<>> asked;
};

} // namespace tarnwick
