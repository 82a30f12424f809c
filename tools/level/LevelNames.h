#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwick {

/// Materials in the words of a level maker; the level file's number is the place in this list plus 1.
constexpr std::array<std::string_view, 5> surfaceNames = {"metal", "wood", "stone", "cloth", "sand"};

/// What a polygon is for; the level file's number is the place in this list.
constexpr std::array<std::string_view, 4> modeNames = {"solid", "seen-only", "invisible", "caulk"};

/// Place of a name in a list of names; exactly as written, capitals count.
template <std::size_t Size>
std::optional<std::int32_t> placeOf(std::string_view name, const std::array<std::string_view, Size>& names) {
    for (std::size_t place = 0; place < Size; ++place) {
        if (names[place] == name) {
            return static_cast<std::int32_t>(place);
        }
    }
    return std::nullopt;
}

/// "a, b or c", for messages.
template <std::size_t Size>
std::string choiceOf(const std::array<std::string_view, Size>& names) {
    std::string text;
    for (std::size_t place = 0; place < Size; ++place) {
        if (place > 0) {
            text += place + 1 < Size ? ", " : " or ";
        }
        text += names[place];
    }
    return text;
}

/// Numbers of `LevelFile::PolygonRecord::polygonMode`. A number outside this list counts as `solid`.
constexpr std::int32_t modeSolid = 0;
constexpr std::int32_t modeSeenOnly = 1;
constexpr std::int32_t modeInvisible = 2;
constexpr std::int32_t modeCaulk = 3;

constexpr bool modeIsSolid(std::int32_t mode) {
    return mode != modeSeenOnly && mode != modeCaulk;
}
constexpr bool modeIsSeen(std::int32_t mode) {
    return mode != modeInvisible && mode != modeCaulk;
}

} // namespace tarnwick
