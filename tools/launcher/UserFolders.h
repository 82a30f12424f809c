#pragma once

#include <filesystem>

namespace tarnwick {

/// The player's folders, as the desktop's standard has them. A path is empty where the player has no home.
struct UserFolders {
    std::filesystem::path data;   ///< Levels, level packs and replays of one's own; pictures and sounds, too.
    std::filesystem::path state;  ///< Scores, progress, the console's log; also where games run.
    std::filesystem::path config; ///< Settings: what goes before the files of `cfg`.
    std::filesystem::path runtime;   ///< Of the session, gone after it. Empty where there is none.
    std::filesystem::path temporary; ///< For all users.

    /// From XDG_DATA_HOME, XDG_STATE_HOME, XDG_CONFIG_HOME, XDG_RUNTIME_DIR and TMPDIR; a value that is no
    /// absolute path counts as missing. Then the places under HOME, or under the home that the system knows.
    /// Makes nothing.
    static UserFolders fromEnvironment();
};

} // namespace tarnwick
