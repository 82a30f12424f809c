#pragma once

#include <filesystem>

namespace tarnwick {

/// Pictures of the game that a player takes.
class Screenshot {
public:
    Screenshot() = delete;

    /// Saves what stands in the back buffer as a PNG file in the player's folder for pictures, under the time
    /// of day, and tells on the console where, or that it could not be.
    static void save();

    /// The player's folder for pictures, as the desktop has it in `user-dirs.dirs`; the home without one.
    /// Empty without a home.
    static std::filesystem::path folder();
};

} // namespace tarnwick
