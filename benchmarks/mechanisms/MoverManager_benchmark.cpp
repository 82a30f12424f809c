// The tick of 4,096 particles at rest in a bowl with moving polygons or ice beside it, and without. Each pair
// of measured stretches begins with the same water, so that these alone differ.
//
//   movers_beside_water/N    N moving polygons of 8 edges in view, none of which meets the water
//   movers_in_water/N        the same, spread over the pool, which they shove about
//   ice_groups/N             N more ice groups of 100 members each, above the pool
//
// The time is that of a tick with them. Counters: "share" is what they add, as a share of the tick without;
// "without" are the microseconds of that.

#include "mechanisms/MoverManager.h"

#include "core/Random.h"
#include "game/Camera.h"
#include "graphics/GLWindow.h"
#include "level/Level.h"
#include "level/LevelBspTree.h"
#include "particles/CircleCollision.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "particles/ParticleMover.h"
#include "support/ModuleReset.h"
#include "support/SceneAccess.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <ctime>

namespace tarnwick {

namespace {

constexpr float dt = 0.013333334f;
constexpr std::int32_t waterCount = 4096;
constexpr int settlingTicks = 400;
constexpr int stretchTicks = 20; ///< Measured one after the other, with and without in turn.
constexpr float moverRadius = 20.0f;
constexpr float moverSpeed = 60.0f;
constexpr std::int32_t groupMembers = 100;

/// Seconds of processor time of this thread: other programs do not count.
double now() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// A settled pool, to which a scene goes back again and again.
class Pool {
public:
    Pool() {
        ModuleReset::all();
        GLWindow::createHeadless(800, 600);
        SceneAccess::configure({});
        SceneAccess::placeCamera({}, {}, 0.0f, 2.5f); // nothing leaves the view
        SceneAccess::buildBowl(600.0f, 200.0f, 0.25f);
        CircleCollision::prepare();
        ParticleManager::createParticles(0.0f, 100.0f, 77.0f, waterCount);
        for (int i = 0; i < settlingTicks; ++i) {
            ParticleManager::runSimulation(dt, Camera::view());
        }
        water = ParticleManager::particles;
        for (const Particle& particle : water) {
            low = {std::min(low.x, particle.position.x), std::min(low.y, particle.position.y)};
            high = {std::max(high.x, particle.position.x), std::max(high.y, particle.position.y)};
        }
    }
    ~Pool() { ModuleReset::all(); }
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;

    void restore() const {
        ParticleMover::clearParticleGrid();
        ParticleManager::particles = water;
        for (Particle& particle : ParticleManager::particles) {
            particle.gridNext = nullptr;
            particle.gridPrev = nullptr;
            particle.inGrid = false;
        }
        ParticleGroupMover::groups.clear();
        seedRandom(1);
    }

