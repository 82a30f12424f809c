// Effect particles beside the water:
//
//   effects_run/N  a tick of N effect particles in flight, with the emitters that keep their number; the
//   counter
//                  "share_of_water" is its cost as a share of the tick of 4,096 water particles in a bowl

#include "mechanisms/FxParticleManager.h"

#include "game/Camera.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"
#include "particles/ParticleManager.h"
#include "support/ModuleReset.h"
#include "support/SceneAccess.h"

#include <benchmark/benchmark.h>

#include <ctime>

namespace tarnwick {

namespace {

constexpr float dt = 0.013333334f;
constexpr std::int32_t waterCount = 4096;
constexpr int settlingTicks = 200;
constexpr int waterTicks = 100;
constexpr int particlesOfEmitter = 1000; ///< In flight: one a millisecond, for a second.

/// Seconds of processor time of this thread: other programs do not count.
double now() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

void startScene() {
    ModuleReset::all();
    GLWindow::createHeadless(800, 600);
    SceneAccess::configure({});
    SceneAccess::placeCamera({}, {}, 0.0f, 2.5f); // nothing leaves the view
}

/// Seconds of a tick of the water by itself.
double waterTick() {
    startScene();
    SceneAccess::buildBowl(600.0f, 200.0f, 0.25f);
    ParticleManager::createParticles(0.0f, 100.0f, 77.0f, waterCount);
    for (int tick = 0; tick < settlingTicks; ++tick) {
        ParticleManager::runSimulation(dt, Camera::view());
    }
    const double begin = now();
    for (int tick = 0; tick < waterTicks; ++tick) {
        ParticleManager::runSimulation(dt, Camera::view());
    }
    return (now() - begin) / waterTicks;
}

void addEmitters(std::int64_t particles) {
    FxParticleEmitter emitter;
    emitter.setFrequency(0.001f);
    emitter.spread = 6.0f;
    emitter.velocity1 = 50.0f;
    emitter.velocity2 = 200.0f;
    emitter.gravity1 = 10.0f;
    emitter.gravity2 = 40.0f;
    emitter.addTexture("gfx\\fx_drop.tga");
    for (std::int64_t count = 0; count < particles; count += particlesOfEmitter) {
        FxParticleManager::addEmitter(emitter);
    }
    for (int tick = 0; tick < settlingTicks; ++tick) {
        FxParticleManager::run(dt, Camera::view());
    }
}

void effects_run(benchmark::State& run) {
    const double water = waterTick();
    startScene();
    addEmitters(run.range(0));
    double total = 0.0;
    for ([[maybe_unused]] auto iteration : run) {
        const double begin = now();
        FxParticleManager::run(dt, Camera::view());
        const double taken = now() - begin;
        run.SetIterationTime(taken);
        total += taken;
    }
    run.counters["particles"] = static_cast<double>(FxParticleManager::particles.size());
    run.counters["share_of_water"] = total / static_cast<double>(run.iterations()) / water;
}

} // namespace

BENCHMARK(effects_run)->Arg(1000)->Arg(5000)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace tarnwick
