#pragma once

#include "tools/launcher/UserFolders.h"

#include <filesystem>
#include <iosfwd>

namespace tarnwick {

/// Moves the files that a game wrote into its play folder `folder` to where the player's files of their kind
/// are: those in `cfg` to the settings, those in other folders to the data, those beside the folders (the
/// console's log) to the state; of the second game at a time, `number` 2, these last get the number into
/// their name. Links are not files that a game wrote. False, with a line for each on `messages`, if a file
/// could not be moved; it stays where it is.
bool keepFiles(const std::filesystem::path& folder,
               int number,
               const UserFolders& folders,
               std::ostream& messages);

} // namespace tarnwick
