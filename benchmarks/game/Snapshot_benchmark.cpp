// The whole simulation into memory and back, in the shipped level with the most entities, in full play:
//
//   snapshot_take       into a snapshot that was taken before
//   snapshot_take_new   into a new one, memory and all
//   snapshot_put_back
//
// The counter tells the water that it holds.

#include "game/Snapshot.h"

#include "game/GameRules.h"
#include "support/ModuleReset.h"
#include "tools/sim/HeadlessLevel.h"

#include <benchmark/benchmark.h>

#include <filesystem>

namespace tarnwick {

namespace {

constexpr int ticksOfPlay = 400;

/// A level in play for as long as it lives.
class Play {
public:
    explicit Play(const char* level)
        : startFolder(std::filesystem::current_path())
        , game({.level = level, .dataFolder = (startFolder / "data").string()}) {
        for (int i = 0; i < ticksOfPlay; ++i) {
            game.tick();
        }
    }
    Play(const Play&) = delete;
    Play& operator=(const Play&) = delete;
    ~Play() { std::filesystem::current_path(startFolder); }

    void count(benchmark::State& state) const { state.counters["water"] = GameRules::getParticleCount(); }
    void tick() { game.tick(); }

private:
    std::filesystem::path startFolder;
    HeadlessLevel game;
};

void snapshot_take(benchmark::State& state) {
    Play play("sluices");
    Snapshot snapshot;
    for (auto _ : state) {
        snapshot.take();
    }
    play.count(state);
}

void snapshot_take_new(benchmark::State& state) {
    Play play("sluices");
    for (auto _ : state) {
        Snapshot snapshot;
        snapshot.take();
        benchmark::DoNotOptimize(snapshot);
    }
    play.count(state);
}

void snapshot_put_back(benchmark::State& state) {
    Play play("sluices");
    Snapshot snapshot;
    snapshot.take();
    for (auto _ : state) {
        benchmark::DoNotOptimize(snapshot.putBack());
    }
    play.count(state);
}

/// What a search pays for a tick.
void headless_tick(benchmark::State& state) {
    Play play("sluices");
    for (auto _ : state) {
        play.tick();
    }
    play.count(state);
}

BENCHMARK(snapshot_take);
BENCHMARK(snapshot_take_new);
BENCHMARK(snapshot_put_back);
BENCHMARK(headless_tick)->Iterations(1000);

} // namespace

} // namespace tarnwick
