// Triggers beside the water:
//
//   triggers_spread/N  a tick of N live triggers in rows over the view, of which a pool of 4,096 particles
//   lies
//                      in some, each with a force to apply
//   triggers_heaped/N  the same with all N over the whole pool: every particle fires every trigger
//   triggers_load/N/M  the loading of a level with N triggers and N objects, M of each on an id
//
// "share_of_water" is the cost of a tick of triggers as a share of the tick of the water.

#include "mechanisms/TriggerManager.h"

#include "core/Random.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"
#include "level/Level.h"
#include "mechanisms/ForceManager.h"
#include "particles/CircleCollision.h"
#include "particles/ParticleManager.h"
#include "support/DataFolder.h"
#include "support/LevelFileBuilder.h"
#include "support/ModuleReset.h"
#include "support/SceneAccess.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <ctime>

namespace tarnwick {

namespace {

constexpr float dt = 0.013333334f;
constexpr std::int32_t waterCount = 4096;
constexpr int settlingTicks = 200;
constexpr int waterTicks = 100;
constexpr std::int32_t forceType = 200;

/// Seconds of processor time of this thread: other programs do not count.
double now() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// A pool at rest in a bowl, and a force that does not move it.
void startScene() {
    ModuleReset::all();
    GLWindow::createHeadless(800, 600);
    SceneAccess::configure({});
    SceneAccess::placeCamera({}, {}, 0.0f, 2.5f); // nothing leaves the view
    SceneAccess::buildBowl(600.0f, 200.0f, 0.25f);
    CircleCollision::prepare();
    ParticleManager::createParticles(0.0f, 100.0f, 77.0f, waterCount);
    for (int tick = 0; tick < settlingTicks; ++tick) {
        ParticleManager::runSimulation(dt, Camera::view());
    }
    ForceManager::addForce(1, 0.0f, 0.0f, 1.0f, 0.0f, 1e-6f);
    TriggerManager::initialise();
}

double waterTick() {
    const double begin = now();
    for (int tick = 0; tick < waterTicks; ++tick) {
        ParticleManager::runSimulation(dt, Camera::view());
    }
    return (now() - begin) / waterTicks;
}

void addSquare(float x, float y, float side) {
    TriggerManager::addTrigger(forceType, 1, 0.0f, {x, y}, {x + side, y}, {x + side, y + side},
                               {x, y + side});
}

void measure(benchmark::State& run) {
    const double water = waterTick();
    double total = 0.0;
    for ([[maybe_unused]] auto iteration : run) {
        const double begin = now();
        TriggerManager::runTriggers(dt, Camera::view());
        const double taken = now() - begin;
        run.SetIterationTime(taken);
        total += taken;
    }
    double fires = 0.0;
    for (const Trigger& trigger : TriggerManager::triggers) {
        fires += static_cast<double>(trigger.fireCount);
    }
    run.counters["fires"] = fires / static_cast<double>(run.iterations());
    run.counters["share_of_water"] = total / static_cast<double>(run.iterations()) / water;
}

void triggers_spread(benchmark::State& run) {
    startScene();
    for (std::int64_t i = 0; i < run.range(0); ++i) {
        addSquare(-400.0f + 80.0f * static_cast<float>(i % 10), 210.0f - 80.0f * static_cast<float>(i / 10),
                  70.0f);
    }
    measure(run);
}

void triggers_heaped(benchmark::State& run) {
    startScene();
    for (std::int64_t i = 0; i < run.range(0); ++i) {
        addSquare(-600.0f, -600.0f, 1200.0f);
    }
    measure(run);
}

void triggers_load(benchmark::State& run) {
    ModuleReset::all();
    const DataFolder folder;
    LevelFile level;
    for (std::int64_t i = 0; i < run.range(0); ++i) {
        const auto id = static_cast<std::int32_t>(1 + i / run.range(1));
        const auto place = static_cast<std::int32_t>(i);
        level.objects.push_back({static_cast<std::uint32_t>(id), "gfx\\lantern.tga", 2, {place, 0}, 0});
        level.triggers.push_back({id, 3, 0.0f, {{place, 0}, {place + 9, 0}, {place + 9, 9}, {place, 9}}});
    }
    folder.write("maps/many.rivl", LevelFileBuilder::write(level));
    GLWindow::createHeadless(800, 600);
    for ([[maybe_unused]] auto iteration : run) {
        const double begin = now();
        Level::load("maps\\many.rivl");
        run.SetIterationTime(now() - begin);
    }
    run.counters["targets"] = static_cast<double>(TriggerManager::triggers.front().targets.size());
}

} // namespace

BENCHMARK(triggers_spread)->Arg(50)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(triggers_heaped)->Arg(50)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(triggers_load)
    ->Args({1000, 50})
    ->Args({1000, 1000})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace tarnwick
