#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

namespace tarnwick {

/// A level that the player dropped into the data folder.
struct OwnLevel {
    std::filesystem::path file;
    std::string name; ///< In the game's list of maps; of a pack's level: "PACK: LEVEL.rivl".
};

/// Levels that belong together, in a folder.
struct LevelPack {
    std::string name;
    std::filesystem::path folder;
};

/// Whether `name` is that of a folder of data (`cfg`, `gfx`, `maps`, ...) and so no level pack.
bool isDataFolder(const std::string& name);

/// The level packs in the player's data folder, by name: folders with levels in them, and zip archives.
/// Archives are unpacked into `unpacked`, once; a new name, size or time of the archive makes it a new one.
/// One that cannot be unpacked is left out, with a line on `messages` that says why.
std::vector<LevelPack> findLevelPacks(const std::filesystem::path& dataFolder,
                                      const std::filesystem::path& unpacked,
                                      std::ostream& messages);

/// Removes from `unpacked` what does not belong to one of `packs`.
void forgetOtherPacks(const std::filesystem::path& unpacked, const std::vector<LevelPack>& packs);

/// The levels of a pack: those in its folder and in the `maps` there.
std::vector<OwnLevel> levelsOf(const LevelPack& pack);

/// The levels that lie in `folder` itself.
std::vector<OwnLevel> levelsIn(const std::filesystem::path& folder);

} // namespace tarnwick
