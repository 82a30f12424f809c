#include "core/Random.h"

#include "reference/PlainRandom.h"

#include <benchmark/benchmark.h>

namespace tarnwick {
namespace {

/// Latency of a draw: each waits for the one before it.
void random_step(benchmark::State& benchmark) {
    std::uint32_t state = 0;
    for ([[maybe_unused]] auto _ : benchmark) {
        state = Random::nextState(state);
    }
    benchmark::DoNotOptimize(state);
}
BENCHMARK(random_step);

/// The same in extended precision throughout.
void random_step_plain(benchmark::State& benchmark) {
    std::uint32_t state = 0;
    for ([[maybe_unused]] auto _ : benchmark) {
        state = plainRandomStep(state);
    }
    benchmark::DoNotOptimize(state);
}
BENCHMARK(random_step_plain);

/// As the simulation draws: through the module's state.
void random_float(benchmark::State& benchmark) {
    seedRandom(0);
    for ([[maybe_unused]] auto _ : benchmark) {
        benchmark::DoNotOptimize(randomFloat());
    }
}
BENCHMARK(random_float);

} // namespace
} // namespace tarnwick
