#include "level/Polygon2D.h"

#include "support/RandomOutlines.h"

#include <benchmark/benchmark.h>

namespace tarnwick {

namespace {

void buildPolygons(benchmark::State& run, const std::vector<Vector2>& points) {
    std::uint32_t triangles = 0;
    for ([[maybe_unused]] auto _ : run) {
        Polygon2D polygon;
        polygon.addPoints(points);
        triangles = polygon.triangleCount;
        benchmark::DoNotOptimize(polygon);
    }
    run.counters["triangles"] =
        triangles; // fewer than points - 2, or 0: the outline is not what it should be
}

/// A polygon of N points that all see the middle. The more there are, the smoother it is: sides that run
/// towards the middle one behind the other would count as one and lie across their neighbours.
void loadPolygon(benchmark::State& run) {
    const auto points = static_cast<std::size_t>(run.range(0));
    const double reach = 1000.0 + 8.0 * static_cast<double>(points);
    buildPolygons(run, RandomOutlines(1).star(points, reach, 10.0 / static_cast<double>(points)));
}

/// A polygon of N points with long thin teeth.
void loadComb(benchmark::State& run) {
    buildPolygons(run, RandomOutlines(1).comb(static_cast<std::size_t>(run.range(0))));
}

} // namespace

BENCHMARK(loadPolygon)
    ->Name("load_polygon")
    ->Arg(10)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(5000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(loadComb)
    ->Name("load_comb")
    ->Arg(10)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(5000)
    ->Unit(benchmark::kMillisecond);

} // namespace tarnwick
