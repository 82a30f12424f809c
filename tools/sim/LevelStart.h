#pragma once

#include <filesystem>
#include <string>

namespace tarnwick {

/// What every headless run of a level begins and ends with. All of it throws `std::runtime_error` that names
/// the file and the reason.

/// Makes the folder the working directory; empty for the one beside the program.
void enterDataFolder(const std::string& asked);

/// The path as given from `startFolder`, or else a name in the data folder, or else a map's name without
/// folder and ending.
std::string findLevel(const std::string& asked, const std::filesystem::path& startFolder);

/// Starts the level with the main menu up, the clock driven from 0 and the default table of scores: one
/// command gives the same run, whoever plays here. The window is there. `asked` is told where it fails.
void startLevel(const std::string& level, const std::string& asked);

/// Puts the camera on the water, so that it runs at once.
void skipFlight();

/// What drawing changes of the state in a tick that nobody sees: the menu's time passes in it, and that of
/// the check points' display.
void passDrawing();

/// Ends the modules on each way out of a run.
class ModulesStop {
public:
    ModulesStop() = default;
    ModulesStop(const ModulesStop&) = delete;
    ModulesStop& operator=(const ModulesStop&) = delete;
    ~ModulesStop();
};

} // namespace tarnwick
