#include "docs/EveryModule.h"

#include "audio/MusicSystem.h"
#include "audio/SoundManager.h"
#include "console/GLConsole.h"
#include "game/BasicCommands.h"
#include "game/Game.h"
#include "game/NameEntry.h"
#include "graphics/GLWindow.h"
#include "gui/SplashPicture.h"
#include "level/SurfaceTypeManager.h"
#include "support/DataFolder.h"
#include "support/LevelFileBuilder.h"

#include <stdexcept>

namespace tarnwick {

void startEveryModule(const DataFolder& folder) {
    LevelFile level; // empty but for an emitter, which reads a file of its own
    level.emitters.push_back({0, {0, 0}, {1.0f, 0.0f}, "fx\\drip.cfg"});
    folder.write("fx/drip.cfg", "");
    folder.write("maps/empty.rivl", LevelFileBuilder::write(level));
    GLWindow::createHeadless(800, 600);
    BasicCommands::handOver();
    GLConsole::initialise();
    MusicSystem::initialise();
    SoundManager::initialise();
    SurfaceTypeManager::initialise();
    {
        const SplashPicture splash;
    } // without a window that shows pictures there is no splash to read its file
    {
        const NameEntry nameEntry(nullptr); // comes after a level that ended well
    }
    if (!Game::initialise("maps\\empty.rivl")) {
        throw std::runtime_error("the empty level was refused: " + GLConsole::outputText());
    }
}

} // namespace tarnwick
