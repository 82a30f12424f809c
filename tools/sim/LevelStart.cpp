#include "tools/sim/LevelStart.h"

#include "console/GLConsole.h"
#include "core/Clock.h"
#include "core/DataFiles.h"
#include "core/Random.h"
#include "game/BasicCommands.h"
#include "game/Camera.h"
#include "game/CheckPointTimesManager.h"
#include "game/Game.h"
#include "game/HighScores.h"
#include "game/Modules.h"
#include "gui/GameMenus.h"
#include "level/Level.h"
#include "level/SurfaceTypeManager.h"
#include "tools/support/DataFolder.h"

#include <stdexcept>

namespace tarnwick {

namespace {

namespace fs = std::filesystem;

/// The last thing that the loader told: why it refused the file.
std::string loaderReason() {
    const std::string told = GLConsole::outputText();
    const std::string last = told.substr(told.find_last_of('\n') + 1);
    const std::string prefix = "Reason: ";
    return last.starts_with(prefix) ? last.substr(prefix.size()) : last;
}

} // namespace

void enterDataFolder(const std::string& asked) {
    const fs::path folder = asked.empty() ? dataFolderBesideProgram() : fs::path(asked);
    if (folder.empty()) {
        throw std::runtime_error("no data folder beside the program: name one with --data");
    }
    std::error_code error;
    fs::current_path(folder, error);
    if (error) {
        throw std::runtime_error(folder.string() + ": is no folder to read data from");
    }
}

std::string findLevel(const std::string& asked, const fs::path& startFolder) {
    const fs::path fromStart = fs::absolute(startFolder / asked);
    if (fs::is_regular_file(fromStart)) {
        return fromStart.string();
    }
    const std::string asMap = "maps\\" + asked + ".rivl";
    return !fs::exists(DataFiles::find(asked)) && fs::exists(DataFiles::find(asMap)) ? asMap : asked;
}

void startLevel(const std::string& level, const std::string& asked) {
    Clock::drive(0);
    seedRandom(0);
    BasicCommands::handOver();
    GLConsole::initialise();
    SurfaceTypeManager::initialise();
    HighScores::setDefaultScores(); // not those of who plays here: one command gives the same pictures
    if (!Game::initialise(level)) {
        throw std::runtime_error(asked + ": " + loaderReason());
    }
}

void skipFlight() {
    Camera::setPosition(Level::waterStart());
    Camera::setState(Camera::normal);
}

void passDrawing() {
    CheckPointTimesManager::draw();
    GameMenus::sendMenuEvent_windowRedrawing();
}

ModulesStop::~ModulesStop() {
    Modules::shutdown();
}

} // namespace tarnwick
