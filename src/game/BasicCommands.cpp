#include "game/BasicCommands.h"

#include "console/GLConsole.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "game/Game.h"
#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"
#include "graphics/GraphicsCommands.h"
#include "graphics/LevelGeometryRenderer.h"

namespace tarnwick {

constexpr CommandRow BasicCommands::commands[] = {
    {"AntiAliasingSamples", conCmdAntiAliasingSamples},
    {"Map", conCmdMap},
};

void BasicCommands::handOver() {
    TARNWICK_LOCATION("BasicCommands::handOver");
    GLConsole::setBasicCommands({GraphicsCommands::table(), commands});
}

std::int32_t BasicCommands::conCmdAntiAliasingSamples(std::int32_t value, bool /*set*/) {
    TARNWICK_LOCATION("BasicCommands::conCmdAntiAliasingSamples");
    if (value != 0) {
        GLWindow::setAntiAliasingMode(static_cast<std::uint32_t>(value));
        GLTextureManager::reloadAllTextures();
        if (Game::running()) {
            LevelGeometryRenderer::initialise(); // the display lists went with the old context
        }
    }
    return static_cast<std::int32_t>(GLWindow::getAntiAliasingMode());
}

void BasicCommands::conCmdMap(const std::string& levelFile) {
    TARNWICK_LOCATION("BasicCommands::conCmdMap");
    if (levelFile.empty()) {
        Log::print("\nMap is ");
        Log::print(Game::currentMap());
    } else if (Game::running()) {
        Game::map(levelFile);
    } else {
        Game::run(levelFile);
    }
}

} // namespace tarnwick
