#pragma once

#include "level/SurfaceTypes.h"
#include "mechanisms/TriggerTypes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwick {

consteval auto namesOfSurfaces() {
    std::array<std::string_view, SurfaceTypes::count> names;
    for (std::size_t place = 0; place < names.size(); ++place) {
        names[place] = SurfaceTypes::table[place].name;
    }
    return names;
}

/// Materials in the words of a level maker; the level file's number is the place in this list plus 1.
inline constexpr auto surfaceNames = namesOfSurfaces();

/// What a polygon is for; the level file's number is the place in this list.
constexpr std::array<std::string_view, 4> modeNames = {"solid", "seen-only", "invisible", "caulk"};

/// A trigger's action: its name, and the code that stands in the level file.
struct TriggerAction {
    std::string_view name;
    std::int32_t code = 0;
};

// In the compiler alone: the table of the game names its handlers, which this tool does not hold.
consteval auto actionsOfTriggers() {
    std::array<TriggerAction, std::size(TriggerTypes::table)> actions;
    for (std::size_t place = 0; place < actions.size(); ++place) {
        actions[place] = {TriggerTypes::table[place].name, TriggerTypes::table[place].id};
    }
    return actions;
}

/// Every action that the game knows, by rising code. A name that ends in "_a" acts always, one in "_1" once.
inline constexpr auto triggerActions = actionsOfTriggers();

/// The action of this name, exactly as written; null when there is none.
constexpr const TriggerAction* actionOf(std::string_view name) {
    for (const TriggerAction& action : triggerActions) {
        if (action.name == name) {
            return &action;
        }
    }
    return nullptr;
}

/// The action with this code; null when the game knows none and takes it for "Null_a".
constexpr const TriggerAction* actionOf(std::int32_t code) {
    for (const TriggerAction& action : triggerActions) {
        if (action.code == code) {
            return &action;
        }
    }
    return nullptr;
}

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
