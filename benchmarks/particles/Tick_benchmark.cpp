// The tick of the water. All of it runs at 1/75 second, on one core:
//
//   tick_settled/N        the whole tick of a pool that has come to rest in a bowl
//   tick_falling/N        the whole tick of the same body in free fall
//   tick_floor/N          what no implementation can avoid, on the states of tick_settled: the ordered visit
//                         of every particle to its seven cells, with the exchange; nothing else
//   tick_floor_falling/N  the same on the states of tick_falling
//   tick_plain/N          the plain reading of the whole tick, on the settled pool
//   tick_splash/N         a pool falls into the bowl: "worst" is its longest tick, each tick taken as the
//                         smallest of several equal runs, and "worst_to_settled" what that is of a settled
//                         tick
//   freeze/N              the tick in which a cold drop freezes the pool
//
// Counters: nanoseconds per particle, and per visited pair (everybody in the seven cells, in reach or not).

#include "core/Random.h"
#include "game/Camera.h"
#include "game/Game.h"
#include "graphics/GLWindow.h"
#include "level/Level.h"
#include "level/LevelBspTree.h"
#include "particles/CircleCollision.h"
#include "particles/NeighbourField.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "particles/ParticleMover.h"
#include "reference/PlainSimulation.h"
#include "support/ModuleReset.h"
#include "support/SceneAccess.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <limits>
#include <map>
#include <vector>

