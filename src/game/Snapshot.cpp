#include "game/Snapshot.h"

#include "audio/GameSfx_Ice.h"
#include "audio/GameSfx_Steam.h"
#include "audio/GameSfx_Water.h"
#include "audio/SoundSourceManager.h"
#include "core/Clock.h"
#include "core/LocationStack.h"
#include "core/Random.h"
#include "game/Camera.h"
#include "game/CheckPointTimesManager.h"
#include "game/Game.h"
#include "game/GameRules.h"
#include "gui/GameMenus.h"
#include "level/Level.h"
#include "level/LevelBspTree.h"
#include "level/LevelObjectsManager.h"
#include "mechanisms/ForceManager.h"
#include "mechanisms/FxParticleManager.h"
#include "mechanisms/MoverManager.h"
#include "mechanisms/TriggerManager.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace tarnwick {

namespace {

/// What tells one set of entities from another: the load of the level, and how many there are of each kind.
/// Within one load they only become more.
struct Entities {
    std::uint32_t generation = 0;
    std::array<std::size_t, 8> counts{};

    bool operator==(const Entities&) const = default;
};

Entities entitiesNow() {
    TARNWICK_LOCATION("Snapshot::entitiesNow");
    return {.generation = LevelBspTree::generation(),
            .counts = {Level::polygons.size(), LevelObjectsManager::staticObjects.size(),
                       LevelObjectsManager::animatedObjects.size(), ForceManager::forces.size(),
                       FxParticleManager::emitters.size(), MoverManager::movers.size(),
                       TriggerManager::triggers.size(), SoundSourceManager::sourceCount()}};
}

} // namespace

struct Snapshot::Contents {
    bool taken = false;
    Entities entities;
    std::uint32_t random = 0;
    std::uint32_t clock = 0;
    Camera::Moment camera;
    CheckPointTimesManager::Moment checkPointTimes;
    ForceManager::Moment forces;
    FxParticleManager::Moment effects;
    Game::Moment game;
    GameMenus::Moment menus;
    GameRules::Moment rules;
    GameSfx_Ice::Moment iceSounds;
    GameSfx_Steam::Moment steamSounds;
    GameSfx_Water::Moment waterSounds;
    Level::Moment level;
    LevelObjectsManager::Moment objects;
    MoverManager::Moment movers;
    ParticleGroupMover::Moment ice;
    ParticleManager::Moment water;
    SoundSourceManager::Moment soundSources;
    TriggerManager::Moment triggers;
};

Snapshot::Snapshot()
    : contents(std::make_unique<Contents>()) {
    TARNWICK_LOCATION("Snapshot::Snapshot");
}

Snapshot::~Snapshot() = default;
Snapshot::Snapshot(Snapshot&&) noexcept = default;
Snapshot& Snapshot::operator=(Snapshot&&) noexcept = default;

void Snapshot::take() {
    TARNWICK_LOCATION("Snapshot::take");
    Contents& to = *contents;
    to.taken = true;
    to.entities = entitiesNow();
    to.random = getRandomState();
    to.clock = Clock::milliseconds();
    Camera::keep(to.camera);
    CheckPointTimesManager::keep(to.checkPointTimes);
    ForceManager::keep(to.forces);
    FxParticleManager::keep(to.effects);
    Game::keep(to.game);
    GameMenus::keep(to.menus);
    GameRules::keep(to.rules);
    GameSfx_Ice::keep(to.iceSounds);
    GameSfx_Steam::keep(to.steamSounds);
    GameSfx_Water::keep(to.waterSounds);
    Level::keep(to.level);
    LevelObjectsManager::keep(to.objects);
    MoverManager::keep(to.movers);
    ParticleGroupMover::keep(to.ice);
    ParticleManager::keep(to.water);
    SoundSourceManager::keep(to.soundSources);
    TriggerManager::keep(to.triggers);
}

bool Snapshot::fits() const {
    TARNWICK_LOCATION("Snapshot::fits");
    return contents->taken && contents->entities == entitiesNow();
}

bool Snapshot::putBack() const {
    TARNWICK_LOCATION("Snapshot::putBack");
    if (!fits()) {
        return false;
    }
    const Contents& from = *contents;
    seedRandom(from.random);
    if (Clock::driven()) {
        Clock::drive(from.clock);
    }
    const std::uint32_t late = Clock::milliseconds() - from.clock; // right across the clock's wrap
    Camera::putBack(from.camera);
    ForceManager::putBack(from.forces);
    FxParticleManager::putBack(from.effects);
    Game::putBack(from.game);
    GameSfx_Ice::putBack(from.iceSounds);
    GameSfx_Steam::putBack(from.steamSounds);
    GameSfx_Water::putBack(from.waterSounds);
    Level::putBack(from.level);
    LevelObjectsManager::putBack(from.objects);
    MoverManager::putBack(from.movers);
    ParticleGroupMover::putBack(from.ice);
    ParticleManager::putBack(from.water);
    SoundSourceManager::putBack(from.soundSources);
    TriggerManager::putBack(from.triggers);
    GameMenus::putBack(from.menus, late); // after the water, which the scores count, and before the rules,
    GameRules::putBack(from.rules, late); // whose timer hears of it
    CheckPointTimesManager::putBack(from.checkPointTimes, late);
    return true;
}

} // namespace tarnwick