    Vector2 low{1e9f, 1e9f}; ///< Corners of the box around the water.
    Vector2 high{-1e9f, -1e9f};

private:
    ParticleList water;
};

/// Seconds of a stretch of ticks.
template <typename Tick>
double stretch(const Tick& tick) {
    const double begin = now();
    for (int i = 0; i < stretchTicks; ++i) {
        tick();
    }
    return now() - begin;
}

/// Runs stretches of both kinds in turn. `start` makes the scene ready, given whether with what is measured.
template <typename Start, typename Tick>
void compare(benchmark::State& run, const Start& start, const Tick& tickWith) {
    double with = 0.0;
    double without = 0.0;
    for ([[maybe_unused]] auto iteration : run) {
        start(true);
        const double taken = stretch(tickWith);
        run.SetIterationTime(taken / stretchTicks);
        with += taken;
        start(false);
        without += stretch([] { ParticleManager::runSimulation(dt, Camera::view()); });
    }
    run.counters["share"] = (with - without) / without;
    run.counters["without"] = without / static_cast<double>(run.iterations() * stretchTicks) * 1e6;
}

/// An octagon that a mover takes 30 units to and fro.
void addMovingOctagon(Vector2 middle, std::int32_t id) {
    Polygon2D& polygon = Level::polygons.emplace_back();
    polygon.id = id;
    polygon.moveable = true;
    for (int corner = 0; corner < 8; ++corner) {
        const float angle = 0.7853982f * static_cast<float>(corner) + 0.3f;
        polygon.addPoint(middle.x + moverRadius * std::cos(angle), middle.y + moverRadius * std::sin(angle));
    }
    Mover mover;
    mover.id = id;
    mover.setEndPoint(id % 2 == 0 ? 30.0f : 0.0f, id % 2 == 0 ? 0.0f : -30.0f);
    mover.speed = moverSpeed;
    MoverManager::addMover(mover);
}

void runMovers(benchmark::State& run, const Pool& pool) {
    compare(
        run,
        [&](bool with) {
            pool.restore();
            MoverManager::collideableNodes.clear();
            for (Polygon2D& polygon : Level::polygons) {
                polygon.previousOffsetX = polygon.previousOffsetY = 0.0f;
            }
            for (Mover& mover : MoverManager::movers) {
                mover.reset();
                mover.state = with ? MoverLoopToEnd : MoverIdle;
            }
        },
        [] {
            MoverManager::updateCollideableNodes(Camera::view());
            MoverManager::runMovers(dt, Camera::view());
            ParticleManager::runSimulation(dt, Camera::view());
        });
    MoverManager::updateCollideableNodes(Camera::view());
    run.counters["edges"] = static_cast<double>(MoverManager::collideableNodes.size());
}

void movers_beside_water(benchmark::State& run) {
    const Pool pool;
    for (std::int32_t i = 0; i < run.range(0); ++i) {
        const float column = static_cast<float>(i % 10);
        const float row = static_cast<float>(i / 10);
        addMovingOctagon({-450.0f + 100.0f * column, pool.low.y - 100.0f - 100.0f * row}, i + 1);
    }
    runMovers(run, pool);
}

void movers_in_water(benchmark::State& run) {
    const Pool pool;
    const Vector2 size = pool.high - pool.low;
    for (std::int32_t i = 0; i < run.range(0); ++i) {
        const float share = (static_cast<float>(i) + 0.5f) / static_cast<float>(run.range(0));
        addMovingOctagon({pool.low.x + size.x * share, pool.low.y + size.y * (i % 2 == 0 ? 0.3f : 0.7f)},
                         i + 1);
    }
    runMovers(run, pool);
}

/// Far enough apart not to merge, and cold enough not to melt.
void addGroups(std::int64_t count, float bottom) {
    for (std::int64_t i = 0; i < count; ++i) {
        ParticleGroup& group = ParticleGroupMover::groups.emplace_back();
        group.centre = {-450.0f + 100.0f * static_cast<float>(i % 10),
                        bottom - 200.0f - 100.0f * static_cast<float>(i / 10)};
        group.temperature = -100.0f;
        group.radius = group.targetRadius = 2.0f * std::sqrt(static_cast<float>(groupMembers));
        for (std::int32_t member = 0; member < groupMembers; ++member) {
            Particle& particle = group.members.emplace_back();
            particle.position = group.centre;
            particle.groupDirection = {1.0f, 0.0f};
            particle.groupFraction = static_cast<float>(member) / static_cast<float>(groupMembers);
        }
    }
}

void ice_groups(benchmark::State& run) {
    const Pool pool;
    compare(
        run,
        [&](bool with) {
            pool.restore();
            addGroups(with ? run.range(0) : 0, pool.low.y);
        },
        [] { ParticleManager::runSimulation(dt, Camera::view()); });
}

} // namespace

BENCHMARK(movers_beside_water)->Arg(20)->Arg(100)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(movers_in_water)->Arg(20)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(ice_groups)->Arg(20)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace tarnwick
