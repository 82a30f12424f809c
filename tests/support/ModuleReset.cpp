#include "support/ModuleReset.h"

#include "audio/GameSfx_Ice.h"
#include "audio/GameSfx_Steam.h"
#include "audio/GameSfx_Water.h"
#include "audio/MusicSystem.h"
#include "audio/Sound.h"
#include "audio/SoundManager.h"
#include "audio/SoundSourceManager.h"
#include "audio/SoundSystem.h"
#include "console/GLConsole.h"
#include "core/Clock.h"
#include "core/Comfort.h"
#include "core/CommandRegistry.h"
#include "core/ConfigFile.h"
#include "core/CrashReport.h"
#include "core/DataFiles.h"
#include "core/Log.h"
#include "core/LongWork.h"
#include "core/Random.h"
#include "game/Camera.h"
#include "game/CheckPointTimesManager.h"
#include "game/Game.h"
#include "game/GameRules.h"
#include "game/HighScores.h"
#include "game/KeptSettings.h"
#include "graphics/DynamicPolygonRenderer.h"
#include "graphics/GLTextureManager.h"
#include "graphics/GLWindow.h"
#include "graphics/GamePad.h"
#include "graphics/KeyBindings.h"
#include "graphics/LevelGeometryRenderer.h"
#include "graphics/ParticleRenderer.h"
#include "graphics/WindowFeed.h"
#include "gui/GameMenus.h"
#include "gui/GuiScreen.h"
#include "gui/SplashScreen.h"
#include "level/Level.h"
#include "level/LevelBspTree.h"
#include "level/LevelObjectsManager.h"
#include "level/SurfaceTypeManager.h"
#include "mechanisms/ForceManager.h"
#include "mechanisms/FxParticleManager.h"
#include "mechanisms/MoverManager.h"
#include "mechanisms/TriggerManager.h"
#include "mechanisms/Triggers_HeatSources.h"
#include "particles/CircleCollision.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "particles/ParticleMover.h"

#include <algorithm>

namespace tarnwick {

void ModuleReset::all() {
    SplashScreen::stop();  // its thread ends before anything that it looks at
    GameMenus::shutdown(); // gives its pictures and sounds back while their modules know them
    Camera::state = {};
    CheckPointTimesManager::state = {};
    CircleCollision::state = {};
    Clock::state = {};
    Comfort::state = {};
    CommandRegistry::state = {};
    ConfigFile::state = {};
    CrashReport::state = {};
    DataFiles::state = {};
    DynamicPolygonRenderer::state = {};
    ForceManager::forces.clear();
    ForceManager::state = {};
    FxParticleManager::particles.clear();
    FxParticleManager::emitters.clear();
    FxParticleManager::state = {};
    GLConsole::state = {};
    GLTextureManager::state = {};
    GLWindow::close();
    GLWindow::state = {};
    GamePad::shutdown();
    GamePad::state = {};
    Game::state = {};
    GameMenus::state = {};
    GameRules::state = {};
    GameSfx_Ice::state = {};
    GameSfx_Steam::state = {};
    GameSfx_Water::state = {};
    HighScores::state = {};
    KeptSettings::state = {};
    KeyBindings::state = {};
    LevelBspTree::state = {};
    LongWork::state = {};
    LevelGeometryRenderer::state = {};
    LevelObjectsManager::animatedObjects.clear();
    LevelObjectsManager::staticObjects.clear();
    LevelObjectsManager::state = {};
    Level::polygons.clear();
    Level::state = {};
    Log::state = {};
    Log::outputBuffer.fill('\n');
    MusicSystem::shutdown();
    MusicSystem::state = {};
    MoverManager::movers.clear();
    MoverManager::collideableNodes.clear();
    MoverManager::state = {};
    ParticleGroupMover::groups.clear();
    ParticleGroupMover::state = {};
    ParticleManager::particles.clear();
    ParticleManager::state = {};
    std::ranges::fill(ParticleMover::particleGrid, nullptr);
    ParticleMover::state = {};
    ParticleRenderer::state = {};
    Random::state = {};
    SoundSourceManager::state = {};
    SoundManager::state = {};
    SoundSystem::shutdown();
    SoundSystem::state = {};
    SurfaceTypeManager::state = {};
    TriggerManager::triggers.clear();
    TriggerManager::state = {};
    Triggers_HeatSources::state = {};
    WindowFeed::state = {};
}

} // namespace tarnwick