namespace tarnwick {

namespace {

constexpr float dt = 0.013333334f;
constexpr float viewZoom = 2.5f; ///< Nothing leaves the view.
constexpr int settlingTicks = 400;
constexpr int fallTicks = 30; ///< 0.4 seconds.

/// Nanoseconds of processor time of this thread: other programs do not count.
double now() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

void startScene() {
    ModuleReset::all();
    Level::polygons.clear();
    LevelBspTree::clear();
    GLWindow::createHeadless(800, 600);
    SceneAccess::configure({});
    SceneAccess::placeCamera({}, {}, 0.0f, viewZoom);
}

void buildBowl() {
    SceneAccess::buildBowl(600.0f, 200.0f, 0.25f);
    CircleCollision::prepare();
}

/// Puts `water` in place of all particles, outside the grid.
void putWater(const ParticleList& water) {
    ParticleMover::clearParticleGrid();
    ParticleManager::particles = water;
    for (Particle& particle : ParticleManager::particles) {
        particle.gridNext = nullptr;
        particle.gridPrev = nullptr;
        particle.inGrid = false;
    }
}

/// A pool of `count` particles at rest in the bowl; settled once, then remembered.
const ParticleList& settledPool(int count) {
    static std::map<int, ParticleList> pools;
    const auto known = pools.find(count);
    if (known != pools.end()) {
        return known->second;
    }
    startScene();
    buildBowl();
    ParticleManager::createParticles(0.0f, 100.0f, 1.2f * std::sqrt(static_cast<float>(count)), count);
    for (int tick = 0; tick < settlingTicks; ++tick) {
        ParticleManager::runSimulation(dt, Camera::view());
    }
    return pools[count] = ParticleManager::particles;
}

void startSettled(int count) {
    const ParticleList& pool = settledPool(count);
    startScene();
    buildBowl();
    putWater(pool);
}

/// The pool without its bowl, at rest, high up.
void startFalling(int count) {
    const ParticleList& pool = settledPool(count);
    startScene();
    putWater(pool);
    for (Particle& particle : ParticleManager::particles) {
        particle.position.y -= 400.0f;
        particle.velocity = {};
    }
}

/// How many particles stand in the seven cells of all particles together.
double visitedPairs() {
    std::uint64_t pairs = 0;
    for (const Particle& particle : ParticleManager::particles) {
        for (int dx = -1; dx <= 1; ++dx) {
            for (int dy = -1; dy <= 1; ++dy) {
                const int column = static_cast<int>(particle.gridCellX) + dx;
                const int row = static_cast<int>(particle.gridCellY) + dy;
                if ((dx == 0 && dy != 0) || column < 0 || column > 1023 || row < 0 || row > 1023) {
                    continue;
                }
                for (const Particle* other = ParticleMover::particleGrid[column * 1024 + row];
                     other != nullptr; other = other->gridNext) {
                    ++pairs;
                }
            }
        }
    }
    return static_cast<double>(pairs);
}

/// Gathers what the counters tell of a run.
class Tally {
public:
    void add(benchmark::State& state, double nanoseconds) {
        state.SetIterationTime(nanoseconds * 1e-9);
        total += nanoseconds;
        if (runs % 16 == 0) { // counting takes longer than the tick
            pairs += visitedPairs();
            ++counts;
        }
        particles += static_cast<double>(ParticleManager::particles.size());
        ++runs;
    }
    void report(benchmark::State& state) const {
        state.counters["ns_per_particle"] = total / particles;
        state.counters["ns_per_pair"] = total / runs / (pairs / counts);
        state.counters["pairs_per_particle"] = pairs / counts / (particles / runs);
    }
    double mean() const { return total / runs; }

private:
    double total = 0.0;
    double pairs = 0.0;
    double particles = 0.0;
    int runs = 0;
    double counts = 0.0;
};

double timedTick() {
    const double begin = now();
    ParticleManager::runSimulation(dt, Camera::view());
    return now() - begin;
}

/// The visits of one tick, on the present state, which stays as it is.
double timedVisits(NeighbourField& field) {
    ParticleMover::rebuildGrid(ParticleManager::particles, Camera::view());
    field.load(ParticleManager::particles);
    const double begin = now();
    std::size_t index = 0;
    for (const Particle& particle : ParticleManager::particles) {
        const std::uint32_t slot = field.slotOf(index);
        Body body = field.body(slot);
        field.hide(slot);
        benchmark::DoNotOptimize(field.meetNeighbours(particle.gridCellX, particle.gridCellY, body));
        field.put(slot, body);
        ++index;
    }
    const double taken = now() - begin;
    field.clear();
    return taken;
}

void tick_settled(benchmark::State& state) {
    startSettled(static_cast<int>(state.range(0)));
    Tally tally;
    for ([[maybe_unused]] auto iteration : state) {
        tally.add(state, timedTick());
    }
    tally.report(state);
}

void tick_falling(benchmark::State& state) {
    startFalling(static_cast<int>(state.range(0)));
    Tally tally;
    int tick = 0;
    for ([[maybe_unused]] auto iteration : state) {
        if (++tick == fallTicks) {
            startFalling(static_cast<int>(state.range(0)));
            tick = 0;
        }
        tally.add(state, timedTick());
    }
    tally.report(state);
}

void tick_floor(benchmark::State& state) {
    startSettled(static_cast<int>(state.range(0)));
    NeighbourField field;
    Tally tally;
    for ([[maybe_unused]] auto iteration : state) {
        ParticleManager::runSimulation(
            dt, Camera::view()); // another state each time: no branch is known by heart
        tally.add(state, timedVisits(field));
    }
    tally.report(state);
}

void tick_floor_falling(benchmark::State& state) {
    startFalling(static_cast<int>(state.range(0)));
    NeighbourField field;
    Tally tally;
    int tick = 0;
    for ([[maybe_unused]] auto iteration : state) {
        if (++tick == fallTicks) {
            startFalling(static_cast<int>(state.range(0)));
            tick = 0;
        }
        ParticleManager::runSimulation(dt, Camera::view());
        tally.add(state, timedVisits(field));
    }
    tally.report(state);
}

void tick_plain(benchmark::State& state) {
    startSettled(static_cast<int>(state.range(0)));
    const SceneSettings settings;
    PlainSimulation plain;
    plain.settings.gravity = settings.gravity;
    plain.settings.roomTemperature = settings.roomTemperature;
    plain.settings.heatTransferRate = settings.heatTransferRate;
    plain.settings.particleKillTime = settings.particleKillTime;
    plain.view.zoom = viewZoom;
    plain.collision.root = LevelBspTree::rootNode();
    plain.particles.assign(ParticleManager::particles.begin(), ParticleManager::particles.end());
    plain.randomState = getRandomState();
    double total = 0.0;
    for ([[maybe_unused]] auto iteration : state) {
        const double begin = now();
        plain.tick(dt);
        const double taken = now() - begin;
        state.SetIterationTime(taken * 1e-9);
        total += taken;
    }
    state.counters["ns_per_particle"] =
        total / static_cast<double>(state.iterations()) / static_cast<double>(plain.particles.size());
}

void tick_splash(benchmark::State& state) {
    constexpr int splashTicks = 150;
    constexpr int runs = 5;
    const int count = static_cast<int>(state.range(0));
    startSettled(count);
    std::vector<double> settled;
    for (int tick = 0; tick < 200; ++tick) {
        settled.push_back(timedTick());
    }
    std::ranges::sort(settled);
    const double settledTick = settled[settled.size() / 2];
    std::vector<double> best(splashTicks, std::numeric_limits<double>::infinity());
    for ([[maybe_unused]] auto iteration : state) {
        double total = 0.0;
        for (int run = 0; run < runs; ++run) {
            startFalling(count);
            buildBowl();
            for (double& tick : best) {
                const double taken = timedTick();
                tick = std::min(tick, taken);
                total += taken;
            }
        }
        state.SetIterationTime(total * 1e-9 / runs / splashTicks);
    }
    const auto worst = std::ranges::max_element(best);
    state.counters["worst"] = *worst * 1e-3;
    state.counters["worst_tick"] = static_cast<double>(worst - best.begin());
    state.counters["worst_to_settled"] = *worst / settledTick;
}

void freeze(benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) {
        startSettled(static_cast<int>(state.range(0)));
        ParticleMover::rebuildGrid(ParticleManager::particles, Camera::view());
        ParticleManager::particles.front().temperature = -10.0f;
        const double begin = now();
        ParticleGroupMover::doParticleGrouping(ParticleManager::particles);
        state.SetIterationTime((now() - begin) * 1e-9);
    }
    state.counters["frozen"] = static_cast<double>(ParticleGroupMover::groups.front().members.size());
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(128)->Arg(1024)->Arg(4096)->Arg(16384)->UseManualTime()->Unit(benchmark::kMicrosecond);
}

BENCHMARK(tick_settled)->Apply(sizes);
BENCHMARK(tick_falling)->Apply(sizes);
BENCHMARK(tick_floor)->Apply(sizes);
BENCHMARK(tick_floor_falling)->Apply(sizes);
BENCHMARK(tick_plain)->Apply(sizes);
BENCHMARK(tick_splash)
    ->Arg(128)
    ->Arg(1024)
    ->Arg(4096)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond)
    ->Iterations(1);
BENCHMARK(freeze)->Arg(1024)->Arg(4096)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(20);

} // namespace

} // namespace tarnwick
