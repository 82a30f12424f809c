#pragma once

#include "mechanisms/TriggerHandlers.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace tarnwick {

/// The one table of the types of triggers, for the game, the tools that make levels, and the test of their
/// documents. A new action is a row of it and the function that the row names.
class TriggerTypes {
public:
    TriggerTypes() = delete;

    /// Fires between two resets; 0: without limit.
    enum Fires : std::uint32_t { always = 0, once = 1 };
    /// Whether the handler needs the body that set the trigger off. A delayed call has none, so a trigger of
    /// a type that does leaves its delay out of account.
    enum Body { mayWait, needsBody };

    struct Row {
        std::int32_t id;  ///< As the level file has it.
        const char* name; ///< Ends in "_a" if the type fires always, in "_1" if once.
        TriggerHandler handler;
        Fires fires;
        Body body;
    };

    static constexpr std::int32_t nullType = -1; ///< The row for ids that the table does not have.

    /// By rising id.
    static constexpr Row table[] = {
        {nullType, "Null_a", trigFuncNull, always, mayWait},
        {0, "To_ice_a", trigFuncToIce, always, needsBody},
        {1, "To_water_a", trigFuncToWater, always, needsBody},
        {2, "To_steam_a", trigFuncToSteam, always, needsBody},
        {3, "Anim_play_loop_1", trigFuncAnimPlayLoop, once, mayWait},
        {4, "Anim_play_once_1", trigFuncAnimPlayOnce, once, mayWait},
        {5, "Anim_stop_1", trigFuncAnimStop, once, mayWait},
        {100, "Sound_play_1", trigFuncSoundPlay, once, mayWait},
        {101, "Sound_stop_1", trigFuncSoundStop, once, mayWait},
        {200, "Force_directional_a", trigFuncForceDirectional, always, needsBody},
        {201, "Force_instantenous_a", trigFuncForceInstantenous, always, needsBody},
        {202, "Force_multi_dir_pull_a", trigFuncForceMultiDirPull, always, needsBody},
        {203, "Force_multi_dir_push_a", trigFuncForceMultiDirPush, always, needsBody},
        {300, "Entity_remove_1", trigFuncEntityRemove, once, mayWait},
        {301, "Entity_add_1", trigFuncEntityAdd, once, mayWait},
        {401, "Mover_goto_start_1", trigFuncMoverGotoStart, once, mayWait},
        {402, "Mover_goto_end_1", trigFuncMoverGotoEnd, once, mayWait},
        {403, "Mover_stop_1", trigFuncMoverStop, once, mayWait},
        {404, "Mover_goto_start_a", trigFuncMoverGotoStart, always, mayWait},
        {405, "Mover_goto_end_a", trigFuncMoverGotoEnd, always, mayWait},
        {406, "Mover_stop_a", trigFuncMoverStop, always, mayWait},
        {407, "Mover_goto_start_loop_1", trigFuncMoverGotoStartLoop, once, mayWait},
        {408, "Mover_goto_end_loop_1", trigFuncMoverGotoEndLoop, once, mayWait},
        {409, "Mover_goto_start_loop_a", trigFuncMoverGotoStartLoop, always, mayWait},
        {410, "Mover_goto_end_loop_a", trigFuncMoverGotoEndLoop, always, mayWait},
        {501, "Emitter_create_burst_1", trigFuncEmitterCreateBurst, once, mayWait},
        {502, "Emitter_start_1", trigFuncEmitterStart, once, mayWait},
        {503, "Emitter_stop_1", trigFuncEmitterStop, once, mayWait},
        {601, "Camera_zoom_1", trigFuncCameraZoom, once, mayWait},
        {602, "Camera_zoom_a", trigFuncCameraZoom, always, mayWait},
        {603, "Camera_shake_1", trigFuncCameraShake, once, mayWait},
        {604, "Camera_shake_a", trigFuncCameraShake, always, mayWait},
        {701, "Particle_kill_a", trigFuncParticleKill, always, needsBody},
        {702, "Particle_kill_random_a", trigFuncParticleKillRandom, always, mayWait},
        {801, "Level_end_a", trigFuncLevelEnd, always, mayWait},
        {901, "Checkpoint_1", trigFuncCheckPoint, once, mayWait},
    };

    /// The row of a type id; null if there is none.
    static constexpr const Row* find(std::int32_t id) {
        for (const Row& row : table) {
            if (row.id == id) {
                return &row;
            }
        }
        return nullptr;
    }

    /// Whether ids rise and the end of every name agrees with the column of fires.
    static constexpr bool tableHolds() {
        for (std::size_t i = 0; i < std::size(table); ++i) {
            const std::string_view ending = table[i].fires == always ? "_a" : "_1";
            if ((i > 0 && table[i - 1].id >= table[i].id) ||
                !std::string_view(table[i].name).ends_with(ending)) {
                return false;
            }
        }
        return true;
    }
};
static_assert(TriggerTypes::tableHolds());

} // namespace tarnwick
