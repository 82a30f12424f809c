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

/// A trigger's action: its name, and the code that stands in the level file.
struct TriggerAction {
    std::string_view name;
    std::int32_t code = 0;
};

/// Every action that the game knows, by rising code. A name that ends in "_a" acts always, one in "_1" once.
constexpr std::array<TriggerAction, 36> triggerActions = {{
    {"Null_a", -1},
    {"To_ice_a", 0},
    {"To_water_a", 1},
    {"To_steam_a", 2},
    {"Anim_play_loop_1", 3},
    {"Anim_play_once_1", 4},
    {"Anim_stop_1", 5},
    {"Sound_play_1", 100},
    {"Sound_stop_1", 101},
    {"Force_directional_a", 200},
    {"Force_instantenous_a", 201},
    {"Force_multi_dir_pull_a", 202},
    {"Force_multi_dir_push_a", 203},
    {"Entity_remove_1", 300},
    {"Entity_add_1", 301},
    {"Mover_goto_start_1", 401},
    {"Mover_goto_end_1", 402},
    {"Mover_stop_1", 403},
    {"Mover_goto_start_a", 404},
    {"Mover_goto_end_a", 405},
    {"Mover_stop_a", 406},
    {"Mover_goto_start_loop_1", 407},
    {"Mover_goto_end_loop_1", 408},
    {"Mover_goto_start_loop_a", 409},
    {"Mover_goto_end_loop_a", 410},
    {"Emitter_create_burst_1", 501},
    {"Emitter_start_1", 502},
    {"Emitter_stop_1", 503},
    {"Camera_zoom_1", 601},
    {"Camera_zoom_a", 602},
    {"Camera_shake_1", 603},
    {"Camera_shake_a", 604},
    {"Particle_kill_a", 701},
    {"Particle_kill_random_a", 702},
    {"Level_end_a", 801},
    {"Checkpoint_1", 901},
}};

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
