#pragma once

#include "tools/launcher/FileLock.h"
#include "tools/launcher/UserFolders.h"

#include <filesystem>
#include <functional>
#include <iosfwd>

namespace tarnwick {

/// Name of the file in `cfg` that the launcher writes for the game; all other files of a play folder are the
/// game's.
constexpr const char* startFileName = "start.cfg";

/// The working directory of one running game: a folder of links to what the game reads, in which it may
/// write. It is gone after the game; what the game wrote has then been moved to the player's folders.
///
/// Play folders are `run/1`, `run/2` and so on in the player's folder for state, one for each game that runs
/// at a time, each with a lock. One that nobody holds was left by a start that was cut off: the next start
/// keeps what is in it and removes it. Where nothing can be written there (a full disk, a home that is only
/// to be read), the session's folder or the one for temporary files holds it.
class PlayFolder {
public:
    /// Makes a folder and lets `fill` put into it what the game reads. If one place refuses, the next is
    /// tried, with a line on `messages` at the end that says what will be lost. Throws `std::runtime_error`
    /// with all reasons if all places refuse.
    static PlayFolder make(const UserFolders& folders,
                           const std::function<void(const std::filesystem::path&)>& fill,
                           std::ostream& messages);

    /// Moves what the game wrote to the player's folders: `cfg` to the settings, other folders to the data,
    /// files to the state. Each file is written beside and renamed, so that the old one or the new one is
    /// there. Then removes the folder, unless something could not be kept: then it stays for the next start,
    /// and a line on `messages` says why.
    void finish(const UserFolders& folders, std::ostream& messages);

    const std::filesystem::path& path() const { return folder; }

    /// Whether another game runs in a folder beside this one.
    bool isAlone() const;

private:
    std::filesystem::path folder;
    FileLock lock;
    int number = 1; ///< Of the games that run at a time.

    static PlayFolder claim(const std::filesystem::path& place);
    static void tidy(const std::filesystem::path& place, const UserFolders& folders, std::ostream& messages);
};

} // namespace tarnwick
