#include "game/Modules.h"

#include "audio/GameSfx_Ice.h"
#include "audio/GameSfx_Steam.h"
#include "audio/MusicSystem.h"
#include "audio/SoundManager.h"
#include "audio/SoundSystem.h"
#include "console/GLConsole.h"
#include "core/LocationStack.h"
#include "game/Game.h"
#include "game/GameRules.h"
#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"
#include "graphics/GamePad.h"
#include "mechanisms/FxParticleManager.h"

namespace tarnwick {

void Modules::shutdown() {
    TARNWICK_LOCATION("Modules::shutdown");
    if (Game::begun()) { // a run of the game has ended it already
        Game::shutdown();
    }
    // Those that no change of level and no end of a game ends.
    GameRules::shutdown();
    GameSfx_Steam::shutdown();
    GameSfx_Ice::shutdown();
    FxParticleManager::shutdown();

    SoundManager::shutdown();
    SoundSystem::shutdown();
    MusicSystem::shutdown();
    GLConsole::shutdown();
    GLTextureManager::shutdown();
    GamePad::shutdown();
    GLWindow::close();
}

} // namespace tarnwick
