#include "docs/EveryModule.h"

#include "audio/MusicSystem.h"
#include "audio/SoundManager.h"
#include "console/GLConsole.h"
#include "core/Comfort.h"
#include "game/BasicCommands.h"
#include "game/Game.h"
#include "game/NameEntry.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyBindings.h"
#include "gui/SplashPicture.h"
#include "level/SurfaceTypeManager.h"
#include "support/DataFolder.h"
#include "support/LevelFileBuilder.h"

#include <stdexcept>

namespace tarnwick {

void startEveryModule(const DataFolder& folder) {
    LevelFile level; // of each thing another number; the emitter reads a file of its own
    level.emitters.push_back({0, {0, 0}, {1.0f, 0.0f}, "fx\\drip.cfg"});
    level.forces.assign(2, {1, {0, 0}, {1.0f, 0.0f}, 1.0f});
    level.triggers.assign(3, {0, 1, 0.0f, {{0, 0}, {0, 10}, {10, 10}, {10, 0}}});
    level.movers.assign(4, {1, 1.0f, {0, 0}, {100, 0}});
    for (std::int32_t id = 1; id <= 5; ++id) {
        level.soundSources.push_back({id, {0, 0}, 100, 0, "sfx\\none.wav"});
    }
    folder.write("cfg/comfort.cfg", "clearWater = TRUE");
    folder.write("cfg/water_clear.cfg", "");
    folder.write("cfg/keys.cfg", "");
    folder.write("fx/drip.cfg", "");
    folder.write("maps/small.rivl", LevelFileBuilder::write(level));
    Comfort::initialise();
    KeyBindings::initialise();
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
    if (!Game::initialise("maps\\small.rivl")) {
        throw std::runtime_error("the small level was refused: " + GLConsole::outputText());
    }
}

} // namespace tarnwick
