#pragma once

#include <string>

namespace tarnwick {

/// The name under which a level file appears in the game: it must be one word of a configuration file, and
/// the game's letters are those of Latin-1. UTF-8 becomes Latin-1 where every character has a place there, a
/// blank the no-break space, and "=", back-slashes and control characters become "_".
std::string levelNameInGame(const std::string& fileName);

/// `text` with the letters a to z as capitals; all others stay. Names of data are the same if these are.
std::string upperName(std::string text);

} // namespace tarnwick
