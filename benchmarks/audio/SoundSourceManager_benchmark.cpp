#include "audio/SoundSourceManager.h"

// The looping sound sources of a level, all of them in reach of a view that moves:
//
//   sources_update/SOURCES/DEVICE  what they take of a tick, without a device as in the headless runner and
//                                  with one; beyond 224 they are more than it has voices for. 1,000 take 0.2
//                                  ms and 2,000 half of one; 13 ms when each that was silent asked for a
//                                  voice

#include "audio/SoundManager.h"
#include "audio/SoundSystem.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "support/DataFolder.h"
#include "support/ModuleReset.h"
#include "support/SceneAccess.h"
#include "support/WavText.h"

#include <benchmark/benchmark.h>

namespace tarnwick {

static void sources_update(benchmark::State& state) {
    ModuleReset::all();
    const DataFolder data;
    data.write("snd/wind.wav", monoWav(waveSamples(44'100, 100)));
    if (state.range(1) != 0) {
        SoundSystem::initialiseLoopback();
    }
    SoundManager::initialise();
    SoundSourceManager::initialise();
    SceneAccess::placeCamera({0.0f, 0.0f}, {0.0f, 0.0f}, 0.0f, 1.0f);
    for (std::int32_t id = 0; id < state.range(0); ++id) {
        SoundSourceManager::addSoundSource(
            SoundSource(Sound("snd\\wind.wav"), static_cast<float>(id % 100), 0.0f, true, id, 500.0f));
    }
    SoundSourceManager::playExcludedSounds({});
    float x = 0.0f;
    for (auto _ : state) {
        SceneAccess::placeCamera({x, 0.0f}, {0.0f, 0.0f}, 0.0f, 1.0f);
        SoundSourceManager::updateAllSounds(Camera::view(), Game::levelIsHeard());
        x = x < 100.0f ? x + 1.0f : 0.0f;
    }
    ModuleReset::all();
}

BENCHMARK(sources_update)
    ->Args({20, 0})
    ->Args({20, 1})
    ->Args({200, 1})
    ->Args({1'000, 1})
    ->Args({2'000, 0})
    ->Args({2'000, 1})
    ->Unit(benchmark::kMicrosecond);

} // namespace tarnwick
