#pragma once

#include "tools/launcher/LaunchOptions.h"
#include "tools/launcher/LevelPacks.h"
#include "tools/launcher/UserFolders.h"

#include <filesystem>
#include <iosfwd>
#include <vector>

namespace tarnwick {

/// Where the parts of the game are that is started.
struct Installation {
    std::filesystem::path program;    ///< The game itself.
    std::filesystem::path boxProgram; ///< Shows a text in a box; beside the game.
    std::filesystem::path data;       ///< The folder with `cfg`, `maps`, `gfx` and `snd`.

    /// Those that are installed with this program or built with it; `dataFolder`, if it is not empty, in
    /// place of their data. Throws `std::runtime_error` that names what is missing.
    static Installation find(const std::filesystem::path& dataFolder);
};

/// Puts into `folder` what the game reads: the player's files before those of `data`, the levels of level
/// packs under the pack's name, and the start file that `options` ask for. `unpacked` is for the archives of
/// level packs. Throws `std::runtime_error` if the level of `options` is not there. The level packs that were
/// found.
std::vector<LevelPack> fillPlayFolder(const std::filesystem::path& folder,
                                      const std::filesystem::path& data,
                                      const std::filesystem::path& unpacked,
                                      const UserFolders& folders,
                                      const LaunchOptions& options,
                                      std::ostream& messages);

/// Prepares the game's working directory, runs the game in it, and keeps what it wrote. The game's exit
/// status; 2 if it could not be started, with the reason on `messages`, and in a box where there is a desktop
/// and no terminal.
int launch(const LaunchOptions& options, std::ostream& messages);

} // namespace tarnwick
