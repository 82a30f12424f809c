#pragma once

#include <string>

namespace tarnwick {

/// Brings a level file into memory. It reads the whole file into values first; only when nothing can fail any
/// more does it clear the level in memory and hand the records over. A bad file leaves the old level
/// untouched.
class LevelLoader {
public:
    LevelLoader() = delete;

    /// True when the level is now in memory. Otherwise the reason is on the console. Pumps the window's
    /// messages once for each polygon, object and sound source, so that the window stays alive meanwhile.
    static bool loadLevel(const std::string& fileName);
};

} // namespace tarnwick
