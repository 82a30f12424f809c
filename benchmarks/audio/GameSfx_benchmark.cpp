// The sounds of the water itself, without a device as in the headless runner:
//
//   ambience_update  what they take of a tick with 4,096 free particles and 20 ice groups of 100 members

#include "audio/GameSfx_Ice.h"
#include "audio/GameSfx_Steam.h"
#include "audio/GameSfx_Water.h"
#include "game/Game.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "support/ModuleReset.h"
#include "support/SceneAccess.h"

#include <benchmark/benchmark.h>

namespace tarnwick {

static void ambience_update(benchmark::State& state) {
    constexpr float dt = 0.013333334f;
    ModuleReset::all();
    SceneAccess::configure({});
    ParticleManager::createParticles(0.0f, 100.0f, 77.0f, 4096);
    for (int i = 0; i < 20; ++i) {
        ParticleGroup& group = ParticleGroupMover::groups.emplace_back();
        group.members.resize(100);
        group.velocity = {30.0f, 40.0f};
        group.colliding = true;
    }
    for (auto _ : state) {
        GameSfx_Ice::update(dt, Game::levelIsHeard());
        GameSfx_Water::update(dt, Game::levelIsHeard());
        GameSfx_Steam::update(dt, Game::levelIsHeard());
    }
    ModuleReset::all();
}
BENCHMARK(ambience_update)->Unit(benchmark::kMicrosecond);

} // namespace tarnwick
