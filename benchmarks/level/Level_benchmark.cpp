#include "level/Level.h"

#include "level/LevelBspTree.h"
#include "support/DataFolder.h"
#include "support/LevelFileBuilder.h"
#include "support/RandomOutlines.h"

#include <benchmark/benchmark.h>

namespace tarnwick {

namespace {

/// 2,000 polygons of 8 points, thrown about in a field of 12,000 by 9,000 units, some over one another.
std::string levelOfOctagons() {
    RandomOutlines random(1);
    LevelFile level;
    for (int i = 0; i < 2000; ++i) {
        const auto x = static_cast<std::int32_t>(random.below(12'000));
        const auto y = static_cast<std::int32_t>(random.below(9000));
        std::vector<LevelFile::Point> points;
        for (const Vector2 corner : random.star(8, 150.0)) {
            points.push_back(
                {x + static_cast<std::int32_t>(corner.x), y + static_cast<std::int32_t>(corner.y)});
        }
        level.polygons.push_back(polygonRecord(points));
    }
    return LevelFileBuilder::write(level);
}

/// 2,000 squares side by side: every inner side is hidden by the one it lies against.
std::string levelOfSquares() {
    LevelFile level;
    for (std::int32_t i = 0; i < 2000; ++i) {
        const std::int32_t x = i % 50 * 64;
        const std::int32_t y = i / 50 * 64;
        level.polygons.push_back(polygonRecord({{x, y}, {x + 64, y}, {x + 64, y + 64}, {x, y + 64}}));
    }
    return LevelFileBuilder::write(level);
}

/// One round polygon of 400 points, behind every line of which lies all the rest: the deepest tree there is.
std::string levelOfOneRing() {
    LevelFile level;
    std::vector<LevelFile::Point> points;
    for (const Vector2 corner : RandomOutlines::circle(400, 30'000.0)) {
        points.push_back({static_cast<std::int32_t>(corner.x), static_cast<std::int32_t>(corner.y)});
    }
    level.polygons.push_back(polygonRecord(points));
    return LevelFileBuilder::write(level);
}

void loadLevel(benchmark::State& run, const std::string& bytes) {
    const DataFolder folder;
    folder.write("maps/measured.rivl", bytes);
    for ([[maybe_unused]] auto _ : run) {
        Level::load("maps\\measured.rivl");
    }
    run.counters["polygons"] = static_cast<double>(Level::polygons.size());
    std::vector<LevelBspNode*> nodes;
    LevelBspTree::getNodeList(nodes);
    run.counters["nodes"] = static_cast<double>(nodes.size());
    Level::clear();
}

/// Rays from the middle of the octagons to all sides, as far as the command `BspCast` casts them.
void castRays(benchmark::State& run) {
    const DataFolder folder;
    folder.write("maps/measured.rivl", levelOfOctagons());
    Level::load("maps\\measured.rivl");
    RandomOutlines random(2);
    std::vector<Vector2> ends;
    for (int i = 0; i < 4096; ++i) {
        const auto x = static_cast<float>(random.below(100'000));
        ends.push_back({x - 44'000.0f, static_cast<float>(random.below(100'000)) - 45'500.0f});
    }
    std::size_t hits = 0;
    std::size_t next = 0;
    for ([[maybe_unused]] auto _ : run) {
        Vector2 end = ends[next++ % ends.size()];
        hits += LevelBspTree::raycast({6000.0f, 4500.0f}, end) != nullptr ? 1u : 0u;
    }
    run.SetItemsProcessed(run.iterations());
    run.counters["hits"] = static_cast<double>(hits) / static_cast<double>(run.iterations());
    Level::clear();
}

} // namespace

BENCHMARK_CAPTURE(loadLevel, octagons, levelOfOctagons())
    ->Name("load_level_2000")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(loadLevel, squares, levelOfSquares())
    ->Name("load_level_squares")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(loadLevel, ring, levelOfOneRing())->Name("load_level_ring")->Unit(benchmark::kMillisecond);
BENCHMARK(castRays)->Name("raycast");

} // namespace tarnwick
